// CHI: any bytes give patterns or a message.
#include "lab_reader.hpp"
#include "patterns/columns/chi.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return vntl::fuzz::Read_Any(vntl::Read_Chi, vntl::Is_Chi, data, size);
}
