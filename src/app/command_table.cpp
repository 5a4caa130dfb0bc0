#include "app/command_table.hpp"

#include "app/actions.hpp"
#include "base/text.hpp"

namespace vntl {

namespace {

// Popup menus with a number are commands too: enabled and checked, with nothing of their own to do.
void Open_Popup(Application&) {}

constexpr Command commands[] = {
    {40014, "Open Pattern file (*.dat)", "open", Command_Open_Pattern, "Ctrl+O", "Open measured patterns"},
    {40016, "Open Rietveld/Profile file (*.prf)", "open_prf", Command_Open_Prf, "", "Open profile files of a Rietveld refinement"},
    {40015, "Open Buffer file (*.buf)", "open_buffer", nullptr, "", "Open several patterns kept in one buffer file"},
    {40157, "Open Raw Data file (3t2, g44)", "open_raw", nullptr, "", "Open raw data of the powder diffractometers 3T2 and G4.4"},
    {40212, "Open Numor File (KVR)", "open_numor", nullptr, "", "Open neutron data by their run numbers"},
    {40211, "Open KVR Instrument + Numors", "", nullptr, "", "Open a description of an instrument, then runs of it"},
    {40210, "View Header Numor...", "", nullptr, "", "Show the header of a run"},
    {40208, "Free Format File (.dat)", "save", nullptr, "", "Write a profile as counts in free format"},
    {40209, "XY / XYS Data File (.xys)", "", nullptr, "", "Write a profile as columns of x, y and sigma"},
    {40009, "Save Buffer file...", "", nullptr, "", "Write all profiles into one buffer file"},
    {40044, "Save Graphic into file...", "save_picture", Command_Export, "Ctrl+E", "Write the picture as PNG, SVG, PDF or PostScript"},
    {40122, "Print...", "print", nullptr, "", "Print the picture"},
    {40019, "Reset", "reset", Command_Reset, "Ctrl+R", "Forget all profiles and start anew"},
    {40038, "1. <Empty>", "", Command_Recent<1>, "Alt+1", "Open this file again"},
    {40067, "2. <Empty>", "", Command_Recent<2>, "Alt+2", "Open this file again"},
    {40068, "3. <Empty>", "", Command_Recent<3>, "Alt+3", "Open this file again"},
    {40069, "4. <Empty>", "", Command_Recent<4>, "Alt+4", "Open this file again"},
    {40070, "5. <Empty>", "", Command_Recent<5>, "Alt+5", "Open this file again"},
    {40005, "E&xit", "exit", Command_Exit, "Ctrl+Q", "Leave the program"},

    {40501, "&Copy picture", "copy_picture", Command_Copy_Picture, "Ctrl+C", "Copy the picture to the clipboard"},
    {40502, "Copy &points as text", "copy_text", Command_Copy_Data, "Ctrl+Shift+C", "Copy the points in view to the clipboard, in columns"},

    {40023, "Show", "show", Command_Show, "", "Choose which profiles are shown"},
    {40025, "Sorting", "sort", nullptr, "", "Change the order of the profiles"},
    {40158, "Playing", "play", nullptr, "", "Show one profile after another"},
    {40102, "Copy profile", "copy_profile", nullptr, "", "Add a copy of a profile"},
    {40037, "Delete", "delete", nullptr, "", "Take profiles out of the list"},
    {40026, "Normalize(Monitor)", "normalise", nullptr, "", "Bring the profiles to one monitor"},
    {40141, "Shift", "shift", nullptr, "", "Set the profiles apart by a constant step"},
    {40149, "Offset/Align", "offset", Command_Offset_Align, "", "Move profiles by an offset, or to a common point"},
    {40115, "Scaling Y", "scale_y", Command_Scaling_Y, "", "Multiply the intensities of profiles"},
    {40124, "Scaling X", "scale_x", Command_Scaling_X, "", "Multiply the x of profiles"},
    {40110, "Select excluded regions", "exclude", Command_Select_Excluded, "", "Mark a region that is left out, with the mouse"},
    {40151, "Insert excluded regions", "", Command_Insert_Excluded, "", "Enter the limits of a region that is left out"},
    {40034, "Admin excluded regions", "exclude_admin", Command_Admin_Excluded, "", "Look through the regions that are left out"},

    {40006, "&X space", "", Open_Popup, "", ""},
    {40042, "2theta", "", Command_To_2theta, "", "Show the profiles over the scattering angle", true},
    {40043, "Time (TOF)", "", Command_To_Tof, "", "Show the profiles over the time of flight", true},
    {40017, "d-space", "", Command_To_D, "", "Show the profiles over the spacing d", true},
    {40089, "Q-space", "", Command_To_Q, "", "Show the profiles over Q = 2 pi / d", true},
    {40081, "s-space", "", Command_To_S, "", "Show the profiles over s = 1 / d", true},
    {40087, "Change wavelength", "", Command_Change_Wavelength, "", "Enter another wavelength for profiles"},
    {40088, "Change ddt1/dtt2", "", Command_Change_Dtt, "", "Enter other constants of the time of flight for profiles"},

    {40100, "Summation", "sum", Command_Sum, "", "Add profiles to one"},
    {40123, "Average", "average", Command_Average, "", "The mean of profiles"},
    {40101, "Difference", "difference", Command_Difference, "", "The difference of two profiles"},
    {40162, "Multiply Y / Shift X / Normalize", "multiply", Command_Multiply, "", "Multiply intensities, shift x, or normalize"},
    {40163, "Apply Eff. Corr.", "", Command_Efficiency, "", "Divide by the efficiency of the detectors"},
    {40035, "Smoothing", "", Open_Popup, "", ""},
    {40020, "Fourier filtering", "smooth", Command_Smooth_Fourier, "", "Smooth by leaving out high frequencies"},
    {40090, "Polynomial filtering", "", Command_Smooth_Polynomial, "", "Smooth by polynomials"},
    {40091, "Peak detection", "", Open_Popup, "", "", true},
    {40096, "Enable", "peaks", Command_Peaks_On, "", "Work on the list of peaks"},
    {40097, "Disabled", "", Command_Peaks_Off, "", "Leave the list of peaks"},
    {40092, "Auto detection", "", Command_Search_Peaks, "", "Find the peaks"},
    {40180, "Satellites detection", "", Command_Search_Satellites, "", "Find the peaks that a refinement does not explain"},
    {40093, "Insert peak", "", Command_Insert_Peak, "", "A click adds a peak"},
    {40094, "Delete peak", "", Command_Delete_Peak, "", "A click takes a peak away"},
    {40147, "Clear all", "", Command_Clear_Peaks, "", "Empty the list of peaks"},
    {40008, "Save peaks", "", Open_Popup, "", ""},
    {40010, "Free Format", "", nullptr, "", "Write the peaks as a plain list"},
    {40098, "Dicvol Format", "", nullptr, "", "Write the peaks for Dicvol"},
    {40191, "Treor Format", "", nullptr, "", "Write the peaks for Treor"},
    {40160, "Ito Format", "", nullptr, "", "Write the peaks for Ito"},
    {40177, "Vecfind Format", "", nullptr, "", "Write the peaks for Vecfind"},
    {40120, "Background", "", Open_Popup, "", "", true},
    {40138, "Enable", "background", Command_Background_On, "", "Work on the list of background points"},
    {40139, "Disabled", "", Command_Background_Off, "", "Leave the list of background points"},
    {40159, "Auto detection", "", Command_Search_Background, "", "Find background points"},
    {40144, "Insert point", "", Command_Insert_Background, "", "A click adds a background point"},
    {40145, "Delete point", "", Command_Delete_Background, "", "A click takes a background point away"},
    {40148, "Clear all", "", Command_Clear_Background, "", "Empty the list of background points"},
    {40002, "Save background", "", nullptr, "", "Write the background points"},
    {40024, "Profile fitting", "", Open_Popup, "", "", true},
    {40095, "Enable", "fit", Command_Fit_On, "", "Fit peaks in a range that is chosen with the mouse"},
    {40099, "Disabled", "", Command_Fit_Off, "", "Leave the fit"},
    {40194, "Auto detection", "", nullptr, "", "Take the peaks of the list into the fit", true},
    {40150, "Start/Repeat Refinement", "", nullptr, "", "Run the fit, or run it again"},
    {40146, "Clear all", "", nullptr, "", "Forget the peaks of the fit"},
    {40224, "Load PIK/NEW file", "", nullptr, "", "Read the peaks of a fit from a file"},
    {40225, "Edit PIK-file", "", nullptr, "", "Change the file of a fit in the text editor"},

    {40154, "HKL Gen", "hkl", nullptr, "", "Show the reflections of a cell and space group"},
    {40215, "Spectral Lines", "", Open_Popup, "", "", true},
    {40220, "Enable", "spectral_lines", Command_Lines_On, "", "Show where the other lines of the tube fall"},
    {40221, "Disabled", "", Command_Lines_Off, "", "Show no lines of the tube"},
    {40216, "K-alpha1", "", Command_Toggle_Line<0>, "", "Show K-alpha1", true},
    {40217, "K-alpha2", "", Command_Toggle_Line<1>, "", "Show K-alpha2", true},
    {40218, "K-beta", "", Command_Toggle_Line<2>, "", "Show K-beta", true},
    {40219, "L-alpha1 (W)", "", Command_Toggle_Line<3>, "", "Show L-alpha1 of tungsten", true},
    {40222, "Settings", "", Command_Lines_Settings, "", "Enter the wavelengths of the tube"},

    {40027, "Graph 2D", "graph_2d", Command_Graph_2D<false>, "", "Show the profiles on a linear scale"},
    {40226, "Graph 2D (Log-Scale)", "graph_2d_log", Command_Graph_2D<true>, "Ctrl+L", "Show the profiles on a logarithmic scale"},
    {40031, "Graph 2D Contour", "contour", nullptr, "", "Show the profiles as a map"},
    {40227, "Graph 2D Contour (Log-Scale)", "contour_log", nullptr, "", "Show the profiles as a map of logarithms"},
    {40028, "Graph 3D", "graph_3d", nullptr, "", "Show the profiles one behind another"},
    {40125, "Graph 3D Surface", "surface_3d", nullptr, "", "Show the profiles as a surface"},
    {40022, "OpenGL 3D model", "model_3d", nullptr, "", "Show the profiles as a model that turns"},
    {40021, "Focus", "focus", Command_Focus, "Ctrl+F", "Fit the y window to the visible points"},
    {40036, "Focus Profile", "", nullptr, "", "Fit the window to one profile"},
    {40111, "View target at centre", "target", Command_Target, "Ctrl+T", "Show a target at the centre of the plot", true},
    {40106, "Left", "move_left", Command_Move<View_Move::left>, "Ctrl+Left", "Move the view left by a tenth of its width"},
    {40109, "Right", "move_right", Command_Move<View_Move::right>, "Ctrl+Right", "Move the view right by a tenth of its width"},
    {40133, "All left", "all_left", Command_Move<View_Move::all_left>, "Ctrl+Home", "Move the view to the first point"},
    {40116, "Right", "all_right", Command_Move<View_Move::all_right>, "Ctrl+End", "Move the view to the last point"},
    {40118, "Go Up", "move_up", Command_Move<View_Move::up>, "Ctrl+Up", "Move the view by a twentieth of its height: the curves go up"},
    {40119, "Go Down", "move_down", Command_Move<View_Move::down>, "Ctrl+Down",
     "Move the view by a twentieth of its height: the curves go down"},
    {40136, "Contract graph", "contract", Command_Move<View_Move::contract>, "Ctrl+-", "Show a wider range of x"},
    {40137, "Expand graph", "expand", Command_Move<View_Move::expand>, "Ctrl+=", "Show a narrower range of x"},
    {40503, "Previous view", "view_back", Command_View_Back, "Alt+Left", "Back to the view before"},
    {40504, "Next view", "view_forward", Command_View_Forward, "Alt+Right", "Forward to the view that was left"},
    {40105, "Shift all profiles graphically", "hand", Command_Start_Drag, "Ctrl+G", "The plot follows the mouse"},
    {40113, "End of shift", "hand_off", Command_End_Drag, "", "The mouse zooms again"},
    {40030, "Quick View PRF", "quick_view", nullptr, "", "Look through profile files one by one"},
    {40169, "Vantrelo 2D", "viewer_2d", nullptr, "", "Look at the pictures of area detectors"},
    {40179, "Vantrelo Generic Graphs", "graphs", nullptr, "", "Draw columns of numbers as graphs"},
    {40155, "View result of sequential refinements", "sequential", nullptr, "", "Draw the results of sequential refinements"},

    {40033, "Preferences...", "preferences", nullptr, "", "Colours, styles, texts and programs"},

    {40135, "Run Quendrix", "refine", nullptr, "", "Refine a structure"},
    {40161, "Run Quendrix sequential refinement", "sequential_run", nullptr, "", "Refine a series of patterns one after another"},
    {40108, "Run Quendrix Studio", "studio", nullptr, "", "Open the studio of the suite"},
    {40117, "Run Tabedit", "", nullptr, "", "Edit the control file by forms"},
    {40129, "Run GLinker", "", nullptr, "", "Link programs of the suite"},
    {40134, "Run GMapper", "", nullptr, "", "Draw maps of densities"},
    {40142, "Run Repsolve", "", nullptr, "", "Show representations"},
    {40178, "Run Vecfind", "", nullptr, "", "Look for a propagation vector"},
    {40188, "Run Dicvol", "", nullptr, "", "Index a pattern by Dicvol"},
    {40192, "Run Ito", "", nullptr, "", "Index a pattern by Ito"},
    {40193, "Run Treor", "", nullptr, "", "Index a pattern by Treor"},
    {40197, "Run Rawmerge", "", nullptr, "", "Merge raw data"},
    {40207, "Run Radiox", "", nullptr, "", "Simulate a pattern by Radiox"},
    {40213, "Prepare a OSL file for Radiox", "", nullptr, "", "Prepare the input of Radiox"},
    {40104, "Edit a PCR file", "edit_pcr", Command_Edit_Control_File, "", "Open the control file in the text editor"},
    {40107, "Text editor", "editor", Command_Text_Editor, "", "Open the text editor"},
    {40128, "Open Cmd window", "console", nullptr, "", "Open a window for commands"},
    {40132, "Explorer", "files", nullptr, "", "Open the file manager"},

    {40082, "Quendrix user's guide (ASCII)", "", nullptr, "", "Open the guide of the suite"},
    {40084, "HTML format", "", nullptr, "", "Open the guide of the suite as pages"},
    {40085, "PDF file", "", nullptr, "", "Open the guide of the suite as a document"},
    {40086, "Quendrix Studio user's guide", "", nullptr, "", "Open the guide of the studio"},
    {40121, "QXnews Text Editor", "", nullptr, "", "Read the news of the suite"},
    {40156, "QXnews HTML", "", nullptr, "", "Read the news of the suite as pages"},
    {40076, "Vantrelo-2006 news?", "", nullptr, "", "Read the news of the program"},
    {40079, "Download Quendrix Suite", "", nullptr, "", "Open the page of downloads"},
    {40080, "Download Vantrelo-2006", "", nullptr, "", "Open the page of downloads"},
    {40130, "Vantrelo web site", "", nullptr, "", "Open the home page"},
    {40505, "Mouse and keys", "gestures", Command_Gestures, "F1", "What the mouse and the keys do over the plot"},
    {40018, "About", "about", Command_About, "", "Name, version and date of the program"},
};

// Place of the commands: 0 a separating line, a number a command, `open` and `close` the bounds of a popup.
struct Place {
    int command = 0;
    std::string_view popup = {};  // label of a popup without a number; "{" opens the popup of `command`, "}" closes the innermost
};
constexpr Place open(int command) { return {command, "{"}; }
constexpr Place open(std::string_view label) { return {0, label}; }
constexpr Place close{0, "}"};
constexpr Place line{};
constexpr Place at(int command) { return {command, {}}; }

// clang-format off
constexpr Place places[] = {
    open("&File"), at(40014), at(40016), at(40015), at(40157), line, at(40212), at(40211), at(40210), line,
    open("Save pattern"), at(40208), at(40209), close, at(40009), line, at(40044), at(40122), line,
    at(40038), at(40067), at(40068), at(40069), at(40070), line, at(40019), at(40005), close,
    open("&Edit"), at(40501), at(40502), close,
    open("&Profiles"), at(40023), at(40025), at(40158), line, at(40102), at(40037), line, at(40026), at(40141), at(40149), at(40115), at(40124), line,
    at(40110), at(40151), at(40034), close,
    open(40006), at(40042), at(40043), at(40017), at(40089), at(40081), line, at(40087), at(40088), close,
    open("&Calculations"), at(40100), at(40123), at(40101), at(40162), at(40163), line,
    open(40035), at(40020), at(40090), close,
    open(40091), at(40096), at(40097), line, at(40092), at(40180), at(40093), at(40094), at(40147), line,
    open(40008), at(40010), at(40098), at(40191), at(40160), at(40177), close, close,
    open(40120), at(40138), at(40139), line, at(40159), at(40144), at(40145), at(40148), line, at(40002), close,
    open(40024), at(40095), at(40099), line, at(40194), at(40150), at(40146), line, at(40224), at(40225), close, line,
    at(40154), open(40215), at(40220), at(40221), line, at(40216), at(40217), at(40218), at(40219), line, at(40222), close, close,
    open("P&lot"), at(40027), at(40226), at(40031), at(40227), at(40028), at(40125), at(40022), line, at(40021), at(40036), at(40111),
    open("Move the view"), at(40106), at(40109), at(40133), at(40116), line, at(40118), at(40119), line, at(40136), at(40137), line, at(40503), at(40504), close,
    at(40105), at(40113), line, at(40030), at(40169), at(40179), at(40155), close,
    open("&Options"), at(40033), close,
    open("Ext. &Applications"), at(40135), at(40161), at(40108), at(40117), at(40129), at(40134), at(40142), line, at(40178), at(40188), at(40192),
    at(40193), at(40197), at(40207), at(40213), line, at(40104), at(40107), at(40128), at(40132), close,
    open("&Help"), at(40082), at(40084), at(40085), at(40086), line, at(40121), at(40156), at(40076), line, at(40079), at(40080), at(40130), line,
    at(40505), at(40018), close,
};
// clang-format on

Menu_Entry Entry_Of(int id) {
    Menu_Entry entry;
    if (const Command* command = Find_Command(id)) {
        entry.command = id;
        entry.label = command->label;
        entry.shortcut = command->built() ? command->shortcut : std::string_view{};
        entry.hint = command->hint;
        entry.icon = command->icon;
        entry.checkable = command->checkable;
    }
    return entry;
}

// The entries from `place` up to the end of the popup, which `place` then stands behind.
std::vector<Menu_Entry> Entries(std::span<const Place>& place) {
    std::vector<Menu_Entry> entries;
    while (!place.empty()) {
        const Place here = place.front();
        place = place.subspan(1);
        if (here.popup == "}") break;
        Menu_Entry entry = Entry_Of(here.command);
        if (!here.popup.empty()) {
            if (here.popup != "{") entry.label = here.popup;
            entry.popup = true;
            entry.entries = Entries(place);
        }
        entries.push_back(std::move(entry));
    }
    return entries;
}

}  // namespace

std::span<const Command> Command_Table() { return commands; }

const Command* Find_Command(int id) {
    for (const Command& command : commands)
        if (command.id == id) return &command;
    return nullptr;
}

std::vector<Menu_Entry> Menu_Bar() {
    std::span<const Place> place = places;
    return Entries(place);
}

// The first bar of each form holds files and what the form is for, the second one of the 2D forms the ways to move the view and the
// profiles. 30105 names commands of the quick view's window, 30106 those of the text editor's.
std::vector<Toolbar_Resource> Toolbars() {
    return {
        {30101, 16, 16, {40014, 40016, 40015, 40157, 40212, 0, 40135, 40161, 40108, 40155, 0, 40104, 40107, 40128, 40132, 0, 40033, 40505}},
        {30102, 16, 16, {40014, 40016, 40015, 0,     40044, 40122, 40501, 40019, 0,     40023, 40102, 40110, 40034,
                         0,     40096, 40138, 40095, 40154, 40220, 0,     40135, 40155, 0,     40107, 40033, 40505}},
        {30103, 16, 16, {40014, 40016, 40015, 0,     40044, 40122, 40501, 40019, 0,     40027, 40226, 40031, 40227, 40028,
                         40125, 40022, 0,     40023, 40025, 40158, 40037, 0,     40100, 40123, 40101, 0,     40033, 40505}},
        {30104, 16, 16, {40133, 40106, 40109, 40116, 0,     40118, 40119, 0,     40136, 40137, 40021, 0,    40503,
                         40504, 0,     40105, 40113, 40111, 0,     40115, 40124, 40149, 40162, 0,     40020}},
        {30105, 16, 16, {40127, 40103, 40131, 0, 40126, 0, 40114}},
        {30106, 16, 16, {40511, 40512, 0, 40515, 40516, 0, 40517, 40518, 40519, 0, 40521}},
    };
}

std::string Plain_Label(std::string_view label) { return Replace_All(label, "&", ""); }

}  // namespace vntl
