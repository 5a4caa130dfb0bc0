// From a pixel of an area detector to the direction and the scattering vector that it sees, and back.
//
// Axes of the laboratory: y along the beam, z up, x such that they are right-handed. A direction at gamma and nu is
// (sin gamma cos nu, cos gamma cos nu, sin nu). Angles are degrees. Pixels count from 1, whole numbers at their middle: px to the side of
// growing gamma, py upward.
//
// The detector's centre is at gamma (of the arm, + gamma_c) and nu (nu_c), at the distance D. With the unit vectors
// c = (sin g cos n, cos g cos n, sin n), e = (cos g, -sin g, 0), f = (-sin g sin n, -cos g sin n, cos n) there, and
// u = (px - (nx + 1) / 2) pitch, v = (py - (ny + 1) / 2) pitch, plus the detector's offsets (x to u, y to D, z to v), a pixel is at
//
//   flat (2)                P = D c + u e + v f
//   vertical banana (1)     P = D c + u e            with n + v / D in c
//   horizontal banana (3)   P = D c + v (0, 0, 1)    with g + u / D in c
//
// Tilts turn (u, 0, v) before that, right-handedly about e, c and f, in the order that the instrument tells, else x, y, z; the y that comes
// of it is added to D. Lengths have one unit, whichever.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/status.hpp"
#include "instrument/diffractometer.hpp"
#include "instrument/numor.hpp"
#include "instrument/vectors.hpp"

namespace vntl {

struct Detector_Angles {
    double gamma = 0, nu = 0;
};
struct Pixel_Place {
    double px = 0, py = 0;
};

class Pixel_Geometry {
public:
    // Of a detector with nx by ny pixels. Fails, and `geometry` stays, where there is no pixel, where distance, sizes or angles give no
    // place, and where tilts bring a pixel to the sample or behind it. `warnings`: the longer side decides about the arc where it
    // contradicts the instrument's kind of detector; a kind, or an order of several tilts, that is unknown.
    static Status Make(const Diffractometer_Type& instrument, int nx, int ny, Pixel_Geometry& geometry, std::vector<std::string>& warnings);

    int nx() const { return nx_; }
    int ny() const { return ny_; }

    // The unit vector from the sample to a place on the detector whose arm is at `gamma`. That at another gamma is the same, turned about
    // z.
    Vector3d Direction(double px, double py, double gamma) const;
    Detector_Angles Angles(double px, double py, double gamma) const;

    // The place that sees a direction, which need not lie among the pixels; nothing where the direction does not meet the detector.
    std::optional<Pixel_Place> Pixel(const Detector_Angles& direction, double gamma) const;

private:
    struct Offsets {
        double u, distance, v;
    };
    struct Slopes {
        double u, v;
    };
    Offsets On_Detector(double px, double py) const;
    std::optional<Slopes> Slopes_Of(const Vector3d& direction) const;
    double Least_Distance() const { return 1e-9 * distance_; }  // of what is no longer at the sample

    int nx_ = 0, ny_ = 0;
    int kind_ = 2;  // `ipsd`, as the sides have it
    double distance_ = 0, pitch_u_ = 0, pitch_v_ = 0;
    double offset_u_ = 0, offset_v_ = 0;
    double gamma_c_ = 0, nu_c_ = 0;                     // degrees
    Matrix3d tilt_{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};  // of (u, 0, v)
};

// Where arm and crystal stand in a frame, degrees.
struct Frame_Setting {
    double gamma = 0, omega = 0, chi = 0, phi = 0;
};

// Of a frame, from 1: the run's angles, of which scans of "omega", "phi" and "q-scan" (gamma, omega, chi, phi) take theirs from the frame
// table. Fails for a frame that is not there, for one whose table lacks the angles of its scan, and for angles that are not finite.
Status Setting_Of_Frame(const SXTAL_Numor_Type& numor, int frame, Frame_Setting& setting);

// From the laboratory at these angles to the crystal's axes at zero: about omega, chi, then phi (Busing and Levy, Acta Cryst. 22, 1967,
// 457). omega and phi: (x cos - y sin, x sin + y cos, z); chi: (x cos - z sin, y, x sin + z cos).
Matrix3d To_Crystal(const Frame_Setting& setting);

// The scattering vector of a place in a frame, (direction - beam) / wavelength turned to the crystal's axes: 1/angstrom, without 2 pi, so
// that |z1| = 2 sin(theta) / wavelength. Fails without a wavelength, and as Setting_Of_Frame does.
Status Get_z1_from_pixel(double px, double py, int frame, const SXTAL_Numor_Type& numor, const Pixel_Geometry& geometry, Vector3d& z1);

// Where in a run a scattering vector was measured: the frame in which it comes nearest to reflecting while the detector sees it, and the
// place that sees it there. Nothing where no frame comes within half a step of reflecting it, or the detector is not there.
struct Measured_At {
    int frame = 0;
    Pixel_Place pixel;
};
std::optional<Measured_At> Find_In_Run(const Vector3d& z1, const SXTAL_Numor_Type& numor, const Pixel_Geometry& geometry);

// The inverse; false, and `inverse` as it was, for what is singular or not finite.
bool Invert(const Matrix3d& matrix, Matrix3d& inverse);

}  // namespace vntl
