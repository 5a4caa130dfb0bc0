// Arithmetic, smoothing and the searches as a user runs them: dialogs, messages, the rows and files that they leave.
#include <cmath>
#include <functional>
#include <iomanip>
#include <numbers>
#include <numeric>
#include <tuple>

#include "app/testing.hpp"
#include "calc/smoothing.hpp"
#include "patterns/prf_files.hpp"
#include "session/search.hpp"
#include "session/session.hpp"

namespace vntl {
namespace {

using Texts = std::vector<std::string>;
using Curve = std::function<double(double)>;

class Calculations : public Program {
protected:
    // Writes columns x, y, sigma under a title; the statement that opens them.
    std::string File(const std::string& name, const Curve& y, int n = 40, double x0 = 10, double step = 0.1) const {
        std::ofstream out(directory / name);
        out << name << " title\n" << std::setprecision(9);
        for (int i = 0; i < n; ++i) out << x0 + step * i << ' ' << y(x0 + step * i) << " 3\n";
        out << "0 0 0\n";
        return "open " + name + "\n";
    }
    std::string First_Row(const Curve& y) const { return File("p.xye", y, 1500, 20, 0.02); }

    // The boxes behind the one about the preferences.
    static Texts Told(const Run_Result& run) {
        const Texts boxes = run.Boxes();
        return {boxes.begin() + std::min<long>(1, std::ssize(boxes)), boxes.end()};
    }
    static Json Field(const Json& dialog, int number) {
        for (const Json& field : dialog["fields"])
            if (field["field"] == number) return field;
        ADD_FAILURE() << "no field " << number << " in " << dialog;
        return {{"value", "0"}};
    }
    static double Number(const Json& dialog, int number) { return std::stod(Field(dialog, number)["value"].get<std::string>()); }
    static std::string Caption(const Json& dialog, int number) {
        return Field(dialog, number)["label"].get<std::string>() + Field(dialog, number)["value"].get<std::string>();
    }
    static Texts Names(const Json& row) { return {row["kind"], row["file_name"], row["title"]}; }
};

std::vector<double> Numbers(const Json& list) { return list.get<std::vector<double>>(); }

void Expect_Near(const std::vector<double>& seen, const std::vector<double>& expected, double tolerance) {
    ASSERT_EQ(seen.size(), expected.size());
    for (std::size_t i = 0; i < seen.size(); ++i) EXPECT_NEAR(seen[i], expected[i], tolerance) << "point " << i + 1;
}

// --- arithmetic --------------------------------------------------------------------------------------------------------------------

TEST_F(Calculations, SumsAveragesAndDifferences) {
    const auto line = [](double x) { return x; };
    const auto run = Script(
        File("a.xye", line) + File("b.xye", [](double x) { return 10 * x; }) + File("long.xye", line, 41) +
        File("moved.xye", line, 40, 10.000001) +
        "command 40100\nprint dialog\npress 1\npress 2\ncommand 40123\ncell 1331 4 2 1\nprint dialog\npress 1\nprint dialog\n"
        "press 1332\npress 1\npress 1333\ncell 1331 4 1 1\ncell 1331 4 4 1\nprint dialog\npress 1\nprint dialog\npress 2\n"
        "command 40101\nset 1227 3\npress 1\nset 1226 4\nset 1227 2\npress 1\nprint dialog\npress 2\nprint state\n"
        "command 40100\ncell 1331 4 1 1\ncell 1331 4 2 1\npress 1\n"
        "command 40123\ncell 1331 4 1 1\ncell 1331 4 2 1\ncell 1331 4 5 1\npress 1\n"
        "command 40101\nset 1226 2\nset 1227 1\nprint dialog\npress 1\nprint rows\nprint data 1\nprint data 5\nprint data 6\nprint data "
        "7\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(Told(run), (Texts{"ERROR: No profile selected to make sum/average", "ERROR: Only one profile selected to make sum/average",
                                "ERROR: The X step size of selected profiles are not equal",
                                "ERROR: The points of selected profiles are at different positions ",
                                "Size of selected profiles must be the same", "X arrays of each profiles are diferents"}));
    const auto dialogs = run.With("dialog");
    EXPECT_EQ(Caption(dialogs.at(0), 1338), "Sum of profiles");
    EXPECT_EQ(Caption(dialogs.at(1), 1338), "Average of profiles");
    EXPECT_EQ(Field(dialogs[0], 1331)["value"][2], (Json{"long.xye", "long.xye title", "41", "0"}));
    EXPECT_EQ(run.Marked(), (std::vector<std::vector<int>>{{}, {}, {1331}, {}, {1331}, {1227}, {}}));
    EXPECT_EQ(Field(dialogs.at(4), 1331)["value"][3][3], "1");  // the ticks stay
    EXPECT_EQ(Field(dialogs.at(6), 1226)["value"], "    2 b.xye");

