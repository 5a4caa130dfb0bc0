// Styles of pictures: settings files of the program's own format, behind whose lines stand those of a `Look`, a name and a value each.
//
// A style takes the place of the preferences that say how pictures look; those of the window and of programs stay, and so does what says
// which things are shown: titles, excluded stretches, live reflections. "Default" is no file: the user's own preferences, which come back
// as they were. What is read from a settings file, or saved to one, is the user's own from then on.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "session/desk/look.hpp"

namespace vntl {

struct Preferences;
struct Session;

inline constexpr std::string_view default_style = "Default";

// The style in force, and what stands in its place when it goes.
struct Style_State {
    std::string name = std::string(default_style);  // of a file of the user's its path
    std::shared_ptr<const Preferences> own;         // the user's, while another style is in force
    Look own_look;                                  // with them
};

const std::vector<std::string>& Style_Names();  // "Default", "Paper", "Screen", "Dark"

// As `Style_Names` has it, or the path of a settings file (its name ends in ".set"), which is not looked at yet; empty for any other name.
std::string Style_Name(std::string_view name);

// The style in the place of `prefs` and `look`; names in any case, or a settings file. "Default" is that of a program without settings.
// Fails, and changes nothing, on a name that is none and a file that cannot be read; the message names it.
Status Load_Style(std::string_view name, Preferences& prefs, Look& look);

// What the session's preferences and look would be in that style: of "Default" the user's own.
Status Style_Of_Session(const Session&, std::string_view name, Preferences& prefs, Look& look);

// Changes the session's style, which the desk remembers; the menu follows. The picture is to be drawn anew.
Status Choose_Style(Session&, std::string_view name);
Status Use_Style(Session&, std::string_view name);  // for this run of the program alone

// The preferences and the look of the session came from a settings file as a whole: no style stands before them any more.
void Take_Settings(Session&);
// They were saved: they are what "Default" goes back to, as they will be after the next start.
void Settings_Saved(Session&);

// The lines behind those of the preferences, and back; none of a look that has nothing switched on. Lines that are no name of a `Look` are
// passed over; a value that is none keeps the one before.
std::string Look_Text(const Look&);
void Read_Look_Text(Look&, std::string_view text);

}  // namespace vntl
