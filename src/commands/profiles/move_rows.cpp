#include "commands/profiles/move_rows.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "commands/modal.hpp"
#include "commands/row_grid.hpp"
#include "plot/following_curves.hpp"
#include "session/move_rows.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

enum Field { rows_grid = 1711, by_mouse, first_number, second_number, third_number, select_all, deselect_all, note };
enum Column { file_name = 1, kind, marked };

// The three dialogs are one but for their texts and what they do with their numbers.
struct Move_Dialog {
    int number;
    std::string_view title, manual_label;
    std::vector<std::string_view> number_labels;
    std::string_view nothing_marked;
    bool tells_of_refined;
    Status (*move)(Session&, const std::vector<int>& rows, const std::vector<float>& numbers);
    std::optional<Row_Ghost> (*line)(const std::vector<float>& numbers);  // what it makes of x and y; nothing where it refuses
};

Status Offset(Session& session, const std::vector<int>& rows, const std::vector<float>& numbers) {
    return Offset_Rows(session, rows, numbers[0], numbers[1]);
}

std::optional<Row_Ghost> Offset_Line(const std::vector<float>& numbers) { return Row_Ghost{.bx = numbers[0], .by = numbers[1]}; }

// The line that leaves the reference where it is and brings the present value to the new one.
struct Scaling {
    float a, b;
};
std::optional<Scaling> Scaling_Of(const std::vector<float>& numbers) {
    const double r = numbers[0], p = numbers[1], n = numbers[2];
    const auto a = static_cast<float>((n - r) / (p - r)), b = static_cast<float>(r * (p - n) / (p - r));
    if (!std::isfinite(a) || !std::isfinite(b) || a == 0) return {};
    return Scaling{a, b};
}

Status No_Scaling(std::string_view axis) {
    const std::string name(axis);
    return Status::Fail("The present and the new " + name + " value must differ from the " + name + " reference");
}

Status Scale_X(Session& session, const std::vector<int>& rows, const std::vector<float>& numbers) {
    const std::optional<Scaling> line = Scaling_Of(numbers);
    return line ? Scale_X_Of_Rows(session, rows, line->a, line->b) : No_Scaling("X");
}

Status Scale_Y(Session& session, const std::vector<int>& rows, const std::vector<float>& numbers) {
    const std::optional<Scaling> line = Scaling_Of(numbers);
    return line ? Scale_Y_Of_Rows(session, rows, line->a, line->b) : No_Scaling("Y");
}

std::optional<Row_Ghost> Line_Of_X(const std::vector<float>& numbers) {
    const std::optional<Scaling> line = Scaling_Of(numbers);
    return line ? std::optional(Row_Ghost{.ax = line->a, .bx = line->b}) : std::nullopt;
}

std::optional<Row_Ghost> Line_Of_Y(const std::vector<float>& numbers) {
    const std::optional<Scaling> line = Scaling_Of(numbers);
    return line ? std::optional(Row_Ghost{.ay = line->a, .by = line->b}) : std::nullopt;
}

const std::array<Move_Dialog, 3>& Dialogs() {
    static const std::array<Move_Dialog, 3> dialogs = {{{411,
                                                         "Offset/Align profiles",
                                                         "Align manually from graphic",
                                                         {"Offset X", "Offset Y"},
                                                         "No files have been selected for offset/align. Operation cancelled",
                                                         false,
                                                         Offset,
                                                         Offset_Line},
                                                        {412,
                                                         "Scaling X profiles",
                                                         "Scaling X manually from graphic",
                                                         {"X reference (fixe) :", "Present X value :", "New X value :"},
                                                         "No files have been selected for scaling X. Operation cancelled",
                                                         true,
                                                         Scale_X,
                                                         Line_Of_X},
                                                        {413,
                                                         "Scaling Y profiles",
                                                         "Scaling Y manually from graphic",
                                                         {"Y reference (fixe) :", "Present Y value :", "New Y value :"},
                                                         "No files have been selected for scaling Y. Operation cancelled",
                                                         true,
                                                         Scale_Y,
                                                         Line_Of_Y}}};
    return dialogs;
}

Dialog_Resource Resource_Of(const Move_Dialog& dialog) {
    Dialog_Resource resource{dialog.number, std::string(dialog.title), {}};
    resource.rows.push_back(
        {{.number = rows_grid,
          .kind = Field_Kind::grid,
          .label = "",
          .columns = {{"File", Cell_Kind::string, {}, 26}, {"Kind", Cell_Kind::string, {}, 8}, {"Selected", Cell_Kind::check_box, {}, 8}},
          .grid_rows = 1}});
    if (dialog.tells_of_refined) resource.rows.push_back({{note, Field_Kind::label, "PRF type profiles can't be selected"}});
    resource.rows.push_back(
        {{select_all, Field_Kind::push_button, "Select a&ll"}, {deselect_all, Field_Kind::push_button, "&Deselect all"}});
    resource.rows.push_back({{by_mouse, Field_Kind::check_box, "&" + std::string(dialog.manual_label)}});
    int field = first_number;
    for (const std::string_view label : dialog.number_labels)
        resource.rows.push_back({{.number = field++, .kind = Field_Kind::real, .label = std::string(label), .width = 14}});
    resource.rows.push_back({{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}});
    return resource;
}

