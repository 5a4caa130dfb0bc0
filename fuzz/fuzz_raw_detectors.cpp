// Raw files of many detectors: any bytes give patterns of one size or a message, in bounded memory. The first byte chooses the correction.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "patterns/multi_detector_raw.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    std::vector<vntl::Diffraction_Pattern_Type> patterns;
    const vntl::Status status = vntl::Read_Multi_Detector_Text(text, "run.3t2", (data[0] & 1) != 0, patterns);
    if (status.failed != patterns.empty() || status.failed == status.message.empty()) std::abort();
    for (const auto& p : patterns)
        if (p.npts < 2 || p.npts != patterns.front().npts || p.x.size() != static_cast<std::size_t>(p.npts) || p.title.empty())
            std::abort();
    return 0;
}
