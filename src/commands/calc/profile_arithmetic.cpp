#include "commands/calc/profile_arithmetic.hpp"

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/conversions.hpp"
#include "base/text.hpp"
#include "commands/modal.hpp"
#include "commands/row_grid.hpp"
#include "commands/select_files.hpp"
#include "plot/plot.hpp"
#include "session/changes.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr int select_all = 1332, deselect_all = 1333;

Status Table_Full() { return Status::Fail(std::string(table_full_text)); }

// The new row of an operation takes its name and kind.
void Name_Row(Session& session, int row, Row_Kind kind, std::string_view title, std::string file_name) {
    session.store.Pattern(row).title = Cut(title, title_width);
    session.store.Info(row).kind = kind;
    session.store.Info(row).file_name = std::move(file_name);
}

// --- sum and average ----------------------------------------------------------------------------------------------------------------

constexpr int sum_dialog = 141, sum_heading = 1338, sum_grid = 1331;
enum Sum_Column { sum_file = 1, sum_title, sum_points, sum_check };

struct Sum_Texts {
    std::string_view heading;
    Row_Kind kind;
    std::string_view title, file_name, change;
};
constexpr Sum_Texts sum_texts{"Sum of profiles", Row_Kind::summ, "Summation of profiles ", "<summation>", "sum"};
constexpr Sum_Texts average_texts{"Average of profiles", Row_Kind::aver, "Average of profiles ", "<Average>", "average"};

void Fill_Sum(const Session& session, const Sum_Texts& texts) {
    const Profile_Store& store = session.store;
    WDialogPutString(sum_heading, texts.heading);
    Label_Row_Grid(session, sum_grid);
    Put_File_Names(session, sum_grid, sum_file);
    Put_Titles(session, sum_grid, sum_title);
    Put_Row_Texts(session, sum_grid, sum_points, [&](int row) { return std::to_string(store.Pattern(row).npts); });
    Set_Checks(session, sum_grid, sum_check, false);
    Fix_Checks(session, sum_grid, sum_check, [&](int row) { return Is_Refined_Kind(session, row); });
}

// The sum of the ticked rows becomes a new one.
Status Sum_Rows(Session& session, Sum_Mode mode, const Sum_Texts& texts, const std::vector<int>& rows) {
    if (rows.empty()) return Status::Fail("ERROR: No profile selected to make sum/average");
    Profile_Store& store = session.store;
    Row_Change change(session, std::string(texts.change) + Of_Profiles(session, rows));
    const int row = store.Append_Copy(rows.front());
    std::vector<const Diffraction_Pattern_Type*> others;
    for (const int other : std::span(rows).subspan(1)) others.push_back(&store.Pattern(other));
    if (Status status = Sum_Patterns(store.Pattern(row), others, mode); status.failed) return status;
    Name_Row(session, row, texts.kind, texts.title, std::string(texts.file_name));
    change.Keep();
    return Status::Done();
}

Status Run_Sum(Session& session, Sum_Mode mode, const Sum_Texts& texts) {
    while (true) {
        const int pressed = Run_Modal(sum_dialog);
        if (pressed == select_all || pressed == deselect_all) {
            Set_Checks(session, sum_grid, sum_check, pressed == select_all, [&](int row) { return Is_Refined_Kind(session, row); });
            continue;
        }
        if (pressed != button_ok) return Status::Cancel();
        const Status status = Sum_Rows(session, mode, texts, Checked_Rows(sum_grid, sum_check));
        if (!status.failed) return status;
        Refuse_Field(sum_grid, status.message);
    }
}

// --- difference ---------------------------------------------------------------------------------------------------------------------

constexpr int difference_dialog = 139, profile_a = 1226, profile_b = 1227;

