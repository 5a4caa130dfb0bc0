#include "base/process.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <thread>

#include "base/os.hpp"
#include "base/text.hpp"

extern char** environ;

namespace vntl {

void Begin_Process() {
    for (const int signal : overheard_signals) std::signal(signal, SIG_IGN);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) < 0 && open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY) < 0) return;
}

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
    // The signals that this program overhears are the other's own to take.
    posix_spawnattr_t as_usual;
    sigset_t overheard;
    sigemptyset(&overheard);
    for (const int signal : overheard_signals) sigaddset(&overheard, signal);
    posix_spawnattr_init(&as_usual);
    posix_spawnattr_setsigdefault(&as_usual, &overheard);
    posix_spawnattr_setflags(&as_usual, POSIX_SPAWN_SETSIGDEF);
    const int error = posix_spawnp(&process, arguments.front(), nullptr, &as_usual, arguments.data(), environ);
    posix_spawnattr_destroy(&as_usual);
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
