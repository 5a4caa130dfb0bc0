// Two layouts that hold no powder pattern.
//
// Integrated intensities, a reflection a line, which is a point too:
//
//      SinTheta/Lambda  Fobs  Fcalc  ...
//       0.1021  1520.3  1498.7  12.4  0.0  1 0 0  2        sin(theta)/lambda, observed, calculated, deviation, -, h k l, a tag or none
//
// A pair distribution, with the pairs of atoms in files beside it, each a kind of pair with a row of ticks of its own:
//
//     # R  Gobs  Gcalc  Gbackground
//     # Pairs Si-O: si_o.txt
//       1.00  -0.0021  -0.0020  0.0
//
//     Number of lines: 2                                    si_o.txt
//       1.6100   4                                          distance in angstrom, multiplicity
#include <algorithm>
#include <array>
#include <cmath>

#include "base/conversions.hpp"
#include "base/free_form.hpp"
#include "base/text.hpp"
#include "patterns/header_words.hpp"
#include "patterns/prf.hpp"
#include "patterns/prf_tools.hpp"

namespace vntl {

namespace {

// --- integrated intensities ----------------------------------------------------------------------------------------------------

struct Intensity {
    float x = 0, observed = 0, calculated = 0, deviation = 0;
    std::array<int, 4> hkl_tag{};
};

bool Read_Intensity(std::string_view line, Intensity& row) {
    constexpr std::size_t without_tag = 8;
    float other = 0;
    Free_Form_Reader reader(line);
    const bool whole = reader.Read(row.x, row.observed, row.calculated, row.deviation, other, std::span<int>(row.hkl_tag));
    return (whole || (reader.ended() && reader.given() == without_tag)) && std::isfinite(row.x);
}

Status Read_Intensities(Prf_File& file, std::vector<Intensity>& rows) {
    std::string_view line;
    for (int number = 3; file.lines.Next(line); ++number) {
        if (Trim(line).empty()) continue;
        rows.emplace_back();
        if (!Read_Intensity(line, rows.back()))
            return Status::Fail("ERROR: line " + std::to_string(number) + " of the integrated intensities cannot be read");
    }
    const bool ascends = std::is_sorted(rows.begin(), rows.end(), [](const auto& a, const auto& b) { return a.x < b.x; });
    if (!ascends) std::stable_sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) { return a.x < b.x; });
    return rows.empty() ? Status::Fail("ERROR: no integrated intensities behind line 2") : Status::Done();
}

// --- pair distribution ---------------------------------------------------------------------------------------------------------

struct Pair {
    float distance = 0;
    int multiplicity = 0;
};
struct Pair_Kind {
    std::string name;
    std::vector<Pair> pairs;
};

Status Bad_Pairs(const std::string& file) { return Status::Fail("ERROR: the pairs of the file " + file + " cannot be read"); }

// The number of lines behind the first colon, then a distance and a multiplicity a line.
Status Read_Pairs(const std::string& name, std::string_view text, std::vector<Pair>& pairs) {
    Line_Cursor lines(text);
    std::string_view line;
    std::size_t colon = std::string_view::npos;
    while (colon == std::string_view::npos && lines.Next(line)) colon = line.find(':');
    int count = 0;
    if (colon == std::string_view::npos || !Free_Form_Reader(line.substr(colon + 1)).Read(count)) return Bad_Pairs(name);
    for (int i = 0; i < count;) {
        if (!lines.Next(line)) return Bad_Pairs(name);
        if (Trim(line).empty() || Trim_Left(line).starts_with('#')) continue;
        float multiplicity = 0;
        pairs.emplace_back();
        if (!Free_Form_Reader(line).Read(pairs.back().distance, multiplicity) || !std::isfinite(pairs.back().distance))
            return Bad_Pairs(name);
        constexpr float most = 9999;  // in four columns
        pairs.back().multiplicity = static_cast<int>(std::lround(std::clamp(multiplicity, 0.0f, most)));
        ++i;
    }
    return Status::Done();
}

// "# Pairs Si-O: si_o.txt": the last word names the file, what stands before it the pairs.
Status Read_Kind(Prf_File& file, std::string_view rest, std::vector<Pair_Kind>& kinds) {
    if (kinds.size() == max_phases) return Status::Fail("ERROR: more than " + std::to_string(max_phases) + " files of pairs");
    const std::size_t gap = rest.find_last_of(" \t=");
    const std::string name(gap == std::string_view::npos ? rest : rest.substr(gap + 1));
    std::string_view words = rest.substr(0, rest.size() - name.size());
    while (!words.empty() && std::string_view(" \t=:").find(words.back()) != std::string_view::npos) words.remove_suffix(1);
    while (!words.empty() && std::string_view(" \t=:").find(words.front()) != std::string_view::npos) words.remove_prefix(1);

    Text_File source;
    if (Status status = file.open_beside(name, source); status.failed) return status;
    kinds.push_back({To_Utf8(words), {}});
    return Read_Pairs(name, source.Text(), kinds.back().pairs);
}

