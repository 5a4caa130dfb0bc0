// Reading a PIK file: lines of values in free form, comments between them.
#include <algorithm>
#include <array>
#include <cmath>

#include "base/free_form.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "fit/pik_file.hpp"

namespace vntl {

namespace {

constexpr const char* bad_title = "  => Error in pik input file at reading TITLE !";
constexpr const char* bad_head = " => Error at reading: tof/2theta_ini, tof/2theta_fin, n_ba, etc ! ";
constexpr const char* bad_constants = " => Error at reading: Lambda1,Lambda2 or d2tof ! ";
constexpr const char* too_many_nodes = " => Error: too many background parameters ! ";
constexpr const char* too_many_peaks = " => Error: too many peaks ! ";
constexpr int usual_correlation = 50;
constexpr std::size_t shown_columns = 180;  // of a line in a message

// Values and flags of a line, as many as there are places; text may follow them. A value is a finite number.
bool Read_Line(std::string_view line, std::span<float> values, std::span<int> flags) {
    Free_Form_Reader reader(line);
    std::vector<float> numbers(values.size());
    std::vector<int> whole(flags.size());
    if (!reader.Read(numbers, whole) || reader.given() != values.size() + flags.size()) return false;
    if (!std::ranges::all_of(numbers, [](float v) { return std::isfinite(v); })) return false;
    std::ranges::copy(numbers, values.begin());
    std::ranges::copy(whole, flags.begin());
    return true;
}

class Pik_Reader {
public:
    Pik_Reader(std::string_view text, const Fit_State& former) : lines_(text) { state = former; }

    Status Read() {
        for (const auto step :
             {&Pik_Reader::Title, &Pik_Reader::Head, &Pik_Reader::Constants, &Pik_Reader::Common, &Pik_Reader::Nodes, &Pik_Reader::Peaks})
            if (Status status = (this->*step)(); status.failed) return status;
        Widen_Window();
        return Status::Done();
    }

    Fit_State state;
    std::vector<Background_Mark> nodes;
    Fit_Kind kind = Fit_Kind::constant_wavelength;

private:
    bool Angles() const { return kind == Fit_Kind::constant_wavelength; }

    // The next line that is no comment, without the blanks before it.
    bool Next(std::string_view& line) {
        while (lines_.Next(line)) {
            line = Trim_Left(line);
            if (!line.starts_with('!')) return true;
        }
        return false;
    }
    Status Ended() const { return Status::Fail_File(" => End of pik-file at reading, title in file: " + title_); }

    // Values and flags of the next line; the failure names the line that does not hold them.
    Status Next_Values(std::string_view what, std::span<float> values, std::span<int> flags) {
        if (!Next(line_)) return Ended();
        return Read_Line(line_, values, flags) ? Status::Done() : Bad_Line(what);
    }
    Status Bad_Line(std::string_view what) const {
        return Status::Fail_File(" => Error at reading " + std::string(what) + ": " + Kept_Text(Trim_Right(line_), shown_columns));
    }
    Status Next_Value(std::string_view what, Fit_Value& value) {
        int flag = 0;
        value = {};
        Status status = Next_Values(what, {&value.value, 1}, {&flag, 1});
        value.flag = flag != 0 ? 1 : 0;
        return status;
    }

    Status Title() {
        std::string_view line;
        const auto is_text = [](char c) { return static_cast<unsigned char>(c) >= ' ' || c == '\t'; };
        if (!Next(line) || !std::ranges::all_of(line, is_text)) return Status::Fail_File(bad_title);
        title_ = Kept_Text(Trim(line), shown_columns);
        if (!lines_.Next(line)) return Ended();
        kind = Contains(line, "Ang_init") ? Fit_Kind::constant_wavelength : Fit_Kind::time_of_flight;
        return Status::Done();
    }

