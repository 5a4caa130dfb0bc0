// Lists of files as a user meets them: saved, opened through each door, and every box on the way.
#include "app/testing.hpp"

namespace vntl {
namespace {

class List_Files : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        Write("a.xye", "a\n10 1 1\n10.1 2 1\n10.2 3 1\n10.3 4 1\n");
        Write("b.xye", "b\n10 5 1\n10.1 6 1\n10.2 7 1\n10.3 8 1\n");
        fs::copy_file(fs::path(TEST_DATA) / "patterns/calculated.xys", directory / "refined.xys");
    }
    void Write(const std::string& name, const std::string& text) const { std::ofstream(directory / name) << text; }
    std::string Path(const std::string& name) const { return (directory / name).string(); }
    // Titles and texts, but of the box about preferences.
    static std::string Boxes_Of(const Run_Result& run) {
        std::string all;
        for (const Json& box : run.With("box"))
            if (box["box"] != "Loading preferences file")
                all += box["box"].get<std::string>() + '|' + box["text"].get<std::string>() + '\n';
        return all;
    }
};

TEST_F(List_Files, ASavedListOpensThroughEveryDoor) {
    const Run_Result saving =
        Script("files run\ncommand 40009\nprint rows\nfiles cancel\ncommand 40009\n", {"b.xye", "refined.xys", "a.xye"});
    EXPECT_EQ(saving.status, 0) << saving.errors << saving.output;
    EXPECT_EQ(Boxes_Of(saving), "");
    EXPECT_EQ(Text_Of(directory / "run.buf"), Path("b.xye") + '\n' + Path("a.xye") + '\n') << "the calculated pattern is left out";
    const auto rows = [](const Run_Result& run) {
        std::string all;
        for (const Json& row : run.With("kind")) all += row["file_name"].get<std::string>() + ' ' + row["kind"].get<std::string>() + ' ';
        return all + run.With("plot_type").back()["plot_type"].get<std::string>() + Json(run.With("recent").back()).dump();
    };
    const std::string looks = "print rows\nprint recent\nprint state\n";
    const std::string expected = rows(Script(looks, {"run.buf"}));
    EXPECT_EQ(expected.find("b.xye DATA a.xye DATA multi{\"recent\":[\"" + Path("run.buf") + "\",\"-\""), 0u) << expected;
    for (const char* door :
         {"files run.buf\ncommand 40015\n", "drop run.buf\n", "open run.buf\n", "drop a.xye\ncommand 40019\ndrop run.buf\n"})
        EXPECT_EQ(rows(Script(door + looks)).substr(0, 40), expected.substr(0, 40)) << door;
    const Run_Result again = Script("drop run.buf\ncommand 40019\ncommand 40038\nfiles again.buf\ncommand 40009\n" + looks);
    EXPECT_EQ(rows(again), expected);
    EXPECT_EQ(Text_Of(directory / "again.buf"), Text_Of(directory / "run.buf"));
    EXPECT_EQ(Run({"--export", "two.png", "run.buf"}).status, 0);
    EXPECT_EQ(Run({"--export", "three.png", "refined.xys", "run.buf"}).status, 0);
    EXPECT_GT(fs::file_size(directory / "three.png"), 2000u);
}

TEST_F(List_Files, SavingAsksBeforeItReplacesAndTellsWhatItCannotDo) {
    fs::create_directories(directory / "v1.2" / "taken.buf");
    for (const char* name : {"old.buf", "locked.buf"}) Write(name, "old\n");
    fs::permissions(directory / "locked.buf", fs::perms::owner_read);
    fs::create_symlink("/dev/full", directory / "full.buf");  // takes no byte, as a full disk
    const std::string question = "Over Write BUF file?|The file exist,\nDo you want overwrite it?\n",
                      failure = "Unable to write buffer file!";
    const struct {
        std::string name, answer, boxes;
        int status;
        std::string file, text;
    } cases[] = {
        {"old.buf", "no", question, 0, "old.buf", "old\n"},
        {"v1.2/fresh", "", "", 0, "v1.2/fresh.buf", Path("a.xye") + '\n'},
        {"named.txt", "", "", 0, "named.txt", Path("a.xye") + '\n'},
        {"locked.buf", "yes", question + "Error Message|" + failure, 1, "locked.buf", "old\n"},
        {"v1.2/taken.buf", "", "Error Message|" + failure, 1, "old.buf", "old\n"},
        {"absent/x.buf", "", "Error Message|" + failure, 1, "old.buf", "old\n"},
        {"full.buf", "yes", question + "Error Message|" + failure, 1, "old.buf", "old\n"},
        {"old.buf", "yes", question, 0, "old.buf", Path("a.xye") + '\n'},
    };
    for (const auto& [name, answer, boxes, status, file, text] : cases) {
        const std::string reply = answer.empty() ? "" : "answer " + answer + '\n';
        const Run_Result run = Script("files \"" + name + "\"\n" + reply + "command 40009\n", {"a.xye"});
        EXPECT_EQ(run.status, status) << name << run.errors;
        EXPECT_EQ(Boxes_Of(run).find(boxes), 0u) << name << ": " << Boxes_Of(run);
        EXPECT_EQ(Boxes_Of(run).empty(), boxes.empty()) << name << ": " << Boxes_Of(run);
        EXPECT_EQ(Text_Of(directory / file), text) << name;
    }
}

TEST_F(List_Files, AListThatFailsLeavesAnEmptyProgram) {
    Write("bad.buf", "a.xye\nabsent.xye\n");
    Write("nested.buf", "a.xye\nbad.buf\n");
    const std::string looks = "print state\nprint menu 40009\n";
    for (const std::string way : {"files bad.buf\ncommand 40015\n", "drop bad.buf\n"}) {
        const Run_Result run = Script("mouse data move 10.1 3\n" + way + looks, {"b.xye"});
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(Boxes_Of(run), "Error Message|ERROR Opening file: " + Path("absent.xye") + "\nThe file " + Path("absent.xye") +
                                     " doesn't exist\nNo profile is left.\n");
        const Json state = run.With("plot_type").back();
        EXPECT_EQ(state["nperfiles"], 0);
        EXPECT_EQ(state["plot_type"], "none");
        EXPECT_EQ(state["status"][1], "");
        EXPECT_EQ(run.With("enabled").back()["enabled"], false);
    }
    const Run_Result nested = Script("drop nested.buf\nfiles absent.buf\ncommand 40015\n" + looks, {"b.xye"});
    EXPECT_EQ(nested.status, 1);
    EXPECT_EQ(Boxes_Of(nested), "Error Message|Unable to read buffer file " + Path("nested.buf") + "\nIt names a list of files: " +
                                    Path("bad.buf") + "\nFile doesn't exist...|File doesn't exist\n" + Path("absent.buf") + '\n');
    EXPECT_EQ(nested.With("plot_type").back()["nperfiles"], 1);
}

}  // namespace
}  // namespace vntl
