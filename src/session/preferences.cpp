// Defaults of the preferences. The records carry their own; the styles of the rows follow a cycle of six colours.
#include "session/preferences.hpp"

namespace vntl {

void Set_Default_Preferences(Preferences& prefs) {
    constexpr std::array<Colour, 6> cycle = {WRGB(255, 0, 0), WRGB(0, 0, 255),   WRGB(255, 255, 0),
                                             WRGB(0, 255, 0), WRGB(255, 0, 255), WRGB(0, 255, 255)};
    prefs = Preferences();
    for (std::size_t slot = 0; slot < prefs.profile_styles.size(); ++slot) {
        ProfileStyle& style = prefs.profile_styles[slot];
        style.line_colour = style.marker_colour = cycle[slot % cycle.size()];
    }
}

}  // namespace vntl
