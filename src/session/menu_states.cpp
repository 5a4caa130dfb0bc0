// Which commands, toolbars and messages each plot form has.
//
// One table says it for every form: a column a form, in the order of `Form`, '1' enabled, '0' disabled, '.' left as it was. Menus that open
// from a menu have numbers too and are enabled and checked like commands. A command in no row is enabled in every form.
#include <algorithm>
#include <initializer_list>
#include <optional>
#include <vector>

#include "session/session.hpp"

namespace vntl {
namespace {

enum class Form { empty, calculation, single, multi, contour, contour_log, three_d, surface };

// Menus that stand for a calculation, each checked while it runs.
constexpr int fit_menu = 40024, peaks_menu = 40091, background_menu = 40120, lines_menu = lines_menu_command;

using Commands = std::vector<int>;

struct Enabling {
    std::string_view states;
    Commands commands;
};

const std::vector<Enabling>& Enabling_Table() {
    static const std::vector<Enabling> table = {
        // empty, calculation, single, multi, contour, contour log, 3D, 3D surface
        {"10110000", {40006, 40014, 40015, 40016, 40157}},
        {"01111111", {40009, 40044, 40122}},
        {"01110000", {40021, 40023}},
        {"00110000", {40020, 40025, 40034, 40035, 40037, 40102, 40105, 40110, 40115, 40124, 40149, 40151, 40154, 40162, 40163, lines_menu}},
        {"00010000", {40026, 40100, 40101, 40123, 40141, 40158}},
        {"00011111", {40022, 40027, 40226}},
        {"00011101", {40028}},
        {"00010111", {40031}},
        {"00011011", {40227}},
        {"0.011110", {40125}},
        {"0.100000", {fit_menu, peaks_menu}},
        {"0.110000", {background_menu}},
        {"...00000", {40095, 40099, 40150}},
        {"......00", {40224, 40225}},
        {"00000000", {40113}},
        {"0.......", {40017, 40042, 40043, 40081, 40087, 40088, 40089}},
        // The view moves in the 2D forms, where its one-row companions work too.
        {"01110000", {40106, 40109, 40116, 40118, 40119, 40133, 40136, 40137, 40036}},
        // Entries of menus and files that need a pattern.
        {"01111111", {40208, 40209, copy_picture_command, copy_text_command}},
        {"00110000", {40090, lines_on_command, 40222}},
        {"0.11....", {40138}},
        // What a running calculation enables has no use without a pattern.
        {"0...0000", {view_back_command, view_forward_command}},
        {"0.......", {40194, 40146, 40096, 40097, 40092, 40180, 40147, 40093, 40094, 40008, 40010, 40098, 40160,
                      40177, 40191, 40139, 40159, 40148, 40144, 40145, 40002, 40216, 40217, 40218, 40219, 40221}},
    };
    return table;
}

// Commands that belong to one calculation or another, all disabled before a mode enables its own. The formats of the peak file go with
// their menu, 40008.
constexpr int mode_commands[] = {40095, 40099, 40194, 40146, 40150, 40225, 40224, 40096, 40097,     40092,
                                 40180, 40147, 40093, 40094, 40008, 40010, 40098, 40160, 40177,     40191,
                                 40138, 40139, 40159, 40148, 40144, 40145, 40002, 40154, lines_menu};

struct Mode {
    int checked;  // 0 none
    Commands enabled;
};

const std::vector<Mode>& Mode_Table() {
    static const std::vector<Mode> table = {
        {0, {40105, peaks_menu, 40096, background_menu, 40138, 40154, lines_menu, 40095}},
        {fit_menu, {40099, 40194, 40146, 40150, 40225, 40224}},
        {peaks_menu, {40097, 40092, 40147, 40093, 40094, 40008, 40010, 40098, 40160, 40177, 40191}},
        {background_menu, {40139, 40148, 40144, 40145, 40002}},
        {0, {}},
    };
    return table;
}

constexpr int satellites_command = 40180, background_search_command = 40159;

void Apply_Column(Interface_State& menu, Form form) {
    for (const Enabling& row : Enabling_Table()) {
        const char state = row.states[static_cast<std::size_t>(form)];
        if (state == '.') continue;
        for (const int command : row.commands) menu.Enable(command, state == '1');
    }
    if (menu.Checked(lines_menu)) menu.Enable(lines_on_command, false);
}

void Uncheck_Modes(Interface_State& menu) {
    for (const int command : {fit_menu, peaks_menu, background_menu}) menu.Check(command, false);
}

void Set_Form(Session& session, Form form, std::string_view plot_type, std::optional<std::array<int, 2>> toolbars) {
    Interface_State& menu = session.interface;
    Apply_Column(menu, form);
    session.plot.MoveMode = 0;
    session.plot.rubber = {};
    session.plot.drag = {};
    session.plot.row_move = {};
    session.plot.hits = {};
    session.plot.spectral.shown = false;
    if (toolbars) menu.toolbars = *toolbars;
    menu.want_mouse_move = menu.want_mouse_down = form != Form::empty;
    menu.want_mouse_up = false;
    menu.cursor = Cursor_Shape::arrow;
    ++menu.revision;
    Set_Plot_Type(session, plot_type);
}

// A form other than "calculation" has no calculation running.
void Set_Menu(Session& session, Form form, std::string_view plot_type, std::array<int, 2> toolbars) {
    session.plot.ClickMode = 0;
    Uncheck_Modes(session.interface);
    Set_Form(session, form, plot_type, toolbars);
}

}  // namespace

std::map<int, Command_State> Commands_At_Start() {
    std::map<int, Command_State> commands;
    for (const int command : mode_commands) commands[command].enabled = false;
    for (const Enabling& row : Enabling_Table())
        if (row.states[0] != '.')
            for (const int command : row.commands) commands[command].enabled = row.states[0] == '1';
    return commands;
}

void Set_Plot_Type(Session& session, std::string_view plot_type) {
    session.plot.plot_type = plot_type;
    session.interface.Status_Text(5, session.plot.plot_type);
}

void Set_Menu_Empty(Session& session) {
    session.plot.log_scale = false;
    Set_Menu(session, Form::empty, "none", {30101, 0});
}

void Set_Menu_Single(Session& session, bool clear) {
    if (!clear) session.lists.fit = {};
    Set_Menu(session, Form::single, "single", {30102, 30104});
}

void Set_Menu_Graph(Session& session, bool log) { Set_Menu(session, Form::multi, log ? "multi_log" : "multi", {30103, 30104}); }
void Set_Menu_Contour(Session& session) { Set_Menu(session, Form::contour, "graph2dcontour", {30103, 0}); }
void Set_Menu_Contour_Log(Session& session) { Set_Menu(session, Form::contour_log, "graph2dcontour_log", {30103, 0}); }
void Set_Menu_3D(Session& session) { Set_Menu(session, Form::three_d, "graph3d", {30103, 0}); }
void Set_Menu_3D_Surface(Session& session) { Set_Menu(session, Form::surface, "graph3dsurf", {30103, 0}); }

void Set_Calculation_Mode(Session& session, int mode) {
    Interface_State& menu = session.interface;
    Plot_State& plot = session.plot;
    const bool several_rows = plot.plot_type == "multi";
    mode = std::clamp(mode, 0, static_cast<int>(Mode_Table().size()) - 1);

    for (const int command : mode_commands) menu.Enable(command, false);
    Uncheck_Modes(menu);
    plot.peak_insert = plot.peak_delete = plot.bgr_insert = plot.bgr_delete = false;

    plot.ClickMode = mode;
    const Mode& chosen = Mode_Table()[static_cast<std::size_t>(mode)];
    if (chosen.checked != 0) menu.Check(chosen.checked, true);
    for (const int command : chosen.enabled) menu.Enable(command, true);
    if (chosen.checked == peaks_menu && session.store.prf_loaded) menu.Enable(satellites_command, true);
    if (chosen.checked == background_menu && !several_rows) menu.Enable(background_search_command, true);
    Set_Form(session, Form::calculation, "calculation", {});
}

}  // namespace vntl
