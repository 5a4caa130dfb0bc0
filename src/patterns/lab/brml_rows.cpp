#include "patterns/lab/brml_rows.hpp"

#include <algorithm>

namespace vntl {

namespace {

constexpr std::string_view opens = "<Datum>", closes = "</Datum>";
constexpr std::size_t shortest_run = 4;  // whose element is shorter than the run

void Skip_Spaces(std::string_view& text) {
    std::size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\n' || text[i] == '\r' || text[i] == '\t')) ++i;
    text.remove_prefix(i);
}

// The rows that follow each other from here on.
std::string_view Run_At(std::string_view bytes, std::size_t& rows) {
    std::string_view rest = bytes, row;
    rows = 0;
    std::size_t end = 0;
    while (Next_Row(rest, row)) {
        ++rows;
        end = bytes.size() - rest.size();
    }
    return bytes.substr(0, end);
}

}  // namespace

bool Next_Row(std::string_view& run, std::string_view& row) {
    std::string_view rest = run;
    Skip_Spaces(rest);
    if (!rest.starts_with(opens)) return false;
    rest.remove_prefix(opens.size());
    const std::size_t end = rest.find('<');
    if (end == std::string_view::npos || !rest.substr(end).starts_with(closes)) return false;
    row = rest.substr(0, end);
    rest.remove_prefix(end + closes.size());
    run = rest;
    return true;
}

Brml_Rows::Brml_Rows(std::string_view bytes) {
    std::size_t taken = 0;  // of the bytes
    for (std::size_t at = bytes.find(opens); at != std::string_view::npos; at = bytes.find(opens, at)) {
        std::size_t rows = 0;
        const std::string_view run = Run_At(bytes.substr(at), rows);
        if (rows >= shortest_run) {
            document.append(bytes, taken, at - taken);
            document += '<' + std::string(run_element) + ' ' + std::string(run_attribute) + "=\"" + std::to_string(runs.size()) + "\"/>";
            document.append(static_cast<std::size_t>(std::count(run.begin(), run.end(), '\n')), '\n');
            runs.push_back(run);
            taken = at + run.size();
        }
        at += std::max(run.size(), opens.size());
    }
    document.append(bytes, taken);
}

}  // namespace vntl
