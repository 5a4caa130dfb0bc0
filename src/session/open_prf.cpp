// Loading a profile file: the Load sequence of any file, for a row whose reflections and excluded regions go with its points, and of which
// there is one at most.
#include "session/open_prf.hpp"

#include <span>
#include <utility>

#include "base/os.hpp"
#include "base/text.hpp"
#include "session/session.hpp"
#include "session/xspace.hpp"
#include "session/xspace_vocabulary.hpp"

namespace vntl {

namespace {

constexpr std::string_view overwrite_title = "Warning";

// The row with a refined profile, 0 without one. Between two files of one command `ProfilePRFactive` does not know of it yet.
int Refined_Row(const Profile_Store& store) {
    for (int row = 1; row <= store.nperfiles(); ++row)
        if (Is_Refined(store.Info(row).kind)) return row;
    return 0;
}

bool May_Overwrite(Ask& ask, const std::string& file_name) {
    const std::string text = "The main window contain a PRF profile:\n" + file_name + "\nDo you want overwrite this profile?";
    return ask.Box({Box_Buttons::yes_no, Box_Icon::question, 1, text, std::string(overwrite_title)}) == Box_Answer::yes;
}

// The steps by which the points of a file are brought to the present space; none where it has that space, or may not join.
std::span<const X_Step> Steps_To_Present(const Session& session, const Diffraction_Pattern_Type& pattern) {
    const Space* const present = Find_Space(session.plot.xspace);
    const Space* const own = Find_Space(pattern.scat_var);
    if (present == nullptr || own == nullptr || present->kind > Space_Kind::s) return {};
    const bool measured = own->kind == Space_Kind::two_theta || own->kind == Space_Kind::tof;
    return measured && own->kind != present->kind ? Chain_Between(own, present->kind).steps : std::span<const X_Step>();
}

// Both records join the present space, or neither.
Status Join_Present(Session& session, Ask& ask, Diffraction_Pattern_Type& pattern, PRF_Info_Add_Type& info, bool& converted) {
    const std::span<const X_Step> steps = Steps_To_Present(session, pattern);
    if (Status status = Check_Load_Xspace(session, ask, pattern, info.file_name); status.failed) return status;
    Convert_Marks(steps, pattern.conv, info, ask);
    converted = !steps.empty();
    return Status::Done();
}

bool Is_Row_Of(const Session& session, int row, const std::string& full_path) {
    const PRF_Info_Add_Type& info = session.store.Info(row);
    return session.config.Path(info.directory, info.file_name) == full_path;
}

// Nothing stands for the present space but the row that a new one replaces, and that one may not join it: as in an empty store.
bool Begins_Space(const Session& session, int replaced, const Diffraction_Pattern_Type& pattern) {
    const Space* const former = Find_Space(session.store.Pattern(replaced).scat_var);
    const Space* const own = Find_Space(pattern.scat_var);
    return session.store.nperfiles() == 1 && own != nullptr && (own->kind == Space_Kind::mono || own != former);
}

// A profile that was brought to another scale has no titles of its own for it.
void Name_Axes(Session& session, const Diffraction_Pattern_Type& pattern, bool converted) {
    if (converted)
        Set_Xspace(session, Told(session.plot.xspace), true);
    else
        Set_Xspace(session, pattern.scat_var, true, pattern.legend_x, pattern.legend_y);
}

}  // namespace

Load_Result Load_Prf_Row(Session& session, Ask& ask, const std::string& path, Fresh_Pattern fresh, PRF_Info_Add_Type info,
                         Load_Notes& notes, bool renews) {
    Profile_Store& store = session.store;
    const std::string full_path = Absolute_Path(session.config, path);
    if (const auto failure = Check_For_Row(session, ask, path, fresh, notes)) return *failure;
    Diffraction_Pattern_Type& pattern = fresh.pattern;
    info.file_name = Trim(File_Part(full_path, session.config.sep));
    info.directory = Directory_Part(full_path, session.config.sep);

    store.Make_Room();
    const int refined = Refined_Row(store);
    const bool own = renews && refined != 0 && Is_Row_Of(session, refined, full_path);
    const X_Space present = session.plot.xspace;
    if (own && Begins_Space(session, refined, pattern)) session.plot.xspace = X_Space::none;
    bool converted = false;
    if (const Status status = Join_Present(session, ask, pattern, info, converted); status.failed) {
        session.plot.xspace = present;
        ask.Error(status.message);
        return Load_Result::refused;
    }
    if (refined != 0 && !own && !May_Overwrite(ask, store.Info(refined).file_name)) {
        notes.refusal = info.file_name + " does not take the place of " + store.Info(refined).file_name;
        return Load_Result::refused;
    }

    Name_Axes(session, pattern, converted);
    Note_Coming_Row(session, full_path, fresh, notes);
    if (refined != 0) {
        store.Pattern(refined) = std::move(pattern);
        store.Info(refined) = std::move(info);
    } else {
        store.Append(std::move(pattern), std::move(info));
    }
    return Load_Result::added;
}

}  // namespace vntl
