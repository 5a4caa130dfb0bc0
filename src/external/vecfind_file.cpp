// Input of the search for a propagation vector: keywords, and the positions of satellites.
#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <optional>
#include <utility>

#include "base/free_form.hpp"
#include "base/text.hpp"
#include "external/column_lines.hpp"
#include "external/peaks_file.hpp"
#include "patterns/write_columns.hpp"

namespace vntl {

namespace {

struct Word_Row {
    std::string_view word, text;
};
constexpr Word_Row headers[] = {{"2theta", "2THETA_LIST  "}, {"----", "2THETA_LIST  "}, {"TOF", "TOF_LIST  "},   {"d-space", "D_LIST  "},
                                {"d-spacing", "D_LIST  "},   {"q-space", "Q_LIST  "},   {"s-space", "D*_LIST  "}};
constexpr Word_Row tolerances[] = {{"2theta", "  0.300 "}, {"TOF", " 2000.00 "}};
constexpr Word_Row tolerance_keywords[] = {{"2theta", "CWTOL "}, {"TOF", "TOFTOL "}};

// Blank for a word that has no row.
template <class Rows>
std::string_view Text_For(const Rows& rows, std::string_view word) {
    const auto row = std::find_if(std::begin(rows), std::end(rows), [&](const Word_Row& one) { return one.word == Trim(word); });
    return row == std::end(rows) ? std::string_view() : row->text;
}

constexpr std::string_view output_keywords[] = {"SHORT-OUTPUT", "LONG-OUTPUT", "NO-OUTPUT"};

std::optional<std::string_view> Behind(std::string_view text, std::string_view key) {
    const std::size_t at = text.find(key);
    if (at == std::string_view::npos) return std::nullopt;
    return text.substr(at + key.size());
}

// What stands behind "SPGR:", up to the next thing that such titles tell: "P n m a" of "SPGR: P n m a TEMP: 10.0".
std::string Lattice_In(std::string_view title) {
    std::string_view lattice = Behind(title, "SPGR:").value_or(std::string_view());
    for (const std::string_view key : {"CELL:", "TEMP:", "Chi2:", "SPGR:"}) lattice = lattice.substr(0, lattice.find(key));
    return std::string(Trim(lattice));
}

// Six numbers behind "CELL:" in columns; blank when they are no cell.
std::string Cell_In(std::string_view title) {
    static const Edit_Format columns("(3F10.5,3F10.4)");
    constexpr float straight = 180;  // degrees
    std::array<float, 6> cell{};
    if (!Read_Free_Reals(Behind(title, "CELL:").value_or(std::string_view()), cell)) return {};
    for (std::size_t i = 0; i < cell.size(); ++i)
        if (!(cell[i] > 0) || !std::isfinite(cell[i]) || (i >= 3 && cell[i] >= straight)) return {};
    std::string text;
    Edit_Writer(columns, text).Write(std::span<const float>(cell));
    return Contains(text, "*") ? std::string() : text;
}

std::string Wavelength_Text(float wavelength) {
    static const Edit_Format columns("(F14.5)");
    if (!std::isfinite(wavelength)) return {};
    std::string text;
    Edit_Writer(columns, text).Write(wavelength);
    return Contains(text, "*") ? std::string() : text;
}

}  // namespace

Vecfind_Input Vecfind_Input_Of(const Points_Source& source, std::string_view origin_note, std::string_view title, float wavelength) {
    Vecfind_Input input;
    input.title = Trim_Right(Without_Line_Ends(Trim(origin_note).empty() ? title : origin_note));
    if (std::string lattice = Lattice_In(input.title); !lattice.empty()) input.lattice = std::move(lattice);
    if (std::string cell = Cell_In(input.title); !cell.empty()) input.cell = std::move(cell);
    input.tolerance = Text_For(tolerances, source.scat_var);
    input.wavelength = Wavelength_Text(wavelength);
    return input;
}

Status Vecfind_File(const Points_Source& source, const Vecfind_Input& input, std::span<const Peak_Mark> peaks, std::string& text) {
    static const Edit_Format count("(A,I5)"), points("(3F15.5)");
    Column_Lines lines;
    lines.Put("! Input file for Vecfind");
    lines.Put("! created by Vantrelo-2006:", source.date);
    lines.Put("! Data file : ", Trim_Right(source.path));
    lines.Put("TITLE ", Trim_Right(input.title));
    lines.Put("SPGR    ", input.lattice);
    lines.Put("CELL    ", input.cell);
    lines.Put(output_keywords[static_cast<std::size_t>(input.output)]);
    if (input.special_only) lines.Put("K_COMMENSURATE");
    if (const std::string_view keyword = Text_For(tolerance_keywords, source.scat_var); !keyword.empty())
        lines.Put(keyword, input.wavelength + "  " + input.tolerance);
    lines.Put("K_RANGE ", input.k_range);
    lines.Put("K_DIV   ", input.points);
    lines.Put("! peak_position  peak_intensity  peak_background");
    if (const std::string_view header = Text_For(headers, source.xspace); !header.empty())
        lines.Record(count, header, Named("the number of peaks", static_cast<int>(peaks.size())));
    lines.Peaks(points, peaks);
    return lines.Finish(text);
}

}  // namespace vntl
