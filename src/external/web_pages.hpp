// Pages of the program and of its suite on the web. While one is blank there is none, and the commands that open it are disabled.
#pragma once

#include <string_view>

namespace vntl {

inline constexpr std::string_view home_page = "", suite_download_page = "", program_download_page = "";

}  // namespace vntl
