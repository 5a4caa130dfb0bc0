// "Run Quendrix sequential refinement": its dialog, the program that it starts, and the script that it leaves.
#include <sys/stat.h>

#include "app/testing.hpp"

namespace vntl {
namespace {

class Sequential : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        fs::create_directories(directory / "series");
        fs::create_directories(directory / "suite");
        directory = fs::canonical(directory);
    }

    // Statements of the dialog, parted by semicolons; the programs are off.
    Run_Result Do(const std::string& statements, const std::string& before = "programs off\n") const {
        std::string script = before + "command 40161\n";
        for (const char c : statements) script += c == ';' ? '\n' : c;
        return Script(script + "\nquit\n", {}, "QUENDRIX=" + Quoted(directory / "suite"));
    }
    static std::string Value(const Run_Result& run, std::size_t print, const std::string& label) {
        return Field_Value(run.With("dialog").at(print), label);
    }
    std::string In_Series(const std::string& name) const { return directory / "series" / name; }
    std::string Starts(const std::string& words) const { return (directory / "suite/wqx2k").string() + " seq " + words; }
    mode_t Mode(const std::string& file) const {
        struct stat about {};
        EXPECT_EQ(::stat((directory / file).c_str(), &about), 0) << file;
        return about.st_mode & 0777;
    }
};

constexpr const char *control = "Enter PCR filename :", *code = "Data file code [.ext] :",
                     *temperatures = "File with temperatures (if needed)";
const std::string typed = "set \"Enter PCR filename :\" run;set \"Data file code [.ext] :\" d;", ok = "press OK;", ask = "print dialog;",
                  with_script = "set \"Generate Script for QX-Seq\" 1;", line = "qx2k seq run d      1      2 N N N N N\n";

TEST_F(Sequential, StartsWithNothingMarkedAndForgetsWhatItWasTold) {
    const std::string other = "set \"Save DIS files\" 1;set \"Enter first number :\" 0;set \"" + std::string(temperatures) + "\" \"my t\";";
    const Run_Result run = Do(ask + typed + other + ok + "command 40161;" + ask + typed + ok);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.With("dialog").at(0)["title"], "Sequential mode of Quendrix:");
    EXPECT_EQ(run.With("dialog").at(0), run.With("dialog").at(1));
    EXPECT_EQ(Value(run, 0, "Enter first number :") + Value(run, 0, "Enter last number :"), "12");
    EXPECT_EQ(Value(run, 0, control) + Value(run, 0, code) + Value(run, 0, temperatures), "");
    ASSERT_EQ(run.With("started").size(), 2u);
    EXPECT_EQ(run.With("started")[0]["started"], Starts("run d      0      2 N N N Y N -temp \"my t\""));
    EXPECT_EQ(run.With("started")[1]["started"], Starts("run d      1      2 N N N N N"));
}

TEST_F(Sequential, ABadFieldKeepsTheDialogOpen) {
    const std::string blank = "set \"Enter PCR filename :\" \"  \";", first = "set \"Enter first number :\" ",
                      last = "set \"Enter last number :\" ";
    const Run_Result run = Do(ok + ask + blank + ok + typed + first + "3;" + ok + ask + last + "1000000;" + ok + ask + last + "3;" + ok);
    EXPECT_EQ(run.Told(), (std::vector<std::string>{"The name of the PCR file is missing.", "The name of the PCR file is missing.",
                                                    "The last number is less than the first one.",
                                                    "Last number: \"1000000\" is not a number from 0 to 999999"}));
    EXPECT_EQ(run.Marked(), (std::vector<std::vector<int>>{{1611}, {1615}, {1615}}));
    ASSERT_EQ(run.With("started").size(), 1u);
    EXPECT_EQ(run.With("started")[0]["started"], Starts("run d      3      3 N N N N N"));
    EXPECT_TRUE(Do(typed + with_script + "close").With("started").empty());
    EXPECT_FALSE(fs::exists(directory / "run_QXseq.sh"));
}

