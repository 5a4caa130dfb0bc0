#include "commands/file/opened.hpp"

#include "commands/application.hpp"
#include "plot/plot.hpp"
#include "session/load.hpp"

namespace vntl {

void Show_Opened(Application& app, const Open_Result& result) {
    app.failed |= result.failed;
    Plot_ReMake(app.session);
    if (!result.notice.empty()) app.session.interface.Passing_Text(result.notice);
}

}  // namespace vntl