    EXPECT_EQ(run.With("plot_type").at(0)["nperfiles"], 4);
    const auto rows = run.With("kind"), data = run.With("x");
    ASSERT_EQ(rows.size(), 7u);
    const Texts names[] = {{"SUMM", "<summation>", "Summation of profiles"},
                           {"AVER", "<Average>", "Average of profiles"},
                           {"DIFF", "<difference>", "Difference of profiles: b.xye - a.xye"}};
    const double factors[] = {11, 22 / 3.0, 9};  // of row 1
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(Names(rows[4 + i]), names[i]);
        EXPECT_NEAR(rows[4 + i]["ymax"].get<double>(), 13.9 * factors[i], 1e-4);
        EXPECT_NEAR(data[1 + i]["y"][20].get<double>(), 12 * factors[i], 1e-4);
        EXPECT_EQ(data[1 + i]["x"], data[0]["x"]);
        EXPECT_EQ(data[1 + i]["sigma"], data[0]["sigma"]);
    }
}

TEST_F(Calculations, MultiplyStaysOpenAndItsFileCorrects) {
    std::ofstream(directory / "beyond.eff") << "1 0 2\n41 0 2\n";
    const auto run = Script(
        File("a.xye", [](double x) { return x < 10.05 ? 500 : 100; }) + File("b.xye", [](double) { return 250; }) +
        "command 40162\npress 1532\nprint dialog\nset 1666 1000\npress 1665\nset 1530 0.5\npress 1528\nprint dialog\n"
        "cell 1527 2 1 1\npress 1532\nprint data 1\ncell 1527 4 1 0.5\ncell 1527 3 1 -0.25\npress 1532\npress 1332\npress 1333\n"
        "cell 1527 2 2 1\ncell 1527 3 2 abc\npress 1532\ncell 1527 3 2 0\npress 1532\nset 1531 x\npress 1529\npress 1534\npress 1533\n"
        "print data 1\nprint data 2\nprint rows\nfiles cancel\ncommand 40163\nfiles missing.eff\ncommand 40163\nfiles beyond.eff\n"
        "command 40163\nprint data 1\nfiles vantrelo-2006.eff\ncommand 40163\nprint data 1\nprint rows\n");
    const auto boxes = Told(run);
    ASSERT_EQ(boxes.size(), 5u) << run.output << run.errors;
    EXPECT_EQ(boxes[0], "ERROR: No profile selected to multiply");
    for (const std::size_t i : {1, 2}) EXPECT_NE(boxes[i].find("is not a number"), std::string::npos) << boxes[i];
    EXPECT_EQ(boxes[3].substr(0, 23), "ERROR opening the file ");
    EXPECT_EQ(run.Marked(), (std::vector<std::vector<int>>{{1527}, {}}));
    const Json cells = Field(run.With("dialog").at(1), 1527)["value"];
    for (const std::size_t row : {0, 1}) {
        EXPECT_EQ(std::stod(cells[row][2].get<std::string>()), 0.5);
        EXPECT_EQ(std::stod(cells[row][3].get<std::string>()), row == 0 ? 2 : 4);
    }
    const auto data = run.With("x"), rows = run.With("kind");
    ASSERT_EQ(data.size(), 5u);  // row 1 in the dialog, rows 1 and 2 after it, row 1 after a bad and a good file
    struct {
        std::size_t print;
        double x, y;
    } const first_points[] = {{0, 10.5, 1000}, {1, 10.25, 500}, {2, 10, 1000}, {3, 10.25, 500}, {4, 10.5, 500}};
    for (const auto& [print, x, y] : first_points) {
        EXPECT_NEAR(data[print]["x"][0].get<double>(), x, 1e-5) << print;
        EXPECT_EQ(data[print]["y"][0], y) << print;
    }
    EXPECT_EQ(data[0]["sigma"][0], 36);  // variance 9 times 2 squared
    EXPECT_EQ(Text_Of(directory / "vantrelo-2006.eff"), "    1       0.25000       1.00000\n    2       0.00000       0.25000\n");
    EXPECT_EQ(rows[1]["ymax"], 1000);
    // Line 2 is point 2 of every row; sigma stays, and the extremes are those of the new y.
    EXPECT_EQ(data[4]["y"][1], 4 * 100);
    EXPECT_EQ(data[4]["y"][2], 100);
    EXPECT_EQ(data[4]["sigma"], data[1]["sigma"]);
    EXPECT_EQ(rows[2]["ymax"], *std::ranges::max_element(data[4]["y"]));
}

