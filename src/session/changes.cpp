#include "session/changes.hpp"

#include <algorithm>
#include <numeric>
#include <thread>
#include <utility>

#include "base/text.hpp"
#include "session/desk/waterfall.hpp"
#include "session/fit.hpp"
#include "session/ranges.hpp"
#include "session/session.hpp"
#include "session/whole_range.hpp"
#include "session/xspace.hpp"

namespace vntl {

namespace {

using Pattern = Diffraction_Pattern_Type;
using Reals = std::vector<float> Pattern::*;
using Numbers = std::vector<std::int32_t> Pattern::*;

struct Real_Part {
    Reals array;
    unsigned part;
};
constexpr Real_Part real_parts[] = {{&Pattern::x, part_x},
                                    {&Pattern::y, part_y},
                                    {&Pattern::sigma, part_sigma},
                                    {&Pattern::ycalc, part_curves},
                                    {&Pattern::bgr, part_curves}};
constexpr Numbers number_arrays[] = {&Pattern::istat, &Pattern::nd};

// --- keeping ---------------------------------------------------------------------------------------------------------------------

void Copy_Parts(const Pattern& from, unsigned parts, Pattern& to) {
    static_cast<Pattern_Head&>(to) = from;
    for (const Real_Part& p : real_parts)
        if ((parts & p.part) != 0) to.*p.array = from.*p.array;
}

std::size_t Bytes_Of_Parts(const Profile_Store& store, const std::vector<int>& rows, unsigned parts) {
    std::size_t bytes = 0;
    for (const int row : rows)
        for (const Real_Part& p : real_parts)
            if ((parts & p.part) != 0) bytes += (store.Pattern(row).*p.array).size() * sizeof(float);
    return bytes;
}

void Keep_Row(const Profile_Store& store, int row, unsigned parts, Kept_Row& kept) {
    const auto flag = static_cast<std::size_t>(row - 1);
    kept.row = row;
    Copy_Parts(store.Pattern(row), parts, kept.pattern);
    kept.info = store.Info(row);
    kept.shown = store.profile_shown[flag];
    kept.show_ycalc = store.show_ycalc_of[flag];
    kept.show_bgr = store.show_bgr_of[flag];
}

// Many points are worth a thread for each half of the rows.
std::vector<Kept_Row> Keep_Rows(const Profile_Store& store, const std::vector<int>& rows, unsigned parts) {
    constexpr std::size_t much = 4u << 20;  // bytes
    std::vector<Kept_Row> kept(rows.size());
    const auto keep = [&](std::size_t from, std::size_t to) {
        for (std::size_t i = from; i < to; ++i) Keep_Row(store, rows[i], parts, kept[i]);
    };
    const std::size_t half = rows.size() / 2;
    std::jthread first_half;
    if (Bytes_Of_Parts(store, rows, parts) >= much)
        first_half = std::jthread([&] { keep(0, half); });
    else
        keep(0, half);
    keep(half, rows.size());
    return kept;
}

Kept_Plot Keep_Plot(const Session& session) {
    const Plot_State& plot = session.plot;
    const Calculation_Lists& lists = session.lists;
    return {lists.peaks,        lists.peaks_found_in,
            lists.background,   lists.background_found_in,
            lists.hklgen,       lists.fit,
            plot.xspace,        plot.xlabel_text,
            plot.ylabel_text,   plot.Shown_View(),
            plot.Whole_Range(), plot.y_prf_bottom,
            plot.diff_base,     plot.diff_band,
            plot.diff_span,     plot.Is_Log(),
            plot.y_scale,       session.shift,
            plot.first_pattern, plot.last_pattern};
}

// --- going back, or forward again --------------------------------------------------------------------------------------------------

// The row and what was kept of it change places; arrays that were not kept stay, in the other order where the change turned them round.
void Swap_Row(Profile_Store& store, const Change_Record& record, Kept_Row& kept) {
    Pattern& pattern = store.Pattern(kept.row);
    const auto flag = static_cast<std::size_t>(kept.row - 1);
    std::swap(pattern, kept.pattern);
    for (const Real_Part& p : real_parts) {
        if ((record.parts & p.part) != 0) continue;
        std::swap(pattern.*p.array, kept.pattern.*p.array);
        if (record.turned) std::ranges::reverse(pattern.*p.array);
    }
    for (const Numbers array : number_arrays) {
        std::swap(pattern.*array, kept.pattern.*array);
        if (record.turned) std::ranges::reverse(pattern.*array);
    }
    std::swap(store.Info(kept.row), kept.info);
    const auto swap_flag = [flag](auto& flags, bool& value) {
        const bool before = flags[flag];
        flags[flag] = value;
        value = before;
    };
    swap_flag(store.profile_shown, kept.shown);
    swap_flag(store.show_ycalc_of, kept.show_ycalc);
    swap_flag(store.show_bgr_of, kept.show_bgr);
}

std::vector<int> Inverse_Of(const std::vector<int>& order) {
    std::vector<int> inverse(order.size());
    for (std::size_t place = 0; place < order.size(); ++place)
        inverse[static_cast<std::size_t>(order[place] - 1)] = static_cast<int>(place) + 1;
    return inverse;
}

// With its last row the session loses all that belongs to rows, as by a new start, but not the way back.
void Empty(Session& session, Change_Record& record) {
    Profile_Store& store = session.store;
    record.choices = static_cast<const Row_Choices&>(store);
    Change_History history = std::move(store.changes);
    Reset_Profiles(session);
    store.changes = std::move(history);
}

// Rows come, go and change places; what is in the store and what the record holds of them change places too.
void Move_Rows(Session& session, Change_Record& record, bool back) {
    Profile_Store& store = session.store;
    if (record.Touches_Order()) session.plot.pointed_row = 0;
    for (Kept_Row& kept : record.rows) Swap_Row(store, record, kept);
    std::vector<Kept_Row> out = store.Take_Out(back ? record.came : record.went);
    store.Put_In(std::exchange(record.held, std::move(out)));
    if (!record.order.empty()) {
        store.Reorder(record.order, record.flags_go);
        record.order = Inverse_Of(record.order);
    }
    if (store.nperfiles() == 0)
        Empty(session, record);
    else if (record.choices)
        static_cast<Row_Choices&>(store) = *std::exchange(record.choices, std::nullopt);
}

// A view of the whole height may be from before the waterfall, or from another one.
void Show_Whole_Waterfall(Session& session) {
    const Profile_Store& store = session.store;
    Plot_State& plot = session.plot;
    if (!(plot.waterfall.offset > 0) || !plot.Is_2D()) return;
    const View whole = Whole_On_Scale(store, plot, plot.Scale());
    if (plot.y_view_min > On_Scale(plot.Scale(), plot.y_all_min) || plot.y_view_max < whole.y2) return;
    const Waterfall waterfall = std::exchange(plot.waterfall, {});
    plot.y_view_min = std::max(plot.y_view_min, whole.y1);
    plot.y_view_max = whole.y2;
    Set_Waterfall(store, plot, waterfall, session.look);
}

// Lists and x space as they were kept, and the view where the plot still has the same form of intensities. Reflections that are on the
// screen belong to the cell that the user is trying, which is no change of rows or lists, and stay.
void Set_Plot(Session& session, Kept_Plot kept) {
    Plot_State& plot = session.plot;
    session.lists.peaks = std::move(kept.peaks);
    session.lists.peaks_found_in = kept.peaks_found_in;
    session.lists.background = std::move(kept.background);
    session.lists.background_found_in = kept.background_found_in;
    if (plot.ClickMode != Click_Mode::reflections) session.lists.hklgen = std::move(kept.hklgen);
    session.lists.fit = std::move(kept.fit);
    session.shift = kept.shift;
    plot.first_pattern = kept.first_pattern;
    plot.last_pattern = kept.last_pattern;
    plot.xlabel_text = std::move(kept.xlabel_text);
    plot.ylabel_text = std::move(kept.ylabel_text);
    if (plot.Scale() != kept.Scale()) return;
    plot.Show(kept.view);
    plot.x_all_min = kept.all.x1, plot.x_all_max = kept.all.x2, plot.y_all_min = kept.all.y1, plot.y_all_max = kept.all.y2;
    plot.y_prf_bottom = kept.y_prf_bottom;
    plot.diff_base = kept.diff_base;
    plot.diff_band = kept.diff_band;
    plot.diff_span = kept.diff_span;
    Show_Whole_Waterfall(session);
}

void Return_To_Space(Session& session, const Change_Record& record) {
    if (record.plot.xspace != session.plot.xspace) Set_Xspace(session, Told(record.plot.xspace));
}

// One pattern and several have forms of their own: a change that led from one to the other leads back to the form that was there. The scale
// is the user's, who may have chosen another one since.
void Keep_Form(Plot_State& plot, const Kept_Plot& kept, int rows_before, int rows) {
    if (std::min(rows_before, 2) == std::min(rows, 2)) return;
    plot.log_scale = kept.log && kept.y_scale == Y_Scale::linear;
}

// The record and the session change places. Form and menus follow from the rows before lists and view are put back.
void Swap(Session& session, Change_Record& record, bool back) {
    const int rows_before = session.store.nperfiles();
    Kept_Plot present = Keep_Plot(session);
    Move_Rows(session, record, back);
    Return_To_Space(session, record);
    Keep_Form(session.plot, record.plot, rows_before, session.store.nperfiles());
    if (record.Touches_Axes()) Plot_Ranges(session);
    Set_Plot(session, std::exchange(record.plot, std::move(present)));
    Set_Fit_Overlay(session);
}

bool Same_Lists(const Kept_Plot& kept, const Calculation_Lists& lists) {
    return kept.peaks == lists.peaks && kept.background == lists.background && kept.hklgen == lists.hklgen && kept.fit == lists.fit;
}

std::string Label(std::string_view verb, std::string_view text) {
    return std::string(verb) + (text.empty() ? "" : " ") + std::string(text);
}

}  // namespace

Row_Change::Row_Change(Session& session, std::string text, const std::vector<int>& rows, unsigned parts)
    : session_(session),
      rows_before_(session.store.nperfiles()),
      too_large_(Bytes_Of_Parts(session.store, rows, parts) > Change_History::most_bytes) {
    record_.text = std::move(text);
    record_.parts = parts;
    record_.plot = Keep_Plot(session);
    if (!too_large_) record_.rows = Keep_Rows(session.store, rows, parts);
}

Row_Change::~Row_Change() {
    if (!open_) return;
    Tell_Rows_That_Came();
    Move_Rows(session_, record_, true);
    Return_To_Space(session_, record_);
    Set_Plot(session_, std::move(record_.plot));
}

void Row_Change::Remove(const std::vector<int>& rows) {
    record_.went = rows;
    record_.held = session_.store.Take_Out(rows);
    session_.plot.pointed_row = 0;
    if (session_.store.nperfiles() == 0) Empty(session_, record_);
}

void Row_Change::Reorder(const std::vector<int>& order, bool flags_go) {
    session_.store.Reorder(order, flags_go);
    record_.flags_go = flags_go;
    session_.plot.pointed_row = 0;
    record_.order = Inverse_Of(order);
}

void Row_Change::Tell_Rows_That_Came() {
    const int stayed = rows_before_ - static_cast<int>(record_.went.size());
    for (int row = stayed + 1; row <= session_.store.nperfiles(); ++row) record_.came.push_back(row);
}

bool Row_Change::Keep(bool with_previous) {
    open_ = false;
    Change_History& history = session_.store.changes;
    Tell_Rows_That_Came();
    const bool map_of_all = session_.plot.last_pattern == rows_before_;
    if (map_of_all && !record_.came.empty()) session_.plot.last_pattern = session_.store.nperfiles();
    record_.with_previous = with_previous;
    if (too_large_ || record_.Bytes() > Change_History::most_bytes) {
        session_.interface.Status_Text(1, "The " + record_.text + " is too large to be undone");
        history.Forget();
        return false;
    }
    if (!record_.Touches_Rows() && Same_Lists(record_.plot, session_.lists)) return false;
    history.Add(std::move(record_));
    return true;
}

Status Row_Change::Keep(const Status& status) {
    if (status.ok()) Keep();
    return status;
}

std::string Of_Profiles(const Session& session, const std::vector<int>& rows) {
    if (rows.size() == 1) return " of " + std::string(Trim(session.store.Info(rows.front()).file_name));
    return " of " + std::to_string(rows.size()) + " profiles";
}

std::vector<int> All_Rows(const Session& session) {
    std::vector<int> rows(static_cast<std::size_t>(session.store.nperfiles()));
    std::iota(rows.begin(), rows.end(), 1);
    return rows;
}

bool Undo_Change(Session& session) {
    Change_History& history = session.store.changes;
    if (history.Text_To_Undo().empty()) return false;
    for (bool more = true; more;) {
        Change_Record record = history.Take_Done();
        more = record.with_previous;
        Swap(session, record, true);
        history.Put_Undone(std::move(record));
    }
    return true;
}

bool Redo_Change(Session& session) {
    Change_History& history = session.store.changes;
    if (history.Text_To_Redo().empty()) return false;
    do {
        Change_Record record = history.Take_Undone();
        Swap(session, record, false);
        history.Put_Done(std::move(record));
    } while (history.Goes_On());
    return true;
}

void Show_Changes(Session& session) {
    const std::string_view done = session.store.changes.Text_To_Undo(), undone = session.store.changes.Text_To_Redo();
    Interface_State& menu = session.interface;
    menu.Label(command::undo, Label("Undo", done));
    menu.Label(command::redo, Label("Redo", undone));
    const bool can = session.plot.Is_2D() || session.store.nperfiles() == 0;  // the last row may have been deleted
    menu.Enable(command::undo, can && !done.empty());
    menu.Enable(command::redo, can && !undone.empty());
}

}  // namespace vntl
