#include "patterns/instrument_parameters.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>

#include "base/real_parse.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_banks = 2000;  // as many as the program has rows
constexpr std::size_t record_width = 80, key_end = 12, field_width = 10;
constexpr std::size_t looked_at = 200;  // lines of a head
constexpr double largest_wavelength = 100, largest_difc = 1e7, least_difc = 100;

constexpr std::string_view no_such_file = "This is no instrument parameter file";

bool Is_Blank(char c) { return c == ' ' || c == '\t'; }
bool Is_Digit(char c) { return c >= '0' && c <= '9'; }
bool Begins(std::string_view text, std::string_view word) { return Equal_No_Case(text.substr(0, word.size()), word); }

// A number as large as constants are; its end, or null.
const char* Sound_Number(std::string_view text, double& value) {
    double read = 0;
    const char* const end = Parse_Double(text.data(), text.data() + text.size(), read);
    if (end == text.data() || !(std::fabs(read) <= 1e12)) return nullptr;
    value = read;
    return end;
}

// The number with which a value begins; a remark may stand behind it.
double Told_Number(std::string_view text, double otherwise) {
    Sound_Number(Trim(text), otherwise);
    return otherwise;
}

int Whole_Number(std::string_view text) {
    const double number = Told_Number(text, 0);
    return number >= 1 && number <= 99999 ? static_cast<int>(number) : 0;
}

// What the letters of a histogram's type say: powder, radiation, scan.
struct Kind {
    bool told = false, flight = false, energy = false;
    char radiation = ' ';
};
Kind Kind_Of(std::string_view word) {
    const std::string letters = Upper(Trim(word));
    if (letters.size() < 3) return {};
    return {true, letters[2] == 'T', letters[2] == 'E', letters[1]};
}

// A bank as it is being read.
struct Draft {
    Instrument_Bank bank;
    Kind kind;
    std::string constants;  // of a record, whose meaning the type tells
    double second_path = 0;
};

// --- a key and its value a line ------------------------------------------------------------------------------------------------

struct Key {
    std::string_view name;
    double Instrument_Bank::*value;
};
constexpr Key keys[] = {
    {"Lam", &Instrument_Bank::lam1},          {"Lam1", &Instrument_Bank::lam1},           {"Lam2", &Instrument_Bank::lam2},
    {"I(L2)/I(L1)", &Instrument_Bank::ratio}, {"difC", &Instrument_Bank::difC},           {"difA", &Instrument_Bank::difA},
    {"difB", &Instrument_Bank::difB},         {"Zero", &Instrument_Bank::zero},           {"Polariz.", &Instrument_Bank::polarisation},
    {"2-theta", &Instrument_Bank::two_theta}, {"fltPath", &Instrument_Bank::flight_path},
};

void Number_Bank(Instrument_Bank& bank, int number) {
    if (number == 0) return;
    bank.number = number;
    bank.numbered = true;
}

void Take_Item(std::string_view item, Draft& draft) {
    const std::size_t colon = item.find(':');
    if (colon == std::string_view::npos) return;
    const std::string_view name = Trim(item.substr(0, colon)), value = Trim(item.substr(colon + 1));
    if (Equal_No_Case(name, "Type")) draft.kind = Kind_Of(value.substr(0, value.find_first_of(" \t#")));
    if (Equal_No_Case(name, "Bank") && !draft.bank.numbered) Number_Bank(draft.bank, Whole_Number(value));
    for (const Key& key : keys)
        if (Equal_No_Case(name, key.name)) draft.bank.*key.value = Told_Number(value, draft.bank.*key.value);
}

// "#Bank 6: ..." begins a bank: its number, 0 where none stands there; nothing for any other line.
std::optional<int> Bank_Heading(std::string_view line) {
    if (!line.starts_with('#')) return {};
    line = Trim_Left(line.substr(1));
    if (!Begins(line, "Bank")) return {};
    return Whole_Number(line.substr(4));
}

std::vector<Draft> Read_Keys(std::string_view text) {
    std::vector<Draft> drafts;
    Line_Cursor lines(text);
    std::string_view line;
    while (lines.Next(line)) {
        line = Trim(line);
        const std::optional<int> heading = Bank_Heading(line);
        if (heading && drafts.size() >= most_banks) break;
        if (line.starts_with('#') && !heading) continue;
        if (heading || drafts.empty()) drafts.emplace_back();
        if (heading) Number_Bank(drafts.back().bank, *heading);
        if (heading) continue;
        for (std::size_t end = 0; !line.empty(); line.remove_prefix(std::min(end + 1, line.size()))) {
            end = line.find(';');
            Take_Item(line.substr(0, end), drafts.back());
            if (end == std::string_view::npos) break;
        }
    }
    return drafts;
}

