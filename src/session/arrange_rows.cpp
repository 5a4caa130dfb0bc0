#include "session/arrange_rows.hpp"

#include <algorithm>
#include <compare>
#include <numeric>

#include "base/natural_order.hpp"
#include "base/text.hpp"
#include "session/changes.hpp"
#include "session/modes.hpp"
#include "session/ranges.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

template <class Key, class Compare>
std::vector<int> Stable_Order(const std::vector<Key>& keys, bool descending, Compare compare) {
    std::vector<int> order(keys.size());
    std::iota(order.begin(), order.end(), 1);
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        const Key &first = keys[static_cast<std::size_t>(a - 1)], &second = keys[static_cast<std::size_t>(b - 1)];
        return descending ? compare(second, first) < 0 : compare(first, second) < 0;
    });
    return order;
}

}  // namespace

void Delete_Rows(Session& session, const std::vector<int>& rows) {
    if (rows.empty()) return;
    Row_Change change(session, "deletion" + Of_Profiles(session, rows));
    change.Remove(rows);
    change.Keep();
}

Status Copy_Row(Session& session, int row) {
    Profile_Store& store = session.store;
    if (store.full()) return Status::Fail(std::string(table_full_text));
    Row_Change change(session, "copy" + Of_Profiles(session, {row}));
    const int copy = store.Append_Copy(row);
    store.Pattern(copy).title = Cut("Copy of " + store.Info(row).file_name, title_width);
    store.Info(copy).file_name = "<copy>";
    store.Info(copy).kind = Row_Kind::copy;
    change.Keep();
    return Status::Done();
}

std::vector<int> Order_Of(const std::vector<float>& keys, bool descending) {
    return Stable_Order(keys, descending, [](float a, float b) { return std::weak_order(a, b); });
}

std::vector<int> Order_Of(const std::vector<std::string>& keys, bool descending) {
    return Stable_Order(keys, descending, [](const std::string& a, const std::string& b) { return Compare_Natural(a, b); });
}

void Sort_Rows(Session& session, const std::vector<int>& order) {
    if (std::is_sorted(order.begin(), order.end())) return;
    if (!session.plot.row_move.rows.empty()) Leave_Mode(session);
    Row_Change change(session, "sorting" + Of_Profiles(session, All_Rows(session)));
    change.Reorder(order);
    change.Keep();
    Set_Origin_Commands(session);
}

}  // namespace vntl
