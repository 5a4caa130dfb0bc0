// Styles of pictures: settings files of the program's own format, behind whose lines stand those of a `Look`, a name and a value each.
//
// A style takes the place of all preferences of pictures; those of the window and of programs stay. "Default" is no file: the user's own
// preferences, which come back as they were.
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
    std::string name = std::string(default_style);
    std::shared_ptr<const Preferences> own;  // the user's, while another style is in force
};

const std::vector<std::string>& Style_Names();  // "Default", "Paper", "Screen", "Dark"

// The style in the place of `prefs` and `look`; names in any case, or a settings file. Fails, and changes nothing, on a name that is none
// and a file that cannot be read.
Status Load_Style(std::string_view name, Preferences& prefs, Look& look);

// Changes the session's style; the menu follows. The picture is to be drawn anew.
Status Choose_Style(Session&, std::string_view name);

// The lines behind those of the preferences, and back. Lines that are no name of a `Look` are passed over; a value that is none keeps the
// one before.
std::string Look_Text(const Look&);
void Read_Look_Text(Look&, std::string_view text);

}  // namespace vntl
