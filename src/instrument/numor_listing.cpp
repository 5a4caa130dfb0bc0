#include <cmath>
#include <string_view>

#include "base/edit_descriptor.hpp"
#include "base/text.hpp"
#include "instrument/data_directories.hpp"
#include "instrument/read_numor.hpp"

namespace vntl {

namespace {

constexpr std::size_t frame_width = 80, label_width = 18;
constexpr float most_plain = 1e9f;  // a larger number is told with its exponent

std::string Column(float value) {
    static const Edit_Format plain("(F16.4)"), scientific("(1PE16.6)");
    std::string text;
    const bool fits = std::isfinite(value) && std::fabs(value) < most_plain;
    if (Write_Record(text, fits ? plain : scientific, value).failed) return {};
    return std::string(Trim_Right(Replace_All(text, "\n", "")));
}

class Listing {
public:
    Listing(std::string_view heading, const Numor_Head& numor) {
        const std::string frame(frame_width, '-');
        lines_ = {frame, std::string(heading) + std::to_string(numor.numor) + " of instrument " + numor.instrm, frame};
    }

    void Text(std::string_view label, const std::string& text) { lines_.push_back(std::string(Trim_Right(Label(label) + "  " + text))); }
    template <class... Values>
    void Numbers(std::string_view label, std::string_view unit, Values... values) {
        std::string line = Label(label);
        ((line += Column(values)), ...);
        lines_.push_back(line + std::string(unit));
    }

    void Head(const Numor_Head& numor) {
        Text("HEADER:", numor.header);
        Text("INTRUMENT:", numor.instrm);
        Text("TITLE:", numor.title);
        Text("SCAN_TYPE:", numor.scantype);
        Numbers("SCAN_START:", "", numor.scans[0]);
        Numbers("SCAN_STEP :", "", numor.scans[1]);
        Numbers("MONITOR:", "", numor.monitor);
        Numbers("TIME(seg):", "", numor.time);
        Numbers("Temp-SETPNT: ", " Kelvin", numor.conditions[0]);
        Numbers("Temp-REGUL.: ", " Kelvin", numor.conditions[1]);
        Numbers("Temp-SAMPLE: ", " Kelvin", numor.conditions[2]);
        Numbers("Magnetic Field:", "", numor.conditions[4]);
    }

    void Scan(const SXTAL_Numor_Type& numor) {
        const auto vector = [this](std::string_view label, const std::array<float, 3>& v) { Numbers(label, "", v[0], v[1], v[2]); };
        Numbers("ANGLE_PHI:", "", numor.phi);
        Numbers("ANGLE_CHI:", "", numor.chi);
        Numbers("ANGLE_OMEGA:", "", numor.omega);
        Numbers("ANGLE_GAMMA:", "", numor.gamma);
        Numbers("ANGLE_PSI:", "", numor.psi);
        vector("HKL(Min.):", numor.hmin);
        vector("HKL(Max.):", numor.hmax);
        Numbers("SCAN_WIDTH:", "", numor.scans[2]);
        Numbers("COUPLING_FACT:", "", numor.coupling);
        vector("DELTA-hkl:", numor.dh);
    }

    std::vector<std::string> Lines() const { return lines_; }

private:
    static std::string Label(std::string_view label) {
        std::string text = ' ' + std::string(label);
        text.resize(std::max(text.size(), label_width), ' ');
        return text;
    }

    std::vector<std::string> lines_;
};

template <class Numor>
Status List_Text(std::string_view text, const std::string& file, std::string_view instrument, std::vector<std::string>& lines) {
    Numor numor;
    const Status status = Read_Numor_Text(text, file, instrument, numor);
    if (status.failed) return With_File(status, file);
    lines = Write_Numor_Info(numor);
    if constexpr (requires { numor.notice; }) lines.insert(lines.begin(), numor.notice);
    return status;
}

}  // namespace

std::vector<std::string> Write_Numor_Info(const Powder_Numor_Type& numor) {
    Listing listing(" ---  Header Information about the NUMOR: ", numor);
    listing.Head(numor);
    return listing.Lines();
}

std::vector<std::string> Write_Numor_Info(const SXTAL_Numor_Type& numor) {
    Listing listing(" ---  Information about the NUMOR: ", numor);
    listing.Head(numor);
    listing.Scan(numor);
    return listing.Lines();
}

Status List_Numor_File(const std::string& file, std::string_view instrument, std::vector<std::string>& lines) {
    std::string text;
    if (Status status = Read_Run_Bytes(file, text); status.failed) return status;
    return Is_SXTAL_Numor_Instrument(instrument) ? List_Text<SXTAL_Numor_Type>(text, file, instrument, lines)
                                                 : List_Text<Powder_Numor_Type>(text, file, instrument, lines);
}

}  // namespace vntl