// The lines above the numbers; the cursor stays before the first of these.
Status Read_Kinds(Prf_File& file, std::vector<Pair_Kind>& kinds) {
    std::string_view line, rest;
    for (Line_Cursor before = file.lines; file.lines.Next(line); before = file.lines) {
        if (Behind_Word(line, "Pairs", rest)) {
            if (Status status = Read_Kind(file, rest, kinds); status.failed) return status;
        } else if (!Trim(line).empty() && !Trim_Left(line).starts_with('#')) {
            file.lines = before;
            break;
        }
    }
    return Status::Done();
}

std::string Pair_Label(const Pair_Kind& kind, const Pair& pair) {
    constexpr std::size_t name_width = 50;
    return std::string(Cut(kind.name, name_width)) + " d=" + IRealToString(pair.distance, "(F8.4)") +
           " mult=" + IntegerToString(pair.multiplicity, "(I4)");
}

void Set_Pairs(PRF_Info_Add_Type& info, const std::vector<Pair_Kind>& kinds) {
    std::int32_t phase = 0;
    info.nphases = static_cast<std::int32_t>(kinds.size());
    info.phase_table.assign(3 * kinds.size(), 0.0f);
    for (const Pair_Kind& kind : kinds) {
        ++phase;
        info.phase_value.push_back(static_cast<float>(kind.pairs.size()));
        for (const Pair& pair : kind.pairs) {
            info.refl_phase.push_back(phase);
            info.refl_code.push_back(phase);
            info.refl_tag.push_back(0);
            info.refl_position.push_back(pair.distance);
            info.refl_label.push_back(Pair_Label(kind, pair));
        }
    }
    info.nreflections = static_cast<std::int32_t>(info.refl_phase.size());
}

// Radius, observed, calculated, background; the last three in thousandths.
Status Read_Distribution(Prf_File& file) {
    constexpr float scale = 1000;
    std::vector<std::array<float, 4>> rows;
    std::string_view line;
    while (file.lines.Next(line)) {
        if (Trim(line).empty() || Trim_Left(line).starts_with('#')) continue;
        std::array<float, 4>& row = rows.emplace_back();
        if (!Free_Form_Reader(line).Read(std::span<float>(row)) || !std::isfinite(row[0]))
            return Status::Fail("ERROR: row " + std::to_string(rows.size()) + " of the pair distribution cannot be read");
    }
    if (rows.empty()) return Status::Fail("ERROR: no numbers of a pair distribution");
    Diffraction_Pattern_Type& p = file.pattern;
    if (Status status = Allocate_Diffraction_Pattern(p, static_cast<std::int32_t>(rows.size())); status.failed) return status;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        p.x[i] = rows[i][0];
        p.y[i] = scale * rows[i][1];
        p.ycalc[i] = scale * rows[i][2];
        p.bgr[i] = scale * rows[i][3];
    }
    return Status::Done();
}

}  // namespace

Status Read_Prf_Integrated(Prf_File& file) {
    Diffraction_Pattern_Type& p = file.pattern;
    std::vector<Intensity> rows;
    if (Status status = Read_Intensities(file, rows); status.failed) return status;
    if (Status status = Allocate_Diffraction_Pattern(p, static_cast<std::int32_t>(rows.size())); status.failed) return status;
    Prf_Phases phases(1);
    phases.reflections = {p.npts};
    if (Status status = Allocate_Phases(file, phases, "ERROR: too many integrated intensities"); status.failed) return status;

    for (std::size_t i = 0; i < rows.size(); ++i) {
        const Intensity& row = rows[i];
        p.x[i] = row.x;
        p.y[i] = row.observed;
        p.ycalc[i] = row.calculated;
        p.sigma[i] = std::fabs(row.deviation);
        const auto [h, k, l, tag] = row.hkl_tag;
        Set_Reflection(file.info, phases, i, {row.x, h, k, l, 1, {}, tag});
    }
    p.sigma_is_variance = p.has_bgr = false;
    p.scat_var = "mono";
    file.info.kind = Row_Kind::mono;
    Set_Ranges(p);
    return Status::Done();
}

Status Read_Prf_Pairs(Prf_File& file) {
    std::vector<Pair_Kind> kinds;
    if (Status status = Read_Kinds(file, kinds); status.failed) return status;
    if (Status status = Read_Distribution(file); status.failed) return status;
    Set_Pairs(file.info, kinds);
    file.pattern.scat_var = "Distance";
    file.pattern.has_sigma = false;
    Set_Ranges(file.pattern);
    return Status::Done();
}

}  // namespace vntl
