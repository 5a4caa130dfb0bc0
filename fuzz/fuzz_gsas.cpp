// GSAS: any bytes give patterns or a message, in bounded memory. The first byte chooses time of flight and the bank.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "patterns/gsas.hpp"

namespace {

void Check(const vntl::Diffraction_Pattern_Type& p) {
    const auto points = static_cast<std::size_t>(p.npts);
    const bool sized = p.x.size() == points && p.y.size() == points && p.sigma.size() == points && p.nd.size() == points;
    if (p.npts < 1 || !sized) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const bool flight = (data[0] & 1) != 0;
    const int bank = (data[0] >> 1) % 5;
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);

    vntl::Diffraction_Pattern_Type pattern;
    const vntl::Status one = vntl::Read_Gsas(text, flight, bank, pattern);
    if (one.ok()) Check(pattern);

    std::vector<vntl::Diffraction_Pattern_Type> patterns;
    std::vector<std::string> messages;
    const vntl::Status all = vntl::Read_Gsas_Banks(text, flight, patterns, messages);
    std::size_t points = 0;
    for (const auto& p : patterns) {
        Check(p);
        points += p.x.size();
    }
    if (all.ok() == patterns.empty() || points > 32768 + 2 * text.size()) std::abort();
    if (patterns.size() + messages.size() != std::min<std::size_t>(vntl::Gsas_Banks(text).size(), 2000)) std::abort();
    (void)vntl::Gsas_Is_Flight(text);
    return 0;
}
