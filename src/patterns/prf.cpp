// Profile files of a refinement, in all the layouts that they have had. The first line is the title of every one, and the second tells:
//
//   3111             classic: lists of numbers in fixed columns, one array behind the other
//   xrft             a fit of single peaks; so is any file that ends in .xrf
//    SinTheta/Lam.   integrated intensities of a single crystal's kind, a reflection a line
//   # R ...          a pair distribution, with the pairs of atoms in files beside it
//   anything else    a line of numbers, above columns of x, observed, calculated, difference and background
#include "patterns/prf.hpp"

#include <cmath>
#include <filesystem>
#include <utility>

#include "base/os.hpp"
#include "base/text.hpp"
#include "patterns/binary_file.hpp"
#include "patterns/header_words.hpp"
#include "patterns/prf_tools.hpp"

namespace vntl {

namespace {

constexpr std::size_t line_width = 256, note_width = 250, message_width = 200;
constexpr std::size_t beside_limit = 4 << 20;  // bytes of a file of pairs
constexpr std::string_view classic_mark = "3111", peaks_mark = "xrft", integrated_mark = " Sin", pairs_mark = "# R ", title_mark = "Title:";

float Finite_Behind(std::string_view line, std::string_view word) {
    const float value = Number_Behind(line, word);
    return std::isfinite(value) ? value : 0;
}

// "Title: corundum  Chi2: 1.83  TEMP: 295.0": what the first line tells.
void Take_Title(const std::string& line, Prf_File& file) {
    file.info.origin_note = Cut(line, note_width);
    file.info.chi2 = Finite_Behind(line, "Chi2:");
    file.pattern.TSample = Finite_Behind(line, "TEMP:");
    const std::string_view title = line.starts_with(title_mark) ? std::string_view(line).substr(title_mark.size()) : line;
    file.pattern.title = Trim_Right(Cut(title, title_width));
}

Status Read_Layout(Prf_File& file, std::string_view second, bool xrf) {
    if (xrf || second.starts_with(peaks_mark)) return Read_Prf_Peaks(file);
    if (Trim_Left(second).starts_with(classic_mark) && (second.starts_with(classic_mark) || Trim(second) == classic_mark))
        return Read_Prf_Classic(file);
    if (second.starts_with(integrated_mark)) return Read_Prf_Integrated(file);
    if (second.starts_with(pairs_mark)) return Read_Prf_Pairs(file);
    return Read_Prf_Columns(file, second);
}

// A file of the same directory: a plain name, and nothing that leads elsewhere.
Status Open_Beside(const std::string& path, const std::string& name, Text_File& source) {
    if (name.empty() || name == "." || name == ".." || name.find_first_of("/\\:") != std::string::npos)
        return Status::Fail("ERROR: " + name + " is no name of a file beside this one");
    const std::string_view directory = Directory_Part(path);
    const std::string beside = path.find('/') == std::string::npos ? name : std::string(directory) + '/' + name;
    return source.Open(beside, beside_limit).failed ? Status::Fail("ERROR: the file " + name + " cannot be read") : Status::Done();
}

void Take_Path(const std::string& path, Diffraction_Pattern_Type& pattern, PRF_Info_Add_Type& info) {
    pattern.filename = info.file_name = File_Part(path);
    info.directory = Directory_Part(path);
    pattern.filepath = path.find('/') == std::string::npos ? ".\\" : info.directory + '/';
    pattern.instr = info.format;
}

}  // namespace

Status Read_Prf_Text(Prf_File& file, bool xrf) {
    std::string_view first, second;
    if (!file.lines.Next(first)) return Status::Fail("ERROR: Reading line 1");
    if (first.starts_with("IGOR")) return Status::Fail("ERROR: file type IGOR");
    if (!file.lines.Next(second)) return Status::Fail("ERROR: Reading line 2");

    file.info.kind = Row_Kind::prf;
    file.info.format = Told(Row_Kind::prf);
    file.pattern.radiation = "unknown";
    Take_Title(std::string(Trim(Kept_Text(first, line_width))), file);
    return Read_Layout(file, second, xrf);
}

Status Read_Prf(const std::string& path, Diffraction_Pattern_Type& pattern, PRF_Info_Add_Type& info) {
    std::error_code error;
    if (!std::filesystem::exists(path, error)) return Status::Fail("ERROR 00: File not found");
    Text_File source;
    if (source.Open(path).failed) return Status::Fail("Error open file");

    Diffraction_Pattern_Type fresh;
    PRF_Info_Add_Type fresh_info;
    const auto open_beside = [&path](const std::string& name, Text_File& beside) { return Open_Beside(path, name, beside); };
    const std::string_view text = Without_End_Mark(source.Text());
    Prf_File file{text, Line_Cursor(text), open_beside, fresh, fresh_info};
    if (const Status status = Read_Prf_Text(file, Lower(Extension_Of(path)) == ".xrf"); status.failed) {
        const std::string refusal = Binary_Refusal(text);
        return Status::Fail(Cut(refusal.empty() ? status.message : refusal, message_width));
    }
    Take_Path(path, fresh, fresh_info);
    pattern = std::move(fresh);
    info = std::move(fresh_info);
    return Status::Done();
}

}  // namespace vntl
