// What the present x space is called, what may join it, and what the menu shows of it.
//
// All rows share one abscissa. The vocabulary below names every abscissa that a file may bring; a text belongs to the first word that it
// contains. Diffraction angle, time of flight and the three scales d, Q = 2 pi/d and s = 1/d convert into each other; integrated
// intensities and general abscissas stand alone.
#include "session/xspace.hpp"

#include <cmath>
#include <numbers>
#include <span>

#include "base/text.hpp"
#include "session/session.hpp"

namespace vntl {
namespace {

constexpr int to_2theta = 40042, to_tof = 40043, to_d = 40017, to_q = 40089, to_s = 40081;
constexpr int change_wavelength = 40087, change_dtt = 40088;

enum class Kind { two_theta, tof, mono, d, q, s, general };

struct Space {
    std::string_view word;
    Kind kind;
    std::string_view x_title, y_title;
    int command = 0;    // checked in this space, 0 none
    int constants = 0;  // command that edits the constants of its conversion, 0 none
};

constexpr std::string_view intensity = "Intensity (arb. units)";
constexpr Space vocabulary[] = {
    {"2theta", Kind::two_theta, "2theta (deg)", intensity, to_2theta, change_wavelength},
    {"TOF", Kind::tof, "TOF (µsec)", intensity, to_tof, change_dtt},
    {"mono", Kind::mono, "sin(theta)/lambda", "Fcalc. - Fobs."},
    {"d-space", Kind::d, "d-spacing (Å)", intensity, to_d},
    {"d-spacing", Kind::d, "d-spacing (Å)", intensity, to_d},
    {"q-space", Kind::q, "Q (Å-1)", intensity, to_q},
    {"s-space", Kind::s, "s (Å-1)", intensity, to_s},
    {"Lambda", Kind::general, "Lambda", "F(Lambda)"},
    {"Energy", Kind::general, "Energy", "F(Energy)."},
    {"Temperature", Kind::general, "Temperature", "F(Temperature)"},
    {"Frequency", Kind::general, "Frequency", "F(Frequency)"},
    {"Time", Kind::general, "Time", "F(time)"},
    {"Distance", Kind::general, "Distance(R) (Angstroms)", "G(R)"},
    {"r.l.u.", Kind::general, "r.l.u.", intensity},
};

const Space* Find_Space(std::string_view text) {
    for (const Space& space : vocabulary)
        if (Contains(text, space.word)) return &space;
    return nullptr;
}

// What a file of one kind meets in a present space of another: an empty text accepts it. "{K}" stands for the present general abscissa.
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

    {Kind::d, Kind::two_theta, "Present space: d-space, a file in 2theta cannot be converted on loading yet"},
    {Kind::d, Kind::tof, "Present space: d-space, a file in TOF cannot be converted on loading yet"},
    {Kind::d, Kind::mono,
     "Present space: d-spacing, file type Integrated Intensity,\n"
     "only a single Integrated Intensity type is allowed at the same time"},
    {Kind::d, Kind::general, "Present Space: d-spacing, file type: General Abcisa,\nIt is not possible to merge different x-spaces"},

    {Kind::q, Kind::two_theta, "Present space: q-space, a file in 2theta cannot be converted on loading yet"},
    {Kind::q, Kind::tof, "Present space: q-space, a file in TOF cannot be converted on loading yet"},
    {Kind::q, Kind::mono,
     "Present Space: q-space, file type Integrated Intensity ,\n"
     "only one profile of type Integrated Intensity is allowed at same time"},
    {Kind::q, Kind::general, "Present Space: q-space, file type: General Abcisa,\nIt is not possible to merge different x-spaces"},

