#include "plot/colour_bar.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "drawing/axis.hpp"
#include "drawing/font_table.hpp"
#include "drawing/raised_text.hpp"

namespace vntl {

namespace {

// All in em of its letters.
constexpr double beside_box = 0.8, bar_width = 1, bar_tick = 0.3, behind_tick = 0.3, above_bar = 0.7, line_of_numbers = 1.9;
constexpr double powers_from = 1e5;

std::vector<Axis_Tick> Ticks_Of(const Colour_Bar& bar, const Look& look, double em, double height) {
    if (!(bar.last > bar.first)) return {};
    const double needed = line_of_numbers * em * (bar.last - bar.first) / height;
    Axis_Room room;
    room.needs = [&](std::string_view) { return bar.whole_numbers ? std::max(needed, 1.0) : needed; };
    if (look.superscripts) room.powers_from = powers_from;
    std::vector<Axis_Tick> ticks = Fit_Ticks(bar.first, bar.last, bar.scale, room).major;
    if (!bar.whole_numbers) return ticks;
    std::erase_if(ticks, [&](const Axis_Tick& tick) { return tick.at - bar.first < needed || bar.last - tick.at < needed; });
    for (const double end : {bar.first, bar.last}) ticks.push_back({end, Tick_Text(static_cast<float>(std::round(end)), 1)});
    return ticks;
}

double Height_Of(const Rect& box, double em) { return box.y2 - box.y1 - (cap_height + above_bar) * em; }

}  // namespace

double Width_Of_Bar(const Colour_Bar& bar, const Look& look, const Text_Style& text, const Device& device) {
    const double em = Em_Of(text);
    double widest = 0;
    for (const double share : {0.5, 0.65, 0.8, 0.9})
        for (const Axis_Tick& tick : Ticks_Of(bar, look, em, share * device.Height()))
            widest = std::max(widest, Raised_Text_Width(device, tick.text, text));
    const double beside = (bar_width + bar_tick + behind_tick) * em + widest;
    return beside_box * em + std::max(beside, device.Text_Width(bar.title, text));
}

void Draw_Bar(const Colour_Bar& bar, const Look& look, const Text_Style& wanted, const Rect& box, Device& device) {
    Text_Style text = wanted;
    text.justify = Justify::left;
    const double em = Em_Of(text), left = box.x2 + beside_box * em, right = left + bar_width * em;
    const double foot = box.y1, height = Height_Of(box, em), top = foot + height;
    if (!(height > 0) || bar.colours.empty()) return;
    device.Text({left, box.y2 - cap_height * em}, bar.title, text);
    device.Cells({{left, foot, right, top}, 1, static_cast<int>(bar.colours.size()), bar.colours});
    const Pen pen{look.ink, std::min(look.frame_width, 1.0f), Line_Style::solid};
    device.Polyline(std::array<Point, 5>{{{left, foot}, {right, foot}, {right, top}, {left, top}, {left, foot}}}, pen);
    for (const Axis_Tick& tick : Ticks_Of(bar, look, em, height)) {
        const double y = foot + (tick.at - bar.first) / (bar.last - bar.first) * height;
        device.Polyline(std::array<Point, 2>{{{right, y}, {right + bar_tick * em, y}}}, pen);
        // The number of an end stays beside the bar.
        const double base = std::clamp(y - 0.5 * cap_height * em, foot, std::max(foot, top - cap_height * em));
        Draw_Raised_Text(device, {right + (bar_tick + behind_tick) * em, base}, tick.text, text);
    }
}

}  // namespace vntl
