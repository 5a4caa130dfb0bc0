#include "commands/external/start.hpp"

#include <chrono>

#include "base/os.hpp"
#include "base/text.hpp"
#include "base/write_file.hpp"
#include "commands/application.hpp"
#include "commands/select_files.hpp"
#include "session/load.hpp"
#include "toolkit/menu_hold.hpp"
#include "toolkit/messages.hpp"
#include "toolkit/window.hpp"
#include "toolkit/window_service.hpp"

namespace vntl {

namespace {

constexpr auto between_looks = std::chrono::milliseconds(20);

// Who closes the main window wants that after the wait, which ends there.
bool Stops_Wait(const Message& message) {
    const bool closes = message.kind == Message_Kind::close_request && message.record.win == main_window;
    return closes || (message.kind == Message_Kind::key_down && message.record.value1 == key_escape);
}

// False where it was stopped. Windows that are closed meanwhile close after it.
bool Wait_For(const Running_Program& running) {
    const Menu_Hold hold;
    std::vector<Message> closed;
    bool stopped = false;
    while (!stopped && !running.Ended_Within(between_looks))
        while (!stopped) {
            const auto message = WMessageInWait();
            if (!message) break;
            stopped = Stops_Wait(*message);
            if (message->kind == Message_Kind::close_request) closed.push_back(*message);
            Serve_Meanwhile(*message);
        }
    for (const Message& message : closed) Post_Message(message);
    return !stopped;
}

bool Installed(const std::string& program, const std::string& quendrix_dir) {
    const std::vector<std::string> words = Command_Words(program);
    return !words.empty() && !Found_Program(words.front(), quendrix_dir).empty();
}

// Whether the desktop's opener takes the place of the system's own program. With neither installed it is that one that is missed.
bool Opener_Stands_In(const Program_Suite& suite, Program_Role role) {
    return !Installed(suite.Of(role), suite.quendrix_dir) && Installed(suite.opener, suite.quendrix_dir);
}

// Also with programs off there must be one.
Status Start(Application& app, const Command_Line& command, Running_Program* running = nullptr) {
    if (command.programs().empty()) return Status::Fail(no_program);
    return running == nullptr ? app.programs.Start(command) : app.programs.Start(command, *running);
}

bool Told_Of_Failure(Application& app, const Status& status) {
    if (status.failed) app.session.interface.Passing_Text(status.message);
    return status.failed;
}

}  // namespace

Program_Suite Suite_Of(const Application& app) { return Suite_In_Use(app.session.config, app.session.prefs.environment); }

std::string Refinement_File(const Configuration& config) {
    const std::string& file = config.pcr_file;
    return Contains(file, ".") && IOsFileExists(file) ? Absolute_Path(config, file) : std::string();
}

std::string Choose_File(Application& app, std::string_view title, std::string_view filter) {
    const auto chosen = Select_Files(app.session.config, Select_Kind::open, filter, title);
    return chosen.empty() ? std::string() : chosen.front();
}

bool Copy_For_Ito(Application& app, const std::string& file) {
    const std::string copy = app.session.config.Path(Directory_Of(file), ito_input);
    Status status = file == copy ? Status::Done() : IOsCopyFile(file, copy);
    if (status.failed) app.ask.Error(status);
    return status.ok();
}

bool Start_Program(Application& app, const Command_Line& command) { return !Told_Of_Failure(app, Start(app, command)); }

bool Run_Program(Application& app, const Command_Line& command, std::string_view name) {
    Running_Program running;
    if (Told_Of_Failure(app, Start(app, command, &running))) return false;
    WindowSelect(main_window);
    WindowOutStatusBar(1, std::string(name) + " is running (Escape stops the wait)");
    const bool ended = Wait_For(running);
    app.session.interface.Passing_Text(std::string(name) + (ended ? " has ended" : " goes on by itself"));
    return ended;
}

void Open_With(Application& app, Program_Role role, std::string_view file) {
    const Program_Suite suite = Suite_Of(app);
    const std::string& program = suite.Of(role);
    const bool chosen = program != Program_Of_System(role, suite.os_tag);
    Command_Line command = suite.By_Name(role);
    const std::string opened = file.empty() && role == Program_Role::cmd_files ? IOsDirName() : std::string(file);
    if (!opened.empty() && (program.empty() || (!chosen && app.programs.on() && Opener_Stands_In(suite, role))))
        command = Command_Line(suite.quendrix_dir).Program(suite.opener).File(opened);
    else if (!file.empty())
        command.File(file);
    Start_Program(app, command);
}

}  // namespace vntl
