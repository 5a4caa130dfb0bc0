#include "commands/command.hpp"

#include "commands/application.hpp"

namespace vntl {

bool Tell(Application& app, const Status& status) {
    if (status.to_tell()) app.ask.Error(status);
    return !status.cancelled;
}

}  // namespace vntl
