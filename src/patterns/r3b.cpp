#include "patterns/r3b.hpp"

#include "base/text.hpp"
#include "patterns/neutron_tools.hpp"
#include "patterns/reader_tools.hpp"

namespace vntl {

namespace {

bool Read_Title(Line_Cursor& lines, std::string& title) {
    std::string_view line, first, second;
    if (!lines.Next(line) || !lines.Next(first) || !lines.Next(second)) return false;
    const std::string both = Kept_Text(Trim_Right(first), title_width) + ' ' + Kept_Text(Trim_Right(second), title_width);
    title = Cut(both, title_width);
    return true;
}

}  // namespace

Status Read_R3b(std::string_view text, Diffraction_Pattern_Type& p) {
    static const Edit_Format conditions("(F13.0,10X,F8.3,45X,4F9.3)");
    static const Edit_Format count("(I4)");
    p = {};
    Line_Cursor lines(text);
    if (!Read_Title(lines, p.title)) return Status::Fail(check_instr_wide);

    float dropped = 0;
    const bool told = Read_Fixed(lines, conditions, p.monitor, p.xmin, p.step, p.TSetting, dropped, p.TSample);
    if (!told || !All_Finite(p.monitor, p.xmin, p.step, p.TSetting, p.TSample)) return Status::Fail(check_instr);
    int npts = 0;
    if (!Read_Fixed(lines, count, npts)) return Status::Fail(check_instr);
    if (Status status = Allocate_Told(p, npts, text.size(), no_points_told); status.failed) return status;

    const List_Read pairs = Read_10_I2_F8(lines, p.nd, p.y);
    if (!pairs.All() || pairs.held == 0) return Status::Fail(check_instr_wide);
    std::string_view closing;
    if (!lines.Next(closing)) return Status::Fail(check_instr);

    End_At_Last_Number(p, pairs.held, npts);
    Set_Grid_End(p);
    Set_Grid(p);
    Set_Detector_Variances(p, 1.0f);
    Set_Y_Limits(p);
    return Status::Done();
}

}  // namespace vntl
