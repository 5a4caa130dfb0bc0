// CPI: any bytes give patterns or a message.
#include "lab_reader.hpp"
#include "patterns/lab/cpi.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return vntl::fuzz::Read_Any(vntl::Read_Cpi, vntl::Is_Cpi, data, size);
}
