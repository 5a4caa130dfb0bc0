#include "patterns/gsas.hpp"

#include <cmath>

#include "base/conversions.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/gsas_bank.hpp"
#include "patterns/head_constants.hpp"
#include "patterns/reader_tools.hpp"

namespace vntl {

namespace {

constexpr std::size_t line_width = 80;
constexpr std::size_t most_banks = 2000;  // as many patterns as the program holds; no real file comes near

constexpr std::string_view no_bank_line = " => Error in the input GSAS-file: BANK not found!";

Status No_Such_Bank(int number) {
    return Status::Fail(" Error in Intensity file, BANK number:" + IntegerToString(number, "(i2)") + " not found!");
}

// Walks behind the next bank line. Comments above it tell the constants of the bank.
bool Next_Bank_Line(Line_Cursor& lines, Gsas_Bank_Line& bank, Head_Constants& constants) {
    constants = {};
    std::string_view line;
    while (lines.Next(line)) {
        if (line.starts_with('#') || line.starts_with('!')) constants.Take_Line(To_Utf8(line));
        if (!Is_Gsas_Bank_Line(line)) continue;
        bank = Gsas_Bank_Line(line);
        return true;
    }
    return false;
}

// The same, bank lines without a number passed over.
bool Next_Numbered(Line_Cursor& lines, Gsas_Bank_Line& bank, Head_Constants& constants) {
    while (Next_Bank_Line(lines, bank, constants))
        if (bank.numbered) return true;
    return false;
}
bool Next_Numbered(Line_Cursor& lines, Gsas_Bank_Line& bank) {
    Head_Constants constants;
    return Next_Numbered(lines, bank, constants);
}

Status Read_Bank(Gsas_Bank_Reader& reader, const Gsas_Bank_Line& bank, Line_Cursor& lines, bool flight, const Head_Constants& constants,
                 Diffraction_Pattern_Type& pattern) {
    const Status status = reader.Read(bank, lines, pattern);
    pattern.scat_var = flight ? "TOF" : "2theta";
    constants.Give(pattern);
    return status;
}

std::string Title_Of(std::string_view text) {
    std::string_view line;
    Line_Cursor lines(text);
    lines.Next(line);
    return std::string(Trim_Right(Kept_Text(line, line_width)));
}

}  // namespace

Status Read_Gsas(std::string_view text, bool flight, int number, Diffraction_Pattern_Type& pattern) {
    pattern = {};
    pattern.title = Title_Of(text);
    const int wanted = number == 0 ? 1 : number;
    Line_Cursor lines(text), behind_first(text);
    Gsas_Bank_Line bank, first;
    Head_Constants constants, of_first;
    bool any_line = false, found = false;
    while (!found && Next_Bank_Line(lines, bank, constants)) {
        any_line = true;
        found = bank.numbered && bank.number == wanted;
        if (!bank.numbered || first.numbered) continue;
        first = bank;
        of_first = constants;
        behind_first = lines;
    }
    if (!any_line) return Status::Fail(no_bank_line);
    if (!found && (number != 0 || !first.numbered)) return No_Such_Bank(wanted);
    Gsas_Bank_Reader reader(text, flight);
    return found ? Read_Bank(reader, bank, lines, flight, constants, pattern)
                 : Read_Bank(reader, first, behind_first, flight, of_first, pattern);
}

Status Read_Gsas_Banks(std::string_view text, bool flight, std::vector<Diffraction_Pattern_Type>& patterns,
                       std::vector<std::string>& messages) {
    patterns.clear();
    messages.clear();
    const std::string title = Title_Of(text);
    Gsas_Bank_Reader reader(text, flight);
    Line_Cursor lines(text);
    Gsas_Bank_Line bank;
    Head_Constants constants;
    std::vector<int> numbers;
    Status first_failure = Status::Done();
    while (numbers.size() + messages.size() < most_banks && Next_Numbered(lines, bank, constants)) {
        Diffraction_Pattern_Type pattern;
        pattern.title = title;
        if (const Status status = Read_Bank(reader, bank, lines, flight, constants, pattern); status.failed) {
            if (messages.empty()) first_failure = status;
            messages.push_back("Bank " + std::to_string(bank.number) + ':' + status.message);
            continue;
        }
        patterns.push_back(std::move(pattern));
        numbers.push_back(bank.number);
    }
    if (patterns.empty()) {
        Diffraction_Pattern_Type none;
        return messages.empty() ? Read_Gsas(text, flight, 0, none) : first_failure;
    }
    if (numbers.size() + messages.size() > 1)
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            patterns[i].bank = numbers[i];
            patterns[i].title += " (bank " + std::to_string(numbers[i]) + ')';
        }
    return Status::Done();
}

std::vector<int> Gsas_Banks(std::string_view text) {
    std::vector<int> numbers;
    Line_Cursor lines(text);
    Gsas_Bank_Line bank;
    while (Next_Numbered(lines, bank)) numbers.push_back(bank.number);
    return numbers;
}

bool Gsas_Is_Flight(std::string_view text) {
    constexpr double start_limit = 18000, end_limit = 18100;  // centidegrees
    Line_Cursor lines(text);
    Gsas_Bank_Line bank;
    if (!Next_Numbered(lines, bank)) return false;
    if (bank.Bins("RALF") || bank.Bins("SLOG") || bank.Bins_Time_Map() || Upper(bank.binning).starts_with("LOG")) return true;
    const double start = bank.coefficients[0];
    return start >= start_limit || start + static_cast<double>(bank.npts) * bank.coefficients[1] >= end_limit;
}

}  // namespace vntl
