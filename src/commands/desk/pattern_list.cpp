#include "commands/desk/pattern_list.hpp"

#include "base/text.hpp"
#include "commands/application.hpp"
#include "commands/modal.hpp"
#include "commands/plot/pointed_row.hpp"
#include "plot/plot.hpp"
#include "session/arrange_rows.hpp"
#include "session/changes.hpp"
#include "session/desk/pattern_list.hpp"

namespace vntl {

namespace {

constexpr int rename_dialog = 473;
enum Field { of_file = 4730, name_field };

void Redraw_If(Application& app, bool changed) {
    if (changed) Plot_Redraw(app.session);
}

void Tick(Application& app, const std::vector<int>& rows, bool shown) {
    if (May_Tick(app.session))
        Redraw_If(app, Tick_Rows(app.session, rows, shown));
    else
        app.session.interface.Passing_Text("Maps and graphs in space show all patterns");
}

void Move(Application& app, const WIN_MESSAGE& record) {
    Session& session = app.session;
    if (!May_Arrange(session)) return session.interface.Passing_Text("The order of the patterns is changed in a 2D graph");
    Redraw_If(app, record.rows.empty() ? Step_Chosen(session, record.value2 > 0) : Place_Rows(session, record.rows, record.value1));
}

}  // namespace

bool Is_Of_List(Message_Kind kind) { return kind >= Message_Kind::list_chosen && kind <= Message_Kind::list_width; }

void Serve_List(Application& app, const Message& message) {
    const WIN_MESSAGE& record = message.record;
    Session& session = app.session;
    switch (message.kind) {
        case Message_Kind::list_chosen:
            return Choose_Rows(session, record.rows);
        case Message_Kind::list_ticked:
            return Tick(app, record.rows, record.value1 != 0);
        case Message_Kind::list_moved:
            return Move(app, record);
        case Message_Kind::list_renamed:
            return Redraw_If(app, !record.files.empty() && Rename_Row(session, record.value1, record.files.front()));
        case Message_Kind::list_pointed:
            if (record.value1 >= 0 && record.value1 <= session.store.nperfiles()) Set_Pointed_Row(session, record.value1);
            return;
        case Message_Kind::list_width:
            session.desk.list_width = record.value1;
            return Plot_Redraw(session);
        default:
            return;
    }
}

void Toggle_List(Application& app) { Open_List(app.session, !app.session.desk.list_open); }

void Rename_Pattern(Application& app) {
    Session& session = app.session;
    const std::vector<int> chosen = session.store.Chosen_Rows();
    const int row = chosen.empty() ? 1 : chosen.front();
    WDialogLoad(rename_dialog);
    WDialogPutString(of_file, Row_Name_By_File(session.store, row));
    WDialogPutString(name_field, Row_Name(session.store, row));
    WDialogShow(name_field, Show_Kind::modal);
    const bool taken = Run_Modal(rename_dialog) == button_ok;
    const std::string name = WDialogGetString(name_field);
    WDialogUnload();
    Redraw_If(app, taken && Rename_Row(session, row, name));
}

void Delete_Chosen(Application& app) {
    Session& session = app.session;
    const std::vector<int> rows = session.store.Chosen_Rows();
    const std::string which = rows.size() == 1 ? "this pattern" : "these " + std::to_string(rows.size()) + " patterns";
    const std::string question = "\"Undo\" has no room to bring " + which + " back.\n\nDelete " + which + '?';
    if (!Can_Come_Back(session.store, rows) &&
        app.ask.Box({Box_Buttons::yes_no, Box_Icon::exclamation, 2, question, "Warning"}) != Box_Answer::yes)
        return;
    Delete_Rows(session, rows);
    Plot_ReMake(session);
}

void Show_Chosen(Application& app) { Redraw_If(app, Show_Alone(app.session, app.session.store.Chosen_Rows())); }
void Hide_Chosen(Application& app) { Redraw_If(app, Tick_Rows(app.session, app.session.store.Chosen_Rows(), false)); }
void Show_All_Patterns(Application& app) { Redraw_If(app, Tick_Rows(app.session, All_Rows(app.session), true)); }

Dialog_Resource Rename_Dialog_Resource() {
    return {rename_dialog,
            "Rename",
            {{{of_file, Field_Kind::label, ""}},
             {{.number = name_field, .kind = Field_Kind::string, .label = "&Name in the legend (blank: by its file)", .width = 40}},
             {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

}  // namespace vntl