    // Limits and counts, in front of Weight, Corr, Constr and Percent. One word more may stand behind `Jobt`.
    Status Head() {
        std::string_view line;
        if (!Next(line)) return Ended();
        const std::size_t usual = Angles() ? 12 : 11;
        std::vector<float> numbers(usual + 1);
        if (!Read_Free_Reals(line, numbers)) {
            numbers.resize(usual);
            if (!Read_Free_Reals(line, numbers)) return Status::Fail_File(bad_head);
        }
        const std::size_t weight = numbers.size() - 4;
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            const bool is_whole = i >= 2 && i < numbers.size() - 1;
            if (!(std::fabs(numbers[i]) < 1e9f) || (is_whole && numbers[i] != std::round(numbers[i]))) return Status::Fail_File(bad_head);
        }
        const auto whole = [&](std::size_t i) { return static_cast<int>(numbers[i]); };
        node_count_ = whole(2);
        peak_count_ = whole(3);
        if (node_count_ < 0 || peak_count_ < 0 || whole(4) < 0 || !(numbers[1] > numbers[0])) return Status::Fail_File(bad_head);
        if (node_count_ > max_fit_nodes) return Status::Fail_File(too_many_nodes);
        if (peak_count_ > max_fit_peaks) return Status::Fail_File(too_many_peaks);
        state.x_ini = numbers[0];
        state.x_fin = numbers[1];
        state.Ncyc = std::max(whole(4), 1);
        state.iw = whole(weight);
        state.corrmax = whole(weight + 1) < 1 ? usual_correlation : whole(weight + 1);
        state.constr = whole(weight + 2) != 0;
        state.percent = numbers[weight + 3];
        return Status::Done();
    }

    Status Constants() {
        std::string_view line;
        if (!Next(line)) return Ended();
        std::array<float, 2> values{};
        if (!Read_Line(line, std::span(values).first(Angles() ? 2 : 1), {})) return Status::Fail_File(bad_constants);
        if (Angles()) {
            state.lambda1 = values[0];
            state.lambda2 = values[1];
        } else {
            state.d2tof = values[0];
        }
        return Status::Done();
    }

    Status Common() {
        if (Angles()) {
            if (Status status = Next_Value("Ka2/Ka1 ratio", state.ratio); status.failed) return status;
            for (Fit_Value& value : state.asym)
                if (Status status = Next_Value("asymmetry parameter", value); status.failed) return status;
        }
        for (Fit_Value& value : state.prof)
            if (Status status = Next_Value("global parameter", value); status.failed) return status;
        return Status::Done();
    }

    Status Nodes() {
        for (int i = 0; i < node_count_; ++i) {
            std::array<float, 2> place{};
            int flag = 0;
            if (Status status = Next_Values("background parameter", place, {&flag, 1}); status.failed) return status;
            if (!nodes.empty() && !(place[0] > nodes.back().x)) return Bad_Line("background parameter");
            nodes.push_back({place[0], place[1], flag != 0 ? 1 : 0});
        }
        return Status::Done();
    }

    Status Peaks() {
        state.peaks.clear();
        for (int i = 0; i < peak_count_; ++i) {
            Fit_Peak peak;
            const std::vector<Fit_Value*> values = Values_Of(kind, peak);
            std::array<float, 6> numbers{};
            std::array<int, 6> flags{};
            if (Status status =
                    Next_Values("peak parameter", std::span(numbers).first(values.size()), std::span(flags).first(values.size()));
                status.failed)
                return status;
            for (std::size_t k = 0; k < values.size(); ++k) *values[k] = {numbers[k], flags[k] != 0 ? 1 : 0};
            state.peaks.push_back(peak);
        }
        return Status::Done();
    }

    // The window covers the nodes, whose outer ones are its ends.
    void Widen_Window() {
        state.lower_set = state.upper_set = true;
        if (nodes.empty()) return;
        state.x_ini = std::min(state.x_ini, nodes.front().x);
        state.x_fin = std::max(state.x_fin, nodes.back().x);
        state.y_ini = nodes.front().y;
        state.y_fin = nodes.back().y;
    }

    Line_Cursor lines_;
    std::string_view line_;  // that held values last
    std::string title_;
    int node_count_ = 0, peak_count_ = 0;
};

}  // namespace

Status Read_Pik_File(const std::string& file, Fit_State& state, std::vector<Background_Mark>& nodes, Fit_Kind& kind) {
    Text_File text;
    if (text.Open(file).failed) return Status::Fail_File("ERROR opening the file: " + file);
    return Read_Pik_Text(text.Text(), state, nodes, kind);
}

Status Read_Pik_Text(std::string_view text, Fit_State& state, std::vector<Background_Mark>& nodes, Fit_Kind& kind) {
    Pik_Reader reader(text, state);
    if (Status status = reader.Read(); status.failed) return status;
    state = std::move(reader.state);
    nodes = std::move(reader.nodes);
    kind = reader.kind;
    return Status::Done();
}

}  // namespace vntl
