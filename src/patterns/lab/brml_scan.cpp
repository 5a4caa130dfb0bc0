#include "patterns/lab/brml_scan.hpp"

#include <algorithm>
#include <cmath>

#include "base/real_parse.hpp"
#include "base/text.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/scan_axis.hpp"
#include "patterns/temperature.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr double rounding = 1.1e-4;  // of the angles in the rows, which have four decimals

bool Holds_No_Case(std::string_view text, std::string_view part) { return Contains(Lower(text), part); }

bool Moves(const Brml_Axis& axis) { return std::isnan(axis.increment) || axis.increment != 0; }

// The axis that x is: the scattering angle where it moves, for coupled axes too.
const Brml_Axis* Scanned(const std::vector<Brml_Axis>& axes) {
    for (const Brml_Axis& axis : axes)
        if (Is_Scattering_Angle(axis.id) && Moves(axis)) return &axis;
    for (const Brml_Axis& axis : axes)
        if (Moves(axis)) return &axis;
    return axes.empty() ? nullptr : &axes.front();
}

// The column of an axis: by its own name, or by one such as "Goniometer#TwoTheta#Position".
const Brml_Column* Column_Of_Axis(const Brml_Scan& scan, std::string_view id) {
    for (const Brml_Column& column : scan.columns)
        if (!column.recorded && Equal_No_Case(column.name, id)) return &column;
    const std::string inner = '#' + Lower(id) + '#';
    for (const Brml_Column& column : scan.columns)
        if (!column.recorded && Contains('#' + Lower(column.name) + '#', inner)) return &column;
    return nullptr;
}

const Brml_Column* Column_Named(const Brml_Scan& scan, std::string_view name) {
    for (const Brml_Column& column : scan.columns)
        if (Equal_No_Case(column.name, name)) return &column;
    return nullptr;
}

bool In_Rows(const Brml_Scan& scan, const Brml_Column* column) {
    return column != nullptr && column->place < scan.width && column->length <= scan.width - column->place;
}

const Brml_Column* Counter(const Brml_Scan& scan, std::vector<std::string>& warnings) {
    const Brml_Column* counter = nullptr;
    for (const Brml_Column& column : scan.columns) {
        if (!column.counts || !In_Rows(scan, &column)) continue;
        if (counter == nullptr)
            counter = &column;
        else if (warnings.empty())
            warnings.push_back("has another counter, " + std::string(Cut(column.shown, 60)) + ", which is left out");
    }
    return counter;
}

// The rows of a scan, looked at by column.
class Rows {
public:
    explicit Rows(const Brml_Scan& scan) : scan_(scan) {}

    float At(std::size_t row, const Brml_Column& column) const { return scan_.values[row * scan_.width + column.place]; }

    // Counts were multiplied by the absorber that stood in the beam.
    float Factor(std::size_t row, const Brml_Column* absorber) const {
        const float factor = absorber == nullptr ? 1.0f : At(row, *absorber);
        return factor > 0 && Is_Sound(factor) ? factor : 1.0f;
    }

    static bool Blank(float value, const Brml_Column& column) { return std::isnan(value) || value == static_cast<float>(column.blank); }

private:
    const Brml_Scan& scan_;
};

// Where the grid start + i increment begins with which all rows agree; NaN where it does not, or the rows tell no angle and it is not told.
double Grid_Start(const Brml_Scan& scan, const Brml_Axis& axis, const Brml_Column* angles) {
    if (!Is_Sound(axis.start) || !Is_Sound(axis.increment) || axis.increment == 0) return not_told;
    if (angles == nullptr) return axis.start;
    const Rows rows(scan);
    const double room = std::min(rounding, 0.6 * std::fabs(axis.increment));
    for (const double start : {axis.start, axis.start + axis.reference}) {
        std::size_t i = 0;
        while (i < scan.Rows() && std::fabs(rows.At(i, *angles) - (start + static_cast<double>(i) * axis.increment)) <= room) ++i;
        if (i == scan.Rows()) return start;
    }
    return not_told;
}

