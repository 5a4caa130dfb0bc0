// The file selector of the commands: it opens where the user last chose a file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "toolkit/window.hpp"

namespace vntl {

struct Configuration;

// Full paths; none on cancel. See WSelectFile.
std::vector<std::string> Select_Files(Configuration&, Select_Kind kind, std::string_view filter, std::string_view title,
                                      const std::string& name = {});

// The same for a directory; nothing on cancel.
std::optional<std::string> Select_Directory(Configuration&, std::string_view title);

}  // namespace vntl
