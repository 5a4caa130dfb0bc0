#include "patterns/columns/column_head.hpp"

#include <algorithm>

#include "base/text.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_lines = 4000;  // of a head that are kept, and the last one

// Lines that other formats have above numbers, which are columns of another layout or none.
bool Is_Foreign(std::string_view line) {
    for (const char* word : {"XYDATA", "#L r", "BANK ", "_START", "_STEP", "loop_", "data_", "*RAS", "*TYPE", "*BEGIN"})
        if (line.starts_with(word)) return true;
    for (const char* word : {"TITLE", "Legend_X", "Legend_Y", "Scattering variable:"})
        if (Contains(line, word)) return true;
    return line.find('\0') != std::string_view::npos;
}

void Keep(std::string_view line, Column_Head& head) {
    if (head.lines.size() < most_lines)
        head.lines.push_back(line);
    else
        head.lines.back() = line;
}

// A second row shows that a line which begins with two numbers and goes on with words is one.
bool Is_Row(const Row_Shape& shape, Line_Cursor next) {
    if (!shape.begins) return false;
    if (shape.numbers) return true;
    std::string_view line;
    while (next.Next(line))
        if (!Trim(line).empty()) return Shape_Of_Row(line).begins && Shape_Of_Row(line).fields == shape.fields;
    return false;
}

// A row of a table by the names above it: as many fields, numbers where they have to be.
bool Is_Row_Of(const std::vector<std::string_view>& above, const Row_Shape& shape, std::string_view line) {
    if (above.empty() || shape.fields < 2) return false;
    const auto names = Roles_Of_Names(above.back(), shape.fields);
    Row_Reader::Values values;
    return names && names->names == shape.fields && Row_Reader(shape, *names).Take(line, values);
}

// Columns behind the last name are what they are in files without names: the third one its uncertainty, the fourth one calculated.
void Give_Unnamed(Column_Roles& roles, std::size_t fields) {
    if (roles.x != 0 || roles.y != 1 || roles.names >= fields) return;
    if (roles.names == 2 && roles.sigma < 0) roles.sigma = 2;
    if (roles.sigma == 2 && roles.names <= 3 && fields > 3 && roles.ycalc < 0) roles.ycalc = 3;
}

// Names stand in the last line, or above one of units.
void Find_Names(Column_Head& head) {
    constexpr std::size_t lines_looked_at = 2;
    for (std::size_t back = 1; back <= std::min(lines_looked_at, head.lines.size()) && !head.names; ++back) {
        const std::string_view line = head.lines[head.lines.size() - back];
        head.names = Roles_Of_Names(line, head.shape.fields);
        if (!head.names) continue;
        Give_Unnamed(*head.names, head.shape.fields);
        head.names_marked = Is_Column_Comment(line) || head.block;
        if (!head.names_marked) --head.free_lines;
    }
}

}  // namespace

bool Is_Column_Comment(std::string_view line) {
    constexpr std::string_view marks = "#'!;%";
    return line.starts_with("//") || line.starts_with("/*") || (!line.empty() && marks.find(line.front()) != std::string_view::npos);
}

Column_Roles Column_Head::Roles() const {
    if (names) return *names;
    Column_Roles first;
    if (shape.fields > 2) first.sigma = 2;
    return first;
}

Column_Head Read_Column_Head(Line_Cursor& lines, bool strict) {
    constexpr int most_free = 2;  // a title and a line of names
    Column_Head head;
    std::string_view line;
    bool in_block = false;
    for (Line_Cursor before = lines; lines.Next(line); before = lines) {
        line = Trim(line);
        if (line.empty()) continue;
        head.foreign = head.foreign || Is_Foreign(line);
        if (head.foreign && strict) return head;
        if (in_block || line.starts_with("/*")) {
            head.block = head.block || head.lines.empty();
            if (!in_block) line.remove_prefix(2);
            in_block = !Contains(line, "*/");
            if (line.ends_with("*/")) line.remove_suffix(2);
            line = Trim(line);
            if (!line.empty()) Keep(line, head);
            continue;
        }
        if (Is_Column_Comment(line)) {
            Keep(line, head);
            continue;
        }
        const Row_Shape shape = Shape_Of_Row(line);
        if (Is_Row(shape, lines) || Is_Row_Of(head.lines, shape, line)) {
            head.shape = shape;
            Find_Names(head);
            lines = before;
            return head;
        }
        if (++head.free_lines > most_free && strict) head.foreign = true;
        if (head.foreign && strict) return head;
        Keep(line, head);
    }
    head.open = true;
    return head;
}

}  // namespace vntl
