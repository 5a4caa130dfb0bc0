// The one table of preferences: defaults and scripts walk it. A row tells the value's place in the settings file and its page in the
// dialog too.
//
// A new preference is a member of its record and a row here.
#pragma once

#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/status.hpp"
#include "session/preferences.hpp"

namespace vntl {

// Where a preference stands in the settings file: its line, and its place among the values of that line, both from 1; line 0 is none.
struct Settings_Place {
    int line = 0, item = 0;
};

// The page of the dialog on which a preference is set.
enum class Preference_Page { none, graph_2d, profiles_data, profile_prf, graph_3d, contour, surface_3d, quick_view, environment };

using Preference_Value = std::variant<int, bool, float, Colour, std::string>;
using Preference_Target = std::variant<int*, bool*, float*, Colour*, std::string*>;

struct Preference {
    std::string name;  // as `print prefs` gives it; of a slot of the styles "profile_styles/3/line_colour"
    std::function<Preference_Target(Preferences&)> target;
    Preference_Value standard;                         // the default; its alternative is the type
    int lo = 0, hi = std::numeric_limits<int>::max();  // of a whole number; of a text `hi` is its width in characters
    Settings_Place place = {}, second_place = {};      // of two places the later one wins when the file is read
    std::string_view edit = {};                        // descriptor of a value in the file: "i5", "i10", "l3", "a"
    Preference_Page page = Preference_Page::none;
    bool kept = false;  // decided at the start of the program: going back to the defaults leaves it
};

const std::vector<Preference>& Preference_Table();  // in the order in which scripts print them
const Preference* Find_Preference(std::string_view name);

std::optional<Colour> Colour_Of_Text(std::string_view text);  // as its one number, or as "red,green,blue"

Preference_Value Value_Of(const Preference& preference, const Preferences& prefs);

// Sets one by a text: a whole number of its range, a finite number, 0 or 1, false or true, a colour as its one number or as
// "red,green,blue", a text of one line that fits (bytes that are not valid UTF-8 as Latin-1). Fails, and changes nothing, on another text.
Status Set_Preference(Preferences& prefs, std::string_view name, std::string_view text);

}  // namespace vntl
