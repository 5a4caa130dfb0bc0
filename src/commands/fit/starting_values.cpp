#include "commands/fit/starting_values.hpp"

#include <cmath>
#include <limits>

#include "commands/modal.hpp"
#include "fit/irf_file.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

namespace {

constexpr float no_number = std::numeric_limits<float>::quiet_NaN();
constexpr float least_d2tof = 10, usual_d2tof = 6000;
constexpr int least_node_rows = 2, least_peak_rows = 5;

void Make_Rows(int grid, int columns, int used, int least) {
    WGridRows(grid, std::max(used, least));
    for (int row = 1; row <= used; ++row) WGridLabelRow(grid, row, std::to_string(row));
    for (int row = used + 1; row <= least; ++row) {
        WGridLabelRow(grid, row, "");
        for (int column = 1; column <= columns; ++column) WGridStateCell(grid, column, row, field_disabled);
    }
}

}  // namespace

Fit_Fields Fields_Of(Fit_Kind kind) {
    if (kind == Fit_Kind::constant_wavelength)
        return {.cycles = 1612, .background = 1624, .wavelengths = 1614, .d2tof = 0, .profile = 1615, .asymmetry = 1619, .peaks = 1625};
    return {.cycles = 1051, .background = 1052, .wavelengths = 0, .d2tof = 1631, .profile = 1053, .asymmetry = 0, .peaks = 1630};
}

Starting_Values::Starting_Values(Fit_Kind kind, const Fit_State& fit, const std::vector<Background_Mark>& background)
    : state(fit), nodes(background), kind_(kind), fields_(Fields_Of(kind)) {
    Tie_Everything();
}

void Starting_Values::Tie(Place place, Fit_Value& value) {
    numbers_.push_back({place, &value.value});
    ++place.column;
    flags_.push_back({place, &value.flag});
}

void Starting_Values::Tie_Everything() {
    int row = 0;
    for (Background_Mark& node : nodes) {
        ++row;
        numbers_.push_back({{fields_.background, 1, row}, &node.x});
        numbers_.push_back({{fields_.background, 2, row}, &node.y});
        flags_.push_back({{fields_.background, node_flags, row}, &node.flag});
    }
    if (kind_ == Fit_Kind::constant_wavelength) {
        numbers_.push_back({{fields_.wavelengths, 1, 1}, &state.lambda1});
        numbers_.push_back({{fields_.wavelengths, 2, 1}, &state.lambda2});
        Tie({fields_.wavelengths, 3, 1}, state.ratio);
    } else {
        numbers_.push_back({{fields_.d2tof}, &state.d2tof});
    }
    row = 0;
    for (Fit_Value& value : state.prof) Tie({fields_.profile, 1, ++row}, value);
    if (kind_ == Fit_Kind::constant_wavelength) {
        Tie({fields_.asymmetry, 1, 1}, state.asym[0]);
        Tie({fields_.asymmetry, 3, 1}, state.asym[1]);
    }
    row = 0;
    for (Fit_Peak& peak : state.peaks) {
        ++row;
        int number = 0;
        for (Fit_Value* value : Values_Of(kind_, peak)) Tie({fields_.peaks, Value_Column(number++), row}, *value);
    }
}

// --- showing -------------------------------------------------------------------------------------------------------------------

void Starting_Values::Put(Tied_Number& number) {
    const auto [field, column, row] = number.place;
    column == 0 ? WDialogPutReal(field, *number.value) : WGridPutCellReal(field, column, row, *number.value);
    number.shown = Typed(number.place);
}

void Starting_Values::Fill() {
    const int values_of_a_peak = static_cast<int>(Values_Of(kind_, Fit_Peak{}).size());
    Make_Rows(fields_.background, node_flags, static_cast<int>(nodes.size()), least_node_rows);
    Make_Rows(fields_.peaks, Flag_Column(values_of_a_peak - 1), static_cast<int>(state.peaks.size()), least_peak_rows);
    WDialogPutInteger(fields_.cycles, std::clamp(state.Ncyc, least_cycles, most_cycles));
    for (Tied_Number& number : numbers_) Put(number);
    for (const auto& [place, flag] : flags_) WGridPutCellCheckBox(place.field, place.column, place.row, *flag != 0 ? 1 : 0);
    int row = 0;
    for (const Fit_Peak& peak : state.peaks) WGridPutCellCheckBox(fields_.peaks, 1, ++row, peak.active ? 1 : 0);
}

void Starting_Values::Change_Flags(int grid, std::span<const int> columns, Flag_Change change) const {
    const int rows = static_cast<int>(grid == fields_.peaks ? state.peaks.size() : nodes.size());
    bool all_set = true;
    for (const int column : columns)
        for (int row = 1; row <= rows; ++row) all_set = all_set && WGridGetCellCheckBox(grid, column, row) != 0;
    const int flag = change == Flag_Change::set || (change == Flag_Change::toggle && !all_set) ? 1 : 0;
    for (const int column : columns)
        for (int row = 1; row <= rows; ++row) WGridPutCellCheckBox(grid, column, row, flag);
}

