// What the tests of the session share: a scripted user, a directory that goes away, tiny patterns.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "base/ask.hpp"
#include "patterns/pattern.hpp"
#include "session/load.hpp"
#include "session/preference_table.hpp"

namespace vntl {

// Answers from queues, and remembers every box.
class Scripted_Ask : public Ask {
public:
    Box_Answer Box(const Message_Box& box) override {
        boxes.push_back(box.title + "|" + box.text);
        return box.buttons == Box_Buttons::ok ? Box_Answer::ok : answer;
    }
    std::vector<std::string> Select_Files(std::string_view title, std::string_view filter) override {
        selector_title = title;
        selector_filter = filter;
        return selection;
    }
    std::optional<Format_Choice> Data_Format(const Format_Question& question) override {
        proposals.push_back(question.proposed);
        questions.push_back(question);
        return format ? std::optional(Format_Choice{*format, all_banks}) : std::nullopt;
    }
    bool Constants_Of_File(Constants_Kind kind, Conversion_Constants& file, const Constants_Check& check) override {
        std::vector<Conversion_Constants> rows{file};
        const bool given = Constants_Of_Rows(kind, rows, check);
        file = rows.front();
        return given;
    }
    // Gives one set of constants after another until one is taken, and cancels behind the last.
    bool Constants_Of_Rows(Constants_Kind kind, std::vector<Conversion_Constants>& rows, const Constants_Check& check) override {
        constants_asked.push_back(kind);
        constants_shown = rows;
        for (; !constants.empty(); constants.pop_front()) {
            std::vector<Conversion_Constants> given = rows;
            for (std::size_t i = 0; i < rows.size() && i < constants.front().size(); ++i)
                given[i].first = constants.front()[i].first, given[i].second = constants.front()[i].second;
            const Wrong_Constants wrong = check ? check(given) : Wrong_Constants{};
            if (!wrong.text.empty()) {
                constants_refused.push_back(wrong.text);
                continue;
            }
            rows = std::move(given);
            constants.pop_front();
            return true;
        }
        return false;
    }
    std::string Last_Box() const { return boxes.empty() ? "" : boxes.back(); }

    std::vector<std::string> boxes, selection, constants_refused;
    Box_Answer answer = Box_Answer::ok;  // to every question
    std::string selector_title, selector_filter;
    std::vector<int> proposals;
    std::vector<Format_Question> questions;
    bool all_banks = false;
    std::optional<int> format;
    std::deque<std::vector<std::pair<float, float>>> constants;  // an answer a question, a pair a row; with none left it is cancelled
    std::vector<Constants_Kind> constants_asked;
    std::vector<Conversion_Constants> constants_shown;  // by the last question
};

// Cancels before the file `last` + 1, or while that one is read.
class Cancelling_Ask : public Scripted_Ask {
public:
    Cancelling_Ask(int last, bool reading) : last_(last), reading_(reading) {}
    std::unique_ptr<Progress> Start_Progress(std::string_view, int) override {
        struct Ending : Progress {
            Ending(int files, bool reading) : last(files), while_reading(reading) {}
            bool Go_On(int files, std::string_view) override { return (done = files) < last || while_reading; }
            bool Cancelled() const override { return done >= last; }
            int last, done = 0;
            bool while_reading;
        };
        return std::make_unique<Ending>(last_, reading_);
    }

private:
    int last_;
    bool reading_;
};

// A new directory that is the current one while it lives; HOME and QUENDRIX return to what they were.
class Test_Directory {
public:
    Test_Directory() : before_(std::filesystem::current_path()) {
        std::string name = (std::filesystem::temp_directory_path() / "vntl_session_XXXXXX").string();
        path = std::filesystem::canonical(mkdtemp(name.data())).string();
        std::filesystem::current_path(path);
        for (const char* variable : {"HOME", "QUENDRIX"}) {
            const char* value = std::getenv(variable);
            variables_.emplace_back(variable, value != nullptr ? std::optional<std::string>(value) : std::nullopt);
        }
    }
    ~Test_Directory() {
        std::filesystem::current_path(before_);
        std::filesystem::remove_all(path);
        for (const auto& [variable, value] : variables_) Set(variable.c_str(), value);
    }
    static void Set(const char* variable, const std::optional<std::string>& value) {
        if (value)
            setenv(variable, value->c_str(), 1);
        else
            unsetenv(variable);
    }
    std::string Write(const std::string& name, const std::string& text) const {
        std::ofstream(path + "/" + name, std::ios::binary) << text;
        return path + "/" + name;
    }
    std::string Make(const std::string& name) const {
        std::filesystem::create_directories(path + "/" + name);
        return path + "/" + name;
    }
    static std::string Contents(const std::string& file) {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    std::string path;

private:
    std::filesystem::path before_;
    std::vector<std::pair<std::string, std::optional<std::string>>> variables_;
};

// Another value that the preference takes.
inline std::string Other_Value(const Preference& p) {
    if (const bool* flag = std::get_if<bool>(&p.standard)) return *flag ? "0" : "1";
    if (const int* number = std::get_if<int>(&p.standard)) return std::to_string(*number == p.lo ? p.hi : p.lo);
    if (std::holds_alternative<float>(p.standard)) return "-2.5e3";
    return std::holds_alternative<Colour>(p.standard) ? "1,2,3" : "another text";
}

// A row that no other file shares a command with.
inline Load_Result Load_Row(Session& session, Ask& ask, const std::string& path, const std::string& format, Fresh_Pattern fresh) {
    Load_Notes notes;
    return Load_Row(session, ask, path, format, std::move(fresh), notes);
}

// `npts` points from x = 10 in steps of 1, every array allocated, each ycalc the same.
inline Diffraction_Pattern_Type Tiny_Pattern(int npts = 12, float ycalc = 0, const std::string& scat_var = "2theta") {
    Diffraction_Pattern_Type p;
    EXPECT_TRUE(Allocate_Diffraction_Pattern(p, npts).ok());
    for (int i = 0; i < npts; ++i) {
        p.x[i] = 10.0f + static_cast<float>(i);
        p.y[i] = static_cast<float>(i * i);
    }
    p.ycalc.assign(npts, ycalc);
    p.xmin = p.x.front();
    p.xmax = p.x.back();
    p.scat_var = scat_var;
    return p;
}

}  // namespace vntl
