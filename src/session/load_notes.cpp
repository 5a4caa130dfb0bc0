#include "session/load_notes.hpp"

#include <string_view>

namespace vntl {

namespace {

void Add(Point_Loss& loss, int points, std::string text) {
    if (loss.profiles++ == 0) loss.text = std::move(text);
    loss.points += points;
}

std::string Left_Out(long long points, std::string_view where) {
    return std::to_string(points) +
           (points == 1 ? " point without a number was left out of " : " points without a number were left out of ") + std::string(where);
}

}  // namespace

void Load_Notes::Count(const std::string& name, int claimed, int read, int left) {
    if (left > 0) Add(left_out, left, Left_Out(left, name));
    if (claimed > read)
        Add(unwritten, claimed - read, name + ": " + std::to_string(read) + " of " + std::to_string(claimed) + " claimed points");
}

std::string Load_Notes::Notice() const {
    std::string text = left_out.profiles > 1 ? Left_Out(left_out.points, std::to_string(left_out.profiles) + " profiles") : left_out.text;
    if (!text.empty() && unwritten.profiles > 0) text += "; ";
    if (unwritten.profiles > 1)
        text += std::to_string(unwritten.profiles) + " profiles with fewer points than claimed, " + std::to_string(unwritten.points) +
                " in all";
    else
        text += unwritten.text;
    return text;
}

}  // namespace vntl
