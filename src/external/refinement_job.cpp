// The head of a control file, of one pattern and of several:
//
//   COMM PbSO4 D1A(ILL)                      COMM Cu-XR
//   ! Current global Chi2 ...                ! Current global Chi2 ...
//   ! Files => DAT-file: pb, PCR-file: pb    NPATT 2 1 1
//   !Job Npr Nph Nba Nex ...                 W_PAT 0.5 0.5
//      1   7   1   0   2 ...
//
// The job is 0 for X-rays, 1 for neutrons, 2 and 3 for a pattern of either that is only calculated, and -1 and the like for times of
// flight.
#include "external/refinement_job.hpp"

#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/os.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "base/write_file.hpp"
#include "external/program_suite.hpp"

namespace vntl {

namespace {

constexpr std::size_t head_size = 65536;
constexpr int lines_for_patterns = 4, lines_for_job = 6;

// Also where blanks or small letters part it from what programs write.
bool Announces_Job(std::string_view line) {
    if (Contains(line, "!Job")) return true;
    line = Trim(line);
    if (!line.starts_with('!')) return false;
    line = Trim(line.substr(1));
    return Equal_No_Case(line.substr(0, line.find_first_of(" \t")), "job");
}

std::optional<double> First_Number(std::string_view line) {
    constexpr std::string_view between = " \t,";
    for (std::size_t at = line.find_first_not_of(between); at != std::string_view::npos; at = line.find_first_not_of(between, at)) {
        const std::size_t end = std::min(line.find_first_of(between, at), line.size());
        double number = 0;
        if (Parse_Real(line.substr(at, end - at), number)) return number;
        at = end;
    }
    return {};
}

bool Has_Several_Patterns(Line_Cursor lines) {
    std::string_view line;
    while (lines.Number() < lines_for_patterns && lines.Next(line))
        if (Contains(line, "NPATT")) return true;
    return false;
}

bool Equal_Bytes(const std::string& a, const std::string& b) {
    Text_File one, other;
    return one.Open(a).ok() && other.Open(b).ok() && one.Marked() == other.Marked() && one.Text() == other.Text();
}

}  // namespace

Status Needs_Data(std::string_view head, bool& needs) {
    Line_Cursor lines(head);
    if (lines.At_End()) return Status::Fail_File("It is empty");
    const bool several = Has_Several_Patterns(lines);
    bool calculated = false;
    for (std::string_view line; !several && lines.Number() < lines_for_job && lines.Next(line);) {
        if (!Announces_Job(line)) continue;
        const std::optional<double> job = lines.Next(line) ? First_Number(line) : std::nullopt;
        if (!job) return Status::Fail_File("No kind of job stands below its line !Job");
        calculated = std::fabs(*job) == 2 || std::fabs(*job) == 3;
        break;
    }
    needs = !several && !calculated;
    return Status::Done();
}

Status File_Needs_Data(const std::string& control_file, bool& needs) {
    Text_File file;
    if (Status status = file.Open(control_file, head_size); status.failed) return status;
    Status status = Needs_Data(file.Text(), needs);
    if (status.failed) status.message += ": " + control_file;
    return status;
}

std::string Run_Names::With(std::string_view ending) const {
    return directory + (directory.ends_with('/') ? "" : "/") + base + std::string(ending);
}

Run_Names Names_Of_Run(std::string_view chosen) {
    const std::string_view extension = Extension_Of(chosen), name = File_Part(chosen);
    Run_Names names;
    names.directory = Directory_Of(chosen);
    names.base = name.substr(0, name.size() - extension.size());
    names.is_new = Equal_No_Case(extension, ".new");
    return names;
}

std::string Data_Of_Run(const Run_Names& names, const std::function<bool(const std::string&)>& exists) {
    for (const char* ending : {".dat", ".int"})
        if (std::string file = names.With(ending); exists(file)) return file;
    return {};
}

Status Take_New(const Run_Names& names, const std::string& chosen) {
    const std::string control = names.Control_File();
    if (Equal_Bytes(chosen, control)) return Status::Done();  // taken before: the ".bak" is the only copy of what was there then
    if (IOsFileExists(control))
        if (Status status = IOsCopyFile(control, control + ".bak"); status.failed) return status;
    return IOsCopyFile(chosen, control);
}

Awaited_Results::Awaited_Results(std::vector<std::string> files) : files_(std::move(files)) {
    for (const std::string& file : files_) before_.push_back(Stamp_Of(file));
}

std::string Awaited_Results::Written() const {
    for (std::size_t i = 0; i < files_.size(); ++i)
        if (const std::optional<Stamp> now = Stamp_Of(files_[i]); now && now != before_[i]) return files_[i];
    return {};
}

std::string Awaited_Results::There() const {
    const auto there = std::find_if(files_.begin(), files_.end(), IOsFileExists);
    return there == files_.end() ? std::string() : *there;
}

std::optional<Awaited_Results::Stamp> Awaited_Results::Stamp_Of(const std::string& file) {
    struct stat about {};
    if (stat(file.c_str(), &about) != 0 || S_ISDIR(about.st_mode)) return {};
    return Stamp{about.st_mtim.tv_sec, about.st_mtim.tv_nsec, about.st_size, about.st_dev, about.st_ino};
}

}  // namespace vntl
