#include "patterns/lab/rasx_conditions.hpp"

#include <cmath>

#include "base/text.hpp"
#include "base/text_file.hpp"
#include "base/xml_events.hpp"
#include "patterns/temperature.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr double seconds_a_minute = 60;

double Number(std::string_view text) {
    double value = 0;
    return Parse_Real(text, value) && Is_Sound(value) ? value : 0;
}

// Seconds that a step takes, from a speed in degrees a minute, degrees a second or seconds a step.
double Step_Time(double step, double speed, std::string_view unit) {
    std::string bare = Lower(unit);
    for (const char* const blank : {".", " "}) bare = Replace_All(bare, blank, "");
    if (!(speed > 0)) return 0;
    if (bare == "sec/step" || bare == "s/step" || bare == "sec" || bare == "s") return speed;
    const bool minute = bare.ends_with("/min"), second = bare.ends_with("/sec") || bare.ends_with("/s");
    return minute ? seconds_a_minute * std::fabs(step) / speed : second ? std::fabs(step) / speed : 0;
}

bool Is_Rate(std::string_view unit) {
    const std::string bare = Lower(unit);
    return bare == "cps" || Contains(bare, "/s");
}

// The names that all formats share.
struct Shared_Name {
    std::string_view parent, element, name;
};
constexpr Shared_Name shared_names[] = {{"GeneralInformation", "Operator", "User"},   {"GeneralInformation", "SampleName", "Sample"},
                                        {"XrayGenerator", "TargetName", "Anode"},     {"XrayGenerator", "Voltage", "Voltage (kV)"},
                                        {"XrayGenerator", "Current", "Current (mA)"}, {"ScanInformation", "AxisName", "Scan axis"},
                                        {"ScanInformation", "StartTime", "Date"}};

class Conditions_Events : public Xml_Events {
public:
    explicit Conditions_Events(Rasx_Conditions& conditions) : told_(conditions) {}

    void Start(const Xml_Path& path, const Xml_Attributes& attributes) override {
        const std::string_view name = path.Name();
        if (name == "Category") told_.facts.Add(attributes["Name"], attributes["SelectedUnit"]);
        if (name == "Distance")
            Add_Quantity("Distance " + std::string(attributes["From"]) + " to " + std::string(attributes["To"]), attributes["Value"],
                         attributes["Unit"]);
        if (name == "Axis") Take_Axis(attributes);
        if (name == "Pair") key_.clear();
    }

    void End(const Xml_Path& path, std::string_view text) override {
        if (path.Name() == "string" && path.Parent() == "Pair") return Take_Pair_Text(text);
        if (text.empty()) return;
        Take(path.Parent(), path.Name(), text);
        if (text == "kV" || text == "mA") return;  // the name of the voltage and the current says so
        std::string_view name = path.Name();
        for (const Shared_Name& shared : shared_names)
            if (shared.element == name && shared.parent == path.Parent()) name = shared.name;
        told_.facts.Add(name, text);
    }

    void Finish() {
        Diffraction_Pattern_Type& p = told_.told;
        p.title = Kept_Text(sample_.empty() ? comment_ : sample_, title_width);
        const double wave = alpha1_ > 0 ? alpha1_ : alpha2_;
        p.conv = {static_cast<float>(wave), single_line_ ? 0.0f : static_cast<float>(alpha2_), 0, static_cast<float>(beta_), 0};
        if (beta_line_ && beta_ > 0) p.conv = {static_cast<float>(beta_), 0, 0, static_cast<float>(beta_), 0};
        const double time = Step_Time(step_, speed_, speed_unit_);
        if (time > 0 && Is_Sound(time)) {
            p.count_time = static_cast<float>(time);
        }
        Fact_List first;
        if (p.count_time > 0) first.Add("Time a step (s)", static_cast<double>(p.count_time));
        if (p.TSample > 0) first.Add("Temperature (K)", static_cast<double>(p.TSample));
        if (const auto others = told_.facts.Done())
            for (const Head_Fact& fact : *others) first.Add(fact.name, fact.value);
        told_.facts = std::move(first);
    }

private:
    void Take(std::string_view parent, std::string_view name, std::string_view text) {
        if (parent == "GeneralInformation") {
            if (name == "SampleName") sample_ = text;
            if (name == "Comment") comment_ = text;
        } else if (parent == "XrayGenerator") {
            if (name == "WavelengthKalpha1") alpha1_ = Number(text);
            if (name == "WavelengthKalpha2") alpha2_ = Number(text);
            if (name == "WavelengthKbeta") beta_ = Number(text);
            if (name == "WaveType") single_line_ = Equal_No_Case(text, "Ka1"), beta_line_ = Equal_No_Case(text, "Kb");
        } else if (parent == "ScanInformation") {
            if (name == "AxisName") told_.axis = text;
            if (name == "Step") step_ = Number(text);
            if (name == "Speed") speed_ = Number(text);
            if (name == "SpeedUnit") speed_unit_ = text;
            if (name == "IntensityUnit") told_.told.per_second = Is_Rate(text);
            if (name == "DataCount") told_.count = Number(text);
        }
    }

    void Take_Axis(const Xml_Attributes& attributes) {
        const std::string_view name = attributes["Name"], position = attributes["Position"], unit = attributes["Unit"];
        const std::string_view state = attributes["State"];
        Add_Quantity(std::string(name), position,
                     state.empty() || state == "Fixed" ? std::string(unit) : std::string(unit) + ", " + Lower(state));
        if (position.empty() || !(Equal_No_Case(name, "Temp") || Equal_No_Case(name, "Temperature") || Equal_No_Case(name, "SampleTemp")))
            return;
        double value = 0, end = 0;
        if (!Parse_Real(position, value)) return;
        if (Parse_Real(attributes["EndPosition"], end)) value = (value + end) / 2;
        const double kelvin = In_Kelvin(value, unit == "degree" ? "C" : unit);
        if (kelvin > 0) told_.told.TSample = static_cast<float>(kelvin);
    }

    // The axes are told once again in the pairs, and not better.
    void Take_Pair_Text(std::string_view text) {
        if (key_.empty()) {
            key_ = text.starts_with('*') ? text.substr(1) : text;
            if (key_.empty()) key_ = "?";
        } else if (!key_.starts_with("MEAS_COND_AXIS_") && !key_.starts_with("DISP_")) {
            told_.facts.Add(key_, text);
        }
    }

    void Add_Quantity(const std::string& name, std::string_view value, std::string_view unit) {
        if (value.empty()) return;
        told_.facts.Add(name, unit.empty() || unit.starts_with(',') ? std::string(value) + std::string(unit)
                                                                    : std::string(value) + ' ' + std::string(unit));
    }

    Rasx_Conditions& told_;
    std::string sample_, comment_, speed_unit_, key_;
    double alpha1_ = 0, alpha2_ = 0, beta_ = 0, step_ = 0, speed_ = 0;
    bool single_line_ = false, beta_line_ = false;
};

}  // namespace

Status Read_Rasx_Conditions(std::string_view bytes, Rasx_Conditions& conditions) {
    Conditions_Events events(conditions);
    const Status status = Walk_Xml(bytes, events);
    events.Finish();
    return status;
}

}  // namespace vntl
