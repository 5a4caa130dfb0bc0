#include "commands/file/opened.hpp"

#include "commands/application.hpp"
#include "commands/plot/mouse.hpp"
#include "plot/plot.hpp"
#include "session/load.hpp"

namespace vntl {

void Show_Opened(Application& app, const Open_Result& result) {
    app.failed |= result.failed;
    if (app.session.store.nperfiles() == 0) Clear_Read_Outs(app.session);
    if (result.opened || app.session.store.nperfiles() == 0) Plot_ReMake(app.session);
    if (!result.notice.empty()) app.session.interface.Passing_Text(result.notice);
}

}  // namespace vntl
