// What the command line and `print` tell of neutron runs, calibrations and instruments.
#include <numeric>
#include <sstream>

#include "app/testing.hpp"
#include "instrument/numor_text.hpp"

namespace vntl {
namespace {

const std::string four_circle =
    "! hot neutrons\nINFO Single crystals, hot neutrons\nNAME R6\nGEOM 4C-Diff High-Chi\nDET_TYPE flat ipsd 2\nDIST_DET 488\n"
    "WAVE_LIMITS 0.5 2.5\nwave 0.875\nDIM_XZP 64 48 2 3\nGAPS_CA_AN 16 32\nGAM+_LIMITS 1 130\nGAM-_LIMITS -20 -1\nNU_LIMITS -12 13\n"
    "X_LIMITS 2 64\nZ_LIMITS 3 48\nSETTING 0 1 0  1 0 0  0 0 -1\nUBMAT\n 0 0.125 0\n -0.5 0 0\n 0 0 0.25\n"
    "NUM_ANG 2\nANG_LIMITS\n Gamma -5 120 0.5 2\n Chi 80 190 0 1.5\nRANGE_TIME\n Gamma 2\n 10 4\n 20 7\n Chi 0\n"
    "NUM_DISP 1\nDISP_LIMITS\n x -3 3 0.25\nDET_ALPHAS\n 1 2\n 3 4\n 5 6\nRESOLUTION_SURFACE 1 2\n 7 8\n";

class Numor_Doors : public Program {
protected:
    // Writes a run, and gives its name back.
    std::string Put(const fs::path& file, const Numor_Text& run) const {
        fs::create_directories((directory / file).parent_path());
        Write(file, run.Text());
        return file;
    }
    // The same compressed.
    std::string Put_Packed(const fs::path& file, const Numor_Text& run) const {
        Put(file, run);
        const std::string name = Quoted(directory / file);
        EXPECT_EQ(std::system(("gzip -nc " + name + " > " + name + ".Z && rm " + name).c_str()), 0);
        return file.string() + ".Z";
    }
    using Words = std::vector<std::string>;
    void Refused(const Words& arguments, const std::string& message, int status = 1) const {
        const Run_Result run = Run(arguments);
        EXPECT_TRUE(run.status == status && run.output.empty()) << message << run.output;
        EXPECT_NE(run.errors.find(message), std::string::npos) << run.errors;
    }

