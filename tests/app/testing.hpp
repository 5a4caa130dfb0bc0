// Runs the real program with a session script, in a directory and a home of its own.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace vntl {

using Json = nlohmann::json;
namespace fs = std::filesystem;

struct Run_Result {
    int status = -1;
    std::vector<Json> lines;  // of standard output
    std::string output, errors;

    // Texts of the message boxes, in order.
    std::vector<std::string> Boxes() const {
        std::vector<std::string> texts;
        for (const Json& line : lines)
            if (line.contains("box")) texts.push_back(line["text"]);
        return texts;
    }
    // Without the one about preferences, which opens the session of a new user.
    std::vector<std::string> Told() const {
        std::vector<std::string> texts = Boxes();
        std::erase_if(texts, [](const std::string& text) { return text.starts_with("WARNING: No preferences file"); });
        return texts;
    }
    // The numbers of the fields marked as refused, at each `print dialog`.
    std::vector<std::vector<int>> Marked() const {
        std::vector<std::vector<int>> marked;
        for (const Json& line : lines) {
            if (!line.contains("dialog")) continue;
            marked.emplace_back();
            for (const Json& field : line["fields"])
                if (field.contains("marked") && field["marked"] == true) marked.back().push_back(field["field"]);
        }
        return marked;
    }
    // The lines that hold a name, such as "plot_type" or "row".
    std::vector<Json> With(const std::string& name) const {
        std::vector<Json> found;
        for (const Json& line : lines)
            if (line.contains(name)) found.push_back(line);
        return found;
    }
};

// What stands in a field of a dialog, by its number or its label.
inline std::string Field_Value(const Json& dialog, const Json& field) {
    for (const Json& row : dialog["fields"])
        if (row[field.is_number() ? "field" : "label"] == field) return row["value"];
    return "no field " + field.dump() + " in " + dialog.dump();
}

class Program : public testing::Test {
public:
    static std::string Quoted(const std::string& text) {
        std::string quoted = "'";
        for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
        return quoted + "'";
    }

protected:
    void SetUp() override {
        const auto* info = testing::UnitTest::GetInstance()->current_test_info();
        directory = fs::temp_directory_path() / (std::string("vantrelo_") + info->name() + std::to_string(::getpid()));
        fs::remove_all(directory);
        fs::create_directories(directory / "home");
    }
    void TearDown() override { fs::remove_all(directory); }

    static std::string Pattern(const std::string& name) { return std::string(TEST_DATA) + "/patterns/" + name; }

    Run_Result Run(const std::vector<std::string>& arguments, const std::string& environment = {}) const {
        const fs::path out = directory / "out.txt", err = directory / "err.txt";
        std::string line =
            "cd " + Quoted(directory) + " && HOME=" + Quoted(directory / "home") + ' ' + environment + " timeout 100 " + VANTRELO_PROGRAM;
        for (const std::string& argument : arguments) line += ' ' + Quoted(argument);
        line += " >" + Quoted(out) + " 2>" + Quoted(err) + " </dev/null";
        Run_Result result;
        const int status = std::system(line.c_str());
        result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128;
        result.output = Text_Of(out);
        result.errors = Text_Of(err);
        return result;
    }

    Run_Result Script(const std::string& text, const std::vector<std::string>& files = {}, const std::string& environment = {}) const {
        std::ofstream(directory / "script.vns") << text;
        std::vector<std::string> arguments = {"--script", "script.vns"};
        arguments.insert(arguments.end(), files.begin(), files.end());
        Run_Result result = Run(arguments, environment);
        std::istringstream lines(result.output);
        for (std::string line; std::getline(lines, line);) {
            const Json object = Json::parse(line, nullptr, false);
            EXPECT_FALSE(object.is_discarded()) << line;
            result.lines.push_back(object);
        }
        return result;
    }

    // Of a path from the test's directory, or another.
    void Write(const fs::path& file, const std::string& text) const { std::ofstream(directory / file, std::ios::binary) << text; }
    static std::string Text_Of(const fs::path& file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    fs::path directory;
};

}  // namespace vntl
