#include "commands/xspace/constants_dialogs.hpp"

#include <algorithm>
#include <optional>
#include <string>

#include "base/text.hpp"
#include "commands/modal.hpp"
#include "commands/wavelength_preset.hpp"
#include "toolkit/window.hpp"

namespace vntl {
namespace {

using Value = float Conversion_Constants::*;
using Shown = std::optional<float>;  // what a field or cell holds

// An entry: of the file's constant, or of what "Set all" copies to the rows.
struct Entry {
    int field;
    const char *label, *unit;
    Value value;
};

struct Constants_Dialog {
    int number;
    const char* title;
    const char* format;
    std::vector<Entry> entries;
    int grid = 0;  // of all rows, 0 none
    std::vector<Grid_Column> columns = {};
    bool presets = false;  // of wavelengths
};

constexpr int field_file = 1315, button_set_all = 1328, field_first_unit = 1901, field_told = 1991;
constexpr Value first = &Conversion_Constants::first, second = &Conversion_Constants::second;
constexpr Value column_values[] = {first, second};  // of the grid's columns behind the file name
constexpr const char *wavelength_format = "(f14.6)", *time_format = "(f16.4)";
constexpr const char *angstrom = "\u00c5", *dtt1_unit = "\u00b5s/\u00c5", *dtt2_unit = "\u00b5s/\u00c5\u00b2";

Grid_Column Constant_Column(const char* heading, const char* format) { return {heading, Cell_Kind::real, format, 14}; }

Constants_Dialog File_Dialog(Constants_Kind kind) {
    if (kind == Constants_Kind::wavelength)
        return {124, "Set lambda to...", wavelength_format, {{1314, "&Lambda", angstrom, first}}, 0, {}, true};
    return {134, "Set dtt1/dtt2 to...", time_format, {{1316, "dtt&1", dtt1_unit, first}, {1317, "dtt&2", dtt2_unit, second}}};
}

Constants_Dialog Row_Dialog(Constants_Kind kind) {
    const Grid_Column file{"File", Cell_Kind::string, "", 30};
    if (kind == Constants_Kind::wavelength)
        return {129,
                "Convert Xspace",
                wavelength_format,
                {{1327, "Set &wavelength", angstrom, first}},
                1305,
                {file, Constant_Column("Lambda 1", wavelength_format), Constant_Column("Lambda 2", wavelength_format)},
                true};
    return {135,         "Convert Xspace from TOF",
            time_format, {{1306, "dtt&1", dtt1_unit, first}, {1307, "dtt&2", dtt2_unit, second}},
            1318,        {file, Constant_Column("dtt1", time_format), Constant_Column("dtt2", time_format)}};
}

Dialog_Resource Resource(const Constants_Dialog& dialog) {
    Dialog_Resource resource{dialog.number, dialog.title, {}};
    Dialog_Field grid{dialog.grid, Field_Kind::grid}, file{field_file, Field_Kind::string, "&File"};
    grid.columns = dialog.columns;
    file.width = 36;
    resource.rows.push_back({dialog.grid != 0 ? grid : file});
    int unit = field_first_unit;
    for (const Entry& entry : dialog.entries) {
        Dialog_Field field{entry.field, Field_Kind::real, entry.label};
        field.format = dialog.format;
        resource.rows.push_back({field, {unit++, Field_Kind::label, entry.unit}});
    }
    if (dialog.grid != 0) resource.rows.back().push_back({button_set_all, Field_Kind::push_button, "&Set all"});
    if (dialog.presets) resource.rows.push_back({Preset_Field("&Preset", dialog.grid != 0)});
    if (dialog.presets) resource.rows.push_back({{field_told, Field_Kind::label}});
    resource.rows.push_back({{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}});
    return resource;
}

std::string No_Number(const std::string& place, const std::string& text) { return place + ":\n\"" + text + "\" is not a number"; }

// True when every entry holds a number; else a box names the first that does not.
bool Entries_Hold_Numbers(const Constants_Dialog& dialog) {
    for (const Entry& entry : dialog.entries) {
        if (WDialogGetReal(entry.field)) continue;
        Refuse_Field(entry.field, No_Number(Replace_All(entry.label, "&", ""), WDialogGetString(entry.field)));
        return false;
    }
    return true;
}

// Fields show fewer digits than a constant has; the one that the user left as it stands keeps them all.
void Take(float& constant, Shown before, Shown now) {
    if (now && now != before) constant = *now;
}

// --- all rows ------------------------------------------------------------------------------------------------------------------

using Columns = std::vector<std::vector<Shown>>;

Columns Read_Grid(const Constants_Dialog& dialog) { return {WGridGetReal(dialog.grid, 2), WGridGetReal(dialog.grid, 3)}; }

void Fill_Grid(const Constants_Dialog& dialog, const std::vector<Conversion_Constants>& rows) {
    WGridRows(dialog.grid, static_cast<int>(rows.size()));
    std::vector<std::string> names;
    for (const Conversion_Constants& row : rows) names.push_back(row.file_name);
    WGridPutString(dialog.grid, 1, names);
    WGridState(dialog.grid, 1, field_read_only);
    int column = 2;
    for (const Value value : column_values) {
        std::vector<float> values;
        for (const Conversion_Constants& row : rows) values.push_back(row.*value);
        WGridPutReal(dialog.grid, column++, values);
    }
}

bool Is_Told(const Conversion_Constants& row) { return !(row.first > 0) && row.told > 0; }
constexpr const char* told_note = "Proposed: what the title or the file name tells";

// At first "Set all" proposes what the first row with constants has, or is told to have.
void Fill_Entries(const Constants_Dialog& dialog, const std::vector<Conversion_Constants>& rows) {
    const auto known = std::find_if(rows.begin(), rows.end(), [](const Conversion_Constants& row) { return row.first > 0; });
    const auto told = std::find_if(rows.begin(), rows.end(), Is_Told);
    for (const Entry& entry : dialog.entries)
        WDialogPutReal(entry.field, known != rows.end() ? (*known).*entry.value : told != rows.end() ? told->told : 0);
    if (dialog.presets) Show_Preset_Of(WDialogGetReal(dialog.entries.front().field).value_or(0));
}

void Propose(const Constants_Dialog& dialog, const std::vector<Conversion_Constants>& rows) {
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (Is_Told(rows[i])) WGridPutCellReal(dialog.grid, 2, static_cast<int>(i) + 1, rows[i].told);
    if (std::any_of(rows.begin(), rows.end(), Is_Told)) WDialogPutString(field_told, told_note);
}

// A preset goes where "Set all" takes it from, and to the rows that have no wavelength, or the only one.
void Take_Preset(const Constants_Dialog& dialog, std::size_t rows, const Wavelength_Preset& preset) {
    WDialogPutReal(dialog.entries.front().field, preset.lambda1);
    const Columns cells = {WGridGetReal(dialog.grid, 2)};
    for (std::size_t i = 0; i < rows; ++i) {
        if (rows > 1 && cells[0][i].value_or(0) > 0) continue;
        WGridPutCellReal(dialog.grid, 2, static_cast<int>(i) + 1, preset.lambda1);
        WGridPutCellReal(dialog.grid, 3, static_cast<int>(i) + 1, preset.lambda2);
    }
}

// `set_second`: lambda 2 of the preset that stands in the entry.
void Set_All(const Constants_Dialog& dialog, std::size_t rows, Shown set_second) {
    if (!Entries_Hold_Numbers(dialog)) return;
    int column = 2;
    for (const Entry& entry : dialog.entries)
        WGridPutString(dialog.grid, column++, std::vector<std::string>(rows, WDialogGetString(entry.field)));
    if (set_second) WGridPutReal(dialog.grid, column, std::vector<float>(rows, *set_second));
}

bool Cells_Hold_Numbers(const Constants_Dialog& dialog, const std::vector<Conversion_Constants>& rows, const Columns& cells) {
    for (std::size_t row = 0; row < rows.size(); ++row)
        for (std::size_t column = 0; column < cells.size(); ++column) {
            if (cells[column][row]) continue;
            const int in_column = static_cast<int>(column) + 2, in_row = static_cast<int>(row) + 1;
            Refuse_Cell(dialog.grid, in_column, in_row,
                        No_Number(dialog.columns[column + 1].heading + " of " + rows[row].file_name,
                                  WGridGetCellString(dialog.grid, in_column, in_row)));
            return false;
        }
    return true;
}

// The rows with what the table holds, which are all numbers.
std::vector<Conversion_Constants> Rows_Of_Grid(std::vector<Conversion_Constants> rows, const Columns& before, const Columns& now) {
    for (std::size_t column = 0; column < now.size(); ++column)
        for (std::size_t row = 0; row < rows.size(); ++row) Take(rows[row].*column_values[column], before[column][row], now[column][row]);
    return rows;
}

Wrong_Constants Wrong_In(std::span<const Conversion_Constants> rows, const Constants_Check& check) {
    return check ? check(rows) : Wrong_Constants{};
}

void Refuse_Rows(const Constants_Dialog& dialog, const Wrong_Constants& wrong) {
    for (std::size_t i = wrong.rows.size(); i > 0; --i) WGridMarkCell(dialog.grid, 2, wrong.rows[i - 1], wrong.text);
    WMessageBox({Box_Buttons::ok, Box_Icon::information, 1, wrong.text, std::string(information_title)});
}

}  // namespace

std::vector<Dialog_Resource> Constants_Dialog_Resources() {
    std::vector<Dialog_Resource> resources;
    for (const Constants_Kind kind : {Constants_Kind::wavelength, Constants_Kind::time_of_flight})
        for (const Constants_Dialog& dialog : {File_Dialog(kind), Row_Dialog(kind)}) resources.push_back(Resource(dialog));
    return resources;
}

bool File_Constants_Dialog(Constants_Kind kind, Conversion_Constants& file, const Constants_Check& check) {
    const Constants_Dialog dialog = File_Dialog(kind);
    WDialogLoad(dialog.number);
    WDialogPutString(field_file, file.file_name);
    WDialogFieldState(field_file, field_read_only);
    std::vector<Shown> before;
    for (const Entry& entry : dialog.entries) {
        WDialogPutReal(entry.field, file.*entry.value);
        before.push_back(WDialogGetReal(entry.field));
    }
    const int wavelength = dialog.entries.front().field;
    if (Is_Told(file)) {
        WDialogPutReal(wavelength, file.told);
        WDialogPutString(field_told, told_note);
    }
    Modal_Routines routines;
    if (dialog.presets) {
        Show_Preset_Of(WDialogGetReal(wavelength).value_or(0));
        routines.changed = Minding_Preset(wavelength);
    }
    WDialogShow(wavelength, Show_Kind::modal);

    bool accepted = false;
    while (!accepted && Run_Modal(dialog.number, routines) == button_ok) {
        if (!Entries_Hold_Numbers(dialog)) continue;
        Conversion_Constants given = file;
        for (std::size_t i = 0; i < before.size(); ++i)
            Take(given.*dialog.entries[i].value, before[i], WDialogGetReal(dialog.entries[i].field));
        const Wrong_Constants wrong = Wrong_In({&given, 1}, check);
        accepted = wrong.text.empty();
        accepted ? void(file = given) : Refuse_Field(dialog.entries.front().field, wrong.text);
    }
    WDialogUnload();
    return accepted;
}

bool Row_Constants_Dialog(Constants_Kind kind, std::vector<Conversion_Constants>& rows, const Constants_Check& check) {
    const Constants_Dialog dialog = Row_Dialog(kind);
    WDialogLoad(dialog.number);
    Fill_Grid(dialog, rows);
    Fill_Entries(dialog, rows);
    const Columns before = Read_Grid(dialog);
    Propose(dialog, rows);
    Shown second_of_preset;
    Modal_Routines routines;
    if (dialog.presets)
        routines.changed = [&, choose = Minding_Preset([&](const Wavelength_Preset& preset) {
                                   Take_Preset(dialog, rows.size(), preset);
                                   second_of_preset = preset.lambda2;
                               })](int field) {
            choose(field);
            if (field != dialog.entries.front().field) return;
            second_of_preset.reset();
            Show_Preset_Of(WDialogGetReal(field).value_or(0));
        };
    WDialogShow(dialog.grid, Show_Kind::modal);

    bool accepted = false;
    for (int button = 0; !accepted && button != button_cancel;) {
        button = Run_Modal(dialog.number, routines);
        if (button == button_set_all) Set_All(dialog, rows.size(), second_of_preset);
        if (button != button_ok) continue;
        const Columns now = Read_Grid(dialog);
        if (!Cells_Hold_Numbers(dialog, rows, now)) continue;
        std::vector<Conversion_Constants> given = Rows_Of_Grid(rows, before, now);
        const Wrong_Constants wrong = Wrong_In(given, check);
        accepted = wrong.text.empty();
        accepted ? void(rows = std::move(given)) : Refuse_Rows(dialog, wrong);
    }
    WDialogUnload();
    return accepted;
}

}  // namespace vntl
