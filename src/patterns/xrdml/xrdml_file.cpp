#include "patterns/xrdml/xrdml_file.hpp"

#include <algorithm>
#include <cmath>

#include "base/text.hpp"
#include "patterns/told_values.hpp"
#include "patterns/xrdml/xml_tags.hpp"
#include "patterns/xrdml/xrdml_head.hpp"

namespace vntl {

namespace {

constexpr std::string_view two_theta = "2Theta";
constexpr std::size_t most_scans = 20000;  // ten times what the program has rows for
constexpr std::size_t most_axes = 32;      // a diffractometer has seven or so
constexpr double play = 1e-4;              // degrees or millimetres

bool Take(Tag_Walk& tags, Xml_Found& found) {
    if (found.given || !tags.Content(found.text)) return false;
    found.given = true;
    return true;
}

// A list of numbers, which the end of the file may cut.
bool Take_List(Tag_Walk& tags, Xml_Found& found) {
    if (Take(tags, found)) return true;
    if (!found.given) found.given = found.cut = tags.Cut_Content(found.text);
    return false;
}

// Finds everything in one walk over the tags.
class Finder {
public:
    explicit Finder(std::string_view text) : tags_(text), head_(file_) { file_.measurements.emplace_back().scans.emplace_back(); }

    Xrdml_File Find() {
        while (!file_.too_many && tags_.Next()) {
            if (tags_.Closing())
                head_.Leave(tags_.Name());
            else if (!Take_Position() && !Take_Numbers() && !head_.Take(tags_, Measurement(), Scan()) && !tags_.Empty())
                head_.Enter(tags_, Measurement(), Scan());
        }
        head_.Finish();
        for (Xrdml_Measurement& measurement : file_.measurements) Number(measurement);
        return std::move(file_);
    }

private:
    Xrdml_Measurement& Measurement() { return file_.measurements.back(); }
    Xrdml_Scan& Scan() { return Measurement().scans.back(); }

    // The scan in hand, or one like it where that has its list already.
    Xrdml_Scan& Fresh() {
        if (!Scan().Has_List()) return Scan();
        Xrdml_Scan next;
        next.scan_axis = Scan().scan_axis, next.status = Scan().status, next.facts = Scan().facts;
        Count_Scan();
        Measurement().scans.push_back(std::move(next));
        return Scan();
    }

    void Count_Scan() { file_.too_many = file_.too_many || ++scans_ > most_scans; }

    static void Number(Xrdml_Measurement& measurement) {
        std::size_t number = 0;
        for (Xrdml_Scan& scan : measurement.scans) scan.number = ++number;
    }

    void Begin_Scan() {
        if (Scan().Has_List()) {
            Measurement().scans.emplace_back();
            Count_Scan();
        } else {
            Scan() = {};  // what stood in front of a scan that has no list was of one that was given up
        }
        Scan().scan_axis = tags_.Value("scanAxis");
        Scan().status = tags_.Value("status");
        angle_ = false;
    }

    void Begin_Measurement() {
        const bool used = Measurement().alpha1.given || Scan().Has_List() || Measurement().scans.size() > 1;
        if (used) {
            file_.measurements.emplace_back().scans.emplace_back();
            Count_Scan();
        }
        Measurement().step_axis = tags_.Value("measurementStepAxis");
        angle_ = false;
    }

    // The start of a part of the file, or a place of an axis.
    bool Take_Position() {
        if (tags_.Opens("xrdMeasurement")) Begin_Measurement();
        if (tags_.Opens("scan")) Begin_Scan();
        if (tags_.Opens("dataPoints")) Fresh();
        if (tags_.Opens("positions")) {
            Xrdml_Scan& scan = Fresh();
            angle_ = scan.axes.size() < most_axes && !tags_.Value("unit").empty() && !Contains(tags_.Value("axis"), "emperature");
            if (angle_) {
                Xrdml_Axis& axis = scan.axes.emplace_back();
                axis.name = tags_.Value("axis"), axis.unit = tags_.Value("unit");
            }
        }
        if (!angle_ || Scan().axes.empty()) return false;
        Xrdml_Axis& axis = Scan().axes.back();
        if (tags_.Opens("startPosition") && !axis.list.given) return Take(tags_, axis.start);
        if (tags_.Opens("endPosition") && !axis.list.given) return Take(tags_, axis.end);
        if (tags_.Opens("listPositions") && !axis.start.given) return Take(tags_, axis.list);
        return tags_.Opens("commonPosition") && Take(tags_, axis.common);
    }

