#include "charts/read_gdf.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "base/real_parse.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "charts/keyword_lines.hpp"

namespace vntl {

namespace {

using Value = std::optional<std::string_view>;

constexpr std::string_view opening = "{/", closing = "/}", points_keyword = "n_points";
constexpr std::string_view bad_number_of_plots = "Error reading the number of Plots!", no_plots = "Number of plots to draw is zero!",
                           bad_blocks = "Plot information incompatible with the number of curves!",
                           no_points = "Error reading the maximum points for curves!",
                           bad_points = "Error in the number of points for this data set", bad_data = "Error reading data!";

// --- the layout of the file --------------------------------------------------------------------------------------------------------

struct Mark {
    int line = 0;
    std::string_view text;  // behind an opening mark
    Line_Cursor behind;     // stands behind the line
};

struct Layout {
    Value title, plots, legend_x, legend_y, kind;
    std::vector<Mark> openings, closings;  // as many as there may be curves
};

struct Keyword {
    std::string_view name;
    Value Layout::*value;
};
constexpr Keyword keywords[] = {{"title", &Layout::title},
                                {"n_plots", &Layout::plots},
                                {"legend_x", &Layout::legend_x},
                                {"legend_y", &Layout::legend_y},
                                {"plot_type", &Layout::kind}};

void Note(std::vector<Mark>& marks, const Line_Cursor& cursor, std::string_view text) {
    if (marks.size() < max_generic_curves) marks.push_back({cursor.Number(), text, cursor});
}

// The first line of each keyword counts; the text of a curve holds none.
Layout Layout_Of(std::string_view text) {
    Layout layout;
    Line_Cursor cursor(text);
    for (std::string_view line; cursor.Next(line);) {
        const std::string_view cut = Trim_Left(line);
        if (cut.starts_with(opening)) {
            Note(layout.openings, cursor, cut.substr(opening.size()));
            continue;
        }
        if (cut.starts_with(closing)) Note(layout.closings, cursor, {});
        for (const Keyword& keyword : keywords)
            if (Value& value = layout.*keyword.value; !value) value = Value_Of(line, keyword.name);
    }
    return layout;
}

struct Block {
    std::string_view legend;
    int opened = 0, closed = 0;  // lines
    Line_Cursor lines;           // stands behind the opening line
};

// A pair counts when it is opened before it is closed, and behind the end of the one before.
std::vector<Block> Blocks_Of(const Layout& layout) {
    std::vector<Block> blocks;
    const std::size_t pairs = std::min(layout.openings.size(), layout.closings.size());
    for (std::size_t i = 0; i < pairs; ++i) {
        const Mark& from = layout.openings[i];
        const Mark& to = layout.closings[i];
        if (from.line < to.line && (i == 0 || layout.closings[i - 1].line < from.line))
            blocks.push_back({from.text, from.line, to.line, from.behind});
    }
    return blocks;
}

// --- one block ---------------------------------------------------------------------------------------------------------------------

struct Counted {
    std::optional<int> points;
    int line = 0;                     // that says so
    std::optional<Line_Cursor> data;  // stands behind it
};

// The next line inside of the block.
bool Next_Line(const Block& block, Line_Cursor& cursor, std::string_view& line) {
    return cursor.Number() + 1 < block.closed && cursor.Next(line);
}

Counted Points_Of(const Block& block) {
    Line_Cursor cursor = block.lines;
    for (std::string_view line; Next_Line(block, cursor, line);)
        if (const Value value = Value_Of(line, points_keyword)) return {Whole_Number(*value), cursor.Number(), cursor};
    return {};
}

constexpr std::string_view separators = " \t,";

// The numbers at the front of a line, which is left behind them. Their count.
std::size_t Take_Numbers(std::string_view& line, std::span<float> values) {
    std::size_t count = 0;
    for (float& value : values) {
        const std::size_t first = line.find_first_not_of(separators);
        if (first == std::string_view::npos) break;
        const std::string_view item = line.substr(first, line.find_first_of(separators, first) - first);
        const char* const end = item.data() + item.size();
        if (Parse_Float(item.data(), end, value) != end) break;
        line.remove_prefix(first + item.size());
        ++count;
    }
    return count;
}

// The text of a slice: a word, or more of them between quotes.
std::string_view Slice_Text(std::string_view rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(separators), rest.size()));
    if (!rest.starts_with('"')) return Leading_Word(rest);
    rest.remove_prefix(1);
    return rest.substr(0, rest.find('"'));
}

class Block_Reader {
public:
    Block_Reader(const Block& block, bool pie, const std::string& file) : block_(block), pie_(pie), file_(file) {}

