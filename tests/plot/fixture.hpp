// Rows made by hand, and what a picture holds: each kind of primitive by its colour.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

#include "plot/plot.hpp"
#include "session/ranges.hpp"

namespace vntl::test {

inline const std::vector<float> five_x = {10, 11, 12, 13, 14}, five_y = {0.5f, 100, 1000, 10, 1};

class Plot_Test : public testing::Test {
protected:
    Plot_Test() { Set_Default_Preferences(session.prefs); }

    Diffraction_Pattern_Type& Add(std::vector<float> x = five_x, std::vector<float> y = five_y, Row_Kind kind = Row_Kind::data) {
        Diffraction_Pattern_Type p;
        p.npts = static_cast<std::int32_t>(x.size());
        p.scat_var = "2theta";
        p.title = "Silicon";
        p.x = std::move(x);
        p.y = std::move(y);
        Set_Y_Limits(p);
        PRF_Info_Add_Type info;
        info.kind = kind;
        info.file_name = "row" + std::to_string(session.store.nperfiles() + 1) + ".dat";
        session.store.Append(std::move(p), std::move(info));
        return session.store.Pattern(session.store.nperfiles());
    }
    void Add_Rows(int rows) {
        for (int i = 0; i < rows; ++i) Add();
    }
    void Exclude(int row, float lo, float hi) {
        PRF_Info_Add_Type& info = session.store.Info(row);
        info.excl_min[static_cast<std::size_t>(info.nexcl)] = lo;
        info.excl_max[static_cast<std::size_t>(info.nexcl++)] = hi;
    }
    Colour Slot_Colour(int row) const { return session.prefs.Style_Of_Row(row).line_colour; }

    // One complete graph of the window 10 to 14, 0 to 1000.
    void Draw(std::string_view mode = {}, float x1 = 10, float x2 = 14, float y1 = 0, float y2 = 1000) {
        Graphics g(page);
        const Drawn drawn = plot_graph2d(Scene_Of(session), g, session.store.nperfiles(), {x1, x2, y1, y2},
                                         mode == "log"    ? Y_Scale::logarithm
                                         : mode == "root" ? Y_Scale::root
                                                          : Y_Scale::linear);
        session.plot.drawn = drawn.window;
        session.plot.units = drawn.units;
        session.plot.ylabel_text = drawn.y_title;
    }
    void Draw_The_Marks() {
        Graphics g(page);
        Draw_Marks(Scene_Of(session), g);
    }

    template <class T>
    std::vector<T> All() const {
        std::vector<T> found;
        for (const Recorded& item : page.items())
            if (const T* one = std::get_if<T>(&item)) found.push_back(*one);
        return found;
    }
    std::vector<Recorded_Line> Lines(Colour colour) const {
        std::vector<Recorded_Line> found;
        for (const Recorded_Line& line : All<Recorded_Line>())
            if (line.pen.colour == colour) found.push_back(line);
        return found;
    }
    std::vector<Recorded_Markers> Markers(Colour colour) const {
        std::vector<Recorded_Markers> found;
        for (const Recorded_Markers& set : All<Recorded_Markers>())
            if (set.style.colour == colour) found.push_back(set);
        return found;
    }
    // A curve of the colour in the plot, not the short symbol of a key.
    std::vector<Recorded_Line> Curves(Colour colour, std::size_t points) const {
        std::vector<Recorded_Line> found;
        for (const Recorded_Line& line : Lines(colour))
            if (line.points.size() == points) found.push_back(line);
        return found;
    }
    const Recorded_Text* Text(std::string_view text) const {
        for (const Recorded& item : page.items())
            if (const auto* one = std::get_if<Recorded_Text>(&item); one && one->text == text) return one;
        return nullptr;
    }

    Session session;
    Recording_Device page;  // page units
};

// Page units of a value in the zone 0.15 to 0.85 of 1200 x 800.
inline double Page_X(double x, double x1 = 10, double x2 = 14) { return 180 + 840 * (x - x1) / (x2 - x1); }
inline double Page_Y(double y, double y1 = 0, double y2 = 1000) { return 120 + 560 * (y - y1) / (y2 - y1); }

constexpr double page_tolerance = 0.01;
#define EXPECT_AT(point, at_x, at_y)                    \
    do {                                                \
        EXPECT_NEAR((point).x, (at_x), page_tolerance); \
        EXPECT_NEAR((point).y, (at_y), page_tolerance); \
    } while (false)

}  // namespace vntl::test