TEST_F(Calculations, ANewRowObeysTheLimit) {
    std::string open = File(
        "a.xye", [](double x) { return x; }, 20);
    open.pop_back();
    for (int i = 1; i < 2000; ++i) open += " a.xye";
    const auto run =
        Script(open +
               "\ncommand 40100\ncell 1331 4 1 1\ncell 1331 4 2 1\npress 1\ndialog 141\npress 2\n"
               "command 40101\nset 1227 2\npress 1\ndialog 139\npress 2\ncommand 40020\npress 1\ndialog 140\npress 2\nprint state\n");
    EXPECT_EQ(Told(run), Texts(3, "The maximum number of profiles has been attained!"));
    EXPECT_EQ(run.With("plot_type").at(0)["nperfiles"], 2000);
}

// A variance may leave the range of numbers where its intensity does not; a refined profile is neither term of a difference.
TEST_F(Calculations, NothingIsMadeOfWhatCannotBe) {
    std::ofstream(directory / "refined.prf") << test::Whole(test::Columns(test::Make_Model(1, 40, false)));
    const auto run = Script(File("a.xye", [](double) { return 1; }) +
                            "command 40162\ncell 1527 2 1 1\ncell 1527 4 1 1e20\npress 1532\npress 1533\nprint data 1\n"
                            "drop refined.prf\ncommand 40101\nset 1226 1\nset 1227 2\npress 1\nset 1226 2\nset 1227 1\n"
                            "press 1\npress 2\nprint state\n");
    EXPECT_EQ(Told(run), (Texts{"Values of a.xye would leave the range of numbers", "Difference operation in PRF file is not permitted",
                                "Difference operation in PRF file is not permitted"}))
        << run.errors;
    EXPECT_EQ(run.With("x").at(0)["y"][0], 1);
    EXPECT_EQ(run.With("plot_type").at(0)["nperfiles"], 2);
}

// --- smoothing ---------------------------------------------------------------------------------------------------------------------

