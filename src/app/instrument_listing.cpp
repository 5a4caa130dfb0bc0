#include "app/instrument_listing.hpp"

#include <array>

#include "app/number_words.hpp"
#include "base/os.hpp"
#include "base/text.hpp"
#include "instrument/data_directories.hpp"
#include "instrument/instrument_file.hpp"
#include "instrument/read_numor.hpp"

namespace vntl {

namespace {

void Add_Lines(const std::vector<std::string>& lines, std::string& text) {
    for (const std::string& line : lines) text += line + '\n';
}

Status Read_UB(const Instrument_Request& request, Matrix3& ub, std::optional<float>& wave) {
    std::array<float, 9> numbers{};
    if (!Read_Numbers(*request.ub, numbers)) return Status::Fail("The UB matrix needs nine numbers, row by row");
    for (std::size_t i = 0; i < numbers.size(); ++i) ub[i / 3][i % 3] = numbers[i];
    if (!request.wave) return Status::Done();
    std::array<float, 1> angstroms{};
    if (!Read_Numbers(*request.wave, angstroms) || !(angstroms[0] > 0)) return Status::Fail("Bad wavelength");
    wave = angstroms[0];
    return Status::Done();
}

// The file is read before it is changed, and again for the listing, which so tells what now stands there.
Status Update_File(const Instrument_Request& request, Instrument_State& state, std::vector<std::string>& warnings) {
    Matrix3 ub{};
    std::optional<float> wave;
    if (Status status = Read_UB(request, ub, wave); status.failed) return status;
    if (Status status = Read_Current_Instrm(request.file, state, warnings); status.failed) return status;
    warnings.clear();
    return Update_Current_Instrm_UB(request.file, ub, wave, state);
}

}  // namespace

Status List_Numor(const std::vector<std::string>& words, std::string& text) {
    const std::string& file = words.front();
    std::string instrument = words.size() > 1 ? words[1] : Instrument_Of_Path(In_Directory(IOsDirName(), file));
    std::vector<std::string> lines;
    if (instrument.empty())
        if (Status status = Instrument_Of_Run(file, instrument); status.failed) return status;
    if (Trim(instrument).empty()) return Status::Fail_File("The file " + file + " names no instrument: give one behind it");
    const Status status = List_Numor_File(file, instrument, lines);
    Add_Lines(lines, text);
    return status;
}

Status List_Instrument(const Instrument_Request& request, std::string& text) {
    Instrument_State state;
    std::vector<std::string> warnings;
    if (request.ub)
        if (Status status = Update_File(request, state, warnings); status.failed) return status;
    if (Status status = Read_Current_Instrm(request.file, state, warnings); status.failed) return status;
    Add_Lines(Write_Current_Instrm_data(state), text);
    for (const std::string& warning : warnings) text += "Warning: " + warning + '\n';
    return Status::Done();
}

}  // namespace vntl
