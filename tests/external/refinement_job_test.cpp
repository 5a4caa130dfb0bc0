// What control files tell of a run, the names of its files, and when a result is one of this run.
#include "external/refinement_job.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>

#include "base/os.hpp"

namespace vntl {
namespace {

namespace fs = std::filesystem;
using std::string_literals::operator""s;

class Refinement_Files : public testing::Test {
protected:
    void SetUp() override {
        directory = fs::temp_directory_path() / ("refinement" + std::to_string(::getpid()));
        fs::create_directories(directory);
    }
    void TearDown() override { fs::remove_all(directory); }

    std::string Path(const std::string& name) const { return (directory / name).string(); }
    std::string Write(const std::string& name, const std::string& text) const {
        std::ofstream(directory / name, std::ios::binary) << text;
        return Path(name);
    }
    std::string Text(const std::string& name) const {
        std::ifstream file(directory / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    fs::path directory;
};

TEST_F(Refinement_Files, TheHeadTellsWhetherADataFileIsNeeded) {
    const std::string three = "COMM x\n!\n!\n", columns = "!Job Npr Nph\n";
    const struct {
        std::string head;
        char needs;  // 'y', 'n', or 'e' for an error
    } cases[] = {
        {three + columns + "   0   7   1\n", 'y'},
        {three + columns + "  -1   7   1\n", 'y'},
        {three + columns + "   2   7   1\n", 'n'},
        {three + columns + "  -3   7   1\n", 'n'},
        {three + columns + "\t2,7\n", 'n'},
        {three + columns + "2", 'n'},
        {three + columns + "  20   2\n", 'y'},
        {three + "  ! job\tNpr\n 2\n", 'n'},
        {"a\rb\r!Job\r3\r", 'n'},
        {"a\r\nb\r\n!Job\r\n3\r\n", 'n'},
        {three + "!\n" + columns + columns + " 2\n", 'e'},  // below the first one stands no number
        {three + "!\n!\n" + columns + " 2\n", 'n'},         // sixth line
        {three + "!\n!\n!\n" + columns + " 2\n", 'y'},      // seventh line
        {"x\n!Jobs done\n3\n", 'n'},
        {"x\n! Jobs done\n3\n", 'y'},
        {"COMM x\n!\nNPATT 2 1 1\n" + columns + " 1\n", 'n'},
        {three + "NPATT 2\n", 'n'},     // fourth line
        {three + "!\nNPATT 2\n", 'y'},  // fifth line
        {"NPATT 2\n" + columns + " no number\n", 'n'},
        {"one line", 'y'},
        {std::string(100, '\0') + "\xff\xfe", 'y'},
        {std::string(70000, 'x') + "\n!Job\n2\n", 'n'},
        {"", 'e'},
        {three + columns, 'e'},
        {three + columns + "x y z\n", 'e'},
        {three + columns + "nan nan\n", 'e'},
    };
    for (const auto& c : cases) {
        bool needs = c.needs == 'n';  // the other way round, so that an answer must change it, and an error must not
        const Status status = Needs_Data(c.head, needs);
        EXPECT_EQ(status.failed, c.needs == 'e' && !status.message.empty()) << c.head.substr(0, 200);
        EXPECT_EQ(needs, c.needs == 'y') << c.head.substr(0, 200);
    }

    bool needs = true;
    EXPECT_TRUE(File_Needs_Data(Write("a.pcr", "\xEF\xBB\xBF!Job\n2\n" + std::string(200000, '\n')), needs).ok());
    EXPECT_FALSE(needs);
    EXPECT_TRUE(File_Needs_Data(Write("long.pcr", std::string(65536, 'x') + "\n!Job\n2\n"), needs).ok());  // nobody looks that far
    EXPECT_TRUE(needs);
    for (const std::string& bad :
         {Write("empty.pcr", ""), Path("absent.pcr"), directory.string(), "/dev/zero"s, Write("b.pcr", "!Job\n")}) {
        const Status status = File_Needs_Data(bad, needs);
        EXPECT_TRUE(status.failed && status.of_file && status.message.find(bad) != std::string::npos) << status.message;
    }
}

TEST_F(Refinement_Files, NamesOfARun) {
    const struct {
        std::string chosen, directory, base;
        bool is_new;
        std::string control;
    } cases[] = {
        {"/d/pb.pcr", "/d", "pb", false, "/d/pb.pcr"},
        {"/d.x/pb", "/d.x", "pb", false, "/d.x/pb.pcr"},
        {"/d/a.b.c.PCR", "/d", "a.b.c", false, "/d/a.b.c.pcr"},
        {"/d/pb.NEW", "/d", "pb", true, "/d/pb.pcr"},
        {"/pb.pcr", "/", "pb", false, "/pb.pcr"},
        {"/d/.pcr", "/d", "", false, "/d/.pcr"},
    };
    for (const auto& c : cases) {
        const Run_Names names = Names_Of_Run(c.chosen);
        EXPECT_EQ(std::tie(names.directory, names.base, names.is_new), std::tie(c.directory, c.base, c.is_new)) << c.chosen;
        EXPECT_EQ(names.Control_File(), c.control);
    }
    const Run_Names names = Names_Of_Run("/d/pb.pcr");
    EXPECT_EQ(names.Results(), (std::vector{"/d/pb.prf"s, "/d/pb_1.prf"s}));
    const auto data = [&](std::set<std::string> there) {
        return Data_Of_Run(names, [&](const std::string& file) { return there.contains(file); });
    };
    EXPECT_EQ(data({"/d/pb.dat", "/d/pb.int"}), "/d/pb.dat");
    EXPECT_EQ(data({"/d/pb.int", "/d/pb.xys"}), "/d/pb.int");
    EXPECT_EQ(data({"/d/pb.xys", "pb.dat"}), "");
}

TEST_F(Refinement_Files, ANewControlFileKeepsTheFormerOne) {
    const std::string chosen = Write("a.new", "new\r\n\xff");
    const Run_Names names = Names_Of_Run(chosen);
    ASSERT_TRUE(Take_New(names, chosen).ok());
    EXPECT_EQ(Text("a.pcr"), "new\r\n\xff");
    EXPECT_FALSE(fs::exists(directory / "a.pcr.bak"));
    Write("a.pcr", "refined");
    for (int time = 0; time < 2; ++time) ASSERT_TRUE(Take_New(names, chosen).ok());  // the second time nothing is left to take
    EXPECT_EQ(Text("a.pcr") + Text("a.pcr.bak"), "new\r\n\xffrefined");

    // A file that is not to change stays, and so does one whose copy cannot be kept.
    for (const bool mark : {true, false}) {
        Write("b.pcr", "old");
        fs::remove_all(directory / "b.pcr.bak");
        if (mark)
            fs::permissions(directory / "b.pcr", fs::perms::owner_read);
        else
            fs::create_directory(directory / "b.pcr.bak");
        const Status status = Take_New(Names_Of_Run(Write("b.new", "new")), Path("b.new"));
        EXPECT_TRUE(status.failed && status.message.find(Path("b.pcr")) != std::string::npos) << status.message;
        EXPECT_EQ(Text("b.pcr"), "old");
        fs::permissions(directory / "b.pcr", fs::perms::owner_all);
    }
    EXPECT_TRUE(Take_New(Names_Of_Run(Path("no.new")), Path("no.new")).failed);
    EXPECT_FALSE(fs::exists(directory / "no.pcr"));
}

TEST_F(Refinement_Files, AResultIsOneThatTheRunWrote) {
    const Run_Names names = Names_Of_Run(Path("r.pcr"));
    EXPECT_EQ(Awaited_Results(names.Results()).There(), "");
    const std::string first = Write("r.prf", "old"), second = Path("r_1.prf");
    const auto after = [&](const std::function<void()>& run) {
        const Awaited_Results results(names.Results());
        EXPECT_EQ(results.Written(), "");
        run();
        return results.Written();
    };
    EXPECT_EQ(after([] {}), "");
    EXPECT_EQ(after([&] { Text("r.prf"); }), "");
    EXPECT_EQ(after([&] { Write("r_1.prf", "x"); }), second);
    EXPECT_EQ(after([&] { Write("r.prf", "older"); }), first);  // another size
    EXPECT_EQ(after([&] { fs::last_write_time(first, fs::last_write_time(first) + std::chrono::nanoseconds(1)); }), first);
    EXPECT_EQ(after([&] {  // the same size and time
                  const auto time = fs::last_write_time(first);
                  fs::rename(Write("other", "OLDER"), first);
                  fs::last_write_time(first, time);
              }),
              first);
    EXPECT_EQ(after([&] { Write("r.prf", "both"), Write("r_1.prf", "both"); }), first);
    EXPECT_EQ(after([&] { fs::remove(first); }), "");
    EXPECT_EQ(after([&] { fs::create_directory(first); }), "");
    EXPECT_EQ(Awaited_Results(names.Results()).There(), second);
}

}  // namespace
}  // namespace vntl
