#include <algorithm>
#include <cmath>
#include <functional>
#include <tuple>

#include "fixture.hpp"

namespace vntl::test {

class Frame_Texts : public Plot_Test {};

TEST_F(Frame_Texts, TitleOfOneRowAndOfSeveral) {
    const struct {
        const char *own, *of_row, *shown;
    } cases[] = {{"", "My data CELL: 5.4 5.4 5.4", "My data"},
                 {"ab", "Ceria", "Ceria"},
                 {"  abcd  ", "Ceria", "Ceria"},
                 {"abcde", "Ceria", "abcde"},
                 {"", "Ceria", "Ceria"}};
    for (const auto& c : cases) {
        session.store.Clear();
        Add().title = c.of_row;
        session.prefs.graph2d.title_single = c.own;
        Draw();
        const Recorded_Text* title = Text(c.shown);
        ASSERT_NE(title, nullptr) << c.shown;
        EXPECT_EQ(title->style.colour, WRGB(128, 0, 64));
        EXPECT_EQ(title->style.font, 101);
        EXPECT_NEAR(title->style.width, 0.020 * 1200, page_tolerance);
        EXPECT_NEAR(title->style.height, 0.040 * 800, page_tolerance);
        session.prefs.graph2d.title.pos = 1;
        Draw();
        EXPECT_EQ(Text(c.shown), nullptr);
        session.prefs.graph2d.title.pos = 3;
    }
    Add();
    Draw();
    EXPECT_NE(Text("Plot multi file"), nullptr);
}

TEST_F(Frame_Texts, FontAndStyleCodes) {
    Add();
    const int bits[] = {0, 1, 2, 4, 8, 3, 7, 6, 5};
    for (int style = 1; style <= 9; ++style) {
        session.prefs.graph2d.title.style = style;
        session.prefs.graph2d.title.font = (style - 1) % 4 + 1;
        Draw();
        ASSERT_NE(Text("Silicon"), nullptr);
        EXPECT_EQ(Text("Silicon")->style.style, bits[style - 1]);
        EXPECT_EQ(Text("Silicon")->style.font, 100 + (style - 1) % 4 + 1);
    }
}

// The largest size from 20 down to 12 thousandths of the page at which it fits into the 1184 units about the middle of the zone.
TEST_F(Frame_Texts, AWideTitleShrinksBeforeItIsCut) {
    std::vector<double> sizes;
    for (const std::size_t letters : {40, 70, 85, 100, 180}) {
        session.store.Clear();
        Add().title = std::string(letters, 'm');
        Draw();
        const auto texts = All<Recorded_Text>();
        const auto title = std::ranges::find(texts, WRGB(128, 0, 64), [](const Recorded_Text& text) { return text.style.colour; });
        ASSERT_NE(title, texts.end());
        Text_Style larger = title->style;
        EXPECT_NEAR(larger.height / 800, 2 * larger.width / 1200, 1e-6);
        sizes.push_back(std::round(larger.width / 1.2));
        larger.width += 1.2, larger.height += 1.6;
        EXPECT_EQ(title->text == std::string(letters, 'm'), letters != 180) << title->text;
        EXPECT_LE(page.Text_Width(title->text, title->style), 1184);
        EXPECT_TRUE(letters == 40 || page.Text_Width(title->text, larger) > 1184) << letters;
    }
    EXPECT_EQ(sizes.front(), 20);
    EXPECT_EQ(sizes.back(), 12);
    EXPECT_TRUE(std::ranges::is_sorted(sizes, std::greater()));
}

TEST_F(Frame_Texts, TheLegendNumbersTheBanksOfAFile) {
    Add_Rows(4);
    const std::tuple<int, Row_Kind, const char*, const char*> rows[] = {{1, Row_Kind::data, "GSAS", "many.gsa (bank 1)"},
                                                                        {6, Row_Kind::rietv, "GSAS", "many.gsa (bank 6)"},
                                                                        {2, Row_Kind::data, "SOCABIM", "many.gsa (range 2)"},
                                                                        {2, Row_Kind::copy, "GSAS", "many.gsa"}};
    int row = 0;
    for (const auto& [bank, kind, format, text] : rows) {
        session.store.Pattern(++row).bank = bank;
        session.store.Info(row).file_name = "many.gsa";
        session.store.Info(row).kind = kind;
        session.store.Info(row).format = format;
    }
    Draw();
    for (const auto& [bank, kind, format, text] : rows) EXPECT_NE(Text(text), nullptr) << text;
}

TEST_F(Frame_Texts, TextsStayOnThePage) {
    Add().title = std::string(180, 'm');
    session.store.Info(1).file_name = std::string(200, 'n') + ".dat";
    session.plot.xlabel_text = std::string(40, 'x');
    session.prefs.graph2d.xlabel.size = 60;
    for (int pos = 2; pos <= 4; ++pos) {
        session.prefs.graph2d.title.pos = session.prefs.graph2d.xlabel.pos = session.prefs.graph2d.legend.pos = pos;
        Draw();
        int shortened = 0;
        for (const Recorded_Text& text : All<Recorded_Text>()) {
            const double width = page.Text_Width(text.text, text.style);
            const double left = text.at.x - width * (text.style.justify == Justify::left     ? 0.0
                                                     : text.style.justify == Justify::centre ? 0.5
                                                                                             : 1.0);
            if (text.style.angle == 0) {
                EXPECT_GE(left, 0) << text.text;
                EXPECT_LE(left + width, 1200) << text.text;
            }
            shortened += text.text.find("\xE2\x80\xA6") != std::string::npos;
        }
        EXPECT_EQ(shortened, 3);
    }
}

TEST_F(Frame_Texts, TheFirstRowGivesTheYLabel) {
    Add().legend_y = "Counts";
    session.plot.ylabel_text = "Intensity";
    session.plot.xlabel_text = "2theta (deg)";
    Draw();
    EXPECT_NE(Text("Counts"), nullptr);
    EXPECT_EQ(session.plot.ylabel_text, "Counts");
    ASSERT_NE(Text("2theta (deg)"), nullptr);
    EXPECT_LT(Text("2theta (deg)")->at.y, 120);

    session.plot.ylabel_text = "Intensity";
    session.store.prf_loaded = true;
    Draw();
    EXPECT_NE(Text("Intensity"), nullptr);
    session.store.prf_loaded = false;
    session.prefs.graph2d.ylabel.pos = session.prefs.graph2d.xlabel.pos = 1;
    Draw();
    EXPECT_EQ(Text("Counts"), nullptr);
    EXPECT_EQ(Text("2theta (deg)"), nullptr);
    EXPECT_EQ(session.plot.ylabel_text, "Intensity");
}

TEST_F(Frame_Texts, TheYLabelOfALogarithmicFormSaysSo) {
    Add().legend_y = "Counts";
    for (int again = 0; again < 2; ++again) Draw("log");
    EXPECT_NE(Text("Log(Counts)"), nullptr);
    Draw();
    EXPECT_NE(Text("Counts"), nullptr);  // the axis itself keeps its name
    session.store.Pattern(1).legend_y = "Log(Intensity)(arb. units)";
    Draw("log");
    EXPECT_NE(Text("Log(Intensity)(arb. units)"), nullptr);
}

TEST_F(Frame_Texts, NumbersOfBothScales) {
    Add();
    session.prefs.graph2d.yscale.colour = WRGB(1, 1, 1);
    session.prefs.graph2d.xscale.colour = WRGB(2, 2, 2);
    Draw({}, 0.5f, 0.9f, 0, 1000);  // by the rule of the axes: every 0.05, and every 100
    for (const char* number : {".50", ".55", ".90"}) {
        ASSERT_NE(Text(number), nullptr) << number;
        EXPECT_EQ(Text(number)->style.colour, WRGB(2, 2, 2));
    }
    EXPECT_NEAR(Text(".90")->at.x, 1020, 0.5);
    for (const char* number : {"100", "1000"}) {
        ASSERT_NE(Text(number), nullptr) << number;
        EXPECT_EQ(Text(number)->style.colour, WRGB(1, 1, 1));
    }
    EXPECT_EQ(Text("1100"), nullptr);
}

TEST_F(Frame_Texts, NumbersUnderTheZeroOfARefinedProfileAreCovered) {
    Add();
    session.store.prf_loaded = true;
    const auto covers = [&] {
        std::vector<Recorded_Fill> found;
        for (const Recorded_Fill& fill : All<Recorded_Fill>())
            if (fill.colour == session.prefs.graph2d.frame_background) found.push_back(fill);
        return found;
    };
    Draw({}, 10, 14, -250, 1000);  // zero stands at a fifth of the zone: 120 + 112
    ASSERT_EQ(covers().size(), 1u);
    EXPECT_AT(covers()[0].points[0], 0, 108);
    EXPECT_AT(covers()[0].points[2], 180, 0.9 * 232);
    Draw({}, 10, 14, 10, 1000);
    EXPECT_TRUE(covers().empty());
    session.prefs.prf.hide_negative = false;
    Draw({}, 10, 14, -250, 1000);
    EXPECT_TRUE(covers().empty());
}

TEST_F(Frame_Texts, LegendPlacesAndItsLimit) {
    Add_Rows(32);
    session.store.profile_shown[1] = false;  // named all the same
    const double left[] = {0.18 * 1200, 0.7 * 1200, 0.87 * 1200};
    std::vector<double> text_x;
    for (int pos = 2; pos <= 4; ++pos) {
        session.prefs.graph2d.legend.pos = pos;
        Draw();
        for (const int row : {1, 2, 32}) {
            const Recorded_Text* name = Text("row" + std::to_string(row) + ".dat");
            ASSERT_NE(name, nullptr) << row;
            EXPECT_EQ(name->style.colour, Slot_Colour(row));
            EXPECT_NEAR(name->at.y, (0.8 - 0.02 * (row - 1)) * 800, 8) << row;  // on its line
            EXPECT_GE(name->at.x, left[pos - 2]);
            EXPECT_LE(name->at.x, left[pos - 2] + 60);
        }
        text_x.push_back(Text("row1.dat")->at.x - left[pos - 2]);
    }
    EXPECT_NEAR(text_x[0], text_x[1], page_tolerance);
    EXPECT_NEAR(text_x[0], text_x[2], page_tolerance);
    // A long name moves the legend to the left rather than across the frame.
    session.store.Info(1).file_name = "a_name_of_nearly_thirty_letters";
    session.prefs.graph2d.legend.pos = 3;
    Draw();
    EXPECT_LT(Text("a_name_of_nearly_thirty_letters")->at.x, 0.7 * 1200);
    EXPECT_EQ(Text("a_name_of_nearly_thirty_letters")->at.x, Text("row2.dat")->at.x);
    Add();
    Draw();
    EXPECT_EQ(Text("row2.dat"), nullptr);
}

TEST_F(Frame_Texts, TheLegendOfARefinedProfileGivesChi2) {
    Add();
    session.store.prf_loaded = true;
    const struct {
        float chi2;
        const char* text;
    } cases[] = {{1.2345f, "   1.2345"}, {123.0f, " 123.0000"}, {12345.0f, " ********"}};
    for (const auto& c : cases) {
        session.store.Info(1).chi2 = c.chi2;
        Draw();
        ASSERT_NE(Text(c.text), nullptr) << c.text;
        EXPECT_NEAR(Text(c.text)->at.x, 0.7 * 1200, page_tolerance);
    }
    session.store.Info(1).chi2 = 0.0001f;
    Draw();
    EXPECT_EQ(Text("   0.0001"), nullptr);

    // Among other rows, and in a small window, it has a line of its own.
    session.store.Info(1).chi2 = 1.5f;
    Add();
    for (const double height : {800.0, 300.0}) {
        page = Recording_Device(1.5 * height, height);
        Draw();
        ASSERT_TRUE(Text("   1.5000") != nullptr && Text("row1.dat") != nullptr && Text("row2.dat") != nullptr);
        const Recorded_Text &chi2 = *Text("   1.5000"), &next = *Text("row2.dat");
        EXPECT_GE(Em_Of_Cell(chi2.style.width, chi2.style.height), 9 - 1e-3);
        EXPECT_GE(chi2.at.y - next.at.y, std::min(next.style.height, 0.02 * height) - 1e-3);
        EXPECT_GE(Text("row1.dat")->at.y - chi2.at.y, 0.9 * Em_Of_Cell(chi2.style.width, chi2.style.height));
    }
}

}  // namespace vntl::test
