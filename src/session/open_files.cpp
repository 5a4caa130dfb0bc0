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
#include "session/session.hpp"

namespace vntl {
namespace {

constexpr std::string_view progress_title = "Opening files";
constexpr std::string_view selector_title = "Select data files to open";
constexpr std::string_view selector_filter =
    "Input Data File "
    "|*.dat;*.xy;*.xys;*.xye;*.gr;*.uxd;*.sub;*.udf;*.csv;*.xrdml;*.bac;*.gsa;*.gss;*.sim;*.mdi;*.cif|";

// Extensions that a recent file opens as a pattern, as they are written.
constexpr std::string_view pattern_extensions[] = {".dat", ".DAT", ".xy", ".xys", ".XY", ".XYS", ".bac", ".BAC", ".gss", ".GSS"};

// Kinds of files that are no patterns and have no reader here.
struct Other_Kind {
    std::string_view extension;  // small letters
    std::string_view refusal;
};
constexpr std::string_view no_buffer_files = "Buffer files cannot be opened yet";
constexpr std::string_view no_profile_files = "Profile files of a refinement cannot be opened yet";
constexpr Other_Kind other_kinds[] = {{".buf", no_buffer_files}, {".prf", no_profile_files}, {".xrf", no_profile_files}};

Status Refuse_Other_Kind(std::string_view extension) {
    for (const Other_Kind& kind : other_kinds)
        if (kind.extension == Lower(extension)) return Status::Fail(kind.refusal);
    return Status::Done();
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
    std::optional<int> Data_Format(int proposed) override {
        return Timed([&] { return ask_.Data_Format(proposed); });
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

Load_Result Load_With_Format(Session& session, Ask& ask, const std::string& path, int code) {
    session.format_code = Known_Code(code);
    const std::string mode(Trim(Pattern_Formats()[static_cast<std::size_t>(session.format_code - 1)].mode));
    return Load_Row(session, ask, path, mode,
                    [&mode](const std::string& file, Diffraction_Pattern_Type& pattern) { return Read_Pattern(file, pattern, mode); });
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
        const bool failed = one == Load_Result::failed || one == Load_Result::table_full;
        result.failed = result.failed || failed;
        if (one == Load_Result::table_full || (failed && stop_on_failure)) break;
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
        files = ask.Select_Files(selector_title, selector_filter);
    else
        files = {name};
    if (files.empty()) return nothing;

    const std::string& last = files.back();
    int code = Format_Of_Extension(Extension_Of(last));
    if (code == 0) {
        const std::optional<int> chosen = ask.Data_Format(Recognised_Format(last));
        if (!chosen) return nothing;
        code = *chosen;
    }
    std::reverse(files.begin(), files.end());
    return Load_All(session, ask, files, true,
                    [&](Ask& timed, const std::string& file) { return Load_With_Format(session, timed, file, code); });
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

    if (extension == ".buf" || extension == ".BUF" || extension == ".prf" || extension == ".PRF") return Refuse_Other_Kind(extension);
    if (!Opens_As_Pattern(text)) return Status::Fail("Unknown file extension ");
    result = Open_Pattern_File(session, ask, name);
    return Status::Done();
}

Open_Result Open_Files(Session& session, Ask& ask, const std::vector<std::string>& names, std::optional<int> format_code) {
    return Load_All(session, ask, names, false, [&](Ask& timed, const std::string& file) {
        const Status other = Refuse_Other_Kind(Extension_Of(file));
        if (other.failed) return Load_Row(session, timed, file, "", [&](const std::string&, Diffraction_Pattern_Type&) { return other; });
        return Load_With_Format(session, timed, file, format_code ? *format_code : Recognised_Format(file));
    });
}

}  // namespace vntl
