// Archives written byte by byte, with every lie that a head can tell.
#include "base/zip_archive.hpp"

#include <gtest/gtest.h>

#include "base/text.hpp"
#include "zip_file.hpp"

namespace vntl::test {
namespace {

const std::vector<Zip_Member> two = {{"a/one.txt", "first"}, {"a\\two.txt", std::string(5000, 'x') + "end", true}};

// The first failure on the way through all members.
std::string Fault(const std::string& bytes, std::size_t limit = most_unpacked) {
    Zip_Archive archive;
    Status status = archive.Open(bytes, limit);
    std::string member;
    for (std::size_t i = 0; i < archive.Names().size() && status.ok(); ++i) status = archive.Unpack(i, member);
    return status.message;
}

TEST(Zip_Archive, MembersWhateverStandsBehind) {
    std::string noted = Zip_File(two);
    noted.replace(noted.size() - 2, 2, "\6\0", 2) += "a note";
    const std::string padding(100000, '\0');
    for (const std::string& bytes :
         {Zip_File(two), Zip_File(two) + padding, Zip_File(two) + "PK\5\6" + std::string(100, 'x'), noted + padding}) {
        Zip_Archive archive;
        ASSERT_EQ(archive.Open(bytes).message, "");
        EXPECT_EQ(archive.Names(), (std::vector<std::string>{"a/one.txt", "a/two.txt"}));
        std::string member;
        ASSERT_EQ(archive.Unpack(1, member).message, "");
        EXPECT_EQ(member, two[1].bytes);
        ASSERT_EQ(archive.Unpack(0, member).message, "");
        EXPECT_EQ(member, "first");
    }
}

TEST(Zip_Archive, EveryRefusal) {
    const std::string whole = Zip_File(two), large = "This zip archive unpacks to more than 512 MB";
    const std::string out = "This zip archive holds a name that leads out of it; it is not opened";
    const std::string damaged = "This zip archive is damaged or cut short";
    std::string wrong = whole;
    wrong[wrong.find("first")] = 'F';  // its checksum tells
    const std::string bomb(1 << 20, '\0');
    EXPECT_EQ(Fault("JPEG"), "This is no zip archive");
    EXPECT_EQ(Fault(""), "This is no zip archive");
    EXPECT_EQ(Fault(wrong), damaged);
    for (const std::size_t size : {4u, 60u, 120u}) EXPECT_EQ(Fault(whole.substr(0, size)), damaged) << size;
    EXPECT_EQ(Fault(whole.substr(0, whole.size() - 3)), damaged);
    for (const char* const name : {"../a.xml", "a/../../b", "a\\..\\b", "/etc/a", "\\a", "C:\\a", ".."})
        EXPECT_EQ(Fault(Zip_File({{name, "x"}})), out) << name;
    EXPECT_EQ(Fault(Zip_File({{"a..b/..c", "x"}})), "");
    EXPECT_EQ(Fault(Zip_File({{"a", "secret", false, -1, 1}})), "This zip archive is encrypted");
    EXPECT_EQ(Fault(Zip_File({{"a", "x", true, 0xFFFFFFF0}})), large);
    EXPECT_EQ(Fault(Zip_File({{"a", bomb, true}}), 1 << 19), large);
    EXPECT_EQ(Fault(Zip_File({{"a", bomb, true}, {"b", bomb, true}}), 3 << 19), large);
    EXPECT_EQ(Fault(Zip_File({{"a", bomb, true}, {"b", bomb, true}}), 2 << 20), "");
    EXPECT_NE(Fault(Zip_File({{"a", bomb, true, 10}}), 1 << 19), "");   // more than it claims
    EXPECT_EQ(Fault(Zip_File({{"a", "short", true, 400 << 20}})), "");  // whole, as its checksum tells, and no 400 MB are taken for it
}

TEST(Zip_Archive, NamesAtEitherEnd) {
    const auto fits = [](std::string_view name) { return Last_Parts(name, 2) == "a/two.txt"; };
    const std::string bytes = Zip_File(two), far = Zip_File({{"first", std::string(200000, 'x')}, two[1]});
    EXPECT_TRUE(Zip_Name_Fits(bytes, fits));
    EXPECT_TRUE(Zip_Name_Fits(bytes.substr(0, 100), fits));
    EXPECT_FALSE(Zip_Name_Fits(bytes.substr(0, 75), fits));
    EXPECT_FALSE(Zip_Name_Fits("x" + bytes, fits));
    EXPECT_TRUE(Zip_Name_Fits(far, fits));
    EXPECT_FALSE(Zip_Name_Fits(far.substr(0, 8192), fits));
    for (std::size_t size = 0; size < 40; ++size) Zip_Name_Fits(bytes.substr(0, size), fits);
    EXPECT_EQ(Last_Parts("c/b/a", 2), "b/a");
    EXPECT_EQ(Last_Parts("/a", 1), "a");
    EXPECT_EQ(Last_Parts("a", 2), "a");
}

}  // namespace
}  // namespace vntl::test
