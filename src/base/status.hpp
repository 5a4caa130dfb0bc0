// Failure as a value: what every operation of the program gives back when it can fail.
#pragma once

#include <string>
#include <string_view>

namespace vntl {

// Outcome of an operation. `message` is the text for the user, word for word, blanks included; empty when nothing failed.
struct [[nodiscard]] Status {
    bool failed = false;
    std::string message;
    bool cancelled = false;  // failed because the user took the command back: there is nothing to tell
    bool of_file = false;    // failed because a file could not be read or written: the exit status of a script tells of it

    static Status Done() { return {}; }
    static Status Fail(std::string_view text) { return {true, std::string(text), false, false}; }
    static Status Fail_File(std::string_view text) { return {true, std::string(text), false, true}; }
    static Status Cancel() { return {true, "Cancelled", true, false}; }
    bool ok() const { return !failed; }
    bool to_tell() const { return failed && !cancelled; }
};

}  // namespace vntl
