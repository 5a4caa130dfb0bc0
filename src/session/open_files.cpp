// Commands that open pattern files: the selector, a name, a recent file, the names of a command line.
//
// All of them decide on a format and then read file after file by the Load sequence.
#include <algorithm>
#include <chrono>
#include <span>
#include <type_traits>

#include "base/os.hpp"
#include "base/text.hpp"
#include "patterns/read_pattern.hpp"
#include "session/load.hpp"
#include "session/open_prf.hpp"
#include "session/session.hpp"

namespace vntl {
namespace {

constexpr std::string_view progress_title = "Opening files";
constexpr std::string_view selector_title = "Select data files to open";
constexpr std::string_view filter_label = "Input Data File |";
constexpr std::string_view prf_selector_title = "Select PRF files to open";
constexpr std::string_view prf_filter = "Input PRF File (*.prf)|*.prf;*.xrf|";

// Extensions that a recent file opens as a pattern, as they are written.
constexpr std::string_view pattern_extensions[] = {".dat", ".DAT", ".xy", ".xys", ".XY", ".XYS", ".bac", ".BAC", ".gss", ".GSS"};

// Files that are no patterns and have no reader here.
Status Refuse_Buffer(std::string_view extension) {
    return Equal_No_Case(extension, ".buf") ? Status::Fail("Buffer files cannot be opened yet") : Status::Done();
}

// Passes everything on and adds up the time that the user took to answer.
class Timed_Ask : public Ask {
public:
    using Clock = std::chrono::steady_clock;
    explicit Timed_Ask(Ask& ask) : ask_(ask) {}

    Box_Answer Box(const Message_Box& box) override {
        return Timed([&] { return ask_.Box(box); });
    }
    std::vector<std::string> Select_Files(std::string_view title, std::string_view filter) override {
        return Timed([&] { return ask_.Select_Files(title, filter); });
    }
    std::optional<Format_Choice> Data_Format(const Format_Question& question) override {
        return Timed([&] { return ask_.Data_Format(question); });
    }
    bool Constants_Of_File(Constants_Kind kind, Conversion_Constants& file) override {
        return Timed([&] { return ask_.Constants_Of_File(kind, file); });
    }
    bool Constants_Of_Rows(Constants_Kind kind, std::vector<Conversion_Constants>& rows) override {
        return Timed([&] { return ask_.Constants_Of_Rows(kind, rows); });
    }

    std::unique_ptr<Progress> Start_Progress(std::string_view title, int total) override { return ask_.Start_Progress(title, total); }

    // Milliseconds since `start` without the answers.
    double Worked_Since(Clock::time_point start) const {
        return std::chrono::duration<double, std::milli>(Clock::now() - start - waited_).count();
    }

private:
    template <class Question>
    std::invoke_result_t<Question> Timed(Question question) {
        const auto start = Clock::now();
        auto answer = question();
        waited_ += Clock::now() - start;
        return answer;
    }

