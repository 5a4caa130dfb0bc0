#include "commands/fit/fit_dialogs.hpp"

#include <algorithm>

#include "commands/application.hpp"
#include "commands/fit/starting_values.hpp"
#include "commands/modal.hpp"
#include "commands/wavelength_preset.hpp"
#include "fit/irf_file.hpp"
#include "session/fit.hpp"
#include "session/told_wavelength.hpp"

namespace vntl {

namespace {

constexpr int cw_dialog = 170, tof_dialog = 178;
enum Output_Field { no_output = 1621, irf_output, ipc_output };
constexpr int save_calculated = 1737, plot_individual = 1738;
constexpr int load_irf = 1050, cw_irf_name = 1632, tof_irf_name = 1035;
constexpr int nullify_shifts = 1726;

// Wide enough for every number, so that none is shown as stars.
constexpr const char *decimals_3 = "(f44.3)", *decimals_4 = "(f45.4)", *decimals_5 = "(f46.5)", *decimals_6 = "(f47.6)",
                     *digits_6 = "(g14.6)";

// A button that changes the flags of whole columns.
struct Flag_Button {
    int number;
    const char* label;
    int grid;
    std::vector<int> columns;
    Flag_Change change;
};

std::vector<Flag_Button> Flag_Buttons(Fit_Kind kind) {
    const Fit_Fields fields = Fields_Of(kind);
    const int background = fields.background, peaks = fields.peaks;
    using enum Flag_Change;
    if (kind == Fit_Kind::constant_wavelength)
        return {{1718, "Refine background", background, {node_flags}, set},
                {1719, "Fix background", background, {node_flags}, clear},
                {1727, "Refine positions", peaks, {Flag_Column(0)}, set},
                {1728, "Fix positions", peaks, {Flag_Column(0)}, clear},
                {1729, "Refine Shift-FWHM", peaks, {Flag_Column(2)}, set},
                {1730, "Fix Shift-FWHM", peaks, {Flag_Column(2)}, clear},
                {1731, "Refine Shift-ETA", peaks, {Flag_Column(3)}, set},
                {1732, "Fix Shift-ETA", peaks, {Flag_Column(3)}, clear},
                {1733, "Refine/fix all shifts", peaks, {Flag_Column(2), Flag_Column(3)}, toggle}};
    std::vector<int> shifts, all;
    for (int value = 0; value < 6; ++value) {
        all.push_back(Flag_Column(value));
        if (value >= first_shift) shifts.push_back(Flag_Column(value));
    }
    return {{1718, "Refine background", background, {node_flags}, set}, {1719, "Fix background", background, {node_flags}, clear},
            {1723, "Refine positions", peaks, {Flag_Column(0)}, set},   {1724, "Fix positions", peaks, {Flag_Column(0)}, clear},
            {1720, "Refine Shift-Sigma", peaks, {Flag_Column(2)}, set}, {1721, "Fix Shift-Sigma", peaks, {Flag_Column(2)}, clear},
            {1722, "Refine/fix all shifts", peaks, shifts, toggle},     {1725, "Refine/fix all parameters", peaks, all, toggle}};
}

// --- resources -----------------------------------------------------------------------------------------------------------------

using Row = std::vector<Dialog_Field>;
using Columns = std::vector<Grid_Column>;

Grid_Column Number(const char* heading, const char* format, int width) { return {heading, Cell_Kind::real, format, width}; }
Grid_Column Flag(const char* heading = "flag") { return {heading, Cell_Kind::check_box, "", 4}; }

Dialog_Field Grid(int number, Columns columns, int rows_seen) {
    return {.number = number, .kind = Field_Kind::grid, .columns = std::move(columns), .rows_seen = rows_seen};
}

// A table whose rows are the same in every fit.
Dialog_Field Fixed_Grid(int number, Columns columns, int rows) {
    Dialog_Field grid = Grid(number, std::move(columns), rows);
    grid.grid_rows = rows;
    return grid;
}

Dialog_Field Frame(const char* label, std::vector<Row> rows) {
    return {.kind = Field_Kind::frame, .label = label, .pages = {{"", std::move(rows)}}};
}

Row Buttons(Fit_Kind kind, int grid) {
    Row row;
    for (const Flag_Button& button : Flag_Buttons(kind))
        if (button.grid == grid) row.push_back({button.number, Field_Kind::push_button, button.label});
    return row;
}

Dialog_Field Background_Frame(Fit_Kind kind) {
    const int grid = Fields_Of(kind).background;
    return Frame("Background",
                 {{Grid(grid, {Number("position", decimals_4, 11), Number("value", decimals_4, 12), Flag()}, 5)}, Buttons(kind, grid)});
}

Dialog_Field Irf_Name(int number) { return {.number = number, .kind = Field_Kind::string, .width = 18}; }
Dialog_Field Irf_Button() { return {.number = load_irf, .kind = Field_Kind::push_button, .label = "Load &IRF file"}; }

Row Option_Row() {
    return {{plot_individual, Field_Kind::check_box, "&Plot Individual Peaks"},
            {save_calculated, Field_Kind::check_box, "&Save Calculated Pattern"}};
}

Dialog_Field Cycles(Fit_Kind kind) {
    return {.number = Fields_Of(kind).cycles, .kind = Field_Kind::integer, .label = "&Cycles", .lo = least_cycles, .hi = most_cycles};
}

Dialog_Resource Resource(int number, const char* model, Fit_Kind kind, Row frames, Columns columns, std::vector<Row> last) {
    const int peaks = Fields_Of(kind).peaks;
    Row peak_buttons = Buttons(kind, peaks);
    peak_buttons.push_back({nullify_shifts, Field_Kind::push_button, "&Nullify all Shifts"});
    Dialog_Resource resource{number, std::string("Starting parameters for ") + model + " data profile fitting procedure", {}};
    resource.rows = {std::move(frames), {Grid(peaks, std::move(columns), 7)}, std::move(peak_buttons)};
    for (Row& row : last) resource.rows.push_back(std::move(row));
    resource.rows.push_back(
        {{button_ok, Field_Kind::push_button, "OK/Start Refinement"}, {button_cancel, Field_Kind::push_button, "Cancel"}});
    return resource;
}

Dialog_Resource Constant_Wavelength_Resource() {
    const Fit_Kind kind = Fit_Kind::constant_wavelength;
    const Fit_Fields fields = Fields_Of(kind);
    const auto radio = [](int number, const char* label) {
        return Dialog_Field{.number = number, .kind = Field_Kind::radio, .label = label, .group = no_output};
    };
    const Row frames = {
        Background_Frame(kind), Frame("Profile", {{Fixed_Grid(fields.profile, {Number("value", decimals_6, 13), Flag()}, 6)}}),
        Frame(
            "Instrument",
            {{Fixed_Grid(
                 fields.wavelengths,
                 {Number("Lambda1", decimals_6, 10), Number("Lambda2", decimals_6, 10), Number("I (Ka2/Ka1)", decimals_5, 10), Flag()}, 1)},
             {Preset_Field("Pr&eset", true)},
             {Fixed_Grid(fields.asymmetry, {Number("S_L", decimals_5, 10), Flag(), Number("D_L", decimals_5, 10), Flag()}, 1)},
             {Irf_Name(cw_irf_name)},
             {Irf_Button()}})};
    const Columns columns = {Flag("active"), Number("position", decimals_5, 12),   Flag(), Number("intensity", decimals_3, 16),
                             Flag(),         Number("Shift-FWHM", decimals_6, 12), Flag(), Number("Shift-Eta", decimals_6, 12),
                             Flag()};
    return Resource(
        cw_dialog, "CWL", kind, frames, columns,
        {{Cycles(kind),
          Frame("Output", {{radio(no_output, "N&one"), radio(irf_output, "Create .I&RF File"), radio(ipc_output, "Create .IPC File")}}),
          Frame("Options", {Option_Row()})}});
}

Dialog_Resource Time_Of_Flight_Resource() {
    const Fit_Kind kind = Fit_Kind::time_of_flight;
    const Fit_Fields fields = Fields_Of(kind);
    const Row frames = {
        Background_Frame(kind), Frame("Profile", {{Fixed_Grid(fields.profile, {Number("value", digits_6, 13), Flag()}, 6)}}),
        Frame("Instrument", {{{.number = fields.d2tof, .kind = Field_Kind::real, .label = "&d to TOF Coeff:", .format = decimals_4}},
                             {Irf_Name(tof_irf_name)},
                             {Irf_Button()}})};
    const Columns columns = {Flag("active"), Number("position", decimals_4, 12),    Flag(), Number("intensity", decimals_3, 15),
                             Flag(),         Number("Shift-sigma", decimals_4, 12), Flag(), Number("Shift-alpha", digits_6, 12),
                             Flag(),         Number("Shift-beta", digits_6, 12),    Flag(), Number("Shift-Eta", decimals_6, 10),
                             Flag()};
    return Resource(tof_dialog, "TOF", kind, frames, columns, {{Cycles(kind), Frame("Options", {Option_Row()})}});
}

// --- acting --------------------------------------------------------------------------------------------------------------------

void Label_Profile(Fit_Kind kind) {
    const std::vector<const char*> labels = kind == Fit_Kind::constant_wavelength
                                                ? std::vector{"U", "V", "W", "Z", "Eta", "X"}
                                                : std::vector{"Global-Alpha", "Global-Beta", "Sig-2", "Sig-1", "Sig-0", "Eta"};
    const Fit_Fields fields = Fields_Of(kind);
    int row = 0;
    for (const char* label : labels) WGridLabelRow(fields.profile, ++row, label);
    for (const int grid : {fields.wavelengths, fields.asymmetry}) WGridLabelRow(grid, 1, "");
}

// The only line of a single one is both, as in searches of single peaks.
void Put_Preset(const Wavelength_Preset& preset) {
    const int grid = Fields_Of(Fit_Kind::constant_wavelength).wavelengths;
    const bool doublet = preset.lambda2 > 0;
    WGridPutCellReal(grid, 1, 1, preset.lambda1);
    WGridPutCellReal(grid, 2, 1, doublet ? preset.lambda2 : preset.lambda1);
    WGridPutCellReal(grid, 3, 1, doublet ? preset.ratio : 1);
}

void Show_Choices(const Fit_State& fit) {
    WDialogPutRadioButton(no_output);
    WDialogFieldState(ipc_output, field_disabled);  // no fit writes one
    WDialogPutCheckBox(plot_individual, fit.plot_individual ? 1 : 0);
    WDialogPutCheckBox(save_calculated, fit.save_calculated ? 1 : 0);
}

// A box that is emptied leaves an earlier tick as it is.
void Take_Choices(Fit_Kind kind, Fit_State& fit) {
    if (kind == Fit_Kind::constant_wavelength)
        fit.output = WDialogGetRadioButton(no_output) == irf_output ? Fit_Output::irf : Fit_Output::none;
    fit.plot_individual = fit.plot_individual || WDialogGetCheckBox(plot_individual) != 0;
    fit.save_calculated = fit.save_calculated || WDialogGetCheckBox(save_calculated) != 0;
}

void Load_Irf(Application& app, int dialog, int name_field, Starting_Values& values) {
    const std::vector<std::string> chosen = app.ask.Select_Files("Vantrelo: TOF Fitting Procedure", "Instrumental Resolution Files|*.irf|");
    WDialogSelect(dialog);
    WDialogPutString(name_field, chosen.empty() ? std::string() : chosen.front());
    if (chosen.empty()) return;
    Irf_File irf;
    if (const Status status = Read_Irf_File(chosen.front(), irf); status.failed)
        app.ask.Box({Box_Buttons::ok, Box_Icon::information, 1, status.message, std::string(information_title), status.of_file});
    else
        values.Take_Irf(irf);
}

}  // namespace

std::vector<Dialog_Resource> Fit_Dialog_Resources() { return {Constant_Wavelength_Resource(), Time_Of_Flight_Resource()}; }

Status Edit_Starting_Values(Application& app, Fit_Kind kind) {
    Calculation_Lists& lists = app.session.lists;
    const bool angles = kind == Fit_Kind::constant_wavelength;
    const int dialog = angles ? cw_dialog : tof_dialog, irf_name = angles ? cw_irf_name : tof_irf_name;
    const std::vector<Flag_Button> flag_buttons = Flag_Buttons(kind);
    Starting_Values values(kind, lists.fit, lists.background);
    Heights_To_Areas(values.state);
    if (angles && !(values.state.lambda1 > 0) && app.session.store.nperfiles() > 0)
        values.state.lambda1 = values.state.lambda2 =
            Told_Wavelength(app.session.store.Pattern(1).title, app.session.store.Info(1).file_name);

    WDialogLoad(dialog);
    Label_Profile(kind);
    values.Fill();
    Show_Choices(values.state);
    WDialogFieldState(irf_name, field_read_only);
    WDialogShow(Fields_Of(kind).cycles, Show_Kind::modal);
    Status status = Status::Cancel();
    for (int button = 0; status.failed && button != button_cancel;) {
        button = Run_Modal(dialog, {.changed = Minding_Preset(Put_Preset)});
        const auto flags = std::ranges::find(flag_buttons, button, &Flag_Button::number);
        if (flags != flag_buttons.end())
            values.Change_Flags(flags->grid, flags->columns, flags->change);
        else if (button == nullify_shifts)
            values.Nullify_Shifts();
        else if (button == load_irf)
            Load_Irf(app, dialog, irf_name, values);
        else if (button == button_ok && values.Read())
            status = Status::Done();
    }
    if (status.ok()) {
        Take_Choices(kind, values.state);
        lists.fit = std::move(values.state);
        lists.background = std::move(values.nodes);
    }
    WDialogUnload();
    return status;
}

}  // namespace vntl
