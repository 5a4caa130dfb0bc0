// Profile files of a refinement: every layout gives back the model that it was written from, and no file is trusted.
#include "patterns/prf.hpp"

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "patterns/prf_files.hpp"
#include "testing.hpp"

namespace vntl::test {
namespace {

struct Read_Result {
    Status status;
    Diffraction_Pattern_Type pattern;
    PRF_Info_Add_Type info;
};

class Prf : public testing::Test {
protected:
    Prf() { std::filesystem::create_directories(directory); }
    ~Prf() override { std::filesystem::remove_all(directory); }

    // A failure has a message, and a success holds no more than the text could, with every row number in its range.
    Read_Result Read(const std::string& text, const std::string& what, const std::string& extension = ".prf") const {
        const std::string path = (directory / ("refined" + extension)).string();
        std::ofstream(path, std::ios::binary) << text;
        Read_Result r;
        r.info.file_name = "of another file";
        r.status = Read_Prf(path, r.pattern, r.info);
        if (r.status.failed) {
            EXPECT_FALSE(r.status.message.empty()) << what;
            return r;
        }
        const auto points = static_cast<std::size_t>(r.pattern.npts), reflections = static_cast<std::size_t>(r.info.nreflections);
        EXPECT_TRUE(points >= 1 && points <= text.size() && reflections <= text.size()) << what << points << ' ' << reflections;
        for (const std::size_t size : {r.pattern.x.size(), r.pattern.y.size(), r.pattern.ycalc.size()}) EXPECT_EQ(size, points) << what;
        const PRF_Info_Add_Type& i = r.info;
        for (const std::size_t size :
             {i.refl_code.size(), i.refl_phase.size(), i.refl_position.size(), i.refl_label.size(), i.refl_tag.size()})
            EXPECT_EQ(size, reflections) << what;
        EXPECT_TRUE(i.nphases >= 0 && i.nphases <= max_phases && i.nexcl >= 0 && i.nexcl <= max_excluded_regions) << what;
        for (const auto& rows : {i.refl_code, i.refl_phase})
            for (const std::int32_t row : rows) EXPECT_TRUE(row >= 1 && row <= i.nphases) << what << ' ' << row;
        return r;
    }

