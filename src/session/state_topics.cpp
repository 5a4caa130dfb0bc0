// Plot, lists, preferences and paths, as scripts print them.
#include <algorithm>
#include <iterator>

#include "session/desk/ghosts.hpp"
#include "session/desk/style_topic.hpp"
#include "session/desk/waterfall.hpp"
#include "session/fit.hpp"
#include "session/preference_table.hpp"
#include "session/session.hpp"
#include "session/topics.hpp"

namespace vntl {

namespace {

Json State(const Session& session) {
    const Plot_State& plot = session.plot;
    Json state{{"plot_type", Told(plot.plot_type)},
               {"MoveMode", static_cast<int>(plot.MoveMode)},
               {"ClickMode", static_cast<int>(plot.ClickMode)},
               {"xspace", Told(plot.xspace)},
               {"nperfiles", session.store.nperfiles()},
               {"ProfilePRFactive", session.store.ProfilePRFactive},
               {"prf_loaded", session.store.prf_loaded},
               {"profiles_uniform", session.store.profiles_uniform},
               {"mixed_scat_var", session.store.mixed_scat_var},
               {"log_scale", plot.log_scale},
               {"y_scale", Told(plot.Scale())},
               {"show_target", plot.show_target}};
    const std::pair<const char*, float> reals[] = {
        {"x_view_min", plot.x_view_min}, {"x_view_max", plot.x_view_max}, {"y_view_min", plot.y_view_min}, {"y_view_max", plot.y_view_max},
        {"x_all_min", plot.x_all_min},   {"x_all_max", plot.x_all_max},   {"y_all_min", plot.y_all_min},   {"y_all_max", plot.y_all_max},
        {"shift_x", session.shift.x},    {"shift_y", session.shift.y},    {"drawn_x1", plot.drawn.x1},     {"drawn_x2", plot.drawn.x2},
        {"drawn_y1", plot.drawn.y1},     {"drawn_y2", plot.drawn.y2}};
    for (const auto& [name, value] : reals) state[name] = Json_Real(value);
    state["view_rotation"] = Json_Real(plot.view_rotation);
    state["view_elevation"] = Json_Real(plot.view_elevation);
    state["first_pattern"] = plot.first_pattern;
    state["last_pattern"] = plot.last_pattern;
    state["saturation_on"] = session.prefs.saturation.saturation_on;
    state["saturation_value"] = Json_Real(session.prefs.saturation.saturation_value);
    state["xlabel_text"] = Json_Text(plot.xlabel_text);
    state["ylabel_text"] = Json_Text(plot.ylabel_text);
    state["status"] = Json_Texts(session.interface.status);
    state["window_title"] = session.config.Window_Title();
    return state;
}

Json Peaks(const Calculation_Lists& lists) {
    Json list = Json::array();
    for (const Peak_Mark& peak : lists.peaks)
        list.push_back({{"x", Json_Real(peak.x)}, {"y", Json_Real(peak.y)}, {"bgr", Json_Real(peak.bgr)}});
    return {{"peaks", list}};
}

Json Background(const Calculation_Lists& lists) {
    Json list = Json::array();
    for (const Background_Mark& point : lists.background) list.push_back({{"x", Json_Real(point.x)}, {"y", Json_Real(point.y)}});
    return {{"background", list}};
}

// The curves of a dialog that is open, each with its number of points, its sum and its highest value.
Json Preview(const Plot_State& plot) {
    Json list = Json::array();
    for (const Preview_Curve& curve : plot.preview) {
        double sum = 0;
        for (const float y : curve.y) sum += y;
        list.push_back({{"row", curve.row},
                        {"points", curve.y.size()},
                        {"sum", Json_Real(static_cast<float>(sum))},
                        {"highest", Json_Real(curve.y.empty() ? 0 : *std::max_element(curve.y.begin(), curve.y.end()))}});
    }
    return {{"preview", list}};
}

Json Generated(const Calculation_Lists& lists) {
    Json list = Json::array();
    for (const Reflection_Mark& mark : lists.hklgen)
        list.push_back({{"x", Json_Real(mark.x)}, {"y", Json_Real(mark.y)}, {"label", Json_Text(mark.label)}});
    return {{"hklgen", list}};
}

Json Recent(const Recent_Files& recent) {
    Json list = Json::array();
    for (int slot = 1; slot <= recent_file_slots; ++slot) list.push_back(Json_Text(recent.Slot(slot)));
    return {{"recent", list}};
}

Json Json_Of(const Preference_Value& value) {
    return std::visit(
        [](const auto& v) {
            using Value = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<Value, std::string>)
                return Json(Json_Text(v));
            else if constexpr (std::is_same_v<Value, float>)
                return Json_Real(v);
            else
                return Json(v);
        },
        value);
}

// By their names; the slots of the styles and the colours of the palette as lists.
Json Preferences_Json(const Preferences& prefs) {
    Json all;
    for (const Preference& preference : Preference_Table()) {
        Json* place = &all;
        std::string_view rest = preference.name;
        while (!rest.empty()) {
            const std::size_t slash = std::min(rest.find('/'), rest.size());
            const std::string step(rest.substr(0, slash));
            int slot = 0;
            place = Parse_Integer(step, slot) ? &(*place)[static_cast<std::size_t>(slot - 1)] : &(*place)[step];
            rest.remove_prefix(std::min(slash + 1, rest.size()));
        }
        *place = Json_Of(Value_Of(preference, prefs));
    }
    return all;
}

Json Paths(const Session& session) {
    const Configuration& config = session.config;
    return {{"os_tag", config.os_tag},
            {"sep", std::string(1, config.sep)},
            {"start_dir", config.start_dir},
            {"launch_dir", config.launch_dir},
            {"quendrix_dir", session.prefs.environment.quendrix_dir},
            {"config_dir", config.config_dir},
            {"last_dir", config.last_dir},
            {"pcr_file", config.pcr_file},
            {"set_file", config.set_file},
            {"mru_file", config.mru_file}};
}

Json Grid(const PlotGrid& grid, bool full) {
    const auto list = [](auto from, auto to) {
        Json values = Json::array();
        std::transform(from, to, std::back_inserter(values), [](float v) { return Json_Real(v); });
        return values;
    };
    const std::ptrdiff_t nx = std::ssize(grid.grid_x), ny = std::ssize(grid.grid_y);
    Json all{{"nx", nx},
             {"ny", ny},
             {"y_label", grid.grid_y_label},
             {"x", list(grid.grid_x.begin(), grid.grid_x.end())},
             {"y", list(grid.grid_y.begin(), grid.grid_y.end())},
             {"z_min", Json_Real(grid.z_min)},
             {"z_max", Json_Real(grid.z_max)},
             {"smoothed", grid.smoothed}};
    if (full) {
        all["z"] = Json::array();
        for (std::ptrdiff_t k = 0; k < ny; ++k) all["z"].push_back(list(grid.grid_z.begin() + k * nx, grid.grid_z.begin() + (k + 1) * nx));
    }
    return {{"grid", all}};
}

Status Print_Grid(const PlotGrid& grid, Words words, const Put_Line& put) {
    const bool full = words.size() == 1 && words[0] == "full";
    if (!words.empty() && !full) return Status::Fail("usage: print grid [full]");
    put(Grid(grid, full));
    return Status::Done();
}

Json View_Json(const View& view) { return Json::array({Json_Real(view.x1), Json_Real(view.x2), Json_Real(view.y1), Json_Real(view.y2)}); }

Json Quick_View_Json(const Quick_View& quick) {
    Json files = Json::array(), temperatures = Json::array();
    for (const Quick_File& file : quick.files) {
        files.push_back(file.name);
        temperatures.push_back(Json_Text(file.temperature));
    }
    return {{"quickview",
             {{"open", quick.open},
              {"dir", quick.directory},
              {"files", files},
              {"temps", temperatures},
              {"count", quick.Count()},
              {"index", quick.index},
              {"status", Json_Texts(quick.status)},
              {"full", View_Json(quick.plot.Whole_Range())},
              {"view", View_Json(quick.plot.Shown_View())}}}};
}

Json Changes(const Change_History& changes) { return {{"changes", {{"undo", changes.Text_To_Undo()}, {"redo", changes.Text_To_Redo()}}}}; }

// What follows the hand over the plot.
Json Pointer(const Session& session) {
    Json ghosts = Json::array();
    for (const Row_Ghost& ghost : Ghosts_In_Hand(session.store, session.plot))
        ghosts.push_back(
            {{"row", ghost.row}, {"x", {Json_Real(ghost.ax), Json_Real(ghost.bx)}}, {"y", {Json_Real(ghost.ay), Json_Real(ghost.by)}}});
    return {{"pointer", {{"row", session.plot.pointed_row}, {"ghosts", ghosts}, {"snap_to_maximum", session.desk.snap_to_maximum}}}};
}

// With the offset of each row, in units of the view.
Json Waterfall_Json(const Session& session) {
    const Waterfall& waterfall = session.plot.waterfall;
    const Row_Offsets offsets(session.store, session.plot);
    Json rows = Json::array();
    for (int row = 1; row <= session.store.nperfiles(); ++row) rows.push_back(Json_Real(offsets.Of(row)));
    return {{"waterfall",
             {{"offset", Json_Real(waterfall.offset)},
              {"by_temperature", waterfall.by_temperature},
              {"hidden_lines", waterfall.hidden_lines},
              {"rows", rows}}}};
}

Json Timing(const Plot_State& plot) {
    return {{"timing", {{"read", Json_Real(plot.read_ms)}, {"draw", Json_Real(plot.draw_ms)}, {"points", plot.drawn_points}}}};
}

}  // namespace