    static Numor_Text R3B(int numor, std::vector<long long> counts) {
        Numor_Text run = Numor_Text::Of("R3B", {{.time = 90, .monitor = 2000, .angles = {20.0}, .counts = std::move(counts)}});
        run.numor = numor;
        run.F(18) = 1.5;
        run.F(37) = 0.25;
        return run;
    }
    // Two frames of the 25 cells of a bank: 1, 2, 3, ... counts, and a last one that fills its columns.
    static Numor_Text R3A() {
        std::vector<long long> counts(25);
        std::iota(counts.begin(), counts.end(), 1);
        const Numor_Frame first{.time = 60, .monitor = 1000, .angles = {150.5}, .counts = counts};
        Numor_Frame second{.time = 30, .monitor = 3000, .angles = {150.75}, .counts = counts};
        second.counts[24] = 1000000000;
        Numor_Text run = Numor_Text::Of("R3A", {first, second});
        run.counts_letter = 'J';
        run.F(18) = 1.25;
        for (std::size_t i = 0; i < 5; ++i) run.F(46 + i) = 300 + static_cast<double>(i);
        return run;
    }
};

// The fields that a line of `print` must have; null: any value.
void Expect_Fields(const Json& object, const char* fields) {
    const Json wanted = Json::parse(fields);
    for (const auto& [name, value] : wanted.items()) {
        const Json told = object.value(name, Json("missing"));
        EXPECT_EQ(told, value.is_null() && told != "missing" ? told : value) << name;
    }
}

TEST_F(Numor_Doors, print_tells_a_run_with_every_frame) {
    Put("123456", R3A());
    Numor_Text crystal = Numor_Text::Of("R18", {{.time = 5, .monitor = 50, .angles = {1.5}, .counts = {1, 2, 3, 4}},
                                                {.time = 6, .monitor = 60, .angles = {2.5}, .counts = {5, 6, 7, 8}}});
    crystal.frame_markers = true;
    for (std::size_t word = 1; word <= 45; ++word) crystal.F(word) = static_cast<double>(word);
    Put("200000", crystal);
    const Run_Result run = Script("print numor 123456 r3a\nprint numor 200000 R18\n");
    const std::vector<Json> runs = run.With("numor");
    ASSERT_EQ(runs.size(), 2u) << run.errors;
    const Json& powder = runs[0]["numor"];
    Expect_Fields(powder, R"({"numor": 123456, "manip": 2, "instrm": "R3A", "title": "powder at 300 K", "scantype": "2theta",
        "monitor": 2000.0, "time": 90.0, "wave": 1.25, "conditions": [300.0, 301.0, 302.0, 303.0, 304.0], "nbdata": 25, "nframes": 2,
        "nbang": 1, "icalc": null, "header": null, "angles": null, "scans": null, "icdesc": null})");
    EXPECT_EQ(powder["tmc_ang"].at(1), (Json{30.0, 3000.0, 1000000320.0, 150.75}));  // 1000000300 in single precision
    EXPECT_EQ(powder["counts"].at(0).size(), 25u);
    EXPECT_EQ(powder["counts"].at(1).at(24), 1e9);
    Expect_Fields(runs[1]["numor"], R"({"hmin": [1.0, 2.0, 3.0], "hmax": [22.0, 23.0, 24.0], "dh": [25.0, 26.0, 27.0],
        "ub": [[9.0, 10.0, 11.0], [12.0, 13.0, 14.0], [15.0, 16.0, 17.0]], "phi": 4.0, "chi": 5.0, "omega": 6.0, "gamma": 7.0,
        "psi": 8.0, "coupling": 43.0, "counts": [[1.0, 2.0, 3.0, 4.0], [5.0, 6.0, 7.0, 8.0]], "notice": null})");
}

TEST_F(Numor_Doors, print_converted_adds_runs_of_any_packing) {
    Put("100001", R3B(100001, {4, 16, 1, 9}));
    Put_Packed("100002", R3B(100002, {6, 14, 9, 1}));
    const Run_Result run = Script(
        "print converted R3B 100001 100002.Z\n"
        "print converted R3B 100001 norm 1000\n");
    const std::vector<Json> patterns = run.With("converted");
    ASSERT_EQ(patterns.size(), 2u) << run.errors;
    Expect_Fields(patterns[0]["converted"], R"({"x": [20.0, 20.25, 20.5, 20.75], "y": [10.0, 30.0, 10.0, 10.0],
        "sigma": [10.0, 30.0, 10.0, 10.0], "nd": [1, 1, 1, 1], "npts": 4, "xmin": 20.0, "xmax": 20.75, "step": 0.25, "monitor": 4000.0,
        "norm_monitor": 4000.0, "count_time": 180.0, "scat_var": "2theta", "radiation": "neutrons_cw", "sigma_is_variance": true,
        "conv": [1.5, 0.0, 0.0, 0.0, 0.0]})");
    EXPECT_EQ(patterns[0]["warnings"], Json::array());
    Expect_Fields(patterns[1]["converted"], R"({"y": [2.0, 8.0, 0.5, 4.5], "sigma": [1.0, 4.0, 0.25, 2.25], "norm_monitor": 1000.0})");
}

