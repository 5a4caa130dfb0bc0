// Small text operations without a locale, see text.hpp.
#include "base/text.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace vntl {

namespace {

bool Is_Blank(char c) { return c == ' ' || c == '\t'; }
bool Is_Continuation(char c) { return (static_cast<unsigned char>(c) & 0xC0u) == 0x80u; }
char Upper_Letter(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
char Lower_Letter(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// Length in bytes of the well-formed UTF-8 sequence at the front of `bytes`, 0 when there is none. Overlong forms, surrogates
// and values above U+10FFFF are not well formed: the range of the second byte tells them.
std::size_t Sequence_Length(std::string_view bytes) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned lead = byte(0);
    if (lead < 0x80) return 1;
    const std::size_t length = lead >= 0xC2 && lead <= 0xDF ? 2 : lead >= 0xE0 && lead <= 0xEF ? 3 : lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
    if (length == 0 || bytes.size() < length) return 0;
    const unsigned lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (byte(1) < lowest || byte(1) > highest) return 0;
    for (std::size_t i = 2; i < length; ++i)
        if (!Is_Continuation(bytes[i])) return 0;
    return length;
}

bool Is_Utf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t length = Sequence_Length(bytes);
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

// Trimmed, and without a plus sign, which std::from_chars does not take.
std::string_view Number_Text(std::string_view text) {
    text = Trim(text);
    if (text.size() > 1 && text.front() == '+' && text[1] != '-' && text[1] != '+') text.remove_prefix(1);
    return text;
}

}  // namespace

std::string_view Trim_Left(std::string_view text) {
    while (!text.empty() && Is_Blank(text.front())) text.remove_prefix(1);
    return text;
}

std::string_view Trim_Right(std::string_view text) {
    while (!text.empty() && Is_Blank(text.back())) text.remove_suffix(1);
    return text;
}

std::string_view Trim(std::string_view text) { return Trim_Left(Trim_Right(text)); }

std::string Upper(std::string_view text) {
    std::string out(text);
    std::transform(out.begin(), out.end(), out.begin(), Upper_Letter);
    return out;
}

std::string Lower(std::string_view text) {
    std::string out(text);
    std::transform(out.begin(), out.end(), out.begin(), Lower_Letter);
    return out;
}

bool Contains(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

bool Equal_No_Case(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char p, char q) { return Upper_Letter(p) == Upper_Letter(q); });
}

std::string Replace_All(std::string_view text, std::string_view from, std::string_view to) {
    if (from.empty()) return std::string(text);
    std::string out;
    for (;;) {
        const std::size_t at = text.find(from);
        out += text.substr(0, at);
        if (at == std::string_view::npos) return out;
        out += to;
        text.remove_prefix(at + from.size());
    }
}

std::string_view Cut(std::string_view text, std::size_t width) {
    if (text.size() <= width) return text;
    std::size_t characters = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (Is_Continuation(text[i])) continue;
        if (characters == width) return text.substr(0, i);
        ++characters;
    }
    return text;
}

std::string To_Utf8(std::string_view bytes) {
    if (Is_Utf8(bytes)) return std::string(bytes);
    std::string out;
    out.reserve(bytes.size() * 2);
    for (const char c : bytes) {
        const auto code = static_cast<unsigned char>(c);
        if (code < 0x80) {
            out += c;
        } else {
            out += static_cast<char>(0xC0u | code >> 6);
            out += static_cast<char>(0x80u | (code & 0x3Fu));
        }
    }
    return out;
}

std::size_t Characters(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) { return !Is_Continuation(c); }));
}

std::string Elide_Middle(std::string_view text, std::size_t width) {
    const std::size_t length = Characters(text);
    if (length <= width) return std::string(text);
    if (width == 0) return {};
    const std::size_t tail = (width - 1) / 2;
    const std::string_view front = Cut(text, width - 1 - tail);
    const std::string_view before_tail = Cut(text, length - tail);
    return std::string(front) + "\xE2\x80\xA6" + std::string(text.substr(before_tail.size()));
}

bool Parse_Integer(std::string_view text, int& value) {
    const std::string_view number = Number_Text(text);
    int read = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), read);
    if (error != std::errc() || number.empty() || end != number.data() + number.size()) return false;
    value = read;
    return true;
}

bool Parse_Real(std::string_view text, double& value) {
    const std::string_view number = Number_Text(text);
    double read = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), read);
    if (error != std::errc() || number.empty() || end != number.data() + number.size() || !std::isfinite(read)) return false;
    value = read;
    return true;
}

}  // namespace vntl
