// The words of a sequential refinement, told and in a script. What a script says is heard by a program that a shell runs from it.
#include "external/sequential.hpp"
#include "external/program_suite.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace vntl {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

Sequential_Input Series(std::string control, std::string data_code, std::string temperatures = {}) {
    Sequential_Input input;
    input.control = std::move(control);
    input.data_code = std::move(data_code);
    input.temperatures = std::move(temperatures);
    return input;
}

std::string Script(const Sequential_Input& input, std::string_view system) {
    std::string text;
    EXPECT_TRUE(Sequential_Script(input, system, text).ok());
    return text;
}

TEST(Sequential, ANameLosesTheDirectoryInWhichTheProgramRuns) {
    struct Case {
        std::string directory, file, seen;
    };
    for (const Case& c : {Case{"/a/b", "/a/b/t", "t"},
                          {"/a/b", "/a/t", "/a/t"},
                          {"/a/b", "/a/b/c/t", "/a/b/c/t"},
                          {"/a/b", "t", "t"},
                          {"/", "/t", "t"},
                          {"/a", "/t", "/t"},
                          {"C:\\a", "C:\\a\\t", "t"},
                          {"C:\\a", "D:\\a\\t", "D:\\a\\t"}})
        EXPECT_EQ(Name_Seen_From(c.directory, c.file, c.directory[0] == '/' ? '/' : '\\'), c.seen) << c.directory << ' ' << c.file;
}

// --- scripts -----------------------------------------------------------------------------------------------------------------------

TEST(Sequential, AScriptIsOneLineForTheShellOfTheSystem) {
    EXPECT_EQ(Sequential_Script_Name("C:\\a\\run", "WIND"), "C:\\a\\run_QXseq.bat");
    EXPECT_EQ(Sequential_Script_Name("/a/run", "LINU"), "/a/run_QXseq.sh");
    EXPECT_EQ(Sequential_Script_Name(std::string(200, 'x'), "MACO"), std::string(200, 'x') + "_QXseq.sh");

    struct Case {
        std::string system, name, quoted;
    };
    const Case cases[] = {
        {"LINU", "/a/b_c+D-9.x", "/a/b_c+D-9.x"},
        {"LINU", "it's", "'it'\\''s'"},
        {"MACO", "50%", "'50%'"},
        {"WIND", "a/b_c+D-9.x", "a/b_c+D-9.x"},
        {"WIND", "C:\\my data\\run", "\"C:\\my data\\run\""},
        {"WIND", "50%TEMP%", "\"50%%TEMP%%\""},
        {"WIND", "a&b^c", "\"a&b^c\""},
        {"WIND", "C:\\a\\", "\"C:\\a\\\\\""},
        {"WIND", "", "\"\""},
    };
    for (const Case& c : cases) {
        const std::string end = c.system == "WIND" ? "\r\n" : "\n", text = Script(Series("run", c.name), c.system);
        EXPECT_EQ(text, "qx2k seq run " + c.quoted + "      1      2 N N N N N" + end);
        EXPECT_TRUE(Is_Sequential_Script(text));
    }
    for (const std::string name : {"a\"b", "a\nb", "a\rb"}) {
        std::string text = "as before";
        EXPECT_TRUE(Sequential_Script(Series("run", name), "WIND", text).failed);
        EXPECT_EQ(text, "as before");
    }
    const std::string line = "qx2k seq run d      1      2 N N N N N";
    for (const std::string& other :
         {std::string(), line, "#!/bin/sh\n" + line + '\n', line + "\nx", line + "\n\n", line + "\r\nx", std::string("qx2k sequel\n")})
        EXPECT_FALSE(Is_Sequential_Script(other)) << other;
}

TEST(Sequential, TheShellGivesTheWordsOnAsTheyAre) {
    const fs::path directory = fs::temp_directory_path() / ("sequential" + std::to_string(::getpid()));
    fs::create_directories(directory);
    std::ofstream(directory / "qx2k") << "#!/bin/sh\nprintf '%s\\0' \"$@\" >told\n";
    fs::permissions(directory / "qx2k", fs::perms::owner_all);
    const Words names = {"plain",     "",          "two words", "it's",  "\"both'", "$(touch x)", "`touch x`",
                         "a;touch x", "a&touch x", "*",         "~",     "#c",      "a\nb",       "back\\sl",
                         "end\\",     "-dash",     "50%",       "$HOME", ">x",      "{a,b}",      " outside "};
    for (const std::string& name : names) {
        const Sequential_Input input = Series(name, name, name);
        std::ofstream(directory / "script.sh") << Script(input, "LINU");
        ASSERT_EQ(std::system(("cd '" + directory.string() + "' && PATH=.:$PATH /bin/sh script.sh").c_str()), 0) << name;
        Words heard;
        std::ifstream told(directory / "told", std::ios::binary);
        for (std::string word; std::getline(told, word, '\0');) heard.push_back(word);
        Command_Line command;
        Add_Sequential(command, input);
        EXPECT_EQ(heard, command.words()) << name;
        EXPECT_EQ(heard.at(1), name == "-dash" ? "./-dash" : name);
        EXPECT_FALSE(fs::exists(directory / "x")) << name;
    }
    fs::remove_all(directory);
}

}  // namespace
}  // namespace vntl
