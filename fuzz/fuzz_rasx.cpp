// RASX: any bytes as the members of an archive, and as an archive, give sound patterns or a message.
#include "fuzz_archive.hpp"
#include "patterns/lab/rasx.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    vntl::fuzz::Look_At_Patterns(bytes, vntl::Read_Rasx);
    static_cast<void>(vntl::Is_Rasx(bytes));
    // Conditions and columns stand one behind the other, parted by a zero byte.
    const std::size_t part = std::min(bytes.find('\0'), size);
    vntl::fuzz::Look_At_Patterns(vntl::fuzz::Stored({{"Data0/MesurementConditions0.xml", bytes.substr(0, part)},
                                                     {"Data0/Profile0.txt", bytes.substr(std::min(part + 1, size))}}),
                                 vntl::Read_Rasx);
    return 0;
}
