#include "base/program_answer.hpp"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <thread>

#include "base/os.hpp"
#include "base/process.hpp"

extern char** environ;

namespace vntl {

namespace {

using Clock = std::chrono::steady_clock;

class File_In_Memory {
public:
    explicit File_In_Memory(const char* name) : number_(memfd_create(name, MFD_CLOEXEC)) {}
    ~File_In_Memory() {
        if (number_ >= 0) close(number_);
    }
    File_In_Memory(const File_In_Memory&) = delete;
    File_In_Memory& operator=(const File_In_Memory&) = delete;

    int number() const { return number_; }

    // Writes the bytes, and goes back to the beginning.
    bool Fill(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t written = write(number_, bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR) continue;
            if (written <= 0) return false;
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
        return lseek(number_, 0, SEEK_SET) == 0;
    }

private:
    int number_;
};

pid_t Begin(const std::string& program, int input, int output) {
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&files, output, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
    posix_spawnattr_t as_usual;
    sigset_t overheard, none;
    sigemptyset(&overheard);
    sigemptyset(&none);
    for (const int signal : overheard_signals) sigaddset(&overheard, signal);
    posix_spawnattr_init(&as_usual);
    posix_spawnattr_setsigdefault(&as_usual, &overheard);
    posix_spawnattr_setsigmask(&as_usual, &none);
    posix_spawnattr_setflags(&as_usual, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    std::array<char*, 2> words = {const_cast<char*>(program.c_str()), nullptr};
    pid_t process = 0;
    const int error = posix_spawn(&process, program.c_str(), &files, &as_usual, words.data(), environ);
    posix_spawnattr_destroy(&as_usual);
    posix_spawn_file_actions_destroy(&files);
    return error == 0 ? process : 0;
}

// Looks for the end again and again, more seldom the longer it takes.
Answer_End End_Of(pid_t process, std::chrono::milliseconds patience) {
    using namespace std::chrono_literals;
    const auto start = Clock::now();
    int status = 0;
    for (;;) {
        const pid_t ended = waitpid(process, &status, WNOHANG);
        if (ended == process) return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? Answer_End::answered : Answer_End::broke_off;
        if (ended < 0 && errno != EINTR) return Answer_End::broke_off;
        const auto taken = Clock::now() - start;
        if (taken >= patience) break;
        std::this_thread::sleep_for(std::clamp<Clock::duration>(taken / 16, 50us, 10ms));
    }
    kill(process, SIGKILL);
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) continue;
    return Answer_End::too_late;
}

}  // namespace

Program_Answer::~Program_Answer() {
    if (bytes_ != nullptr) munmap(bytes_, size_);
}

Answer_End Program_Answer::Ask(const std::string& program, std::string_view input, std::chrono::milliseconds patience) {
    if (bytes_ != nullptr) munmap(bytes_, size_);
    bytes_ = nullptr;
    size_ = 0;
    const File_In_Memory question("question"), answer("answer");
    if (program.empty() || question.number() < 0 || answer.number() < 0 || !question.Fill(input)) return Answer_End::not_started;
    const pid_t process = Begin(program, question.number(), answer.number());
    if (process == 0) return Answer_End::not_started;
    const Answer_End end = End_Of(process, patience);
    struct stat status {};
    if (end != Answer_End::answered || fstat(answer.number(), &status) != 0 || status.st_size <= 0) return end;
    const auto size = static_cast<std::size_t>(status.st_size);
    void* const bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, answer.number(), 0);
    if (bytes == MAP_FAILED) return Answer_End::broke_off;
    bytes_ = bytes;
    size_ = size;
    return end;
}

std::string Own_Program(const std::string& name) {
    std::array<char, PATH_MAX> path{};
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    if (length <= 0) return {};
    const std::string here(Directory_Part(std::string_view(path.data(), static_cast<std::size_t>(length))));
    for (const char* const place : {"/", "/../", "/../libexec/vantrelo/"})
        if (std::string found = Found_Program(here + place + name); !found.empty()) return found;
    return {};
}

}  // namespace vntl
