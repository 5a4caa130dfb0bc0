#include "commands/file/format_dialog.hpp"

#include "commands/modal.hpp"
#include "patterns/read_pattern.hpp"

namespace vntl {

namespace {

constexpr int format_dialog = 104;
constexpr int field_heading = 1001;
constexpr int field_first_format = 1002;

const Pattern_Format* Format_With_Code(int code) {
    for (const Pattern_Format& format : Pattern_Formats())
        if (format.code == code) return &format;
    return nullptr;
}

}  // namespace

Dialog_Resource Format_Dialog_Resource() {
    Dialog_Resource resource{format_dialog, "Format of the data file", {}};
    Dialog_Field heading;
    heading.number = field_heading;
    heading.kind = Field_Kind::label;
    heading.label = "Format of data file:";
    heading.heading = true;
    resource.rows.push_back({heading});
    for (const Pattern_Format& format : Pattern_Formats()) {
        Dialog_Field button;
        button.number = format.field;
        button.kind = Field_Kind::radio;
        button.label = format.description;
        button.group = field_first_format;
        resource.rows.push_back({button});
    }
    for (const auto& [number, label] : {std::pair{button_ok, "OK"}, std::pair{button_cancel, "Cancel"}}) {
        Dialog_Field button;
        button.number = number;
        button.kind = Field_Kind::push_button;
        button.label = label;
        if (number == button_ok) resource.rows.emplace_back();
        resource.rows.back().push_back(button);
    }
    return resource;
}

std::optional<int> Data_Format_Dialog(Session& session, int proposed) {
    WDialogLoad(format_dialog);
    for (const Pattern_Format& format : Pattern_Formats())
        if (!format.built) WDialogFieldState(format.field, 0);
    const Pattern_Format* first = Format_With_Code(proposed);
    WDialogPutRadioButton(first != nullptr && first->built ? first->field : field_first_format);
    WDialogShow(0, Show_Kind::modal);

    std::optional<int> chosen;
    if (Run_Modal(session, format_dialog) == button_ok) {
        const int field = WDialogGetRadioButton(field_first_format);
        for (const Pattern_Format& format : Pattern_Formats())
            if (format.field == field) chosen = format.code;
    }
    WDialogUnload();
    return chosen;
}

}  // namespace vntl
