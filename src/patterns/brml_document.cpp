#include "patterns/brml_document.hpp"

#include <algorithm>
#include <cmath>

#include "base/text.hpp"
#include "base/text_file.hpp"
#include "base/xml_events.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_patterns = 2000, most_references = 10000;
constexpr std::size_t most_columns = 1000;  // told by the views of a scan; a detector of many channels is one of them

double Number(std::string_view text) {
    double value = 0;
    return Parse_Real(text, value) && Is_Sound(value) ? value : not_told;
}

std::size_t Place(std::string_view text) {
    int value = 0;
    return Parse_Integer(text, value) && value >= 0 ? static_cast<std::size_t>(value) : std::string_view::npos / 4;
}

// A length in angstroms.
double In_Angstroms(double value, std::string_view unit) {
    if (unit == "nm") return 10 * value;
    if (unit == "pm") return value / 100;
    return unit == "m" ? value * 1e10 : value;
}

// What an instrument's part is called, where that tells a user anything.
std::string_view Label(const Xml_Attributes& attributes) {
    for (const std::string_view name : {attributes["VisibleName"], attributes["LogicName"]})
        if (!name.empty() && !name.starts_with('?') && !name.starts_with("BrukerAXS.")) return name;
    return {};
}

class Container_Events : public Xml_Events {
public:
    explicit Container_Events(Brml_Container& container) : container_(container) {}

    void Start(const Xml_Path& path, const Xml_Attributes& attributes) override {
        if (path.Name() != "MeasurementInfo") return;
        container_.sample = Trim(attributes["SampleName"]);
        container_.comment = Trim(attributes["Comment"]);
        container_.facts.Add("Sample", container_.sample);
        container_.facts.Add("Comment", container_.comment);
        container_.facts.Add("User", attributes["UserName"]);
        for (const std::string_view name : {"Site", "SamplePosition", "ScriptName", "BsmlFileName"})
            container_.facts.Add(name, attributes[name]);
    }

    void End(const Xml_Path& path, std::string_view text) override {
        const bool reference = path.Name() == "string" && path.Parent() == "RawDataReferenceList";
        if (reference && container_.raw_data.size() < most_references) container_.raw_data.emplace_back(text);
        if (path.Parent() == "InstrumentDescription" || path.Name().starts_with("ApplicationType")) container_.facts.Add(path.Name(), text);
    }

private:
    Brml_Container& container_;
};

// The tube, the optics and the drives, which hold for all scans of a document.
class Instrument {
public:
    void Start(const Xml_Path& path, const Xml_Attributes& attributes) {
        const std::string_view label = Label(attributes);
        labels_.resize(path.Depth());
        labels_.back() = label.empty() && labels_.size() > 1 ? labels_[labels_.size() - 2] : std::string(label);
        if (path.Name() == "InfoItem") Take_Item(attributes);
        if (!attributes["Value"].empty() && path.Name() != "InfoItem") Take(path, attributes["Value"], attributes["Unit"]);
    }

    void End(const Xml_Path& path, std::string_view text) {
        if (text.empty() || path.Within("AlignmentRecords")) return;
        if (path.Name() == "TubeMaterial")
            facts.Add("Anode", text);
        else
            Add(path.Name(), text);
    }

    std::array<float, 5> conv{};
    double kelvin = 0;
    std::string sample, comment;
    Fact_List facts;

private:
    void Take_Item(const Xml_Attributes& attributes) {
        const std::string_view name = attributes["Name"], value = attributes["Value"];
        if (name == "SampleName") sample = Trim(value);
        if (name == "Comment") comment = Trim(value);
        facts.Add(name == "SampleName" ? "Sample" : name, value);
    }

