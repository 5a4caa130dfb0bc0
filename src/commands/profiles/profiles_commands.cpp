// Menu "Profiles": which rows are shown, where they stand, what is left out of them.
#include "commands/families.hpp"

#include "commands/application.hpp"
#include "commands/desk/pattern_list.hpp"
#include "commands/plot/mouse.hpp"
#include "commands/profiles/delete_rows.hpp"
#include "commands/profiles/excluded_admin.hpp"
#include "commands/profiles/excluded_regions.hpp"
#include "commands/profiles/file_information.hpp"
#include "commands/profiles/move_rows.hpp"
#include "commands/profiles/play_profiles.hpp"
#include "commands/profiles/shift_rows.hpp"
#include "commands/profiles/show_profiles.hpp"
#include "commands/profiles/sort_rows.hpp"
#include "plot/plot.hpp"
#include "session/arrange_rows.hpp"

namespace vntl {

namespace {

// A dialog that moves rows at once, or leaves it to the mouse.
void Move_Rows(Application& app, Status (*dialog)(Session&, Row_Choice&), Move_Mode mode) {
    Row_Choice choice;
    const Status status = dialog(app.session, choice);
    if (!Tell(app, status)) return;
    Plot_Redraw(app.session);
    if (status.failed || !choice.by_mouse) return;
    if (mode == Move_Mode::align)
        Start_Align_Mode(app.session, choice.rows);
    else
        Start_Scaling_Mode(app.session, mode, choice.rows);
}

void Offset_Align(Application& app) { Move_Rows(app, Offset_Align_Dialog, Move_Mode::align); }
void Scale_X(Application& app) { Move_Rows(app, Scaling_X_Dialog, Move_Mode::scale_x); }
void Scale_Y(Application& app) { Move_Rows(app, Scaling_Y_Dialog, Move_Mode::scale_y); }

void Show_Profiles(Application& app) {
    ShowProfile_Config(app.session);
    Plot_Redraw(app.session);
}

void Sort(Application& app) {
    Sort_Profiles(app.session);
    Plot_Redraw(app.session);
}

// The ranges are those of the rows that are there now; where nothing was done the view stays.
void Then_Remake(Application& app, const Status& status) {
    Tell(app, status);
    if (status.ok()) Plot_ReMake(app.session);
}

void Delete(Application& app) { Then_Remake(app, Delete_Profiles(app.session, app.ask)); }
// Of the row that is chosen in the list, or of the first.
void Copy(Application& app) {
    const std::vector<int> chosen = app.session.store.Chosen_Rows();
    Then_Remake(app, Copy_Row(app.session, chosen.empty() ? 1 : chosen.front()));
}
void Shift(Application& app) { Then_Remake(app, Shift_Profiles(app.session)); }
void Normalize(Application& app) { Then_Remake(app, Normalize_Monitor(app.session)); }

void Play_Profiles(Application& app) {
    Playing_Dialog(app.session);
    Plot_Redraw(app.session);
}

void Insert_Excluded(Application& app) {
    if (!Tell(app, Insert_Excluded_Region(app.session, app.ask))) return;
    app.session.prefs.prf.excl_ignore_sides ? Plot_ReMake(app.session) : Plot_Redraw(app.session);
}

void Admin_Excluded(Application& app) {
    Excluded_Regions_Admin(app.session, app.ask);
    Plot_ReMake(app.session);
}

void Information(Application& app) { File_Information_Dialog(app.session); }

void Select_Excluded(Application& app) { Start_Exclude_Mode(app.session); }

constexpr Command commands[] = {
    {command::pattern_list, "List of patterns", "", Toggle_List, "F9", "Show what is loaded, in a list beside the picture", true},
    {command::rename_pattern, "Rename...", "", Rename_Pattern, "F2", "Name the pattern that is chosen in the list, as the legend shows it"},
    {command::delete_chosen, "Delete", "", Delete_Chosen, "", "Delete the patterns that are chosen in the list"},
    {command::show_chosen, "Show alone", "", Show_Chosen, "", "Show the patterns that are chosen in the list, and no others"},
    {command::hide_chosen, "Hide", "", Hide_Chosen, "", "Hide the patterns that are chosen in the list"},
    {command::show_all, "Show all", "", Show_All_Patterns, "", "Show all patterns"},
    {command::show_profiles, "Show", "show", Show_Profiles, "", "Choose which profiles are shown"},
    {command::sort_profiles, "Sorting", "sort", Sort, "", "Change the order of the profiles"},
    {command::play_profiles, "Playing", "play", Play_Profiles, "", "Show one profile after another"},
    {command::copy_profile, "Copy profile", "copy_profile", Copy, "", "Add a copy of a profile"},
    {command::delete_profiles, "Delete", "delete", Delete, "", "Take profiles out of the list"},
    {command::file_information, "File information", "", Information, "Ctrl+I", "Look up all that the file of a profile tells"},
    {command::normalize_monitor, "Normalize(Monitor)", "normalise", Normalize, "", "Bring the profiles to one monitor"},
    {command::shift_profiles, "Shift", "shift", Shift, "", "Set the profiles apart by a constant step"},
    {command::offset_align, "Offset/Align", "offset", Offset_Align, "", "Move profiles by an offset, or to a common point"},
    {command::scale_y, "Scaling Y", "scale_y", Scale_Y, "", "Multiply the intensities of profiles"},
    {command::scale_x, "Scaling X", "scale_x", Scale_X, "", "Multiply the x of profiles"},
    {command::select_excluded, "Select excluded regions", "exclude", Select_Excluded, "", "Mark a region that is left out, with the mouse"},
    {command::insert_excluded, "Insert excluded regions", "", Insert_Excluded, "", "Enter the limits of a region that is left out"},
    {command::admin_excluded, "Admin excluded regions", "exclude_admin", Admin_Excluded, "", "Look through the regions that are left out"},
};

std::vector<Dialog_Resource> Dialogs() {
    std::vector<Dialog_Resource> all = Move_Rows_Dialog_Resources();
    for (auto resource :
         {Insert_Excluded_Dialog_Resource, Admin_Excluded_Dialog_Resource, Show_Profiles_Dialog_Resource, Delete_Profiles_Dialog_Resource,
          Sort_Profiles_Dialog_Resource, File_Information_Dialog_Resource, Shift_Profiles_Dialog_Resource, Rename_Dialog_Resource,
          Normalize_Monitor_Dialog_Resource, Playing_Dialog_Resource})
        all.push_back(resource());
    return all;
}

}  // namespace

Command_Family Profiles_Commands() { return {commands, Dialogs}; }

}  // namespace vntl
