// Powder CIF: files written by the test from known numbers, the items that count, every message; published files against what they tell of
// themselves.
#include "patterns/cif/cif_pattern.hpp"

#include <cmath>

#include "patterns/testing.hpp"

namespace vntl::test {
namespace {

constexpr const char* head =
    "data_test\n_pd_block_id a sample\n_diffrn_radiation_probe   neutron\n_pd_proc_number_of_points 5\n"
    "loop_\n_pd_proc_point_id\n_pd_proc_2theta_corrected\n_pd_proc_intensity_total\n_pd_calc_intensity_total\n"
    "_pd_proc_intensity_bkg_calc\n\n";
constexpr const char* rows = "1 10.00 100(10) 110 5\n2 10.25 121(11) 110 5\n3 10.50 12.5(25) 10 6\n4 10.75 1.21E2(11) 121 6\n5 11 90 9 7\n";

std::vector<Diffraction_Pattern_Type> All(const std::string& text, Read_Notes* told = nullptr) {
    std::vector<Diffraction_Pattern_Type> patterns(3);
    Read_Notes notes;
    const Status status = Read_Cif_Patterns(text, patterns, notes);
    EXPECT_TRUE(status.ok()) << status.message;
    EXPECT_FALSE(patterns.empty());
    for (const auto& p : patterns) {
        const auto n = static_cast<std::size_t>(p.npts);
        for (const std::size_t size : {p.x.size(), p.y.size(), p.sigma.size()}) EXPECT_EQ(size, n);
        for (const std::size_t size : {p.istat.size(), p.ycalc.size(), p.bgr.size()}) EXPECT_TRUE(size == n || size == 0) << size;
    }
    if (told != nullptr) *told = notes;
    return patterns;
}

Diffraction_Pattern_Type Good(const std::string& text, Read_Notes* told = nullptr) {
    const auto patterns = All(text, told);
    EXPECT_EQ(patterns.size(), 1u);
    return patterns.empty() ? Diffraction_Pattern_Type{} : patterns.front();
}

Status Read_First(std::string_view text, Diffraction_Pattern_Type& p) {
    std::vector<Diffraction_Pattern_Type> patterns;
    Read_Notes notes;
    const Status status = Read_Cif_Patterns(text, patterns, notes);
    if (status.ok()) p = patterns.front();
    return status;
}

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
    EXPECT_TRUE(p.nd.empty() && p.istat.empty());
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
    // Two columns with the values 10 and 11, and 20 and 21: which is x, which y.
    const struct {
        const char *first, *second;
        float x, y;
        const char *scat_var, *legend_x;
    } table[] = {
        {"_pd_proc_d_spacing", "_pd_proc_intensity_total", 10, 20, "d-spacing", "d-spacing(Angstroms)"},
        {"_pd_proc_intensity_net", "_pd_proc_recip_len_Q", 20, 10, "q-space", "Q(1/Angstrom)"},
        {"_pd_meas.time_of_flight", "_pd_meas.intensity_total", 10, 20, "TOF", "TOF(micro-seconds)"},
        {"_PD_meas_2theta_SCAN", "_pd_meas_counts_total", 10, 20, "2theta", "2theta(degrees)"},
        {"_pd_proc_d_spacing\n_pd_meas_2theta_scan", "30\n_pd_proc_intensity_net", 30, 20, "2theta", "2theta(degrees)"},
        {"_pd_meas_2theta_scan\n_pd_proc_2theta_corrected", "30\n_pd_proc_intensity_net", 30, 20, "2theta", "2theta(degrees)"},
        {"_pd_proc_recip_len_Q\n_pd_meas_time_of_flight", "30\n_pd_proc_intensity_net", 30, 20, "TOF", "TOF(micro-seconds)"},
        {"_pd_proc_2theta_corrected\n_pd_proc_intensity_total", "30\n_pd_meas_intensity_total", 10, 20, "2theta", "2theta(degrees)"},
        {"_pd_proc_2theta_corrected\n_pd_meas_counts_total", "30\n_pd_meas_intensity_total", 10, 30, "2theta", "2theta(degrees)"},
        {"_pd_proc_2theta_corrected\n_pd_proc_d_spacing", "?\n_pd_proc_intensity_total", 10, 20, "2theta", "2theta(degrees)"},
        {"_pd_proc_d_spacing\n_pd_proc_2theta_corrected", "?\n_pd_proc_intensity_total", 10, 20, "d-spacing", "d-spacing(Angstroms)"},
        {"_pd_proc_d_spacing\n_pd_meas_counts_total", ".\n_pd_proc_intensity_total", 10, 20, "d-spacing", "d-spacing(Angstroms)"},
    };
    for (const auto& [first, second, x, y, scat_var, legend_x] : table) {
        std::string head_of_second = second, middle;
        if (const std::size_t line = head_of_second.find('\n'); line != std::string::npos) {
            middle = head_of_second.substr(0, line);
            head_of_second.erase(0, line + 1);
        }
        const std::string text =
            std::string("data_x\n#\n#\n#\n#\nloop_\n") + first + "\n" + head_of_second + "\n10 " + middle + " 20\n11 " + middle + " 21\n";
        const auto p = Good(text);
        ASSERT_EQ(p.npts, 2) << text;
        EXPECT_EQ(p.x[0], x) << text;
        EXPECT_EQ(p.y[0], y) << text;
        EXPECT_EQ(p.scat_var, scat_var) << text;
        EXPECT_EQ(p.legend_x, legend_x) << text;
        EXPECT_EQ(p.title, "x");
        EXPECT_FALSE(p.has_ycalc || p.has_bgr);
    }
}

TEST(Cif_Pattern, CurvesAndWhatIsLeftOut) {
    // x from the range as it was processed; points of weight 0 and curves without a number count for no agreement; a net curve stands on
    // its background.
    const std::string text =
        "data_x\nloop_\n_publ_author_name\n'A. Person'\n_pd_meas_2theta_range_min  5\n_pd_meas_2theta_range_inc 1\n"
        "loop_\n_pd_meas_intensity_total\n_pd_proc_ls_weight\n_pd_calc_intensity_net\n_pd_proc_intensity_bkg_calc\n"
        "5540(160) 0.0 . .\n. . . .\n4570(140) 0.0 4000. 10\n4140(100) 1 4030 10\n4000(100) 1 4090 10\n#END\n"
        "_pd_proc_2theta_range_min  1.500(1)\n_pd_proc_2theta_range_inc  0.5\n_pd_meas_number_of_points 7\n";
    Read_Notes notes;
    const auto p = Good(text, &notes);
    EXPECT_EQ(p.x, (std::vector<float>{1.5f, 2.5f, 3.0f, 3.5f}));
    EXPECT_EQ(p.y, (std::vector<float>{5540, 4570, 4140, 4000}));
    EXPECT_EQ(p.sigma, (std::vector<float>{160, 140, 100, 100}));
    EXPECT_TRUE(std::isnan(p.ycalc[0]));
    EXPECT_EQ(p.ycalc[2], 4040);
    EXPECT_EQ(Good(Changed(text, "_pd_meas_intensity_total", "_pd_proc_intensity_net")).ycalc[2], 4030);  // both are net
    EXPECT_TRUE(std::isnan(p.bgr[0]));
    EXPECT_EQ(p.istat, (std::vector<int>{1, 1, 0, 0}));
    EXPECT_EQ(p.title, "x  Chi2(free) =   0.1000E+01");  // (1 + 1) / 2
    EXPECT_EQ(p.npts_claimed, 7);
    ASSERT_EQ(notes.warnings.size(), 1u);
    EXPECT_TRUE(notes.warnings[0].ends_with(": 2 of 4")) << notes.warnings[0];
}

TEST(Cif_Pattern, HowRowsStand) {
    const std::string whole = std::string(head) + rows;
    const std::vector<float> five = {10, 10.25f, 10.5f, 10.75f, 11}, four = {10, 10.5f, 10.75f, 11};
    const struct {
        std::string from, to;
        std::vector<float> x;
        int left_out = 0;
    } table[] = {{"calc\n\n", "calc\n", five},
                 {"calc\n\n", "calc ", five},
                 {"100(10) 110", "100(10)\n  110", five},
                 {"2 10.25", "# a remark 1 2 3\n\n2\n\t10.25", five},
                 {" 5\n2 10.25", " 5 2 10.25", five},
                 {"1 10.00", "'a label' \"10.00\"", five},
                 {"1 10.00", "'it's one' 10.00", five},
                 {"1 10.00", "\n;a text\n1 2 3\n;\n10.00", five},
                 {"\n5 11 90 9 7", "\n5\n11\n90\n9\n7", five},
                 {"121(11)", "?", four},
                 {"10.25", ".", four},
                 {"121(11) 110", "110", four, 1},  // a value is lost: the row, and no row behind it
                 {"2 10.25", "2 word", four, 1},
                 {"5 11 90 9 7\n", "5 11 90 9", {10, 10.25f, 10.5f, 10.75f}},
                 {"5 11 90 9 7\n", "_item 5\n", {10, 10.25f, 10.5f, 10.75f}},
                 {"5 11 90 9 7\n", "5 11 90 9 7 data_next\n_item 1\n", five},
                 {"points 5", "points five", five},
                 {"points 5", "points 3", five},
                 {"_pd_proc_number_of_points 5", "#", five}};
    for (const auto& [from, to, x, left_out] : table) {
        Read_Notes notes;
        const auto p = Good(Changed(whole, from, to), &notes);
        EXPECT_EQ(p.x, x) << to;
        EXPECT_EQ(p.y[0], 100) << to;
        EXPECT_EQ(p.bgr.back(), x.back() == 11 ? 7 : 6) << to;
        EXPECT_EQ(notes.warnings.size(), left_out > 0 ? 1u : 0u) << to;
        EXPECT_EQ(p.npts_claimed, from == "5 11 90 9 7\n" && x != five ? 5 : 0) << to;
    }
    for (const auto& [name, text] : Habits(whole)) EXPECT_EQ(Good(text).y, (std::vector<float>{100, 121, 12.5f, 121, 90})) << name;
}

TEST(Cif_Pattern, WhatABlockTells) {
    const std::string whole = std::string(head) + rows;
    const auto told = [&](const std::string& items) { return Good(whole + "\n" + items); };
    EXPECT_TRUE(told("_pd_block_id other\n").title.starts_with(" other  Chi2"));
    EXPECT_TRUE(told("_pd_block_id\n  other|one\n").title.starts_with("other|one  Chi2"));
    EXPECT_TRUE(told("_pd_block.id 'an other' # one\n").title.starts_with("an other  Chi2"));
    EXPECT_TRUE(told("_pd_block_id ?\n").title.starts_with(" a sample  Chi2"));
    EXPECT_TRUE(Good(Changed(whole, "_pd_block_id", "#")).title.starts_with("test  Chi2"));
    EXPECT_EQ(Characters(Good(Changed(whole, "a sample", std::string(2000, 'x'))).title), title_width);
    EXPECT_EQ(told("_diffrn_ambient_temperature 293(2)\n_cell_measurement_temperature 100\n").TSample, 293);
    EXPECT_EQ(told("_diffrn.ambient_temperature ?\n_cell_measurement_temperature 100\n").TSample, 100);
    EXPECT_EQ(told("_diffrn_ambient_temperature -5\n").TSample, 0);
    EXPECT_EQ(told("_pd_meas_step_count_time 12.5\n").count_time, 12.5f);
    const auto p =
        told("_diffrn_source_target Cu\n_pd_instr_location\n;the hall\n;\n_exptl_x ?\n_pd_y\n;two\nlines\n;\n_pd_meas_scan_method step\n");
    std::string facts;
    for (const Head_Fact& fact : *p.facts) facts += fact.name + "=" + fact.value + ";";
    EXPECT_TRUE(facts.ends_with("Anode=Cu;_pd_instr_location=the hall;_pd_meas_scan_method=step;")) << facts;
}

TEST(Cif_Pattern, BlocksAndLoops) {
    // Each table of y over x is a pattern; in one block as measured and as processed. A wavelength stands in the block, or in another one,
    // but not beside times of flight.
    const std::string flight =
        "data_flight\nloop_ _pd_meas_time_of_flight _pd_meas_intensity_total\n1000 1(1)\n1001 2(1)\n"
        "loop_\n_refln_index_h\n_refln_d_spacing\n1 2\n2 3\n"
        "loop_ _pd_proc_d_spacing _pd_proc_intensity_total _pd_calc_intensity_total\n0.5 1(1) 2\n0.6 2(1) 2\n";
    const std::string angle = "data_angle\nloop_ _pd_meas_2theta_scan _pd_meas_counts_total\n10 100\n11 121\n";
    const std::string waves = "data_waves\n_diffrn_radiation_wavelength 0.8\n";
    const auto patterns = All(waves + flight + angle + angle + "_diffrn_radiation_wavelength 1.5\n");
    ASSERT_EQ(patterns.size(), 4u);
    const struct {
        const char *title, *scat_var;
        float wavelength, first;
    } wanted[] = {{"flight, measured", "TOF", 0, 1000},
                  {"flight, processed  Chi2(free) =   0.5000E+00", "d-spacing", 0, 0.5f},
                  {"angle", "2theta", 0.8f, 10},
                  {"angle", "2theta", 1.5f, 10}};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(patterns[i].title, wanted[i].title);
        EXPECT_EQ(patterns[i].scat_var, wanted[i].scat_var);
        EXPECT_EQ(patterns[i].conv[0], wanted[i].wavelength);
        EXPECT_EQ(patterns[i].xmin, wanted[i].first);
        EXPECT_EQ(patterns[i].bank, static_cast<int>(i + 1));
    }
    EXPECT_EQ(patterns[0].radiation, "neutrons_tof");
    // Spacings fall as angles rise.
    const auto fallen = Good("#\n#\n#\n#\n#\n#\n#\nloop_ _pd_proc_d_spacing _pd_meas_counts_total\n2 9\n1 7\n");
    EXPECT_EQ(fallen.x, (std::vector<float>{1, 2}));
    EXPECT_EQ(fallen.y, (std::vector<float>{7, 9}));
}

