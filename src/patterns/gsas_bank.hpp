// One bank of a GSAS file: its line, and the records by its type and binning.
//
//   BANK 1 2679 268 CONST 2400 5 0 0          start and step, of angles in centidegrees; no type is STD
//    1   162 1   178 1   155 ...              STD: detectors and their mean count, (10(I2,F6.0)); of time of flight counts, (10F8.0)
//   BANK 1 3300 660 CONST 300.00 5.00 0 0 ESD
//       119.     17.    149.     19. ...      ESD: count and its standard deviation, (10F8.0)
//   BANK 1 2720 680 RALF 81743. 65. 81743. 0.00080 ALT
//      81743   2988   83   81808 ...          ALT: time in 1/32 microsecond, as start and step are, intensity, standard deviation,
//                                           (4(F8.0,F7.0,F5.0))
//   BANK 4 5199 5199 SLOG 25974 207678 0.0004 0 FXYE
//          25978.812577293  278.496  9.252    FXYE: x, intensity and its standard deviation, a line a point; FXY without the deviation
//
// FXYE and FXY state x themselves (in microseconds or centidegrees), so that any binning will do: SLOG, RALF, TIME_MAP, COND, LOG6, and
// CONS as CONST is written too. The pattern of a bank that holds fewer points than it claims ends with its last one.
//
// TIME_MAP with STD or ESD takes x from a map that stands anywhere in the file:
//
//   TIME_MAP 1 7 1 TIME_MAP 100               number of the map (the first coefficient of the bank), values, records, clock in ns (100)
//          1   10000      10     101   11000  first channel, its time and the width of channels in clock periods, (10I8),
//         20   20000                          and the end of the last channel
//
// x is then the time at which a channel begins, and the counts are those of a microsecond.
#pragma once

#include <array>
#include <limits>
#include <map>
#include <string_view>
#include <vector>

#include "base/text_file.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

// A line is one of a bank when it begins with BANK; with letters of other case when it has the words of one too.
bool Is_Gsas_Bank_Line(std::string_view line);

// The words of a bank line as views into it.
struct Gsas_Bank_Line {
    Gsas_Bank_Line() = default;
    explicit Gsas_Bank_Line(std::string_view line);

    bool Bins(std::string_view name) const;
    bool Bins_Constant() const { return Bins("CONST") || Bins("CONS"); }
    bool Bins_Time_Map() const;
    bool Has_Type(std::string_view name) const;

    bool numbered = false;
    int number = 0;
    int npts = 0;  // 0 when it is no number
    std::string_view binning;
    std::array<float, 4> coefficients{none, none, none, none};
    std::string_view type = "STD";

    static constexpr float none = std::numeric_limits<float>::quiet_NaN();
};

// Reads banks of one file, which together are trusted with so many points as the file can stand for.
class Gsas_Bank_Reader {
public:
    Gsas_Bank_Reader(std::string_view text, bool flight);

    // The records from `lines` on, which is left in front of the next bank or before. The title stays as it is.
    Status Read(const Gsas_Bank_Line& bank, Line_Cursor& lines, Diffraction_Pattern_Type& pattern);

private:
    // Channels of one width, from one on.
    struct Piece {
        double channel = 0, time = 0, width = 0;
    };

    Status Read_Constant(const Gsas_Bank_Line& bank, Line_Cursor& lines, Diffraction_Pattern_Type& p);
    Status Read_Mapped(const Gsas_Bank_Line& bank, Line_Cursor& lines, Diffraction_Pattern_Type& p);
    Status Read_Alternate(const Gsas_Bank_Line& bank, Line_Cursor& lines, Diffraction_Pattern_Type& p);
    Status Read_Stated(const Gsas_Bank_Line& bank, Line_Cursor& lines, Diffraction_Pattern_Type& p);
    Status Allocate_Room(const Gsas_Bank_Line& bank, Diffraction_Pattern_Type& p);
    Status Read_Counts(const Gsas_Bank_Line& bank, Line_Cursor& lines, Diffraction_Pattern_Type& p);
    void Read_Maps();

    std::string_view text_;
    bool flight_;
    float divisor_;
    std::size_t trust_;  // points that may still be given
    bool maps_read_ = false;
    std::map<int, std::vector<Piece>> maps_;  // without pieces: not readable
    std::vector<float> x_, y_, deviation_;    // of records that are still counted
};

}  // namespace vntl
