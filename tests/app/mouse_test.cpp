// The mouse over the plot: what it reads out, zooms, shifts and takes back.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "app/testing.hpp"
#include "commands/ask_user.hpp"
#include "commands/plot/mouse.hpp"
#include "commands/plot/mouse_clicks.hpp"
#include "session/session.hpp"
#include "session/xspace.hpp"

namespace vntl {
namespace {

constexpr double left = 180, right = 1020, bottom = 120, top = 680;  // the plot box, page units

struct Limits {
    double x1, x2, y1, y2;
    double X(double page) const { return x1 + (page - left) / (right - left) * (x2 - x1); }
    double Y(double page) const { return y1 + (page - bottom) / (top - bottom) * (y2 - y1); }
};

Limits View_Of(const Json& state) { return {state["x_view_min"], state["x_view_max"], state["y_view_min"], state["y_view_max"]}; }

void Expect_View(const Json& state, const Limits& wanted, const std::string& what) {
    const Limits view = View_Of(state);
    for (const auto& [is, shall, size] : {std::array{view.x1, wanted.x1, wanted.x2},
                                          {view.x2, wanted.x2, wanted.x2},
                                          {view.y1, wanted.y1, wanted.y2},
                                          {view.y2, wanted.y2, wanted.y2}})
        EXPECT_NEAR(is, shall, 2e-6 * std::max(std::fabs(size), 1.0)) << what;
}

void Expect_Same_View(const Json& state, const Json& other, const std::string& what) {
    for (const char* name : {"x_view_min", "x_view_max", "y_view_min", "y_view_max", "drawn_x1", "drawn_x2", "drawn_y1", "drawn_y2"})
        EXPECT_EQ(state[name], other[name]) << what << ' ' << name;
}

std::string Fixed(double value, int digits) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.*f", digits, value);
    return text.data();
}

class Mouse : public Program {
protected:
    // Curves that cross, over ranges that overlap in part.
    void SetUp() override {
        Program::SetUp();
        std::ofstream a(directory / "a.xye"), b(directory / "b.xye");
        a << "a\n", b << "b\n";
        for (int i = 0; i <= 200; ++i) {
            a << 10 + 0.1 * i << ' ' << 500 + 300 * std::sin(0.2 * i) << " 1\n";
            b << 15 + 0.1 * i << ' ' << 500 + 300 * std::cos(0.13 * i) << " 1\n";
        }
    }
    // Runs statements behind semicolons, in which "@" is the mouse and "?" prints the state. Every one must succeed.
    Run_Result Do(const std::string& statements) {
        std::string text;
        for (const char c : statements) text += c == ';' ? "\n" : c == '@' ? "mouse " : c == '?' ? "print state" : std::string(1, c);
        Run_Result run = Script(text + '\n');
        EXPECT_EQ(run.status, 0) << run.errors;
        return run;
    }
    std::vector<Json> States(const std::string& statements) { return Do(statements).With("plot_type"); }
};

TEST_F(Mouse, ReadsThePlaceAndTheNearestCurve) {
    std::string script = "drop a.xye b.xye;print data 1;print data 2;?";
    std::vector<std::pair<double, double>> places;
    for (int i = 0; i < 12; ++i) places.emplace_back(190 + 69.3 * i, 140 + 83.7 * (i % 7));
    for (const auto& [x, y] : places) script += ";@move " + Fixed(x, 3) + ' ' + Fixed(y, 3) + ";?";
    const Run_Result run = Do(script);
    const auto data = run.With("x"), states = run.With("plot_type");
    ASSERT_EQ(states.size(), places.size() + 1);
    const Limits view = View_Of(states[0]);
    std::array<bool, 3> pointed{};
    for (std::size_t i = 0; i < places.size(); ++i) {
        const double x = view.X(places[i].first), y = view.Y(places[i].second);
        std::size_t nearest = 0;
        double least = 1e30;
        std::ptrdiff_t nearest_point = 0;
        for (std::size_t row = 0; row < data.size(); ++row) {
            const auto xs = data[row]["x"].get<std::vector<double>>(), ys = data[row]["y"].get<std::vector<double>>();
            const auto point = std::upper_bound(xs.begin(), xs.end(), x) - xs.begin() - 1;
            if (point < 0 || x > xs.back() || std::fabs(ys[point] - y) >= least) continue;
            least = std::fabs(ys[point] - y);
            nearest = row + 1;
            nearest_point = point;
        }
        pointed[nearest] = true;
        const auto point = static_cast<std::size_t>(nearest_point);
        const std::string pattern = "Pointed Pattern " + std::to_string(nearest) + (nearest == 1 ? " a.xye" : " b.xye") +
                                    " I= " + Fixed(data[nearest - 1]["y"][point], 1) + "(10)";  // the third column holds 1
        EXPECT_EQ(states[i + 1]["status"], Json({"", pattern, " X= " + Fixed(x, 4), " Y= " + Fixed(y, 1), "multi"}));
    }
    EXPECT_TRUE(pointed[1] && pointed[2]);
}

// A hidden row is passed over, and a low view tells more decimals.
TEST_F(Mouse, ReadsWhatIsShownAsFinelyAsItIsShown) {
    std::ofstream(directory / "a_name_that_no_bar_has_room_for.xye") << "t\n10 0.02 1\n20 0.52 1\n30 0.12 1\n40 0.22 1\n";
    const auto states = States(
        "drop a.xye b.xye;@data move 20 500;?;command 40023;cell 1736 3 1 0;press Apply;press Return;@data move 20 500;?;command 40023;"
        "cell 1736 3 2 0;press Apply;press Return;@data move 20 500;?;command 40019;drop a_name_that_no_bar_has_room_for.xye;"
        "@data move 15 0.25;?;drop a_name_that_no_bar_has_room_for.xye;@data move 15 0.25;?");
    const auto part = [&states](std::size_t i, std::size_t n) { return states.at(i)["status"][n - 1].get<std::string>(); };
    EXPECT_EQ(part(0, 2), "Pointed Pattern 1 a.xye I= 773.9(10)");  // 500 + 300 sin 20
    EXPECT_EQ(part(1, 2), "Pointed Pattern 2 b.xye I= 793.0(10)");  // 500 + 300 cos 6.5
    EXPECT_EQ(part(2, 2), "");
    EXPECT_EQ(part(2, 4), " Y= 500.0");
    EXPECT_EQ(part(3, 4), " Y= 0.250");
    EXPECT_EQ(part(4, 2),
              "Pointed Pattern 1 a_name_that_no\xE2\x80\xA6"
              "_room_for.xye I= 0.0(10)");
}

TEST_F(Mouse, ReadsNothingOutsideTheBox) {
    const auto states = States("drop a.xye;@data move 12.34 400;?;@data move 10 400;?;@move 179 400;?;@move 600 681;?;@move 600 119;?");
    EXPECT_EQ(states.at(0)["status"], Json({"", " N= 24 a.xye I= 201.9(10)", " X= 12.3400", " Y= 400.0", "single"}));
    EXPECT_EQ(states.at(1)["status"][1], " N= 1 a.xye I= 500.0(10)");  // on the first point itself
    for (const std::size_t out : {2u, 3u, 4u}) EXPECT_EQ(states.at(out)["status"], Json({"", "", "", "", "single"})) << out;
}

TEST(Mouse_Spacing, StandsInTheLineOfHintsButNeverInTheirPlace) {
    Session session;
    Diffraction_Pattern_Type pattern;
    ASSERT_TRUE(Allocate_Diffraction_Pattern(pattern, 2).ok());
    pattern.x = {10, 90}, pattern.y = {0, 100};
    pattern.conv[0] = 1.5f;
    session.store.Append(std::move(pattern), {});
    Set_Xspace(session, "2theta");
    session.plot.plot_type = Plot_Form::single;
    session.plot.drawn = session.plot.units = {10, 90, 0, 100};
    Ask_User ask(session.config);
    const auto hint_at = [&](double x) {
        const Plot_State::Place at = session.plot.Page_At({x, 50});
        MouseMovement_Main(session, ask, {Message_Kind::mouse_move, {.x = at.x, .y = at.y}});
        return session.interface.status[0];
    };
    EXPECT_EQ(hint_at(60) + hint_at(95) + hint_at(30), " d= 1.50000 \u00c5 d= 2.89778 \u00c5");  // 0.75 / sin 15 degrees
    session.interface.status[0] = "Choose a limit";
    EXPECT_EQ(hint_at(60) + hint_at(95), "Choose a limitChoose a limit");
}

TEST_F(Mouse, ZoomsByARectangleFromAnyCornerAndNotByAClick) {
    std::string script = "drop a.xye b.xye";
    for (const auto& [from, to] : {std::pair("400 200", "900 600"), {"900 600", "400 200"}, {"400 600", "900 200"}, {"900 200", "400 600"}})
        script += std::string(";@down right 600 400;?;@down ") + from + ";@move 500 500;@up " + to + ";?";
    const auto states = States(script +
                               ";@down 600 400;@up 600 400;?;@data down 17 400;@data up 17.0015 550;?;@data down 17 400;@data up 18 400;?;"
                               "@data down 17 400;@data up 17.3 401;?");
    const Limits whole = View_Of(states.at(0));
    for (std::size_t i = 1; i < 8; i += 2) {
        Expect_View(states.at(i - 1), whole, "right button");
        Expect_View(states.at(i), {whole.X(400), whole.X(900), whole.Y(200), whole.Y(600)}, "rectangle");
        EXPECT_EQ(states[i]["drawn_x1"], states[i]["x_view_min"]);
    }
    for (const std::size_t i : {8u, 9u, 10u}) Expect_Same_View(states.at(i), states[7], std::to_string(i));
    EXPECT_NEAR(View_Of(states.at(11)).x2 - View_Of(states[11]).x1, 0.3, 1e-5);
}

TEST_F(Mouse, TheWheelKeepsThePlaceUnderThePointer) {
    const auto states = States(
        "drop a.xye;?;@wheelup 320 300;?;@wheeldown 900 300;@wheeldown 900 300;?;@wheelup 1100 300;@wheelup 600 700;?;@down 300 300;"
        "@move 500 500;@wheelup 500 500;?;@up 700 600;?");
    Limits view = View_Of(states.at(0));
    const auto turn = [&view](double page, double factor) {
        const double x = view.X(page);
        view.x1 = x + (view.x1 - x) * factor, view.x2 = x + (view.x2 - x) * factor;
    };
    turn(320, 0.8);
    Expect_View(states.at(1), view, "nearer");
    turn(900, 1.25), turn(900, 1.25);
    Expect_View(states.at(2), view, "farther");
    Expect_Same_View(states.at(3), states[2], "outside");
    Expect_Same_View(states.at(4), states[2], "within a rectangle");
    Expect_View(states.at(5), {view.X(300), view.X(700), view.Y(300), view.Y(600)}, "the rectangle all the same");
}

TEST_F(Mouse, TheWheelOverAScaleZoomsThatAxis) {
    const auto states = States("drop a.xye;?;@wheelup 100 400;?;@wheeldown 300 60;?;@wheelup 100 60;@wheelup 1100 400;?");
    Limits view = View_Of(states.at(0));
    const double y = view.Y(400);
    view.y1 = y + 0.8 * (view.y1 - y), view.y2 = y + 0.8 * (view.y2 - y);
    Expect_View(states.at(1), view, "y");
    const double x = view.X(300);
    view.x1 = x + 1.25 * (view.x1 - x), view.x2 = x + 1.25 * (view.x2 - x);
    Expect_View(states.at(2), view, "x");
    Expect_Same_View(states.at(3), states[2], "the corner, and where no scale is");
}

// By as much as the hand goes, whatever the mode; one step of the ways back.
TEST_F(Mouse, TheMiddleButtonTakesTheViewAlong) {
    for (const std::string mode : {"", "command 40105;", "command 40110;"}) {
        const Run_Result run = Do("drop a.xye;" + mode +
                                  "print cursor;?;@down middle 400 300;print cursor;@move 500 350;?;@wheelup 500 350;"
                                  "@up middle 600 250;?;print cursor;command 40503;?;@down middle 400 300;@move 450 500;key Escape;?;"
                                  "@move 600 300;@up middle 600 300;?");
        const auto states = run.With("plot_type"), cursors = run.With("cursor");
        const Limits from = View_Of(states.at(0));
        const auto moved = [&from](double across, double up) {
            const double x = across / (right - left) * (from.x2 - from.x1), y = up / (top - bottom) * (from.y2 - from.y1);
            return Limits{from.x1 - x, from.x2 - x, from.y1 - y, from.y2 - y};
        };
        Expect_View(states.at(1), moved(100, 50), mode);
        Expect_View(states.at(2), moved(200, -50), mode);
        for (const std::size_t i : {3u, 4u, 5u}) {
            Expect_Same_View(states.at(i), states[0], mode + std::to_string(i));
            EXPECT_EQ(states[i]["MoveMode"], states[0]["MoveMode"]) << mode;
        }
        EXPECT_EQ(cursors.at(1)["cursor"], "hand");
        EXPECT_EQ(cursors.at(2)["cursor"], cursors.at(0)["cursor"]) << mode;
    }
}

TEST_F(Mouse, TheMiddleButtonMovesAMapWithinItsRows) {
    const auto states = States(
        "drop a.xye a.xye a.xye a.xye a.xye a.xye a.xye a.xye;command 40031;@data down 14 2.6;@data up 24 6.4;?;@down middle 600 400;"
        "@move 684 213;?;key Escape;?;@down middle 600 400;@up middle 5000 -5000;?;@wheeldown 100 400;?");
    const auto rows = [&states](std::size_t i) { return std::pair(states.at(i)["first_pattern"], states.at(i)["last_pattern"]); };
    EXPECT_EQ(rows(0), std::pair(Json(3), Json(6)));
    EXPECT_EQ(rows(1), std::pair(Json(4), Json(7)));  // a third of the box
    EXPECT_NEAR(View_Of(states[1]).x1, View_Of(states[0]).x1 - 0.1 * (View_Of(states[0]).x2 - View_Of(states[0]).x1), 1e-3);
    EXPECT_EQ(rows(2), rows(0));
    EXPECT_EQ(View_Of(states[2]).x1, View_Of(states[0]).x1);
    EXPECT_EQ(rows(3), std::pair(Json(5), Json(8)));  // the ends stop the hand
    EXPECT_NEAR(View_Of(states[3]).x1, 10, 1e-4);
    EXPECT_LT(states.at(4)["first_pattern"], states[3]["first_pattern"]);
}

// The list is in counts, whatever the scale of the click; the scale outlives the calculation, and not a new start.
TEST_F(Mouse, ClicksOnEachScaleGiveCounts) {
    const Run_Result run =
        Do("drop a.xye;key Ctrl+L;command 40096;?;command 40093;@data down 20 6.2146081;@data up 20 6.2146081;key Ctrl+L;?;"
           "@data down 22 20;@data up 22 20;@data move 22 20;?;print peaks;command 40097;?;command 40138;command 40144;"
           "@data down 12 15;@data up 12 15;command 40145;@data down 12 15.05;@data up 12 15.05;print background;command 40019;"
           "drop a.xye b.xye;?");
    const auto states = run.With("plot_type");
    const Json peaks = run.With("peaks").at(0)["peaks"];
    ASSERT_EQ(peaks.size(), 2u);
    EXPECT_NEAR(peaks[0]["y"].get<double>(), 500, 0.05);  // e to the 6.2146081
    EXPECT_NEAR(peaks[1]["y"].get<double>(), 400, 0.05);
    const char* const told[][2] = {
        {"calculation", "logarithm"}, {"calculation", "root"}, {"calculation", "root"}, {"single", "root"}, {"multi", "linear"}};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(states.at(i)["plot_type"], told[i][0]) << i;
        EXPECT_EQ(states[i]["y_scale"], told[i][1]) << i;
    }
    EXPECT_EQ(states[2]["status"][3], " Y= 400.0");
    EXPECT_EQ(run.With("background").at(0)["background"].size(), 0u);  // a point of 225 is hit at 226.5
}

