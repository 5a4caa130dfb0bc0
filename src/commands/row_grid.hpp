// The grid in which a dialog lists the rows of the store: a line a row, labelled by its number.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vntl {

struct Session;

// Lines and labels for every row of the store; the cells are the caller's.
void Label_Row_Grid(const Session&, int grid);

// A whole column of texts, made of each row's number.
void Put_Row_Texts(const Session&, int grid, int column, const std::function<std::string(int row)>& text);

// The columns that most of these dialogs have.
void Put_File_Names(const Session&, int grid, int column);
void Put_Kinds(const Session&, int grid, int column);
void Put_Titles(const Session&, int grid, int column);

bool Is_Refined_Kind(const Session&, int row);  // "PRF" or "MONO": many operations pass such rows by

// Checks of a column: off and not to be changed where `fixed` holds.
void Fix_Checks(const Session&, int grid, int column, const std::function<bool(int row)>& fixed);
void Set_Checks(const Session&, int grid, int column, bool on, const std::function<bool(int row)>& fixed = {});
void Check_Chosen(const Session&, int grid, int column);  // the rows that are chosen in the list of patterns, and no others
std::vector<int> Checked_Rows(int grid, int column);      // from 1

}  // namespace vntl
