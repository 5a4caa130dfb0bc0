// What the present x space is called, what may join it, and what the menu shows of it.
//
// All rows share one abscissa. The vocabulary below names every abscissa that a file may bring; a text belongs to the first word that it
// contains. Diffraction angle, time of flight and the three scales d, Q = 2 pi/d and s = 1/d convert into each other; integrated
// intensities and general abscissas stand alone.
#include "session/xspace.hpp"

#include <algorithm>
#include <cmath>

#include "base/text.hpp"
#include "session/session.hpp"
#include "session/told_wavelength.hpp"
#include "session/xspace_vocabulary.hpp"

namespace vntl {
namespace {

using Kind = Space_Kind;

constexpr std::string_view intensity = "Intensity (arb. units)";
constexpr Space vocabulary[] = {
    {X_Space::two_theta, Kind::two_theta, "2theta (deg)", intensity, command::to_two_theta, command::change_wavelength},
    {X_Space::tof, Kind::tof, "TOF (µsec)", intensity, command::to_tof, command::change_dtt},
    {X_Space::mono, Kind::mono, "sin(theta)/lambda", "Fcalc. - Fobs."},
    {X_Space::d_space, Kind::d, "d-spacing (Å)", intensity, command::to_d},
    {X_Space::d_spacing, Kind::d, "d-spacing (Å)", intensity, command::to_d},
    {X_Space::q_space, Kind::q, "Q (Å-1)", intensity, command::to_q},
    {X_Space::s_space, Kind::s, "s (Å-1)", intensity, command::to_s},
    {X_Space::lambda, Kind::general, "Lambda", "F(Lambda)"},
    {X_Space::energy, Kind::general, "Energy", "F(Energy)."},
    {X_Space::temperature, Kind::general, "Temperature", "F(Temperature)"},
    {X_Space::frequency, Kind::general, "Frequency", "F(Frequency)"},
    {X_Space::time, Kind::general, "Time", "F(time)"},
    {X_Space::distance, Kind::general, "Distance(R) (Angstroms)", "G(R)"},
    {X_Space::rlu, Kind::general, "r.l.u.", intensity},
    {X_Space::angle, Kind::general, "Angle (deg)", intensity},  // of another axis than 2theta
    {X_Space::position, Kind::general, "Position (mm)", intensity},
};

// What a file of one kind meets in a present space of another: an empty text accepts it, and brings it there. "{K}" stands for the present
// general abscissa.
struct Load_Rule {
    Kind present, file;
    std::string_view refusal;
};

constexpr Load_Rule load_rules[] = {
    {Kind::two_theta, Kind::two_theta, ""},
    {Kind::two_theta, Kind::tof, "Present space: 2theta, file in TOF,\nIt is not possible to merge different scattering variables "},
    {Kind::two_theta, Kind::mono, "Present Space: 2theta, file type Integrated Intensity,\nconversion of xspace is not permitted"},
    {Kind::two_theta, Kind::general, "Present Space: 2theta, file type: General Abcisa,\nIt is not possible to merge different x-spaces"},

    {Kind::tof, Kind::two_theta, "Present space: TOF, file in 2theta,\nIt is not possible to merge different scattering variables"},
    {Kind::tof, Kind::tof, ""},
    {Kind::tof, Kind::mono, "Present space: TOF, file type Integrated Intensity,\nconversion of xspace is not permitted"},
    {Kind::tof, Kind::general, "Present Space: TOF, file type: General Abcisa,\nIt is not possible to merge different x-spaces"},

    {Kind::mono, Kind::two_theta, "Present space: Integrated Intensity, file in 2theta,\nconversion of xspace is not permitted"},
    {Kind::mono, Kind::tof, "Present space: Integrated Intensity, file in TOF,\nconversion of xspace is not permitted"},
    {Kind::mono, Kind::mono,
     "Present space: Integrated Intensity, file type Integrated Intensity,\n"
     "only one profile of type Integrated Intensity can be plotted at same time"},
    {Kind::mono, Kind::general,
     "Present Space: Integrated Intensity, file type: General Abcisa,\nIt is not possible to merge different x-spaces"},

    {Kind::d, Kind::d, ""},  // those in "d-spacing" are looked at before
    {Kind::d, Kind::two_theta, ""},
    {Kind::d, Kind::tof, ""},
    {Kind::d, Kind::mono,
     "Present space: d-spacing, file type Integrated Intensity,\n"
     "only a single Integrated Intensity type is allowed at the same time"},
    {Kind::d, Kind::general, "Present Space: d-spacing, file type: General Abcisa,\nIt is not possible to merge different x-spaces"},

    {Kind::q, Kind::q, ""},
    {Kind::q, Kind::two_theta, ""},
    {Kind::q, Kind::tof, ""},
    {Kind::q, Kind::mono,
     "Present Space: q-space, file type Integrated Intensity ,\n"
     "only one profile of type Integrated Intensity is allowed at same time"},
    {Kind::q, Kind::general, "Present Space: q-space, file type: General Abcisa,\nIt is not possible to merge different x-spaces"},

    {Kind::s, Kind::two_theta, ""},
    {Kind::s, Kind::tof, ""},
    {Kind::s, Kind::mono,
     "Present Space: s-space, file type Integrated Intensity,\n"
     "only one Integrated Intensity pattern is allowed at the same time"},
    {Kind::s, Kind::general, "Present Space: s-space, file type: General Abcisa,\nIt is not possible to merge different x-spaces"},

    // A second file of the same general abscissa is accepted before these are looked at.
    {Kind::general, Kind::two_theta, "Present space: {K}, file in 2Theta,\nIt is not possible to merge different x-spaces"},
    {Kind::general, Kind::tof, "Present space: {K}, file in TOF,\nIt is not possible to merge different x-spaces"},
    {Kind::general, Kind::mono, "Present Space: {K}, file type Integrated Intensity \nIt is not possible to merge different x-spaces"},
    {Kind::general, Kind::general, "Present Space: {K}, file type General Abcisa \nIt is not possible to merge different x-spaces"},
};

Status Unknown_Variable(std::string_view scat_var) { return Status::Fail("Unknown scattering variable: " + std::string(scat_var)); }

// Whether the axis takes the titles of the file. Q and spacings have those of the vocabulary, of which readers know the plain form alone.
bool Brings_Titles(const Space& file, std::string_view legend) {
    if (Trim(legend).empty()) return false;
    return file.kind == Kind::general || (file.space == X_Space::d_spacing && !Lower(Trim(legend)).starts_with("d-spac"));
}

// The first file sets the space; a y title is of use only beside an x title.
Status Join_Empty(Session& session, const Diffraction_Pattern_Type& pattern, std::string_view scat_var, const Space* file) {
    if (file == nullptr || file->kind == Kind::s) return Unknown_Variable(scat_var);
    if (Brings_Titles(*file, pattern.legend_x))
        Set_Xspace(session, scat_var, false, pattern.legend_x, pattern.legend_y);
    else
        Set_Xspace(session, scat_var);
    return Status::Done();
}

// A new pattern alone goes along a chain, by its own constants or those that the user gives.
Status Bring_To_Present(const X_Chain& chain, Ask& ask, Diffraction_Pattern_Type& pattern, const std::string& file_name) {
    const Constants_Kind kind = chain.constants.value_or(Constants_Kind::wavelength);
    if (!(pattern.conv[0] > 0)) {
        Conversion_Constants given{std::string(Trim(file_name)), pattern.conv[0], pattern.conv[1],
                                   kind == Constants_Kind::wavelength ? Told_Wavelength(pattern.title, file_name) : 0};
        const auto check = [&](std::span<const Conversion_Constants> file) {
            return file.front().first > 0 ? Wrong_Constants{} : Wrong_Constants{Constants_Refusal(kind, file_name), {1}};
        };
        if (!ask.Constants_Of_File(kind, given, check)) return Status::Fail("Load profile cancelled");
        pattern.conv[0] = given.first;
        pattern.conv[1] = given.second;
    }
    if (Status status = Check_Convertible(chain.steps, pattern, std::string(Trim(file_name))); status.failed) return status;
    Convert_Points(chain.steps, pattern);
    return Status::Done();
}

}  // namespace

const Space* Find_Space(std::string_view text) {
    for (const Space& space : vocabulary)
        if (Contains(text, space.Word())) return &space;
    return nullptr;
}

const Space* Find_Space(X_Space space) {
    for (const Space& row : vocabulary)
        if (row.space == space) return &row;
    return nullptr;
}

Status Check_Load_Xspace(Session& session, Ask& ask, Diffraction_Pattern_Type& pattern, const std::string& filename) {
    const std::string_view scat_var = Trim(pattern.scat_var);
    const Space* file = Find_Space(scat_var);
    if (session.plot.xspace == X_Space::none) return Join_Empty(session, pattern, scat_var, file);

    const Space* present = Find_Space(session.plot.xspace);
    if (file == nullptr) return Unknown_Variable(scat_var);
    if (present->kind == Kind::d && Contains(scat_var, "d-spacing")) {
        Set_Xspace(session, scat_var);
        return Status::Done();
    }
    if (present->kind == Kind::general && file->space == present->space) return Status::Done();
    for (const Load_Rule& rule : load_rules) {
        if (rule.present != present->kind || rule.file != file->kind) continue;
        if (!rule.refusal.empty()) return Status::Fail(Replace_All(rule.refusal, "{K}", present->Word()));
        return rule.present == rule.file ? Status::Done() : Bring_To_Present(Chain_Between(file, present->kind), ask, pattern, filename);
    }
    return Unknown_Variable(scat_var);
}

void Set_Xspace(Session& session, std::string_view name, bool refinement, std::string_view x_title, std::string_view y_title) {
    const Space* space = Find_Space(name);
    if (space == nullptr) return;
    const bool general = space->kind == Kind::general;
    std::string_view x = space->x_title, y = space->y_title;
    if (space->space == X_Space::distance && refinement) y = "G(R) x 1000";
    if (!Trim(x_title).empty()) x = Trim_Right(x_title);
    if (general && !Trim(y_title).empty()) y = Trim_Right(y_title);
    session.plot.xspace = space->space;
    session.plot.xlabel_text = Cut(x, legend_width);
    session.plot.ylabel_text = Cut(y, legend_width);

    Interface_State& menu = session.interface;
    using namespace command;
    for (const int id : {to_two_theta, to_tof, to_d, to_q, to_s}) menu.Check(id, false);
    const bool converts = space->command != 0;
    for (const int id : {to_d, to_q, to_s}) menu.Enable(id, converts);
    for (const int id : {change_wavelength, change_dtt}) menu.Enable(id, converts && space->constants == id);
    menu.Enable(constants_from_file, space->constants != 0);
    if (converts) menu.Check(space->command, true);
}

std::optional<double> D_Spacing(const Session& session, double x) {
    constexpr double rounding = 1e-6;
    const Space* space = Find_Space(session.plot.xspace);
    if (space == nullptr || session.store.nperfiles() == 0) return {};
    const X_Constants& conv = session.store.Pattern(std::max(1, session.store.First_Shown())).conv;
    double d = 0;
    switch (space->kind) {
        case Kind::two_theta:
            d = Convert_Value(X_Step::two_theta_to_d, x, conv);
            break;
        case Kind::tof:
            if (x > 0) d = Convert_Value(X_Step::tof_to_d, x, conv);
            if (Convert_Value(X_Step::d_to_tof, d, conv) < (1 - rounding) * x) return {};  // no spacing reaches the time
            break;
        case Kind::q:
            d = Convert_Value(X_Step::d_q, x, conv);
            break;
        case Kind::s:
            d = Convert_Value(X_Step::d_s, x, conv);
            break;
        default:
            return {};
    }
    return d > 0 && std::isfinite(d) ? std::optional(d) : std::nullopt;
}

}  // namespace vntl
