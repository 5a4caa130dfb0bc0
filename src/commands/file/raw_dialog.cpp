#include "commands/file/raw_dialog.hpp"

#include "commands/modal.hpp"

namespace vntl {

namespace {

constexpr int raw_dialog = 441;
enum Field { correct = 2111, as_counted };

}  // namespace

Dialog_Resource Raw_Dialog_Resource() {
    return {raw_dialog,
            "Raw Data (Efficiency Correction)",
            {{{correct, Field_Kind::radio, "&Correct for Efficiency", correct}},
             {{as_counted, Field_Kind::radio, "&DO NOT correct for Efficiency", correct}},
             {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

std::optional<bool> Efficiency_Dialog() {
    WDialogLoad(raw_dialog);
    WDialogPutRadioButton(correct);
    WDialogShow(correct, Show_Kind::modal);
    std::optional<bool> choice;
    if (Run_Modal(raw_dialog) == button_ok) choice = WDialogGetRadioButton(correct) == correct;
    WDialogUnload();
    return choice;
}

}  // namespace vntl
