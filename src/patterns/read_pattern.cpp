#include "patterns/read_pattern.hpp"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>

#include "base/os.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/binary_file.hpp"
#include "patterns/gsas.hpp"
#include "patterns/head_constants.hpp"
#include "patterns/head_facts.hpp"
#include "patterns/recognise.hpp"

namespace vntl {

namespace {

constexpr std::size_t message_width = 150, mode_width = 12;
constexpr std::string_view flight_mode = "GSASTOF";

Status Failure(std::string_view before, std::string_view name, std::string_view after) {
    std::string text(before);
    text += Elide_Middle(name, message_width - before.size() - after.size());
    text += after;
    return Status::Fail(text);
}

// "GSASTOF3" is "GSASTOF" with the bank 3.
std::string Mode_Name(std::string_view mode, int& bank) {
    std::string name = Upper(Trim(mode)).substr(0, mode_width);
    if (!name.starts_with(flight_mode)) return name;
    Parse_Integer(std::string_view(name).substr(flight_mode.size()), bank);
    return std::string(flight_mode);
}

// An archive or a picture is nothing that a reader need look at, but for the one whose files it is.
Status Open_Source(const std::string& filename, const Format_Reader& reader, Text_File& source) {
    std::error_code error;
    if (!std::filesystem::exists(filename, error)) return Failure(" The file ", Trim(filename), " doesn't exist");
    if (source.Open(filename).failed) return Failure(" Error opening the file: ", filename, "");
    const std::string_view text = source.Text();
    const bool own = reader.bytes && reader.recognises(text);
    return !own && Is_Archive_Or_Picture(text) ? Status::Fail(Binary_Refusal(text)) : Status::Done();
}

// Why a reader could make nothing of a file: that it is binary, where it is.
Status Or_Binary(Status status, std::string_view text) {
    const std::string refusal = Binary_Refusal(text);
    return refusal.empty() ? status : Status::Fail(refusal);
}

// What the table says of a pattern that its reader has filled.
void Finish(const Format_Reader& reader, const std::string& filename, const std::string& mode, Diffraction_Pattern_Type& p) {
    p.filename = File_Part(filename);
    const std::string_view directory = Directory_Part(filename);
    p.filepath = filename.find('/') == std::string::npos ? ".\\" : std::string(directory) + '/';
    p.instr = reader.instr;
    if (!reader.modes.empty()) p.instr += mode;
    if (!reader.radiation.empty()) p.radiation = reader.radiation;
    if (p.scat_var.empty()) p.scat_var = reader.scat_var;
    if (p.legend_x.empty()) p.legend_x = reader.legend_x;
    if (!reader.legend_y.empty()) p.legend_y = reader.legend_y;
    if (reader.recognises != nullptr && p.legend_y.empty()) p.legend_y = p.per_second ? "Intensity (counts/s)" : "Intensity (arb. units)";
    if (reader.constant_step >= 0) p.constant_step = reader.constant_step > 0;
    if (reader.finish != nullptr && !p.x.empty()) reader.finish(p);
}

bool Holds_Numbers_Alone(std::string_view line) {
    const std::string_view cut = Trim(line);
    return !cut.empty() && cut.find_first_not_of("0123456789+-.eEdD,; \t") == std::string_view::npos;
}

// The lines above the first three in a row that hold nothing but numbers.
std::string Head_Of(std::string_view text) {
    constexpr int enough = 3;
    Line_Cursor lines(text);
    std::string_view line;
    int run = 0;
    const char* first = text.data() + text.size();  // of the run
    while (run < enough && lines.Next(line)) {
        if (!Holds_Numbers_Alone(line)) {
            run = 0;
            continue;
        }
        if (run++ == 0) first = line.data();
    }
    const std::size_t length = run == enough ? static_cast<std::size_t>(first - text.data()) : text.size();
    return To_Utf8(text.substr(0, std::min<std::size_t>(length, 1 << 20)));
}

bool Is_General(std::string_view extension) {
    const auto rows = Format_Extensions();
    return std::any_of(rows.begin(), rows.end(), [&](const Format_Extension& row) { return row.general && row.extension == extension; });
}

// What the head tells of wavelengths, dtt1 and dtt2, and what else it tells where the reader kept nothing. Banks have constants of flight
// of their own, told by comments above each, so the head of several banks gives none.
void Take_Head(const Format_Reader& reader, std::string_view text, std::span<Diffraction_Pattern_Type> patterns) {
    const bool no_facts = std::any_of(patterns.begin(), patterns.end(), [](const auto& pattern) { return pattern.facts == nullptr; });
    if (reader.bytes || (reader.finds_constants && !no_facts)) return;
    const std::string head = Head_Of(text);
    if (const auto facts = no_facts ? Facts_Of_Lines(head).Done() : nullptr)
        for (Diffraction_Pattern_Type& pattern : patterns)
            if (pattern.facts == nullptr) pattern.facts = facts;
    if (reader.finds_constants) return;
    Head_Constants constants;
    constants.Take_Lines(head);
    if (constants.Tells_Flight() && (patterns.size() > 1 || Gsas_Banks(text).size() > 1)) return;
    for (Diffraction_Pattern_Type& pattern : patterns) constants.Give(pattern);
}

Pattern_Source In_Hand(const Format_Reader& reader, std::string_view text, const std::string& filename, int bank) {
    return {reader.bytes ? text : Without_End_Mark(text), Extension_Of(filename), bank};
}

// The pattern with that number, the first one for 0, of a reader that gives all of them.
Status Read_Of_All(const Format_Reader& reader, const Pattern_Source& source, Diffraction_Pattern_Type& pattern, Read_Notes& notes) {
    std::vector<Diffraction_Pattern_Type> patterns;
    const Status status = reader.read_all(source, std::numeric_limits<int>::max(), patterns, notes);
    if (status.failed) return status;
    const auto wanted = static_cast<std::size_t>(std::max(source.bank, 1));
    if (wanted > patterns.size()) return Status::Fail("There is no pattern " + std::to_string(wanted) + " in the file");
    pattern = std::move(patterns[wanted - 1]);
    return status;
}

void To_Deviations(Diffraction_Pattern_Type& p) {
    if (!p.sigma_is_variance) return;
    for (float& s : p.sigma) s = std::sqrt(std::max(s, 0.0f));
    p.sigma_is_variance = false;
}

}  // namespace

int Format_Of_Extension(std::string_view extension) {
    const std::string with_point = extension.starts_with('.') ? std::string(extension) : '.' + std::string(extension);
    for (const Format_Extension& row : Format_Extensions())
        if (row.decides && Equal_No_Case(row.extension, with_point)) return row.code;
    return 0;
}

bool Is_Pattern_Extension(std::string_view extension) {
    const std::string small = Lower(extension);
    if (extension != small && extension != Upper(extension)) return false;
    const auto rows = Format_Extensions();
    return std::any_of(rows.begin(), rows.end(), [&](const Format_Extension& row) { return row.extension == small; });
}

int Format_Of_File(const std::string& file) {
    constexpr std::size_t enough = 8 << 10;
    const std::string extension = Lower(Extension_Of(file));
    const int code = Format_Of_Extension(extension);
    Text_File source;
    if (source.Open(file, enough).failed) return code;
    if (const int certain = Certain_Format(source.Text()); certain != 0) return certain;
    if (code == format_code::xysigma) {  // whatever is no format of its own in such a file is columns
        const int told = Format_By_Words(source.Text());
        return told != 0 ? told : code;
    }
    return code != 0 && Is_General(extension) ? Recognise_Format(file).code : code;
}

Recognition Recognise_Format(const std::string& file) {
    constexpr std::size_t whole = 64 << 20;
    Recognition result;
    const std::string extension = Lower(Extension_Of(file));
    result.by_extension = Format_Of_Extension(extension);
    Text_File source;
    if (source.Open(file, recognised_head).ok()) {
        result.certain = Certain_Format(source.Text()) != 0;
        result.by_content = Recognised_By_Content(source.Text());
        result.binary = Binary_Refusal(source.Text());
    }
    for (const Format_Extension& row : Format_Extensions())
        if (row.extension == extension) result.code = row.code;
    if (result.by_content != 0) result.code = result.by_content;
    if (result.by_extension != 0 && !result.certain && !(result.by_content != 0 && Is_General(extension)))
        result.code = result.by_extension;
    const bool several = result.code == format_code::gsas || result.code == format_code::gsas_flight;
    if (several && source.Open(file, whole).ok()) result.banks = std::max(1, static_cast<int>(Gsas_Banks(source.Text()).size()));
    return result;
}

Status Read_Pattern(const std::string& filename, Diffraction_Pattern_Type& pattern, std::string_view mode, const Read_Options& options) {
    int bank = options.bank;
    const std::string name = Mode_Name(mode, bank);
    const Format_Reader& reader = Reader_Of_Mode(name);
    Text_File source;
    if (const Status status = Open_Source(filename, reader, source); status.failed) return status;
    Diffraction_Pattern_Type fresh;
    Read_Notes unheard;
    const Pattern_Source in_hand = In_Hand(reader, source.Text(), filename, bank);
    Status status = reader.read != nullptr ? reader.read(in_hand, fresh)
                                           : Read_Of_All(reader, in_hand, fresh, options.notes != nullptr ? *options.notes : unheard);
    if (status.failed || !(fresh.xmax > fresh.xmin)) status = Or_Binary(status, source.Text());
    if (status.failed) return status;
    Finish(reader, filename, name, fresh);
    Take_Head(reader, source.Text(), {&fresh, 1});
    if (options.deviations) To_Deviations(fresh);
    if (options.head != nullptr) *options.head = Head_Of(source.Text());
    pattern = std::move(fresh);
    return Status::Done();
}

Status Read_Pattern_Mult(const std::string& filename, std::vector<Diffraction_Pattern_Type>& patterns, int capacity, std::string_view mode,
                         Read_Notes& notes) {
    int bank = 0;
    const std::string name = Mode_Name(mode, bank);
    const Format_Reader& reader = Reader_Of_Mode(name);
    if (reader.read_all == nullptr && name != "XYSIGMA") return Status::Fail("Invalid Mode");
    Text_File source;
    if (const Status status = Open_Source(filename, reader, source); status.failed) return status;
    const Pattern_Source in_hand = In_Hand(reader, source.Text(), filename, bank);
    std::vector<Diffraction_Pattern_Type> fresh;
    Status status;
    if (reader.read_all != nullptr)
        status = reader.read_all(in_hand, capacity, fresh, notes);
    else
        status = reader.read(in_hand, fresh.emplace_back());
    const bool nothing = std::none_of(fresh.begin(), fresh.end(), [](const auto& pattern) { return pattern.xmax > pattern.xmin; });
    if (status.failed || nothing) status = Or_Binary(status, source.Text());
    if (status.failed) return status;
    if (fresh.size() > static_cast<std::size_t>(capacity)) fresh.resize(static_cast<std::size_t>(capacity));
    for (Diffraction_Pattern_Type& pattern : fresh) Finish(reader, filename, name, pattern);
    Take_Head(reader, source.Text(), fresh);
    patterns = std::move(fresh);
    return Status::Done();
}

}  // namespace vntl
