#include "views/seq_dialog.hpp"

#include <algorithm>
#include <array>

#include "base/text.hpp"
#include "commands/modal.hpp"
#include "commands/row_grid.hpp"

namespace vntl {

namespace {

constexpr int seq_dialog = 490;
enum Field {
    title_field = 4901,
    x_text_field,
    y_text_field,
    lines_radio,
    histogram_radio,
    polar_radio,
    x_grid,
    y_grid,
    x_note,
    y_note,
};
enum Column { chosen = 1, name, errbar, marker, legend };
constexpr int usual_x_row = 1, usual_y_row = 4;
constexpr const char* too_many = "Maximum number of curves attained!";

struct Text_Row {
    int field;
    const char* label;
    std::string Generic_Plots::*text;
};
constexpr Text_Row text_rows[] = {{title_field, "&Title:", &Generic_Plots::title},
                                  {x_text_field, "&X axis:", &Generic_Plots::legend_x},
                                  {y_text_field, "&Y axis:", &Generic_Plots::legend_y}};

struct Kind_Row {
    int field;
    const char* label;
    Plot_Kind kind;
};
constexpr Kind_Row kind_rows[] = {{lines_radio, "Poly&Line", Plot_Kind::lines},
                                  {histogram_radio, "&Histogram", Plot_Kind::histogram},
                                  {polar_radio, "&Polar", Plot_Kind::polar}};

class Dialog {
public:
    Dialog(const Seq_File& file, Generic_Plots& plots) : file_(file), plots_(plots) {}

    bool Run() {
        WDialogLoad(seq_dialog);
        Fill();
        WDialogShow(y_grid, Show_Kind::modal);
        bool taken = false;
        for (int pressed = 0; !taken && pressed != button_cancel;) {
            pressed = Run_Modal(seq_dialog, {.changed = [this](int) { Follow(); }});
            if (pressed == button_ok) taken = Take();
        }
        WDialogUnload();
        return taken;
    }

private:
    void Fill() {
        const std::vector<std::string>& names = file_.param_names();
        for (const Text_Row& row : text_rows) WDialogPutString(row.field, plots_.*row.text);
        WDialogPutRadioButton(lines_radio);
        for (const Kind_Row& row : kind_rows)
            if (row.kind == plots_.plot_kind) WDialogPutRadioButton(row.field);
        for (const int grid : {x_grid, y_grid}) {
            WGridRows(grid, static_cast<int>(names.size()));
            WGridPutString(grid, name, names);
            WGridState(grid, name, field_read_only);
        }
        WGridPutCellCheckBox(x_grid, chosen, usual_x_row, 1);
        x_chosen_ = WGridGetCheckBox(x_grid, chosen);
        y_chosen_ = WGridGetCheckBox(y_grid, chosen);
        Set_States();
    }

    void Set_States() {
        const bool lines = WDialogGetRadioButton(lines_radio) == lines_radio;
        if (lines == marks_enabled_) return;
        marks_enabled_ = lines;
        for (const int column : {marker, legend}) WGridState(y_grid, column, lines ? field_enabled : field_disabled);
    }

    void Follow() {
        Set_States();
        Follow_X();
        Follow_Y();
    }

    // The row that was chosen last is the only one.
    void Follow_X() {
        std::vector<int> now = WGridGetCheckBox(x_grid, chosen);
        for (std::size_t i = 0; i < now.size(); ++i) {
            if (now[i] <= x_chosen_[i]) continue;
            now.assign(now.size(), 0);
            now[i] = 1;
            WGridPutCheckBox(x_grid, chosen, now);
            break;
        }
        x_chosen_ = now;
    }

    // Rows above the most that are drawn are cleared again, the last ones first.
    void Follow_Y() {
        std::vector<int> now = WGridGetCheckBox(y_grid, chosen);
        auto count = std::ranges::count(now, 1);
        const bool more = count > max_generic_curves;
        for (std::size_t i = now.size(); i-- > 0 && count > max_generic_curves;)
            if (now[i] > y_chosen_[i]) {
                now[i] = 0;
                --count;
            }
        if (more) WGridPutCheckBox(y_grid, chosen, now);
        y_chosen_ = now;
        if (more) Error_Box(too_many);
    }

