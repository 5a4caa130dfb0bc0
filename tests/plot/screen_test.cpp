#include "fixture.hpp"
#include "toolkit/window.hpp"

namespace vntl::test {

class Screen : public Plot_Test {
protected:
    void SetUp() override {
        static const bool open = [] {
            WindowOpen(400, 300, "plots", "");
            return true;
        }();
        (void)open;
    }
};

TEST_F(Screen, TheEmptyScreenNamesTheProgram) {
    Draw_Picture(Scene_Of(session), page);
    EXPECT_EQ(All<Recorded_Clear>().at(0).colour, session.prefs.window.colour_a);
    const struct {
        std::string text;
        double height;
    } lines[] = {{session.config.program_name, 0.6},
                 {session.config.program_line1, 0.5},
                 {session.config.program_line2, 0.45},
                 {session.config.program_version + "  " + session.config.program_date, 0.2}};
    for (const auto& line : lines) {
        ASSERT_NE(Text(line.text), nullptr) << line.text;
        EXPECT_NEAR(Text(line.text)->at.x, 600, page_tolerance);
        EXPECT_NEAR(Text(line.text)->at.y, 800 * line.height, 16) << line.text;
        EXPECT_EQ(Text(line.text)->style.justify, Justify::centre);
        EXPECT_EQ(Text(line.text)->style.colour, session.prefs.window.colour_b);
    }
}

// 1 % and 2 % of the page from the right and the bottom; letters of 0.006 and 0.015 of it.
TEST_F(Screen, TheStampNamesTheProgramInTheCorner) {
    session.config.program_name = "  " + std::string(40, 'n') + " ";
    session.config.program_version = " Version: 9.99 ";
    Recording_Device device(1800, 1000);
    Graphics g(device);
    g.IGrArea(0.25f, 0.25f, 0.5f, 0.5f);
    g.IGrUnits(-7, -7, 7, 7);
    g.IGrCharRotate(90);
    Stamp_Plot(session.config, g);
    const auto& text = std::get<Recorded_Text>(device.items().back());
    EXPECT_EQ(text.text, std::string(30, 'n') + " Version: 9.99");
    EXPECT_NEAR(text.at.x, 1782, 1e-3);
    EXPECT_NEAR(text.at.y, 20, 1e-3);
    EXPECT_NEAR(text.style.width, 10.8, 1e-3);
    EXPECT_NEAR(text.style.height, 15, 1e-3);
    EXPECT_TRUE(text.style.justify == Justify::right && text.style.colour == WRGB(0, 0, 255) && text.style.angle == 0);
}

TEST_F(Screen, ARedrawShowsTheWindowThatReMakeShowed) {
    Add();
    for (const char* form : {"single", "multi", "multi_log", "calculation"}) {
        if (session.plot.plot_type == Plot_Form::single) Add();
        if (std::string_view(form) == "multi_log") Set_Menu_Graph(session, true);
        Plot_ReMake(session);
        if (std::string_view(form) == "calculation") Set_Calculation_Mode(session, Click_Mode::reflections);
        EXPECT_EQ(Told(session.plot.plot_type), form);
        const Plot_State made = session.plot;
        Plot_Redraw(session);
        EXPECT_EQ(session.plot.drawn.y1, made.drawn.y1) << form;
        EXPECT_EQ(session.plot.drawn.y2, made.drawn.y2) << form;
        EXPECT_EQ(session.plot.drawn.y2, made.y_view_max) << form;
        EXPECT_EQ(session.plot.drawn.x2, 14) << form;
        EXPECT_GT(session.plot.draw_ms, 0);
        EXPECT_EQ(session.plot.drawn_points, 5LL * session.store.nperfiles());
    }
    session.store.profile_shown[0] = false;
    Plot_Redraw(session);
    EXPECT_EQ(session.plot.drawn_points, 5);
    Plot_Repaint(session);
}

TEST_F(Screen, AnEmptyStoreKeepsTheRangesAndGoesBackToTheEmptyForm) {
    Add();
    Add();
    Plot_ReMake(session);
    const float x_max = session.plot.x_view_max;
    session.store.Clear();
    Plot_ReMake(session);
    EXPECT_EQ(Told(session.plot.plot_type), "none");
    EXPECT_EQ(session.plot.x_view_max, x_max);
    Plot_Redraw(session);
    Plot_Repaint(session);
    EXPECT_EQ(session.plot.drawn_points, 0);
}

}  // namespace vntl::test
