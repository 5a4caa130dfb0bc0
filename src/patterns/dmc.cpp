#include "patterns/dmc.hpp"

#include <array>
#include <cmath>

#include "base/text.hpp"
#include "patterns/neutron_tools.hpp"
#include "patterns/reader_tools.hpp"

namespace vntl {

namespace {

constexpr double least_points = 20;

constexpr std::string_view bad_title = " Error in Intensity file (first line), check your instr parameter!";
constexpr std::string_view bad_second = " Error in Intensity file (second line), check your instr parameter!";
constexpr std::string_view bad_range = " Error reading 2theta_min,step,2theta_max (third line), check your instr parameter!";
constexpr std::string_view too_few = " Number of points too low! check your instr parameter!";
constexpr std::string_view bad_counts = " Error in Intensity file (intensities), check your instr parameter!";
constexpr std::string_view bad_deviations = " Error in Intensity file (sigmas), check your instr parameter!";

bool Deviations_Follow(Line_Cursor lines) {
    if (Free_Form_Reader(lines.Rest()).At_End()) return false;
    std::array<float, 10> trial{};
    return Read_10_F8(lines, trial) == Filled::all;
}

}  // namespace

Status Read_Dmc(std::string_view text, Diffraction_Pattern_Type& p) {
    p = {};
    Line_Cursor lines(text);
    std::string_view line;
    if (!lines.Next(line)) return Status::Fail(bad_title);
    p.title = Kept_Text(Trim_Right(line), title_width);
    if (!lines.Next(line)) return Status::Fail(bad_second);
    double intervals = 0;
    if (!Read_Range(lines, p, intervals)) return Status::Fail(bad_range);
    const double npts = std::trunc(intervals + 1.005);
    if (npts < least_points) return Status::Fail(too_few);
    if (Status status = Allocate_Told(p, npts, text.size(), bad_range); status.failed) return status;

    if (Read_10_F8(lines, p.y) == Filled::bad_number) return Status::Fail(bad_counts);
    if (Deviations_Follow(lines)) {
        if (Read_10_F8(lines, p.sigma) != Filled::all) return Status::Fail(bad_deviations);
        for (float& sigma : p.sigma) sigma *= sigma;
    } else {
        Set_Count_Variances(p);
    }
    Set_Grid(p);
    Set_Y_Limits(p);
    return Status::Done();
}

}  // namespace vntl
