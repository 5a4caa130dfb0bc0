// RAW and RD, the binary files of diffractometers: real ones against exports of the same scans and what their heads tell beside the points,
// files written byte by byte from the layouts, and both of them cut anywhere.
#include <algorithm>
#include <numeric>

#include "patterns/lab/bruker_raw.hpp"
#include "patterns/lab/philips_rd.hpp"
#include "patterns/lab/rigaku_raw.hpp"
#include "patterns/lab/stoe_raw.hpp"
#include "patterns/lab_bytes.hpp"
#include "patterns/reading.hpp"
#include "patterns/recognise.hpp"
#include "patterns/uxd.hpp"
#include "patterns/xysigma.hpp"

namespace vntl::test {
namespace {

using Patterns = std::vector<Diffraction_Pattern_Type>;

Read_All Reader_Of(std::string_view bytes) {
    switch (Certain_Format(bytes.substr(0, 8192))) {
        case 16:
            return Read_Bruker_Raw;
        case 17:
            return Read_Stoe_Raw;
        case 18:
            return Read_Rigaku_Raw;
        case 25:
            return Read_Philips_Rd;
        default:
            return nullptr;
    }
}

// By the reader that takes the file for its own.
Reading Read(const std::string& bytes) {
    const Read_All reader = Reader_Of(bytes);
    return reader == nullptr ? Reading{Status::Fail("not recognised"), {}, {}} : Read_By(reader, bytes);
}

// The pattern of that number, an empty one where there is none.
Diffraction_Pattern_Type At(const Reading& read, std::size_t i) {
    EXPECT_TRUE(read.status.ok()) << read.status.message;
    EXPECT_LT(i, read.patterns.size());
    return i < read.patterns.size() ? read.patterns[i] : Diffraction_Pattern_Type{};
}

struct Real_Range {
    const char* file;
    std::size_t range;
    int npts;
    float first, last;
    std::vector<float> y;
    float ymin, ymax;  // 0 where nothing tells them
    float alpha1, time;
    const char* title;
};

TEST(Raw_Files, RealOnesHoldWhatIsKnownOfThem) {
    const Real_Range known[] = {
        {"siemens_raw1.raw", 0, 876, 4.98f, 39.98f, {665, 632, 637}, 0, 0, 1.5406f, 4, "VINAIGRE"},
        {"siemens_raw2.raw", 0, 7251, 5, 150, {222, 187, 198}, 0, 0, 1.5406f, 3, "ZINCITE.DAT"},
        {"bruker_raw101_psd_supplement.raw", 0, 2374, 3, 40.00029f, {187, 183, 178}, 0, 0, 1.5406f, 0.5f, "BT86"},
        {"bruker_raw101_three_ranges.raw", 1, 26, 30, 35, {6, 4, 5}, 0, 0, 1.5406f, 0.2f, nullptr},
        {"bruker_raw101_three_ranges.raw", 2, 51, 40, 45, {4, 5, 3}, 0, 0, 1.5406f, 0.1f, nullptr},
        {"bruker_raw101_cobalt_a.raw", 0, 3651, 2, 75, {2230, 2012, 1950}, 0, 0, 1.78897f, 2, "NIPS PROJECT neat spray dreid"},
        {"bruker_raw400_lynxeye.raw", 0, 1399, 10.0001f, 59.98753f, {1493, 1492, 1385}, 0, 0, 1.5406f, 76.8f, "SRL-I-49_SbI3"},
        {"bruker_raw400_record8_refined.raw", 0, 7134, 10, 85.0413f, {283.769f, -164.534f, -164.534f}, 0, 0, 1.5406f, 310.003f, nullptr},
        {"rigaku_binary_fi.raw", 0, 4501, 10, 100, {1158, 1129, 1105}, 0, 0, 1.54056f, 0, "TEST SAMPLE"},
        {"rigaku_text_raw_cr.raw", 0, 1701, 20, 105, {109, 108, 108}, 0, 2009, 1.540598f, 8, "CR16NI4, example"},
        {"stoe_raw106.raw", 0, 5404, 10, 91.045f, {4213, 4179, 4109}, 1129, 5824, 1.20793f, 352, "This file has no Title"},
        {"philips_v3_continuous.rd", 0, 600, 3.01f, 14.99f, {92.16f, 121, 112.36f}, 0, 0, 1.5406f, 0, "12-644 clay form"}};
    for (const Real_Range& real : known) {
        const std::string bytes = Real_File(std::string("formats/samples/") + real.file);
        if (bytes.empty()) GTEST_SKIP();
        const Reading read = Read(bytes);
        const auto p = At(read, real.range);
        EXPECT_TRUE(read.notes.failed.empty() && read.notes.warnings.empty()) << real.file;
        ASSERT_EQ(p.npts, real.npts) << real.file;
        EXPECT_EQ(p.npts_claimed, 0) << real.file;
        EXPECT_NEAR(p.x.front(), real.first, 1e-5) << real.file;
        EXPECT_NEAR(p.x.back(), real.last, 2e-5) << real.file;
        for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(p.y[i], real.y[i], 1e-3) << real.file;
        EXPECT_TRUE(real.ymin == 0 || real.ymin == p.ymin) << real.file;
        EXPECT_TRUE(real.ymax == 0 || real.ymax == p.ymax) << real.file;
        EXPECT_NEAR(p.conv[0], real.alpha1, 1e-5) << real.file;
        EXPECT_NEAR(p.count_time, real.time, 1e-3) << real.file;
        EXPECT_TRUE(real.title == nullptr || p.title == real.title) << p.title;
        EXPECT_TRUE(p.scat_var.empty()) << real.file;
        EXPECT_EQ(p.TSample, 0) << real.file;
    }
}

TEST(Raw_Files, RealOnesEqualTheirExports) {
    const struct {
        const char *raw, *other;
        bool uxd;
        float seconds;  // of what the other one was divided by
        double near;
    } pairs[] = {{"bruker_raw101_psd_supplement.raw", "bruker_raw101_psd_supplement_export.uxd", true, 1, 0},
                 {"bruker_raw101_cobalt_a.raw", "bruker_raw101_cobalt_a_export.xy", false, 1, 0},
                 {"bruker_raw400_lynxeye.raw", "bruker_raw400_lynxeye_export_cps.xy", false, 76.8f, 0.05}};
    for (const auto& pair : pairs) {
        const std::string bytes = Real_File(std::string("formats/samples/") + pair.raw);
        if (bytes.empty()) GTEST_SKIP();
        const auto p = At(Read(bytes), 0);
        Diffraction_Pattern_Type other;
        const std::string text = Real_File(std::string("formats/samples/") + pair.other);
        ASSERT_TRUE((pair.uxd ? Read_Uxd(text, other) : Read_Xysigma(text, false, other)).ok());
        ASSERT_GE(other.npts, p.npts - 1);
        for (std::size_t i = 0; i < std::min(p.x.size(), other.x.size()); ++i) {
            ASSERT_NEAR(p.x[i], other.x[i], 6e-4) << pair.raw << ' ' << i;
            ASSERT_NEAR(p.y[i], other.y[i] * pair.seconds, pair.near) << pair.raw << ' ' << i;
            ASSERT_EQ(p.sigma[i], p.y[i]);
        }
    }
}

TEST(Raw_Files, OldVersionsHoldRangesBehindOneAnother) {
    const std::string last = Raw_1_Block({7, 8}, 40, 0), first = Raw_1_Block({1, 2, 3}, 20, 1);
    for (const std::string& file : {first + last, first + last.substr(4), Raw_1_Block({1, 2, 3}, 20, 0) + last}) {
        const Reading read = Read(file);
        const auto p = At(read, 1);
        EXPECT_EQ(read.patterns.size(), 2u);
        EXPECT_EQ(p.x, (std::vector<float>{40, 40.25f}));
        EXPECT_EQ(p.y, (std::vector<float>{7, 8}));
        EXPECT_EQ(p.title, "Vinegar, range 2");
        EXPECT_EQ(p.bank, 2);
        EXPECT_TRUE(read.notes.failed.empty());
    }
    const Reading padded = Read(last + std::string(2000, '\0'));
    EXPECT_EQ(padded.patterns.size(), 1u);
    EXPECT_TRUE(padded.notes.failed.empty());
    const Reading read = Read(Raw_2({{1, 2}, {3, 4, 5}}, 3));
    EXPECT_EQ(At(read, 0).TSample, 0);
    const auto p = At(read, 1);
    EXPECT_EQ(p.TSample, 300);
    EXPECT_EQ(p.y, (std::vector<float>{3, 4, 5}));
    EXPECT_EQ(read.notes.failed, (std::vector<std::string>{"Range 3: The file ends before it"}));
    EXPECT_EQ(Read(Raw_2({{1, 2}}, 3)).notes.failed, (std::vector<std::string>{"Ranges 2 to 3: The file ends before them"}));
}

TEST(Raw_Files, ScansOfOtherAxesAreOverThoseAxes) {
    const struct {
        std::uint32_t type;
        float start;
        const char *scat_var, *legend, *warning;
    } types[] = {{0, 2, "", "", ""},
                 {2, 2, "", "", ""},
                 {129, 2, "", "", ""},
                 {3, 1, "Angle", "Rocking Curve(degrees)", ""},
                 {4, 3, "Angle", "Chi(degrees)", ""},
                 {5, 4, "Angle", "Phi(degrees)", ""},
                 {6, 5, "Position", "X(mm)", ""},
                 {8, 0, "Position", "Z(mm)", "Range 1: the start of its axis is not told, x counts from 0"},
                 {13, 0, "Angle", "hkl", "Range 1: the start of its axis is not told, x counts from 0"}};
    for (const auto& type : types) {
        const Reading read = Read(Raw_101_Head(1) + Raw_101_Range(type.type, 3, Numbers<float>({1, 2, 3})));
        const auto p = At(read, 0);
        EXPECT_EQ(p.x, (std::vector<float>{type.start, type.start + 0.5f, type.start + 1}));
        EXPECT_EQ(p.scat_var, type.scat_var);
        EXPECT_EQ(p.legend_x, type.legend);
        EXPECT_EQ(read.notes.warnings.empty() ? "" : read.notes.warnings.front(), type.warning);
        EXPECT_EQ(p.title, "K\xC3\xA4se");
    }
    EXPECT_EQ(At(Read(Raw_400(1, Raw_400_Range("Z", 1, Numbers<float>({1}), 4))), 0).scat_var, "Position");
    EXPECT_EQ(At(Read(Stoe(1, 1, 1, 4, 0)), 0).x, (std::vector<float>{5, 5.125f, 5.25f}));
    EXPECT_EQ(At(Read(Stoe(1, 1, 1, 4, 0)), 0).legend_x, "Omega(degrees)");
}

TEST(Raw_Files, PointsMayStandAmidOtherThings) {
    std::string records;
    for (int i = 0; i < 3; ++i) records += Numbers<float>({5.0f + static_cast<float>(i)}) + Numbers<double>({300.5, 1e9});
    const std::string with_time = Raw_101_Range(0, 3, records, 1024 + 2048, 20, 0, 300);  // time and temperature of each point
    const std::string plain = Raw_101_Range(1, 3, std::string(40, '\7') + Numbers<float>({1, 2, 3}), 0, 4, 40, -1);
    const Reading read = Read(Raw_101_Head(3) + with_time + Raw_101_Range(0, 0, "") + plain);
    EXPECT_EQ(At(read, 0).y, (std::vector<float>{5, 6, 7}));
    EXPECT_EQ(At(read, 0).TSample, 300);
    EXPECT_EQ(At(read, 1).y, (std::vector<float>{1, 2, 3}));
    EXPECT_EQ(At(read, 1).TSample, 0);
    EXPECT_EQ(At(read, 1).title, "K\xC3\xA4se, range 3");
    EXPECT_EQ(read.notes.failed, (std::vector<std::string>{"Range 2: There are no points in it"}));

    // A length of records that is not that of the drives which varied: the file's own end decides.
    EXPECT_EQ(At(Read(Raw_101_Head(1) + Raw_101_Range(0, 3, records, 1024 + 2048, 4)), 0).y, (std::vector<float>{5, 6, 7}));
    EXPECT_EQ(At(Read(Raw_101_Head(1) + Raw_101_Range(0, 3, records, 0, 20)), 0).y, (std::vector<float>{5, 6, 7}));
    EXPECT_EQ(Read(Raw_101_Head(1) + Raw_101_Range(77, 3, records, 0, 20)).notes.warnings.size(), 1u);

    std::string placed;  // each point with its own theta and 2theta, which is what x is
    for (const double angle : {2.01, 2.52, 2.98}) placed += Numbers<float>({1}) + Numbers<double>({angle, angle / 2});
    const auto p = At(Read(Raw_101_Head(1) + Raw_101_Range(0, 3, placed, 3, 20)), 0);
    EXPECT_EQ(p.x, (std::vector<float>{2.01f, 2.52f, 2.98f}));
    EXPECT_FALSE(p.constant_step);

    std::string eights;
    for (const float y : {3.0f, -2.0f}) eights += Numbers<float>({y}) + Numbers<std::uint32_t>({1});
    const Reading newer = Read(Raw_400(
        2, Raw_400_Range("Unlocked Coupled", 2, eights, 8) + Raw_400_Range("Detector Scan", 1, Numbers<float>({4}), 4), 1.544, 0.5));
    EXPECT_EQ(At(newer, 0).y, (std::vector<float>{3, -2}));
    EXPECT_EQ(At(newer, 0).sigma, (std::vector<float>{3, 2}));
    EXPECT_EQ(At(newer, 0).xmin, 10);  // the drive stood elsewhere
    EXPECT_EQ(At(newer, 0).conv, (std::array<float, 5>{1.54f, 1.544f, 0.5f, 1.39f, 0}));
    EXPECT_EQ(At(newer, 1).title, "An ore, range 2");
}

TEST(Raw_Files, StoeCountsAreCheckedByTheirHead) {
    const Reading read = Read(Stoe(5, 2));
    EXPECT_EQ(At(read, 0).y, (std::vector<float>{4, 9, 6}));
    EXPECT_EQ(At(read, 1).y, (std::vector<float>{9, 4, 6}));
    EXPECT_EQ(At(read, 1).x, (std::vector<float>{10, 10.25f, 10.5f}));
    EXPECT_EQ(read.notes.warnings, (std::vector<std::string>{"Of 5 ranges that were planned, the file holds 2"}));
    const auto halves = At(Read(Stoe(2, 2, 2)), 1);
    EXPECT_EQ(halves.y, (std::vector<float>{4.5f, 2, 3}));
    EXPECT_EQ(halves.sigma, halves.y);
    EXPECT_TRUE(Read(Stoe(2, 2, 2)).notes.warnings.empty());
    EXPECT_EQ(Read(Stoe(1, 1, 1, 1129)).notes.warnings.size(), 1u);
    EXPECT_EQ(Read(Stoe(1, 1).replace(1024 + 38, 2, "\2\0", 2)).notes.warnings.size(), 1u);  // counts of another kind
    EXPECT_TRUE(Read(Stoe(1, 1).replace(1024 + 120, 8, 8, '\0')).notes.warnings.empty());
    EXPECT_EQ(At(Read(Stoe(1, 1).replace(1024 + 60, 4, 4, '\0')), 0).x, (std::vector<float>{10, 10.25f, 10.5f}));  // by its end
}

TEST(Raw_Files, CountsKeptAsRootsAndScansThatDidNotStop) {
    for (const auto& [mark, continuous, n, first] :
         {std::tuple{"V3RD", false, 11, 3.0f}, {"V3RD", true, 10, 3.01f}, {"V5RD", true, 10, 3.01f}}) {
        const auto p = At(Read(Rd(mark, continuous, 14)), 0);  // with some bytes behind it
        EXPECT_EQ(p.npts, n);
        EXPECT_EQ(p.x.front(), first);
        EXPECT_EQ(p.y.back(), 92.16f);
        EXPECT_EQ(p.sigma.back(), 92.16f);
    }
    for (const auto& [mark, refusal] : {std::pair{"V3DI", "These are peaks, not a pattern"},
                                        {"V3BK", "This is the background of a pattern, not a pattern"},
                                        {"V32D", "This is the second derivative of a pattern, not a pattern"}})
        EXPECT_EQ(Read(Rd(mark, false, 11)).status.message, refusal);
}

TEST(Raw_Files, OldTextsOfCountsAndOfRates) {
    const auto counts = At(Read(Rigaku_Text(" 2", 3, "  109.\r  112.\r 91.\r")), 0);
    EXPECT_EQ(counts.y, (std::vector<float>{109, 112, 91}));
    EXPECT_EQ(counts.sigma, counts.y);
    EXPECT_FALSE(counts.per_second);
    const Reading read = Read(Rigaku_Text(" 1", 4, "  16.\r  8.\r end\r"));
    const auto rates = At(read, 0);
    EXPECT_EQ(rates.sigma, (std::vector<float>{2, 1}));  // at 8 seconds each
    EXPECT_TRUE(rates.per_second);
    EXPECT_EQ(rates.npts_claimed, 4);
    EXPECT_TRUE(read.notes.warnings.empty());  // the largest one may be lost
    EXPECT_EQ(At(Read(Rigaku_Text(" 2", 3, "109.\r112.\r9x\r")), 0).npts, 2);
    EXPECT_EQ(Read(Rigaku_Text(" 2", 2, "5.\r6.\r")).notes.warnings.size(), 1u);  // 112 is told
    EXPECT_EQ(At(Read(Rigaku_Binary({1, 2, 3}, 3)), 0).x, (std::vector<float>{10, 10.5f, 11}));
}

// A file of each kind, the points of which are all there.
std::vector<std::string> Files() {
    const std::string counts = Numbers<float>({1, 2, 3});
    return {Raw_1_Block({1, 2, 3}, 20, 1) + Raw_1_Block({4, 5, 6}, 30, 0),
            Raw_2({{1, 2, 3}, {4, 5, 6}}, 2),
            Raw_101_Head(2) + Raw_101_Range(0, 3, counts) + Raw_101_Range(0, 3, counts),
            Raw_400(2, Raw_400_Range("Locked Coupled", 3, counts, 4) + Raw_400_Range("Locked Coupled", 3, counts, 4)),
            Stoe(2, 2),
            Rd("V3RD", true, 10),
            Rigaku_Binary({1, 2, 3}, 3),
            Rigaku_Text(" 2", 3, "109.\r112.\r91.\r")};
}

// What stands in the first head of each file, and so whether every place of it is right: the numbers are those that lab_bytes.hpp puts
// there.
TEST(Raw_Files, HeadsTellWhatIsPutIntoThem) {
    const std::array<float, 5> doublet = {1.54f, 1.544f, 0, 0, 0}, tube = {1.54f, 1.544f, 0.5f, 1.39f, 0};
    const struct {
        float time;
        std::array<float, 5> conv;
        std::string facts;
    } heads[] = {
        {2.5f, doublet, "Sample=Vinegar;Time a step (s)=2.5;Chi (degrees)=45;Phi (degrees)=7;"},
        {3, tube, "Sample=Zinc;Comment=a note;Date=19-12-1997 21:57;Anode=Cu;Time a step (s)=3;Theta (degrees)=0;"},
        {2, tube,
         "Sample=K\xC3\xA4se;Comment=a note;Date=14/03/88 10:11:12;User=me;Site=a hall;Measurement=aborted;Anode=CU;"
         "Mean K-alpha wavelength (A)=1.5418;Goniometer radius (mm)=280;Run time (s)=60;Scan axis=Locked Coupled;Scan mode=continuous;"
         "Time a step (s)=2;Voltage (kV)=40;Current (mA)=30;Wavelength used (A)=1.5418;Theta (degrees)=1;2Theta (degrees)=2;"
         "Chi (degrees)=3;Phi (degrees)=4;X (mm)=5;Y (mm)=6;"},
        {76.8f,
         {1.54f, 0, 0, 1.39f, 0},
         "Sample=An ore;Comment=" + std::string(400, 'c') +
             ";Anode=Cu;Mean K-alpha wavelength (A)=1.5418;Scan axis=Locked Coupled;"
             "Time a step (s)=76.8;Voltage (kV)=40;Current (mA)=30;Wavelength used (A)=1.5418;2Theta=77;"},
        {100, doublet,
         "Title=A title;Comment=a note;Date=22-Sep-20 17:18;Anode=Cu;Voltage (kV)=40;Current (mA)=30;Geometry=reflection;"
         "Scan axis=2Theta;Time a step (s)=100;"},
        {0,
         {1.789f, 1.793f, 0.5f, 0, 0},
         "Sample=A clay;File=FILE;Scan axis=2Theta;Scan mode=continuous;Anode=Co;Voltage (kV)=40;Current (mA)=30;"},
        {0, {1.54f, 1.544f, 0, 1.39f, 0}, "Sample=A powder;User=me;Anode=Cu;Voltage (kV)=40;Current (mA)=30;"},
        {8,
         {1.540598f, 1.544426f, 0, 0, 0},
         "Sample=Steel;Date=18-MAR-99;Anode=CU;Time a step (s)=8;Mean K-alpha wavelength (A)=1.5418;Maximum=112;"},
    };
    const std::vector<std::string> files = Files();
    for (std::size_t i = 0; i < files.size(); ++i) {
        const auto p = At(Read(files[i]), 0);
        EXPECT_EQ(p.count_time, heads[i].time) << i;
        EXPECT_EQ(p.conv, heads[i].conv) << i;
        EXPECT_EQ(Facts(p), heads[i].facts) << i;
        EXPECT_EQ(std::pair(p.ymin, p.ymax),
                  std::pair(*std::min_element(p.y.begin(), p.y.end()), *std::max_element(p.y.begin(), p.y.end())));
    }
    // Lengths of nanometres, ends that tell a step, angles in 200ths of a degree, eleven points of which one is the largest.
    const auto changed = [](std::string file, std::size_t at, std::string_view bytes) {
        return At(Read(file.replace(at, bytes.size(), bytes)), 0);
    };
    EXPECT_FLOAT_EQ(changed(files[2], 656, "nm").conv[1], 15.44f);
    EXPECT_EQ(changed(files[2], 616, std::string(32, '\0')).conv[0], 1.5418f);  // that of the range alone
    EXPECT_EQ(changed(files[1], 198, Numbers<float>({50})).conv[2], 0);         // no ratio of two lines
    EXPECT_EQ(changed(files[5], 146, std::string(20, ' ')).title, "FILE");
    EXPECT_EQ(changed(files[6], 2970, std::string(4, '\0')).step, 0.5f);
    EXPECT_EQ(changed(files[5], 214, std::string(24, '\0')).x, At(Read(files[5]), 0).x);
    EXPECT_EQ(At(Read(Rigaku_Binary({1, 2, 3, 4, 3, 2, 1, 0.5f, 1, 9, 1}, 11)), 0).ymax, 9);
    EXPECT_EQ(changed(files[3], 65, std::string(4, '\0')).title, "range 1");  // a segment without a length ends them
}

TEST(Raw_Files, CutAnywhereTheyKeepTheirPointsOrSayWhy) {
    for (const std::string& file : Files()) {
        const Reading whole = Read(file);
        ASSERT_FALSE(whole.patterns.empty());
        int held = 0;
        for (std::size_t length = 8; length < file.size(); length += length + 200 < file.size() ? 7 : 1) {
            const Reading cut = Read_By(Reader_Of(file), file.substr(0, length));
            const std::string where = file.substr(0, 4) + ' ' + std::to_string(length);
            EXPECT_EQ(cut.status.failed, cut.patterns.empty()) << where;
            EXPECT_LE(cut.status.message.size(), 150u);
            EXPECT_TRUE(cut.status.ok() || !cut.status.message.empty()) << where;
            for (std::size_t i = 0; i < cut.patterns.size(); ++i) {
                const auto &p = cut.patterns[i], &all = whole.patterns[i];
                ASSERT_TRUE(p.npts == all.npts ? p.npts_claimed == 0 : p.npts_claimed == all.npts) << where;
                ASSERT_TRUE(std::equal(p.x.begin(), p.x.end(), all.x.begin())) << where;
                held += p.npts < all.npts ? 1 : 0;
            }
        }
        EXPECT_GT(held, 0) << file.substr(0, 4);
    }
}

TEST(Raw_Files, HeadsAreNotBelieved) {
    const std::string counts = Numbers<float>({1, 2, 3});
    const auto fails = [](const std::string& file) {
        const Reading read = Read(file);
        EXPECT_TRUE(read.status.failed && read.patterns.empty());
        return read.status.message;
    };
    const std::string range = Raw_101_Range(0, 3, counts);
    EXPECT_EQ(At(Read(Raw_101_Head(1) + Raw_101_Range(0, 0xffffffff, counts)), 0).y, (std::vector<float>{1, 2, 3}));
    EXPECT_EQ(At(Read(Raw_101_Head(0xffffffff) + range), 0).npts, 3);
    EXPECT_EQ(fails(Raw_101_Head(1) + Raw_101_Range(0, 3, counts, 0, 4, 0xffffff00)), "The file ends before its points");
    EXPECT_EQ(fails(Raw_101_Head(1) + std::string(400, '\0').replace(0, 4, "\1\0\0\0", 4)), "The file ends before its points");
    EXPECT_EQ(fails(Raw_101_Head(1) + std::string(range).replace(176, 8, Numbers<double>({0}))), "The head tells no sound start and step");
    EXPECT_EQ(fails(Raw_101_Head(1) + std::string(range).replace(16, 8, Numbers<double>({NAN}))), "The head tells no sound start and step");
    EXPECT_EQ(fails(Raw_400(1, Raw_400_Range("Locked Coupled", 3, counts, 0))), "The length of its records is none");
    EXPECT_EQ(fails(Raw_400(1, Raw_400_Range("Locked Coupled", 3, std::string(15000, 'x'), 5000))), "The length of its records is none");
    EXPECT_EQ(At(Read(Raw_101_Head(1) + Raw_101_Range(0, 4, counts, 0, 0)), 0).npts, 3);
    EXPECT_EQ(fails(Raw_2({{1, 2}}, 1).replace(256, 2, "\4\0", 2)), "The file ends before its points");
    EXPECT_EQ(fails(Stoe(0, 0).replace(480, 4, std::string(4, '\0'))), "The head does not tell where it stands");
    const auto down = At(Read(Raw_101_Head(1) + std::string(range).replace(176, 8, Numbers<double>({-0.5}))), 0);
    EXPECT_EQ(down.x, (std::vector<float>{1, 1.5f, 2}));
    EXPECT_EQ(down.y, (std::vector<float>{3, 2, 1}));
}

TEST(Raw_Files, AreToldFromAllElse) {
    const int codes[] = {16, 16, 16, 16, 17, 25, 18, 18};
    const auto files = Files();
    for (std::size_t i = 0; i < files.size(); ++i)
        for (const std::size_t head : {std::size_t{300}, files[i].size()})
            EXPECT_EQ(Certain_Format(files[i].substr(0, head)), codes[i]) << i;
    for (const char* text :
         {"RAW data of a sample\n10 0.1 20\n", "RAW2 is a title\n", "RAW1.01 is a title\n", "RAW4.00 and more\n", "RAW_1.06 title\n",
          "V3RD is a title\n", ".RAW data\n1 2 3\n", "FI is a title\n", "RAW ", "RAW2", "BANK 1 RALF\n"})
        EXPECT_EQ(Certain_Format(text), 0) << text;
    Patterns patterns;
    Read_Notes notes;
    for (const Read_All reader : {Read_Bruker_Raw, Read_Stoe_Raw, Read_Rigaku_Raw, Read_Philips_Rd})
        for (const std::string& other :
             {std::string("\xFF\xD8\xFF\xE0 picture"), std::string(), std::string("RAW3") + std::string(900, '\0')})
            EXPECT_TRUE(reader(other, patterns, notes).failed);
}

}  // namespace
}  // namespace vntl::test
