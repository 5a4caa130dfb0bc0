// Structures out of CIF files.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <numbers>
#include <string>
#include <vector>

#include "crystal/elements.hpp"
#include "crystal/testing.hpp"

namespace vntl {
namespace {

using test::Real_Path;

struct Cif_Structure : test::Structure_Texts {
    Status Read(const std::string& text, Crystal_Structure& structure, std::string_view mode = "CIF") const {
        return Structure_Texts::Read(text, structure, mode);
    }
    Crystal_Structure Good(const std::string& text) const {
        Crystal_Structure structure;
        const Status status = Read(text, structure);
        EXPECT_TRUE(status.ok()) << status.message << '\n' << text.substr(0, 400);
        return structure;
    }
};

const std::string cubic = "_cell_length_a 10\n_cell_length_b 10\n_cell_length_c 10\n";
const std::string cell = "_cell_length_a 5\n_cell_length_b 6\n_cell_length_c 7\n";
const std::string p1 = "_symmetry_space_group_name_H-M 'P 1'\n";
const std::string heads = "loop_\n_atom_site_label\n_atom_site_fract_x\n_atom_site_fract_y\n_atom_site_fract_z\n";
const std::string iron = heads + "Fe1 0 0 0\n";

std::string Loop(const std::string& operators) { return "loop_\n_symmetry_equiv_pos_as_xyz\n" + operators; }

// Group orders and multiplicities were counted by a script of its own, which takes the operators that the file lists, and keeps images of
// an atom that differ by more than 0.05 angstroms; where files have a column of multiplicities, it is the same.
TEST_F(Cif_Structure, RealFilesOfManyWriters) {
    struct Real {
        const char* name;
        std::array<double, 6> cell;
        int order;
        std::size_t atoms;
        std::vector<int> multiplicities;  // of the first atoms; the rest have the last
        const char* symbols;              // of the first atoms
    };
    const Real files[] = {
        {"structures/kaolinite.cif", {5.1554, 8.9448, 7.4048, 91.7, 104.862, 89.822}, 2, 13, {2}, "Al Al Si Si O O O O O O O O O"},
        {"structures/pbso4.cif", {8.48, 5.398, 6.958, 90, 90, 90}, 8, 5, {4, 4, 4, 4, 8}, "Pb S O O O"},
        {"structures/lamno3_pbnm.cif", {5.538767, 5.744239, 7.705918, 90, 90, 90}, 8, 4, {4, 4, 4, 8}, "La Mn O O"},
        {"structures/caf2.cif", {5.464617, 5.464617, 5.464617, 90, 90, 90}, 192, 2, {4, 8}, "Ca F"},
        {"structures/cod_1011031.cif", {4.358, 4.358, 4.358, 90, 90, 90}, 96, 2, {4}, "Si C"},
        {"structures/cod_2013551.cif", {4.1537, 4.1537, 6.862, 90, 90, 120}, 12, 2, {1, 2}, "Mg I"},
        {"structures/cod_4003024.cif", {5.5592, 5.5592, 5.5592, 90, 90, 90}, 48, 4, {1, 1, 3, 1}, "Cs Sn Cl In"},
        {"structures/s2dipyridyl.cif", {15.8489, 5.5008, 23.118, 90, 96.916, 90}, 4, 44, {4}, "N C H C H"},
        {"cif_powder/cod_1517474.cif", {25.9292, 25.9292, 6.7962, 90, 90, 120}, 18, 9, {18}, "Zn O O O C C C C H"},
        {"formats/samples/pdcif_five_patterns.cif", {4.759296, 4.759296, 12.99236, 90, 90, 120}, 36, 2, {12, 18}, "Al O"},
        {"formats/samples/pdcif_two_blocks_tof_d.cif", {3.523433, 3.523433, 3.523433, 90, 90, 90}, 192, 1, {4}, "Ni"},
    };
    for (const Real& file : files) {
        SCOPED_TRACE(file.name);
        if (!std::filesystem::exists(Real_Path(file.name))) GTEST_SKIP();
        Crystal_Structure structure;
        const Status status = Read_Structure_File(Real_Path(file.name), structure, Structure_Mode(file.name));
        ASSERT_TRUE(status.ok()) << status.message;
        EXPECT_EQ(structure.mode, "CIF");
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_FLOAT_EQ(structure.cell.cell[i], static_cast<float>(file.cell[i]));
            EXPECT_FLOAT_EQ(structure.cell.ang[i], static_cast<float>(file.cell[i + 3]));
        }
        EXPECT_EQ(structure.group.Multip, file.order);
        ASSERT_EQ(structure.atoms.size(), file.atoms);
        std::string symbols;
        for (std::size_t i = 0; i < file.atoms; ++i) {
            symbols += structure.atoms[i].symbol + " ";
            EXPECT_EQ(structure.atoms[i].multiplicity, file.multiplicities[std::min(i, file.multiplicities.size() - 1)])
                << structure.atoms[i].label;
        }
        EXPECT_TRUE(symbols.starts_with(file.symbols)) << symbols;
    }
}

// The site at the origin of F d -3 m has 8 points in the first choice of origin (8a) and 16 in the second (16c); that of R -3 c 6 on
// hexagonal axes and 2 on rhombohedral ones (International Tables, volume A).
TEST_F(Cif_Structure, SymbolHallSymbolAndOperatorsMakeTheGroup) {
    const std::string hm = "_symmetry_space_group_name_H-M ", hall = "_symmetry_space_group_name_Hall ";
    const std::string two_fold = Loop("x,y,z\n-x,-y,z\n"),
                      second_pnnn = Loop(
                          "x,y,z\n1/2-x,1/2-y,z\n1/2-x,y,1/2-z\nx,1/2-y,1/2-z\n-x,-y,-z\n1/2+x,1/2+y,-z\n1/2+x,-y,1/2+z\n-x,1/2+y,1/2+z\n");
    const std::string first_pnnn = Loop(
        "'x, y, z'\n'-x, -y, z'\n'-x, y, -z'\n'x, -y, "
        "-z'\n'-x+1/2,-y+1/2,-z+1/2'\n'x+0.5,y+0.5,0.5-z'\n'x+1/2,-y+1/2,z+1/2'\n'-x+1/2,y+1/2,z+1/2'");
    struct Symmetry {
        std::string items;
        int order, at_origin;
    };
    const Symmetry table[] = {
        {hm + "'F d -3 m'", 192, 16},
        {hm + "\"F d -3 m:1\"", 192, 8},
        {hm + "'F d -3 m :2'", 192, 16},
        {hm + "'F d -3 m S'", 192, 8},
        {hm + "'F d -3 m Z'", 192, 16},
        {hm + "'F d -3 m 1'", 192, 8},
        {hm + "Fd-3mS", 192, 8},
        {hm + "Fd-3m:S", 192, 8},
        {"_space_group_name_H-M_alt 'F d -3 m:1'", 192, 8},
        {"_space_group.name_H-M_full 'F d -3 m:1'", 192, 8},
        {hm + "?\n_SPACE_GROUP_NAME_H-M_ALT 'f d -3 m : 1'", 192, 8},
        {hm + "'R -3 c'", 36, 6},
        {hm + "'R -3 c :H'", 36, 6},
        {hm + "R-3cH", 36, 6},
        {hm + "'R -3 c R'", 12, 2},
        {hm + "'P 21/c:H'", 4, 2},  // a choice that the group has not
        {hm + "'P 3 m 1'", 6, 1},   // and a digit that is none
        {hm + "'P2(1)/c'", 4, 2},
        {hm + "'P 2_1/c (No. 14)'", 4, 2},
        {hm + "'P n m a\t'", 8, 4},
        {hm + "F d -3 m :1 # without quotes\n 'no more'", 192, 8},
        {hall + "F 4d 2 3 -1d\n", 192, 8},
        {hm + "\n;\nP n m a\n;", 8, 4},
        {hm + "'F d -3 m'\n" + hall + "'F 4d 2 3 -1d'", 192, 8},  // no list: the Hall symbol leaves no choice
        {hm + "''\n" + hall + "'F 4d 2 3 -1d'", 192, 8},
        {hm + "?\n_space_group_name_Hall '-P 3 2\"'", 12, 1},
        {hm + "'P n n n'\n" + first_pnnn, 8, 2},
        {hm + "'P n n n'\n" + second_pnnn, 8, 4},
        {hm + "'P n n n:1'\n" + hall + "'P 2 2 -1n'\n" + second_pnnn, 8, 4},  // the list counts more than both
        {hm + "'P n n n'\n" + hall + "'P 2 2 -1n'\n" + Loop("?\n"), 8, 2},
        {first_pnnn, 8, 2},
        {two_fold, 2, 1},
        {hm + "'F m -3 m'\n" + Loop("x,y,z\n"), 192, 4},         // operators in part
        {hm + "'F m -3 m'\n" + Loop("x,y,z\nx,y,q\n"), 192, 4},  // a list that cannot be read
        {hm + "'P 1'\n" + two_fold, 2, 1},
        {hm + "'no such'\n" + two_fold, 2, 1},
        {hm + "'no such'\n" + hall + "'-P 2ac 2n'", 8, 4},
        {"loop_ _symmetry_equiv_pos_site_id _symmetry_equiv_pos_as_xyz\n 1 x, y, z\n -1 -x, -y,\n-z\n", 2, 1},  // words at each blank
        {"loop_ _space_group_symop.id _space_group_symop.operation_xyz\n1 'X, Y, Z'\n2 'X+0.333333, Y+.66667, Z+0.6667'\n3 "
         "x+2/3,y+1/3,z+1/3\n",
         3, 3},
        {"_space_group_symop_operation_xyz x,y,z", 1, 1},
        {Loop("?\n") + "loop_\n_space_group_symop_operation_xyz\nx,y,z\n-x,-y,z\n", 2, 1},
    };
    for (const Symmetry& row : table) {
        SCOPED_TRACE(row.items);
        const Crystal_Structure structure = Good("data_a\n" + cubic + row.items + "\n" + iron);
        ASSERT_EQ(structure.atoms.size(), 1u);
        EXPECT_EQ(structure.group.Multip, row.order);
        EXPECT_EQ(structure.atoms[0].multiplicity, row.at_origin);
    }
}

TEST_F(Cif_Structure, WordsStandAsTheNotationLets) {
    const std::string table[] = {
        // values on the next line, comments, CR LF, capitals, a row over many lines, blank lines within the loop
        "data_a # one\r\n_CELL_LENGTH_A\r\n 5 # first\r\n_cell_length_b 6\r\n_cell_length_c 7\r\n_cell_angle_beta ?\r\n" + p1 +
            "loop_ _atom_site_type_symbol _atom_site_label\r\n_atom_site_fract_x\r\n_ATOM_SITE_fract_y _atom_site_fract_z "
            "_atom_site_disorder_group\r\n\r\nFe\r\n'Fe 1' 0.25(3)\r\n\r\n0.5\r\n.75 . # last\r\n",
        // newer names, and a text with what looks like a block and a loop
        "data_a\n_cell.length_a 5.000(2)\n_cell.length_b 6\n_cell.length_c 7\n_cell.angle_alpha 90\n_publ_section\n;data_b\nloop_ 'a "
        "\n_cell_length_a 9\n;\n_symmetry.space_group_name_H-M P1\nloop_\n_atom_site.label\n_atom_site.fract_x\n_atom_site.fract_y\n"
        "_atom_site.fract_z\n\"Fe 1\" 2.5e-1 5D-1 +0.75\nloop_\n_other\n1\n",
        // the loop of the sites ends at another item, and is not the first that has labels
        "data_a\n" + cell + p1 + "loop_ _atom_site_label _atom_site_refinement_flags\nX ?\n" + heads +
            "_oxford_atom_site_special\n_atom_site_Wyckoff_symbol\n'Fe 1' 0.25 0.5 0.75 1 a\n_cell_volume 210\n",
        // a single atom without a loop, before the first block; classic line ends
        "_cell_length_a 5\r_cell_length_b 6\r_cell_length_c 7\r_space_group_name_H-M_alt 'P 1'\r_atom_site_label 'Fe "
        "1'\r_atom_site_fract_x "
        "0.25\r_atom_site_fract_y 0.5\r_atom_site_fract_z 0.75",
    };
    for (const std::string& text : table) {
        SCOPED_TRACE(text);
        const Crystal_Structure structure = Good(text);
        EXPECT_EQ(structure.cell.cell, (std::array<float, 3>{5, 6, 7}));
        EXPECT_EQ(structure.cell.ang, (std::array<float, 3>{90, 90, 90}));
        ASSERT_EQ(structure.atoms.size(), 1u);
        const Atom_Type& atom = structure.atoms[0];
        EXPECT_EQ(atom.label + " " + atom.symbol, "Fe 1 Fe");
        EXPECT_EQ(atom.x + 10 * atom.y + 100 * atom.z, 80.25);
        EXPECT_EQ(atom.occupancy, 1);
        EXPECT_EQ(atom.biso, 0);
    }
}

TEST_F(Cif_Structure, ElementsOutOfTypesAndLabels) {
    const std::pair<const char*, const char*> table[] = {{"Fe3+", "Fe"}, {"O2-", "O"},  {"Al+3", "Al"}, {"O-2", "O"},  {"NI", "Ni"},
                                                         {"FeA", "Fe"},  {"FE", "Fe"},  {"D", "D"},     {"D1", "D"},   {"DA2", "D"},
                                                         {"OW", "O"},    {"OHa", "O"},  {"C1A", "C"},   {"O-H1", "O"}, {"M1", "M"},
                                                         {"Cval", "C"},  {"FEA", "Fe"}, {"u", "U"},     {"H2'", "H"},  {"Wat1", "O"},
                                                         {"", ""},       {"3", ""},     {" Pb ", "Pb"}, {"Og", "Og"},  {"i n", "I"}};
    for (const auto& [text, element] : table) EXPECT_EQ(Element_Of(text), element) << text;
    const Crystal_Structure structure =
        Good("data_a\n" + cell + p1 +
             "loop_\n_atom_site_label\n_atom_site_type_symbol\n_atom_site_fract_x\n"
             "_atom_site_fract_y\n_atom_site_fract_z\nA1 Fe3+ 0 0 0\nMn2 ? 0 0 0\nTi . 0 0 0\nCu 2 0 0 0\n");
    std::string symbols;
    for (const Atom_Type& atom : structure.atoms) symbols += atom.symbol;
    EXPECT_EQ(symbols, "FeMnTiCu");
    // Labels are text for the user, whatever bytes a file has.
    EXPECT_EQ(Good("data_a\n" + cell + p1 + heads + "Fe\xE9 0 0 0\n").atoms.at(0).label, "Fe\u00e9");
}

// The temperature factors are checked against the written law: U and B along orthogonal axes of 5, 6 and 7 angstroms.
TEST_F(Cif_Structure, OccupanciesAndThermalValues) {
    const std::string columns = "_atom_site_occupancy\n_atom_site_U_iso_or_equiv\n_atom_site_B_iso_or_equiv\n_atom_site_adp_type\n";
    const std::string atoms = heads + columns +
                              "U1 0 0 0 0.5(1) 0.01(2) ? Uani\nB1 .1 0 0 1.5 . 2.5(1) Biso\nN1 .2 0 0 ? ? . Uiso\nL1 ? 0 0 1 0 0 Uiso\n"
                              "A1 .4 0 0 1 .01 ? Uani\nA1 .5 0 0 1 .01 ? Uani\n";
    const auto structure =
        Good("data_a\n" + cell + p1 + atoms +
             "loop_ _atom_site_aniso_label _atom_site_aniso_type_symbol _atom_site_aniso_U_11 _atom_site_aniso_U_22\n"
             "_atom_site_aniso_U_33 _atom_site_aniso_U_23 _atom_site_aniso_U_13 _atom_site_aniso_U_12 _atom_site_aniso_ratio\n"
             "U1 U 0.01(1) 0.02 0.03 0.006 0.005 0.004 2\nnone U 1 1 1 1 1 1 2\nN1 N ? ? ? ? ? ? ?\nA1 Ar .1 .1 .1 0 0 0 1\n"
             "A1 Ar .2 .2 .2 0 0 0 1\nA1 Ar .3 .2 .2 0 0 0 1\n");
    ASSERT_EQ(structure.atoms.size(), 5u);  // that without a place is left out
    EXPECT_FLOAT_EQ(structure.atoms[0].occupancy, 0.5f);
    EXPECT_FLOAT_EQ(structure.atoms[0].biso, 0.7895683f);
    EXPECT_FLOAT_EQ(structure.atoms[1].occupancy, 1.5f);
    EXPECT_FLOAT_EQ(structure.atoms[1].biso, 2.5f);
    EXPECT_FLOAT_EQ(structure.atoms[2].occupancy, 1);
    EXPECT_EQ(structure.atoms[2].biso, 0);
    constexpr double k = 2 * std::numbers::pi * std::numbers::pi;
    const double expected[] = {k * 0.01 / 25, k * 0.02 / 36, k * 0.03 / 49, k * 0.004 / 30, k * 0.005 / 35, k * 0.006 / 42};
    for (std::size_t i = 0; i < 6; ++i) EXPECT_NEAR(structure.atoms[0].beta[i], expected[i], 1e-8) << i;
    const bool aniso[] = {true, false, false, true, true};
    for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(structure.atoms[i].aniso, aniso[i]) << i;
    EXPECT_NEAR(structure.atoms[4].beta[0], k * 0.2 / 25, 1e-7);

    // B along an oblique axis: a* = 1 / (a sin beta); in the table of the sites itself. beta stays as it is.
    const auto oblique = Good("data_a\n" + cell + "_cell_angle_beta 120\n" + p1 + heads +
                              "_atom_site_aniso_B_11 _atom_site_aniso_B_13 _atom_site_aniso_B_22\nFe1 0 0 0 2 1 ?\n");
    EXPECT_TRUE(oblique.atoms.at(0).aniso);
    EXPECT_NEAR(oblique.atoms[0].beta[0], 2.0 / 4 / (25 * 0.75), 1e-7);
    EXPECT_NEAR(oblique.atoms[0].beta[4], 1.0 / 4 / (35 * 0.75), 1e-7);
    const auto beta = Good("data_a\n" + cell + p1 + iron + "loop_ _atom_site_aniso_label _atom_site_aniso_beta_11\nFe1 0.003\n");
    EXPECT_FLOAT_EQ(beta.atoms.at(0).beta[0], 0.003f);
}

// In a cell of 10 angstroms: the mirrors of P m m m, and P m -3 m near its fourfold axis, where neighbouring images are 0.042 angstroms
// apart and opposite ones 0.06: they are one site, for the one lies between the others.
TEST_F(Cif_Structure, ImagesWithin005AngstromsAreOneSite) {
    const std::tuple<const char*, const char*, int> table[] = {
        {"P m m m", "0.0024 0.1 0.2", 4},  {"P m m m", "0.0026 0.1 0.2", 8},       {"P m m m", "0.0024 0.9976 0.2", 2},
        {"P m m m", "0.5024 0.1 7.2", 4},  {"P m -3 m", "0.003 0 0.2", 6},         {"P m -3 m", "-12.0000 0.3333 1.3333", 12},
        {"I m -3 m", "0.25 0.25 0.25", 8}, {"F d -3 m:1", "0.625 0.625 0.625", 16}};
    for (const auto& [symbol, place, sites] : table) {
        const auto structure = Good("data_a\n" + cubic + "_space_group_name_H-M_alt '" + symbol + "'\n" + heads + "Fe1 " + place + "\n");
        EXPECT_EQ(structure.atoms.at(0).multiplicity, sites) << symbol << " " << place;
    }
}

TEST_F(Cif_Structure, TheFirstBlockWithAStructureServes) {
    const std::string phase = cell + p1 + iron, other = cubic + p1 + heads + "Cu1 0 0 0\n";
    const std::pair<std::string, const char*> table[] = {
        {"data_global\n" + phase, "Fe1"},
        {"data_GLOBAL\n_journal x\ndata_1\n" + phase + "data_2\n" + other, "Fe1"},
        {"data_1\n_pd_block_id x\ndata_2\n" + cell + p1 + "data_3\n" + phase + "data_4\n" + other, "Fe1"},
        {"data_global\n" + cell + p1 + "data_2\n" + phase, "Fe1"},
        {"data_1\n" + phase + "data_2\n_cell_length_a x\n" + heads + "1 2\n", "Fe1"},  // what follows may be faulty
        {"data_1\n" + phase + "save_frame\n_cell_length_a 9\n", "Fe1"},
        {"data_1\n" + cell + p1, ""},  // a cell without atoms is one
    };
    for (const auto& [text, label] : table) {
        const Crystal_Structure structure = Good(text);
        EXPECT_EQ(structure.atoms.empty() ? "" : structure.atoms[0].label, label) << text;
        EXPECT_EQ(structure.cell.cell[0], 5) << text;
    }
}

TEST_F(Cif_Structure, FaultsAreTold) {
    std::string blocks;
    for (int i = 0; i <= 10000; ++i) blocks += "data_" + std::to_string(i) + "\n";
    const std::string of_cell = "data_a\n" + p1 + iron, of_atoms = "data_a\n" + cell + p1 + heads;
    const std::pair<std::string, std::string> table[] = {
        {"", "The file " + path.string() + " contains nothing"},
        {" \r\n\n", "The file " + path.string() + " contains nothing"},
        {blocks, " => Too many phases in this file "},
        {"data_global\n_journal_year 1900\n", " No phase with a cell in this CIF file "},
        {"data_global\n" + cell + p1, " No phase with a cell in this CIF file "},
        {of_cell + "_cell_length_a 5\n_cell_length_b ?\n", "Blank line: _cell_length_b"},
        {of_cell + "_cell_length_a five\n", "Bad format: _cell_length_a five"},
        {of_cell + "_cell_length_a 1e999\n", "Bad format: _cell_length_a 1e999"},
        {of_cell + "_cell_length_a 5.4(1\n", "Wrong format using Standard values: _cell_length_a 5.4(1"},
        {of_cell + "_cell_length_a 5\n_cell_length_b 0\n_cell_length_c 5\n", " Bad cell parameters "},
        {"data_a\n" + cell + "_cell_angle_alpha 120\n_cell_angle_beta 120\n_cell_angle_gamma 120\n" + p1 + iron, " Bad cell parameters "},
        {"data_a\n" + cell + iron, " => No Space Group/No Symmetry information in this file "},
        {"data_a\n" + cell + iron + "_symmetry_space_group_name_H-M ?\n" + Loop("?\n"),
         " => No Space Group/No Symmetry information in this file "},
        {of_atoms + "Fe1 0 0 x\n", " Error reading atoms: Fe1 0 0 x"},
        {of_atoms + "Fe1 0 0 1e7\n", " Error reading atoms: Fe1 0 0 1e7"},
        {of_atoms + "Fe1 0 0 0\nFe2 0 0\n", " Error reading atoms: Fe2 0 0"},
        {of_atoms + "Fe1 0 0 " + std::string("\0", 1), " Error reading atoms: Fe1 0 0"},
        {"data_a\n" + cell + p1 + "loop_\n_atom_site_label\n_atom_site_fract_x\nFe1 0\n",
         " Error reading atoms: a column of coordinates is missing"},
        {of_atoms + "Fe1 0 0 0\nloop_ _atom_site_aniso_label _atom_site_aniso_U_11\nFe1 x\n", " Error reading atoms: Fe1 x"},
        {"data_a\n_note\n; begins\n" + cell, " The text that begins in line 3 of this CIF file has no end "},
        {"data_a\n" + cell + p1 + "_note\n; begins\n" + iron, " The text that begins in line 7 of this CIF file has no end "},
    };
    for (const auto& [text, message] : table) {
        Crystal_Structure structure;
        structure.mode = "as it was";
        const Status status = Read(text, structure);
        EXPECT_TRUE(status.failed) << text.substr(0, 300);
        EXPECT_EQ(status.message, message) << text.substr(0, 300);
        EXPECT_EQ(structure.mode, "as it was");
    }
    Crystal_Structure structure;
    EXPECT_TRUE(Read_Structure_File(path.string() + ".none", structure, "cif").failed);
    for (const char* faulty : {"'x,y,z,'\n'x,,z'\n", "x,y,q\n", "x,y,2z\n2x,y,z\n"})
        EXPECT_TRUE(Read("data_a\n" + cell + iron + Loop(faulty), structure).failed) << faulty;
}

// Four times the text in not much more than four times the time, by the clock of the processor; a square would take sixteen times.
TEST_F(Cif_Structure, HostileTextsTakeTimeThatGrowsWithThem) {
    const auto repeated = [](const std::string& part, std::size_t times) {
        std::string text;
        for (std::size_t i = 0; i < times; ++i) text += part;
        return text;
    };
    const std::string begin = "data_a\n" + cell + p1, parts[] = {"loop_\n",
                                                                 "loop_ _a\n1\n",
                                                                 "_a ",
                                                                 "'",
                                                                 "'a' ",
                                                                 "\n;\n",
                                                                 "\n;a\n;",
                                                                 "_atom_site_label\n",
                                                                 "loop_ _atom_site_label\n_atom_site_fract_x ",
                                                                 "#",
                                                                 "x,",
                                                                 "-x,-y,z ",
                                                                 "_cell_length_a\n",
                                                                 std::string("\0 ", 2),
                                                                 "\"a\"b ",
                                                                 "save_ ",
                                                                 "Fe1 0 0 0\n",
                                                                 "Fe1 0 0 0 "};
    for (const std::string& part : parts)
        for (const std::string& head :
             {begin, begin + heads, begin + Loop(""), begin + iron + "loop_ _atom_site_aniso_label _atom_site_aniso_U_11 "}) {
            double seconds[2] = {};
            for (int i = 0; i < 2; ++i) {
                const std::string text = head + repeated(part, static_cast<std::size_t>(i == 0 ? 20'000 : 80'000) / part.size());
                const std::clock_t start = std::clock();
                Crystal_Structure structure;
                const Status status = Read(text, structure);
                seconds[i] = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
                EXPECT_EQ(status.failed, !status.message.empty());
            }
            EXPECT_LT(seconds[1], 9 * seconds[0] + 0.2) << part << " behind\n" << head;
        }
}

TEST(Structure_Mode, FollowsTheExtension) {
    const std::pair<const char*, const char*> table[] = {{"a.cif", "CIF"},     {"/b.c/A.CIF", "CIF"}, {"a.osl", "OSL"}, {"a.pcr", "PCR"},
                                                         {"a.res", "SHX"},     {"a.ins", "SHX"},      {"a.INP", "SHX"}, {"a.shx", "SHX"},
                                                         {"a.cif.txt", "OSL"}, {"cif", "OSL"}};
    for (const auto& [file, mode] : table) EXPECT_EQ(Structure_Mode(file), mode) << file;
}

}  // namespace
}  // namespace vntl