void Finish(Diffraction_Pattern_Type& p, bool grid) {
    if (p.x.back() < p.x.front()) Turn_Round(p);
    p.xmin = p.x.front();
    p.xmax = p.x.back();
    p.step = p.npts > 1 ? (p.xmax - p.xmin) / static_cast<float>(p.npts - 1) : 0.0f;
    p.constant_step = grid;
    Set_Y_Limits(p);
}

void Set_Counts(Diffraction_Pattern_Type& p, std::size_t at, float y, float factor) {
    p.y[at] = y;
    p.sigma[at] = factor * std::fabs(y);
    if (p.per_second && p.count_time > 0) p.sigma[at] /= p.count_time;
}

// Times that differ from point to point make counts that do not compare.
bool Times_Differ(const Brml_Scan& scan, const Brml_Column& times) {
    const Rows rows(scan);
    const float first = rows.At(0, times);
    for (std::size_t i = 1; i < scan.Rows(); ++i)
        if (std::fabs(rows.At(i, times) - first) > 0.05f * std::fabs(first)) return true;
    return false;
}

// What all patterns of the scan have.
Diffraction_Pattern_Type Begun(const Brml_Scan& scan, const Brml_Column& counter, std::vector<std::string>& warnings) {
    Diffraction_Pattern_Type p;
    p.radiation = "xrays_cw";
    p.per_second = Holds_No_Case(counter.unit, "persecond") || Holds_No_Case(counter.unit, "cps") || Contains(counter.unit, "/s");
    double time = scan.effective_time > 0 ? scan.effective_time : scan.time;
    const Brml_Column* const times = Column_Named(scan, "MeasuredTime");
    if (In_Rows(scan, times)) {
        if (!(time > 0)) time = Rows(scan).At(0, *times);
        if (!p.per_second && Times_Differ(scan, *times)) warnings.push_back("was measured with times that differ from step to step");
    }
    if (time > 0 && Is_Sound(time)) p.count_time = static_cast<float>(time);
    if (const double kelvin = Temperature_Of(scan); kelvin > 0) p.TSample = static_cast<float>(kelvin);
    return p;
}

Status Pattern_Of_Rows(const Brml_Scan& scan, const Brml_Column& counter, Diffraction_Pattern_Type& p) {
    const Brml_Axis* const axis = Scanned(scan.axes);
    if (axis == nullptr) return Status::Fail("has no axis that moves");
    const Brml_Column* angles = Column_Of_Axis(scan, axis->id);
    if (!In_Rows(scan, angles)) angles = nullptr;
    const double start = Grid_Start(scan, *axis, angles);
    const bool grid = !std::isnan(start);
    if (!grid && angles == nullptr) return Status::Fail("tells no angles");
    const Brml_Column* absorber = Column_Named(scan, "AbsorptionFactor");
    if (!In_Rows(scan, absorber)) absorber = nullptr;

    if (Status status = Allocate_Measured(p, scan.Rows()); status.failed) return status;
    const Rows rows(scan);
    std::size_t n = 0;
    for (std::size_t i = 0; i < scan.Rows(); ++i) {
        const float y = rows.At(i, counter);
        const float x = grid ? static_cast<float>(start + static_cast<double>(i) * axis->increment) : rows.At(i, *angles);
        if (Rows::Blank(y, counter) || std::isnan(x)) continue;
        p.x[n] = x;
        Set_Counts(p, n++, y, rows.Factor(i, absorber));
    }
    if (n == 0) return Status::Fail("holds no counts");
    const bool whole = n == scan.Rows() && scan.bad_rows == 0;
    End_At_Last_Number(p, n, scan.points);
    Finish(p, grid && whole);
    Set_Scan_Axis(p, axis->name.empty() ? axis->id : axis->name);
    return Status::Done();
}

