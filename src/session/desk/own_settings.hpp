// What is saved as the user's settings while a style stands before them.
#pragma once

namespace vntl {

struct Look;
struct Preferences;
struct Session;

// The session's preferences but for those that the style in force brought: these are the user's own, and so is the look. What was changed
// since the style was chosen is the user's too. Without a style what is in force.
void Own_Settings(const Session&, Preferences& prefs, Look& look);

// For windows with a white page or black marks, whatever the style: the session's preferences, and under a style whose texts white would
// swallow, the user's own.
Preferences Settings_On_White(const Session&);

}  // namespace vntl
