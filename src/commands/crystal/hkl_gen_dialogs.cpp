#include "commands/crystal/hkl_gen_dialogs.hpp"

#include <algorithm>
#include <array>

#include "base/text.hpp"
#include "commands/modal.hpp"
#include "commands/wavelength_preset.hpp"
#include "session/changes.hpp"
#include "session/session.hpp"
#include "session/told_wavelength.hpp"

namespace vntl {

namespace {

enum Group_Field {
    field_symbol = 1431,
    field_symbol_hint,
    group_frame,
    radio_two_theta,
    radio_tof,
    field_wavelength,
    field_dtt1 = 1439,
    field_dtt2,
    first_constant_unit = 1920
};
enum Reflections_Field { reflections_grid = 1445, button_clear = 1446 };
enum Reflections_Column { column_hkl = 1, column_multiplicity, column_d, column_x };

constexpr const char* names[cell_parameters] = {"a", "b", "c", "alpha", "beta", "gamma"};
constexpr const char *angstrom = "\u00c5", *degrees = "\u00b0", *dtt1_unit = "\u00b5s/\u00c5", *dtt2_unit = "\u00b5s/\u00c5\u00b2";
constexpr int slider_end = 100, slider_width = 40;  // characters: a pixel for each place

// --- resources ---------------------------------------------------------------------------------------------------------------------

Dialog_Resource Group_Dialog_Resource() {
    const auto constant = [](int number, const char* label) {
        return Dialog_Field{.number = number, .kind = Field_Kind::real, .label = label, .width = 14};
    };
    const auto unit = [](int place, const char* text) { return Dialog_Field{first_constant_unit + place, Field_Kind::label, text}; };
    const auto radio = [](int number, const char* label) {
        return Dialog_Field{.number = number, .kind = Field_Kind::radio, .label = label, .group = radio_two_theta};
    };
    const Dialog_Page page{
        .rows = {{radio(radio_two_theta, "&2theta"), constant(field_wavelength, "&Wavelength"), unit(0, angstrom), Preset_Field()},
                 {radio(radio_tof, "&TOF"), constant(field_dtt1, "dtt&1"), unit(1, dtt1_unit)},
                 {{first_constant_unit + 3, Field_Kind::label}, constant(field_dtt2, "&dtt2"), unit(2, dtt2_unit)}}};
    return {group_dialog,
            "HKL Gen",
            {{{.number = field_symbol, .kind = Field_Kind::string, .label = "&Space group", .width = 30}},
             {{field_symbol_hint, Field_Kind::label, "A Hermann-Mauguin or Hall symbol, or a number: P b m n, 227, 227:1, -P 2yn"}},
             {{.number = group_frame, .kind = Field_Kind::frame, .label = "X space", .pages = {page}}},
             {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

std::vector<Dialog_Field> Row_Of_Parameter(std::size_t parameter) {
    const auto number = [parameter](int first) { return first + static_cast<int>(parameter); };
    const std::string name = names[parameter];
    return {{.number = number(first_value), .kind = Field_Kind::real, .label = name, .width = 12},
            {number(first_unit), Field_Kind::label, parameter < cell_alpha ? angstrom : degrees},
            {number(first_low_end), Field_Kind::label, "-50%"},
            {.number = number(first_slider),
             .kind = Field_Kind::trackbar,
             .label = "Vary " + name,
             .width = slider_width,
             .lo = -slider_end,
             .hi = slider_end,
             .unseen_label = true},
            {number(first_high_end), Field_Kind::label, "+50%"},
            {number(first_fine), Field_Kind::check_box, "Fine " + name}};
}

Dialog_Resource Cell_Dialog_Resource() {
    Dialog_Resource resource{cell_dialog, "HKL Gen", {{{field_group, Field_Kind::label}}}};
    for (std::size_t i = 0; i < cell_parameters; ++i) resource.rows.push_back(Row_Of_Parameter(i));
    resource.rows.push_back({{field_told, Field_Kind::label}});
    resource.rows.push_back({{button_start, Field_Kind::push_button, "&Start HKL Gen"},
                             {button_stop, Field_Kind::push_button, "S&top HKL Gen"},
                             {button_change, Field_Kind::push_button, "C&hange"},
                             {button_reflections, Field_Kind::push_button, "&Reflections..."},
                             {button_cancel, Field_Kind::push_button, "Close"}});
    return resource;
}

Dialog_Resource Reflections_Dialog_Resource() {
    return {reflections_dialog,
            "Reflections under the pointer",
            {{{.number = reflections_grid,
               .kind = Field_Kind::grid,
               .columns = {{"h k l", Cell_Kind::string, {}, 14},
                           {"Multiplicity", Cell_Kind::integer, {}, 12},
                           {std::string("d (") + angstrom + ')', Cell_Kind::real, "(f12.5)", 12},
                           {"x", Cell_Kind::real, "(f12.4)", 14}}}},
             {{button_clear, Field_Kind::push_button, "C&lear"}, {button_cancel, Field_Kind::push_button, "Close"}}}};
}

// --- symbol and constants ----------------------------------------------------------------------------------------------------------

// The scale that the constants belong to: the present one, or that of the file.
X_Space Origin(const Session& session) {
    const X_Space present = session.plot.xspace;
    if (present == X_Space::two_theta || present == X_Space::tof) return present;
    const std::string& scat_var = session.store.Pattern(1).scat_var;
    return Contains(scat_var, Told(X_Space::two_theta)) ? X_Space::two_theta
           : Contains(scat_var, Told(X_Space::tof))     ? X_Space::tof
                                                        : X_Space::none;
}

struct Constant_Field {
    X_Space space;
    int field;
    const char* name;
    std::size_t place;  // in conv
};
constexpr Constant_Field constant_fields[] = {
    {X_Space::two_theta, field_wavelength, "Wavelength", 0}, {X_Space::tof, field_dtt1, "dtt1", 0}, {X_Space::tof, field_dtt2, "dtt2", 1}};

void Fill_Group_Dialog(const Session& session) {
    const X_Space origin = Origin(session);
    WDialogPutString(field_symbol, session.hkl_gen.hkl_symbol);
    for (const auto& [space, field] : {std::pair{X_Space::two_theta, radio_two_theta}, std::pair{X_Space::tof, radio_tof}}) {
        if (origin == space) WDialogPutRadioButton(field);
        WDialogFieldState(field, session.plot.xspace == space ? field_enabled : field_disabled);
    }
    for (const Constant_Field& constant : constant_fields) {
        if (origin == constant.space) WDialogPutReal(constant.field, session.store.Pattern(1).conv[constant.place]);
        WDialogFieldState(constant.field, session.plot.xspace == constant.space ? field_enabled : field_disabled);
    }
    const Diffraction_Pattern_Type& pattern = session.store.Pattern(1);
    const float told = Told_Wavelength(pattern.title, session.store.Info(1).file_name);
    if (session.plot.xspace == X_Space::two_theta && !(pattern.conv[0] > 0) && told > 0) WDialogPutReal(field_wavelength, told);
    WDialogFieldState(preset_menu, session.plot.xspace == X_Space::two_theta ? field_enabled : field_disabled);
    Show_Preset_Of(WDialogGetReal(field_wavelength).value_or(0));
}

// False where a constant was refused. A wavelength that is no number is a bad one.
bool Read_Constants(X_Space space, X_Constants& conv) {
    for (const Constant_Field& constant : constant_fields) {
        if (constant.space != space) continue;
        const std::optional<float> value =
            space == X_Space::two_theta ? WDialogGetReal(constant.field).value_or(0) : Number_In_Field(constant.field, constant.name);
        if (!value) return false;
        conv[constant.place] = *value;
    }
    const Status status = Check_Hkl_Constants(space, conv);
    if (status.failed) Refuse_Field(space == X_Space::two_theta ? field_wavelength : field_dtt1, status.message);
    return status.ok();
}

void Keep_Constants(Session& session, const X_Constants& conv) {
    if (conv == session.store.Pattern(1).conv) return;
    const char* what = session.plot.xspace == X_Space::two_theta ? "change of wavelengths" : "change of dtt1 and dtt2";
    Row_Change change(session, what + Of_Profiles(session, {1}), {1});
    session.store.Pattern(1).conv = conv;
    change.Keep();
}

// True when everything was taken; else the dialog stays open.
bool Take_Input(Session& session) {
    X_Constants conv = session.store.Pattern(1).conv;
    if (!Read_Constants(session.plot.xspace, conv)) return false;
    const std::string text = WDialogGetString(field_symbol);
    if (Trim(text).empty()) {
        Refuse_Field(field_symbol, "Empty SPGR field");
        return false;
    }
    std::string why;
    if (const Status status = Choose_Hkl_Group(session.hkl_gen, Trim(text), why); status.failed) {
        WDialogMarkField(field_symbol, why.empty() ? status.message : why);
        Error_Box(status);
        return false;
    }
    Keep_Constants(session, conv);
    return true;
}

int Field_Of(int first, std::size_t parameter) { return first + static_cast<int>(parameter); }

}  // namespace

std::vector<Dialog_Resource> Hkl_Gen_Dialog_Resources() {
    return {Group_Dialog_Resource(), Cell_Dialog_Resource(), Reflections_Dialog_Resource()};
}

Status Hkl_Gen_Input(Session& session) {
    if (!Holds_Reflections(session.plot.xspace)) return Status::Fail("xspace not permitted for this operation");
    WDialogLoad(group_dialog);
    Fill_Group_Dialog(session);
    WDialogShow(field_symbol, Show_Kind::modal);
    bool taken = false;
    while (!taken && Run_Modal(group_dialog, {.changed = Minding_Preset(field_wavelength)}) == button_ok) taken = Take_Input(session);
    WDialogUnload();
    return taken ? Status::Done() : Status::Cancel();
}

// --- the cell and its sliders ------------------------------------------------------------------------------------------------------

void Show_Cell_Dialog(const Hkl_Gen_State& state) {
    WDialogLoad(cell_dialog);
    Set_Cell_States(state);
    WDialogShow(first_value, Show_Kind::modeless);
}

void Set_Cell_States(const Hkl_Gen_State& state) {
    WDialogPutString(field_group, state.hkl_symbol + "     " + state.hkl_system);
    for (std::size_t i = 0; i < cell_parameters; ++i) {
        const bool free = state.ties.Free(i);
        const int value_state = state.running ? field_read_only : free ? field_enabled : field_disabled;
        WDialogFieldState(Field_Of(first_value, i), value_state);
        for (const int field : {first_slider, first_fine})
            WDialogFieldState(Field_Of(field, i), state.running && free ? field_enabled : field_disabled);
    }
    for (const int button : {button_start, button_change}) WDialogFieldState(button, state.running ? field_disabled : field_enabled);
    WDialogFieldState(button_stop, state.running ? field_enabled : field_disabled);
}

void Put_Cell(const Cell_Values& cell) {
    for (std::size_t i = 0; i < cell_parameters; ++i) WDialogPutReal(Field_Of(first_value, i), cell[i]);
}

Cell_Values Cell_In_Dialog() {
    Cell_Values cell{};
    for (std::size_t i = 0; i < cell_parameters; ++i) cell[i] = WDialogGetReal(Field_Of(first_value, i)).value_or(0);
    return cell;
}

void Put_Slider(const Hkl_Gen_State& state, std::size_t parameter, int place) {
    const bool fine = state.Fine(parameter);
    const std::string percent = std::to_string(static_cast<int>(100 * slider_end / state.scale[parameter])) + '%';
    WDialogPutTrackbar(Field_Of(first_slider, parameter), place);
    WDialogPutCheckBox(Field_Of(first_fine, parameter), fine ? 1 : 0);
    WDialogPutString(Field_Of(first_low_end, parameter), '-' + percent);
    WDialogPutString(Field_Of(first_high_end, parameter), '+' + percent);
}

void Put_Told(std::string_view text) { WDialogPutString(field_told, text); }

void Mark_Wrong_Cell(const Hkl_Gen_State& state, const std::string& why) {
    const Cell_Values cell = Cell_In_Dialog();
    const auto mark_first = [&](auto wrong) {
        for (std::size_t i = 0; i < cell_parameters; ++i) {
            if (!state.ties.Free(i) || !wrong(i)) continue;
            WDialogMarkField(Field_Of(first_value, i), why);
            return true;
        }
        return false;
    };
    if (!mark_first([&](std::size_t i) { return !(cell[i] > 0); })) mark_first([](std::size_t i) { return i >= cell_alpha; });
}

// --- what the pointer has found ----------------------------------------------------------------------------------------------------

void Show_Reflections_Dialog() {
    WDialogLoad(reflections_dialog);
    for (int column = column_hkl; column <= column_x; ++column) WGridState(reflections_grid, column, field_read_only);
    WDialogShow(button_cancel, Show_Kind::modeless);
}

void Add_Reflections(const std::vector<Reflection_Mark>& marks) {
    WDialogSelect(reflections_dialog);
    for (const Reflection_Mark& mark : marks) {
        const int rows = WInfoGrid(reflections_grid), row = rows + 1;
        WGridRows(reflections_grid, row);
        WGridPutCellString(reflections_grid, column_hkl, row, mark.label);
        WGridPutCellInteger(reflections_grid, column_multiplicity, row, mark.multiplicity);
        WGridPutCellReal(reflections_grid, column_d, row, mark.d);
        WGridPutCellReal(reflections_grid, column_x, row, mark.x);
        const auto same = [&](int other) {
            const auto equal = [&](int column) {
                return WGridGetCellString(reflections_grid, column, other) == WGridGetCellString(reflections_grid, column, row);
            };
            return equal(column_hkl) && equal(column_x);
        };
        for (int other = 1; other <= rows; ++other)
            if (same(other)) {
                WGridRows(reflections_grid, rows);
                break;
            }
    }
}

void Clear_Reflections() { WGridRows(reflections_grid, 0); }

}  // namespace vntl
