// What the documents say of the formats is what the table of readers holds.
#include <gtest/gtest.h>

#include <set>

#include "patterns/read_pattern.hpp"
#include "patterns/recognise.hpp"
#include "patterns/testing.hpp"

namespace vntl::test {
namespace {

// The words of a line's column, parted by '|'.
std::string Column(const std::string& line, std::size_t n) {
    std::size_t from = 0;
    for (; n > 0 && from != std::string::npos; --n) from = line.find('|', from) == std::string::npos ? from : line.find('|', from) + 1;
    return std::string(Trim(std::string_view(line).substr(from, line.find('|', from) - from)));
}

TEST(Documents, ListTheFormatsAndExtensionsOfTheReaders) {
    std::set<std::string> known, readme, manual;
    for (const Format_Extension& row : Format_Extensions()) known.insert(std::string(row.extension));
    const std::string man = Replace_All(Text_Of(SOURCE_TREE "/resources/vantrelo.1"), "\\-", "-");
    const std::string read_me = Text_Of(SOURCE_TREE "/README.md");
    for (const Pattern_Format& format : Pattern_Formats()) {
        const std::string mode(format.mode);
        const std::size_t in_manual = man.find('\n' + mode + "|."), in_readme = read_me.find("\n| " + mode + " |");
        ASSERT_NE(in_manual, std::string::npos) << mode;
        ASSERT_NE(in_readme, std::string::npos) << mode;
        const auto line = [](const std::string& text, std::size_t at) { return text.substr(at + 1, text.find('\n', at + 1) - at - 1); };
        for (const auto& [text, set] :
             {std::pair{Column(line(man, in_manual), 1), &manual}, {Column(line(read_me, in_readme), 2), &readme}})
            for (std::size_t at = text.find('.'); at != std::string::npos; at = text.find('.', at + 1))
                set->insert(text.substr(at, text.find(' ', at) - at));
        EXPECT_NE(Replace_All(man, "\\e", "\\").find(std::string(How_Recognised(format.code))), std::string::npos) << mode;
    }
    EXPECT_EQ(manual, known);
    EXPECT_EQ(readme, known);
    EXPECT_EQ(read_me.find("\n| CIF |") != std::string::npos, true);
}

// A double click reaches the program: a desktop knows every extension that decides on a format, and the program takes what the desktop has.
TEST(Documents, ADesktopKnowsTheExtensions) {
    const std::string types = Text_Of(SOURCE_TREE "/resources/vantrelo-mime.xml"),
                      entry = Text_Of(SOURCE_TREE "/resources/vantrelo.desktop");
    for (const Format_Extension& row : Format_Extensions())
        EXPECT_TRUE(!row.decides || Contains(types, "pattern=\"*" + std::string(row.extension) + '"')) << row.extension;
    constexpr std::string_view opening = "<mime-type type=\"";
    for (std::size_t at = types.find(opening); at != std::string::npos; at = types.find(opening, at + 1)) {
        const std::size_t first = at + opening.size();
        const std::string type = types.substr(first, types.find('"', first) - first);
        EXPECT_TRUE(Contains(entry, type + ';')) << type;
    }
}

}  // namespace
}  // namespace vntl::test
