// From what vantrelo-nexus told of a file to patterns.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <optional>
#include <string>

#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/nexus/nexus.hpp"
#include "patterns/nexus/nexus_axis.hpp"
#include "patterns/nexus/nexus_facts.hpp"
#include "patterns/nexus/nexus_stream.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/scan_axis.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_points = std::size_t{128} << 20;  // of all frames
constexpr std::string_view broken = "What vantrelo-nexus told of this file is not whole";

// Reals of a record, which need not stand at a multiple of 4 bytes.
class Reals {
public:
    Reals() = default;
    explicit Reals(std::string_view bytes) : bytes_(bytes.substr(0, bytes.size() / sizeof(float) * sizeof(float))) {}

    std::size_t size() const { return bytes_.size() / sizeof(float); }
    void Copy(std::size_t from, std::size_t n, float* to) const {
        std::memcpy(to, bytes_.data() + from * sizeof(float), n * sizeof(float));
    }
    float operator[](std::size_t i) const {
        float value = 0;
        Copy(i, 1, &value);
        return value;
    }

private:
    std::string_view bytes_;
};

struct Named {
    std::string_view name, units, long_name;
};
Named Named_Of(std::string_view content) {
    const auto fields = nexus_stream::Fields<3>(content);
    return {fields[0], fields[1], fields[2]};
}

// The records of a stream.
struct Told {
    Nexus_Facts facts;
    Named signal, axis;
    std::optional<Named> frames_axis;
    std::size_t frames = 0, points = 0, frames_there = 0;
    Reals y, errors, x, values;
    std::string_view refusal;
    bool whole = false;

    void Take(const nexus_stream::Record& record) {
        const auto [name, content] = record;
        if (name == "REFUSED") refusal = content;
        if (name == "FACT") facts.Add(content);
        if (name == "SIGNAL") signal = Named_Of(content);
        if (name == "AXIS") axis = Named_Of(content);
        if (name == "FRAMES") frames_axis = Named_Of(content);
        if (name == "SHAPE") Take_Shape(content);
        if (name == "Y") y = Reals(content);
        if (name == "ERRORS") errors = Reals(content);
        if (name == "X") x = Reals(content);
        if (name == "VALUES") values = Reals(content);
        if (name == "END") whole = true;
    }

    // All arrays have the lengths that the shape tells.
    bool Is_Sound() const {
        const std::size_t rows = Rows();
        if (!whole || points < 1 || points > most_points || rows > nexus_stream::most_frames || points > most_points / rows) return false;
        const std::size_t all = rows * points;
        const bool x_of_one = x.size() == points || x.size() == points + 1;
        return y.size() == all && (errors.size() == 0 || errors.size() == all) && (x_of_one || x.size() == all || x.size() == all + rows) &&
               (values.size() == 0 || values.size() == rows);
    }
    std::size_t Rows() const { return std::max<std::size_t>(frames, 1); }

private:
    void Take_Shape(std::string_view content) {
        const auto fields = nexus_stream::Fields<3>(content);
        std::size_t* const numbers[] = {&frames, &points, &frames_there};
        for (std::size_t i = 0; i < fields.size(); ++i) std::from_chars(fields[i].data(), fields[i].data() + fields[i].size(), *numbers[i]);
    }
};

bool Is_Rate(std::string_view units) {
    constexpr std::string_view rates[] = {"counts/s", "counts/sec", "counts/second", "cps", "1/s", "hz", "countss^-1", "counts.s-1"};
    std::string bare = Lower(units);
    std::erase(bare, ' ');
    return std::find(std::begin(rates), std::end(rates), bare) != std::end(rates);
}

class Builder {
public:
    Builder(const Told& told, const Nexus_Axis& axis) : told_(told), axis_(axis) {
        head_.scat_var = axis.scat_var;
        head_.legend_x = axis.legend;
        if (!axis.angle.empty()) Set_Scan_Axis(head_, To_Utf8(axis.angle));
        told.facts.Give(head_);
        head_.per_second = Is_Rate(told.signal.units);
    }

