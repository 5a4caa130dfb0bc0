#include "patterns/format_table.hpp"

#include <algorithm>
#include <array>

#include "base/text.hpp"
#include "patterns/cif_pattern.hpp"
#include "patterns/dmc.hpp"
#include "patterns/free_format.hpp"
#include "patterns/g41.hpp"
#include "patterns/gsas.hpp"
#include "patterns/isis.hpp"
#include "patterns/jcp.hpp"
#include "patterns/nls.hpp"
#include "patterns/panalytical_csv.hpp"
#include "patterns/r3a.hpp"
#include "patterns/r3b.hpp"
#include "patterns/time_variable.hpp"
#include "patterns/udf.hpp"
#include "patterns/uxd.hpp"
#include "patterns/xrdml.hpp"
#include "patterns/xysigma.hpp"

namespace vntl {

namespace {

constexpr float largest_angle = 180.0f;
constexpr std::string_view xrays = "xrays_cw", neutrons = "neutrons_cw", flight = "neutrons_tof";
constexpr std::string_view angle = "2theta", degrees = "2theta(degrees)", counts = "Intensity (arb. units)";

using Source = const Pattern_Source&;
using Pattern = Diffraction_Pattern_Type;
using Patterns = std::vector<Diffraction_Pattern_Type>;
using Messages = std::vector<std::string>;

template <Status (*read)(std::string_view, Pattern&)>
Status Plain(Source source, Pattern& pattern) {
    return read(source.text, pattern);
}

Status Free(Source source, Pattern& pattern) { return Read_Free_Format(source.text, Equal_No_Case(source.extension, ".MDI"), pattern); }
Status Xys(Source source, Pattern& pattern) { return Read_Xysigma(source.text, source.extension == ".gr", pattern); }

template <bool time_of_flight>
Status Gsas(Source source, Pattern& pattern) {
    return Read_Gsas(source.text, time_of_flight, source.bank, pattern);
}
template <bool time_of_flight>
Status Gsas_All(Source source, int, Patterns& patterns, Messages& messages) {
    return Read_Gsas_Banks(source.text, time_of_flight, patterns, messages);
}
Status Uxd_All(Source source, int, Patterns& patterns, Messages&) { return Read_Uxd_Ranges(source.text, patterns); }

Status Isis(Source source, Pattern& pattern) {
    Patterns patterns;
    const Status status = Read_Isis(source.text, isis_capacity, patterns);
    if (status.ok()) pattern = std::move(patterns.front());
    return status;
}
Status Isis_All(Source source, int capacity, Patterns& patterns, Messages&) { return Read_Isis(source.text, capacity, patterns); }

Status Panalytical(Source source, Pattern& pattern) {
    const std::string extension = Upper(source.extension);
    if (extension == ".CSV") return Read_Panalytical_Csv(source.text, pattern);
    if (extension == ".UDF") return Read_Udf(source.text, pattern);
    if (extension == ".JCP") return Read_Jcp(source.text, pattern);
    if (extension == ".XRDML") return Read_Xrdml(source.text, pattern);
    return Status::Done();  // nothing is read, which the checks then refuse
}

void Finish_Free(Pattern& p) {
    const bool long_x = p.x.back() > largest_angle;
    if (p.legend_y.empty()) p.legend_y = counts;
    if (p.legend_x.empty()) {
        p.legend_x = long_x ? "TOF(micro-seconds)" : degrees;
        p.scat_var = long_x ? "TOF" : angle;
    }
    if (p.scat_var.empty()) p.scat_var = angle;
}

void Finish_Xys(Pattern& p) {
    if (p.scat_var.empty()) p.scat_var = p.x.back() > largest_angle ? "TOF" : angle;
}

constexpr std::array<Pattern_Format, 15> formats = {{
    {1, "FreeFormat", "Free Format (Inst. 0)", 1002},
    {2, "R3B", "R3B, R22 (Inst. 3)", 1003},
    {3, "NLS", "NLS (Inst. 4)", 1004},
    {4, "G41", "G41, NewR3B, R22 (Inst. 5)", 1005},
    {5, "R3A", "R5B, 3T2, G42 (Inst. 6)", 1006},
    {6, "R3AOLD", "Old: R3A (Inst. 1)", 1007},
    {7, "DMC", "DMC, HRPT PSI (Inst.8)", 1008},
    {8, "SOCABIM", "SOCABIM (Inst. 9)", 1009},
    {9, "XYSIGMA", "XYSIGMA (Inst. 10)", 1010},
    {10, "GSAS", "GSAS (CW)", 1011},
    {11, "GSASTOF", "GSAS (TOF)  (Inst. 12)", 1599},
    {12, "PANALYTICAL", "PANALYTICAL (Inst. 13)", 1601},
    {13, "TIMEVARIABLE", "Variable Time (Inst. 11)", 1600},
    {14, "ISIS", "ISIS (Inst. 14)", 1602},
    {15, "CIF", "CIF - File", 1603},
}};

constexpr std::array<Format_Extension, 20> extensions = {{
    {".dat", 1, false}, {".xy", 9, true},    {".xys", 9, true},    {".xye", 9, true},        {".gr", 9, false},
    {".uxd", 8, true},  {".sub", 1, false},  {".udf", 12, true},   {".csv", 12, true, true}, {".xrdml", 12, true},
    {".bac", 1, false}, {".gsa", 10, false}, {".gss", 11, false},  {".sim", 1, true},        {".mdi", 1, true},
    {".cif", 15, true}, {".jcp", 12, true},  {".gsas", 10, false}, {".fxye", 10, false},     {".gda", 11, false},
}};

// The free format is the last one: it reads by any other mode.
const std::vector<Format_Reader>& Readers() {
    static const std::vector<Format_Reader> readers = {
        {15, {"CIF"}, "  XY  - ", Plain<Read_Cif_Pattern>, "", "", "", counts, 0, nullptr, nullptr, true},
        {2, {"R3B", "R22"}, "  3  - ", Plain<Read_R3b>, neutrons, angle, degrees, counts, 1, nullptr, nullptr},
        {3, {"NLS"}, "  4  - ", Plain<Read_Nls>, xrays, angle, degrees, counts, 1, nullptr, nullptr},
        {4, {"G41"}, "  5  - ", Plain<Read_G41>, neutrons, angle, degrees, counts, 1, nullptr, nullptr},
        {5, {"R3A", "R5B", "3T2", "G42"}, "  6  - ", Plain<Read_R3a>, neutrons, angle, degrees, counts, 1, nullptr, nullptr},
        {6,
         {"R3AOLD", "R5BOLD", "OLDR3A", "OLDR5B"},
         "  1  - ",
         Plain<Read_R3a_Old>,
         neutrons,
         angle,
         degrees,
         counts,
         1,
         nullptr,
         nullptr},
        {7, {"DMC", "HRPT"}, "  8  - ", Plain<Read_Dmc>, neutrons, angle, degrees, counts, 1, nullptr, nullptr},
        {8, {"SOCABIM"}, "  9  - ", Plain<Read_Uxd>, xrays, angle, degrees, counts, 1, nullptr, Uxd_All, true},
        {9, {"XYSIGMA"}, " 10  - ", Xys, "unknown", "", "", "", -1, Finish_Xys, nullptr},
        {10, {"GSAS"}, " 12  - ", Gsas<false>, "constant_wavelength", angle, degrees, counts, -1, nullptr, Gsas_All<false>},
        {11, {"GSASTOF"}, " 12  - ", Gsas<true>, flight, "TOF", "TOF(micro-seconds)", counts, -1, nullptr, Gsas_All<true>},
        {12, {"PANALYTICAL"}, " 13  - ", Panalytical, xrays, angle, degrees, counts, -1, nullptr, nullptr, true},
        {13, {"TIMEVARIABLE"}, " 11  - ", Plain<Read_Time_Variable>, xrays, angle, degrees, counts, -1, nullptr, nullptr},
        {14, {"ISIS"}, " 14  - ", Isis, "", "", "", "", -1, nullptr, Isis_All},
        {1, {}, "  0  - Free format", Free, "unknown", "", "", "", -1, Finish_Free, nullptr},
    };
    return readers;
}

}  // namespace

std::span<const Pattern_Format> Pattern_Formats() { return formats; }
std::string_view Mode_Of_Code(int code) { return Trim(formats[code - 1].mode); }
std::span<const Format_Extension> Format_Extensions() { return extensions; }

const Format_Reader& Reader_Of_Mode(std::string_view mode) {
    const std::string name = Upper(Trim(mode));
    for (const Format_Reader& reader : Readers())
        if (std::find(reader.modes.begin(), reader.modes.end(), name) != reader.modes.end()) return reader;
    return Readers().back();
}

}  // namespace vntl
