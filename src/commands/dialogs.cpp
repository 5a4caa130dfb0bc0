#include "commands/dialogs.hpp"

#include "commands/calc/profile_arithmetic.hpp"
#include "commands/calc/smoothing_dialog.hpp"
#include "commands/help/about.hpp"
#include "commands/help/gestures.hpp"
#include "commands/peaks/search_dialogs.hpp"
#include "commands/plot/spectral_lines.hpp"
#include "commands/profiles/excluded_admin.hpp"
#include "commands/profiles/excluded_regions.hpp"
#include "commands/profiles/move_rows.hpp"
#include "commands/profiles/show_profiles.hpp"
#include "commands/progress_dialog.hpp"
#include "commands/xspace/constants_dialogs.hpp"

namespace vntl {

std::vector<Dialog_Resource> Dialog_Resources() {
    std::vector<Dialog_Resource> all{About_Dialog_Resource(),         Gestures_Dialog_Resource(),        Progress_Dialog_Resource(),
                                     Smoothing_Dialog_Resource(),     Insert_Excluded_Dialog_Resource(), Admin_Excluded_Dialog_Resource(),
                                     Show_Profiles_Dialog_Resource(), Spectral_Lines_Dialog_Resource()};
    for (auto family : {Constants_Dialog_Resources, Arithmetic_Dialog_Resources, Move_Rows_Dialog_Resources, Search_Dialog_Resources})
        for (Dialog_Resource& resource : family()) all.push_back(std::move(resource));
    return all;
}

}  // namespace vntl
