#include "commands/calculation_mode.hpp"

#include "plot/plot.hpp"
#include "session/desk/kept_view.hpp"

namespace vntl {

void Begin_Mode(Session& session, Click_Mode mode) {
    if (session.store.nperfiles() == 0) return;
    // The form of logarithms gives way to counts; a scale that the user has chosen stays.
    const Kept_View kept(session.store, session.plot, session.look);
    Set_Calculation_Mode(session, mode);
    kept.Show(session.store, session.plot, session.look);
    Plot_Redraw(session);
}

void End_Mode(Session& session, bool keep_fit) {
    Set_Calculation_Mode(session, Click_Mode::none);
    if (!keep_fit) session.lists.fit = {};
    Set_Menu_Of_Scale(session);
    Plot_Redraw(session);
}

}  // namespace vntl
