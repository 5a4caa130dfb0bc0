// Input of the programs that find a cell from the positions of lines.
#include <algorithm>

#include "base/text.hpp"
#include "external/column_lines.hpp"
#include "external/peaks_file.hpp"
#include "patterns/write_columns.hpp"

namespace vntl {

namespace {

// A comment, which no program reads by its columns: constants of time of flight, which are larger than a wavelength, widen it.
void Put_Wavelengths(Column_Lines& lines, const Points_Source& source) {
    static const Edit_Format told("(A,3(1X,F8.5))"), wider("(A,3(1X,F14.5))");
    constexpr float told_end = 99.999995f;  // rounds to more than two digits before the point
    const auto& waves = source.wavelengths;
    const bool fit = std::all_of(waves.begin(), waves.end(), [](float wave) { return wave < told_end && wave > -told_end / 10; });
    lines.Record(fit ? told : wider, "! WAVE: ", Named("wavelength 1", waves[0]), Named("wavelength 2", waves[1]),
                 Named("the ratio of the wavelengths", waves[2]));
}

void Put_Title(Column_Lines& lines, std::string_view title, std::string_view usual) {
    const std::string line = Without_Line_Ends(title);
    lines.Put("", Trim(line).empty() ? usual : Trim_Right(line));
}

}  // namespace

Status Dicvol_File(const Points_Source& source, const Dicvol_Input& input, std::span<const Peak_Mark> peaks, std::string& text) {
    static const Edit_Format kinds("(8(1X,I3),22X,A)"), limits("(3F6.1,2F9.1,2F6.1,6X,A)"), material("(T1,F8.5,3(1X,F8.3),18X,A)"),
        search("(2(1X,F8.3),5I4,16X,A)"), points("(F14.5,2F16.3)");
    constexpr int superposed = 2;  // the last number of its line
    const auto used = peaks.first(std::min(peaks.size(), static_cast<std::size_t>(std::max(input.lines, 0))));
    Column_Lines lines;
    lines.Put("# Input file for WDICVOL06");
    lines.Put("# created by Vantrelo-2006: ", source.date);
    lines.Put("! DATA FILE: ", Trim_Right(source.file_name));
    lines.Put("! INSTRM: ", Trim_Right(source.instr));
    Put_Wavelengths(lines, source);
    lines.Put(" ", Trim_Right(input.title));
    lines.Record(kinds, Named("# of lines used", static_cast<int>(used.size())), input.itype, int{input.cubic}, int{input.tetragonal},
                 int{input.hexagonal}, int{input.orthorhombic}, int{input.monoclinic}, int{input.triclinic},
                 "! N,ITYPE,JC,JT,JH,JO,JM,JTR");
    lines.Record(limits, Named("Amax", input.amax), Named("Bmax", input.bmax), Named("Cmax", input.cmax), Named("VOLmin", input.volmin),
                 Named("VOLmax", input.volmax), Named("BEmin", input.bemin), Named("BEmax", input.bemax),
                 "! AMAX,BMAX,CMAX,VOLMIN,VOLMAX,BEMIN,BEMAX");
    lines.Record(material, Named("Wavelength", input.wavelength), Named("Mol. weight", input.weight), Named("Density", input.density),
                 Named("Density error", input.density_error), "! WAVE,POIMOL,DENS,DELDEN");
    lines.Record(search, Named("EPS", input.eps), Named("FOM", input.fom), Named("impurity lines", input.impurity_lines),
                 int{input.zero_search}, int{input.zero_refinement}, int{input.option}, superposed,
                 "! EPS,FOM, N_IMP, ZERO_search, ZERO_refinement, DICVOL06_OPTION, ISUP");
    lines.Peaks(points, used);
    return lines.Finish(text);
}

Status Ito_File(const Ito_Input& input, std::span<const Peak_Mark> peaks, std::string& text) {
    static const Edit_Format parameters("(I1,2A1,I1,3I2,2F5.2,F10.5,I2,2I1,8I2)"), limits("(4F10.5)"), position("(F10.5)");
    constexpr float least_wavelength = 0.001f;
    Column_Lines lines;
    Put_Title(lines, input.title, "ITO input parameters");
    if (lines.Finite(Named("Wavelength", input.wavelength)) && input.wavelength < least_wavelength)
        lines.Put("9");
    else
        lines.Record(parameters, 0, "0", " ", 4, 0, 0, 0, 3.0, 4.5, Named("Wavelength", input.wavelength), 0, 0, 0, 3, 6, 6, 6, 0);
    lines.Record(limits, Named("zero shift", input.zero_shift), 4.0, 14.0, 0.0);
    lines.Positions(position, peaks);
    lines.Put("0.0 ");
    lines.Put("END");
    return lines.Finish(text);
}

Status Treor_File(const Points_Source& source, const Treor_Input& input, std::span<const Peak_Mark> peaks, std::string& text) {
    static const Edit_Format points("(3(2X,F12.5))"), choice("(2X,A,I1,A)"), wave("(2X,A,F8.5,A)"), mono("(2X,A,F6.2,A)"),
        volume("(2X,A,F7.0,A)"), whole("(2X,A,F5.0,A)"), end("(2X,A)");
    constexpr float least = 0.001f, usual_edge = 20;
    Column_Lines lines;
    lines.Put("! DATA FILE: ", Trim_Right(source.file_name));
    lines.Put("! INSTRM: ", Trim_Right(source.instr));
    Put_Wavelengths(lines, source);
    Put_Title(lines, input.title, "Treor input parameters");
    lines.Peaks(points, peaks);
    lines.Put(" ");
    lines.Record(choice, "CHOICE=", input.spacing, ",");
    lines.Record(wave, "WAVE=", Named("Wavelength", input.wavelength), ",");
    if (lines.Finite(Named("Beta_max", input.beta)) && input.beta > 0) lines.Record(mono, "MONO=", Named("Beta_max", input.beta), ",");
    lines.Record(volume, "VOL=", Named("Vol_max", input.volume), ",");
    const bool no_edge = lines.Finite(Named("Cell edge max", input.cem)) && input.cem <= least;
    lines.Record(whole, "CEM=", Named("Cell edge max", no_edge ? usual_edge : input.cem), ",");
    if (lines.Finite(Named("F.O.M.", input.merit)) && input.merit > least) lines.Record(whole, "MERIT=", Named("F.O.M.", input.merit), ",");
    lines.Record(end, "END*");
    return lines.Finish(text);
}

}  // namespace vntl
