// A directory for files that last no longer than the program: nobody else may look into it, and it goes with all that is in it.
#pragma once

#include <string>
#include <utility>

#include "base/status.hpp"

namespace vntl {

class Private_Directory {
public:
    Private_Directory() = default;
    ~Private_Directory();  // removes it; links in it are removed, not followed
    Private_Directory(const Private_Directory&) = delete;
    Private_Directory& operator=(const Private_Directory&) = delete;

    // Makes it inside `parent`, by a name that nobody could foresee and with mode 700, at the first call; later calls change nothing. The
    // message names the parent.
    Status Make(const std::string& parent);

    const std::string& path() const { return path_; }  // without a final separator; blank before it is made
    std::string File(const std::string& name) const { return path_ + '/' + name; }

private:
    std::string path_;
};

}  // namespace vntl
