// One model of a refinement, and the file of each layout that would hold it. A file is a list of pieces, each with the message that a
// reader gives when the piece is not there, or holds letters where numbers stand.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <numbers>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace vntl::test {

struct Model_Reflection {
    double position;
    std::array<int, 6> hkl;  // and up to three satellite indices
    int phase, lambda, vector;
    // Three indices of 8 bits, the wavelength number of 3 bits, and the phase, in one number.
    std::int32_t Code() const { return ((phase * 8 + lambda) * 256 + hkl[0] + 128) * 65536 + (hkl[1] + 128) * 256 + hkl[2] + 128; }
};

struct Model {
    std::string title = "Two oxides CELL: 4.75 Chi2: 2.375 TEMP: 293.5";
    double start = 10, step = 0.05, lambda1 = 1.54056, lambda2 = 1.5444, zero = 0.03125, cosine = -0.01875, sine = 0.025;
    bool flight = false, superspace = false;
    std::vector<double> y, ycalc, bgr;
    std::vector<std::vector<std::array<double, 3>>> vectors;  // of each phase
    std::vector<std::vector<Model_Reflection>> phases;
    std::vector<Model_Reflection> all;
    std::vector<std::pair<double, double>> excluded = {{9.5, 10.75}, {12.25, 12.5}};

    double X(std::size_t i) const { return start + static_cast<double>(i) * step; }
    double True(double x) const {
        const double half = x / 2 * std::numbers::pi / 180;
        return x - zero - (flight ? 0 : cosine * std::cos(half) + sine * std::sin(half));
    }
};

// `each` reflections in the first phase and 7 more in each later one; every second phase has vectors.
inline Model Make_Model(int phases, int each, bool with_vectors, std::size_t points = 200) {
    Model m;
    std::mt19937 random(static_cast<unsigned>(phases));
    const auto upto = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    for (std::size_t i = 0; i < points; ++i) {
        m.y.push_back(upto(99999));
        m.ycalc.push_back(m.y.back() + upto(400) - 200);
        m.bgr.push_back(upto(900));
    }
    for (int p = 1; p <= phases; ++p) {
        auto& vectors = m.vectors.emplace_back();
        for (int v = 0; with_vectors && p % 2 == 0 && v < 1 + p % 3; ++v) vectors.push_back({0.5, -0.25 * v, 1.0 / 3});
        auto& phase = m.phases.emplace_back();
        for (int j = 0; j < each + 7 * (p - 1); ++j)
            phase.push_back({m.start + 0.001 * upto(50 * static_cast<int>(points)),
                             {upto(25) - 12, upto(25) - 12, upto(25) - 12, upto(3) - 1, upto(3) - 1, upto(3) - 1},
                             p,
                             1 + j % 2,
                             j % (static_cast<int>(vectors.size()) + 1)});
        m.all.insert(m.all.end(), phase.begin(), phase.end());
    }
    return m;
}

struct Piece {
    std::string text, fault;
    bool words = false;  // letters in its place are as good, or have a message of their own
};
using Prf_File = std::vector<Piece>;

inline std::string Whole(const Prf_File& file) {
    std::string text;
    for (const Piece& piece : file) text += piece.text;
    return text;
}

template <class... Values>
std::string Form(const char* format, Values... values) {
    std::array<char, 512> line{};
    std::snprintf(line.data(), line.size(), format, values...);
    return line.data();
}
inline int Size(const auto& list) { return static_cast<int>(list.size()); }

// Values in lines of `a_line` each.
template <class List, class Value_Of>
std::string Filled(const List& list, std::size_t a_line, const char* format, Value_Of value) {
    std::string text;
    std::size_t n = 0;
    for (const auto& item : list) text += Form(format, value(item)) + (++n % a_line == 0 || n == list.size() ? "\n" : "");
    return text;
}

