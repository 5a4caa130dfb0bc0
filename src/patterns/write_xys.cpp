#include "patterns/write_xys.hpp"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>
#include <vector>

#include "patterns/write_columns.hpp"

namespace vntl {

namespace {

constexpr int x_width = 14, y_width = 16, told_decimals = 4, most_decimals = 12, with_exponent = most_decimals + 1;
constexpr std::string_view five_blanks = "     ";

// The points to write: `first` up to `end`, that one not included.
struct Points {
    std::size_t first = 0, end = 0;
};

Points Points_In(const Diffraction_Pattern_Type& p, const Xys_Choice& choice) {
    const auto first = std::lower_bound(p.x.begin(), p.x.end(), choice.xmin);
    const auto end = std::upper_bound(first, p.x.end(), choice.xmax);
    return {static_cast<std::size_t>(first - p.x.begin()), static_cast<std::size_t>(end - p.x.begin())};
}

Number_Column Column_Of_X(int decimals) {
    return decimals == with_exponent ? Number_Column::With_Exponent(x_width) : Number_Column(x_width, decimals);
}

bool Neighbours_Differ(const Number_Column& column, std::span<const float> x) {
    std::string last, text;
    for (const float value : x) {
        text.clear();
        column.Put(text, value);
        if (text == last) return false;
        last.swap(text);
    }
    return true;
}

int Decimals_Of_X(std::span<const float> x) {
    int decimals = told_decimals;
    while (decimals < with_exponent && !Neighbours_Differ(Column_Of_X(decimals), x)) ++decimals;
    return decimals;
}

// The decimals that x read from this file is written with, and x as they have it: neighbours that fewer decimals made alike may differ by
// them once they are rounded.
int Settled_Decimals(std::vector<float>& x) {
    int decimals = Decimals_Of_X(x);
    while (decimals > told_decimals) {
        const Number_Column column = Column_Of_X(decimals);
        std::vector<float> read;
        read.reserve(x.size());
        for (const float value : x) read.push_back(Read_Back(column.Text(value)));
        const int fewer = Decimals_Of_X(read);
        if (fewer >= decimals) break;
        x = std::move(read);
        decimals = fewer;
    }
    return decimals;
}

float Deviation(const Diffraction_Pattern_Type& p, std::size_t i) {
    if (i >= p.sigma.size()) return 0;
    return p.sigma_is_variance ? std::sqrt(std::max(p.sigma[i], 0.0f)) : p.sigma[i];
}

float Above_Line(const Diffraction_Pattern_Type& p, std::size_t i, const Xys_Choice& choice) {
    return static_cast<float>(p.y[i] - (static_cast<double>(choice.slope) * p.x[i] + choice.at_0));
}

}  // namespace

std::string Xys_Text(const Diffraction_Pattern_Type& p, const Xys_Choice& choice, std::string_view file_name) {
    std::string text = "XYDATA\nTITLE: " + On_One_Line(p.title) + '\n' + std::string(xys_mark) +
                       "\n! File name: " + On_One_Line(file_name) + "\n! Scattering variable: " + On_One_Line(p.scat_var) + '\n';
    text.append(five_blanks).append(On_One_Line(p.legend_x)).append(five_blanks).append(xys_columns).append("\n");
    const Points points = Points_In(p, choice);
    std::vector<float> x_written(p.x.begin() + static_cast<std::ptrdiff_t>(points.first),
                                 p.x.begin() + static_cast<std::ptrdiff_t>(points.end));
    const Number_Column x = Column_Of_X(Settled_Decimals(x_written));
    const Number_Column y(y_width, told_decimals), deviation(y_width, told_decimals, true);
    text.reserve(text.size() + (points.end - points.first) * (x_width + 2 * y_width + 3));
    for (std::size_t i = points.first; i < points.end; ++i) {
        x.Put(text, x_written[i - points.first]);
        text += "  ";
        y.Put(text, Above_Line(p, i, choice));
        deviation.Put(text, Deviation(p, i));
        text += '\n';
    }
    return text;
}

}  // namespace vntl
