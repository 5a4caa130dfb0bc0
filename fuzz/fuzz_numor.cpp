// Runs of every instrument: any bytes give a record whose counts have the told shape, or a message, in memory bounded by the text. The
// first byte picks the instrument, and the frames of a single crystal's run.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "instrument/read_numor.hpp"

namespace {

using namespace vntl;

constexpr std::string_view instruments[] = {"R3A", "R3B", "R5B", "R8", "R22", "R6", "R11", "R17", "R18", "R18_HB"};

void Check(bool good) {
    if (!good) std::abort();
}

// On success whole frames; after a failure those that could be read.
void Check_Record(const Status& status, const Numor_Head& numor, std::size_t text) {
    Check(status.failed == !status.message.empty());
    Check(numor.tmc_ang.frames() == numor.counts.frames());
    Check(numor.counts.All().size() <= text && numor.header.size() <= 4 * numor_header_width &&
          numor.title.size() <= 4 * numor_title_width);
    for (const float count : numor.counts.All()) Check(std::isfinite(count) && (status.failed || count >= 0));
    if (status.failed) return;
    Check(numor.nframes >= 1 && numor.counts.frames() == static_cast<std::size_t>(numor.nframes));
    Check(numor.counts.values() == static_cast<std::size_t>(numor.nbdata));
    Check(numor.tmc_ang.values() == static_cast<std::size_t>(numor.nbang) + frame_angle);
}

void Check_Matrices(const Numor_Head& numor) {
    for (const std::string_view machine : {"r6", "r1108", "r18"}) {
        Count_Matrix matrix;
        const Status status = Get_Counts(1, numor, machine, 4, 2, matrix);
        Check(status.failed || matrix.counts.size() == numor.counts.values());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view instrument = instruments[data[0] % std::size(instruments)];
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    (void)Instrument_Of_Text(text);
    (void)Looks_Like_Numor(text);
    if (Is_Powder_Numor_Instrument(instrument)) {
        Powder_Numor_Type numor;
        Check_Record(Read_Numor_Text(text, "run", instrument, numor), numor, size);
        Check_Matrices(numor);
        (void)Write_Numor_Info(numor);
        return 0;
    }
    SXTAL_Numor_Type numor;
    std::optional<Frame_Selection> frames;
    if (const int part = data[0] / 16; part > 8) frames = {part - 8, part - 7};
    Check_Record(Read_Numor_Text(text, "run", instrument, numor, frames), numor, size);
    Check_Matrices(numor);
    (void)Write_Numor_Info(numor);
    return 0;
}
