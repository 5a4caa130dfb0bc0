// State of every menu and toolbar command: enabled, checked, label of the recent files; and what the window wants to hear and shows.
//
// The routines below write this state; the application alone carries it to the window.
#pragma once

#include <array>
#include <map>
#include <string>
#include <string_view>

#include "session/command_ids.hpp"
#include "session/plot_form.hpp"

namespace vntl {

struct Session;

struct Command_State {
    bool enabled = true;
    bool checked = false;
};

enum class Cursor_Shape { arrow = 0, cross = 3, hand = 6 };
constexpr std::string_view Told(Cursor_Shape cursor) {
    return cursor == Cursor_Shape::arrow ? "arrow" : cursor == Cursor_Shape::cross ? "cross" : "hand";
}

inline constexpr int status_parts = 5;
inline constexpr std::array<int, 5> recent_file_commands = {command::recent_1, command::recent_2, command::recent_3, command::recent_4,
                                                            command::recent_5};

// States before the first file: what needs a pattern or a running calculation is disabled.
std::map<int, Command_State> Commands_At_Start();

struct Interface_State {
    std::map<int, Command_State> commands = Commands_At_Start();  // commands without an entry are enabled and unchecked
    std::map<int, std::string> labels;                            // of commands whose label is not that of the menu
    std::array<int, 2> toolbars{30101, 0};                        // table on the first and on the second bar, 0 none
    bool want_mouse_down = false, want_mouse_up = false, want_mouse_move = false;
    bool count_moves = false;  // each move of the mouse means something by itself
    Cursor_Shape cursor = Cursor_Shape::arrow;
    std::array<std::string, status_parts> status{{"", "", "", "", "none"}};  // the last part shows the plot form
    unsigned note = 0,
             notes = 0;     // number of what part 1 tells was done, for some seconds or until the next command, 0 none; of the last one
    bool passing = false;   // part 1 tells of what just happened, until the next command or move of the mouse
    std::string hint;       // of the present mode, for the first part
    unsigned revision = 0;  // goes up with every change, so that the window knows when to look

    void Enable(int command, bool on);
    void Check(int command, bool on);
    bool Enabled(int command) const;
    bool Checked(int command) const;
    void Label(int command, std::string text);
    void Status_Text(int part, std::string text);  // part 1 to 5
    void Passing_Text(std::string text);           // part 1
    void Note(std::string text);                   // part 1; no move of the mouse takes its place
    void Hint(std::string text);                   // in part 1; blank: the hint that stands there goes, another text stays
};

// The one place that changes the plot form: stores it and shows it in part 5 of the status bar.
void Set_Plot_Type(Session&, Plot_Form form);

// Why a menu of which nothing can be chosen is so: what must come first.
std::string Why_Grey(const Session&);

// Each sets `plot_type`, `MoveMode` 0, toolbars, enabled commands, wanted messages and the cursor of a plot form.
void Set_Menu_Empty(Session&);
void Set_Menu_Single(Session&, bool clear);  // clear false: the fit model is cleared too
void Set_Menu_Graph(Session&, bool log);
void Set_Menu_Log_Of_One(Session&);  // the logarithmic form for the only row: the user has chosen that scale
void Set_Menu_Of_Scale(Session&);    // the form of a graph of the rows on the scale that the user has chosen
void Show_Scale(Session&);           // checks the scale of the graph in the menu
void Set_Menu_Contour(Session&);
void Set_Menu_Contour_Log(Session&);
void Set_Menu_3D(Session&);
void Set_Menu_3D_Surface(Session&);
void Set_Calculation_Mode(Session&, Click_Mode mode);  // the form becomes "calculation"

}  // namespace vntl
