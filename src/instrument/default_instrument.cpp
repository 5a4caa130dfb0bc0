// Instruments for who has no description: a Laue diffractometer with a flat image plate, and a four-circle one with a small detector.
#include <algorithm>

#include "base/text.hpp"
#include "instrument/instrument_file.hpp"
#include "instrument/instrument_text.hpp"

namespace vntl {

namespace {

Diffractometer_Type Both_Kinds(std::string_view first_motor) {
    Diffractometer_Type made;
    made.dist_samp_detector = 488;
    made.ipsd = 2;
    made.detector_type = "Flat_rect";
    const std::array<std::string_view, 4> motors = {first_motor, "Omega", "Chi", "Phi"};
    made.num_ang = static_cast<int>(motors.size());
    std::ranges::copy(motors, made.ang_names.begin());
    made.ang_limits[0] = {made.gamma_p_min, made.gamma_p_max};
    std::fill_n(made.ang_limits.begin() + 1, motors.size() - 1, std::array<float, 2>{-180, 180});
    return made;
}

Diffractometer_Type Default_Laue() {
    Diffractometer_Type made = Both_Kinds("Gamma");
    made.info = "Default Laue diffractrometer";
    made.name_inst = made.geom = "Laue";
    made.igeom = 3;
    made.horiz = 256;
    made.vert = 198;
    made.np_horiz = 2560;
    made.np_vert = 1980;
    made.agap = made.cgap = 0.1f;
    made.wave_min = 0.7f;
    made.wave_max = 5.5f;
    return made;
}

Diffractometer_Type Default_Four_Circles() {
    Diffractometer_Type made = Both_Kinds("2Theta");
    made.info = "Default 4-cercles diffractrometer";
    made.name_inst = Cut("4C-Diff High-Chi", name_inst_width);
    made.geom = "Eulerian cradle";
    made.igeom = 2;
    made.horiz = made.vert = 64;
    made.agap = made.cgap = 2;
    made.np_horiz = static_cast<int>(made.horiz / made.agap);
    made.np_vert = static_cast<int>(made.vert / made.cgap);
    return made;
}

}  // namespace

void Set_Default_Instrument(Instrument_State& state, std::string_view type, std::optional<std::array<float, 2>> wave) {
    Diffractometer_Type made = Equal_No_Case(Trim(type), "Laue") ? Default_Laue() : Default_Four_Circles();
    if (wave) {
        made.wave_min = (*wave)[0];
        made.wave_max = (*wave)[1];
    }
    state.Current_Instrm = std::move(made);
    state.Current_Instrm_Set = true;
}

}  // namespace vntl
