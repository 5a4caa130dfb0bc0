// The Load sequence: one file becomes one row, or nothing at all happens to the store.
#include "session/load.hpp"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

#include "base/os.hpp"
#include "base/text.hpp"
#include "patterns/sound_points.hpp"
#include "session/session.hpp"
#include "session/xspace.hpp"

namespace vntl {
namespace {

constexpr float least_ycalc_sum = 0.0001f;

bool Is_Absolute(const std::string& path, char separator) {
    if (path.empty()) return false;
    if (path[0] == '/' || path[0] == separator) return true;
    return separator == '\\' && path.size() > 1 && path[1] == ':';
}

// A row needs a range, points, and rising x. An array shorter than `npts` has no last point, so it cannot rise either.
Status Check_Read_Pattern(const Diffraction_Pattern_Type& p, const std::string& name) {
    if (!(p.xmax > p.xmin) || !std::isfinite(p.xmin) || !std::isfinite(p.xmax))
        return Status::Fail("ERROR Opening file: " + name + "\nxmin value >= xmax value");
    if (p.npts < 1) return Status::Fail("ERROR in file: " + name + "\nnpts<1");
    const auto npts = static_cast<std::size_t>(p.npts);
    const bool rises = p.x.size() >= npts && std::isfinite(p.x[0]) && std::isfinite(p.x[npts - 1]) && p.x[npts - 1] > p.x[0];
    if (!rises) return Status::Fail("ERROR Opening file: " + name + "\nx(1)>=x(npts)");
    return Status::Done();
}

// Once for all files of a command: they are sorted by x, or stay unopened. `where` names the first point out of order.
bool May_Sort(Ask& ask, const std::string& name, const std::string& where, Load_Notes& notes) {
    if (notes.sorts) return *notes.sorts;
    std::string text = name + ": " + where + ".\nSort by x and average repeats?";
    if (notes.several) text += "\nThe answer holds for every such file of this choice; with no they stay unopened.";
    notes.sorts = ask.Box({Box_Buttons::yes_no, Box_Icon::question, 1, text, std::string(warning_title)}) == Box_Answer::yes;
    return *notes.sorts;
}

std::string Place_Of(const Fall& fall, const std::string& path) {
    const int line = Line_Of_Fall(path, fall);
    return (fall.at < fall.highest ? "x falls at point " : "x repeats at point ") + std::to_string(fall.point) +
           (line > 0 ? " (line " + std::to_string(line) + ")" : "");
}

// Points without a number go, and x rises from then on; or what failed.
std::optional<Load_Result> Make_Sound(Ask& ask, const std::string& path, const std::string& name, Fresh_Pattern& fresh, Load_Notes& notes) {
    const std::optional<Fall> fall = First_Fall(fresh.pattern);
    fresh.left_out = Leave_Out_Points_Without_Numbers(fresh.pattern);
    if (const Status status = Check_Read_Pattern(fresh.pattern, name); status.failed) {
        ask.Error(status.message);
        return Load_Result::failed;
    }
    if (!fall) return {};
    const std::string where = Place_Of(*fall, path);
    if (!May_Sort(ask, name, where, notes)) {
        notes.refusal = "ERROR Opening file: " + name + '\n' + where;
        return Load_Result::refused;
    }
    Sort_By_X(fresh.pattern);
    return {};
}

// The rows that are there leave, with all that was told of them.
void Begin_Anew(Session& session) {
    session.lists.fit = {};
    Reset_Profiles(session);
    session.plot.y_scale = Y_Scale::linear;
    Set_Menu_Empty(session);
}

// The second to the tenth calculated intensity tell whether the file brings a curve of a refinement; a curve may begin with a gap.
bool Brings_Calculated_Curve(const Diffraction_Pattern_Type& p) {
    float sum = 0;
    int told = 0;
    for (std::size_t i = 1; i < p.ycalc.size() && told < 9; ++i) {
        if (std::isnan(p.ycalc[i])) continue;
        sum += p.ycalc[i];
        ++told;
    }
    return sum > least_ycalc_sum;
}

}  // namespace

std::string Absolute_Path(const Configuration& config, const std::string& path) { return Absolute_Path(config, path, IOsDirName()); }

std::string Absolute_Path(const Configuration& config, const std::string& path, const std::string& directory) {
    const std::string full = Is_Absolute(path, config.sep) ? path : config.Path(directory, path);
    return config.sep == '/' ? std::filesystem::path(full).lexically_normal().string() : full;
}

bool Table_Is_Full(const Session& session, Ask& ask) {
    if (session.store.full()) ask.Error(std::string(table_full_text));
    return session.store.full();
}

std::optional<Load_Result> Check_For_Row(Session& session, Ask& ask, const std::string& path, Fresh_Pattern& fresh, Load_Notes& notes) {
    const std::string name(Trim(File_Part(Absolute_Path(session.config, path), session.config.sep)));
    Status status = fresh.status;
    if (status.failed)
        status.message = "ERROR in file: " + name + "\n" + std::string(Trim(status.message));
    else
        status = Check_Read_Pattern(fresh.pattern, name);
    if (status.failed) {
        ask.Error(status.message);
        return Load_Result::failed;
    }
    Trim_Pattern(fresh.pattern);
    fresh.read = fresh.pattern.npts;
    if (Has_Sound_Points(fresh.pattern)) return {};
    return Make_Sound(ask, path, name, fresh, notes);
}

void Note_Coming_Row(Session& session, const std::string& full_path, const Fresh_Pattern& fresh, Load_Notes& notes) {
    session.store.changes.Forget();
    if (!notes.listed) MRU_Add(session, full_path);
    const std::string name(Trim(File_Part(full_path, session.config.sep)));
    notes.Count(name, fresh.pattern.npts_claimed, fresh.read, fresh.left_out);
    session.plot.history = {};
}

Load_Result Load_Row(Session& session, Ask& ask, const std::string& path, const std::string& format, Fresh_Pattern fresh,
                     Load_Notes& notes) {
    if (!notes.replaces && Table_Is_Full(session, ask)) return Load_Result::table_full;
    const std::string full_path = Absolute_Path(session.config, path);
    const std::string name(Trim(File_Part(full_path, session.config.sep)));
    if (const auto failure = Check_For_Row(session, ask, path, fresh, notes)) return *failure;
    Diffraction_Pattern_Type& pattern = fresh.pattern;

    Profile_Store& store = session.store;
    if (std::exchange(notes.replaces, false)) Begin_Anew(session);
    const int row = store.nperfiles() + 1;
    const bool rietveld = row <= profiles_with_optional_arrays && Brings_Calculated_Curve(pattern);
    PRF_Info_Add_Type info;
    info.file_name = name;
    info.directory = Directory_Part(full_path, session.config.sep);
    info.format = format;
    info.kind = rietveld ? Row_Kind::rietv : Row_Kind::data;
    store.Make_Room();

    Status status = Check_Load_Xspace(session, ask, pattern, name);
    if (status.failed) {
        ask.Error(status.message);
        return Load_Result::refused;
    }

    if (row > profiles_with_optional_arrays) Purge_Pattern(pattern, "DATA");
    Note_Coming_Row(session, full_path, fresh, notes);
    store.Append(std::move(pattern), std::move(info));
    const auto flag = static_cast<std::size_t>(row - 1);
    store.show_ycalc_of[flag] = rietveld;
    store.show_bgr_of[flag] = rietveld && format == "CIF";
    return Load_Result::added;
}

void Finish_Load(Session& session, int rows_before) {
    Profile_Store& store = session.store;
    const int rows = store.nperfiles();
    if (rows <= rows_before) return;
    const bool refined = Is_Refined(store.Info(rows).kind);  // keeps all that it has, whatever its row
    if (!refined) Purge_Pattern(store.Pattern(rows), rows <= profiles_with_optional_arrays ? "RIETV" : "DATA");
    store.profiles_uniform = rows_before == 0 && rows > 1;
}

}  // namespace vntl
