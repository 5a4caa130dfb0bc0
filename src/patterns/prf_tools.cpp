#include "patterns/prf_tools.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

#include "base/conversions.hpp"
#include "base/edit_descriptor.hpp"
#include "base/text.hpp"
#include "patterns/neutron_tools.hpp"
#include "patterns/prf.hpp"
#include "patterns/reader_tools.hpp"

namespace vntl {

namespace {

constexpr int max_vectors = 999;               // of a phase: their numbers stand in three columns
constexpr std::size_t bytes_a_reflection = 8;  // what no file says with less
constexpr std::size_t usual_label = 30;        // characters
constexpr std::array<std::string_view, 3> tag_texts = {"Nuc.", "Mag.", "Nuc.+Mag."};

std::string At_Line(int line, const std::string& text) { return "ERROR: line " + std::to_string(line) + ": " + text; }

// Right-justified, stars where it does not fit.
template <std::size_t width>
void Put(std::string& text, int value) {
    std::array<char, width> field;
    field.fill(' ');
    std::size_t at = width;
    const auto digits = [&field, &at](unsigned left) {
        do field[--at] = static_cast<char>('0' + left % 10);
        while ((left /= 10) != 0 && at > 0);
        return left == 0;
    };
    const bool negative = value < 0;
    const bool fits = digits(negative ? 0u - static_cast<unsigned>(value) : static_cast<unsigned>(value)) && (!negative || at > 0);
    if (fits && negative) field[--at] = '-';
    if (!fits) field.fill('*');
    text.append(field.data(), width);
}

// A tag is the number of `vector` where there is one.
std::string Label(const Prf_Reflection& r, const float* vector) {
    std::string text;
    text.reserve(usual_label);
    text += '(';
    for (const int index : {r.h, r.k, r.l}) Put<3>(text, index);
    text += ") ph:";
    Put<2>(text, r.phase);
    if (r.tag > 0 && vector == nullptr) {
        text += " -> ";
        return text += tag_texts[static_cast<std::size_t>(r.tag - 1)];
    }
    if (vector != nullptr) {
        text += ", nvk[";
        for (int i = 0; i < 3; ++i) text += IRealToString(vector[i], "(F7.4)");
        text += "]  ";
    }
    if (!r.wavelength) return text;
    text += "  Lambda: ";
    Put<2>(text, *r.wavelength);
    return text;
}

// What lies between two limits, in the order in which they rise.
void Put_In_Order(PRF_Info_Add_Type& info) {
    for (std::size_t i = 0; i < static_cast<std::size_t>(info.nexcl); ++i)
        if (info.excl_min[i] > info.excl_max[i]) std::swap(info.excl_min[i], info.excl_max[i]);
}

}  // namespace

Prf_Phases::Prf_Phases(int nphases)
    : reflections(static_cast<std::size_t>(nphases)),
      vectors(static_cast<std::size_t>(nphases)),
      superspace(static_cast<std::size_t>(nphases)) {}

bool Prf_Phases::Any_Vectors() const {
    return std::any_of(vectors.begin(), vectors.end(), [](int n) { return n > 0; });
}

int Prf_Phases::Phase_Of(int phase) const { return std::clamp(phase, 1, std::max(Number(), 1)); }

int Prf_Phases::Phase_Of_Entry(int entry) const {
    int phase = 1;
    for (const int n : reflections) {
        if (entry < n) break;
        entry -= n;
        ++phase;
    }
    return Phase_Of(phase);
}

Status Check_Phases(int nphases, int line) {
    if (nphases >= 0 && nphases <= max_phases) return Status::Done();
    return Status::Fail(At_Line(line, std::to_string(nphases) + " phases, 0 to " + std::to_string(max_phases) + " are possible"));
}

Status Allocate_Phases(Prf_File& file, const Prf_Phases& phases, std::string_view message) {
    long long total = 0;
    for (const int n : phases.reflections) {
        if (n < 0) return Status::Fail(message);
        total += n;
    }
    for (const int n : phases.vectors)
        if (n < 0 || n > max_vectors) return Status::Fail(message);
    if (total > static_cast<long long>(file.text.size() / bytes_a_reflection))
        return Status::Fail("ERROR: " + std::to_string(total) + " reflections are more than the file can hold");

    PRF_Info_Add_Type& info = file.info;
    const auto count = static_cast<std::size_t>(total);
    info.nphases = phases.Number();
    info.nreflections = static_cast<std::int32_t>(total);
    info.phase_value.assign(phases.reflections.begin(), phases.reflections.end());
    const int most = std::accumulate(phases.vectors.begin(), phases.vectors.end(), 1, [](int a, int b) { return std::max(a, b); });
    info.phase_table.assign(3 * static_cast<std::size_t>(most) * phases.vectors.size(), 0.0f);
    info.refl_phase.assign(count, 1);
    info.refl_code.assign(count, 1);
    info.refl_tag.assign(count, 0.0f);
    info.refl_position.assign(count, 0.0f);
    info.refl_label.resize(count);
    return Status::Done();
}

Status Allocate_Points(Prf_File& file, int npts, int line, std::string_view none) {
    if (npts < 1) return Status::Fail(none);
    return Allocate_Told(file.pattern, npts, file.text.size(),
                         At_Line(line, std::to_string(npts) + " points are more than the file can hold"));
}

float* Propagation_Vector(PRF_Info_Add_Type& info, const Prf_Phases& phases, int phase, int vector) {
    const std::size_t of_a_phase = info.phase_table.size() / phases.vectors.size();
    return info.phase_table.data() + static_cast<std::size_t>(phase - 1) * of_a_phase + 3 * static_cast<std::size_t>(vector - 1);
}

Prf_Reflection Decode_Reflection(std::int32_t code) {
    const auto byte = [](std::int32_t c) { return (c % 256 + 256) % 256 - 128; };
    constexpr std::int32_t wavelength_unit = 1 << 24, phase_unit = 1 << 27;
    Prf_Reflection r;
    r.l = byte(code);
    r.k = byte(code / 256);
    r.h = byte(code / 65536);
    r.wavelength = (code / wavelength_unit % 8 + 8) % 8;
    r.phase = code / phase_unit;
    if (code < 0) r.phase = 8 - r.phase;
    return r;
}

void Set_Reflection(PRF_Info_Add_Type& info, const Prf_Phases& phases, std::size_t i, const Prf_Reflection& told) {
    Prf_Reflection r = told;
    const int phase = phases.Phase_Of(r.phase);
    const int vectors = phases.vectors[static_cast<std::size_t>(phase - 1)];
    const bool any_vectors = phases.Any_Vectors();
    if (r.tag < 0 || r.tag > (any_vectors ? vectors : static_cast<int>(tag_texts.size()))) r.tag = 0;
    const float* const vector = any_vectors && r.tag > 0 ? Propagation_Vector(info, phases, phase, r.tag) : nullptr;
    info.refl_position[i] = r.position;
    info.refl_phase[i] = info.refl_code[i] = phase;
    info.refl_tag[i] = static_cast<float>(r.tag);
    info.refl_label[i] = Label(r, vector);
}

bool Read_Regions(Prf_File& file, int count, bool (*pair)(std::string_view line, std::span<float> limits)) {
    if (count < 0 || count > max_excluded_regions) return false;
    PRF_Info_Add_Type& info = file.info;
    for (int i = 0; i < count; ++i) {
        std::array<float, 2> limits{};
        std::string_view line;
        if (!file.lines.Next(line) || !pair(line, limits) || !All_Finite(limits[0], limits[1])) return false;
        const auto [low, high] = limits;
        if (low == high) continue;
        const auto place = static_cast<std::size_t>(info.nexcl++);
        info.excl_min[place] = low;
        info.excl_max[place] = high;
    }
    return true;
}

float Prf_Shift::At(float x) const {
    if (Constant()) return zero;
    constexpr float half_degree = std::numbers::pi_v<float> / 360;
    const float theta = x * half_degree;
    return zero + cosine * std::cos(theta) + sine * std::sin(theta);
}

bool Take_Shift_Off(const Prf_Shift& shift, Prf_File& file) {
    PRF_Info_Add_Type& info = file.info;
    for (auto* array : {&file.pattern.x, &info.refl_position}) {
        for (float& x : *array) x -= shift.At(x);
        if (!Is_Finite(*array)) return false;
    }
    for (std::size_t i = 0; i < static_cast<std::size_t>(info.nexcl); ++i)
        for (float* limit : {&info.excl_min[i], &info.excl_max[i]}) {
            *limit -= shift.At(*limit);
            if (!std::isfinite(*limit)) return false;
        }
    Put_In_Order(info);
    return true;
}

void Set_Ranges(Diffraction_Pattern_Type& p) {
    p.xmin = p.x.front();
    p.xmax = p.x.back();
    p.step = p.npts > 1 ? (p.xmax - p.xmin) / static_cast<float>(p.npts - 1) : 0.0f;
    Set_Y_Limits(p);
}

bool Is_Finite(const std::vector<float>& values) {
    return std::all_of(values.begin(), values.end(), [](float v) { return std::isfinite(v); });
}

}  // namespace vntl
