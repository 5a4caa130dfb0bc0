#include "patterns/format_table.hpp"

#include <algorithm>
#include <array>

#include "base/text.hpp"
#include "patterns/cif/cif_pattern.hpp"
#include "patterns/columns/chi.hpp"
#include "patterns/columns/headed_columns.hpp"
#include "patterns/dmc.hpp"
#include "patterns/free_format.hpp"
#include "patterns/g41.hpp"
#include "patterns/gsas.hpp"
#include "patterns/isis.hpp"
#include "patterns/jcp.hpp"
#include "patterns/lab/asc.hpp"
#include "patterns/lab/brml.hpp"
#include "patterns/lab/bruker_raw.hpp"
#include "patterns/lab/cpi.hpp"
#include "patterns/lab/philips_rd.hpp"
#include "patterns/lab/ras.hpp"
#include "patterns/lab/rasx.hpp"
#include "patterns/lab/rigaku_raw.hpp"
#include "patterns/lab/stoe_raw.hpp"
#include "patterns/nexus/nexus.hpp"
#include "patterns/nls.hpp"
#include "patterns/panalytical_csv.hpp"
#include "patterns/r3a.hpp"
#include "patterns/r3b.hpp"
#include "patterns/time_variable.hpp"
#include "patterns/udf.hpp"
#include "patterns/uxd.hpp"
#include "patterns/xrdml/xrdml.hpp"
#include "patterns/xysigma.hpp"

