#include "app/command_table.hpp"

#include "base/text.hpp"
#include "commands/families.hpp"
#include "views/views.hpp"

namespace vntl {

namespace {

const std::vector<Command>& All_Commands() {
    static const std::vector<Command> commands = [] {
        std::vector<Command> all;
        for (const Command_Family& family : Families()) all.insert(all.end(), family.commands.begin(), family.commands.end());
        return all;
    }();
    return commands;
}

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
using namespace command;
constexpr Place places[] = {
    open("&File"), at(open_pattern), at(open_prf), at(open_buffer), at(open_raw), line, at(open_numor), at(open_instrument), at(view_numor_header), line,
    open("Save pattern"), at(save_free_format), at(save_xys), close, at(save_buffer), line, at(save_picture), at(print), line,
    at(recent_1), at(recent_2), at(recent_3), at(recent_4), at(recent_5), line, at(reset), at(exit), close,
    open("&Edit"), at(undo), at(redo), line, at(copy_picture), at(copy_text), close,
    open("&Profiles"), at(pattern_list), at(rename_pattern), line, at(show_profiles), at(sort_profiles), at(play_profiles), line, at(copy_profile), at(delete_profiles), line, at(file_information), line, at(normalize_monitor), at(shift_profiles), at(offset_align), at(scale_y), at(scale_x), line,
    at(select_excluded), at(insert_excluded), at(admin_excluded), close,
    open(xspace_menu), at(to_two_theta), at(to_tof), at(to_d), at(to_q), at(to_s), line, at(change_wavelength), at(change_dtt), at(constants_from_file), close,
    open("&Calculations"), at(sum), at(average), at(difference), at(subtract_background), at(multiply), at(efficiency), line,
    open(smoothing_menu), at(smooth_fourier), at(smooth_polynomial), close,
    open(peaks_menu), at(peaks_on), at(peaks_off), line, at(search_peaks), at(search_satellites), at(insert_peak), at(delete_peak), at(snap_to_maximum), at(clear_peaks), line,
    open(save_peaks_menu), at(save_peaks_free), at(save_peaks_dicvol), at(save_peaks_treor), at(save_peaks_ito), at(save_peaks_vecfind), close, close,
    open(background_menu), at(background_on), at(background_off), line, at(search_background), at(insert_background), at(delete_background), at(clear_background), line, at(save_background), close,
    open(fit_menu), at(fit_on), at(fit_off), line, at(fit_auto_peaks), at(run_fit), at(clear_fit), line, at(load_pik), at(edit_pik), close, at(fit_series), line,
    at(hkl_gen), open(lines_menu), at(lines_on), at(lines_off), line, at(line_1), at(line_2), at(line_3), at(line_4), line, at(lines_settings), close, close,
    open("P&lot"), at(graph_2d), at(graph_2d_log), at(contour), at(contour_log), at(graph_3d), at(surface_3d), at(model_3d), line,
    open("Style"), at(style_default), at(style_paper), at(style_screen), at(style_dark), line, at(series_by_temperature), close,
    open("Scale of intensities"), at(linear_intensities), at(logarithms), at(root_intensities), line, at(next_scale), close, at(waterfall), line, at(focus), at(focus_profile), at(target),
    open("Move the view"), at(move_left), at(move_right), at(all_left), at(all_right), line, at(move_up), at(move_down), line, at(contract), at(expand), line, at(view_back), at(view_forward), close,
    at(drag), at(drag_end), line, at(quick_view), at(viewer_2d), at(generic_graphs), at(sequential_results), close,
    open("&Options"), at(preferences), close,
    open("Ext. &Applications"), at(run_quendrix), at(run_sequential), at(run_studio), at(run_tabedit), at(run_glinker), at(run_gmapper), at(run_repsolve), line, at(run_vecfind), at(run_dicvol), at(run_ito),
    at(run_treor), at(run_rawmerge), at(run_radiox), at(prepare_osl), line, at(edit_pcr), at(text_editor), at(console), at(explorer), close,
    open("&Help"), at(guide_ascii), at(guide_html), at(guide_pdf), at(studio_guide), line, at(news_text), at(news_html), at(program_news), line, at(download_suite), at(download_program), at(web_site), line,
    at(gestures), at(about), close,
};
// clang-format on

// The entries from `place` up to the end of the popup, which `place` then stands behind.
std::vector<Menu_Entry> Entries(std::span<const Place>& place) {
    std::vector<Menu_Entry> entries;
    while (!place.empty()) {
        const Place here = place.front();
        place = place.subspan(1);
        if (here.popup == "}") break;
        Menu_Entry entry = Menu_Entry_Of(here.command);
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

std::vector<Command_Family> Families() {
    return {File_Commands(),      Edit_Commands(),        Profiles_Commands(),   Xspace_Commands(),
            Calc_Commands(),      Peaks_Commands(),       Fit_Commands(),        Crystal_Commands(),
            Plot_Commands(),      Instrument_Commands(),  Options_Commands(),    External_Commands(),
            Viewer_2D_Commands(), Text_Editor_Commands(), Quick_View_Commands(), Generic_Graphics_Commands(),
            Model_3D_Commands(),  Help_Commands()};
}

std::span<const Command> Command_Table() { return All_Commands(); }

const Command* Find_Command(int id) {
    for (const Command& command : All_Commands())
        if (command.id == id) return &command;
    return nullptr;
}

Menu_Entry Menu_Entry_Of(int id) {
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

std::vector<Menu_Entry> Menu_Bar() {
    std::span<const Place> place = places;
    return Entries(place);
}

// The first bar of each form holds files and what the form is for, the second one of the 2D forms the ways to move the view and the
// profiles. 30105 to 30108 name commands of the windows of quick view, text editor, generic graphics and area detectors.
std::vector<Toolbar_Resource> Toolbars() {
    return {
        {30101,
         16,
         16,
         {command::open_pattern, command::open_prf, command::open_buffer, command::open_raw, command::open_numor, 0, command::run_quendrix,
          command::run_sequential, command::run_studio, command::sequential_results, 0, command::edit_pcr, command::text_editor,
          command::console, command::explorer, 0, command::preferences, command::gestures}},
        {30102,
         16,
         16,
         {command::open_pattern,
          command::open_prf,
          command::open_buffer,
          0,
          command::save_picture,
          command::print,
          command::copy_picture,
          command::reset,
          0,
          command::show_profiles,
          command::copy_profile,
          command::select_excluded,
          command::admin_excluded,
          0,
          command::peaks_on,
          command::background_on,
          command::fit_on,
          command::hkl_gen,
          command::lines_on,
          0,
          command::run_quendrix,
          command::sequential_results,
          0,
          command::text_editor,
          command::preferences,
          command::gestures}},
        {30103,
         16,
         16,
         {command::open_pattern,
          command::open_prf,
          command::open_buffer,
          0,
          command::save_picture,
          command::print,
          command::copy_picture,
          command::reset,
          0,
          command::graph_2d,
          command::graph_2d_log,
          command::contour,
          command::contour_log,
          command::graph_3d,
          command::surface_3d,
          command::model_3d,
          0,
          command::show_profiles,
          command::sort_profiles,
          command::play_profiles,
          command::delete_profiles,
          0,
          command::sum,
          command::average,
          command::difference,
          0,
          command::preferences,
          command::gestures}},
        {30104,
         16,
         16,
         {command::all_left,
          command::move_left,
          command::move_right,
          command::all_right,
          0,
          command::move_up,
          command::move_down,
          0,
          command::contract,
          command::expand,
          command::focus,
          0,
          command::view_back,
          command::view_forward,
          0,
          command::drag,
          command::drag_end,
          command::target,
          0,
          command::scale_y,
          command::scale_x,
          command::offset_align,
          command::multiply,
          0,
          command::smooth_fourier}},
        {30105,
         16,
         16,
         {command::quick_view_directory, command::quick_view_previous, command::quick_view_next, 0, command::quick_view_to_main, 0,
          command::quick_view_close}},
        {30106,
         16,
         16,
         {command::editor_open, command::editor_save, 0, command::editor_undo, command::editor_redo, 0, command::editor_cut,
          command::editor_copy, command::editor_paste, 0, command::editor_find}},
        {30107,
         16,
         16,
         {command::generic_open, command::generic_close, command::generic_reload, 0, command::generic_print, 0, command::generic_exit}},
        {30108,
         16,
         16,
         {command::viewer_open, command::viewer_reload, command::viewer_reset, 0, command::viewer_linear, command::viewer_root_square,
          command::viewer_logarithm, 0, command::viewer_rectangle, command::viewer_line, 0, command::viewer_section, command::viewer_omega,
          command::viewer_zone, 0, command::viewer_exit}},
    };
}

std::string Plain_Label(std::string_view label) { return Replace_All(label, "&", ""); }

}  // namespace vntl
