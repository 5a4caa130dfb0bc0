// The loop that makes rows of the files of one command, whatever door they came through.
#pragma once

#include <functional>
#include <string>

#include "session/list_of_files.hpp"
#include "session/load.hpp"

namespace vntl {

struct Read_File;

// Loads the files one after another, past those that are refused, up to a full table or the user's cancel. A file that came alone is told
// of as it comes; what several of them, or those of a list, met with stands in one box at the end. A file of a list that fails ends all of
// it, and leaves the store empty. `read` is called in any thread.
Open_Result Load_All(Session&, Ask&, const Files_To_Open& files, std::function<Read_File(const std::string&)> read);

}  // namespace vntl