    Status Read(Generic_Curve& curve, std::vector<std::string>& slices) const {
        const Counted counted = Points_Of(block_);
        if (!counted.points || *counted.points < 0) return Fail(bad_points, counted.data ? counted.line : block_.opened);
        if (pie_ && *counted.points > max_slices) return Fail("A pie has at most " + std::to_string(max_slices) + " slices", counted.line);
        curve.legend = Kept_Text(Trim(block_.legend), generic_legend_length);
        Line_Cursor cursor = *counted.data;
        for (int i = 0; i < *counted.points; ++i)
            if (const Status status = Read_Point(cursor, curve, slices); status.failed) return status;
        Read_Options(curve);
        return Status::Done();
    }

private:
    Status Fail(std::string_view message, int line) const { return Fail_In_File(message, "Line " + std::to_string(line) + " of ", file_); }

    // Two numbers of a pie, up to three of others: what is not given is 0.
    Status Read_Point(Line_Cursor& cursor, Generic_Curve& curve, std::vector<std::string>& slices) const {
        std::string_view line;
        if (!Next_Line(block_, cursor, line)) return Fail(bad_data, block_.closed);
        std::array<float, 3> values{};
        const std::size_t count = Take_Numbers(line, std::span(values).first(pie_ ? 2 : 3));
        if (count < (pie_ ? 2 : 1)) return Fail(bad_data, cursor.Number());
        curve.x.push_back(values[0]);
        curve.y.push_back(values[1]);
        curve.sigma.push_back(values[2]);
        if (pie_) slices.push_back(Kept_Text(Slice_Text(line), generic_legend_length));
        return Status::Done();
    }

    void Read_Options(Generic_Curve& curve) const {
        constexpr std::size_t longest_option = 7;
        Line_Cursor cursor = block_.lines;
        for (std::string_view line; Next_Line(block_, cursor, line);) {
            const std::string option = Lower(Trim(Trim_Left(line).substr(0, longest_option)));
            if (option == "marker" || option == "scatter") curve.has_marker = true;
            if (option == "scatter") curve.no_line = true;
            if (option == "errbar") curve.has_errbar = true;
            if (option == "legend") curve.has_legend = true;
        }
    }

    const Block& block_;
    bool pie_;
    const std::string& file_;
};

// --- the file ----------------------------------------------------------------------------------------------------------------------

void Take_Text(const Value& value, std::string& text) {
    if (value) text = Kept_Text(*value, generic_text_length);
}

// Without the keyword the kind stays.
Status Take_Kind(const Value& value, const std::string& file, Plot_Kind& kind) {
    if (!value) return Status::Done();
    const std::string word = Lower(Leading_Word(*value));
    for (std::size_t i = 0; i < plot_kind_names.size(); ++i)
        if (word.starts_with(plot_kind_names[i])) {
            kind = static_cast<Plot_Kind>(i);
            return Status::Done();
        }
    return Fail_In_File("Unknown PLOT_TYPE \"" + Kept_Text(Leading_Word(*value), generic_legend_length) +
                            "\": it is polyline, scatter, histogram, polar or piechart",
                        "", file);
}

Status Read_Blocks(const std::vector<Block>& blocks, bool pie, const std::string& file, Generic_Plots& plots) {
    for (const Block& block : blocks) {
        std::vector<std::string> slices;
        const Status status = Block_Reader(block, pie, file).Read(plots.curves.emplace_back(), slices);
        if (status.failed) return status;
        if (plots.curves.size() == 1) plots.slices = std::move(slices);
    }
    return Status::Done();
}

Status Read(std::string_view text, const std::string& file, Generic_Plots& plots) {
    const Layout layout = Layout_Of(text);
    Take_Text(layout.title, plots.title);
    const std::optional<int> count = layout.plots ? Whole_Number(*layout.plots) : std::nullopt;
    if (!count) return Fail_In_File(bad_number_of_plots, "", file);
    if (*count < 1) return Fail_In_File(no_plots, "", file);
    Take_Text(layout.legend_x, plots.legend_x);
    Take_Text(layout.legend_y, plots.legend_y);
    if (const Status status = Take_Kind(layout.kind, file, plots.plot_kind); status.failed) return status;
    const std::vector<Block> blocks = Blocks_Of(layout);
    if (static_cast<std::size_t>(*count) != blocks.size()) return Fail_In_File(bad_blocks, "", file);
    if (std::ranges::none_of(blocks, [](const Block& block) { return Points_Of(block).points.value_or(0) > 0; }))
        return Fail_In_File(no_points, "", file);
    return Read_Blocks(blocks, plots.plot_kind == Plot_Kind::pie, file, plots);
}

void Forget_Curves(Generic_Plots& plots) {
    plots.curves.clear();
    plots.slices.clear();
    plots.param_names.clear();
    plots.nblocks = 0;
}

}  // namespace

Status Read_GDF_Text(std::string_view text, const std::string& file, Generic_Plots& plots) {
    Forget_Curves(plots);
    const Status status = Read(Without_End_Mark(text), file, plots);
    if (status.failed) Forget_Curves(plots);
    return status;
}

Status Read_GDF(const std::string& file, Generic_Plots& plots) {
    Forget_Curves(plots);
    Text_File text;
    const Status status = Open_Keyword_File(file, text);
    return status.failed ? status : Read_GDF_Text(text.Text(), file, plots);
}

}  // namespace vntl
