// The lines of a look: "least_contrast 4.5", "fitted_margins T", "ink 3289650", "series_map ember"; a colour may be "50,50,50" as well.
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>
#include <type_traits>
#include <variant>
#include <vector>

#include "base/colour_map.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "session/desk/look_table.hpp"
#include "session/desk/styles.hpp"
#include "session/preference_table.hpp"

namespace vntl {

namespace {

constexpr std::string_view heading = "<-- Look Preferences -->\n";  // which is passed over, as it is no name
constexpr float largest_gap = 1000, largest_width = 20, largest_points = 72, largest_contrast = 21;

std::string Text_Of(float value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.6g", static_cast<double>(value));
    return text.data();
}

void Set(Look& look, const Look_Row& row, std::string_view text) {
    const auto set = [&](auto member) {
        auto& target = look.*member;
        using Value = std::remove_reference_t<decltype(target)>;
        if constexpr (std::is_same_v<Value, bool>) {
            if (text == "T" || text == "F") target = text == "T";
        } else if constexpr (std::is_same_v<Value, Colour>) {
            const std::optional<Colour> value = Colour_Of_Text(text);
            target = value.value_or(target);
        } else if constexpr (std::is_same_v<Value, std::string>) {
            if (text.empty() || Is_Colour_Map(text)) target = text;
        } else {
            double value = 0;
            if (Parse_Real(text, value) && value >= 0 && value <= static_cast<double>(row.most)) target = static_cast<float>(value);
        }
    };
    std::visit(set, row.member);
}

}  // namespace

const std::vector<Look_Row>& Look_Table() {
    static const std::vector<Look_Row> table = {
        {"least_marker_gap", &Look::least_marker_gap, largest_gap},
        {"series_map", &Look::series_map},
        {"ink", &Look::ink},
        {"frame_width", &Look::frame_width, largest_width},
        {"least_text_points", &Look::least_text_points, largest_points},
        {"least_contrast", &Look::least_contrast, largest_contrast},
        {"fitted_margins", &Look::fitted_margins},
        {"minor_ticks", &Look::minor_ticks},
        {"superscripts", &Look::superscripts},
        {"count_ticks", &Look::count_ticks},
        {"pinned_difference", &Look::pinned_difference},
        {"placed_legend", &Look::placed_legend},
    };
    return table;
}

std::string Look_Text(const Look& look) {
    if (look == Look()) return {};
    std::string text(heading);
    for (const Look_Row& row : Look_Table()) {
        text.append(row.name).append(" ");
        const auto add = [&](auto member) {
            const auto& value = look.*member;
            using Value = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<Value, bool>)
                text.append(value ? "T" : "F");
            else if constexpr (std::is_same_v<Value, std::string>)
                text.append(value);
            else if constexpr (std::is_same_v<Value, float>)
                text.append(Text_Of(value));
            else
                text.append(std::to_string(value));
        };
        std::visit(add, row.member);
        text.append("\n");
    }
    return text;
}

void Read_Look_Text(Look& look, std::string_view text) {
    Line_Cursor lines(text);
    for (std::string_view line; lines.Next(line);) {
        line = Trim(line);
        const std::string_view name = line.substr(0, line.find(' '));
        for (const Look_Row& row : Look_Table())
            if (row.name == name) Set(look, row, Trim(line.substr(name.size())));
    }
}

}  // namespace vntl
