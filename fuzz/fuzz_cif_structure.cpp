// Structures in CIF files.
#include "fuzz_structure.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vntl::Crystal_Structure structure;
    if (!vntl::Read_Structure(vntl::Read_CIF, data, size, structure)) return 0;
    for (const vntl::Atom_Type& atom : structure.atoms)
        if (structure.group.Multip % atom.multiplicity != 0) std::abort();
    return 0;
}
