#include "fit/listing.hpp"

#include <algorithm>
#include <array>

#include "fit/written.hpp"

namespace vntl {

namespace {

using Nodes = std::span<const Background_Mark>;

std::string Line(std::string text) { return std::move(text) + "\n"; }

template <class... Values>
std::string Line(const char* descriptor, std::string_view label, const Values&... values) {
    return std::string(label) + Written(descriptor, values...) + "\n";
}

std::string With_Flag(std::string_view label, const Fit_Value& value) { return Line("(F14.6,I3)", label, value.value, value.flag); }

std::string With_Deviation(std::string_view label, const Fit_Value& value) {
    return Line(std::string(label) + Column(value.value, 16, 6) + Column(value.sd, 16, 6));
}

template <std::size_t n>
std::string With_Flags(const std::array<const char*, n>& labels, const Fit_Value* values) {
    std::string text;
    for (const char* label : labels) text += With_Flag(label, *values++);
    return text;
}

constexpr const char* dashes = "            ------------------------------------ ";

// --- constant wavelength -------------------------------------------------------------------------------------------------------

std::string Heading_Of_Angles(const Fit_State& start, Nodes nodes, std::string_view title, const std::string& variable) {
    return Line("\n") + Line(dashes) + Line("     --- PROGRAM: Lorvane (Embedded in Vantrelo-2006 ---") +
           Line("                (version 5.0 November - 2015) ") + Line(dashes) + Line(" => TITLE: " + std::string(title)) +
           Line(" => " + variable + " range, peaks and cycles read ") + Line("(F14.3)", " => " + variable + "(init)    :", start.x_ini) +
           Line("(F14.3)", " => " + variable + "(fin )    :", start.x_fin) + Line("(I5)", " => Number of peaks :", Active_Peaks(start)) +
           Line("(I5)", " => Number of background points :", static_cast<int>(nodes.size())) +
           Line("(I5)", " => Number of cycles:", start.Ncyc) +
           Line("(2F14.6)", " => Wave (A)               :", start.lambda1, start.lambda2) + Line("") +
           Line(" => Global parameters                 Flag") + With_Flag(" => Kalph2/Kalph1 ratio    :", start.ratio) +
           With_Flag(" => Asymmetry parameter S_L:", start.asym[0]) + With_Flag(" => Asymmetry parameter D_L:", start.asym[1]) + Line("") +
           Line("      Profile Parameters for Pseudo-Voigt") + Line("        pV(x) = ETA* L(x) + (1-ETA)* G(x)") +
           Line("    FWHM = SQRT((U tanT + V) tanT + W) + Z/cosT") + Line("    ETA  = Eta0 + X * 2T ") + Line("") +
           With_Flags(std::array{" => Parameter  U           :", " => Parameter  V           :", " => Parameter  W           :",
                                 " => Parameter  Z           :", " => Parameter Eta0         :", " => Parameter  X           :"},
                      start.prof.data());
}

std::string Peak_At_Start(const Fit_Peak& peak) {
    return Line("(F14.6,F14.2,2F14.6,5X,4I3)", "", peak.pos.value, peak.intensity.value, peak.shift_width.value, peak.shift_eta.value,
                peak.pos.flag, peak.intensity.flag, peak.shift_width.flag, peak.shift_eta.flag);
}

// --- time of flight ------------------------------------------------------------------------------------------------------------

std::string Heading_Of_Flight(const Fit_State& start, Nodes nodes, std::string_view title) {
    return Line("\n") + Line(dashes) + Line("                  --- PROGRAM: Tessyl ---") +
           Line("                 (version 4.0 June - 2015) ") + Line(dashes) + Line(" => TITLE: " + std::string(title)) +
           Line(" => TOF range, peaks and cycles read ") + Line("(F14.3)", " => TOF(init)       : ", start.x_ini) +
           Line("(F14.3)", " => TOF(fin )       : ", start.x_fin) + Line("(I5)", " => Number of peaks : ", Active_Peaks(start)) +
           Line("(I5)", " => Number of background points : ", static_cast<int>(nodes.size())) +
           Line("(I5)", " => Number of cycles: ", start.Ncyc) + Line("") + Line(" => Global parameters          Flag") +
           With_Flags(std::array{" => Global-Alpha", " => Global-Beta ", " => Sig-2       ", " => Sig-1       ", " => Sig-0       ",
                                 " => Global-Eta  "},
                      start.prof.data());
}

std::string Pulse_At_Start(const Fit_Peak& peak) {
    return Line("(F14.6,F14.2,4F14.6,5X,6I2)", "", peak.pos.value, peak.intensity.value, peak.shift_width.value, peak.shift_alpha.value,
                peak.shift_beta.value, peak.shift_eta.value, peak.pos.flag, peak.intensity.flag, peak.shift_width.flag,
                peak.shift_alpha.flag, peak.shift_beta.flag, peak.shift_eta.flag);
}

// --- both ----------------------------------------------------------------------------------------------------------------------

std::string Nodes_At_Start(Nodes nodes) {
    std::string text = Line("") + Line(" => Background parameters") + Line("      Scatt. Variable     Background  Flag");
    for (const Background_Mark& node : nodes) text += Line("(2F18.4,I4)", "", node.x, node.y, node.flag);
    return text + Line("");
}

std::string Common_Values(Fit_Kind kind, const Fit_State& fitted) {
    constexpr std::array angles = {"  U-Caglioti       : ", "  V-Caglioti       : ", "  W-Caglioti       : ",
                                   "  Z-(Z/cosTheta)   : ", "  Eta0(PV-function): ", "X(Eta=Eta0+X 2Theta: "};
    constexpr std::array flight = {"     Global-Alpha  : ", "     Global-Beta   : ", "        Sig-2      : ",
                                   "        Sig-1      : ", "        Sig-0      : ", "  Eta (PV-function): "};
    std::string text = Line("  Global Profile Parameters:  ");
    if (kind == Fit_Kind::constant_wavelength)
        text += With_Deviation("Kalph2/Kalph1 ratio: ", fitted.ratio) + With_Deviation("Asymmetry-1(S_L)   : ", fitted.asym[0]) +
                With_Deviation("Asymmetry-2(D_L)   : ", fitted.asym[1]);
    const auto& labels = kind == Fit_Kind::constant_wavelength ? angles : flight;
    for (std::size_t i = 0; i < labels.size(); ++i) text += With_Deviation(labels[i], fitted.prof[i]);
    return text;
}

// A value and its deviation stand under each heading, in 18 columns. Large intensities are listed on a scale on which the largest is 10000.
float Scale_Of(const Fit_State& fitted) {
    constexpr float unscaled = 10000;
    float largest = unscaled;
    for (const Fit_Peak& peak : fitted.peaks)
        if (peak.active) largest = std::max(largest, peak.intensity.value);
    return unscaled / largest;
}

std::string Final_Peak(Fit_Kind kind, Fit_Peak peak, float scale) {
    peak.intensity.value *= scale;
    peak.intensity.sd *= scale;
    constexpr int value_width = 10, sd_width = 8, sd_decimals = 5;
    const bool angles = kind == Fit_Kind::constant_wavelength;
    std::string text;
    for (const Fit_Value* value : Values_Of(kind, peak)) {
        const bool first = value == &peak.pos, time = !angles && (first || value == &peak.shift_width);
        const int decimals = value == &peak.intensity ? 2 : time ? 4 : 6;
        const std::string column = Column(value->value, value_width + first, decimals);
        text += column.substr(first);  // nothing stands in front of the first one: it needs no blank
        text += Column(value->sd, sd_width, std::min(decimals, sd_decimals));
    }
    return Line(text);
}

}  // namespace

std::string Listing_Heading(Fit_Kind kind, const Fit_State& start, Nodes nodes, std::string_view title, std::string_view scat_var,
                            int npvar) {
    const bool angles = kind == Fit_Kind::constant_wavelength;
    std::string text = angles ? Heading_Of_Angles(start, nodes, title, std::string(scat_var)) : Heading_Of_Flight(start, nodes, title);
    text += Nodes_At_Start(nodes);
    text += Line(angles ? "      Position      Intensity      D-Gamma         D-Eta          Flags"
                        : "    Position       Intensity    Shift-Sigma   Shift-alpha    Shift-beta    Shift-Eta       Flags") +
            Line("");
    for (const Fit_Peak& peak : start.peaks)
        if (peak.active) text += angles ? Peak_At_Start(peak) : Pulse_At_Start(peak);
    return text + Line("") + Line("(I4)", " => Total number of refined parameters: ", npvar) + Line("");
}

std::string Listing_Values(Fit_Kind kind, const Fit_State& fitted, Nodes nodes) {
    const bool angles = kind == Fit_Kind::constant_wavelength;
    constexpr const char* rule = "  ----------------------------------------";
    std::string text = Line(rule) + Line("  Final parameters and Standard Deviations") + Line(rule) + Common_Values(kind, fitted) +
                       Line("  Background Parameters:") +
                       Line(angles ? "      2Theta/Pos      Background " : "        TOF        Background ");
    for (const Background_Mark& node : nodes) text += Line(Column(node.x, 14, 4) + Column(node.y, 16, 4) + Column(node.sd, 12, 4));
    const float scale = Scale_Of(fitted);
    text += Line("(F12.7)", "  Scale factor applied to all integrated intensities:", scale) + Line("  Reflection Parameters:") +
            Line(angles ? "          Position         Intensity        Shift-FWHM         Shift-Eta"
                        : "         TOF-Bragg         Intensity       Shift-sigma       Shift-alpha        Shift-beta         Shift-eta");
    for (const Fit_Peak& peak : fitted.peaks)
        if (peak.active) text += Final_Peak(kind, peak, scale);
    return text;
}

std::string End_Of_Fit_Text(const std::string& infout, float chi2, std::string_view eol) {
    return infout + std::string(eol) + Written("(' => Final   Chi2:',F15.5)", chi2);
}

}  // namespace vntl
