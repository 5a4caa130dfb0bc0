#include "patterns/head_facts.hpp"

#include <algorithm>
#include <cmath>
#include <string>

#include "base/conversions.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_facts = 400, longest_name = 80, longest_value = 400;
constexpr std::string_view comment = "Comment";
constexpr std::string_view comment_marks = "#!'%;*/_";

// Names that many programs have for the same things, in small letters without blanks and underscores.
constexpr std::string_view shared_names[][2] = {{"sample", "Sample"},
                                                {"samplename", "Sample"},
                                                {"usersamplename", "Sample"},
                                                {"comment", "Comment"},
                                                {"date", "Date"},
                                                {"user", "User"},
                                                {"username", "User"},
                                                {"operator", "User"},
                                                {"anode", "Anode"},
                                                {"temp(k)", "Temperature (K)"},
                                                {"temperature(k)", "Temperature (K)"},
                                                {"timeperstep(sec)", "Time a step (s)"},
                                                {"timeperstep(s)", "Time a step (s)"},
                                                {"timeperstep", "Time a step (s)"}};

std::string_view Shared_Name(std::string_view name) {
    std::string bare;
    for (const char c : Lower(name.substr(0, longest_name)))
        if (c != ' ' && c != '_') bare += c;
    for (const auto& [theirs, ours] : shared_names)
        if (theirs == bare) return ours;
    return name;
}

std::string_view Unquoted(std::string_view text) {
    text = Trim(text);
    if (text.ends_with(',')) text = Trim_Right(text.substr(0, text.size() - 1));
    const bool quoted = text.size() > 1 && (text.front() == '"' || text.front() == '\'') && text.back() == text.front();
    return quoted ? text.substr(1, text.size() - 2) : text;
}

// Behind the closing quote of the text that begins with one, or at the end.
std::size_t Behind_Quotes(std::string_view text) {
    std::size_t at = 1;
    while (at < text.size() && text[at] != '"') at += text[at] == '\\' ? 2 : 1;
    return std::min(at + 1, text.size());
}

// The names of an object in JSON with their values; those of objects within it likewise, and a list as it is written.
void Add_Json(std::string_view text, Fact_List& facts) {
    std::string_view name;
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view rest = text.substr(at);
        if (rest.front() == '"' && name.empty()) {
            const std::size_t stop = Behind_Quotes(rest);
            at += stop;
            if (Trim_Left(text.substr(at)).starts_with(':')) name = Unquoted(rest.substr(0, stop));
        } else if (rest.front() == '{' || (name.empty() && rest.front() != '"')) {
            name = {};
            ++at;
        } else if (rest.front() == ':' || rest.front() == ' ' || rest.front() == '\t') {
            ++at;
        } else {
            std::size_t stop = rest.find_first_of(",}");
            if (rest.front() == '"') stop = Behind_Quotes(rest);
            if (rest.front() == '[') stop = rest.find(']') == std::string_view::npos ? rest.size() : rest.find(']') + 1;
            stop = std::min(std::max<std::size_t>(stop, 1), rest.size());
            facts.Add(Shared_Name(name), Unquoted(rest.substr(0, stop)));
            name = {};
            at += stop;
        }
    }
}

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
    if (!std::isnan(value)) Add(name, IRealToString(static_cast<float>(value)));
}

std::shared_ptr<const Head_Facts> Fact_List::Done() const { return facts_.empty() ? nullptr : std::make_shared<const Head_Facts>(facts_); }

Fact_List Facts_Of_Lines(std::string_view head) {
    Fact_List facts;
    Line_Cursor lines(head);
    for (std::string_view line; lines.Next(line);) {
        line = Trim(line);
        while (!line.empty() && comment_marks.find(line.front()) != std::string_view::npos) line = Trim_Left(line.substr(1));
        const std::size_t brace = line.find('{');
        if (brace != std::string_view::npos && Trim_Left(line.substr(brace + 1)).starts_with('"')) {
            Add_Json(line.substr(brace), facts);
            continue;
        }
        const std::size_t sign = line.find_first_of("=:");
        if (line.find_first_not_of("{}=-+* \t") == std::string_view::npos) continue;  // a rule
        if (sign == std::string_view::npos || sign == 0 || sign > longest_name)
            facts.Add(comment, line);
        else
            facts.Add(Shared_Name(Unquoted(line.substr(0, sign))), Unquoted(line.substr(sign + 1)));
    }
    return facts;
}

}  // namespace vntl
