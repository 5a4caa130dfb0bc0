// Converting all rows between the scales of x, and bringing a new file to the present one.
#include <cmath>
#include <limits>
#include <numbers>

#include "calc/x_conversion.hpp"
#include "session/load.hpp"
#include "session/session.hpp"
#include "session/testing.hpp"
#include "session/xspace.hpp"
#include "session/xspace_vocabulary.hpp"

namespace vntl {
namespace {

using Texts = std::vector<std::string>;
using Floats = std::vector<float>;
using Pairs = std::vector<std::pair<float, float>>;

constexpr double two_pi = 2 * std::numbers::pi, degree = std::numbers::pi / 180;
constexpr float wavelength = 1.5f, dtt1 = 500, dtt2 = 5;

// One scale: the spacing d of a value, and the value of a spacing.
struct Scale {
    std::string name;
    Floats x;  // four points of it
    double (*d_of)(double), (*of_d)(double);
};
double Inverse(double v) { return 1 / v; }
double Two_Pi_Over(double v) { return two_pi / v; }
double Same(double v) { return v; }
double Angle_To_D(double x) { return wavelength / (2 * std::sin(x / 2 * degree)); }
double D_To_Angle(double d) { return 2 / degree * std::asin(wavelength / (2 * d)); }
double Time_To_D(double t) { return (std::sqrt(double{dtt1} * dtt1 + 4 * dtt2 * t) - dtt1) / (2 * dtt2); }
double D_To_Time(double d) { return dtt1 * d + dtt2 * d * d; }
const Scale theta_scale{"2theta", {20, 40, 60, 80}, Angle_To_D, D_To_Angle},
    theta_below_zero{"2theta", {-4, -3, -2, -1}, Angle_To_D, D_To_Angle};
const Scale flight_scale{"TOF", {1000, 1500, 2500, 4000}, Time_To_D, D_To_Time};
const Scale d_scale{"d-space", {1, 2, 3, 5}, Same, Same}, spacing_scale{"d-spacing", {1, 2, 3, 5}, Same, Same};
const Scale q_scale{"q-space", {1, 2, 4, 6}, Two_Pi_Over, Two_Pi_Over}, s_scale{"s-space", {0.2f, 0.3f, 0.5f, 0.9f}, Inverse, Inverse};
const Scale* const targets[] = {&theta_scale, &flight_scale, &d_scale, &q_scale, &s_scale};

void Add_Row(Session& s, const std::string& name, const Floats& x, X_Constants constants) {
    Diffraction_Pattern_Type p = Tiny_Pattern(static_cast<int>(x.size()));
    p.x = x;
    p.conv = constants;
    PRF_Info_Add_Type info;
    p.filename = info.file_name = name;
    info.kind = Row_Kind::data;
    s.store.Append(std::move(p), std::move(info));
}

// Ticks at the points, out of order; one region over the inner points, and one between the last two.
void Add_Marks(PRF_Info_Add_Type& info, const Floats& x) {
    info.nreflections = 4;
    info.refl_position = {x[2], x[0], x[3], x[1]};
    info.nexcl = 2;
    info.excl_min[0] = x[1], info.excl_max[0] = x[2];
    info.excl_min[1] = x[2], info.excl_max[1] = x[3];
}

template <class Conversion>
void Expect_Near(const Floats& found, const Floats& from, const Conversion& convert) {
    ASSERT_EQ(found.size(), from.size());
    for (std::size_t i = 0; i < from.size(); ++i) EXPECT_NEAR(found[i], convert(from[i]), 4e-7 * std::fabs(found[i])) << from[i];
}

Status Convert_To(Session& s, Ask& ask, std::string_view space) { return Convert_Xspace(s, ask, Find_Space(space)->space); }

// All of a session that a refusal must leave as it was.
std::string Fingerprint(const Session& s) {
    std::string text = std::string(Told(s.plot.xspace)) + "|" + s.plot.xlabel_text + "|" + std::to_string(s.store.nperfiles());
    for (int row = 1; row <= s.store.nperfiles(); ++row) {
        const Diffraction_Pattern_Type& p = s.store.Pattern(row);
        const PRF_Info_Add_Type& info = s.store.Info(row);
        text += "|" + std::to_string(info.nexcl);
        for (const auto& values : {p.x, p.y, p.sigma, info.refl_position, Floats(info.excl_min.begin(), info.excl_max.begin())})
            for (const float v : values) text += " " + std::to_string(v);
    }
    return text;
}

TEST(Convert_Xspace, EveryMeetingOfAPresentSpaceAndATarget) {
    const std::string fault = "Fault in Vantrelo: Impossible to convert ", lost = "Vantrelo in unknown xspace : ";
    const std::string same = "Same xspace...", no = "Conversion not possible";
    struct Row {
        std::string present;
        const Scale* scale;  // null: not one that converts
        Texts answers;       // a target each; "" converts
    };
    std::vector<Row> rows = {
        {"2theta", &theta_scale, {same, fault + "2theta -> TOF", "", "", ""}},
        {"TOF", &flight_scale, {fault + "TOF -> 2theta", same, "", "", ""}},
        {"d-space", &d_scale, {"", "", same, "", ""}},
        {"d-spacing", &spacing_scale, {"", "", lost + "d-spacing", "", ""}},
        {"q-space", &q_scale, {"", "", "", same, ""}},
        {"s-space", &s_scale, {"", "", "", "", same}},
        {"mono", nullptr, {no, no, no, no, "Conversion not posible"}},
    };
    for (const char* other : {"----", "Lambda", "Energy", "Temperature", "Frequency", "Time", "Distance", "r.l.u.", "Angle"})
        rows.push_back({other,
                        nullptr,
                        {lost + other, lost + other, lost + other, "Vantrelo in unknown xspace  : " + std::string(other), lost + other}});
    const Texts titles = {"2theta (deg)", "TOF (\u00b5sec)", "d-spacing (\u00c5)", "Q (\u00c5-1)", "s (\u00c5-1)"};
    constexpr int commands[] = {40042, 40043, 40017, 40089, 40081};
    for (const Row& row : rows) {
        for (std::size_t t = 0; t < std::size(targets); ++t) {
            const Scale& target = *targets[t];
            SCOPED_TRACE(row.present + " to " + target.name);
            Session s;
            Scripted_Ask ask;
            const bool flight = row.scale == &flight_scale || &target == &flight_scale;
            const Floats x = row.scale != nullptr ? row.scale->x : d_scale.x;
            Add_Row(s, "a.xye", x, flight ? X_Constants{dtt1, dtt2} : X_Constants{wavelength});
            Add_Marks(s.store.Info(1), x);
            if (row.present != "----") Set_Xspace(s, row.present);
            const std::string before = Fingerprint(s);
            const Status status = Convert_To(s, ask, target.name);
            EXPECT_EQ(status.message, row.answers[t]);
            EXPECT_EQ(status.failed, !row.answers[t].empty());
            EXPECT_TRUE(ask.boxes.empty() && ask.constants_asked.empty());
            if (status.failed) {
                EXPECT_EQ(Fingerprint(s), before);
                continue;
            }
            EXPECT_EQ(std::string(Told(s.plot.xspace)) + "|" + s.plot.xlabel_text, target.name + "|" + titles[t]);
            for (const int command : commands) EXPECT_EQ(s.interface.Checked(command), command == commands[t]) << command;

            const Diffraction_Pattern_Type& p = s.store.Pattern(1);
            const PRF_Info_Add_Type& info = s.store.Info(1);
            const auto convert = [&](double v) { return target.of_d(row.scale->d_of(v)); };
            const bool turned = convert(x[0]) > convert(x[1]);
            Expect_Near(p.x, turned ? Floats(x.rbegin(), x.rend()) : x, convert);
            EXPECT_EQ(p.y, turned ? (Floats{9, 4, 1, 0}) : (Floats{0, 1, 4, 9}));
            EXPECT_EQ((Floats{p.xmin, p.xmax, p.ymin, p.ymax}), (Floats{p.x.front(), p.x.back(), 0, 9}));
            Expect_Near(info.refl_position, {x[2], x[0], x[3], x[1]}, convert);  // not put in order again
            ASSERT_EQ(info.nexcl, 2);
            const Floats lower = {x[turned ? 2 : 1], x[turned ? 3 : 2]}, upper = {x[turned ? 1 : 2], x[turned ? 2 : 3]};
            Expect_Near({info.excl_min[0], info.excl_min[1]}, lower, convert);
            Expect_Near({info.excl_max[0], info.excl_max[1]}, upper, convert);
        }
    }
}

TEST(Convert_Xspace, MixedOriginsAndUnknownTargets) {
    Session s;
    Scripted_Ask ask;
    Add_Row(s, "a.xye", q_scale.x, {wavelength});
    Set_Xspace(s, "q-space");
    EXPECT_EQ(Convert_To(s, ask, "Lambda").message, "Unknown Xspace target");
    s.store.mixed_scat_var = true;
    const std::string before = Fingerprint(s);
    for (const char* origin : {"2theta", "TOF"})
        EXPECT_EQ(Convert_To(s, ask, origin).message,
                  "Profiles with diferent scat_var were loaded.\nUnable to converter xspace to scar_var of origin.");
    EXPECT_EQ(Convert_To(s, ask, "q-space").message, "Same xspace...");
    EXPECT_EQ(Fingerprint(s), before);
    EXPECT_TRUE(Convert_To(s, ask, "d-space").ok());
}

// Rows without constants: the table asks, keeps what was typed, and an abscissa moves only when all is there.
TEST(Convert_Xspace, TheTableOfConstants) {
    struct Case {
        const Scale& scale;
        Constants_Kind kind;
        std::string invalid;
    };
    for (const Case& c : {Case{theta_scale, Constants_Kind::wavelength, "Invalid value of wavelength found in:\n"},
                          Case{flight_scale, Constants_Kind::time_of_flight, "Invalid values of ddt1/dtt2 found for:\n"}}) {
        SCOPED_TRACE(c.scale.name);
        Session s;
        Scripted_Ask ask;
        Add_Row(s, "a.xye", c.scale.x, {2, 1});
        Add_Row(s, "b.xye", c.scale.x, {0, 3});
        Add_Row(s, "c.xye", c.scale.x, {-1, 4});
        Set_Xspace(s, c.scale.name);
        const std::string before = Fingerprint(s);
        const auto constants = [&] {
            Pairs pairs;
            for (int row = 1; row <= 3; ++row) pairs.emplace_back(s.store.Pattern(row).conv[0], s.store.Pattern(row).conv[1]);
            return pairs;
        };

        EXPECT_EQ(Convert_To(s, ask, "d-space").message, "Conversion of xspace cancelled");
        EXPECT_EQ(ask.constants_asked, std::vector{c.kind});
        ASSERT_EQ(ask.constants_shown.size(), 3u);
        EXPECT_EQ(ask.constants_shown[1].file_name, "b.xye");
        EXPECT_EQ(ask.constants_shown[2].first, -1);
        EXPECT_EQ(ask.constants_shown[2].second, 4);
        EXPECT_EQ(constants(), (Pairs{{2, 1}, {0, 3}, {-1, 4}}));

        const Pairs typed = {{0, 5}, {7, 6}, {-2, 8}};
        ask.constants = {typed};
        ask.constants.push_back({{std::numeric_limits<float>::quiet_NaN(), 0}, {1, 0}, {1, 0}});
        EXPECT_EQ(Convert_To(s, ask, "q-space").message, "Conversion of xspace cancelled");
        EXPECT_EQ(ask.constants_refused, (Texts{c.invalid + "a.xye\nc.xye\n", c.invalid + "a.xye\n"}));
        EXPECT_EQ(constants(), (Pairs{{2, 1}, {0, 3}, {-1, 4}}));  // nothing is stored before it is right
        EXPECT_EQ(Fingerprint(s), before);

        ask.constants = {{{1, 0}, {2, 0}, {4, 0}}};
        EXPECT_TRUE(Convert_To(s, ask, "d-space").ok());
        EXPECT_FLOAT_EQ(s.store.Pattern(3).x[1], s.store.Pattern(1).x[1] * (c.scale.name == "TOF" ? 0.25f : 4.0f));
        EXPECT_TRUE(Convert_To(s, ask, "q-space").ok());
        EXPECT_EQ(ask.constants_asked.size(), 3u);
        EXPECT_TRUE(ask.boxes.empty());
    }
}

TEST(Convert_Xspace, ChangedConstantsAreStoredAndNothingMoves) {
    for (const auto change : {Change_Wavelength, Change_Dtt}) {
        Session s;
        Scripted_Ask ask;
        Add_Row(s, "a.xye", theta_scale.x, {2, 1});
        Add_Row(s, "b.xye", theta_scale.x, {3, 1});
        Set_Xspace(s, change == Change_Dtt ? "TOF" : "2theta");
        const std::string before = Fingerprint(s);
        EXPECT_TRUE(change(s, ask).failed);
        EXPECT_EQ(s.store.Pattern(2).conv[0], 3);
        ask.constants = {{{0, 7}, {-1, 8}}};  // no value is looked at
        EXPECT_TRUE(change(s, ask).ok());
        EXPECT_EQ(ask.constants_asked.back(), change == Change_Dtt ? Constants_Kind::time_of_flight : Constants_Kind::wavelength);
        EXPECT_EQ((Floats{s.store.Pattern(1).conv[0], s.store.Pattern(1).conv[1], s.store.Pattern(2).conv[0]}), (Floats{0, 7, -1}));
        EXPECT_EQ(Fingerprint(s), before);
    }
}

TEST(Convert_Xspace, RegionsThatReachZeroAreLeftOut) {
    Session s;
    Scripted_Ask ask;
    Add_Row(s, "a.xye", theta_scale.x, {wavelength});
    PRF_Info_Add_Type& info = s.store.Info(1);
    info.nexcl = 4;
    const Pairs regions = {{-1, 5}, {30, 40}, {0, 3}, {50, 70}};
    for (std::size_t i = 0; i < 4; ++i) info.excl_min[i] = regions[i].first, info.excl_max[i] = regions[i].second;
    Set_Xspace(s, "2theta");
    ASSERT_TRUE(Convert_To(s, ask, "d-space").ok());
    const auto box = [](const char* number) {
        return std::string("Information Message|The excluded region No. ") + number +
               " of\na.xye contains an invalid value.\nThis excluded region will be deleted";
    };
    EXPECT_EQ(ask.boxes, (Texts{box("3"), box("1")}));  // from the last to the first
    ASSERT_EQ(info.nexcl, 2);
    Expect_Near({info.excl_min[0], info.excl_max[0], info.excl_min[1], info.excl_max[1]}, {40, 30, 70, 50}, theta_scale.d_of);
    ASSERT_TRUE(Convert_To(s, ask, "2theta").ok());
    Expect_Near({info.excl_min[0], info.excl_max[0], info.excl_min[1], info.excl_max[1]}, {30, 40, 50, 70}, Same);
}

TEST(Convert_Xspace, EachRowReturnsByItsOwnWavelength) {
    Session s;
    Scripted_Ask ask;
    Add_Row(s, "short", {-1, 10, 20, 60, 150}, {0.7093f});
    Add_Row(s, "long", {10, 20, 60, 150}, {2.5f});
    Set_Xspace(s, "2theta");
    for (const char* target : {"d-space", "q-space", "s-space", "d-space"}) ASSERT_TRUE(Convert_To(s, ask, target).ok()) << target;
    for (const int row : {1, 2})
        EXPECT_NEAR(s.store.Pattern(row).x[0], double{s.store.Pattern(row).conv[0]} / (2 * std::sin(75 * degree)), 1e-6);
    ASSERT_TRUE(Convert_To(s, ask, "2theta").ok());
    Expect_Near(s.store.Pattern(1).x, {10, 10, 20, 60, 150}, Same);  // the point below 0 stays with its neighbour
    Expect_Near(s.store.Pattern(2).x, {10, 20, 60, 150}, Same);
    EXPECT_EQ(s.store.Pattern(2).y, (Floats{0, 1, 4, 9}));
}

// Many points are converted by several threads: each row comes out as it would alone.
TEST(Convert_Xspace, ManyRowsOfManyPoints) {
    Session s;
    Scripted_Ask ask;
    Floats x(6000);
    for (std::size_t i = 0; i < x.size(); ++i) x[i] = 2 + static_cast<float>(i) * 0.02f;
    for (int row = 1; row <= 41; ++row) Add_Row(s, "row", x, {0.5f + static_cast<float>(row) * 0.05f});
    Set_Xspace(s, "2theta");
    const Session before = s;
    ASSERT_TRUE(Convert_To(s, ask, "q-space").ok());
    for (int row = 1; row <= 41; ++row) {
        Diffraction_Pattern_Type alone = before.store.Pattern(row);
        for (const X_Step step : {X_Step::two_theta_to_d, X_Step::d_q}) Convert_Points(step, alone);
        EXPECT_TRUE(s.store.Pattern(row).x == alone.x && s.store.Pattern(row).y == alone.y) << row;
    }
}

TEST(Convert_Xspace, ARowThatCannotFollowKeepsAllWhereTheyAre) {
    struct Case {
        const char *present, *target;
        Floats bad;
    };
    for (const Case& c :
         {Case{"2theta", "d-space", {-3, -2, 0}}, Case{"q-space", "s-space", {1, 2, std::numeric_limits<float>::infinity()}},
          Case{"d-space", "q-space", {-1, 0.5f, 1}}, Case{"s-space", "2theta", {0, 1, 2}}}) {
        SCOPED_TRACE(c.present);
        Session s;
        Scripted_Ask ask;
        Add_Row(s, "good.xye", {0.5f, 1, 2, 3}, {wavelength});
        Add_Row(s, "bad.xye", c.bad, {wavelength});
        Add_Marks(s.store.Info(1), {-1, 1, 2, 3});  // with a region that a conversion would take away
        s.store.Info(1).excl_min[0] = -1;
        Set_Xspace(s, c.present);
        const std::string before = Fingerprint(s);
        const Status status = Convert_To(s, ask, c.target);
        EXPECT_TRUE(status.failed);
        EXPECT_NE(status.message.find("bad.xye"), std::string::npos) << status.message;
        EXPECT_EQ(Fingerprint(s), before);
        EXPECT_TRUE(ask.boxes.empty());
    }
}

// A file of angles or times of flight comes to the present d, Q or s with its own constants, or with those that the user gives.
TEST(Convert_Xspace, ANewFileIsBroughtToThePresentSpace) {
    struct Case {
        const Scale& file;
        X_Constants own;
        Pairs typed;  // none: cancelled
        bool asked;
        std::string refusal;
    };
    const Case cases[] = {
        {theta_scale, {wavelength}, {}, false, ""},
        {theta_scale, {0}, {{wavelength, 0}}, true, ""},
        {theta_scale, {-1}, {}, true, "Load profile cancelled"},
        {theta_scale, {0}, {{0, 0}}, true, "lambda<=0 - Value incorrect for new.xye\nOperation cancelled."},
        {theta_below_zero, {wavelength}, {}, false, "new.xye"},
        {flight_scale, {dtt1, dtt2}, {}, false, ""},
        {flight_scale, {0, 1}, {{dtt1, dtt2}}, true, ""},
        {flight_scale, {0, 1}, {}, true, "Load profile cancelled"},
        {flight_scale, {0, 1}, {{-1, 0}}, true, "vtt1 <= 0 - Value incorrect for new.xye\nOperation cancelled."},
    };
    for (const Scale* present : {&d_scale, &spacing_scale, &q_scale, &s_scale}) {
        for (const Case& c : cases) {
            SCOPED_TRACE(c.file.name + " into " + present->name + ", " + c.refusal);
            Session s;
            Scripted_Ask ask;
            Add_Row(s, "old.xye", present->x, {2});
            Set_Xspace(s, present->name);
            const std::string before = Fingerprint(s);
            if (!c.typed.empty()) ask.constants = {c.typed};
            Diffraction_Pattern_Type p = Tiny_Pattern(4, 0, c.file.name);
            p.x = c.file.x;
            p.xmin = p.x.front(), p.xmax = p.x.back();
            p.conv = c.own;
            const Load_Result result = Load_Row(s, ask, "/x/new.xye", "XYSIGMA", {Status::Done(), p});
            EXPECT_EQ(ask.constants_asked.size(), c.asked ? 1u : 0u);
            if (c.asked) {
                EXPECT_EQ(ask.constants_asked[0], c.file.name == "TOF" ? Constants_Kind::time_of_flight : Constants_Kind::wavelength);
                EXPECT_EQ(ask.constants_shown[0].file_name, "new.xye");
                EXPECT_EQ(ask.constants_shown[0].first, c.own[0]);
            }
            EXPECT_EQ(ask.boxes.size(), c.refusal.empty() ? 0u : 1u);
            const bool by_dialog = !c.typed.empty() && !c.refusal.empty();  // it tells, stays open, and is left by cancel at last
            EXPECT_EQ(ask.constants_refused, by_dialog ? Texts{c.refusal} : Texts{});
            EXPECT_NE(ask.Last_Box().find(by_dialog ? "Load profile cancelled" : c.refusal), std::string::npos) << ask.Last_Box();
            EXPECT_EQ(result, c.refusal.empty() ? Load_Result::added : Load_Result::refused);
            EXPECT_EQ(Told(s.plot.xspace), present->name);
            EXPECT_EQ(s.store.Pattern(1).x, present->x);
            if (!c.refusal.empty()) {
                EXPECT_EQ(Fingerprint(s), before);
                continue;
            }
            const auto convert = [&](double v) { return present->of_d(c.file.d_of(v)); };
            const Floats& x = c.file.x;
            Expect_Near(s.store.Pattern(2).x, convert(x[0]) > convert(x[1]) ? Floats(x.rbegin(), x.rend()) : x, convert);
            EXPECT_EQ(s.store.Pattern(2).conv[0], c.file.name == "TOF" ? dtt1 : wavelength);
            EXPECT_EQ(s.store.Pattern(2).scat_var, c.file.name);
            EXPECT_EQ(s.store.Pattern(2).xmax, s.store.Pattern(2).x.back());
        }
    }
}

}  // namespace
}  // namespace vntl
