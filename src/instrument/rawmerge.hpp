// The input of the program that merges raw runs into patterns: its command line, alone in a file.
//
//   -ins R3B -dir /data/r3b/ -num 123456  123470 -nor 10000.00 -fmt 1 -add T    0.500
#pragma once

#include <optional>
#include <string>

namespace vntl {

enum class Rawmerge_Adding { none, blocks, all, temperatures };

// Runs of one instrument, and what is made of them.
struct Rawmerge_Input {
    std::string instrument = {}, data_directory = {};
    int first = 0, last = 0;    // numbers of runs
    float monitor = 10000;      // to normalise to; up to 99 there is no normalisation
    bool instrument_5 = false;  // format of the patterns: that of instrument 5, or columns of x, y and sigma
    bool prepends_code = false;
    std::string codefile = {};         // begins the names of the patterns
    bool appends_temperature = false;  // in hundredths of a kelvin, to those names
    Rawmerge_Adding adding = Rawmerge_Adding::none;
    int block = 0;         // runs of a block
    float interval = 0.5;  // kelvin, within which runs are added
};

enum class Rawmerge_Item { data_directory, monitor, codefile, block, interval };

// What keeps a line from being written: the item, and why.
struct Rawmerge_Fault {
    Rawmerge_Item item;
    std::string why;
};

// The command line without its end. Numbers stand in columns, so that one too large for its own is a fault; `line` stays as it was then.
std::optional<Rawmerge_Fault> Rawmerge_Line(const Rawmerge_Input& input, std::string& line);

}  // namespace vntl
