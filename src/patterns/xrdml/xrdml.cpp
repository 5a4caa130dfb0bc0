#include "patterns/xrdml/xrdml.hpp"

#include <algorithm>
#include <array>
#include <deque>
#include <memory>
#include <string>

#include "base/conversions.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/head_facts.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/told_values.hpp"
#include "patterns/xrdml/xml_tags.hpp"
#include "patterns/xrdml/xrdml_file.hpp"
#include "patterns/xrdml/xrdml_lists.hpp"
#include "patterns/xrdml/xrdml_sum.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_patterns = 2000;  // that the program has rows for
constexpr std::string_view no_points = " Error reading a profile XRDML-DATA file: npts <= 0 !!! ";

void Add_Once(std::vector<std::string>& texts, const std::string& text) {
    if (std::find(texts.begin(), texts.end(), text) == texts.end()) texts.push_back(text);
}

std::string Joined(const std::vector<std::size_t>& numbers) {
    constexpr std::size_t enough = 12;
    std::string text;
    for (std::size_t i = 0; i < std::min(numbers.size(), enough); ++i) text += (i == 0 ? "" : ", ") + std::to_string(numbers[i]);
    return numbers.size() > enough ? text + ", ..." : text;
}

Status Take_Wavelengths(const Xrdml_Measurement& found, std::array<float, 5>& conv) {
    struct Row {
        const Xml_Found& found;
        float& value;
        std::string_view name;
    };
    const Row rows[] = {{found.alpha1, conv[0], "the wavelength K-Alpha1"},
                        {found.alpha2, conv[1], "the wavelength K-Alpha2"},
                        {found.beta, conv[3], "the wavelength K-Beta"},
                        {found.ratio, conv[2], "the ratio K-Alpha2/K-Alpha1"}};
    for (const Row& row : rows)
        if (!row.found.given || !Told_Real(row.found.text, row.value)) return Xrdml_Ended_At(row.name);
    return Status::Done();
}

// Whether a list of the file holds counts that nobody gave up.
bool Is_Complete(const Xrdml_Scan& scan) {
    const std::string_view list = scan.intensities.given ? scan.intensities.text : scan.counts.text;
    return !scan.Aborted() && list.find_first_not_of(" \t\r\n") != std::string_view::npos;
}

// Adds up the scans of one measurement after the other.
class Reader {
public:
    Reader(Xrdml_File& file, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes)
        : file_(file), patterns_(patterns), notes_(notes) {}

    Status Read() {
        for (const Xrdml_Measurement& measurement : file_.measurements)
            complete_ = complete_ || std::any_of(measurement.scans.begin(), measurement.scans.end(), Is_Complete);
        for (Xrdml_Measurement& measurement : file_.measurements) {
            ++number_;
            Read_Measurement(measurement);
        }
        if (patterns_.empty()) {
            notes_ = {};
            return fault_.failed ? fault_ : Status::Fail(no_points);
        }
        if (file_.too_many || left_out_) notes_.warnings.emplace_back(too_many_scans);
        if (patterns_.size() > 1) Number();
        return Status::Done();
    }

private:
    void Read_Measurement(Xrdml_Measurement& measurement) {
        auto& scans = measurement.scans;
        const bool lists = std::any_of(scans.begin(), scans.end(), [](const Xrdml_Scan& scan) { return scan.Has_List(); });
        std::array<float, 5> conv{};
        const Status waves = Take_Wavelengths(measurement, conv);
        if (waves.failed && (lists || number_ == 1)) return Note_Fault(file_.measurements.size() > 1 ? In_Measurement("Scans") : "", waves);
        sums_.clear();
        Give_Places(scans);
        const bool intensities = std::any_of(scans.begin(), scans.end(), [](const Xrdml_Scan& scan) { return scan.intensities.given; });
        std::vector<std::size_t> aborted;
        for (Xrdml_Scan& scan : scans) {
            if (!(intensities ? scan.intensities : scan.counts).given) continue;
            if (scan.Aborted() && complete_)
                aborted.push_back(scan.number);
            else
                Take(measurement, scan, intensities);
        }
        if (aborted.size() == 1) notes_.warnings.push_back(In_Measurement("Scan", aborted.front()) + " was aborted and is left out");
        if (aborted.size() > 1) notes_.warnings.push_back(In_Measurement("Scans " + Joined(aborted)) + " were aborted and are left out");
        Finish_All(measurement, conv);
    }

