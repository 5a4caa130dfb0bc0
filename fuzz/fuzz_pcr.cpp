// PCR files: any bytes give a structure of finite numbers or a message.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "crystal/structure_readers.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vntl::Crystal_Structure structure;
    const vntl::Status status = vntl::Read_PCR({reinterpret_cast<const char*>(data), size}, structure);
    if (status.failed == status.message.empty() || (status.ok() && !(structure.cell.CellVol > 0))) std::abort();
    for (const vntl::Atom_Type& atom : structure.atoms)
        if (!std::isfinite(atom.x + atom.y + atom.z + atom.biso + atom.occupancy)) std::abort();
    return 0;
}