    {Kind::s, Kind::two_theta, "Present space: s-space, a file in 2theta cannot be converted on loading yet"},
    {Kind::s, Kind::tof, "Present space: s-space, a file in TOF cannot be converted on loading yet"},
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

// The first file sets the space, with the axis titles that it brings itself; a y title is of use only beside an x title.
Status Join_Empty(Session& session, const Diffraction_Pattern_Type& pattern, std::string_view scat_var, const Space* file) {
    if (file == nullptr || file->kind == Kind::q || file->kind == Kind::s) return Unknown_Variable(scat_var);
    switch (file->kind) {
        case Kind::two_theta:
        case Kind::tof:
        case Kind::mono:
            Set_Xspace(session, scat_var);
            break;
        default:
            if (file->kind == Kind::d && !Contains(scat_var, "d-spacing")) return Unknown_Variable(scat_var);
            if (Trim(pattern.legend_x).empty())
                Set_Xspace(session, scat_var);
            else
                Set_Xspace(session, scat_var, {}, pattern.legend_x, pattern.legend_y);
    }
    return Status::Done();
}

}  // namespace

Status Check_Load_Xspace(Session& session, Diffraction_Pattern_Type& pattern, const std::string& /*filename*/) {
    const std::string_view scat_var = Trim(pattern.scat_var);
    const Space* file = Find_Space(scat_var);
    if (session.plot.xspace == "----") return Join_Empty(session, pattern, scat_var, file);

    const Space* present = Find_Space(session.plot.xspace);
    if (present == nullptr) return Status::Fail("Vantrelo in unknown X-space ");
    if (file == nullptr) return Unknown_Variable(scat_var);
    if (present->kind == Kind::d && Contains(scat_var, "d-spacing")) {
        Set_Xspace(session, scat_var);
        return Status::Done();
    }
    if (present->kind == Kind::general && file->word == present->word) return Status::Done();
    for (const Load_Rule& rule : load_rules) {
        if (rule.present != present->kind || rule.file != file->kind) continue;
        return rule.refusal.empty() ? Status::Done() : Status::Fail(Replace_All(rule.refusal, "{K}", present->word));
    }
    return Unknown_Variable(scat_var);
}

void Set_Xspace(Session& session, std::string_view name, std::string_view file_kind, std::string_view x_title, std::string_view y_title) {
    const Space* space = Find_Space(name);
    const bool general = space != nullptr && space->kind == Kind::general;
    std::string_view x = space != nullptr ? space->x_title : std::string_view();
    std::string_view y = space != nullptr ? space->y_title : std::string_view();
    if (general && space->word == "Distance" && !file_kind.empty()) y = "G(R) x 1000";
    if (!Trim(x_title).empty()) x = Trim_Right(x_title);
    if (general && !Trim(y_title).empty()) y = Trim_Right(y_title);
    session.plot.xspace = Cut(Trim(name), scat_var_width);
    session.plot.xlabel_text = Cut(x, legend_width);
    session.plot.ylabel_text = Cut(y, legend_width);

    Interface_State& menu = session.interface;
    for (const int command : {to_2theta, to_tof, to_d, to_q, to_s}) menu.Check(command, false);
    const bool converts = space != nullptr && space->command != 0;
    for (const int command : {to_d, to_q, to_s}) menu.Enable(command, converts);
    for (const int command : {change_wavelength, change_dtt}) menu.Enable(command, converts && space->constants == command);
    if (converts) menu.Check(space->command, true);
}

std::optional<double> D_Spacing(const Session& session, double x) {
    const Space* space = Find_Space(session.plot.xspace);
    if (space == nullptr || session.store.nperfiles() == 0) return {};
    const std::array<float, 5>& conv = session.store.Pattern(1).conv;
    double d = 0;
    switch (space->kind) {
        case Kind::two_theta:
            d = conv[0] / (2 * std::sin(0.5 * x * std::numbers::pi / 180));
            break;
        case Kind::tof: {
            const double dtt1 = conv[0], dtt2 = conv[1], root = dtt1 * dtt1 + 4 * dtt2 * x;
            if (!(dtt1 > 0) || root < 0) return {};
            d = 2 * x / (dtt1 + std::sqrt(root));  // the root that stays near x / dtt1
            break;
        }
        case Kind::q:
            d = 2 * std::numbers::pi / x;
            break;
        case Kind::s:
            d = 1 / x;
            break;
        default:
            return {};
    }
    return d > 0 && std::isfinite(d) ? std::optional(d) : std::nullopt;
}

}  // namespace vntl
