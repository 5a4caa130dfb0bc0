#include "patterns/nexus/nexus_axis.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/text.hpp"

namespace vntl {

namespace {

enum class Quantity { angle, inverse_length, length, time, energy, temperature };

struct Unit {
    std::string_view word;
    Quantity quantity;
    double factor;  // to degrees, 1/angstrom, angstroms, microseconds, keV, kelvin
};

constexpr double degrees = 180 / std::numbers::pi;
constexpr Unit units_table[] = {
    {"deg", Quantity::angle, 1},
    {"degs", Quantity::angle, 1},
    {"degree", Quantity::angle, 1},
    {"degrees", Quantity::angle, 1},
    {"rad", Quantity::angle, degrees},
    {"radian", Quantity::angle, degrees},
    {"radians", Quantity::angle, degrees},
    {"mrad", Quantity::angle, degrees / 1000},
    {"1/nm", Quantity::inverse_length, 0.1},
    {"nm-1", Quantity::inverse_length, 0.1},
    {"1/a", Quantity::inverse_length, 1},
    {"a-1", Quantity::inverse_length, 1},
    {"1/m", Quantity::inverse_length, 1e-10},
    {"m-1", Quantity::inverse_length, 1e-10},
    {"momentumtransfer", Quantity::inverse_length, 1},
    {"a", Quantity::length, 1},
    {"dspacing", Quantity::length, 1},
    {"nm", Quantity::length, 10},
    {"pm", Quantity::length, 0.01},
    {"m", Quantity::length, 1e10},
    {"us", Quantity::time, 1},
    {"usec", Quantity::time, 1},
    {"microsecond", Quantity::time, 1},
    {"microseconds", Quantity::time, 1},
    {"tof", Quantity::time, 1},
    {"ns", Quantity::time, 1e-3},
    {"nanosecond", Quantity::time, 1e-3},
    {"nanoseconds", Quantity::time, 1e-3},
    {"ms", Quantity::time, 1e3},
    {"millisecond", Quantity::time, 1e3},
    {"milliseconds", Quantity::time, 1e3},
    {"s", Quantity::time, 1e6},
    {"sec", Quantity::time, 1e6},
    {"second", Quantity::time, 1e6},
    {"seconds", Quantity::time, 1e6},
    {"kev", Quantity::energy, 1},
    {"ev", Quantity::energy, 1e-3},
    {"k", Quantity::temperature, 1},
    {"kelvin", Quantity::temperature, 1},
};

// "Å^{-1}", "angstrom^-1" and "A⁻¹" are "a-1".
std::string Bare_Units(std::string_view told) {
    std::string text = To_Utf8(told);
    for (const auto& [from, to] : std::initializer_list<std::pair<std::string_view, std::string_view>>{{"\xC3\x85", "a"},
                                                                                                       {"\xC3\xA5", "a"},
                                                                                                       {"\xE2\x84\xAB", "a"},
                                                                                                       {"\xC2\xB5", "u"},
                                                                                                       {"\xCE\xBC", "u"},
                                                                                                       {"\xC2\xB0", "deg"},
                                                                                                       {"\xE2\x81\xBB\xC2\xB9", "-1"}})
        text = Replace_All(text, from, to);
    text = Lower(text);
    for (const std::string_view word : {"angstroms", "angstrom", "ang"}) text = Replace_All(text, word, "a");
    std::erase_if(text, [](char c) { return std::string_view(" ^*{}()[]\"'").find(c) != std::string_view::npos; });
    return text;
}

const Unit* Find_Unit(std::string_view told) {
    const std::string bare = Bare_Units(told);
    const auto found = std::find_if(std::begin(units_table), std::end(units_table), [&](const Unit& unit) { return unit.word == bare; });
    return found == std::end(units_table) ? nullptr : &*found;
}

// "q (nm^-1)": the units that a longer name ends with.
std::string_view Units_Within(std::string_view long_name) {
    const std::size_t open = long_name.find_last_of("([");
    if (open == std::string_view::npos) return {};
    return long_name.substr(open);
}

std::string Bare_Name(std::string_view name) {
    std::string bare = Lower(name);
    std::erase_if(bare, [](char c) { return !((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')); });
    return bare;
}

template <std::size_t n>
bool Is_One_Of(std::string_view name, const std::string_view (&names)[n]) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

constexpr std::string_view other_angles[] = {"omega", "om", "phi", "chi",     "psi",      "eta",          "kappa",
                                             "theta", "th", "mu",  "azimuth", "rotation", "azimuthalaxis"};
constexpr std::string_view scattering_angles[] = {"twotheta", "2theta", "tth", "2th", "ttheta", "polarangle", "polar"};
constexpr std::string_view transfers[] = {"q", "momentumtransfer", "radialq"};
constexpr std::string_view spacings[] = {"d", "dspacing"};

Nexus_Axis Scale(std::string_view scat_var, std::string_view legend, double factor) {
    return {std::string(scat_var), std::string(legend), {}, factor, false};
}

// Where no units are told, a name may leave no doubt.
const Unit* Unit_By_Name(const std::string& bare) {
    if (Is_One_Of(bare, scattering_angles) || Is_One_Of(bare, other_angles)) return Find_Unit("deg");
    if (Is_One_Of(bare, transfers)) return Find_Unit("1/a");
    if (Is_One_Of(bare, spacings)) return Find_Unit("a");
    return bare == "tof" || bare == "timeofflight" ? Find_Unit("us") : nullptr;
}

std::optional<double> In(Quantity quantity, double value, std::string_view units) {
    if (Trim(units).empty()) return value;
    const Unit* const unit = Find_Unit(units);
    if (unit == nullptr || unit->quantity != quantity) return {};
    return value * unit->factor;
}

}  // namespace

std::optional<Nexus_Axis> Nexus_Axis_Of(std::string_view name, std::string_view units, std::string_view long_name) {
    const std::string bare = Bare_Name(name);
    const Unit* unit = Find_Unit(units);
    if (unit == nullptr && Trim(units).empty()) unit = Find_Unit(Units_Within(long_name));
    const bool guessed = unit == nullptr;
    if (unit == nullptr && Trim(units).empty()) unit = Unit_By_Name(bare);
    if (unit == nullptr) return {};
    const double factor = unit->factor;
    Nexus_Axis axis;
    switch (unit->quantity) {
        case Quantity::angle:
            axis.factor = factor;
            if (Is_One_Of(bare, other_angles)) axis.angle = name;
            break;
        case Quantity::inverse_length:
            axis = bare == "s" ? Scale("s-space", "s(1/Angstrom)", factor) : Scale("q-space", "Q(1/Angstrom)", factor);
            break;
        case Quantity::length:
            if (factor > 10 && !Is_One_Of(bare, spacings)) return {};  // a distance in metres
            if (Contains(bare, "lambda") || Contains(bare, "wavelength"))
                axis = Scale("Lambda", "Lambda(Angstroms)", factor);
            else
                axis =
                    bare == "r" ? Scale("Distance", "Distance R(Angstroms)", factor) : Scale("d-spacing", "d-spacing(Angstroms)", factor);
            break;
        case Quantity::time:
            if (factor <= 1 || Contains(bare, "tof") || Contains(bare, "flight"))
                axis = Scale("TOF", "TOF(micro-seconds)", factor);
            else
                axis = Scale("Time", "Time(s)", factor / 1e6);
            break;
        case Quantity::energy:
            axis = Scale("Energy", "Energy(keV)", factor);
            break;
        case Quantity::temperature:
            axis = Scale("Temperature", "Temperature(K)", factor);
            break;
    }
    axis.guessed = guessed;
    return axis;
}

std::optional<double> Nexus_Angstroms(double value, std::string_view units) { return In(Quantity::length, value, units); }

std::optional<double> Nexus_Kelvin(double value, std::string_view units) {
    constexpr std::string_view celsius[] = {"c", "degc", "celsius", "degreescelsius", "degreecelsius", "degcelsius"};
    if (Is_One_Of(Bare_Units(units), celsius)) return value + 273.15;
    return In(Quantity::temperature, value, units);
}

std::optional<double> Nexus_Seconds(double value, std::string_view units) {
    const auto microseconds = In(Quantity::time, value, Trim(units).empty() ? "s" : units);
    if (!microseconds) return {};
    return *microseconds / 1e6;
}

std::optional<double> Wavelength_Of_Energy(double energy, std::string_view units, bool neutrons) {
    constexpr double photon = 12.39842;    // h c in keV angstroms
    constexpr double neutron = 9.0445684;  // h / sqrt(2 m) in angstroms sqrt(meV)
    constexpr double most_kev = 1000;
    if (!(energy > 0)) return {};
    const bool milli = Trim(units) == "meV";  // and not MeV
    const auto kev = milli ? std::optional(energy * 1e-6) : In(Quantity::energy, energy, units);
    if (!kev) return {};
    if (neutrons) return Trim(units).empty() ? std::nullopt : std::optional(neutron / std::sqrt(*kev * 1e6));
    return photon / (Trim(units).empty() && *kev > most_kev ? *kev / 1000 : *kev);
}

}  // namespace vntl