Status Subtract(Session& session, int a, int b) {
    if (Is_Refined_Kind(session, a) || Is_Refined_Kind(session, b))
        return Status::Fail("Difference operation in PRF file is not permitted");
    Profile_Store& store = session.store;
    Row_Change change(session, "difference of two profiles");
    const int row = store.Append_Copy(a);
    if (Status status = Subtract_Pattern(store.Pattern(row), store.Pattern(b)); status.failed) return status;
    Name_Row(session, row, Row_Kind::diff, "Difference of profiles: " + store.Info(a).file_name + " - " + store.Info(b).file_name,
             "<difference>");
    change.Keep();
    return Status::Done();
}

// --- shift and multiply -------------------------------------------------------------------------------------------------------------

constexpr int multiply_dialog = 159, multiply_grid = 1527;
constexpr int set_shift = 1528, set_multiplier = 1529, shift_field = 1530, multiplier_field = 1531;
constexpr int apply = 1532, close_dialog = 1533, save = 1534, normalize = 1665, maximum_field = 1666;
enum Multiply_Column { multiply_file = 1, multiply_check, multiply_shift, multiply_factor };

void Fill_Multiply(const Session& session) {
    const auto rows = static_cast<std::size_t>(session.store.nperfiles());
    Label_Row_Grid(session, multiply_grid);
    Put_File_Names(session, multiply_grid, multiply_file);
    Set_Checks(session, multiply_grid, multiply_check, false);
    WGridPutReal(multiply_grid, multiply_shift, std::vector<float>(rows, 0));
    WGridPutReal(multiply_grid, multiply_factor, std::vector<float>(rows, 1));
    WDialogPutReal(shift_field, 0);
    WDialogPutReal(multiplier_field, 1);
    WDialogPutReal(maximum_field, 1000);
}

void Fill_Column(const Session& session, int column, int field, std::string_view name) {
    if (const auto value = Number_In_Field(field, name))
        WGridPutReal(multiply_grid, column, std::vector<float>(static_cast<std::size_t>(session.store.nperfiles()), *value));
}

// A row without a maximum above 0 has nothing to normalize.
void Fill_Normalizing(const Session& session) {
    const auto value = Number_In_Field(maximum_field, "Maximum");
    if (!value) return;
    for (int row = 1; row <= session.store.nperfiles(); ++row)
        if (const float ymax = session.store.Pattern(row).ymax; ymax > 0)
            WGridPutCellReal(multiply_grid, multiply_factor, row, *value / ymax);
}

void Save_Totals(const Session& session) {
    std::vector<Efficiency_Line> lines;
    for (int row = 1; row <= session.store.nperfiles(); ++row) {
        const PRF_Info_Add_Type& info = session.store.Info(row);
        lines.push_back({row, info.x_shift_total, 1 / info.y_mult_total});
    }
    const Status status = Write_Efficiency_File(session.config.Here(efficiency_file_name), lines);
    if (status.failed) Error_Box(status);
}

struct Change {
    int row;
    float shift, factor;
};

// What the ticked lines ask for; nothing where a cell holds no number or a value would leave the range, which has been told then.
std::optional<std::vector<Change>> Changes(const Session& session, const std::vector<int>& rows) {
    std::vector<Change> changes;
    for (const int row : rows) {
        const std::string& name = session.store.Info(row).file_name;
        for (const int column : {multiply_shift, multiply_factor})
            if (!WGridGetCellReal(multiply_grid, column, row)) {
                Refuse_Cell(multiply_grid, column, row,
                            name + ": \"" + WGridGetCellString(multiply_grid, column, row) + "\" is not a number");
                return {};
            }
        const Change change{row, *WGridGetCellReal(multiply_grid, multiply_shift, row),
                            *WGridGetCellReal(multiply_grid, multiply_factor, row)};
        const Diffraction_Pattern_Type& pattern = session.store.Pattern(row);
        if (!Can_Shift_And_Multiply(pattern, change.shift, change.factor)) {
            const bool by_shift = !Can_Shift_And_Multiply(pattern, change.shift, 1);
            Refuse_Cell(multiply_grid, by_shift ? multiply_shift : multiply_factor, row,
                        "Values of " + name + " would leave the range of numbers");
            return {};
        }
        changes.push_back(change);
    }
    return changes;
}

