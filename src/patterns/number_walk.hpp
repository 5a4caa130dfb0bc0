// The numbers of one line, one after the other: "10.02  105, 10.2".
//
// What stands between them differs from format to format, and each says what it goes over; none of them lets a number run into letters.
#pragma once

#include <string_view>

#include "base/real_parse.hpp"

namespace vntl {

inline bool Is_Blank(char c) { return c == ' ' || c == '\t'; }
inline bool Is_Separator(char c) { return Is_Blank(c) || c == ','; }

class Number_Walk {
public:
    Number_Walk(const char* first, const char* last) : at_(first), end_(last) {}
    explicit Number_Walk(std::string_view line) : at_(line.data()), end_(line.data() + line.size()) {}

    bool At_End() const { return at_ == end_; }
    const char* At() const { return at_; }
    char Front() const { return *at_; }  // not at the end
    std::string_view Rest() const { return {at_, static_cast<std::size_t>(end_ - at_)}; }

    void Skip_Blanks() {
        while (at_ != end_ && Is_Blank(*at_)) ++at_;
    }
    void Skip_Separators() {
        while (at_ != end_ && Is_Separator(*at_)) ++at_;
    }
    // Goes behind the number that stands here, before a separator, the character `also` or the end. False for anything else; the walk stays
    // then, but `value` may be what a part of it says.
    template <class Real>
    bool Take(Real& value, char also = ',') {
        const char* const behind = Parse_Real_At(at_, end_, value);
        if (behind == at_ || (behind != end_ && !Is_Separator(*behind) && *behind != also)) return false;
        at_ = behind;
        return true;
    }

private:
    const char* at_;
    const char* end_;
};

}  // namespace vntl
