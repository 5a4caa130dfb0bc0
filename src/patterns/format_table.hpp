// The formats that can be read: names, extensions, and what is known of a pattern once its reader has run.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// Places in the format table, from 1.
namespace format_code {
enum Code : int {
    none,
    free_format,
    r3b,
    nls,
    g41,
    r3a,
    r3a_old,
    dmc,
    uxd,
    xysigma,
    gsas,
    gsas_flight,
    panalytical,
    variable_time,
    isis,
    cif,
    raw,
    stoe,
    rigaku_raw,
    brml,
    rasx,
    ras,
    asc,
    cpi,
    chi,
    rd,
    columns,
    nexus,
};
}

inline constexpr int isis_capacity = 7;  // banks that one ISIS file may bring

// A file in hand, as the readers look at it.
struct Pattern_Source {
    std::string_view text;       // of a format of bytes the whole file, as it is
    std::string_view extension;  // as it is written, ".MDI"
    int bank = 0;                // wanted, 0: bank 1, or the first
};

// One row of the format table: `code` is its place, from 1.
struct Pattern_Format {
    int code;
    std::string_view mode;         // given to Read_Pattern, and the `format` of the profile
    std::string_view description;  // text of the radio button of the dialog "Format of the data file"
    int field;                     // number of that button
};

// Extensions, all small, whose files may have a format. `decides`: nobody is asked. `general`: many programs write it, so that contents
// which speak for a format come first.
struct Format_Extension {
    std::string_view extension;
    int code;
    bool decides;
    bool general = false;
};

// How many patterns of a file become rows: one, all where the user says so, or all that there are.
enum class Patterns_Taken { one, asked, all };

// What `instr` begins with, the reader, and what is set afterwards. A blank text, and a `constant_step` below 0, leave what the reader set;
// `scat_var` and `legend_x` stand in for what it did not set, a blank `legend_y` is then that of counts or of counts a second.
struct Format_Reader {
    int code;
    std::vector<std::string_view> modes;                               // that choose it
    std::string_view instr;                                            // followed by the mode
    Status (*read)(const Pattern_Source&, Diffraction_Pattern_Type&);  // may be null where there is `read_all`
    std::string_view radiation, scat_var, legend_x, legend_y;
    int constant_step;
    void (*finish)(Diffraction_Pattern_Type&);  // what no table says; may be null
    // All patterns of a file that may hold several; null where it holds one. Fails where more than `capacity` are a fault of the file.
    Status (*read_all)(const Pattern_Source&, int capacity, std::vector<Diffraction_Pattern_Type>&, Read_Notes&);
    bool finds_constants = false;  // wavelengths have places of their own in the format; else a line of the head may tell them
    Patterns_Taken taken = Patterns_Taken::one;
    bool bytes = false;                              // the file is no text
    bool (*recognises)(std::string_view) = nullptr;  // from the first bytes of a file, for certain; null where it takes a closer look
};

std::span<const Pattern_Format> Pattern_Formats();
std::string_view Mode_Of_Code(int code);  // its mode text, of a code of the table
std::span<const Format_Extension> Format_Extensions();
const Format_Reader& Reader_Of_Mode(std::string_view mode);  // the free format for an unknown one
std::span<const Format_Reader> Format_Readers();

}  // namespace vntl
