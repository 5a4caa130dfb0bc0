// The list of patterns between session and window: what is in it, and the words by which scripts say what is done there.
#pragma once

#include <string>
#include <vector>

#include "base/status.hpp"
#include "base/topic.hpp"
#include "toolkit/messages.hpp"

namespace vntl {

struct Application;
struct Session;

// Opens and closes the list, and gives it rows, chosen ones and the one under the pointer where they are others than before. True where
// the picture has another width now. `rows_stay`: nothing can have changed of the rows themselves.
bool Carry_List(Application&, bool rows_stay = false);

// "tick 2 3 off" as the message that the window would send; fails on words that are none, and on rows that are not there.
Status List_Message(const Session&, const std::vector<std::string>& words, Message& message);
// And back: none for another message.
std::vector<std::string> List_Words(const Message& message);

Topic List_Topic(const Session&);

}  // namespace vntl