void Starting_Values::Nullify_Shifts() {
    for (Tied_Number& number : numbers_) {
        if (number.place.field != fields_.peaks || number.place.column < Value_Column(first_shift)) continue;
        *number.value = 0;
        Put(number);
    }
}

void Starting_Values::Take_Irf(const Irf_File& irf) {
    std::vector<float> before;
    for (const Tied_Number& number : numbers_) {
        before.push_back(*number.value);
        if (Is_Common(number.place)) *number.value = no_number;  // what the file does not give will be so still
    }
    Apply_Irf(irf, kind_, state);
    for (std::size_t i = 0; i < numbers_.size(); ++i) {
        if (!Is_Common(numbers_[i].place)) continue;
        std::isnan(*numbers_[i].value) ? void(*numbers_[i].value = before[i]) : Put(numbers_[i]);
    }
}

// --- reading back --------------------------------------------------------------------------------------------------------------

std::optional<float> Starting_Values::Typed(const Place& place) {
    return place.column == 0 ? WDialogGetReal(place.field) : WGridGetCellReal(place.field, place.column, place.row);
}

std::vector<float> Starting_Values::Numbers_Of_Dialog() const {
    std::vector<float> now;
    for (const Tied_Number& number : numbers_) {
        const std::optional<float> typed = Typed(number.place);
        now.push_back(typed && typed == number.shown ? *number.value : typed.value_or(no_number));
    }
    return now;
}

std::string Starting_Values::Text_Of_Refusal(const Place& place) const {
    if (place.field == fields_.background) return " Error in the Background parameters on line: " + std::to_string(place.row);
    if (place.field == fields_.peaks) return " Error in the Peak parameters on line: " + std::to_string(place.row);
    if (place.field == fields_.asymmetry) return " Errors in the Asymmetry parameters!";
    if (place.field == fields_.wavelengths) return " Error in the wavelength fields!";
    if (place.field == fields_.d2tof) return "d to TOF Coeff: \"" + WDialogGetString(place.field) + "\" is not a number";
    return kind_ == Fit_Kind::constant_wavelength ? " Errors in the Profiles parameters!"
                                                  : "Profiles values were undefined! Please check it!";
}

// Empty where the number can be taken.
std::string Starting_Values::What_Is_Wrong(std::size_t i, std::span<const float> now) const {
    const Place& place = numbers_[i].place;
    if (std::isnan(now[i])) return Text_Of_Refusal(place);
    if (place.field == fields_.background && place.column == 1 && place.row > 1 && now[i] <= now[i - 2])
        return Text_Of_Refusal(place) + "\nIts position must be above that of the line before it";
    // Of a doublet both wavelengths are known; an unknown one is 0.
    if (place.field == fields_.wavelengths && place.column <= 2 &&
        (now[i] < 0 || (place.column == 2 && (now[i] == 0) != (now[i - 1] == 0))))
        return Text_Of_Refusal(place);
    return {};
}

// One box for all of them; the focus is at the first.
void Starting_Values::Tell(std::span<const Refusal> refused) {
    std::string text;
    const std::string* last = nullptr;
    for (const Refusal& refusal : refused) {
        if (last == nullptr || *last != refusal.text) text += (text.empty() ? "" : "\n") + refusal.text;
        last = &refusal.text;
    }
    for (std::size_t i = refused.size(); i > 0; --i) {
        const auto& [place, why] = refused[i - 1];
        place.column == 0 ? WDialogMarkField(place.field, why) : WGridMarkCell(place.field, place.column, place.row, why);
    }
    Error_Box(text);
}

bool Starting_Values::Read() {
    std::vector<Refusal> refused;
    const std::optional<int> cycles = WDialogGetInteger(fields_.cycles);
    if (!cycles)
        refused.push_back({{fields_.cycles},
                           "Cycles: \"" + WDialogGetString(fields_.cycles) + "\" is not a whole number from " +
                               std::to_string(least_cycles) + " to " + std::to_string(most_cycles)});
    const std::vector<float> now = Numbers_Of_Dialog();
    for (std::size_t i = 0; i < now.size(); ++i)
        if (std::string wrong = What_Is_Wrong(i, now); !wrong.empty()) refused.push_back({numbers_[i].place, std::move(wrong)});
    if (!refused.empty()) {
        Tell(refused);
        return false;
    }
    state.Ncyc = *cycles;
    Take_Over(now);
    return true;
}

void Starting_Values::Take_Over(std::span<const float> now) {
    for (std::size_t i = 0; i < now.size(); ++i) *numbers_[i].value = now[i];
    for (const auto& [place, flag] : flags_) *flag = WGridGetCellCheckBox(place.field, place.column, place.row);
    int row = 0;
    for (Fit_Peak& peak : state.peaks) peak.active = WGridGetCellCheckBox(fields_.peaks, 1, ++row) != 0;
    if (kind_ == Fit_Kind::time_of_flight && state.d2tof < least_d2tof) state.d2tof = usual_d2tof;
    if (nodes.empty()) return;
    state.x_ini = nodes.front().x;
    state.y_ini = nodes.front().y;
    state.x_fin = nodes.back().x;
    state.y_fin = nodes.back().y;
    state.lower_set = state.upper_set = true;
}

}  // namespace vntl