    // --- taking over -----------------------------------------------------------------------------------------------------------

    std::vector<Seq_Choice> Choices() const {
        std::vector<Seq_Choice> choices;
        std::vector<int> rows = Checked_Rows(y_grid, chosen);
        if (rows.empty()) rows = {usual_y_row};
        for (const int row : rows) {
            const auto marked = [row](int column) { return WGridGetCellCheckBox(y_grid, column, row) != 0; };
            choices.push_back({row, marked(errbar), marked(marker), marked(legend)});
        }
        return choices;
    }

    static bool Texts_Fit() {
        for (const Text_Row& row : text_rows) {
            if (Characters(WDialogGetString(row.field)) <= generic_text_length) continue;
            Refuse_Field(row.field, Replace_All(row.label, "&", "") + " at most " + std::to_string(generic_text_length) + " characters");
            return false;
        }
        return true;
    }

    // False, and the user has been told why, where something is refused.
    bool Take() {
        if (!Texts_Fit()) return false;
        const std::vector<int> x_rows = Checked_Rows(x_grid, chosen);
        const Status status = file_.Curves(x_rows.empty() ? usual_x_row : x_rows.front(), Choices(), plots_);
        if (status.failed) {
            Error_Box(status);
            return false;
        }
        for (const Text_Row& row : text_rows) plots_.*row.text = WDialogGetString(row.field);
        for (const Kind_Row& row : kind_rows)
            if (row.field == WDialogGetRadioButton(lines_radio)) plots_.plot_kind = row.kind;
        return true;
    }

    const Seq_File& file_;
    Generic_Plots& plots_;
    std::vector<int> x_chosen_, y_chosen_;  // as the user last left them
    bool marks_enabled_ = true;
};

Dialog_Field Frame(const char* title, std::vector<std::vector<Dialog_Field>> rows) {
    return {.kind = Field_Kind::frame, .label = title, .pages = {{"", std::move(rows)}}};
}

// A grid in a frame that has its name, below a note.
Dialog_Field Grid(int number, const char* title, Dialog_Field note, std::vector<Grid_Column> columns) {
    const Dialog_Field grid{
        .number = number, .kind = Field_Kind::grid, .label = title, .columns = std::move(columns), .grid_rows = 1, .unseen_label = true};
    return Frame(title, {{std::move(note)}, {grid}});
}

Grid_Column Check(const char* heading) { return {heading, Cell_Kind::check_box}; }

}  // namespace

Dialog_Resource Seq_Dialog_Resource() {
    constexpr int name_width = 20, text_width = 32;
    const Grid_Column names = {"Name", Cell_Kind::string, {}, name_width};
    std::vector<std::vector<Dialog_Field>> texts, kinds;
    for (const Text_Row& row : text_rows)
        texts.push_back({{.number = row.field, .kind = Field_Kind::string, .label = row.label, .width = text_width}});
    for (const Kind_Row& row : kind_rows)
        kinds.push_back({{.number = row.field, .kind = Field_Kind::radio, .label = row.label, .group = lines_radio}});
    return {seq_dialog,
            "Generic Graphics Plots",
            {{Frame("Plot Type", std::move(kinds)), Frame("Texts", std::move(texts))},
             {Grid(x_grid, "X Axis Plot", {x_note, Field_Kind::label, " "}, {Check("X"), names}),
              Grid(y_grid, "Y Axis Plot", {y_note, Field_Kind::label, "E=Error bar;  M= Marker;   L=Legend"},
                   {Check("Y"), names, Check("E"), Check("M"), Check("L")})},
             {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

bool Seq_Dialog(const Seq_File& file, Generic_Plots& plots) { return Dialog(file, plots).Run(); }

}  // namespace vntl
