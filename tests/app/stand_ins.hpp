// Programs that stand in for those that are started: each writes down what it was given.
#pragma once

#include <algorithm>
#include <chrono>
#include <initializer_list>
#include <thread>

#include "app/script.hpp"
#include "app/testing.hpp"

namespace vntl {

using Texts = std::vector<std::string>;

// Names that hold what a shell, a system or a script might take for its own.
inline const Texts odd_names = {"plain",       "two words", " ends in blanks ", "do\"uble",           "sing'le",    "$(touch x)",
                                "`touch x`",   "a;touch x", "a&touch x|b>x",    "50%PATH%",           "two\nlines", "-leading",
                                "back\\slash", "*?[a]~#!",  "écran→μ",          std::string(200, 'l')};

// As a word of a script.
inline std::string Word(const std::string& text) { return Statement_Line({text}); }
// As a file is told.
inline std::string Told(const std::string& file) { return file.find(' ') == std::string::npos ? file : '"' + file + '"'; }

// What one of them was given.
struct Start {
    std::string name, directory;
    std::string state;  // "end" where there is nothing to read, "leads" a session of its own, and the numbers of its open files
    Texts words;        // behind its own name

    bool operator<(const Start& other) const { return std::tie(name, words) < std::tie(other.name, other.words); }
};

// A directory of stand-ins under the names of programs. A text in `Do` is what one does besides, in the shell's language, in its own
// directory and with its words in $1 and on.
class Stand_Ins {
public:
    Stand_Ins() = default;
    Stand_Ins(const fs::path& directory, const fs::path& notes, std::initializer_list<const char*> names) : notes_(notes) {
        fs::create_directories(directory);
        fs::create_directories(notes);
        for (const char* name : names) {
            std::ofstream(directory / name) << Text(name);
            fs::permissions(directory / name, fs::perms::owner_all);
        }
    }

    void Do(const std::string& name, const std::string& text) const { std::ofstream(notes_ / ("do." + name)) << text << '\n'; }

    // What those that were started since the last call have noted, by their names. Waits for as many as there should be.
    std::vector<Start> Started(std::size_t expected) const {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        std::vector<fs::path> files;
        std::vector<Start> starts;
        do {
            files.clear();
            starts.clear();
            for (const auto& entry : fs::directory_iterator(notes_))
                if (Start start; entry.path().extension() == ".note" && Is_Whole(entry.path(), start)) {
                    files.push_back(entry.path());
                    starts.push_back(start);
                }
            if (starts.size() < expected) std::this_thread::sleep_for(std::chrono::milliseconds(5));
        } while (starts.size() < expected && std::chrono::steady_clock::now() < end);
        for (const fs::path& file : files) fs::remove(file);
        EXPECT_EQ(starts.size(), expected);
        std::sort(starts.begin(), starts.end());
        return starts;
    }

private:
    // The shell alone, for speed. Its open files are looked at before it opens any but this text itself.
    std::string Text(const std::string& name) const {
        return "#!/bin/sh\n"
               "notes=" +
               Program::Quoted(notes_) + " name=" + Program::Quoted(name) + R"(
open=
for file in /proc/$$/fd/*; do
    [ "$file" -ef "$0" ] || [ ! -e "$file" ] || open="$open${file##*/} "
done
input=end
read -r line && input=more
read -r stat </proc/$$/stat
stat=${stat##*) }
session=${stat#* * * } session=${session%% *}
[ "$session" = $$ ] && leads=leads || leads=follows
printf '%s\0' "$name" "$PWD" "$input $leads $open" $# "$@" >"$notes/$name.$$.note"
[ -f "$notes/do.$name" ] && . "$notes/do.$name"
if [ "$name" = xterm ] && [ "$1" = -e ]; then shift; exec "$@"; fi
exit 0
)";
    }

    static bool Is_Whole(const fs::path& file, Start& start) {
        std::ifstream stream(file, std::ios::binary);
        Texts texts;
        const std::string all(std::istreambuf_iterator<char>(stream), {});
        for (std::size_t at = 0, end; (end = all.find('\0', at)) != std::string::npos; at = end + 1)
            texts.push_back(all.substr(at, end - at));
        if (texts.size() < 4 || texts.size() - 4 < static_cast<std::size_t>(std::stoi(texts[3]))) return false;
        start = {texts[0], texts[1], texts[2], {texts.begin() + 4, texts.end()}};
        return true;
    }

    fs::path notes_;
};

}  // namespace vntl
