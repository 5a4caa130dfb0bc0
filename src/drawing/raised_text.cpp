#include "drawing/raised_text.hpp"

#include <algorithm>
#include <array>
#include <numbers>

#include "drawing/font_table.hpp"

namespace vntl {

namespace {

constexpr std::string_view angstrom = "\xC3\x85", digits = "0123456789";
constexpr std::array<std::pair<std::string_view, char>, 12> raised_letters = {{{"\xE2\x81\xB0", '0'},
                                                                               {"\xC2\xB9", '1'},
                                                                               {"\xC2\xB2", '2'},
                                                                               {"\xC2\xB3", '3'},
                                                                               {"\xE2\x81\xB4", '4'},
                                                                               {"\xE2\x81\xB5", '5'},
                                                                               {"\xE2\x81\xB6", '6'},
                                                                               {"\xE2\x81\xB7", '7'},
                                                                               {"\xE2\x81\xB8", '8'},
                                                                               {"\xE2\x81\xB9", '9'},
                                                                               {"\xE2\x81\xBB", '-'},
                                                                               {"\xE2\x81\xBA", '+'}}};

bool Is_Digit(char c) { return digits.find(c) != std::string_view::npos; }

// Length of a sign and digits at the beginning; 0 where there is no digit.
std::size_t Signed_Number(std::string_view text) {
    const std::size_t sign = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
    const std::size_t end = std::min(text.find_first_not_of(digits, sign), text.size());
    return end > sign ? end : 0;
}

// What is raised at the beginning of a text, as plain letters, and how much of the text it is.
struct Raised_Part {
    std::string text;
    std::size_t length = 0;
};

Raised_Part Raised_At(std::string_view text) {
    Raised_Part part;
    if (text.starts_with('^')) {
        const std::string_view behind = text.substr(1);
        const std::size_t close = behind.starts_with('{') ? behind.find('}') : std::string_view::npos;
        if (close != std::string_view::npos && close > 1) return {std::string(behind.substr(1, close - 1)), close + 2};
        if (const std::size_t length = Signed_Number(behind); length > 0) return {std::string(behind.substr(0, length)), length + 1};
        return part;
    }
    for (bool found = true; found;) {
        found = false;
        for (const auto& [raised, plain] : raised_letters)
            if (text.substr(part.length).starts_with(raised)) part.text += plain, part.length += raised.size(), found = true;
    }
    return part;
}

Text_Style Style_Of(const Text_Piece& piece, Text_Style style) {
    if (!piece.raised) return style;
    style.width *= raised_scale;
    style.height *= raised_scale;
    return style;
}

}  // namespace

std::vector<Text_Piece> Pieces_Of(std::string_view text) {
    std::vector<Text_Piece> pieces;
    const auto add = [&pieces](std::string_view part, bool raised) {
        if (part.empty()) return;
        if (pieces.empty() || pieces.back().raised != raised) pieces.push_back({{}, raised});
        pieces.back().text += part;
    };
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view rest = text.substr(at);
        if (const Raised_Part part = Raised_At(rest); part.length > 0) {
            add(part.text, true);
            at += part.length;
        } else if (rest.starts_with(angstrom)) {
            const std::string_view behind = rest.substr(angstrom.size());
            const std::size_t power = !behind.empty() && !Is_Digit(behind[0]) ? Signed_Number(behind) : 0;
            add(angstrom, false);
            add(behind.substr(0, power), true);
            at += angstrom.size() + power;
        } else {
            add(rest.substr(0, 1), false);
            ++at;
        }
    }
    return pieces;
}

double Raised_Text_Width(const Device& device, std::string_view text, const Text_Style& style) {
    double width = 0;
    for (const Text_Piece& piece : Pieces_Of(text)) width += device.Text_Width(piece.text, Style_Of(piece, style));
    return width;
}

void Draw_Raised_Text(Device& device, Point at, std::string_view text, const Text_Style& style) {
    const std::vector<Text_Piece> pieces = Pieces_Of(text);
    if (pieces.size() == 1 && !pieces.front().raised) return device.Text(at, pieces.front().text, style);
    const double width = Raised_Text_Width(device, text, style), lift = raised_lift * Em_Of_Cell(style.width, style.height);
    double along = style.justify == Justify::left ? 0 : style.justify == Justify::right ? -width : -0.5 * width;
    const double turn = style.angle * std::numbers::pi / 180, c = std::cos(turn), s = std::sin(turn);
    for (const Text_Piece& piece : pieces) {
        Text_Style own = Style_Of(piece, style);
        own.justify = Justify::left;
        const double up = piece.raised ? lift : 0;
        device.Text({at.x + along * c - up * s, at.y + along * s + up * c}, piece.text, own);
        along += device.Text_Width(piece.text, own);
    }
}

double Raised_Top() { return raised_lift + raised_scale * cap_height; }

}  // namespace vntl
