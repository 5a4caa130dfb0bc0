#include "session/read_files.hpp"

#include <algorithm>
#include <new>
#include <thread>
#include <utility>

#include "base/text.hpp"
#include "patterns/merge_ranges.hpp"
#include "patterns/multi_detector_raw.hpp"
#include "patterns/prf.hpp"
#include "patterns/read_pattern.hpp"
#include "session/file_kinds.hpp"
#include "session/open_numors.hpp"
#include "session/store.hpp"

namespace vntl {

namespace {

std::size_t Or_Cores(int threads) {
    return threads > 0 ? static_cast<std::size_t>(threads) : std::max(1u, std::thread::hardware_concurrency());
}

// One of the threads that may read at a time, while it lives.
class Turn {
public:
    explicit Turn(std::counting_semaphore<>& free) : free_(free) { free_.acquire(); }
    ~Turn() { free_.release(); }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

private:
    std::counting_semaphore<>& free_;
};

// A failure's message, with what the file looks like where that is another format.
Status With_Look(Status status, const std::string& path, int code) {
    const int look = Recognise_Format(path).by_content;
    if (look == 0 || look == code) return status;
    return Status::Fail(std::string(Trim(status.message)) + "\nThe contents look like the format " + std::string(Mode_Of_Code(look)));
}

// As many as a box has room for; the last one tells how many more there are.
std::vector<std::string> First_Ones(std::vector<std::string> texts) {
    constexpr std::size_t most = 10;
    if (texts.size() <= most) return texts;
    const std::size_t more = texts.size() - most + 1;
    texts.resize(most - 1);
    texts.push_back("and " + std::to_string(more) + " more of the kind");
    return texts;
}

// The ranges as one profile; where they cannot be, they come one by one and a warning tells why.
void Merge(Read_File& file) {
    if (const std::string why = Why_Not_Merged(file.patterns); !why.empty())
        file.warnings.push_back("The ranges were not merged. " + why + '.');
    else
        file.patterns = {Merge_Ranges(file.patterns)};
}

}  // namespace

int Ranges_To_Merge(const std::string& path, int code) {
    using namespace format_code;
    constexpr int of_ranges[] = {panalytical, raw, stoe, rigaku_raw, brml, rasx, ras, asc};
    if (std::find(std::begin(of_ranges), std::end(of_ranges), code) == std::end(of_ranges)) return 0;
    std::vector<Diffraction_Pattern_Type> patterns;
    Read_Notes unheard;
    if (Read_Pattern_Mult(path, patterns, max_profiles, Mode_Of_Code(code), unheard).failed || !Why_Not_Merged(patterns).empty()) return 0;
    return Contains(patterns.front().scat_var, "2theta") ? static_cast<int>(patterns.size()) : 0;
}

Read_File Read_Pattern_File(const std::string& path, const Format_Choice& choice) {
    const int code = choice.code != 0 ? choice.code : Recognise_Format(path).code;
    const std::string mode(Mode_Of_Code(code));
    const Patterns_Taken taken = Reader_Of_Mode(mode).taken;
    Read_File file{
        .path = path, .code = code, .several = taken == Patterns_Taken::all || (taken == Patterns_Taken::asked && choice.all_banks)};
    if (file.several) {
        const int capacity = code == format_code::isis ? isis_capacity : max_profiles;
        Read_Notes notes;
        file.status = Read_Pattern_Mult(path, file.patterns, capacity, mode, notes);
        file.messages = First_Ones(std::move(notes.failed));
        file.warnings = First_Ones(std::move(notes.warnings));
        if (choice.merge && file.patterns.size() > 1) Merge(file);
    } else {
        file.patterns.resize(1);
        file.status = Read_Pattern(path, file.patterns.front(), mode);
    }
    if (file.status.failed) file.status = With_Look(file.status, path, code);
    return file;
}

Read_File Read_Refined_File(const std::string& path) {
    Read_File file{.path = path, .refined = true};
    file.patterns.resize(1);
    file.status = Read_Prf(path, file.patterns.front(), file.info);
    return file;
}

Read_File Read_Raw_File(const std::string& path, bool correct) {
    Read_File file{.path = path, .several = true, .alike = true};
    file.status = Read_Multi_Detector_Raw(path, correct, file.patterns);
    return file;
}

Read_File Read_Any_File(const std::string& path, int code) {
    const File_Kind_Row* kind = File_Kind_Of(path);
    if (kind != nullptr && kind->read != nullptr) return kind->read(path);
    if (kind == nullptr && code == 0 && Is_Numor(path)) return Read_Numor_File(path);
    return Read_Pattern_File(path, {code != 0 ? code : Format_Of_File(path), false});
}

Files_Ahead::Files_Ahead(std::span<const std::string> files, std::function<Read_File(const std::string&)> read, int threads)
    : files_(files), read_(std::move(read)), most_(2 * Or_Cores(threads)), free_threads_(static_cast<std::ptrdiff_t>(Or_Cores(threads))) {
    Start_More();
}

Files_Ahead::~Files_Ahead() {
    for (Long_Work<Read_File>& work : ahead_) work.Control().Cancel();
}

// Where memory runs out fewer files are ahead, or none.
void Files_Ahead::Start_More() {
    try {
        for (; ahead_.size() < most_ && started_ < files_.size(); ++started_)
            ahead_.emplace_back([this, path = files_[started_]](Work_Control& control) {
                const Turn turn(free_threads_);
                return control.Cancelled() ? Read_File{} : read_(path);
            });
    } catch (const std::bad_alloc&) {
    }
}

Read_File Files_Ahead::Take(Progress& progress) {
    if (ahead_.empty()) Start_More();
    if (ahead_.empty()) return {.path = files_[started_++], .status = Status::Fail(out_of_memory)};
    Long_Work<Read_File>& first = ahead_.front();
    progress.Wait([&first](std::chrono::milliseconds time) { return first.Ready_Within(time); });
    std::optional<Read_File> file = first.Take();
    ahead_.pop_front();
    const std::string& path = files_[started_ - ahead_.size() - 1];
    Start_More();
    if (file) return std::move(*file);
    return {.path = path, .status = Status::Fail(out_of_memory)};
}

}  // namespace vntl
