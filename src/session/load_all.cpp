// The loop over the files of one command: threads read ahead, each file becomes rows or nothing, and one box tells what was refused.
// A list is a promise of all its files: rows of a part of them would pass for the whole measurement.
#include "session/load_all.hpp"

#include <algorithm>
#include <chrono>
#include <new>
#include <optional>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

#include "base/os.hpp"
#include "base/text.hpp"
#include "patterns/read_pattern.hpp"
#include "session/open_prf.hpp"
#include "session/read_files.hpp"
#include "session/session.hpp"

namespace vntl {
namespace {

constexpr std::string_view progress_title = "Opening files";

// Passes questions on, and adds up the time that the user took to answer. What is told of one of several files is kept for the end.
class Loading_Ask : public Ask {
public:
    using Clock = std::chrono::steady_clock;
    Loading_Ask(Ask& ask, bool keep) : ask_(ask), keep_(keep) {}

    Box_Answer Box(const Message_Box& box) override {
        if (keep_ && box.title == error_title && box.text != table_full_text) {
            kept_.push_back(box.text);
            return Box_Answer::ok;
        }
        return Timed([&] { return ask_.Box(box); });
    }
    std::vector<std::string> Select_Files(std::string_view title, std::string_view filter) override {
        return Timed([&] { return ask_.Select_Files(title, filter); });
    }
    std::optional<Format_Choice> Data_Format(const Format_Question& question) override {
        return Timed([&] { return ask_.Data_Format(question); });
    }
    bool Constants_Of_File(Constants_Kind kind, Conversion_Constants& file, const Constants_Check& check) override {
        return Timed([&] { return ask_.Constants_Of_File(kind, file, check); });
    }
    bool Constants_Of_Rows(Constants_Kind kind, std::vector<Conversion_Constants>& rows, const Constants_Check& check) override {
        return Timed([&] { return ask_.Constants_Of_Rows(kind, rows, check); });
    }

    std::unique_ptr<Progress> Start_Progress(std::string_view title, int total) override { return ask_.Start_Progress(title, total); }

    // Milliseconds since `start` without the answers.
    double Worked_Since(Clock::time_point start) const {
        return std::chrono::duration<double, std::milli>(Clock::now() - start - waited_).count();
    }

    // What was kept since the last time.
    std::vector<std::string> Kept() { return std::exchange(kept_, {}); }

