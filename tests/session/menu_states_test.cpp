// What a user can choose in each plot form and calculation, as rules.
#include <algorithm>
#include <functional>
#include <set>

#include "session/session.hpp"
#include "session/testing.hpp"

namespace vntl {
namespace {

using namespace command;
using Ids = std::set<int>;

struct Form_Case {
    Plot_Form form;
    std::function<void(Session&)> enter;
};
const std::vector<Form_Case>& Forms() {
    static const std::vector<Form_Case> forms = {
        {Plot_Form::none, Set_Menu_Empty},
        {Plot_Form::single, [](Session& s) { Set_Menu_Single(s, true); }},
        {Plot_Form::multi, [](Session& s) { Set_Menu_Graph(s, false); }},
        {Plot_Form::multi_log, [](Session& s) { Set_Menu_Graph(s, true); }},
        {Plot_Form::calculation, [](Session& s) { Set_Calculation_Mode(s, Click_Mode::reflections); }},
        {Plot_Form::contour, Set_Menu_Contour},
        {Plot_Form::contour_log, Set_Menu_Contour_Log},
        {Plot_Form::graph3d, Set_Menu_3D},
        {Plot_Form::surface, Set_Menu_3D_Surface},
    };
    return forms;
}

// Enabled in a form, whatever they were before.
Ids Enabled_In(const Form_Case& form, const Ids& commands, bool before) {
    Session s;
    for (const int id : commands) s.interface.Enable(id, before);
    form.enter(s);
    Ids enabled;
    for (const int id : commands)
        if (s.interface.Enabled(id)) enabled.insert(id);
    return enabled;
}

const Ids needs_nothing = {exit,        about,      reset,       preferences, edit_pcr,     text_editor,  run_studio,   target,
                           run_tabedit, console,    run_glinker, explorer,    run_gmapper,  run_quendrix, run_repsolve, run_sequential,
                           run_vecfind, run_dicvol, run_ito,     run_treor,   run_rawmerge, run_radiox,   prepare_osl};
const Ids opens_files = {open_pattern, open_prf, open_buffer, open_raw};
const Ids saves = {save_free_format, save_xys, save_buffer, save_picture, print, copy_picture, copy_text};
const Ids changes_rows = {smooth_fourier, smooth_polynomial, smoothing_menu,  sort_profiles, admin_excluded, delete_profiles,
                          copy_profile,   select_excluded,   insert_excluded, scale_x,       scale_y,        offset_align,
                          multiply,       efficiency,        hkl_gen,         lines_menu};
const Ids needs_several_rows = {normalize_monitor, sum, average, difference, shift_profiles, play_profiles};
const Ids moves_the_view = {move_left, move_right, all_left, all_right, move_up, move_down, contract, expand, focus, focus_profile};
const Ids way_of_views = {view_back, view_forward, undo, redo};

TEST(Menu_States, ACommandNeedsWhatItWorksOn) {
    for (const Form_Case& form : Forms())
        for (const bool before : {false, true}) {
            SCOPED_TRACE(std::string(Told(form.form)) + (before ? ", enabled before" : ", disabled before"));
            const bool empty = form.form == Plot_Form::none, several = form.form == Plot_Form::multi || form.form == Plot_Form::multi_log;
            const bool rows = several || form.form == Plot_Form::single, two_d = rows || form.form == Plot_Form::calculation;
            const auto all_or_none = [&](const Ids& commands, bool all) {
                EXPECT_EQ(Enabled_In(form, commands, before), all ? commands : Ids()) << *commands.begin();
            };
            all_or_none(opens_files, empty || rows);
            all_or_none(saves, !empty);
            all_or_none(changes_rows, rows);
            all_or_none(needs_several_rows, several);
            all_or_none(moves_the_view, two_d);
            all_or_none({show_profiles}, two_d);
            if (!two_d) all_or_none(way_of_views, false);
            all_or_none({drag_end}, false);
            if (empty) all_or_none({to_two_theta, to_tof, to_d, to_q, to_s, change_wavelength, change_dtt, constants_from_file}, false);
        }
    Session s;
    for (const Form_Case& form : Forms()) {
        form.enter(s);
        for (const int id : needs_nothing) EXPECT_TRUE(s.interface.Enabled(id)) << id << " in " << Told(form.form);
    }
}

// The menu of forms: from several rows on, each leads to every other one but itself; a map and a surface have further limits.
TEST(Menu_States, AFormLeadsToTheOthers) {
    const Ids ways = {graph_2d, graph_2d_log, contour, contour_log, graph_3d, surface_3d, model_3d};
    const Ids graphs = {graph_2d, graph_2d_log, model_3d};
    const std::pair<Plot_Form, Ids> leads[] = {
        {Plot_Form::none, {}},
        {Plot_Form::single, {}},
        {Plot_Form::multi, {contour, contour_log, graph_3d, surface_3d}},
        {Plot_Form::multi_log, {contour, contour_log, graph_3d, surface_3d}},
        {Plot_Form::contour, {contour_log, graph_3d, surface_3d}},
        {Plot_Form::contour_log, {contour, graph_3d, surface_3d}},
        {Plot_Form::graph3d, {contour, contour_log, surface_3d}},
        {Plot_Form::surface, {contour, contour_log, graph_3d}},
    };
    for (const auto& [form, others] : leads) {
        const auto enter = std::ranges::find(Forms(), form, &Form_Case::form);
        Ids expected = others;
        if (!others.empty()) expected.insert(graphs.begin(), graphs.end());
        EXPECT_EQ(Enabled_In(*enter, ways, false), expected) << Told(form);
        EXPECT_EQ(Enabled_In(*enter, ways, true), expected) << Told(form);
    }
}

TEST(Menu_States, EveryFormShowsItselfAndEndsWhatTheMouseDid) {
    constexpr std::array<int, 2> kept = {1, 2};
    for (const Form_Case& form : Forms())
        for (const Move_Mode mode :
             {Move_Mode::none, Move_Mode::drag, Move_Mode::exclude, Move_Mode::align, Move_Mode::scale_y, Move_Mode::scale_x}) {
            SCOPED_TRACE(Told(form.form));
            const bool empty = form.form == Plot_Form::none, running = form.form == Plot_Form::calculation;
            Session s;
            Set_Calculation_Mode(s, Click_Mode::peaks);
            s.interface.toolbars = kept;
            s.interface.cursor = Cursor_Shape::hand;
            s.interface.want_mouse_move = s.interface.want_mouse_down = empty;
            s.interface.want_mouse_up = true;
            s.plot.MoveMode = mode;
            s.plot.rubber.active = true;
            s.plot.row_move.rows = {1};
            const unsigned before = s.interface.revision;
            form.enter(s);
            EXPECT_EQ(s.interface.status[4], Told(form.form));
            EXPECT_EQ(s.interface.toolbars, running ? kept : Row_Of(form.form).toolbars);
            EXPECT_EQ(s.plot.MoveMode, Move_Mode::none);
            EXPECT_FALSE(s.plot.rubber.active || !s.plot.row_move.rows.empty());
            EXPECT_EQ(s.plot.ClickMode, running ? Click_Mode::reflections : Click_Mode::none);
            EXPECT_FALSE(s.interface.Checked(peaks_menu));
            EXPECT_EQ(s.interface.want_mouse_move && s.interface.want_mouse_down, !empty);
            EXPECT_FALSE(s.interface.want_mouse_up);
            EXPECT_EQ(s.interface.cursor, Cursor_Shape::arrow);
            EXPECT_GT(s.interface.revision, before);
        }
}

struct Mode_Case {
    Click_Mode mode;
    int menu, on;  // 0 for none
    Ids own;
};
const Mode_Case modes[] = {
    {Click_Mode::fit, fit_menu, fit_on, {fit_off, fit_auto_peaks, clear_fit, run_fit, edit_pik, load_pik, fit_series}},
    {Click_Mode::peaks,
     peaks_menu,
     peaks_on,
     {peaks_off, search_peaks, clear_peaks, insert_peak, delete_peak, save_peaks_menu, save_peaks_free, save_peaks_dicvol, save_peaks_ito,
      save_peaks_vecfind, save_peaks_treor}},
    {Click_Mode::background,
     background_menu,
     background_on,
     {background_off, clear_background, insert_background, delete_background, save_background}},
};

// A calculation offers its own commands and the way out, not those of another one; its menu alone is checked.
TEST(Menu_States, ACalculationOffersItsOwn) {
    for (const Mode_Case& present : modes)
        for (const Plot_Form from : {Plot_Form::none, Plot_Form::single, Plot_Form::multi, Plot_Form::multi_log, Plot_Form::calculation})
            for (const bool prf_loaded : {false, true}) {
                SCOPED_TRACE(std::string(Told(from)) + (prf_loaded ? " with" : " without") + " a refined profile");
                Session s;
                s.store.prf_loaded = prf_loaded;
                s.plot.peak_insert = s.plot.peak_delete = s.plot.bgr_insert = s.plot.bgr_delete = true;
                Set_Plot_Type(s, from);
                for (const Mode_Case& mode : modes) {
                    for (const int id : mode.own) s.interface.Enable(id, true);
                    s.interface.Check(mode.menu, true);
                }
                Set_Calculation_Mode(s, present.mode);
                for (const Mode_Case& mode : modes) {
                    const bool own = &mode == &present;
                    for (const int id : mode.own) EXPECT_EQ(s.interface.Enabled(id), own) << id;
                    EXPECT_EQ(s.interface.Checked(mode.menu), own) << mode.menu;
                    EXPECT_FALSE(s.interface.Enabled(mode.on)) << mode.on;
                }
                EXPECT_EQ(s.interface.Enabled(search_satellites), present.mode == Click_Mode::peaks && prf_loaded);
                EXPECT_EQ(s.interface.Enabled(search_background), present.mode == Click_Mode::background && from != Plot_Form::multi);
                EXPECT_FALSE(s.plot.peak_insert || s.plot.peak_delete || s.plot.bgr_insert || s.plot.bgr_delete);
                EXPECT_EQ(s.plot.ClickMode, present.mode);
            }
}

// A mode that ends in the form of one profile leaves what that form offers after loading.
TEST(Menu_States, AModeThatEndsLeavesNothing) {
    const auto single = [](Session& s) {
        Set_Calculation_Mode(s, Click_Mode::none);
        Set_Menu_Single(s, true);
    };
    Session plain;
    single(plain);
    for (const int id : {fit_menu, peaks_menu, background_menu, fit_on, peaks_on, background_on, hkl_gen, lines_menu})
        EXPECT_TRUE(plain.interface.Enabled(id)) << id;
    for (const Mode_Case& mode : modes) {
        Session s;
        single(s);
        Set_Calculation_Mode(s, mode.mode);
        single(s);
        for (const auto& [id, state] : plain.interface.commands) EXPECT_EQ(s.interface.Enabled(id), state.enabled) << id;
        for (const Mode_Case& other : modes) EXPECT_FALSE(s.interface.Checked(other.menu));
    }
}

TEST(Menu_States, AStartAndAResetOfferNoCalculation) {
    Session fresh, reset;
    Set_Calculation_Mode(reset, Click_Mode::peaks);
    Reset_Profiles(reset);
    Set_Menu_Empty(reset);
    for (const Session* s : {&fresh, &reset})
        for (const Mode_Case& mode : modes)
            for (const int id : mode.own) EXPECT_FALSE(s->interface.Enabled(id)) << id;
    Set_Menu_Graph(fresh, false);  // several rows at once, with no calculation before
    for (const int id : {background_menu, background_on}) EXPECT_TRUE(fresh.interface.Enabled(id)) << id;
    for (const int id : {fit_menu, peaks_menu}) EXPECT_FALSE(fresh.interface.Enabled(id)) << id;
}

TEST(Menu_States, LeavingAFitKeepsOrClearsItsModel) {
    Session s;
    s.lists.fit.peaks.resize(1);
    Set_Menu_Single(s, true);
    EXPECT_EQ(s.lists.fit.peaks.size(), 1u);
    Set_Menu_Single(s, false);
    EXPECT_TRUE(s.lists.fit.peaks.empty());
}

}  // namespace
}  // namespace vntl
