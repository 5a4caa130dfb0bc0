#include "commands/file/exit.hpp"

#include "commands/application.hpp"
#include "toolkit/window_service.hpp"

namespace vntl {

void Exit_Program(Application& app) {
    if (!Windows_May_Close()) return;
    Write_Exit_Files(app.session);
    app.leaving = true;
}

}  // namespace vntl