// --- records of 80 columns -----------------------------------------------------------------------------------------------------

struct Record {
    int bank = 0;  // 0 for what holds for all of them
    std::string_view key, value;
};

constexpr std::string_view record_keys[] = {"BANK", "HTYPE", "FPATH1", "FPATH2", "ICONS", "BNKPAR", "IRAD"};

// "INS  1 ICONS22591.8600": the bank's number and a known key. The key ends with column 12, or where it ends.
std::optional<Record> Record_Of(std::string_view line) {
    if (!Begins(line, "INS") || line.size() < 5 || (!Is_Blank(line[3]) && !Is_Digit(line[3]))) return {};
    Record record;
    std::size_t at = 3;
    while (at < line.size() && Is_Blank(line[at])) ++at;
    while (at < line.size() && Is_Digit(line[at]) && record.bank < 10000) record.bank = 10 * record.bank + (line[at++] - '0');
    while (at < line.size() && Is_Blank(line[at])) ++at;
    for (const std::string_view key : record_keys) {
        if (!Begins(line.substr(at), key)) continue;
        const std::size_t end = at + key.size();
        const bool in_columns = end <= key_end && Trim(line.substr(end, key_end - end)).empty();
        record.key = key;
        record.value = line.substr(std::min(in_columns ? key_end : end, line.size()));
        return record;
    }
    return {};
}

// Records of a line: one, or all of a file without line ends.
template <class Use>
void For_Each_Record(std::string_view line, Use use) {
    while (line.size() > record_width && Begins(line.substr(record_width), "INS ")) {
        use(line.substr(0, record_width));
        line.remove_prefix(record_width);
    }
    use(line);
}

using Numbers = std::array<double, 7>;  // lambda 1 or difC, lambda 2 or difA, zero, a column without a use, polarisation, its kind, ratio

// A field by its columns: a blank one is 0, and one that holds anything beside one number has another layout.
bool Read_Field(std::string_view text, double& value) {
    text = Trim(text);
    value = 0;
    return text.empty() || Sound_Number(text, value) == text.data() + text.size();
}

// One number stands on both sides of a column's end: the record was not written by columns.
bool Is_Cut(std::string_view text, std::size_t at) {
    constexpr std::string_view of_numbers = "0123456789.";
    if (at >= text.size() || of_numbers.find(text[at - 1]) == std::string_view::npos) return false;
    const std::size_t before = text.substr(0, at).find_last_not_of(of_numbers), behind = text.find_first_not_of(of_numbers, at);
    const std::size_t begin = before == std::string_view::npos ? 0 : before + 1;
    double value = 0;
    return behind != at && Read_Field(text.substr(begin, behind == std::string_view::npos ? behind : behind - begin), value);
}

std::optional<Numbers> Numbers_In_Columns(std::string_view text) {
    constexpr std::size_t widths[] = {field_width, field_width, field_width, field_width, field_width, 5, field_width};
    Numbers numbers{};
    std::size_t at = 0;
    for (std::size_t i = 0; i < numbers.size() && at < text.size(); at += widths[i++])
        if (!Read_Field(text.substr(at, widths[i]), numbers[i]) || Is_Cut(text, at + widths[i])) return {};
    return numbers;
}

Numbers Numbers_In_Words(std::string_view text) {
    Numbers numbers{};
    for (double& number : numbers) {
        while (!text.empty() && (Is_Blank(text.front()) || text.front() == ',')) text.remove_prefix(1);
        const char* const end = Sound_Number(text, number);
        if (end == nullptr) break;
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    }
    return numbers;
}

Numbers Constants_In(std::string_view text) {
    const std::optional<Numbers> numbers = Numbers_In_Columns(text);
    return numbers ? *numbers : Numbers_In_Words(text);
}

void Take_Constants(Draft& draft) {
    const Numbers numbers = Constants_In(draft.constants);
    Instrument_Bank& bank = draft.bank;
    const bool flight = draft.kind.told ? draft.kind.flight : numbers[0] >= least_difc;
    (flight ? bank.difC : bank.lam1) = numbers[0];
    (flight ? bank.difA : bank.lam2) = numbers[1];
    bank.zero = flight ? numbers[2] : numbers[2] / 100;
    if (flight) return;
    bank.polarisation = numbers[4];
    bank.ratio = numbers[6];
}

