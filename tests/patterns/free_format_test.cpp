// Free format: files written by the test from known numbers, every message, and headers that claim more than the file holds.
#include "patterns/free_format.hpp"
#include "patterns/read_pattern.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/testing.hpp"

namespace vntl::test {
namespace {

std::string Counts(int n) {
    return Lines(n, 10, [](int i) { return std::to_string(100 + i) + ' '; });
}

Status Read(std::string_view text, Diffraction_Pattern_Type& p) { return Read_Free_Format(text, false, p); }
Status Read_Mdi(std::string_view text, Diffraction_Pattern_Type& p) { return Read_Free_Format(text, true, p); }

TEST(Free_Format, RangeLineAndCounts) {
    const auto p = Good(Read, "# TSAMP 12.5\n! Legend_X 2theta(deg)\n1.0 0.05 1.95 my sample\n" + Counts(20));
    EXPECT_EQ(p.npts, 20);
    EXPECT_EQ(p.title, "my sample");
    EXPECT_EQ(p.legend_x, "2theta(deg)");
    EXPECT_FLOAT_EQ(p.TSample, 12.5f);
    EXPECT_FLOAT_EQ(p.x[19], 1.0f + 19 * 0.05f);
    EXPECT_EQ(p.y[19], 119);
    EXPECT_EQ(p.sigma[19], 119);  // a count is its own variance
    EXPECT_EQ(p.ymin, 100);
    EXPECT_EQ(p.ymax, 119);
    EXPECT_TRUE(p.constant_step && p.sigma_is_variance);
}

TEST(Free_Format, HeadersOfEveryKind) {
    struct Case {
        const char* name;
        std::string text;
        bool mdi;
        int npts;
        float xmin, step, xmax;
        const char* title;
        const char* scat_var;
    };
    const Case cases[] = {
        {"title line first", "My title\n10 0.1 12\n" + Counts(21), false, 21, 10, 0.1f, 12, "My title", "2theta"},
        {"title keyword wins over the range line", "! TITLE from a comment\n10 0.1 12 other\n" + Counts(21), false, 21, 10, 0.1f, 12,
         "from a comment", "2theta"},
        {"seven text lines", "t\na\nb\nc\nd\ne\nf\n0 1 10\n" + Counts(11), false, 11, 0, 1, 10, "t", "2theta"},
        {"a row of data is no title", "10 100\nt\n0 1 10\n" + Counts(11), false, 11, 0, 1, 10, "t", "2theta"},
        {"bank line", "title\nBANK   1    11       2 CONST" + std::string(18, ' ') + "5.0   0.50   0   0 STD\n" + Counts(11), false, 11, 5,
         0.5f, 10, "title", "2theta"},
        {"beyond 180 is time of flight", "1000 10 1200\n" + Counts(21), false, 21, 1000, 10, 1200, "", "TOF"},
        {"MDI", "A title\n10.0 0.5 1.0 CU 1.54 20.0 21\n" + Counts(21), true, 21, 10, 0.5f, 20, "A title", "2theta"},
        {"repeat counts and commas", "0 1 10\n5*7, 6*8\n", false, 11, 0, 1, 10, "", "2theta"},
        {"lone carriage returns", "t\r0 1 10\r1 2 3 4 5 6\r7 8 9 10 11\r", false, 11, 0, 1, 10, "t", "2theta"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto p = Good(c.mdi ? Read_Mdi : Read, c.text);
        EXPECT_EQ(p.npts, c.npts);
        EXPECT_FLOAT_EQ(p.xmin, c.xmin);
        EXPECT_FLOAT_EQ(p.step, c.step);
        EXPECT_FLOAT_EQ(p.xmax, c.xmax);
        EXPECT_EQ(p.title, c.title);
        EXPECT_EQ(p.scat_var, c.scat_var);
        EXPECT_EQ(p.conv[0], c.mdi ? 1.54f : 0);
    }
}

TEST(Free_Format, EveryFault) {
    const std::string range = " Error in Intensity file, Problems reading 2Theta_ini, Step, 2Theta_end";
    const std::string count = " Error in Intensity file, Number of intensities values is wrong!!";
    Expect_Faults(
        Read, {{"", " End of file *.dat"},
               {"only a title\n", " End of file *.dat"},
               {"1 0 10\n" + Counts(11), " Error in Intensity file, Step value was zero!"},
               {"1\n2\n3\n4\n5\n6\n7\n8\n0 1 10\n" + Counts(11), " Error on Intensity file, Number of Comment lines was exceeded ( > 7) !"},
               {"0 1 9\n" + Counts(10), range},
               {"20 1 5\n" + Counts(11), range},
               {"-20 1 -5\n" + Counts(16), range},
               {"0 1 10\n" + Counts(10), count},
               {"0 1 10\n1 2 3 x 5 6 7 8 9 10 11", count},
               {"0 1 1000000000\n" + Counts(100), count},
               {"0 0.00001 1e30\n" + Counts(100), count},
               {"0 1 1000000\n1000001*5\n", count}});
}

TEST(Read_Pattern, ExtensionsDecideOrAsk) {
    const std::pair<const char*, int> cases[] = {{".CSV", 12}, {"udf", 12}, {".Jcp", 12}, {".xrdml", 12}, {".Xy", 9},
                                                 {".XYS", 9},  {".xye", 9}, {".UXD", 8},  {".sim", 1},    {".MDI", 1},
                                                 {".cif", 15}, {".dat", 0}, {".gr", 0},   {"", 0}};
    for (const auto& [extension, code] : cases) EXPECT_EQ(Format_Of_Extension(extension), code) << extension;
    EXPECT_TRUE(Is_Pattern_Extension(".gr") && Is_Pattern_Extension(".GR"));
    EXPECT_FALSE(Is_Pattern_Extension(".Gr") || Is_Pattern_Extension(".prf") || Is_Pattern_Extension(""));
    EXPECT_EQ(Pattern_Formats().size(), 27u);
    for (std::size_t i = 0; i < Pattern_Formats().size(); ++i) EXPECT_EQ(Pattern_Formats()[i].code, static_cast<int>(i) + 1);
}

TEST(Read_Pattern, MessagesNameTheFileAndStayShort) {
    Diffraction_Pattern_Type p;
    p.title = "before";
    EXPECT_EQ(Read_Pattern("no_such_file.dat", p).message, " The file no_such_file.dat doesn't exist");
    EXPECT_LE(Read_Pattern(std::string(400, 'n'), p).message.size(), 160u);
    EXPECT_EQ(Read_Pattern(TEST_DATA, p).message.substr(0, 25), " Error opening the file: ");
    EXPECT_EQ(Read_Pattern(std::string(TEST_DATA) + "/patterns/rising.xye", p, "r3b").message, check_instr);
    EXPECT_EQ(p.title, "before");
}

TEST(Read_Pattern, DeviationsHeadAndSeveralPatterns) {
    const std::string file = std::string(TEST_DATA) + "/patterns/rising.xye";
    Diffraction_Pattern_Type plain, p;
    std::string head;
    ASSERT_TRUE(Read_Pattern(file, plain, "XYSIGMA").ok());
    ASSERT_TRUE(Read_Pattern(file, p, "xysigma ", {true, &head, 0}).ok());
    EXPECT_TRUE(plain.sigma_is_variance && !p.sigma_is_variance);
    for (std::size_t i = 0; i < p.sigma.size(); ++i) EXPECT_FLOAT_EQ(p.sigma[i] * p.sigma[i], plain.sigma[i]);
    const std::string text = std::string(head);
    EXPECT_FALSE(text.empty());
    EXPECT_EQ(text.find("\n10"), std::string::npos) << text;  // no line of numbers

    std::vector<Diffraction_Pattern_Type> several;
    Read_Notes messages;
    EXPECT_EQ(Read_Pattern_Mult(file, several, 7, "DMC", messages).message, "Invalid Mode");
    ASSERT_TRUE(Read_Pattern_Mult(file, several, 7, "XYSIGMA", messages).ok());
    EXPECT_EQ(several.size(), 1u);
    EXPECT_EQ(several.front().y, plain.y);
    EXPECT_EQ(plain.instr, " 10  - XYSIGMA");
}

}  // namespace
}  // namespace vntl::test
