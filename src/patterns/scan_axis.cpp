#include "patterns/scan_axis.hpp"

#include <algorithm>
#include <string>

#include "base/text.hpp"
#include "base/text_file.hpp"

namespace vntl {

namespace {

// Letters and digits in small letters: "2Theta-Omega" is "2thetaomega".
std::string Bare(std::string_view name) {
    std::string bare;
    for (const char c : Lower(name))
        if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) bare += c;
    return bare;
}

bool Is_Length(std::string_view bare) {
    constexpr std::string_view lengths[] = {"x", "y", "z", "xdrive", "ydrive", "zdrive", "xscan", "yscan", "zscan", "height"};
    return std::find(std::begin(lengths), std::end(lengths), bare) != std::end(lengths);
}

}  // namespace

bool Is_Scattering_Angle(std::string_view name) {
    const std::string bare = Bare(name);
    if (bare.empty() || bare == "gonio" || bare == "coupled" || bare == "continuous" || bare == "step") return true;
    for (const std::string_view word : {"2theta", "twotheta", "lockedcoupled", "detector", "psdfixed", "psdfast", "2th", "tth"})
        if (Contains(bare, word)) return true;
    return false;
}

std::string_view First_Of_Coupled(std::string_view name) {
    constexpr std::string_view omega = "Omega";
    return Equal_No_Case(name.substr(0, omega.size()), omega) ? name.substr(0, omega.size()) : name;
}

void Set_Scan_Axis(Diffraction_Pattern_Type& pattern, std::string_view name) {
    if (Is_Scattering_Angle(name)) return;
    const bool length = Is_Length(Bare(name));
    pattern.scat_var = length ? "Position" : "Angle";
    pattern.legend_x = Kept_Text(std::string(Trim(name)) + (length ? "(mm)" : "(degrees)"), legend_width);
}

}  // namespace vntl
