#include "patterns/cif/cif_told.hpp"

#include <algorithm>
#include <cmath>

#include "base/cif_words.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/cif/cif_values.hpp"
#include "patterns/head_facts.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_facts = 1000;
constexpr double largest_angle = 360, hottest = 1e5;

constexpr std::pair<std::string_view, std::string_view> shared_names[] = {{"_diffrn_ambient_temperature", "Temperature (K)"},
                                                                          {"_cell_measurement_temperature", "Temperature (K)"},
                                                                          {"_diffrn_source_target", "Anode"},
                                                                          {"_diffrn_source_voltage", "Voltage (kV)"},
                                                                          {"_diffrn_source_current", "Current (mA)"},
                                                                          {"_pd_meas_step_count_time", "Time a step (s)"},
                                                                          {"_pd_meas_datetime_initiated", "Date"},
                                                                          {"_pd_meas_info_author_name", "User"},
                                                                          {"_pd_spec_description", "Sample"}};

std::string_view Fact_Name(const Cif_Item& item) {
    for (const auto& [name, fact] : shared_names)
        if (item.name == name) return fact;
    for (const std::string_view category : {"_pd_", "_diffrn_", "_exptl_"})
        if (item.name.starts_with(category)) return item.word;
    return {};
}

// A text field of one line is that line.
std::string_view Without_Ends(std::string_view value) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = value.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view{} : value.substr(first, value.find_last_not_of(blanks) + 1 - first);
}

// What stands behind the item, with its one blank, as those write it who set no quotes; the value, where it stands in quotes or elsewhere.
std::string_view Written(const Cif_Item& item) {
    std::string_view line = item.behind.substr(0, item.behind.find_first_of("\r\n"));
    line = Trim_Right(line.substr(0, line.find(" #")));
    const std::string_view cut = Trim_Left(line);
    if (cut.empty() || cut.front() == '\'' || cut.front() == '"') return Without_Ends(item.value);
    return line.size() - cut.size() > 1 ? cut : line;
}

}  // namespace

const Cif_Told::Named Cif_Told::named[] = {
    {"_pd_proc_2theta_range_min", proc_start}, {"_pd_proc_2theta_range_inc", proc_step},   {"_pd_meas_2theta_range_min", meas_start},
    {"_pd_meas_2theta_range_inc", meas_step},  {"_pd_proc_number_of_points", proc_points}, {"_pd_meas_number_of_points", meas_points},
    {"_diffrn_ambient_temperature", ambient},  {"_cell_measurement_temperature", of_cell}, {"_pd_meas_step_count_time", step_time}};

void Cif_Told::Take(const Cif_Item& item) {
    const std::string_view value = Without_Ends(item.value);
    if (!Cif_Value_Known(value)) return;
    if (item.name == "_pd_block_id") title_ = Kept_Text(Written(item), title_width);
    if (item.name == "_diffrn_radiation_probe") radiation_ = Trim(Written(item));
    for (const auto& [name, number] : named) {
        if (item.name != name) continue;
        Cif_Value told;
        const char* at = value.data();
        known_[number] = Take_Cif_Value(at, value.data() + value.size(), told) && told.known && Is_Sound(told.number);
        Parse_Double(value.data(), at, numbers_[number]);
    }
    const std::string_view fact = Fact_Name(item);
    const bool kept = !fact.empty() && facts_.size() < most_facts && value.find_first_of("\r\n") == std::string_view::npos;
    if (kept) facts_.emplace_back(fact, value);
}

std::string Cif_Told::Title() const { return title_.empty() ? Kept_Text(block_, title_width) : title_; }

bool Cif_Told::Range(double& start, double& step) const {
    const auto angle = [this](Number number) { return known_[number] && std::fabs(numbers_[number]) < largest_angle; };
    const auto take = [&](Number first, Number increment) {
        if (!angle(first) || !angle(increment) || !(numbers_[increment] > 0)) return false;
        start = numbers_[first];
        step = numbers_[increment];
        return true;
    };
    return take(proc_start, proc_step) || take(meas_start, meas_step) || take(proc_start, meas_step) || take(meas_start, proc_step);
}

int Cif_Told::Points(bool processed) const {
    constexpr double most = 0x7fffffff;
    const Number number = processed ? proc_points : meas_points;
    const double points = numbers_[number];
    return known_[number] && points >= 1 && points <= most ? static_cast<int>(points) : 0;
}

void Cif_Told::Give(Diffraction_Pattern_Type& p) {
    p.radiation = Kept_Text(radiation_, legend_width);
    if (p.radiation.empty() && p.scat_var == "TOF") p.radiation = "neutrons_tof";
    for (const Number number : {of_cell, ambient})
        if (known_[number] && numbers_[number] > 0 && numbers_[number] < hottest) p.TSample = static_cast<float>(numbers_[number]);
    if (known_[step_time] && numbers_[step_time] > 0) p.count_time = static_cast<float>(numbers_[step_time]);
    if (given_ == nullptr) {
        Fact_List facts;
        for (const auto& [name, value] : facts_) facts.Add(name, value);
        given_ = facts.Done();
    }
    p.facts = given_;
}

}  // namespace vntl
