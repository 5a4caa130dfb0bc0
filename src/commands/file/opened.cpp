#include "commands/file/opened.hpp"

#include "commands/application.hpp"
#include "commands/plot/mouse.hpp"
#include "plot/plot.hpp"
#include "session/load.hpp"
#include "session/ranges.hpp"

namespace vntl {

namespace {

// What opened nothing ends modes and calculations, as every opening does; the view stays.
void Remake_In_View(Session& session) {
    Plot_State& plot = session.plot;
    const Plot_Form_Row form = Row_Of(plot.plot_type);
    const View view = plot.Shown_View();
    Plot_Ranges(session);
    if (form.is_2d && form.is_log == Row_Of(plot.plot_type).is_log) plot.Show(view);
    Plot_Redraw(session);
}

}  // namespace

void Show_Opened(Application& app, const Open_Result& result) {
    app.failed |= result.failed;
    if (app.session.store.nperfiles() == 0) Clear_Read_Outs(app.session);
    if (result.opened || app.session.store.nperfiles() == 0)
        Plot_ReMake(app.session);
    else
        Remake_In_View(app.session);
    if (!result.notice.empty()) app.session.interface.Passing_Text(result.notice);
}

}  // namespace vntl
