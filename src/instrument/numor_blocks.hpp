// The blocks of a numor: a text file whose lines of equal letters open its parts.
//
//   RRRRRRRRRRRRRRRRRRRR...   run: number, lines of text, version
//     123456       1       4
//   AAAAAAAAAAAAAAAAAAAA...   text: characters, lines of it (or lines of labels above it)
//         80       1
//   Inst User L.C. Date Time
//   R3A user    26-Nov-05 10:20:30
//   IIIIIIIIIIIIIIIIIIII...   integers in columns (10I8) behind lines of labels; JJJ... has them in (8I10), FFF... reals in (5E16.8)
//         31       4
//   SSSSSSSSSSSSSSSSSSSS...   a part of the scan           VVVVVVVVVVVVVVVVVVVV...   the next frame
//
// A marker has ten letters or more, up to 80. What the counts of a block say, it ends at the next marker.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"

namespace vntl {

inline constexpr std::string_view block_letters = "RASFIJV";

struct Numor_Block {
    char letter = ' ';
    int line = 0;                 // of its marker, from 1
    std::array<int, 10> words{};  // of its integer record, words[0] is word 1
    std::string_view body = {};   // the lines behind that, up to the next marker
};

// The letter of a marker line, of ten letters or more; blank for any other line.
char Marker_Letter(std::string_view line);

// " A bad Block R-Type has been found"
std::string Bad_Block(char letter);

// The blocks of a text in their order; views into it.
struct Numor_Blocks {
    std::vector<Numor_Block> blocks;

    // The `number`-th block of a letter, from 1; null for none.
    const Numor_Block* Find(char letter, std::size_t number = 1) const;
};

// Cuts a text into its blocks. A marker line of a wrong length (nine letters) or without its integer record fails with
// " A bad Block R-Type has been found", by its letter; an R block whose lines of text end with the file
// "  Impossible to read a line for this block!". The blocks above the fault are found.
Status Find_Blocks(std::string_view text, Numor_Blocks& found);

// The text of an A block in UTF-8, its lines of 80 characters joined, word 1 characters of it; lines of labels above it are no part of it.
// " Impossible to read a line for this block!" where a line is missing.
Status Block_Text(const Numor_Block& block, std::string& text);

// The numbers of an F, I or J block: as many as word 1 tells, or fewer where the body ends before. A column of stars, or with anything else
// that is no finite number, ends them and fails with Bad_Block. Behind word 2 lines of labels. Columns that are blank count as 0 where
// others stand behind them in their line.
Status Block_Reals(const Numor_Block& block, std::vector<float>& values);
Status Block_Integers(const Numor_Block& block, std::vector<int>& values);

}  // namespace vntl
