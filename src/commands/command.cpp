#include "commands/command.hpp"

#include "commands/application.hpp"

namespace vntl {

bool Tell(Application& app, const Status& status) {
    if (status.failed && status.message == "Cancelled") return false;
    if (status.failed) app.ask.Error(status.message);
    return true;
}

}  // namespace vntl
