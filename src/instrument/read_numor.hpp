// Readers of numors, and what is told of them.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "instrument/numor.hpp"

namespace vntl {

// Whether a reader stands for an instrument, whatever the case of its letters.
bool Is_Powder_Numor_Instrument(std::string_view instrument);
bool Is_SXTAL_Numor_Instrument(std::string_view instrument);

// Reads a run of a powder diffractometer: "R3A", "R3B", "R5B", "R8" or "R22", in letters of any case. On failure the record is filled as
// far as the file could be read, and the message is the reader's; one of a name that ends in ".Z" is refused. Counts are those of the file:
// R3B and R22 have one frame, R8 nine of 64, R5B 128 n values a frame, tube by tube.
// `time` and `monitor`: R3A and R5B the sum of the times and the mean of the monitors over the frames.
Status Read_Numor(const std::string& file, std::string_view instrument, Powder_Numor_Type& numor);

// The same of a text; `file` is the name that messages tell.
Status Read_Numor_Text(std::string_view text, const std::string& file, std::string_view instrument, Powder_Numor_Type& numor);

// Frames that are wanted, from 1 to nframes. Others are " Invalid frames selection.".
struct Frame_Selection {
    int first = 1, last = 1;
};

// Reads a run of a single-crystal diffractometer: "R6", "R11", "R17", "R18" or "R18_HB"; all frames, or those selected.
Status Read_Numor(const std::string& file, std::string_view instrument, SXTAL_Numor_Type& numor,
                  std::optional<Frame_Selection> frames = {});
Status Read_Numor_Text(std::string_view text, const std::string& file, std::string_view instrument, SXTAL_Numor_Type& numor,
                       std::optional<Frame_Selection> frames = {});

// What was told of a run, with the name of its file behind it where that is not told yet.
Status With_File(Status status, const std::string& file);

// The instrument that a run names itself in its first A block; blank for what is no numor.
std::string Instrument_Of_Text(std::string_view text);

// The same of a file, compressed or not, of which the beginning is read.
Status Instrument_Of_Run(const std::string& file, std::string& instrument);

// Whether a text, or the beginning of one, looks like a numor.
bool Looks_Like_Numor(std::string_view text);

// Counts the lines of a file up to the first marker line (the header) and the marker lines (the frames).
Status Read_Frames_Index(const std::string& file, int& nheaders, int& nframes, char marker = 'V');

// Counts of a detector with two dimensions.
struct Count_Matrix {
    int rows = 0, columns = 0;
    std::vector<int> counts;  // row by row

    int At(int row, int column) const {
        return counts[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) + static_cast<std::size_t>(column)];
    }
};

// Sides of a detector or a frame as messages tell them: "64 x 32".
std::string By(long long a, long long b);

// How the counts of a frame lie on the detector.
struct Frame_Shape {
    int rows = 0, columns = 0;
    bool by_rows = true;
};

// "r6" and "r11" (any case; two digits behind the name may tell the lines, up to 27) are square and go row by row; where nbdata is no
// square, and for "r18_hb", "r18", "db21", "r17" and "1", which go column by column, the detector has np_vert rows and np_horiz columns.
// None of these is "Pixels by Frame is zero!!!", as is a frame without counts; numbers that do not multiply to nbdata are refused, and so
// is any other machine.
Status Shape_Of_Frame(int nbdata, std::string_view machine, int np_horiz, int np_vert, Frame_Shape& shape);

// Unfolds the counts of a frame, rounded. `matrix` stays on failure.
Status Get_Counts(std::span<const float> counts, std::string_view machine, int np_horiz, int np_vert, Count_Matrix& matrix);

// The reader of the runs of a machine: its own name, or that in front of what tells the form of its frames ("R18_VB", "R6_27"). In capital
// letters; blank where there is none.
std::string Reader_Of_Machine(std::string_view machine);

// The listing: lines without their ends.
std::vector<std::string> Write_Numor_Info(const Powder_Numor_Type& numor);
std::vector<std::string> Write_Numor_Info(const SXTAL_Numor_Type& numor);

// That of a file, compressed or not, by the reader of the instrument; what the reader tells of the file's form stands above it.
Status List_Numor_File(const std::string& file, std::string_view instrument, std::vector<std::string>& lines);

}  // namespace vntl
