#include "commands/instrument/open_numors_command.hpp"

#include <algorithm>
#include <vector>

#include "base/os.hpp"
#include "base/text.hpp"
#include "base/write_file.hpp"
#include "commands/application.hpp"
#include "commands/external/start.hpp"
#include "commands/file/opened.hpp"
#include "commands/instrument/instrument_numors_dialog.hpp"
#include "commands/instrument/select_instrument_dialog.hpp"
#include "instrument/numor_files.hpp"
#include "instrument/read_numor.hpp"
#include "session/load.hpp"
#include "session/open_numors.hpp"

namespace vntl {

namespace {

using Names = std::vector<std::string>;

constexpr std::string_view no_place = "No temporary directory was found in your system";
// One more than there is room for: the table tells that it is full.
constexpr int most_looked_for = max_profiles + 1;

struct Runs_To_Open {
    Names files;
    Run_Sources sources = {};
};

// Runs are unpacked in memory, unless the user chose a program for that.
bool Has_Own_Program(const Program_Suite& suite) {
    const std::string& program = suite.Of(Program_Role::cmd_unzip);
    return !Trim(program).empty() && program != Program_Of_System(Program_Role::cmd_unzip, suite.os_tag);
}

// The program leaves the plain file beside a copy of the compressed one. Where it leaves none the run is unpacked in memory after all.
// False where the wait was stopped.
bool Unpack_By_Program(Application& app, const Program_Suite& suite, const std::string& file, Runs_To_Open& runs) {
    const Private_Directory& place = app.directories.temporary;
    const std::string name(File_Part(file)), copy = place.File(name);
    const std::string plain = copy.substr(0, copy.size() - compressed_numor.size());
    const auto taken = [&plain](const auto& run) { return run.second == plain; };  // by a run of another directory
    if (std::any_of(runs.sources.unpacked.begin(), runs.sources.unpacked.end(), taken)) return true;
    if (IOsCopyFile(file, copy).failed) return true;  // a file that cannot be read is told of when it is opened
    IOsDeleteFile(plain);
    const Command_Line command = suite.By_Name(Program_Role::cmd_unzip).In(place.path()).File(name);
    const bool ended = Run_Program(app, command, suite.Of(Program_Role::cmd_unzip));
    IOsDeleteFile(copy);
    if (ended && IOsFileExists(plain)) runs.sources.unpacked[file] = plain;
    return ended;
}

void Unpack_By_Program(Application& app, Runs_To_Open& runs) {
    const Program_Suite suite = Suite_Of(app);
    const auto compressed = [](const std::string& file) { return Is_Compressed_Name(file); };
    if (!Has_Own_Program(suite) || std::none_of(runs.files.begin(), runs.files.end(), compressed)) return;
    if (const Status status = app.directories.Temporary_Directory(); status.failed) {
        const std::string why = Contains(status.message, no_place) ? status.message : std::string(no_place) + '\n' + status.message;
        for (const std::string& file : runs.files)
            if (compressed(file))
                runs.sources.refusals.push_back({.text = std::string(File_Part(file)) + ": " + why, .title = std::string(error_title)});
        std::erase_if(runs.files, compressed);
        return;
    }
    for (const std::string& file : runs.files)
        if (compressed(file) && !Unpack_By_Program(app, suite, file, runs)) return;
}

Open_Result Open_Runs(Application& app, Runs_To_Open runs, const std::string& instrument) {
    Unpack_By_Program(app, runs);
    Open_Result result = Open_Numors(app.session, app.ask, runs.files, instrument, runs.sources);
    for (const auto& [file, plain] : runs.sources.unpacked) IOsDeleteFile(plain);  // of runs that were not read any more
    Show_Opened(app, result);
    return result;
}

}  // namespace

void Find_Directories(Application& app) {
    Data_Directories& directories = app.directories;
    if (directories.KVR_data_directory.empty()) Initialize_Data_Directory(directories);
    Initialize_Temp_Directory(directories);
}

std::string Instrument_Of_File(const std::string& file) {
    std::string instrument = Instrument_Of_Path(file);
    if (!instrument.empty()) return instrument;
    (void)Instrument_Of_Run(file, instrument);  // a file that cannot be read is told of when it is opened
    return Select_Instrument_Dialog(instrument);
}

void Open_Selected_Numors(Application& app) {
    Find_Directories(app);
    Names files = app.ask.Select_Files("Select Numors to open", numor_filter);
    if (files.empty()) return;
    const std::string instrument = Instrument_Of_File(files.front());
    if (!instrument.empty()) Open_Runs(app, {std::move(files)}, instrument);
}

void Open_Numors_Of_Instrument(Application& app) {
    Find_Directories(app);
    if (Instrument_Numors_Dialog(app).failed) return;
    const Numor_Series& series = app.series;
    const std::string instrument = series.runs.instrument;
    if (instrument.empty() || series.only_rawmerge) return;
    const std::string& told = series.runs.data_directory;
    const std::string directory = told.empty() ? app.directories.KVR_data_directory : told;
    if (const Status status = Look_For_Data_Directory(directory); status.failed) {
        app.failed = true;
        return app.ask.Error(status);
    }
    const int last = std::min(series.runs.last, series.runs.first + most_looked_for - 1);
    Runs_To_Open runs;
    for (int numor = series.runs.first; numor <= last; ++numor) runs.files.push_back(Numor_Path(directory, numor, series.compressed));
    runs.sources.place = Actual_Numor;
    if (told.empty())
        runs.sources.place = [directory, instrument](const std::string& file) { return Actual_Numor_In_Tree(directory, file, instrument); };
    const Open_Result result = Open_Runs(app, std::move(runs), instrument);
    if (last < series.runs.last && result.rows_added < max_profiles)
        app.ask.Warning("The numors from " + std::to_string(last + 1) + " to " + std::to_string(series.runs.last) +
                        " were not looked for: no more than " + std::to_string(max_profiles) + " can be opened.");
}

}  // namespace vntl