void Apply_Changes(Session& session, const std::vector<int>& rows) {
    const auto changes = Changes(session, rows);
    if (!changes) return;
    Row_Change kept(session, "shift and factor" + Of_Profiles(session, rows), rows, all_parts);
    for (const Change& change : *changes) {
        PRF_Info_Add_Type& info = session.store.Info(change.row);
        Shift_And_Multiply(session.store.Pattern(change.row), info, change.shift, change.factor);
        info.x_shift_total += change.shift;
        info.y_mult_total *= change.factor;
    }
    kept.Keep();
    Plot_Redraw(session);
}

Status Run_Multiply(Session& session) {
    while (true) {
        switch (const int pressed = Run_Modal(multiply_dialog)) {
            case select_all:
            case deselect_all:
                Set_Checks(session, multiply_grid, multiply_check, pressed == select_all);
                break;
            case set_shift:
                Fill_Column(session, multiply_shift, shift_field, "X-Shift");
                break;
            case set_multiplier:
                Fill_Column(session, multiply_factor, multiplier_field, "Y-Multiplier");
                break;
            case normalize:
                Fill_Normalizing(session);
                break;
            case save:
                Save_Totals(session);
                break;
            case apply: {
                const std::vector<int> rows = Checked_Rows(multiply_grid, multiply_check);
                if (rows.empty())
                    Refuse_Field(multiply_grid, "ERROR: No profile selected to multiply");
                else
                    Apply_Changes(session, rows);
                break;
            }
            default:
                return Status::Cancel();
        }
    }
}

// --- efficiency ---------------------------------------------------------------------------------------------------------------------

// x of every row still rises from its first to its last point, and nothing leaves the range of numbers.
Status Check_Correction(const Session& session, const Efficiency& efficiency) {
    for (int row = 1; row <= session.store.nperfiles(); ++row) {
        const std::vector<float>& x = session.store.Pattern(row).x;
        if (x.empty()) continue;
        const float first = x.front() + efficiency.shift.front(), last = x.back() + efficiency.shift[x.size() - 1];
        if (!std::isfinite(first) || !std::isfinite(last) || (x.size() > 1 && !(first < last)))
            return Status::Fail("The shifts would take x of " + session.store.Info(row).file_name + " out of its order");
        const std::vector<float>& y = session.store.Pattern(row).y;
        for (std::size_t i = 0; i < std::min(y.size(), efficiency.efficiency.size()); ++i)
            if (std::isfinite(y[i]) && !std::isfinite(y[i] / efficiency.efficiency[i]))
                return Status::Fail("Values of " + session.store.Info(row).file_name + " would leave the range of numbers");
    }
    return Status::Done();
}

}  // namespace

std::vector<Dialog_Resource> Arithmetic_Dialog_Resources() {
    const std::vector<Dialog_Field> ok_cancel = {{button_ok, Field_Kind::push_button, "OK"},
                                                 {button_cancel, Field_Kind::push_button, "Cancel"}};
    const std::vector<Dialog_Field> selecting = {{select_all, Field_Kind::push_button, "&Selec. All"},
                                                 {deselect_all, Field_Kind::push_button, "&Deselec. All"}};
    const auto real = [](int number, std::string label) {
        return Dialog_Field{.number = number, .kind = Field_Kind::real, .label = std::move(label), .width = 10};
    };
    return {{sum_dialog,
             "Summation/Average of profiles",
             {{{.number = sum_heading, .kind = Field_Kind::label, .heading = true}},
              {{.number = sum_grid,
                .kind = Field_Kind::grid,
                .columns = {{"File", Cell_Kind::string, {}, 24},
                            {"Title", Cell_Kind::string, {}, 32},
                            {"Points", Cell_Kind::string, {}, 8},
                            {"Selected", Cell_Kind::check_box, {}, 8}},
                .grid_rows = 1}},
              selecting,
              ok_cancel}},
            {difference_dialog,
             "Difference of profiles",
             {{{.number = profile_a, .kind = Field_Kind::menu, .label = "Profile &A", .width = 36}},
              {{.number = profile_b, .kind = Field_Kind::menu, .label = "Profile &B", .width = 36}},
              ok_cancel}},
            {multiply_dialog,
             "Multiply Y / Shift X",
             {{{.number = multiply_grid,
                .kind = Field_Kind::grid,
                .columns = {{"File", Cell_Kind::string, {}, 28},
                            {"Selected", Cell_Kind::check_box, {}, 8},
                            {"X-shift", Cell_Kind::real, {}, 12},
                            {"Y-multiplier", Cell_Kind::real, {}, 12}},
                .grid_rows = 1}},
              selecting,
              {real(shift_field, "&X-shift"), {set_shift, Field_Kind::push_button, "Set X-Shift"}},
              {real(multiplier_field, "&Y-multiplier"), {set_multiplier, Field_Kind::push_button, "Set Y-Multiplier"}},
              {real(maximum_field, "&Maximum"),
               {normalize, Field_Kind::push_button, "Set Y-Multipliers to normalize maxima to the given value"}},
              {{save, Field_Kind::push_button, "Sa&ve Shifts/Mult"},
               {apply, Field_Kind::push_button, "A&pply"},
               {close_dialog, Field_Kind::push_button, "&Close"}}}}};
}

