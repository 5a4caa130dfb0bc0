// The way of the views: what counts as one step, how far it reaches back.
#include "session/view_history.hpp"

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

}  // namespace
}  // namespace vntl