    // Keeps what is told of the patterns of a file that came alone; whether it did not anyway.
    bool Hold() { return !std::exchange(keep_, true); }
    // Tells it, once what several patterns were refused for.
    void Release(const std::string& name, std::size_t patterns) {
        keep_ = false;
        std::vector<std::string> texts = Kept();
        while (!texts.empty()) {
            const std::string text = texts.front();
            const std::size_t alike = std::erase(texts, text);
            const std::string of = name + ": " + std::to_string(alike) + " of " + std::to_string(patterns) + " patterns were not opened\n";
            Error(Contains(text, name) ? text : of + text);
        }
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
    bool keep_;
    std::vector<std::string> kept_;
    Clock::duration waited_{0};
};

std::string Name_Of(const Session& session, const std::string& path) { return std::string(Trim(File_Part(path, session.config.sep))); }

// Every pattern of a file of several, each a row with its own checks.
Load_Result Load_Several(Session& session, Ask& ask, Read_File file, Load_Notes& notes) {
    const std::string mode(file.code == 0 ? std::string_view() : Mode_Of_Code(file.code));
    const auto tell = [&](std::string_view message) {
        ask.Error("ERROR in file: " + Name_Of(session, file.path) + '\n' + std::string(Trim(message)));
    };
    if (file.status.failed) {
        tell(file.status.message);
        return Load_Result::failed;
    }
    Load_Result result = file.messages.empty() ? Load_Result::added : Load_Result::failed;
    for (const std::string& message : file.messages) tell(message);
    std::int32_t number = 0;
    for (Diffraction_Pattern_Type& pattern : file.patterns) {
        ++number;
        if (pattern.bank == 0 && file.patterns.size() > 1) pattern.bank = number;
    }
    // The first row decides which others may stand beside it: powder patterns come in front of scans over other axes.
    std::stable_partition(file.patterns.begin(), file.patterns.end(), [](const Diffraction_Pattern_Type& pattern) {
        return Contains(pattern.scat_var, "2theta") || Contains(pattern.scat_var, "TOF");
    });
    for (Diffraction_Pattern_Type& pattern : file.patterns) {
        const Load_Result one = Load_Row(session, ask, file.path, mode, {Status::Done(), std::move(pattern)}, notes);
        if (one == Load_Result::table_full || (file.alike && one != Load_Result::added)) return one;
        if (one == Load_Result::failed || result == Load_Result::added) result = one;
    }
    return result;
}

// A profile that takes the place of another one needs no room.
Load_Result Load_Refined(Session& session, Ask& ask, Read_File file, Load_Notes& notes) {
    const bool replaces = (file.handed_over || file.renews) && session.store.prf_loaded;
    if (!replaces && Table_Is_Full(session, ask)) return Load_Result::table_full;
    return Load_Prf_Row(session, ask, file.path, {file.status, std::move(file.patterns.front())}, std::move(file.info), notes, file.renews);
}

// What was read of a file becomes rows.
Load_Result Load_File(Session& session, Ask& ask, Read_File file, Load_Notes& notes) {
    if (file.refined) return Load_Refined(session, ask, std::move(file), notes);
    if (file.code != 0) session.format_code = file.code;
    if (file.several) return Load_Several(session, ask, std::move(file), notes);
    Fresh_Pattern fresh{file.status, file.patterns.empty() ? Diffraction_Pattern_Type() : std::move(file.patterns.front())};
    return Load_Row(session, ask, file.path, file.code == 0 ? "" : std::string(Mode_Of_Code(file.code)), std::move(fresh), notes);
}

// What a file may set before it is a row: the x space with its titles, and the recent files.
struct Before {
    explicit Before(const Session& session)
        : xspace(session.plot.xspace), x(session.plot.xlabel_text), y(session.plot.ylabel_text), recent(session.recent) {}
    void Give_Back(Session& session) {
        session.plot.xspace = xspace;
        session.plot.xlabel_text.swap(x);
        session.plot.ylabel_text.swap(y);
        std::swap(session.recent, recent);
        MRU_Show(session);
    }
    X_Space xspace;
    std::string x, y;
    Recent_Files recent;
};

// The same. Where memory runs out the rows of this file go again.
Load_Result Load_File_Whole(Session& session, Ask& ask, const std::string& path, Read_File file, Load_Notes& notes) {
    const int rows_before = session.store.nperfiles();
    std::optional<Before> before;
    try {
        before.emplace(session);
        return Load_File(session, ask, std::move(file), notes);
    } catch (const std::bad_alloc&) {
    } catch (const std::length_error&) {
    }
    while (session.store.nperfiles() > rows_before) session.store.Drop_Last();
    if (before) before->Give_Back(session);
    ask.Error("ERROR in file: " + Name_Of(session, path) + '\n' + std::string(out_of_memory));
    return Load_Result::failed;
}

// Files whose rows cannot be trusted in the same thing.
struct Doubt {
    std::string text, first_file;
    int files = 0;
};

// What became of several files.
struct Tally {
    int opened = 0, refused = 0;
    bool sound = true;  // no file and no check failed, and the table was not full
    std::vector<std::string> told;
    std::string failure;  // of a list, which the box begins with then
    std::vector<Doubt> doubts;

    void Doubt_Row(const std::string& name, const std::string& text) {
        const auto known = std::find_if(doubts.begin(), doubts.end(), [&](const Doubt& doubt) { return doubt.text == text; });
        if (known == doubts.end())
            doubts.push_back({text, name, 1});
        else
            ++known->files;
    }
    std::string Doubts() const {
        std::string text;
        for (const Doubt& doubt : doubts) {
            text += (text.empty() ? "" : "\n\n") + doubt.first_file;
            if (doubt.files > 1) text += " and " + std::to_string(doubt.files - 1) + " more";
            text += ": " + doubt.text;
        }
        return text;
    }

    void Add(const std::string& name, std::vector<std::string> texts) {
        for (std::string& text : texts) told.push_back(Contains(text, name) ? std::move(text) : name + ": " + text);
    }
    std::string Text() const {
        constexpr std::size_t most = max_profiles;  // a box with more is no help
        std::string text = failure.empty() ? std::to_string(opened) + " opened, " + std::to_string(refused) + " refused" : failure;
        for (std::size_t i = 0; i < std::min(most, told.size()); ++i) text += "\n\n" + told[i];
        if (told.size() > most) text += "\n\nand " + std::to_string(told.size() - most) + " more";
        return text;
    }
};

// The lists of a command as its files come one after the other.
class Lists_In_Turn {
public:
    explicit Lists_In_Turn(const std::vector<Opened_List>& lists) : next_(lists.begin()), end_(lists.end()) {}

