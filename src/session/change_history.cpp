#include "session/change_history.hpp"

#include <numeric>
#include <utility>

namespace vntl {

namespace {

template <class T>
std::size_t Bytes_Of(const std::vector<T>& array) {
    return array.capacity() * sizeof(T);
}

std::size_t Bytes_Of(const Kept_Row& kept) {
    const Diffraction_Pattern_Type& p = kept.pattern;
    const PRF_Info_Add_Type& info = kept.info;
    constexpr std::size_t a_label = 24;  // letters
    return sizeof(Kept_Row) + Bytes_Of(p.x) + Bytes_Of(p.y) + Bytes_Of(p.sigma) + Bytes_Of(p.ycalc) + Bytes_Of(p.bgr) + Bytes_Of(p.istat) +
           Bytes_Of(p.nd) + Bytes_Of(info.refl_position) + Bytes_Of(info.refl_label) + a_label * info.refl_label.size();
}

std::size_t Bytes_Of(const std::vector<Kept_Row>& rows) {
    return std::accumulate(rows.begin(), rows.end(), std::size_t{0},
                           [](std::size_t sum, const Kept_Row& row) { return sum + Bytes_Of(row); });
}

}  // namespace

std::size_t Change_Record::Bytes() const {
    return Bytes_Of(rows) + Bytes_Of(held) + Bytes_Of(came) + Bytes_Of(went) + Bytes_Of(order) + Bytes_Of(plot.peaks) +
           Bytes_Of(plot.background) + Bytes_Of(plot.hklgen) + Bytes_Of(plot.fit.peaks);
}

void Change_History::Add(Change_Record record) {
    undone_.clear();
    done_.push_back(std::move(record));
    std::size_t bytes = 0, kept = 0;
    while (kept < done_.size() && kept < most_changes && (bytes += done_[done_.size() - 1 - kept].Bytes()) <= most_bytes) ++kept;
    done_.erase(done_.begin(), done_.end() - static_cast<std::ptrdiff_t>(kept));
    if (!done_.empty()) done_.front().with_previous = false;
}

// The last of those that go together names them.
std::string_view Change_History::Text_To_Redo() const {
    if (undone_.empty()) return {};
    auto last = undone_.rbegin();
    while (last + 1 != undone_.rend() && (last + 1)->with_previous) ++last;
    return last->text;
}

Change_Record Change_History::Take(std::deque<Change_Record>& list) {
    Change_Record record = std::move(list.back());
    list.pop_back();
    return record;
}

}  // namespace vntl
