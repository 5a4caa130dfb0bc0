#include "session/viewer_2d.hpp"

#include <algorithm>
#include <cmath>

#include "base/conversions.hpp"
#include "base/extremes.hpp"
#include "base/text.hpp"
#include "session/preferences.hpp"

namespace vntl {

namespace {

constexpr std::size_t fewest_of_a_map = 2, fewest_of_a_surface = 3;
enum Status_Part : std::size_t { part_x, part_y, part_intensity, part_indices, part_place };

struct Names_Of_Axis {
    std::string_view letter, x_label, y_label;
};
const Names_Of_Axis& Names_Of(View_Axis axis) {
    static constexpr Names_Of_Axis names[] = {
        {"H", " K-(r.l.u.)", " L-(r.l.u.)"}, {"K", " H-(r.l.u.)", " L-(r.l.u.)"}, {"L", " H-(r.l.u.)", " K-(r.l.u.)"}};
    return names[static_cast<std::size_t>(axis)];
}
const Volume_Axis& Axis_In_View(const Viewer2D& viewer) {
    const Reciprocal_Volume& volume = viewer.volume;
    return viewer.view_axis == View_Axis::h ? volume.h : viewer.view_axis == View_Axis::k ? volume.k : volume.l;
}

// As long as the number is.
std::string Number(double value, int digits) {
    constexpr double largest_in_columns = 1e15;
    if (!(std::fabs(value) < largest_in_columns)) return IRealToString(static_cast<float>(value));
    if (digits == 0) return std::to_string(std::llround(value));
    const std::string format = "(f32." + std::to_string(digits) + ')';
    return std::string(Trim(IRealToString(static_cast<float>(value), format)));
}

template <class Values>
std::string Numbers(const Values& values, int digits) {
    std::string text;
    for (const auto value : values) text += (text.empty() ? "" : " ") + Number(static_cast<double>(value), digits);
    return text;
}

// --- the picture -------------------------------------------------------------------------------------------------------------------

struct Picture {
    Volume_Picture values;
    std::string title, x_label, y_label;
};

std::vector<float> Pixel_Axis(int count) {
    std::vector<float> axis;
    for (int pixel = 1; pixel <= count; ++pixel) axis.push_back(static_cast<float>(pixel));
    return axis;
}

Status Counts_Of_Frame(Viewer2D& viewer, int run, int frame, std::vector<float>& z) {
    Count_Matrix counts;
    if (Status status = viewer.numors.Frame(run, frame, counts); status.failed) return status;
    z.assign(counts.counts.begin(), counts.counts.end());
    return Status::Done();
}

Status Sum_Of_Frames(Viewer2D& viewer, int run, std::vector<float>& z) {
    std::vector<double> sum;
    Count_Matrix counts;
    for (int frame = 1; frame <= viewer.numors.Run(run).nframes; ++frame) {
        if (Status status = viewer.numors.Frame(run, frame, counts); status.failed) return status;
        sum.resize(counts.counts.size());
        for (std::size_t i = 0; i < sum.size(); ++i) sum[i] += counts.counts[i];
    }
    z.assign(sum.begin(), sum.end());
    return Status::Done();
}

Status Picture_Of_Run(Viewer2D& viewer, int run, int frame, Picture& picture) {
    const Status status =
        viewer.projection_mode ? Sum_Of_Frames(viewer, run, picture.values.z) : Counts_Of_Frame(viewer, run, frame, picture.values.z);
    if (status.failed) return status;
    picture.values.x = Pixel_Axis(viewer.numors.nx(run));
    picture.values.y = Pixel_Axis(viewer.numors.ny(run));
    picture.title = "2D contour plot, Numor: " + std::to_string(viewer.numors.Run(run).numor) + "  Frame: " + std::to_string(frame);
    if (viewer.projection_mode) picture.title = "2D contour plot of projection for all frames";
    picture.x_label = "X-Horizontal PIXEL";
    picture.y_label = "Y-Vertical PIXEL";
    return Status::Done();
}

Picture Picture_Of_Volume(const Viewer2D& viewer) {
    const Names_Of_Axis& names = Names_Of(viewer.view_axis);
    Picture picture;
    const std::string title = "Reciprocal Space contour plot ";
    if (viewer.projection_mode) {
        picture.values = Projection(viewer.volume, viewer.view_axis);
        picture.title = title + "projection along " + std::string(names.letter) + ":";
    } else {
        picture.values = Plane(viewer.volume, viewer.view_axis, viewer.current_frame);
        const double value = Axis_In_View(viewer).Value(viewer.current_frame);
        constexpr double least_step = 1e-3;  // that four digits tell apart
        const bool fine = Axis_In_View(viewer).step < least_step;
        picture.title =
            title + "cut at q" + std::string(names.letter) + ": " + (fine ? IRealToString(static_cast<float>(value)) : Number(value, 4));
    }
    picture.x_label = names.x_label;
    picture.y_label = names.y_label;
    return picture;
}

// --- the part of it in view --------------------------------------------------------------------------------------------------------

// Where an axis, rising, comes nearest to a value.
std::size_t Nearest(const std::vector<float>& axis, float value) {
    const auto above = std::lower_bound(axis.begin(), axis.end(), value);
    if (above == axis.begin()) return 0;
    if (above == axis.end()) return axis.size() - 1;
    const auto at = static_cast<std::size_t>(above - axis.begin());
    return value - axis[at - 1] < axis[at] - value ? at - 1 : at;
}

// Indices, both included.
struct Cells {
    std::size_t x1, x2, y1, y2;
    std::size_t Columns() const { return x2 - x1 + 1; }
    std::size_t Rows() const { return y2 - y1 + 1; }
};
Cells Cells_Of(const Viewer2D& viewer, const View& view) {
    const auto [x1, x2] = std::minmax({Nearest(viewer.frame_x, view.x1), Nearest(viewer.frame_x, view.x2)});
    const auto [y1, y2] = std::minmax({Nearest(viewer.frame_y, view.y1), Nearest(viewer.frame_y, view.y2)});
    return {x1, x2, y1, y2};
}

View View_Of(const Viewer2D& viewer, const Cells& cells) {
    return {viewer.frame_x[cells.x1], viewer.frame_x[cells.x2], viewer.frame_y[cells.y1], viewer.frame_y[cells.y2]};
}

View Whole_View(const Viewer2D& viewer) { return View_Of(viewer, {0, viewer.frame_x.size() - 1, 0, viewer.frame_y.size() - 1}); }

void Show(Viewer2D& viewer, Picture picture, const Saturation& saturation) {
    const bool same_axes = picture.values.x == viewer.frame_x && picture.values.y == viewer.frame_y;
    viewer.frame_x = std::move(picture.values.x);
    viewer.frame_y = std::move(picture.values.y);
    viewer.unscaled_z = std::move(picture.values.z);
    viewer.title = std::move(picture.title);
    viewer.x_label = std::move(picture.x_label);
    viewer.y_label = std::move(picture.y_label);
    if (!same_axes) {
        viewer.plot.Show(Whole_View(viewer));
        viewer.section_known = false;
        viewer.plot.rubber = {};
    }
    Rescale(viewer, saturation);
}

// --- texts -------------------------------------------------------------------------------------------------------------------------

std::string Reflection_Text(const SXTAL_Numor_Type& run) {
    if (Equal_No_Case(Trim(run.scantype), "q-scan")) return " => Q-scan: (" + Numbers(run.hmin, 3) + ") --> (" + Numbers(run.hmax, 3) + ")";
    std::string rounded;
    for (const float index : run.hmin) rounded += (rounded.empty() ? "" : " ") + Number(static_cast<double>(index), 0);
    return " ===> hkl: (" + rounded + ")";
}

std::string Indices_Text(const std::array<std::optional<double>, 3>& indices) {
    std::string text = " Last (h,k,l)-real :";
    for (const std::optional<double>& index : indices) text += ' ' + (index ? Number(*index, 3) : "-");
    return text;
}

// h, k and l of a place of the picture; that along the axis of a projection is open.
std::array<std::optional<double>, 3> Indices_In_Volume(const Viewer2D& viewer, double x, double y) {
    std::array<std::optional<double>, 3> indices;
    const auto across = static_cast<std::size_t>(viewer.view_axis);
    indices[across == 0 ? 1 : 0] = x;
    indices[across == 2 ? 1 : 2] = y;
    if (!viewer.projection_mode) indices[across] = Axis_In_View(viewer).Value(viewer.current_frame);
    return indices;
}

// The frame that measured a place of reciprocal space; 0 where none did, or nobody can tell.
int Frame_Of(const Viewer2D& viewer, const std::array<std::optional<double>, 3>& indices) {
    if (!viewer.geometry || !indices[0] || !indices[1] || !indices[2]) return 0;
    const Vector3d z1 = viewer.ub * Vector3d{*indices[0], *indices[1], *indices[2]};
    const std::optional<Measured_At> place = Find_In_Run(z1, viewer.Run(), *viewer.geometry);
    return place ? place->frame : 0;
}

void Read_Out_Indices(Viewer2D& viewer, double x, double y) {
    std::array<std::optional<double>, 3> indices;
    int frame = viewer.projection_mode ? 0 : viewer.current_frame;
    if (viewer.recip_mode) {
        indices = Indices_In_Volume(viewer, x, y);
        frame = Frame_Of(viewer, indices);
    } else if (const auto of_pixel = frame > 0 ? Indices_Of_Pixel(viewer, x, y, frame) : std::nullopt) {
        std::copy(of_pixel->begin(), of_pixel->end(), indices.begin());
    }
    if (viewer.recip_mode || indices[0]) viewer.status[part_indices] = Indices_Text(indices);
    viewer.status[part_place] =
        " Numor= " + std::to_string(viewer.Run().numor) + " Frame= " + (frame > 0 ? std::to_string(frame) : std::string("-"));
}

}  // namespace

int Viewer2D::Steps() const {
    if (!Holds_Run()) return 0;
    return recip_mode ? Axis_In_View(*this).count : nframes;
}

// --- what is in hand ---------------------------------------------------------------------------------------------------------------

Status Take_Runs(Viewer2D& viewer, Frame_Store runs, const Diffractometer_Type& instrument, const Saturation& saturation,
                 std::vector<std::string>& warnings) {
    std::swap(viewer.numors, runs);
    Status status = Show_Run(viewer, 1, instrument, saturation, warnings);
    if (status.failed) std::swap(viewer.numors, runs);
    return status;
}

namespace {

// Runs of square detectors tell their pixels themselves.
void Make_Geometry(Viewer2D& viewer, const Diffractometer_Type& instrument, std::vector<std::string>& warnings) {
    if (viewer.nx_pixels != instrument.np_horiz || viewer.ny_pixels != instrument.np_vert)
        warnings.push_back("The frames have " + By(viewer.nx_pixels, viewer.ny_pixels) + " pixels, and the detector of the instrument " +
                           By(instrument.np_horiz, instrument.np_vert) + ": angles and h k l are right for the right instrument alone.");
    Pixel_Geometry geometry;
    const Status status = Pixel_Geometry::Make(instrument, viewer.nx_pixels, viewer.ny_pixels, geometry, warnings);
    viewer.geometry = status.ok() ? std::optional(geometry) : std::nullopt;
    viewer.no_geometry = status.message;
}

void Leave_Reciprocal_Space(Viewer2D& viewer) {
    viewer.recip_mode = false;
    viewer.volume = {};
}

}  // namespace

Status Show_Run(Viewer2D& viewer, int index, const Diffractometer_Type& instrument, const Saturation& saturation,
                std::vector<std::string>& warnings) {
    if (index < 1 || index > viewer.numors.size()) return Status::Fail("there is no run " + std::to_string(index) + " in the list");
    Picture picture;
    if (Status status = Picture_Of_Run(viewer, index, 1, picture); status.failed) return status;
    Leave_Reciprocal_Space(viewer);
    viewer.current_numor = index;
    viewer.current_frame = 1;
    viewer.nframes = viewer.Run().nframes;
    viewer.nx_pixels = viewer.numors.nx(index);
    viewer.ny_pixels = viewer.numors.ny(index);
    Make_Geometry(viewer, instrument, warnings);
    Show(viewer, std::move(picture), saturation);
    return Status::Done();
}

Status Show_Frame(Viewer2D& viewer, int frame, const Saturation& saturation) {
    const int before = viewer.current_frame;
    viewer.current_frame = std::clamp(frame, 1, std::max(1, viewer.Steps()));
    Status status = Plot_Frame(viewer, saturation);
    if (status.failed) viewer.current_frame = before;
    return status;
}

Status Take_Instrument(Viewer2D& viewer, const Diffractometer_Type& instrument, const Saturation& saturation,
                       std::vector<std::string>& warnings) {
    if (!viewer.Holds_Run()) return Status::Done();
    if (viewer.recip_mode) {
        Picture picture;
        if (Status status = Picture_Of_Run(viewer, viewer.current_numor, 1, picture); status.failed) return status;
        Leave_Reciprocal_Space(viewer);
        viewer.current_frame = 1;
        Show(viewer, std::move(picture), saturation);
    }
    Make_Geometry(viewer, instrument, warnings);
    return Status::Done();
}

void Take_UB(Viewer2D& viewer, const Matrix3d& ub, const Matrix3d& inverse) {
    viewer.ub_known = true;
    viewer.ub = ub;
    viewer.ub_inverse = inverse;
}

void Take_Volume(Viewer2D& viewer, Reciprocal_Volume volume, const Saturation& saturation) {
    viewer.volume = std::move(volume);
    viewer.recip_mode = true;
    Show_Along(viewer, View_Axis::l, saturation);
}

void Show_Along(Viewer2D& viewer, View_Axis axis, const Saturation& saturation) {
    viewer.view_axis = axis;
    viewer.current_frame = 1;
    Show(viewer, Picture_Of_Volume(viewer), saturation);
}

// --- the picture -------------------------------------------------------------------------------------------------------------------

Status Plot_Frame(Viewer2D& viewer, const Saturation& saturation) {
    if (!viewer.Holds_Run()) return Status::Done();
    Picture picture;
    if (viewer.recip_mode)
        picture = Picture_Of_Volume(viewer);
    else if (Status status = Picture_Of_Run(viewer, viewer.current_numor, viewer.current_frame, picture); status.failed)
        return status;
    Show(viewer, std::move(picture), saturation);
    return Status::Done();
}

void Rescale(Viewer2D& viewer, const Saturation& saturation) {
    viewer.frame_z = viewer.unscaled_z;
    Scale_Intensities(viewer.frame_z, viewer.intensity_scale);
    Fill_Grid(viewer, saturation);
}

bool Zoom_To(Viewer2D& viewer, const View& window, const Saturation& saturation) {
    if (viewer.frame_z.empty() || !window.Drawable()) return false;
    const Cells cells = Cells_Of(viewer, window);
    if (cells.Columns() < fewest_of_a_map || cells.Rows() < fewest_of_a_map) return false;
    viewer.plot.Show(View_Of(viewer, cells));
    Fill_Grid(viewer, saturation);
    return true;
}

void Show_Whole(Viewer2D& viewer, const Saturation& saturation) {
    if (viewer.frame_z.empty()) return;
    viewer.plot.Show(Whole_View(viewer));
    Fill_Grid(viewer, saturation);
}

void Fill_Grid(Viewer2D& viewer, const Saturation& saturation) {
    PlotGrid& grid = viewer.plot.grid;
    grid = {};
    if (viewer.frame_z.empty()) return;
    const Cells cells = Cells_Of(viewer, viewer.plot.Shown_View());
    const auto part = [](const std::vector<float>& axis, std::size_t first, std::size_t last) {
        return std::vector<float>(axis.begin() + static_cast<std::ptrdiff_t>(first), axis.begin() + static_cast<std::ptrdiff_t>(last) + 1);
    };
    grid.grid_x = part(viewer.frame_x, cells.x1, cells.x2);
    grid.grid_y = part(viewer.frame_y, cells.y1, cells.y2);
    grid.grid_y_label = viewer.y_label;
    grid.grid_z.reserve(cells.Columns() * cells.Rows());
    for (std::size_t row = cells.y1; row <= cells.y2; ++row) {
        const float* const values = viewer.frame_z.data() + row * viewer.frame_x.size();
        grid.grid_z.insert(grid.grid_z.end(), values + cells.x1, values + cells.x2 + 1);
    }
    if (saturation.saturation_on)
        for (float& z : grid.grid_z)
            if (z > saturation.saturation_value) z = saturation.saturation_value;
    if (const Extremes found = Finite_Extremes(grid.grid_z); found.Found()) grid.z_min = found.low, grid.z_max = found.high;
}

Status Zone_Grid(const Viewer2D& viewer, PlotGrid& grid) {
    const PlotGrid& zone = viewer.plot.grid;
    if (zone.grid_x.size() < fewest_of_a_surface || zone.grid_y.size() < fewest_of_a_surface)
        return Status::Fail("You need to increase the zone to PLOT");
    grid = zone;
    return Status::Done();
}

Line_Plot Section_Of(const Viewer2D& viewer) {
    if (!viewer.section_known || viewer.frame_z.empty()) return {};
    return Cross_Section({viewer.frame_x, viewer.frame_y, viewer.frame_z}, viewer.section_x[0], viewer.section_y[0], viewer.section_x[1],
                         viewer.section_y[1]);
}

Line_Plot Omega_Of(const Viewer2D& viewer) { return viewer.Holds_Run() ? Omega_Scan(viewer.Run(), viewer.intensity_scale) : Line_Plot{}; }

// --- what is told ------------------------------------------------------------------------------------------------------------------

Step_Buttons Frame_Buttons(const Viewer2D& viewer) {
    if (viewer.projection_mode) return {};
    return {viewer.current_frame > 1, viewer.current_frame < viewer.Steps()};
}

Step_Buttons Numor_Buttons(const Viewer2D& viewer) { return {viewer.current_numor > 1, viewer.current_numor < viewer.numors.size()}; }

Viewer_Header Header_Of(const Viewer2D& viewer) {
    if (!viewer.Holds_Run()) return {};
    const SXTAL_Numor_Type& run = viewer.Run();
    Frame_Setting setting{run.gamma, run.omega, run.chi, run.phi};
    if (!viewer.recip_mode && !viewer.projection_mode && Setting_Of_Frame(run, viewer.current_frame, setting).failed)
        setting = {run.gamma, run.omega, run.chi, run.phi};
    const std::array<double, 4> angles = {setting.gamma, setting.omega, setting.chi, setting.phi};
    return {std::string(Trim(run.header)),   std::string(Trim(run.title)), Numbers(angles, 2),  Number(static_cast<double>(run.wave), 4),
            std::string(Trim(run.scantype)), std::to_string(run.nframes),  Reflection_Text(run)};
}

std::optional<Vector3d> Indices_Of_Pixel(const Viewer2D& viewer, double px, double py, int frame) {
    Vector3d z1;
    if (!viewer.Holds_Run() || !viewer.ub_known || !viewer.geometry ||
        Get_z1_from_pixel(px, py, frame, viewer.Run(), *viewer.geometry, z1).failed)
        return {};
    return viewer.ub_inverse * z1;
}

void Read_Out(Viewer2D& viewer, Plot_State::Place page) {
    viewer.status = {};
    const View& units = viewer.plot.units;
    if (viewer.frame_z.empty() || !units.Drawable()) return;
    const Plot_State::Place at = viewer.plot.Data_At(page);
    if (!(at.x >= units.x1 && at.x <= units.x2 && at.y >= units.y1 && at.y <= units.y2)) return;
    const std::size_t column = Nearest(viewer.frame_x, static_cast<float>(at.x)), row = Nearest(viewer.frame_y, static_cast<float>(at.y));
    const double intensity = viewer.unscaled_z[row * viewer.frame_x.size() + column];
    const double x = viewer.recip_mode ? at.x : viewer.frame_x[column], y = viewer.recip_mode ? at.y : viewer.frame_y[row];
    viewer.status[part_x] = " X= " + Number(x, viewer.recip_mode ? 4 : 0);
    viewer.status[part_y] = " Y= " + Number(y, viewer.recip_mode ? 4 : 0);
    viewer.status[part_intensity] = " Int= " + Number(intensity, viewer.recip_mode ? 2 : 0);
    Read_Out_Indices(viewer, x, y);
}

}  // namespace vntl
