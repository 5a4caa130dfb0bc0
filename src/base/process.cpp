#include "base/process.hpp"

#include <spawn.h>
#include <sys/wait.h>

#include <cstring>
#include <thread>

#include "base/os.hpp"
#include "base/text.hpp"

extern char** environ;

namespace vntl {

std::string Quoted_Argument(std::string_view file) { return Contains(file, " ") ? '"' + std::string(file) + '"' : std::string(file); }

std::vector<std::string> Command_Words(std::string_view command) {
    std::vector<std::string> words;
    bool quoted = false, open = false;
    for (const char c : command) {
        if (c == '"') {
            quoted = !quoted;
            if (!open) words.emplace_back();
            open = true;
        } else if (c == ' ' && !quoted) {
            open = false;
        } else {
            if (!open) words.emplace_back();
            words.back() += c;
            open = true;
        }
    }
    std::string program;
    for (std::size_t i = 0; i < words.size(); ++i) {
        program += (i == 0 ? "" : " ") + words[i];
        if (!IOsFileExists(program)) continue;
        words.erase(words.begin(), words.begin() + static_cast<std::ptrdiff_t>(i) + 1);
        words.insert(words.begin(), program);
        break;
    }
    return words;
}

Status IOsCommand(std::string_view command, int flags) {
    const std::vector<std::string> words = Command_Words(command);
    if (words.empty()) return Status::Fail("There is no program to start.");
    std::vector<char*> arguments;
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    pid_t process = 0;
    const int error = posix_spawnp(&process, arguments.front(), nullptr, nullptr, arguments.data(), environ);
    if (error != 0) return Status::Fail("The program cannot be started: " + words.front() + "\n" + std::strerror(error));
    const auto wait = [process] {
        int status = 0;
        waitpid(process, &status, 0);
    };
    if (flags == command_goes_on)
        std::thread(wait).detach();  // takes note of its end, whenever that is
    else
        wait();
    return Status::Done();
}

}  // namespace vntl
