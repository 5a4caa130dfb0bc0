// The panels of a structure: any texts give a structure or a message. A structure that was read fills panels that give it back, and is the
// same in the file that is made of it.
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "crystal/elements.hpp"
#include "crystal/osl_lines.hpp"
#include "external/osl_panels.hpp"

namespace {

using namespace vntl;

void Demand(bool good) {
    if (!good) std::abort();
}

bool Close(double a, double b, double half_digit) { return std::fabs(a - b) <= half_digit + 1e-6 * std::fabs(b); }

// The file has words, and of a species its element; a panel keeps what was written.
void Demand_Same(const Crystal_Structure& a, const Crystal_Structure& b, bool as_written) {
    Demand(a.cell.cell == b.cell.cell && a.cell.ang == b.cell.ang);
    Demand(Operator_Set(a.group) == Operator_Set(b.group) && a.atoms.size() == b.atoms.size());
    for (std::size_t i = 0; i < a.atoms.size(); ++i) {
        const Atom_Type &p = a.atoms[i], &q = b.atoms[i];
        Demand(as_written ? p.symbol == q.symbol : Element_Of(p.symbol) == Element_Of(q.symbol));
        Demand((as_written ? p.label : Osl_Word(p.label)) == q.label && p.x == q.x && p.y == q.y && p.z == q.z && p.biso == q.biso &&
               p.occupancy == q.occupancy);
        Demand(p.aniso == q.aniso && p.beta == q.beta && p.multiplicity == q.multiplicity);
    }
}

}  // namespace

// The first line is the cell, the second the group, the others are the atoms.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string file = std::filesystem::temp_directory_path() / ("fuzz_osl_panels_" + std::to_string(getpid()) + ".osl");
    std::string text(reinterpret_cast<const char*>(data), size);
    Pdf_Input input;
    for (std::string* panel : {&input.pdf_cell_text, &input.pdf_spgr_text}) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        *panel = text.substr(0, end);
        text.erase(0, end + 1);
    }
    input.pdf_atoms_text = text;
    Crystal_Structure structure, again, from_file;
    Osl_Panel faulty = Osl_Panel::cell;
    if (const Status status = Read_Atoms_Panel(input, structure, faulty); status.failed) {
        Demand(!status.message.empty() && status.message.size() < 2000);
        return 0;
    }
    // A displacement beyond what is taken from a file can come from its other forms; it is no longer read then.
    for (const Atom_Type& atom : structure.atoms)
        for (const float beta : atom.beta)
            if (std::fabs(beta) > 1e6f) return 0;
    const std::string written = Osl_File_Text(input, structure);
    std::ofstream(file, std::ios::binary) << written;
    Demand(Read_Structure_File(file, from_file, "OSL").ok());
    Demand_Same(structure, from_file, false);

    Demand(Fill_Atoms_Panel(structure, file, input).ok());
    Demand(Read_Atoms_Panel(input, again, faulty).ok());
    Demand_Same(structure, again, true);
    input.imported.reset();
    Demand(Read_Atoms_Panel(input, again, faulty).ok() && again.atoms.size() == structure.atoms.size());
    for (std::size_t i = 0; i < again.atoms.size(); ++i) {
        const Atom_Type &p = again.atoms[i], &q = structure.atoms[i];
        Demand(Close(p.x, q.x, 0.6e-5) && Close(p.biso, q.biso, 0.6e-5) && Close(p.beta[0], q.beta[0], 0.6e-6));
    }
    return 0;
}
