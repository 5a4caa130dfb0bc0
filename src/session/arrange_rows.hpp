// Rows deleted, copied and put in another order. Each of them can be taken back.
#pragma once

#include <string>
#include <vector>

#include "base/status.hpp"

namespace vntl {

struct Session;

void Delete_Rows(Session&, const std::vector<int>& rows);  // with all of them the session is emptied, as by a new start

// To the end; fails where the table is full.
Status Copy_Row(Session&, int row);
inline Status Copy_First_Row(Session& session) { return Copy_Row(session, 1); }

// The order in which the keys of the rows rise, or fall: order[i] is the row that comes to place i + 1. Rows of one key stay as they are to
// one another, either way. Texts are compared as people read them, numbers in them by their value and without regard to case.
std::vector<int> Order_Of(const std::vector<float>& keys, bool descending);
std::vector<int> Order_Of(const std::vector<std::string>& keys, bool descending);

// No point is copied. Which rows are shown, and with which curves, stays with the places. Rows that wait for the mouse are let go.
void Sort_Rows(Session&, const std::vector<int>& order);

}  // namespace vntl
