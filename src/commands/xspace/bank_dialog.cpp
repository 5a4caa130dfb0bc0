#include "commands/xspace/bank_dialog.hpp"

#include <utility>

#include "commands/modal.hpp"
#include "commands/row_grid.hpp"

namespace vntl {

namespace {

constexpr int dialog = 471;
enum Field { field_file = 4711, banks_grid, rows_grid, select_all, deselect_all };
enum Bank_Column { number = 1, radiation, constants, unused };
enum Row_Column { chosen = 1, bank, row_file, row_title };

template <class Record>
void Put_Texts(int grid, int column, const std::vector<Record>& records, std::string Record::*text) {
    std::vector<std::string> texts;
    for (const Record& record : records) texts.push_back(record.*text);
    WGridPutString(grid, column, texts);
    WGridState(grid, column, field_read_only);
}

void Fill_Banks(const Instrument_Question& question) {
    using Bank = Instrument_Question::Bank;
    WGridRows(banks_grid, static_cast<int>(question.banks.size()));
    int row = 0;
    for (const Bank& one : question.banks) WGridPutCellInteger(banks_grid, number, ++row, one.number);
    WGridState(banks_grid, number, field_read_only);
    Put_Texts(banks_grid, radiation, question.banks, &Bank::radiation);
    Put_Texts(banks_grid, constants, question.banks, &Bank::constants);
    Put_Texts(banks_grid, unused, question.banks, &Bank::unused);
}

void Choose_All(std::size_t rows, bool on) { WGridPutCheckBox(rows_grid, chosen, std::vector<int>(rows, on ? 1 : 0)); }

void Fill_Rows(const Instrument_Question& question) {
    using Row = Instrument_Question::Row;
    WGridRows(rows_grid, static_cast<int>(question.rows.size()));
    int row = 0;
    for (const Row& one : question.rows) {
        ++row;
        WGridLabelRow(rows_grid, row, std::to_string(row));
        WGridPutCellInteger(rows_grid, bank, row, one.bank);
        WGridPutCellCheckBox(rows_grid, chosen, row, one.chosen ? 1 : 0);
    }
    Put_Texts(rows_grid, row_file, question.rows, &Row::file_name);
    Put_Texts(rows_grid, row_title, question.rows, &Row::title);
}

// What the grid holds. False below a box where the bank of a chosen row is no whole number.
bool Take_Rows(Instrument_Question& question) {
    int row = 0;
    for (Instrument_Question::Row& one : question.rows) {
        one.chosen = WGridGetCellCheckBox(rows_grid, chosen, ++row) != 0;
        const std::optional<int> number_of_bank = WGridGetCellInteger(rows_grid, bank, row);
        if (number_of_bank) {
            one.bank = *number_of_bank;
        } else if (one.chosen) {
            Refuse_Cell(
                rows_grid, bank, row,
                "Bank of row " + std::to_string(row) + ":\n\"" + WGridGetCellString(rows_grid, bank, row) + "\" is not a whole number");
            return false;
        }
    }
    return true;
}

bool Is_Accepted(Instrument_Question& question, const Bank_Check& check) {
    Instrument_Question given = question;
    if (!Take_Rows(given)) return false;
    const Wrong_Bank wrong = check(given);
    if (wrong.text.empty()) {
        question = std::move(given);
        return true;
    }
    wrong.row > 0 ? Refuse_Cell(rows_grid, bank, wrong.row, wrong.text) : Refuse_Field(rows_grid, wrong.text);
    return false;
}

}  // namespace

Dialog_Resource Bank_Dialog_Resource() {
    return {dialog,
            "Constants of the rows",
            {{{.number = field_file, .kind = Field_Kind::string, .label = "&File", .width = 36}},
             {{.number = banks_grid,
               .kind = Field_Kind::grid,
               .label = "Banks of the file",
               .columns = {{"Bank", Cell_Kind::integer, {}, 6},
                           {"Radiation", Cell_Kind::string, {}, 12},
                           {"Constants", Cell_Kind::string, {}, 42},
                           {"Not used", Cell_Kind::string, {}, 30}},
               .grid_rows = 1,
               .rows_seen = 4}},
             {{.number = rows_grid,
               .kind = Field_Kind::grid,
               .label = "Rows",
               .columns = {{"Take", Cell_Kind::check_box, {}, 6},
                           {"Bank", Cell_Kind::integer, {}, 6},
                           {"File", Cell_Kind::string, {}, 30},
                           {"Title", Cell_Kind::string, {}, 42}},
               .grid_rows = 1}},
             {{select_all, Field_Kind::push_button, "&Select all"}, {deselect_all, Field_Kind::push_button, "&Deselect all"}},
             {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

bool Bank_Dialog(Instrument_Question& question, const Bank_Check& check) {
    WDialogLoad(dialog);
    WDialogPutString(field_file, question.file_name);
    WDialogFieldState(field_file, field_read_only);
    Fill_Banks(question);
    Fill_Rows(question);
    WDialogShow(rows_grid, Show_Kind::modal);

    bool accepted = false;
    for (int button = 0; !accepted && button != button_cancel;) {
        button = Run_Modal(dialog);
        if (button == select_all || button == deselect_all) Choose_All(question.rows.size(), button == select_all);
        if (button == button_ok) accepted = Is_Accepted(question, check);
    }
    WDialogUnload();
    return accepted;
}

}  // namespace vntl
