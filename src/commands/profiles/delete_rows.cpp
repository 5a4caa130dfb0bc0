#include "commands/profiles/delete_rows.hpp"

#include "base/text.hpp"
#include "commands/modal.hpp"
#include "commands/row_grid.hpp"
#include "session/arrange_rows.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr int delete_dialog = 421;
enum Field { rows_grid = 1781, select_all, deselect_all };
enum Column { file_name = 1, marked, kind, scat_var, title };

constexpr std::size_t names_told = 500;  // characters

void Fill(const Session& session) {
    const Profile_Store& store = session.store;
    Label_Row_Grid(session, rows_grid);
    Put_File_Names(session, rows_grid, file_name);
    Put_Kinds(session, rows_grid, kind);
    Put_Row_Texts(session, rows_grid, scat_var, [&](int row) { return store.Pattern(row).scat_var; });
    Put_Titles(session, rows_grid, title);
    Check_Chosen(session, rows_grid, marked);
}

bool Confirmed(const Session& session, Ask& ask, const std::vector<int>& rows) {
    std::string names;
    for (const int row : rows) names += session.store.Info(row).file_name + '\n';
    const std::string text = "The following profiles will be delete:\n\n" + std::string(Cut(names, names_told)) + "\nAre you sure?";
    return ask.Box({Box_Buttons::yes_no, Box_Icon::exclamation, 2, text, "Warning"}) == Box_Answer::yes;
}

// The rows to delete, none where the user leaves the dialog, or presses OK with none marked.
std::vector<int> Ask_For_Rows(const Session& session, Ask& ask) {
    while (true) {
        const int pressed = Run_Modal(delete_dialog);
        if (pressed == select_all || pressed == deselect_all) {
            Set_Checks(session, rows_grid, marked, pressed == select_all);
            continue;
        }
        if (pressed != button_ok) return {};
        std::vector<int> rows = Checked_Rows(rows_grid, marked);
        if (rows.empty() || Confirmed(session, ask, rows)) return rows;
        WDialogSelect(delete_dialog);
    }
}

}  // namespace

Dialog_Resource Delete_Profiles_Dialog_Resource() {
    return {delete_dialog,
            "Delete profiles",
            {{{.number = rows_grid,
               .kind = Field_Kind::grid,
               .columns = {{"File", Cell_Kind::string, {}, 24},
                           {"Delete", Cell_Kind::check_box, {}, 7},
                           {"Kind", Cell_Kind::string, {}, 8},
                           {"Variable", Cell_Kind::string, {}, 10},
                           {"Title", Cell_Kind::string, {}, 36}},
               .grid_rows = 1}},
             {{select_all, Field_Kind::push_button, "&Select all"}, {deselect_all, Field_Kind::push_button, "&Deselect all"}},
             {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

Status Delete_Profiles(Session& session, Ask& ask) {
    WDialogLoad(delete_dialog);
    Fill(session);
    WDialogShow(rows_grid, Show_Kind::modal);
    const std::vector<int> rows = Ask_For_Rows(session, ask);
    WDialogSelect(delete_dialog);
    WDialogUnload();
    if (rows.empty()) return Status::Cancel();
    Delete_Rows(session, rows);
    return Status::Done();
}

}  // namespace vntl
