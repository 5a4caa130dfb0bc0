#include "commands/calculation_mode.hpp"

#include "plot/plot.hpp"
#include "session/ranges.hpp"

namespace vntl {

void Begin_Mode(Session& session, Click_Mode mode) {
    if (session.store.nperfiles() == 0) return;
    if (session.plot.log_scale) View_In_Counts(session.store, session.plot);
    Set_Calculation_Mode(session, mode);
    Plot_Redraw(session);
}

void End_Mode(Session& session, bool keep_fit) {
    Set_Calculation_Mode(session, Click_Mode::none);
    if (!keep_fit) session.lists.fit = {};
    if (session.store.nperfiles() > 1)
        Set_Menu_Graph(session, false);
    else
        Set_Menu_Single(session, true);
    Plot_Redraw(session);
}

}  // namespace vntl
