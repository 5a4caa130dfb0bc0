#include "commands/profiles/show_profiles.hpp"

#include "commands/modal.hpp"
#include "commands/row_grid.hpp"
#include "plot/plot.hpp"
#include "session/desk/kept_view.hpp"

namespace vntl {

namespace {

constexpr int show_dialog = 415;
enum Field { loaded = 1731, ycalc, difference, reflections, background, rows_grid, select_all, deselect_all, apply, leave, live };
enum Column { file_name = 1, kind, drawn, title };
constexpr int let_through[] = {command::save_buffer};  // what is chosen here can be kept at once

std::string Loaded_Text(const Session& session) {
    const Profile_Store& store = session.store;
    return "File PRF loaded : " + (store.prf_loaded ? store.Info(store.ProfilePRFactive).file_name + " " : "<<< none >>> ");
}

// The parts of a refined profile, and where the store keeps whether each is drawn.
struct Part {
    int field;
    bool Profile_Store::*shown;
};
constexpr Part parts[] = {{ycalc, &Profile_Store::show_ycalc},
                          {difference, &Profile_Store::show_difference},
                          {reflections, &Profile_Store::show_reflections},
                          {background, &Profile_Store::show_background}};

void Fill(const Session& session) {
    const Profile_Store& store = session.store;
    WDialogPutString(loaded, Loaded_Text(session));
    for (const Part& part : parts) {
        WDialogPutCheckBox(part.field, store.*part.shown ? 1 : 0);
        WDialogFieldState(part.field, store.prf_loaded ? field_enabled : field_disabled);
    }
    WDialogPutCheckBox(live, session.prefs.prf.refl_live ? 1 : 0);
    WDialogFieldState(live, store.prf_loaded ? field_enabled : field_disabled);
    Label_Row_Grid(session, rows_grid);
    Put_File_Names(session, rows_grid, file_name);
    Put_Kinds(session, rows_grid, kind);
    Put_Titles(session, rows_grid, title);
    std::vector<int> shown;
    for (int row = 1; row <= store.nperfiles(); ++row) shown.push_back(store.shown(row) ? 1 : 0);
    WGridPutCheckBox(rows_grid, drawn, shown);
}

void Show_All(Session& session, bool on) {
    Set_Checks(session, rows_grid, drawn, on);
    const Kept_View kept(session.store, session.plot, session.look);
    for (int row = 1; row <= session.store.nperfiles(); ++row) session.store.profile_shown[static_cast<std::size_t>(row - 1)] = on;
    kept.Show(session.store, session.plot, session.look);
}

void Apply(Session& session) {
    Profile_Store& store = session.store;
    const Kept_View kept(store, session.plot, session.look);
    if (store.prf_loaded) {
        for (const Part& part : parts) store.*part.shown = WDialogGetCheckBox(part.field) != 0;
        session.prefs.prf.refl_live = WDialogGetCheckBox(live) != 0;
    }
    std::size_t place = 0;
    for (const int check : WGridGetCheckBox(rows_grid, drawn)) store.profile_shown[place++] = check != 0;
    kept.Show(store, session.plot, session.look);
    Plot_Redraw(session);
}

}  // namespace

Dialog_Resource Show_Profiles_Dialog_Resource() {
    const std::vector<Dialog_Field> boxes = {{ycalc, Field_Kind::check_box, "Y &calc."},
                                             {difference, Field_Kind::check_box, "Y &obs. - Y calc."},
                                             {reflections, Field_Kind::check_box, "&Reflexions"},
                                             {background, Field_Kind::check_box, "&Background"}};
    return {show_dialog,
            "GRAPH SHOW",
            {{{loaded, Field_Kind::label, ""}},
             boxes,
             {{live, Field_Kind::check_box, "Enable &Live mode  Reflexions"}},
             {{.number = rows_grid,
               .kind = Field_Kind::grid,
               .columns = {{"File", Cell_Kind::string, {}, 24},
                           {"Kind", Cell_Kind::string, {}, 8},
                           {"Drawn", Cell_Kind::check_box, {}, 7},
                           {"Title", Cell_Kind::string, {}, 40}},
               .grid_rows = 1}},
             {{select_all, Field_Kind::push_button, "&Select all"}, {deselect_all, Field_Kind::push_button, "&Deselect all"}},
             {{apply, Field_Kind::push_button, "&Apply"}, {leave, Field_Kind::push_button, "Re&turn"}}}};
}

void ShowProfile_Config(Session& session) {
    WDialogLoad(show_dialog);
    Fill(session);
    WDialogShow(rows_grid, Show_Kind::modal, let_through);
    while (true) {
        const int pressed = Run_Modal(show_dialog);
        if (pressed == select_all || pressed == deselect_all)
            Show_All(session, pressed == select_all);
        else if (pressed == apply)
            Apply(session);
        else
            break;
    }
    WDialogUnload();
}

}  // namespace vntl
