// A program is started, waited for, and its profile loaded, if it has written one. What is chosen, read and copied before the start changes
// neither view nor lists; nor does a start that fails, or a wait that the user stops.
#include "commands/external/refine.hpp"

#include "base/os.hpp"
#include "base/text.hpp"
#include "commands/application.hpp"
#include "commands/external/start.hpp"
#include "commands/file/opened.hpp"
#include "external/refinement_job.hpp"
#include "session/load_all.hpp"
#include "session/read_files.hpp"

namespace vntl {

namespace {

constexpr std::string_view quendrix_selector = "Quendrix Program", control_filter = "Input PCR File|*.pcr;*.new|",
                           data_filter = "Input DAT INT Files|*.dat; *.xy; *.xys; *.uxd; *.int; *.acq; *.udf; *.csv; *.xrdml|";
constexpr std::string_view loading_failed = "Error loading PRF file ...\n", not_found = "PRF File not found",
                           unknown_format = "Unknown PRF Format\n", absent_mark = "ERROR 00";

struct Job {
    std::string chosen;  // full path
    Run_Names names;
    std::string data;  // blank where the job needs none
};

// The selector opens where the last such file was chosen, and leaves the place of the others as it was.
std::string Choose_Data(Application& app) {
    std::string& place = app.session.config.select_dir;
    const std::string of_others = place;
    if (!app.data_dir.empty()) place = app.data_dir;
    std::string file = Choose_File(app, quendrix_selector, data_filter);
    if (!file.empty()) app.data_dir = Directory_Of(file);
    place = of_others;
    return file;
}

// False where there is nothing to start: the user left a selector, or was told of the failure.
bool Choose_Job(Application& app, Job& job) {
    job.chosen = Choose_File(app, quendrix_selector, control_filter);
    if (job.chosen.empty()) return false;
    job.chosen = Absolute_Path(app.session.config, job.chosen);
    job.names = Names_Of_Run(job.chosen);
    bool needs_data = true;
    Status status = File_Needs_Data(job.chosen, needs_data);
    if (status.ok() && job.names.base.empty()) status = Status::Fail_File("It has no name before its extension: " + job.chosen);
    if (status.failed) return app.ask.Error(status), false;
    if (!needs_data) return true;
    job.data = Data_Of_Run(job.names, IOsFileExists);
    if (job.data.empty()) job.data = Choose_Data(app);
    return !job.data.empty();
}

// Why there is nothing to load.
std::string Lack_Of_Result(const Awaited_Results& results) {
    const std::string old = results.There();
    std::string text = std::string(loading_failed) + std::string(not_found);
    if (!old.empty()) text += "\nThe program has not written " + old + ", which is older and is not loaded.";
    return text;
}

Read_File Read_Result(const std::string& path) {
    Read_File file = Read_Refined_File(path);
    if (!file.status.failed) return file;
    const bool absent = file.status.message.starts_with(absent_mark);
    const std::string why = absent ? std::string(not_found) : std::string(unknown_format) + file.status.message;
    file.status.message = std::string(loading_failed) + why;
    return file;
}

void Load_Result_Of(Application& app, const Awaited_Results& results) {
    const std::string found = app.programs.on() ? results.Written() : results.There();
    const auto read = [&](const std::string& path) {
        Read_File file =
            found.empty() ? Read_File{.path = path, .refined = true, .status = Status::Fail(Lack_Of_Result(results))} : Read_Result(path);
        file.patterns.resize(1);
        file.renews = true;
        return file;
    };
    const Open_Result result = Load_All(app.session, app.ask, {.paths = {found.empty() ? results.First() : found}}, read);
    if (result.opened) return Show_Opened(app, result);
    app.failed |= result.failed;  // view and lists stay
}

void Run_For_Result(Application& app, const Command_Line& command, std::string_view name, const Run_Names& names) {
    const Awaited_Results results(names.Results());
    if (Run_Program(app, command, name)) Load_Result_Of(app, results);
}

}  // namespace

void Run_Quendrix(Application& app) {
    const Program_Suite suite = Suite_Of(app);
    const std::string& program = suite.Of(Program_Role::prg_refine);
    if (Trim(program).empty()) return app.session.interface.Passing_Text(std::string(no_program));
    Job job;
    if (!Choose_Job(app, job)) return;
    if (job.names.is_new)
        if (const Status status = Take_New(job.names, job.chosen); status.failed) return app.ask.Error(status);
    app.session.config.pcr_file = job.names.Control_File();
    Command_Line command = suite.By_Name(Program_Role::cmd_run).Program(program).In(job.names.directory).File(job.names.base);
    if (!job.data.empty()) command.File(Name_Seen_From(job.names.directory, job.data));
    Run_For_Result(app, command.Word("lprompt"), "Quendrix", job.names);
}

void Run_Radiox(Application& app) {
    const std::string file = Choose_File(app, "Run Radiox program", "Select a OSL file (*.osl)|*.osl|");
    if (!file.empty()) Run_Radiox_On(app, file);
}

void Run_Radiox_On(Application& app, const std::string& osl_file) {
    const std::string full = Absolute_Path(app.session.config, osl_file);
    const Run_Names names = Names_Of_Run(full);
    Command_Line command = Suite_Of(app).In_Console(Program_Role::prg_radiox).In(names.directory);
    command.File(Contains(osl_file, "/") ? full : osl_file).Word("calcp");
    Run_For_Result(app, command, "Radiox", names);
}

}  // namespace vntl