TEST(Cif_Pattern, EveryFault) {
    const std::string data = " Error: experimental data are lacking, check your CIF file!";
    const std::string few = " Number of lines too small to hold a diffraction pattern, check your CIF file!";
    const std::string whole = std::string(head) + rows, lines = "data_x\n#\n#\n#\n#\n#\n#\n#\n#\n#\n";
    Expect_Faults(Read_First, {{"", few},
                               {"1\n2\n3\n4\n5\n6\n7\n8\n9\n", few},
                               {Changed(whole, "_pd_proc_2theta_corrected", "_x"), data},
                               {Changed(whole, "_pd_proc_intensity_total", "_y"), data},
                               {Changed(whole, "loop_", "list"), data},
                               {std::string(head) + "none\n", data},
                               {std::string(head) + "data_y\n_cell_length_a 5\n", data},
                               {lines, data},
                               {lines + "loop_ _pd_proc_d_spacing _pd_meas_counts_total\n1 ?\n? 1\n", data},
                               {lines + "_cell_length_a 5\nloop_ _refln_index_h 1 2\n", "This CIF holds a structure, not a powder pattern"},
                               {lines + "loop_ _pd_peak_d_spacing 1 2\n", "This CIF holds peaks, not a pattern"},
                               {lines + "loop_ _refln_index_h 1 2\n", "This CIF holds reflections, not a powder pattern"}});
    Good(Changed(Changed(whole, "1 10.00", "1 -3e38"), "2 10.25 121(11) 110 5\n3 10.50", "3 3e38"));
}