inline Prf_File Top(const Model& m, const std::string& second) {
    return {{m.title + '\n', "ERROR: Reading line 1", true}, {second + '\n', "ERROR: Reading line 2", true}};
}
inline void Add_Regions(Prf_File& f, const Model& m, const char* format, const std::string& of_count, const std::string& of_pairs) {
    f.push_back({Form("%8d\n", Size(m.excluded)), of_count});
    if (m.excluded.empty()) return;
    f.push_back({"", of_pairs});
    for (const auto& [lo, hi] : m.excluded) f.back().text += Form(format, lo, hi);
}

// The counts of vectors follow those of reflections in the next fields, or with `apart` behind eight of them.
inline Prf_File Classic(const Model& m, bool apart = false) {
    const auto same = [](double v) { return v; };
    Prf_File f = Top(m, "3111");
    f.push_back({Form("%8.3f%8.3f%8.5f%8d\n", m.X(m.y.size() - 1), m.start, m.step, 5), "ERROR: thmax,thmin,ste,ivers"});
    f.push_back({Form("%3d%7d%10.5f%10.5f%10.5f", Size(m.phases), Size(m.y), m.lambda1, m.lambda2, m.zero) +
                     Form("%10.5f%10.5f\n", m.cosine, m.sine),
                 "ERROR: nphases,npts,lambda1,lambda2,glb1,glb8,glb9"});
    const std::size_t phases = m.phases.size();
    std::string counts, of_vectors;
    for (std::size_t p = 0; p < phases; ++p) {
        counts += Form("%5d", Size(m.phases[p]));
        of_vectors += Form(phases <= 8 && (apart || phases + p >= 8) ? "%3d" : "%5d", Size(m.vectors[p]));
    }
    if (apart && phases < 8) counts.resize(40, ' ');
    if (phases <= 8) f.push_back({counts + of_vectors + '\n', "ERROR: reading nphases <= 8"});
    if (phases > 8) f.push_back({counts + '\n', "ERROR: reading nphases > 8 (Part 1)"});
    if (phases > 8) f.push_back({of_vectors + '\n', "ERROR: reading nphases > 8 (Part 2)"});
    f.push_back({Filled(m.y, 8, "%6.0f. ", same), "ERROR: reading Yobs values"});
    f.push_back({Filled(m.ycalc, 8, "%6.0f. ", same), "ERROR: reading Ycalc values"});
    f.push_back({Filled(m.all, 8, "%10d", [](auto& r) { return r.Code(); }), "ERROR: loading reflection codes"});
    f.push_back({Filled(m.all, 10, "%8.3f", [](auto& r) { return r.position; }), "ERROR: loading angular positions of reflections"});
    Add_Regions(f, m, "%8.2f%8.2f\n", "ERROR: reading number of excluded regions", "ERROR: reading excluded regions");
    for (std::size_t p = 0; p < phases; ++p) {
        if (m.vectors[p].empty()) continue;
        f.push_back({"", "ERROR: reading propagation vectors"});
        for (const auto& v : m.vectors[p]) f.back().text += Form("%10.5f%10.5f%10.5f\n", v[0], v[1], v[2]);
        f.push_back({Filled(m.phases[p], 24, "%3d", [](auto& r) { return r.vector; }), "ERROR: reading indices of propagation vectors"});
    }
    return f;
}

inline std::string Profile_Row(const Model& m, std::size_t i, const char* format) {
    return Form(format, m.X(i), m.y[i], m.ycalc[i], m.y[i] - m.ycalc[i], m.bgr[i]);
}

