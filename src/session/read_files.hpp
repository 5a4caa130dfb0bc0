// The files of one command, read ahead by threads of their own into fresh records, and taken one after another in their order.
//
// A thread does what concerns the file alone: which format it has, its patterns, what is wrong with it. Rows, questions and boxes are for
// who takes it.
#pragma once

#include <deque>
#include <functional>
#include <semaphore>
#include <span>
#include <string>
#include <vector>

#include "base/ask.hpp"
#include "base/long_work.hpp"
#include "patterns/pattern.hpp"
#include "patterns/profile.hpp"

namespace vntl {

inline constexpr std::string_view out_of_memory = "There is not enough memory to read it";

// What was read of a file.
struct Read_File {
    std::string path;
    bool refined = false;  // a profile file of a refinement: one pattern, and what goes with it
    int code = 0;          // format of a pattern file; 0 for none
    bool several = false;  // its patterns come to rows one by one, `messages` tell of those that failed
    Status status = {};    // failed: no pattern, and why
    std::vector<Diffraction_Pattern_Type> patterns = {};
    std::vector<std::string> messages = {};
    std::vector<std::string> warnings = {};  // what its rows cannot be trusted in
    bool alike = false;                      // its patterns were measured together: what keeps one of them out keeps out those behind it
    PRF_Info_Add_Type info = {};
    bool handed_over = false;  // by another window: may take the place of the refined profile of a full table
    bool renews = false;       // by a program that has just run: takes the place of the row that its file made before
};

// Scans of a file of that format over one axis that may become one profile, 0 for none: of the formats whose files hold ranges of a
// measurement. A range that cannot be read counts for nothing. Reads the file.
int Ranges_To_Merge(const std::string& path, int code);

// Each is called in any thread.
Read_File Read_Pattern_File(const std::string& path,
                            const Format_Choice& choice);    // all banks, or the first, by a format; 0: by what it looks like
Read_File Read_Any_File(const std::string& path, int code);  // by its kind; a pattern by `code`, 0: by what it looks like
Read_File Read_Refined_File(const std::string& path);
Read_File Read_Raw_File(const std::string& path, bool correct);  // a pattern a detector; `correct`: for the efficiencies

class Files_Ahead {
public:
    // `threads`: files that are read at a time, 0 as many as there are cores. As many again wait to be taken, so that a long file does
    // not keep the other threads from those behind it.
    Files_Ahead(std::span<const std::string> files, std::function<Read_File(const std::string&)> read, int threads);
    ~Files_Ahead();  // what nobody took is dropped, and what is not begun is not read
    Files_Ahead(const Files_Ahead&) = delete;
    Files_Ahead& operator=(const Files_Ahead&) = delete;

    // The next file. Waits for it, and lets the window live meanwhile.
    Read_File Take(Progress& progress);

private:
    void Start_More();

    std::span<const std::string> files_;
    std::function<Read_File(const std::string&)> read_;
    std::size_t most_, started_ = 0;
    std::counting_semaphore<> free_threads_;
    std::deque<Long_Work<Read_File>> ahead_;
};

}  // namespace vntl
