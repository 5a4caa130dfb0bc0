#include "commands/row_grid.hpp"

#include <string>
#include "base/text.hpp"
#include "session/session.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

void Label_Row_Grid(const Session& session, int grid) {
    const int rows = session.store.nperfiles();
    WGridRows(grid, rows);
    for (int row = 1; row <= rows; ++row) WGridLabelRow(grid, row, std::to_string(row));
}

void Put_Row_Texts(const Session& session, int grid, int column, const std::function<std::string(int row)>& text) {
    std::vector<std::string> texts;
    for (int row = 1; row <= session.store.nperfiles(); ++row) texts.push_back(text(row));
    WGridPutString(grid, column, texts);
    WGridState(grid, column, field_read_only);
}

void Put_File_Names(const Session& session, int grid, int column) {
    Put_Row_Texts(session, grid, column, [&](int row) { return session.store.Info(row).file_name; });
}
void Put_Kinds(const Session& session, int grid, int column) {
    Put_Row_Texts(session, grid, column, [&](int row) { return std::string(Told(session.store.Info(row).kind)); });
}
void Put_Titles(const Session& session, int grid, int column) {
    Put_Row_Texts(session, grid, column, [&](int row) { return session.store.Pattern(row).title; });
}

bool Is_Refined_Kind(const Session& session, int row) { return Is_Refined(session.store.Info(row).kind); }

void Fix_Checks(const Session& session, int grid, int column, const std::function<bool(int row)>& fixed) {
    for (int row = 1; row <= session.store.nperfiles(); ++row) {
        if (!fixed(row)) continue;
        WGridPutCellCheckBox(grid, column, row, 0);
        WGridStateCell(grid, column, row, field_read_only);
    }
}

void Set_Checks(const Session& session, int grid, int column, bool on, const std::function<bool(int row)>& fixed) {
    std::vector<int> checks;
    for (int row = 1; row <= session.store.nperfiles(); ++row) checks.push_back(on && !(fixed && fixed(row)) ? 1 : 0);
    WGridPutCheckBox(grid, column, checks);
}

void Check_Chosen(const Session& session, int grid, int column) {
    std::vector<int> checks;
    for (int row = 1; row <= session.store.nperfiles(); ++row) checks.push_back(session.store.is_chosen(row) ? 1 : 0);
    WGridPutCheckBox(grid, column, checks);
}

std::vector<int> Checked_Rows(int grid, int column) {
    std::vector<int> rows;
    int row = 0;
    for (const int check : WGridGetCheckBox(grid, column)) {
        ++row;
        if (check != 0) rows.push_back(row);
    }
    return rows;
}

}  // namespace vntl
