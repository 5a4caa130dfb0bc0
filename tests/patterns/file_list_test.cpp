// Lists of files: which lines are names, what opens the list, noise, and that what is written is read again.
#include "patterns/file_list.hpp"

#include <gtest/gtest.h>

namespace vntl {
namespace {

using Names = std::vector<std::string>;

TEST(File_List, LinesAreOpeningOrNames) {
    const std::string accent = "\xE9t\xE9.xye", quoted = "\"a b.xye\"";  // the bytes of a name stay what they are
    struct Case {
        std::string text, comment, title;
        Names names;
    };
    const Case cases[] = {
        {"", "", "", {}},
        {"\n \r\n\t\n", "", "", {}},
        {"/d/a.xye\n/d/b.xye", "", "", {"/d/a.xye", "/d/b.xye"}},
        {"COMMENT  second run \nTITLE\tAl2O3, heating\na.xye\n", "second run", "Al2O3, heating", {"a.xye"}},
        {"TITLE: x\r\n\r\nCOMMENT = y\r\n  a b.xye \t\r\n", "y", "x", {"a b.xye"}},
        {"TITLE one\nTITLE \xE9\na\rb\r", "", "\xC3\xA9", {"a", "b"}},
        {"COMMENT\nTITLE\na\n", "", "", {"a"}},
        {"a\nTITLE late\nCOMMENT\n", "", "", {"a", "TITLE late", "COMMENT"}},
        {"TITLE1.xye\nTITLE x\n", "", "", {"TITLE1.xye", "TITLE x"}},
        {"title x\n", "", "", {"title x"}},
        {quoted + "\n\"TITLE\"\n\"\n\" a \"\n#1\n!2\n", "", "", {"a b.xye", "TITLE", "\"", " a ", "#1", "!2"}},
        {accent + "\n\x1a", "", "", {accent}},
        {"TITLE " + std::string(500, 't') + "\na", "", std::string(180, 't'), {"a"}},
        {std::string(4096, 'n'), "", "", {std::string(4096, 'n')}},
    };
    for (const Case& c : cases) {
        File_List list;
        ASSERT_TRUE(Read_File_List(c.text, 100, list).ok()) << c.text;
        EXPECT_EQ(list.comment, c.comment) << c.text;
        EXPECT_EQ(list.title, c.title) << c.text;
        EXPECT_EQ(list.names, c.names) << c.text;
        EXPECT_EQ(list.first_left_out, 0);
        File_List again;
        ASSERT_TRUE(Read_File_List(File_List_Text(c.names), 100, again).ok());
        EXPECT_EQ(again.names, c.names) << c.text;
    }
    EXPECT_EQ(File_List_Text(Names{"/d/a.xye", "/d/b c.xye"}), "/d/a.xye\n/d/b c.xye\n");
}

TEST(File_List, NoiseIsRefusedByItsLineAndMillionsAreCut) {
    for (const std::string& line : {std::string("a\0b", 3), std::string("\"\""), std::string("\"  \""), std::string(4097, 'n')}) {
        File_List list;
        EXPECT_EQ(Read_File_List("TITLE x\n\na.xye\n" + line + "\nb", 100, list).message, "Line 4 is no name of a file");
        EXPECT_FALSE(Can_Be_Listed(line) && line.find('"') != 0);
    }
    for (const char* name : {"", " ", "a\nb", "a\rb"}) EXPECT_FALSE(Can_Be_Listed(name));
    std::string million;
    for (int i = 0; i < 1'000'000; ++i) million += "a\n";
    File_List list;
    ASSERT_TRUE(Read_File_List("TITLE\n" + million, 2500, list).ok());
    EXPECT_EQ(list.names.size(), 2500u);
    EXPECT_EQ(list.first_left_out, 2502);
}

}  // namespace
}  // namespace vntl
