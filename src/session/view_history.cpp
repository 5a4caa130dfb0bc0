#include "session/view_history.hpp"

#include "session/session.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_views = 100;

std::string Data_Shown(const Session& session) {
    const Plot_State& plot = session.plot;
    return std::to_string(session.store.nperfiles()) + ' ' + std::string(Told(plot.xspace)) + (plot.Is_Log() ? " log " : " ") +
           std::to_string(plot.x_all_min) + ' ' + std::to_string(plot.x_all_max);
}

bool Go_To(Session& session, std::size_t index) {
    Plot_State& plot = session.plot;
    if (index >= plot.history.views.size()) return false;
    plot.history.present = index;
    plot.history.merging = false;
    return plot.Show(plot.history.views[index]);
}

}  // namespace

void Remember_View(Session& session, bool step) {
    Plot_State& plot = session.plot;
    View_History& history = plot.history;
    if (!plot.Is_2D() || session.store.nperfiles() == 0) {
        history = {};
    } else {
        const View view = plot.Shown_View();
        if (std::string data = Data_Shown(session); data != history.data) history = {{view}, 0, false, std::move(data)};
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
