// The panel of the viewer of area detectors: where runs come from, which of their frames is shown, what is told of them, and the view of
// reciprocal space. A number or a directory that is typed counts with ENTER, or when the user goes elsewhere.
#include <algorithm>
#include <array>
#include <utility>

#include "base/text.hpp"
#include "commands/modal.hpp"
#include "instrument/numor_files.hpp"
#include "instrument/read_numor.hpp"
#include "session/load.hpp"
#include "views/viewer_2d.hpp"

namespace vntl {

namespace {

enum Panel_Field {
    instrument_menu = 4501,
    load_button,
    instrument_file,
    browse_instrument,
    data_directory,
    browse_data,
    lowest_numor,
    highest_numor,
    from_numor,
    to_numor,
    read_button,
    numor_shown,
    first_run,
    previous_run,
    next_run,
    last_run,
    first_frame,
    previous_frame,
    frame_shown,
    next_frame,
    last_frame,
    sum_of_frames,
    header_text,
    title_text,
    angles_text,
    wavelength_text,
    scan_text,
    frames_text,
    reflection_text,
    wanted_numor,
    year_menu,
    cycle_menu,
    search_button,
    view_menu,
    accept_view,
    projection_button,
    read_matrix,
    preferences_button
};

constexpr std::array<const char*, 5> instruments = {"R6", "R11", "R17", "R18", "R18_HB"};  // that have area detectors, and readers
constexpr const char* views[] = {"H-View", "K-View", "L-View"};
constexpr const char* nothing_chosen = "----";
constexpr int first_year = 1973, last_cycle = 7, one_century = 100;

// --- showing -----------------------------------------------------------------------------------------------------------------------

void Write(int field, const std::string& text) { text.empty() ? WDialogClearField(field) : WDialogPutString(field, text); }

// A value of the state, which comes back when the user leaves the field.
void Show(Panel_Memory& memory, int field, const std::string& text) {
    std::string& given = memory.given[field];
    if (given == text && (WDialogFocus() == field || WDialogGetString(field) == text)) return;
    given = text;
    Write(field, text);
}

// One that is proposed: what the user makes of it stays, until there is another one.
bool Is_New(Panel_Memory& memory, int field, const std::string& proposed) {
    return std::exchange(memory.given[field], proposed) != proposed;
}
void Propose(Panel_Memory& memory, int field, const std::string& text) {
    if (Is_New(memory, field, text)) Write(field, text);
}
void Propose_Choice(Panel_Memory& memory, int field, std::size_t choice) {
    if (Is_New(memory, field, std::to_string(choice))) WDialogPutOption(field, static_cast<int>(choice) + 1);
}

void Enable(std::initializer_list<int> fields, bool on) {
    for (const int field : fields) WDialogFieldState(field, on ? field_enabled : field_disabled);
}

void Show_Sources(Application& app) {
    const Viewer2D& viewer = app.viewer;
    Panel_Memory& memory = app.panel_memory;
    const std::string current = Reader_Of_Machine(app.instrument.Current_Instrm.name_inst);
    const auto known = std::find(instruments.begin(), instruments.end(), current);
    if (known != instruments.end()) Propose_Choice(memory, instrument_menu, static_cast<std::size_t>(known - instruments.begin()));
    Propose(memory, instrument_file, viewer.instrument_file);
    Propose(memory, data_directory, viewer.directory);
    const bool runs = !viewer.listed.empty();
    const std::string lowest = runs ? std::to_string(viewer.listed.front().numor) : std::string();
    const std::string highest = runs ? std::to_string(viewer.listed.back().numor) : std::string();
    Show(memory, lowest_numor, lowest);
    Show(memory, highest_numor, highest);
    for (const auto& [field, bound] : {std::pair(from_numor, lowest), std::pair(to_numor, highest)})
        if (Is_New(memory, field, viewer.directory + '\n' + bound) && WDialogFocus() != field) Write(field, bound);
    Enable({from_numor, to_numor, read_button}, !viewer.directory.empty() || memory.edited == data_directory);
}

void Show_Place(const Viewer2D& viewer, Panel_Memory& memory) {
    const bool run = viewer.Holds_Run(), steps = run && !viewer.projection_mode;
    const Step_Buttons numors = Numor_Buttons(viewer), frames = Frame_Buttons(viewer);
    WDialogRangeInteger(frame_shown, 1, std::max(1, viewer.Steps()));
    Show(memory, numor_shown, run ? std::to_string(viewer.Run().numor) : std::string());
    Show(memory, frame_shown, run ? std::to_string(viewer.current_frame) : std::string());
    Enable({numor_shown, sum_of_frames, projection_button, read_matrix}, run);
    Enable({frame_shown}, steps);
    Enable({first_run, previous_run}, numors.back);
    Enable({next_run, last_run}, numors.forward);
    Enable({first_frame, previous_frame}, frames.back);
    Enable({next_frame, last_frame}, frames.forward);
    Enable({view_menu, accept_view}, run && viewer.ub_known);
    Propose_Choice(memory, view_menu, static_cast<std::size_t>(viewer.view_axis));
}

void Show_Header(const Viewer2D& viewer, Panel_Memory& memory) {
    const Viewer_Header header = Header_Of(viewer);
    Show(memory, header_text, header.header);
    Show(memory, title_text, header.title);
    Show(memory, angles_text, header.angles);
    Show(memory, wavelength_text, header.wavelength);
    Show(memory, scan_text, header.scan_type);
    Show(memory, frames_text, header.nframes);
    Show(memory, reflection_text, header.reflection);
}

// --- what is asked for -------------------------------------------------------------------------------------------------------------

// The number in a field; where it holds none the field is marked, which a box tells.
std::optional<int> Whole_In_Field(int field, const char* name, int lo, int hi) {
    const std::optional<int> number = WDialogGetInteger(field);
    if (!number)
        Refuse_Field(field, std::string(name) + ": \"" + WDialogGetString(field) + "\" is not a whole number from " + std::to_string(lo) +
                                " to " + std::to_string(hi));
    return number;
}

std::optional<int> Numor_In_Field(int field, const char* name) { return Whole_In_Field(field, name, 0, largest_numor); }

std::string Chosen_Instrument() {
    const auto chosen = static_cast<std::size_t>(std::max(1, WDialogGetMenu(instrument_menu)) - 1);
    return instruments[std::min(chosen, instruments.size() - 1)];
}

void Read_Range(Application& app) {
    const std::optional<int> from = Numor_In_Field(from_numor, "Read Numors from");
    const std::optional<int> to = from ? Numor_In_Field(to_numor, "to") : from;
    if (to) Read_Runs(app, *from, *to);
}

void Search(Application& app) {
    const std::optional<int> numor = Numor_In_Field(wanted_numor, "Numor");
    if (!numor) return;
    const int year = WDialogGetMenu(year_menu) - 2, cycle = WDialogGetMenu(cycle_menu) - 1;  // the first choice is none
    if (year < 0 || cycle < 1) return Error_Box("Please, Select a Year and the Reactor cycle on the respective list!!");
    Search_Run(app, Chosen_Instrument(), *numor, Reactor_Cycle{(first_year + year) % one_century, cycle});
}

void Choose_Instrument(Application& app) {
    app.panel_memory.given.erase(instrument_file);  // the same as before is chosen as well
    Choose_Instrument_File(app);
}

void Press(Application& app, int button) {
    const Viewer2D& viewer = app.viewer;
    switch (button) {
        case load_button:
            return Load_Instrument(app, WDialogGetString(instrument_file));
        case browse_instrument:
            return Choose_Instrument(app);
        case browse_data:
            return Choose_Run_Directory(app);
        case read_button:
            return Read_Range(app);
        case first_run:
            return Step_To_Run(app, 1);
        case previous_run:
            return Step_To_Run(app, viewer.current_numor - 1);
        case next_run:
            return Step_To_Run(app, viewer.current_numor + 1);
        case last_run:
            return Step_To_Run(app, viewer.numors.size());
        case first_frame:
            return Go_To_Frame(app, 1);
        case previous_frame:
            return Go_To_Frame(app, viewer.current_frame - 1);
        case next_frame:
            return Go_To_Frame(app, viewer.current_frame + 1);
        case last_frame:
            return Go_To_Frame(app, viewer.Steps());
        case sum_of_frames:
        case projection_button:
            return Switch_Projection(app);
        case search_button:
            return Search(app);
        case accept_view:
            return Accept_View(app, static_cast<View_Axis>(std::max(1, WDialogGetMenu(view_menu)) - 1));
        case read_matrix:
            return Read_UB_Matrix(app);
        case preferences_button:
            return Edit_Viewer_Preferences(app);
        default:
            return;
    }
}

// --- what is typed -----------------------------------------------------------------------------------------------------------------

void Take_Place(Application& app, int field) {
    if (field == numor_shown) {
        const std::optional<int> numor = Numor_In_Field(field, "Numor shown");
        if (numor && *numor != app.viewer.Run().numor) Go_To_Numor(app, *numor);
    } else {
        const std::optional<int> frame = Whole_In_Field(field, "Frame shown", 1, app.viewer.Steps());
        if (frame && *frame != app.viewer.current_frame) Go_To_Frame(app, *frame);
    }
}

bool Is_Place(int field) { return field == numor_shown || field == frame_shown; }

std::string Typed_Directory(const Application& app) {
    const std::string directory(Trim(WDialogGetString(data_directory)));
    return directory.empty() ? directory : Absolute_Path(app.session.config, directory);
}

void List_Typed_Directory(Application& app) {
    if (const std::string directory = Typed_Directory(app); !directory.empty()) List_Run_Directory(app, directory);
}

// On the way to the button that chooses one what is no directory yet is left alone.
bool Is_Typed_Directory(const Application& app) {
    const std::string directory = Typed_Directory(app);
    return !directory.empty() && Directory_Is_There(directory).value_or(false);
}

void Enter(Application& app, int field) {
    app.panel_memory.edited = 0;
    if (Is_Place(field) && app.viewer.Holds_Run()) return Take_Place(app, field);
    switch (field) {
        case instrument_file:
            return Press(app, load_button);
        case data_directory:
            return List_Typed_Directory(app);
        case from_numor:
        case to_numor:
            return Press(app, read_button);
        case wanted_numor:
            return Press(app, search_button);
        default:
            return;
    }
}

// What is no number gives way to the present one, and nothing is asked twice.
void Leave(Application& app, int field, int entered) {
    if (std::exchange(app.panel_memory.edited, 0) != field) return;
    if (field == data_directory && (entered != browse_data || Is_Typed_Directory(app))) return List_Typed_Directory(app);
    if (Is_Place(field) && app.viewer.Holds_Run() && WDialogGetInteger(field)) Take_Place(app, field);
}

void Note_Change(Application& app, const WIN_MESSAGE& record) {
    if (record.value1 == record.value2)
        app.panel_memory.edited = record.value1;
    else
        Leave(app, record.value1, record.value2);
}

// --- the resource ------------------------------------------------------------------------------------------------------------------

using Row = std::vector<Dialog_Field>;

Dialog_Field Button(int field, const char* label) { return {field, Field_Kind::push_button, label}; }
Dialog_Field Text(int field, const char* label, bool unseen = false) {
    return {.number = field, .kind = Field_Kind::string, .label = label, .width = 8, .unseen_label = unseen};
}
Dialog_Field Long_Text(int field, const char* label) {
    return {.number = field, .kind = Field_Kind::string, .label = label, .width = 8, .label_above = true};
}
Dialog_Field Number(int field, const char* label, bool unseen = false) {
    const int width = unseen && field == frame_shown ? 4 : 6;
    return {
        .number = field, .kind = Field_Kind::integer, .label = label, .width = width, .lo = 0, .hi = largest_numor, .unseen_label = unseen};
}
template <class Choices>
Dialog_Field Menu(int field, const char* label, const Choices& choices, bool unseen = false) {
    return {.number = field, .kind = Field_Kind::menu, .label = label, .choices = {choices.begin(), choices.end()}, .unseen_label = unseen};
}

Row Group(const char* title, std::vector<Row> rows) {
    return {{.kind = Field_Kind::frame, .label = title, .pages = {{.rows = std::move(rows)}}}};
}

std::vector<std::string> Years() {
    const int years = (Present_Year() - first_year % one_century + one_century) % one_century;
    std::vector<std::string> choices = {nothing_chosen};
    for (int year = first_year; year <= first_year + years; ++year) choices.push_back(std::to_string(year));
    return choices;
}

std::vector<std::string> Cycles() {
    std::vector<std::string> choices = {nothing_chosen};
    for (int cycle = 1; cycle <= last_cycle; ++cycle) choices.push_back(std::to_string(cycle));
    return choices;
}

}  // namespace

Dialog_Resource Viewer_Panel_Resource() {
    Dialog_Resource resource{viewer_panel, "Graphics in 2D", {}, true};
    resource.rows = {
        Group("Instrument Selection", {{Menu(instrument_menu, "Instrument", instruments, true)},
                                       {Button(load_button, "Load instrument settings")},
                                       {Text(instrument_file, "Instrument file", true), Button(browse_instrument, "...")}}),
        Group("Data Directory", {{Text(data_directory, "Directory", true), Button(browse_data, "...")},
                                 {Text(lowest_numor, "Numor initial:")},
                                 {Text(highest_numor, "Numor final:")}}),
        Group("Numor Information", {{Number(from_numor, "Read Numors from:")}, {Number(to_numor, "to:"), Button(read_button, "Read")}}),
        Group("Display Numor",
              {{Number(numor_shown, "Numor shown", true)},
               {Button(first_run, "First"), Button(previous_run, "Previous"), Button(next_run, "Next"), Button(last_run, "Last")}}),
        Group("Display Frames", {{Button(first_frame, "<<"), Button(previous_frame, "<"), Number(frame_shown, "Frame shown", true),
                                  Button(next_frame, ">"), Button(last_frame, ">>"), Button(sum_of_frames, "^")}}),
        Group("", {{Long_Text(header_text, "Header:")},
                   {Long_Text(title_text, "Title:")},
                   {Long_Text(angles_text, "Angles:")},
                   {Text(wavelength_text, "Wavelength:")},
                   {Text(scan_text, "Scan Type:")},
                   {Text(frames_text, "N. Frames:")},
                   {Long_Text(reflection_text, "Reflection:")}}),
        Group("Searching by Numor (KVR)", {{Number(wanted_numor, "Numor:")},
                                           {Menu(year_menu, "Year:", Years()), Menu(cycle_menu, "Cycle:", Cycles())},
                                           {Button(search_button, "Search")}}),
        Group("Reciprocal space", {{Menu(view_menu, "View", std::vector<std::string>(std::begin(views), std::end(views)), true),
                                    Button(accept_view, "Accept View")},
                                   {Button(projection_button, "Projection"), Button(read_matrix, "Read UB-matrix")}}),
        {Button(preferences_button, "Preferences")}};
    return resource;
}

void Open_Panel(Application& app) {
    app.panel_memory = {};
    WDialogLoad(viewer_panel);
    for (const int field :
         {lowest_numor, highest_numor, header_text, title_text, angles_text, wavelength_text, scan_text, frames_text, reflection_text})
        WDialogFieldState(field, field_read_only);
    for (const int menu : {instrument_menu, year_menu, cycle_menu}) WDialogPutOption(menu, 1);
    WDialogShow(0, Show_Kind::panel);
    WMessageEnable(viewer_panel, Message_Kind::field_changed, true);
    Show_In_Panel(app);
}

void Show_In_Panel(Application& app) {
    if (!WDialogLoaded(viewer_panel)) return;
    WDialogSelect(viewer_panel);
    Show_Sources(app);
    Show_Place(app.viewer, app.panel_memory);
    Show_Header(app.viewer, app.panel_memory);
}

void Handle_Panel(Application& app, const Message& message) {
    if (!WDialogLoaded(viewer_panel)) return;
    WindowSelect(viewer_window);
    WDialogSelect(viewer_panel);
    switch (message.kind) {
        case Message_Kind::push_button:
            Press(app, message.record.value1);
            break;
        case Message_Kind::key_down:
            Enter(app, message.record.value2);
            break;
        case Message_Kind::field_changed:
            Note_Change(app, message.record);
            break;
        default:
            return;
    }
    Show_In_Panel(app);
}

}  // namespace vntl
