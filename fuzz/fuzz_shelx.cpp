// SHELX files.
#include "fuzz_structure.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vntl::Crystal_Structure structure;
    vntl::Read_Structure(vntl::Read_SHELX, data, size, structure);
    return 0;
}
