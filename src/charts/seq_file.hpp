// Results of a sequential refinement: a block of lines for each run, of which any row can be drawn over any other.
//
//   NEW_REFINEMENT Title
//   NUMPAR 1
//   N_PATT 1
//   NPHASE 1
//   "lab6_300K.dat" 1 300.0000           row 1: file, order, temperature, which is zero where it is not known
//   GLOBAL_CHI_2 1.0342                  row 2
//   three lines of each phase, the first phase's rows 3 to 5, then one for each refined parameter, rows 6 and on:
//   PARAMETER a_LaB6 4.15692 0.00003     a key, the name, the value, its standard deviation
#pragma once

#include <optional>
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
    Status Read_Text(std::string text, const std::string& file);  // the same of a text; `file` names it

    bool empty() const { return blocks_.empty(); }
    int nblocks() const { return static_cast<int>(blocks_.size()); }
    const std::string& title() const { return title_; }  // of the first block
    // "Temperature/File Order", "Global Chi**2", the three rows of phase 1, the refined parameters.
    const std::vector<std::string>& param_names() const { return param_names_; }

    // A curve for each of `rows` over row `x_row`, with the names of the rows as legends, and what is known of the file. Texts and kind of
    // `plots` stay. A value of stars or "nan" is NaN. A failure names block and row and leaves `plots` as it was.
    Status Curves(int x_row, std::span<const Seq_Choice> rows, Generic_Plots& plots) const;

private:
    struct Block {
        std::size_t first = 0, end = 0;  // places in the text, from the line that opens it
    };
    struct Row_Value {
        float value = 0, sigma = 0;
    };
    struct Wanted_Row {
        int row;
        Row_Value found;
    };

    std::string_view Text_Of(const Block& block) const { return std::string_view(text_).substr(block.first, block.end - block.first); }
    void Find_Blocks();
    Status Take_First_Block();
    Status Take_Counts(std::string_view block);
    Status Take_Names(std::string_view block);
    Status Check_Lengths() const;
    std::size_t Line_Of(int row) const;  // in a block, from 0
    Status Read_Block(std::size_t block, std::vector<Wanted_Row>& rows) const;
    std::optional<Row_Value> Value_In(int row, std::string_view line, std::vector<std::string_view>& words) const;
    Status Fail_At(std::size_t block, int row) const;

    std::string text_, file_;
    std::vector<Block> blocks_;
    std::vector<std::size_t> lengths_;  // lines of the blocks, without blank ones at the end
    std::string title_;
    std::vector<std::string> param_names_;
    std::vector<std::string> row_names_;  // as the lines of rows 3 and on tell them
    int nphase_ = 0, numpar_ = 0;
};

}  // namespace vntl
