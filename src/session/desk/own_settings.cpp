#include "session/desk/own_settings.hpp"

#include "base/contrast.hpp"
#include "session/preference_table.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

// `brought` is as the session would be had nothing been changed in its style.
void Keep_Changes(const Preferences& present, const Preferences& brought, Preferences& own) {
    for (const Preference& preference : Preference_Table()) {
        const Preference_Value value = Value_Of(preference, present);
        if (value == Value_Of(preference, brought)) continue;
        std::visit([&](auto* target) { *target = std::get<std::remove_pointer_t<decltype(target)>>(value); }, preference.target(own));
    }
}

}  // namespace

void Own_Settings(const Session& session, Preferences& prefs, Look& look) {
    Preferences own, brought = session.prefs;
    Look own_look, brought_look;
    (void)Style_Of_Session(session, default_style, own, own_look);
    // A file that is gone by now cannot tell what was changed in its style.
    if (session.style.own != nullptr && Load_Style(session.style.name, brought, brought_look).ok())
        Keep_Changes(session.prefs, brought, own);
    prefs = std::move(own);
    look = own_look;
}

Preferences Settings_On_White(const Session& session) {
    constexpr double least_contrast = 4.5;
    constexpr Colour white = WRGB(255, 255, 255);
    Preferences prefs = session.prefs;
    Look look;
    if (session.style.own != nullptr && Contrast(prefs.graph2d.title.colour, white) < least_contrast) Own_Settings(session, prefs, look);
    return prefs;
}

}  // namespace vntl
