#include "session/view_history.hpp"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>
#include <utility>

#include "session/grid_view.hpp"
#include "session/session.hpp"
#include "session/xspace_vocabulary.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_views = 100;

// The view in another x space, nothing where an end of it has no place there.
std::optional<View> Converted(View view, std::span<const X_Step> steps, const X_Constants& constants) {
    double lo = view.x1, hi = view.x2;
    for (const X_Step step : steps)
        for (double* x : {&lo, &hi}) {
            const double before = *x;
            if (!(before > 0)) return {};
            *x = Convert_Value(step, before, constants);
            const bool no_angle = step == X_Step::d_to_two_theta && !(*x < 180);
            if (!(*x > 0) || !std::isfinite(*x) || no_angle) return {};
        }
    view.x1 = static_cast<float>(std::min(lo, hi));
    view.x2 = static_cast<float>(std::max(lo, hi));
    return view.Drawable() ? std::optional(view) : std::nullopt;
}

// No eye tells the two apart: a conversion rounds.
bool Look_Alike(const View& a, const View& b) {
    constexpr float unseen = 1e-4f;
    const float dx = unseen * (a.x2 - a.x1), dy = unseen * (a.y2 - a.y1);
    return std::fabs(a.x1 - b.x1) <= dx && std::fabs(a.x2 - b.x2) <= dx && std::fabs(a.y1 - b.y1) <= dy && std::fabs(a.y2 - b.y2) <= dy;
}

// The views go the way of row 1. Those that cannot are dropped; all of them where the spaces have no way between them.
void Follow_Xspace(const Session& session, View_History& history) {
    const Space *from = Find_Space(history.xspace), *to = Find_Space(session.plot.xspace);
    const bool same_scale = from != nullptr && to != nullptr && from->kind == to->kind && to->kind <= Space_Kind::s;
    X_Chain chain;
    if (!same_scale && to != nullptr && to->kind <= Space_Kind::s) chain = Chain_Between(from, to->kind);
    const bool leads = same_scale || !chain.steps.empty();
    View_History followed;
    for (std::size_t i = 0; leads && i <= history.present && i < history.views.size(); ++i)
        if (const auto view = Converted(history.views[i].view, chain.steps, session.store.Pattern(1).conv))
            followed.views.push_back({*view, history.views[i].waterfall});
    if (!followed.views.empty()) followed.present = followed.views.size() - 1;
    history = std::move(followed);
}

bool Go_To(Session& session, std::size_t index) {
    Plot_State& plot = session.plot;
    if (index >= plot.history.views.size()) return false;
    plot.history.present = index;
    plot.history.merging = false;
    const auto& [view, waterfall] = plot.history.views[index];
    plot.waterfall = waterfall;
    return plot.Is_Map() ? Show_Rows_In_Grid(session, view).ok() : plot.Show(view);
}

}  // namespace

void Remember_View(Session& session, bool step) {
    Plot_State& plot = session.plot;
    View_History& history = plot.history;
    if (!(plot.Is_2D() || plot.Is_Map()) || session.store.nperfiles() == 0) {
        history = {};
    } else {
        const Visited_View view{plot.Is_Map() ? plot.Map_View() : plot.Shown_View(), plot.waterfall};
        const bool moved_on = history.xspace != plot.xspace;
        if (history.kind != plot.Kind_Of_View()) history = {};
        if (moved_on) Follow_Xspace(session, history);
        if (history.views.empty()) history.views = {view};
        history.xspace = plot.xspace;
        history.kind = plot.Kind_Of_View();
        if (moved_on && Look_Alike(view.view, history.views[history.present].view)) history.views[history.present] = view;
        if (view != history.views[history.present]) {
            history.views.resize(history.present + 1);
            if (!step || !history.merging) history.views.push_back(view);
            history.views.back() = view;
            if (history.views.size() > most_views) history.views.erase(history.views.begin());
            history.present = history.views.size() - 1;
            history.merging = step;
        }
    }
    session.interface.Enable(command::view_back, history.present > 0);
    session.interface.Enable(command::view_forward, history.present + 1 < history.views.size());
}

bool View_Back(Session& session) {
    const std::size_t present = session.plot.history.present;
    return present > 0 && Go_To(session, present - 1);
}

bool View_Forward(Session& session) { return Go_To(session, session.plot.history.present + 1); }

}  // namespace vntl
