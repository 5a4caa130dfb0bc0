#include "commands/edit/clipboard.hpp"

#include <algorithm>
#include <span>

#include "base/conversions.hpp"
#include "session/session.hpp"
#include "toolkit/bitmap.hpp"
#include "toolkit/window.hpp"
#include "toolkit/window_service.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_points = 2'000'000;

struct Column_Pair {
    std::string name;
    std::span<const float> x, y;
};

// The part of a row that lies inside the view.
Column_Pair In_View(const Session& session, int row) {
    const Diffraction_Pattern_Type& pattern = session.store.Pattern(row);
    const std::size_t points = std::min(pattern.x.size(), pattern.y.size());
    const std::span<const float> x = std::span(pattern.x).first(points);
    const auto first = static_cast<std::size_t>(std::lower_bound(x.begin(), x.end(), session.plot.x_view_min) - x.begin());
    const auto end = static_cast<std::size_t>(std::upper_bound(x.begin(), x.end(), session.plot.x_view_max) - x.begin());
    const std::size_t count = end > first ? end - first : 0;
    return {session.store.Info(row).file_name, x.subspan(first, count), std::span(pattern.y).subspan(first, count)};
}

}  // namespace

void Copy_Picture() {
    const int window = Picture_Window();
    WindowSelect(window);
    Bitmap bitmap(WInfoWindow(1), WInfoWindow(2));
    Service_Of(window).picture(bitmap.Drawing());
    WClipboardPutBitmap(bitmap);
}

Status Copy_Data(const Session& session) {
    std::vector<Column_Pair> columns;
    std::size_t total = 0, longest = 0;
    for (int row = 1; row <= session.store.nperfiles(); ++row) {
        if (!session.store.shown(row)) continue;
        columns.push_back(In_View(session, row));
        total += columns.back().x.size();
        longest = std::max(longest, columns.back().x.size());
    }
    if (total > most_points) return Status::Fail("The view holds too many points to be copied as text.\nZoom in, or show fewer profiles.");
    std::string text;
    for (const Column_Pair& pair : columns) text += (text.empty() ? "" : "\t") + std::string("x\t") + pair.name;
    text += '\n';
    for (std::size_t i = 0; i < longest; ++i) {
        for (const Column_Pair& pair : columns) {
            if (&pair != &columns.front()) text += '\t';
            text += i < pair.x.size() ? IRealToString(pair.x[i]) + '\t' + IRealToString(pair.y[i]) : "\t";
        }
        text += '\n';
    }
    WClipboardPutText(text);
    return Status::Done();
}

}  // namespace vntl