TEST(Cif_Pattern, OddNumbers) {
    for (const char* odd :
         {"121(", "121()", "121(1", "121(x)", "121(1)2", "nan", "inf(2)", "1e39", "1e30(99999999999999)", "1e-99999999999(1)", "(1)", "-"})
        EXPECT_EQ(Good(Changed(std::string(head) + rows, "121(11)", odd)).npts, 4) << odd;
    EXPECT_EQ(Good(Changed(std::string(head) + rows, "121(11)", "-.5(11)")).sigma[1], 1.1f);
    EXPECT_EQ(Good(Changed(std::string(head) + rows, "121(11)", "+1.21d+2(3)")).sigma[1], 3);
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
    EXPECT_EQ(deviations("_pd_proc_intensity_net\n_pd_meas_counts_total", "70 100"), 10);  // the counts are y
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
}

TEST(Cif_Pattern, ARefinementAsAJournalPublishedIt) {
    const std::string text = Real_File("cif_powder/cod_1517474.cif");
    if (text.empty()) GTEST_SKIP();
    Read_Notes notes;
    const auto p = Good(text, &notes);
    ASSERT_EQ(p.npts, 3296);
    EXPECT_FLOAT_EQ(p.xmin, 1.518f);
    EXPECT_NEAR(p.xmax, 166.268, 1e-4);  // as the file tells the end of its range
    EXPECT_NEAR(p.step, 0.05, 1e-6);
    EXPECT_EQ(p.y[0], 5540);
    EXPECT_EQ(p.sigma[0], 160);
    EXPECT_EQ(p.bgr[1], 829);
    EXPECT_EQ(p.y[3295], 797);
    EXPECT_FLOAT_EQ(p.conv[0], 2.0785f);
    EXPECT_EQ(p.TSample, 10);
    EXPECT_EQ(p.radiation, "neutron");
    EXPECT_EQ(notes.warnings, (std::vector<std::string>{"Points of weight 0, which the refinement in the file left out: 107 of 3296"}));
    // The file's own R values, 0.0484 of 0.0499 expected, are an agreement of 0.941 by other means; deviations are told with two digits.
    const std::string title(Trim(p.title)), words = "2013-11-26T14:41|BARE_ZN||bt1  Chi2(free) = ";
    ASSERT_TRUE(title.starts_with(words)) << title;
    EXPECT_NEAR(std::stod(title.substr(words.size())), 0.941, 0.02);
}

