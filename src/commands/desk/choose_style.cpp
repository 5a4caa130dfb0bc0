#include "commands/desk/choose_style.hpp"

#include "commands/application.hpp"
#include "commands/options/redraw.hpp"
#include "plot/plot.hpp"
#include "session/desk/kept_view.hpp"

namespace vntl {

Status Show_In_Style(Application& app, std::string_view name) {
    Session& session = app.session;
    const Kept_View kept(session.store, session.plot, session.look);
    if (const Status status = Choose_Style(session, name); status.failed) return status;
    kept.Show(session.store, session.plot, session.look);
    Plot_Redraw(session);
    Show_Other_Windows(session);
    return Status::Done();
}

void Toggle_Series_By_Temperature(Application& app) {
    Session& session = app.session;
    session.desk.series_by_temperature = !session.desk.series_by_temperature;
    session.interface.Check(command::series_by_temperature, session.desk.series_by_temperature);
    Plot_Redraw(session);
}

}  // namespace vntl
