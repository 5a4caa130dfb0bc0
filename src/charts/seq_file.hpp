// Results of a sequential refinement: a block of lines for each run, of which any row can be drawn over any other.
//
//   NEW_REFINEMENT Title           NUMPAR 1         N_PATT 1         NPHASE 1
//   "lab6_300K.dat" 1 300.0000           file, order, temperature
//   GLOBAL_CHI_2 1.0342
//   three lines of each phase, then one for each refined parameter: a key, the name, the value, its standard deviation
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "charts/generic_plots.hpp"

namespace vntl {

// A row of the file that is drawn as a curve; rows count from 1.
struct Seq_Choice {
    int row = 0;
    bool errbar = false, marker = false, legend = false;
};

class Seq_File {
public:
    // Reads the file; a failure, whose message has the file's name on its second line, leaves the one that was read before.
    Status Read(const std::string& file);

    bool empty() const { return blocks_.empty(); }
    int nblocks() const { return static_cast<int>(blocks_.size()); }
    const std::string& title() const { return title_; }  // of the first block
    // "Temperature/File Order", "Global Chi**2", the three rows of phase 1, the refined parameters.
    const std::vector<std::string>& param_names() const { return param_names_; }

    // A curve for each of `rows` over row `x_row`, with the names of the rows as legends, and what is known of the file. Texts and kind of
    // `plots` stay. A failure names block and row and leaves `plots` as it was.
    Status Curves(int x_row, std::span<const Seq_Choice> rows, Generic_Plots& plots) const;

private:
    struct Block {
        std::size_t first = 0, end = 0;  // lines of it
    };
    std::string text_;
    std::vector<std::string_view> lines_;  // of text_
    std::vector<Block> blocks_;
    std::string title_, file_;
    std::vector<std::string> param_names_;
    int nphase_ = 0, numpar_ = 0;
};

}  // namespace vntl
