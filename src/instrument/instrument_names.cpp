#include "instrument/instrument_names.hpp"

#include <algorithm>
#include <array>

#include "base/text.hpp"

namespace vntl {

namespace {

using Name = std::string_view;

constexpr std::array<Name, 6> powder = {"R3A", "R3B", "R5B", "R8", "R22", "R2B"};
constexpr std::array<Name, 6> single_crystal = {"R6", "R11", "R15", "R17", "R18", "DB21"};
constexpr std::array<Name, 3> large_scale = {"K14", "K21", "K32"};
constexpr std::array<Name, 2> reflectometers = {"M5", "M9"};
constexpr std::array<Name, 3> time_of_flight = {"U3", "U4", "U6"};
constexpr std::array<Name, 3> high_resolution = {"U11", "U13", "U16"};
constexpr std::array<Name, 5> three_axis = {"W1", "W8", "W12", "W20", "W25"};

constexpr Instrument_Kind diffractometers[] = {{"Powder Diffractometers", powder}, {"Single-crystal Diffractometers", single_crystal}};
constexpr Instrument_Kind structures[] = {{"Large-scale structure Diffractometers", large_scale}, {"Reflectometers", reflectometers}};
constexpr Instrument_Kind spectrometers[] = {{"Time of Flight Spectrometers", time_of_flight},
                                             {"High-resolution Spectometers", high_resolution}};
constexpr Instrument_Kind axes[] = {{"Three-axis Spectrometers", three_axis}};

constexpr Instrument_Group groups[] = {{"Diffractometers", diffractometers},
                                       {"Large-scale structure instruments", structures},
                                       {"Spectrometers by time of flight and high resolution", spectrometers},
                                       {"Three-axis spectrometers", axes}};

constexpr std::array<Name, 6> two_axes = {"R3B", "R22", "R5B", "R8", "R3A", "R2B"};

}  // namespace

std::span<const Instrument_Group> Instrument_Groups() { return groups; }

bool Is_Known_Instrument(std::string_view name) {
    const std::string_view sought = Trim(name);
    return std::ranges::any_of(groups, [&](const Instrument_Group& group) {
        return std::ranges::any_of(group.types, [&](const Instrument_Kind& kind) {
            return std::ranges::any_of(kind.names, [&](Name known) { return Equal_No_Case(known, sought); });
        });
    });
}

std::span<const std::string_view> Two_Axes_Instruments() { return two_axes; }

}  // namespace vntl
