// What the user does in the list of patterns, and the commands that act on the rows that are chosen there.
#pragma once

#include "commands/command.hpp"
#include "toolkit/dialog.hpp"
#include "toolkit/messages.hpp"

namespace vntl {

bool Is_Of_List(Message_Kind kind);
void Serve_List(Application&, const Message&);

void Toggle_List(Application&);
void Rename_Pattern(Application&);  // the only row that is chosen, or that there is
void Delete_Chosen(Application&);   // asked before only where they could not come back
void Show_Chosen(Application&);
void Hide_Chosen(Application&);
void Show_All_Patterns(Application&);

Dialog_Resource Rename_Dialog_Resource();

}  // namespace vntl
