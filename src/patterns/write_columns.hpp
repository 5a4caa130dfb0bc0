// What the writers of pattern files share: numbers in columns, and texts that stay on their line.
#pragma once

#include <string>
#include <string_view>

#include "base/edit_format.hpp"

namespace vntl {

// Numbers in `width` columns with `digits` behind the point. One that does not fit is written with an exponent, so that it can be read
// again.
class Number_Column {
public:
    // `apart`: a number that leaves no blank in front of it does not fit either, since it would touch the one before it.
    Number_Column(int width, int digits, bool apart = false);
    static Number_Column With_Exponent(int width) { return {width, no_fixed_point, false}; }

    void Put(std::string& out, float value) const;
    std::string Text(float value) const;

private:
    static constexpr int no_fixed_point = -1;

    Edit_Format fixed_, exponent_;
    bool apart_;
};

// What a reader takes the text of a number for.
float Read_Back(std::string_view text);

// The text on one line: what ends a line or moves on it becomes a blank. And the same without outer blanks.
std::string Without_Line_Ends(std::string_view text);
std::string On_One_Line(std::string_view text);

}  // namespace vntl
