// The seam through which other programs are started: really, or only told of.
#pragma once

#include <functional>
#include <utility>

#include "base/process.hpp"
#include "base/status.hpp"

namespace vntl {

class Programs {
public:
    using Report = std::function<void(const Command_Line& command, bool waited)>;

    // With `on` false no program is looked for or started, and every start succeeds.
    void Switch(bool on) { on_ = on; }
    bool on() const { return on_; }
    // Hears of every program that is started, or would be.
    void Report_To(Report report) { report_ = std::move(report); }

    // See IOsCommand.
    Status Start(const Command_Line& command) const { return Start(command, nullptr); }
    // One whose end is waited for.
    Status Start(const Command_Line& command, Running_Program& running) const { return Start(command, &running); }

private:
    Status Start(const Command_Line& command, Running_Program* running) const {
        if (on_)
            if (Status status = IOsCommand(command, running); status.failed) return status;
        if (report_) report_(command, running != nullptr);
        return Status::Done();
    }

    bool on_ = true;
    Report report_;
};

}  // namespace vntl
