#include "patterns/multi_detector_raw.hpp"

#include <array>
#include <cmath>
#include <filesystem>
#include <span>
#include <utility>

#include "base/os.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/header_words.hpp"
#include "patterns/number_walk.hpp"
#include "patterns/reader_tools.hpp"

namespace vntl {

namespace {

struct Head {
    float wavelength = 0;
    int detectors = 0, positions = 0;
    float start = 0, step = 0, shift = 0;
    float divergency = 0, monitor = 0, omega = 0, temperature = 0;
    bool efficiencies = false;

    std::size_t Numbers() const {
        return static_cast<std::size_t>(detectors) * (static_cast<std::size_t>(positions) + (efficiencies ? 1 : 0));
    }
};

bool Take_Finite(Number_Walk& walk, float& value) {
    walk.Skip_Blanks();
    return walk.Take(value) && std::isfinite(value);
}

bool Take_Count(Number_Walk& walk, int least, int most, int& count) {
    float value = 0;
    if (!Take_Finite(walk, value) || std::trunc(value) != value || value < static_cast<float>(least) || value > static_cast<float>(most))
        return false;
    count = static_cast<int>(value);
    return true;
}

std::string_view Behind_Colon(std::string_view line) {
    const std::size_t colon = line.find(':');
    return colon == std::string_view::npos ? std::string_view{} : Trim(line.substr(colon + 1));
}

bool Take_Text(std::string_view, Head&) { return true; }

bool Take_Wavelength(std::string_view line, Head& head) {
    std::string_view rest;
    if (!Behind_Word(line, "lambda :", rest)) return false;
    Number_Walk walk(rest);
    return Take_Finite(walk, head.wavelength) && head.wavelength > 0;
}

bool Take_Scan(std::string_view line, Head& head) {
    constexpr int most_positions = 1 << 24;  // whole numbers are exact up to it
    Number_Walk walk(line);
    const bool taken = Take_Count(walk, 1, most_detectors, head.detectors) && Take_Count(walk, 2, most_positions, head.positions) &&
                       Take_Finite(walk, head.start) && Take_Finite(walk, head.step);
    return taken && head.step > 0;
}

template <float Head::*value>
bool Take_Number(std::string_view line, Head& head) {
    Number_Walk walk(Behind_Colon(line));
    return Take_Finite(walk, head.*value);
}

bool Take_Descriptors(std::string_view line, Head& head) {
    const std::string_view names = Behind_Colon(line);
    head.efficiencies = names.starts_with("efficiencies");
    return Trim(head.efficiencies ? names.substr(std::string_view("efficiencies").size()) : names) == "counts";
}

struct Head_Line {
    std::size_t number;
    bool (*take)(std::string_view line, Head& head);
    std::string_view failure;
};
constexpr Head_Line head_lines[] = {
    {1, Take_Text, "ERROR: Reading line #1"},
    {2, Take_Wavelength, "ERROR: Reading line #2: wavelength"},
    {4, Take_Scan, "ERROR: Reading line #4:"},
    {5, Take_Number<&Head::shift>, "ERROR: Reading line #5: detectors shift"},
    {6, Take_Number<&Head::divergency>, "ERROR: Reading line #6: alpha1 divergency"},
    {7, Take_Number<&Head::monitor>, "ERROR: Reading line #7: monitor value"},
    {8, Take_Number<&Head::omega>, "ERROR: Reading line #8: omega"},
    {9, Take_Number<&Head::temperature>, "ERROR: Reading line #9: sample temperature"},
    {10, Take_Text, "ERROR: Reading line #10: sample owner"},
    {12, Take_Descriptors, "ERROR: Reading line #12: descriptors"},
};

Status Read_Head(Line_Cursor& lines, Head& head) {
    std::array<std::string_view, 12> texts;
    std::size_t count = 0;
    while (count < texts.size() && lines.Next(texts[count])) ++count;
    for (const Head_Line& line : head_lines)
        if (line.number > count || !line.take(texts[line.number - 1], head)) return Status::Fail(line.failure);
    return Status::Done();
}

Status Other_Count(const Head& head) {
    return Status::Fail("ERROR: The numbers behind the head are not the " + std::to_string(head.Numbers()) + " that " +
                        std::to_string(head.detectors) + " detectors at " + std::to_string(head.positions) + " positions give" +
                        (head.efficiencies ? " with their efficiencies" : ""));
}

// All numbers behind the head. Each takes two bytes at least, so that a file cannot claim more than it holds.
Status Read_Numbers(Line_Cursor& lines, const Head& head, std::vector<float>& numbers) {
    const std::size_t wanted = head.Numbers();
    if (wanted > (lines.Rest().size() + 1) / 2) return Other_Count(head);
    numbers.reserve(wanted);
    std::string_view line;
    while (lines.Next(line)) {
        Number_Walk walk(line);
        for (walk.Skip_Separators(); !walk.At_End(); walk.Skip_Separators()) {
            if (numbers.size() == wanted) return Other_Count(head);
            if (!Take_Finite(walk, numbers.emplace_back()))
                return Status::Fail("ERROR: Reading line #" + std::to_string(lines.Number()) + ": counts");
        }
    }
    return numbers.size() == wanted ? Status::Done() : Other_Count(head);
}

// Detectors count from 0 here, and `counts` holds those of all positions.
Status Fill_Pattern(const Head& head, std::span<const float> counts, std::size_t detector, float efficiency, Diffraction_Pattern_Type& p) {
    if (Status status = Allocate_Diffraction_Pattern(p, head.positions); status.failed) return status;
    const double start = head.start + static_cast<double>(detector) * head.shift;
    for (std::size_t i = 0; i < p.x.size(); ++i) {
        const float count = counts[i * static_cast<std::size_t>(head.detectors) + detector];
        p.x[i] = static_cast<float>(start + static_cast<double>(i) * head.step);
        p.y[i] = count / efficiency;
        p.sigma[i] = std::fabs(count) / (efficiency * efficiency);  // the variance of a count is the count
        p.nd[i] = 1;
    }
    p.xmin = p.x.front(), p.xmax = p.x.back(), p.step = head.step;
    p.constant_step = true;
    p.monitor = p.norm_monitor = head.monitor;
    p.TSample = head.temperature;
    p.conv[0] = head.wavelength;
    p.radiation = "neutrons_cw", p.scat_var = "2theta";
    p.legend_x = "2theta(degrees)", p.legend_y = "Intensity (arb. units)";
    Set_Y_Limits(p);
    return Status::Done();
}

}  // namespace

Status Read_Multi_Detector_Text(std::string_view text, std::string_view name, bool correct,
                                std::vector<Diffraction_Pattern_Type>& patterns) {
    Line_Cursor lines(text);
    Head head;
    std::vector<float> numbers;
    if (Status status = Read_Head(lines, head); status.failed) return status;
    if (Status status = Read_Numbers(lines, head, numbers); status.failed) return status;
    const auto detectors = static_cast<std::size_t>(head.detectors);
    const std::span<const float> all(numbers), counts = all.subspan(head.efficiencies ? detectors : 0);
    std::vector<Diffraction_Pattern_Type> fresh(detectors);
    for (std::size_t i = 0; i < detectors; ++i) {
        const float efficiency = correct && head.efficiencies && all[i] > 0 ? all[i] : 1.0f;
        if (Status status = Fill_Pattern(head, counts, i, efficiency, fresh[i]); status.failed) return status;
        fresh[i].title = Kept_Text("Detector No. " + std::to_string(i + 1) + " of " + std::string(name), title_width);
    }
    patterns = std::move(fresh);
    return Status::Done();
}

Status Read_Multi_Detector_Raw(const std::string& path, bool correct, std::vector<Diffraction_Pattern_Type>& patterns) {
    std::error_code error;
    if (!std::filesystem::exists(path, error)) return Status::Fail("ERROR 00: File not found");
    Text_File source;
    if (source.Open(path).failed) return Status::Fail("Error open file");
    const std::string name(File_Part(path)), instrument = Upper(Extension_Of(path));
    if (Status status = Read_Multi_Detector_Text(Without_End_Mark(source.Text()), name, correct, patterns); status.failed) return status;
    for (Diffraction_Pattern_Type& pattern : patterns) {
        pattern.filename = name;
        pattern.filepath = path.substr(0, path.size() - name.size());
        pattern.instr = instrument.empty() ? "" : instrument.substr(1);
    }
    return Status::Done();
}

}  // namespace vntl
