#include "commands/help/about.hpp"

#include "commands/modal.hpp"
#include "session/configuration.hpp"

namespace vntl {

namespace {

constexpr int about_dialog = 103;
constexpr int field_image = 2001;
constexpr int field_name = 1004;
constexpr int field_version = 1005;
constexpr int field_purpose = 1006;
constexpr int field_systems = 1007;

Dialog_Field Field(int number, Field_Kind kind) {
    Dialog_Field field;
    field.number = number;
    field.kind = kind;
    return field;
}

}  // namespace

Dialog_Resource About_Dialog_Resource() {
    Dialog_Field image = Field(field_image, Field_Kind::image);
    image.image = "vantrelo";
    Dialog_Field name = Field(field_name, Field_Kind::label);
    name.heading = true;
    Dialog_Field ok = Field(button_ok, Field_Kind::push_button);
    ok.label = "OK";
    return {about_dialog,
            "About",
            {{image, name},
             {Field(field_version, Field_Kind::label)},
             {Field(field_purpose, Field_Kind::label)},
             {Field(field_systems, Field_Kind::label)},
             {ok}}};
}

void About_Dialog(const Configuration& config) {
    WDialogLoad(about_dialog);
    WDialogPutString(field_name, config.program_name);
    WDialogPutString(field_version, config.program_version + "  " + config.program_date);
    WDialogPutString(field_purpose, config.program_line1);
    WDialogPutString(field_systems, config.program_line2);
    WDialogShow(button_ok, Show_Kind::modal);
    Run_Modal(about_dialog);
    WDialogUnload();
}

}  // namespace vntl
