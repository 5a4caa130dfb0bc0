#include "commands/peaks/peaks_dialogs.hpp"

#include <algorithm>
#include <array>
#include <limits>
#include <span>
#include <variant>

#include "base/text.hpp"
#include "commands/modal.hpp"
#include "commands/wavelength_preset.hpp"

namespace vntl {

namespace {

using Row = std::vector<Dialog_Field>;

constexpr int no_field = 0;
constexpr int first_unit = 1930;
constexpr int most_lines = 999;  // three columns
constexpr int text_width = 46;   // characters of a title that are seen
constexpr const char *angstrom = "\u00c5", *cubic_angstrom = "\u00c5\u00b3", *degrees = "\u00b0";

// A field of a dialog, and the member of its record that it holds.
template <class Input>
using Member = std::variant<std::string Input::*, float Input::*, int Input::*, bool Input::*>;
template <class Input>
struct Bound_Field {
    int number;
    const char* label;
    Member<Input> member;
    int width = 9;
    int lo = 0, hi = most_lines;  // of a whole number
};

// The buttons of a group count the values of a member from `first`.
template <class Input, class Choice>
struct Bound_Group {
    int group = no_field;
    Choice Input::*member = nullptr;
    int first = 0;
};

template <class Input, class Choice = int>
struct Form {
    int dialog;
    int unit;  // the label that tells it
    std::span<const Bound_Field<Input>> fields;
    Bound_Group<Input, Choice> group = {};
    int wavelength = no_field;  // that a preset fills
    int zero = no_field;        // a number that cannot be told to the program
};

std::string Bare(const char* label) {
    std::string name = label;
    std::erase(name, '&');
    return name;
}

// --- what the fields hold ----------------------------------------------------------------------------------------------------------

template <class Input>
void Put(const Bound_Field<Input>& field, const Input& input) {
    if (const auto text = std::get_if<std::string Input::*>(&field.member)) WDialogPutString(field.number, input.**text);
    if (const auto real = std::get_if<float Input::*>(&field.member)) WDialogPutReal(field.number, input.**real);
    if (const auto whole = std::get_if<int Input::*>(&field.member)) WDialogPutInteger(field.number, input.**whole);
    if (const auto mark = std::get_if<bool Input::*>(&field.member)) WDialogPutCheckBox(field.number, input.**mark ? 1 : 0);
}

template <class Input>
bool Take_Whole(const Bound_Field<Input>& field, int& number) {
    const std::optional<int> value = WDialogGetInteger(field.number);
    if (value)
        number = *value;
    else
        Refuse_Field(field.number, Bare(field.label) + ": \"" + WDialogGetString(field.number) + "\" is not a whole number from " +
                                       std::to_string(field.lo) + " to " + std::to_string(field.hi));
    return value.has_value();
}

// False where the field holds no number, which has been told then.
template <class Input>
bool Take(const Bound_Field<Input>& field, Input& input) {
    if (const auto text = std::get_if<std::string Input::*>(&field.member)) input.** text = WDialogGetString(field.number);
    if (const auto mark = std::get_if<bool Input::*>(&field.member)) input.** mark = WDialogGetCheckBox(field.number) != 0;
    if (const auto whole = std::get_if<int Input::*>(&field.member)) return Take_Whole(field, input.**whole);
    if (const auto real = std::get_if<float Input::*>(&field.member)) {
        const std::optional<float> number = Number_In_Field(field.number, Bare(field.label));
        if (!number) return false;
        input.** real = *number;
    }
    return true;
}

template <class Input, class Choice>
void Fill(const Form<Input, Choice>& form, const Input& input, const std::string& unit) {
    WDialogPutString(form.unit, "Positions of the list: " + unit);
    for (const Bound_Field<Input>& field : form.fields) Put(field, input);
    if (form.zero != no_field) {
        WDialogPutReal(form.zero, 0);
        WDialogFieldState(form.zero, field_read_only);
    }
    if (form.group.member != nullptr)
        WDialogPutRadioButton(form.group.group + static_cast<int>(input.*form.group.member) - form.group.first);
}

template <class Input, class Choice>
bool Read(const Form<Input, Choice>& form, Input& input) {
    const Bound_Group<Input, Choice>& group = form.group;
    if (group.member != nullptr)
        if (const int button = WDialogGetRadioButton(group.group); button != 0)
            input.*group.member = static_cast<Choice>(button - group.group + group.first);
    return std::all_of(form.fields.begin(), form.fields.end(), [&](const Bound_Field<Input>& field) { return Take(field, input); });
}

// A refusal tells a field by its label, with a comma or a colon behind it.
bool Tells_Of(const std::string& message, const std::string& label) {
    const std::string told = Lower(message), name = ' ' + Lower(label);
    return Contains(told, name + ',') || Contains(told, name + ':');
}

template <class Input, class Choice>
bool Made(const Form<Input, Choice>& form, const Status& status) {
    if (status.ok()) return true;
    const auto field = std::find_if(form.fields.begin(), form.fields.end(),
                                    [&](const Bound_Field<Input>& one) { return Tells_Of(status.message, Bare(one.label)); });
    if (field == form.fields.end())
        Error_Box(status);
    else
        Refuse_Field(field->number, status.message);
    return false;
}

template <class Input, class Choice>
Status Ask(const Form<Input, Choice>& form, Input input, const std::string& unit, const Make_Peaks_File<Input>& make) {
    WDialogLoad(form.dialog);
    Fill(form, input, unit);
    const auto mind = Minding_Preset(form.wavelength);
    mind(form.wavelength);  // the menu tells what stands there
    WDialogShow(form.fields.front().number, Show_Kind::modal);
    bool made = false;
    while (!made && Run_Modal(form.dialog, {.changed = mind}) == button_ok) made = Read(form, input) && Made(form, make(input));
    WDialogUnload();
    return made ? Status::Done() : Status::Cancel();
}

// --- resources ---------------------------------------------------------------------------------------------------------------------

template <class Input>
Field_Kind Kind_Of(const Bound_Field<Input>& field) {
    constexpr Field_Kind kinds[] = {Field_Kind::string, Field_Kind::real, Field_Kind::integer, Field_Kind::check_box};
    return kinds[field.member.index()];
}

template <class Input>
Dialog_Field Entry(const Bound_Field<Input>& field) {
    return {.number = field.number, .kind = Kind_Of(field), .label = field.label, .width = field.width, .lo = field.lo, .hi = field.hi};
}

template <class Input>
Row Entries(std::span<const Bound_Field<Input>> fields) {
    Row row;
    for (const Bound_Field<Input>& field : fields) row.push_back(Entry(field));
    return row;
}

// `place`: from 0, among the units of the dialog.
Row With_Unit(Row row, int place, const char* unit) {
    row.push_back({first_unit + place, Field_Kind::label, unit});
    return row;
}

Dialog_Field Frame(const char* title, std::vector<Row> rows) {
    return {.kind = Field_Kind::frame, .label = title, .pages = {{"", std::move(rows)}}};
}

Row Radios(int group, std::span<const char* const> labels) {
    Row row;
    int number = group;
    for (const char* label : labels) row.push_back({.number = number++, .kind = Field_Kind::radio, .label = label, .group = group});
    return row;
}

// What the positions are, and what the program is to take them for.
Dialog_Field Positions_Frame(int unit, const std::vector<Row>& rest = {}) {
    std::vector<Row> rows = {{{.number = unit, .kind = Field_Kind::label}}};
    rows.insert(rows.end(), rest.begin(), rest.end());
    return Frame("Positions", std::move(rows));
}

Row Foot() { return {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}}; }

// --- DICVOL ------------------------------------------------------------------------------------------------------------------------

using D = Dicvol_Input;
enum Dicvol_Number { dicvol_title = 1201, dicvol_unit, dicvol_theta = 1205, dicvol_first = 1211 };
constexpr const char* dicvol_units[] = {"T&heta angle", "&2-theta angle", "&d-spacing", "&Q specified"};
constexpr Bound_Field<D> dicvol_fields[] = {
    {dicvol_title, "&Title", &D::title, text_width},
    {dicvol_first, "# of &lines used", &D::lines, 9, 1},
    {dicvol_first + 1, "&Wavelength", &D::wavelength},
    {dicvol_first + 2, "Cubic", &D::cubic},
    {dicvol_first + 3, "Tetragonal", &D::tetragonal},
    {dicvol_first + 4, "Hexagonal", &D::hexagonal},
    {dicvol_first + 5, "Orthorhombic", &D::orthorhombic},
    {dicvol_first + 6, "Monoclinic", &D::monoclinic},
    {dicvol_first + 7, "Triclinic", &D::triclinic},
    {dicvol_first + 8, "&Amax", &D::amax},
    {dicvol_first + 9, "&Bmax", &D::bmax},
    {dicvol_first + 10, "&Cmax", &D::cmax},
    {dicvol_first + 11, "BEmin", &D::bemin},
    {dicvol_first + 12, "BEmax", &D::bemax},
    {dicvol_first + 13, "VOLmin", &D::volmin},
    {dicvol_first + 14, "VOLmax", &D::volmax},
    {dicvol_first + 15, "&Mol. weight", &D::weight},
    {dicvol_first + 16, "Density", &D::density},
    {dicvol_first + 17, "Density error", &D::density_error},
    {dicvol_first + 18, "&EPS", &D::eps},
    {dicvol_first + 19, "&FOM", &D::fom},
    {dicvol_first + 20, "&Impurity lines", &D::impurity_lines},
    {dicvol_first + 21, "A priori &zero search", &D::zero_search},
    {dicvol_first + 22, "Zero &refinement", &D::zero_refinement},
    {dicvol_first + 23, "DICVOL06 &option", &D::option},
};
constexpr Form<D> dicvol_form = {150, dicvol_unit, dicvol_fields, {dicvol_theta, &D::itype, 1}, dicvol_first + 1};

Dialog_Resource Dicvol_Resource() {
    const std::span<const Bound_Field<D>> fields = dicvol_fields;
    const auto part = [fields](std::size_t from, std::size_t count) { return Entries(fields.subspan(from, count)); };
    return {dicvol_form.dialog,
            "Save peaks for DICVOL06",
            {part(0, 1),
             {Positions_Frame(dicvol_unit, {Radios(dicvol_theta, dicvol_units), With_Unit(part(1, 2), 0, angstrom), {Preset_Field()}})},
             {Frame("Crystal systems", {part(3, 6)})},
             {Frame("Limits of the cell",
                    {With_Unit(part(9, 3), 1, angstrom), With_Unit(part(12, 2), 2, degrees), With_Unit(part(14, 2), 3, cubic_angstrom)})},
             {Frame("Material", {part(16, 3)})},
             {Frame("Search", {part(19, 3), part(22, 3)})},
             Foot()}};
}

// --- ITO ---------------------------------------------------------------------------------------------------------------------------

using I = Ito_Input;
enum Ito_Number { ito_title = 1241, ito_wavelength, ito_zero, ito_unit };
constexpr Bound_Field<I> ito_fields[] = {{ito_title, "&Title", &I::title, text_width},
                                         {ito_wavelength, "&Wavelength", &I::wavelength},
                                         {ito_zero, "&Zero shift", &I::zero_shift}};
constexpr Form<I> ito_form = {167, ito_unit, ito_fields, {}, ito_wavelength};

Dialog_Resource Ito_Resource() {
    const std::span<const Bound_Field<I>> fields = ito_fields;
    return {ito_form.dialog,
            "Save peaks for ITO15",
            {{Entry(fields[0])},
             {Positions_Frame(ito_unit)},
             {Frame("Pattern", {With_Unit({Entry(fields[1])}, 0, angstrom), {Preset_Field()}, With_Unit({Entry(fields[2])}, 1, degrees)})},
             Foot()}};
}

// --- TREOR -------------------------------------------------------------------------------------------------------------------------

using T = Treor_Input;
enum Treor_Number {
    treor_title = 1251,
    treor_unit,
    treor_theta,
    treor_edge = 1257,
    treor_volume,
    treor_beta,
    treor_wavelength,
    treor_zero,
    treor_merit
};
constexpr const char* treor_units[] = {"T&heta angle", "&2Theta angle", "&d-spacing"};
constexpr Bound_Field<T> treor_fields[] = {{treor_title, "&Title", &T::title, text_width},
                                           {treor_wavelength, "&Wavelength", &T::wavelength},
                                           {treor_edge, "&Cell edge max", &T::cem},
                                           {treor_volume, "&Vol_max", &T::volume},
                                           {treor_beta, "&Beta_max", &T::beta},
                                           {treor_merit, "&F.O.M.", &T::merit}};
constexpr Form<T> treor_form = {168, treor_unit, treor_fields, {treor_theta, &T::spacing, 1}, treor_wavelength, treor_zero};

Dialog_Resource Treor_Resource() {
    const std::span<const Bound_Field<T>> fields = treor_fields;
    const Dialog_Field zero = {.number = treor_zero, .kind = Field_Kind::real, .label = "Zero", .width = 9};
    return {treor_form.dialog,
            "Save peaks for TREOR90",
            {{Entry(fields[0])},
             {Positions_Frame(treor_unit, {Radios(treor_theta, treor_units)})},
             {Frame("Pattern", {With_Unit({Entry(fields[1])}, 0, angstrom),
                                {Preset_Field()},
                                With_Unit({zero}, 1, "\u00b0, the file has no place for it")})},
             {Frame("Limits of the cell", {With_Unit({Entry(fields[2])}, 2, angstrom), With_Unit({Entry(fields[3])}, 3, cubic_angstrom),
                                           With_Unit({Entry(fields[4])}, 4, "\u00b0, 0: no monoclinic cells")})},
             {Frame("Search", {{Entry(fields[5])}})},
             Foot()}};
}

// --- Vecfind -----------------------------------------------------------------------------------------------------------------------

using V = Vecfind_Input;
enum Vecfind_Number {
    vecfind_title = 1271,
    vecfind_lattice,
    vecfind_cell,
    vecfind_tolerance,
    vecfind_range,
    vecfind_points,
    vecfind_wavelength,
    vecfind_output,
    vecfind_special = 1281,
    vecfind_unit
};
constexpr const char* vecfind_outputs[] = {"&Short Output", "&Long Output", "&No Output"};
constexpr Bound_Field<V> vecfind_fields[] = {{vecfind_title, "&Title", &V::title, text_width},
                                             {vecfind_lattice, "L&attice", &V::lattice, text_width},
                                             {vecfind_cell, "&Cell", &V::cell, text_width},
                                             {vecfind_wavelength, "&Wavelength", &V::wavelength, text_width},
                                             {vecfind_tolerance, "T&olerance", &V::tolerance, text_width},
                                             {vecfind_range, "&K range", &V::k_range, text_width},
                                             {vecfind_points, "Number of &points", &V::points, text_width},
                                             {vecfind_special, "Search only special k-&vectors", &V::special_only}};
constexpr Form<V, Vecfind_Output> vecfind_form = {164, vecfind_unit, vecfind_fields, {vecfind_output, &V::output, 0}, vecfind_wavelength};

Dialog_Resource Vecfind_Resource() {
    const std::span<const Bound_Field<V>> fields = vecfind_fields;
    const auto part = [fields](std::size_t from, std::size_t count) {
        std::vector<Row> rows;
        for (const Bound_Field<V>& field : fields.subspan(from, count)) rows.push_back({Entry(field)});
        return rows;
    };
    return {
        vecfind_form.dialog,
        "Save peaks for Vecfind",
        {{Entry(fields[0])},
         {Frame("Nuclear cell", part(1, 2))},
         {Frame(
             "Satellites",
             {{{.number = vecfind_unit, .kind = Field_Kind::label}}, {Entry(fields[3])}, {Preset_Field("P&reset")}, {Entry(fields[4])}})},
         {Frame("Search", part(5, 3))},
         {Frame("Output", {Radios(vecfind_output, vecfind_outputs)})},
         Foot()}};
}

}  // namespace

std::vector<Dialog_Resource> Peaks_Dialog_Resources() { return {Dicvol_Resource(), Ito_Resource(), Treor_Resource(), Vecfind_Resource()}; }

Status Ask_Dicvol(const Dicvol_Input& input, const std::string& unit, const Make_Peaks_File<Dicvol_Input>& make) {
    return Ask(dicvol_form, input, unit, make);
}
Status Ask_Ito(const Ito_Input& input, const std::string& unit, const Make_Peaks_File<Ito_Input>& make) {
    return Ask(ito_form, input, unit, make);
}
Status Ask_Treor(const Treor_Input& input, const std::string& unit, const Make_Peaks_File<Treor_Input>& make) {
    return Ask(treor_form, input, unit, make);
}
Status Ask_Vecfind(const Vecfind_Input& input, const std::string& unit, const Make_Peaks_File<Vecfind_Input>& make) {
    return Ask(vecfind_form, input, unit, make);
}

}  // namespace vntl
