// Lists of files between disk and store: the files that stand in the place of a list, and what a list of the rows holds.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "base/ask.hpp"
#include "base/status.hpp"

namespace vntl {

struct Configuration;
struct Session;
class Profile_Store;

// A list whose files are among those of a command: paths[first] to paths[behind - 1].
struct Opened_List {
    std::string path, title, comment;
    int first_left_out = 0;  // line from which on there were too many names, 0 for none
    std::size_t first = 0, behind = 0;

    bool Holds(std::size_t file) const { return first <= file && file < behind; }
};

// The files of one command in their order.
struct Files_To_Open {
    std::vector<std::string> paths;
    std::vector<Opened_List> lists = {};     // in the order of their files
    std::vector<Message_Box> refusals = {};  // of lists that cannot be read
    bool replaces = false;                   // the rows that are there leave when the first new one is ready
};

// Puts the files of a list behind the others, or why it cannot be read.
void Take_List(const Configuration&, const std::string& name, Files_To_Open& files);

// The files that the names stand for: those of a list in its place.
Files_To_Open Files_Behind(const Configuration&, const std::vector<std::string>& names);

// The kind and the title that a list gives to the rows behind `rows_before`.
void Settle_Listed_Rows(Profile_Store&, const Opened_List& list, int rows_before);

// The text of a list of the measured patterns; the banks of one file name it once.
Status List_Of_Rows(const Session&, std::string& text);

}  // namespace vntl