TEST_F(Numor_Doors, print_tells_calibrations_and_uses_them) {
    Write("r22.cal", "3 points\n 30.5 10.25 20\n 2 0.5 0\n");
    Write("r5b.cal", "angles\n 1 2\nzones\n 1 2 2 2\nefficiencies\n 0.5 1 1 2\n");
    const Numor_Text wire = Numor_Text::Of("R22", {{.monitor = 1000, .angles = {5.0}, .counts = {8, 4, 6}}});
    Put("123456", wire);
    const Run_Result run =
        Script("print calibration r5b.cal R5B\nprint calibration r22.cal R22\nprint converted R22 123456 cal r22.cal norm 500\n");
    const std::vector<Json> cals = run.With("calibration"), patterns = run.With("converted");
    ASSERT_TRUE(cals.size() == 2 && patterns.size() == 1) << run.errors;
    Expect_Fields(cals[0]["calibration"], R"({"cal_instrument": "R5B", "ndet": 2, "npoints_det": 2, "cal_pos": [1.0, 2.0],
        "cal_effic": [[0.5, 1.0], [1.0, 2.0]], "cal_active": [[true, true], [false, true]], "cal_index": []})");
    Expect_Fields(cals[1]["calibration"], R"({"ndet": 1, "npoints_det": 3, "cal_pos": [30.5, 10.25, 20.0], "cal_index": [2, 3, 1],
        "cal_active": [[true, true, false]]})");
    // The start, 5 degrees, and the positions; counts times the factors of the file and half, by the monitor.
    Expect_Fields(patterns[0]["converted"], R"({"x": [15.25, 35.5], "y": [1.0, 8.0], "sigma": [0.25, 8.0], "norm_monitor": 500.0})");
}

TEST_F(Numor_Doors, print_instrument_tells_every_field_and_takes_the_file_over) {
    Write("r6.instrm", four_circle);
    const Run_Result run = Script("print instrument\nprint instrument r6.instrm\nprint instrument\n");
    const std::vector<Json> told = run.With("instrument");
    ASSERT_EQ(told.size(), 3u) << run.errors;
    EXPECT_EQ(told[1]["warnings"], Json::array());
    const Json& record = told[1]["instrument"];
    Expect_Fields(record, R"({"info": "Single crystals, hot neutrons", "name_inst": "R6", "geom": "4C-Diff High-Ch", "BL_frame": "z-up",
        "dist_units": "mm", "angl_units": "deg", "dist_samp_detector": 488.0, "wave": 0.875, "wave_min": 0.5, "wave_max": 2.5,
        "horiz": 64.0, "vert": 48.0, "np_horiz": 2, "np_vert": 3, "cgap": 16.0, "agap": 32.0, "d_min": 0.5,
        "gamma_p_min": 1.0, "gamma_p_max": 130.0, "gamma_n_min": -20.0, "gamma_n_max": -1.0, "nu_min": -12.0, "nu_max": 13.0,
        "x_min": 2.0, "x_max": 64.0, "z_min": 3.0, "z_max": 48.0, "igeom": 2, "ipsd": 2, "e1": null, "e2": [1.0, 0.0, 0.0], "e3": null,
        "UB": [[0.0, 0.125, 0.0], [-0.5, 0.0, 0.0], [0.0, 0.0, 0.25]],
        "UB_inverse": [[0.0, -2.0, 0.0], [8.0, 0.0, 0.0], [0.0, 0.0, 4.0]],
        "num_ang": 2, "ang_names": ["Gamma", "Chi"], "ang_limits": [[-5.0, 120.0], [80.0, 190.0]], "ang_offsets": [0.5, 0.0],
        "ang_velocity": [2.0, 1.5], "range_time": [[[10.0, 4.0], [20.0, 7.0]], []],
        "num_disp": 1, "disp_names": ["x"], "disp_limits": [[-3.0, 3.0]], "disp_offsets": [0.25],
        "alphas": [[1.0, 2.0], [3.0, 4.0], [5.0, 6.0]], "detector_type": null, "gamma_c": null, "nu_c": null, "rot_order": null,
        "tilt": null, "det_offsets": null, "disp_centre": null, "alpha_file": null, "resolution_surface": null})");
    EXPECT_EQ(record["resolution_surface"].size() * record["resolution_surface"][0].size(), 2u);
    // Before it, that of the default, which is not set; behind it, the file's.
    EXPECT_EQ(told[0]["Current_Instrm_Set"], false);
    EXPECT_EQ(told[0]["instrument"]["info"], "Default 4-cercles diffractrometer");
    EXPECT_EQ(told[0]["instrument"]["alphas"].size(), 32u);
    EXPECT_EQ(told[2]["Current_Instrm_Set"], true);
    EXPECT_EQ(told[2]["instrument"], record);
}

