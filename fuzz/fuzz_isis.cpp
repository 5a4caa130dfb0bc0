// ISIS: any bytes give patterns or a message, in bounded memory. The first byte is the most banks.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "patterns/isis.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const int capacity = data[0];
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    std::vector<vntl::Diffraction_Pattern_Type> patterns;
    const vntl::Status status = vntl::Read_Isis(text, capacity, patterns);
    if (status.ok() == patterns.empty() || patterns.size() > static_cast<std::size_t>(capacity)) std::abort();
    std::size_t points = 0;
    for (const auto& p : patterns) {
        const auto n = static_cast<std::size_t>(p.npts);
        if (p.npts < 0 || p.x.size() != n || p.y.size() != n || p.sigma.size() != n || p.nd.size() != n) std::abort();
        points += n;
    }
    if (points > text.size()) std::abort();
    return 0;
}