TEST_F(Sequential, ChosenFilesAreSeenFromTheDirectoryOfTheControlFile) {
    const std::string choose = "press \"Select PCR file\";", temps = "press \"Select Temperature file\";";
    for (const std::string name : {"series/run.one.pcr", "series/t.txt", "other.pcr"}) Write(name, "");
    const Run_Result chosen = Do("files series/run.one.pcr;" + choose + "files series/t.txt;" + temps + "files cancel;" + choose +
                                 "files cancel;" + temps + ask + ok);
    EXPECT_EQ(chosen.errors, "");
    EXPECT_EQ(Value(chosen, 0, control), In_Series("run.one"));
    EXPECT_EQ(Value(chosen, 0, temperatures), "t.txt");
    EXPECT_EQ(chosen.With("started").at(0)["started"], Starts(In_Series("run.one") + " \"\"      1      2 N N N N N -temp t.txt"));
    EXPECT_EQ(chosen.With("started")[0]["arguments"][3], "") << "the numbers keep their places";
    EXPECT_EQ(chosen.With("started")[0]["directory"], In_Series("").substr(0, In_Series("").size() - 1));

    // The file is the chosen one whatever becomes of the name beside it.
    const Run_Result moved = Do("files series/t.txt;" + temps + "files series/run.one.pcr;" + choose + ask + "files other.pcr;" + choose +
                                ask + "set \"Enter PCR filename :\" series/sub.pcr;" + ok);
    EXPECT_EQ(Value(moved, 0, temperatures), "t.txt");
    EXPECT_EQ(Value(moved, 1, temperatures), In_Series("t.txt"));
    EXPECT_EQ(moved.With("started").at(0)["started"], Starts(In_Series("sub") + " \"\"      1      2 N N N N N -temp t.txt"));
}

TEST_F(Sequential, AScriptIsRunByTheShellOfTheSystem) {
    EXPECT_EQ(Do(typed + with_script + ok).errors, "");
    EXPECT_EQ(Text_Of(directory / "run_QXseq.sh"), line);
    EXPECT_EQ(Mode("run_QXseq.sh") & 0111, (Mode("run_QXseq.sh") & 0444) >> 2);
    const Run_Result windows = Do(typed + "set \"Enter PCR filename :\" \"series/5 %.pcr\";" + with_script + ok, "programs off\nos WIND\n");
    EXPECT_EQ(windows.errors, "");
    EXPECT_EQ(Text_Of(In_Series("5 %_QXseq.bat")), "qx2k seq \"" + In_Series("5 %%") + "\" d      1      2 N N N N N\r\n");
    EXPECT_TRUE(windows.With("started").at(0)["started"].get<std::string>().ends_with("\\wqx2k.exe seq \"" + In_Series("5 %") +
                                                                                      "\" d      1      2 N N N N N"));
}

TEST_F(Sequential, AScriptTakesThePlaceOfItsFormerOneAloneWithoutAQuestion) {
    Write("run_QXseq.sh", "qx2k seq run e      1     99 N N N N N\n");
    ::chmod((directory / "run_QXseq.sh").c_str(), 0600);
    EXPECT_TRUE(Do(typed + with_script + ok).Told().empty());
    EXPECT_EQ(Text_Of(directory / "run_QXseq.sh"), line);
    EXPECT_EQ(Mode("run_QXseq.sh"), 0700u);

    Write("run_QXseq.sh", "#!/bin/sh\n" + line);
    const Run_Result kept = Do(typed + with_script + "answer no;" + ok + ask + "press Cancel");
    EXPECT_EQ(kept.Told().size(), 1u);
    EXPECT_EQ(kept.With("dialog").size(), 1u);
    EXPECT_TRUE(kept.With("started").empty());
    EXPECT_EQ(Text_Of(directory / "run_QXseq.sh"), "#!/bin/sh\n" + line);
    EXPECT_EQ(Do(typed + with_script + "answer yes;" + ok).With("started").size(), 1u);
    EXPECT_EQ(Text_Of(directory / "run_QXseq.sh"), line);

    // The dialog stays where it cannot be written; another name, or none, goes on.
    fs::create_directories(directory / "full_QXseq.sh");
    const Run_Result failed =
        Do(typed + "set \"Enter PCR filename :\" full;" + with_script + ok + ask + "set \"Generate Script for QX-Seq\" 0;" + ok);
    EXPECT_EQ(failed.Told(), std::vector<std::string>{"The script cannot be written: " + (directory / "full_QXseq.sh").string()});
    EXPECT_EQ(failed.With("started").size(), 1u);
    EXPECT_EQ(failed.status, 1);
}

}  // namespace
}  // namespace vntl