void Fill(const Session& session, const Move_Dialog& dialog) {
    const auto refined = [&session](int row) { return Is_Refined_Kind(session, row); };
    Label_Row_Grid(session, rows_grid);
    Put_File_Names(session, rows_grid, file_name);
    Put_Kinds(session, rows_grid, kind);
    Check_Chosen(session, rows_grid, marked);
    Fix_Checks(session, rows_grid, marked, refined);
    WDialogPutCheckBox(by_mouse, 1);
    for (int i = 0; i < static_cast<int>(dialog.number_labels.size()); ++i) WDialogPutReal(first_number + i, 0);
}

void Grey_Numbers(const Move_Dialog& dialog) {
    const int state = WDialogGetCheckBox(by_mouse) != 0 ? field_disabled : field_enabled;
    for (int i = 0; i < static_cast<int>(dialog.number_labels.size()); ++i) WDialogFieldState(first_number + i, state);
}

// Nothing where a field holds no number, which has been told then.
std::optional<std::vector<float>> Numbers(const Move_Dialog& dialog) {
    std::vector<float> numbers;
    for (std::size_t i = 0; i < dialog.number_labels.size(); ++i) {
        const auto value = Number_In_Field(first_number + static_cast<int>(i), dialog.number_labels[i]);
        if (!value) return {};
        numbers.push_back(*value);
    }
    return numbers;
}

// Curves where the chosen rows would stand, as the fields say by now; none while they say nothing that could be done.
void Show_Ghosts_Of_Fields(Session& session, const Move_Dialog& dialog) {
    std::vector<float> numbers;
    for (std::size_t i = 0; i < dialog.number_labels.size(); ++i)
        if (const std::optional<float> number = WDialogGetReal(first_number + static_cast<int>(i))) numbers.push_back(*number);
    const bool by_numbers = WDialogGetCheckBox(by_mouse) == 0 && numbers.size() == dialog.number_labels.size();
    const std::optional<Row_Ghost> line = by_numbers ? dialog.line(numbers) : std::nullopt;
    Repaint_With_Ghosts(session, line ? Ghosts_Of(session.store, Checked_Rows(rows_grid, marked), *line) : std::vector<Row_Ghost>());
}

// The number to which a refusal is due: the larger offset; the present value where it is the reference, else the new one.
int Field_At_Fault(const std::vector<float>& numbers) {
    if (numbers.size() == 2) return std::fabs(numbers[0]) > std::fabs(numbers[1]) ? first_number : second_number;
    return numbers[1] == numbers[0] ? second_number : third_number;
}

Status Run(Session& session, const Move_Dialog& dialog, Row_Choice& choice) {
    while (true) {
        const auto changed = [&](int) {
            Grey_Numbers(dialog);
            Show_Ghosts_Of_Fields(session, dialog);
        };
        const int pressed = Run_Modal(dialog.number, {.changed = changed});
        if (pressed == select_all || pressed == deselect_all) {
            Set_Checks(session, rows_grid, marked, pressed == select_all, [&](int row) { return Is_Refined_Kind(session, row); });
            changed(rows_grid);
        } else if (pressed != button_ok) {
            return Status::Cancel();
        } else {
            choice = {WDialogGetCheckBox(by_mouse) != 0, Checked_Rows(rows_grid, marked)};
            if (choice.rows.empty()) {
                Refuse_Field(rows_grid, std::string(dialog.nothing_marked));
                continue;
            }
            if (choice.by_mouse) return Status::Done();
            const auto numbers = Numbers(dialog);
            if (!numbers) continue;
            const Status status = dialog.move(session, choice.rows, *numbers);
            if (!status.failed) return status;
            Refuse_Field(Field_At_Fault(*numbers), status.message);
        }
    }
}

Status Move_Rows(Session& session, const Move_Dialog& dialog, Row_Choice& choice) {
    WDialogLoad(dialog.number);
    Fill(session, dialog);
    Grey_Numbers(dialog);
    WDialogShow(rows_grid, Show_Kind::modal);
    const Status status = Run(session, dialog, choice);
    WDialogUnload();
    Plot_Repaint(session);
    return status;
}

}  // namespace

std::vector<Dialog_Resource> Move_Rows_Dialog_Resources() {
    std::vector<Dialog_Resource> resources;
    for (const Move_Dialog& dialog : Dialogs()) resources.push_back(Resource_Of(dialog));
    return resources;
}

Status Offset_Align_Dialog(Session& session, Row_Choice& choice) { return Move_Rows(session, Dialogs()[0], choice); }
Status Scaling_X_Dialog(Session& session, Row_Choice& choice) { return Move_Rows(session, Dialogs()[1], choice); }
Status Scaling_Y_Dialog(Session& session, Row_Choice& choice) { return Move_Rows(session, Dialogs()[2], choice); }

}  // namespace vntl
