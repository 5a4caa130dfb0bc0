// BRML: any bytes as the documents of an archive, and as an archive, give sound patterns or a message.
#include "fuzz_archive.hpp"
#include "patterns/lab/brml.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    vntl::fuzz::Look_At_Patterns(bytes, vntl::Read_Brml);
    static_cast<void>(vntl::Is_Brml(bytes));
    // The documents stand one behind the other, parted by a zero byte.
    const std::size_t part = std::min(bytes.find('\0'), size);
    vntl::fuzz::Look_At_Patterns(vntl::fuzz::Stored({{"Experiment0/RawData0.xml", bytes.substr(0, part)},
                                                     {"Experiment0/DataContainer.xml", bytes.substr(std::min(part + 1, size))}}),
                                 vntl::Read_Brml);
    return 0;
}
