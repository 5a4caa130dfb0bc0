#include "commands/file/format_dialog.hpp"

#include <array>

#include "commands/modal.hpp"
#include "patterns/format_table.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

namespace {

constexpr int format_dialog = 104;
constexpr int field_heading = 1001;
constexpr int field_first_format = 1002;
constexpr int field_look = 1701, field_all_banks = 1702;  // only where there is something to say

Dialog_Resource Format_Dialog_Resource(const Format_Question& question) {
    Dialog_Resource resource{format_dialog, "Format of the data file", {}};
    resource.rows.push_back({{field_heading, Field_Kind::label, "Format of data file:", 0, "", true}});
    for (const Pattern_Format& format : Pattern_Formats())
        resource.rows.push_back({{format.field, Field_Kind::radio, std::string(format.description), field_first_format}});
    if (!question.looks_like.empty())
        resource.rows.push_back({{field_look, Field_Kind::label, "The file looks like " + question.looks_like + "."}});
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
    WDialogPutRadioButton(Format_With(&Pattern_Format::code, question.proposed).field);
    WDialogShow(0, Show_Kind::modal);

    std::optional<Format_Choice> choice;
    if (Run_Modal(format_dialog) == button_ok) {
        const int field = WDialogGetRadioButton(field_first_format);
        choice = Format_Choice{Format_With(&Pattern_Format::field, field).code, WDialogGetCheckBox(field_all_banks) == 1};
    }
    WDialogUnload();
    return choice;
}

}  // namespace vntl
