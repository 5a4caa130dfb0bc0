// Series of fits: the two texts of their table, and the loop over patterns of a peak that wanders.
#include "fit/series_table.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <sstream>

#include "fit/fit_series.hpp"

namespace vntl {
namespace {

using Texts = std::vector<std::string>;

Series_Table A_Table() {
    const float nan = std::nanf("");
    return {{"Bragg_Pos_1", "Intensity_1"},
            {{3, "a, \"b\".xye", 300, 1.0342f, true, true, {5.31f, 6.02f, 5.92f}, {{21.3581238f, 0.000421f}, {-1.5e-7f, 250000}}},
             {12, "N_PATT 7 NPHASE.dat", 0.0001f, 2, false, false, {nan, 1, 2}, {{20.1f, 0}, {3, 0}}}}};
}

TEST(Series_Table, CsvForSpreadsheets) {
    EXPECT_EQ(Csv_Text(A_Table()),
              "row,file,temperature,chi2,converged,Bragg_Pos_1,sd(Bragg_Pos_1),Intensity_1,sd(Intensity_1)\n"
              "3,\"a, \"\"b\"\".xye\",300,1.0342,1,21.358124,0.000421,-1.5e-07,250000\n"
              "12,N_PATT 7 NPHASE.dat,,2,0,20.1,,3,\n");
}

// The layout that readers of sequential refinements count on: lines at fixed places behind the one that opens a block, four words a
// parameter, 132 characters a line; a keyword stands first on its own line, whatever files are called.
TEST(Series_Table, BlocksOfASequentialRefinement) {
    Series_Table table = A_Table();
    EXPECT_EQ(Seq_Text(table),
              "NEW_REFINEMENT Series of fits\nNUMPAR 2\nN_PATT 1\nNPHASE 1\n\"a, 'b'.xye\" 3 300.0000\nGLOBAL_CHI_2 1.0342\n"
              "R_FACTOR Rfact 5.31 0\nR_FACTOR Rwfact 6.02 0\nR_FACTOR Rex 5.92 0\n"
              "PARAMETER Bragg_Pos_1 21.358124 0.000421\nPARAMETER Intensity_1 -1.5e-07 250000\n"
              "NEW_REFINEMENT Series of fits\nNUMPAR 2\nN_PATT 1\nNPHASE 1\n\"N_PATT 7 NPHASE.dat\" 12 0.0000\nGLOBAL_CHI_2 2\n"
              "R_FACTOR Rfact 0 0\nR_FACTOR Rwfact 1 0\nR_FACTOR Rex 2 0\n"
              "PARAMETER Bragg_Pos_1 20.1 0\nPARAMETER Intensity_1 3 0\n");
    table.fits[0].file += std::string(200, 'x');
    std::istringstream lines(Seq_Text(table));
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 132u);
}

// --- the loop ----------------------------------------------------------------------------------------------------------------------

constexpr float fwhm = 0.1f, area = 800, level = 100, step = 0.06f;
constexpr int patterns = 8;

float Place_In(int i) { return 20 + step * static_cast<float>(i); }

// Counts of a Gaussian peak on a level background.
Diffraction_Pattern_Type Simulated(float position, unsigned seed) {
    Diffraction_Pattern_Type pattern;
    std::mt19937 engine(seed);
    for (int i = 0; i <= 300; ++i) {
        const double x = 19 + 0.01 * i, u = (x - position) / fwhm;
        const double mean = level + area * std::sqrt(4 * std::log(2) / M_PI) / fwhm * std::exp(-4 * std::log(2) * u * u);
        const auto n = static_cast<float>(std::poisson_distribution<int>(mean)(engine));
        pattern.x.push_back(static_cast<float>(x));
        pattern.y.push_back(n);
        pattern.sigma.push_back(n);
    }
    pattern.TSample = 300 + position;
    return pattern;
}

Series_Model Model_At(float position) {
    Series_Model model;
    model.nodes = {{19.2f, level, 1, 0}, {21.8f, level, 1, 0}};
    Fit_State& fit = model.state;
    fit.x_ini = 19.2f, fit.x_fin = 21.8f;
    fit.lambda1 = fit.lambda2 = 1.54f;
    Fit_Peak peak;
    peak.pos = {position, 1, 0};
    peak.intensity = {area, 1, 0};
    peak.shift_width = {fwhm, 1, 0};
    fit.peaks = {peak};
    return model;
}

// Cancels when so many rows are done.
class Counted : public Progress {
public:
    explicit Counted(int most) : most_(most) {}
    bool Go_On(int done, std::string_view) override {
        cancelled_ = cancelled_ || done >= most_;
        return !cancelled_;
    }
    bool Cancelled() const override { return cancelled_; }

private:
    int most_;
    bool cancelled_ = false;
};

class Fit_Series_Test : public testing::Test {
protected:
    Fit_Series_Test() {
        for (int i = 0; i < patterns; ++i) records.push_back(Simulated(Place_In(i), static_cast<unsigned>(i)));
        for (int i = 0; i < patterns; ++i)
            rows.push_back({i + 1, "p" + std::to_string(i) + ".xye", &records[static_cast<std::size_t>(i)], Fit_Kind::constant_wavelength});
    }
    Series_Result Run(Series_Start start, int at_once = 1, int most = 1000) const {
        Counted progress(most);
        return Fit_Series(Model_At(Place_In(0)), rows, start, at_once, progress);
    }
    // Whether the fit of a row has found its peak.
    static bool Found(const Series_Fit& fit) {
        const Series_Value position = fit.values[2];  // behind the two nodes
        return fit.chi2 < 1.4f && std::fabs(position.value - Place_In(fit.row - 1)) < 4 * position.sd + 1e-5f;
    }
    std::vector<Diffraction_Pattern_Type> records;
    std::vector<Series_Row> rows;
};

TEST_F(Fit_Series_Test, EachStartsFromTheResultBeforeOrFromTheModel) {
    const Series_Result followed = Run(Series_Start::result_before);
    EXPECT_EQ(followed.table.names, (Texts{"background_1", "background_2", "Bragg_Pos_1", "Intensity_1", "Shf_Gamma_1"}));
    ASSERT_EQ(followed.table.fits.size(), static_cast<std::size_t>(patterns));
    for (const Series_Fit& fit : followed.table.fits) {
        EXPECT_TRUE(Found(fit) && fit.converged && fit.has_deviations) << fit.row << ' ' << fit.chi2 << ' ' << fit.values[2].value;
        EXPECT_NEAR(fit.agreement.rwfact / fit.agreement.rex, std::sqrt(fit.chi2), 1e-3);
        EXPECT_EQ(fit.temperature, 300 + Place_In(fit.row - 1));
    }
    // From the first values the peak is found while they overlap it, and lost four widths away.
    for (const int at_once : {1, 3}) {
        const Series_Result alone = Run(Series_Start::model, at_once);
        ASSERT_EQ(alone.table.fits.size() + alone.failures.size(), static_cast<std::size_t>(patterns));
        EXPECT_TRUE(Found(alone.table.fits[0]) && Found(alone.table.fits[1]));
        EXPECT_FALSE(alone.table.fits.back().row == patterns && Found(alone.table.fits.back()));
        EXPECT_EQ(alone.table.fits[0].values[2].value, followed.table.fits[0].values[2].value);
        EXPECT_TRUE(std::ranges::is_sorted(alone.table.fits, {}, &Series_Fit::row));
    }
}

// A row that fails has its reason, and the next one starts from the last that did not.
TEST_F(Fit_Series_Test, RowsThatFailAreNamedAndPassedOver) {
    records[1].y[150] = std::nanf("");
    records[2].x.assign(records[2].x.size(), 50);
    rows[3].kind = Fit_Kind::time_of_flight;
    rows[4].kind.reset();
    records[5] = Simulated(Place_In(1), 1);
    for (std::vector<float>* values : {&records[6].x, &records[6].y, &records[6].sigma})
        *values = {values->begin() + 22, values->begin() + 26};  // fewer points inside of the window than parameters
    for (const Series_Start start : {Series_Start::result_before, Series_Start::model}) {
        const Series_Result result = Run(start, 2);
        const std::pair<int, const char*> reasons[] = {{2, "is no number"},
                                                       {3, "There are no points between 19.2 and 21.8"},
                                                       {4, "not one for this type"},
                                                       {5, "not one for this type"},
                                                       {7, "Improper input"}};
        ASSERT_GE(result.failures.size(), std::size(reasons));
        for (std::size_t i = 0; i < std::size(reasons); ++i) {
            EXPECT_EQ(result.failures[i].row, reasons[i].first);
            EXPECT_NE(result.failures[i].why.find(reasons[i].second), std::string::npos) << result.failures[i].why;
            EXPECT_EQ(result.failures[i].why.find("ERROR"), std::string::npos);
        }
        ASSERT_GE(result.table.fits.size(), 2u);
        EXPECT_EQ(result.table.fits[1].row, 6);
        EXPECT_NEAR(result.table.fits[1].values[2].value, Place_In(1), 4 * result.table.fits[1].values[2].sd);
    }
}

TEST_F(Fit_Series_Test, CancellingKeepsWhatIsFinished) {
    for (const Series_Start start : {Series_Start::result_before, Series_Start::model})
        for (const int most : {0, 3}) {
            const Series_Result result = Run(start, 2, most);
            EXPECT_LE(static_cast<int>(result.table.fits.size()), most + 1);  // one may end before it hears
            EXPECT_GE(static_cast<int>(result.table.fits.size()), most);
            EXPECT_EQ(result.not_tried + static_cast<int>(result.table.fits.size() + result.failures.size()), patterns);
        }
}

}  // namespace
}  // namespace vntl
