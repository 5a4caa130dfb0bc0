// Results of sequential refinements: the rows of their blocks as curves, and what is said of files that are wrong.
#include "charts/seq_file.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

namespace vntl {
namespace {

using Texts = std::vector<std::string>;
using Reals = std::vector<float>;

constexpr const char* file = "/of/runs.seq";

// A block of two phases and three parameters: everything in it tells of its order.
std::string Block(int order, const std::string& temperature) {
    const std::string n = std::to_string(order);
    std::string text =
        "  New_Refinement of NUMPAR 9 samples\n Numpar: 3\nN_PATT 1\nNPHASE 2\n\"a file " + n + "\" " + n + ' ' + temperature + '\n';
    text += "GLOBAL_CHI_2 " + n + ".5\n";
    for (const char* phase : {"first", "second"})
        for (const char* name : {"Bragg", "\"Vol: of ", "Scale"}) {
            text += "PHASE " + std::string(name) + (name[0] == '"' ? phase + std::string("\"") : "") + ' ' + n + "00 0." + n + '\n';
        }
    for (const char* name : {"a_x", "b:x", "\"c of x\""}) text += "PARAMETER " + std::string(name) + ' ' + n + "e-3 0.0" + n + '\n';
    return text;
}
std::string Blocks(const Texts& temperatures) {
    std::string text = "lines before the first block\nNUMPAR 7\n";
    int order = 0;
    for (const std::string& temperature : temperatures) text += Block(++order, temperature) + "\n\n";
    return text;
}

Generic_Plots Drawn(const Seq_File& seq, int x_row, std::vector<Seq_Choice> rows) {
    Generic_Plots plots;
    const Status status = seq.Curves(x_row, rows, plots);
    EXPECT_TRUE(status.ok()) << status.message;
    return plots;
}

TEST(Seq_File, RowsAsCurves) {
    Seq_File read;
    ASSERT_TRUE(read.Read_Text(Blocks({"10.5", "0.0000", "-0e0", "12 K"}), file).ok());
    const Seq_File copy = read;
    const Seq_File seq = std::move(read);
    EXPECT_EQ(seq.title(), "of NUMPAR 9 samples");
    const Texts names = {"Temperature/File Order", "Global Chi**2", "Bragg", "Vol", "Scale", "a_x", "b:x", "c of x"};
    EXPECT_EQ(seq.param_names(), names);
    const Generic_Plots plots = Drawn(seq, 1, {{8, true, false, true}, {2, false, true, false}, {4}, {1}});
    ASSERT_EQ(plots.curves.size(), 4u);
    for (const Generic_Curve& curve : plots.curves) EXPECT_EQ(curve.x, (Reals{10.5f, 2, 3, 12})) << "zero is the order of the file";
    EXPECT_EQ(plots.curves[0].y, (Reals{1e-3f, 2e-3f, 3e-3f, 4e-3f}));
    EXPECT_EQ(plots.curves[0].sigma, (Reals{0.01f, 0.02f, 0.03f, 0.04f}));
    EXPECT_EQ(plots.curves[1].y, (Reals{1.5f, 2.5f, 3.5f, 4.5f}));
    EXPECT_EQ(plots.curves[1].sigma, Reals(4, 0));
    EXPECT_EQ(plots.curves[2].y, (Reals{100, 200, 300, 400}));
    EXPECT_EQ(plots.curves[3].y, plots.curves[3].x);
    EXPECT_TRUE(plots.curves[0].has_errbar && plots.curves[0].has_legend && plots.curves[1].has_marker && !plots.curves[1].has_legend);
    EXPECT_EQ(plots.curves[0].legend + '|' + plots.curves[2].legend, "c of x|Vol");
    EXPECT_EQ(plots.nblocks, 4);
    EXPECT_EQ(plots.param_names, names);
    EXPECT_EQ(plots.file_name, file);
    EXPECT_EQ(Drawn(copy, 6, {{7}}).curves[0].x, plots.curves[0].y) << "a copy holds what it needs";
}

std::string Changed(const std::string& text, const std::string& from, const std::string& to, bool last = false) {
    std::string changed = text;
    const std::size_t at = last ? text.rfind(from) : text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return changed.replace(at, from.size(), to);
}

TEST(Seq_File, WhatIsWrongIsToldWithItsFile) {
    const std::string good = Blocks({"1", "2"}), phase = "Error reading the Phase Parameters!\nBlock 1, row ",
                      parameter = "Error reading the Plot Parameters!\nBlock ";
    const std::pair<std::string, std::string> cases[] = {
        {"NUMPAR 1\n", "No Sequential Blocks were found!\n"},
        {Changed(good, "Numpar: 3", "Numpar:"), "Error reading the number of Parameters!\n"},
        {Changed(good, "Numpar: 3", "Numpar: -3"), "Error reading the number of Parameters!\n"},
        {Changed(good, "N_PATT 1", "N_PATT one"), "Error reading the number of Patterns!\n"},
        {Changed(good, "NPHASE 2", "NPHASE 0"), "Error reading the number of Phases!\n"},
        {Changed(good, "NPHASE 2", "PHASES 2"), "Error reading the number of Phases!\n"},
        {Changed(good, "GLOBAL_CHI_2", "CHI_2"), phase + "3 of "},
        {Changed(good, "Bragg 100", "Bragg"), phase + "3 of "},
        {Changed(good, "of first\"", "of first"), phase + "4 of "},
        {Changed(good, "Numpar: 3", "Numpar: 2000000000"), parameter + "1, row 9 of "},
        {Changed(good, "NPHASE 2", "NPHASE 2000000000"), phase + "3 of "},
        {Changed(good, "a_x 1e-3", "a_x 1e-3 +"), parameter + "1, row 6 of "},
        {Changed(good, "PARAMETER \"c of x\" 2e-3 0.02\n", "", true), parameter + "2, row 8 of "},  // it ends early
        {good.substr(0, good.rfind("GLOBAL")), "Error reading the Global Chi**2!\nBlock 2, row 2 of "},
    };
    Seq_File seq;
    ASSERT_TRUE(seq.Read_Text(good, file).ok());
    for (const auto& [text, message] : cases) {
        const Status status = seq.Read_Text(text, file);
        EXPECT_TRUE(status.failed && status.of_file) << text;
        EXPECT_TRUE(status.message.starts_with(message) && status.message.ends_with(file)) << status.message << "\nin\n" << text;
        EXPECT_EQ(seq.nblocks(), 2) << "the one before stays";
    }
    for (const char* wrong : {"/no/such.seq", "/tmp"}) EXPECT_TRUE(seq.Read(wrong).message.ends_with(wrong));
}

// These are seen when a row of them is drawn: all other rows can be.
TEST(Seq_File, RowsThatAreOthersOrHoldNoNumber) {
    const std::string good = Blocks({"1", "2"});
    const struct {
        const char *from, *to;
        int row;
        const char* message;
    } cases[] = {{"2e-3", "much", 8, "Error reading the Plot Parameters!\nBlock 2, row 8 of "},
                 {"b:x 2e-3", "b:y 2e-3", 7, "Error reading the Plot Parameters!\nBlock 2, row 7 of "},
                 {"a_x 2e-3 0.02", "a_x 2e-3", 6, "Error reading the Plot Parameters!\nBlock 2, row 6 of "},
                 {"Bragg 200 0.2\nPHASE \"Vol: of f", "Brag 200 0.2\nPHASE \"Vol: of f", 3,
                  "Error reading the Phase Parameters!\nBlock 2, row 3 of "},
                 {"GLOBAL_CHI_2 2.5", "CHI_2 2.5", 2, "Error reading the Global Chi**2!\nBlock 2, row 2 of "},
                 {"\"a file 2\" 2 2", "a file 2 2", 1, "Error reading the Temperature/File Order!\nBlock 2, row 1 of "}};
    for (const auto& wrong : cases) {
        Seq_File seq;
        ASSERT_TRUE(seq.Read_Text(Changed(good, wrong.from, wrong.to, true), file).ok()) << wrong.to;
        Generic_Plots plots;
        plots.curves.resize(7);
        const Status status = seq.Curves(wrong.row == 2 ? 1 : 2, std::vector<Seq_Choice>{{wrong.row}}, plots);
        EXPECT_TRUE(status.message.starts_with(wrong.message)) << status.message;
        EXPECT_EQ(plots.curves.size(), 7u) << "they stay";
        EXPECT_TRUE(seq.Curves(4, std::vector<Seq_Choice>{{5}}, plots).ok());
    }
    Seq_File seq;
    ASSERT_TRUE(seq.Read_Text(Changed(good, "2e-3 0.02", "****** nan", true), file).ok());
    const Generic_Plots plots = Drawn(seq, 1, {{8}});
    EXPECT_TRUE(std::isnan(plots.curves[0].y[1]) && std::isnan(plots.curves[0].sigma[1])) << "what did not fit is a gap";
    Generic_Plots none;
    EXPECT_TRUE(seq.Curves(9, std::vector<Seq_Choice>{{8}}, none).failed && seq.Curves(1, {}, none).failed);
    EXPECT_TRUE(seq.Curves(1, std::vector<Seq_Choice>(41, {8}), none).failed);
}

}  // namespace
}  // namespace vntl