TEST_F(Calculations, SmoothingOfTheFirstRow) {
    const auto run = Script(
        File("a.xye", [](double x) { return 100 + 30 * std::sin(40 * x); }) +
        "print data 1\ncommand 40090\nprint dialog\npress 2\ncommand 40020\nprint dialog\nset 1330 0\npress 2\nprint state\ncommand 40020\n"
        "set 1330 1\nset 1282 7\nset 1647 1\npress 1\ncommand 40090\nset 1021 1\nprint dialog\nset 1020 1\nprint dialog\npress 1\n"
        "command 40090\nset 1330 0\npress 1\nprint rows\nprint data 1\nprint data 2\nprint data 3\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(Told(run), Texts{});
    const auto dialogs = run.With("dialog");
    ASSERT_EQ(dialogs.size(), 4u);
    struct {
        std::size_t dialog;
        int field;
        double value;
        bool enabled;
    } const couplings[] = {{0, 1282, 5, false}, {0, 1020, 1, false}, {0, 1021, 0, false}, {0, 1330, 1, true},
                           {1, 1282, 5, true},  {2, 1021, 1, true},  {2, 1330, 1, false}, {3, 1330, 1, true}};
    for (const auto& [dialog, field, value, enabled] : couplings) {
        EXPECT_EQ(Number(dialogs[dialog], field), value) << dialog << ' ' << field;
        EXPECT_EQ(Field(dialogs[dialog], field)["enabled"], enabled) << dialog << ' ' << field;
    }
    EXPECT_EQ(Caption(dialogs[0], 1329), "Select order polynomial");
    EXPECT_EQ(Caption(dialogs[1], 1329), "No. points for Fourier window");
    EXPECT_EQ(run.With("plot_type").at(0)["nperfiles"], 1);

    const auto rows = run.With("kind"), data = run.With("x");
    ASSERT_EQ(rows.size(), 3u);
    for (const std::size_t i : {1, 2}) EXPECT_EQ(Names(rows[i]), (Texts{"SMOO", "<smoothing>", "Smoothing Fourier of a.xye title"}));
    EXPECT_EQ(rows[1]["ymax"], rows[0]["ymax"]);
    const std::vector<double> raw = Numbers(data[0]["y"]), smooth = Numbers(data[2]["y"]);
    std::vector<float> fourier(raw.begin(), raw.end()), polynomial = fourier;
    Fourier_Filter(fourier, 7);
    Five_Point_Filter(polynomial);
    Expect_Near(smooth, {fourier.begin(), fourier.end()}, 1e-4);
    for (const std::size_t i : {1, 3}) Expect_Near(Numbers(data[i]["y"]), {polynomial.begin(), polynomial.end()}, 1e-4);
    std::string efficiency;
    for (std::size_t i = 0; i < raw.size(); ++i) {
        char line[60];
        std::snprintf(line, sizeof line, "%5zu%14.5f%14.5f\n", i + 1, 0.0, static_cast<float>(raw[i]) / static_cast<float>(smooth[i]));
        efficiency += line;
    }
    EXPECT_EQ(Text_Of(directory / "vantrelo-2006.eff"), efficiency);
}

TEST_F(Calculations, SmoothingRefusesAndPassesOver) {
    const auto run =
        Script("open " + Pattern("calculated.xys") + "\ncommand 40020\npress 1\n" +
               File("spike.xye", [](double x) { return std::abs(x - 12) < 0.01 ? 35 : 0; }) +
               "command 40020\nset 1021 1\npress 1\ncommand 40090\nset 1021 1\npress 1\nprint state\nprint rows\nprint data 2\n");
    EXPECT_EQ(Told(run),
              (Texts{"Operation not permitted over this profile type", "Profile calculated.xys\nis not of DATA type. It will be ignored"}));
    EXPECT_EQ(run.With("plot_type").at(0)["nperfiles"], 2);
    EXPECT_EQ(run.With("kind").at(1)["kind"], "DATA");
    std::vector<float> expected(40, 0);
    expected[20] = 35;
    Fourier_Filter(expected, 5);
    Five_Point_Filter(expected);
    Expect_Near(Numbers(run.With("x").at(0)["y"]), {expected.begin(), expected.end()}, 1e-4);
}

// The curve of the open dialog against the filter itself; the rows stay as they are, and nothing is left behind.
TEST_F(Calculations, TheSmoothedCurveIsSeenWhileItsDialogIsOpen) {
    const auto wave = [](double x) { return 100 + 30 * std::sin(40 * x); };
    const auto run = Script(File("a.xye", wave) +
                            "print data 1\ncommand 40020\nprint preview\nset 1282 9\nprint preview\nset 1282 251\n"
                            "print preview\npress 1\nprint dialog\nset 1282 4\nprint preview\npress 2\nprint preview\nprint data 1\n" +
                            File("b.xye", wave) + "command 40090\nset 1021 1\nprint preview\npress 2\nprint changes\n");
    EXPECT_EQ(Told(run), Texts{"Incorrect value of parameter "});
    const auto previews = run.With("preview"), data = run.With("x"), dialogs = run.With("dialog");
    ASSERT_EQ(previews.size(), 6u);
    ASSERT_EQ(dialogs.size(), 1u) << "it stays open";
    const std::vector<double> raw = Numbers(data.at(0)["y"]);
    for (const auto& [print, window] : {std::pair(0, 5), {1, 9}, {3, 4}}) {
        std::vector<float> expected(raw.begin(), raw.end());
        Fourier_Filter(expected, window);
        const Json& curves = previews[static_cast<std::size_t>(print)]["preview"];
        ASSERT_EQ(curves.size(), 1u) << window;
        EXPECT_EQ(curves[0]["points"], expected.size());
        EXPECT_NEAR(curves[0]["highest"].get<double>(), *std::max_element(expected.begin(), expected.end()), 1e-3) << window;
        EXPECT_NEAR(curves[0]["sum"].get<double>(), std::accumulate(expected.begin(), expected.end(), 0.0), 1e-2) << window;
    }
    for (const std::size_t none : {2, 4}) EXPECT_EQ(previews[none]["preview"].size(), 0u) << none;
    EXPECT_EQ(previews[5]["preview"].size(), 2u);
    EXPECT_EQ(data.at(1)["y"], data.at(0)["y"]);
}

// --- the background ----------------------------------------------------------------------------------------------------------------

double Hill_On_A_Slope(double x) { return 200 + 4 * (x - 20) + 500 * std::exp(-20 * (x - 30) * (x - 30)); }

// A slope of 4 counts a degree under one peak: less its background nothing is left of it but the peak.
TEST_F(Calculations, ABackgroundIsSubtracted) {
    const auto run = Script(File("p.xye", Hill_On_A_Slope, 1000, 20, 0.02) +
                            "command 40559\nprint dialog\nprint preview\nset 2204 abc\npress 1\nset 2204 0.05\npress 2\nprint preview\n"
                            "print rows\ncommand 40559\npress 1\nprint rows\nprint data 1\nprint data 2\ncommand 40506\nprint state\n");
    const auto boxes = Told(run);
    ASSERT_EQ(boxes.size(), 1u) << run.output;
    EXPECT_NE(boxes[0].find("is not a number"), std::string::npos);
    const auto previews = run.With("preview"), rows = run.With("kind"), data = run.With("x");
    ASSERT_EQ(previews.size(), 2u);
    EXPECT_EQ(previews[0]["preview"][0]["points"], 1000);
    EXPECT_NEAR(previews[0]["preview"][0]["sum"].get<double>(), 1000 * (200 + 4 * 9.99), 1000.0);
    EXPECT_EQ(previews[1]["preview"].size(), 0u);
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(Names(rows[2]), (Texts{"DIFF", "<less background>", "p.xye title less background"}));
    const std::vector<double> before = Numbers(data.at(0)["y"]), after = Numbers(data.at(1)["y"]);
    ASSERT_EQ(before.size(), after.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        const double x = 20 + 0.02 * static_cast<double>(i);
        EXPECT_NEAR(after[i], 500 * std::exp(-20 * (x - 30) * (x - 30)), 3) << x;
    }
    for (const char* same : {"sigma", "ycalc", "bgr"}) EXPECT_EQ(data.at(1)[same], data.at(0)[same]) << same;
    EXPECT_EQ(run.With("plot_type").back()["nperfiles"], 1);
}

// --- searches ----------------------------------------------------------------------------------------------------------------------

double Three_Peaks(double x) {
    double y = 100 + 0.2 * std::sin(9.1 * x) + 0.15 * std::cos(23.7 * x);
    for (const auto& [centre, height] : {std::pair(25.0, 1000.0), {33.3, 400.0}, {40.01, 5000.0}})
        y += height * std::exp(-4 * std::numbers::ln2 * std::pow((x - centre) / 0.2, 2));
    return y;
}

std::string Columns(const Json& entry, std::initializer_list<const char*> names) {
    std::string line;
    char text[40];
    for (const char* name : names) {
        std::snprintf(text, sizeof text, "%15.5f", entry[name].get<double>());
        line += text;
    }
    return line + '\n';
}

const std::string file_head = "! Data file: p.xye\n! Format:     10  - XYSIGMA\n";

TEST_F(Calculations, PeaksAreFoundMarkedAndWritten) {
    const auto run = Script(
        First_Row(Three_Peaks) +
        "print menu 40092\ncommand 40096\nprint state\nprint menu 40180\nprint picture\ncommand 40092\nprint dialog\nset 1356 0.5\n"
        "set 1021 1\npress 2\nprint peaks\ncommand 40092\nset 1356 abc\npress 1\nset 1356 0.02\nset 1021 1\npress 1\nprint peaks\n"
        "print picture\nprint fit\ncommand 40092\nset 1356 0.5\nset 1020 1\npress 1\nprint peaks\ncommand 40092\nprint dialog\npress 2\n"
        "command 40147\nprint peaks\ncommand 40097\nprint state\n");
    EXPECT_EQ(run.status, 1) << run.errors;  // of the text that is no number
    const auto boxes = Told(run);
    ASSERT_EQ(boxes.size(), 1u) << run.output;
    EXPECT_NE(boxes[0].find("is not a number"), std::string::npos) << boxes[0];
    const auto states = run.With("plot_type"), dialogs = run.With("dialog"), pictures = run.With("markers");
    EXPECT_EQ(states[0]["status"][0], "Peaks allocation:");
    EXPECT_EQ(states[1]["plot_type"], "single");
    for (const Json& menu : run.With("built")) EXPECT_EQ(menu["enabled"], false);  // before the mode; without a refined profile
    const std::pair<int, double> conditions[] = {{1356, 0.02}, {1357, 2}, {1359, 3}, {1020, 1}};
    for (const auto& [field, value] : conditions) EXPECT_EQ(Number(dialogs.at(0), field), value) << field;
    EXPECT_EQ(Number(dialogs.at(1), 1356), 0.5);

    std::vector<Json> peaks;
    for (const Json& line : run.With("peaks")) peaks.push_back(line["peaks"]);
    ASSERT_EQ(peaks.size(), 4u);  // cancelled, found, found of half the largest, cleared
    EXPECT_EQ(peaks[0].size() + peaks[3].size(), 0u);
    ASSERT_EQ(peaks[1].size(), 3u);
    EXPECT_NEAR(peaks[1][1]["x"].get<double>(), 33.3, 0.01);
    ASSERT_EQ(peaks[2].size(), 1u);
    const auto marks = [](const Json& picture) {
        long count = 0;
        for (const Json& line : picture["lines"]) count += line["width"] == 2 && line["n"] == 2;
        return count;
    };
    EXPECT_EQ(marks(pictures[1]) - marks(pictures[0]), 3);
    const Json fit = run.With("fit").at(0)["fit"];
    EXPECT_NEAR(fit["lambda2"].get<double>(), 1.54439, 1e-6);
    EXPECT_EQ(fit["ratio"], 0.5);
    EXPECT_EQ(Text_Of(directory / "peak.aps"),
              file_head + "! peak_position   peak_intensity   background\n" + Columns(peaks[2][0], {"x", "y", "bgr"}));
}

TEST_F(Calculations, BackgroundInTheFormOfASingleProfile) {
    const auto run = Script(
        First_Row(Three_Peaks) +
        "command 40138\nprint state\nprint picture\ncommand 40159\nprint dialog\nset 1358 0.2\npress 2\nprint background\ncommand 40159\n"
        "print dialog\npress 1\nprint background\nprint picture\ncommand 40148\nprint background\ncommand 40139\nprint state\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    for (const Json& dialog : run.With("dialog")) EXPECT_EQ(Number(dialog, 1358), 0.05);
    const auto states = run.With("plot_type"), lists = run.With("background"), pictures = run.With("markers");
    EXPECT_EQ(states.at(0)["status"][0], "Background allocation:");
    EXPECT_EQ(states.at(1)["plot_type"], "single");
    ASSERT_EQ(lists.size(), 3u);
    const Json points = lists[1]["background"];
    EXPECT_GT(points.size(), 15u);
    EXPECT_EQ(lists[0]["background"].size() + lists[2]["background"].size(), 0u);
    std::string file = file_head + "! position      background_value\n";
    for (const Json& point : points) {
        file += Columns(point, {"x", "y"});
        EXPECT_NEAR(point["y"].get<double>(), 100, 3);
    }
    EXPECT_EQ(Text_Of(directory / "background.xy"), file);
    EXPECT_EQ(pictures[1]["fills"].size(), pictures[0]["fills"].size() + 2 * points.size());
}

TEST_F(Calculations, FailuresLeaveTheLists) {
    const std::string find = "command 40092\npress 1\nprint peaks\n", all = "mouse down right 600 400\nmouse up right 600 400\n";
    for (const char* name : {"peak.aps", "background.xy", "vantrelo-2006.eff"}) fs::create_directories(directory / name);
    const auto told = Script(First_Row(Three_Peaks) + "command 40096\n" + find +
                             "command 40097\ncommand 40138\ncommand 40159\npress 1\nprint background\ncommand 40139\n"
                             "command 40162\npress 1534\ndialog 159\npress 1533\ncommand 40020\nset 1647 1\npress 1\n");
    const auto boxes = Told(told);
    ASSERT_EQ(boxes.size(), 4u) << told.output << told.errors;
    for (const char* failing : {"command 40096\ncommand 40092\npress 1\n", "command 40138\ncommand 40159\npress 1\n",
                                "command 40162\npress 1534\ndialog 159\npress 1533\n", "command 40020\nset 1647 1\npress 1\n",
                                "files missing.eff\ncommand 40163\n"})
        EXPECT_EQ(Script(First_Row(Three_Peaks) + failing).status, 1) << failing;
    EXPECT_EQ(boxes[0], " Problem opening the 'peak.aps' file: please check the file properties. ");
    EXPECT_EQ(boxes[1], " Problem opening the 'background.xy' file");
    for (const std::size_t i : {2, 3}) EXPECT_NE(boxes[i].find("vantrelo-2006.eff"), std::string::npos) << boxes[i];
    EXPECT_EQ(told.With("peaks").at(0)["peaks"].size() + told.With("background").at(0)["background"].size(), 0u);

    fs::remove(directory / "peak.aps");
    std::string nearly_nothing;  // a few thousandths of a degree, in steps that no click is as narrow as
    for (const char* step : {"29 31", "30 30.05", "30.001 30.005"}) {
        const std::string ends = step;
        nearly_nothing +=
            "mouse data down " + ends.substr(0, ends.find(' ')) + " 50\nmouse data up " + ends.substr(ends.find(' ') + 1) + " 1000\n";
    }
    const auto run = Script(First_Row(Three_Peaks) + "command 40096\n" + find + "mouse data down 30 50\nmouse data up 36 1000\n" + find +
                            all + nearly_nothing + find + all + find);
    EXPECT_EQ(Told(run), Texts{" The number of determined background points is too low, peak search impossible!"}) << run.errors;
    const std::size_t counts[] = {3, 1, 1, 3};
    for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(run.With("peaks").at(i)["peaks"].size(), counts[i]) << i;
}

// A session with one row, all of it in view; the files go to the directory of the test.
class Searches : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        fs::current_path(directory);
    }
    void TearDown() override {
        fs::current_path(before);
        Program::TearDown();
    }
    static Session With_Row(int n, double x0, double step, const Curve& y) {
        Diffraction_Pattern_Type p;
        EXPECT_TRUE(Allocate_Diffraction_Pattern(p, n).ok());
        for (std::size_t i = 0; i < p.x.size(); ++i) {
            p.x[i] = static_cast<float>(x0 + step * static_cast<double>(i));
            p.y[i] = static_cast<float>(y(p.x[i]));
        }
        p.step = static_cast<float>(step);
        p.scat_var = "2theta";
        p.conv[0] = 1.2f;
        Session session;
        session.plot.xspace = X_Space::two_theta;
        session.plot.x_view_min = p.x.front();
        session.plot.x_view_max = p.x.back();
        session.store.Append(std::move(p), {});
        return session;
    }
    const fs::path before = fs::current_path();
};

