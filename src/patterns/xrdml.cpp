#include "patterns/xrdml.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "base/huge_pages.hpp"
#include "base/real_parse.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr std::string_view no_points = " Error reading a profile XRDML-DATA file: npts <= 0 !!! ";

Status Ended_At(std::string_view sought) {
    return Status::Fail(" Error reading a profile XRDML-DATA file: end of file while trying to read " + std::string(sought));
}

// The text with its comments blanked, where it has any: what stands in them is no part of the file. One that is not closed reaches to the
// end.
std::string_view Without_Comments(std::string_view text, std::string& copy) {
    constexpr std::string_view opening = "<!--", closing = "-->";
    std::size_t open = text.find(opening);
    if (open == std::string_view::npos) return text;
    copy = text;
    while (open != std::string::npos) {
        const std::size_t close = copy.find(closing, open + opening.size());
        const std::size_t end = close == std::string::npos ? copy.size() : close + closing.size();
        std::fill(copy.begin() + static_cast<std::ptrdiff_t>(open), copy.begin() + static_cast<std::ptrdiff_t>(end), ' ');
        open = copy.find(opening, end);
    }
    return copy;
}

bool Is_Space(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// Walks over the tags of a text: their names without prefix, with their attributes and the text up to the next tag. The text stays where it
// is: a list of millions of counts is looked at once. A parser of the whole language alone takes 8.3 ms for 7.2 MB, where this takes 0.4
// and the whole file 21, and refuses files that were cut or name no encoding.
class Tag_Walk {
public:
    explicit Tag_Walk(std::string_view text) : next_(text.data()), end_(text.data() + text.size()) {}

    bool Next() {
        const char* const open = Find('<', next_);
        const char* const close = open == end_ ? end_ : Find('>', open);
        if (close == end_) return false;
        closing_ = open[1] == '/';
        const char* first = open + (closing_ ? 2 : 1);
        const char* last = first;
        while (last != close && !Is_Space(*last) && *last != '/') ++last;
        if (const void* colon = std::memchr(first, ':', static_cast<std::size_t>(last - first)))
            first = static_cast<const char*>(colon) + 1;
        name_ = {first, static_cast<std::size_t>(last - first)};
        attributes_ = {last, static_cast<std::size_t>(close - last)};
        next_ = close + 1;
        return true;
    }
    bool Opens(std::string_view name) const { return !closing_ && name_ == name; }
    bool Closes(std::string_view name) const { return closing_ && name_ == name; }
    // What stands in quotes behind the attribute, blank where it is not there.
    std::string_view Value(std::string_view attribute) const {
        for (std::size_t at = attributes_.find(attribute); at != std::string_view::npos; at = attributes_.find(attribute, at + 1)) {
            const std::string_view rest = attributes_.substr(at + attribute.size());
            if (at == 0 || !Is_Space(attributes_[at - 1]) || rest.size() < 3 || rest[0] != '=' || (rest[1] != '"' && rest[1] != '\''))
                continue;
            if (const std::size_t end = rest.find(rest[1], 2); end != std::string_view::npos) return rest.substr(2, end - 2);
        }
        return {};
    }
    bool Has(std::string_view attribute, std::string_view value) const { return Value(attribute) == value; }
    // What stands between this tag and the one that closes it; false when something else comes in between.
    bool Content(std::string_view& content) {
        const std::string_view name = name_;
        const char* const first = next_;
        const char* const last = Find('<', first);
        Tag_Walk ahead = *this;
        if (last == end_ || attributes_.ends_with('/') || !ahead.Next() || !ahead.Closes(name)) return false;
        *this = ahead;
        content = {first, static_cast<std::size_t>(last - first)};
        return true;
    }

private:
    const char* Find(char c, const char* from) const {
        const void* at = std::memchr(from, c, static_cast<std::size_t>(end_ - from));
        return at != nullptr ? static_cast<const char*>(at) : end_;
    }

    const char* next_;
    const char* end_;
    bool closing_ = false;
    std::string_view name_, attributes_;
};

// A text that was found, though it may be empty.
struct Found {
    bool given = false;
    std::string_view text;

    void Take(Tag_Walk& tags) {
        if (!given) given = tags.Content(text);
    }
};

constexpr std::string_view two_theta = "2Theta";

// Where an angle of the diffractometer stood in a scan.
struct Axis {
    std::string_view name;
    Found start, end, list, common;

    bool Moves() const {
        float travel = 0;
        return Travel(travel) && std::fabs(travel) > least_travel;
    }
    // It was told where the angle stood, and it stood there all the time.
    bool Stands() const {
        float travel = 0;
        return Travel(travel) ? std::fabs(travel) <= least_travel : common.given;
    }
    std::string_view Place() const { return common.given ? common.text : start.text; }

private:
    static constexpr float least_travel = 1e-4f;  // degrees; less is play

    bool Travel(float& travel) const {
        const std::string_view places = Trim(list.text);
        const std::string_view first = list.given ? places : start.text;
        const std::string_view last = list.given ? places.substr(places.find_last_of(" \t\r\n") + 1) : end.text;
        float from = 0, to = 0;
        if (!(list.given || (start.given && end.given)) || !Told_Real(first, from) || !Told_Real(last, to)) return false;
        travel = to - from;
        return true;
    }
};

struct Scan {
    std::string_view scan_axis;
    std::vector<Axis> axes;  // none: it has no positions of its own
    Found intensities, counts, factors;

    const Axis* Find(std::string_view name) const {
        const auto axis = std::find_if(axes.begin(), axes.end(), [name](const Axis& each) { return each.name == name; });
        return axis == axes.end() ? nullptr : &*axis;
    }
    // The one that was scanned. "2Theta-Omega" or "Gonio" names none, but those that moved are told. Nothing where 2Theta is not.
    const Axis* Scanned() const {
        if (const Axis* named = Find(scan_axis); !scan_axis.empty() && named != nullptr && named->Moves()) return named;
        const Axis* const angle = Find(two_theta);
        if (angle == nullptr || !angle->Stands()) return angle;
        const auto moved = std::find_if(axes.begin(), axes.end(), [](const Axis& axis) { return axis.Moves(); });
        return moved == axes.end() ? angle : &*moved;
    }
};

struct Measurement {
    Found alpha1, alpha2, beta, ratio;
    std::vector<Scan> scans{1};

    // The scan in hand, a new one where that has its list already.
    Scan& Fresh() {
        if (scans.back().intensities.given || scans.back().counts.given) scans.emplace_back();
        return scans.back();
    }
};

// `angle`: the positions in hand are those of one.
void Take_Positions(Tag_Walk& tags, Measurement& found, bool& angle) {
    constexpr std::size_t most_axes = 32;  // a diffractometer has seven or so
    if (tags.Opens("scan")) {
        Scan& scan = found.Fresh() = {};  // what stood in front of a scan that has no list was of one that was given up
        scan.scan_axis = tags.Value("scanAxis");
        angle = false;
    }
    if (tags.Opens("positions")) {
        Scan& scan = found.Fresh();
        angle = tags.Has("unit", "deg") && scan.axes.size() < most_axes;
        if (angle) scan.axes.emplace_back().name = tags.Value("axis");
    }
    if (!angle || found.scans.back().axes.empty()) return;
    Axis& axis = found.scans.back().axes.back();
    if (tags.Opens("startPosition") && !axis.list.given)
        axis.start.Take(tags);
    else if (tags.Opens("endPosition") && !axis.list.given)
        axis.end.Take(tags);
    else if (tags.Opens("listPositions") && !axis.start.given)
        axis.list.Take(tags);
    else if (tags.Opens("commonPosition"))
        axis.common.Take(tags);
}

void Take_Lists(Tag_Walk& tags, Measurement& found) {
    if (tags.Opens("intensities") && tags.Has("unit", "counts"))
        (found.scans.back().intensities.given ? found.Fresh() : found.scans.back()).intensities.Take(tags);
    else if (tags.Opens("counts") && tags.Has("unit", "counts"))
        (found.scans.back().counts.given ? found.Fresh() : found.scans.back()).counts.Take(tags);
    else if (tags.Opens("beamAttenuationFactors"))
        (found.scans.back().factors.given ? found.Fresh() : found.scans.back()).factors.Take(tags);
    else if (tags.Opens("dataPoints") || tags.Opens("scan"))
        found.Fresh();
}

// All that counts in the first measurement.
Measurement Find_All(std::string_view text) {
    Measurement found;
    Tag_Walk tags(text);
    bool angle = false;
    while (tags.Next() && !tags.Closes("xrdMeasurement")) {
        if (tags.Opens("kAlpha1") && tags.Has("unit", "Angstrom")) found.alpha1.Take(tags);
        if (tags.Opens("kAlpha2") && tags.Has("unit", "Angstrom")) found.alpha2.Take(tags);
        if (tags.Opens("kBeta") && tags.Has("unit", "Angstrom")) found.beta.Take(tags);
        if (tags.Opens("ratioKAlpha2KAlpha1")) found.ratio.Take(tags);
        Take_Positions(tags, found, angle);
        Take_Lists(tags, found);
    }
    return found;
}

bool Read_List(std::string_view text, std::vector<float>& values) {
    values.clear();
    Reserve_Many(values, text.size() / 2 + 1);  // an item takes a digit and a space
    const char* at = text.data();
    const char* const end = at + text.size();
    for (;;) {
        while (at != end && Is_Space(*at)) ++at;
        if (at == end) return true;
        float value = 0;
        const char* const first = at;
        at = Parse_Float(first, end, value);
        if (at == first || (at != end && !Is_Space(*at)) || !Is_Sound(value)) return false;
        values.push_back(value);
    }
}

Status Take_Wavelengths(const Measurement& found, Diffraction_Pattern_Type& p) {
    struct Row {
        const Found& found;
        float& value;
        std::string_view name;
    };
    const Row rows[] = {{found.alpha1, p.conv[0], "the wavelength K-Alpha1"},
                        {found.alpha2, p.conv[1], "the wavelength K-Alpha2"},
                        {found.beta, p.conv[3], "the wavelength K-Beta"},
                        {found.ratio, p.conv[2], "the ratio K-Alpha2/K-Alpha1"}};
    for (const Row& row : rows)
        if (!row.found.given || !Told_Real(row.found.text, row.value)) return Ended_At(row.name);
    return Status::Done();
}

// Start and end of an axis, or of the list of its positions, which `list` keeps.
Status Read_Positions(const Axis& axis, float& start, float& end, std::vector<float>& list) {
    list.clear();
    if (axis.list.given) {
        if (!Read_List(axis.list.text, list) || list.empty()) return Ended_At("the list of positions");
        start = list.front(), end = list.back();
        return Status::Done();
    }
    if (!axis.start.given || !Told_Real(axis.start.text, start)) return Ended_At("the start position");
    if (!axis.end.given || !Told_Real(axis.end.text, end)) return Ended_At("the end position");
    return Status::Done();
}

// The counts of scans, summed point by point.
class Sum {
public:
    Sum(Diffraction_Pattern_Type& p, const Scan& first, bool intensities)
        : p_(p), first_(first), axis_(*first.Scanned()), intensities_(intensities) {}

    bool Counts_In(const Scan& scan) const { return List(scan).given; }

    // `positions`: of the first scan, empty where it has start and end.
    Status Add(const Scan& scan, const std::vector<float>& positions) {
        if (!Read_List(List(scan).text, counts_)) return Ended_At("the intensities");
        if (p_.npts == 0) {
            if (counts_.empty()) return Status::Fail(no_points);
            if (Status status = Allocate_Diffraction_Pattern(p_, static_cast<std::int32_t>(counts_.size())); status.failed) return status;
        } else if (!scan.axes.empty() && !Same_Places(scan, positions)) {
            return Status::Done();
        }
        if (!Read_Factors(scan)) return Ended_At("the attenuation factors");
        const std::size_t n = std::min(counts_.size(), p_.y.size());
        const bool one_factor = factors_.size() < 2;
        const float all = factors_.empty() ? 1.0f : factors_.front();
        for (std::size_t i = 0; i < n; ++i) {
            const float factor = one_factor ? all : factors_[i];
            p_.y[i] += factor * counts_[i];
            p_.sigma[i] += factor * factor * counts_[i];
        }
        return Status::Done();
    }

private:
    const Found& List(const Scan& scan) const { return intensities_ ? scan.intensities : scan.counts; }

    // Within half a step of the first scan's, point for point.
    bool Same_Places(const Scan& scan, const std::vector<float>& first) {
        float start = 0, end = 0;
        const Axis* const axis = scan.Find(axis_.name);
        if (axis == nullptr || (axis_.name != two_theta && !Others_Stand_Alike(scan))) return false;
        if (counts_.size() != p_.y.size() || Read_Positions(*axis, start, end, positions_).failed) return false;
        const float near = 0.5f * std::fabs(p_.xmax - p_.xmin) / static_cast<float>(std::max(p_.npts - 1, 1));
        const auto same = [near](float a, float b) { return std::fabs(a - b) <= near; };
        if (!same(start, p_.xmin) || !same(end, p_.xmax) || positions_.size() != first.size()) return false;
        return std::equal(first.begin(), first.end(), positions_.begin(), same);
    }

    // Intensities over Phi or Omega are one measurement at one 2Theta and one tilt alone.
    bool Others_Stand_Alike(const Scan& scan) const {
        constexpr float near = 1e-3f;  // degrees
        return std::all_of(first_.axes.begin(), first_.axes.end(), [&](const Axis& axis) {
            if (!axis.Stands()) return true;
            const Axis* const other = scan.Find(axis.name);
            float here = 0, there = 0;
            return other != nullptr && other->Stands() && Told_Real(axis.Place(), here) && Told_Real(other->Place(), there) &&
                   std::fabs(here - there) <= near;
        });
    }

    bool Read_Factors(const Scan& scan) {
        factors_.clear();
        if (intensities_ || !scan.factors.given) return true;
        return Read_List(scan.factors.text, factors_) && (factors_.size() < 2 || factors_.size() == counts_.size());
    }

    Diffraction_Pattern_Type& p_;
    const Scan& first_;
    const Axis& axis_;
    bool intensities_;
    std::vector<float> counts_, factors_, positions_;
};

}  // namespace