TEST_F(Numor_Doors, print_found_walks_the_tree) {
    Put("data/r3a/000042", R3A());
    const std::string packed = Put_Packed("053/r22/r22_23/123456", R3A());
    const Run_Result run = Script("print found 42 R3A\nprint found 123456 R22\nprint found 123456 R22 05 3\nprint found 123456 R3A\n", {},
                                  "KVRDATA=" + Quoted(directory));
    const std::vector<Json> found = run.With("found");
    ASSERT_TRUE(found.size() == 4 && run.status == 0) << run.errors;
    EXPECT_EQ(found[0]["found"]["path"], (directory / "data/r3a/000042").string());
    for (const std::size_t line : {1u, 2u}) {
        const fs::path actual = found[line]["found"]["actual_path"], path = found[line]["found"]["path"];
        EXPECT_EQ(actual, directory / packed);
        EXPECT_TRUE(path.filename() == "123456" && path != actual && !fs::exists(path)) << path;  // it went with the program
    }
    EXPECT_EQ(found[3]["found"]["path"], "");
}

TEST_F(Numor_Doors, a_door_refuses_with_the_reason) {
    Put("123456", R3A());
    Put_Packed("123457", R3A());
    Write("short.cal", "R3A\n1 2 3\n");
    Write("bad.instrm", "NUM_ANG 1\nANG_LIMITS\n Gamma 0 x\n");
    const std::string converted = "usage: print converted INSTRUMENT FILE.. [cal FILE] [norm V] [bank N]";
    const std::string found = "usage: print found NUMOR INSTRUMENT [YEAR CYCLE]",
                      positions = " Problems reading Positions of Detectors for R3A";
    const std::pair<std::string, std::string> refusals[] = {
        {"numor 123456", "usage: print numor FILE INSTRUMENT"},
        {"numor 123456 R15", " Not Implemented for the Powder Instrument name: R15"},
        {"numor 123457.Z R3A", " Numor file is compressed. Please uncompress the numor before to use the program"},
        {"converted R3A", converted},
        {"converted R6 123456", " Not Implemented for the Powder Instrument name: R6"},
        {"converted R3A 123456 norm x", "norm needs a number, not x"},
        {"converted R3A 123456 cal", converted},
        {"converted R3A 123456 bank 0", "bank needs a whole number from 1 on, not 0"},
        {"converted R3A 123456 norm 1 norm 2", converted},
        {"converted R3A 123456 cal short.cal", positions},
        {"calibration short.cal R3A", positions},
        {"instrument nothing.instrm", "Error opening the file: "},
        {"instrument bad.instrm", ", reading the angular names, limits, offsets and velocities"},
        {"found R3A 123456", found},
        {"found 123456 R3A 5", found},
    };
    std::string script;
    for (const auto& [statement, message] : refusals) script += "print " + statement + '\n';
    const Run_Result run = Script(script);
    EXPECT_EQ(run.With("numor").size() + run.With("converted").size() + run.With("calibration").size() + run.With("found").size(), 0u);
    std::vector<std::string> told;  // a message may have further lines
    std::istringstream lines(run.errors);
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with("line ")) told.push_back(line);
    ASSERT_EQ(told.size(), std::size(refusals)) << run.errors;
    for (std::size_t i = 0; i < told.size(); ++i) EXPECT_NE(told[i].find(refusals[i].second), std::string::npos) << told[i];
    EXPECT_EQ(run.status, 1);
}

