// What the targets of the structure readers share: any bytes give a structure of finite numbers, or a message.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "crystal/structure_readers.hpp"

namespace vntl {

// False when the reader refused the text.
inline bool Read_Structure(Status (*read)(std::string_view, Crystal_Structure&), const std::uint8_t* data, std::size_t size,
                           Crystal_Structure& structure) {
    const Status status = read({reinterpret_cast<const char*>(data), size}, structure);
    if (status.failed == status.message.empty()) std::abort();
    if (status.failed) return false;
    Set_Multiplicities(structure);
    if (structure.group.Multip < 1 || !(structure.cell.CellVol > 0)) std::abort();
    for (const Atom_Type& atom : structure.atoms) {
        float beta = 0;
        for (const float value : atom.beta) beta += value;
        if (!std::isfinite(atom.x + atom.y + atom.z + beta + atom.biso + atom.occupancy) || atom.multiplicity < 1) std::abort();
    }
    return true;
}

}  // namespace vntl
