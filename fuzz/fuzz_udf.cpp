// UDF: any bytes give a pattern or a message, in bounded memory.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "patterns/udf.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vntl::Diffraction_Pattern_Type pattern;
    const vntl::Status status = vntl::Read_Udf({reinterpret_cast<const char*>(data), size}, pattern);
    const auto points = static_cast<std::size_t>(pattern.npts);
    if (status.ok() && (pattern.npts < 1 || pattern.x.size() != points || pattern.y.size() != points || pattern.nd.size() != points))
        std::abort();
    return 0;
}