TEST(Cif_Pattern, FilesOfSeveralPatterns) {
    const std::string flight = Real_File("formats/samples/pdcif_two_blocks_tof_d.cif");
    const std::string angle = Real_File("formats/samples/pdcif_five_patterns.cif");
    if (flight.empty() || angle.empty()) GTEST_SKIP();
    const auto banks = All(flight), steps = All(angle);
    ASSERT_EQ(banks.size(), 4u);
    const float ends[][2] = {{1000, 8190.4f}, {0.50035f, 1.40562f}, {750.4f, 8190.4f}, {0.45802f, 1.87308f}};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(banks[i].npts, 6);
        EXPECT_EQ(banks[i].npts_claimed, 0);
        EXPECT_EQ(banks[i].xmin, ends[i][0]);
        EXPECT_EQ(banks[i].xmax, ends[i][1]);
        EXPECT_EQ(banks[i].scat_var, i % 2 == 0 ? "TOF" : "d-spacing");
        EXPECT_TRUE(Contains(banks[i].title, i < 2 ? "NISI_H_01" : "NISI_H_02"));
        EXPECT_EQ(banks[i].has_ycalc, i % 2 == 1);
    }
    EXPECT_EQ(banks[0].sigma[5], 2.7f);
    EXPECT_NEAR(banks[1].sigma[0], 0.007f, 1e-8f);
    EXPECT_NEAR(1 / banks[1].sigma[0] / banks[1].sigma[0], 19401, 1100);  // the weight beside it
    ASSERT_EQ(steps.size(), 5u);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(steps[i].TSample, 30 + 20 * static_cast<float>(i));
        EXPECT_FLOAT_EQ(steps[i].conv[0], 0.8257653f);
        EXPECT_EQ(steps[i].xmax, 65.001f);
        EXPECT_TRUE(Contains(steps[i].title, "pattern_" + std::to_string(i))) << steps[i].title;
    }
    EXPECT_FLOAT_EQ(steps[0].sigma[0], 4.98154f);  // 1 / sqrt(0.040297)
}

}  // namespace
}  // namespace vntl::test
