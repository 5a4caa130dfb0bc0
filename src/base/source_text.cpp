#include "base/source_text.hpp"

#include <algorithm>
#include <array>
#include <unordered_map>

#include "base/text.hpp"
#include "base/text_file.hpp"

namespace vntl {

namespace {

// What ends a line: the usual three, the paragraph separator, and two code points without a character at which an editor begins a line too.
constexpr std::size_t usual_ends = 3;
constexpr std::array<std::string_view, 6> line_ends = {"\n", "\r\n", "\r", "\xE2\x80\xA9", "\xEF\xB7\x90", "\xEF\xB7\x91"};

// The end that stands at a place, its number in the table; none elsewhere.
std::size_t End_At(std::string_view bytes, std::size_t at) {
    constexpr std::string_view beginnings = "\n\r\xE2\xEF";
    if (beginnings.find(bytes[at]) == std::string_view::npos) return line_ends.size();
    for (const std::size_t end : {1u, 0u, 2u, 3u, 4u, 5u})  // CR LF before CR
        if (bytes.substr(at, line_ends[end].size()) == line_ends[end]) return end;
    return line_ends.size();
}

bool Is_Ascii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// The letters of a line in Latin-1; the line itself where that lacks one, or where its bytes would be read as UTF-8 again.
std::string In_Latin1(const std::string& line) {
    std::string narrow;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const auto c = static_cast<unsigned char>(line[i]);
        if (c < 0x80) {
            narrow += line[i];
            continue;
        }
        if ((c != 0xC2 && c != 0xC3) || i + 1 == line.size()) return line;
        narrow += static_cast<char>(((c & 0x03u) << 6) | (static_cast<unsigned char>(line[++i]) & 0x3Fu));
    }
    return !Is_Ascii(narrow) && To_Utf8(narrow) == narrow ? line : narrow;
}

// --- lines of two texts ------------------------------------------------------------------------------------------------------------

struct Pair {
    std::size_t old, now;
};
struct Stretch {
    Pair first, last;  // from `first` up to and without `last`
};

// Lines that stand once in both stretches, in the order of the new text.
std::vector<Pair> Single_Lines(const std::vector<std::string>& old, const std::vector<std::string>& now, const Stretch& s) {
    struct Places {
        Pair count{0, 0}, at{0, 0};
    };
    std::unordered_map<std::string_view, Places> places;
    for (std::size_t i = s.first.old; i < s.last.old; ++i) {
        Places& line = places[old[i]];
        ++line.count.old;
        line.at.old = i;
    }
    for (std::size_t i = s.first.now; i < s.last.now; ++i) {
        const auto line = places.find(now[i]);
        if (line == places.end()) continue;
        ++line->second.count.now;
        line->second.at.now = i;
    }
    std::vector<Pair> pairs;
    for (const auto& [line, place] : places)
        if (place.count.old == 1 && place.count.now == 1) pairs.push_back(place.at);
    std::sort(pairs.begin(), pairs.end(), [](const Pair& a, const Pair& b) { return a.now < b.now; });
    return pairs;
}

// The longest of its parts that rises in the old text too, by piles of cards (patience sorting).
std::vector<Pair> Longest_Rise(const std::vector<Pair>& pairs) {
    std::vector<std::size_t> piles, before(pairs.size(), no_line);  // the card on top of each pile; the one below each card's left
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        const auto pile = std::lower_bound(piles.begin(), piles.end(), pairs[i].old,
                                           [&](std::size_t top, std::size_t line) { return pairs[top].old < line; });
        if (pile != piles.begin()) before[i] = *(pile - 1);
        if (pile == piles.end())
            piles.push_back(i);
        else
            *pile = i;
    }
    std::vector<Pair> rise;
    for (std::size_t i = piles.empty() ? no_line : piles.back(); i != no_line; i = before[i]) rise.push_back(pairs[i]);
    std::reverse(rise.begin(), rise.end());
    return rise;
}

}  // namespace

