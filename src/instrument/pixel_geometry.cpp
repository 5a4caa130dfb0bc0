#include "instrument/pixel_geometry.hpp"

#include <algorithm>
#include <cctype>
#include <utility>

#include "base/text.hpp"

namespace vntl {

namespace {

// As the codes of an instrument's detector have it: where it is bent, the arc is about the sample.
enum Detector_Kind { vertical_banana = 1, flat_detector = 2, horizontal_banana = 3 };

constexpr double full_turn = 2 * std::numbers::pi;

bool Finite(const Vector3d& v) { return std::isfinite(v[0]) && std::isfinite(v[1]) && std::isfinite(v[2]); }
Vector3d Double_Of(const Vector3& v) { return {static_cast<double>(v[0]), static_cast<double>(v[1]), static_cast<double>(v[2])}; }

Vector3d Column(const Matrix3d& m, std::size_t k) { return {m[0][k], m[1][k], m[2][k]}; }

// Right-handed, about the x, y or z axis (0, 1, 2).
Matrix3d Rotation_About(std::size_t axis, double degrees) {
    const double c = std::cos(degrees * degree), s = std::sin(degrees * degree);
    const std::size_t from = (axis + 1) % 3, to = (axis + 2) % 3;
    Matrix3d turned{};
    turned[axis][axis] = 1;
    turned[from][from] = turned[to][to] = c;
    turned[from][to] = -s;
    turned[to][from] = s;
    return turned;
}

// "zxy" in letters of any case, which may be parted: the axes in the order in which they turn; false for anything else.
bool Order_Of_Axes(std::string_view text, std::array<std::size_t, 3>& order) {
    std::size_t count = 0;
    std::array<bool, 3> seen{};
    for (const char letter : Lower(text)) {
        if (letter < 'x' || letter > 'z') {
            if (std::isalnum(static_cast<unsigned char>(letter))) return false;
            continue;
        }
        const auto axis = static_cast<std::size_t>(letter - 'x');
        if (seen[axis]) return false;
        seen[axis] = true;
        order[count++] = axis;
    }
    return count == 3;
}

Matrix3d Tilt_Matrix(const Diffractometer_Type& instrument, std::vector<std::string>& warnings) {
    std::array<std::size_t, 3> order{};
    if (!Order_Of_Axes(instrument.rot_order, order)) {
        order = {0, 1, 2};
        if (!Trim(instrument.rot_order).empty() && std::ranges::count(instrument.tilt, 0.0f) < 2)
            warnings.push_back("The order of the detector's tilts, \"" + instrument.rot_order +
                               "\", is none of x, y and z: they are taken in the order x, y, z.");
    }
    Matrix3d tilt{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    for (const std::size_t axis : order) tilt = Rotation_About(axis, static_cast<double>(instrument.tilt[axis])) * tilt;
    return tilt;
}

double Pitch(float gap, float size, int pixels) {
    return gap > 0 ? static_cast<double>(gap) : static_cast<double>(size) / static_cast<double>(pixels);
}

// The kind by its code, but for the arc, which is along the longer side.
int Kind_Of_Detector(const Diffractometer_Type& instrument, double width, double height, std::vector<std::string>& warnings) {
    constexpr double alike = 1e-6;  // what single precision makes of equal sides
    const int code = instrument.ipsd;
    if (code != vertical_banana && code != flat_detector && code != horizontal_banana) {
        warnings.push_back("The kind of detector (ipsd " + std::to_string(code) + ") is none of 1, 2 and 3: it is taken as flat.");
        return flat_detector;
    }
    if (code == flat_detector || std::fabs(width - height) <= alike * std::max(width, height)) return code;
    const int by_sides = width > height ? horizontal_banana : vertical_banana;
    if (by_sides != code)
        warnings.push_back("The detector is described as curved " +
                           std::string(code == vertical_banana
                                           ? "vertically (ipsd 1), but it is wider than high: the arc is horizontal."
                                           : "horizontally (ipsd 3), but it is higher than wide: the arc is vertical."));
    return by_sides;
}

Status Numbers_Problem(const Diffractometer_Type& instrument) {
    if (!Finite(Double_Of(instrument.det_offsets))) return Status::Fail("The offsets of the detector (DET_OFF) must be finite numbers");
    if (!std::isfinite(instrument.gamma_c) || !std::isfinite(instrument.nu_c))
        return Status::Fail("Gamma and nu of the detector's centre (GN_CENTRE) must be finite numbers");
    if (!Finite(Double_Of(instrument.tilt))) return Status::Fail("The tilts of the detector (TILT_ANGLES) must be finite numbers");
    return Status::Done();
}

bool Is_Length(double value) { return value > 0 && std::isfinite(value); }

}  // namespace

Status Pixel_Geometry::Make(const Diffractometer_Type& instrument, int nx, int ny, Pixel_Geometry& geometry,
                            std::vector<std::string>& warnings) {
    if (nx < 1 || ny < 1)
        return Status::Fail("The detector has no pixels (" + std::to_string(nx) + " by " + std::to_string(ny) +
                            "): DIM_XZP must tell them");
    if (Status status = Numbers_Problem(instrument); status.failed) return status;
    Pixel_Geometry made;
    made.nx_ = nx, made.ny_ = ny;
    made.distance_ = static_cast<double>(instrument.dist_samp_detector) + static_cast<double>(instrument.det_offsets[1]);
    if (!Is_Length(made.distance_))
        return Status::Fail("The distance from the sample to the detector (DIST_DET, with the second of DET_OFF) must be above 0");
    made.pitch_u_ = Pitch(instrument.agap, instrument.horiz, nx);
    made.pitch_v_ = Pitch(instrument.cgap, instrument.vert, ny);
    if (!Is_Length(made.pitch_u_) || !Is_Length(made.pitch_v_))
        return Status::Fail("The size of a pixel must be above 0: GAPS_CA_AN, or the sizes in DIM_XZP, must tell it");
    made.offset_u_ = static_cast<double>(instrument.det_offsets[0]);
    made.offset_v_ = static_cast<double>(instrument.det_offsets[2]);
    made.gamma_c_ = static_cast<double>(instrument.gamma_c);
    made.nu_c_ = static_cast<double>(instrument.nu_c);
    const bool told = Is_Length(static_cast<double>(instrument.horiz)) && Is_Length(static_cast<double>(instrument.vert));
    const double width = told ? static_cast<double>(instrument.horiz) : made.pitch_u_ * nx;
    const double height = told ? static_cast<double>(instrument.vert) : made.pitch_v_ * ny;
    std::vector<std::string> found;
    made.kind_ = Kind_Of_Detector(instrument, width, height, found);
    made.tilt_ = Tilt_Matrix(instrument, found);
    for (const double px : {0.5, nx + 0.5})
        for (const double py : {0.5, ny + 0.5})
            if (made.On_Detector(px, py).distance <= made.Least_Distance())
                return Status::Fail("The tilts of the detector (TILT_ANGLES) bring a part of it to the sample or behind it");
    geometry = made;
    warnings.insert(warnings.end(), found.begin(), found.end());
    return Status::Done();
}

// What lies far off the detector, and there at the sample or behind it, has the place next to that which gives a direction.
Pixel_Geometry::Offsets Pixel_Geometry::On_Detector(double px, double py) const {
    constexpr double far = 1e9;  // pixels
    const double u = std::clamp(px - (nx_ + 1) / 2.0, -far, far) * pitch_u_ + offset_u_;
    const double v = std::clamp(py - (ny_ + 1) / 2.0, -far, far) * pitch_v_ + offset_v_;
    const auto turned = [&](std::size_t row) { return tilt_[row][0] * u + tilt_[row][2] * v; };
    return {turned(0), std::max(distance_ + turned(1), Least_Distance()), turned(2)};
}

Vector3d Pixel_Geometry::Direction(double px, double py, double gamma) const {
    Offsets at = On_Detector(px, py);
    double g = (gamma + gamma_c_) * degree, n = nu_c_ * degree;
    if (kind_ == vertical_banana) n += std::exchange(at.v, 0) / at.distance;
    if (kind_ == horizontal_banana) g += std::exchange(at.u, 0) / at.distance;
    const double sin_g = std::sin(g), cos_g = std::cos(g), sin_n = std::sin(n), cos_n = std::cos(n);
    const bool upright = kind_ == horizontal_banana;  // v is along z, else square to the arm
    const double forward = at.distance * cos_n - (upright ? 0 : at.v * sin_n);
    const Vector3d place = {sin_g * forward + cos_g * at.u, cos_g * forward - sin_g * at.u,
                            at.distance * sin_n + (upright ? at.v : at.v * cos_n)};
    const double length = Length(place);
    return {place[0] / length, place[1] / length, place[2] / length};
}

namespace {

Detector_Angles Angles_Of(const Vector3d& direction) {
    return {std::atan2(direction[0], direction[1]) / degree, std::atan2(direction[2], std::hypot(direction[0], direction[1])) / degree};
}

Vector3d Direction_Of(double gamma, double nu) {
    const double cos_nu = std::cos(nu * degree);
    return {std::sin(gamma * degree) * cos_nu, std::cos(gamma * degree) * cos_nu, std::sin(nu * degree)};
}

}  // namespace

Detector_Angles Pixel_Geometry::Angles(double px, double py, double gamma) const { return Angles_Of(Direction(px, py, gamma)); }

// u and v over the distance, as they are after the tilt: of all kinds of detector these are what a direction tells by itself.
std::optional<Pixel_Geometry::Slopes> Pixel_Geometry::Slopes_Of(const Vector3d& d) const {
    const double sin_n = std::sin(nu_c_ * degree), cos_n = std::cos(nu_c_ * degree);
    if (kind_ == vertical_banana) {
        const double along = std::hypot(d[1], d[2]);
        return Slopes{d[0] / along, std::remainder(std::atan2(d[2], d[1]) - nu_c_ * degree, full_turn)};
    }
    if (kind_ == horizontal_banana) {
        const double side = cos_n < 0 ? -1 : 1;
        return Slopes{std::atan2(side * d[0], side * d[1]), side * cos_n * d[2] / std::hypot(d[0], d[1]) - sin_n};
    }
    const double along = d[1] * cos_n + d[2] * sin_n;
    if (!(along > 0)) return {};
    return Slopes{d[0] / along, (d[2] * cos_n - d[1] * sin_n) / along};
}

std::optional<Pixel_Place> Pixel_Geometry::Pixel(const Detector_Angles& direction, double gamma) const {
    const std::optional<Slopes> slopes = Slopes_Of(Direction_Of(direction.gamma - gamma - gamma_c_, direction.nu));
    if (!slopes) return {};
    // (u, distance, v) lies on the plane that the tilts have made of y = 0 at the untilted distance.
    const Vector3d normal = Column(tilt_, 1), ray = {slopes->u, 1, slopes->v};
    const double distance = distance_ * normal[1] / Dot(normal, ray);
    if (!(distance > Least_Distance())) return {};
    const Vector3d place = {slopes->u * distance, distance - distance_, slopes->v * distance};
    const Pixel_Place pixel{(Dot(Column(tilt_, 0), place) - offset_u_) / pitch_u_ + (nx_ + 1) / 2.0,
                            (Dot(Column(tilt_, 2), place) - offset_v_) / pitch_v_ + (ny_ + 1) / 2.0};
    if (!std::isfinite(pixel.px) || !std::isfinite(pixel.py)) return {};
    return pixel;
}

namespace {

Status No_Angles(const SXTAL_Numor_Type& numor, int frame, const char* what) {
    return Status::Fail("Frame " + std::to_string(frame) + " of numor " + std::to_string(numor.numor) + what);
}

bool Is_Scan(const SXTAL_Numor_Type& numor, std::string_view name) { return Equal_No_Case(Trim(numor.scantype), name); }

}  // namespace

Status Setting_Of_Frame(const SXTAL_Numor_Type& numor, int frame, Frame_Setting& setting) {
    if (frame < 1 || frame > numor.nframes) return No_Angles(numor, frame, " is not there");
    Frame_Setting made{static_cast<double>(numor.gamma), static_cast<double>(numor.omega), static_cast<double>(numor.chi),
                       static_cast<double>(numor.phi)};
    std::array<double*, 4> scanned{};
    std::size_t count = 1;
    if (Is_Scan(numor, "q-scan")) {
        scanned = {&made.gamma, &made.omega, &made.chi, &made.phi};
        count = scanned.size();
    } else if (Is_Scan(numor, "omega")) {
        scanned[0] = &made.omega;
    } else if (Is_Scan(numor, "phi")) {
        scanned[0] = &made.phi;
    } else {
        count = 0;
    }
    const auto row = static_cast<std::size_t>(frame) - 1;
    if (count > 0 && (row >= numor.tmc_ang.frames() || numor.tmc_ang.values() < frame_angle + count))
        return No_Angles(numor, frame, " lacks the angles of its scan");
    for (std::size_t i = 0; i < count; ++i) *scanned[i] = static_cast<double>(numor.tmc_ang.Frame(row)[frame_angle + i]);
    if (!std::isfinite(made.gamma) || !Finite({made.omega, made.chi, made.phi}))
        return No_Angles(numor, frame, " stands at angles that are no finite numbers");
    setting = made;
    return Status::Done();
}

Matrix3d To_Crystal(const Frame_Setting& setting) {
    // That of chi takes x to z: it is left-handed about y.
    return Rotation_About(2, setting.phi) * (Rotation_About(1, -setting.chi) * Rotation_About(2, setting.omega));
}

Status Get_z1_from_pixel(double px, double py, int frame, const SXTAL_Numor_Type& numor, const Pixel_Geometry& geometry, Vector3d& z1) {
    const auto wavelength = static_cast<double>(numor.wave);
    if (!Is_Length(wavelength)) return Status::Fail("Numor " + std::to_string(numor.numor) + " tells no wavelength above 0");
    if (!std::isfinite(px) || !std::isfinite(py)) return Status::Fail("The pixel is no finite number");
    Frame_Setting setting;
    if (Status status = Setting_Of_Frame(numor, frame, setting); status.failed) return status;
    const Vector3d to = geometry.Direction(px, py, setting.gamma);
    z1 = To_Crystal(setting) * Vector3d{to[0] / wavelength, (to[1] - 1) / wavelength, to[2] / wavelength};
    return Status::Done();
}

namespace {

// A scattering vector in the laboratory, as a frame has turned it: where it would send the beam, and how much the length of that, in
// wavelengths, differs from 1. It reflects at 0.
struct Ray_In_Frame {
    Vector3d direction;
    double gamma, excess;
};

std::vector<Ray_In_Frame> Rays_Of_Frames(const Vector3d& z1, const SXTAL_Numor_Type& numor) {
    const auto wavelength = static_cast<double>(numor.wave);
    const Vector3d z = {z1[0] * wavelength, z1[1] * wavelength, z1[2] * wavelength};
    const std::size_t frames =
        std::min(static_cast<std::size_t>(std::max(numor.nframes, 0)), std::max<std::size_t>(numor.tmc_ang.frames(), 1));
    std::vector<Ray_In_Frame> rays;
    rays.reserve(frames);
    Frame_Setting setting;
    for (std::size_t i = 0; i < frames; ++i) {
        if (Setting_Of_Frame(numor, static_cast<int>(i) + 1, setting).failed) break;
        const Matrix3d to_crystal = To_Crystal(setting);
        const Vector3d k = {Dot(Column(to_crystal, 0), z), Dot(Column(to_crystal, 1), z) + 1, Dot(Column(to_crystal, 2), z)};
        rays.push_back({k, setting.gamma, Length(k) - 1});
    }
    return rays;
}

// How far from reflecting a frame may be and have measured it: half the way to its neighbours, and where the scan does not move it half
// the way to the next pixel.
double Reach_Of_Frame(const std::vector<Ray_In_Frame>& rays, std::size_t frame, double half_pixel) {
    constexpr double rounding = 1e-9;
    double step = 0;
    for (std::size_t i = std::max<std::size_t>(frame, 1) - 1; i < std::min(frame + 2, rays.size()); ++i)
        step = std::max(step, std::fabs(rays[i].excess - rays[frame].excess));
    return step > rounding ? step / 2 + rounding : half_pixel;
}

double Half_Pixel(const Pixel_Geometry& geometry) {
    const double px = geometry.nx() / 2.0, py = geometry.ny() / 2.0;
    const Vector3d a = geometry.Direction(px, py, 0), b = geometry.Direction(px + 1, py + 1, 0);
    return Length({b[0] - a[0], b[1] - a[1], b[2] - a[2]}) / 2;
}

bool Is_Among_Pixels(const Pixel_Place& place, const Pixel_Geometry& geometry) {
    return place.px >= 0.5 && place.px <= geometry.nx() + 0.5 && place.py >= 0.5 && place.py <= geometry.ny() + 0.5;
}

}  // namespace

// A wide scan takes a vector through the sphere of reflection more than once.
std::optional<Measured_At> Find_In_Run(const Vector3d& z1, const SXTAL_Numor_Type& numor, const Pixel_Geometry& geometry) {
    if (!Is_Length(static_cast<double>(numor.wave)) || !Finite(z1)) return {};
    const std::vector<Ray_In_Frame> rays = Rays_Of_Frames(z1, numor);
    const double half_pixel = Half_Pixel(geometry);
    std::optional<Measured_At> found;
    double nearest = 1;
    for (std::size_t i = 0; i < rays.size(); ++i) {
        const double excess = std::fabs(rays[i].excess);
        if (!(excess < nearest) || !(excess <= Reach_Of_Frame(rays, i, half_pixel))) continue;
        const std::optional<Pixel_Place> place = geometry.Pixel(Angles_Of(rays[i].direction), rays[i].gamma);
        if (!place || !Is_Among_Pixels(*place, geometry)) continue;
        nearest = excess;
        found = {static_cast<int>(i) + 1, *place};
    }
    return found;
}

bool Invert(const Matrix3d& matrix, Matrix3d& inverse) {
    constexpr double flat = 1e-6;  // of a volume over the product of its edges: what rounding to single precision leaves
    const auto at = [&](std::size_t i, std::size_t j) { return matrix[i % 3][j % 3]; };
    const auto minor = [&](std::size_t i, std::size_t j) {
        return at(i + 1, j + 1) * at(i + 2, j + 2) - at(i + 1, j + 2) * at(i + 2, j + 1);
    };
    const double volume = at(0, 0) * minor(0, 0) + at(0, 1) * minor(0, 1) + at(0, 2) * minor(0, 2);
    const double edges = Length(matrix[0]) * Length(matrix[1]) * Length(matrix[2]);
    if (!(std::fabs(volume) > flat * edges)) return false;
    Matrix3d made{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j) made[i][j] = minor(j, i) / volume;
    if (!Finite(made[0]) || !Finite(made[1]) || !Finite(made[2])) return false;
    inverse = made;
    return true;
}

}  // namespace vntl