std::vector<Topic> State_Topics(const Session& s) {
    return {Plain_Topic("state", [&s] { return State(s); }),
            {"grid", [&s](Words words, const Put_Line& put) { return Print_Grid(s.plot.grid, words, put); }},
            Plain_Topic("cursor",
                        [&s] {
                            return Json{{"cursor", Told(s.interface.cursor)}};
                        }),
            Plain_Topic("pointer", [&s] { return Pointer(s); }),
            Plain_Topic("peaks", [&s] { return Peaks(s.lists); }),
            Plain_Topic("background", [&s] { return Background(s.lists); }),
            Plain_Topic("preview", [&s] { return Preview(s.plot); }),
            Plain_Topic("hklgen", [&s] { return Generated(s.lists); }),
            Plain_Topic("fit", [&s] { return Fit_Json(s); }),
            Plain_Topic("quickview", [&s] { return Quick_View_Json(s.quick_view); }),
            Plain_Topic("changes", [&s] { return Changes(s.store.changes); }),
            Plain_Topic("recent", [&s] { return Recent(s.recent); }),
            Plain_Topic("prefs",
                        [&s] {
                            return Json{{"prefs", Preferences_Json(s.prefs)}};
                        }),
            Style_Topic(s),
            Plain_Topic("paths",
                        [&s] {
                            return Json{{"paths", Paths(s)}};
                        }),
            Plain_Topic("waterfall", [&s] { return Waterfall_Json(s); }),
            Plain_Topic("timing", [&s] { return Timing(s.plot); })};
}

}  // namespace vntl