TEST_F(Mouse, AViewBeyondEveryNumberIsRefused) {
    std::string script = "drop a.xye";
    for (int i = 0; i < 420; ++i) script += ";@wheeldown 600 400";
    for (int i = 0; i < 30; ++i) script += ";command 40136";
    for (int i = 0; i < 40; ++i) script += ";command 40109";
    EXPECT_GT(View_Of(States(script + ";?").at(0)).x2, 1e37);  // and each view held together
    const auto states = States("drop a.xye;?;@down 400 400;@up 600 1e300;?;command 40105;@down 400 400;@move -1e300 500;@up 1 1;?");
    for (const std::size_t i : {1u, 2u}) Expect_Same_View(states.at(i), states[0], "far away");
}

TEST_F(Mouse, WhatMakesARectangleOrADragLapse) {
    for (const std::string mode : {"", "command 40105;"}) {
        for (const std::string lapse : {"key Escape", "command 40226", "command 40027", "@down right 700 500", "drop a.xye"}) {
            const auto states =
                States("drop a.xye b.xye;" + mode + "@down 300 300;@move 600 500;" + lapse + ";?;@move 700 600;@up 800 600;?");
            Expect_Same_View(states.at(1), states.at(0), mode + lapse);
            EXPECT_EQ(states[1]["MoveMode"], 0) << lapse;
        }
        const auto states = States("drop a.xye;" + mode +
                                   "@down 300 300;@move 400 400;command 40019;?;@move 500 500;@up 500 500;@wheelup 500 500;"
                                   "@down right 500 500;@down 400 400;key Escape;?");
        EXPECT_EQ(states.at(0)["plot_type"], "none");
        EXPECT_EQ(states.at(1), states[0]) << "no form, no meaning";
    }
}

