// A crystal of known cell and orientation in front of an area detector, and the run that measures it: spots at whole h k l over a flat
// background. Where they fall is found from the Ewald sphere frame by frame, by closed forms of each detector and nothing of the program.
//
//     const auto crystal = Simulated_Crystal::Of(3, "phi");
//     Read_Numor_Text(crystal.Text().Text(), "run", crystal.machine, numor);
//     for (const auto& spot : crystal.Spots(4)) ...
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include "instrument/diffractometer.hpp"
#include "instrument/numor.hpp"
#include "instrument/numor_text.hpp"
#include "instrument/pixel_geometry.hpp"
#include "instrument/read_numor.hpp"
#include "instrument/vectors.hpp"

namespace vntl::test {

struct Simulated_Spot {
    std::array<int, 3> hkl{};
    double px = 0, py = 0, frame = 0;  // from 1, whole numbers in the middle of pixels and frames
};

struct Simulated_Crystal {
    int kind = 2;  // of the detector: 1 vertical banana, 2 flat, 3 horizontal banana
    std::string scan = "omega";
    std::string machine = "R18";
    int numor = 123456;
    int nx = 48, ny = 48, frames = 40;
    double distance = 500, pitch = 2.5;                        // mm
    double wave = 1.1;                                         // angstroms
    double gamma = 32, omega = 14, chi = 21, phi = 37;         // degrees, of the first frame
    double step = 0.5;                                         // degrees a frame
    std::array<double, 6> cell = {11, 12.5, 14, 90, 102, 95};  // angstroms, degrees
    double height = 2000, background = 10;                     // counts
    bool level = false;                                        // the plane of a* and b* lies level where chi is 0
    double wide = 1.2;                                         // sigma of a spot, in pixels and frames

    // A detector of each kind, longer along its arc, and the machine that writes it.
    static Simulated_Crystal Of(int kind, const std::string& scan) {
        Simulated_Crystal made;
        made.kind = kind, made.scan = scan;
        if (kind == 1) made.nx = 40, made.ny = 56;
        if (kind == 2) made.machine = "R6";
        if (kind == 3) made.nx = 56, made.ny = 40;
        return made;
    }

    // Columns a*, b*, c*: those of the cell (a* along x, b* in the plane of x and y), turned about z, x, and z.
    Matrix3d UB() const {
        const double ca = Cos(cell[3]), cb = Cos(cell[4]), cg = Cos(cell[5]);
        const double root = std::sqrt(1 - ca * ca - cb * cb - cg * cg + 2 * ca * cb * cg);
        const Vector3d star = {Sin(cell[3]) / (cell[0] * root), Sin(cell[4]) / (cell[1] * root), Sin(cell[5]) / (cell[2] * root)};
        const double cbs = (ca * cg - cb) / (Sin(cell[3]) * Sin(cell[5])), cgs = (ca * cb - cg) / (Sin(cell[3]) * Sin(cell[4]));
        const Matrix3d b = {{{star[0], star[1] * cgs, star[2] * cbs},
                             {0, star[1] * std::sqrt(1 - cgs * cgs), -star[2] * std::sqrt(1 - cbs * cbs) * ca},
                             {0, 0, 1 / cell[2]}}};
        if (level) return About_Z(25) * b;
        return About_Z(25) * (Matrix3d{{{1, 0, 0}, {0, Cos(17), -Sin(17)}, {0, Sin(17), Cos(17)}}} * (About_Z(-48) * b));
    }

    // gamma, omega, chi, phi of a frame, from 1; those in between are of the way from one to the next.
    std::array<double, 4> Angles(double frame) const {
        const double turn = step * (frame - 1);
        if (scan == "phi") return {gamma, omega, chi, phi + turn};
        if (scan == "q-scan") return {gamma + 0.2 * turn, omega + turn, chi + 0.1 * turn, phi - 0.2 * turn};
        return {gamma, omega + turn, chi, phi};
    }