    // A scan without positions was made at those of the scan before it, or else of the first one that has some.
    void Give_Places(std::vector<Xrdml_Scan>& scans) {
        without_places_.clear();
        const auto placed = [](const Xrdml_Scan& scan) { return scan.Scanned() != nullptr; };
        auto last = std::find_if(scans.begin(), scans.end(), placed);
        if (last == scans.end()) return;
        for (auto scan = scans.begin(); scan != scans.end(); ++scan) {
            if (placed(*scan)) {
                last = scan;
            } else if (scan->axes.empty() && scan->Has_List()) {
                scan->axes = last->axes;
                if (scan->scan_axis.empty()) scan->scan_axis = last->scan_axis;
                without_places_.push_back(scan->number);
            }
        }
    }

    void Take(const Xrdml_Measurement& measurement, Xrdml_Scan& scan, bool intensities) {
        if (!(scan.temperature > 0)) scan.temperature = measurement.temperature;
        if (const Status status = Read_Xrdml_Lists(scan, intensities, lists_); status.failed)
            return Note_Fault(In_Measurement("Scan", scan.number), status);
        if (lists_.times_differ)
            Add_Once(notes_.warnings, "The counting time differs from point to point, and the counts are not brought to one time");
        if (lists_.divergence) Add_Once(notes_.warnings, "The corrections for divergence that the file holds are not applied");
        const bool anywhere = std::binary_search(without_places_.begin(), without_places_.end(), scan.number);
        Xrdml_Places places = Places_Of(scan);
        auto sum = std::find_if(sums_.begin(), sums_.end(), [&](const Xrdml_Sum& each) { return each.Takes(scan, places, lists_); });
        if (sum == sums_.end() && anywhere && !sums_.empty()) sum = sums_.end() - 1;
        if (sum != sums_.end()) return sum->Add(scan, lists_);
        left_out_ = patterns_.size() + sums_.size() == most_patterns;
        if (left_out_) return;
        sums_.emplace_back(scan, std::move(places), lists_, Step_Of_Others());
        Note_Missing(scan, sums_.back());
    }

    double Step_Of_Others() const {
        for (const Xrdml_Sum& sum : sums_)
            if (sum.Whole() && sum.Axis() == lists_.axis) return sum.Step();
        return 0;
    }

    void Note_Missing(const Xrdml_Scan& scan, const Xrdml_Sum& sum) {
        const std::string name = In_Measurement("Scan", scan.number) + (scan.Aborted() ? " was aborted" : " ends with the file");
        const std::string points = std::to_string(sum.Points());
        if (!sum.Step_Is_Told())
            notes_.warnings.push_back(name + ", and its step is not told: " + points + " points fill the whole range, which may be wrong");
        else if (scan.Aborted())
            notes_.warnings.push_back(
                name + (sum.Planned() > sum.Points() ? ": " + points + " of " + std::to_string(sum.Planned()) + " points are there" : ""));
    }

    std::shared_ptr<const Head_Facts> Facts(const Xrdml_Measurement& measurement, const Xrdml_Sum& sum,
                                            const Diffraction_Pattern_Type& p) const {
        Fact_List facts;
        const Head_Facts* const told[] = {&file_.facts, &measurement.facts, &sum.First().facts};
        for (const Head_Facts* each : told)
            for (const Head_Fact& fact : *each) facts.Add(fact.name, fact.value);
        if (p.count_time > 0) facts.Add("Time a step (s)", p.count_time);
        if (p.TSample > 0) facts.Add("Temperature (K)", p.TSample);
        for (const Xrdml_Axis& axis : sum.First().axes) Add_Place(axis, facts);
        if (sum.Numbers().size() > 1) facts.Add("Scans added up", Joined(sum.Numbers()));
        return facts.Done();
    }

    static void Add_Place(const Xrdml_Axis& axis, Fact_List& facts) {
        const std::string name = Xml_Words(axis.name) + " (" + Xml_Words(axis.unit) + ")";
        double from = 0, to = 0;
        if (axis.start.given && axis.end.given)
            facts.Add(name, Xml_Words(axis.start.text) + " to " + Xml_Words(axis.end.text));
        else if (axis.list.given && axis.Ends(from, to))
            facts.Add(name, "list from " + IRealToString(static_cast<float>(from)) + " to " + IRealToString(static_cast<float>(to)));
        else if (axis.common.given)
            facts.Add(name, Xml_Words(axis.common.text));
    }

    // What tells the patterns of a measurement from each other: the axes that stood at different places.
    std::vector<std::string_view> Stepped(const Xrdml_Measurement& measurement) const {
        std::vector<std::string_view> names;
        if (!measurement.step_axis.empty()) names.push_back(measurement.step_axis);
        for (const Xrdml_Axis& axis : sums_.front().First().axes) {
            const auto differs = [&](const Xrdml_Sum& sum) { return sum.Differs(sums_.front(), axis.name); };
            if (axis.name != measurement.step_axis && axis.Stands() && std::any_of(sums_.begin(), sums_.end(), differs))
                names.push_back(axis.name);
        }
        return names;
    }

