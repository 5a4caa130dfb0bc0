// Where the texts of a recorded picture stand, to ask whether they keep apart.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

#include "drawing/font_table.hpp"
#include "drawing/recording.hpp"

namespace vntl {

inline Rect Room_Of(const Recorded_Text& text, const Device& device) {
    const double em = Em_Of_Cell(text.style.width, text.style.height), length = device.Text_Width(text.text, text.style);
    const double before = text.style.justify == Justify::left ? 0 : text.style.justify == Justify::right ? length : 0.5 * length;
    if (text.style.angle == 90)
        return {text.at.x - cap_height * em, text.at.y - before, text.at.x + descent * em, text.at.y - before + length};
    if (text.style.angle == -90)
        return {text.at.x - descent * em, text.at.y + before - length, text.at.x + cap_height * em, text.at.y + before};
    return {text.at.x - before, text.at.y - descent * em, text.at.x - before + length, text.at.y + cap_height * em};
}

inline void Expect_Texts_Apart(const Recording_Device& device, const Rect& room, const std::string& what) {
    constexpr double rounding = 1e-3;
    std::vector<Recorded_Text> texts;
    for (const Recorded& item : device.items())
        if (const auto* text = std::get_if<Recorded_Text>(&item)) texts.push_back(*text);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const Rect a = Room_Of(texts[i], device);
        EXPECT_TRUE(a.x1 >= room.x1 - rounding && a.y1 >= room.y1 - rounding && a.x2 <= room.x2 + rounding && a.y2 <= room.y2 + rounding)
            << what << ": " << texts[i].text << " at " << a.x1 << ' ' << a.y1 << ' ' << a.x2 << ' ' << a.y2;
        for (std::size_t k = 0; k < i; ++k) {
            const Rect b = Room_Of(texts[k], device);
            EXPECT_FALSE(a.x1 < b.x2 - rounding && b.x1 < a.x2 - rounding && a.y1 < b.y2 - rounding && b.y1 < a.y2 - rounding)
                << what << ": " << texts[i].text << " | " << texts[k].text;
        }
    }
}

}  // namespace vntl
