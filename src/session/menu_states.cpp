// Which commands, toolbars and messages each plot form has.
//
// One table says it for every form: a column a form, in the order of `Menu_Column`, '1' enabled, '0' disabled, '.' left as it was. Menus
// that open from a menu have numbers too and are enabled and checked like commands. A command in no row is enabled in every form.
#include <algorithm>
#include <initializer_list>
#include <optional>
#include <vector>

#include "session/modes.hpp"
#include "session/session.hpp"

namespace vntl {
namespace {

using namespace command;

using Commands = std::vector<int>;

struct Enabling {
    std::string_view states;
    Commands commands;
};

const std::vector<Enabling>& Enabling_Table() {
    static const std::vector<Enabling> table = {
        // empty, calculation, single, multi, contour, contour log, 3D, 3D surface
        {"10110000", {xspace_menu, open_pattern, open_buffer, open_prf, open_raw}},
        {"01111111", {save_buffer, save_picture, print, file_information}},
        {"01110000", {focus, show_profiles, subtract_background, waterfall}},
        {"00110000",
         {smooth_fourier, sort_profiles, admin_excluded, smoothing_menu, delete_profiles, copy_profile, drag, select_excluded, scale_y,
          scale_x, offset_align, insert_excluded, hkl_gen, multiply, efficiency, lines_menu}},
        {"00010000", {normalize_monitor, sum, difference, average, shift_profiles, play_profiles}},
        {"01110000", {linear_intensities, logarithms, root_intensities, next_scale}},
        {"00011111", {model_3d, graph_2d, graph_2d_log}},
        {"00011101", {graph_3d}},
        {"00010111", {contour}},
        {"00011011", {contour_log}},
        {"0.011110", {surface_3d}},
        {"0.100000", {fit_menu, peaks_menu}},
        {"0.110000", {background_menu}},
        {"...00000", {fit_on, fit_off, run_fit}},
        {"0.110000", {fit_series}},
        {"......00", {load_pik, edit_pik}},
        {"00000000", {drag_end}},
        {"0.......", {to_d, to_two_theta, to_tof, to_s, change_wavelength, change_dtt, constants_from_file, to_q}},
        // The view moves in the 2D forms, where its one-row companions work too.
        {"01110000", {move_left, move_right, all_right, move_up, move_down, all_left, contract, expand, focus_profile}},
        // Entries of menus and files that need a pattern.
        {"01111111", {save_free_format, save_xys, copy_picture, copy_text}},
        {"00110000", {smooth_polynomial, lines_on, lines_settings}},
        {"0.11....", {background_on}},
        // What a running calculation enables has no use without a pattern.
        {"0...0000", {view_back, view_forward, undo, redo}},
        {"0.......",
         {fit_auto_peaks,
          clear_fit,
          peaks_on,
          peaks_off,
          search_peaks,
          search_satellites,
          clear_peaks,
          insert_peak,
          delete_peak,
          snap_to_maximum,
          save_peaks_menu,
          save_peaks_free,
          save_peaks_dicvol,
          save_peaks_ito,
          save_peaks_vecfind,
          save_peaks_treor,
          background_off,
          search_background,
          clear_background,
          insert_background,
          delete_background,
          save_background,
          line_1,
          line_2,
          line_3,
          line_4,
          lines_off}},
        // The list of patterns says which of them have rows to act on.
        {"0.......", {rename_pattern, delete_chosen, show_chosen, hide_chosen, show_all}},
    };
    return table;
}

// Commands that belong to one calculation or another, all disabled before a mode enables its own. The formats of the peak file go with
// their menu, save_peaks_menu.
constexpr int mode_commands[] = {
    fit_on,           fit_off,       fit_auto_peaks,  clear_fit,         run_fit,           edit_pik,          load_pik,
    fit_series,       peaks_on,      peaks_off,       search_peaks,      search_satellites, clear_peaks,       insert_peak,
    snap_to_maximum,  delete_peak,   save_peaks_menu, save_peaks_free,   save_peaks_dicvol, save_peaks_ito,    save_peaks_vecfind,
    save_peaks_treor, background_on, background_off,  search_background, clear_background,  insert_background, delete_background,
    save_background,  hkl_gen,       lines_menu};

struct Mode {
    int checked;  // 0 none
    Commands enabled;
};

const std::vector<Mode>& Mode_Table() {
    static const std::vector<Mode> table = {
        {0, {drag, peaks_menu, peaks_on, background_menu, background_on, hkl_gen, lines_menu, fit_on, fit_series}},
        {fit_menu, {fit_off, fit_auto_peaks, clear_fit, run_fit, edit_pik, load_pik, fit_series, snap_to_maximum}},
        {peaks_menu,
         {peaks_off, search_peaks, clear_peaks, insert_peak, delete_peak, snap_to_maximum, save_peaks_menu, save_peaks_free,
          save_peaks_dicvol, save_peaks_ito, save_peaks_vecfind, save_peaks_treor}},
        {background_menu, {background_off, clear_background, insert_background, delete_background, save_background}},
        {0, {}},
    };
    return table;
}

void Apply_Column(Interface_State& menu, Menu_Column column) {
    for (const Enabling& row : Enabling_Table()) {
        const char state = row.states[static_cast<std::size_t>(column)];
        if (state == '.') continue;
        for (const int command : row.commands) menu.Enable(command, state == '1');
    }
    if (menu.Checked(lines_menu)) menu.Enable(lines_on, false);
}

// The profile of a refinement that stands alone is not fitted again, and has its reflections already.
void Bar_For_Refinement(Session& session) {
    if (!session.store.prf_loaded || session.store.nperfiles() != 1) return;
    for (const int command : {fit_on, fit_off, hkl_gen}) session.interface.Enable(command, false);
}

void Uncheck_Modes(Interface_State& menu) {
    for (const int command : {fit_menu, peaks_menu, background_menu}) menu.Check(command, false);
}

// A graph of one pattern has the commands of one, in its logarithms too.
Menu_Column Column_Of(const Session& session, Plot_Form form) {
    const Menu_Column column = Row_Of(form).column;
    return column == Menu_Column::multi && session.store.nperfiles() == 1 ? Menu_Column::single : column;
}

// The commands of one calculation, or those that lead to them, and no others; its menu alone is checked.
void Offer_Calculation(Session& session, Click_Mode mode) {
    Interface_State& menu = session.interface;
    for (const int command : mode_commands) menu.Enable(command, false);
    Uncheck_Modes(menu);
    session.plot.ClickMode = mode;
    const Mode& chosen = Mode_Table()[static_cast<std::size_t>(mode)];
    if (chosen.checked != 0) menu.Check(chosen.checked, true);
    for (const int command : chosen.enabled) menu.Enable(command, true);
}

void Set_Form(Session& session, Plot_Form form) {
    Interface_State& menu = session.interface;
    Leave_Mode(session);
    if (session.plot.In_Space())  // how it was turned
        for (const int part : {3, 4}) menu.Status_Text(part, "");
    const Menu_Column column = Column_Of(session, form);
    Apply_Column(menu, column);
    Bar_For_Refinement(session);
    session.plot.hits = {};
    session.plot.pointed_row = 0;
    session.plot.log_scale = Row_Of(form).is_log;
    const bool of_one = column == Menu_Column::single;
    if (form != Plot_Form::calculation) menu.toolbars = Row_Of(of_one ? Plot_Form::single : form).toolbars;
    menu.want_mouse_move = menu.want_mouse_down = form != Plot_Form::none;
    ++menu.revision;
    Set_Plot_Type(session, form);
    Show_Scale(session);
    Show_Resting_Hint(session);
    menu.count_moves = session.plot.In_Space();
}

// A form other than "calculation" has no calculation running.
void Set_Menu(Session& session, Plot_Form form) {
    if (session.plot.plot_type == Plot_Form::calculation) Offer_Calculation(session, Click_Mode::none);
    Uncheck_Modes(session.interface);
    Set_Form(session, form);
}

}  // namespace

std::map<int, Command_State> Commands_At_Start() {
    std::map<int, Command_State> commands;
    for (const int command : mode_commands) commands[command].enabled = false;
    for (const Enabling& row : Enabling_Table())
        if (row.states[0] != '.')
            for (const int command : row.commands) commands[command].enabled = row.states[0] == '1';
    commands[style_default].checked = true;
    return commands;
}

void Set_Plot_Type(Session& session, Plot_Form form) {
    session.plot.plot_type = form;
    session.interface.Status_Text(5, std::string(Told(form)));
}

std::string Why_Grey(const Session& session) {
    const Plot_State& plot = session.plot;
    if (session.store.nperfiles() == 0) return "Open a pattern first";
    if (plot.plot_type == Plot_Form::calculation) return "A calculation is running: leave it by its command Disabled, or close its window";
    if (plot.Is_Map() || plot.In_Space()) return "This works on graphs: Plot, Graph 2D";
    return session.store.nperfiles() == 1 ? "This needs several patterns, or was not begun yet"
                                          : "This works on a single pattern, or was not begun yet";
}

void Set_Menu_Empty(Session& session) { Set_Menu(session, Plot_Form::none); }

void Set_Menu_Single(Session& session, bool clear) {
    if (!clear) session.lists.fit = {};
    Set_Menu(session, Plot_Form::single);
}

void Set_Menu_Graph(Session& session, bool log) { Set_Menu(session, log ? Plot_Form::multi_log : Plot_Form::multi); }
void Set_Menu_Log_Of_One(Session& session) {
    session.plot.y_scale = Y_Scale::logarithm;
    Set_Menu(session, Plot_Form::multi_log);
}

void Set_Menu_Of_Scale(Session& session) {
    const bool log = session.plot.y_scale == Y_Scale::logarithm;
    const Plot_Form linear = session.store.nperfiles() > 1 ? Plot_Form::multi : Plot_Form::single;
    Set_Menu(session, log ? Plot_Form::multi_log : linear);
}

void Show_Scale(Session& session) {
    constexpr int of_scales[] = {linear_intensities, logarithms, root_intensities};
    for (std::size_t scale = 0; scale < std::size(of_scales); ++scale)
        session.interface.Check(of_scales[scale], session.plot.Is_2D() && session.plot.Scale() == static_cast<Y_Scale>(scale));
}

void Set_Menu_Contour(Session& session) { Set_Menu(session, Plot_Form::contour); }
void Set_Menu_Contour_Log(Session& session) { Set_Menu(session, Plot_Form::contour_log); }
void Set_Menu_3D(Session& session) { Set_Menu(session, Plot_Form::graph3d); }
void Set_Menu_3D_Surface(Session& session) { Set_Menu(session, Plot_Form::surface); }

void Set_Calculation_Mode(Session& session, Click_Mode mode) {
    Interface_State& menu = session.interface;
    const bool several_rows = session.plot.plot_type == Plot_Form::multi;
    Offer_Calculation(session, mode);
    if (mode == Click_Mode::peaks && session.store.prf_loaded) menu.Enable(search_satellites, true);
    if (mode == Click_Mode::background && !several_rows) menu.Enable(search_background, true);
    Set_Form(session, Plot_Form::calculation);
}

}  // namespace vntl
