#include "commands/profiles/shift_rows.hpp"

#include <cmath>

#include "commands/modal.hpp"
#include "plot/following_curves.hpp"
#include "session/move_rows.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr int shift_dialog = 423, normalize_dialog = 424;
enum Shift_Field { last_x = 1801, new_x, last_y, new_y };
enum Normalize_Field { average = 1811, normalization };

const std::vector<Dialog_Field>& Ok_Cancel() {
    static const std::vector<Dialog_Field> buttons = {{button_ok, Field_Kind::push_button, "OK"},
                                                      {button_cancel, Field_Kind::push_button, "Cancel"}};
    return buttons;
}

Dialog_Field Real(int number, const char* label) { return {.number = number, .kind = Field_Kind::real, .label = label, .width = 14}; }

// Many counts are read better than a power of ten.
Dialog_Field Counts(int number, const char* label) {
    Dialog_Field field = Real(number, label);
    field.format = "(f22.2)";
    return field;
}

// Runs the shown dialog until what it asks for is done, or the user leaves it.
template <class Do>
Status Run(int dialog, Do done, const Modal_Routines& routines = {}) {
    while (Run_Modal(dialog, routines) == button_ok)
        if (done()) return Status::Done();
    return Status::Cancel();
}

bool Shift_By_Fields(Session& session) {
    const auto x = Number_In_Field(new_x, "New value of X");
    if (!x) return false;
    const auto y = Number_In_Field(new_y, "New value of Y");
    if (!y) return false;
    const Row_Shift last = session.shift;
    const Status status = Shift_Rows(session, {*x, *y});
    if (status.failed) Refuse_Field(std::fabs(*x - last.x) > std::fabs(*y - last.y) ? new_x : new_y, status.message);
    return status.ok();
}

// Curves where the rows would stand, as the fields say by now.
void Show_Shift_Of_Fields(Session& session) {
    const std::optional<float> x = WDialogGetReal(new_x), y = WDialogGetReal(new_y);
    if (x && y) Repaint_With_Ghosts(session, Ghosts_Apart(session.store, *x - session.shift.x, *y - session.shift.y));
}

bool Normalize_By_Field(Session& session) {
    const auto monitor = Number_In_Field(normalization, "Normalization Monitor");
    if (!monitor) return false;
    const Status status = Normalize_Rows(session, *monitor);
    if (status.failed) Refuse_Field(normalization, status.message);
    return status.ok();
}

}  // namespace

Dialog_Resource Shift_Profiles_Dialog_Resource() {
    const auto frame = [](const char* label, int last, int next) {
        return Dialog_Field{
            .kind = Field_Kind::frame, .label = label, .pages = {{"", {{Real(last, "Last value")}, {Real(next, "New value")}}}}};
    };
    return {shift_dialog, "Shift profiles", {{frame("Shift of X", last_x, new_x), frame("Shift of Y", last_y, new_y)}, Ok_Cancel()}};
}

Dialog_Resource Normalize_Monitor_Dialog_Resource() {
    return {normalize_dialog,
            "Normalize Profiles (Same Monitor)",
            {{Counts(average, "Average Monitor:")}, {Counts(normalization, "&Normalization Monitor:")}, Ok_Cancel()}};
}

Status Shift_Profiles(Session& session) {
    if (Status status = Shift_Permitted(session); status.failed) return status;
    WDialogLoad(shift_dialog);
    for (const int field : {last_x, new_x}) WDialogPutReal(field, session.shift.x);
    for (const int field : {last_y, new_y}) WDialogPutReal(field, session.shift.y);
    for (const int field : {last_x, last_y}) WDialogFieldState(field, field_disabled);
    WDialogShow(new_x, Show_Kind::modal);
    const Status status =
        Run(shift_dialog, [&] { return Shift_By_Fields(session); }, {.changed = [&](int) { Show_Shift_Of_Fields(session); }});
    WDialogUnload();
    Plot_Repaint(session);
    return status;
}

Status Normalize_Monitor(Session& session) {
    if (Status status = Normalization_Permitted(session); status.failed) return status;
    WDialogLoad(normalize_dialog);
    for (const int field : {average, normalization}) WDialogPutReal(field, Average_Monitor(session));
    WDialogFieldState(average, field_disabled);
    WDialogShow(normalization, Show_Kind::modal);
    const Status status = Run(normalize_dialog, [&] { return Normalize_By_Field(session); });
    WDialogUnload();
    return status;
}

}  // namespace vntl