namespace vntl {

namespace {

constexpr float largest_angle = 180.0f;
constexpr std::string_view xrays = "xrays_cw", neutrons = "neutrons_cw", flight = "neutrons_tof";
constexpr std::string_view angle = "2theta", degrees = "2theta(degrees)", counts = "Intensity (arb. units)";

using Source = const Pattern_Source&;
using Pattern = Diffraction_Pattern_Type;
using Patterns = std::vector<Diffraction_Pattern_Type>;

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
Status Gsas_All(Source source, int, Patterns& patterns, Read_Notes& notes) {
    return Read_Gsas_Banks(source.text, time_of_flight, patterns, notes.failed);
}
Status Uxd_All(Source source, int, Patterns& patterns, Read_Notes&) { return Read_Uxd_Ranges(source.text, patterns); }

template <Status (*read)(std::string_view, Patterns&, Read_Notes&)>
Status All(Source source, int, Patterns& patterns, Read_Notes& notes) {
    return read(source.text, patterns, notes);
}

Status Isis(Source source, Pattern& pattern) {
    Patterns patterns;
    const Status status = Read_Isis(source.text, isis_capacity, patterns);
    if (status.ok()) pattern = std::move(patterns.front());
    return status;
}
Status Isis_All(Source source, int capacity, Patterns& patterns, Read_Notes&) { return Read_Isis(source.text, capacity, patterns); }

// By its extension, and a file of another one by what is in it.
Status Panalytical_All(Source source, int, Patterns& patterns, Read_Notes& notes) {
    const std::string extension = Upper(source.extension);
    if (extension == ".XRDML" || Is_Xrdml(source.text)) return Read_Xrdml_Scans(source.text, patterns, notes);
    patterns.resize(1);
    if (extension == ".CSV") return Read_Panalytical_Csv(source.text, patterns.front());
    if (extension == ".UDF") return Read_Udf(source.text, patterns.front());
    if (extension == ".JCP") return Read_Jcp(source.text, patterns.front());
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

constexpr std::array<Pattern_Format, 27> formats = {{
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
    {16, "RAW", "RAW (Bruker, Siemens)", 1604},
    {17, "STOE", "RAW (STOE)", 1605},
    {18, "RIGAKURAW", "RAW (Rigaku)", 1606},
    {19, "BRML", "BRML (Bruker)", 1607},
    {20, "RASX", "RASX (Rigaku)", 1608},
    {21, "RAS", "RAS (Rigaku)", 1609},
    {22, "ASC", "ASC (Rigaku)", 1610},
    {23, "CPI", "CPI (Sietronics)", 1611},
    {24, "CHI", "CHI", 1612},
    {25, "RD", "RD (Philips)", 1613},
    {26, "COLUMNS", "Columns with a head", 1614},
    {27, "NEXUS", "NeXus (HDF5)", 1615},
}};

constexpr Format_Extension extensions[] = {
    {".dat", 1, false},       {".xy", 9, true, true}, {".xys", 9, true, true}, {".xye", 9, true, true},  {".gr", 9, false},
    {".uxd", 8, true},        {".sub", 1, false},     {".udf", 12, true},      {".csv", 12, true, true}, {".xrdml", 12, true},
    {".bac", 1, false},       {".gsa", 10, false},    {".gss", 11, false},     {".sim", 1, true},        {".mdi", 1, true},
    {".cif", 15, true},       {".jcp", 12, true},     {".gsas", 10, false},    {".fxye", 10, false},     {".gda", 11, false},
    {".raw", 16, true, true}, {".brml", 19, true},    {".rasx", 20, true},     {".ras", 21, true},       {".asc", 22, true, true},
    {".cpi", 23, true},       {".chi", 24, true},     {".rd", 25, true},       {".sd", 25, true},        {".nxs", 27, true},
};

// A format whose reader says all that there is to say of its patterns.
template <Status (*read)(std::string_view, Patterns&, Read_Notes&)>
Format_Reader Whole(int code, std::string_view mode, bool bytes, bool (*recognises)(std::string_view)) {
    return {code, {mode}, "", nullptr, "", angle, degrees, "", -1, nullptr, All<read>, true, Patterns_Taken::all, bytes, recognises};
}

// The free format is the last one: it reads by any other mode.
const std::vector<Format_Reader>& Readers() {
    static const std::vector<Format_Reader> readers = {
        {15, {"CIF"}, "  XY  - ", nullptr, "", "", "", counts, 0, nullptr, All<Read_Cif_Patterns>, true, Patterns_Taken::all},
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
        {8, {"SOCABIM"}, "  9  - ", Plain<Read_Uxd>, xrays, angle, degrees, counts, 1, nullptr, Uxd_All, true, Patterns_Taken::all},
        {9, {"XYSIGMA"}, " 10  - ", Xys, "unknown", "", "", "", -1, Finish_Xys, nullptr},
        {10,
         {"GSAS"},
         " 12  - ",
         Gsas<false>,
         "constant_wavelength",
         angle,
         degrees,
         counts,
         -1,
         nullptr,
         Gsas_All<false>,
         false,
         Patterns_Taken::asked},
        {11,
         {"GSASTOF"},
         " 12  - ",
         Gsas<true>,
         flight,
         "TOF",
         "TOF(micro-seconds)",
         counts,
         -1,
         nullptr,
         Gsas_All<true>,
         false,
         Patterns_Taken::asked},
        {12, {"PANALYTICAL"}, " 13  - ", nullptr, xrays, angle, degrees, counts, -1, nullptr, Panalytical_All, true, Patterns_Taken::all},
        {13, {"TIMEVARIABLE"}, " 11  - ", Plain<Read_Time_Variable>, xrays, angle, degrees, counts, -1, nullptr, nullptr},
        {14, {"ISIS"}, " 14  - ", Isis, "", "", "", "", -1, nullptr, Isis_All, false, Patterns_Taken::all},
        Whole<Read_Bruker_Raw>(16, "RAW", true, Is_Bruker_Raw),
        Whole<Read_Stoe_Raw>(17, "STOE", true, Is_Stoe_Raw),
        Whole<Read_Rigaku_Raw>(18, "RIGAKURAW", true, Is_Rigaku_Raw),
        Whole<Read_Brml>(19, "BRML", true, Is_Brml),
        Whole<Read_Rasx>(20, "RASX", true, Is_Rasx),
        Whole<Read_Ras>(21, "RAS", false, Is_Ras),
        Whole<Read_Asc>(22, "ASC", false, Is_Asc),
        Whole<Read_Cpi>(23, "CPI", false, Is_Cpi),
        Whole<Read_Chi>(24, "CHI", false, Is_Chi),
        Whole<Read_Philips_Rd>(25, "RD", true, Is_Philips_Rd),
        Whole<Read_Headed_Columns>(26, "COLUMNS", false, Is_Headed_Columns),
        Whole<Read_Nexus>(27, "NEXUS", true, Is_Nexus),
        {1, {}, "  0  - Free format", Free, "unknown", "", "", "", -1, Finish_Free, nullptr},
    };
    return readers;
}

}  // namespace

std::span<const Pattern_Format> Pattern_Formats() { return formats; }
std::string_view Mode_Of_Code(int code) { return Trim(formats[code - 1].mode); }
std::span<const Format_Extension> Format_Extensions() { return extensions; }

std::span<const Format_Reader> Format_Readers() { return Readers(); }

const Format_Reader& Reader_Of_Mode(std::string_view mode) {
    const std::string name = Upper(Trim(mode));
    for (const Format_Reader& reader : Readers())
        if (std::find(reader.modes.begin(), reader.modes.end(), name) != reader.modes.end()) return reader;
    return Readers().back();
}

}  // namespace vntl
