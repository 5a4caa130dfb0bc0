// The input of Radiox, which computes pair distribution functions: an OSL file with a job before its structure. A user writes the structure
// in three panels: the cell, the group, and a line for each atom.
//
//   Atom Pb1  Pb    0.18748  0.25000  0.16721  1.39000  0.50000      label, species, x, y, z, Biso, occupancy
//   aniso        0.001000    0.002000    0.003000    0.000000    0.000000    0.000000      beta of the atom above: 11 22 33 12 13 23
//
// Lines of atoms are those of OSL files: in either case, with fractions and uncertainties, "aniso u_ij" and "aniso b_ij" too. What stands
// behind "!" is a comment.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "base/status.hpp"
#include "crystal/structure_file.hpp"

namespace vntl {

inline constexpr int neutrons = 1, x_rays = 2;

struct Pdf_Input {
    float pdf_rmin = 0.5f, pdf_rmax = 20, pdf_rstep = 0.01f;  // angstrom
    float pdf_qmax = 30, pdf_qbroad = 0.02f, pdf_qdamp = 0.012f;
    float pdf_delta1 = 0.1f, pdf_delta2 = 0.2f;
    std::string pdf_osl_name = "PDF_OSL_File.osl";
    int pdf_jobtype = neutrons;
    std::string pdf_cell_text, pdf_spgr_text, pdf_atoms_text;
    std::string imported_from = {};                  // the file of `imported`
    std::optional<Crystal_Structure> imported = {};  // what the panels were filled with last

    std::string_view pdf_job_text() const { return pdf_jobtype == x_rays ? "X-rays" : "Neutrons"; }
};

// The numbers of a job, as the user knows them.
struct Pdf_Number {
    const char* label;
    float Pdf_Input::*value;
};
inline constexpr std::array<Pdf_Number, 8> pdf_numbers = {{{"Rmin", &Pdf_Input::pdf_rmin},
                                                           {"Rmax", &Pdf_Input::pdf_rmax},
                                                           {"step", &Pdf_Input::pdf_rstep},
                                                           {"Qmax", &Pdf_Input::pdf_qmax},
                                                           {"Qbroad", &Pdf_Input::pdf_qbroad},
                                                           {"Qdamp", &Pdf_Input::pdf_qdamp},
                                                           {"Linear correlation sharpening coefficient", &Pdf_Input::pdf_delta1},
                                                           {"Quadratic correlation sharpening coefficient", &Pdf_Input::pdf_delta2}}};

// The first number with which there is no job, or which the columns of the file do not hold, and why; nothing where all is well.
struct Wrong_Pdf_Number {
    std::size_t place = 0;  // in pdf_numbers
    std::string why;        // begins with the label
};
std::optional<Wrong_Pdf_Number> Find_Wrong_Number(const Pdf_Input& input);

inline constexpr std::size_t largest_panel = 1u << 20;  // bytes

// Writes the panels from `structure`, which came from `file`. Fails, and leaves all as it was, when the atoms are more than a panel holds.
Status Fill_Atoms_Panel(const Crystal_Structure& structure, std::string_view file, Pdf_Input& input);

enum class Osl_Panel { cell, group, atoms };

// The structure that the panels tell, with its multiplicities. Cells and atoms that a panel shows as those that it was filled with are
// these, with all their digits. Species stay as they are written. On failure `faulty` is the first panel with a fault, the message has a
// line for each fault, and `structure` stays as it was.
Status Read_Atoms_Panel(const Pdf_Input& input, Crystal_Structure& structure, Osl_Panel& faulty);

// The whole file. `input` has no wrong number.
std::string Osl_File_Text(const Pdf_Input& input, const Crystal_Structure& structure);

}  // namespace vntl
