// The seam through which other programs are started: really, or only told of.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "base/process.hpp"
#include "base/status.hpp"

namespace vntl {

class Programs {
public:
    using Report = std::function<void(std::string_view command, bool waited)>;

    // With `on` false no program is started, and every start succeeds.
    void Switch(bool on) { on_ = on; }
    // Hears of every start, real or not.
    void Report_To(Report report) { report_ = std::move(report); }

    // See IOsCommand; `flags` are Command_Flags.
    Status Start(std::string_view command, int flags) const {
        if (report_) report_(command, (flags & command_goes_on) == 0);
        return on_ ? IOsCommand(command, flags) : Status::Done();
    }

private:
    bool on_ = true;
    Report report_;
};

}  // namespace vntl
