#include "app/command_table.hpp"

#include "app/actions.hpp"
#include "base/text.hpp"

namespace vntl {

namespace {

// Popup menus with a number are commands too: enabled and checked, with nothing of their own to do.
void Open_Popup(Application&) {}

constexpr Command commands[] = {
    {40014, "Open Pattern file (*.dat)", Command_Open_Pattern, "Ctrl+O", "Open measured patterns"},
    {40016, "Open Rietveld/Profile file (*.prf)"},
    {40015, "Open Buffer file (*.buf)"},
    {40157, "Open Raw Data file (3t2, g44)"},
    {40212, "Open Numor File (KVR)"},
    {40211, "Open KVR Instrument + Numors"},
    {40210, "View Header Numor..."},
    {40208, "Free Format File (.dat)"},
    {40209, "XY / XYS Data File (.xys)"},
    {40009, "Save Buffer file..."},
    {40044, "Save Graphic into file...", Command_Export, "Ctrl+E", "Write the picture as PNG, SVG, PDF or PostScript"},
    {40122, "Print..."},
    {40019, "Reset", Command_Reset, "Ctrl+R", "Forget all profiles and start anew"},
    {40038, "1. <Empty>", Command_Recent<1>, "Alt+1", "Open this file again"},
    {40067, "2. <Empty>", Command_Recent<2>, "Alt+2", "Open this file again"},
    {40068, "3. <Empty>", Command_Recent<3>, "Alt+3", "Open this file again"},
    {40069, "4. <Empty>", Command_Recent<4>, "Alt+4", "Open this file again"},
    {40070, "5. <Empty>", Command_Recent<5>, "Alt+5", "Open this file again"},
    {40005, "E&xit", Command_Exit, "Ctrl+Q", "Leave the program"},

    {40023, "Show"},
    {40025, "Sorting"},
    {40158, "Playing"},
    {40102, "Copy profile"},
    {40037, "Delete"},
    {40026, "Normalize(Monitor)"},
    {40141, "Shift"},
    {40149, "Offset/Align"},
    {40115, "Scaling Y"},
    {40124, "Scaling X"},
    {40110, "Select excluded regions"},
    {40151, "Insert excluded regions"},
    {40034, "Admin excluded regions"},

    {40006, "&X space", Open_Popup},
    {40042, "2theta", nullptr, "", "", true},
    {40043, "Time (TOF)", nullptr, "", "", true},
    {40017, "d-space", nullptr, "", "", true},
    {40089, "Q-space", nullptr, "", "", true},
    {40081, "s-space", nullptr, "", "", true},
    {40087, "Change wavelength"},
    {40088, "Change ddt1/dtt2"},

    {40100, "Summation"},
    {40123, "Average"},
    {40101, "Difference"},
    {40162, "Multiply Y / Shift X / Normalize"},
    {40163, "Apply Eff. Corr."},
    {40035, "Smoothing", Open_Popup},
    {40020, "Fourier filtering"},
    {40090, "Polynomial filtering"},
    {40091, "Peak detection", Open_Popup, "", "", true},
    {40096, "Enable"},
    {40097, "Disabled"},
    {40092, "Auto detection"},
    {40180, "Satellites detection"},
    {40093, "Insert peak"},
    {40094, "Delete peak"},
    {40147, "Clear all"},
    {40008, "Save peaks", Open_Popup},
    {40010, "Free Format"},
    {40098, "Dicvol Format"},
    {40191, "Treor Format"},
    {40160, "Ito Format"},
    {40177, "Vecfind Format"},
    {40120, "Background", Open_Popup, "", "", true},
    {40138, "Enable"},
    {40139, "Disabled"},
    {40159, "Auto detection"},
    {40144, "Insert point"},
    {40145, "Delete point"},
    {40148, "Clear all"},
    {40002, "Save background"},
    {40024, "Profile fitting", Open_Popup, "", "", true},
    {40095, "Enable"},
    {40099, "Disabled"},
    {40194, "Auto detection", nullptr, "", "", true},
    {40150, "Start/Repeat Refinement"},
    {40146, "Clear all"},
    {40224, "Load PIK/NEW file"},
    {40225, "Edit PIK-file"},

    {40154, "HKL Gen"},
    {40215, "Spectral Lines", Open_Popup, "", "", true},
    {40220, "Enable"},
    {40221, "Disabled"},
    {40216, "K-alpha1", nullptr, "", "", true},
    {40217, "K-alpha2", nullptr, "", "", true},
    {40218, "K-beta", nullptr, "", "", true},
    {40219, "L-alpha1 (W)", nullptr, "", "", true},
    {40222, "Settings"},

    {40027, "Graph 2D", Command_Graph_2D<false>, "", "Show the profiles on a linear scale"},
    {40226, "Graph 2D (Log-Scale)", Command_Graph_2D<true>, "Ctrl+L", "Show the profiles on a logarithmic scale"},
    {40031, "Graph 2D Contour"},
    {40227, "Graph 2D Contour (Log-Scale)"},
    {40028, "Graph 3D"},
    {40125, "Graph 3D Surface"},
    {40022, "OpenGL 3D model"},
    {40021, "Focus", Command_Focus, "Ctrl+F", "Fit the y window to the visible points"},
    {40036, "Focus Profile"},
    {40111, "View target at centre", Command_Target, "Ctrl+T", "Show a target at the centre of the plot", true},
    {40106, "Left", Command_Move<View_Move::left>, "Ctrl+Left", "Move the view left by a tenth of its width"},
    {40109, "Right", Command_Move<View_Move::right>, "Ctrl+Right", "Move the view right by a tenth of its width"},
    {40133, "All left", Command_Move<View_Move::all_left>, "Ctrl+Home", "Move the view to the first point"},
    {40116, "Right", Command_Move<View_Move::all_right>, "Ctrl+End", "Move the view to the last point"},
    {40118, "Go Up", Command_Move<View_Move::up>, "Ctrl+Up", "Move the view by a twentieth of its height: the curves go up"},
    {40119, "Go Down", Command_Move<View_Move::down>, "Ctrl+Down", "Move the view by a twentieth of its height: the curves go down"},
    {40136, "Contract graph", Command_Move<View_Move::contract>, "Ctrl+-", "Show a wider range of x"},
    {40137, "Expand graph", Command_Move<View_Move::expand>, "Ctrl+=", "Show a narrower range of x"},
    {40105, "Shift all profiles graphically"},
    {40113, "End of shift"},
    {40030, "Quick View PRF"},
    {40169, "Vantrelo 2D"},
    {40179, "Vantrelo Generic Graphs"},
    {40155, "View result of sequential refinements"},

    {40033, "Preferences..."},

    {40135, "Run Quendrix"},
    {40161, "Run Quendrix sequential refinement"},
    {40108, "Run Quendrix Studio"},
    {40117, "Run Tabedit"},
    {40129, "Run GLinker"},
    {40134, "Run GMapper"},
    {40142, "Run Repsolve"},
    {40178, "Run Vecfind"},
    {40188, "Run Dicvol"},
    {40192, "Run Ito"},
    {40193, "Run Treor"},
    {40197, "Run Rawmerge"},
    {40207, "Run Radiox"},
    {40213, "Prepare a OSL file for Radiox"},
    {40104, "Edit a PCR file"},
    {40107, "Text editor"},
    {40128, "Open Cmd window"},
    {40132, "Explorer"},

    {40082, "Quendrix user's guide (ASCII)"},
    {40084, "HTML format"},
    {40085, "PDF file"},
    {40086, "Quendrix Studio user's guide"},
    {40121, "QXnews Text Editor"},
    {40156, "QXnews HTML"},
    {40076, "Vantrelo-2006 news?"},
    {40079, "Download Quendrix Suite"},
    {40080, "Download Vantrelo-2006"},
    {40130, "Vantrelo web site"},
    {40018, "About", Command_About, "", "Name, version and date of the program"},
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
    open("Move the view"), at(40106), at(40109), at(40133), at(40116), line, at(40118), at(40119), line, at(40136), at(40137), close,
    at(40105), at(40113), line, at(40030), at(40169), at(40179), at(40155), close,
    open("&Options"), at(40033), close,
    open("Ext. &Applications"), at(40135), at(40161), at(40108), at(40117), at(40129), at(40134), at(40142), line, at(40178), at(40188), at(40192),
    at(40193), at(40197), at(40207), at(40213), line, at(40104), at(40107), at(40128), at(40132), close,
    open("&Help"), at(40082), at(40084), at(40085), at(40086), line, at(40121), at(40156), at(40076), line, at(40079), at(40080), at(40130), line,
    at(40018), close,
};
// clang-format on

Menu_Entry Entry_Of(int id) {
    Menu_Entry entry;
    if (const Command* command = Find_Command(id)) {
        entry.command = id;
        entry.label = command->label;
        entry.shortcut = command->built() ? command->shortcut : std::string_view{};
        entry.hint = command->hint;
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

std::string Plain_Label(std::string_view label) { return Replace_All(label, "&", ""); }

}  // namespace vntl
