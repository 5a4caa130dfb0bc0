#include "commands/plot/pointed_text.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "base/text.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr std::size_t longest_name = 28;  // characters

std::string Fixed(double value, int decimals) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    return text.data();
}

float Deviation_At(const Diffraction_Pattern_Type& pattern, std::size_t i) {
    if (i >= pattern.sigma.size()) return 0;
    return pattern.sigma_is_variance ? std::sqrt(std::max(pattern.sigma[i], 0.0f)) : pattern.sigma[i];
}

// Behind a blank, as both parts begin with one; nothing for what is not there.
std::string Name_Text(const Session& session, int row) {
    const std::string name = Short_Name(session, row);
    return name.empty() ? "" : ' ' + name;
}

std::string Point_Text(const Session& session, int row, float x) {
    const Diffraction_Pattern_Type& pattern = session.store.Pattern(row);
    const std::size_t point = Point_At(pattern, x);
    if (point == 0 || point > pattern.y.size() || !std::isfinite(pattern.y[point - 1])) return "";
    return " I= " + Intensity_With_Deviation(pattern.y[point - 1], Deviation_At(pattern, point - 1));
}

std::string Row_Text(const Session& session, int row, float x) { return Name_Text(session, row) + Point_Text(session, row, x); }

}  // namespace

std::string Intensity_With_Deviation(float intensity, float deviation) {
    constexpr double largest = 1e15, least = 1e-9;  // what single precision and a line of text hold
    std::array<char, 64> alone{};
    const double size = std::fabs(static_cast<double>(intensity)), sigma = deviation;
    const bool whole = size >= 1e6 && size < largest;
    std::snprintf(alone.data(), alone.size(), whole ? "%.0f" : "%.6g", static_cast<double>(intensity));
    if (!(sigma > least && sigma < largest && size < largest)) return alone.data();
    int decimals = std::max(0, 1 - static_cast<int>(std::floor(std::log10(sigma))));
    if (decimals > 0 && std::round(sigma * std::pow(10, decimals)) >= 100) --decimals;  // 9.97 is 10
    return Fixed(intensity, decimals) + '(' + Fixed(sigma * std::pow(10, decimals), 0) + ')';
}

std::string Short_Name(const Session& session, int row) {
    const PRF_Info_Add_Type& info = session.store.Info(row);
    const std::string_view own = Trim(info.legend_text);
    return Elide_Middle(own.empty() ? Trim(info.file_name) : own, longest_name);
}

std::string Pointed_Text(const Session& session, Place_In_View at) {
    const Profile_Store& store = session.store;
    const Plot_Form form = session.plot.plot_type;
    const bool of_several = form == Plot_Form::multi || form == Plot_Form::multi_log;
    const int row = of_several ? Nearest_Row(store, session.plot, at) : 0;
    if (row != 0 && form == Plot_Form::multi) return "Pointed Pattern " + std::to_string(row) + Row_Text(session, row, at.x);
    const int first = store.First_Shown();
    if (first == 0) return "";
    const std::string number = " N= " + std::to_string(Point_At(store.Pattern(first), at.x));
    if (row == 0 || row == first) return number + Row_Text(session, first, at.x);
    return number + ", Pattern " + std::to_string(row) + Row_Text(session, row, at.x);
}

}  // namespace vntl
