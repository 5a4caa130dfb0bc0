#include "patterns/head_facts.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "base/text.hpp"
#include "base/text_file.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_facts = 400, longest_name = 80, longest_value = 400;
constexpr std::string_view comment = "Comment";
constexpr std::string_view comment_marks = "#!'%;*/_";

}  // namespace

void Fact_List::Add(std::string_view name, std::string_view value) {
    if (facts_.size() >= most_facts) return;
    Head_Fact fact{Kept_Text(Trim(name), longest_name), Kept_Text(Trim(value), longest_value)};
    if (fact.value.empty()) return;
    const bool known =
        std::any_of(facts_.begin(), facts_.end(), [&](const Head_Fact& old) { return old.name == fact.name && old.value == fact.value; });
    if (!known) facts_.push_back(std::move(fact));
}

void Fact_List::Add(std::string_view name, double value) {
    if (std::isnan(value)) return;
    char digits[40];
    const auto written = std::to_chars(std::begin(digits), std::end(digits), static_cast<float>(value));
    Add(name, std::string_view(digits, static_cast<std::size_t>(written.ptr - digits)));
}

std::shared_ptr<const Head_Facts> Fact_List::Done() const { return facts_.empty() ? nullptr : std::make_shared<const Head_Facts>(facts_); }

Fact_List Facts_Of_Lines(std::string_view head) {
    Fact_List facts;
    Line_Cursor lines(head);
    for (std::string_view line; lines.Next(line);) {
        line = Trim(line);
        while (!line.empty() && comment_marks.find(line.front()) != std::string_view::npos) line = Trim_Left(line.substr(1));
        const std::size_t sign = line.find_first_of("=:");
        if (sign == std::string_view::npos || sign == 0 || sign > longest_name)
            facts.Add(comment, line);
        else
            facts.Add(line.substr(0, sign), line.substr(sign + 1));
    }
    return facts;
}

}  // namespace vntl
