// The description of a diffractometer, and the one that is in use.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace vntl {

using Vector3 = std::array<float, 3>;
using Matrix3 = std::array<Vector3, 3>;  // rows
inline constexpr Matrix3 unit_matrix = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

inline constexpr int most_motors = 15;

// Numbers in rows, row after row.
struct Real_Table {
    int columns = 0, rows = 0;
    std::vector<float> values;

    bool operator==(const Real_Table&) const = default;
};

struct Diffractometer_Type {
    std::string info = "Current_Instrument";
    std::string name_inst;
    std::string geom = "Eulerian_4C";
    std::string BL_frame = "z-up";  // frame of Busing and Levy
    std::string dist_units = "mm", angl_units = "deg";
    std::string detector_type;
    float dist_samp_detector = 0;
    float wave = 0, wave_min = 0, wave_max = 0;  // angstroms
    float vert = 0, horiz = 0;                   // size of the detector
    int np_vert = 0, np_horiz = 0;               // pixels
    float agap = 0, cgap = 0;                    // pitch of anodes (horizontal) and of cathodes (vertical); 0 where nobody told it
    float gamma_c = 0, nu_c = 0;                 // of the detector's centre, degrees
    std::string rot_order;                       // of the tilts
    Vector3 tilt{};
    float d_min = 0.5f;
    float gamma_p_min = 0, gamma_p_max = 140, gamma_n_min = 0, gamma_n_max = 0;
    float nu_min = -15, nu_max = 15;
    float x_min = 0, x_max = 40, z_min = 0, z_max = 40;
    int igeom = 0;  // geometry: 1 four circles, 2 the same with high chi, 3 normal beam and Laue; 0 unknown
    int ipsd = 2;   // detector: 1 vertical banana, 2 flat, 3 horizontal banana
    Vector3 e1 = {1, 0, 0}, e2 = {0, 1, 0}, e3 = {0, 0, 1};
    Matrix3 UB = unit_matrix, UB_inverse = unit_matrix;
    int num_ang = 0;  // motors that turn, at most 15
    std::array<std::string, most_motors> ang_names;
    std::array<std::array<float, 2>, most_motors> ang_limits{};
    std::array<float, most_motors> ang_offsets{};
    std::array<float, most_motors> ang_velocity = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1};  // degrees a second
    std::array<std::vector<std::pair<float, float>>, most_motors> range_time;                     // degrees, seconds
    int num_disp = 0;                                                                             // motors that shift
    std::array<std::string, most_motors> disp_names;
    std::array<std::array<float, 2>, most_motors> disp_limits{};
    std::array<float, most_motors> disp_offsets{};
    Vector3 det_offsets{}, disp_centre{};
    std::string alpha_file;
    Real_Table alphas;              // efficiency of each pixel, np_horiz columns and np_vert rows; empty: all 1
    Real_Table resolution_surface;  // empty: none was given

    bool operator==(const Diffractometer_Type&) const = default;
};

// The orientation of the UB matrix that was read last.
struct Orientation_Type {
    bool set = false;
    Matrix3 UB = unit_matrix, UB_inverse = unit_matrix;
    float wave = 0;
};

struct Instrument_State {
    Diffractometer_Type Current_Instrm;
    bool Current_Instrm_Set = false;  // a file or a default has filled it
    Orientation_Type Current_Orient;
};

}  // namespace vntl