    // The list of a file; null for one that was named alone.
    const Opened_List* Of(std::size_t file) {
        while (next_ != end_ && file >= next_->behind) ++next_;
        return next_ != end_ && next_->Holds(file) ? &*next_ : nullptr;
    }

private:
    std::vector<Opened_List>::const_iterator next_, end_;
};

// A file of a list failed, for the reason that the texts tell below their heads.
void Fail_List(Session& session, const std::string& path, const std::vector<std::string>& texts, Tally& tally) {
    Reset_Profiles(session);
    Set_Menu_Empty(session);
    tally.failure = "ERROR Opening file: " + path;
    for (const std::string& text : texts) tally.failure += text.substr(std::min(text.find('\n'), text.size()));
    tally.failure += "\nNo profile is left.";
}

// A file, of that list or of none, becomes rows or nothing. False where it is the last one.
bool Load_One(Session& session, Loading_Ask& ask, const std::string& path, Read_File file, const Opened_List* list, Load_Notes& notes,
              Tally& tally) {
    const int rows_before = session.store.nperfiles();
    notes.refusal.clear();
    notes.listed = list != nullptr;
    const std::vector<std::string> warnings = std::move(file.warnings);
    const std::size_t patterns = file.patterns.size();
    const bool held = patterns > 1 && ask.Hold();
    const Load_Result result = Load_File_Whole(session, ask, path, std::move(file), notes);
    if (held) ask.Release(Name_Of(session, path), patterns);
    tally.sound = tally.sound && result != Load_Result::failed && result != Load_Result::table_full;
    const bool opened = result == Load_Result::added || session.store.nperfiles() > rows_before;
    if (opened)
        for (const std::string& warning : warnings) tally.Doubt_Row(Name_Of(session, path), warning);
    std::vector<std::string> told = ask.Kept();
    if (list != nullptr) {
        if (result == Load_Result::failed && !opened) return Fail_List(session, path, told, tally), false;
        Settle_Listed_Rows(session.store, *list, rows_before);
    }
    tally.opened += opened;
    tally.refused += !opened && result != Load_Result::table_full;
    if (told.empty() && notes.several && !notes.refusal.empty()) told.push_back(notes.refusal);
    tally.Add(Name_Of(session, path), std::move(told));
    return result != Load_Result::table_full;
}

void Load_Each(Session& session, Loading_Ask& ask, const Files_To_Open& files, std::function<Read_File(const std::string&)> read,
               Load_Notes& notes, Tally& tally) {
    const auto progress = ask.Start_Progress(progress_title, static_cast<int>(files.paths.size()));
    notes.replaces = files.replaces;
    Files_Ahead ahead(files.paths, std::move(read), session.config.threads);
    Lists_In_Turn lists(files.lists);
    for (std::size_t done = 0; done < files.paths.size(); ++done) {
        const std::string& path = files.paths[done];
        if (!progress->Go_On(static_cast<int>(done), File_Part(path, session.config.sep))) break;
        Read_File file = ahead.Take(*progress);
        if (progress->Cancelled()) break;
        const Opened_List* const list = lists.Of(done);
        if (list != nullptr && list->first == done) MRU_Add(session, list->path);
        if (!Load_One(session, ask, path, std::move(file), list, notes, tally)) break;
        if (list != nullptr && list->behind == done + 1 && list->first_left_out > 0)
            tally.told.insert(tally.told.begin(), Name_Of(session, list->path) + ": too many names, those from line " +
                                                      std::to_string(list->first_left_out) + " on were left out");
    }
}

}  // namespace

Open_Result Load_All(Session& session, Ask& user, const Files_To_Open& files, std::function<Read_File(const std::string&)> read) {
    const auto start = Loading_Ask::Clock::now();
    const int rows_before = session.store.nperfiles();
    if (files.paths.empty() && files.refusals.size() == 1) {
        user.Box(files.refusals.front());
        return {.failed = true};
    }
    Load_Notes notes;
    notes.several = files.paths.size() + files.refusals.size() > 1 || !files.lists.empty();
    Loading_Ask ask(user, notes.several);
    Tally tally;
    for (const Message_Box& refusal : files.refusals) ++tally.refused, tally.told.push_back(refusal.text);
    Load_Each(session, ask, files, std::move(read), notes, tally);
    const int rows_kept = files.replaces && !notes.replaces ? 0 : rows_before;
    Finish_Load(session, rows_kept);
    Open_Result result;
    result.failed = !tally.sound || !files.refusals.empty();
    if (tally.failure.empty()) {
        result.rows_added = session.store.nperfiles() - rows_kept;
        result.opened = tally.opened > 0;
        result.notice = notes.Notice();
        if (result.notice.empty() && files.lists.size() == 1) result.notice = files.lists.front().comment;
    }
    result.read_ms = ask.Worked_Since(start);
    session.plot.read_ms = result.read_ms;
    if (!tally.told.empty() || !tally.failure.empty()) user.Error(tally.Text());
    if (!tally.doubts.empty()) user.Warning(tally.Doubts());
    return result;
}

}  // namespace vntl
