// What files of pictures are called: after the data that they show.
#pragma once

#include <set>
#include <string>
#include <string_view>

#include "base/status.hpp"

namespace vntl {

class Profile_Store;

// The name of a file without directory and extension, nor the ending of a packed one; characters that some system takes in no name become
// '_'. Blank where nothing is left.
std::string Bare_Name(std::string_view file);

// What the picture of the shown rows is called: the file of the first of them, and how many rows of other files there are more.
// "filename" without rows.
std::string Picture_Name(const Profile_Store&);

// The names of pictures of many files, one each, by a pattern in which "%n" is the bare name of the file, "%e" its extension without the
// point and "%%" a percent sign. Two files of one name get pictures "a.pdf" and "a_2.pdf".
class Picture_Names {
public:
    explicit Picture_Names(std::string pattern) : pattern_(std::move(pattern)) {}

    // Fails on a percent sign that stands for nothing, and where several files would go to one name.
    Status Check(std::size_t files) const;
    std::string Of(std::string_view file);  // unlike all before

private:
    std::string pattern_;
    std::set<std::string> taken_;
};

}  // namespace vntl