    Status Frame(std::size_t frame, Diffraction_Pattern_Type& p) const {
        p = head_;
        if (const Status status = Allocate_Measured(p, told_.points); status.failed) return status;
        told_.y.Copy(frame * told_.points, told_.points, p.y.data());
        Set_X(frame, p);
        Set_Variances(frame, p);
        Set_Y_Limits(p);
        if (told_.frames > 0) Name_Frame(frame, p);
        return Status::Done();
    }

private:
    void Set_X(std::size_t frame, Diffraction_Pattern_Type& p) const {
        const std::size_t n = told_.points, rows = told_.Rows();
        const bool edges = told_.x.size() == n + 1 || told_.x.size() == (n + 1) * rows;
        const std::size_t row = edges ? n + 1 : n, from = told_.x.size() == row ? 0 : frame * row;
        told_.x.Copy(from, n, p.x.data());
        if (edges)
            for (std::size_t i = 0; i < n; ++i) p.x[i] = static_cast<float>(0.5 * (static_cast<double>(p.x[i]) + told_.x[from + i + 1]));
        if (axis_.factor != 1)
            for (float& x : p.x) x = static_cast<float>(x * axis_.factor);
        p.xmin = p.x.front();
        p.xmax = p.x.back();
        p.step = n > 1 ? (p.xmax - p.xmin) / static_cast<float>(n - 1) : 0;
        p.constant_step = Has_Constant_Step(p);
    }

    // Within what single precision tells of x, and a hundredth of a step.
    static bool Has_Constant_Step(const Diffraction_Pattern_Type& p) {
        constexpr double digits = 2.4e-7;
        const double first = p.xmin, step = (static_cast<double>(p.xmax) - first) / std::max(p.npts - 1, 1);
        const double most = 0.01 * std::fabs(step) + digits * std::max(std::fabs(p.xmin), std::fabs(p.xmax));
        for (std::size_t i = 0; i < p.x.size(); ++i)
            if (!(std::fabs(p.x[i] - (first + static_cast<double>(i) * step)) <= most)) return false;
        return true;
    }

    void Set_Variances(std::size_t frame, Diffraction_Pattern_Type& p) const {
        if (told_.errors.size() == 0) {
            Set_Count_Variances(p);
            if (p.per_second && p.count_time > 0)
                for (float& variance : p.sigma) variance /= p.count_time;
            return;
        }
        told_.errors.Copy(frame * told_.points, told_.points, p.sigma.data());
        for (float& error : p.sigma) error *= error;
    }

    void Name_Frame(std::size_t frame, Diffraction_Pattern_Type& p) const {
        std::string words = "frame " + std::to_string(frame + 1);
        if (told_.frames_axis && told_.values.size() > 0) {
            const float value = told_.values[frame];
            char digits[40];
            const auto written = std::to_chars(std::begin(digits), std::end(digits), value);
            const std::string units = Kept_Text(told_.frames_axis->units, 20);
            words += ", " + Kept_Text(told_.frames_axis->name, 40) + " = " + std::string(digits, written.ptr);
            if (!units.empty()) words += ' ' + units;
            Take_Temperature(value, p);
        }
        p.bank = static_cast<std::int32_t>(frame + 1);
        p.title = p.title.empty() ? words : std::string(Cut(p.title, title_width - Characters(words) - 2)) + ", " + words;
    }

    // Where the frames' axis is one.
    void Take_Temperature(float value, Diffraction_Pattern_Type& p) const {
        const Named& axis = *told_.frames_axis;
        const auto kelvin = Nexus_Kelvin(value, axis.units);
        const bool told = Contains(Lower(axis.name), "temp") || !Trim(axis.units).empty();
        if (told && kelvin && *kelvin > 0 && *kelvin < 1e5) p.TSample = static_cast<float>(*kelvin);
    }

    const Told& told_;
    const Nexus_Axis& axis_;
    Diffraction_Pattern_Type head_;
};

}  // namespace

Status Read_Nexus_Stream(std::string_view stream, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    constexpr std::size_t widest_name = 40, widest_message = 150;
    patterns.clear();
    Told told;
    for (nexus_stream::Record record; nexus_stream::Take_Record(stream, record);) told.Take(record);
    if (!told.refusal.empty()) return Status::Fail(Kept_Text(told.refusal, widest_message));
    if (!told.Is_Sound()) return Status::Fail(broken);
    const std::string name = '"' + Kept_Text(told.axis.name, widest_name) + '"';
    const auto axis = Nexus_Axis_Of(told.axis.name, told.axis.units, told.axis.long_name);
    if (!axis)
        return Status::Fail("The axis " + name + " of the data, in \"" + Kept_Text(told.axis.units, widest_name) +
                            "\", is none of a pattern");
    if (axis->guessed) notes.warnings.push_back("The axis " + name + " of the data tells no units: they are taken from its name");
    const Builder builder(told, *axis);
    for (std::size_t frame = 0; frame < told.Rows(); ++frame)
        if (const Status status = builder.Frame(frame, patterns.emplace_back()); status.failed) {
            patterns.clear();
            return status;
        }
    if (told.frames_there > told.Rows())
        notes.warnings.push_back("Of " + std::to_string(told.frames_there) + " frames the first " + std::to_string(told.Rows()) +
                                 " were opened");
    return Status::Done();
}

}  // namespace vntl
