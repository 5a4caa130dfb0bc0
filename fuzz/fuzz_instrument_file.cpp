// Descriptions of instruments: any bytes give an instrument whose own text reads back as the same, or a message and the instrument as it
// was; and a new UB matrix in the text leaves the rest of the instrument.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "instrument/instrument_file.hpp"

namespace {

vntl::Status Read(std::string_view text, vntl::Diffractometer_Type& instrument) {
    bool ub_read = false;
    std::vector<std::string> warnings;
    return vntl::Read_Instrm_Text(text, "file", instrument, ub_read, warnings);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vntl;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (text.find('/') != text.npos) return 0;  // no file of the system is a description
    Diffractometer_Type instrument, again;
    instrument.info = "as before";
    const Status status = Read(text, instrument);
    if (status.failed == status.message.empty()) std::abort();
    if (status.failed) {
        Diffractometer_Type before;
        before.info = "as before";
        if (!(instrument == before)) std::abort();
        return 0;
    }
    if (instrument.alphas.values.size() + instrument.resolution_surface.values.size() > size) std::abort();
    const std::string own = Instrm_File_Text(instrument);
    if (Read(own, again).failed || !(again == instrument) || Instrm_File_Text(again) != own) std::abort();
    Instrument_State state;
    state.Current_Instrm = instrument;
    state.Current_Instrm_Set = true;
    if (Write_Current_Instrm_data(state).empty()) std::abort();

    const Matrix3 ub = {{{0.25f, -0.5f, 0}, {0.5f, 0.125f, 0}, {0, 0, -1.5f}}};
    std::string updated;
    int line = 0;
    if (Instrm_Text_With_UB(text, ub, 0.75f, updated, line).failed || line < 1 || Read(updated, again).failed) std::abort();
    instrument.wave = 0.75f;
    instrument.UB = ub;
    if (!Invert_Matrix(ub, instrument.UB_inverse) || !(again == instrument)) std::abort();
    return 0;
}
