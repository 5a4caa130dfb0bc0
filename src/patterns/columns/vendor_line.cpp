#include "patterns/columns/vendor_line.hpp"

#include <algorithm>

#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/pattern.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

// The next "Name: value" of the line, which loses it; false at its end.
bool Take_Pair(std::string_view& line, std::string_view& name, std::string_view& value) {
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos) return false;
    name = Trim(line.substr(0, colon));
    line = Trim_Left(line.substr(colon + 1));
    const bool quoted = line.starts_with('"');
    if (quoted) line.remove_prefix(1);
    const std::size_t stop = std::min(line.find(quoted ? '"' : ' '), line.size());
    value = Trim(line.substr(0, stop));
    line.remove_prefix(std::min(stop + 1, line.size()));
    return true;
}

}  // namespace

bool Is_Vendor_Line(std::string_view line) {
    if (line.starts_with('\'') || line.starts_with('#') || line.starts_with('!')) line = Trim_Left(line.substr(1));
    return line.starts_with("Id:") && (Contains(line, "Anode:") || Contains(line, "Scantype:") || Contains(line, "Operator:"));
}

Vendor_Line Read_Vendor_Line(std::string_view line, Fact_List& facts) {
    constexpr std::size_t most_pairs = 100;
    constexpr std::string_view names[][2] = {
        {"Id", "Sample"}, {"Operator", "User"}, {"Scantype", "Scan axis"}, {"TimePerStep", "Time a step (s)"}};
    Vendor_Line told;
    line.remove_prefix(std::min(line.find("Id:"), line.size()));
    std::string_view name, value;
    for (std::size_t i = 0; i < most_pairs && Take_Pair(line, name, value); ++i) {
        if (Equal_No_Case(name, "Id") || (Equal_No_Case(name, "Comment") && told.title.empty())) told.title = Kept_Text(value, title_width);
        if (Equal_No_Case(name, "Scantype")) told.scan_type = Kept_Text(value, legend_width);
        if (Equal_No_Case(name, "TimePerStep") && (!Told_Real(value, told.time) || told.time < 0)) told.time = 0;
        for (const char* rate : {"cps", "counts/s", "counts per second"}) told.per_second = told.per_second || Equal_No_Case(value, rate);
        std::string_view fact = name;
        for (const auto& [own, shared] : names)
            if (Equal_No_Case(own, name)) fact = shared;
        facts.Add(fact, value);
    }
    return told;
}

}  // namespace vntl
