// Powder CIF: files written by the test from known numbers, the lines that count, every message.
#include "patterns/cif_pattern.hpp"

#include "patterns/testing.hpp"

namespace vntl::test {
namespace {

constexpr const char* head =
    "data_test\n_pd_block_id a sample\n_diffrn_radiation_probe   neutron\n_pd_proc_number_of_points 5\n"
    "loop_\n_pd_proc_point_id\n_pd_proc_2theta_corrected\n_pd_proc_intensity_total\n_pd_calc_intensity_total\n"
    "_pd_proc_intensity_bkg_calc\n\n";
constexpr const char* rows = "1 10.00 100(10) 110 5\n2 10.25 121(11) 110 5\n3 10.50 12.5(25) 10 6\n4 10.75 1.21E2(11) 121 6\n5 11 90 9 7\n";

Diffraction_Pattern_Type Good(const std::string& text) { return test::Good(Read_Cif_Pattern, text); }

std::string Changed(std::string text, const std::string& from, const std::string& to) {
    return text.replace(text.find(from), from.size(), to);
}

TEST(Cif_Pattern, AFileValueForValue) {
    const auto p = Good(std::string(head) + rows);
    EXPECT_EQ(p.npts, 5);
    EXPECT_EQ(p.x, (std::vector<float>{10, 10.25f, 10.5f, 10.75f, 11}));
    EXPECT_EQ(p.y, (std::vector<float>{100, 121, 12.5f, 121, 90}));
    EXPECT_EQ(p.sigma, (std::vector<float>{10, 11, 2.5f, 11, 0}));  // in the last places of the numbers, not squared; 1.21E2 is 121
    EXPECT_EQ(p.ycalc, (std::vector<float>{110, 110, 10, 121, 9}));
    EXPECT_EQ(p.bgr, (std::vector<float>{5, 5, 6, 6, 7}));
    EXPECT_EQ(p.nd, std::vector<int>(5));
    EXPECT_FALSE(p.sigma_is_variance);
    EXPECT_TRUE(p.has_y && p.has_ycalc && p.has_bgr);
    EXPECT_FALSE(p.constant_step);
    EXPECT_EQ(p.radiation, "neutron");
    EXPECT_EQ(p.scat_var, "2theta");
    EXPECT_EQ(p.legend_x, "2theta(degrees)");
    EXPECT_EQ(p.legend_y, "");
    EXPECT_EQ(p.xmin, 10);
    EXPECT_EQ(p.xmax, 11);
    EXPECT_EQ(p.step, 0.25f);
    EXPECT_EQ(p.ymin, 12.5f);
    EXPECT_EQ(p.ymax, 121);
    EXPECT_EQ(p.TSample, 0);
    // (1 + 1 + 1 + 0) / 5; the point without a deviation is not taken in, the division is by all.
    EXPECT_EQ(p.title, " a sample  Chi2(free) =   0.6000E+00");
}

TEST(Cif_Pattern, TheHeadsTellTheColumns) {
    const auto spacing = Good(Changed(head, "_pd_proc_2theta_corrected", "_pd_proc_d_spacing") + rows);
    EXPECT_EQ(spacing.scat_var, "d-spacing");
    EXPECT_EQ(spacing.legend_x, "d-spacing(Angstroms)");
    const auto both = Good(Changed(head, "_pd_proc_point_id", "_pd_proc_d_spacing") + rows);  // the last one counts
    EXPECT_EQ(both.scat_var, "2theta");
    EXPECT_EQ(both.x[1], 10.25f);
    const auto two = Good(
        "#\n#\n_pd_proc_number_of_points 3\n#\n#\nloop_\n_pd_proc_intensity_total\n_pd_proc_2theta_corrected\n\n7(1) 1\n8(2) 2\n9(3) 3\n");
    EXPECT_EQ(two.y, (std::vector<float>{7, 8, 9}));
    EXPECT_EQ(two.ycalc, (std::vector<float>{0, 0, 0}));
    EXPECT_EQ(two.title, "  Chi2(free) =   0.2467E+02");  // (49 + 16 + 9) / 3
    EXPECT_EQ(two.radiation, "");
}

TEST(Cif_Pattern, TheLinesThatCount) {
    // The last line with a word, the first with "loop_", and columns up to 120.
    const std::string whole = std::string(head) + rows;
    EXPECT_EQ(Good(whole + "\n_pd_proc_number_of_points 4\n").npts, 4);
    EXPECT_EQ(Good(whole + "\n" + std::string(120, '#') + "_pd_proc_number_of_points 4\n").npts, 5);
    EXPECT_TRUE(Good(whole + "\n_pd_block_id other\n").title.starts_with(" other  Chi2"));
    EXPECT_EQ(Good(whole + "\nloop_\n_pd_proc_intensity_total\n 1\n").npts, 5);
    EXPECT_EQ(Good(Changed(whole, "a sample", std::string(200, 'x'))).title.size(), 120 - 12 + 27);
    const std::string wide = Changed(whole, "2 10.25 121", "2 10.25" + std::string(120, ' ') + "121");
    EXPECT_EQ(Good(wide).npts, 1);                                                        // y of the second row stands too far to the right
    EXPECT_EQ(Good(Changed(whole, "3 10.50", "x 10.50")).npts, 2);                        // fewer than two numbers
    EXPECT_EQ(Good(Changed(whole, "number_of_points 5", "number_of_points 3")).npts, 3);  // as many as told
}

TEST(Cif_Pattern, EveryFault) {
    const std::string count = " Error reading the number of points in the pattern, check your CIF file!";
    const std::string data = " Error: experimental data are lacking, check your CIF file!";
    const std::string whole = std::string(head) + rows;
    Expect_Faults(
        Read_Cif_Pattern,
        {{"", " Number of lines too small to hold a diffraction pattern, check your CIF file!"},
         {"1\n2\n3\n4\n5\n6\n7\n8\n9\n", " Number of lines too small to hold a diffraction pattern, check your CIF file!"},
         {Changed(whole, "number_of_points", "number_of_items"), " No line with the number of points in the pattern, check your CIF file!"},
         {Changed(whole, "points 5", "points five"), count},
         {Changed(whole, "points 5", "points"), count},
         {Changed(whole, "points 5", "points 0"), count},
         {Changed(whole, "points 5", "points -5"), count},
         {Changed(whole, "points 5", "points 2000000000"), count},
         {Changed(whole, "points 5", "points 99999999999"), count},
         {Changed(whole, "_pd_proc_2theta_corrected", "_x"), data},
         {Changed(whole, "_pd_proc_intensity_total", "_y"), data},
         {Changed(whole, "loop_", "list"), data},
         {std::string(head) + "none\n", data}});
    Good(Changed(Changed(whole, "1 10.00", "1 -3e38"), "2 10.25 121(11) 110 5\n3 10.50", "3 3e38"));
}

TEST(Cif_Pattern, OddNumbersEndTheRows) {
    for (const char* odd :
         {"121(", "121()", "121(1", "121(x)", "121(1)2", "nan", "inf(2)", "1e39", "1e30(99999999999999)", "1e-99999999999(1)", "(1)", "-"})
        EXPECT_EQ(Good(Changed(std::string(head) + rows, "121(11)", odd)).npts, 1) << odd;
    EXPECT_EQ(Good(Changed(std::string(head) + rows, "121(11)", "-.5(11)")).sigma[1], 1.1f);
    EXPECT_EQ(Good(Changed(std::string(head) + rows, "121(11)", "+1.21d+2(3)")).sigma[1], 3);
}

TEST(Cif_Pattern, FilesOfOthers) {
    // No blank line behind the heads, capital letters, values that are not known.
    std::string text = Changed(std::string(head) + rows, "calc\n\n", "calc\n");
    EXPECT_EQ(Good(text).npts, 5);
    text = Changed(Changed(text, "_pd_proc_intensity_total", "_PD_proc_Intensity_total"), "121(11) 110", "121(11) .");
    EXPECT_EQ(Good(text).ycalc[1], 0);
    EXPECT_EQ(Good(Changed(text, "100(10)", "?")).npts, 4);
    // Another loop in front, and x from the range.
    const std::string ranged =
        "data_x\nloop_\n_publ_author_name\n'A. Person'\n_pd_proc_number_of_points   4\n_pd_meas_2theta_range_min  5\n"
        "_pd_proc_2theta_range_min  1.5\n_pd_proc_2theta_range_inc  0.5\nloop_\n_pd_meas_intensity_total\n_pd_proc_ls_weight\n"
        "_pd_calc_intensity_total\n5540(160) 0.0 .\n. . .\n4570(140) 0.0 4000.\n4140(130) 1 4000\n#END\n";
    const auto p = Good(ranged);
    EXPECT_EQ(p.x, (std::vector<float>{1.5f, 2.5f, 3.0f}));
    EXPECT_EQ(p.y, (std::vector<float>{5540, 4570, 4140}));
    EXPECT_EQ(p.sigma, (std::vector<float>{160, 140, 130}));
    EXPECT_EQ(p.ycalc, (std::vector<float>{0, 4000, 4000}));
    EXPECT_EQ(p.scat_var, "2theta");
}

TEST(Cif_Pattern, DeviationsWithoutBrackets) {
    const auto deviations = [](const std::string& columns, const std::string& values) {
        return Good("#\n#\n#\n_pd_proc_number_of_points 2\nloop_\n_pd_meas_2theta_scan\n" + columns + "\n\n10 " + values + "\n11 " +
                    values + "\n")
            .sigma[1];
    };
    EXPECT_EQ(deviations("_pd_meas_intensity_total\n_pd_proc_ls_weight", "90 0.0625"), 4);  // 1 / sqrt(0.0625)
    EXPECT_EQ(deviations("_pd_meas_intensity_total\n_pd_proc_ls_weight", "90(3) 0.0625"), 3);
    EXPECT_EQ(deviations("_pd_meas_intensity_total\n_pd_proc_ls_weight", "90 0.0"), 0);  // left out of the refinement
    EXPECT_EQ(deviations("_pd_meas_intensity_total\n_pd_proc_ls_weight", "90 ."), 0);
    EXPECT_EQ(deviations("_pd_meas_counts_total", "81"), 9);
    EXPECT_EQ(deviations("_pd_meas_counts_total\n_pd_proc_ls_weight", "81 0.25"), 2);
    EXPECT_EQ(deviations("_pd_meas_counts_total\n_pd_proc_ls_weight", "81 ?"), 9);
    EXPECT_EQ(deviations("_pd_proc_intensity_net\n_pd_meas_counts_total", "70 100"), 10);
    EXPECT_EQ(deviations("_pd_meas_intensity_total\n_pd_meas_intensity_total_su", "70 7"), 7);
    EXPECT_EQ(deviations("_pd_meas_intensity_total\n_pd_proc_intensity_net_su", "70 7"), 0);  // of another column
    EXPECT_EQ(deviations("_a\n_b\n_c\n_d\n_e\n_f\n_g\n_pd_meas_counts_total\n_h\n_i\n_pd_proc_ls_weight", "1 2 3 4 5 6 7 81 9 10 0.25"), 2);
}

TEST(Cif_Pattern, Wavelengths) {
    const std::string tag = "_diffrn_radiation_wavelength", loop = "loop_\n" + tag + "_id\n" + tag + "\n", weight = tag + "_wt\n";
    const struct {
        std::string text;
        std::array<float, 3> conv;
    } table[] = {{tag + " 1.5406\n", {1.5406f}},
                 {tag + " 1.5406(2)\n", {1.5406f}},
                 {tag + "\n  1.5406\n", {1.5406f}},
                 {"_Diffrn_radiation_wavelength.wavelength 0.41\n", {0.41f}},
                 {tag + " ?\n", {}},
                 {tag + " 0\n", {}},
                 {";\n" + tag + " 3\n;\n", {}},
                 {loop + "Ka1 1.5406\nKa2 1.5444(1)\n", {1.5406f, 1.5444f}},
                 {loop + "2 1.5444\n1 1.5406\n", {1.5406f, 1.5444f}},  // without weights the shorter line is the stronger
                 {loop + weight + "'Cu K a2' 1.5444 0.5\n'Cu K a1' 1.5406 1.0\n", {1.5406f, 1.5444f, 0.5f}},
                 {loop + weight + "1\n1.5406 1\n2 1.5444\n0.49\n", {1.5406f, 1.5444f, 0.49f}},
                 {loop + weight + "1 1.909 1\n2 0.9545 0.01\n", {1.909f}},  // half the wavelength is no line of a doublet
                 {loop + "1 ?\n2 x\n", {}},
                 {loop, {}},
                 {loop + "1\n", {}}};
    for (const auto& [text, conv] : table)
        for (const bool before : {true, false}) {
            const std::string data = std::string(head) + rows;
            const auto p = Good(before ? text + data : data + text);
            for (std::size_t i = 0; i < 3; ++i) EXPECT_FLOAT_EQ(p.conv[i], conv[i]) << text << before;
        }
    // Of several blocks the one of the pattern counts, then the first; a time of flight has none.
    const std::string other = "data_other\n" + tag + " 2.5\n", data = std::string(head) + rows;
    EXPECT_FLOAT_EQ(Good(other + data).conv[0], 2.5f);
    EXPECT_FLOAT_EQ(Good(data + other).conv[0], 2.5f);
    EXPECT_FLOAT_EQ(Good(other + data + tag + " 1.5\n" + other).conv[0], 1.5f);
    EXPECT_EQ(Good(other + Changed(data, "_pd_proc_2theta_corrected", "_pd_meas_time_of_flight")).conv[0], 0);
}

TEST(Cif_Pattern, ARefinementAsAJournalPublishedIt) {
    const std::string text = Real_File("cif_powder/cod_1517474.cif");
    if (text.empty()) GTEST_SKIP();
    const auto p = Good(text);
    ASSERT_EQ(p.npts, 3296);
    EXPECT_FLOAT_EQ(p.xmin, 1.518f);
    EXPECT_NEAR(p.xmax, 166.268, 1e-4);
    EXPECT_NEAR(p.step, 0.05, 1e-6);
    EXPECT_EQ(p.y[0], 5540);
    EXPECT_EQ(p.sigma[0], 160);
    EXPECT_EQ(p.bgr[1], 829);
    EXPECT_EQ(p.y[3295], 797);
    EXPECT_TRUE(Trim(p.title).starts_with("2013-11-26T14:41|BARE_ZN||bt1  Chi2(free) = ")) << p.title;
}

}  // namespace
}  // namespace vntl::test
