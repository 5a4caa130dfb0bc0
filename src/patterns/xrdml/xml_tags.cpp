#include "patterns/xrdml/xml_tags.hpp"

#include <charconv>
#include <cstdint>
#include <cstring>

#include "base/text.hpp"

namespace vntl {

namespace {

void Add_Character(std::string& text, std::uint32_t code) {
    const auto byte = [&text](std::uint32_t value) { text += static_cast<char>(value); };
    const auto further = [&byte, code](unsigned shift) { byte(0x80u | (code >> shift & 0x3Fu)); };
    if (code < 0x80) {
        byte(code);
    } else if (code < 0x800) {
        byte(0xC0u | code >> 6), further(0);
    } else if (code < 0x10000) {
        byte(0xE0u | code >> 12), further(6), further(0);
    } else {
        byte(0xF0u | code >> 18), further(12), further(6), further(0);
    }
}

constexpr std::uint32_t no_character = 0xFFFD, first_high = 0xD800, first_low = 0xDC00, behind_low = 0xE000, highest = 0x10FFFF;

// A text of two bytes a character: 1 with the low byte first, 2 with the high one, 0 for any other text.
int Wide_Order(std::string_view text) {
    if (text.starts_with("\xFF\xFE") || (text.size() > 3 && text[0] == '<' && text[1] == 0 && text[3] == 0)) return 1;
    if (text.starts_with("\xFE\xFF") || (text.size() > 3 && text[0] == 0 && text[1] == '<' && text[2] == 0)) return 2;
    return 0;
}

std::string From_Wide(std::string_view text, bool low_first) {
    std::string narrow;
    narrow.reserve(text.size() / 2);
    const auto unit = [text, low_first](std::size_t i) {
        const std::uint32_t first = static_cast<unsigned char>(text[i]), second = static_cast<unsigned char>(text[i + 1]);
        return low_first ? second << 8 | first : first << 8 | second;
    };
    std::size_t i = text[0] == '<' || text[0] == 0 ? 0 : 2;  // behind the mark
    for (; i + 1 < text.size(); i += 2) {
        std::uint32_t code = unit(i);
        if (code >= first_high && code < behind_low) {
            const std::uint32_t low = code < first_low && i + 3 < text.size() ? unit(i + 2) : 0;
            const bool pair = low >= first_low && low < behind_low;
            code = pair ? 0x10000 + ((code - first_high) << 10) + (low - first_low) : no_character;
            if (pair) i += 2;
        }
        Add_Character(narrow, code);
    }
    return narrow;
}

// What stands between `at` and the closing words, and goes behind those; up to the end where they are missing.
std::string_view Taken_Up_To(std::string_view text, std::size_t& at, std::string_view closing) {
    const std::size_t close = text.find(closing, at);
    const std::string_view taken = text.substr(at, close == std::string_view::npos ? close : close - at);
    at = close == std::string_view::npos ? text.size() : close + closing.size();
    return taken;
}

std::string Without_Comments(std::string_view text) {
    constexpr std::string_view comment = "<!--", data = "<![CDATA[";
    std::string plain;
    plain.reserve(text.size());
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t open = text.find("<!", at);
        plain += text.substr(at, open == std::string_view::npos ? open : open - at);
        if (open == std::string_view::npos) break;
        const std::string_view rest = text.substr(open);
        if (rest.starts_with(comment)) {
            at = open + comment.size();
            Taken_Up_To(text, at, "-->");
            plain += ' ';
        } else if (rest.starts_with(data)) {
            at = open + data.size();
            for (const char c : Taken_Up_To(text, at, "]]>"))
                if (c == '<')
                    plain += "&lt;";
                else if (c == '&')
                    plain += "&amp;";
                else
                    plain += c;
        } else {
            at = open + 2;
            plain += "<!";
        }
    }
    return plain;
}

// The character that stands for "&name;"; 0 for a name that is not known.
std::uint32_t Named_Character(std::string_view name) {
    struct Row {
        std::string_view name;
        char character;
    };
    for (const Row& row : {Row{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}})
        if (row.name == name) return static_cast<unsigned char>(row.character);
    if (name.size() < 2 || name[0] != '#') return 0;
    const bool hexadecimal = name[1] == 'x';
    name.remove_prefix(hexadecimal ? 2 : 1);
    std::uint32_t code = 0;
    const auto read = std::from_chars(name.data(), name.data() + name.size(), code, hexadecimal ? 16 : 10);
    if (read.ec != std::errc() || read.ptr != name.data() + name.size() || code > highest) return 0;
    return code >= first_high && code < behind_low ? no_character : code;
}

}  // namespace

