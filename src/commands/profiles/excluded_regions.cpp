#include "commands/profiles/excluded_regions.hpp"

#include <algorithm>

#include "commands/modal.hpp"
#include "commands/row_grid.hpp"
#include "session/changes.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr int insert_dialog = 414;
enum Field { from = 1721, to, rows_grid, select_all, deselect_all };
enum Column { file_name = 1, kind, marked };

void Insert(Session& session, Ask& ask, const std::vector<int>& rows, float lo, float hi) {
    Row_Change change(session, "excluded region" + Of_Profiles(session, rows), rows);
    bool any = false;
    for (const int row : rows) {
        const bool added = Add_Excluded_Region(session.store.Info(row), lo, hi);
        if (!added) ask.Error("Profile No " + std::to_string(row) + " has too many Excluded Regions");
        any = any || added;
    }
    if (any) change.Keep();
}

Status Run(Session& session, Ask& ask) {
    while (true) {
        const int pressed = Run_Modal(insert_dialog);
        if (pressed == select_all || pressed == deselect_all) {
            Set_Checks(session, rows_grid, marked, pressed == select_all);
            continue;
        }
        if (pressed != button_ok) return Status::Cancel();
        const auto lo = Number_In_Field(from, "from");
        const auto hi = lo ? Number_In_Field(to, "to") : std::nullopt;
        if (!lo || !hi) continue;
        const std::vector<int> rows = Checked_Rows(rows_grid, marked);
        if (!(*lo < *hi)) {
            Refuse_Field(from, "ERROR: minimal X value >= maximal X value");
            continue;
        }
        if (rows.empty()) {
            Refuse_Field(rows_grid, "ERROR: No profile selected to add excluded region");
            continue;
        }
        Insert(session, ask, rows, *lo, *hi);
        return Status::Done();
    }
}

}  // namespace

Dialog_Resource Insert_Excluded_Dialog_Resource() {
    return {
        insert_dialog,
        "Add exclude region",
        {{{.number = from, .kind = Field_Kind::real, .label = "&from", .width = 12},
          {.number = to, .kind = Field_Kind::real, .label = "&to", .width = 12}},
         {{.number = rows_grid,
           .kind = Field_Kind::grid,
           .columns = {{"File", Cell_Kind::string, {}, 26}, {"Kind", Cell_Kind::string, {}, 8}, {"Selected", Cell_Kind::check_box, {}, 8}},
           .grid_rows = 1}},
         {{select_all, Field_Kind::push_button, "&Select all"}, {deselect_all, Field_Kind::push_button, "&Deselect all"}},
         {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

Status Insert_Excluded_Region(Session& session, Ask& ask, float x1, float x2) {
    WDialogLoad(insert_dialog);
    WDialogPutReal(from, std::min(x1, x2));
    WDialogPutReal(to, std::max(x1, x2));
    Label_Row_Grid(session, rows_grid);
    Put_File_Names(session, rows_grid, file_name);
    Put_Kinds(session, rows_grid, kind);
    Set_Checks(session, rows_grid, marked, false);
    WDialogShow(from, Show_Kind::modal);
    const Status status = Run(session, ask);
    WDialogUnload();
    return status;
}

}  // namespace vntl
