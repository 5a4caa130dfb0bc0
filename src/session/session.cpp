// The session as a whole: emptying it, its files at exit, and the conditions that hold between its parts.
#include "session/session.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "base/text.hpp"

namespace vntl {
namespace {

// Commands whose check mark goes with the rows: the x spaces, the spectral lines and their menu.
constexpr int checks_of_rows[] = {command::to_two_theta, command::to_tof, command::to_d,   command::to_q,   command::to_s,
                                  command::lines_menu,   command::line_1, command::line_2, command::line_3, command::line_4};

template <class T>
bool Length_Is_Or_None(const std::vector<T>& array, std::int32_t length) {
    return array.empty() || array.size() == static_cast<std::size_t>(length);
}

// What is wrong with a row, empty when nothing is.
std::string Fault_Of_Row(const Profile_Store& store, int row) {
    const Diffraction_Pattern_Type& p = store.Pattern(row);
    const PRF_Info_Add_Type& info = store.Info(row);
    if (p.npts < 1) return "npts";
    if (p.x.size() != static_cast<std::size_t>(p.npts) || p.y.size() != p.x.size()) return "length of x or y";
    if (!(Length_Is_Or_None(p.sigma, p.npts) && Length_Is_Or_None(p.istat, p.npts) && Length_Is_Or_None(p.ycalc, p.npts) &&
          Length_Is_Or_None(p.bgr, p.npts) && Length_Is_Or_None(p.nd, p.npts)))
        return "length of an optional array";
    if (!std::isfinite(p.x.front()) || !std::isfinite(p.x.back()) || p.x.back() < p.x.front()) return "order of x";
    if (info.nexcl < 0 || info.nexcl > max_excluded_regions) return "nexcl";
    if (info.nphases < 0 || info.nreflections < 0) return "nphases or nreflections";
    if (!(Length_Is_Or_None(info.refl_position, info.nreflections) && Length_Is_Or_None(info.refl_code, info.nreflections) &&
          Length_Is_Or_None(info.refl_phase, info.nreflections) && Length_Is_Or_None(info.refl_label, info.nreflections)))
        return "length of the reflections";
    return {};
}

std::string Fault_Of_Store(const Profile_Store& store) {
    const int rows = store.nperfiles();
    if (rows > max_profiles) return "nperfiles";
    if (store.ProfilePRFactive < 0 || store.ProfilePRFactive > rows) return "ProfilePRFactive";
    if (store.profiles_uniform && rows == 0) return "profiles_uniform";
    if ((store.chosen >> static_cast<std::size_t>(rows)).any()) return "chosen rows";
    for (int row = 1; row <= rows; ++row)
        if (const std::string fault = Fault_Of_Row(store, row); !fault.empty()) return "row " + std::to_string(row) + ": " + fault;
    return {};
}

std::string Fault_Of_Plot(const Session& session) {
    const Plot_State& plot = session.plot;
    const float numbers[] = {plot.x_all_min,  plot.x_all_max,  plot.y_all_min,  plot.y_all_max,    plot.x_view_min,
                             plot.x_view_max, plot.y_view_min, plot.y_view_max, plot.drawn.x1,     plot.drawn.x2,
                             plot.drawn.y1,   plot.drawn.y2,   plot.diff_base,  plot.y_prf_bottom, plot.diff_band};
    if (!std::all_of(std::begin(numbers), std::end(numbers), [](float v) { return std::isfinite(v); })) return "view not finite";
    if (plot.Is_Log() && plot.y_scale == Y_Scale::root) return "roots in a form of logarithms";
    if (plot.x_view_min > plot.x_view_max || plot.y_view_min > plot.y_view_max) return "view turned round";
    if (plot.ClickMode != Click_Mode::none && plot.plot_type != Plot_Form::calculation) return "ClickMode outside a calculation";
    if (session.hkl_gen.hkl_open && plot.ClickMode != Click_Mode::reflections) return "HKL Gen without its mode";
    if (plot.pointed_row < 0 || plot.pointed_row > session.store.nperfiles()) return "row under the pointer";
    for (const int entry : plot.hits.entries)
        if (plot.hits.generated && static_cast<std::size_t>(entry) > session.lists.hklgen.size()) return "reflections under the pointer";
    const bool needs_grid = plot.Is_Map() || plot.plot_type == Plot_Form::surface;
    if (needs_grid && plot.grid.grid_z.size() != plot.grid.grid_x.size() * plot.grid.grid_y.size()) return "size of the grid";
    if (needs_grid && plot.grid.grid_z.empty()) return "a map without a grid";
    if (plot.Is_Map() && !(1 <= plot.first_pattern && plot.last_pattern <= session.store.nperfiles())) return "rows of the map";
    if ((plot.peak_insert && plot.peak_delete) || (plot.bgr_insert && plot.bgr_delete)) return "insertion and deletion together";
    if ((session.store.nperfiles() == 0) != (plot.xspace == X_Space::none)) return "xspace " + std::string(Told(plot.xspace));
    if (session.store.nperfiles() == 0 && plot.plot_type != Plot_Form::none) return "plot form of an empty store";
    return {};
}

std::string Fault_Of_Lists(const Session& session) {
    const Calculation_Lists& lists = session.lists;
    if (lists.peaks.size() > max_peaks) return "peaks";
    if (lists.background.size() > max_background_points) return "background";
    if (lists.fit.peaks.size() > max_fit_peaks) return "fit peaks";
    for (int slot = 1; slot <= recent_file_slots; ++slot)
        if (session.recent.Slot(slot).empty() || Cut(session.recent.Slot(slot), recent_file_width) != session.recent.Slot(slot))
            return "recent file " + std::to_string(slot);
    return {};
}

}  // namespace

void Reset_Profiles(Session& session) {
    session.store.Clear();
    session.lists = {};

    Plot_State fresh;
    fresh.plot_type = session.plot.plot_type;
    fresh.log_scale = session.plot.log_scale;
    fresh.y_scale = session.plot.y_scale;
    fresh.read_ms = session.plot.read_ms;
    fresh.draw_ms = session.plot.draw_ms;
    fresh.drawn_points = session.plot.drawn_points;
    session.plot = fresh;

    Interface_State& menu = session.interface;
    menu.Check(command::target, false);
    for (const int command : checks_of_rows) menu.Check(command, false);
    menu.Status_Text(3, "");
    menu.Status_Text(4, "");
}

void Write_Exit_Files(const Session& session) {
    if (!session.config.files_allowed) return;
    Write_Last_Directory(session.config, session.prefs.environment.quendrix_dir);
    Write_Select_Directory(session.config);
    session.recent.Write(session.config.Recent_Files_Path());
    Write_Desk(session.desk, Desk_File(session.config, session.prefs.environment));
}

Status Check_Invariants(const Session& session) {
    for (const std::string& fault : {Fault_Of_Store(session.store), Fault_Of_Plot(session), Fault_Of_Lists(session)})
        if (!fault.empty()) return Status::Fail(fault);
    if (session.interface.status[status_parts - 1] != Told(session.plot.plot_type)) return Status::Fail("status bar without the plot form");
    return Status::Done();
}

}  // namespace vntl
