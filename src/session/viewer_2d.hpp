// The viewer of area detectors: the runs that it has read, which of their frames or which plane of reciprocal space is in hand, and how it
// is looked at. It knows no window.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/status.hpp"
#include "instrument/frame_cuts.hpp"
#include "instrument/frame_store.hpp"
#include "instrument/pixel_geometry.hpp"
#include "instrument/reciprocal_volume.hpp"
#include "session/plot_grid.hpp"
#include "session/plot_state.hpp"

namespace vntl {

struct Saturation;

inline constexpr std::size_t viewer_status_parts = 5;  // X, Y, intensity, h k l, numor and frame
enum Side_Plot { side_none = 0, side_section = 1, side_surface = 2 };
enum Select_Kind_2D { select_rectangle = 0, select_line = 1 };

struct Viewer2D {
    Frame_Store numors;     // that "Read" has filled
    int current_numor = 0;  // its place among them, from 1; 0: none
    int current_frame = 0;  // from 1: of that run, or in reciprocal mode the plane along `view_axis`
    int nframes = 0;        // of that run
    int nx_pixels = 0, ny_pixels = 0;

    // The picture: rows of x, in the present scale, over pixels (from 1) or reciprocal lattice units.
    std::vector<float> frame_x, frame_y, frame_z;
    std::vector<float> unscaled_z;  // frame_z as it was measured
    std::string title, x_label, y_label;

    int plot_kind = 0;  // 0 the map alone, 1 with the omega scan beside it
    int side_plot = side_none;
    int select_kind = select_rectangle;
    Intensity_Scale intensity_scale = Intensity_Scale::linear;
    bool bitmap = false;  // cell by cell instead of contours
    bool recip_mode = false, projection_mode = false;
    View_Axis view_axis = View_Axis::l;

    bool ub_known = false;
    Matrix3d ub{}, ub_inverse{};
    Reciprocal_Volume volume;  // of the run in hand; empty before it is built

    bool section_known = false;                     // a line was drawn
    std::array<float, 2> section_x{}, section_y{};  // its ends, units of the picture

    std::optional<Pixel_Geometry> geometry;  // of the run in hand; none where the instrument does not tell it
    std::string no_geometry;                 // why
    std::vector<std::string> told;           // doubts about the instrument that the user knows of

    // Zone, view (in units of the picture), the grid that is drawn of the picture, the rubber shape.
    Plot_State plot;
    std::array<std::string, viewer_status_parts> status;
    std::string message;  // what the last work had to tell, beside them
    std::string hint;     // in its place, while the picture is as it is

    // What the panel lists.
    std::string directory;
    std::vector<Run_In_Directory> listed;
    std::string instrument_file;
    bool preferences_changed = false;  // from here, as far as is known

    bool Holds_Run() const { return current_numor > 0; }
    const SXTAL_Numor_Type& Run() const { return numors.Run(current_numor); }
    int Steps() const;  // frames, or planes along the axis in view; 0 without a run
};

// --- what is in hand ---------------------------------------------------------------------------------------------------------------

// The runs take the place of the former ones, and the first is in hand. Where its first frame cannot be had nothing changes.
Status Take_Runs(Viewer2D&, Frame_Store runs, const Diffractometer_Type& instrument, const Saturation&, std::vector<std::string>& warnings);

// A run, by its place from 1: its first frame. Reciprocal mode ends, the matrix stays. Nothing changes on failure.
Status Show_Run(Viewer2D&, int index, const Diffractometer_Type& instrument, const Saturation&, std::vector<std::string>& warnings);

// A frame or plane, from 1; one that is not there is the first or the last.
Status Show_Frame(Viewer2D&, int frame, const Saturation&);

// The instrument has changed: reciprocal mode ends, and the geometry of the run in hand is that of the new one.
Status Take_Instrument(Viewer2D&, const Diffractometer_Type& instrument, const Saturation&, std::vector<std::string>& warnings);

// The matrix is known from now on.
void Take_UB(Viewer2D&, const Matrix3d& ub, const Matrix3d& inverse);

// The volume that was built of the run in hand: reciprocal mode, first plane.
void Take_Volume(Viewer2D&, Reciprocal_Volume volume, const Saturation&);
// Another axis of a volume that is there: its first plane.
void Show_Along(Viewer2D&, View_Axis axis, const Saturation&);

// --- the picture -------------------------------------------------------------------------------------------------------------------

// Fills frame_z and its axes, title and labels for the present mode, and the grid of the view; the view stays where the axes do. Nothing
// changes on failure.
Status Plot_Frame(Viewer2D&, const Saturation&);

void Rescale(Viewer2D&, const Saturation&);  // the same picture, after `intensity_scale` has changed

// The grid for a window of the picture, which becomes the view; false, and nothing changes, for one of fewer than two columns or rows.
bool Zoom_To(Viewer2D&, const View& window, const Saturation&);
void Show_Whole(Viewer2D&, const Saturation&);
void Fill_Grid(Viewer2D&, const Saturation&);  // again, as when the saturation has changed

// The part of the picture in view, for a surface: "You need to increase the zone to PLOT" where it is less than 3 pixels wide or high.
Status Zone_Grid(const Viewer2D&, PlotGrid& grid);

Line_Plot Section_Of(const Viewer2D&);  // of 50 points, none without a line
Line_Plot Omega_Of(const Viewer2D&);

// --- what is told ------------------------------------------------------------------------------------------------------------------

struct Step_Buttons {
    bool back = false, forward = false;
};
Step_Buttons Frame_Buttons(const Viewer2D&);  // none of them in a projection
Step_Buttons Numor_Buttons(const Viewer2D&);

struct Viewer_Header {
    std::string header, title, angles, wavelength, scan_type, nframes, reflection;
};
Viewer_Header Header_Of(const Viewer2D&);

// h k l of a place of a frame of the run in hand; nothing without matrix or geometry.
std::optional<Vector3d> Indices_Of_Pixel(const Viewer2D&, double px, double py, int frame);

// The status texts for a place of the page; blank outside of the picture.
void Read_Out(Viewer2D&, Plot_State::Place page);

}  // namespace vntl
