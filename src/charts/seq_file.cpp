#include "charts/seq_file.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/real_parse.hpp"
#include "base/scan.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "charts/keyword_lines.hpp"

namespace vntl {

namespace {

constexpr std::string_view block_mark = "new_ref", chi_keyword = "global_chi_2", first_name = "Temperature/File Order",
                           second_name = "Global Chi**2";
constexpr std::string_view no_blocks = "No Sequential Blocks were found!", bad_phase = "Error reading the Phase Parameters!",
                           bad_parameter = "Error reading the Plot Parameters!";
constexpr int temperature_row = 1, chi_row = 2, first_phase_row = 3, first_parameter_row = 6, lines_of_phase = 3;

bool Opens_Block(std::string_view line) {
    line = Trim_Left(line);
    return line.size() >= block_mark.size() && Equal_No_Case(line.substr(0, block_mark.size()), block_mark);
}

std::string Row_Failure(int row) {
    if (row == temperature_row) return "Error reading the Temperature/File Order!";
    if (row == chi_row) return "Error reading the Global Chi**2!";
    return std::string(row < first_parameter_row ? bad_phase : bad_parameter);
}

// The four words of a line of row 3 and on.
bool Take_Words(std::string_view line, std::vector<std::string_view>& words) {
    constexpr std::size_t count = 4;
    return Get_Words(line, words, count, line.size()).ok() && words.size() == count;
}

// What tells a row from others: the line of a phase may hold more behind a colon.
std::string_view Row_Name(int row, std::string_view word) { return row < first_parameter_row ? word.substr(0, word.find(':')) : word; }

// Stars stand where a value did not fit into its columns.
std::optional<float> Number_Of(std::string_view word) {
    if (!word.empty() && word.find_first_not_of('*') == std::string_view::npos) return std::numeric_limits<float>::quiet_NaN();
    const char* const end = word.data() + word.size();
    float value = 0;
    if (word.empty() || Parse_Float(word.data(), end, value) != end) return {};
    return value;
}

}  // namespace

// --- reading -----------------------------------------------------------------------------------------------------------------------

Status Seq_File::Read(const std::string& file) {
    Text_File text;
    if (const Status status = Open_Keyword_File(file, text); status.failed) return status;
    return Read_Text(std::string(Without_End_Mark(text.Text())), file);
}

Status Seq_File::Read_Text(std::string text, const std::string& file) {
    Seq_File read;
    read.text_ = std::move(text);
    read.file_ = file;
    read.Find_Blocks();
    if (read.blocks_.empty()) return Fail_In_File(no_blocks, "", file);
    if (const Status status = read.Take_First_Block(); status.failed) return status;
    if (const Status status = read.Check_Lengths(); status.failed) return status;
    *this = std::move(read);
    return Status::Done();
}

void Seq_File::Find_Blocks() {
    Line_Cursor cursor(text_);
    std::size_t lines = 0;  // of the block so far
    for (std::string_view line; cursor.Next(line); ++lines) {
        const auto place = static_cast<std::size_t>(line.data() - text_.data());
        if (Opens_Block(line)) {
            if (!blocks_.empty()) blocks_.back().end = place;
            blocks_.push_back({place, text_.size()});
            lengths_.push_back(0);
            lines = 0;
        }
        if (!blocks_.empty() && !Trim_Left(line).empty()) lengths_.back() = lines + 1;
    }
}

Status Seq_File::Take_First_Block() {
    const std::string_view block = Text_Of(blocks_.front());
    std::string_view line;
    Line_Cursor(block).Next(line);
    title_ = Kept_Text(Trim(Behind_Words(line, 1)), generic_text_length);
    const Status status = Take_Counts(block);
    return status.failed ? status : Take_Names(block);
}

// The line that opens the block tells a title, in which a keyword means nothing.
Status Seq_File::Take_Counts(std::string_view block) {
    int npatt = 0;
    const struct {
        std::string_view keyword, things;
        int least;
        int& count;
    } counts[] = {{"numpar", "Parameters", 0, numpar_},
                  {"n_patt", "Patterns", std::numeric_limits<int>::min(), npatt},
                  {"nphase", "Phases", 1, nphase_}};
    for (const auto& wanted : counts) {
        Line_Cursor cursor(block);
        std::string_view line;
        std::optional<std::string_view> value;
        cursor.Next(line);
        while (!value && cursor.Next(line)) value = Value_Of(line, wanted.keyword);
        const std::optional<int> count = value ? Whole_Number(*value) : std::nullopt;
        if (!count || *count < wanted.least)
            return Fail_In_File("Error reading the number of " + std::string(wanted.things) + '!', "", file_);
        wanted.count = *count;
    }
    return Status::Done();
}

// The rows behind the line of the keyword: those of phase 1, and, behind the other phases, those of the parameters.
Status Seq_File::Take_Names(std::string_view block) {
    Line_Cursor cursor(block);
    std::string_view line;
    cursor.Next(line);
    while (cursor.Next(line) && !Value_Of(line, chi_keyword)) continue;
    param_names_ = {std::string(first_name), std::string(second_name)};
    std::vector<std::string_view> words;
    const auto take_row = [&](int row) {
        if (!cursor.Next(line) || !Take_Words(line, words)) return Fail_At(0, row);
        const std::string_view name = Row_Name(row, words[1]);
        row_names_.emplace_back(name);
        param_names_.push_back(Kept_Text(name, generic_param_length));
        return Status::Done();
    };
    for (int row = first_phase_row; row < first_parameter_row; ++row)
        if (const Status status = take_row(row); status.failed) return status;
    for (long long other = 0; other < static_cast<long long>(lines_of_phase) * (nphase_ - 1); ++other)
        if (!cursor.Next(line)) return Fail_At(0, first_phase_row);
    for (int k = 0; k < numpar_; ++k)
        if (const Status status = take_row(first_parameter_row + k); status.failed) return status;
    return Status::Done();
}

// A block that ends before its last row was not written to its end.
Status Seq_File::Check_Lengths() const {
    const int last = first_parameter_row + numpar_ - 1;
    const std::size_t least = Line_Of(first_parameter_row) + static_cast<std::size_t>(numpar_);
    for (std::size_t b = 0; b < lengths_.size(); ++b) {
        if (lengths_[b] >= least) continue;
        int row = temperature_row;
        while (row < last && Line_Of(row) < lengths_[b]) ++row;
        return Fail_At(b, row);
    }
    return Status::Done();
}

// --- curves ------------------------------------------------------------------------------------------------------------------------

std::size_t Seq_File::Line_Of(int row) const {
    constexpr int lines_before = 3;  // counts, behind the line that opens the block
    if (row < first_parameter_row) return static_cast<std::size_t>(lines_before + row);
    return static_cast<std::size_t>(row) + static_cast<std::size_t>(lines_of_phase) * static_cast<std::size_t>(nphase_);
}

Status Seq_File::Fail_At(std::size_t block, int row) const {
    return Fail_In_File(Row_Failure(row), "Block " + std::to_string(block + 1) + ", row " + std::to_string(row) + " of ", file_);
}

// Nothing for a line that is not this row's, or has no number in its place.
std::optional<Seq_File::Row_Value> Seq_File::Value_In(int row, std::string_view line, std::vector<std::string_view>& words) const {
    const auto number = [&words](std::size_t word) { return word < words.size() ? Number_Of(words[word]) : std::nullopt; };
    std::optional<float> value, sigma = 0.0f;
    if (row == temperature_row) {
        (void)Get_Words(line, words, 3, line.size());  // what follows them is of no use
        const std::optional<float> order = number(1), temperature = number(2);
        if (order && temperature) value = *temperature == 0 ? order : temperature;
    } else if (row == chi_row) {
        if (Value_Of(line, chi_keyword)) value = Number_Of(Leading_Word(*Value_Of(line, chi_keyword)));
    } else if (Take_Words(line, words) && Row_Name(row, words[1]) == row_names_[static_cast<std::size_t>(row - first_phase_row)]) {
        value = number(2);
        sigma = number(3);
    }
    if (!value || !sigma) return {};
    return Row_Value{*value, *sigma};
}

// `rows` rise.
Status Seq_File::Read_Block(std::size_t block, std::vector<Wanted_Row>& rows) const {
    Line_Cursor cursor(Text_Of(blocks_[block]));
    std::string_view line;
    std::vector<std::string_view> words;
    for (Wanted_Row& wanted : rows) {
        const int at = static_cast<int>(Line_Of(wanted.row)) + 1;
        while (cursor.Number() < at)
            if (!cursor.Next(line)) return Fail_At(block, wanted.row);
        const std::optional<Row_Value> value = Value_In(wanted.row, line, words);
        if (!value) return Fail_At(block, wanted.row);
        wanted.found = *value;
    }
    return Status::Done();
}

Status Seq_File::Curves(int x_row, std::span<const Seq_Choice> rows, Generic_Plots& plots) const {
    const auto is_row = [this](int row) { return row >= 1 && row <= static_cast<int>(param_names_.size()); };
    if (!is_row(x_row) || rows.empty() || rows.size() > max_generic_curves ||
        !std::ranges::all_of(rows, [&](const Seq_Choice& choice) { return is_row(choice.row); }))
        return Status::Fail("There are no such rows");
    std::vector<Wanted_Row> wanted = {{x_row, {}}};
    for (const Seq_Choice& choice : rows) wanted.push_back({choice.row, {}});
    std::ranges::sort(wanted, {}, &Wanted_Row::row);
    const auto found = [&wanted](int row) { return std::ranges::find(wanted, row, &Wanted_Row::row)->found; };

    std::vector<Generic_Curve> curves;
    for (const Seq_Choice& choice : rows) {
        const std::string_view name = Cut(param_names_[static_cast<std::size_t>(choice.row - 1)], generic_legend_length);
        curves.push_back({std::string(name), {}, {}, {}, choice.errbar, choice.marker, false, choice.legend});
    }
    for (std::size_t b = 0; b < blocks_.size(); ++b) {
        if (const Status status = Read_Block(b, wanted); status.failed) return status;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            curves[i].x.push_back(found(x_row).value);
            curves[i].y.push_back(found(rows[i].row).value);
            curves[i].sigma.push_back(found(rows[i].row).sigma);
        }
    }
    plots.curves = std::move(curves);
    plots.slices.clear();
    plots.nblocks = nblocks();
    plots.param_names = param_names_;
    plots.file_name = file_;
    return Status::Done();
}

}  // namespace vntl