// Equal lines at both ends of a stretch are kept. What is left between is parted at the lines that are single in it, and so on.
std::vector<std::size_t> Kept_Lines(const std::vector<std::string>& old, const std::vector<std::string>& now) {
    std::vector<std::size_t> kept(now.size(), no_line);
    std::vector<Stretch> open = {{{0, 0}, {old.size(), now.size()}}};
    while (!open.empty()) {
        Pair first = open.back().first, last = open.back().last;
        open.pop_back();
        const auto left = [&] { return first.old < last.old && first.now < last.now; };
        while (left() && old[first.old] == now[first.now]) kept[first.now++] = first.old++;
        while (left() && old[last.old - 1] == now[last.now - 1]) kept[--last.now] = --last.old;
        if (!left()) continue;
        const std::vector<Pair> anchors = Longest_Rise(Single_Lines(old, now, {first, last}));
        if (anchors.empty()) continue;
        for (const Pair& anchor : anchors) {
            open.push_back({first, anchor});
            first = anchor;
        }
        open.push_back({first, last});
    }
    return kept;
}

Source_Text::Source_Text(std::string bytes) : bytes_(std::move(bytes)) {
    lines_.clear();
    std::array<std::size_t, line_ends.size() + 1> counts{};
    std::size_t begin = bytes_.size() - Without_Mark(bytes_).size(), at = begin;
    while (at < bytes_.size()) {
        const std::size_t end = End_At(bytes_, at);
        if (end == line_ends.size()) {
            ++at;
            continue;
        }
        ++counts[end];
        lines_.push_back({begin, at - begin, line_ends[end].size()});
        begin = at += line_ends[end].size();
    }
    lines_.push_back({begin, bytes_.size() - begin, 0});
    usual_end_ = line_ends[static_cast<std::size_t>(std::max_element(counts.begin(), counts.begin() + usual_ends) - counts.begin())];
    std::size_t narrow = 0, wide = 0;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const Letters letters = Letters_Of(i, i + 1);
        narrow += letters.narrow;
        wide += letters.wide;
    }
    mostly_narrow_ = narrow > wide;
}

std::vector<std::string> Source_Text::Lines() const {
    std::vector<std::string> lines;
    lines.reserve(lines_.size());
    for (const Line& line : lines_) lines.push_back(To_Utf8(Text(line)));
    return lines;
}

Source_Text::Letters Source_Text::Letters_Of(std::size_t first, std::size_t last) const {
    Letters letters;
    for (std::size_t i = first; i < last; ++i) {
        const std::string_view text = Text(lines_[i]);
        if (Is_Ascii(text)) continue;
        (To_Utf8(text) == text ? letters.wide : letters.narrow) = true;
    }
    return letters;
}

// Whether what takes the place of these lines is written in Latin-1; `otherwise` where they have no letter that tells.
bool Source_Text::Narrow(std::size_t first, std::size_t last, bool otherwise) const {
    const Letters letters = Letters_Of(first, last);
    return letters.narrow || (!letters.wide && otherwise);
}

std::string Source_Text::Bytes_Of(const std::vector<std::string>& lines) const {
    const std::vector<std::size_t> kept = Kept_Lines(Lines(), lines);
    std::string bytes = bytes_.substr(0, lines_.front().begin);
    const auto put_end = [&](std::size_t line, std::string_view end) {
        if (line + 1 < lines.size()) bytes += end.empty() ? usual_end_ : end;
    };
    for (std::size_t i = 0, old = 0; i < lines.size();) {
        if (kept[i] != no_line) {
            old = kept[i];
            bytes += Text(lines_[old]);
            put_end(i++, End(old++));
            continue;
        }
        // Changed lines up to the next that is kept.
        const auto next =
            std::find_if(kept.begin() + static_cast<std::ptrdiff_t>(i), kept.end(), [](std::size_t k) { return k != no_line; });
        const std::size_t last = static_cast<std::size_t>(next - kept.begin()), old_last = next == kept.end() ? lines_.size() : *next;
        const bool all_narrow = Narrow(old, old_last, mostly_narrow_);
        for (; i < last; ++i) {
            const std::size_t place = i + 1 == last && old < old_last ? old_last - 1 : old + 1 < old_last ? old++ : no_line;
            const bool narrow = place == no_line ? all_narrow : Narrow(place, place + 1, all_narrow);
            bytes += narrow ? In_Latin1(lines[i]) : lines[i];
            put_end(i, place == no_line ? usual_end_ : End(place));
        }
        old = old_last;
    }
    return bytes;
}

}  // namespace vntl