    // Reflections that cross the Ewald sphere on the detector, at least `margin` pixels and frames within the run (or without: < 0).
    std::vector<Simulated_Spot> Spots(double margin = 0) const {
        std::vector<Simulated_Spot> spots;
        const Matrix3d ub = UB();
        const Beams beams = Beams_Between(1 + margin, frames - margin);
        const auto most = [this](std::size_t axis) { return static_cast<int>(2 / wave * cell[axis]) + 1; };  // the sphere's diameter
        for (int h = -most(0); h <= most(0); ++h)
            for (int k = -most(1); k <= most(1); ++k)
                for (int l = -most(2); l <= most(2); ++l)
                    if (h != 0 || k != 0 || l != 0) Cross({h, k, l}, ub * Vector3d{double(h), double(k), double(l)}, beams, margin, spots);
        return spots;
    }

    // All frames, each row by row.
    std::vector<std::vector<long long>> Counts() const {
        const auto pixels = static_cast<std::size_t>(nx * ny);
        std::vector<double> mean(static_cast<std::size_t>(frames) * pixels, background);
        const double reach = 5 * wide;
        const auto first = [reach](double place) { return std::max(1, static_cast<int>(std::ceil(place - reach))); };
        const auto last = [reach](double place, int n) { return std::min(n, static_cast<int>(place + reach)); };
        for (const Simulated_Spot& spot : Spots(-reach))
            for (int frame = first(spot.frame); frame <= last(spot.frame, frames); ++frame)
                for (int py = first(spot.py); py <= last(spot.py, ny); ++py)
                    for (int px = first(spot.px); px <= last(spot.px, nx); ++px) {
                        const Vector3d off = {px - spot.px, py - spot.py, frame - spot.frame};
                        mean[static_cast<std::size_t>(((frame - 1) * ny + py - 1) * nx + px - 1)] +=
                            height * std::exp(-Dot(off, off) / (2 * wide * wide));
                    }
        std::vector<std::vector<long long>> counts(static_cast<std::size_t>(frames));
        for (std::size_t i = 0; i < mean.size(); ++i) counts[i / pixels].push_back(std::llround(mean[i]));
        return counts;
    }

    Diffractometer_Type Instrument() const {
        Diffractometer_Type made;
        made.info = "Simulated", made.name_inst = machine, made.detector_type = "Area";
        made.dist_samp_detector = static_cast<float>(distance);
        made.horiz = static_cast<float>(nx * pitch), made.vert = static_cast<float>(ny * pitch);
        made.np_horiz = nx, made.np_vert = ny;
        made.agap = made.cgap = static_cast<float>(pitch);
        made.wave = static_cast<float>(wave);
        made.igeom = 1, made.ipsd = kind;
        return made;
    }

    Numor_Text Text() const {
        std::vector<Numor_Frame> of_run;
        const auto counts = Counts();
        for (std::size_t f = 0; f < counts.size(); ++f) {
            const std::array<double, 4> at = Angles(static_cast<double>(f) + 1);
            Numor_Frame frame{.angles = {scan == "phi" ? at[3] : at[1]}, .counts = In_File_Order(counts[f])};
            if (scan == "q-scan") frame.angles.assign(at.begin(), at.end());
            of_run.push_back(std::move(frame));
        }
        Numor_Text run = Numor_Text::Of(machine, std::move(of_run));
        run.numor = numor, run.title = "simulated crystal", run.scantype = scan;
        run.frame_markers = true;
        run.F(4) = phi, run.F(5) = chi, run.F(6) = omega, run.F(7) = gamma, run.F(18) = wave;
        const Matrix3d ub = UB();
        const Vector3d first = Indices_Of_Centre(1), last = Indices_Of_Centre(frames);
        for (std::size_t i = 0; i < 3; ++i) {
            run.F(1 + i) = first[i], run.F(22 + i) = last[i], run.F(25 + i) = (last[i] - first[i]) / std::max(frames - 1, 1);
            for (std::size_t k = 0; k < 3; ++k) run.F(9 + 3 * i + k) = ub[i][k];
        }
        return run;
    }

    // As its machine's reader has it; the record is empty where that refuses.
    SXTAL_Numor_Type Run() const {
        SXTAL_Numor_Type run;
        return Read_Numor_Text(Text().Text(), "run", machine, run).ok() ? run : SXTAL_Numor_Type{};
    }

