#include "patterns/write_dat.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <utility>
#include <vector>

#include "base/edit_descriptor.hpp"
#include "base/spline.hpp"
#include "patterns/write_columns.hpp"

namespace vntl {

namespace {

constexpr int head_width = 14, told_decimals = 6, most_decimals = 12;
constexpr int points_a_line = 10, told_width = 8;
constexpr double negligible_step = 0.01;  // a part of a step that nobody minds

// A number of the head, and what a reader takes it for.
struct Head_Number {
    std::string text;
    float read = 0;
};

Head_Number Written(const Number_Column& column, float value) {
    Head_Number number{column.Text(value)};
    number.read = Read_Back(number.text);
    return number;
}

// As few decimals as it takes for what is read to be good.
template <class Good>
Head_Number With_Decimals(float value, Good good) {
    for (int decimals = told_decimals; decimals <= most_decimals; ++decimals) {
        Head_Number number = Written(Number_Column(head_width, decimals), value);
        if (number.read == value || good(number.read)) return number;
    }
    return Written(Number_Column::With_Exponent(head_width), value);
}

struct Range {
    Head_Number xmin, step, xmax;
    double At(std::size_t i) const { return xmin.read + static_cast<double>(i) * step.read; }
    std::string Text() const { return ' ' + xmin.text + ' ' + step.text + ' ' + xmax.text; }
};

Range Written_Once(float xmin, float xmax, double intervals) {
    const double step = (static_cast<double>(xmax) - xmin) / intervals;
    const auto end = [step](float value) {
        return With_Decimals(value, [&](float read) { return std::fabs(static_cast<double>(read) - value) <= negligible_step * step; });
    };
    Range range{end(xmin), {}, end(xmax)};
    const double width = static_cast<double>(range.xmax.read) - range.xmin.read;
    range.step = With_Decimals(static_cast<float>(width / intervals),
                               [&](float read) { return std::fabs(width / read - intervals) <= negligible_step; });
    return range;
}

// The range that a pattern read from this file is written with: a limit that was just too coarse may do once it is rounded.
Range Written_Range(const Diffraction_Pattern_Type& p) {
    constexpr int most_rounds = 10;
    const double intervals = p.npts - 1.0;
    Range range = Written_Once(p.xmin, p.xmax, intervals);
    for (int round = 0; round < most_rounds; ++round) {
        Range again = Written_Once(range.xmin.read, range.xmax.read, intervals);
        if (again.Text() == range.Text()) break;
        range = std::move(again);
    }
    return range;
}

// Within the precision of x, or a little part of a step, as columns of x round them.
bool In_Equal_Steps(const Diffraction_Pattern_Type& p, const Range& range) {
    constexpr float epsilon = std::numeric_limits<float>::epsilon();
    const double step = range.step.read, largest = std::max(std::fabs(p.x.front()), std::fabs(p.x.back()));
    const double play = std::max(2 * negligible_step * step, std::min(4 * epsilon * largest, step / 2));
    for (std::size_t i = 0; i < p.x.size(); ++i)
        if (!(std::fabs(p.x[i] - range.At(i)) <= play)) return false;
    return true;
}

std::vector<float> On_Grid(const Diffraction_Pattern_Type& p, const Range& range) {
    if (In_Equal_Steps(p, range)) return p.y;
    std::vector<double> x, y;  // of points that differ in x: a conversion of it may leave some that do not
    for (std::size_t i = 0; i < p.x.size(); ++i) {
        if (!x.empty() && !(p.x[i] > x.back())) continue;
        x.push_back(p.x[i]);
        y.push_back(p.y[i]);
    }
    const std::vector<double> m = Spline(x, y);
    std::vector<float> values(p.x.size());
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = static_cast<float>(Splint(x, y, m, range.At(i)));
    return values;
}

int Told_Decimals(float largest) { return largest < 100 ? 4 : largest < 1000 ? 3 : largest < 10000 ? 2 : 1; }

bool Keeps_Blank(int width, int decimals, std::initializer_list<float> values) {
    const Edit_Format format("(F" + std::to_string(width) + '.' + std::to_string(decimals) + ')');
    return std::all_of(values.begin(), values.end(), [&](float value) {
        std::string field;
        Edit_Writer(format, field).Write(value);
        return field.front() == ' ';
    });
}

// The format of all fields: the largest and the smallest value need the most columns.
Edit_Format Fields_For(std::span<const float> values) {
    float largest = 0, smallest = 0;
    for (const float value : values) {
        if (!std::isfinite(value)) continue;
        largest = std::max(largest, value);
        smallest = std::min(smallest, value);
    }
    int width = told_width, decimals = Told_Decimals(largest);
    while (decimals > 0 && !Keeps_Blank(width, decimals, {largest, smallest})) --decimals;
    while (!Keeps_Blank(width, decimals, {largest, smallest})) ++width;
    return Edit_Format('(' + std::to_string(points_a_line) + 'F' + std::to_string(width) + '.' + std::to_string(decimals) + ')');
}

}  // namespace

std::string Dat_Text(const Diffraction_Pattern_Type& p) {
    const Range range = Written_Range(p);
    const std::vector<float> values = On_Grid(p, range);
    std::string text;
    text.reserve(values.size() * (told_width + 1) + title_width);
    text += range.Text();
    const std::string title = On_One_Line(p.title);
    if (!title.empty()) text += "  " + title;
    text += '\n';
    const Edit_Format fields = Fields_For(values);
    Edit_Writer writer(fields, text);
    writer.Write(std::span(values));
    writer.Finish();
    return text;
}

}  // namespace vntl
