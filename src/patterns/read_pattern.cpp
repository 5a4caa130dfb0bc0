#include "patterns/read_pattern.hpp"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string>

#include "base/os.hpp"
#include "base/scan.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/free_format.hpp"
#include "patterns/xysigma.hpp"

namespace vntl {

namespace {

constexpr std::size_t message_width = 150;
constexpr float largest_angle = 180.0f;
constexpr int code_free = 1, code_xysigma = 9;

// The reader of a format, and what is set once it has read. A format without a reader cannot be read yet.
struct Format_Row {
    Pattern_Format format;
    Status (*read)(std::string_view text, std::string_view extension, Diffraction_Pattern_Type&);
    std::string_view instr;  // what `instr` begins with, followed by the mode
    void (*finish)(Diffraction_Pattern_Type&);
};

Status Read_Free(std::string_view text, std::string_view extension, Diffraction_Pattern_Type& pattern) {
    return Read_Free_Format(text, extension == ".MDI", pattern);
}
Status Read_Xys(std::string_view text, std::string_view extension, Diffraction_Pattern_Type& pattern) {
    return Read_Xysigma(text, extension == ".gr", pattern);
}

void Finish_Free(Diffraction_Pattern_Type& p) {
    p.radiation = "unknown";
    const bool flight = p.x.back() > largest_angle;
    if (p.legend_y.empty()) p.legend_y = "Intensity (arb. units)";
    if (p.legend_x.empty()) {
        p.legend_x = flight ? "TOF(micro-seconds)" : "2theta(degrees)";
        p.scat_var = flight ? "TOF" : "2theta";
    }
    if (p.scat_var.empty()) p.scat_var = "2theta";
}

void Finish_Xys(Diffraction_Pattern_Type& p) {
    p.radiation = "unknown";
    if (p.scat_var.empty()) p.scat_var = p.x.back() > largest_angle ? "TOF" : "2theta";
}

constexpr std::array<Format_Row, 15> rows = {{
    {{1, "FreeFormat", "Free Format (Inst. 0)", 1002, true}, Read_Free, "  0  - Free format", Finish_Free},
    {{2, "R3B", "R3B, R22 (Inst. 3)", 1003, false}, nullptr, {}, nullptr},
    {{3, "NLS", "NLS (Inst. 4)", 1004, false}, nullptr, {}, nullptr},
    {{4, "G41", "G41, NewR3B, R22 (Inst. 5)", 1005, false}, nullptr, {}, nullptr},
    {{5, "R3A", "R5B, 3T2, G42 (Inst. 6)", 1006, false}, nullptr, {}, nullptr},
    {{6, "R3AOLD", "Old: R3A (Inst. 1)", 1007, false}, nullptr, {}, nullptr},
    {{7, "DMC", "DMC, HRPT PSI (Inst.8)", 1008, false}, nullptr, {}, nullptr},
    {{8, "SOCABIM", "SOCABIM (Inst. 9)", 1009, false}, nullptr, {}, nullptr},
    {{9, "XYSIGMA", "XYSIGMA (Inst. 10)", 1010, true}, Read_Xys, " 10  - ", Finish_Xys},
    {{10, "GSAS", "GSAS (CW)", 1011, false}, nullptr, {}, nullptr},
    {{11, "GSASTOF", "GSAS (TOF)  (Inst. 12)", 1599, false}, nullptr, {}, nullptr},
    {{12, "PANALYTICAL", "PANALYTICAL (Inst. 13)", 1601, false}, nullptr, {}, nullptr},
    {{13, "TIMEVARIABLE", "Variable Time (Inst. 11)", 1600, false}, nullptr, {}, nullptr},
    {{14, "ISIS", "ISIS (Inst. 14)", 1602, false}, nullptr, {}, nullptr},
    {{15, "CIF", "CIF - File", 1603, false}, nullptr, {}, nullptr},
}};

constexpr auto formats = [] {
    std::array<Pattern_Format, rows.size()> table{};
    for (std::size_t i = 0; i < rows.size(); ++i) table[i] = rows[i].format;
    return table;
}();

// Extensions that decide a format; for the others of the second table the user is asked.
struct Extension_Row {
    std::string_view extension;
    int code;
};
constexpr std::array<Extension_Row, 11> deciding = {{{".csv", 12},
                                                     {".udf", 12},
                                                     {".jcp", 12},
                                                     {".xrdml", 12},
                                                     {".xy", code_xysigma},
                                                     {".xys", code_xysigma},
                                                     {".xye", code_xysigma},
                                                     {".uxd", 8},
                                                     {".sim", code_free},
                                                     {".mdi", code_free},
                                                     {".cif", 15}}};
constexpr std::array<std::string_view, 9> asking = {".dat", ".gr", ".sub", ".bac", ".gsa", ".gss", ".gsas", ".fxye", ".gda"};

Status Failure(std::string_view before, std::string_view name, std::string_view after) {
    std::string text(before);
    text += Elide_Middle(name, message_width - before.size() - after.size());
    text += after;
    return Status::Fail(std::move(text));
}

const Format_Row& Row_Of_Mode(std::string_view mode) {
    for (const Format_Row& row : rows)
        if (Equal_No_Case(row.format.mode, Trim(mode))) return row;
    return rows.front();
}

// True when the first lines of numbers are records of two to four of them, with x rising: columns, and no list of counts.
bool Looks_Like_Columns(std::string_view text) {
    constexpr int enough = 4;
    Line_Cursor lines(text);
    std::string_view line;
    std::vector<float> reals;
    std::vector<int> ints;
    int records = 0;
    float last = 0;
    while (records < enough && lines.Next(line)) {
        const std::string_view cut = Trim(line);
        if (cut.empty() || cut.front() == '!' || cut.front() == '#') continue;
        const int numbers = Get_Numbers(std::string(cut.substr(0, 400)), reals, ints);
        const bool record = numbers >= 2 && numbers <= 4;
        if (!record && records > 0) return false;
        if (!record) continue;
        if (records > 0 && !(reals[0] > last)) return false;
        last = reals[0];
        ++records;
    }
    return records == enough;
}

}  // namespace

std::span<const Pattern_Format> Pattern_Formats() { return formats; }

int Format_Of_Extension(std::string_view extension) {
    const std::string with_point = extension.starts_with('.') ? std::string(extension) : '.' + std::string(extension);
    for (const Extension_Row& row : deciding)
        if (Equal_No_Case(row.extension, with_point)) return row.code;
    return 0;
}

bool Is_Pattern_Extension(std::string_view extension) {
    const std::string small = Lower(extension);
    if (extension != small && extension != Upper(extension)) return false;
    return std::find(asking.begin(), asking.end(), small) != asking.end() ||
           std::any_of(deciding.begin(), deciding.end(), [&](const auto& row) { return row.extension == small; });
}

int Recognised_Format(const std::string& file) {
    const std::string extension = Lower(Extension_Of(file));
    if (const int code = Format_Of_Extension(extension); code != 0) return code;
    if (extension == ".gr") return code_xysigma;
    Text_File source;
    constexpr std::size_t head = 16384;
    if (source.Open(file, head).failed) return code_free;
    return source.Text().starts_with("XYDATA") || Looks_Like_Columns(source.Text()) ? code_xysigma : code_free;
}

Status Read_Pattern(const std::string& filename, Diffraction_Pattern_Type& pattern, std::string_view mode) {
    std::error_code error;
    if (!std::filesystem::exists(filename, error)) return Failure(" The file ", Trim(filename), " doesn't exist");
    const Format_Row& row = Row_Of_Mode(mode);
    if (row.read == nullptr) return Failure(" The format ", row.format.mode, " cannot be read yet");
    Text_File source;
    if (source.Open(filename).failed) return Failure(" Error opening the file: ", filename, "");

    Diffraction_Pattern_Type fresh;
    const Status status = row.read(source.Text(), Extension_Of(filename), fresh);
    if (status.failed) return status;
    fresh.filename = File_Part(filename);
    const std::string_view directory = Directory_Part(filename);
    fresh.filepath = filename.find('/') == std::string::npos ? ".\\" : std::string(directory) + '/';
    fresh.instr = row.instr;
    if (&row != &rows.front()) fresh.instr += row.format.mode;
    row.finish(fresh);
    pattern = std::move(fresh);
    return Status::Done();
}

}  // namespace vntl
