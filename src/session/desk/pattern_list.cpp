#include "session/desk/pattern_list.hpp"

#include <algorithm>
#include <cstdint>

#include "base/text.hpp"
#include "session/arrange_rows.hpp"
#include "session/changes.hpp"
#include "session/desk/kept_view.hpp"
#include "session/desk/row_styles.hpp"
#include "session/file_information.hpp"
#include "session/modes.hpp"
#include "session/ranges.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

std::vector<int> Rows_Of_Store(const Profile_Store& store, std::vector<int> rows) {
    std::erase_if(rows, [&](int row) { return row < 1 || row > store.nperfiles(); });
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

using Shown = std::bitset<max_profiles>;

// Those that are to be shown and are not, or the other way round.
std::vector<int> Rows_That_Change(const Profile_Store& store, const Shown& wanted) {
    std::vector<int> rows;
    for (int row = 1; row <= store.nperfiles(); ++row)
        if (store.shown(row) != wanted[static_cast<std::size_t>(row - 1)]) rows.push_back(row);
    return rows;
}

bool Set_Shown(Session& session, const std::string& text, const std::vector<int>& rows, const Shown& wanted) {
    if (rows.empty()) return false;
    Row_Change change(session, text, rows, part_looks);
    const Kept_View kept(session.store, session.plot, session.look);
    session.store.profile_shown = wanted;
    change.Keep();
    kept.Show(session.store, session.plot, session.look);
    return true;
}

bool Reorder(Session& session, const std::vector<int>& moved, const std::vector<int>& order) {
    if (order == All_Rows(session)) return false;
    if (!session.plot.row_move.rows.empty()) Leave_Mode(session);
    Row_Change change(session, "moving" + Of_Profiles(session, moved));
    change.Reorder(order, true);
    change.Keep();
    Set_Origin_Commands(session);
    return true;
}

float Wavelength(const Diffraction_Pattern_Type& pattern) {
    return Contains(pattern.scat_var, "TOF") || !(pattern.conv[0] > 0) ? 0 : pattern.conv[0];
}

// One line of text.
std::string Plain(std::string_view text) {
    std::string plain(Cut(text, longest_name));
    for (char& c : plain)
        if (static_cast<unsigned char>(c) < ' ') c = ' ';
    return std::string(Trim(plain));
}

std::size_t Bytes_Of_Row(const Diffraction_Pattern_Type& p) {
    return sizeof(float) * (p.x.size() + p.y.size() + p.sigma.size() + p.ycalc.size() + p.bgr.size()) +
           sizeof(std::int32_t) * (p.istat.size() + p.nd.size());
}

}  // namespace

// Rows of one file would look alike. UXD calls its patterns ranges.
std::string Row_Name_By_File(const Profile_Store& store, int row) {
    const PRF_Info_Add_Type& info = store.Info(row);
    const std::int32_t bank = store.Pattern(row).bank;
    std::string name(Trim(info.file_name));
    const bool of_file = info.kind == Row_Kind::data || info.kind == Row_Kind::rietv;
    if (bank > 0 && of_file) name += (info.format == "SOCABIM" ? " (range " : " (bank ") + std::to_string(bank) + ')';
    return name;
}

std::string Row_Name(const Profile_Store& store, int row) {
    const std::string_view own = Trim(store.Info(row).legend_text);
    return own.empty() ? Row_Name_By_File(store, row) : std::string(own);
}

std::vector<Listed_Row> Listed_Rows(const Session& session) {
    const Profile_Store& store = session.store;
    const Row_Styles styles(store, session.prefs, session.look, session.desk.series_by_temperature);
    std::vector<Listed_Row> rows;
    rows.reserve(static_cast<std::size_t>(store.nperfiles()));
    for (int row = 1; row <= store.nperfiles(); ++row) {
        const Diffraction_Pattern_Type& pattern = store.Pattern(row);
        const PRF_Info_Add_Type& info = store.Info(row);
        const ProfileStyle style = styles.Of(row);
        rows.push_back({Row_Name(store, row), info.directory + info.file_name, pattern.npts,
                        pattern.TSample > known_temperature ? pattern.TSample : 0, Wavelength(pattern), store.shown(row),
                        style.line_style < 0 ? style.marker_colour : style.line_colour});
    }
    return rows;
}

