// Generic data files: what each line of them means, and what is said of those that are wrong.
#include "charts/read_gdf.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>

namespace vntl {
namespace {

using Texts = std::vector<std::string>;
using Reals = std::vector<float>;

constexpr const char* file = "/of/curves.gdf";

Generic_Plots Good(const std::string& text) {
    Generic_Plots plots;
    const Status status = Read_GDF_Text(text, file, plots);
    EXPECT_TRUE(status.ok()) << status.message;
    return plots;
}

TEST(Read_GDF, KeywordsCurvesAndOptions) {
    const Generic_Plots plots = Good(
        "\tmy title:  Two \"curves\" \r\n{/  first n_points 7 title legend_x \r\n  MARKERS\r\nthere are n_points: 3\r\n1,2 "
        "3\r\n4\t5D1\r\n-6 ! y\r\n"
        "Marker here\r\nerrbar\r\n/}\r\nn_plots 2 curves\r\nLegend_X of x\rLEGEND_Y of y\nplot_type Scattered\n"
        "{/second\nscattering\n  n_points 1\n7 nan 9 10\nlegend\n/} end\nTITLE another\n");
    EXPECT_EQ(plots.title + '|' + plots.legend_x + '|' + plots.legend_y, "Two \"curves\"|of x|of y");
    EXPECT_EQ(plots.plot_kind, Plot_Kind::scatter);
    ASSERT_EQ(plots.curves.size(), 2u);
    const Generic_Curve &first = plots.curves[0], &second = plots.curves[1];
    EXPECT_EQ(first.legend + '|' + second.legend, "first n_points 7 title legend_x|second");
    EXPECT_EQ(first.x, (Reals{1, 4, -6}));
    EXPECT_EQ(first.y, (Reals{2, 50, 0}));
    EXPECT_EQ(first.sigma, (Reals{3, 0, 0}));
    EXPECT_TRUE(first.has_marker && first.has_errbar && !first.no_line && !first.has_legend);
    EXPECT_TRUE(second.has_marker && second.no_line && second.has_legend && !second.has_errbar);
    EXPECT_EQ(second.x.size() + second.sigma.size(), 2u);
    EXPECT_TRUE(std::isnan(second.y[0])) << "a gap, not the zero of a line that ends early";
}

TEST(Read_GDF, SlicesOfAPie) {
    const std::string pie =
        "N_PLOTS 2\nPLOT_TYPE PieChart\n{/\nN_POINTS 3\n1 20 iron oxide\n2, 30,\t\"iron oxide\"\n3 50\n/}\n{/\nN_POINTS 1\n1 2 x\n/}\n";
    EXPECT_EQ(Good(pie).slices, (Texts{"iron", "iron oxide", ""}));
    EXPECT_EQ(Good(pie).curves[0].y, (Reals{20, 30, 50}));
}

// Characters are counted, not bytes; texts that are no UTF-8 are Latin-1.
TEST(Read_GDF, StoredTextsAreCutAndLinesAreNot) {
    std::string greek;
    for (int i = 0; i < 200; ++i) greek += "\xCE\xB8";
    const Generic_Plots plots = Good("TITLE " + greek + "\nN_PLOTS 1\nLEGEND_Y \xE5ngstr\xF6m\n{/" + greek + "\nN_POINTS 1\n" +
                                     std::string(500, ' ') + "8 9\n/}\n");
    EXPECT_EQ(plots.title, greek.substr(0, 2 * generic_text_length));
    EXPECT_EQ(plots.curves[0].legend, greek.substr(0, 2 * generic_legend_length));
    EXPECT_EQ(plots.legend_y, "\xC3\xA5ngstr\xC3\xB6m");
    EXPECT_EQ(plots.curves[0].y, Reals{9});
}

std::string Curves(int count, int said, const std::string& rest = {}) {
    std::string text = "N_PLOTS " + std::to_string(said) + '\n' + rest;
    for (int i = 0; i < count; ++i) text += "{/ c\nN_POINTS 1\n1 2\n/}\n";
    return text;
}

std::string Slices(int count) {
    std::string text = "N_PLOTS 1\nPLOT_TYPE piech\n{/\nN_POINTS " + std::to_string(count) + '\n';
    for (int i = 0; i < count; ++i) text += "1 2 s\n";
    return text + "/}\n";
}

TEST(Read_GDF, WhatIsWrongIsToldWithItsFile) {
    const std::string head = "N_PLOTS 1\n{/\n", incompatible = "Plot information incompatible with the number of curves!\n",
                      data = "Error reading data!\nLine ", points = "Error in the number of points for this data set\nLine ";
    const std::pair<std::string, std::string> cases[] = {
        {"TITLE x\n", "Error reading the number of Plots!\n"},
        {"N_PLOTS\n", "Error reading the number of Plots!\n"},
        {"N_PLOTS two\n", "Error reading the number of Plots!\n"},
        {"N_PLOTS 0\n", "Number of plots to draw is zero!\n"},
        {Curves(1, 1, "PLOT_TYPE Pies\n"), "Unknown PLOT_TYPE \"Pies\": it is polyline, scatter, histogram, polar or piechart\n"},
        {Curves(2, 3), incompatible},
        {Curves(3, 2), incompatible},
        {Curves(41, 41), incompatible},
        {"N_PLOTS 1\n{/\nN_POINTS 1\n1 2\n", incompatible},                      // not closed
        {"N_PLOTS 2\n{/ a\n{/ b\nN_POINTS 1\n1 2\n/}\n/}\n", incompatible},      // one inside of the other
        {"N_PLOTS 1\n/}\nN_POINTS 1\n1 2\n{/\n", incompatible},                  // the wrong way round
        {head + "1 2\n/}\n", "Error reading the maximum points for curves!\n"},  // no N_POINTS
        {head + "N_POINTS 0\n/}\n", "Error reading the maximum points for curves!\n"},
        {Curves(1, 2) + "{/\nN_POINTS few\n/}\n", points + "7 of "},
        {Curves(1, 2) + "{/\n1 2\n/}\n", points + "6 of "},
        {Curves(1, 2) + "{/\nN_POINTS -1\n/}\n", points + "7 of "},
        {head + "N_POINTS 2\n1 2\n\n/}\n", data + "5 of "},
        {head + "N_POINTS 2000000000\n1 2\n/}\n", data + "5 of "},  // takes no memory either
        {head + "PLOT_TYPE pie\nPLOT_TYPE piechart\n/}\n", "Unknown PLOT_TYPE \"pie\""},
        {head + "PLOT_TYPE piechart\nN_POINTS 1\n1 iron\n/}\n", data + "5 of "},
        {Slices(501), "A pie has at most 500 slices\nLine 4 of "},
    };
    for (const auto& [text, message] : cases) {
        Generic_Plots plots = Good(Curves(1, 1));
        const Status status = Read_GDF_Text(text, file, plots);
        EXPECT_TRUE(status.failed && status.of_file) << text;
        EXPECT_TRUE(status.message.starts_with(message) && status.message.ends_with(file)) << status.message << "\nin\n" << text;
        EXPECT_TRUE(plots.curves.empty() && plots.slices.empty()) << text;
    }
    EXPECT_EQ(Good(Curves(40, 40)).curves.size(), 40u);
    EXPECT_EQ(Good(Slices(500)).slices.size(), 500u);
}

TEST(Read_GDF, FilesThatCannotBeRead) {
    const std::filesystem::path name = std::filesystem::path(testing::TempDir()) / "empty.gdf";
    std::ofstream(name) << "\x1a";
    Generic_Plots plots = Good(Curves(1, 1));
    for (const std::string& wrong : {name.string(), std::string("/no/such.gdf"), testing::TempDir()}) {
        const Status status = Read_GDF(wrong, plots);
        EXPECT_TRUE(status.message.starts_with("No lines could be read\n") && status.message.ends_with(wrong)) << status.message;
        EXPECT_TRUE(plots.curves.empty());
    }
    std::filesystem::remove(name);
    EXPECT_TRUE(Read_GDF(std::string(SOURCE_TREE) + "/examples/perovskite.gdf", plots).ok());
    EXPECT_EQ(plots.curves.size(), 2u);
}

}  // namespace
}  // namespace vntl