std::string_view Plain_Xml(std::string_view text, std::string& copy) {
    if (const int order = Wide_Order(text); order != 0) {
        copy = From_Wide(text, order == 1);
        text = copy;
    }
    if (!Contains(text, "<!--") && !Contains(text, "<![CDATA[")) return text;
    copy = Without_Comments(text);
    return copy;
}

std::string Xml_Words(std::string_view content) {
    constexpr std::size_t longest_name = 10;
    const std::string text = To_Utf8(Trim(content));
    std::string words;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        const std::size_t end = c == '&' ? text.find(';', at) : std::string::npos;
        const bool named = end != std::string::npos && end - at <= longest_name;
        const std::uint32_t code = named ? Named_Character(std::string_view(text).substr(at + 1, end - at - 1)) : 0;
        if (code != 0) {
            Add_Character(words, code);
            at = end;
        } else if (!Is_Xml_Space(c)) {
            words += c;
        } else if (!words.empty() && words.back() != ' ') {
            words += ' ';
        }
    }
    return std::string(Trim(words));
}

const char* Tag_Walk::Find(char c, const char* from) const {
    const void* at = std::memchr(from, c, static_cast<std::size_t>(end_ - from));
    return at != nullptr ? static_cast<const char*>(at) : end_;
}

// A value in quotes may hold a ">"; where quotes are not closed before the next tag they are none.
const char* Tag_Walk::Tag_End(const char* open) const {
    char quote = 0;
    for (const char* at = open + 1; at != end_ && *at != '<'; ++at) {
        if (quote != 0) {
            if (*at == quote) quote = 0;
        } else if (*at == '"' || *at == '\'') {
            quote = *at;
        } else if (*at == '>') {
            return at;
        }
    }
    return Find('>', open);
}

bool Tag_Walk::Next() {
    const char* const open = Find('<', next_);
    const char* const close = open == end_ ? end_ : Tag_End(open);
    if (close == end_) return false;
    closing_ = open[1] == '/';
    const char* first = open + (closing_ ? 2 : 1);
    const char* last = first;
    while (last != close && !Is_Xml_Space(*last) && *last != '/') ++last;
    if (const void* colon = std::memchr(first, ':', static_cast<std::size_t>(last - first))) first = static_cast<const char*>(colon) + 1;
    name_ = {first, static_cast<std::size_t>(last - first)};
    attributes_ = {last, static_cast<std::size_t>(close - last)};
    next_ = close + 1;
    return true;
}

std::string_view Tag_Walk::Value(std::string_view attribute) const {
    for (std::size_t at = attributes_.find(attribute); at != std::string_view::npos; at = attributes_.find(attribute, at + 1)) {
        if (at == 0 || !Is_Xml_Space(attributes_[at - 1])) continue;
        std::string_view rest = attributes_.substr(at + attribute.size());
        const auto skip_spaces = [&rest] {
            while (!rest.empty() && Is_Xml_Space(rest.front())) rest.remove_prefix(1);
        };
        skip_spaces();
        if (!rest.starts_with('=')) continue;
        rest.remove_prefix(1);
        skip_spaces();
        if (rest.empty() || (rest[0] != '"' && rest[0] != '\'')) continue;
        if (const std::size_t end = rest.find(rest[0], 1); end != std::string_view::npos) return rest.substr(1, end - 1);
    }
    return {};
}

bool Tag_Walk::Content(std::string_view& content) {
    const std::string_view name = name_;
    const char* const first = next_;
    const char* const last = Find('<', first);
    Tag_Walk ahead = *this;
    if (last == end_ || Empty() || !ahead.Next() || !ahead.closing_ || ahead.name_ != name) return false;
    *this = ahead;
    content = {first, static_cast<std::size_t>(last - first)};
    return true;
}

bool Tag_Walk::Cut_Content(std::string_view& content) const {
    Tag_Walk ahead = *this;
    if (Empty() || ahead.Next()) return false;
    const char* const open = Find('<', next_);
    const char* last = Find('\0', next_);
    if (open < last) {
        last = open;
    } else {
        while (last != next_ && !Is_Xml_Space(last[-1])) --last;
    }
    content = {next_, static_cast<std::size_t>(last - next_)};
    return true;
}

}  // namespace vntl
