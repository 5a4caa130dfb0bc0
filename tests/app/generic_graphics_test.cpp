// The window of generic graphics: files of every kind through its commands and its dialog, and what leaves it.
#include <algorithm>

#include "app/testing.hpp"
#include "charts/seq_file.hpp"
#include "fit/series_table.hpp"

namespace vntl {
namespace {

using Texts = std::vector<std::string>;

class Generic_Graphics : public Program {
protected:
    // Statements stand behind semicolons; a number is a command.
    Run_Result Do(const std::string& statements) const {
        std::string script;
        std::istringstream all(statements);
        for (std::string statement; std::getline(all, statement, ';');)
            script += (statement.starts_with("40") ? "command " : "") + statement + '\n';
        return Script(script);
    }
    void Write(const std::string& name, const std::string& text) const { std::ofstream(directory / name, std::ios::binary) << text; }
    void Write_Table(const std::string& name, const std::string& head = {}) const {
        Write(name, head + "N_PLOTS 1\n{/ first\nN_POINTS 2\n1 2\n2 5\n/}\n");
    }
    // Runs of a refinement of so many parameters; in the last one the value of `wrong` is none.
    void Write_Runs(const std::string& name, int parameters, int wrong = 0) const {
        std::string text;
        for (int run = 1; run <= 2; ++run) {
            const std::string r = std::to_string(run);
            text += "NEW_REFINEMENT Runs\nNUMPAR " + std::to_string(parameters) + "\nN_PATT 1\nNPHASE 1\nf " + r + " 0.0\nGLOBAL_CHI_2 1." +
                    r + "\nP R_1: " + r + ".5 0\nP R_2 8 0\nP R_3 9 0\n";
            for (int k = 1; k <= parameters; ++k)
                text += "P p_" + std::to_string(k) + ' ' + (run == 2 && k == wrong ? "x" : std::to_string(10 * k + run)) + " 0.5\n";
        }
        Write(name, text);
    }
    // Behind the box about the preferences.
    static Texts Told(const Run_Result& run) {
        const Texts boxes = run.Boxes();
        return {boxes.begin() + !boxes.empty(), boxes.end()};
    }
    static std::vector<Json> States(const Run_Result& run) {
        std::vector<Json> states;
        for (const Json& line : run.With("generic")) states.push_back(line["generic"]);
        return states;
    }
    // Of each state: kind, title, file without its directory, and the curves with their marks.
    static Texts Summaries(const Run_Result& run) {
        Texts summaries;
        for (const Json& state : States(run)) {
            std::string text = state["plot_kind"].get<std::string>() + '|' + state["title"].get<std::string>() + '|' +
                               fs::path(state["file_name"].get<std::string>()).filename().string();
            for (const Json& curve : state["curves"]) {
                text +=
                    '|' + curve["legend"].get<std::string>() + ' ' + curve["x"].dump() + curve["y"].dump() + curve["sigma"].dump() + ' ';
                for (const char* mark : {"has_errbar", "has_marker", "has_legend"})
                    if (curve[mark] == true) text += mark[4];
            }
            summaries.push_back(text);
        }
        return summaries;
    }
    std::string Full(const std::string& name) const { return (directory / name).string(); }
};

TEST_F(Generic_Graphics, OpensReloadsClosesAndLeaves) {
    Write_Table("a.gdf", "TITLE first\nLEGEND_X x\nPLOT_TYPE histogram\n");
    Write_Table("b.GDF");
    Write("c.gdf", "N_PLOTS 1\nPLOT_TYPE piechart\n{/\nN_POINTS 2\n1 30 iron\n2 70 \"iron oxide\"\n/}\n");
    const Run_Result run =
        Do("40179;files a.gdf;40200;print generic;files b.GDF;40200;print generic;files cancel;40200;40198;print generic;files c.gdf;40200;"
           "print generic;resize 700 500;export pie.png;40203;print generic;files a.gdf;40198;print generic;40206;press 2;40205;"
           "print generic;files a.gdf;40155;print generic;close;print menu 40179;40179;exit");
    EXPECT_EQ(run.status, 0) << run.errors;
    const std::string curve = "|first [1.0,2.0][2.0,5.0][0.0,0.0] ", a = "histo|first|a.gdf" + curve, b = "histo||b.GDF" + curve;
    EXPECT_EQ(Summaries(run), (Texts{a, b, b, "piech||c.gdf| [1.0,2.0][30.0,70.0][0.0,0.0] ", "polyl||", a, "polyl||", a})) << run.output;
    for (const Json& state : States(run)) EXPECT_EQ(state.contains("slices"), state["plot_kind"] == "piech");
    EXPECT_EQ(States(run).at(3)["slices"], Json(Texts{"iron", "iron oxide"}));
    EXPECT_EQ(Text_Of(directory / "pie.png").substr(16, 8), std::string("\0\0\x02\xBC\0\0\x01\xF4", 8)) << "700 x 500";
    EXPECT_EQ(run.With("built").back()["label"], "Vantrelo Generic Graphs") << "the main window is in front again";
}

TEST_F(Generic_Graphics, AFileThatCannotBeReadIsToldAndLeavesNoPlot) {
    Write_Table("good.gdf", "TITLE good\n");
    Write_Table("wrong.gdf", "TITLE wrong\nPLOT_TYPE cake\n");
    Write("runs.seq", "NEW_REFINEMENT none\n");
    const std::string open_good = "files good.gdf;40200;";
    const Run_Result run = Do("40179;" + open_good + "files none.txt;40200;print generic;files wrong.gdf;40200;print generic;" + open_good +
                              "files runs.seq;40200;print generic;40198;files no.gdf;40200;40198");
    EXPECT_EQ(run.status, 1);
    const Texts told = Told(run);
    const std::string begins[] = {
        "Incompatible format for Graphics representation!\n", "Unknown PLOT_TYPE \"cake\"", "Error reading the number of Parameters!\n",
        "Error reading the number of Parameters!\n",          "No lines could be read\n",   "No lines could be read\n"};
    const char* names[] = {"none.txt", "wrong.gdf", "runs.seq", "runs.seq", "no.gdf", "no.gdf"};
    ASSERT_EQ(told.size(), std::size(begins)) << run.output;
    for (std::size_t i = 0; i < told.size(); ++i)
        EXPECT_TRUE(told[i].starts_with(begins[i]) && told[i].ends_with(Full(names[i]))) << told[i];
    const std::vector<Json> states = States(run);
    ASSERT_EQ(states.size(), 3u);
    EXPECT_EQ(states[0]["title"], "good") << "refused before anything is read";
    for (const std::size_t i : {1u, 2u}) EXPECT_EQ(states[i]["curves"].size(), 0u);
    EXPECT_EQ(states[1]["file_name"], Full("wrong.gdf")) << "to be read again when it has been mended";
}

TEST_F(Generic_Graphics, RowsOfASequentialRefinementAreChosen) {
    Write_Runs("runs.seq", 3);
    const Run_Result run =
        Do("files runs.seq;40155;press 1;print generic;40198;set \"X axis:\" order;cell \"X Axis Plot\" X 2 1;cell 4907 X 7 1;print dialog;"
           "cell \"Y Axis Plot\" Y 8 1;cell 4908 E 8 1;cell 4908 L 8 1;cell 4908 Y 3 1;cell 4908 M 3 1;press 1;print generic;"
           "40198;cell 4907 X 1 0;set Histogram 1;cell 4908 M 3 1;print dialog;set Title: other;press 2;print generic;"
           "40198;cell 4907 X 1 0;set Polar 1;press 1;print generic");
    EXPECT_EQ(run.errors, "line 20: cell M 3 is disabled\n");
    // Without a choice it is row 4 over row 1. Cancelled, all stays. One row of x alone is chosen, none of them is row 1 again.
    const std::string chosen = "polyl|Runs|runs.seq|R_1 [21.0,22.0][1.5,2.5][0.0,0.0] m|p_3 [21.0,22.0][31.0,32.0][0.5,0.5] el";
    EXPECT_EQ(Summaries(run), (Texts{"polyl|Runs|runs.seq|R_2 [1.0,2.0][8.0,8.0][0.0,0.0] ", chosen, chosen,
                                     "polar|Runs|runs.seq|R_2 [1.0,2.0][8.0,8.0][0.0,0.0] "}));
    const Json last = States(run).back();
    EXPECT_EQ(last["legend_x"], "order");
    EXPECT_EQ(last["nblocks"], 2);
    EXPECT_EQ(last["param_names"], Json(Texts{"Temperature/File Order", "Global Chi**2", "R_1", "R_2", "R_3", "p_1", "p_2", "p_3"}));
    const Json fields = run.With("dialog").at(0)["fields"];
    const auto grid = std::ranges::find_if(fields, [](const Json& field) { return field["field"] == 4907; });
    ASSERT_NE(grid, fields.end());
    for (std::size_t row = 0; row < 8; ++row) EXPECT_EQ((*grid)["value"][row][0], row == 6 ? "1" : "0");
}

TEST_F(Generic_Graphics, FortyCurvesAndNoMore) {
    Write_Runs("many.seq", 60);
    std::string choose = "files many.seq;40155;";
    for (int row = 10; row < 50; ++row) choose += "cell 4908 Y " + std::to_string(row) + " 1;";
    const Run_Result run = Do(choose + "cell 4908 Y 5 1;cell 4908 Y 60 1;press 1;print generic");
    EXPECT_EQ(Told(run), Texts(2, "Maximum number of curves attained!"));
    ASSERT_EQ(States(run).size(), 1u);
    EXPECT_EQ(States(run)[0]["curves"].size(), 40u);
    EXPECT_EQ(States(run)[0]["curves"][0]["legend"], "p_5");
    EXPECT_EQ(States(run)[0]["curves"][39]["legend"], "p_44");
}

TEST_F(Generic_Graphics, TheDialogStaysBelowWhatItRefuses) {
    Write_Runs("runs.seq", 3, 2);
    const std::string title(132, 'x');
    const Run_Result run = Do("files runs.seq;40155;set Title: " + title + "x;press 1;print dialog;set Title: " + title +
                              ";cell 4908 Y 7 1;press 1;cell 4908 Y 7 0;cell 4908 Y 6 1;press 1;print generic");
    ASSERT_EQ(Told(run).size(), 2u) << run.output;
    EXPECT_EQ(run.Marked(), (std::vector<std::vector<int>>{{4901}}));
    EXPECT_EQ(Told(run)[0], "Title: at most 132 characters");
    EXPECT_EQ(Told(run)[1], "Error reading the Plot Parameters!\nBlock 2, row 7 of " + Full("runs.seq"));
    ASSERT_EQ(States(run).size(), 1u);
    EXPECT_EQ(States(run)[0]["title"], title);
    EXPECT_EQ(States(run)[0]["curves"][0]["legend"], "p_1");
}

TEST_F(Generic_Graphics, PicturesInFilesAndOnPaper) {
    Write_Table("a.gdf", "TITLE seen\n");
    fs::create_directory(directory / "with.dot");
    for (const char* kept : {"kept.ps", "over.ps"}) Write(kept, "old");
    const Run_Result run =
        Do("40179;files a.gdf;40200;files with.dot/plot;40195;files with.dot/meta.x;40196;answer no;files kept.emf;40195;answer yes;"
           "files over.ps;40195;files cancel;40196;files no/where;40195;40201;set 4601 paper.ps;press 1;export seen.svg");
    EXPECT_EQ(run.status, 1) << run.errors;
    for (const char* file : {"with.dot/plot.ps", "over.ps", "paper.ps"}) EXPECT_TRUE(Text_Of(directory / file).starts_with("%!PS")) << file;
    EXPECT_TRUE(Text_Of(directory / "with.dot/meta.emf").substr(40, 4) == " EMF");
    EXPECT_EQ(Text_Of(directory / "kept.ps"), "old");
    const Texts told = Told(run);
    ASSERT_EQ(told.size(), 3u) << run.output;
    EXPECT_EQ(told[0] + told[1], "The file exist,\nDo you want overwrite it?The file exist,\nDo you want overwrite it?");
    EXPECT_NE(told[2].find("no/where.ps"), std::string::npos) << told[2];
    EXPECT_TRUE(Text_Of(directory / "seen.svg").find("<svg") != std::string::npos);
}

// The view of the main window goes where the plot is made from scratch, and stays elsewhere.
TEST_F(Generic_Graphics, ThePlotThatItComesBackTo) {
    const std::string visit = ";print state;40179;40205;print state", zoom = "mouse data down 10.4 5;mouse data up 11.6 900;";
    const struct {
        int rows;
        const char* form;
        bool stays;
    } cases[] = {{3, "", false}, {1, "40096;", true}, {4, "40031;", true}, {3, "40028;", true}};
    for (const auto& [rows, form, stays] : cases) {
        std::string statements = "drop";
        for (int row = 1; row <= rows; ++row) statements += ' ' + Pattern("rising.xye");
        const Run_Result run = Do(statements + ';' + zoom + form + visit + ";40155;40205;print state");
        const auto views = run.With("plot_type");
        ASSERT_EQ(views.size(), 3u) << run.errors;
        EXPECT_EQ(views[0]["x_view_min"] == views[1]["x_view_min"], stays) << form;
        EXPECT_EQ(views[0]["plot_type"], views[1]["plot_type"]);
        EXPECT_EQ(views[1]["x_view_min"], views[2]["x_view_min"]) << form;
    }
}

// What this program writes of a series of fits.
TEST(Series_Table_File, IsReadBackWhole) {
    const Series_Table table = {
        {"Bragg_Pos_1", "Intensity_1"},
        {{3, "a, \"b\".xye", 300, 1.0342f, true, true, {5.31f, 6.02f, 5.92f}, {{21.3581238f, 0.000421f}, {-1.5e-7f, 250000}}},
         {12, "N_PATT 7 NPHASE.dat", 0, 2, false, false, {4, 1, 2}, {{20.1f, 0.5f}, {3, 0}}}}};
    Seq_File seq;
    ASSERT_TRUE(seq.Read_Text(Seq_Text(table), "table.seq").ok());
    EXPECT_EQ(seq.param_names(),
              (Texts{"Temperature/File Order", "Global Chi**2", "Rfact", "Rwfact", "Rex", "Bragg_Pos_1", "Intensity_1"}));
    EXPECT_EQ(seq.title(), "Series of fits");
    std::vector<Seq_Choice> all;
    for (int row = 1; row <= 7; ++row) all.push_back({row});
    Generic_Plots plots;
    ASSERT_TRUE(seq.Curves(1, all, plots).ok());
    using Values = std::vector<float>;
    const Values y[] = {{300, 12}, {1.0342f, 2}, {5.31f, 4}, {6.02f, 1}, {5.92f, 2}, {21.3581238f, 20.1f}, {-1.5e-7f, 3}};
    for (std::size_t i = 0; i < std::size(y); ++i) EXPECT_EQ(plots.curves[i].y, y[i]) << i;
    EXPECT_EQ(plots.curves[5].sigma, (Values{0.000421f, 0}));
    EXPECT_EQ(plots.curves[6].sigma, (Values{250000, 0}));
}

}  // namespace
}  // namespace vntl