    bool Take_Numbers() {
        struct Row {
            std::string_view tag;
            Xml_Found Xrdml_Scan::*list;
            bool in_counts;  // not in another unit
        };
        constexpr Row rows[] = {
            {"intensities", &Xrdml_Scan::intensities, true},           {"counts", &Xrdml_Scan::counts, true},
            {"beamAttenuationFactors", &Xrdml_Scan::factors, false},   {"commonBeamAttenuationFactor", &Xrdml_Scan::factors, false},
            {"divergenceCorrections", &Xrdml_Scan::divergence, false}, {"commonDivergenceCorrection", &Xrdml_Scan::divergence, false},
            {"commonCountingTime", &Xrdml_Scan::time, false},          {"countingTimes", &Xrdml_Scan::times, false}};
        const std::string_view unit = tags_.Value("unit");
        const bool rates = unit == "cps" || unit == "counts/s";
        for (const Row& row : rows) {
            if (tags_.Name() != row.tag || (row.in_counts && !unit.empty() && unit != "counts" && !rates)) continue;
            Xrdml_Scan& scan = (Scan().*row.list).given ? Fresh() : Scan();
            scan.per_second = scan.per_second || (row.in_counts && rates);
            return Take_List(tags_, scan.*row.list);
        }
        Xrdml_Measurement& m = Measurement();
        const bool angstrom = unit == "Angstrom";
        if (angstrom && tags_.Opens("kAlpha1")) return Take(tags_, m.alpha1);
        if (angstrom && tags_.Opens("kAlpha2")) return Take(tags_, m.alpha2);
        if (angstrom && tags_.Opens("kBeta")) return Take(tags_, m.beta);
        return tags_.Opens("ratioKAlpha2KAlpha1") && Take(tags_, m.ratio);
    }

    Xrdml_File file_;
    Tag_Walk tags_;
    Xrdml_Head head_;
    std::size_t scans_ = 1;
    bool angle_ = false;  // the positions in hand are those of an axis
};

}  // namespace

bool Xrdml_Axis::Ends(double& from, double& to) const {
    const std::string_view places = list.text.substr(0, list.text.find_last_not_of(" \t\r\n") + 1);
    std::string_view first = start.text, last = end.text;
    if (list.given)
        first = places.substr(std::min(places.find_first_not_of(" \t\r\n"), places.size())),
        last = places.substr(places.find_last_of(" \t\r\n") + 1);
    else if (!(start.given && end.given))
        first = last = common.text;
    const std::string_view longest = first.substr(0, first.find_first_of(" \t\r\n"));
    from = to = NAN;
    return Told_Real(list.given ? longest : first, from) && Told_Real(last, to) && !std::isnan(from) && !std::isnan(to);
}

bool Xrdml_Axis::Moves() const {
    double from = 0, to = 0;
    return Ends(from, to) && std::fabs(to - from) > play;
}

bool Xrdml_Axis::Stands() const {
    double from = 0, to = 0;
    return Ends(from, to) ? std::fabs(to - from) <= play : common.given && !(start.given && end.given) && !list.given;
}

const Xrdml_Axis* Xrdml_Scan::Find(std::string_view name) const {
    const auto axis = std::find_if(axes.begin(), axes.end(), [name](const Xrdml_Axis& each) { return each.name == name; });
    return axis == axes.end() ? nullptr : &*axis;
}

const Xrdml_Axis* Xrdml_Scan::Scanned() const {
    if (const Xrdml_Axis* named = Find(scan_axis); !scan_axis.empty() && named != nullptr && named->Moves()) return named;
    const Xrdml_Axis* const angle = Find(two_theta);
    if (angle == nullptr || !angle->Stands()) return angle;
    const auto moved = std::find_if(axes.begin(), axes.end(), [](const Xrdml_Axis& axis) { return axis.Moves(); });
    return moved == axes.end() ? angle : &*moved;
}

Xrdml_File Find_In_Xrdml(std::string_view text) { return Finder(text).Find(); }

}  // namespace vntl
