// OSL files: any bytes give a structure or a message, and a structure that was read is written and read back the same.
#include <unistd.h>

#include <filesystem>
#include <string>

#include "fuzz_structure.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vntl;
    static const std::string file = std::filesystem::temp_directory_path() / ("fuzz_osl_" + std::to_string(getpid()) + ".osl");
    Crystal_Structure structure, again;
    if (!Read_Structure(Read_OSL, data, size, structure)) return 0;
    if (Write_OSL(file, structure).failed || Read_Structure_File(file, again, "OSL").failed) std::abort();
    if (again.cell.cell != structure.cell.cell || again.group.Multip != structure.group.Multip ||
        again.atoms.size() != structure.atoms.size())
        std::abort();
    for (std::size_t i = 0; i < again.atoms.size(); ++i) {
        const Atom_Type &a = structure.atoms[i], &b = again.atoms[i];
        if (a.x != b.x || a.biso != b.biso || a.occupancy != b.occupancy || a.aniso != b.aniso || a.beta != b.beta) std::abort();
    }
    return 0;
}
