#include "base/process.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <condition_variable>
#include <cstring>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

#include "base/os.hpp"
#include "base/text.hpp"

extern char** environ;

namespace vntl {

namespace {

constexpr std::string_view default_path = "/usr/local/bin:/usr/bin:/bin";

bool Can_Be_Started(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && access(path.c_str(), X_OK) == 0;
}

// Also where it is named from the present directory: the program runs in another one.
std::string Absolute(const std::string& path) { return In_Directory(IOsDirName(), path); }

// How every program is started, but for its directory.
class Spawn_Form {
public:
    explicit Spawn_Form(const std::string& directory) {
        posix_spawn_file_actions_init(&files_);
        posix_spawn_file_actions_addopen(&files_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&files_, STDERR_FILENO, STDOUT_FILENO);
        posix_spawn_file_actions_addclosefrom_np(&files_, STDERR_FILENO + 1);
        if (!directory.empty()) posix_spawn_file_actions_addchdir_np(&files_, directory.c_str());
        // The signals that this program overhears or holds back are the other's own to take.
        sigset_t overheard, none;
        sigemptyset(&overheard);
        sigemptyset(&none);
        for (const int signal : overheard_signals) sigaddset(&overheard, signal);
        posix_spawnattr_init(&as_usual_);
        posix_spawnattr_setsigdefault(&as_usual_, &overheard);
        posix_spawnattr_setsigmask(&as_usual_, &none);
        posix_spawnattr_setflags(&as_usual_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSID);
    }
    ~Spawn_Form() {
        posix_spawn_file_actions_destroy(&files_);
        posix_spawnattr_destroy(&as_usual_);
    }
    Spawn_Form(const Spawn_Form&) = delete;
    Spawn_Form& operator=(const Spawn_Form&) = delete;

    // An error number, 0 for none.
    int Start(const std::string& program, const std::vector<std::string>& words, pid_t& process) const {
        std::vector<char*> arguments;
        for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
        arguments.push_back(nullptr);
        return posix_spawn(&process, program.c_str(), &files_, &as_usual_, arguments.data(), environ);
    }

private:
    posix_spawn_file_actions_t files_;
    posix_spawnattr_t as_usual_;
};

// Copied without the right to be run it is there, and yet not found.
Status No_Program(const std::string& name, const std::string& suite) {
    for (const std::string& file : {name, suite.empty() ? suite : suite + '/' + name})
        if (Contains(file, "/") && IOsFileExists(file)) return Status::Fail("The file of the program " + file + " may not be executed.");
    return Status::Fail("The program " + name + " was not found.");
}

}  // namespace

struct Running_Program::State {
    std::mutex mutex;
    std::condition_variable changed;
    bool ended = false;

    void Wait_For_End(pid_t process) {
        int status = 0;
        while (waitpid(process, &status, 0) < 0 && errno == EINTR) continue;
        const std::lock_guard lock(mutex);
        ended = true;
        changed.notify_all();
    }
};

bool Running_Program::Ended_Within(std::chrono::milliseconds time) const {
    if (state_ == nullptr) return true;
    std::unique_lock lock(state_->mutex);
    return state_->changed.wait_for(lock, time, [this] { return state_->ended; });
}

void Begin_Process() {
    for (const int signal : overheard_signals) std::signal(signal, SIG_IGN);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) < 0 && open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY) < 0) return;
}

std::string Found_Program(const std::string& name, const std::string& suite) {
    if (name.empty()) return {};
    if (Contains(name, "/")) return Can_Be_Started(name) ? Absolute(name) : std::string();
    std::string places = IOsVariable("PATH");
    if (places.empty()) places = default_path;
    for (std::size_t start = 0; start <= places.size();) {
        const std::size_t end = std::min(places.find(':', start), places.size());
        const std::string directory = places.substr(start, end - start);
        if (const std::string path = (directory.empty() ? "." : directory) + '/' + name; Can_Be_Started(path)) return Absolute(path);
        start = end + 1;
    }
    const std::string path = suite + '/' + name;
    return !suite.empty() && Can_Be_Started(path) ? Absolute(path) : std::string();
}

Status IOsCommand(const Command_Line& command, Running_Program* running) {
    if (command.programs().empty()) return Status::Fail("There is no program to start.");
    if (!command.directory().empty() && !IOsDirExists(command.directory()))
        return Status::Fail("There is no directory " + command.directory() + " to start a program in.");
    // A program that another one runs is found by that, unless it stands with the suite alone.
    std::vector<std::string> words = command.words();
    std::string program;
    for (const std::size_t place : command.programs()) {
        const std::string name = words[place], path = Found_Program(name, command.suite());
        if (path.empty()) return No_Program(name, command.suite());
        if (program.empty())
            program = path;
        else if (Contains(name, "/") || Found_Program(name).empty())
            words[place] = path;
    }
    pid_t process = 0;
    if (const int error = Spawn_Form(command.directory()).Start(program, words, process); error != 0)
        return Status::Fail("The program " + words.front() + " cannot be started: " + std::strerror(error));
    auto state = std::make_shared<Running_Program::State>();
    if (running != nullptr) *running = Running_Program(state);
    try {
        std::thread([state, process] { state->Wait_For_End(process); }).detach();  // takes note of its end, whenever that is
    } catch (const std::system_error&) {
        state->Wait_For_End(process);
    }
    return Status::Done();
}

}  // namespace vntl
