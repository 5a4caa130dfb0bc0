// CIF structures: any bytes give a structure with finite values or a message, in bounded memory.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "crystal/structure_readers.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    vntl::Crystal_Structure structure;
    const vntl::Status status = vntl::Read_CIF(text, structure);
    if (status.ok()) vntl::Set_Multiplicities(structure);
    if (status.failed == status.message.empty()) std::abort();
    if (status.failed) return 0;
    if (structure.group.Multip < 1) std::abort();
    for (const vntl::Atom_Type& atom : structure.atoms)
        if (!std::isfinite(atom.x + atom.y + atom.z) || !std::isfinite(atom.biso) || !std::isfinite(atom.occupancy) ||
            !std::isfinite(atom.beta[0]) || atom.multiplicity < 1 || structure.group.Multip % atom.multiplicity != 0)
            std::abort();
    return 0;
}
