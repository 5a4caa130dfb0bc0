// Documents and what is told of them, one line an event.
#include "base/xml_events.hpp"

#include <gtest/gtest.h>

#include "base/text.hpp"

namespace vntl::test {
namespace {

class Transcript : public Xml_Events {
public:
    void Start(const Xml_Path& path, const Xml_Attributes& attributes) override {
        text += '<' + std::string(path.Parent()) + '/' + std::string(path.Name()) + ' ' + std::string(attributes["type"]) + '>';
    }
    void End(const Xml_Path& path, std::string_view inner) override {
        text += std::string(inner) + "</" + std::string(path.Name()) + (path.Within("out") ? " in out>" : ">");
    }
    std::string text;
};

std::string Told(std::string_view document) {
    Transcript events;
    const Status status = Walk_Xml(document, events);
    return events.text + status.message;
}

std::string Wide(std::string_view ascii) {
    std::string wide = "\xFF\xFE";
    for (const char c : ascii) wide += {c, '\0'};
    return wide;
}

TEST(Xml_Events, ElementsTextsAndAttributes) {
    EXPECT_EQ(Told("<out><x:in xsi:type='T' type2='U'> a&lt;b <![CDATA[<c>]]>\n</x:in>tail</out>"),
              "</out ><out/in T>a<b <c></in in out>tail</out in out>");
    EXPECT_EQ(Told("<a><b>1</b> <c/></a>"), "</a ><a/b >1</b><a/c ></c></a>");
    EXPECT_EQ(Told("\xEF\xBB\xBF\n <?xml version='1.0'?><a/>\nbehind"), "</a ></a>");
}

TEST(Xml_Events, Encodings) {
    const std::string angstrom = "</a >\xC3\x85</a>";
    EXPECT_EQ(Told("<a>\xC3\x85</a>"), angstrom);
    for (const char* const encoding : {"ISO-8859-1", "windows-1252"})
        EXPECT_EQ(Told("<?xml version='1.0' encoding='" + std::string(encoding) + "'?><a>\xC5</a>"), angstrom);
    EXPECT_EQ(Told(Wide("<?xml version='1.0' encoding='utf-16'?><a>b</a>")), "</a >b</a>");
    EXPECT_EQ(Told("<?xml version='1.0' encoding='utf-16'?><a>\xC3\x85</a>"), angstrom);  // told wrongly
}

TEST(Xml_Events, DamageIsToldBehindWhatWasThere) {
    EXPECT_EQ(Told(""), "Its XML ends too early in line 1");
    EXPECT_EQ(Told("<a><b>1</b>\n<b>2"), "</a ><a/b >1</b><a/b >Its XML ends too early in line 2");
    EXPECT_EQ(Told("<a>\n<b></c></a>"), "</a ><a/b >Its XML is damaged in line 2");
    EXPECT_EQ(Told("\x89PNG"), "Its XML is damaged in line 1");
}

TEST(Xml_Events, NeitherDeepNorGrownNorReachingOut) {
    std::string deep;
    for (int i = 0; i < 100000; ++i) deep += "<a>";
    EXPECT_TRUE(Told(deep).ends_with("The elements of its XML lie too deep in each other in line 1"));

    std::string laughs = "<!DOCTYPE a [<!ENTITY e0 '0123456789'>";
    for (int i = 1; i < 9; ++i) {
        const std::string inner = "&e" + std::to_string(i - 1) + ';';
        laughs += "<!ENTITY e" + std::to_string(i) + " '" + inner + inner + inner + inner + inner + inner + inner + inner + "'>";
    }
    EXPECT_TRUE(Told(laughs + "]><a>&e8;</a>").ends_with("The entities of its XML make it too long in line 1"));
    EXPECT_EQ(Told("<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><a>b&e;</a>"), "</a >b</a>");
}

TEST(Xml_Events, AnExceptionPassesThrough) {
    struct Thrower : Transcript {
        void End(const Xml_Path&, std::string_view) override { throw std::bad_alloc(); }
    } events;
    EXPECT_THROW(static_cast<void>(Walk_Xml("<a><b/><b/></a>", events)), std::bad_alloc);
}

}  // namespace
}  // namespace vntl::test