TEST_F(Mouse, TheHandDragsAtHalfItsSpeed) {
    const Run_Result run =
        Do("drop a.xye;command 40105;print menu 40105;print menu 40113;?;@down 600 400;@move 700 450;@move 900 500;?;@move 1100 500;?;"
           "@move 950 300;?;key Escape;?;command 40105;@move 500 300;@down 600 400;@move 650 420;@up 650 420;@move 800 600;?;"
           "@down 100 100;@move 500 500;?;@down right 500 500;?;print menu 40105;print menu 40113;"
           "command 40105;command 40113;?;command 40105;key Escape;?");
    const auto menu = run.With("built"), states = run.With("plot_type");
    for (const std::size_t i : {0u, 1u, 2u, 3u}) EXPECT_EQ(menu.at(i)["enabled"].get<bool>(), i == 1 || i == 2) << i;
    const Limits whole = View_Of(states.at(0));
    const auto shifted = [&whole](double dx, double dy) {
        return Limits{whole.X(left - 0.5 * dx), whole.X(right - 0.5 * dx), whole.Y(bottom - 0.5 * dy), whole.Y(top - 0.5 * dy)};
    };
    Expect_View(states.at(1), shifted(300, 100), "two moves");
    Expect_Same_View(states.at(2), states[1], "a move that leaves the view");
    Expect_View(states.at(3), shifted(300 - 150, 100 - 200), "back in it, from where the hand was");
    Expect_Same_View(states.at(4), states[0], "Escape: where the drag began");
    Expect_View(states.at(5), shifted(50, 20), "a new drag, then a free hand");
    Expect_Same_View(states.at(6), states[5], "a begin outside the view");
    for (const std::size_t i : {4u, 7u, 8u, 9u}) EXPECT_EQ(states.at(i)["MoveMode"], 0) << i;
}