TEST_F(Searches, PeaksKeepADistanceAndSatellitesDoNot) {
    Session session = With_Row(1500, 20, 0.02, Three_Peaks);
    ASSERT_TRUE(Find_Satellites(session).ok());
    EXPECT_EQ(session.lists.fit.lambda1, 0);
    const std::pair<float, std::size_t> cases[] = {{0.02f, 3}, {2.6f, 2}, {4, 2}, {9, 1}, {20, 0}};  // the first compare is with 0
    for (const auto& [step, peaks] : cases) {
        session.store.Pattern(1).step = step;
        EXPECT_TRUE(Find_Peaks(session).ok());
        EXPECT_EQ(session.lists.peaks.size(), peaks) << step;
        EXPECT_TRUE(Find_Satellites(session).ok());
        EXPECT_EQ(session.lists.peaks.size(), 3u);
    }
    EXPECT_EQ(std::pair(session.lists.fit.lambda1, session.lists.fit.ratio.value), std::pair(1.2f, 1.0f));
}

// The weaker line of a tube stands at larger angles alone.
TEST_F(Searches, DoubletsAreOfAngles) {
    Session session = With_Row(2000, 55, 0.005, [](double x) {
        const auto peak = [x](double centre, double height) {
            return height * std::exp(-4 * std::numbers::ln2 * std::pow((x - centre) / 0.06, 2));
        };
        return 100 + 0.2 * std::sin(9.1 * x) + peak(60, 1000) + peak(60.1644, 500);  // wavelengths 1.54060 and 1.54439
    });
    const std::tuple<X_Space, int, std::size_t> cases[] = {
        {X_Space::two_theta, 1, 2}, {X_Space::two_theta, 2, 1}, {X_Space::d_space, 2, 2}};
    for (const auto& [space, radiation, peaks] : cases) {
        session.plot.xspace = space;
        session.search.search_radiation = radiation;
        EXPECT_TRUE(Find_Peaks(session).ok());
        EXPECT_EQ(session.lists.peaks.size(), peaks) << Told(space) << ' ' << radiation;
    }
}

TEST_F(Searches, TheListsHaveTheirLimits) {
    // A forest of peaks between two stretches that are almost flat.
    const auto forest = [](double x) {
        const double ripple = 100 + 0.1 * std::sin(3 * x);
        return x < 20 || x > 80 ? ripple : ripple + 1000 * std::pow(std::sin(10 * std::numbers::pi * (x - 20)), 8);
    };
    Session session = With_Row(8000, 10, 0.01, forest);
    session.lists.peaks.push_back({1, 2, 3});
    EXPECT_EQ(Find_Peaks(session).message, "Maximum number of peaks reached!");
    EXPECT_EQ(session.lists.peaks.size(), 1u);
    session = With_Row(200000, 10, 0.001, [](double x) { return Three_Peaks(x / 4) + (std::abs(x - 60) < 0.0005 ? 50 : 0); });
    EXPECT_EQ(Find_Background(session).message, "Max num. points for background");
    EXPECT_EQ(session.lists.background.size(), 0u);
}

}  // namespace
}  // namespace vntl
