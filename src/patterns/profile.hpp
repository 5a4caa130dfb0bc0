// What a row of the profile store keeps beside its pattern.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vntl {

inline constexpr int max_excluded_regions = 100;

// What a row is. "RIETV" is a pattern file that brings its own calculated curve, "PRF" and "MONO" come from profile files of a refinement
// ("MONO" with integrated intensities), the others from what was done to rows.
enum class Row_Kind { none, data, rietv, prf, mono, summ, aver, diff, smoo, copy };

constexpr std::string_view Told(Row_Kind kind) {
    constexpr std::string_view texts[] = {"", "DATA", "RIETV", "PRF", "MONO", "SUMM", "AVER", "DIFF", "SMOO", "COPY"};
    return texts[static_cast<std::size_t>(kind)];
}

// Profiles of a refinement: many operations pass such rows by, and one at most is in the store.
constexpr bool Is_Refined(Row_Kind kind) { return kind == Row_Kind::prf || kind == Row_Kind::mono; }

struct PRF_Info_Add_Type {
    std::string file_name;    // name shown in the lists, without directory; "<copy>" for a copy
    std::string legend_text;  // what the user calls the row; blank: by its file
    std::string directory;    // directory of the file
    std::string origin_note;  // title of a profile file of a refinement
    Row_Kind kind = Row_Kind::none;
    std::string format;  // name of the format that the file was read with
    std::int32_t nphases = 0;
    std::int32_t nreflections = 0;
    float chi2 = 0;
    float x_shift_total = 0;  // sum of the shifts, and product of the factors, that the user gave to the row
    float y_mult_total = 1;
    std::vector<float> phase_value;        // nphases
    std::vector<float> phase_table;        // propagation vectors: (3, largest number of a phase, nphases), first index fastest
    std::vector<std::int32_t> refl_phase;  // nreflections, and so on
    std::vector<float> refl_tag;
    std::vector<std::int32_t> refl_code;  // row of the tick, 1 to nphases
    std::vector<float> refl_position;     // x of the tick, in the scale of x
    std::vector<std::string> refl_label;  // text that the read-out shows
    std::int32_t nexcl = 0;
    std::array<float, max_excluded_regions> excl_min{};  // region i covers excl_min to excl_max
    std::array<float, max_excluded_regions> excl_max{};
};

}  // namespace vntl
