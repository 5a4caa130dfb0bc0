// Calibrations of four instruments: any bytes give one that its sizes describe, or a message, in bounded memory. The first byte chooses the
// instrument. What was read calibrates a run of its size, or is refused with a message.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "instrument/calibration.hpp"
#include "instrument/numors_to_pattern.hpp"

namespace {

using namespace vntl;

Powder_Numor_Type Run_For(const Calibration_Detector_Type& cal) {
    Powder_Numor_Type run;
    const bool r8 = cal.cal_instrument == "R8";
    const std::size_t cells = r8 ? 64 : cal.cal_effic.size(), frames = r8 ? 9 : cal.cal_instrument == "R22" ? 1 : 3;
    run.instrm = cal.cal_instrument, run.monitor = 100, run.scans = {1, 0.1f, 0};
    run.nbdata = static_cast<int>(cells);
    run.tmc_ang = Frame_Values(4, frames), run.counts = Frame_Values(cells, frames);
    for (std::size_t f = 0; f < frames; ++f) {
        run.tmc_ang.Frame(f)[frame_monitor] = 50 + static_cast<float>(f);
        run.tmc_ang.Frame(f)[frame_angle] = static_cast<float>(f);
    }
    for (float& count : run.counts.All()) count = 7;
    return run;
}

bool Is_Whole(const Calibration_Detector_Type& cal) {
    const auto detectors = static_cast<std::size_t>(cal.ndet), cells = detectors * static_cast<std::size_t>(cal.npoints_det);
    const bool r22 = cal.cal_instrument == "R22";
    if (cal.ndet < 1 || cal.npoints_det < 0 || cal.cal_pos.size() != (r22 ? cells : detectors) || cal.cal_effic.size() != cells ||
        cal.cal_active.size() != cells || cal.cal_index.size() != (r22 ? cells : 0))
        return false;
    for (std::size_t i = 0; i < cells; ++i)
        if (cal.cal_active[i] && !(cal.cal_effic[i] > 0 && std::isfinite(cal.cal_effic[i]))) return false;
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    constexpr const char* instruments[] = {"R3A", "R5B", "R8", "R22"};
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    Calibration_Detector_Type cal;
    const Status status = Read_Calibration_Text(text, "a.cal", instruments[data[0] % 4], cal);
    if (status.failed == status.message.empty() || cal.cal_effic.size() > 128 * 128 + text.size()) std::abort();
    if (status.failed) return 0;
    if (!Is_Whole(cal)) std::abort();
    Diffraction_Pattern_Type p;
    std::vector<std::string> warnings;
    const std::vector<Powder_Numor_Type> runs = {Run_For(cal)};
    const Status made = PowderNumors_To_DiffPattern(runs, {true}, p, {.cal = &cal, .threads = 1}, warnings);
    if (made.failed == made.message.empty() || p.npts > most_converted_points) std::abort();
    if (made.ok() && p.x.size() != static_cast<std::size_t>(p.npts)) std::abort();
    return 0;
}
