#include "patterns/columns/chi_axis.hpp"

#include <algorithm>
#include <numbers>
#include <string>

#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/lab/lab_text.hpp"

namespace vntl {

namespace {

bool Has_Any(std::string_view text, std::initializer_list<std::string_view> words) {
    return std::any_of(words.begin(), words.end(), [text](std::string_view word) { return Contains(text, word); });
}

// "q" as a word of its own: "Q (Inverse Nanometres)", "q_A^-1", "chi_Q".
bool Has_Q(std::string_view small) {
    const auto is_letter = [](char c) { return c >= 'a' && c <= 'z'; };
    for (std::size_t at = small.find('q'); at != std::string_view::npos; at = small.find('q', at + 1)) {
        const bool begins = at == 0 || !is_letter(small[at - 1]), ends = at + 1 == small.size() || !is_letter(small[at + 1]);
        if (begins && ends) return true;
    }
    return false;
}

void Name_Axis(Diffraction_Pattern_Type& p, std::string_view scat_var, std::string_view legend) {
    p.scat_var = scat_var;
    p.legend_x = Kept_Text(Trim(legend), legend_width);
}

}  // namespace

Label_Axis Set_Label_Axis(Diffraction_Pattern_Type& p, std::string_view label) {
    const std::string words = Readable(Trim(label)), small = Lower(words);
    if (Has_Any(small, {"theta", "2th", "tth"}))
        return {true, Contains(small, "rad") && !Contains(small, "radial") ? 180 / std::numbers::pi : 1.0};
    if (Has_Q(small)) {
        Name_Axis(p, "q-space", "Q(1/Angstrom)");
        return {true, Has_Any(small, {"nano", "nm"}) ? 0.1 : 1.0};
    }
    if (Has_Any(small, {"d-spac", "d spac", "dspac", "d_spac"}) || small.starts_with("d (") || small.starts_with("d_")) {
        Name_Axis(p, "d-spacing", "d-spacing(Angstroms)");
        return {true, Has_Any(small, {"nano", "nm"}) ? 10.0 : 1.0};
    }
    if (Has_Any(small, {"azimuth", "psi", "phi", "omega"})) {
        Name_Axis(p, "Angle", words);
        return {true, 1};
    }
    if (Has_Any(small, {"radi", "distance", "(mm)", "pixel", "column", "row"})) {
        Name_Axis(p, "Position", words);
        return {true, 1};
    }
    return {};
}

}  // namespace vntl
