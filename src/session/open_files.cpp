// Commands that open pattern files: the selector, a name, a recent file, the names of a command line.
//
// All of them decide on a format for each file, and then read file after file by the Load sequence.
#include <algorithm>
#include <chrono>
#include <span>
#include <type_traits>

#include "base/os.hpp"
#include "base/text.hpp"
#include "patterns/read_pattern.hpp"
#include "session/file_kinds.hpp"
#include "session/load.hpp"
#include "session/open_prf.hpp"
#include "session/read_files.hpp"
#include "session/session.hpp"

namespace vntl {
namespace {

constexpr std::string_view progress_title = "Opening files";

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

std::string_view Mode_Of_Code(int code) { return Trim(Pattern_Formats()[static_cast<std::size_t>(code - 1)].mode); }

// The name of a file says what is in it: nobody is asked about it.
bool Name_Tells(const std::string& file) {
    const File_Kind_Row* kind = File_Kind_Of(file);
    return (kind != nullptr && (kind->read != nullptr || !kind->refusal.empty())) || Format_Of_File(file) != 0;
}

// The one question about all files whose names do not tell their format.
Format_Question Question_About(const std::vector<std::string>& files, char separator) {
    std::vector<Recognition> looks;
    for (const std::string& file : files) looks.push_back(Recognise_Format(file));
    const Recognition& first = looks.front();
    Format_Question question{.proposed = first.code, .banks = 0};
    bool one_look = first.by_content != 0;
    for (const Recognition& look : looks) {
        question.differ = question.differ || look.code != first.code;
        one_look = one_look && look.by_content == first.by_content;
        question.banks += look.banks;
    }
    if (question.banks == static_cast<int>(files.size())) question.banks = 1;  // none of them has more than one
    if (question.differ) question.proposed = 0;
    if (one_look) question.looks_like = Mode_Of_Code(first.by_content);
    for (std::size_t i = 0; i < files.size(); ++i) {
        const std::string format = question.differ ? " (" + std::string(Mode_Of_Code(looks[i].code)) + ')' : "";
        question.files.push_back(std::string(File_Part(files[i], separator)) + format);
    }
    return question;
}

// Every pattern of a file of several, each a row with its own checks.
Load_Result Load_Several(Session& session, Ask& ask, Read_File file) {
    const std::string mode(Mode_Of_Code(file.code));
    // A file of banks that fails ends no selection; one of ranges is a pattern file like any other.
    const Load_Result failure = file.code == format_code::uxd ? Load_Result::failed : Load_Result::failed_alone;
    const auto tell = [&](std::string_view message) {
        const std::string name(Trim(File_Part(file.path, session.config.sep)));
        ask.Error("ERROR in file: " + name + '\n' + std::string(Trim(message)));
    };
    if (file.status.failed) {
        tell(file.status.message);
        return failure;
    }
    Load_Result result = file.messages.empty() ? Load_Result::added : failure;
    for (const std::string& message : file.messages) tell(message);
    for (Diffraction_Pattern_Type& pattern : file.patterns) {
        const Load_Result one = Load_Row(session, ask, file.path, mode, {Status::Done(), std::move(pattern)});
        if (one == Load_Result::table_full) return one;
        if (one == Load_Result::failed) result = failure;
    }
    return result;
}

// What was read of a file becomes rows.
Load_Result Load_File(Session& session, Ask& ask, Read_File file) {
    if (file.refined) return Load_Prf_Row(session, ask, file.path, {file.status, std::move(file.patterns.front())}, std::move(file.info));
    if (file.code != 0) session.format_code = file.code;
    if (file.several) return Load_Several(session, ask, std::move(file));
    Fresh_Pattern fresh{file.status, file.patterns.empty() ? Diffraction_Pattern_Type() : std::move(file.patterns.front())};
    return Load_Row(session, ask, file.path, file.code == 0 ? "" : std::string(Mode_Of_Code(file.code)), std::move(fresh));
}

// Loads the files one after another; `stop_on_failure` ends at the first file that failed. A refusal by x space never ends a selection.
Open_Result Load_All(Session& session, Ask& user, std::span<const std::string> files, bool stop_on_failure,
                     std::function<Read_File(const std::string&)> read) {
    Timed_Ask ask(user);
    const auto start = Timed_Ask::Clock::now();
    const int rows_before = session.store.nperfiles();
    Open_Result result;
    const auto progress = ask.Start_Progress(progress_title, static_cast<int>(files.size()));
    Files_Ahead ahead(files, std::move(read), session.config.threads);
    int done = 0;
    for (const std::string& file : files) {
        if (!progress->Go_On(done++, File_Part(file, session.config.sep))) break;
        const Load_Result one = Load_File(session, ask, ahead.Take(*progress));
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
    const File_Kind_Row& kind = Row_Of(File_Kind::pattern);
    Open_Result nothing;
    nothing.cancelled = true;
    std::vector<std::string> files;
    if (Trim(name).empty())
        files = ask.Select_Files(kind.selector_title, Selector_Filter(kind));
    else
        files = {name};
    if (files.empty()) return nothing;

    std::reverse(files.begin(), files.end());
    std::vector<std::string> open_ones;
    std::copy_if(files.begin(), files.end(), std::back_inserter(open_ones), [](const std::string& file) { return !Name_Tells(file); });
    Format_Choice choice;
    if (!open_ones.empty()) {
        const std::optional<Format_Choice> chosen = ask.Data_Format(Question_About(open_ones, session.config.sep));
        if (!chosen) return nothing;
        choice = *chosen;
        if (choice.code != 0) choice.code = Known_Code(choice.code);
    }
    return Load_All(session, ask, files, true, [choice](const std::string& file) {
        return Name_Tells(file) ? Read_Any_File(file, 0) : Read_Pattern_File(file, choice);
    });
}

Open_Result Open_Prf_File(Session& session, Ask& ask, const std::string& name) {
    const File_Kind_Row& kind = Row_Of(File_Kind::refined_profile);
    Open_Result nothing;
    nothing.cancelled = true;
    std::vector<std::string> files = {name};
    if (Trim(name).empty()) files = ask.Select_Files(kind.selector_title, Selector_Filter(kind));
    if (files.size() > 1) ask.Error("Trying to select more than one file!");
    if (files.size() != 1) return nothing;
    return Load_All(session, ask, files, true, Read_Refined_File);
}

Status Open_File_By_Extension(Session& session, Ask& ask, const std::string& name, Open_Result& result) {
    const std::string_view text = Trim_Right(name);
    if (text.empty()) return Status::Fail("Bad name: len_trim=0");
    const File_Kind_Row* kind = Recent_As(text);
    if (kind == nullptr) return Status::Fail(Contains(text, ".") ? "Unknown file extension " : "Bad name: without extension");
    if (!kind->refusal.empty()) return Status::Fail(kind->refusal);
    result = kind->open(session, ask, name);
    return Status::Done();
}

Open_Result Open_Files(Session& session, Ask& ask, const std::vector<std::string>& names, std::optional<int> format_code) {
    const int code = format_code ? Known_Code(*format_code) : 0;
    return Load_All(session, ask, names, false, [code](const std::string& file) { return Read_Any_File(file, code); });
}

}  // namespace vntl
