#include "app/script_print.hpp"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <ostream>
#include <variant>

#include "app/application.hpp"
#include "app/command_table.hpp"
#include "base/text.hpp"
#include "plot/plot.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

using Json = nlohmann::ordered_json;

namespace {

// A real with 9 significant digits, which single precision never exceeds; null for NaN and infinities.
Json Real(double value) {
    if (!std::isfinite(value)) return nullptr;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.9g", value);
    return std::strtod(text.data(), nullptr);
}

std::string Text(std::string_view text) { return std::string(Trim_Right(text)); }

template <typename T>
Json Array(const std::vector<T>& values, std::size_t first, std::size_t last) {
    Json array = Json::array();
    for (std::size_t i = first; i < std::min(last, values.size()); ++i) {
        if constexpr (std::is_floating_point_v<T>)
            array.push_back(Real(values[i]));
        else
            array.push_back(values[i]);
    }
    return array;
}

// --- rows of the store -------------------------------------------------------------------------------------------------------

void Pattern_Scalars(Json& row, const Diffraction_Pattern_Type& p) {
    row["title"] = Text(p.title);
    row["radiation"] = Text(p.radiation);
    row["scat_var"] = Text(p.scat_var);
    row["legend_x"] = Text(p.legend_x);
    row["legend_y"] = Text(p.legend_y);
    row["instr"] = Text(p.instr);
    row["filename"] = Text(p.filename);
    row["filepath"] = Text(p.filepath);
    const std::pair<const char*, float> reals[] = {{"xmin", p.xmin},
                                                   {"xmax", p.xmax},
                                                   {"ymin", p.ymin},
                                                   {"ymax", p.ymax},
                                                   {"scal", p.scal},
                                                   {"monitor", p.monitor},
                                                   {"norm_monitor", p.norm_monitor},
                                                   {"count_time", p.count_time},
                                                   {"step", p.step},
                                                   {"TSample", p.TSample},
                                                   {"TSetting", p.TSetting}};
    for (const auto& [name, value] : reals) row[name] = Real(value);
    row["npts"] = p.npts;
    const std::pair<const char*, bool> flags[] = {{"constant_step", p.constant_step},
                                                  {"has_y", p.has_y},
                                                  {"has_ycalc", p.has_ycalc},
                                                  {"has_bgr", p.has_bgr},
                                                  {"has_sigma", p.has_sigma},
                                                  {"sigma_is_variance", p.sigma_is_variance},
                                                  {"al_x", p.al_x},
                                                  {"al_y", p.al_y},
                                                  {"al_ycalc", p.al_ycalc},
                                                  {"al_bgr", p.al_bgr},
                                                  {"al_sigma", p.al_sigma},
                                                  {"al_istat", p.al_istat}};
    for (const auto& [name, value] : flags) row[name] = value;
    row["conv"] = Json::array();
    for (const float value : p.conv) row["conv"].push_back(Real(value));
}

void Info_Scalars(Json& row, const PRF_Info_Add_Type& info) {
    row["file_name"] = Text(info.file_name);
    row["directory"] = Text(info.directory);
    row["origin_note"] = Text(info.origin_note);
    row["kind"] = Text(info.kind);
    row["format"] = Text(info.format);
    row["nphases"] = info.nphases;
    row["nreflections"] = info.nreflections;
    row["chi2"] = Real(info.chi2);
    row["x_shift_total"] = Real(info.x_shift_total);
    row["y_mult_total"] = Real(info.y_mult_total);
    row["nexcl"] = info.nexcl;
}

void Print_Rows(const Session& session, std::ostream& output) {
    for (int n = 1; n <= session.store.nperfiles(); ++n) {
        Json row{{"row", n}};
        Pattern_Scalars(row, session.store.Pattern(n));
        Info_Scalars(row, session.store.Info(n));
        row["shown"] = session.store.shown(n);
        row["show_ycalc_of"] = session.store.show_ycalc_of[static_cast<std::size_t>(n - 1)];
        row["show_bgr_of"] = session.store.show_bgr_of[static_cast<std::size_t>(n - 1)];
        Write_Json_Line(output, row);
    }
}

Json Data_Of_Row(const Session& session, int n, int first, int last) {
    const Diffraction_Pattern_Type& p = session.store.Pattern(n);
    const auto from = static_cast<std::size_t>(first - 1), to = static_cast<std::size_t>(last);
    Json row{{"row", n}};
    const std::pair<const char*, const std::vector<float>*> reals[] = {
        {"x", &p.x}, {"y", &p.y}, {"sigma", &p.sigma}, {"ycalc", &p.ycalc}, {"bgr", &p.bgr}};
    for (const auto& [name, values] : reals)
        if (!values->empty()) row[name] = Array(*values, from, to);
    if (!p.istat.empty()) row["istat"] = Array(p.istat, from, to);
    if (!p.nd.empty()) row["nd"] = Array(p.nd, from, to);
    return row;
}

Json Reflections_Of_Row(const Session& session, int n) {
    const PRF_Info_Add_Type& info = session.store.Info(n);
    Json list = Json::array();
    for (std::size_t i = 0; i < info.refl_position.size(); ++i)
        list.push_back({{"position", Real(info.refl_position[i])},
                        {"phase", info.refl_phase[i]},
                        {"code", info.refl_code[i]},
                        {"tag", i < info.refl_tag.size() ? Real(info.refl_tag[i]) : Json(0)},
                        {"label", Text(info.refl_label[i])}});
    return {{"row", n}, {"reflections", list}};
}

Json Excluded_Of_Row(const Session& session, int n) {
    const PRF_Info_Add_Type& info = session.store.Info(n);
    Json list = Json::array();
    for (std::size_t i = 0; i < static_cast<std::size_t>(info.nexcl); ++i)
        list.push_back(Json::array({Real(info.excl_min[i]), Real(info.excl_max[i])}));
    return {{"row", n}, {"excluded", list}};
}

// --- state of the window -----------------------------------------------------------------------------------------------------

Json State(const Session& session) {
    const Plot_State& plot = session.plot;
    Json state{{"plot_type", plot.plot_type},
               {"MoveMode", plot.MoveMode},
               {"ClickMode", plot.ClickMode},
               {"xspace", plot.xspace},
               {"nperfiles", session.store.nperfiles()},
               {"ProfilePRFactive", session.store.ProfilePRFactive},
               {"prf_loaded", session.store.prf_loaded},
               {"profiles_uniform", session.store.profiles_uniform},
               {"mixed_scat_var", session.store.mixed_scat_var},
               {"log_scale", plot.log_scale},
               {"show_target", plot.show_target}};
    const std::pair<const char*, float> reals[] = {
        {"x_view_min", plot.x_view_min}, {"x_view_max", plot.x_view_max}, {"y_view_min", plot.y_view_min}, {"y_view_max", plot.y_view_max},
        {"x_all_min", plot.x_all_min},   {"x_all_max", plot.x_all_max},   {"y_all_min", plot.y_all_min},   {"y_all_max", plot.y_all_max},
        {"drawn_x1", plot.drawn_x1},     {"drawn_x2", plot.drawn_x2},     {"drawn_y1", plot.drawn_y1},     {"drawn_y2", plot.drawn_y2}};
    for (const auto& [name, value] : reals) state[name] = Real(value);
    state["xlabel_text"] = Text(plot.xlabel_text);
    state["ylabel_text"] = Text(plot.ylabel_text);
    state["status"] = Json::array();
    for (const std::string& text : session.interface.status) state["status"].push_back(Text(text));
    state["window_title"] = session.config.Window_Title();
    return state;
}

Json Menu_Item(const Session& session, const Command& command) {
    std::string label = Plain_Label(command.label);
    for (std::size_t slot = 0; slot < recent_file_commands.size(); ++slot)
        if (recent_file_commands[slot] == command.id && !session.interface.recent_labels[slot].empty())
            label = session.interface.recent_labels[slot];
    return {{"id", command.id},
            {"label", Text(label)},
            {"enabled", session.interface.Enabled(command.id)},
            {"checked", session.interface.Checked(command.id)},
            {"built", command.built()}};
}

Json Fit(const Calculation_Lists& lists) {
    const Fit_Marks& fit = lists.fit;
    Json peaks = Json::array();
    for (const Fit_Peak_Mark& peak : fit.peaks)
        peaks.push_back({{"pos", Real(peak.x)}, {"y", Real(peak.y)}, {"half_x", Real(peak.half_x)}, {"half_y", Real(peak.half_y)}});
    Json background = Json::array();
    for (const Background_Mark& point : lists.background) background.push_back({{"x", Real(point.x)}, {"y", Real(point.y)}});
    return {{"x_ini", Real(fit.a1)},
            {"y_ini", Real(fit.b1)},
            {"x_ini_set", fit.lower_set},
            {"x_fin", Real(fit.a2)},
            {"y_fin", Real(fit.b2)},
            {"x_fin_set", fit.upper_set},
            {"lambda1", Real(fit.lambda1)},
            {"lambda2", Real(fit.lambda2)},
            {"ratio", Real(fit.ratio)},
            {"fit_done", fit.done},
            {"peaks", peaks},
            {"background", background}};
}

Json Dialog(int dialog) {
    const Dialog_View view = Describe_Dialog(dialog);
    Json fields = Json::array();
    for (const Field_View& field : view.fields) {
        const bool grid = field.kind == "grid";
        fields.push_back({{"field", field.number},
                          {"kind", field.kind},
                          {"label", Text(field.label)},
                          {"value", grid ? Json(field.cells) : Json(Text(field.value))},
                          {"enabled", field.enabled}});
    }
    return {{"dialog", view.number}, {"title", Text(view.title)}, {"fields", fields}};
}

void Text_Preferences(Json& prefs, const std::string& name, const Text_Prefs& text) {
    const std::pair<const char*, int> numbers[] = {{"_pos", text.pos}, {"_font", text.font}, {"_style", text.style}, {"_size", text.size}};
    for (const auto& [field, value] : numbers) prefs[name + field] = value;
    prefs[name + "_colour"] = text.colour;
}

Json Profile_Styles(const Preferences& prefs) {
    Json styles = Json::array();
    for (const ProfileStyle& s : prefs.profile_styles)
        styles.push_back({{"line_colour", s.line_colour},
                          {"line_style", s.line_style},
                          {"line_pitch", s.line_pitch},
                          {"marker_colour", s.marker_colour},
                          {"marker_type", s.marker_type},
                          {"marker_size", s.marker_size},
                          {"match_colours", s.match_colours}});
    return styles;
}

Json Preferences_Json(const Preferences& p) {
    Json prefs{{"win_width", p.window.win_width}, {"win_height", p.window.win_height},       {"colour_a", p.window.colour_a},
               {"colour_b", p.window.colour_b},   {"keep_settings", p.window.keep_settings}, {"profile_styles", Profile_Styles(p)}};
    const Graph2D_Prefs& g = p.graph2d;
    prefs["frame_background"] = g.frame_background;
    prefs["frame_foreground"] = g.frame_foreground;
    prefs["title_single"] = Text(g.title_single);
    prefs["title_multi"] = Text(g.title_multi);
    const std::pair<const char*, const Text_Prefs*> texts[] = {{"title", &g.title},   {"xlabel", &g.xlabel}, {"ylabel", &g.ylabel},
                                                               {"legend", &g.legend}, {"xscale", &g.xscale}, {"yscale", &g.yscale}};
    for (const auto& [name, text] : texts) Text_Preferences(prefs, name, *text);
    prefs["xscale_format"] = g.xscale_format;
    prefs["yscale_format"] = g.yscale_format;
    const PRF_Prefs& r = p.prf;
    const std::pair<const char*, long> numbers[] = {{"ycalc_colour", r.ycalc_colour},
                                                    {"ycalc_style", r.ycalc_style},
                                                    {"ycalc_pitch", r.ycalc_pitch},
                                                    {"ycalc_marker", r.ycalc_marker},
                                                    {"ycalc_marker_size", r.ycalc_marker_size},
                                                    {"ydif_colour", r.ydif_colour},
                                                    {"ydif_style", r.ydif_style},
                                                    {"ydif_pitch", r.ydif_pitch},
                                                    {"ydif_marker", r.ydif_marker},
                                                    {"ydif_marker_size", r.ydif_marker_size},
                                                    {"refl_colour", r.refl_colour},
                                                    {"refl_pitch", r.refl_pitch},
                                                    {"excl_colour", r.excl_colour}};
    for (const auto& [name, value] : numbers) prefs[name] = value;
    const std::pair<const char*, bool> flags[] = {{"refl_live", r.refl_live},
                                                  {"excl_show", r.excl_show},
                                                  {"excl_match", r.excl_match},
                                                  {"excl_ignore_sides", r.excl_ignore_sides},
                                                  {"hide_negative", r.hide_negative}};
    for (const auto& [name, value] : flags) prefs[name] = value;
    return prefs;
}

Json Paths(const Configuration& config) {
    return {{"os_tag", config.os_tag},         {"sep", std::string(1, config.sep)},   {"start_dir", config.start_dir},
            {"launch_dir", config.launch_dir}, {"quendrix_dir", config.quendrix_dir}, {"config_dir", config.config_dir},
            {"last_dir", config.last_dir},     {"pcr_file", config.pcr_file},         {"set_file", config.set_file},
            {"mru_file", config.mru_file}};
}

// --- the picture -------------------------------------------------------------------------------------------------------------

Json Points(const std::vector<Point>& points) {
    Json list = Json::array();
    for (const Point& point : points) list.push_back(Json::array({Real(point.x), Real(point.y)}));
    return list;
}

std::vector<Point> Outline(const Recorded_Ellipse& e) {
    constexpr int corners = 32;
    std::vector<Point> points;
    for (int i = 0; i < corners; ++i) {
        const double angle = 2 * 3.14159265358979323846 * i / corners;
        points.push_back({e.centre.x + e.rx * std::cos(angle), e.centre.y + e.ry * std::sin(angle)});
    }
    return points;
}

Json Picture(Session& session, bool full) {
    Recording_Device record;
    const Plot_State before = session.plot;
    Draw_With_Marks(session, record);
    session.plot = before;

    Json texts = Json::array(), lines = Json::array(), markers = Json::array(), fills = Json::array();
    const auto add = [&](Json& list, Json entry, const std::vector<Point>& points) {
        entry["n"] = points.size();
        if (full) entry["points"] = Points(points);
        list.push_back(std::move(entry));
    };
    for (const Recorded& item : record.items()) {
        if (const auto* clear = std::get_if<Recorded_Clear>(&item))
            add(fills, {{"colour", clear->colour}}, {{0, 0}, {page_width, 0}, {page_width, page_height}, {0, page_height}});
        else if (const auto* line = std::get_if<Recorded_Line>(&item))
            add(lines, {{"colour", line->pen.colour}, {"width", Real(line->pen.width)}}, line->points);
        else if (const auto* set = std::get_if<Recorded_Markers>(&item))
            add(markers, {{"glyph", set->style.glyph}, {"colour", set->style.colour}}, set->points);
        else if (const auto* fill = std::get_if<Recorded_Fill>(&item))
            add(fills, {{"colour", fill->colour}}, fill->points);
        else if (const auto* ellipse = std::get_if<Recorded_Ellipse>(&item))
            ellipse->filled ? add(fills, {{"colour", ellipse->pen.colour}}, Outline(*ellipse))
                            : add(lines, {{"colour", ellipse->pen.colour}, {"width", Real(ellipse->pen.width)}}, Outline(*ellipse));
        else if (const auto* text = std::get_if<Recorded_Text>(&item))
            texts.push_back({{"text", Text(text->text)},
                             {"x", Real(text->at.x)},
                             {"y", Real(text->at.y)},
                             {"size", Real(text->style.height)},
                             {"colour", text->style.colour}});
    }
    return {{"width", page_width}, {"height", page_height}, {"texts", texts}, {"lines", lines}, {"markers", markers}, {"fills", fills}};
}

// --- words of the statement --------------------------------------------------------------------------------------------------

// The row number behind a word; fails when it is no row of the store.
Status Row_Number(const Session& session, const std::vector<std::string>& words, int& row) {
    if (words.size() < 2 || !Parse_Integer(words[1], row)) return Status::Fail("usage: print " + words.front() + " N");
    if (row < 1 || row > session.store.nperfiles()) return Status::Fail("there is no row " + words[1]);
    return Status::Done();
}

Status Print_Data(const Session& session, std::ostream& output, const std::vector<std::string>& words) {
    int row = 0;
    if (const Status status = Row_Number(session, words, row); status.failed) return status;
    int first = 1, last = session.store.Pattern(row).npts;
    const bool range = words.size() == 4;
    if ((words.size() != 2 && !range) || (range && (!Parse_Integer(words[2], first) || !Parse_Integer(words[3], last))))
        return Status::Fail("usage: print data N [FIRST LAST]");
    if (first < 1 || last < first) return Status::Fail("points run from 1 upward");
    Write_Json_Line(output, Data_Of_Row(session, row, first, last));
    return Status::Done();
}

Status Print_Menu(const Session& session, std::ostream& output, const std::vector<std::string>& words) {
    if (words.size() == 1) {
        for (const Command& command : Command_Table()) Write_Json_Line(output, Menu_Item(session, command));
        return Status::Done();
    }
    int id = 0;
    const Command* command = words.size() == 2 && Parse_Integer(words[1], id) ? Find_Command(id) : nullptr;
    if (command == nullptr) return Status::Fail("there is no command " + words[1]);
    Write_Json_Line(output, Menu_Item(session, *command));
    return Status::Done();
}

Json Shown_Toolbars(const Interface_State& state) {
    constexpr std::array<int, 2> rows = {first_toolbar_row, second_toolbar_row};
    Json list = Json::array();
    for (const Toolbar_Resource& table : Toolbars())
        for (std::size_t bar = 0; bar < rows.size(); ++bar) {
            if (state.toolbars[bar] != table.number) continue;
            Json buttons = Json::array();
            for (const int command : table.commands)
                if (command != 0) buttons.push_back(command);
            list.push_back({{"number", table.number}, {"row", rows[bar]}, {"buttons", buttons}});
        }
    return list;
}

Json Peaks(const Calculation_Lists& lists) {
    Json list = Json::array();
    for (const Peak_Mark& peak : lists.peaks) list.push_back({{"x", Real(peak.x)}, {"y", Real(peak.y)}, {"bgr", Real(peak.bgr)}});
    return {{"peaks", list}};
}

Json Background(const Calculation_Lists& lists) {
    Json list = Json::array();
    for (const Background_Mark& point : lists.background) list.push_back({{"x", Real(point.x)}, {"y", Real(point.y)}});
    return {{"background", list}};
}

Json Generated(const Calculation_Lists& lists) {
    Json list = Json::array();
    for (const Reflection_Mark& mark : lists.hklgen)
        list.push_back({{"x", Real(mark.x)}, {"y", Real(mark.y)}, {"label", Text(mark.label)}});
    return {{"hklgen", list}};
}

Json Recent(const Recent_Files& recent) {
    Json list = Json::array();
    for (int slot = 1; slot <= recent_file_slots; ++slot) list.push_back(Text(recent.Slot(slot)));
    return {{"recent", list}};
}

}  // namespace