TEST_F(Numor_Doors, command_line_lists_a_run) {
    Numor_Text named = R3A();
    named.instrument = "R3AX";  // the directory's name goes before the one in the file
    Put("data/r3a/123456", named);
    Put("alone", R3A());
    const std::string packed = Put_Packed("123457", R3A());
    Numor_Text crystal = Numor_Text::Of("R6", {{.angles = {1.5}, .counts = {1, 2, 3, 4}}});
    Put("crystal", crystal);
    const auto Numor = [](Words words) {
        words.insert(words.begin(), "--numor");
        return words;
    };
    const std::pair<Words, std::string> listings[] = {
        {{"data/r3a/123456"}, "R3A"}, {{"alone"}, "R3A"}, {{packed, "r3a"}, "R3A"}, {{"crystal"}, "ANGLE_CHI:"}};
    for (const auto& [words, text] : listings) {
        const Run_Result run = Run(Numor(words));
        EXPECT_EQ(run.status, 0) << run.errors;
        for (const std::string& part : {text, std::string("INTRUMENT:"), std::string("123456"), std::string("Temp-SAMPLE: ")})
            EXPECT_NE(run.output.find(part), std::string::npos) << part << " in\n" << run.output;
    }
    Write("text", "nothing of a run\n");
    Refused(Numor({"nowhere"}), "nowhere");
    Refused(Numor({"text"}), "The file text names no instrument");
    Refused(Numor({"data/r3a/123456", "R5B"}), "This numor does not correspond with R5B Format");
    Refused(Numor({"alone", "R99"}), "Not Implemented for the Powder Instrument name: R99");
}

TEST_F(Numor_Doors, command_line_writes_a_matrix_and_keeps_the_file_before) {
    const std::string before = "NAME R6\nWAVE_LIMITS 0.5 2.5\nWAVE 0.84\nDIM_XZP 64 64 32 32\n";
    Write("r6.instrm", before);
    const Run_Result listed = Run({"--instrument", "r6.instrm"});
    EXPECT_EQ(listed.status, 0) << listed.errors;
    EXPECT_NE(listed.output.find(" ---   INFORMATION ABOUT THE CURRENT INSTRUMENT AND ORIENTATION MATRIX   --- "), std::string::npos);
    EXPECT_EQ(Text_Of(directory / "r6.instrm"), before);

    // A sign in front is a number's and no option's.
    const Run_Result first = Run({"--ub", "-0.1 0.4 0 0 0.2 0 0 0 0.3", "--wave", "1.25", "--instrument", "r6.instrm"});
    EXPECT_EQ(first.status, 0) << first.errors;
    const std::string once = Text_Of(directory / "r6.instrm");
    EXPECT_EQ(once,
              "NAME R6\nWAVE_LIMITS 0.5 2.5\nWAVE    1.25000\nDIM_XZP 64 64 32 32\nUBMAT\n"
              "    -0.100000001     0.400000006     0.000000000\n"
              "     0.000000000     0.200000003     0.000000000\n"
              "     0.000000000     0.000000000     0.300000012\n");
    EXPECT_EQ(Text_Of(directory / "r6.instrm.bak"), before);
    const std::string unit = "1 0 0 0 1 0 0 0 1";
    for (const std::string bad : {"1 0 0 0 1 0 0 0", "1 0 0 0 1 0 0 0 1 1", "1 0 0 0 1 0 0 0 1e99"})
        Refused({"--instrument", "r6.instrm", "--ub", bad}, "nine numbers");
    Refused({"--instrument", "nothing"}, "Error opening the file: nothing");
    Refused({"--instrument", "r6.instrm", "--ub", "1 2 3 2 4 6 0 0 1"}, "cannot be inverted");
    Refused({"--instrument", "r6.instrm", "--ub", unit, "--wave", "0"}, "Bad wavelength");
    Refused({"--instrument", "r6.instrm", "--wave", "1"}, "--wave belongs to --ub", 2);
    Refused({"--ub", unit}, "--ub and --wave belong to --instrument", 2);
    EXPECT_EQ(Text_Of(directory / "r6.instrm"), once);
    // What was read otherwise than it stands, or not at all, is told at the end.
    Write("exchanged.instrm", "DIM_XZP 64 48 32 12\nGAPS_CA_AN 2 4\nX_LIMITS 0 64\n");
    const Run_Result warned = Run({"--instrument", "exchanged.instrm"});
    EXPECT_EQ(warned.status, 0) << warned.errors;
    std::size_t warnings = 0, at = 0;
    for (; (at = warned.output.find("\nWarning: exchanged.instrm: ", at)) != std::string::npos; ++at) ++warnings;
    EXPECT_EQ(warnings, 2u) << warned.output;
}

}  // namespace
}  // namespace vntl
