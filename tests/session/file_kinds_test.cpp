// Which extension comes through which door. The letters of an extension count at some doors, and not at others.
#include "session/file_kinds.hpp"

#include <algorithm>

#include "session/load.hpp"
#include "session/session.hpp"
#include "session/testing.hpp"

namespace vntl {
namespace {

// What a door makes of a name: "pattern", "profile", "refused" or, at a door that is closed, "-".
std::string Kind_Behind(const File_Kind_Row* row) {
    if (row == nullptr) return "-";
    if (!row->refusal.empty()) return "refused";
    EXPECT_TRUE(row->open != nullptr) << row->filter_label;
    return row->kind == File_Kind::refined_profile ? "profile" : "pattern";
}

TEST(File_Kinds, EachDoorTakesItsExtensions) {
    struct Row {
        std::vector<std::string> extensions;
        std::string start, recent, one_of_several, recorded;  // one name on the command line, a recent file, a drop, its statement
    };
    const std::vector<std::string> formats = {"dat", "xy",  "xys", "xye", "gr",  "uxd", "sub", "udf",  "csv",  "xrdml",
                                              "bac", "gsa", "gss", "sim", "mdi", "cif", "jcp", "gsas", "fxye", "gda"};
    Row written = {{}, "pattern", "pattern", "pattern", "open"}, mixed = {{"xrdMl"}, "pattern", "-", "pattern", ""};
    for (const std::string& small : formats) {
        std::string capital = small, first = small;
        std::transform(small.begin(), small.end(), capital.begin(), ::toupper);
        first[0] = capital[0];
        written.extensions.insert(written.extensions.end(), {small, capital});
        mixed.extensions.push_back(first);
    }
    const Row rows[] = {
        written,
        mixed,
        {{"prf", "PRF", "Prf", "xrf", "XRF", "Xrf"}, "profile", "profile", "profile", "drop"},
        {{"buf", "BUF"}, "-", "refused", "refused", ""},
        {{"Buf"}, "-", "-", "refused", ""},
        {{"vns", "VNS", "raw", "txt", "x", "prfx", "dat2", "d.at"}, "-", "-", "pattern", ""},
    };
    const Test_Directory dir;
    Session session;
    for (const Row& row : rows)
        for (const std::string& extension : row.extensions) {
            const std::string name = "f.prf.dat.buf." + extension;  // the last point counts
            const File_Kind_Row* recent = Recent_As(name);
            EXPECT_EQ(Kind_Behind(Starts_With(name)), row.start) << name;
            EXPECT_EQ(Kind_Behind(recent), row.recent) << name;
            EXPECT_EQ(recent == nullptr ? "" : recent->statement, row.recorded) << name;
            Scripted_Ask ask;
            Open_Files(session, ask, {name});  // it is not there: each reader has its own words for that
            const std::string expected = row.one_of_several == "profile"   ? "ERROR 00: File not found"
                                         : row.one_of_several == "refused" ? "Buffer files cannot be opened yet"
                                                                           : "The file " + name + " doesn't exist";
            EXPECT_EQ(ask.Last_Box(), "Error Message|ERROR in file: " + name + '\n' + expected);
        }
    for (const std::string name : {"", "f", "f.", "prf", "dir.prf/f", "dir.dat/"}) {
        EXPECT_EQ(Starts_With(name), nullptr) << name;
        EXPECT_EQ(Recent_As(name), nullptr) << name;
    }
}

TEST(File_Kinds, SelectorsOfferTheNamesOfTheirKind) {
    EXPECT_EQ(Selector_Filter(Row_Of(File_Kind::refined_profile)), "Input PRF File (*.prf)|*.prf;*.xrf|");
    for (const File_Kind_Row& row : File_Kinds()) {
        std::string names = row.filter() + ';';
        for (std::size_t end = names.find(';'); !names.empty(); names.erase(0, end + 1), end = names.find(';')) {
            ASSERT_EQ(names[0], '*');
            EXPECT_EQ(File_Kind_Of(names.substr(0, end)), &row) << names;
        }
    }
}

}  // namespace
}  // namespace vntl
