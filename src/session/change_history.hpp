// What was done to the rows, and how to go back: a list of changes, a part of the store whose row numbers it speaks of.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "patterns/pattern.hpp"
#include "patterns/profile.hpp"
#include "session/lists.hpp"
#include "session/plot_state.hpp"

namespace vntl {

// Arrays of a pattern that a change touches. Its numbers and texts, and what the row keeps beside it, are always kept. `part_looks` is
// none of them: a change of flags and names, from which no range follows.
enum Row_Parts : unsigned {
    part_x = 1,
    part_y = 2,
    part_sigma = 4,
    part_curves = 8,  // ycalc, bgr
    part_looks = 16,
    no_parts = 0,
    all_parts = 15
};

// A row of the store with its flags; of a changed one only the arrays that are kept.
struct Kept_Row {
    int row = 0;  // from 1; 0 for a row that was added
    Diffraction_Pattern_Type pattern;
    PRF_Info_Add_Type info;
    bool shown = true, show_ycalc = false, show_bgr = false, chosen = false;
};

// What the user chose to see of the refined profile, and what is known of the rows as a whole.
struct Row_Choices {
    bool show_ycalc = true, show_difference = true, show_reflections = true, show_background = false;
    bool profiles_uniform = false;  // the rows came from one multiple selection in an empty store
};

// How far each row was set apart from the one before it, by the dialog that spreads them.
struct Row_Shift {
    float x = 0, y = 0;
    bool operator==(const Row_Shift&) const = default;
};

// Lists, x space and view beside the rows.
struct Kept_Plot {
    std::vector<Peak_Mark> peaks;
    X_Space peaks_found_in = X_Space::none;
    std::vector<Background_Mark> background;
    X_Space background_found_in = X_Space::none;
    std::vector<Reflection_Mark> hklgen;
    Fit_State fit;
    X_Space xspace = X_Space::none;
    std::string xlabel_text, ylabel_text;
    View view, all;
    float y_prf_bottom = 0, diff_base = 0, diff_band = 0, diff_span = 1;
    bool log = false;                   // the plot form was that of logarithms
    Y_Scale y_scale = Y_Scale::linear;  // the one that the user had chosen
    Row_Shift shift;
    int first_pattern = 0, last_pattern = 0;  // rows that maps show

    Y_Scale Scale() const { return log ? Y_Scale::logarithm : y_scale; }  // of the view
};

struct Change_Record {
    std::string text;                    // "shift of 3 profiles", as the menu shows it behind "Undo"
    bool with_previous = false;          // a part of the change before it: they go back together
    unsigned parts = 0;                  // arrays that are kept
    bool turned = false;                 // the order of the points was turned round, in the arrays that are not kept too
    std::vector<int> came, went;         // rows that came at the end, by their numbers after the change; that went, by those before it
    std::vector<int> order;              // where rows changed places: how they change them when the record takes its next way
    bool flags_go = false;               // and their flags went along
    std::vector<Kept_Row> rows;          // as they were before the change; after it was taken back, as they were behind it
    std::vector<Kept_Row> held;          // rows that are not in the store: those that went; those that came, while the change is taken back
    std::optional<Row_Choices> choices;  // of a store that has lost its last row
    Kept_Plot plot;

    bool Touches_Order() const { return !came.empty() || !went.empty() || !order.empty(); }
    bool Touches_Rows() const { return Touches_Order() || !rows.empty(); }
    bool Touches_Axes() const {  // ranges and forms follow from it
        return Touches_Order() || (!rows.empty() && parts != part_curves && parts != part_looks);
    }
    std::size_t Bytes() const;  // about what it holds
};

class Change_History {
public:
    static constexpr std::size_t most_changes = 50, most_bytes = std::size_t{256} << 20;

    // Of the change that comes next, empty for none.
    std::string_view Text_To_Undo() const { return done_.empty() ? std::string_view() : done_.back().text; }
    std::string_view Text_To_Redo() const;
    bool Goes_On() const { return !undone_.empty() && undone_.back().with_previous; }  // the next one to make again goes with the last

    // The oldest changes go where there are too many, or too much of them. What was undone is forgotten.
    void Add(Change_Record record);
    void Forget() { *this = Change_History(); }

    // For taking back and making again: the record moves from one list to the other.
    Change_Record Take_Done() { return Take(done_); }
    Change_Record Take_Undone() { return Take(undone_); }
    void Put_Done(Change_Record record) { done_.push_back(std::move(record)); }
    void Put_Undone(Change_Record record) { undone_.push_back(std::move(record)); }

private:
    static Change_Record Take(std::deque<Change_Record>& list);

    std::deque<Change_Record> done_, undone_;
};

}  // namespace vntl
