// The view under a waterfall: what shows all goes on to, what is close up stays, and the way back knows both.
#include "session/desk/waterfall.hpp"

#include <limits>

#include "session/changes.hpp"
#include "session/desk/pattern_list.hpp"
#include "session/ranges.hpp"
#include "session/session.hpp"
#include "session/testing.hpp"
#include "session/view_history.hpp"
#include "session/xspace.hpp"

namespace vntl {
namespace {

class Waterfall_View : public testing::Test {
protected:
    void SetUp() override {
        for (int row = 0; row < 3; ++row) {
            Diffraction_Pattern_Type pattern;
            pattern.npts = 4;
            pattern.scat_var = "2theta";
            pattern.x = {10, 11, 12, 13};
            pattern.y = {0, 100, static_cast<float>(20 + 10 * row), 10};
            pattern.xmin = 10, pattern.xmax = 13, pattern.ymin = 0, pattern.ymax = 100;
            s.store.Append(std::move(pattern), {});
        }
        Set_Xspace(s, "2theta");
        Plot_Ranges(s);
        Remember_View(s, false);
    }
    void Apart(float offset) {
        Set_Waterfall(s.store, s.plot, {offset, false, false});
        Remember_View(s, false);
    }
    float Top() const { return s.plot.y_view_max; }

    Session s;
};

TEST_F(Waterfall_View, AWholeViewGrowsAndOneCloseUpStays) {
    EXPECT_FLOAT_EQ(Top(), 105);
    for (const float offset : {0.5f, 0.01f, 1.0f, 0.3f}) {
        Apart(offset);
        EXPECT_FLOAT_EQ(Top(), 105 + 200 * offset);
        EXPECT_FLOAT_EQ(s.plot.y_view_min, -5);
        const View whole = s.plot.Shown_View();
        Plot_Ranges(s);
        EXPECT_EQ(s.plot.Shown_View(), whole);
    }
    Apart(0);
    EXPECT_EQ(Top(), 105);  // to the last bit

    const View close{11, 12, 20, 60};
    s.plot.Show(close);
    Apart(0.5f);
    EXPECT_EQ(s.plot.Shown_View(), close);

    // Between 11.5 and 12.5 row 3 has its point of 40 at the top: a focus reaches 5 % above it, and goes on to.
    s.plot.Show({11.5f, 12.5f, 0, 10});
    Focus_Plot(s.store, s.plot);
    EXPECT_FLOAT_EQ(Top(), 140 + 0.05f * 120);
    EXPECT_FLOAT_EQ(s.plot.y_view_min, 20 - 0.05f * 120);
    Apart(1);
    EXPECT_FLOAT_EQ(Top(), 240 + 0.05f * 120);
    s.store.profile_shown.reset(1);  // and leaves no gap
    Focus_Plot(s.store, s.plot);
    EXPECT_FLOAT_EQ(Top(), 140 + 0.05f * 120);
}

// By hand: 105 is the top of one pattern, and half of 100 for each row shown above the first.
TEST_F(Waterfall_View, ScalesTicksAndUndoGoOnToShowTheWhole) {
    Apart(0.5f);
    for (const Y_Scale scale : {Y_Scale::logarithm, Y_Scale::root, Y_Scale::logarithm, Y_Scale::linear}) {
        Choose_Scale(s, scale);
        const View whole = s.plot.Shown_View();
        EXPECT_GT(Top(), Offset_Of_Row(s.store, s.plot, 3) + On_Scale(scale, 100)) << Told(scale);
        Plot_Ranges(s);
        EXPECT_EQ(s.plot.Shown_View(), whole) << Told(scale);
        s.plot.Show({11.5f, 12.5f, 0, 10});
        Focus_Plot(s.store, s.plot);
        Choose_Scale(s, static_cast<Y_Scale>((static_cast<int>(scale) + 1) % 3));
        EXPECT_GT(Top(), Offset_Of_Row(s.store, s.plot, 3) + On_Scale(s.plot.Scale(), 40)) << Told(scale);
        Choose_Scale(s, scale);
        Plot_Ranges(s);
    }
    EXPECT_FLOAT_EQ(Top(), 205);
    EXPECT_TRUE(Tick_Rows(s, {2, 3}, false));
    EXPECT_FLOAT_EQ(Top(), 105);
    EXPECT_TRUE(Tick_Rows(s, {3}, true));
    EXPECT_FLOAT_EQ(Top(), 155);
    Apart(0);
    EXPECT_TRUE(Undo_Change(s) && Undo_Change(s));
    Apart(0.2f);
    EXPECT_TRUE(Tick_Rows(s, {3}, false));
    Apart(0.4f);
    EXPECT_TRUE(Undo_Change(s));
    EXPECT_FLOAT_EQ(Top(), 185);
}

TEST_F(Waterfall_View, TheWayBackBringsOffsetsBack) {
    Apart(0.5f);
    s.plot.Show({11, 12, 0, 50});
    Remember_View(s, false);
    Apart(0.2f);
    View_Back(s);
    EXPECT_EQ(s.plot.waterfall.offset, 0.5f);
    View_Back(s);
    EXPECT_FLOAT_EQ(Top(), 205);
    View_Back(s);
    EXPECT_EQ(s.plot.waterfall.offset, 0);
    EXPECT_FLOAT_EQ(Top(), 105);
    EXPECT_FALSE(View_Back(s));
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(View_Forward(s));
    EXPECT_EQ(s.plot.waterfall.offset, 0.2f);
}

TEST_F(Waterfall_View, OnlyGraphsHaveOne) {
    Apart(0.5f);
    EXPECT_EQ(Offset_Of_Row(s.store, s.plot, 3), 100);
    s.plot.plot_type = Plot_Form::contour;
    EXPECT_EQ(Height_Of_Waterfall(s.store, s.plot), 0);
    s.plot.plot_type = Plot_Form::multi;
    for (const float offset : {-1.0f, std::numeric_limits<float>::quiet_NaN()}) {
        Apart(offset);
        EXPECT_EQ(s.plot.waterfall.offset, 0);
    }
    for (int row = 1; row <= 3; ++row) s.store.Pattern(row).ymin = -1e38f, s.store.Pattern(row).ymax = 1e38f;
    Plot_Ranges(s);
    Apart(7);
    EXPECT_EQ(s.plot.waterfall.offset, 1);
    EXPECT_FALSE(Check_Invariants(s).failed);
}

}  // namespace
}  // namespace vntl
