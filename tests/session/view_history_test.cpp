// The way of the views: what counts as one step, how far it reaches back.
#include "session/view_history.hpp"

#include <cmath>
#include <numbers>

#include "session/ranges.hpp"
#include "session/session.hpp"
#include "session/testing.hpp"
#include "session/xspace.hpp"

namespace vntl {
namespace {

class Views : public testing::Test {
protected:
    void SetUp() override {
        s.store.Append(Tiny_Pattern(), {});
        Set_Xspace(s, "2theta");
        Plot_Ranges(s);
        Remember_View(s, false);
        first_whole = s.plot.Shown_View();
    }
    void See(float x1, bool step) {
        ASSERT_TRUE(s.plot.Show({x1, 20, 0, 100}));
        Remember_View(s, step);
    }
    bool Back() {
        const bool went = View_Back(s);
        Remember_View(s, false);
        return went;
    }
    float Left() const { return s.plot.Shown_View().x1; }

    Session s;
    View first_whole;
};

TEST_F(Views, StepsOfAWheelAreOneAndThoseBehindAWayBackAnother) {
    const float whole = Left();
    See(11, true);
    See(12, true);
    ASSERT_TRUE(Back());
    EXPECT_EQ(Left(), whole);
    See(13, true);  // must not take the place of the view that it starts from
    ASSERT_TRUE(Back());
    EXPECT_EQ(Left(), whole);
    EXPECT_TRUE(View_Forward(s));
    EXPECT_EQ(Left(), 13);
    EXPECT_FALSE(View_Forward(s));
}

TEST_F(Views, AHundredAreKept) {
    for (int i = 0; i < 150; ++i) See(11 + 0.01f * static_cast<float>(i), false);
    int steps = 0;
    while (Back()) ++steps;
    EXPECT_EQ(steps, 99);
    EXPECT_FLOAT_EQ(Left(), 11.5f);  // the last hundred of them
    EXPECT_FALSE(s.interface.Enabled(command::view_back));
}

// A zoom follows row 1 into another x space: Q = 4 pi sin(theta) / lambda. The view that began at 0 degrees has no place over d.
TEST_F(Views, GoAlongWithAConversionByTheConstantsOfRowOne) {
    Scripted_Ask ask;
    s.store.Pattern(1).conv[0] = 1.5f;
    s.store.Append(Tiny_Pattern(), {});
    s.store.Pattern(2).conv[0] = 3;
    ASSERT_TRUE(s.plot.Show({0, 20, 0, 100}));
    Remember_View(s, false);
    ASSERT_TRUE(s.plot.Show({12, 14, 5, 50}));
    Remember_View(s, false);
    const auto convert = [&](X_Space space) {
        ASSERT_TRUE(Convert_Xspace(s, ask, space).ok()) << ask.Last_Box();
        Plot_Ranges(s);
        Remember_View(s, false);
    };
    convert(X_Space::q_space);
    const View whole = s.plot.Shown_View();
    const auto q = [](double degrees) { return 4 * std::numbers::pi / 1.5 * std::sin(degrees / 2 * std::numbers::pi / 180); };
    ASSERT_TRUE(Back());
    EXPECT_NEAR(Left(), q(12), 1e-5);
    EXPECT_NEAR(s.plot.Shown_View().x2, q(14), 1e-5);
    EXPECT_EQ(s.plot.Shown_View().y2, 50);
    convert(X_Space::d_space);
    ASSERT_TRUE(Back());
    EXPECT_NEAR(Left(), 2 * std::numbers::pi / q(14), 1e-5);
    EXPECT_NEAR(s.plot.Shown_View().x2, 2 * std::numbers::pi / q(12), 1e-5);
    ASSERT_TRUE(Back());  // what was whole at first; that which began at 0 is passed over
    EXPECT_NEAR(s.plot.Shown_View().x2, 2 * std::numbers::pi / q(first_whole.x1), 1e-4);
    EXPECT_FALSE(Back());
    EXPECT_NE(whole, s.plot.Shown_View());
}

// A new whole range that a calculation made is a step further; one that a file brought is a beginning.
TEST_F(Views, StayBehindACalculation) {
    See(12, false);
    s.store.Append(Tiny_Pattern(), {});
    s.store.Pattern(2).ymax = 1000;
    Plot_Ranges(s);
    Remember_View(s, false);
    ASSERT_TRUE(Back());
    EXPECT_EQ(Left(), 12);
}

}  // namespace
}  // namespace vntl
