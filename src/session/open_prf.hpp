// Opening profile files of a refinement: one row of the store at most is of that kind.
#pragma once

#include <string>
#include <string_view>

#include "base/ask.hpp"
#include "patterns/profile.hpp"
#include "session/load.hpp"

namespace vntl {

struct Session;

// Opens the file named, or the one that the user selects. A refined profile that is there already is overwritten when the user says so,
// else the new one is dropped.
Open_Result Open_Prf_File(Session&, Ask&, const std::string& name = {});

// What was read of one profile file goes through the Load sequence behind its first step, with its reflections and excluded regions;
// `refused` also when the user keeps the refined profile that is there. With `renews` one of the same file is no other one: it is
// replaced without a question, and where it stands alone the new one may have another x space. Finish_Load follows.
Load_Result Load_Prf_Row(Session&, Ask&, const std::string& path, Fresh_Pattern fresh, PRF_Info_Add_Type info, Load_Notes&,
                         bool renews = false);

}  // namespace vntl
