#include "toolkit/access_letters.hpp"

#include <cctype>
#include <set>

#include "base/text.hpp"

namespace vntl {

namespace {

char Lower_Letter(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }
bool Is_Letter(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; }

// A free letter of a label without one, 0 for none. Beginnings of words come first.
char Free_Letter(std::string_view label, const std::set<char>& taken) {
    for (const bool of_words : {true, false})
        for (std::size_t i = 0; i < label.size(); ++i) {
            const bool begins = i == 0 || !Is_Letter(label[i - 1]);
            if (Is_Letter(label[i]) && (begins || !of_words) && !taken.contains(Lower_Letter(label[i]))) return Lower_Letter(label[i]);
        }
    return 0;
}

}  // namespace

char Letter_Of(std::string_view label) {
    for (std::size_t i = 0; i + 1 < label.size(); ++i) {
        if (label[i] != '&') continue;
        if (label[i + 1] != '&') return Lower_Letter(label[i + 1]);
        ++i;
    }
    return 0;
}

std::string With_Letter(std::string_view text, char letter) {
    std::size_t at = std::string_view::npos;
    for (std::size_t i = 0; i < text.size() && letter != 0; ++i) {
        if (Lower_Letter(text[i]) != letter) continue;
        const bool begins = i == 0 || !Is_Letter(text[i - 1]);
        if (at == std::string_view::npos || begins) at = i;
        if (begins) break;
    }
    if (at == std::string_view::npos) return Replace_All(text, "&", "&&");
    return Replace_All(text.substr(0, at), "&", "&&") + "&" + Replace_All(text.substr(at), "&", "&&");
}

void Give_Access_Letters(std::vector<Menu_Entry>& entries) {
    std::set<char> taken;
    for (const Menu_Entry& entry : entries)
        if (const char letter = Letter_Of(entry.label); letter != 0) taken.insert(letter);
    for (Menu_Entry& entry : entries) {
        if (Letter_Of(entry.label) == 0)
            if (const char letter = Free_Letter(entry.label, taken); letter != 0) {
                taken.insert(letter);
                entry.label = With_Letter(entry.label, letter);
            }
        Give_Access_Letters(entry.entries);
    }
}

}  // namespace vntl
