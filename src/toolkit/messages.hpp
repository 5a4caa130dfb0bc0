// The one queue of messages, and the application's hold on the windowing system.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vntl {

enum class Message_Kind {
    key_down = 1,     // value1 key code; ENTER in a panel: value2 its field
    command = 2,      // value1 command number
    push_button = 3,  // value1 field number; 1 default, 2 cancel
    mouse_down = 4,   // value1 button: 1 left, 2 middle, 3 right; x, y
    mouse_up = 5,
    mouse_move = 6,
    repaint = 7,
    resize = 8,
    close_request = 9,
    field_changed = 10,  // value1 field left, value2 field entered; of a panel, 0 when the user went elsewhere
    timer = 13,          // value1 timer number
    wheel = 20,          // value1 +1 up, -1 down; x, y
    files_dropped = 21,  // `files`
    // In the list of rows beside the picture:
    list_chosen = 30,   // `rows` are chosen now, and no others
    list_ticked = 31,   // value1 1 checked, 0 not: `rows`
    list_moved = 32,    // `rows` to the place before row value1; none: the chosen ones a place up (value2 -1) or down (1)
    list_renamed = 33,  // value1 row, `files` its new text
    list_pointed = 34,  // value1 row under the pointer, 0 none
    list_width = 35,    // value1 pixels of the desktop
};

// Key codes beyond the printable characters, which stand for themselves.
enum Key : int {
    key_escape = 27,
    key_enter = 13,
    key_tab = 9,
    key_backspace = 8,
    key_delete = 127,
    key_left = 1001,
    key_right,
    key_up,
    key_down_arrow,
    key_home,
    key_end,
    key_page_up,
    key_page_down,
    key_back,  // the keys and mouse buttons of a browser
    key_forward,
    key_f1 = 1101,
    key_control = 4096  // added to the code of a key that is pressed with Ctrl
};

// Code of a key by its name, "Escape", "Left", "F5", "a", "Ctrl+v"; 0 for an unknown one.
int Key_Code(std::string_view name);
std::string Key_Name(int code);  // empty for a code without a name

struct WIN_MESSAGE {
    int win = 0;  // window or dialog number, 0 the main window
    int value1 = 0, value2 = 0, value3 = 0;
    int value4 = 0;       // mouse: the pane of a window that is split, from 1
    double x = 0, y = 0;  // page units of the window, or of its pane
    std::vector<std::string> files = {};
    std::vector<int> rows = {};  // of a list, from 1
};

struct Message {
    Message_Kind kind;
    WIN_MESSAGE record;
};

inline constexpr int main_window = 0, quick_view_window = 40, editor_window = 41, generic_window = 42, model_window = 43,
                     viewer_window = 44, section_window = 45, omega_window = 46, zone_window = 47;

// Starts the toolkit; first call of the program. Without a display that answers pictures are drawn in memory where `offscreen` allows
// it, and it is false, with nothing started, elsewhere. argc and argv stay in use for the life of the program.
bool WInitialise(int& argc, char** argv, bool offscreen);
void WTerminate();

// Waits for the next message. Repaints, resizes and mouse moves of one window that wait in the queue are merged into one each; while
// `Count_Moves` is on for a window its moves are not, for a handler that counts them.
Message WMessage();
void Count_Moves(int window, bool on);

// The next message that is there already, without waiting: for a long work that lets its progress be seen.
std::optional<Message> WMessagePeek();
// The same for a loop that waits for another program.
std::optional<Message> WMessageInWait();

void Post_Message(Message);

// Called by WMessage when the queue is empty and nothing waits in the windowing system; true when it may have posted a message.
// A session script acts here. An empty function takes it away. `in_wait` is called by WMessageInWait in its place.
void Set_Idle_Source(std::function<bool()> idle, std::function<bool()> in_wait = {});

bool Display_Answers();      // else pictures are drawn in memory, and nobody sees a window
int InfoOpSystem(int what);  // 1: 4 Unix family, 6 Windows; 19: 14 Linux

void WMessageEnable(int window, Message_Kind kind, bool on);  // mouse_down, mouse_up, mouse_move, field_changed; off at first
// A timer of the window selected last; 0 milliseconds stop it. What the timer of that number has still to say is void in both cases.
void WMessageTimer(int milliseconds, int number, bool repeat);

struct Timer_View {
    int window, number, milliseconds;
    bool repeat;
};
std::vector<Timer_View> Running_Timers();  // by window and number

}  // namespace vntl
