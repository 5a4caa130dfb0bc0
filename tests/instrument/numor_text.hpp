// Texts of numors for tests: what a run holds, and the ways in which files lay it out.
//
//     Numor_Text run = Numor_Text::Of("R3A", {{.time = 60, .monitor = 1000, .angles = {5.0}, .counts = {10, 20, 30}}});
//     run.F(18) = 2.41;
//     run.groups = Numor_Groups::own_reals;
//     const std::string text = run.Text();
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace vntl {

struct Numor_Frame {
    double time = 60;  // seconds
    double monitor = 1000;
    double total = 0;  // 0: none is told
    std::vector<double> angles = {10.0};
    std::vector<long long> counts;
};

// Where time, monitor and angles of a frame stand.
enum class Numor_Groups {
    in_counts,     // in front of the frame's counts: monitor, time (ms), angle (thousandths)
    own_integers,  // in a block of their own: time (ms), monitor, total, angles (thousandths)
    own_reals,
    none
};

struct Numor_Text {
    int numor = 123456;
    std::string instrument = "R3A";
    std::string user = "user            26-Nov-05 10:20:30";
    std::string title = "powder at 300 K";
    std::string scantype = "2theta";
    std::vector<int> integers = std::vector<int>(31, 0);
    std::vector<double> reals = std::vector<double>(50, 0.0);
    std::vector<double> more_reals = {};  // of a second F block
    std::vector<Numor_Frame> frames;

    Numor_Groups groups = Numor_Groups::in_counts;
    bool one_block = true;        // one block of counts for all frames, else one a frame
    bool header_integers = true;  // the header has an I block
    bool reals_first = false;     // the header's F block stands above its I block
    bool subscans = false;        // an S block opens what belongs to a frame
    bool frame_markers = false;   // a V marker too
    bool labels = true;           // above texts and numbers
    bool cut_blanks = false;      // lines end with their last character
    std::size_t marker = 80;      // letters of a marker
    char counts_letter = 'I';
    std::string line_end = "\n";

    int& I(std::size_t word) { return integers.at(word - 1); }  // words count from 1
    double& F(std::size_t word) {
        if (reals.size() < word) reals.resize(word, 0.0);
        return reals[word - 1];
    }

    // A run whose header tells of these frames, in the layout that its instrument writes.
    static Numor_Text Of(const std::string& instrument, std::vector<Numor_Frame> frames) {
        Numor_Text run;
        run.instrument = instrument;
        run.frames = std::move(frames);
        const std::size_t nbdata = run.frames.empty() ? 0 : run.frames[0].counts.size();
        run.I(4) = 2;
        run.I(5) = run.frames.empty() ? 1 : static_cast<int>(run.frames[0].angles.size());
        run.I(7) = static_cast<int>(run.frames.size());
        run.I(9) = 3;
        run.I(24) = static_cast<int>(nbdata);
        for (std::size_t word = 25; word <= 31; ++word) run.I(word) = static_cast<int>(word);
        if (!run.frames.empty()) run.Tell_Scan();
        if (instrument != "R3A") {
            run.groups = Numor_Groups::own_reals;
            run.subscans = true;
            run.one_block = false;
        }
        return run;
    }

    std::string Text() const {
        std::string text;
        Open(text, 'R', {numor, 1, 4});
        Line(text, "run of the institute");
        Put_Text(text, "Inst User L.C. Date Time", (instrument + "    ").substr(0, 4) + user);
        Put_Text(text, "Title                    Scantype", Padded(title, 72) + scantype);
        if (reals_first) Put_Reals(text, reals);
        if (header_integers) Put_Integers(text, 'I', {integers.begin(), integers.end()});
        if (!reals_first) Put_Reals(text, reals);
        if (!more_reals.empty()) Put_Reals(text, more_reals);
        one_block ? Put_One_Block(text) : Put_Frames(text);
        return text;
    }

private:
    void Tell_Scan() {
        const double start = frames[0].angles.empty() ? 0.0 : frames[0].angles[0];
        const bool several = frames.size() > 1 && !frames[1].angles.empty();
        const double step = several ? frames[1].angles[0] - start : instrument == "R3B" ? 0.05 : 0.0;
        if (instrument == "R8") {
            F(1) = frames[0].monitor, F(12) = start;
            return;
        }
        F(36) = start, F(37) = step, F(38) = step * static_cast<double>(frames.size() - 1);
        if (instrument == "R22") F(51) = frames[0].monitor, F(52) = frames[0].time;
    }

    static std::string Padded(std::string text, std::size_t width) {
        text.resize(width, ' ');
        return text;
    }
    void Line(std::string& text, std::string line) const {
        line.resize(std::max<std::size_t>(line.size(), 80), ' ');
        if (cut_blanks) line.erase(line.find_last_not_of(' ') + 1);
        text += line + line_end;
    }
    template <class Number>
    void Columns(std::string& text, const std::vector<Number>& values, std::size_t a_line, const char* format) const {
        std::string line;
        char column[64];
        for (std::size_t i = 0; i < values.size(); ++i) {
            std::snprintf(column, sizeof column, format, values[i]);
            line += column;
            if ((i + 1) % a_line == 0 || i + 1 == values.size()) Line(text, std::exchange(line, {}));
        }
    }
    void Open(std::string& text, char letter, const std::vector<long long>& words) const {
        text += std::string(marker, letter) + line_end;
        Columns(text, words, 10, "%8lld");
    }
    void Put_Text(std::string& text, const char* label, const std::string& line) const {
        Open(text, 'A', {80, 1});
        if (labels) Line(text, label);
        Line(text, line);
    }
    void Labels(std::string& text) const {
        if (!labels) return;
        Line(text, "    first  second");
        Line(text, "    third  fourth");
    }
    void Put_Reals(std::string& text, const std::vector<double>& values) const {
        Open(text, 'F', {static_cast<long long>(values.size()), labels ? 2 : 0});
        Labels(text);
        Columns(text, values, 5, "%16.8E");
    }
    void Put_Integers(std::string& text, char letter, const std::vector<long long>& values) const {
        Open(text, letter, {static_cast<long long>(values.size()), labels ? 2 : 0});
        Labels(text);
        letter == 'J' ? Columns(text, values, 8, "%10lld") : Columns(text, values, 10, "%8lld");
    }

    std::vector<double> Group(const Numor_Frame& frame) const {
        std::vector<double> group = {frame.time * 1000, frame.monitor, frame.total};
        for (const double angle : frame.angles) group.push_back(std::round(angle * 1000));
        return group;
    }
    std::vector<long long> Counts(const Numor_Frame& frame) const {
        std::vector<long long> values;
        if (groups == Numor_Groups::in_counts) {
            const double angle = frame.angles.empty() ? 0.0 : frame.angles[0];
            values = {std::llround(frame.monitor), std::llround(frame.time * 1000), std::llround(angle * 1000)};
        }
        values.insert(values.end(), frame.counts.begin(), frame.counts.end());
        return values;
    }
    void Put_Group(std::string& text, const Numor_Frame& frame) const {
        const std::vector<double> group = Group(frame);
        if (groups == Numor_Groups::own_reals) Put_Reals(text, group);
        if (groups == Numor_Groups::own_integers) Put_Integers(text, 'I', {group.begin(), group.end()});
    }
    void Put_Frames(std::string& text) const {
        for (std::size_t i = 0; i < frames.size(); ++i) {
            if (frame_markers) text += std::string(marker, 'V') + line_end;
            if (subscans) {
                Open(text, 'S', {static_cast<long long>(i + 1), 1, static_cast<long long>(frames.size() - i - 1)});
                if (labels) Line(text, "frame of the scan");
            }
            Put_Group(text, frames[i]);
            Put_Integers(text, counts_letter, Counts(frames[i]));
        }
    }
    // The group of the first frame alone can stand above counts of all.
    void Put_One_Block(std::string& text) const {
        if (frames.empty()) return;
        if (subscans) Open(text, 'S', {1, 0});
        Put_Group(text, frames[0]);
        std::vector<long long> values;
        for (const Numor_Frame& frame : frames) {
            const std::vector<long long> of_frame = Counts(frame);
            values.insert(values.end(), of_frame.begin(), of_frame.end());
        }
        Put_Integers(text, counts_letter, values);
    }
};

}  // namespace vntl
