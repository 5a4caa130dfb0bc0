// The profile files of a directory, looked through one at a time to find the one worth keeping.
//
// Which of them can be read is found out once, when the directory is chosen; the one in hand is read anew whenever it is shown. It lives
// apart from the store, which changes by the hand-over alone.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "base/ask.hpp"
#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "patterns/profile.hpp"
#include "session/plot_state.hpp"

namespace vntl {

struct Open_Result;
struct Session;

inline constexpr std::size_t max_quick_files = 2000;
inline constexpr std::size_t quick_status_parts = 4;

struct Quick_File {
    std::string name;
    std::string temperature;  // as the status bar tells it
};

struct Quick_View {
    bool open = false;  // the window is there
    std::string directory;
    std::vector<Quick_File> files;  // that could be read, those of refinements first
    int index = 0;                  // of the one in hand, from 1; 0 without files

    Diffraction_Pattern_Type pattern;  // without points where the file cannot be read any more
    PRF_Info_Add_Type info;
    Plot_State plot;  // the whole range, the view, where the difference curve stands, and the rectangle that is being drawn
    std::array<std::string, quick_status_parts> status;  // file, which one of how many, x and y at the pointer

    int Count() const { return static_cast<int>(files.size()); }
    bool Holds_Profile() const { return pattern.npts > 0; }
};

// Reads every profile file of the directory, with a progress that the user may end, and takes the first one in hand. What was there before
// stays where the directory has none or too many, or the user ends it; false then.
bool Look_Through(Session&, Ask&, const std::string& directory);

// Takes that file in hand, in its whole range; fails where it cannot be read any more, and none is in hand then.
Status Show_Quick_File(Session&, int index);

// The numbers at a place of the page, none outside the view.
void Read_Out(Quick_View&, Plot_State::Place page);

// The view becomes another one, what the rectangle holds, or the whole range again. One that is too narrow leaves it.
void Show_View(Quick_View&, const View&);
void Zoom_To(Quick_View&, const Rubber_Shape& rectangle);
void Show_Whole(Quick_View&);

// The profile in hand becomes a row of the store, or takes the place of the refined profile there where the user says so. The user is told
// where the main window cannot take one.
Open_Result Hand_Over(Session&, Ask&);

}  // namespace vntl