    void Take(const Xml_Path& path, std::string_view text, std::string_view unit) {
        const std::string_view name = path.Name();
        const double value = Number(text);
        if (path.Parent() == "Tube" && Take_Wavelength(name, value, unit)) return;
        if (path.Parent() == "Generator" && name == "Voltage" && unit == "kV") return facts.Add("Voltage (kV)", text);
        if (path.Parent() == "Generator" && name == "Current" && unit == "mA") return facts.Add("Current (mA)", text);
        if (name == "Radius" && unit == "mm") return facts.Add("Goniometer radius (mm)", text);
        const std::string words = Lower(labels_.back()) + ' ' + Lower(name);
        const bool of_sample = Contains(words, "temperature") && !Contains(words, "tube") && !Contains(words, "detector") &&
                               !Contains(words, "cool") && !Contains(words, "water");
        if (of_sample && kelvin == 0) kelvin = std::max(0.0, In_Kelvin(value, unit));
        const bool dull = name.starts_with("Virtual") || (name.starts_with("Oscillation") && value == 0) || path.Within("AlignmentRecords");
        if (!dull) Add(name, unit.empty() ? std::string(text) : std::string(text) + ' ' + std::string(unit));
    }

    bool Take_Wavelength(std::string_view name, double value, std::string_view unit) {
        if (name == "WaveLengthRatio") return Keep(conv[2], value, 10);
        value = In_Angstroms(value, unit);
        if (name == "WaveLengthAlpha1") return Keep(conv[0], value, 100);
        if (name == "WaveLengthAlpha2") return Keep(conv[1], value, 100);
        return name == "WaveLengthBeta" && Keep(conv[3], value, 100);
    }

    static bool Keep(float& place, double value, double most) {
        if (place == 0 && value > 0 && value < most) place = static_cast<float>(value);
        return true;
    }

    void Add(std::string_view name, std::string_view value) {
        const std::string& label = labels_.empty() ? std::string() : labels_.back();
        facts.Add(label.empty() ? std::string(name) : label + ": " + std::string(name), value);
    }

    std::vector<std::string> labels_;  // of the open elements
};

class Raw_Data_Events : public Xml_Events {
public:
    Raw_Data_Events(int& scans, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes)
        : scans_(scans), patterns_(patterns), notes_(notes) {}

    void Start(const Xml_Path& path, const Xml_Attributes& attributes) override {
        const std::string_view name = path.Name();
        if (name == "Datum") return;
        if (name == "DataRoute") scan_ = {}, in_route_ = true;
        if (name == "FixedInformation") in_instrument_ = true;
        if (in_instrument_ && name != "FixedInformation") instrument_.Start(path, attributes);
        if (in_route_) Start_In_Route(path, attributes);
    }

    void End(const Xml_Path& path, std::string_view text) override {
        const std::string_view name = path.Name();
        if (name == "Datum") {
            if (in_route_) scan_.Take_Row(text);
            return;
        }
        if (name == "FixedInformation") in_instrument_ = false;
        if (in_instrument_) instrument_.End(path, text);
        if (in_route_) End_In_Route(path, text);
        if (name == "DataRoute") End_Route();
        if (name == "TimeStampStarted") facts_.Add("Date", text);
        if (name == "TimeStampFinished") facts_.Add("End", text);
        if (name == "MeasurementStatus") facts_.Add("Status", text);
    }

    // What the document tells of all its scans.
    void Finish(const Brml_Container& container) {
        const std::string& sample = container.sample.empty() ? instrument_.sample : container.sample;
        const std::string& comment = container.comment.empty() ? instrument_.comment : container.comment;
        for (std::size_t i = 0; i < found_.size(); ++i) {
            Diffraction_Pattern_Type& p = found_[i].pattern;
            p.title = Kept_Text(sample.empty() ? comment : sample, title_width);
            p.conv = instrument_.conv;
            const double kelvin = record_kelvin_ > 0 ? record_kelvin_ : instrument_.kelvin;
            if (!(p.TSample > 0) && kelvin > 0) p.TSample = static_cast<float>(kelvin);
            p.facts = All_Facts(p, found_[i].facts, container.facts);
            patterns_.push_back(std::move(p));
        }
    }

private:
    struct Found {
        Diffraction_Pattern_Type pattern;
        Fact_List facts;
    };