    std::filesystem::path directory = std::filesystem::temp_directory_path() / ("vantrelo_prf" + std::to_string(::getpid()));
};

void Expect_Close(const std::vector<float>& is, const std::vector<double>& shall, const std::string& what) {
    ASSERT_EQ(is.size(), shall.size()) << what;
    for (std::size_t i = 0; i < is.size(); ++i) ASSERT_NEAR(is[i], shall[i], 1e-4 + 4e-7 * std::fabs(shall[i])) << what << " at " << i;
}

std::string Label_Of(const Model& m, const Model_Reflection& r, int vector) {
    const std::string start = Form("(%3d%3d%3d) ph:%2d", r.hkl[0], r.hkl[1], r.hkl[2], r.phase);
    if (vector == 0) return start + Form("  Lambda: %2d", r.lambda);
    const auto& v = m.vectors[static_cast<std::size_t>(r.phase - 1)][static_cast<std::size_t>(vector - 1)];
    return start + Form(", nvk[%7.4f%7.4f%7.4f]    Lambda: %2d", v[0], v[1], v[2], r.lambda);
}

void Expect_Points(const Model& m, const Read_Result& r, bool with_background, const std::string& what) {
    ASSERT_TRUE(r.status.ok()) << what << ": " << r.status.message;
    std::vector<double> x;
    for (std::size_t i = 0; i < m.y.size(); ++i) x.push_back(m.True(m.X(i)));
    Expect_Close(r.pattern.x, x, what + " x");
    Expect_Close(r.pattern.y, m.y, what + " y");
    Expect_Close(r.pattern.ycalc, m.ycalc, what + " ycalc");
    if (with_background) Expect_Close(r.pattern.bgr, m.bgr, what + " bgr");
    EXPECT_EQ(std::pair(r.pattern.xmin, r.pattern.xmax), std::pair(r.pattern.x.front(), r.pattern.x.back())) << what;
    EXPECT_EQ(r.pattern.ymax, *std::max_element(r.pattern.y.begin(), r.pattern.y.end())) << what;
    EXPECT_TRUE(r.pattern.has_y && r.pattern.has_ycalc) << what;
    EXPECT_EQ(Told(r.info.kind), "PRF") << what;
    EXPECT_EQ(Trim_Right(r.pattern.title), m.title) << what;
    EXPECT_EQ(Trim_Right(r.info.origin_note), m.title) << what;
    EXPECT_EQ(r.info.file_name.substr(0, 8), "refined.") << what;
}

// `vectors_told`: the layout says which vector a reflection belongs to.
void Expect_Model(const Model& m, const Read_Result& r, bool with_background, bool vectors_told, const std::string& what) {
    ASSERT_NO_FATAL_FAILURE(Expect_Points(m, r, with_background, what));
    ASSERT_EQ(r.info.nphases, Size(m.phases)) << what;
    ASSERT_EQ(r.info.nreflections, Size(m.all)) << what;
    for (std::size_t j = 0; j < m.all.size(); ++j) {
        const int vector = vectors_told ? m.all[j].vector : 0;
        std::string label(Trim_Right(r.info.refl_label[j])), wanted = Label_Of(m, m.all[j], vector);
        if (m.superspace) label.resize(10), wanted.resize(10);  // the satellite indices may follow
        ASSERT_EQ(label, wanted) << what << ' ' << j;
        ASSERT_NEAR(r.info.refl_position[j], m.True(m.all[j].position), 1e-4 + 4e-7 * m.start) << what << ' ' << j;
        ASSERT_EQ(r.info.refl_phase[j], m.all[j].phase) << what << ' ' << j;
        ASSERT_EQ(r.info.refl_code[j], m.all[j].phase) << what << ' ' << j;
        ASSERT_EQ(r.info.refl_tag[j] > 0, vector > 0) << what << ' ' << j;
    }
    std::size_t extent = 1;
    for (const auto& of_phase : m.vectors) extent = std::max(extent, of_phase.size());
    for (std::size_t p = 0; p < m.phases.size(); ++p) {
        EXPECT_EQ(static_cast<int>(r.info.phase_value.at(p)), Size(m.phases[p])) << what;
        for (std::size_t v = 0; v < m.vectors[p].size(); ++v)
            for (std::size_t i = 0; i < 3; ++i)
                EXPECT_NEAR(r.info.phase_table.at(i + 3 * (v + extent * p)), m.vectors[p][v][i], 1e-5) << what << ' ' << p << ' ' << v;
    }
    ASSERT_EQ(r.info.nexcl, Size(m.excluded)) << what;
    for (std::size_t i = 0; i < m.excluded.size(); ++i) {
        EXPECT_NEAR(r.info.excl_min[i], m.True(m.excluded[i].first), 1e-5) << what;
        EXPECT_NEAR(r.info.excl_max[i], m.True(m.excluded[i].second), 1e-5) << what;
    }
    EXPECT_EQ(r.pattern.scat_var, m.flight ? "TOF" : "2theta") << what;
    EXPECT_FLOAT_EQ(r.pattern.conv[0], static_cast<float>(m.flight ? m.cosine : m.lambda1)) << what;
    EXPECT_FLOAT_EQ(r.pattern.conv[1], static_cast<float>(m.flight ? m.sine : m.lambda2)) << what;
}

Model Flight_Model() {
    Model m = Make_Model(2, 9, false);
    m.flight = true;
    m.start = 2000, m.step = 7.5, m.zero = 3.5, m.cosine = 7476.9, m.sine = -1.9;
    m.excluded = {{2100, 2200}};
    for (auto& r : m.all) r.position = 2000 + 150 * (r.position - 10);
    m.phases = {{m.all.begin(), m.all.begin() + 9}, {m.all.begin() + 9, m.all.end()}};
    return m;
}

TEST_F(Prf, EveryLayoutGivesTheModelBack) {
    for (const int phases : {1, 2, 3, 4, 5, 6, 7, 8, 9, 12})
        for (const bool vectors : {false, true}) {
            const std::string what = std::to_string(phases) + (vectors ? " phases with vectors" : " phases");
            Model m = Make_Model(phases, 5 + 80 / phases, vectors, 900);
            if (phases == 2) m.excluded.clear();
            if (phases == 4) m.zero = 0.25, m.cosine = m.sine = 0;  // all x, and the regions, shift by the zero
            Expect_Model(m, Read(Whole(Classic(m)), what), false, true, what + ", classic");
            Expect_Model(m, Read(Whole(Classic(m, true)), what), false, true, what + ", classic, narrow counts");
            for (const bool beside : {false, true})
                for (const int words : {7, 8})
                    Expect_Model(m, Read(Whole(Columns(m, words, beside)), what), true, false, what + (beside ? " beside" : " behind"));
            m.superspace = vectors;
            if (vectors) Expect_Model(m, Read(Whole(Columns(m)), what), true, false, what + ", superspace");
        }
    const Model m = Flight_Model();
    for (const bool beside : {false, true}) Expect_Model(m, Read(Whole(Columns(m, 8, beside)), "flight"), true, false, "time of flight");
}

TEST_F(Prf, RowsUnderNamedHeadsGiveTheModelBack) {
    const Rows layouts[] = {{},
                            {.tag = false, .colon = true},
                            {.beside = true},
                            {.beside = true, .tag = false, .apart = true},
                            {.colon = true, .apart = true},
                            {.number = "%.2f", .x = "%.5f"},
                            {.beside = true, .number = "%14.3f", .x = "%14.5f"}};
    for (const int phases : {1, 2, 5, 9, 12})
        for (const bool vectors : {false, true}) {
            Model m = Make_Model(phases, 5 + 80 / phases, vectors, 900);
            if (phases == 5) m.excluded.clear();
            Sort_Reflections(m);
            Model flight = Flight_Model();
            Sort_Reflections(flight);
            for (const Rows& rows : layouts) {
                const std::string what = std::to_string(phases) + (vectors ? " phases with vectors " : " phases ") + rows.x +
                                         (rows.beside ? " beside" : " behind") + (rows.tag ? " tag" : " phase");
                Expect_Model(m, Read(Whole(Field_Rows(m, rows)), what), true, rows.tag, what);
                if (phases == 1) Expect_Model(flight, Read(Whole(Field_Rows(flight, rows)), what), true, rows.tag, what + " of flight");
            }
        }
}

// Written by hand: two phases of which one has magnetic tags; wide numbers; blanks alone; indices that touch; vectors numbered by "K".
TEST_F(Prf, RowsUnderNamedHeadsByHand) {
    const std::string top = "PbSO4 and an impurity CELL: 8.48 Chi2: 1.9\n  2  3  1.540560  1.544390  0.0  0.0  0.0\n";
    const std::string heads = " 2Theta\tYobs\tYcal\tYobs-Ycal\tBackg\tPosr\t(hkl)\tK\n";
    const std::string points =
        "     10.0000\t123456789.0\t   120.0\t    -5.0\t    80.0\n 10.5 1 2 3 4\n     11.0000\t   125.0\t   121.0\t    -5.0\t"
        "    81.0\n";
    const std::string rows =
        "     10.2000\t        \t        \t        \t        \t       0\t(  1  0  1)\t  0  1\n"
        "     10.4000\t        \t        \t        \t        \t   -1262\t(-10-11-12)\t  2  2\n"
        "     10.4000    -1262  (  0  0 12)  0  1\n";
    const auto r = Read(top + " 1 2 0 0 0\n" + heads + points + rows, "by hand");
    ASSERT_TRUE(r.status.ok()) << r.status.message;
    EXPECT_EQ(r.pattern.x, (std::vector<float>{10, 10.5f, 11}));
    EXPECT_EQ(r.pattern.y, (std::vector<float>{123456789.0f, 1, 125}));
    EXPECT_EQ(r.pattern.bgr, (std::vector<float>{80, 4, 81}));
    EXPECT_EQ(r.info.refl_position, (std::vector<float>{10.2f, 10.4f, 10.4f}));
    EXPECT_EQ(r.info.refl_code, (std::vector<std::int32_t>{1, 2, 2}));
    EXPECT_EQ(r.info.refl_label,
              (std::vector<std::string>{"(  1  0  1) ph: 1  Lambda:  1", "(-10-11-12) ph: 2 -> Mag.", "(  0  0 12) ph: 2  Lambda:  1"}));
    EXPECT_EQ(r.info.nexcl, 0);

    // The count of regions ends the line of phases, and its regions stand before the vector or behind it. "K" 0: of no vector.
    for (const std::string between : {"0.5 0 0.25\n0.000 10.200\n", "0.000 10.200\n0.5 0 0.25\n"}) {
        const auto k = Read(
            top + "1 2 0 1 1\n" + between + heads + points + Replace_All(Replace_All(rows, "2  2", "0  1"), "0 12)  0  1", "0 12)  0  0"),
            between);
        ASSERT_TRUE(k.status.ok()) << k.status.message;
        EXPECT_EQ(k.info.nexcl, 1) << between;
        EXPECT_FLOAT_EQ(k.info.excl_max[0], 10.2f) << between;
        EXPECT_EQ(k.info.refl_label[1], "(-10-11-12) ph: 2, nvk[ 0.5000 0.0000 0.2500]  ") << between;
        EXPECT_EQ(k.info.refl_label[2], "(  0  0 12) ph: 2") << between;
        EXPECT_EQ(k.info.refl_tag, (std::vector<float>{0, 1, 0})) << between;
    }

    const std::pair<std::string, std::string> disagree[] = {
        {" 2 1 0 0 0\n", ": phase 1 has 2 reflections on the line of phases, 1 on its level of Posr"},
        {" 3 0 0 0 0\n", ": the line of phases has 1 phase with reflections, the column Posr 2 levels"},
        {" 1 1 0 0 0\n", ": the line of phases has 2 reflections, the rows have 3"},
        {" 1 3 0 0 0\n", ": the line of phases has 4 reflections, the rows have 3"},
    };
    for (const auto& [counts, message] : disagree)
        EXPECT_EQ(Read(top + counts + heads + points + rows, message).status.message, "Error reading reflections for Prf=+3" + message);
}

TEST_F(Prf, LineEndsTitlesAndHeads) {
    Model m = Make_Model(3, 10, true, 60);
    for (const Prf_File& file : {Classic(m), Columns(m), Columns(m, 8, true)}) {
        const Read_Result plain = Read(Whole(file), "");
        EXPECT_FLOAT_EQ(plain.pattern.TSample, 293.5f);
        EXPECT_FLOAT_EQ(plain.info.chi2, 2.375f);
        for (const auto& [name, text] : Habits(Whole(file))) {
            EXPECT_EQ(Read(text, name).pattern.x, plain.pattern.x) << name;
            EXPECT_EQ(Read(text, name).info.refl_label, plain.info.refl_label) << name;
        }
    }
    const struct {
        const char *line, *title;
        float temperature, chi2;
    } titles[] = {{"Title:Nickel at dawn", "Nickel at dawn", 0, 0},
                  {"   Nickel  TEMP: cold Chi2: none", "Nickel  TEMP: cold Chi2: none", 0, 0},
                  {"Nickel TEMP: 77.25 Chi2:  1.5", "Nickel TEMP: 77.25 Chi2:  1.5", 77.25f, 1.5f}};
    for (const auto& t : titles) {
        m.title = t.line;
        const auto r = Read(Whole(Classic(m)), t.line);
        EXPECT_EQ(Trim_Right(r.pattern.title), t.title);
        EXPECT_FLOAT_EQ(r.pattern.TSample, t.temperature) << t.line;
        EXPECT_FLOAT_EQ(r.info.chi2, t.chi2) << t.line;
    }
    const auto lattice = Read(Whole(Columns(m, 7, false, "r.l.u. Yobs")), "").pattern;
    EXPECT_EQ(lattice.scat_var, "r.l.u.");
    EXPECT_EQ(lattice.legend_x, "Reciprocal Lattice Units (r.l.u.)");
    EXPECT_EQ(lattice.legend_y, " Intensity (arb. units)");
    EXPECT_EQ(Read(Whole(Columns(m, 7, true, "Log(Yobs)")), "").pattern.legend_y, "Log(Intensity)(arb. units)");
}

// Worked out apart from the bits; some have fields that a width of three does not hold. Phase 0: not looked at.
TEST_F(Prf, ACodeHoldsIndicesWavelengthAndPhase) {
    const struct {
        std::int32_t code;
        const char* indices;
        int lambda, phase;
    } table[] = {{159482241, "(  1  1  1)", 1, 1},  {142639232, "(  0  0  0)", 0, 1},   {8421504, "(  0  0  0)", 0, 0},
                 {-142639232, "(  0  0  0)", 0, 9}, {-276856960, "(  0  0  0)", 0, 10}, {-1, "(******127)", 0, 0},
                 {-65536, "(127******)", 0, 0},     {2147483647, "(127127127)", 7, 0},  {-125862784, "(  0 -3  0)", 1, 0}};
    Prf_File file = Classic(Make_Model(12, 2, false, 40));
    for (Piece& piece : file)
        for (std::size_t i = 0; i < std::size(table) && piece.fault.ends_with("codes"); ++i)
            piece.text.replace(10 * i + i / 8, 10, Form("%10d", table[i].code));
    const auto r = Read(Whole(file), "codes");
    ASSERT_TRUE(r.status.ok()) << r.status.message;
    for (std::size_t i = 0; i < std::size(table); ++i) {
        const std::string label(Trim_Right(r.info.refl_label[i]));
        EXPECT_EQ(label.substr(0, 11), table[i].indices) << table[i].code;
        EXPECT_TRUE(label.ends_with(Form("  Lambda: %2d", table[i].lambda))) << table[i].code << ' ' << label;
        EXPECT_TRUE(table[i].phase == 0 || table[i].phase == r.info.refl_phase[i]) << table[i].code;
    }
}

TEST_F(Prf, PeaksIntegratedIntensitiesAndPairs) {
    Model m = Make_Model(1, 12, false, 80);
    m.zero = m.cosine = m.sine = 0;
    for (const auto& [second, extension] : {std::pair{"xrft", ".prf"}, {"anything", ".xrf"}, {"3111", ".XRF"}}) {
        const auto r = Read(Whole(Peak_Fit(m, second)), second, extension);
        Expect_Points(m, r, true, second);
        ASSERT_EQ(r.info.nreflections, 12) << second;
        EXPECT_EQ(r.pattern.scat_var, "2theta");
        EXPECT_EQ(r.pattern.legend_y, "Intensity (arb.units)");
        for (std::size_t i = 0; i < 12; ++i) {
            EXPECT_NEAR(r.info.refl_position[i], m.all[i].position, 1e-4);
            EXPECT_NE(r.info.refl_label[i].find(" Int.:    1000.5 Fwhm:    0.25 Eta:  0.500"), std::string::npos) << r.info.refl_label[i];
            EXPECT_NE(r.info.refl_label[i].find(Form("peak %zu)", i)), std::string::npos) << r.info.refl_label[i];
        }
    }
    const auto pixels = Read(Replace_All(Whole(Peak_Fit(m)), "  2theta", " Distance"), "").pattern;
    EXPECT_EQ(pixels.scat_var + pixels.legend_x, "DistanceDistance (Pixels)");

    const auto single = Read(Whole(Integrated(m)), "integrated");
    ASSERT_TRUE(single.status.ok()) << single.status.message;
    EXPECT_EQ(std::string(Told(single.info.kind)) + single.pattern.scat_var, "MONOmono");
    ASSERT_EQ(single.info.nreflections, single.pattern.npts);
    ASSERT_EQ(single.pattern.npts, 12);
    for (std::size_t i = 0; i < 12; ++i) {
        EXPECT_NEAR(single.pattern.x[i], m.X(i) / 100, 1e-6);
        EXPECT_EQ(single.info.refl_position[i], single.pattern.x[i]);
        EXPECT_EQ(single.pattern.y[i], m.y[i]);
        EXPECT_EQ(single.pattern.ycalc[i], m.ycalc[i]);
        EXPECT_FLOAT_EQ(single.pattern.sigma_is_variance ? std::sqrt(single.pattern.sigma[i]) : single.pattern.sigma[i], 3.5f);
        EXPECT_EQ(single.info.refl_label[i].substr(0, 17), Label_Of(m, m.all[i], 0).substr(0, 17));
    }
    const auto pairs = Read(Whole(Pair_Distribution(m)), "pairs");
    ASSERT_TRUE(pairs.status.ok()) << pairs.status.message;
    EXPECT_EQ(pairs.pattern.scat_var, "Distance");
    ASSERT_EQ(pairs.pattern.npts, 80);
    for (std::size_t i = 0; i < 80; ++i) {
        EXPECT_NEAR(pairs.pattern.x[i], m.X(i), 1e-4);
        EXPECT_NEAR(pairs.pattern.y[i], m.y[i] / 10, 0.02);
        EXPECT_NEAR(pairs.pattern.ycalc[i], m.ycalc[i] / 10, 0.02);
        EXPECT_NEAR(pairs.pattern.bgr[i], m.bgr[i] / 10, 0.02);
    }
}

TEST_F(Prf, EveryMessage) {
    const Model few = Make_Model(4, 6, true, 30), many = Make_Model(11, 3, true, 30);
    for (const Prf_File& file : {Classic(few), Classic(many), Columns(few), Columns(many), Columns(few, 8, true), Peak_Fit(few),
                                 Field_Rows(few, {.apart = true}), Field_Rows(many, {.beside = true})})
        for (auto at = file.begin(); at != file.end(); ++at) {
            const std::string before = Whole({file.begin(), at}), after = Whole({at + 1, file.end()});
            const std::string cut = Read(before, at->fault).status.message;  // or what the head promises is more than the file holds
            EXPECT_TRUE(cut.starts_with(at->fault) || cut.find("more than") != std::string::npos) << at->fault << " but " << cut;
            const std::string letters = "no numbers but a long line of letters, which goes on and on in every field\n" + at->text;
            EXPECT_TRUE(at->words || Read(before + letters + after, "").status.message.starts_with(at->fault)) << at->fault;
        }
    const std::string good = Whole(Columns(few)), eight = Whole(Columns(few, 8)), classic = Whole(Classic(few)), fit = Whole(Peak_Fit(few));
    const std::string heads = good.substr(good.find(" 2Theta"), 53), points = Form("%3d%7d", 4, 30), none = Form("%3d%7d", 4, 0);
    const std::pair<std::string, std::string> faults[] = {
        {"IGOR" + good, "ERROR: file type IGOR"},
        {Replace_All(good, heads, heads.substr(0, 50)), "Error! Prf is not => Prf=+3 or Prf=-3!Line read: " + heads.substr(0, 50)},
        {Replace_All(good, points, none), "ERROR Format Special: npts <= 0"},
        {Replace_All(good, points, Form("%3d%7d", 4, -7)), "ERROR Format Special: npts <= 0"},
        {Replace_All(classic, points, none), "ERROR: npts <= 0"},
        {Replace_All(good, points, points + " 3 3"), "Error in number of columns"},
        {Replace_All(good, points, "  x     30"), "Error reading (col=7): nphases,npts,lambda1,lambda2, glb1, ..."},
        {Replace_All(eight, points, "  x     30"), "Error reading (col=8): nphases,npts,lambda1,lambda2, glb1, ..."},
        {Replace_All(good, "phase: 4\n", "phase: 4\nno numbers\n"), "Error reading reflections for Prf=+3 "},
        {Replace_All(fit, "points:", "points"), "ERROR: Reading npts in XRF file, ':' is missing!"},
        {Replace_All(fit, "points:", "points: x"), "ERROR: Reading npts in XRF file"},
        {Replace_All(fit, "peaks:", "peaks"), "ERROR: Reading npeaks in XRF file, ':' is missing!"},
        {Replace_All(fit, "peaks:", "peaks: x"), "ERROR: Reading npeaks in XRF file"},
    };
    for (const auto& [text, message] : faults) EXPECT_EQ(Replace_All(Read(text, message).status.message, "\n", ""), message);
    Diffraction_Pattern_Type p;
    PRF_Info_Add_Type info;
    EXPECT_EQ(Read_Prf((directory / "absent.prf").string(), p, info).message, "ERROR 00: File not found");
    EXPECT_TRUE(Read_Prf(directory.string(), p, info).failed);
}

// Cut at each line, lines shuffled, bytes changed, and each number of the head replaced by ones that promise too much.
TEST_F(Prf, NoFileIsTrusted) {
    Model m = Make_Model(3, 5, true, 24), waves = m, many = Make_Model(9, 2, false, 24);
    waves.superspace = true;
    std::mt19937 random(7);
    for (const Prf_File& file : {Classic(m), Classic(many), Columns(m), Columns(many), Columns(waves), Columns(m, 8, true), Peak_Fit(m),
                                 Field_Rows(m, {}), Field_Rows(many, {.beside = true}), Integrated(m), Pair_Distribution(m)}) {
        const std::string text = Whole(file);
        std::vector<std::string> lines;
        for (std::size_t from = 0; from < text.size(); from += lines.back().size()) {
            lines.push_back(text.substr(from, text.find('\n', from) + 1 - from));
            Read(text.substr(0, from), file[1].text + "cut");
        }
        for (int i = 0; i < 40; ++i) {
            auto shuffled = lines;
            std::shuffle(shuffled.begin() + (i % 2 == 0 ? 2 : 0), shuffled.end(), random);
            std::string mixed, noisy = text;
            for (const auto& line : shuffled) mixed += line;
            for (int k = 0; k < 1 << (i % 8); ++k) noisy[random() % noisy.size()] = static_cast<char>(random());
            Read(mixed, file[1].text + "shuffled");
            Read(noisy, file[1].text + "noise");
        }
        const auto blank = [&](std::size_t i) { return text[i] == ' ' || text[i] == '\n'; };
        for (std::size_t end = lines[0].size() + 1; end < std::min<std::size_t>(text.size(), 900); ++end)
            for (const std::string bad : {"0", "-1", "17", "99999", "1000000000", "-2147483648", "NaN", "x"}) {
                if (blank(end - 1) || !blank(end)) continue;  // the right end of a number stays where it was
                std::string hostile = text;
                hostile.replace(end - bad.size(), bad.size(), bad);
                for (std::size_t i = end - bad.size(); i > 0 && !blank(i - 1); --i) hostile[i - 1] = ' ';
                Read(hostile, file[1].text + bad + " before " + std::to_string(end));
            }
    }
    Read("t\n# R\n Pairs: /etc/hostname\n Pairs: ../nothing\n Pairs\n1 2 3 4\n2 3 4 5\n", "pairs");
    Read(std::string(1 << 20, '\n'), "blank lines");
    Read("t\n3111\n" + std::string(1 << 20, '9'), "one long line");
}

// The files of pairs stand beside the profile. A name that leads elsewhere is refused before anything is opened, good as that file may be.
TEST_F(Prf, PairsComeFromTheSameDirectoryAlone) {
    const std::string pairs = "pairs: 2\n1.6 4\n2.6 12\n", profile = "title\n# R   G\n# Pairs Si-O: ", numbers = "\n1 2 3 4\n2 3 4 5\n";
    const auto inner = directory / "inner";
    std::filesystem::create_directories(inner);
    for (const auto& place : {directory / "good.txt", inner / "good.txt"}) std::ofstream(place) << pairs;
    const Read_Result good = Read(profile + "good.txt" + numbers, "beside");
    ASSERT_TRUE(good.status.ok()) << good.status.message;
    EXPECT_EQ(good.info.nreflections, 2);
    for (const std::string& name : {std::string("inner/good.txt"), "../" + directory.filename().string() + "/good.txt",
                                    (directory / "good.txt").string(), std::string("./good.txt")}) {
        const Read_Result refused = Read(profile + name + numbers, name);
        EXPECT_TRUE(refused.status.failed) << name;
        EXPECT_NE(refused.status.message.find("is no name of a file beside this one"), std::string::npos) << refused.status.message;
    }
}

}  // namespace
}  // namespace vntl::test
