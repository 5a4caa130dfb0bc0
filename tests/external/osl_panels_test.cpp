// The input of Radiox: panels of a structure filled and read, what is refused in them, and the file.
#include "external/osl_panels.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>

#include "base/text.hpp"
#include "crystal/space_group.hpp"
#include "real_path.hpp"

namespace vntl {
namespace {

struct Osl_Panels : testing::Test {
    const std::filesystem::path path = std::filesystem::temp_directory_path() / ("panels_" + std::to_string(::getpid()) + ".osl");
    ~Osl_Panels() override { std::filesystem::remove(path); }

    Crystal_Structure From_File(const std::string& text) const {
        std::ofstream(path, std::ios::binary) << text;
        Crystal_Structure structure;
        const Status status = Read_Structure_File(path.string(), structure, "OSL");
        EXPECT_TRUE(status.ok()) << status.message << '\n' << text;
        return structure;
    }
    static Crystal_Structure From_Panels(const Pdf_Input& input) {
        Crystal_Structure structure;
        Osl_Panel faulty = Osl_Panel::cell;
        const Status status = Read_Atoms_Panel(input, structure, faulty);
        EXPECT_TRUE(status.ok()) << status.message << '\n' << input.pdf_cell_text << '\n' << input.pdf_atoms_text;
        return structure;
    }
    static Pdf_Input Filled(const Crystal_Structure& structure) {
        Pdf_Input input;
        EXPECT_TRUE(Fill_Atoms_Panel(structure, "a.osl", input).ok());
        return input;
    }
};

// Equal to what `decimals` of a panel tell: half of its last digit, and what single precision adds.
void Expect_Near(double a, double b, double half_digit, const std::string& what) {
    EXPECT_LE(std::fabs(a - b), half_digit + 1e-6 * std::fabs(b)) << what;
}

void Expect_Same(const Crystal_Structure& a, const Crystal_Structure& b, bool exact, const std::string& what) {
    for (std::size_t i = 0; i < 3; ++i) {
        Expect_Near(a.cell.cell[i], b.cell.cell[i], 0.5e-5, what);
        Expect_Near(a.cell.ang[i], b.cell.ang[i], 0.5e-4, what);
    }
    if (exact) {
        EXPECT_EQ(std::tie(a.cell.cell, a.cell.ang), std::tie(b.cell.cell, b.cell.ang)) << what;
    }
    EXPECT_EQ(Operator_Set(a.group), Operator_Set(b.group)) << what;
    ASSERT_EQ(a.atoms.size(), b.atoms.size()) << what;
    for (std::size_t i = 0; i < a.atoms.size(); ++i) {
        const Atom_Type &p = a.atoms[i], &q = b.atoms[i];
        const std::string which = what + ", atom " + q.label;
        EXPECT_EQ(p.label + ' ' + p.Species(), q.label + ' ' + q.Species()) << which;
        EXPECT_EQ(p.multiplicity, q.multiplicity) << which;
        EXPECT_EQ(p.aniso, q.aniso) << which;
        if (exact) {
            EXPECT_EQ(std::tuple(p.x, p.y, p.z, p.biso, p.occupancy, p.beta), std::tuple(q.x, q.y, q.z, q.biso, q.occupancy, q.beta))
                << which;
        }
        for (const auto& [mine, other] :
             {std::pair<double, double>(p.x, q.x), {p.y, q.y}, {p.z, q.z}, {p.biso, q.biso}, {p.occupancy, q.occupancy}})
            Expect_Near(mine, other, 0.5e-5, which);
        for (std::size_t k = 0; k < 6; ++k) Expect_Near(p.beta[k], q.beta[k], 0.5e-6, which);
    }
}

// The columns are those of Fortran's 3f12.5,3f10.4, 5f9.5 and 6f12.6, laid out here by hand.
TEST_F(Osl_Panels, PanelsAreFilledInColumns) {
    Crystal_Structure s = From_File(
        "cell 5.5 16.123456 7 90 100.12345 90\nspgr P 1 21/c 1\natom Fe1 Fe 1/8 -.25 0 .5 .25\naniso beta .001 2 -.0000314 0 0 0\n"
        "atom O O -12.5 123.123456 0.1 1234.5 1\n");
    s.atoms[1].label = "O ! 1";
    const Pdf_Input input = Filled(s);
    EXPECT_EQ(input.pdf_cell_text, "     5.50000    16.12346     7.00000   90.0000  100.1235   90.0000");
    EXPECT_EQ(input.pdf_spgr_text, s.group.hm_symbol);
    EXPECT_EQ(input.pdf_atoms_text,
              "Atom Fe1  Fe    0.12500 -0.25000  0.00000  0.50000  0.25000\r\n"
              "aniso        0.001000    2.000000   -0.000031    0.000000    0.000000    0.000000\r\n"
              "Atom O___1  O   -12.50000 123.12346  0.10000 1234.50000  1.00000\r\n");
    EXPECT_EQ(input.imported_from, "a.osl");
}

// With the structure that they were filled with the panels keep every digit; by themselves, those that they show. A file is read back as
// the panels tell.
TEST_F(Osl_Panels, StructuresComeBackFromPanelsAndFile) {
    std::vector<std::pair<std::string, Crystal_Structure>> structures;
    for (const std::string group :
         {"spgr P 1", "spgr 227:1", "spgr R -3 m:R", "spgr P 21/n", "spgr -P 2ab 2n (3 0 1)", "spgr P 3 2\"",
          "gen -x,-y,-z+1/3\ngen x+1/2,y+1/4,z", "gen x+1/3,y+1/3,z+1/3\ngen -x,y,-z", "fix x,y,z\nfix -x,y,0.1+z"})
        structures.emplace_back(
            group,
            From_File(
                "cell 5.1234567 6.1234567 6.1234567 90.00004 90 90\n" + group +
                "\natom A Fe 1/3 -0.1234567890123 12.5 0.1 .333333\naniso u_ij .01 1e-9 .01 -.001 0 0\natom B'1 D 0 0.25 2e-7\n"
                "atom A Fe 1/3 -0.1234567890124 12.5 0.1 .333333\naniso u_ij .01 1e-9 .01 -.001 0 0\natom M1 M 1/8 1/8 1/8 500.123 1\n"));
    for (const char* name : {"kaolinite.cif", "pbso4.cif", "lamno3_pbnm.cif", "caf2.cif", "cod_1011031.cif", "cod_2013551.cif",
                             "cod_4003024.cif", "s2dipyridyl.cif", "twin_3a.ins"})
        if (const std::string file = test::Real_Path(std::string("structures/") + name); std::filesystem::exists(file)) {
            structures.emplace_back(name, Crystal_Structure());
            ASSERT_TRUE(Read_Structure_File(file, structures.back().second, Structure_Mode(file)).ok());
        }
    for (const auto& [name, structure] : structures) {
        Pdf_Input input = Filled(structure);
        input.pdf_atoms_text = Replace_All(input.pdf_atoms_text, "\r\n", "\n");  // as an entry of text gives it back
        Expect_Same(From_Panels(input), structure, true, name);
        Expect_Same(From_File(Osl_File_Text(input, From_Panels(input))), structure, true, name + " in its file");
        input.imported.reset();
        const Crystal_Structure shown = From_Panels(input);
        Expect_Same(shown, structure, false, name + " as shown");
        Expect_Same(From_File(Osl_File_Text(input, shown)), shown, true, name + " as shown, in its file");
    }
}

TEST_F(Osl_Panels, AnEditedLineLeavesTheOthersTheirDigits) {
    Pdf_Input input = Filled(From_File("cell 5.1234567 6 7 90 90 90\nspgr P 1\natom A FE+3 1/3 0 0\natom B Fe 2/3 0 0 0.1\n"));
    input.pdf_atoms_text = Replace_All(input.pdf_atoms_text, "0.10000", "0.2");
    const Crystal_Structure structure = From_Panels(input);
    EXPECT_EQ(structure.cell.cell[0], 5.1234567f);
    EXPECT_EQ(structure.atoms[0].x, 1.0 / 3);
    EXPECT_EQ(structure.atoms[0].species + ' ' + structure.atoms[0].symbol, "FE+3 Fe");  // the charge stays, through a file too
    EXPECT_EQ(structure.atoms[1].x, 0.66667);
    EXPECT_EQ(structure.atoms[1].biso, 0.2f);
}

// What a user may write: either case, fractions, uncertainties, comments, forms of anisotropic values; species and symbols as they are.
TEST_F(Osl_Panels, PanelsOfAUserAreRead) {
    Pdf_Input input;
    input.pdf_cell_text = "10 5, 20(1) 90 90 90 ! angstrom";
    input.pdf_spgr_text = " 'P n m a' ";
    input.pdf_atoms_text =
        "! lead sulphate\n\n  atom Pb1 PB 1/4 .5(2) -1e-1 1 0.5\r\n\tATOM o2 Fe+3 0 0 0\nANISO u_ij .01 .01 .01 0 0 0 ! U\n"
        "aniso b_ij 1 1 1 0 0 0\nAtom X O-2 0 0 0.25\naniso 1 2 3 4 5 6";
    const Crystal_Structure s = From_Panels(input);
    EXPECT_EQ(s.cell.cell, (std::array<float, 3>{10, 5, 20}));
    EXPECT_EQ(s.group.spg_number, 62);
    ASSERT_EQ(s.atoms.size(), 3u);
    EXPECT_EQ(s.atoms[0].species + s.atoms[1].label + s.atoms[1].species + s.atoms[2].species, "PBo2Fe+3O-2");
    EXPECT_EQ(std::tuple(s.atoms[0].x, s.atoms[0].y, s.atoms[0].z, s.atoms[0].multiplicity), std::tuple(0.25, 0.5, -0.1, 8));
    EXPECT_EQ(std::tuple(s.atoms[1].biso, s.atoms[1].occupancy, s.atoms[1].multiplicity), std::tuple(0.0f, 1.0f, 4));
    for (const auto& [i, beta] : {std::pair(0, 0.0025f), {1, 0.01f}, {2, 0.000625f}, {3, 0.0f}})  // B a* a* / 4
        EXPECT_FLOAT_EQ(s.atoms[1].beta[static_cast<std::size_t>(i)], beta);
    EXPECT_EQ(s.atoms[2].beta, (std::array<float, 6>{1, 2, 3, 4, 5, 6}));
    input.pdf_atoms_text = "! none";
    EXPECT_TRUE(From_Panels(input).atoms.empty());
    for (const auto& [told, line] :
         {std::pair("P n m a", "\nSpgr  P n m a\n"), {"62", "\nSpgr  P N M A\n"}, {"-P 2ac 2n\n!", "\nSpgr  -P 2ac 2n\n"}}) {
        input.pdf_spgr_text = told;
        EXPECT_TRUE(Contains(Osl_File_Text(input, From_Panels(input)), line)) << Osl_File_Text(input, From_Panels(input));
    }
}

TEST_F(Osl_Panels, FaultsOfPanelsAreNamed) {
    using enum Osl_Panel;
    struct Case {
        std::string cell, group, atoms;
        Osl_Panel faulty;
        std::vector<std::string> told;
    };
    const std::string good = "5 5 5 90 90 90", p1 = "P 1", wrong_aniso = "Error reading the anisotropic thermal parameters of atom:";
    const Case cases[] = {
        {"", p1, "", cell, {"Cell: Blank line"}},
        {"5 5 5 90 90", p1, "", cell, {"Cell: Bad format: 5 5 5 90 90"}},
        {"5 5 5 120 120 120", "", "x", cell, {"Cell: Bad cell parameters", "Space group: ", "Line 1: This is no line of an atom: x"}},
        {good, "P 5", "", group, {"Space group: ", ": P 5"}},
        {good, "Gen x,y", "", group, {"Space group: "}},
        {good, "Fix ;", "", group, {"Space group: "}},
        {good,
         p1,
         "\nAtom A Fe 0 0 x\nAtoms B Fe 0 0 0\nCell 1 1 1 90 90 90\nphase_2",
         atoms,
         {"Line 2: Bad format: Atom A Fe 0 0 x", "Line 3: This is no line", "Line 4: This is no line", "Line 5: This is no line"}},
        {good, p1, "Atom A 0.1 0.2 0.3 1 1", atoms, {"Line 1: The species is missing"}},
        {good, p1, "aniso 1 1 1 1 1 1", atoms, {"Line 1: " + wrong_aniso}},
        {good, p1, "Atom A Fe 0 0 0\naniso 1 1 1 1 1", atoms, {"Line 2: " + wrong_aniso + "A: aniso"}},
        {good, p1, "a\na\na\na\na\na\na\na\na\na\na\na\n", atoms, {"Line 10: ", "\nand 2 more"}},
    };
    for (const Case& c : cases) {
        Pdf_Input input;
        input.pdf_cell_text = c.cell, input.pdf_spgr_text = c.group, input.pdf_atoms_text = c.atoms;
        Crystal_Structure structure;
        structure.mode = "as it was";
        Osl_Panel faulty = Osl_Panel::cell;
        const Status status = Read_Atoms_Panel(input, structure, faulty);
        EXPECT_TRUE(status.failed && status.message.starts_with("Error reading the atoms panel!\n")) << c.atoms;
        EXPECT_EQ(faulty, c.faulty) << status.message;
        for (const std::string& told : c.told) EXPECT_TRUE(Contains(status.message, told)) << status.message << "\n" << told;
        EXPECT_EQ(structure.mode, "as it was");
    }
}

TEST_F(Osl_Panels, NumbersThatTheFileCannotHoldAreNamed) {
    struct Case {
        std::size_t place;
        float value;
        const char* told;
    };
    const Case cases[] = {{0, -1, "Rmin: "},
                          {0, 20, "Rmax: it must be larger than Rmin"},
                          {1, 0.50002f, "Rmax: "},
                          {1, 1000, "Rmax: 1000 is too large"},
                          {2, 0, "step: "},
                          {2, -0.1f, "step: "},
                          {2, 0.00001f, "step: "},
                          {3, 0, "Qmax: "},
                          {3, std::numeric_limits<float>::infinity(), "Qmax: "},
                          {4, -0.1f, "Qbroad: "},
                          {5, -0.1f, "Qdamp: "},
                          {6, 999.99999f, "Linear "},
                          {7, -100, "Quadratic "},
                          {1, 999.9f, ""},
                          {6, -99.5f, ""},
                          {0, 0, ""}};
    for (const Case& c : cases) {
        Pdf_Input input;
        input.*pdf_numbers[c.place].value = c.value;
        const auto wrong = Find_Wrong_Number(input);
        EXPECT_EQ(wrong.has_value(), *c.told != 0) << c.told << c.value;
        EXPECT_TRUE(!wrong || wrong->why.starts_with(c.told)) << wrong->why;
    }
}

// Laid out by hand.
TEST_F(Osl_Panels, TheFile) {
    Pdf_Input input;
    input.pdf_rmax = 150.25f, input.pdf_jobtype = x_rays;
    input.pdf_cell_text = "5.5 6 7 90 90 90", input.pdf_spgr_text = "P n m a", input.pdf_atoms_text = "atom Fe1 Fe 1/8 -.25 0 .5 .25";
    const auto text = [](const std::string& title) {
        return "PATTERN_1   1.00\nTitle   " + title +
               "\n!           Rmin    Rstep     Rmax \nPDF_RANGE    0.5000   0.0100 150.2500\n"
               "QMAX    30.0000\nDAMP     0.0120\nBROAD    0.0200\nJOBTYPE X-rays\nPHASE_01   1.00\nTITLE " +
               title +
               "\n!  Automatically generated OSL file (Write_OSL)\n"
               "!         a             b             c             alpha         beta          gamma\n"
               "Cell  5.5000        6.0000        7.0000        90.0000       90.0000       90.0000\n"
               "!     Space Group # 62\nSpgr  P n m a\n"
               "!      Atom  Type     x/a           y/b           z/c           Biso          Occ                Occ    Mult\n"
               "Atom   Fe1   Fe      0.12500      -0.25000       0.00000       0.5000        0.2500           0.25    4.00   ! isotr\n"
               "DELTAS   0.1000   0.2000\n";
    };
    EXPECT_EQ(Osl_File_Text(input, From_Panels(input)), text("OSL-file created by Vantrelo-2006:"));
    input.imported = From_Panels(input), input.imported_from = "/a b/c\nd.cif";
    EXPECT_EQ(Osl_File_Text(input, From_Panels(input)), text("OSL-file imported from file: /a b/c d.cif"));
}

TEST_F(Osl_Panels, PanelsAreBounded) {
    Crystal_Structure structure = From_File("cell 5 5 5 90 90 90\nspgr P 1\natom A Fe 0 0 0\n");
    Pdf_Input input = Filled(structure);
    const std::string before = input.pdf_atoms_text;
    structure.atoms.resize(30'000, structure.atoms.front());
    EXPECT_TRUE(Contains(Fill_Atoms_Panel(structure, "b.osl", input).message, "30000 atoms"));
    EXPECT_EQ(input.pdf_atoms_text + input.imported_from, before + "a.osl");
    structure.atoms.resize(15'000);
    EXPECT_TRUE(Fill_Atoms_Panel(structure, "b.osl", input).ok());  // more than 400 lines of 132
    EXPECT_EQ(From_Panels(input).atoms.size(), 15'000u);
    input.pdf_atoms_text.resize(largest_panel + 1, ' ');
    Osl_Panel faulty = Osl_Panel::cell;
    EXPECT_TRUE(Read_Atoms_Panel(input, structure, faulty).failed && faulty == Osl_Panel::atoms);
}

}  // namespace
}  // namespace vntl
