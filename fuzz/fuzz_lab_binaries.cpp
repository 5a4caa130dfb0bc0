// RAW and RD of diffractometers: any bytes give patterns or a message, in bounded memory, by each of their readers.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "patterns/lab/bruker_raw.hpp"
#include "patterns/lab/philips_rd.hpp"
#include "patterns/lab/rigaku_raw.hpp"
#include "patterns/lab/stoe_raw.hpp"

namespace {

constexpr std::size_t longest_message = 150;

void Check(const vntl::Status& status, const std::vector<vntl::Diffraction_Pattern_Type>& patterns) {
    if (status.failed != patterns.empty() || status.message.size() > longest_message) std::abort();
    for (const auto& p : patterns) {
        const auto points = static_cast<std::size_t>(p.npts);
        if (p.npts < 1 || p.x.size() != points || p.y.size() != points || p.sigma.size() != points) std::abort();
        if (p.npts_claimed != 0 && p.npts_claimed <= p.npts) std::abort();
        for (std::size_t i = 1; i < points; ++i)
            if (!(p.x[i] >= p.x[i - 1])) std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    for (const auto read : {vntl::Read_Bruker_Raw, vntl::Read_Stoe_Raw, vntl::Read_Rigaku_Raw, vntl::Read_Philips_Rd}) {
        std::vector<vntl::Diffraction_Pattern_Type> patterns;
        vntl::Read_Notes notes;
        Check(read(bytes, patterns, notes), patterns);
    }
    const bool told[] = {vntl::Is_Bruker_Raw(bytes), vntl::Is_Stoe_Raw(bytes), vntl::Is_Rigaku_Raw(bytes), vntl::Is_Philips_Rd(bytes)};
    if (told[0] + told[1] + told[2] + told[3] > 1) std::abort();
    return 0;
}
