#include "external/peaks_file.hpp"

#include <algorithm>
#include <ctime>
#include <iterator>
#include <utility>

#include "base/text.hpp"
#include "external/column_lines.hpp"

namespace vntl {

namespace {

constexpr std::pair<std::string_view, Peaks_Format> words[] = {{"FreeFormat", Peaks_Format::free_format},
                                                               {"Vecfind_Format", Peaks_Format::vecfind},
                                                               {"DicvolFormat", Peaks_Format::dicvol},
                                                               {"ItoFormat", Peaks_Format::ito},
                                                               {"TreorFormat", Peaks_Format::treor}};

// lambda 1 and 2 of tubes with their ratio, in angstrom: copper, molybdenum, cobalt, copper without its second line.
constexpr std::array<float, 3> copper = {1.540599f, 1.54439f, 0.5f}, molybdenum = {0.70926f, 0.71354f, 0.5f},
                               cobalt = {1.78892f, 1.79285f, 0.5f}, one_line = {1.540599f, 0, 0};

bool Is_Two_Theta(std::string_view xspace) { return xspace == "2theta" || xspace == "----"; }
bool Is_Spacing(std::string_view xspace) { return xspace == "d-space" || xspace == "d-spacing"; }

// The head of a plain list.
Column_Lines Lines_Under(const Points_Source& source, std::string_view columns) {
    Column_Lines lines;
    lines.Put("! Data file : ", Trim_Right(source.path));
    lines.Put("! Format    : ", Trim_Right(source.instr));
    lines.Put(columns);
    return lines;
}

}  // namespace

std::optional<Peaks_Format> Peaks_Format_Of(std::string_view word) {
    const auto found = std::find_if(std::begin(words), std::end(words), [&](const auto& row) { return row.first == word; });
    return found == std::end(words) ? std::nullopt : std::optional(found->second);
}

std::string Date_Text(int day, int month, int year, int hour, int minute, int second) {
    static const Edit_Format columns("(I2,A,I2,A,I4,A,3(I2,A))");
    std::string text;
    Edit_Writer(columns, text).Write(day, "/", month, "/", year, " at ", hour, ":", minute, ":", second, " ");
    return text;
}

std::string Date_Text_Of_Now() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return Date_Text(local.tm_mday, local.tm_mon + 1, local.tm_year + 1900, local.tm_hour, local.tm_min, local.tm_sec);
}

std::array<float, 3> Wavelengths_Of_Source(int search_radiation, const std::array<float, 5>& conv) {
    switch (search_radiation) {
        case 1:
            return {conv[0], conv[1], conv[2]};
        case 2:
            return copper;
        case 3:
            return molybdenum;
        case 4:
            return cobalt;
        default:
            return one_line;
    }
}

bool Can_Say(Peaks_Format format, std::string_view xspace) {
    const std::string_view unit = Trim(xspace);
    switch (format) {
        case Peaks_Format::free_format:
            return true;
        case Peaks_Format::vecfind:
            return Is_Two_Theta(unit) || Is_Spacing(unit) || unit == "TOF" || unit == "q-space" || unit == "s-space";
        case Peaks_Format::ito:
            return Is_Two_Theta(unit);
        default:
            return Is_Two_Theta(unit) || Is_Spacing(unit);
    }
}

int Dicvol_Itype_Of(std::string_view scat_var, std::string_view xspace) {
    constexpr int two_theta = 2, spacing = 3, q = 4;
    if (Is_Spacing(Trim(xspace))) return spacing;
    return Trim(scat_var) == "TOF" ? q : two_theta;
}

int Treor_Spacing_Of(std::string_view xspace) { return Is_Spacing(Trim(xspace)) ? 3 : 2; }

Status Free_Peaks_File(const Points_Source& source, std::span<const Peak_Mark> peaks, std::string& text) {
    static const Edit_Format columns("(3F15.5)");
    Column_Lines lines = Lines_Under(source, "! peak_position   peak_intensity    peak_background");
    lines.Peaks(columns, peaks);
    return lines.Finish(text);
}

Status Background_File(const Points_Source& source, std::span<const Background_Mark> points, std::string& text) {
    static const Edit_Format columns("(2F15.5)");
    Column_Lines lines = Lines_Under(source, "! Position      Background_value");
    for (std::size_t i = 0; i < points.size(); ++i) {
        constexpr std::string_view list = "background point";
        lines.Record(columns, Named_Number<float>{{"position", list, i + 1}, points[i].x},
                     Named_Number<float>{{"value", list, i + 1}, points[i].y});
    }
    return lines.Finish(text);
}

}  // namespace vntl
