// Programs of our own that are asked for one answer: they read what stands on their standard input, write the answer to their standard
// output, and end. What goes wrong in one, a crash or a loop without end, is theirs and not that of the program that asks.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

namespace vntl {

enum class Answer_End {
    answered,     // it ended by itself, with the exit status 0
    not_started,  // there was no program to start, or the system has no room for its files
    broke_off,    // it ended in another way, by a signal for example
    too_late      // it did not end in its time, and was ended
};

// Both streams are files that exist in memory alone, so that neither waits for the other and the program asked may read its input from any
// place. It has no other files open, and its messages on standard error are dropped.
class Program_Answer {
public:
    Program_Answer() = default;
    ~Program_Answer();
    Program_Answer(const Program_Answer&) = delete;
    Program_Answer& operator=(const Program_Answer&) = delete;

    // Asks once, and waits for the end of the program at most so long. From any thread, several at the same time.
    Answer_End Ask(const std::string& program, std::string_view input, std::chrono::milliseconds patience);

    // What it wrote, as long as this lives. Empty but for Answer_End::answered.
    std::string_view Bytes() const { return {static_cast<const char*>(bytes_), size_}; }

private:
    void* bytes_ = nullptr;
    std::size_t size_ = 0;
};

// The path of a program that is installed with this one: in its directory, in the one above, or in libexec/vantrelo beside that. Blank
// without one.
std::string Own_Program(const std::string& name);

}  // namespace vntl