Status Sum_Profiles(Session& session, Sum_Mode mode) {
    if (session.store.full()) return Table_Full();
    const Sum_Texts& texts = mode == Sum_Mode::sum ? sum_texts : average_texts;
    WDialogLoad(sum_dialog);
    Fill_Sum(session, texts);
    WDialogShow(sum_grid, Show_Kind::modal);
    const Status status = Run_Sum(session, mode, texts);
    WDialogUnload();
    return status;
}

Status Difference_Profiles(Session& session) {
    if (session.store.full()) return Table_Full();
    std::vector<std::string> rows;
    for (int row = 1; row <= session.store.nperfiles(); ++row)
        rows.push_back(IntegerToString(row, "(i5)") + " " + session.store.Info(row).file_name);
    WDialogLoad(difference_dialog);
    WDialogPutMenu(profile_a, rows, 1);
    WDialogPutMenu(profile_b, rows, rows.size() > 1 ? 2 : 1);
    WDialogShow(profile_a, Show_Kind::modal);
    Status status = Status::Cancel();
    while (Run_Modal(difference_dialog) == button_ok) {
        const int a = WDialogGetMenu(profile_a), b = WDialogGetMenu(profile_b);
        status = Subtract(session, a, b);
        if (!status.failed) break;
        Refuse_Field(Is_Refined_Kind(session, a) ? profile_a : profile_b, status.message);
        status = Status::Cancel();
    }
    WDialogUnload();
    return status;
}

Status Multiply_Profiles(Session& session) {
    WDialogLoad(multiply_dialog);
    Fill_Multiply(session);
    WDialogShow(multiply_grid, Show_Kind::modal);
    const Status status = Run_Multiply(session);
    WDialogUnload();
    return status;
}

Status Efficiency_Correction(Session& session, Ask&) {
    Profile_Store& store = session.store;
    int points = 0;
    for (int row = 1; row <= store.nperfiles(); ++row) points = std::max(points, static_cast<int>(store.Pattern(row).npts));
    if (points == 0) return Status::Fail("ERROR zero points in profiles!");
    const auto files = Select_Files(session.config, Select_Kind::open, "Input Efficiency File |*.eff;*.xy|", "Select Eff files to open");
    if (files.empty()) return Status::Cancel();
    Efficiency efficiency;
    if (Status status = Read_Efficiency_File(files.front(), points, efficiency); status.failed) return status;
    if (Status status = Check_Correction(session, efficiency); status.failed) return status;
    Row_Change change(session, "efficiency correction", All_Rows(session), part_x | part_y | part_sigma);
    for (int row = 1; row <= store.nperfiles(); ++row) Apply_Efficiency(store.Pattern(row), efficiency);
    change.Keep();
    return Status::Done();
}

}  // namespace vntl
