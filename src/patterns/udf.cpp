#include "patterns/udf.hpp"

#include <array>
#include <cmath>
#include <span>

#include "base/edit_descriptor.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/plain_columns.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr std::size_t line_width = 132;
constexpr std::size_t wavelength_column = 23;
constexpr std::string_view failure = " Error reading a profile UDF-DATA file: end of file";

bool In_Number(char c) { return (c >= '0' && c <= '9') || c == '.'; }

// A wavelength from its column, or from behind the keyword where that column leaves nothing or half of it.
bool Take_Wavelength(std::string_view line, std::size_t keyword, float& value) {
    const std::string_view told = From_Column(line, wavelength_column);
    const std::size_t at = told.find_first_not_of(" \t");
    const bool none = at == std::string_view::npos || told[at] == '/' || told[at] == ',';
    const bool halved = at == 0 && In_Number(told.front()) && In_Number(line[wavelength_column - 2]);
    return Told_Real(none || halved ? line.substr(keyword) : told, value);
}

bool Take_Range(std::string_view value, Diffraction_Pattern_Type& p) {
    const std::size_t comma = value.find(',');
    return comma != std::string_view::npos && Told_Real(value.substr(0, comma), p.xmin) && Told_Real(value.substr(comma + 1), p.xmax);
}

bool Take_Keyword(std::string_view line, Diffraction_Pattern_Type& p) {
    constexpr std::string_view alpha1 = "LabdaAlpha1,", alpha2 = "LabdaAlpha2,", ratio = "RatioAlpha21,";
    constexpr std::string_view range = "DataAngleRange,", step = "ScanStepSize,";
    if (line.starts_with(alpha1)) return Take_Wavelength(line, alpha1.size(), p.conv[0]);
    if (line.starts_with(alpha2)) return Take_Wavelength(line, alpha2.size(), p.conv[1]);
    if (line.starts_with(ratio)) return Told_Real(line.substr(ratio.size()), p.conv[2]);
    if (line.starts_with(range)) return Take_Range(line.substr(range.size()), p);
    if (line.starts_with(step)) return Told_Real(line.substr(step.size()), p.step);
    return true;
}

// The counts up to the last one that the file holds, 0 where a line is missing or one is no number.
std::size_t Read_Rows(Line_Cursor& lines, std::span<float> y) {
    static const Edit_Format layout("(7(F8.0,1X),F8.0)");
    const auto next = [&lines](std::string_view& line) { return lines.Next(line); };
    const auto n = static_cast<int>(y.size());
    const auto take = [y](std::size_t i, const std::array<float, 1>& count) { y[i] = count[0]; };
    const Groups_Read read = Read_Groups_Apart<1, 8, 8>(layout, next, n, take);
    return read.count == n ? static_cast<std::size_t>(read.held) : 0;
}

}  // namespace

Status Read_Udf(std::string_view text, Diffraction_Pattern_Type& p) {
    p = {};
    Line_Cursor lines(text);
    std::string_view line;
    if (!lines.Next(line)) return Status::Fail(failure);
    p.title = Kept_Text(line, title_width);
    do {
        if (!lines.Next(line) || !Take_Keyword(line.substr(0, line_width), p)) return Status::Fail(failure);
    } while (!line.starts_with("RawScan"));

    const double npts = std::trunc((static_cast<double>(p.xmax) - p.xmin) / p.step + 1.2);
    if (Status status = Allocate_Told(p, npts, text.size(), failure); status.failed) return status;
    const std::size_t held = Read_Rows(lines, p.y);
    if (held == 0) return Status::Fail(failure);
    if (held < p.y.size()) {
        End_At_Last_Number(p, held, npts);
        Set_Grid_End(p);
    }
    Set_Count_Variances(p);
    p.constant_step = true;
    Set_Grid(p);
    Set_Y_Limits(p);
    return Status::Done();
}

}  // namespace vntl
