// Which extension comes through which door. The letters of an extension count at some doors, and not at others.
#include "session/file_kinds.hpp"

#include <algorithm>

#include "base/os.hpp"
#include "base/text.hpp"
#include "session/load.hpp"
#include "session/session.hpp"
#include "session/testing.hpp"

namespace vntl {
namespace {

// What a door makes of a name: "pattern", "profile", "raw", "list", "constants" or, at a door that is closed, "-".
std::string Kind_Behind(const File_Kind_Row* row) {
    if (row == nullptr) return "-";
    EXPECT_TRUE(row->open != nullptr) << row->filter_label;
    switch (row->kind) {
        case File_Kind::refined_profile:
            return "profile";
        case File_Kind::raw_data:
            return "raw";
        case File_Kind::list_of_files:
            return "list";
        case File_Kind::constants:
            return "constants";
        default:
            return "pattern";
    }
}

TEST(File_Kinds, EachDoorTakesItsExtensions) {
    struct Row {
        std::vector<std::string> extensions;
        std::string start, recent, one_of_several, recorded;  // one name on the command line, a recent file, a drop, its statement
    };
    const std::vector<std::string> formats = {"dat", "xy",   "xys",  "xye", "gr",  "uxd", "sub", "udf",  "csv",  "xrdml",
                                              "bac", "gsa",  "gss",  "sim", "mdi", "cif", "jcp", "gsas", "fxye", "gda",
                                              "raw", "brml", "rasx", "ras", "asc", "cpi", "chi", "rd",   "sd",   "nxs"};
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
        {{"3t2", "3T2", "g44", "G44", "3t2o"}, "raw", "raw", "raw", "drop"},
        {{"instprm", "prm", "PRM", "Iparm"}, "constants", "constants", "constants", "drop"},
        {{"buf", "BUF"}, "list", "list", "list", "drop"},
        {{"Buf"}, "list", "-", "list", ""},
        {{"vns", "VNS", "txt", "x", "prfx", "dat2", "d.at"}, "-", "-", "pattern", ""},
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
            const std::string head = "Error Message|ERROR in file: " + name + '\n';
            EXPECT_EQ(ask.Last_Box(), row.one_of_several == "profile" || row.one_of_several == "raw" ? head + "ERROR 00: File not found"
                                      : row.one_of_several == "constants"
                                          ? "Error Message|An instrument file gives constants to profiles: open a pattern first"
                                      : row.one_of_several == "list" ? "File doesn't exist...|File doesn't exist\n" + dir.path + '/' + name
                                                                     : head + "The file " + name + " doesn't exist");
        }
    for (const std::string name : {"", "f", "f.", "prf", "dir.prf/f", "dir.dat/"}) {
        EXPECT_EQ(Starts_With(name), nullptr) << name;
        EXPECT_EQ(Recent_As(name), nullptr) << name;
    }
}

// What several names of a command line open is opened alone too, and from the recent files.
TEST(File_Kinds, AFileThatIsThereComesInByItsContents) {
    const Test_Directory dir;
    std::string columns = "title\n", commas = "angle,counts\n";
    for (int i = 0; i < 20; ++i) {
        columns += std::to_string(10 + i) + " 5 1\n";
        commas += std::to_string(10 + i) + ",5\n";
    }
    for (const char* name : {"a.Xye", "a.txt", "a", "a.b.c", "a.buf", "a.Buf", "a.csv", "a.vns", "a.xye", "a.Prf"}) {
        for (const std::string& text : {columns, commas, std::string("prose\n")}) {
            const std::string file = dir.Write(name, text);
            const bool told = std::string(name) == "a.csv" || std::string(name) == "a.xye" || std::string(name) == "a.Prf";
            const bool list = Lower(Extension_Of(name)) == ".buf", closed = Lower(Extension_Of(name)) == ".vns";
            const bool opens = told || list || std::string(name) == "a.Xye" || (!closed && text != "prose\n");
            EXPECT_EQ(Starts_With(file) != nullptr, opens) << name << text;
            const File_Kind_Row* recent = Recent_As(file);
            EXPECT_EQ(recent != nullptr && recent->open != nullptr, opens) << name << text;
            if (!opens || list || text == "prose\n" || std::string(name) == "a.Prf") continue;
            Session alone, several;
            Scripted_Ask ask;
            Starts_With(file)->open(alone, ask, file);
            Open_Files(several, ask, {file, file});
            ASSERT_EQ(alone.store.nperfiles(), 1) << name << text;
            EXPECT_EQ(several.store.nperfiles(), 2);
            EXPECT_EQ(alone.store.Info(1).format, several.store.Info(1).format);
            EXPECT_TRUE(ask.boxes.empty() && ask.questions.empty()) << ask.Last_Box();
        }
    }
}

TEST(File_Kinds, SelectorsOfferTheNamesOfTheirKind) {
    EXPECT_EQ(Selector_Filter(Row_Of(File_Kind::refined_profile)), "Input PRF File (*.prf)|*.prf;*.xrf|");
    EXPECT_EQ(Selector_Filter(Row_Of(File_Kind::list_of_files)), "Buffer Data File (*.buf)|*.buf|");
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
