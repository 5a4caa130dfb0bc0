// The dialog and the picture in front, and the timers of all windows, as scripts print them.
#include "toolkit/topics.hpp"

#include <map>
#include <variant>

#include "base/page.hpp"
#include "drawing/recording.hpp"
#include "toolkit/dialog.hpp"
#include "toolkit/window.hpp"
#include "toolkit/window_service.hpp"

namespace vntl {

namespace {

Json Dialog(int dialog) {
    const Dialog_View view = Describe_Dialog(dialog);
    Json fields = Json::array();
    for (const Field_View& field : view.fields) {
        const bool grid = field.kind == "grid";
        fields.push_back({{"field", field.number},
                          {"kind", field.kind},
                          {"label", Json_Text(field.label)},
                          {"value", grid ? Json(field.cells) : Json(Json_Text(field.value))},
                          {"enabled", field.enabled}});
        if (!field.titles.empty()) fields.back()["within"] = field.titles;
        if (field.marked) fields.back()["marked"] = true;
    }
    return {{"dialog", view.number}, {"title", Json_Text(view.title)}, {"fields", fields}};
}

Json Points(const std::vector<Point>& points) {
    Json list = Json::array();
    for (const Point& point : points) list.push_back(Json::array({Json_Real(point.x), Json_Real(point.y)}));
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

// How many there are of each colour, and with `full` their corners.
Json Facet_Entry(const Recorded_Facets& surface, bool full) {
    std::map<Colour, int> colours;
    Json entry, counts = Json::array(), polygons = Json::array();
    for (const Facet& facet : surface.facets) {
        ++colours[facet.colour];
        if (!full) continue;
        std::vector<Point> corners;
        for (std::size_t k = 0; k < facet.count; ++k) corners.push_back(surface.places[facet.corners[k]]);
        polygons.push_back({{"colour", facet.colour}, {"points", Points(corners)}});
    }
    for (const auto& [colour, count] : colours) counts.push_back({{"colour", colour}, {"n", count}});
    entry = {{"n", surface.facets.size()}, {"colours", counts}};
    if (full) entry["polygons"] = polygons;
    return entry;
}

Json Picture(const Recording_Device& record, bool full) {
    Json texts = Json::array(), lines = Json::array(), markers = Json::array(), fills = Json::array(), cells = Json::array(),
         surfaces = Json::array();
    const auto add = [&](Json& list, Json entry, const std::vector<Point>& points) {
        entry["n"] = points.size();
        if (full) entry["points"] = Points(points);
        list.push_back(std::move(entry));
    };
    for (const Recorded& item : record.items()) {
        if (const auto* clear = std::get_if<Recorded_Clear>(&item))
            add(fills, {{"colour", clear->colour}}, {{0, 0}, {page_width, 0}, {page_width, page_height}, {0, page_height}});
        else if (const auto* line = std::get_if<Recorded_Line>(&item))
            add(lines, {{"colour", line->pen.colour}, {"width", Json_Real(line->pen.width)}}, line->points);
        else if (const auto* set = std::get_if<Recorded_Markers>(&item))
            add(markers, {{"glyph", set->style.glyph}, {"colour", set->style.colour}}, set->points);
        else if (const auto* fill = std::get_if<Recorded_Fill>(&item))
            add(fills, {{"colour", fill->colour}}, fill->points);
        else if (const auto* ellipse = std::get_if<Recorded_Ellipse>(&item))
            ellipse->filled ? add(fills, {{"colour", ellipse->pen.colour}}, Outline(*ellipse))
                            : add(lines, {{"colour", ellipse->pen.colour}, {"width", Json_Real(ellipse->pen.width)}}, Outline(*ellipse));
        else if (const auto* image = std::get_if<Recorded_Cells>(&item))
            cells.push_back(
                {{"columns", image->columns},
                 {"rows", image->rows},
                 {"rect", {Json_Real(image->rect.x1), Json_Real(image->rect.y1), Json_Real(image->rect.x2), Json_Real(image->rect.y2)}}});
        else if (const auto* surface = std::get_if<Recorded_Facets>(&item))
            surfaces.push_back(Facet_Entry(*surface, full));
        else if (const auto* text = std::get_if<Recorded_Text>(&item))
            texts.push_back({{"text", Json_Text(text->text)},
                             {"x", Json_Real(text->at.x)},
                             {"y", Json_Real(text->at.y)},
                             {"size", Json_Real(text->style.height)},
                             {"colour", text->style.colour}});
    }
    Json picture{{"width", page_width}, {"height", page_height}, {"texts", texts},
                 {"lines", lines},      {"markers", markers},    {"fills", fills}};
    if (!cells.empty()) picture["cells"] = cells;  // of maps alone
    if (!surfaces.empty()) picture["surfaces"] = surfaces;
    return picture;
}

Status Print_Dialog(Words words, const Put_Line& put) {
    if (!words.empty()) return Status::Fail("usage: print WHAT");
    if (!WDialogLoaded(WindowFront())) return Status::Fail("no dialog is open");
    put(Dialog(WindowFront()));
    return Status::Done();
}

Status Print_Picture(Words words, const Put_Line& put) {
    const bool full = words.size() == 1 && words[0] == "full";
    if (!words.empty() && !full) return Status::Fail("usage: print picture [full]");
    Recording_Device record;
    Service_Of(Picture_Window()).picture(record);
    put(Picture(record, full));
    return Status::Done();
}

Status Print_Timers(Words words, const Put_Line& put) {
    if (!words.empty()) return Status::Fail("usage: print WHAT");
    Json timers = Json::array();
    for (const Timer_View& timer : Running_Timers())
        timers.push_back({{"window", timer.window}, {"number", timer.number}, {"ms", timer.milliseconds}, {"repeat", timer.repeat}});
    put({{"timers", timers}});
    return Status::Done();
}

}  // namespace

std::vector<Topic> Window_Topics() { return {{"dialog", Print_Dialog}, {"picture", Print_Picture}, {"timers", Print_Timers}}; }

}  // namespace vntl
