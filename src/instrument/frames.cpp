#include <algorithm>
#include <cmath>
#include <limits>

#include "base/os.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "instrument/data_directories.hpp"
#include "instrument/numor_blocks.hpp"
#include "instrument/read_numor.hpp"

namespace vntl {

namespace {

constexpr std::size_t head_size = 65536;  // bytes in which the name of the instrument stands
constexpr int most_square_lines = 27;

enum class Unfolding { rows, columns, refused, unknown };

// Lines that two digits behind the name of a square detector tell; 0 for none.
int Told_Lines(std::string_view digits) {
    if (digits.starts_with('_')) digits.remove_prefix(1);
    int lines = 0;
    if (digits.size() != 2 || digits.find_first_not_of("0123456789") != std::string_view::npos || !Parse_Integer(digits, lines)) return 0;
    return std::min(lines, most_square_lines);
}

Unfolding Unfolding_Of(std::string_view machine, int& lines) {
    if (machine == "r18_vb") return Unfolding::refused;
    for (const std::string_view name : {"r18_hb", "r18", "db21", "r17", "1"})
        if (machine == name) return Unfolding::columns;
    for (const std::string_view name : {"r6", "r11"}) {
        if (machine == name) return Unfolding::rows;
        if (machine.starts_with(name) && (lines = Told_Lines(machine.substr(name.size()))) > 0) return Unfolding::rows;
    }
    return Unfolding::unknown;
}

struct Shape {  // in 64 bits, for a product of any two numbers
    long long rows = 0, columns = 0;
};

// Of a detector whose counts go row by row.
Shape Square_Shape(int nbdata, int lines, const Shape& told) {
    if (lines > 0) return {lines, nbdata / lines};
    const auto side = static_cast<long long>(std::lround(std::sqrt(static_cast<double>(nbdata))));
    return side * side == nbdata ? Shape{side, side} : told;
}

int To_Count(float value) {
    constexpr double most = std::numeric_limits<int>::max();
    return std::isnan(value) ? 0 : static_cast<int>(std::clamp(std::round(static_cast<double>(value)), -most, most));
}

// A few columns at a time, so that neither what is read nor what is written jumps from one place of the memory to another.
void Unfold_Columns(std::span<const float> counts, std::size_t rows, std::size_t columns, std::vector<int>& unfolded) {
    constexpr std::size_t tile = 16;
    for (std::size_t first = 0; first < columns; first += tile) {
        const std::size_t end = std::min(first + tile, columns);
        for (std::size_t row = 0; row < rows; ++row)
            for (std::size_t column = first; column < end; ++column)
                unfolded[row * columns + column] = To_Count(counts[column * rows + row]);
    }
}

}  // namespace

std::string By(long long a, long long b) { return std::to_string(a) + " x " + std::to_string(b); }

Status With_File(Status status, const std::string& file) {
    if (status.failed && !Contains(status.message, file)) status.message += " (" + file + ')';
    return status;
}

std::string Instrument_Of_Text(std::string_view text) {
    Numor_Blocks found;
    (void)Find_Blocks(text.substr(0, head_size), found);  // a text cut within a block is still one
    const Numor_Block* const block = found.Find('A');
    std::string name;
    if (!found.Find('R') || !block || Block_Text(*block, name).failed) return {};
    return std::string(Trim(Cut(name, 4)));
}

Status Instrument_Of_Run(const std::string& file, std::string& instrument) {
    std::string head;
    const Status status = Read_Run_Head(file, head_size, head);
    instrument = Instrument_Of_Text(head);
    return status;
}

bool Looks_Like_Numor(std::string_view text) {
    Line_Cursor lines(Without_Mark(text.substr(0, head_size)));
    std::string_view line;
    while (lines.Next(line) && Trim(line).empty()) {
    }
    if (Marker_Letter(line) != 'R') return false;
    int number = 0;
    return lines.Next(line) && Parse_Integer(line.substr(0, 8), number);
}

Status Read_Frames_Index(const std::string& file, int& nheaders, int& nframes, char marker) {
    nheaders = nframes = 0;
    Text_File source;
    if (!IOsFileExists(file)) return Status::Fail_File(file + " does not exist.");
    if (Status status = source.Open(file); status.failed) return status;
    Line_Cursor lines(source.Text());
    for (std::string_view line; lines.Next(line);) {
        if (Marker_Letter(line) == marker)
            ++nframes;
        else if (nframes == 0)
            ++nheaders;
    }
    if (nheaders == 0) return Status::Fail(file + " has no header.");
    return nframes > 0 ? Status::Done() : Status::Fail(file + " has no frame.");
}

Status Shape_Of_Frame(int nbdata, std::string_view machine, int np_horiz, int np_vert, Frame_Shape& shape) {
    int lines = 0;
    const Unfolding unfolding = Unfolding_Of(Lower(Trim(machine)), lines);
    if (unfolding == Unfolding::refused) return Status::Fail("Can't read R18 Vertical Banana Detector data!");
    if (unfolding == Unfolding::unknown) return Status::Fail("Error in Get_Counts: Unknown machine!");
    const bool by_rows = unfolding == Unfolding::rows;
    const Shape told{np_vert, np_horiz}, found = by_rows ? Square_Shape(nbdata, lines, told) : told;
    if (nbdata < 1 || (lines == 0 && (found.rows < 1 || found.columns < 1))) return Status::Fail("Pixels by Frame is zero!!!");
    if (found.rows < 1 || found.columns < 1 || found.rows * found.columns != nbdata)
        return Status::Fail("Error in Get_Counts: a frame holds " + std::to_string(nbdata) + " counts, and the detector has " +
                            By(found.rows, found.columns) + " pixels");
    shape = {static_cast<int>(found.rows), static_cast<int>(found.columns), by_rows};
    return Status::Done();
}

Status Get_Counts(std::span<const float> counts, std::string_view machine, int np_horiz, int np_vert, Count_Matrix& matrix) {
    Frame_Shape shape;
    const Status status = Shape_Of_Frame(static_cast<int>(counts.size()), machine, np_horiz, np_vert, shape);
    if (status.failed) return status;
    matrix.rows = shape.rows;
    matrix.columns = shape.columns;
    matrix.counts.resize(counts.size());
    if (shape.by_rows)
        std::transform(counts.begin(), counts.end(), matrix.counts.begin(), To_Count);
    else
        Unfold_Columns(counts, static_cast<std::size_t>(shape.rows), static_cast<std::size_t>(shape.columns), matrix.counts);
    return status;
}

std::string Reader_Of_Machine(std::string_view machine) {
    std::string name = Upper(Trim(machine));
    if (Is_SXTAL_Numor_Instrument(name)) return name;
    int lines = 0;
    if (Unfolding_Of(Lower(name), lines) == Unfolding::unknown) return {};
    for (const std::string_view reader : {"R18", "R11", "R6"})
        if (name.starts_with(reader)) return std::string(reader);
    return {};
}

}  // namespace vntl
