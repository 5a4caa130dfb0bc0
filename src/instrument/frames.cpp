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

struct Shape {
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
    return static_cast<int>(std::clamp(std::round(static_cast<double>(value)), -most, most));
}

std::string By(long long a, long long b) { return std::to_string(a) + " x " + std::to_string(b); }

}  // namespace

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

Status Get_Counts(int frame, const Numor_Head& numor, std::string_view machine, int np_horiz, int np_vert, Count_Matrix& matrix) {
    matrix = {};
    int lines = 0;
    const Unfolding unfolding = Unfolding_Of(Lower(Trim(machine)), lines);
    if (unfolding == Unfolding::refused) return Status::Fail("Can't read R18 Vertical Banana Detector data!");
    if (unfolding == Unfolding::unknown) return Status::Fail("Error in Get_Counts: Unknown machine!");
    const auto held = static_cast<long long>(numor.counts.frames());
    if (frame < 1 || frame > held)
        return Status::Fail("Error in Get_Counts: there is no frame " + std::to_string(frame) + " of " + std::to_string(held));
    const std::span<const float> counts = numor.counts.Frame(static_cast<std::size_t>(frame) - 1);
    const auto nbdata = static_cast<int>(counts.size());
    const bool by_rows = unfolding == Unfolding::rows;
    Shape shape{np_vert, np_horiz};
    if (by_rows) shape = Square_Shape(nbdata, lines, shape);
    if (shape.rows < 1 || shape.columns < 1 || shape.rows * shape.columns != nbdata)
        return Status::Fail("Error in Get_Counts: a frame holds " + std::to_string(nbdata) + " counts, and the detector has " +
                            By(shape.rows, shape.columns) + " pixels");
    const auto rows = static_cast<std::size_t>(shape.rows), columns = static_cast<std::size_t>(shape.columns);
    matrix.rows = static_cast<int>(shape.rows);
    matrix.columns = static_cast<int>(shape.columns);
    matrix.counts.resize(counts.size());
    for (std::size_t i = 0; i < counts.size(); ++i) matrix.counts[by_rows ? i : (i % rows) * columns + i / rows] = To_Count(counts[i]);
    return Status::Done();
}

}  // namespace vntl
