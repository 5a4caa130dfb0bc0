// Dialogs of the viewer of area detectors: the orientation matrix, and the instrument that the runs come from.
#include <array>
#include <charconv>

#include "base/text.hpp"
#include "commands/modal.hpp"
#include "commands/select_files.hpp"
#include "views/viewer_2d.hpp"

namespace vntl {

namespace {

constexpr int matrix_text = 4601;
constexpr int default_radio = 4651, file_radio = 4652, file_field = 4653, browse_button = 4654;

// The shortest text that reads back the same.
std::string Text_Of(double number) {
    std::array<char, 32> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

std::string Text_Of(const Matrix3d& matrix) {
    std::string text;
    for (const Vector3d& row : matrix) text += Text_Of(row[0]) + "  " + Text_Of(row[1]) + "  " + Text_Of(row[2]) + '\n';
    return text;
}

// Nothing below a text that is no matrix, which is told.
std::optional<UB_Input> Matrix_In_Field() {
    UB_Input input;
    const Status status = Parse_UB_Matrix(WDialogGetString(matrix_text), input.ub, input.inverse);
    if (status.ok()) return input;
    Refuse_Field(matrix_text, status.message);
    return {};
}

// Whether what the fields choose could be taken: the file, or blank for the default. What is wrong is told.
bool Take_Choice(const std::function<Status(const std::string& file)>& take) {
    const bool of_file = WDialogGetRadioButton(default_radio) == file_radio;
    const std::string file(of_file ? Trim(WDialogGetString(file_field)) : std::string_view());
    Status status = of_file && file.empty() ? Status::Fail(" An instrument file should be given!") : take(file);
    WDialogSelect(current_instrument_dialog);
    if (status.failed) Refuse_Field(file_field, status.message);
    return status.ok();
}

void Browse(Application& app) {
    const std::string file = Select_Instrument_File(app);
    WDialogSelect(current_instrument_dialog);
    if (file.empty()) return;
    WDialogPutString(file_field, file);
    WDialogPutRadioButton(file_radio);
}

Dialog_Resource UB_Resource() {
    return {ub_dialog,
            "Reading UB-Matrix",
            {{{.number = matrix_text,
               .kind = Field_Kind::text,
               .label = "Busing-Levy UB-matrix (you may paste the matrix from an editor)",
               .width = 48,
               .rows_seen = 3}},
             {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

Dialog_Resource Instrument_Resource() {
    return {current_instrument_dialog,
            "Set Current Instrument",
            {{{default_radio, Field_Kind::radio, "Use &Default Instrument", default_radio}},
             {{file_radio, Field_Kind::radio, "Read &Instrument File", default_radio}},
             {{.number = file_field, .kind = Field_Kind::string, .label = "Instrument file", .width = 48, .unseen_label = true},
              {browse_button, Field_Kind::push_button, "..."}},
             {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

}  // namespace

std::optional<UB_Input> UB_Dialog(const Viewer2D& viewer) {
    WDialogLoad(ub_dialog);
    if (viewer.ub_known) WDialogPutString(matrix_text, Text_Of(viewer.ub));
    WDialogShow(matrix_text, Show_Kind::modal);
    std::optional<UB_Input> input;
    while (!input && Run_Modal(ub_dialog) == button_ok) input = Matrix_In_Field();
    WDialogUnload();
    return input;
}

bool Current_Instrument_Dialog(Application& app, const std::function<Status(const std::string& file)>& take) {
    WDialogLoad(current_instrument_dialog);
    const std::string& file = app.viewer.instrument_file;
    WDialogPutRadioButton(file.empty() ? default_radio : file_radio);
    WDialogPutString(file_field, file);
    WDialogShow(file.empty() ? default_radio : file_radio, Show_Kind::modal);
    // Whoever types a name wants the file.
    const Modal_Routines routines{.changed = [](int field) {
        if (field == file_field && !Trim(WDialogGetString(file_field)).empty()) WDialogPutRadioButton(file_radio);
    }};
    bool taken = false;
    for (int pressed = 0; !taken && pressed != button_cancel;) {
        pressed = Run_Modal(current_instrument_dialog, routines);
        if (pressed == browse_button) Browse(app);
        if (pressed == button_ok) taken = Take_Choice(take);
    }
    WDialogUnload();
    return taken;
}

std::string Select_Instrument_File(Application& app) {
    constexpr std::string_view filter = "Instrument files|*.instrm;*.geom;*.par;*.dat|All files|*|";
    const auto files = Select_Files(app.session.config, Select_Kind::open, filter, "Open instrument file");
    return files.empty() ? std::string() : files.front();
}

std::vector<Dialog_Resource> Viewer_Dialogs() { return {Viewer_Panel_Resource(), UB_Resource(), Instrument_Resource()}; }

}  // namespace vntl
