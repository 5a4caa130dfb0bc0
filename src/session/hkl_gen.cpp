#include "session/hkl_gen.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

#include "base/text.hpp"
#include "crystal/cell.hpp"
#include "crystal/reflections.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr double degree = std::numbers::pi / 180, four_pi = 4 * std::numbers::pi;
constexpr float no_dtt2 = 1e-20f;
constexpr float least_lower_limit = 0.0001f, lower_limit_instead = 0.0002f, least_product = 0.0001f;

// --- scales of x -------------------------------------------------------------------------------------------------------------------

// The spacing at a time of flight, nothing positive where none reaches it. A time beyond the largest that dtt2 < 0 allows has the
// spacing of that one.
double D_At_Time(const X_Constants& conv, double t) {
    const double dtt1 = conv[0], dtt2 = conv[1];
    const double root = std::sqrt(std::max(0.0, dtt1 * dtt1 + 4 * dtt2 * t));
    const double d = (root - dtt1) / (2 * dtt2);
    return d > 0 ? d : -(root + dtt1) / (2 * dtt2);
}

bool Has_Dtt2(const X_Constants& conv) { return std::fabs(conv[1]) > no_dtt2; }

// The sine of an angle from a window, which may reach over the ends of the scale.
double Sine_At(double two_theta) { return std::sin(degree * std::clamp(two_theta / 2, -90.0, 90.0)); }

double S_At(X_Space space, const X_Constants& conv, double x) {
    switch (space) {
        case X_Space::two_theta:
            return Sine_At(x) / conv[0];
        case X_Space::tof:
            return Has_Dtt2(conv) ? 1 / (2 * D_At_Time(conv, x)) : conv[0] / (2 * x);
        case X_Space::q_space:
            return x / four_pi;
        case X_Space::s_space:
            return x / 2;
        default:
            return 1 / (2 * x);
    }
}

bool Falls_With_S(X_Space space) { return space == X_Space::tof || space == X_Space::d_space || space == X_Space::d_spacing; }

std::string Label_Of(const Hkl& hkl) { return std::to_string(hkl[0]) + ' ' + std::to_string(hkl[1]) + ' ' + std::to_string(hkl[2]); }

// A line at its place, from the foot of the window up to the pattern.
std::vector<Reflection_Mark> Marks_Of(const Reflection_List_Type& list, X_Space space, const Diffraction_Pattern_Type& pattern) {
    std::vector<Reflection_Mark> marks;
    marks.reserve(list.Ref.size());
    for (const Reflection_Type& reflection : list.Ref) {
        const float x = X_Of_Reflection(space, pattern.conv, reflection.S);
        const std::size_t point = std::max<std::size_t>(Point_At(pattern, x), 1) - 1;
        marks.push_back({x, pattern.y[point], Label_Of(reflection.H), reflection.Mult, 1 / (2 * reflection.S)});
    }
    return marks;
}

}  // namespace

float Hkl_Gen_State::At_Place(std::size_t parameter, int place) const {
    constexpr double decimals = 1e6;
    const double value = (static_cast<double>(place) / scale[parameter] + 1) * base[parameter];
    return static_cast<float>(std::round(decimals * value) / decimals);
}

Status Choose_Hkl_Group(Hkl_Gen_State& state, std::string_view symbol, std::string& why) {
    Space_Group_Type group;
    const Status status = Characters(symbol) > hkl_symbol_width ? Status::Fail("The symbol is too long") : Set_SpaceGroup(symbol, group);
    if (status.failed) {
        why = Trim(status.message);
        return Status::Fail("Bad SPGR, unknow CrystalSys");
    }
    state.hkl_symbol = symbol;
    state.hkl_system = group.crystal_system;
    state.ties = Ties_Of(group);
    state.group = std::move(group);
    return Status::Done();
}

bool Holds_Reflections(X_Space space) {
    return space == X_Space::two_theta || space == X_Space::q_space || space == X_Space::s_space || Falls_With_S(space);
}

Status Check_Hkl_Constants(X_Space space, const X_Constants& conv) {
    if (space == X_Space::two_theta && !(conv[0] > 0)) return Status::Fail("Bad wavelength");
    if (space == X_Space::tof && !Has_Dtt2(conv) && !(conv[0] > 0)) return Status::Fail("Error: if dtt2=0 then dtt1 must be > 0");
    return Status::Done();
}

Status Hkl_Limits(X_Space space, const X_Constants& conv, float x1, float x2, float& s1, float& s2) {
    if (!Holds_Reflections(space)) return Status::Fail("xspace not permited");
    if (Status status = Check_Hkl_Constants(space, conv); status.failed) return status;
    s1 = static_cast<float>(S_At(space, conv, x1));
    s2 = static_cast<float>(S_At(space, conv, x2));
    if (Falls_With_S(space)) std::swap(s1, s2);
    if (!std::isfinite(s1) || !std::isfinite(s2) || (s1 <= 0 && s2 <= 0)) return Status::Fail("Bad window limits");
    if (s1 <= least_lower_limit) s1 = lower_limit_instead;
    if (s1 * s2 < least_product) return Status::Fail("Error liminf*limsup < 0.0001");
    return Status::Done();
}

float X_Of_Reflection(X_Space space, const X_Constants& conv, float s) {
    const double sine = s, d = 1 / (2 * sine);
    switch (space) {
        case X_Space::two_theta:
            return static_cast<float>(2 / degree * std::asin(std::min(1.0, conv[0] * sine)));
        case X_Space::tof:
            return static_cast<float>(conv[0] * d + conv[1] * d * d);
        case X_Space::q_space:
            return static_cast<float>(four_pi * sine);
        case X_Space::s_space:
            return static_cast<float>(2 * sine);
        default:
            return static_cast<float>(d);
    }
}

Status Hkl_Gen_Run(Session& session, const Cell_Values& given) {
    Hkl_Gen_State& state = session.hkl_gen;
    const Plot_State& plot = session.plot;
    const Diffraction_Pattern_Type& pattern = session.store.Pattern(1);
    float s1 = 0, s2 = 0;
    if (Status status = Hkl_Limits(plot.xspace, pattern.conv, plot.x_view_min, plot.x_view_max, s1, s2); status.failed) return status;
    const Cell_Values values = state.ties.Tied(given);
    if (!std::ranges::all_of(values, [](float value) { return value > 0; })) return Status::Fail("Wrong cell parameters");
    state.cell = values;

    Crystal_Cell_Type cell;
    Reflection_List_Type list;
    Status status = Set_Crystal_Cell({values[cell_a], values[cell_b], values[cell_c]},
                                     {values[cell_alpha], values[cell_beta], values[cell_gamma]}, cell);
    if (status.ok()) status = Hkl_Uni_Reflect(cell, state.group, true, s1, s2, "s", list, false, most_hkl_marks);
    if (status.failed) return status;
    session.lists.hklgen = Marks_Of(list, plot.xspace, pattern);
    session.plot.hits = {};  // they were reflections of the list before
    return Status::Done();
}

}  // namespace vntl