void Write_Json_Line(std::ostream& output, const Json& object) {
    output << object.dump(-1, ' ', false, Json::error_handler_t::replace) << std::endl;
}

Status Print_State(Application& app, std::ostream& output, int dialog, const std::vector<std::string>& words) {
    Session& session = app.session;
    const std::string what = words.empty() ? "" : words.front();
    if (what == "data") return Print_Data(session, output, words);
    if (what == "menu") return Print_Menu(session, output, words);
    if (what == "reflections" || what == "excluded") {
        int row = 0;
        const Status status = Row_Number(session, words, row);
        if (status.ok()) Write_Json_Line(output, what == "reflections" ? Reflections_Of_Row(session, row) : Excluded_Of_Row(session, row));
        return status;
    }
    const bool full = what == "picture" && words.size() == 2 && words[1] == "full";
    if (words.size() != 1 && !full) return Status::Fail("usage: print WHAT");
    if (what == "rows")
        Print_Rows(session, output);
    else if (what == "state")
        Write_Json_Line(output, State(session));
    else if (what == "toolbars")
        Write_Json_Line(output, {{"toolbars", Shown_Toolbars(session.interface)}});
    else if (what == "peaks")
        Write_Json_Line(output, Peaks(session.lists));
    else if (what == "background")
        Write_Json_Line(output, Background(session.lists));
    else if (what == "hklgen")
        Write_Json_Line(output, Generated(session.lists));
    else if (what == "fit")
        Write_Json_Line(output, {{"fit", Fit(session.lists)}});
    else if (what == "dialog" && WDialogLoaded(dialog))
        Write_Json_Line(output, Dialog(dialog));
    else if (what == "dialog")
        return Status::Fail("no dialog is open");
    else if (what == "picture")
        Write_Json_Line(output, Picture(session, full));
    else if (what == "recent")
        Write_Json_Line(output, Recent(session.recent));
    else if (what == "prefs")
        Write_Json_Line(output, {{"prefs", Preferences_Json(session.prefs)}});
    else if (what == "paths")
        Write_Json_Line(output, {{"paths", Paths(session.config)}});
    else if (what == "timing")
        Write_Json_Line(
            output,
            {{"timing",
              {{"read", Real(session.plot.read_ms)}, {"draw", Real(session.plot.draw_ms)}, {"points", session.plot.drawn_points}}}});
    else
        return Status::Fail("there is nothing to print by the name of " + what);
    return Status::Done();
}

}  // namespace vntl