// `words` 7 or 8 on the second line. Reflections in lists behind the profile, or with `beside` on its first rows.
inline Prf_File Columns(const Model& m, int words = 7, bool beside = false, const std::string& head = "Yobs\tYcalc\tdiff\tBackg") {
    Prf_File f = Top(m, Form("%3d%7d%12.5f%12.5f%12.5f", Size(m.phases), Size(m.y), m.lambda1, m.lambda2, m.zero) +
                            Form("%12.5f%12.5f", m.cosine, m.sine) + (words == 8 ? Form("%5d", m.flight ? 1 : 0) : ""));
    std::string counts, of_vectors, vectors;
    for (std::size_t p = 0; p < m.phases.size(); ++p) {
        counts += Form(" %d", Size(m.phases[p]));
        of_vectors += Form(" %d", Size(m.vectors[p]));
        for (const auto& v : m.vectors[p]) vectors += Form("%10.5f%10.5f%10.5f %s\n", v[0], v[1], v[2], m.superspace ? "superspace" : "");
    }
    f.push_back({counts + (m.phases.size() > 8 ? "\n" : "") + of_vectors + '\n', "Error reading: ic, nvk"});
    if (!vectors.empty()) f.push_back({vectors, "Error reading propagation vectors"});
    Add_Regions(f, m, "%14.5f%14.5f\n", "Error reading excluded regions", "Error reading excluded regions");
    f.push_back({" 2Theta\t" + head, "Error reading headings of columns", true});
    f.back().text.resize(beside ? 46 : 53, '.');
    f.back().text += '\n';
    const auto indices = [](const Model_Reflection& r) {
        return Form("%8d\t(%3d%3d%3d)\t%3d%3d\n", r.phase, r.hkl[0], r.hkl[1], r.hkl[2], r.phase, r.lambda);
    };
    f.push_back({"", beside ? "" : "Error reading profile for Prf=+3"});
    for (std::size_t i = 0; i < m.y.size(); ++i) {
        const bool both = beside && i < m.all.size();
        f.back().text += Profile_Row(m, i, "%12.4f\t%8.1f\t%8.1f\t%8.1f\t%8.1f");
        f.back().text += both ? Form("\t%12.4f\t", m.all[i].position) + indices(m.all[i]) : "\n";
    }
    for (std::size_t p = 0; p < m.phases.size() && !beside; ++p) {
        std::string list = Form("Reflections of phase: %d\n", static_cast<int>(p + 1));
        const std::size_t satellites = m.superspace ? m.vectors[p].size() : 0;
        for (const Model_Reflection& r : m.phases[p]) {
            if (satellites == 0) {
                list += Form("%12.4f%37s", r.position, "") + indices(r);
                continue;
            }
            list += Form("%12.4f%10d(", r.position, r.phase);
            for (std::size_t i = 0; i < 3 + satellites; ++i) list += Form("%4d", r.hkl[i]);
            list += Form(")%4d%4d %3d\n", r.phase, r.lambda, 0);
        }
        f.push_back({list, "Error reading reflections for Prf=+3 ", true});
    }
    return f;
}

// How rows under heads that name every column are written: reflections of all phases mixed, each phase with a level of its own.
struct Rows {
    bool beside = false;  // under a column "Bragg"
    bool tag = true;      // tag and wavelength at the end, or phase and wavelength
    bool colon = false;   // a line with a colon before the reflections
    bool apart = false;   // the count of regions has a line of its own
    const char* number = "%8.1f";
    const char* x = "%12.4f";
};

// Reflections as such a file has them, sorted by position.
inline void Sort_Reflections(Model& m) {
    std::stable_sort(m.all.begin(), m.all.end(), [](const auto& a, const auto& b) { return a.position < b.position; });
}