TEST_F(Mouse, ACommandInTheMiddleOfADragDoesNotThrowTheHandOff) {
    const auto states = States("drop a.xye;command 40105;?;@down 600 400;@move 700 400;command 40106;@move 700 400;?;@move 800 400;?");
    const Limits whole = View_Of(states.at(0));
    Expect_View(states.at(1), {whole.X(left - 84 - 50), whole.X(right - 84 - 50), whole.y1, whole.y2}, "a tenth to the left");
    Expect_View(states.at(2), {whole.X(left - 84 - 100), whole.X(right - 84 - 100), whole.y1, whole.y2}, "and on");
}

TEST_F(Mouse, NothingStaysOfTheReadOutsBehindAReset) {
    EXPECT_EQ(States("drop a.xye;@move 600 400;command 40019;?").at(0)["status"], Json({"", "", "", "", "none"}));
}

TEST_F(Mouse, APointWithoutANumberIsNotNear) {
    std::ofstream(directory / "nan.xye") << "t\n10 nan 1\n11 500 1\n12 500 1\n13 500 1\n";
    EXPECT_EQ(States("drop nan.xye a.xye;@data move 10.5 500;?").at(0)["status"][1], "Pointed Pattern 2 a.xye I= 752.4(10)");
}

TEST_F(Mouse, ViewsGoBackAndForward) {
    const std::string look = ";print menu 40503;print menu 40504;?;";
    const std::string back = "command 40503" + look, forward = "command 40504" + look, wheel = "@wheelup 600 300";
    const std::array<std::string, 5> actions = {
        "@down 300 300;@up 800 600", "@wheelup 500 400;@move 501 400;@wheelup 500 400;@wheeldown 900 400",
        "command 40105;@down 600 400;@move 650 400;@move 700 440;@up 700 440", "@down right 1 1;command 40106", "command 40119"};
    std::string script = "drop a.xye" + look;
    for (const std::string& action : actions) script += action + look;
    for (const std::string& way : {back, forward})
        for (std::size_t i = 0; i < actions.size(); ++i) script += way;
    script += back + "key Back;key Back" + look + wheel + look + back + "drop b.xye" + look + wheel + ";command 40226" + look + wheel +
              ';' + back + forward + "key Back" + look;
    const Run_Result run = Do(script);
    const auto menu = run.With("built"), states = run.With("plot_type");
    const auto expect = [&](std::size_t i, bool can_back, bool can_forward, std::size_t view) {
        EXPECT_EQ(menu.at(2 * i)["enabled"], can_back) << i;
        EXPECT_EQ(menu.at(2 * i + 1)["enabled"], can_forward) << i;
        Expect_Same_View(states.at(i), states.at(view), std::to_string(i));
    };
    const std::size_t n = actions.size();
    for (std::size_t i = 0; i <= n; ++i) {
        expect(i, i > 0, false, i);
        expect(n + i, i<n, i> 0, n - i);
        expect(2 * n + i, i > 0, i < n, i);
    }
    expect(3 * n + 2, true, true, 2);
    expect(3 * n + 3, true, false, 3 * n + 3);  // a new branch
    expect(3 * n + 4, true, true, 2);
    expect(3 * n + 5, false, false, 3 * n + 5);  // other data
    expect(3 * n + 6, false, false, 3 * n + 6);  // a logarithmic axis
    expect(3 * n + 7, false, true, 3 * n + 6);
    expect(3 * n + 8, true, false, 3 * n + 8);
    expect(3 * n + 9, false, true, 3 * n + 6);
    EXPECT_NE(states[3 * n + 8]["x_view_min"], states[3 * n + 6]["x_view_min"]);
}

