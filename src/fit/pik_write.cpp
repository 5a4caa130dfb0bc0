// Writing a PIK file.
#include <algorithm>
#include <array>
#include <cmath>

#include "base/os.hpp"
#include "base/text.hpp"
#include "fit/pik_file.hpp"
#include "fit/written.hpp"

namespace vntl {

namespace {

std::string Line(std::string_view text) { return std::string(text) + "\n"; }

// Six columns, or as many as it takes to stay apart from the number before it.
std::string Whole_Column(int value) {
    constexpr std::size_t width = 6;
    const std::string digits = std::to_string(value);
    return std::string(digits.size() < width ? width - digits.size() : 1, ' ') + digits;
}

std::string Common_Lines(Fit_Kind kind, const Fit_State& state) {
    constexpr std::array angles = {" <= Parameter  U         &    '  ", " <= Parameter  V         &    '  ",
                                   " <= Parameter  W         &    '  ", " <= Parameter  Z         &    '  ",
                                   " <= Parameter Eta0       &    '  ", " <= Parameter  X         &    '  "};
    constexpr std::array flight = {" <= Global-Alpha &  Flag ", " <= Global-Beta  &       ", " <= Sig-2        &       ",
                                   " <= Sig-1        &       ", " <= Sig-0        &       ", " <= Eta          &       "};
    const bool cw = kind == Fit_Kind::constant_wavelength;
    std::string text;
    const auto add = [&](const Fit_Value& value, const char* told) {
        text += Line(Column(value.value, 14, cw ? 6 : 4) + Written("(4X,I2)", value.flag) + "     " + told);
    };
    if (cw) {
        add(state.ratio, " <= Kalph2/Kalph1 ratio  &  Flag ");
        add(state.asym[0], " <= Asymmetry-1(S_L)     &    '  ");
        add(state.asym[1], " <= Asymmetry-2(D_L)     &    '  ");
    }
    const auto& labels = cw ? angles : flight;
    for (std::size_t i = 0; i < labels.size(); ++i) add(state.prof[i], labels[i]);
    return text;
}

std::string Peak_Line(Fit_Kind kind, const Fit_Peak& peak) {
    const bool cw = kind == Fit_Kind::constant_wavelength;
    std::string text, flags;
    for (const Fit_Value* value : Values_Of(kind, peak)) {
        text += Column(value->value, 14, cw ? (value == &peak.intensity ? 3 : 6) : 4);
        flags += Written(cw ? "(I3)" : "(I2)", value->flag);
    }
    return Line(text + (cw ? "" : "  ") + flags);
}

}  // namespace

std::string Pik_Text(Fit_Kind kind, const Fit_State& state, std::span<const Background_Mark> nodes, std::string_view title,
                     std::string_view scat_var) {
    const bool cw = kind == Fit_Kind::constant_wavelength;
    const std::string variable(scat_var), own_title(Trim(title));
    // A title that begins like a comment would not be found again.
    std::string text = Line(own_title.starts_with('!') ? "Peaks " + own_title : own_title);
    text += Line(cw ? "! Ang_init   Ang_fin  Nbac Npeak  Ncyc   Inte  Inst  Jobt  Cont Weight Corr Constr   Percent"
                    : "!    TOF_init       TOF_fin      Nbac Npeak  Ncyc  Inst  Jobt  Cont Weight Corr Constr Percent ");
    const int width = cw ? 10 : 15, constr = state.constr ? 1 : 0;
    text += Column(state.x_ini, width, 4) + Column(state.x_fin, width, 4);
    for (const int value : {static_cast<int>(nodes.size()), Active_Peaks(state), state.Ncyc, 0, 0, 0, state.iw, state.corrmax, constr,
                            static_cast<int>(std::lround(state.percent))})
        text += Whole_Column(value);
    text += "\n";
    text += cw ? Line(Column(state.lambda1, 12, 6) + Column(state.lambda2, 12, 6) + "  <=  Lambda1 & Lambda2")
               : Line(Column(state.d2tof, 14, 6) + "  <=  d to T.O.F. coefficient");
    text += Line("!  Global Profile Parameters:") + Common_Lines(kind, state) + Line("!  Background Parameters:") +
            Line(cw ? "!     " + variable + "        Background   Flag " : "!       TOF        Background   Flag ");
    for (const Background_Mark& node : nodes) text += Line(Column(node.x, 14, 4) + Column(node.y, 14, 4) + Written("(I6)", node.flag));
    text += Line("!  Reflection Parameters:") +
            Line(cw ? "!       " + variable + "     Intensity    Shift-FWHM     Shift-Eta    Flags "
                    : "!    TOF-Bragg     Intensity   Shift-sigma   Shift-alpha    Shift-beta    Shift-eta   Flags");
    for (const Fit_Peak& peak : state.peaks)
        if (peak.active) text += Peak_Line(kind, peak);
    return text + Line("!  Chi2 = " + Written("(F14.6)", state.chi2));
}

std::string Pik_Name(Fit_Kind kind, const Fit_State& state, std::span<const Background_Mark> nodes, const std::string& stem) {
    if (kind == Fit_Kind::constant_wavelength) {
        const bool whole = !nodes.empty() && (nodes.back().x > 180 || nodes.front().x < 0);
        const auto end = [&](float x) { return std::to_string(static_cast<long>(std::clamp(x * (whole ? 1.0f : 10.0f), -1e9f, 1e9f))); };
        return stem + "-" + end(state.x_ini) + "-" + end(state.x_fin) + ".pik";
    }
    std::string name = stem + ".pik";
    for (int number = 1; IOsFileExists(name); ++number) name = stem + "_" + (number < 10 ? "0" : "") + std::to_string(number) + ".pik";
    return name;
}

}  // namespace vntl
