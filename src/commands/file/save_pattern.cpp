#include "commands/file/save_pattern.hpp"

#include <array>
#include <cmath>
#include <optional>

#include "base/os.hpp"
#include "commands/file/save_name.hpp"
#include "commands/modal.hpp"
#include "patterns/write_dat.hpp"
#include "patterns/write_xys.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr int xys_dialog = 440;
enum Field { xmin_field = 2101, xmax_field, line_frame, line_label, slope_field, at_0_field };

constexpr std::string_view too_few_points = "Number of Points to Save was Wrong!";

constexpr Save_Form dat_form = {"Export Pattern File", "Free Pattern File Format (Instrm=0) (*.dat)|*.dat|", ".dat", "Overwrite DAT file?",
                                "Unable to write Free Format Pattern File!"};
constexpr Save_Form xys_form = {"Export Pattern File", "XY Pattern File Format (*.xys)|*.xys|", ".xys", "Overwrite XY file?",
                                "Unable to write XY Pattern File!"};

// The row's own name with the extension; none where that is the file it came from, which one line end too many would replace.
std::string Proposed_Name(const Session& session, int row, const Save_Form& form) {
    const std::string& name = session.store.Info(row).file_name;
    const std::string stem = name.substr(0, name.size() - Extension_Of(name).size());
    const std::string proposed = stem + std::string(form.extension);
    const bool of_no_file = stem.empty() || stem.front() == '<';  // "<copy>"
    return of_no_file || proposed == name ? std::string() : proposed;
}

constexpr Number_Field<Xys_Choice> number_fields[] = {{xmin_field, "Xmin =", &Xys_Choice::xmin},
                                                      {xmax_field, "Xmax =", &Xys_Choice::xmax},
                                                      {slope_field, "A =", &Xys_Choice::slope},
                                                      {at_0_field, "B =", &Xys_Choice::at_0}};

std::optional<Xys_Choice> Ask_Choice(const Diffraction_Pattern_Type& pattern) {
    WDialogLoad(xys_dialog);
    WDialogPutReal(xmin_field, pattern.xmin);
    WDialogPutReal(xmax_field, pattern.xmax);
    WDialogPutReal(slope_field, 0);
    WDialogPutReal(at_0_field, 0);
    WDialogShow(xmin_field, Show_Kind::modal);
    std::optional<Xys_Choice> choice;
    while (!choice && Run_Modal(xys_dialog) == button_ok) choice = Record_In_Fields(number_fields);
    WDialogUnload();
    return choice;
}

}  // namespace

Dialog_Resource Save_Xys_Dialog_Resource() {
    const auto number = [](const Number_Field<Xys_Choice>& field, std::string format) {
        return Dialog_Field{
            .number = field.field, .kind = Field_Kind::real, .label = field.label, .width = 12, .format = std::move(format)};
    };
    return {xys_dialog,
            "Export Data as *.xys",
            {{number(number_fields[0], ""), number(number_fields[1], "")},
             {{.number = line_frame,
               .kind = Field_Kind::frame,
               .label = "Subtract a linear background",
               .pages = {{"",
                          {{{line_label, Field_Kind::label, "Backg=  A  *  X  +  B"}},
                           {number(number_fields[2], "(f10.4)"), number(number_fields[3], "(f10.4)")}}}}}},
             {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

Status Save_Dat_File(Session& session, Ask& ask) {
    const int row = session.store.First_Shown();
    const std::string file = Name_To_Save(session.config, ask, dat_form, row == 0 ? std::string() : Proposed_Name(session, row, dat_form));
    if (file.empty()) return Status::Cancel();
    if (row == 0 || session.store.Pattern(row).npts < 2) return Status::Fail(too_few_points);
    return Note_Saved(session.interface, Save_Text(dat_form, file, Dat_Text(session.store.Pattern(row))), file);
}

Status Save_Xys_File(Session& session, Ask& ask) {
    const int row = session.store.First_Shown();
    if (row == 0) return Status::Fail(too_few_points);
    const Diffraction_Pattern_Type& pattern = session.store.Pattern(row);
    const std::optional<Xys_Choice> choice = Ask_Choice(pattern);
    if (!choice) return Status::Cancel();
    const std::string file = Name_To_Save(session.config, ask, xys_form, Proposed_Name(session, row, xys_form));
    if (file.empty()) return Status::Cancel();
    return Note_Saved(session.interface, Save_Text(xys_form, file, Xys_Text(pattern, *choice, File_Part(file, session.config.sep))), file);
}

}  // namespace vntl
