// What pictures are called: names that every system takes, one for each file.
#include "session/desk/picture_names.hpp"

#include <gtest/gtest.h>

#include "session/store.hpp"

namespace vntl {
namespace {

TEST(PictureNames, OfFiles) {
    const struct {
        const char *file, *name;
    } cases[] = {{"/data/run 7/NiO.xye", "NiO"},
                 {"no_extension", "no_extension"},
                 {"packed.xye.gz", "packed"},
                 {".hidden", ".hidden"},
                 {".gz", ".gz"},
                 {"<copy>", "_copy_"},
                 {"a:b*c?\"d|e\\f\x01.dat", "a_b_c__d_e_f_"},
                 {"two.points.xy", "two.points"},
                 {"ends...xy", "ends"},
                 {"...", ""},
                 {"", ""}};
    for (const auto& one : cases) EXPECT_EQ(Bare_Name(one.file), one.name) << one.file;
    const std::string long_name = Bare_Name(std::string(400, 'x') + ".dat"), letters = Bare_Name(std::string("\xC3\xA9") + "t\xC3\xA9.xy");
    EXPECT_LE(long_name.size(), 200u);
    EXPECT_EQ(letters, "\xC3\xA9t\xC3\xA9");
}

TEST(PictureNames, OfTheRowsThatAreShown) {
    Profile_Store store;
    EXPECT_EQ(Picture_Name(store), "filename");
    // Two patterns of one file, another file, and one of the same name in another directory.
    for (const auto& [file, directory] : {std::pair{"a.xye", "/one"}, {"a.xye", "/one"}, {"b.xye", "/one"}, {"a.xye", "/two"}}) {
        Diffraction_Pattern_Type pattern;
        pattern.x = pattern.y = {1};
        pattern.npts = 1;
        PRF_Info_Add_Type info;
        info.file_name = file;
        info.directory = directory;
        info.legend_text = "what the user calls it";
        store.Append(std::move(pattern), std::move(info));
    }
    const struct {
        unsigned hidden;  // a bit each
        const char* name;
    } cases[] = {{0b0000, "a_and_2_more"}, {0b1100, "a"}, {0b0011, "b_and_1_more"}, {0b0111, "a"}, {0b1111, "a"}};
    for (const auto& one : cases) {
        store.profile_shown = ~std::bitset<max_profiles>(one.hidden);
        EXPECT_EQ(Picture_Name(store), one.name) << one.hidden;
    }
}

TEST(PictureNames, OneForEachFile) {
    Picture_Names names("out/%n.%e 100%%.pdf");
    EXPECT_TRUE(names.Check(3).ok());
    for (const auto& [file, name] : {std::pair{"x/a.xye", "out/a.xye 100%.pdf"},
                                     {"y/a.xye", "out/a.xye 100%_2.pdf"},
                                     {"z/a.xye", "out/a.xye 100%_3.pdf"},
                                     {"a.dat", "out/a.dat 100%.pdf"},
                                     {"%n", "out/%n. 100%.pdf"}})
        EXPECT_EQ(names.Of(file), name);
    // A file that bears the number itself.
    Picture_Names numbered("%n.png");
    for (const auto& [file, name] : {std::pair{"a.xy", "a.png"}, {"b/a.xy", "a_2.png"}, {"a_2.xy", "a_2_2.png"}})
        EXPECT_EQ(numbered.Of(file), name);

    for (const char* wrong : {"%x.pdf", "a%", "%", "% n.pdf"}) EXPECT_TRUE(Picture_Names(wrong).Check(1).failed) << wrong;
    for (const char* alike : {"a.pdf", "%e.pdf", "%%n.pdf"}) {
        EXPECT_TRUE(Picture_Names(alike).Check(2).failed) << alike;
        EXPECT_TRUE(Picture_Names(alike).Check(1).ok()) << alike;
    }
}

}  // namespace
}  // namespace vntl
