#include "app/startup.hpp"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <optional>

#include "app/carry_list.hpp"
#include "app/command_table.hpp"
#include "app/main_window.hpp"
#include "app/recorder.hpp"
#include "app/script.hpp"
#include "base/os.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "commands/file/export_picture.hpp"
#include "commands/file/opened.hpp"
#include "plot/plot.hpp"
#include "session/desk/picture_names.hpp"
#include "session/file_kinds.hpp"
#include "session/load.hpp"
#include "session/ranges.hpp"
#include "session/settings_file.hpp"
#include "toolkit/desktop.hpp"
#include "views/views.hpp"

namespace vntl {

namespace {

constexpr std::array<int, status_parts> status_widths = {4500, 1500, 1500, 1500, -1};
constexpr std::string_view preferences_title = "Loading preferences file";

// Nothing waits for an answer: boxes go to standard error and take their default button.
class Ask_Nobody : public Ask {
public:
    explicit Ask_Nobody(std::optional<int> format_code) : format_code_(format_code) {}
    Box_Answer Box(const Message_Box& box) override {
        std::cerr << box.title << ": " << box.text << std::endl;
        return Box_Default(box);
    }
    std::vector<std::string> Select_Files(std::string_view, std::string_view) override { return {}; }
    std::optional<Format_Choice> Data_Format(const Format_Question& question) override {
        return Format_Choice{format_code_.value_or(question.proposed), false};
    }

private:
    std::optional<int> format_code_;
};

// Reads the settings file; the box that is to tell of it, if any. A suite's directory that is none gives way to the environment's, and one
// that the file alone knows is searched then.
std::optional<Message_Box> Load_Settings(Session& session) {
    std::string& suite = session.prefs.environment.quendrix_dir;
    const auto box = [](std::string text, bool of_file) {
        return Message_Box{Box_Buttons::ok, Box_Icon::information, 1, std::move(text), std::string(preferences_title), of_file};
    };
    const std::string file = Find_Preferences_File(session.config, suite), of_environment = suite;
    if (file.empty())
        return box(
            "WARNING: No preferences file.\nDefault preferences will be used\nGo to <Options> menu, click on <Preferences>\n"
            "and then on <Save global preferences>",
            false);
    if (const Status status = Read_Preferences(session.prefs, file, &session.look); status.failed) {
        Set_Default_Preferences(session.prefs);
        return box("ERROR: loading preferences file.\n" + status.message + "\nDefault preferences will be used", true);
    }
    if (!IOsDirExists(suite))
        suite = of_environment;
    else if (of_environment.empty())
        Search_Directories(session.config, suite);
    return {};
}

struct Configured {
    bool failed = false;                        // a fault that ends the program
    std::optional<Message_Box> about_settings;  // to be told when the window is open
};

// Identity, system, directories and preferences.
Configured Configure(Session& session, Ask& ask) {
    const Status status = Init_Configure(session.config, InfoOpSystem(1), InfoOpSystem(19));
    if (status.failed) {
        ask.Box({Box_Buttons::ok, Box_Icon::stop, 1, status.message, session.config.program_name});
        return {true, {}};
    }
    Environment_Prefs& environment = session.prefs.environment;
    Set_Programs_Of_System(session.config, environment);
    session.config.launch_dir = IOsDirName();
    Search_Directories(session.config, environment.quendrix_dir);
    Set_Default_Preferences(session.prefs);
    Configured configured{false, Load_Settings(session)};
    Read_Select_Directory(session.config);
    return configured;
}

bool Is_Of_Program(const std::string& style) {
    const auto& names = Style_Names();
    return std::find(names.begin(), names.end(), Style_Name(style)) != names.end();
}

// The style that the command line asks for; nothing when it asks for none. A relative path is taken from where the program was started.
Status Use_Asked_Style(Session& session, const Start_Options& line) {
    if (line.style.empty()) return Status::Done();
    return Use_Style(session, Is_Of_Program(line.style) ? line.style : In_Directory(session.config.launch_dir, line.style));
}

// The asked one, or the one that was chosen last. A file of the user's that cannot be read any more leaves the preferences as they are.
Status Start_In_Style(Session& session, const Start_Options& line) {
    session.interface.Check(command::series_by_temperature, session.desk.series_by_temperature);
    if (!line.style.empty()) return Use_Asked_Style(session, line);
    return session.desk.style.empty() ? Status::Done() : Use_Style(session, session.desk.style);
}

bool Dark_Would_Suit(const Session& session) {
    const bool never_chosen = session.desk.style.empty() && session.style.name == default_style;
    return never_chosen && Desktop_Is_Dark();
}

// Draws files to a picture; what fails is told, and false.
bool Export_Files(Session& session, Ask& ask, const Start_Options& line, const std::vector<std::string>& files,
                  const std::string& picture) {
    Reset_Profiles(session);
    const Open_Result opened = Open_Files(session, ask, files, line.format_code);
    if (session.store.nperfiles() == 0) return false;
    Plot_Ranges(session);
    if (line.each) IOsDirMake(std::string(Directory_Part(picture)));
    const auto draw = [&session](Device& device) { Draw_With_Marks(Scene_Of(session), device); };
    const Status status = Export_Picture(draw, picture, line.export_size);
    if (status.failed) std::cerr << status.message << std::endl;
    return !opened.failed && !status.failed;
}

// A picture of each file: nothing of one reaches the next.
bool Export_Each(const Session& session, Ask& ask, const Start_Options& line) {
    if (const Status status = Check_Picture_Name(line.export_file); status.failed) {
        std::cerr << status.message << std::endl;
        return false;
    }
    Picture_Names names(line.export_file);
    bool good = true;
    for (const std::string& file : line.files) {
        Session own = session;
        good &= Export_Files(own, ask, line, {file}, names.Of(file));
    }
    return good;
}

int Export(const Start_Options& line) {
    Session session;
    Ask_Nobody ask(line.format_code);
    const Configured configured = Configure(session, ask);
    if (configured.failed) return 1;
    const bool bad_settings = configured.about_settings && configured.about_settings->of_file;
    if (bad_settings) ask.Box(*configured.about_settings);
    IOsDirChange(session.config.launch_dir);
    if (const Status status = Use_Asked_Style(session, line); status.failed) {
        std::cerr << "vantrelo: " << status.message << std::endl;
        return 2;
    }
    const bool good = line.each ? Export_Each(session, ask, line) : Export_Files(session, ask, line, line.files, line.export_file);
    return good && !bad_settings ? 0 : 1;
}

// A dimension of the window: one that is not given, or no whole number, is the preferences'.
int Dimension(const std::optional<std::string>& text, int from_preferences) {
    int value = 0;
    return text && Parse_Integer(*text, value) && value > 0 ? std::min(value, largest_window_side) : from_preferences;
}

void Open_Main_Window(Application& app, const Start_Options& line) {
    const Window_Prefs& prefs = app.session.prefs.window;
    WindowOpen(Dimension(line.width, prefs.win_width), Dimension(line.height, prefs.win_height), app.session.config.Window_Title(),
               "vantrelo");
    WindowStatusBarParts(status_widths);
    WMenu(Menu_Bar());
    Register_Toolbars(Toolbars());
}

// One file, by its extension alone.
void Open_Start_File(Application& app, const std::string& name) {
    Session& session = app.session;
    const File_Kind_Row* kind = Starts_With(name);
    if (kind == nullptr) {
        app.failed = true;
        app.ask.Box({Box_Buttons::ok, Box_Icon::exclamation, 1, "ERROR: Unkown Data File format", session.config.program_name});
        return;
    }
    if (kind->open == nullptr)  // its window opens from the loop of messages
        Post_Message({Message_Kind::files_dropped, {.files = {In_Directory(session.config.launch_dir, name)}}});
    else
        Show_Opened(app, kind->open(session, app.ask, name));
}

void Open_Start_Files(Application& app, const Start_Options& line) {
    if (line.files.empty()) return;
    IOsDirChange(app.session.config.launch_dir);
    if (line.files.size() == 1)
        Open_Start_File(app, line.files.front());
    else
        Open_Dropped_Files(app, line.files);
}

void Start(Application& app, const Start_Options& line, const std::optional<Message_Box>& about_settings, Recorder* recorder) {
    Session& session = app.session;
    Open_Main_Window(app, line);
    session.recent.Read(session.config.Recent_Files_Path());
    MRU_Show(session);
    Reset_Profiles(session);
    Set_Menu_Empty(session);
    Carry_List(app);
    Carry_To_Window(app);
    WindowShow();
    Plot_Redraw(session);
    if (about_settings) app.ask.Box(*about_settings);
    if (recorder != nullptr) recorder->Begin(line.files);
    Open_Start_Files(app, line);
}

// Every window of the program, open or not.
void Register_Windows(Application& app) {
    Register_Main_Window(app);
    Register_Text_Editor(app);
    Register_Quick_View(app);
    Register_Generic_Graphics(app);
    Register_Model_3D(app);
    Register_Viewer_2D(app);
}

int Run_Window(const Start_Options& line, const std::optional<std::string>& script) {
    Application app;
    for (const Command_Family& family : Families())
        if (family.dialogs != nullptr) Register_Dialogs(family.dialogs());
    Register_Windows(app);
    std::optional<Script_Runner> runner;
    if (script) {
        app.session.config.files_allowed = false;
        runner.emplace(app, *script, std::cout, std::cerr);
    }
    const Configured configured = Configure(app.session, app.ask);
    if (configured.failed) return 1;
    Read_Desk(app.session.desk, Desk_File(app.session.config, app.session.prefs.environment));
    std::optional<Recorder> recorder;
    if (!line.record.empty()) {
        recorder.emplace(app);
        if (const Status status = recorder->Open(In_Directory(app.session.config.launch_dir, line.record)); status.failed) {
            std::cerr << "vantrelo: " << status.message << std::endl;
            return 2;
        }
        if (runner) runner->Record_To(*recorder);
    }
    const Status styled = Start_In_Style(app.session, line);
    Start(app, line, configured.about_settings, recorder ? &*recorder : nullptr);
    if (styled.failed) app.session.interface.Passing_Text(styled.message);
    if (!script && Dark_Would_Suit(app.session))
        app.session.interface.Passing_Text("The style Dark suits a dark desktop: menu Plot, Style");
    Message_Loop(app);
    const bool failed = script && (app.failed || runner->failed());
    return failed || (recorder && recorder->failed()) ? 1 : 0;
}

// The text of a script file, or of standard input for "-".
std::optional<std::string> Read_Script(const std::string& name) {
    const auto all_of = [](std::istream& stream) { return std::string(std::istreambuf_iterator<char>(stream), {}); };
    if (name == "-") return all_of(std::cin);
    Text_File file;
    if (file.Open(name, max_script_size).failed) return {};
    return std::string(file.Text());
}

}  // namespace

int Run_Program(const Start_Options& line, int& argc, char** argv) {
    const auto refuse = [](int status, const std::string& why) {
        std::cerr << "vantrelo: " << why << std::endl;
        return status;
    };
    if (!line.record.empty()) {
        std::vector<std::string> sources = line.files;
        sources.push_back(line.script);
        if (const Status status = May_Record(line.record, sources); status.failed) return refuse(2, status.message);
    }
    std::optional<std::string> script;
    if (!line.script.empty()) {
        script = Read_Script(line.script);
        if (!script) return refuse(2, "the script " + line.script + " cannot be read");
    }
    if (!line.style.empty()) {
        Preferences tried;
        Look look;
        if (const Status status = Load_Style(line.style, tried, look); status.failed) return refuse(2, status.message);
    }
    const bool exporting = !line.export_file.empty();
    if (!WInitialise(argc, argv, exporting || script.has_value()))
        return refuse(1, "no display answers; --script and --export work without one");
    int status = exporting ? Export(line) : Run_Window(line, script);
    WTerminate();
    if (!std::cout.flush()) status = refuse(std::max(status, 1), "standard output cannot be written");
    return status;
}

}  // namespace vntl
