#include "patterns/dmc.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

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
    return Read_10_F8(lines, trial).All();
}

// True where a later line is one of numbers, so that what could not be read stands amid the list and not behind it.
bool Numbers_Go_On(Line_Cursor lines) {
    std::array<float, 10> trial{};
    std::string_view line;
    while (lines.Next(line))
        if (Line_Cursor one(line); !Trim(line).empty() && Read_10_F8(one, trial).All()) return true;
    return false;
}

// The variances: squares of the deviations as far as they reach, counts for the rest.
Status Read_Deviations(Line_Cursor lines, Diffraction_Pattern_Type& p) {
    Set_Count_Variances(p);
    if (!Deviations_Follow(lines)) return Status::Done();
    std::vector<float> deviations(p.y.size());
    const List_Read list = Read_10_F8(lines, deviations);
    const bool amid_a_line = list.count % 10 != 0;
    if (list.filled == Filled::bad_number && (amid_a_line || Numbers_Go_On(lines))) return Status::Fail(bad_deviations);
    for (std::size_t i = 0; i < list.held; ++i) p.sigma[i] = deviations[i] * deviations[i];
    return Status::Done();
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
    if (!(npts <= most_claimed)) return Status::Fail(bad_range);
    const auto room = static_cast<std::int32_t>(std::min(npts, static_cast<double>(Most_Points(text.size()))));
    if (Status status = Allocate_Diffraction_Pattern(p, room); status.failed) return status;

    const List_Read counts = Read_10_F8(lines, p.y);
    if (counts.filled == Filled::bad_number || counts.held == 0) return Status::Fail(bad_counts);
    End_At_Last_Number(p, counts.held, npts);
    if (Status status = Read_Deviations(lines, p); status.failed) return status;
    if (p.npts_claimed > 0) Set_Grid_End(p);
    Set_Grid(p);
    Set_Y_Limits(p);
    return Status::Done();
}

}  // namespace vntl
