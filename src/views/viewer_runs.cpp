// How runs, instruments and matrices come into the viewer of area detectors.
#include <algorithm>
#include <cstdio>

#include "base/long_work.hpp"
#include "base/os.hpp"
#include "base/text.hpp"
#include "commands/progress_dialog.hpp"
#include "commands/select_files.hpp"
#include "instrument/instrument_file.hpp"
#include "session/load.hpp"
#include "toolkit/window.hpp"
#include "views/viewer_2d.hpp"

namespace vntl {

namespace {

using Texts = std::vector<std::string>;

constexpr std::string_view all_files = "All files|*|";
constexpr std::size_t most_lines_of_a_box = 12;

// One box for all that there is to tell.
std::string In_One_Text(const Texts& texts) {
    std::string all;
    for (std::size_t i = 0; i < std::min(texts.size(), most_lines_of_a_box); ++i) all += (i == 0 ? "" : "\n") + texts[i];
    if (texts.size() > most_lines_of_a_box) all += "\nand " + std::to_string(texts.size() - most_lines_of_a_box) + " more";
    return all;
}

// Once.
void Tell_Warnings(Application& app, Texts warnings) {
    Texts& told = app.viewer.told;
    std::erase_if(warnings, [&told](const std::string& text) { return std::find(told.begin(), told.end(), text) != told.end(); });
    if (warnings.empty()) return;
    told.insert(told.end(), warnings.begin(), warnings.end());
    app.ask.Warning(In_One_Text(warnings));
}

const Diffractometer_Type& Instrument_Of(const Application& app) { return app.instrument.Current_Instrm; }

// A work in a thread of its own, under a bar; nothing where memory ran out.
template <class Result>
std::optional<Result> Run_Work(std::string_view title, int steps, std::function<Result(Work_Control&)> routine) {
    Long_Work<Result> work(std::move(routine));
    WindowSelect(viewer_window);
    const auto progress = Start_Progress_Dialog(title, steps);
    progress->Wait([&](std::chrono::milliseconds time) {
        const bool ready = work.Ready_Within(time);
        const Work_Report report = work.Control().Report();
        progress->Go_On(report.done, report.what);
        if (progress->Cancelled()) work.Control().Cancel();
        return ready;
    });
    return work.Take();
}

constexpr std::string_view no_memory = "There is not enough memory";

// --- runs ----------------------------------------------------------------------------------------------------------------------------

struct Runs_Read {
    Frame_Store store;
    Texts refused;
    bool cancelled = false;
};

Runs_Read Read_Into_Store(const Texts& files, const Diffractometer_Type& instrument, Work_Control& control) {
    Runs_Read read;
    for (std::size_t i = 0; i < files.size(); ++i) {
        control.Tell({static_cast<int>(i), std::string(File_Part(files[i]))});
        if (control.Cancelled()) break;
        if (const Status status = read.store.Add(files[i], instrument); status.failed) read.refused.push_back(status.message);
    }
    read.cancelled = control.Cancelled();
    return read;
}

// Of the run of a file, 0 none.
int Place_In(const Frame_Store& store, const std::string& file) {
    for (int index = 1; index <= store.size(); ++index)
        if (store.File(index) == file) return index;
    return 0;
}

// The runs that can be read take the place of those in the list; where none can, or not the one that is told of, or the user ends it, these
// stay.
bool Read_Files(Application& app, const Texts& files, const std::string& wanted = {}) {
    const Diffractometer_Type& instrument = Instrument_Of(app);
    if (instrument.np_horiz < 1 || instrument.np_vert < 1) {
        app.ask.Error("Pixels by Frame is zero!!!");
        return false;
    }
    if (files.empty()) {
        app.ask.Error("No Numors for allocating are present!!!");
        return false;
    }
    auto read = Run_Work<Runs_Read>("Reading runs", static_cast<int>(files.size()),
                                    [&files, instrument](Work_Control& control) { return Read_Into_Store(files, instrument, control); });
    if (!read) {
        app.ask.Error(std::string(no_memory));
        return false;
    }
    if (read->cancelled) return false;
    Texts warnings;
    bool taken = false;
    if (wanted.empty() ? read->store.size() > 0 : Place_In(read->store, wanted) > 0) {
        const Status status = Take_Runs(app.viewer, std::move(read->store), instrument, Saturation_Of(app), warnings);
        taken = status.ok();
        if (status.failed) read->refused.push_back(status.message);
    }
    if (taken) app.viewer.message.clear();
    Show_Viewer(app);
    if (!read->refused.empty()) app.ask.Error(Status::Fail_File(In_One_Text(read->refused)));
    Tell_Warnings(app, warnings);
    return taken;
}

void Tell_And_Show(Application& app, const Status& status, const Texts& warnings = {}) {
    if (status.ok() && !app.viewer.recip_mode) app.viewer.message.clear();
    Show_Viewer(app);
    if (status.failed) app.ask.Error(status);
    Tell_Warnings(app, warnings);
}

// --- reciprocal space ----------------------------------------------------------------------------------------------------------------

struct Volume_Built {
    Reciprocal_Volume volume;
    Status status;
};

// Of all frames of the run in hand.
Volume_Built Volume_Of_Run(Viewer2D& viewer, const Matrix3d& ub_inverse) {
    if (!viewer.geometry) return {{}, Status::Fail(viewer.no_geometry)};
    const std::unique_ptr<Frame_Source> frames = viewer.numors.Source(viewer.current_numor);
    auto built = Run_Work<Volume_Built>("Reciprocal space", viewer.nframes, [&](Work_Control& control) {
        Volume_Built result;
        result.status = Build_Reciprocal_Volume(*frames, *viewer.geometry, ub_inverse, result.volume, [&control](int done) {
            control.Tell({done, "Frame " + std::to_string(done)});
            return !control.Cancelled();
        });
        return result;
    });
    return built ? std::move(*built) : Volume_Built{{}, Status::Fail(no_memory)};
}

// The matrix is taken over, and the volume, where that can be built; a volume that is shown stays where not, with its matrix.
void Build(Application& app, const UB_Input& matrix, View_Axis axis) {
    Viewer2D& viewer = app.viewer;
    Volume_Built built = Volume_Of_Run(viewer, matrix.inverse);
    const Status& status = built.status;
    if (status.ok() || !viewer.recip_mode) Take_UB(viewer, matrix.ub, matrix.inverse);
    if (status.ok()) {
        for (const std::string& line : Describe_Volume(built.volume, matrix.ub)) std::fprintf(stderr, "%s\n", line.c_str());
        const Reciprocal_Volume& volume = built.volume;
        viewer.message = "Left out: " + std::to_string(volume.dropped) + " pixels, " + std::to_string(volume.dropped_counts) + " counts";
        Take_Volume(viewer, std::move(built.volume), Saturation_Of(app));
        if (axis != View_Axis::l) Show_Along(viewer, axis, Saturation_Of(app));
    }
    Show_Viewer(app);
    if (status.to_tell()) app.ask.Error(status);
}

}  // namespace

// --- runs ----------------------------------------------------------------------------------------------------------------------------

void List_Run_Directory(Application& app, const std::string& directory) {
    std::vector<Run_In_Directory> runs;
    if (const Status status = Runs_In_Directory(directory, runs); status.failed) return app.ask.Error(status);
    app.viewer.directory = directory;
    app.viewer.listed = std::move(runs);
    Show_In_Panel(app);
    if (app.viewer.listed.empty()) app.ask.Information("No file of this directory has a number as its name:\n" + directory);
}

void Choose_Run_Directory(Application& app) {
    WindowSelect(viewer_window);
    if (const auto directory = Select_Directory(app.session.config, "Data Directory")) List_Run_Directory(app, *directory);
}

void Open_Numor_File(Application& app) {
    WindowSelect(viewer_window);
    const auto files = Select_Files(app.session.config, Select_Kind::open, all_files, "Open  Numor");
    if (!files.empty()) Read_Files(app, {files.front()});
}

void Read_Runs(Application& app, int from, int to) {
    Texts files;
    for (const Run_In_Directory& run : app.viewer.listed)
        if (run.numor >= std::min(from, to) && run.numor <= std::max(from, to)) files.push_back(run.file);
    Read_Files(app, files);
}

void Reload_Runs(Application& app) {
    Viewer2D& viewer = app.viewer;
    Texts files;
    for (int index = 1; index <= viewer.numors.size(); ++index) files.push_back(viewer.numors.File(index));
    if (files.empty()) return;
    const std::string in_hand = viewer.numors.File(viewer.current_numor);
    const int frame = viewer.current_frame;
    const bool of_planes = viewer.recip_mode;
    if (!Read_Files(app, files, in_hand)) return;
    Texts warnings;
    Status status = Show_Run(viewer, Place_In(viewer.numors, in_hand), Instrument_Of(app), Saturation_Of(app), warnings);
    if (status.ok() && !of_planes) status = Show_Frame(viewer, frame, Saturation_Of(app));
    Tell_And_Show(app, status);
}

void Search_Run(Application& app, const std::string& instrument, int numor, std::optional<Reactor_Cycle> cycle) {
    Found_Run found;
    if (const Status status = Get_Absolute_Data_Path(app.directories, numor, instrument, cycle, found); status.failed)
        return app.ask.Error(status);
    if (found.path.empty()) return app.ask.Error("Given Numor not found! Please check it!");
    Read_Files(app, {found.path});
}

void Step_To_Run(Application& app, int index) {
    Texts warnings;
    const int wanted = std::clamp(index, 1, std::max(1, app.viewer.numors.size()));
    const Status status = Show_Run(app.viewer, wanted, Instrument_Of(app), Saturation_Of(app), warnings);
    Tell_And_Show(app, status, warnings);
}

void Go_To_Numor(Application& app, int numor) {
    const int index = app.viewer.numors.Index_Of(numor);
    if (index > 0) return Step_To_Run(app, index);
    Show_In_Panel(app);
    app.ask.Error("Searched Numor is not loaded in the list, change the range and re-start reading!");
}

void Go_To_Frame(Application& app, int frame) { Tell_And_Show(app, Show_Frame(app.viewer, frame, Saturation_Of(app))); }

void Switch_Projection(Application& app) {
    Viewer2D& viewer = app.viewer;
    viewer.projection_mode = !viewer.projection_mode;
    const Status status = Plot_Frame(viewer, Saturation_Of(app));
    if (status.failed) viewer.projection_mode = !viewer.projection_mode;
    Tell_And_Show(app, status);
}

// --- reciprocal space ----------------------------------------------------------------------------------------------------------------

void Accept_View(Application& app, View_Axis axis) {
    Viewer2D& viewer = app.viewer;
    if (!viewer.Holds_Run() || !viewer.ub_known) return;
    if (!viewer.recip_mode) return Build(app, {viewer.ub, viewer.ub_inverse}, axis);
    Show_Along(viewer, axis, Saturation_Of(app));
    Show_Viewer(app);
}

void Read_UB_Matrix(Application& app) {
    if (!app.viewer.Holds_Run()) return;
    WindowSelect(viewer_window);
    if (const std::optional<UB_Input> matrix = UB_Dialog(app.viewer)) Build(app, *matrix, View_Axis::l);
}

// --- instruments ---------------------------------------------------------------------------------------------------------------------

namespace {

// On failure the present instrument stays.
Status Take_Instrument_File(Application& app, const std::string& file, Texts& warnings) {
    warnings.clear();
    const std::string path = Absolute_Path(app.session.config, std::string(Trim(file)));
    Status status = Read_Current_Instrm(path, app.instrument, warnings);
    if (status.ok()) app.viewer.instrument_file = path;
    return status;
}

void Show_New_Instrument(Application& app, Texts warnings) {
    const Status status = Take_Instrument(app.viewer, Instrument_Of(app), Saturation_Of(app), warnings);
    Tell_And_Show(app, status, warnings);
}

}  // namespace

void Load_Instrument(Application& app, const std::string& file) {
    if (Trim(file).empty()) return app.ask.Error(" An instrument file should be given!");
    Texts warnings;
    if (const Status status = Take_Instrument_File(app, file, warnings); status.failed) return app.ask.Error(status);
    Show_New_Instrument(app, std::move(warnings));
}

void Choose_Instrument_File(Application& app) {
    WindowSelect(viewer_window);
    const std::string file = Select_Instrument_File(app);
    if (file.empty()) return;
    app.viewer.instrument_file = file;
    Show_In_Panel(app);
}

void Set_Current_Instrument(Application& app) {
    WindowSelect(viewer_window);
    Texts warnings;
    const auto take = [&](const std::string& file) {
        if (!file.empty()) return Take_Instrument_File(app, file, warnings);
        Set_Default_Instrument(app.instrument);
        app.viewer.instrument_file.clear();
        return Status::Done();
    };
    if (Current_Instrument_Dialog(app, take)) Show_New_Instrument(app, std::move(warnings));
}

}  // namespace vntl