inline Prf_File Field_Rows(const Model& m, const Rows& rows) {
    Prf_File f = Top(m, Form("%4d %6d  %10.6f  %10.6f  %10.6f", Size(m.phases), Size(m.y), m.lambda1, m.lambda2, m.zero) +
                            Form("  %10.6f  %10.6f", m.cosine, m.sine));
    std::string counts, vectors, regions;
    for (const auto& phase : m.phases) counts += Form(" %4d", Size(phase));
    for (const auto& of_phase : m.vectors) counts += Form(" %4d", Size(of_phase));
    for (const auto& of_phase : m.vectors)
        for (const auto& v : of_phase) vectors += Form("  %9.6f  %9.6f  %9.6f\n", v[0], v[1], v[2]);
    const std::string count = Form(" %4d\n", Size(m.excluded));
    for (const auto& [lo, hi] : m.excluded) regions += Form(" %12.4f %12.4f\n", lo, hi);
    f.push_back({counts + (rows.apart ? "\n" : count), "Error reading: ic, nvk"});
    if (!vectors.empty()) f.push_back({vectors, "Error reading propagation vectors"});
    f.push_back({(rows.apart ? count : "") + regions, "Error reading excluded regions"});
    f.push_back({std::string(m.flight ? " T.O.F." : " 2Theta") + "\tYobs\tYcal\tYobs-Ycal\tBackg\t" + (rows.beside ? "Bragg\t" : "") +
                     "Posr\t(hkl)\tK\n",
                 "Error reading headings of columns", true});
    const auto reflection = [&](const Model_Reflection& r) {
        return Form("%8d\t(%3d%3d%3d)\t%3d%3d\n", -1262 * (r.phase - 1), r.hkl[0], r.hkl[1], r.hkl[2], rows.tag ? r.vector : r.phase,
                    r.lambda);
    };
    f.push_back({"", rows.beside ? "" : "Error reading profile for Prf=+3"});
    for (std::size_t i = 0; i < m.y.size(); ++i) {
        std::string row = Form(rows.x, m.X(i));
        for (const double y : {m.y[i], m.ycalc[i], m.y[i] - m.ycalc[i] - 500, m.bgr[i]}) row += '\t' + Form(rows.number, y);
        if (rows.beside && i < m.all.size()) row += '\t' + Form(rows.x, m.all[i].position) + '\t' + reflection(m.all[i]);
        f.back().text += row.ends_with('\n') ? row : row + '\n';
    }
    if (rows.colon) f.push_back({" Reflections:\n", "", true});
    const std::string no_profile = "\t        \t        \t        \t        \t";
    std::string list;
    for (std::size_t i = rows.beside ? m.y.size() : 0; i < m.all.size(); ++i) {
        const std::string position = Form(rows.x, m.all[i].position);
        list += (rows.beside ? no_profile + position + '\t' : position + no_profile) + reflection(m.all[i]);
    }
    if (!list.empty()) f.push_back({list, std::string("Error reading reflections for Prf=") + (rows.beside ? "-3" : "+3"), true});
    return f;
}

// Peaks of a fit: the first phase, on the first rows.
inline Prf_File Peak_Fit(const Model& m, const std::string& second = "xrft") {
    Prf_File f = Top(m, second);
    f.push_back({"Scattering Variable:   2theta\n", "ERROR: Reading line 3 in XRF file", true});
    f.push_back({Form("Number of points: %d\n", Size(m.y)), "ERROR: Reading line 4 in XRF file containing npts", true});
    f.push_back({Form("Number of peaks: %d\nheads\n", Size(m.phases[0])), "", true});
    f.push_back({"", "ERROR: Reading numeric line #"});
    for (std::size_t i = 0; i < m.y.size(); ++i) {
        f.back().text += Profile_Row(m, i, "%10.4f %9.1f %9.1f %9.1f %9.1f");
        f.back().text += i < m.phases[0].size() ? Form(" %10.4f 0.0 1000.5 0.25 0.5 (peak %zu)\n", m.phases[0][i].position, i) : "\n";
    }
    return f;
}

// A row is a reflection: the first phase, observed, calculated, their deviation, and its indices.
inline Prf_File Integrated(const Model& m) {
    Prf_File f = Top(m, " Sin(theta)/lambda  Fobs  Fcal  deviation");
    for (std::size_t i = 0; i < m.phases[0].size(); ++i) {
        const auto& hkl = m.phases[0][i].hkl;
        f.push_back({Form("%10.5f %9.2f %9.2f 3.5 1.0 %d %d %d\n", m.X(i) / 100, m.y[i], m.ycalc[i], hkl[0], hkl[1], hkl[2]), ""});
    }
    return f;
}

inline Prf_File Pair_Distribution(const Model& m) {
    Prf_File f = Top(m, "# R   Gobs   Gcalc   difference");
    for (std::size_t i = 0; i < m.y.size(); ++i)
        f.push_back({Form("%8.4f %9.5f %9.5f %9.5f\n", m.X(i), m.y[i] / 1e4, m.ycalc[i] / 1e4, m.bgr[i] / 1e4), ""});
    return f;
}

}  // namespace vntl::test
