#include "patterns/lab/lab_text.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/huge_pages.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/reader_tools.hpp"

namespace vntl {

namespace {

unsigned char Byte(char c) { return static_cast<unsigned char>(c); }
bool Is_Ascii(char c) { return Byte(c) < 0x80; }
bool Is_Pair_Lead(char c) { return (Byte(c) >= 0x81 && Byte(c) <= 0x9F) || (Byte(c) >= 0xE0 && Byte(c) <= 0xFC); }
bool Is_Pair_Trail(char c) { return Byte(c) >= 0x40 && Byte(c) <= 0xFC && Byte(c) != 0x7F; }

bool Is_Utf8(std::string_view bytes) { return To_Utf8(bytes) == bytes; }

// Letters of Latin-1 stand among others; half-width kana come in rows, and the bytes from 80 to 9F are no letters at all.
bool Is_Latin1(std::string_view bytes) {
    bool before = false;
    for (const char c : bytes) {
        if (!Is_Ascii(c) && (before || Byte(c) < 0xA0)) return false;
        before = !Is_Ascii(c);
    }
    return true;
}

// The second byte of a character may look like "[" or "|": it goes with the first one.
std::string Without_Shift_Jis(std::string_view bytes) {
    std::string kept;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (Is_Ascii(bytes[i]))
            kept += bytes[i];
        else if (Is_Pair_Lead(bytes[i]) && i + 1 < bytes.size() && Is_Pair_Trail(bytes[i + 1]))
            ++i;
    }
    return std::string(Trim(kept));
}

}  // namespace

Status Refuse_Wide_Text(std::string_view text) {
    const bool marked = text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
    const bool wide = marked || (text.size() > 3 && ((text[0] == '\0' && text[2] == '\0') || (text[1] == '\0' && text[3] == '\0')));
    return wide ? Status::Fail("This is a text in UTF-16, which no reader takes: save it as plain text (UTF-8)") : Status::Done();
}

std::string_view Filled_Part(std::string_view bytes) {
    using namespace std::string_view_literals;
    bytes = Without_Mark(bytes);
    return bytes.substr(0, bytes.find_last_not_of("\0\x1a"sv) + 1);
}

std::string Readable(std::string_view bytes) {
    if (Is_Utf8(bytes)) return std::string(bytes);
    return Is_Latin1(bytes) ? To_Utf8(bytes) : Without_Shift_Jis(bytes);
}

std::string English_Part(std::string_view bytes) {
    const std::size_t bar = bytes.rfind('|');
    return Readable(bar == std::string_view::npos ? bytes : bytes.substr(bar + 1));
}

std::string Without_Idle_Zeros(std::string_view text) {
    double value = 0;
    if (!Contains(text, ".") || text.find_first_not_of("+-.0123456789") != std::string_view::npos || !Parse_Real(text, value))
        return std::string(text);
    text = text.substr(0, text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.remove_suffix(1);
    return std::string(text);
}

float Time_A_Step(double speed, std::string_view unit, double step) {
    if (!(speed > 0)) return 0;
    const std::string small = Lower(unit);
    double time = speed;
    if (Contains(small, "deg") && Contains(small, "min"))
        time = 60 * std::fabs(step) / speed;
    else if (Contains(small, "deg"))
        time = std::fabs(step) / speed;
    return std::isfinite(time) && time < 1e12 ? static_cast<float>(time) : 0;
}

void Set_Steps(Diffraction_Pattern_Type& p) {
    constexpr double allowed = 0.05;    // of a step, for digits that were cut
    constexpr double told_step = 1e-3;  // of the mean step, by which a told one may differ from it
    const std::size_t n = p.x.size();
    if (n == 0) return;
    p.xmin = p.x.front(), p.xmax = p.x.back();
    const double first = p.xmin, last = p.xmax;
    const double step = n > 1 ? (last - first) / static_cast<double>(n - 1) : 0;
    if (!(std::fabs(p.step - step) <= told_step * std::fabs(step))) p.step = static_cast<float>(step);
    const double most = allowed * std::fabs(step) + 2e-7 * std::max(std::fabs(first), std::fabs(last));
    p.constant_step = true;
    for (std::size_t i = 0; i < n && p.constant_step; ++i)
        p.constant_step = std::fabs(p.x[i] - (first + static_cast<double>(i) * step)) <= most;
}

void Set_Lab_Variances(Diffraction_Pattern_Type& p) {
    const float time = p.per_second && p.count_time > 0 ? p.count_time : 1.0f;
    for (std::size_t i = 0; i < p.y.size(); ++i) p.sigma[i] = std::fabs(p.y[i]) / time;
}

void Number_Ranges(std::vector<Diffraction_Pattern_Type>& patterns, std::size_t ranges_in_file) {
    for (Diffraction_Pattern_Type& p : patterns) {
        if (ranges_in_file > 1)
            p.title = Numbered(p.title, static_cast<std::size_t>(p.bank));
        else
            p.bank = 0;
    }
}

Status Take_Points(Diffraction_Pattern_Type& p, std::vector<float>&& y, std::vector<float>&& x) {
    if (y.empty() || static_cast<double>(y.size()) > most_claimed) return Status::Fail(no_points_told);
    p.y = std::move(y), p.x = std::move(x);
    p.y.shrink_to_fit(), p.x.shrink_to_fit();
    p.npts = static_cast<std::int32_t>(p.y.size());
    if (p.x.empty()) Assign_Many(p.x, p.y.size(), 0.0f);
    Assign_Many(p.sigma, p.y.size(), 0.0f);
    p.has_y = p.has_sigma = p.al_x = p.al_y = p.al_sigma = true;
    return Status::Done();
}

bool Is_Last_And_Open(std::string_view text, std::string_view part) { return part.data() + part.size() == text.data() + text.size(); }

}  // namespace vntl
