#include "patterns/xrdml/xrdml_lists.hpp"

#include <algorithm>
#include <cmath>
#include <string>

#include "base/digit_word.hpp"
#include "base/huge_pages.hpp"
#include "base/real_parse.hpp"
#include "patterns/told_values.hpp"
#include "patterns/xrdml/xml_tags.hpp"

namespace vntl {

namespace {

// Whole numbers of up to seven digits with one blank behind each, as nearly all of a list are; up to the first item of another kind.
void Take_Counts(const char*& at, const char* end, std::vector<float>& values) {
    if (!has_digit_words) return;
    while (end - at > word_digits) {
        const std::uint64_t word = Load_Word(at, at + word_digits) ^ zero_digits;
        const int digits = Bytes_Before(No_Digits(word));
        if (digits == 0 || digits == word_digits || at[digits] != ' ') return;
        values.push_back(static_cast<float>(Eight_Digits(word << (64 - 8 * digits))));
        at += digits + 1;
    }
}

// Start and end of an axis, or the list of its positions.
Status Read_Positions(const Xrdml_Axis& axis, Xrdml_Lists& lists) {
    lists.positions.clear();
    if (axis.list.given) {
        if (!Read_Xrdml_List(axis.list.text, lists.positions) || lists.positions.empty()) return Xrdml_Ended_At("the list of positions");
        lists.start = lists.positions.front(), lists.end = lists.positions.back();
        return Status::Done();
    }
    lists.start = lists.end = 0;
    if (!axis.start.given || !Told_Real(axis.start.text, lists.start)) return Xrdml_Ended_At("the start position");
    if (!axis.end.given || !Told_Real(axis.end.text, lists.end)) return Xrdml_Ended_At("the end position");
    return Status::Done();
}

// As many as there are counts; where counts are missing, more of them tell how many there should be.
bool Fits(Xrdml_Lists& lists, std::size_t size) {
    if (!lists.whole && size > lists.counts.size()) lists.planned = std::max(lists.planned, size);
    return size == lists.counts.size() || (!lists.whole && size > lists.counts.size());
}

bool Read_Factors(const Xrdml_Scan& scan, Xrdml_Lists& lists) {
    lists.factors.clear();
    if (!scan.factors.given) return true;
    const bool good = Read_Xrdml_List(scan.factors.text, lists.factors);
    if (good && (lists.factors.size() < 2 || Fits(lists, lists.factors.size()))) return true;
    lists.factors.clear();
    return lists.corrected;  // then they would have told how sure the counts are, no more
}

void Read_Times(const Xrdml_Scan& scan, Xrdml_Lists& lists, std::vector<float>& times) {
    lists.time = 0;
    lists.times_differ = false;
    if (scan.time.given && Told_Real(scan.time.text, lists.time) && lists.time > 0) return;
    lists.time = 0;
    if (!scan.times.given || !Read_Xrdml_List(scan.times.text, times) || times.empty()) return;
    if (times.size() > 1) Fits(lists, times.size());
    const auto [low, high] = std::minmax_element(times.begin(), times.end());
    if (!(*low > 0)) return;
    lists.times_differ = *high > *low * 1.000001f;
    double sum = 0;
    for (const float time : times) sum += time;
    lists.time = lists.times_differ ? sum / static_cast<double>(times.size()) : times.front();
}

}  // namespace

Status Xrdml_Ended_At(std::string_view sought) {
    return Status::Fail(" Error reading a profile XRDML-DATA file: end of file while trying to read " + std::string(sought));
}

bool Read_Xrdml_List(std::string_view text, std::vector<float>& values) {
    values.clear();
    const auto gaps = std::count_if(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) <= ' '; });
    Reserve_Many(values, static_cast<std::size_t>(gaps) + 1);
    const char* at = text.data();
    const char* const end = at + text.size();
    for (;;) {
        Take_Counts(at, end, values);
        while (at != end && Is_Xml_Space(*at)) ++at;
        if (at == end) return true;
        float value = 0;
        const char* const first = at;
        at = Parse_Float(first, end, value);
        if (at == first || (at != end && !Is_Xml_Space(*at)) || !(Is_Sound(value) || std::isnan(value))) return false;
        values.push_back(value);
    }
}

Status Read_Xrdml_Lists(const Xrdml_Scan& scan, bool intensities, Xrdml_Lists& lists) {
    const Xml_Found& counts = intensities ? scan.intensities : scan.counts;
    const Xrdml_Axis* const axis = scan.Scanned();
    lists.corrected = intensities;
    lists.whole = !counts.cut && !scan.Aborted();
    lists.planned = 0;
    if (axis == nullptr) return Xrdml_Ended_At("the positions of the axis 2Theta");
    lists.axis = axis->name;
    if (Status status = Read_Positions(*axis, lists); status.failed) return status;
    if (!Read_Xrdml_List(counts.text, lists.counts)) return Xrdml_Ended_At("the intensities");
    if (lists.counts.empty()) return Status::Fail(" Error reading a profile XRDML-DATA file: npts <= 0 !!! ");
    if (!lists.positions.empty() && !Fits(lists, lists.positions.size())) return Xrdml_Ended_At("the list of positions");
    if (!Read_Factors(scan, lists)) return Xrdml_Ended_At("the attenuation factors");
    std::vector<float> further;
    Read_Times(scan, lists, further);
    lists.divergence = scan.divergence.given && Read_Xrdml_List(scan.divergence.text, further) &&
                       std::any_of(further.begin(), further.end(), [](float f) { return std::fabs(f - 1) > 1e-6f; });
    return Status::Done();
}

}  // namespace vntl