    void Start_In_Route(const Xml_Path& path, const Xml_Attributes& attributes) {
        const std::string_view name = path.Name();
        if (name == "ScanInformation") {
            scan_.name = attributes["ScanName"];
            scan_.shown = Trim(attributes["VisibleName"]);
        } else if (Brml_Axis* const axis = New_Axis(path)) {
            axis->id = attributes["AxisId"].empty() ? attributes["AxisName"] : attributes["AxisId"];
            axis->name = Trim(attributes["VisibleName"]);
        } else if (name == "RawDataView") {
            view_ = {
                Place(attributes["Start"]), std::max<std::size_t>(Place(attributes["Length"]), 1), {}, {}, std::string(attributes["Unit"])};
            fields_ = 0;
            if (!attributes["LogicName"].empty()) Add_Column(view_.place, view_.length, attributes["LogicName"]);
        } else if (name == "FieldDefinitions") {
            Add_Column(view_.place + fields_++, 1,
                       attributes["AxisId"].empty() || attributes["AxisId"] == "None" ? attributes["FieldName"] : attributes["AxisId"]);
        } else if (name == "Recording") {
            Add_Column(view_.place, view_.length, attributes["LogicName"]);
            column_->recorded = true;
            column_->shown = attributes["VisibleName"];
            column_->counts = Equal_No_Case(attributes["Category"], "Count");
            scan_.facts.Add("Counter", column_->shown);
        } else if (name == "Unit" && path.Parent() == "Recording" && column_ != nullptr) {
            column_->unit = attributes["Base"];
        } else if (name == "Restriction" && column_ != nullptr && path.Within("FieldDefinitions")) {
            column_->unit = attributes["Unit"];
        }
    }

    // Axes of the scan itself, not those of its planning.
    Brml_Axis* New_Axis(const Xml_Path& path) {
        constexpr std::size_t most = 100;
        std::vector<Brml_Axis>* const axes = path.Parent() == "ScanAxes"    ? &scan_.axes
                                             : path.Parent() == "ScaleAxes" ? &scan_.scales
                                                                            : nullptr;
        if (axes == nullptr || axes->size() >= most || !path.Name().ends_with("AxisInfo")) return nullptr;
        return &axes->emplace_back();
    }

    void Add_Column(std::size_t place, std::size_t length, std::string_view name) {
        column_ = nullptr;
        spare_ = {};
        Brml_Column& column = scan_.columns.size() < most_columns ? scan_.columns.emplace_back() : spare_;
        column.place = place;
        column.length = length;
        column.name = name;
        column.unit = view_.unit;
        column_ = &column;
    }

    void End_In_Route(const Xml_Path& path, std::string_view text) {
        const std::string_view name = path.Name();
        if (path.Parent() == "ScanInformation") {
            if (name == "MeasurementPoints") scan_.points = Number(text);
            if (name == "TimePerStep") scan_.time = Number(text);
            if (name == "TimePerStepEffective") scan_.effective_time = Number(text);
            if (name == "ScanModeVisibleName" || (name == "ScanMode" && scan_.mode.empty())) scan_.mode = text;
        } else if (path.Parent().ends_with("AxisInfo")) {
            const std::string_view list = path.Parent(2);
            std::vector<Brml_Axis>* const axes = list == "ScanAxes" ? &scan_.axes : list == "ScaleAxes" ? &scan_.scales : nullptr;
            if (axes != nullptr && !axes->empty()) Take_Axis(axes->back(), name, text);
        } else if (name == "BlankingValue" && column_ != nullptr) {
            column_->blank = Number(text);
        } else if (name == "VisibleName" && path.Parent() == "FieldDefinitions" && column_ != nullptr) {
            column_->shown = text;
        }
        if (name == "RawDataView") column_ = nullptr;
    }

