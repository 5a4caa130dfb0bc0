#include "commands/file/format_dialog.hpp"

#include <algorithm>
#include <array>

#include "base/text.hpp"
#include "commands/modal.hpp"
#include "patterns/format_table.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

namespace {

constexpr int format_dialog = 104;
constexpr int field_heading = 1001;
constexpr int field_first_format = 1002;
constexpr int field_as_recognised = 1700;  // a format of its own for each file, where they differ
constexpr int field_look = 1701, field_all_banks = 1702, field_files = 1703, field_merge = 1704;  // only where there is something to say
constexpr std::size_t most_names = 6, widest_name = 60;

std::string Names(const Format_Question& question) {
    std::string names;
    for (std::size_t i = 0; i < std::min(question.files.size(), most_names); ++i)
        names += (i == 0 ? "" : "\n") + Elide_Middle(question.files[i], widest_name);
    if (question.files.size() > most_names) names += "\nand " + std::to_string(question.files.size() - most_names) + " more";
    return names;
}

// A frame of their radio buttons. All are of one group.
Dialog_Field Formats_From_To(const char* title, int first, int last) {
    Dialog_Field frame{.kind = Field_Kind::frame, .label = title, .pages = {{}}};
    for (const Pattern_Format& format : Pattern_Formats())
        if (format.code >= first && format.code <= last)
            frame.pages[0].rows.push_back({{format.field, Field_Kind::radio, std::string(format.description), field_first_format}});
    return frame;
}

Dialog_Resource Format_Dialog_Resource(const Format_Question& question) {
    Dialog_Resource resource{format_dialog, "Format of the data file", {}};
    resource.rows.push_back({{field_heading, Field_Kind::label, "Format of data file:", 0, "", true}});
    if (question.differ) resource.rows.push_back({{field_as_recognised, Field_Kind::radio, "As recognised", field_first_format}});
    resource.rows.push_back({Formats_From_To("Programs and instruments", 1, format_code::cif),
                             Formats_From_To("Laboratories and beamlines", format_code::raw, format_code::nexus)});
    if (!question.looks_like.empty())
        resource.rows.push_back(
            {{field_look, Field_Kind::label,
              (question.files.size() > 1 ? "The files look like " : "The file looks like ") + question.looks_like + "."}});
    if (!question.files.empty()) resource.rows.push_back({{field_files, Field_Kind::label, Names(question)}});
    if (question.ranges > 1)
        resource.rows.push_back(
            {{field_merge, Field_Kind::check_box, "&Merge the " + std::to_string(question.ranges) + " ranges, in counts a second"}});
    if (question.banks > 1)
        resource.rows.push_back(
            {{field_all_banks, Field_Kind::check_box, "Open all " + std::to_string(question.banks) + " &banks as profiles"}});
    resource.rows.push_back({{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}});
    return resource;
}

const Pattern_Format& Format_With(int Pattern_Format::*item, int value) {
    for (const Pattern_Format& format : Pattern_Formats())
        if (format.*item == value) return format;
    return Pattern_Formats().front();
}

}  // namespace

std::optional<Format_Choice> Data_Format_Dialog(const Format_Question& question) {
    Register_Dialogs(std::array{Format_Dialog_Resource(question)});
    WDialogLoad(format_dialog);
    WDialogPutRadioButton(question.proposed == 0 ? field_as_recognised : Format_With(&Pattern_Format::code, question.proposed).field);
    WDialogShow(0, Show_Kind::modal);

    std::optional<Format_Choice> choice;
    if (Run_Modal(format_dialog) == button_ok) {
        const int field = WDialogGetRadioButton(field_first_format);
        const int code = field == field_as_recognised ? 0 : Format_With(&Pattern_Format::field, field).code;
        choice = Format_Choice{code, WDialogGetCheckBox(field_all_banks) == 1, WDialogGetCheckBox(field_merge) == 1};
    }
    WDialogUnload();
    return choice;
}

}  // namespace vntl