class Record_Reader {
public:
    void Take(const Record& record) {
        if (record.key == "HTYPE" && record.bank == 0) kind_ = Kind_Of(record.value);
        if (record.key == "FPATH1" && record.bank == 0) first_path_ = Told_Number(record.value, 0);
        if (record.bank == 0) return;
        Draft* const draft = Of(record.bank);
        if (draft == nullptr) return;
        if (record.key == "HTYPE") draft->kind = Kind_Of(record.value);
        if (record.key == "ICONS") draft->constants = record.value;
        if (record.key == "FPATH1") draft->bank.flight_path = Told_Number(record.value, 0);
        if (record.key == "IRAD" && !draft->kind.told && Whole_Number(record.value) > 0) draft->kind.radiation = 'X';
        if (record.key == "BNKPAR") {
            const Numbers numbers = Constants_In(record.value);
            draft->second_path = numbers[0];
            draft->bank.two_theta = numbers[1];
        }
    }

    std::vector<Draft> Done() {
        for (Draft& draft : drafts_) {
            if (!draft.kind.told && kind_.told) draft.kind = kind_;
            if (draft.bank.flight_path == 0) draft.bank.flight_path = first_path_;
            if (draft.bank.flight_path > 0) draft.bank.flight_path += draft.second_path;
            Take_Constants(draft);
        }
        return std::move(drafts_);
    }

private:
    Draft* Of(int number) {
        const auto [known, is_new] = places_.try_emplace(number, drafts_.size());
        if (is_new && drafts_.size() >= most_banks) return places_.erase(known), nullptr;
        if (is_new) Number_Bank(drafts_.emplace_back().bank, number);
        return &drafts_[known->second];
    }

    std::vector<Draft> drafts_;
    std::map<int, std::size_t> places_;
    Kind kind_;
    double first_path_ = 0;
};

std::vector<Draft> Read_Records(std::string_view text) {
    Record_Reader reader;
    Line_Cursor lines(text);
    std::string_view line;
    while (lines.Next(line))
        For_Each_Record(line, [&](std::string_view one) {
            if (const auto record = Record_Of(one)) reader.Take(*record);
        });
    return reader.Done();
}

// --- both ----------------------------------------------------------------------------------------------------------------------

enum class Layout { none, key_lines, records };

bool Is_Key_Line(std::string_view line) {
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos) return false;
    const std::string_view name = Trim(line.substr(0, colon));
    if (Equal_No_Case(name, "Type")) {
        const std::string type = Upper(Trim(line.substr(colon + 1)).substr(0, 3));
        return type.size() == 3 && type[0] == 'P' && (type[1] == 'X' || type[1] == 'N');
    }
    double number = 0;
    return (Equal_No_Case(name, "Lam") || Equal_No_Case(name, "Lam1") || Equal_No_Case(name, "difC")) &&
           Sound_Number(Trim(line.substr(colon + 1)), number) != nullptr;
}

Layout Layout_Of(std::string_view text) {
    Line_Cursor lines(Without_Mark(text));
    std::string_view line;
    for (std::size_t i = 0; i < looked_at && lines.Next(line); ++i) {
        line = line.substr(0, 2 * record_width);
        if (Record_Of(line)) return Layout::records;
        if (Is_Key_Line(Trim(line))) return Layout::key_lines;
    }
    return Layout::none;
}

// What a bank tells of its constants, or that it has none to use.
bool Settle(Draft& draft) {
    Instrument_Bank& bank = draft.bank;
    bank.flight = draft.kind.told ? draft.kind.flight : bank.difC > 0;
    if (draft.kind.radiation == 'X' && !bank.flight) bank.radiation = "xrays_cw";
    if (draft.kind.radiation == 'N' || bank.flight) bank.radiation = bank.flight ? "neutrons_tof" : "neutrons_cw";
    if (!(bank.lam2 > 0 && bank.lam2 < largest_wavelength)) bank.lam2 = bank.ratio = 0;
    if (draft.kind.energy) return false;
    return bank.flight ? bank.difC > 0 && bank.difC <= largest_difc : bank.lam1 > 0 && bank.lam1 < largest_wavelength;
}

}  // namespace

bool Is_Instrument_Parameters(std::string_view head) { return Layout_Of(head) != Layout::none; }

Status Read_Instrument_Parameters(std::string_view text, std::vector<Instrument_Bank>& banks) {
    banks.clear();
    text = Without_Mark(text);
    const Layout layout = Layout_Of(text);
    if (layout == Layout::none) return Status::Fail(no_such_file);
    int place = 0;
    for (Draft& draft : layout == Layout::records ? Read_Records(text) : Read_Keys(text)) {
        ++place;
        if (!draft.bank.numbered) draft.bank.number = place;
        if (Settle(draft)) banks.push_back(std::move(draft.bank));
    }
    if (banks.empty()) return Status::Fail("No bank of this instrument file tells a wavelength or a difC");
    return Status::Done();
}

}  // namespace vntl
