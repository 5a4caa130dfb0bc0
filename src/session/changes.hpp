// The one door for changes of rows and lists: who goes through it can be taken back.
//
//   Row_Change change(session, "shift" + Of_Profiles(rows), rows, part_x | part_y);
//   for (const int row : rows) Offset_Row(...);
//   change.Keep();
#pragma once

#include <string>
#include <vector>

#include "base/status.hpp"
#include "session/change_history.hpp"

namespace vntl {

struct Session;

class Row_Change {
public:
    // Keeps the named parts of the rows, and lists, x space and view. Rows that are added at the end need not be told.
    Row_Change(Session&, std::string text, const std::vector<int>& rows = {}, unsigned parts = no_parts);
    // A change that was not kept is taken back.
    ~Row_Change();
    Row_Change(const Row_Change&) = delete;
    Row_Change& operator=(const Row_Change&) = delete;

    // Rows leave the store; with the last of them the session is emptied, as by a new start. Row order[i] comes to place i + 1; flags
    // stay with the places, or go along. The change does one or the other, and keeps no points of other rows beside.
    void Remove(const std::vector<int>& rows);
    void Reorder(const std::vector<int>& order, bool flags_go = false);

    // Tells that the points of all rows stand in the opposite order now.
    void Turned() { record_.turned = true; }

    // The change is made: it enters the history, unless nothing has changed. One that holds more than the history may is not kept; it ends
    // the history, and the status bar says so. `with_previous`: the two go back together.
    // True where it did.
    bool Keep(bool with_previous = false);
    Status Keep(const Status& status);  // where that has not failed; else all goes back

private:
    void Tell_Rows_That_Came();

    Session& session_;
    Change_Record record_;
    int rows_before_;
    bool too_large_, open_ = true;
};

// " of 3 profiles", " of lab6.xye" for one.
std::string Of_Profiles(const Session&, const std::vector<int>& rows);
std::vector<int> All_Rows(const Session&);

// Takes the last change back, or makes the one that was taken back again: rows, lists, x space and view are as they were, bit for bit.
// The view stays where the plot has become logarithmic, or linear, meanwhile. False when there is none.
bool Undo_Change(Session&);
bool Redo_Change(Session&);

// Texts and states of the two commands.
void Show_Changes(Session&);

}  // namespace vntl