// A detector that stood still and counted along its own axis: every row is a pattern.
Status Pattern_Of_Snapshot(const Brml_Scan& scan, const Brml_Column& counter, const Brml_Axis& axis, std::size_t row,
                           Diffraction_Pattern_Type& p) {
    if (Status status = Allocate_Measured(p, counter.length); status.failed) return status;
    const Brml_Column* absorber = Column_Named(scan, "AbsorptionFactor");
    const float factor = Rows(scan).Factor(row, In_Rows(scan, absorber) ? absorber : nullptr);
    for (std::size_t i = 0; i < counter.length; ++i) {
        p.x[i] = static_cast<float>(axis.start + static_cast<double>(i) * axis.increment);
        Set_Counts(p, i, scan.values[row * scan.width + counter.place + i], factor);
    }
    Finish(p, true);
    Set_Scan_Axis(p, axis.name.empty() ? axis.id : axis.name);
    return Status::Done();
}

}  // namespace

void Brml_Scan::Take_Row(std::string_view text) {
    const std::size_t before = values.size();
    const char* at = text.data();
    const char* const end = at + text.size();
    bool good = true;
    while (at != end) {
        while (at != end && (*at == ' ' || *at == '\n' || *at == '\r' || *at == '\t')) ++at;
        float value = std::numeric_limits<float>::quiet_NaN();
        at = Parse_Float(at, end, value);
        for (; at != end && *at != ','; ++at) good = good && static_cast<unsigned char>(*at) <= ' ';
        values.push_back(Is_Sound(value) ? value : std::numeric_limits<float>::quiet_NaN());
        if (at != end) ++at;
    }
    const std::size_t count = values.size() - before;
    if (width == 0 && good) width = count;
    const bool taken = good && count >= width && count > 0;
    if (!taken) ++bad_rows;
    values.resize(taken ? before + width : before);
}

bool Brml_Scan::Is_Sensor_Record() const { return Contains(name, "NonAmbientModeData"); }

double Temperature_Of(const Brml_Scan& scan) {
    for (const Brml_Column& column : scan.columns) {
        if (column.counts || !In_Rows(scan, &column) || !Holds_No_Case(column.name + column.shown, "temperature")) continue;
        double sum = 0;
        std::size_t n = 0;
        for (std::size_t i = 0; i < scan.Rows(); ++i) {
            const float value = Rows(scan).At(i, column);
            if (Rows::Blank(value, column)) continue;
            sum += static_cast<double>(value);
            ++n;
        }
        if (n > 0) return In_Kelvin(sum / static_cast<double>(n), column.unit);
    }
    return 0;
}

Status Patterns_Of(const Brml_Scan& scan, std::size_t most, std::vector<Diffraction_Pattern_Type>& patterns,
                   std::vector<std::string>& warnings) {
    if (scan.Rows() == 0) return Status::Fail("holds no points");
    if (scan.columns.empty()) return Status::Fail("does not tell what its columns are");
    const Brml_Column* const counter = Counter(scan, warnings);
    if (counter == nullptr) return Status::Fail("holds no counts");
    Diffraction_Pattern_Type begun = Begun(scan, *counter, warnings);
    if (counter->length == 1) {
        const Status status = Pattern_Of_Rows(scan, *counter, begun);
        if (status.ok()) patterns.push_back(std::move(begun));
        return status;
    }
    const Brml_Axis* const axis = Scanned(scan.scales);
    if (axis == nullptr || !Is_Sound(axis->start) || !Is_Sound(axis->increment) || axis->increment == 0)
        return Status::Fail("is pictures of a detector, not a pattern");
    for (std::size_t row = 0; row < std::min(scan.Rows(), most); ++row) {
        Diffraction_Pattern_Type p = begun;
        if (Status status = Pattern_Of_Snapshot(scan, *counter, *axis, row, p); status.failed) return status;
        patterns.push_back(std::move(p));
    }
    return Status::Done();
}

}  // namespace vntl
