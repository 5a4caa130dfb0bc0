// Generic graphics: a window of its own that draws tables of curves and results of sequential refinements. It holds the others back.
#include <functional>
#include <optional>

#include "base/os.hpp"
#include "base/text.hpp"
#include "charts/read_gdf.hpp"
#include "commands/application.hpp"
#include "commands/file/export_picture.hpp"
#include "commands/file/hardcopy_options.hpp"
#include "commands/file/save_graphic.hpp"
#include "commands/modal.hpp"
#include "commands/options/preferences_dialog.hpp"
#include "commands/select_files.hpp"
#include "plot/generic_plot.hpp"
#include "plot/plot.hpp"
#include "session/desk/own_settings.hpp"
#include "toolkit/window_service.hpp"
#include "views/menu_entries.hpp"
#include "views/seq_dialog.hpp"
#include "views/views.hpp"

namespace vntl {

namespace {

constexpr const char* generic_title = "Generic Graphics on Vantrelo";
constexpr int generic_width = 1000, generic_height = 600, generic_toolbar = 30107;
constexpr int width_info = 1, height_info = 2;
constexpr std::string_view data_files = "Generic Data Files|*.gdf;*.seq|", picture_files = "Graphic Plot File|*.ps; *.emf|",
                           gdf_extension = ".gdf", seq_extension = ".seq";

const std::vector<Menu_Entry>& Menu() {
    using namespace command;
    static const std::vector<Menu_Entry> bar = {
        Popup("&File",
              {Entry(generic_open, "&Open ...", "Draw a table of curves or the results of a sequential refinement", "Ctrl+O", "open"),
               Entry(generic_reload, "&Reload", "Read the present file again", "F5", "reload"),
               Entry(generic_close, "&Close", "Clear the window", "Ctrl+W", "close"),
               {},
               Entry(generic_print, "&Print", "Print the plot", "Ctrl+P", "print"),
               Popup("&Export Graphics as...",
                     {Entry(generic_export_ps, "&PostScript File (.ps)", "Save the plot as PostScript"),
                      Entry(generic_export_emf, "&Enhanced Windows Metafile (.emf)", "Save the plot as a metafile")}),
               {},
               Entry(generic_exit, "E&xit", "Close this window", "Ctrl+Q", "exit")}),
        Popup("&Options", {Entry(generic_preferences, "&Preferences", "Colours, styles and texts of plots", {}, "preferences")})};
    return bar;
}

// --- the picture -------------------------------------------------------------------------------------------------------------------

void Draw(const Application& app, Device& device) {
    if (app.generic.curves.empty())
        Draw_Generic_Welcome(app.session.config, device);
    else
        Draw_Generic_Plot(app.generic, Settings_On_White(app.session), device);
}

void Generic_Redraw(const Application& app) {
    WindowSelect(generic_window);
    Bitmap bitmap(WInfoWindow(width_info), WInfoWindow(height_info));
    Draw(app, bitmap.Drawing());
    WBitmapPut(std::move(bitmap));
    WindowOutStatusBar(1, app.generic.file_name);
}

// --- files -------------------------------------------------------------------------------------------------------------------------

bool Is_Seq(const std::string& file) { return Equal_No_Case(Extension_Of(file), seq_extension); }
bool Is_Gdf(const std::string& file) { return Equal_No_Case(Extension_Of(file), gdf_extension); }

// Reads the file where that is not held already, and asks what of it is drawn.
Status Read_Seq(Application& app, bool fresh, Generic_Plots& plots) {
    Seq_File read;
    if (fresh) {
        if (const Status status = read.Read(plots.file_name); status.failed) return status;
        if (Trim(plots.title).empty()) plots.title = read.title();
    }
    WindowSelect(generic_window);
    if (!Seq_Dialog(fresh ? read : app.generic_source, plots)) return Status::Cancel();
    if (fresh) app.generic_source = std::move(read);
    return Status::Done();
}

// `plots` begins with the texts that the file may replace. A file that cannot be read leaves no curves, so that no plot is taken for its
// own; its name stays, to be read again when it has been mended.
void Read_And_Show(Application& app, bool fresh, Generic_Plots plots) {
    const bool sequential = Is_Seq(plots.file_name);
    const Status status = sequential ? Read_Seq(app, fresh, plots) : Read_GDF(plots.file_name, plots);
    if (status.cancelled) return;
    if (status.failed || !sequential) app.generic_source = {};
    app.generic = std::move(plots);
    Generic_Redraw(app);
    if (status.failed) app.ask.Error(status);
}

void Open_File(Application& app, const std::string& file) {
    if (!Is_Gdf(file) && !Is_Seq(file))
        return app.ask.Error(Status::Fail_File("Incompatible format for Graphics representation!\n" + file));
    Generic_Plots plots;
    plots.plot_kind = app.generic.plot_kind;
    plots.file_name = file;
    Read_And_Show(app, true, std::move(plots));
}

void Open(Application& app) {
    const auto chosen = Select_Files(app.session.config, Select_Kind::open, data_files, "Generic Data Files");
    if (!chosen.empty()) Open_File(app, chosen.front());
}

// Lines of a sequential refinement that are held already are not read again.
void Reload(Application& app) {
    if (Trim(app.generic.file_name).empty()) return Open(app);
    Read_And_Show(app, app.generic_source.empty(), app.generic);
}

void Forget(Application& app) {
    app.generic = {};
    app.generic_source = {};
}

void Close(Application& app) {
    Forget(app);
    Generic_Redraw(app);
}

// --- pictures in files -------------------------------------------------------------------------------------------------------------

void Generic_Export(Application& app, Hardcopy_Driver driver) {
    Save_Form form = Hardcopy_Form(driver);
    form.selector_title = "Export Graphics Files";
    form.filter = picture_files;
    form.takes_place = true;
    const std::string file = Name_To_Save(app.session.config, app.ask, form);
    if (file.empty()) return;
    WindowSelect(generic_window);
    const auto draw = [&app](Device& device) { Draw(app, device); };
    if (const Status status = Export_Picture(draw, file, Size_Of_Window()); status.failed) app.ask.Error(status);
}

// --- the window --------------------------------------------------------------------------------------------------------------------

void Edit_Preferences(Application& app) {
    WindowSelect(generic_window);
    Preferences_Main(app.session, app.ask);
    Generic_Redraw(app);
}

void Do_Command(Application& app, int command) {
    switch (command) {
        case command::generic_open:
            return Open(app);
        case command::generic_reload:
            return Reload(app);
        case command::generic_close:
            return Close(app);
        case command::generic_print:
            Tell(app, Print_Window(app.session.config, app.ask, generic_window, false));
            return;
        case command::generic_export_ps:
            return Generic_Export(app, Hardcopy_Driver::postscript);
        case command::generic_export_emf:
            return Generic_Export(app, Hardcopy_Driver::metafile);
        case command::generic_exit:
            return WindowCloseChild(generic_window);
        case command::generic_preferences:
            return Edit_Preferences(app);
        default:
            return;
    }
}

void Serve(Application& app, const Message& message) {
    if (!WindowIsOpen(generic_window)) return;
    WindowSelect(generic_window);
    switch (message.kind) {
        case Message_Kind::command:
            return Do_Command(app, message.record.value1);
        case Message_Kind::repaint:
        case Message_Kind::resize:
            return Generic_Redraw(app);
        case Message_Kind::close_request:
            return WindowCloseChild(generic_window);
        default:
            return;
    }
}

// Opens the window, does what is to be done first in it, and serves it until it is closed.
void Generic_Graphics(Application& app, const std::function<void()>& begin) {
    Forget(app);
    WindowOpenChild(generic_window, generic_title, generic_width, generic_height, Child_Kind::plot, true);
    WMenu(Menu());
    WMenuToolbar(generic_toolbar, first_toolbar_row);
    WindowStatusBarParts(std::array{-1});
    WindowShow();
    Generic_Redraw(app);
    if (begin) begin();
    Run_Window(generic_window, app.leaving);
    Forget(app);
    WindowSelect(main_window);
}

// Where a plot cannot be made from scratch it is drawn as it was.
void Show_Graphs(Application& app) {
    Generic_Graphics(app, {});
    if (app.leaving) return;
    const Plot_State& plot = app.session.plot;
    const bool as_it_was = plot.plot_type == Plot_Form::calculation || plot.Is_Map() || plot.In_Space();
    as_it_was ? Plot_Redraw(app.session) : Plot_ReMake(app.session);
}

void Show_Sequential_Results(Application& app) {
    Generic_Graphics(app, [&app] { Open(app); });
}

constexpr Command commands[] = {
    {command::generic_graphs, "Vantrelo Generic Graphs", "graphs", Show_Graphs, "", "Draw columns of numbers as graphs"},
    {command::sequential_results, "View result of sequential refinements", "sequential", Show_Sequential_Results, "",
     "Draw the results of sequential refinements"},
};

std::vector<Dialog_Resource> Dialogs() { return {Seq_Dialog_Resource()}; }

}  // namespace

Command_Family Generic_Graphics_Commands() { return {commands, Dialogs}; }

void Register_Generic_Graphics(Application& app) {
    Register_Window(generic_window, {.message = [&app](const Message& message) { Serve(app, message); },
                                     .picture = [&app](Device& device) { Draw(app, device); }});
}

void Show_Generic_File(Application& app, const std::string& file) {
    if (WindowIsOpen(generic_window)) return Open_File(app, file);
    Generic_Graphics(app, [&app, &file] { Open_File(app, file); });
}

}  // namespace vntl