TEST_F(Mouse, TheLogarithmicFormReadsAndZoomsInLogUnits) {
    const auto states = States(
        "drop a.xye b.xye;command 40226;@data move 20 5.5;?;@data down 12 5;@data up 22 6.25;?;command 40105;@data down 15 5.5;"
        "@data move 16 5.75;?");
    EXPECT_EQ(states.at(0)["status"], Json({"", " N= 101 a.xye I= 773.9(10)", " X= 20.0000", " Y= 5.50", "multi_log"}));
    EXPECT_LT(View_Of(states[0]).y2, std::log(900.0));
    Expect_View(states.at(1), {12, 22, 5, 6.25}, "zoom");
    Expect_View(states.at(2), {11.5, 21.5, 4.875, 6.125}, "drag");
}

// Between its neighbours a new peak stands on the mean of their backgrounds, beyond the last one on that one's.
TEST(Mouse_Clicks, AnInsertedPeakStandsOnTheBackgroundOfItsNeighbours) {
    Session session;
    Ask_User ask(session.config);
    Diffraction_Pattern_Type pattern;
    ASSERT_TRUE(Allocate_Diffraction_Pattern(pattern, 2).ok());
    pattern.x = {10, 90};
    session.store.Append(std::move(pattern), {});
    session.plot.ClickMode = Click_Mode::peaks;
    session.plot.peak_insert = true;
    for (const auto& [x, bgr] : {std::pair{20.0f, 0.0f}, {30.0f, 0.0f}}) {
        Click(session, ask, x, 100);
        EXPECT_EQ(session.lists.peaks.back().bgr, bgr);
    }
    session.lists.peaks = {{20, 100, 10}, {30, 100, 30}, {40, 100, 80}};
    const std::pair<float, float> inserted[] = {{15, 10}, {24, 20}, {38, 55}, {60, 80}};
    for (const auto& [x, bgr] : inserted) {
        Click(session, ask, x, 100);
        const auto peak =
            std::find_if(session.lists.peaks.begin(), session.lists.peaks.end(), [at = x](const Peak_Mark& p) { return p.x == at; });
        ASSERT_NE(peak, session.lists.peaks.end());
        EXPECT_EQ(peak->bgr, bgr) << x;
    }
}

}  // namespace
}  // namespace vntl
