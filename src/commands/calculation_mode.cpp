#include "commands/calculation_mode.hpp"

#include "plot/plot.hpp"

namespace vntl {

void Begin_Mode(Session& session, Click_Mode mode, std::string_view hint) {
    if (session.store.nperfiles() == 0) return;
    Set_Calculation_Mode(session, mode);
    session.interface.Status_Text(1, std::string(hint));
    Plot_Redraw(session);
}

void End_Mode(Session& session, bool keep_fit) {
    Set_Calculation_Mode(session, Click_Mode::none);
    Set_Menu_Single(session, keep_fit);
    session.interface.Status_Text(1, "");
    Plot_Redraw(session);
}

}  // namespace vntl
