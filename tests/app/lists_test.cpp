// Lists of files as a user meets them: saved, opened through each door, and the boxes on the way.
#include "app/testing.hpp"

namespace vntl {
namespace {

class List_Files : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        for (const std::string name : {"a.xye", "b.xye"}) Write(name, name + "\n10 1 1\n10.1 2 1\n10.2 3 1\n10.3 4 1\n");
        fs::copy_file(Pattern("calculated.xys"), directory / "refined.xys");
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
    Script("files run\ncommand 40009\nfiles cancel\ncommand 40009\n", {"b.xye", "refined.xys", "a.xye"});
    EXPECT_EQ(Text_Of(directory / "run.buf"), Path("b.xye") + '\n' + Path("a.xye") + '\n') << "the calculated pattern is left out";
    for (const char* door : {"files run.buf\ncommand 40015\n", "drop run.buf\ncommand 40019\ncommand 40038\n", ""}) {
        const Run_Result run = Script(std::string(door) + "print rows\nprint recent\nfiles again.buf\nanswer yes\ncommand 40009\n",
                                      *door == '\0' ? std::vector<std::string>{"run.buf"} : std::vector<std::string>{});
        std::string rows;
        for (const Json& row : run.With("kind")) rows += row["file_name"].get<std::string>() + ' ' + row["kind"].get<std::string>() + ' ';
        EXPECT_EQ(rows, "b.xye DATA a.xye DATA ") << door << run.errors;
        EXPECT_EQ(run.With("recent").at(0)["recent"], Json({Path("run.buf"), "-", "-", "-", "-"}));
        EXPECT_EQ(Text_Of(directory / "again.buf"), Text_Of(directory / "run.buf"));
    }
    EXPECT_EQ(Run({"--export", "three.png", "refined.xys", "run.buf"}).status, 0);
}

TEST_F(List_Files, SavingAsksBeforeItReplacesAndTellsWhatItCannotDo) {
    fs::create_directories(directory / "v1.2" / "taken.buf");
    for (const char* name : {"old.buf", "locked.buf"}) Write(name, "old\n");
    fs::permissions(directory / "locked.buf", fs::perms::owner_read);
    fs::create_symlink("/dev/full", directory / "full.buf");  // takes no byte, as a full disk
    const std::string question = "Over Write BUF file?|The file exist,\nDo you want overwrite it?\n";
    const std::string failure = "Error Message|Unable to write buffer file!", whole = Path("a.xye") + '\n';
    const struct {
        std::string name, answer, boxes, file, text;
    } cases[] = {
        {"old.buf", "no", question, "old.buf", "old\n"},
        {"v1.2/fresh", "yes", "", "v1.2/fresh.buf", whole},
        {"locked.buf", "yes", question + failure, "locked.buf", "old\n"},
        {"v1.2/taken.buf", "yes", failure, "old.buf", "old\n"},
        {"full.buf", "yes", question + failure, "old.buf", "old\n"},
        {"old.buf", "yes", question, "old.buf", whole},
    };
    for (const auto& [name, answer, boxes, file, text] : cases) {
        const Run_Result run = Script("files " + name + "\nanswer " + answer + "\ncommand 40009\n", {"a.xye"});
        EXPECT_EQ(Boxes_Of(run).substr(0, boxes.size()), boxes) << name << run.errors;
        EXPECT_EQ(Boxes_Of(run).empty(), boxes.empty()) << name;
        EXPECT_EQ(run.status, boxes.ends_with('!') ? 1 : 0) << name;
        EXPECT_EQ(Text_Of(directory / file), text) << name;
    }
}

TEST_F(List_Files, AListThatFailsLeavesAnEmptyProgram) {
    Write("bad.buf", "a.xye\nabsent.xye\n");
    const Run_Result run = Script("mouse data move 10.1 3\ndrop bad.buf\nprint state\nprint menu 40009\n", {"b.xye"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(Boxes_Of(run), "Error Message|ERROR Opening file: " + Path("absent.xye") + "\nThe file " + Path("absent.xye") +
                                 " doesn't exist\nNo profile is left.\n");
    const Json state = run.With("plot_type").back();
    EXPECT_EQ(Json({state["nperfiles"], state["plot_type"], state["status"][1]}), Json({0, "none", ""}));
    EXPECT_EQ(run.With("enabled").back()["enabled"], false);
}

}  // namespace
}  // namespace vntl
