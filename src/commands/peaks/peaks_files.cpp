#include "commands/peaks/peaks_files.hpp"

#include "base/os.hpp"
#include "base/text.hpp"
#include "commands/file/save_name.hpp"
#include "commands/peaks/peaks_dialogs.hpp"
#include "external/peaks_file.hpp"
#include "session/session.hpp"
#include "session/told_wavelength.hpp"

namespace vntl {

namespace {

constexpr std::string_view overwrite_title = "Over Write this file?", peaks_failure = "Unable to write peaks data file!";

struct Saved_Format {
    Save_Form form;
    std::string_view name;  // that stands in the selector; blank: that of the first row with the extension
    std::string_view program, takes;
};

// In the order of Peaks_Format.
constexpr Saved_Format formats[] = {
    {{"Save Peaks Data File", "Peaks data file (*.*)|*.*|", "", overwrite_title, peaks_failure}, "peak.aps", "", ""},
    {{"Save Satellites Data File", "Vecfind data file (*.sat)|*.sat|", ".sat", overwrite_title, "Unable to write Satellites data file!"},
     "vecfind.sat",
     "Vecfind",
     "2theta, time of flight, d, q or s"},
    {{"DicVol06 Data File", "DicVol06 data file (*.dic)|*.dic;*.dic04;*.dic06|", ".dic", overwrite_title, peaks_failure},
     "",
     "DICVOL06",
     "theta, 2theta, d or Q = 10000/d\u00b2"},
    {{"Ito15 Data File", "Ito 15 data file (*.ito)|*.ito|", ".ito", overwrite_title, peaks_failure}, "", "ITO15", "2theta"},
    {{"Treor90 Data File", "Treor90 data file (*.inp)|*.inp|", ".inp", overwrite_title, peaks_failure},
     "",
     "TREOR90",
     "theta, 2theta or d"}};

constexpr Save_Form background_form = {"Save Background Points Data File", "Background points data file (*.bgr)|*.bgr|", ".bgr",
                                       overwrite_title, "Unable to write background points data file!"};

std::string Unit_Text(X_Space space) {
    switch (space) {
        case X_Space::none:
            return "a unit that no file tells";
        case X_Space::two_theta:
            return "2theta in degrees";
        case X_Space::tof:
            return "time of flight in \u00b5s";
        case X_Space::d_space:
        case X_Space::d_spacing:
            return "d in \u00c5";
        case X_Space::q_space:
            return "q = 2\u03c0/d in 1/\u00c5";
        case X_Space::s_space:
            return "s = 1/d in 1/\u00c5";
        default:
            return std::string(Told(space));
    }
}

Points_Source Source_Of(const Session& session) {
    const Diffraction_Pattern_Type& pattern = session.store.Pattern(1);
    const PRF_Info_Add_Type& info = session.store.Info(1);
    const std::string name(Trim(info.file_name));
    return {info.directory.empty() ? name : session.config.Path(info.directory, name),
            name,
            std::string(Trim_Right(pattern.instr)),
            std::string(Trim(pattern.scat_var)),
            std::string(Told(session.lists.peaks_found_in)),
            Date_Text_Of_Now(),
            Wavelengths_Of_Source(session.search.search_radiation, pattern.conv)};
}

// The wavelength that stands in a dialog at first. A pattern by time of flight has the constants of its clock in that place.
float Wavelength_Of(const Session& session, const Points_Source& source) {
    if (session.search.search_radiation == 1 && Contains(source.scat_var, "TOF")) return 0;
    const float known = source.wavelengths.front();
    return known > 0 ? known : Told_Wavelength(session.store.Pattern(1).title, session.store.Info(1).file_name);
}

// Of times of flight the file has a constant of the clock there, as it is.
float Vecfind_Wavelength_Of(const Session& session) {
    const Diffraction_Pattern_Type& pattern = session.store.Pattern(1);
    if (pattern.conv[0] > 0 || Contains(pattern.scat_var, "TOF")) return pattern.conv[0];
    return Told_Wavelength(pattern.title, session.store.Info(1).file_name);
}

Status Ask_For(Peaks_Format format, const Session& session, std::string& text) {
    const Points_Source source = Source_Of(session);
    const Diffraction_Pattern_Type& pattern = session.store.Pattern(1);
    const std::vector<Peak_Mark>& peaks = session.lists.peaks;
    const std::string unit = Unit_Text(session.lists.peaks_found_in), title(Trim_Right(pattern.title));
    const float wavelength = Wavelength_Of(session, source);
    switch (format) {
        case Peaks_Format::vecfind:
            return Ask_Vecfind(Vecfind_Input_Of(source, session.store.Info(1).origin_note, title, Vecfind_Wavelength_Of(session)), unit,
                               [&](const Vecfind_Input& input) { return Vecfind_File(source, input, peaks, text); });
        case Peaks_Format::dicvol: {
            Dicvol_Input input;
            input.title = title;
            input.lines = static_cast<int>(peaks.size());
            input.itype = Dicvol_Itype_Of(source.scat_var, source.xspace);
            input.wavelength = wavelength;
            return Ask_Dicvol(input, unit, [&](const Dicvol_Input& asked) { return Dicvol_File(source, asked, peaks, text); });
        }
        case Peaks_Format::ito:
            return Ask_Ito({title, wavelength, 0}, unit, [&](const Ito_Input& input) { return Ito_File(input, peaks, text); });
        case Peaks_Format::treor: {
            Treor_Input input;
            input.title = title;
            input.spacing = Treor_Spacing_Of(source.xspace);
            input.wavelength = wavelength;
            return Ask_Treor(input, unit, [&](const Treor_Input& asked) { return Treor_File(source, asked, peaks, text); });
        }
        default:
            return Free_Peaks_File(source, peaks, text);
    }
}

// The user may know better: the numbers of a list can be in a unit of the program whatever the scale is called.
Status Warn_Of_Unit(Ask& ask, const Saved_Format& saved, Peaks_Format format, X_Space unit) {
    if (Can_Say(format, Told(unit))) return Status::Done();
    const Box_Answer answer =
        ask.Box({Box_Buttons::yes_no, Box_Icon::exclamation, 2,
                 "The positions of the list are " + Unit_Text(unit) + ",\nand " + std::string(saved.program) + " takes " +
                     std::string(saved.takes) + ".\nIt would read them as something else.\nDo you want to write the file all the same?",
                 std::string(warning_title)});
    return answer == Box_Answer::yes ? Status::Done() : Status::Cancel();
}

// None for a row that came from no file.
std::string Proposed_Name(const Session& session, const Saved_Format& saved) {
    if (!saved.name.empty()) return std::string(saved.name);
    std::string stem(Trim(session.store.Info(1).file_name));
    stem.resize(stem.size() - Extension_Of(stem).size());
    const bool of_no_file = stem.empty() || stem.front() == '<';  // "<copy>"
    return of_no_file ? std::string() : stem + std::string(saved.form.extension);
}

Status Choose_And_Save(Session& session, Ask& ask, const Save_Form& form, const std::string& proposed, std::string_view text,
                       std::string* name) {
    const std::string file = Name_To_Save(session.config, ask, form, proposed);
    if (file.empty()) return Status::Cancel();
    Status status = Note_Saved(session.interface, Save_Text(form, file, text), file);
    if (status.ok() && name != nullptr) *name = file;
    return status;
}

}  // namespace

Status Save_Peaks_File(Session& session, Ask& ask, std::string_view format, std::string* name) {
    if (session.store.nperfiles() == 0 || session.lists.peaks.empty()) return Status::Fail("No peaks has been selected");
    const std::optional<Peaks_Format> known = Peaks_Format_Of(format);
    if (!known) return Status::Fail("File format unknow!");
    const Saved_Format& saved = formats[static_cast<std::size_t>(*known)];
    std::string text;
    if (Status status = Ask_For(*known, session, text); status.failed) return status;
    if (Status status = Warn_Of_Unit(ask, saved, *known, session.lists.peaks_found_in); status.failed) return status;
    return Choose_And_Save(session, ask, saved.form, Proposed_Name(session, saved), text, name);
}

Status Save_Background_File(Session& session, Ask& ask) {
    const std::vector<Background_Mark>& points = session.lists.background;
    if (session.store.nperfiles() == 0 || points.empty()) return Status::Fail("No background points has been selected");
    std::string text;
    if (Status status = Background_File(Source_Of(session), points, text); status.failed) return status;
    return Choose_And_Save(session, ask, background_form, "background.bgr", text, nullptr);
}

}  // namespace vntl