    static void Take_Axis(Brml_Axis& axis, std::string_view name, std::string_view text) {
        if (name == "Start") axis.start = Number(text);
        if (name == "Stop") axis.stop = Number(text);
        if (name == "Increment") axis.increment = Number(text);
        if (name == "Reference" && Number(text) != 0) axis.reference = Number(text);
    }

    void End_Route() {
        in_route_ = false;
        column_ = nullptr;
        if (scan_.Is_Sensor_Record()) {
            if (const double kelvin = Temperature_Of(scan_); kelvin > 0) record_kelvin_ = kelvin;
            return;
        }
        const auto room = static_cast<std::ptrdiff_t>(most_patterns) - static_cast<std::ptrdiff_t>(patterns_.size() + found_.size());
        if (room <= 0 || scans_ >= static_cast<int>(most_patterns)) return Tell_Left_Out();
        const std::string words = "Scan " + std::to_string(++scans_) + ' ';
        std::vector<Diffraction_Pattern_Type> patterns;
        std::vector<std::string> warnings;
        const Status status = Patterns_Of(scan_, static_cast<std::size_t>(room), patterns, warnings);
        if (status.failed) notes_.failed.push_back(words + status.message);
        for (const std::string& warning : warnings) notes_.warnings.push_back(words + warning);
        for (Diffraction_Pattern_Type& p : patterns) {
            p.bank = scans_;
            found_.push_back({std::move(p), Scan_Facts()});
        }
        scan_ = {};
    }

    void Tell_Left_Out() {
        const std::string text = "Only the first " + std::to_string(most_patterns) + " scans were read";
        if (notes_.failed.empty() || notes_.failed.back() != text) notes_.failed.push_back(text);
        scan_ = {};
    }

    Fact_List Scan_Facts() const {
        Fact_List facts = scan_.facts;
        facts.Add("Scan axis", scan_.shown.empty() ? scan_.name : scan_.shown);
        facts.Add("Scan mode", scan_.mode);
        for (const Brml_Axis& axis : scan_.axes) {
            const std::string name = axis.name.empty() ? axis.id : axis.name;
            facts.Add(name + " start", axis.start);
            facts.Add(name + " stop", axis.stop);
            facts.Add(name + " step", axis.increment);
        }
        return facts;
    }

    std::shared_ptr<const Head_Facts> All_Facts(const Diffraction_Pattern_Type& p, const Fact_List& scan,
                                                const Fact_List& container) const {
        Fact_List all;
        if (p.count_time > 0) all.Add("Time a step (s)", static_cast<double>(p.count_time));
        if (p.TSample > 0) all.Add("Temperature (K)", static_cast<double>(p.TSample));
        for (const Fact_List* list : {&scan, &facts_, &container, &instrument_.facts})
            if (const auto facts = list->Done())
                for (const Head_Fact& fact : *facts) all.Add(fact.name, fact.value);
        return all.Done();
    }

    int& scans_;
    std::vector<Diffraction_Pattern_Type>& patterns_;
    Read_Notes& notes_;
    bool in_route_ = false, in_instrument_ = false;
    Brml_Scan scan_;
    Brml_Column view_, spare_;
    Brml_Column* column_ = nullptr;  // the one that is being told
    std::size_t fields_ = 0;
    Instrument instrument_;
    Fact_List facts_;
    double record_kelvin_ = 0;
    std::vector<Found> found_;
};

}  // namespace

Status Read_Brml_Container(std::string_view bytes, Brml_Container& container) {
    Container_Events events(container);
    return Walk_Xml(bytes, events);
}

Status Read_Brml_Raw_Data(std::string_view bytes, const Brml_Container& container, int& scans,
                          std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    Raw_Data_Events events(scans, patterns, notes);
    const Status status = Walk_Xml(bytes, events);
    events.Finish(container);
    return status;
}

}  // namespace vntl
