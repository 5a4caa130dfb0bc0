#include "patterns/lab/brml_document.hpp"

#include <algorithm>
#include <cmath>

#include "base/text.hpp"
#include "base/text_file.hpp"
#include "base/xml_events.hpp"
#include "patterns/lab/brml_instrument.hpp"
#include "patterns/lab/brml_rows.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_patterns = 2000, most_references = 10000;
constexpr std::size_t most_columns = 1000;  // told by the views of a scan; a detector of many channels is one of them

std::size_t Place(std::string_view text) {
    int value = 0;
    return Parse_Integer(text, value) && value >= 0 ? static_cast<std::size_t>(value) : std::string_view::npos / 4;
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

class Raw_Data_Events : public Xml_Events {
public:
    Raw_Data_Events(const std::vector<std::string_view>& runs, int& scans, std::vector<Diffraction_Pattern_Type>& patterns,
                    Read_Notes& notes)
        : runs_(runs), scans_(scans), patterns_(patterns), notes_(notes) {}

    void Start(const Xml_Path& path, const Xml_Attributes& attributes) override {
        const std::string_view name = path.Name();
        if (name == row_element) return;
        if (name == run_element && in_route_) return Take_Run(Place(attributes[run_attribute]));
        if (name == "DataRoute") scan_ = {}, column_ = nullptr, in_route_ = true;
        if (name == "FixedInformation") in_instrument_ = true;
        if (in_instrument_ && name != "FixedInformation") instrument_.Start(path, attributes);
        if (in_route_) Start_In_Route(path, attributes);
    }

    void End(const Xml_Path& path, std::string_view text) override {
        const std::string_view name = path.Name();
        if (name == row_element) {
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

    void Take_Run(std::size_t number) {
        if (number >= runs_.size() || number < next_run_) return;  // every run counts once
        next_run_ = number + 1;
        std::string_view rest = runs_[number], row;
        while (Next_Row(rest, row)) scan_.Take_Row(row);
    }

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
            if (name == "MeasurementPoints") scan_.points = Brml_Number(text);
            if (name == "TimePerStep") scan_.time = Brml_Number(text);
            if (name == "TimePerStepEffective") scan_.effective_time = Brml_Number(text);
            if (name == "ScanModeVisibleName" || (name == "ScanMode" && scan_.mode.empty())) scan_.mode = text;
        } else if (path.Parent().ends_with("AxisInfo")) {
            const std::string_view list = path.Parent(2);
            std::vector<Brml_Axis>* const axes = list == "ScanAxes" ? &scan_.axes : list == "ScaleAxes" ? &scan_.scales : nullptr;
            if (axes != nullptr && !axes->empty()) Take_Axis(axes->back(), name, text);
        } else if (name == "BlankingValue" && column_ != nullptr) {
            column_->blank = Brml_Number(text);
        } else if (name == "VisibleName" && path.Parent() == "FieldDefinitions" && column_ != nullptr) {
            column_->shown = text;
        }
        if (name == "RawDataView") column_ = nullptr;
    }

    static void Take_Axis(Brml_Axis& axis, std::string_view name, std::string_view text) {
        if (name == "Start") axis.start = Brml_Number(text);
        if (name == "Stop") axis.stop = Brml_Number(text);
        if (name == "Increment") axis.increment = Brml_Number(text);
        if (name == "Reference" && Brml_Number(text) != 0) axis.reference = Brml_Number(text);
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

    const std::vector<std::string_view>& runs_;
    std::size_t next_run_ = 0;
    int& scans_;
    std::vector<Diffraction_Pattern_Type>& patterns_;
    Read_Notes& notes_;
    bool in_route_ = false, in_instrument_ = false;
    Brml_Scan scan_;
    Brml_Column view_, spare_;
    Brml_Column* column_ = nullptr;  // the one that is being told
    std::size_t fields_ = 0;
    Brml_Instrument instrument_;
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
    const Brml_Rows rows(bytes);
    Raw_Data_Events events(rows.runs, scans, patterns, notes);
    const Status status = Walk_Xml(rows.document, events);
    events.Finish(container);
    return status;
}

}  // namespace vntl
