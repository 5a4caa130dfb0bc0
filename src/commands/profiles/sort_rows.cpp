#include "commands/profiles/sort_rows.hpp"

#include <numeric>
#include <optional>

#include "commands/modal.hpp"
#include "commands/row_grid.hpp"
#include "plot/plot.hpp"
#include "session/arrange_rows.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr int sort_dialog = 422;
enum Field {
    rows_grid = 1791,
    key_label,
    by_file_name,
    by_title,
    by_temperature,
    by_custom,
    order_label,
    ascending,
    descending,
    apply,
    leave
};
enum Column { file_name = 1, title, temperature, custom };

void Fill(const Session& session) {
    const Profile_Store& store = session.store;
    const auto rows = static_cast<std::size_t>(store.nperfiles());
    Label_Row_Grid(session, rows_grid);
    Put_File_Names(session, rows_grid, file_name);
    Put_Titles(session, rows_grid, title);
    std::vector<float> temperatures, numbers(rows);
    for (int row = 1; row <= store.nperfiles(); ++row) temperatures.push_back(store.Pattern(row).TSample);
    std::iota(numbers.begin(), numbers.end(), 1.0f);
    WGridPutReal(rows_grid, temperature, temperatures);
    WGridPutReal(rows_grid, custom, numbers);
}

template <class Text>
std::vector<std::string> Texts(const Session& session, Text text) {
    std::vector<std::string> texts;
    for (int row = 1; row <= session.store.nperfiles(); ++row) texts.push_back(text(row));
    return texts;
}

// The numbers of a column; nothing where a cell holds none, which has been told then.
std::optional<std::vector<float>> Numbers(int column) {
    std::vector<float> numbers;
    for (const std::optional<float>& cell : WGridGetReal(rows_grid, column)) {
        const int row = static_cast<int>(numbers.size()) + 1;
        if (!cell) {
            const std::string text = WGridGetCellString(rows_grid, column, row);
            Refuse_Cell(rows_grid, column, row, "Row " + std::to_string(row) + ": \"" + text + "\" is not a number");
            return {};
        }
        numbers.push_back(*cell);
    }
    return numbers;
}

// By what the user has chosen.
std::optional<std::vector<int>> Chosen_Order(const Session& session) {
    const Profile_Store& store = session.store;
    const int key = WDialogGetRadioButton(by_file_name);
    const bool falling = WDialogGetRadioButton(ascending) == descending;
    if (key == by_file_name) return Order_Of(Texts(session, [&](int row) { return store.Info(row).file_name; }), falling);
    if (key == by_title) return Order_Of(Texts(session, [&](int row) { return store.Pattern(row).title; }), falling);
    const auto numbers = Numbers(key == by_temperature ? temperature : custom);
    return numbers ? std::optional(Order_Of(*numbers, falling)) : std::nullopt;
}

void Apply(Session& session) {
    const auto order = Chosen_Order(session);
    if (!order) return;
    Sort_Rows(session, *order);
    Fill(session);
    Plot_Redraw(session);
}

// Radio buttons behind what they choose.
std::vector<Dialog_Field> Choice(int label, const char* heading, std::vector<Dialog_Field> buttons) {
    const int group = buttons.front().number;
    for (Dialog_Field& button : buttons) button.kind = Field_Kind::radio, button.group = group;
    buttons.insert(buttons.begin(), {.number = label, .kind = Field_Kind::label, .label = heading});
    return buttons;
}

}  // namespace

Dialog_Resource Sort_Profiles_Dialog_Resource() {
    const auto button = [](int number, const char* label) { return Dialog_Field{.number = number, .label = label}; };
    return {sort_dialog,
            "Sorting profiles",
            {{{.number = rows_grid,
               .kind = Field_Kind::grid,
               .columns = {{"File", Cell_Kind::string, {}, 24},
                           {"Title", Cell_Kind::string, {}, 36},
                           {"Temperature", Cell_Kind::real, {}, 12},
                           {"Custom field", Cell_Kind::real, {}, 12}},
               .grid_rows = 1}},
             Choice(key_label, "Sorting by",
                    {button(by_file_name, "&Filename"), button(by_title, "&Title"), button(by_temperature, "T&emperature"),
                     button(by_custom, "&Custom field")}),
             Choice(order_label, "Order", {button(ascending, "A&scending"), button(descending, "&Descending")}),
             {{apply, Field_Kind::push_button, "&Apply"}, {leave, Field_Kind::push_button, "&Return"}}}};
}

void Sort_Profiles(Session& session) {
    WDialogLoad(sort_dialog);
    Fill(session);
    WDialogPutRadioButton(by_file_name);
    WDialogPutRadioButton(ascending);
    WDialogShow(rows_grid, Show_Kind::modal);
    while (Run_Modal(sort_dialog) == apply) Apply(session);
    WDialogUnload();
}

}  // namespace vntl
