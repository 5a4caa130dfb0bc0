#include "patterns/jcp.hpp"

#include <cstring>
#include <span>
#include <string>
#include <utility>

#include "base/edit_descriptor.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/plain_columns.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr std::size_t row_points = 5;
constexpr std::string_view bad_data = " Error reading a profile XRDML-DATA file: end of file";
constexpr std::string_view no_points = " Error reading a profile  file: end of file";
constexpr std::string_view no_keywords = " Error reading a profile JCP-DATA file: end of file";

// "## FIRSTX= 5.000" as its name, without any blanks, and its value; blank for any other line.
struct Keyword {
    explicit Keyword(std::string_view line) {
        const std::size_t equal = line.find('=');
        if (!line.starts_with("##") || equal == std::string_view::npos) return;
        name = Replace_All(line.substr(2, equal - 2), " ", "");
        value = Trim(line.substr(equal + 1));
    }

    std::string name;
    std::string_view value;
};

bool Take_Keyword(const Keyword& keyword, Diffraction_Pattern_Type& p, double& npts) {
    if (keyword.name == "NPOINTS") return Told_Real(keyword.value, npts);
    const std::pair<std::string_view, float&> reals[] = {{"$WAVELENGTHALPHA1", p.conv[0]},
                                                         {"$WAVELENGTHALPHA2", p.conv[1]},
                                                         {"$INTENSITYRATIOALPHA2/ALPHA1", p.conv[2]},
                                                         {"FIRSTX", p.xmin},
                                                         {"LASTX", p.xmax},
                                                         {"DELTAX", p.step}};
    for (const auto& [name, value] : reals)
        if (keyword.name == name) return Told_Real(keyword.value, value);
    return true;
}

// Up to the line that starts the data.
Status Read_Keywords(Line_Cursor& lines, Diffraction_Pattern_Type& p, double& npts) {
    std::string_view line;
    if (!lines.Next(line)) return Status::Fail(no_keywords);
    p.title = Kept_Text(line, title_width);
    while (lines.Next(line)) {
        const Keyword keyword(line);
        if (keyword.name == "XYDATA" && keyword.value.starts_with("X++<Y..Y>")) return Status::Done();
        if (keyword.name == "END") return Status::Fail(no_points);
        if (!Take_Keyword(keyword, p, npts)) return Status::Fail(bad_data);
    }
    return Status::Fail(no_keywords);
}

// A column of `width` that holds one number with a point between blanks.
bool Take_Pointed(const char* column, std::size_t width, float& value) {
    return std::memchr(column, '.', width) != nullptr && Take_Real(column, column + width, value);
}

// A row as nearly all are; false when it is short or holds anything else.
bool Read_Usual_Row(std::string_view line, float& x, std::span<float> y) {
    constexpr std::size_t x_width = 9, y_width = 11, first_y = 10;
    if (line.size() < first_y + row_points * y_width || !Take_Pointed(line.data(), x_width, x)) return false;
    for (std::size_t k = 0; k < row_points; ++k)
        if (!Take_Pointed(line.data() + first_y + k * y_width, y_width, y[k])) return false;
    return true;
}

bool Read_Rows(Line_Cursor& lines, std::size_t rows, Diffraction_Pattern_Type& p) {
    static const Edit_Format layout("(F9.3,1X,5F11.3)");
    std::string_view line;
    for (std::size_t i = 0; i < rows * row_points; i += row_points) {
        if (!lines.Next(line)) return false;
        const auto y = std::span(p.y).subspan(i, row_points);
        if (!Read_Usual_Row(line, p.x[i], y) && !Edit_Reader(layout, line).Read(p.x[i], y)) return false;
        if (!Is_Sound(p.x[i])) return false;
        for (std::size_t k = 1; k < row_points; ++k) p.x[i + k] = p.x[i] + static_cast<float>(k) * p.step;
    }
    return true;
}

}  // namespace

Status Read_Jcp(std::string_view text, Diffraction_Pattern_Type& p) {
    p = {};
    Line_Cursor lines(text);
    double npts = 0;
    if (Status status = Read_Keywords(lines, p, npts); status.failed) return status;
    if (!(npts >= 1) || npts > static_cast<double>(Most_Points(text.size()))) return Status::Fail(no_points);

    const std::size_t rows = (static_cast<std::size_t>(npts) + row_points - 1) / row_points;
    if (Status status = Allocate_Diffraction_Pattern(p, static_cast<std::int32_t>(rows * row_points)); status.failed) return status;
    if (!Read_Rows(lines, rows, p)) return Status::Fail(bad_data);
    Keep_Points(p, static_cast<int>(rows * row_points - (row_points - 1)));
    Set_Count_Variances(p);
    p.constant_step = false;
    Set_Y_Limits(p);
    return Status::Done();
}

}  // namespace vntl