    // ", Psi 5, 300 K".
    static std::string Marks(const std::vector<std::string_view>& stepped, const Xrdml_Sum& sum, bool warmed) {
        constexpr std::size_t most = 4;
        std::string marks;
        for (std::size_t i = 0; i < std::min(stepped.size(), most); ++i) {
            const Xrdml_Axis* const axis = sum.First().Find(stepped[i]);
            double from = 0, to = 0;
            if (axis == nullptr || !axis->Ends(from, to)) continue;
            marks += ", " + Kept_Text(Xml_Words(axis->name), scat_var_width) + ' ' + IRealToString(static_cast<float>(from));
            if (axis->Moves()) marks += " to " + IRealToString(static_cast<float>(to));
            if (axis->unit != "deg") marks += ' ' + Kept_Text(Xml_Words(axis->unit), scat_var_width);
        }
        return warmed && sum.First().temperature > 0 ? marks + ", " + IRealToString(static_cast<float>(sum.First().temperature)) + " K"
                                                     : marks;
    }

    void Finish_All(const Xrdml_Measurement& measurement, const std::array<float, 5>& conv) {
        if (sums_.empty()) return;
        const auto stepped = Stepped(measurement);
        const bool warmed =
            !std::all_of(sums_.begin(), sums_.end(), [this](const Xrdml_Sum& sum) { return sum.Is_As_Warm(sums_.front()); });
        for (Xrdml_Sum& sum : sums_) {
            Diffraction_Pattern_Type pattern = sum.Finish();
            pattern.conv = conv;
            pattern.title = Kept_Text(file_.sample_name.empty() ? file_.sample_id : file_.sample_name, title_width);
            pattern.facts = Facts(measurement, sum, pattern);
            patterns_.push_back(std::move(pattern));
            marks_.push_back(Marks(stepped, sum, warmed));
        }
    }

    void Number() {
        constexpr std::size_t room = 40;  // for the number of the range
        for (std::size_t i = 0; i < patterns_.size(); ++i) {
            Diffraction_Pattern_Type& p = patterns_[i];
            p.bank = static_cast<std::int32_t>(i + 1);
            const std::size_t left = title_width - std::min(title_width, Characters(marks_[i]) + room);
            std::string title = std::string(Cut(p.title, left)) + marks_[i];
            if (title.starts_with(", ")) title.erase(0, 2);
            p.title = Numbered(title, i + 1);
        }
    }

    // "Scan 3", and of which measurement where there are several.
    std::string In_Measurement(const std::string& what, std::size_t number = 0) const {
        const std::string of = file_.measurements.size() > 1 ? " of measurement " + std::to_string(number_) : "";
        return what + (number > 0 ? ' ' + std::to_string(number) : "") + of;
    }

    void Note_Fault(const std::string& what, const Status& status) {
        if (!fault_.failed) fault_ = status;
        notes_.failed.push_back(what + ": " + std::string(Trim(status.message)));
    }

    Xrdml_File& file_;
    std::vector<Diffraction_Pattern_Type>& patterns_;
    Read_Notes& notes_;
    std::vector<std::string> marks_;           // a pattern each
    std::deque<Xrdml_Sum> sums_;               // of the measurement in hand
    std::vector<std::size_t> without_places_;  // numbers of its scans that tell none
    std::size_t number_ = 0;                   // of the measurement
    bool left_out_ = false;                    // there was no room for a scan
    bool complete_ = false;                    // there is a scan that was not aborted
    Xrdml_Lists lists_;
    Status fault_;
};

}  // namespace

bool Is_Xrdml(std::string_view text) {
    constexpr std::size_t enough = 64 << 10;
    constexpr std::string_view name = "xrdMeasurement";
    std::string copy;
    text = Plain_Xml(text.substr(0, enough), copy);
    for (std::size_t at = text.find(name); at != std::string_view::npos; at = text.find(name, at + 1))
        if (at > 0 && (text[at - 1] == '<' || text[at - 1] == ':')) return true;
    return false;
}

Status Read_Xrdml_Scans(std::string_view text, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    patterns.clear();
    std::string copy;
    Xrdml_File file = Find_In_Xrdml(Plain_Xml(text, copy));
    return Reader(file, patterns, notes).Read();
}

Status Read_Xrdml(std::string_view text, Diffraction_Pattern_Type& pattern) {
    std::vector<Diffraction_Pattern_Type> patterns;
    Read_Notes unheard;
    pattern = {};
    const Status status = Read_Xrdml_Scans(text, patterns, unheard);
    if (status.ok()) pattern = std::move(patterns.front());
    return status;
}

}  // namespace vntl