    // h k l in the middle of the detector.
    Vector3d Indices_Of_Centre(double frame) const {
        const std::array<double, 4> at = Angles(frame);
        const Vector3d z = {Sin(at[0]) / wave, (Cos(at[0]) - 1) / wave, 0};
        const Vector3d in_crystal = About_Z(at[3]) * (About_Y(at[2]) * (About_Z(at[1]) * z));
        Matrix3d inverse{};
        Invert(UB(), inverse);
        return inverse * in_crystal;
    }

private:
    static double Sin(double degrees) { return std::sin(degrees * degree); }
    static double Cos(double degrees) { return std::cos(degrees * degree); }
    static Matrix3d About_Z(double degrees) { return {{{Cos(degrees), -Sin(degrees), 0}, {Sin(degrees), Cos(degrees), 0}, {0, 0, 1}}}; }
    static Matrix3d About_Y(double degrees) {  // as chi turns: x towards z
        return {{{Cos(degrees), 0, -Sin(degrees)}, {0, 1, 0}, {Sin(degrees), 0, Cos(degrees)}}};
    }

    // From the crystal's axes to the laboratory.
    Vector3d In_Laboratory(const Vector3d& z1, double frame) const {
        const std::array<double, 4> at = Angles(frame);
        return About_Z(-at[1]) * (About_Y(-at[2]) * (About_Z(-at[3]) * z1));
    }

    // Frames between which a vector crosses the sphere once at most, and the beam in the crystal's axes there.
    using Beams = std::vector<std::pair<double, Vector3d>>;
    Beams Beams_Between(double first, double last) const {
        Beams beams;
        const int n = std::max(1, static_cast<int>(2 * (last - first)));
        for (int i = 0; i <= n; ++i) beams.emplace_back(first + (last - first) * i / n, Beam_In_Crystal(first + (last - first) * i / n));
        return beams;
    }
    Vector3d Beam_In_Crystal(double frame) const {
        return {In_Laboratory({1, 0, 0}, frame)[1], In_Laboratory({0, 1, 0}, frame)[1], In_Laboratory({0, 0, 1}, frame)[1]};
    }

    // Whether a vector is inside of the sphere about (0, -1 / wave, 0) that goes through the origin.
    bool Inside(const Vector3d& z1, const Vector3d& beam) const { return Dot(z1, beam) + wave * Dot(z1, z1) / 2 < 0; }

    void Cross(const std::array<int, 3>& hkl, const Vector3d& z1, const Beams& beams, double margin,
               std::vector<Simulated_Spot>& spots) const {
        for (std::size_t i = 0; i + 1 < beams.size(); ++i) {
            const bool inside = Inside(z1, beams[i].second);
            if (Inside(z1, beams[i + 1].second) == inside) continue;
            double low = beams[i].first, high = beams[i + 1].first;
            for (int halving = 0; halving < 60; ++halving) {
                const double middle = (low + high) / 2;
                (Inside(z1, Beam_In_Crystal(middle)) == inside ? low : high) = middle;
            }
            Simulated_Spot spot{hkl, 0, 0, low};
            if (!Place(In_Laboratory(z1, low), Angles(low)[0], spot)) continue;
            const auto within = [margin](double at, int n) { return at >= 1 + margin && at <= n - margin; };
            if (within(spot.px, nx) && within(spot.py, ny)) spots.push_back(spot);
        }
    }

    // Where the beam that a vector reflects meets the detector, of which the middle is along the arm.
    bool Place(const Vector3d& z, double arm, Simulated_Spot& spot) const {
        const Vector3d to = {wave * z[0], wave * z[1] + 1, wave * z[2]};
        const double aside = to[0] * Cos(arm) - to[1] * Sin(arm), ahead = to[0] * Sin(arm) + to[1] * Cos(arm), up = to[2];
        if (ahead <= 0) return false;
        double u = distance * aside / ahead, v = distance * up / ahead;
        if (kind == 1) u = distance * aside / std::hypot(ahead, up), v = distance * std::atan2(up, ahead);
        if (kind == 3) u = distance * std::atan2(aside, ahead), v = distance * up / std::hypot(ahead, aside);
        spot.px = u / pitch + (nx + 1) / 2.0;
        spot.py = v / pitch + (ny + 1) / 2.0;
        return true;
    }

    std::vector<long long> In_File_Order(const std::vector<long long>& by_rows) const {
        if (machine == "R6" || machine == "R11") return by_rows;
        std::vector<long long> by_columns;
        for (int px = 0; px < nx; ++px)
            for (int py = 0; py < ny; ++py) by_columns.push_back(by_rows[static_cast<std::size_t>(py * nx + px)]);
        return by_columns;
    }
};

}  // namespace vntl::test