void Choose_Rows(Session& session, const std::vector<int>& rows) {
    session.store.chosen.reset();
    for (const int row : Rows_Of_Store(session.store, rows)) session.store.chosen.set(static_cast<std::size_t>(row - 1));
}

bool Tick_Rows(Session& session, const std::vector<int>& rows, bool shown) {
    Shown wanted = session.store.profile_shown;
    for (const int row : Rows_Of_Store(session.store, rows)) wanted.set(static_cast<std::size_t>(row - 1), shown);
    const std::vector<int> changed = Rows_That_Change(session.store, wanted);
    return Set_Shown(session, (shown ? "showing" : "hiding") + Of_Profiles(session, changed), changed, wanted);
}

bool Show_Alone(Session& session, const std::vector<int>& rows) {
    const std::vector<int> alone = Rows_Of_Store(session.store, rows);
    if (alone.empty()) return false;
    Shown wanted = session.store.profile_shown;
    for (const int row : All_Rows(session))
        wanted.set(static_cast<std::size_t>(row - 1), std::binary_search(alone.begin(), alone.end(), row));
    return Set_Shown(session, "showing" + Of_Profiles(session, alone) + " alone", Rows_That_Change(session.store, wanted), wanted);
}

bool Place_Rows(Session& session, const std::vector<int>& rows, int before) {
    const std::vector<int> moved = Rows_Of_Store(session.store, rows);
    if (before < 1 || before > session.store.nperfiles() + 1) return false;
    std::vector<int> order, behind;
    for (const int row : All_Rows(session))
        if (!std::binary_search(moved.begin(), moved.end(), row)) (row < before ? order : behind).push_back(row);
    order.insert(order.end(), moved.begin(), moved.end());
    order.insert(order.end(), behind.begin(), behind.end());
    return Reorder(session, moved, order);
}

// Each by a place, with the gaps between them. Those at the end stay, and those that would run into them.
bool Step_Chosen(Session& session, bool down) {
    const std::vector<int> rows = session.store.Chosen_Rows();
    const auto chosen = [&](int row) { return std::binary_search(rows.begin(), rows.end(), row); };
    std::vector<int> order = All_Rows(session);
    if (down) std::ranges::reverse(order);
    for (std::size_t place = 1; place < order.size(); ++place)
        if (chosen(order[place]) && !chosen(order[place - 1])) std::swap(order[place], order[place - 1]);
    if (down) std::ranges::reverse(order);
    return Reorder(session, rows, order);
}

bool Rename_Row(Session& session, int row, std::string_view text) {
    Profile_Store& store = session.store;
    if (row < 1 || row > store.nperfiles()) return false;
    std::string name = Plain(text);
    if (name == Row_Name_By_File(store, row)) name.clear();
    if (name == store.Info(row).legend_text) return false;
    Row_Change change(session, "renaming" + Of_Profiles(session, {row}), {row}, part_looks);
    store.Info(row).legend_text = std::move(name);
    change.Keep();
    return true;
}

bool Can_Come_Back(const Profile_Store& store, const std::vector<int>& rows) {
    std::size_t bytes = 0;
    for (const int row : rows) bytes += Bytes_Of_Row(store.Pattern(row));
    return bytes < Change_History::most_bytes / 10 * 9;  // the rest is for what rows keep beside
}

bool May_Tick(const Session& session) { return session.interface.Enabled(command::show_profiles); }
bool May_Arrange(const Session& session) { return session.interface.Enabled(command::delete_profiles); }

void Open_List(Session& session, bool open) {
    session.desk.list_open = open;
    if (open) return;
    session.store.chosen.reset();
    session.plot.pointed_row = 0;
}

void Show_List_Commands(Session& session) {
    Interface_State& menu = session.interface;
    const std::size_t chosen = session.store.chosen.count();
    menu.Check(command::pattern_list, session.desk.list_open);
    menu.Enable(command::rename_pattern, chosen == 1 || session.store.nperfiles() == 1);
    menu.Enable(command::delete_chosen, chosen > 0 && May_Arrange(session));
    menu.Enable(command::show_chosen, chosen > 0 && May_Tick(session));
    menu.Enable(command::hide_chosen, chosen > 0 && May_Tick(session));
    menu.Enable(command::show_all, May_Tick(session));
}

}  // namespace vntl
