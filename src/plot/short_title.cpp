#include "plot/short_title.hpp"

#include <vector>

#include "drawing/title_fit.hpp"

namespace vntl {

namespace {

constexpr std::string_view blank = " ";

bool Is_Digit(char c) { return c >= '0' && c <= '9'; }

// "1.594 A," is one word.
std::vector<std::string_view> Words_Of(std::string_view text) {
    std::vector<std::string_view> words;
    for (std::size_t at = text.find_first_not_of(blank); at < text.size(); at = text.find_first_not_of(blank, at)) {
        std::size_t end = std::min(text.find(blank, at), text.size());
        const std::size_t unit = text.find_first_not_of(blank, end);
        if (Is_Digit(text[at]) && Is_Digit(text[end - 1]) && unit < text.size()) end = std::min(text.find(blank, unit), text.size());
        words.push_back(text.substr(at, end - at));
        at = end;
    }
    return words;
}

}  // namespace

std::string Shortened_At_Words(std::string_view text, double room, const std::function<double(std::string_view)>& width) {
    if (width(text) <= room) return std::string(text);
    const std::vector<std::string_view> words = Words_Of(text);
    std::string front, back;
    const auto whole = [](const std::string& left, const std::string& right) { return left + "\xE2\x80\xA6" + right; };
    for (std::size_t left = 0, right = words.size(); left < right;) {
        const bool of_front = front.size() <= back.size();
        const std::string_view word = of_front ? words[left++] : words[--right];
        const std::string more = of_front ? front + std::string(word) + ' ' : ' ' + std::string(word) + back;
        if (width(of_front ? whole(more, back) : whole(front, more)) > room) break;
        (of_front ? front : back) = more;
    }
    return front.empty() && back.empty() ? Shortened(text, room, width) : whole(front, back);
}

}  // namespace vntl