    Ask& ask_;
    Clock::duration waited_{0};
};

int Known_Code(int code) { return code >= 1 && code <= static_cast<int>(Pattern_Formats().size()) ? code : 1; }

std::string_view Mode_Of_Code(int code) { return Trim(Pattern_Formats()[static_cast<std::size_t>(Known_Code(code) - 1)].mode); }

std::string Selector_Filter() {
    std::string filter(filter_label);
    for (const Format_Extension& row : Format_Extensions()) filter += (filter.back() == '|' ? "*" : ";*") + std::string(row.extension);
    return filter + '|';
}

// A failure's message, with what the file looks like where that is another format.
Status With_Look(Status status, const std::string& path, int code) {
    const int look = Recognise_Format(path).by_content;
    if (look == 0 || look == code) return status;
    return Status::Fail(std::string(Trim(status.message)) + "\nThe contents look like the format " + std::string(Mode_Of_Code(look)));
}

// All patterns of one file, each a row with its own checks.
Load_Result Load_Several(Session& session, Ask& ask, const std::string& path, int code) {
    const std::string mode(Mode_Of_Code(code));
    // A file of banks that fails ends no selection; one of ranges is a pattern file like any other.
    const Load_Result failure = code == format_code::uxd ? Load_Result::failed : Load_Result::failed_alone;
    const auto tell = [&](std::string_view message) {
        const std::string name(Trim(File_Part(path, session.config.sep)));
        ask.Error("ERROR in file: " + name + '\n' + std::string(Trim(message)));
    };
    std::vector<Diffraction_Pattern_Type> patterns;
    std::vector<std::string> messages;
    const Status status = Read_Pattern_Mult(path, patterns, code == format_code::isis ? isis_capacity : max_profiles, mode, messages);
    if (status.failed) {
        tell(With_Look(status, path, code).message);
        return failure;
    }
    Load_Result result = messages.empty() ? Load_Result::added : failure;
    for (const std::string& message : messages) tell(message);
    for (Diffraction_Pattern_Type& pattern : patterns) {
        const Load_Result one = Load_Row(session, ask, path, mode, [&pattern](const std::string&, Diffraction_Pattern_Type& row) {
            row = std::move(pattern);
            return Status::Done();
        });
        if (one == Load_Result::table_full) return one;
        if (one == Load_Result::failed) result = failure;
    }
    return result;
}

Load_Result Load_With_Format(Session& session, Ask& ask, const std::string& path, const Format_Choice& choice) {
    const int code = session.format_code = Known_Code(choice.code);
    const bool gsas = code == format_code::gsas || code == format_code::gsas_flight;
    if (code == format_code::isis || code == format_code::uxd || (gsas && choice.all_banks)) return Load_Several(session, ask, path, code);
    const std::string mode(Mode_Of_Code(code));
    return Load_Row(session, ask, path, mode, [&](const std::string& file, Diffraction_Pattern_Type& pattern) {
        const Status status = Read_Pattern(file, pattern, mode);
        return status.failed ? With_Look(status, file, code) : status;
    });
}

// Runs `load` over the files; `stop_on_failure` ends at the first file that failed. A refusal by x space never ends a selection.
template <class Load>
Open_Result Load_All(Session& session, Ask& user, std::span<const std::string> files, bool stop_on_failure, Load load) {
    Timed_Ask ask(user);
    const auto start = Timed_Ask::Clock::now();
    const int rows_before = session.store.nperfiles();
    Open_Result result;
    const auto progress = ask.Start_Progress(progress_title, static_cast<int>(files.size()));
    int done = 0;
    for (const std::string& file : files) {
        if (!progress->Go_On(done++, File_Part(file, session.config.sep))) break;
        const Load_Result one = load(ask, file);
        result.failed = result.failed || one == Load_Result::failed || one == Load_Result::failed_alone || one == Load_Result::table_full;
        if (one == Load_Result::table_full || (one == Load_Result::failed && stop_on_failure)) break;
    }
    Finish_Load(session, rows_before);
    result.rows_added = session.store.nperfiles() - rows_before;
    result.read_ms = ask.Worked_Since(start);
    session.plot.read_ms = result.read_ms;
    return result;
}

}  // namespace

Open_Result Open_Pattern_File(Session& session, Ask& ask, const std::string& name) {
    Open_Result nothing;
    nothing.cancelled = true;
    std::vector<std::string> files;
    if (Trim(name).empty())
        files = ask.Select_Files(selector_title, Selector_Filter());
    else
        files = {name};
    if (files.empty()) return nothing;

    const std::string& last = files.back();
    Format_Choice choice{Format_Of_Extension(Extension_Of(last)), false};
    if (choice.code == 0) {
        const Recognition look = Recognise_Format(last);
        const std::string look_name(look.by_content == 0 ? std::string_view{} : Mode_Of_Code(look.by_content));
        const std::optional<Format_Choice> chosen = ask.Data_Format({look.code, look_name, look.banks});
        if (!chosen) return nothing;
        choice = *chosen;
    }
    std::reverse(files.begin(), files.end());
    return Load_All(session, ask, files, true,
                    [&](Ask& timed, const std::string& file) { return Load_With_Format(session, timed, file, choice); });
}

Open_Result Open_Prf_File(Session& session, Ask& ask, const std::string& name) {
    Open_Result nothing;
    nothing.cancelled = true;
    std::vector<std::string> files = {name};
    if (Trim(name).empty()) files = ask.Select_Files(prf_selector_title, prf_filter);
    if (files.size() > 1) ask.Error("Trying to select more than one file!");
    if (files.size() != 1) return nothing;
    return Load_All(session, ask, files, true, [&](Ask& timed, const std::string& file) { return Load_Prf_Row(session, timed, file); });
}

bool Opens_As_Pattern(std::string_view name) {
    const std::size_t point = name.rfind('.');
    const std::string_view extension = point == std::string_view::npos ? std::string_view{} : name.substr(point);
    const bool told = std::find(std::begin(pattern_extensions), std::end(pattern_extensions), extension) != std::end(pattern_extensions);
    return told || Is_Pattern_Extension(extension);
}

Status Open_File_By_Extension(Session& session, Ask& ask, const std::string& name, Open_Result& result) {
    const std::string_view text = Trim_Right(name);
    if (text.empty()) return Status::Fail("Bad name: len_trim=0");
    const std::size_t point = text.rfind('.');
    if (point == std::string_view::npos) return Status::Fail("Bad name: without extension");
    const std::string_view extension = text.substr(point);

    if (extension == ".buf" || extension == ".BUF") return Refuse_Buffer(extension);
    if (Is_Prf_Extension(extension)) {
        result = Open_Prf_File(session, ask, name);
        return Status::Done();
    }
    if (!Opens_As_Pattern(text)) return Status::Fail("Unknown file extension ");
    result = Open_Pattern_File(session, ask, name);
    return Status::Done();
}

Open_Result Open_Files(Session& session, Ask& ask, const std::vector<std::string>& names, std::optional<int> format_code) {
    return Load_All(session, ask, names, false, [&](Ask& timed, const std::string& file) {
        const std::string_view extension = Extension_Of(file);
        if (Is_Prf_Extension(extension)) return Load_Prf_Row(session, timed, file);
        const Status other = Refuse_Buffer(extension);
        if (other.failed) return Load_Row(session, timed, file, "", [&](const std::string&, Diffraction_Pattern_Type&) { return other; });
        return Load_With_Format(session, timed, file, {format_code ? *format_code : Recognise_Format(file).code, false});
    });
}

}  // namespace vntl