Status Read_Xrdml(std::string_view text, Diffraction_Pattern_Type& p) {
    p = {};
    std::string copy;
    const Measurement found = Find_All(Without_Comments(text, copy));
    if (Status status = Take_Wavelengths(found, p); status.failed) return status;
    const auto& scans = found.scans;
    const auto placed = std::find_if(scans.begin(), scans.end(), [](const Scan& scan) { return scan.Scanned() != nullptr; });
    if (placed == scans.end()) return Ended_At("the positions of the axis 2Theta");
    const Axis& axis = *placed->Scanned();
    std::vector<float> positions;
    if (Status status = Read_Positions(axis, p.xmin, p.xmax, positions); status.failed) return status;
    if (axis.name != two_theta) {
        p.scat_var = "Angle";
        p.legend_x = Kept_Text(std::string(axis.name) + "(degrees)", legend_width);
    }

    Sum sum(p, *placed, std::any_of(scans.begin(), scans.end(), [](const Scan& scan) { return scan.intensities.given; }));
    for (const Scan& scan : scans) {
        if (!sum.Counts_In(scan)) continue;
        if (Status status = sum.Add(scan, positions); status.failed) return status;
    }
    if (p.npts == 0) return Status::Fail(no_points);
    for (float& s : p.sigma) s = std::fabs(s);
    if (p.npts > 1) p.step = (p.xmax - p.xmin) / static_cast<float>(p.npts - 1);
    p.constant_step = positions.empty();
    if (positions.empty())
        Set_Grid(p);
    else if (positions.size() == p.x.size())
        p.x = std::move(positions);
    else
        return Ended_At("the list of positions");
    Set_Y_Limits(p);
    return Status::Done();
}

bool Is_Xrdml(std::string_view text) { return Contains(text.substr(0, 4096), "xrdMeasurement"); }

Status Read_Xrdml_Scans(std::string_view text, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes&) {
    patterns.resize(1);
    return Read_Xrdml(text, patterns.front());
}

}  // namespace vntl
