// Pixels of area detectors and what they see, against vectors that are turned one turn after another by Rodrigues' formula, the matrices
// that Busing and Levy printed, and what holds for any detector.
#include "instrument/pixel_geometry.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "instrument/simulated_instrument.hpp"

namespace vntl::test {
namespace {

constexpr float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
constexpr Vector3d axes[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

double Real(float value) { return static_cast<double>(value); }
Vector3d Plus(const Vector3d& a, const Vector3d& b, double f = 1) { return {a[0] + f * b[0], a[1] + f * b[1], a[2] + f * b[2]}; }
double Apart(const Vector3d& a, const Vector3d& b) { return Length(Plus(a, b, -1)); }

// Right-handed, by degrees.
Vector3d Turned(const Vector3d& v, char about, double angle) {
    const Vector3d& axis = axes[about - 'x'];
    const double c = std::cos(angle * degree), s = std::sin(angle * degree);
    const Vector3d cross = {axis[1] * v[2] - axis[2] * v[1], axis[2] * v[0] - axis[0] * v[2], axis[0] * v[1] - axis[1] * v[0]};
    return Plus(Plus({c * v[0], c * v[1], c * v[2]}, cross, s), axis, (1 - c) * Dot(axis, v));
}

struct Detector {
    Diffractometer_Type instrument;
    int nx = 32, ny = 40, kind = 2;
    std::string turns = "xyz";

    // Of a pixel: on the untilted detector at zero, tilted, bent, then carried there by nu and gamma.
    Vector3d Place(double px, double py, double gamma) const {
        const Diffractometer_Type& i = instrument;
        const double u = i.agap > 0 ? Real(i.agap) : Real(i.horiz) / nx, v = i.cgap > 0 ? Real(i.cgap) : Real(i.vert) / ny;
        Vector3d at = {(px - 0.5 * nx - 0.5) * u + Real(i.det_offsets[0]), 0, (py - 0.5 * ny - 0.5) * v + Real(i.det_offsets[2])};
        for (const char axis : turns) at = Turned(at, axis, Real(i.tilt[static_cast<std::size_t>(axis - 'x')]));
        at[1] += Real(i.dist_samp_detector) + Real(i.det_offsets[1]);
        const double arm = gamma + Real(i.gamma_c), nu = Real(i.nu_c);
        if (kind == 1) return Turned(Turned({at[0], at[1], 0}, 'x', nu + at[2] / at[1] / degree), 'z', -arm);
        if (kind == 3) return Plus(Turned(Turned({0, at[1], 0}, 'x', nu), 'z', -arm - at[0] / at[1] / degree), axes[2], at[2]);
        return Turned(Turned(at, 'x', nu), 'z', -arm);
    }
    Pixel_Geometry Geometry() const {
        Pixel_Geometry made;
        std::vector<std::string> warnings;
        EXPECT_TRUE(Pixel_Geometry::Make(instrument, nx, ny, made, warnings).ok() && warnings.empty());
        return made;
    }
};

Detector Random_Detector(Dice& dice) {
    const auto real = [&](double low, double high) { return static_cast<float>(dice.Between(low, high)); };
    const auto whole = [&](int low, int high) { return static_cast<int>(dice.Between(low, high + 1)); };
    const std::pair<const char*, const char*> orders[] = {{"", "xyz"}, {"XZY", "xzy"}, {"Y Z X", "yzx"}, {"zxy", "zxy"}, {"z,y,x", "zyx"}};
    const auto& [order, turns] = orders[whole(0, 4)];
    Detector d{.instrument = {}, .nx = whole(1, 300), .ny = whole(1, 300), .kind = whole(1, 3), .turns = turns};
    Diffractometer_Type& i = d.instrument;
    i.ipsd = d.kind, i.rot_order = order;
    i.horiz = real(20, 200), i.vert = real(20, 200);
    if (i.horiz > i.vert ? d.kind == 1 : d.kind == 3) std::swap(i.horiz, i.vert);
    if (whole(0, 1)) i.agap = real(0.1, 0.7), i.cgap = real(0.1, 0.7);
    i.dist_samp_detector = real(200, 500);
    i.gamma_c = real(-20, 20), i.nu_c = real(-20, 20) + (whole(0, 9) ? 0 : 180);
    if (whole(0, 3)) i.tilt = {real(-20, 20), real(-20, 20), real(-20, 20)};
    if (whole(0, 1)) i.det_offsets = {real(-9, 9), real(-30, 30), real(-9, 9)};
    return d;
}

SXTAL_Numor_Type Run_Of(const char* scantype, int frames, std::size_t angles) {
    SXTAL_Numor_Type run;
    run.scantype = scantype, run.nframes = frames, run.wave = 1.17f;
    run.gamma = 40, run.omega = 20, run.chi = 90, run.phi = -30;
    run.tmc_ang = Frame_Values(frame_angle + angles, static_cast<std::size_t>(frames));
    return run;
}

// The printed matrices: they give h in the laboratory as Omega X Phi h of the crystal.
Matrix3d Printed(const Frame_Setting& s) {
    const auto c = [](double angle) { return std::cos(angle * degree); };
    const auto sn = [](double angle) { return std::sin(angle * degree); };
    const Matrix3d omega{{{c(s.omega), sn(s.omega), 0}, {-sn(s.omega), c(s.omega), 0}, {0, 0, 1}}};
    const Matrix3d chi{{{c(s.chi), 0, sn(s.chi)}, {0, 1, 0}, {-sn(s.chi), 0, c(s.chi)}}};
    const Matrix3d phi{{{c(s.phi), sn(s.phi), 0}, {-sn(s.phi), c(s.phi), 0}, {0, 0, 1}}};
    return omega * (chi * phi);
}

TEST(Pixel_Geometry, PixelsSeeWhereTurnsCarryThemAndAreFoundAgain) {
    constexpr double far = std::numeric_limits<double>::max();
    Dice dice(22);
    const char* scans[] = {"omega", "phi", "q-scan", "none"};
    for (int n = 0; n < 1000; ++n) {
        Detector d = Random_Detector(dice);
        const Pixel_Geometry geometry = d.Geometry();
        SXTAL_Numor_Type run = Run_Of(scans[n % 4], 3, 4);
        for (float& angle : run.tmc_ang.Frame(1)) angle = static_cast<float>(dice.Between(-180, 180));
        Frame_Setting s;
        Vector3d z1{};
        const double px = dice.Between(0.5, d.nx + 0.5), py = dice.Between(0.5, d.ny + 0.5), wave = Real(run.wave);
        ASSERT_TRUE(Setting_Of_Frame(run, 2, s).ok() && Get_z1_from_pixel(px, py, 2, run, geometry, z1).ok());

        const Vector3d place = d.Place(px, py, s.gamma), direction = geometry.Direction(px, py, s.gamma);
        const double length = Length(place);
        const Vector3d sees = {place[0] / length, place[1] / length, place[2] / length};
        EXPECT_LT(Apart(direction, sees), 1e-12);
        const Detector_Angles angles = geometry.Angles(px, py, s.gamma);
        EXPECT_NEAR(std::remainder(angles.gamma - 90 + std::atan2(sees[1], sees[0]) / degree, 360), 0, 1e-9);
        EXPECT_NEAR(angles.nu, std::asin(sees[2]) / degree, 1e-9);
        const auto back = geometry.Pixel(angles, s.gamma);
        ASSERT_TRUE(back);
        EXPECT_NEAR(back->px, px, 1e-6);
        EXPECT_NEAR(back->py, py, 1e-6);

        EXPECT_NEAR(Length(z1), 2 * std::sin(std::acos(sees[1]) / 2) / wave, 1e-9);
        const Vector3d z4 = Plus({sees[0] / wave, sees[1] / wave, sees[2] / wave}, axes[1], -1 / wave);
        EXPECT_LT(Apart(Printed(s) * z1, z4), 1e-9);

        // However far off a place is, it has a direction; a plane is not seen from behind.
        for (const double x : {-far, -1e5, far})
            for (const double y : {-1e5, 1e5, far}) EXPECT_NEAR(Length(geometry.Direction(x, y, s.gamma)), 1, 1e-12);
        EXPECT_TRUE(d.kind != 2 || !geometry.Pixel({angles.gamma + 180, -angles.nu}, s.gamma));
    }
}

TEST(Pixel_Geometry, WhatAnInstrumentMustTellAndWhatIsDoubtful) {
    using D = Diffractometer_Type;
    const struct {
        void (*change)(D&);
        const char* told;
        int kind = 0;  // the detector is of that kind then; 0: it is refused
    } cases[] = {
        {[](D& d) { d.np_horiz = 0; }, "pixels"},
        {[](D& d) { d.dist_samp_detector = 0; }, "DIST_DET"},
        {[](D& d) { d.det_offsets[1] = -400; }, "DIST_DET"},
        {[](D& d) { d.det_offsets[2] = inf; }, "DET_OFF"},
        {[](D& d) { d.horiz = 0; }, "GAPS_CA_AN"},
        {[](D& d) { d.gamma_c = nan; }, "GN_CENTRE"},
        {[](D& d) { d.tilt[2] = nan; }, "TILT_ANGLES"},
        {[](D& d) { d.dist_samp_detector = 40, d.tilt[0] = -60; }, "behind it"},
        {[](D& d) { d.tilt[0] = -60; }, "", 2},
        {[](D& d) { d.ipsd = 1, d.tilt[2] = 90; }, "", 1},
        {[](D& d) { d.ipsd = 4; }, "ipsd 4", 2},
        {[](D& d) { d.ipsd = 3; }, "the arc is vertical", 1},
        {[](D& d) { d.ipsd = 1, d.horiz = 101; }, "the arc is horizontal", 3},
        {[](D& d) { d.ipsd = 1, d.agap = 9; }, "", 1},  // sides, not pixels, where they are told
        {[](D& d) { d.ipsd = 1, d.horiz = 0, d.agap = 9, d.cgap = 2; }, "the arc is horizontal", 3},
        {[](D& d) { d.rot_order = "zzx", d.tilt[0] = d.tilt[1] = 2; }, "\"zzx\"", 2},
        {[](D& d) { d.rot_order = "none", d.tilt[1] = 2; }, "", 2},  // one turn has no order
    };
    Dice dice(3);
    const Pixel_Geometry former = Random_Detector(dice).Geometry();
    for (const auto& [change, told, kind] : cases) {
        Detector d;
        d.kind = kind;
        d.instrument.horiz = 64, d.instrument.vert = 100, d.instrument.dist_samp_detector = 400, d.instrument.np_horiz = d.nx;
        change(d.instrument);
        Pixel_Geometry geometry = former;
        std::vector<std::string> warnings;
        const Status status = Pixel_Geometry::Make(d.instrument, d.instrument.np_horiz, d.ny, geometry, warnings);
        EXPECT_EQ(status.failed, kind == 0) << told << status.message;
        EXPECT_EQ(warnings.empty(), kind == 0 || !*told);
        EXPECT_NE((warnings.empty() ? status.message : warnings[0]).find(told), std::string::npos) << told;
        const Vector3d expected = kind == 0 ? former.Direction(3, 38, 5) : d.Place(3, 38, 5);
        EXPECT_NEAR(Dot(expected, geometry.Direction(3, 38, 5)), Length(expected), 1e-9) << told;
        EXPECT_NEAR(Length(geometry.Direction(16.5 - 200, 20.5, 5)), 1, 1e-12) << "where that tilt of 90 degrees meets the sample";
        EXPECT_TRUE(kind == 0 || d.instrument.tilt[0] > -60 || !geometry.Pixel({5, 80}, 5)) << "a plane that goes off upward";
    }
}

TEST(Pixel_Geometry, ScansTellTheAnglesOfTheirFrames) {
    const struct {
        const char* scantype;
        std::size_t angles;
        std::array<double, 4> setting;  // of frame 2; zeros: refused
    } cases[] = {{" Omega  ", 1, {40, 1, 90, -30}},  {"phi", 4, {40, 20, 90, 1}}, {"Q-SCAN", 4, {1, 2, 3, 4}},
                 {"omega-2t", 1, {40, 20, 90, -30}}, {"q-scan", 3, {}},           {"omega", 0, {}}};
    for (const auto& [scantype, angles, expected] : cases) {
        SXTAL_Numor_Type run = Run_Of(scantype, 2, angles);
        for (std::size_t i = 0; i < angles; ++i) run.tmc_ang.Frame(1)[frame_angle + i] = static_cast<float>(i + 1);
        Frame_Setting s;
        EXPECT_EQ(Setting_Of_Frame(run, 2, s).ok(), expected[0] != 0) << scantype;
        EXPECT_EQ((std::array{s.gamma, s.omega, s.chi, s.phi}), expected) << scantype;
        for (const int frame : {-1, 0, 3}) EXPECT_TRUE(Setting_Of_Frame(run, frame, s).failed);
        run.tmc_ang.Keep(1);
        EXPECT_EQ(Setting_Of_Frame(run, 2, s).ok(), expected[1] == 20 && expected[3] == -30) << scantype << ": the table was cut";
    }
    SXTAL_Numor_Type run = Run_Of("", 1, 0);
    Vector3d z1{};
    Detector d;
    d.instrument.agap = d.instrument.cgap = 1, d.instrument.dist_samp_detector = 400;
    // At half of gamma the scattering vector is along x; a chi of 90 degrees takes it to the axis of phi.
    ASSERT_TRUE(Get_z1_from_pixel(16.5, 20.5, 1, run, d.Geometry(), z1).ok());
    EXPECT_LT(Apart(z1, {0, 0, 2 * std::sin(20 * degree) / Real(run.wave)}), 1e-9);
    EXPECT_TRUE(Get_z1_from_pixel(Real(nan), 3, 1, run, d.Geometry(), z1).failed);
    for (const float wave : {0.0f, -1.0f, nan, inf}) {
        run.wave = wave;
        EXPECT_NE(Get_z1_from_pixel(3, 3, 1, run, d.Geometry(), z1).message.find("wavelength"), std::string::npos);
        EXPECT_FALSE(Find_In_Run(z1, run, d.Geometry()));
    }
}

// Steps of 0.1 degrees, and in the scan of omega those of which a full turn has 3600: it takes a vector through the sphere of reflection
// twice, and was measured where the detector stands.
TEST(Pixel_Geometry, WhatARunMeasuredIsFoundInIt) {
    Dice dice(31);
    for (int n = 0; n < 200; ++n) {
        const Detector d = Random_Detector(dice);
        const Pixel_Geometry geometry = d.Geometry();
        const bool q_scan = n % 3 == 0, turn = n % 3 == 1;
        const int frames = turn ? 3600 : 41, frame = 1 + static_cast<int>(dice.Between(0, frames));
        SXTAL_Numor_Type run = Run_Of(q_scan ? "q-scan" : "omega", frames, 4), other = Run_Of("none", 1, 0);
        for (int i = 0; i < frames; ++i) {
            const float at = 0.1f * static_cast<float>(i), angles[] = {40 + 2 * at, 18 + at, 90, -30};
            std::copy_n(angles + (q_scan ? 0 : 1), q_scan ? 4 : 1, &run.tmc_ang.Frame(static_cast<std::size_t>(i))[frame_angle]);
        }
        if (turn) run.gamma = 0;                // both sides of the beam
        run.nframes = turn ? 1 << 30 : frames;  // of which the table has some
        const double px = dice.Between(0.5, d.nx + 0.5), py = dice.Between(0.5, d.ny + 0.5);
        Vector3d z1{};
        ASSERT_TRUE(Get_z1_from_pixel(px, py, frame, run, geometry, z1).ok());
        const auto at = Find_In_Run(z1, run, geometry);
        ASSERT_TRUE(at) << n;
        EXPECT_EQ(at->frame, frame) << n;
        EXPECT_NEAR(at->pixel.px, px, 1e-6);
        EXPECT_NEAR(at->pixel.py, py, 1e-6);
        if (q_scan || turn) continue;
        ASSERT_TRUE(Get_z1_from_pixel(d.nx + 0.6, py, frame, run, geometry, z1).ok());
        EXPECT_FALSE(Find_In_Run(z1, run, geometry)) << "beside the detector";
        for (const double beyond : {0.3, 0.6, 5.0}) {  // frames before the first
            other.omega = static_cast<float>(18 - 0.1 * beyond);
            ASSERT_TRUE(Get_z1_from_pixel((d.nx + 1) / 2.0, (d.ny + 1) / 2.0, 1, other, geometry, z1).ok());
            EXPECT_EQ(Find_In_Run(z1, run, geometry).has_value(), beyond < 0.5) << beyond;
        }
        // One frame has no step: half a pixel counts.
        EXPECT_TRUE(Find_In_Run(Plus(z1, z1, 1e-6), other, geometry));
        EXPECT_FALSE(Find_In_Run(Plus(z1, z1, 2), other, geometry));
        EXPECT_FALSE(Find_In_Run({Real(nan), 0, 0}, run, geometry));
    }
}

}  // namespace
}  // namespace vntl::test
