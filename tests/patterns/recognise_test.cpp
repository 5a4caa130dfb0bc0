// Recognition by content: files of little more than a head, and what is no pattern at all. Whole files are in habits_test.cpp.
#include "patterns/recognise.hpp"

#include <unistd.h>

#include <filesystem>
#include <random>

#include "patterns/binary_file.hpp"
#include "patterns/prf.hpp"
#include "patterns/read_pattern.hpp"
#include "patterns/testing.hpp"

namespace vntl::test {
namespace {

TEST(Recognise, HeadsAlone) {
    const std::pair<std::string, int> files[] = {
        {"0, 1, 99 the title\n" + Bumps(100, 20, "%.0f, "), 1},
        {"_FILEVERSION=2\n_2THETACOUNTS = \n" + Columns(40, "%.2f %.0f\n"), 8},
        {"History\ntemp=300\n#L r(A) G(r)\n" + Columns(40, "%.2f %.3f 0 %.2f\n"), 9},
        {"title\nBANK 1 40 4 TIME_MAP 1 0 0 0 STD\n" + Bumps(40, 10, "%8.0f"), 11},
        {"[Measurement conditions]\nTitle 1,q\n", 12},
        {"\n<p:xrdMeasurements xmlns:p=\"x\">\n", 12},
        {"# remark\n\ndata_x\n_cell_length_a 5.4\n", 15},
    };
    for (const auto& [text, code] : files) EXPECT_EQ(Recognised_By_Content(text), code) << text.substr(0, 40);
}

TEST(Recognise, WhatIsNoPattern) {
    std::mt19937 random(7);
    std::string noise(5000, '\0'), letters(5000, ' '), digits(5000, ' ');
    for (char& c : noise) c = static_cast<char>(random());
    for (char& c : letters) c = static_cast<char>(' ' + random() % 95);
    for (char& c : digits) c = " \n0123456789.-"[random() % 14];
    const std::string texts[] = {"",
                                 "\n\n\n",
                                 " ",
                                 "BANK",
                                 "BANK of England\nfounded 1694\n",
                                 "<svg width=\"1\"><path d=\"M 1 2 3 4\"/></svg>\n",
                                 "<?xml version=\"1.0\"?>\n<a/>\n",
                                 "\x89PNG\r\n\x1A\n" + noise,
                                 "\xFF\xD8\xFF\xE0" + noise,
                                 noise,
                                 letters,
                                 digits,
                                 std::string(100000, '\0'),
                                 "#include <cstdio>\n\nint main() {\n    const int table[] = {1, 2, 3};\n    return table[0];\n}\n",
                                 "Dear reader,\n\n1. The first thing\n2. The second one\n3. The third\n4. The fourth\n",
                                 "12 apples\n13 pears\n14 plums\n15 cherries\n16 nuts\n",
                                 "1 2 3\n",
                                 "10.0 0.05 90.0\n",
                                 "10.0 0.05 90.0\n1 2 3 4 5\n",
                                 "data_frames = 3\n_private = 4\n",
                                 "import numpy\ndata_x = 1\n_x = 2\n",
                                 "h k l d\n" + Bumps(300, 5, " %.0f"),
                                 "_START of it all\n",
                                 "name,age\nAda,36\nCarl,77\n"};
    for (const std::string& text : texts) EXPECT_EQ(Recognised_By_Content(text), 0) << text.substr(0, 40);
}

// A file of numbers with many bytes that no text holds is another kind of file; a few of them may stand in a title.
TEST(Recognise, BytesOfABinaryFileAreNoText) {
    EXPECT_EQ(Recognised_By_Content("a title\x01\x02\n" + Columns(60)), 9);
    EXPECT_EQ(Recognised_By_Content("a title" + std::string(200, '\x01') + '\n' + Columns(60)), 0);
}

// What a binary file is told as, whatever format a user chose; texts with stray bytes are none.
TEST(Recognise, BinaryFilesAreToldAsSuch) {
    std::mt19937 random(11);
    std::string noise(3000, '\0');
    for (char& c : noise) c = static_cast<char>(random());
    const auto with = [&](std::string_view magic) { return std::string(magic) + noise; };
    using namespace std::string_view_literals;
    const std::pair<std::string, const char*> files[] = {
        {with("PK\3\4"), " (zip archive)"},
        {"PK\3\4" + std::string(20, 'x') + "_START=1\n_STEPSIZE=1\n_COUNTS\n1 2 3\n", " (zip archive)"},
        {with("\x1F\x8B\x08"), " (gzip archive)"},
        {with("%PDF-1.7\n"), " (PDF document)"},
        {with("\x89PNG\r\n\x1A\n"), " (PNG picture)"},
        {with("\xFF\xD8\xFF\xE0"), " (JPEG picture)"},
        {with("RAW3.01\0"sv), " (RAW file of an unknown version)"},
        {noise, ""},
        {std::string(500, '\0'), ""},
        {"title\n" + std::string("ab\0cd\n", 6), ""},
    };
    const std::string file = (std::filesystem::temp_directory_path() / ("vantrelo binary " + std::to_string(::getpid()) + ".dat")).string();
    for (const auto& [text, kind] : files) {
        std::ofstream(file, std::ios::binary) << text;
        const std::string told = std::string("This is a binary file") + kind + ", which no reader takes";
        EXPECT_EQ(Recognise_Format(file).binary, told);
        Diffraction_Pattern_Type pattern;
        PRF_Info_Add_Type info;
        std::vector<Diffraction_Pattern_Type> several;
        Read_Notes messages;
        for (const Pattern_Format& format : Pattern_Formats()) {
            EXPECT_EQ(Read_Pattern(file, pattern, format.mode).message, told) << format.mode;
            const Status status = Read_Pattern_Mult(file, several, 7, format.mode, messages);
            EXPECT_EQ(status.message, status.message == "Invalid Mode" ? "Invalid Mode" : told) << format.mode;
        }
        EXPECT_EQ(Read_Prf(file, pattern, info).message, told);
    }
    const std::string columns = Columns(60);
    const std::string texts[] = {"",
                                 "RAW data\n" + columns,
                                 "BM 25, FI, MZ\n" + columns,
                                 "K\xE4se\n" + columns,
                                 columns + std::string(700, '\0'),
                                 std::string("title\0\0\0\n", 9) + columns,
                                 "BZh is no pattern\n",
                                 std::string("\xFF\xFE\x31\0 \0\x32\0\n\0", 10),
                                 std::string("\xFE\xFF\0\x31\0 \0\x32\0\n", 10)};
    for (const std::string& text : texts) EXPECT_EQ(Binary_Refusal(text), "") << text.substr(0, 20);
    std::filesystem::remove(file);
}

TEST(Recognise, SizeAndShapeDoNotMatter) {
    // A file of the first 64 KB and no more, long lines, many lines: an answer at once.
    EXPECT_EQ(Recognised_By_Content(Columns(200000)), 9);
    EXPECT_EQ(Recognised_By_Content(Columns(200000).substr(0, recognised_head)), 9);
    for (const char* unit : {"\n", "1 ", "BANK\n#\n", "BANK 1\n1 2 3\n", "!\n", "_", "1,", "loop_\n", ";", "-"}) {
        std::string text;
        while (text.size() < 2 * recognised_head) text += unit;
        EXPECT_EQ(Recognised_By_Content(text), 0) << unit;
    }
}

TEST(Recognise, EveryFormatIsDescribed) {
    for (int code = 1; code <= 27; ++code) EXPECT_FALSE(How_Recognised(code).empty()) << code;
    for (const int code : {-1, 0, 28}) EXPECT_TRUE(How_Recognised(code).empty()) << code;
}

TEST(Recognise, RealFiles) {
    const std::pair<int, std::vector<const char*>> files[] = {
        {10, {"gsas/fap_lab_std.gsas", "gsas/garnet_cwn_std_pairs.gsas", "gsas/lamno3_50k_esd.gsas", "gsas/alumina_esd.gsa"}},
        {10, {"gsas/11bm_fxye_head.fxye"}},
        {11, {"gsas/gem05984_ralf_alt.gss", "gsas/pg3_22049_tof.gsa", "gsas/vulcan_435.gda"}},
        {9, {"xye/lactose_x3.xye", "gr/300K.gr", "gr/550K.gr", "fit/doublet.xy"}},
        {26, {"xye/pg3_20254_tof.xye", "formats/samples/gsas2_comment_block.xye", "formats/samples/ess_dream_tof.xye"}},
        {8, {"uxd/bt86.uxd"}},
        {12, {"xrdml/empyrean.xrdml"}},
        {7, {"dmc/hrpt.dat"}},
        {15, {"cif_powder/cod_1517474.cif"}},
        {0, {"symmetry/settings.tsv", "symmetry/reflections_01.tsv", "structures/twin_3a.ins"}}};
    for (const auto& [code, names] : files)
        for (const char* name : names) {
            const std::string text = Real_File(name);
            if (text.empty()) GTEST_SKIP() << name;
            EXPECT_EQ(Recognised_By_Content(text), code) << name;
        }
}

}  // namespace
}  // namespace vntl::test
