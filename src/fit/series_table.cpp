#include "fit/series_table.hpp"

#include <algorithm>
#include <cmath>

#include "base/conversions.hpp"
#include "base/text.hpp"

namespace vntl {

namespace {

constexpr float least_temperature = 0.0001f;
constexpr std::size_t widest_name = 80;  // of a file, so that a line of a block stays within 132 characters
constexpr std::string_view temperature_format = "(f0.4)";

bool Is_Known(float temperature) { return temperature > least_temperature && std::isfinite(temperature); }

// As short as reads back the same, nine digits at most.
std::string Number(float value, std::string_view otherwise) { return std::isfinite(value) ? IRealToString(value) : std::string(otherwise); }

// Quotes where a comma, a quote or a line end would end the field.
std::string Csv_Field(std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos && Trim(text) == text) return std::string(text);
    return '"' + Replace_All(text, "\"", "\"\"") + '"';
}

void Add_Csv_Line(std::string& text, const Series_Fit& fit) {
    text += std::to_string(fit.row) + ',' + Csv_Field(fit.file) + ',';
    if (Is_Known(fit.temperature)) text += Number(fit.temperature, "");
    text += ',' + Number(fit.chi2, "") + (fit.converged ? ",1" : ",0");
    for (const Series_Value& parameter : fit.values) {
        text += ',' + Number(parameter.value, "") + ',';
        if (fit.has_deviations) text += Number(parameter.sd, "");
    }
    text += '\n';
}

// A text between quotes on one line.
std::string Word(std::string_view text) {
    std::string word = Elide_Middle(text, widest_name);
    std::ranges::replace(word, '"', '\'');
    std::ranges::replace_if(
        word, [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
    return '"' + word + '"';
}

void Add_Line(std::string& text, std::string_view key, std::string_view name, float value, float sd) {
    text.append(key) += ' ';
    text.append(name) += ' ' + Number(value, "0") + ' ' + Number(sd, "0") + '\n';
}

void Add_Block(std::string& text, const std::vector<std::string>& names, const Series_Fit& fit) {
    text += "NEW_REFINEMENT Series of fits\nNUMPAR " + std::to_string(names.size()) + "\nN_PATT 1\nNPHASE 1\n";
    const std::string temperature = Is_Known(fit.temperature) ? IRealToString(fit.temperature, temperature_format) : "0.0000";
    text += Word(fit.file) + ' ' + std::to_string(fit.row) + ' ' + temperature + '\n';
    text += "GLOBAL_CHI_2 " + Number(fit.chi2, "0") + '\n';
    Add_Line(text, "R_FACTOR", "Rfact", fit.agreement.rfact, 0);
    Add_Line(text, "R_FACTOR", "Rwfact", fit.agreement.rwfact, 0);
    Add_Line(text, "R_FACTOR", "Rex", fit.agreement.rex, 0);
    for (std::size_t k = 0; k < names.size(); ++k)
        Add_Line(text, "PARAMETER", names[k], fit.values[k].value, fit.has_deviations ? fit.values[k].sd : 0);
}

}  // namespace

std::string Csv_Text(const Series_Table& table) {
    std::string text = "row,file,temperature,chi2,converged";
    for (const std::string& name : table.names) text += ',' + Csv_Field(name) + ',' + Csv_Field("sd(" + name + ")");
    text += '\n';
    for (const Series_Fit& fit : table.fits) Add_Csv_Line(text, fit);
    return text;
}

std::string Seq_Text(const Series_Table& table) {
    std::string text;
    for (const Series_Fit& fit : table.fits) Add_Block(text, table.names, fit);
    return text;
}

}  // namespace vntl
