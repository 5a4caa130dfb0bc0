// Structures out of OSL, PCR and SHELX files, and OSL files as they are written.
#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/text.hpp"
#include "crystal/testing.hpp"

namespace vntl {
namespace {

using test::Real_Path;

struct Structure_Files : test::Structure_Texts {
    std::string Written(const Crystal_Structure& structure, std::string_view title = {}) const {
        EXPECT_TRUE(Write_OSL(path.string(), structure, title).ok());
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }
};

// "a b c alpha beta gamma; symbol order; atom; atom": label, element, x, y, z, biso, occupancy, multiplicity, six beta.
std::string Told(const Crystal_Structure& s) {
    std::ostringstream text;
    for (const auto& values : {s.cell.cell, s.cell.ang})
        for (const float value : values) text << value << ' ';
    text << "; " << s.group.hm_symbol << ' ' << s.group.Multip;
    for (const Atom_Type& atom : s.atoms) {
        text << "; " << atom.label << ' ' << atom.symbol << ' ' << atom.x << ' ' << atom.y << ' ' << atom.z << ' ' << atom.biso << ' '
             << atom.occupancy << " x" << atom.multiplicity;
        for (const float beta : atom.beta)
            if (atom.aniso) text << ' ' << beta;
    }
    return text.str();
}

struct Case {
    const char* mode;
    std::string text, told;  // the structure, or what the message holds
};

const std::string osl_head = "cell 10 5 20 90 90 90\nspgr P 1\n";
const std::string pcr_start =
    "COMM lead sulphate\n! Files => DAT-file: a\n!Job Npr Nph Nba Nex\n   0   7   1   0   2\n!\n"
    "!  Data for PHASE number:   1  ==> Current R_Bragg for Pattern#  1:     4.28\n!-----\nPbSO4\n!\n!Nat Dis Ang Pr1\n   2   0   0 "
    "0.0\n!\n"
    "P n m a                  <--Space group symbol\n"
    "!Atom   Typ       X        Y        Z     Biso       Occ     In Fin N_t Spc /Codes\n";
const std::string pcr_atoms =
    "Pb      PB+2    0.18748  0.25000  0.16721   1.39038   0.50000   0   0   0    0  #color\n"
    "                 171.00     0.00   181.00    281.00      0.00\n"
    "! half of the oxygen\nO1      O       0.2(1)   0.1      0.3       0         1.0       0   0   2    0\n"
    "                 171.00     0.00   181.00    281.00      0.00\n"
    "  0.001 0.002 0.003 0.0004 -0.0005 0.0006\n  11.00 21.00 31.00 0.00 0.00 0.00\n";
const std::string pcr_end =
    "!-------> Profile Parameters for Pattern #  1\n!  Scale        Shape1      Bov\n  1.4748     0.0000   0.0000\n"
    "    11.00000     0.000     0.000\n!     a          b         c        alpha      beta       gamma      #Cell Info\n"
    "   8.485  5.402  6.964  90.0  90.0  90.0\n   101.0  111.0  121.0  0.0  0.0  0.0\n";
const std::string pcr_told =
    "8.485 5.402 6.964 90 90 90 ; P N M A 8; Pb Pb 0.18748 0.25 0.16721 1.39038 0.5 x4; "
    "O1 O 0.2 0.1 0.3 0 1 x8 0.001 0.002 0.003 0.0004 -0.0005 0.0006";
const std::string shelx_head = "TITL a = b =\nCELL 0.71073 10 5 20 90 90 90\nZERR 4 .1 .1 .1 0 0 0\n";
const std::string in_p1 = shelx_head + "LATT -1\nSFAC C h Fe\nUNIT 1 1 1\nFVAR 0.3 0.25 =\n 0.6\nFVAR 0.125\n";

// beta_ij = 2 pi^2 U_ij a*_i a*_j: with U = 0.01 and a* = 0.1 it is 0.00197392, and B_ij = 1 gives 1 / (4 . 100) = 0.0025. U of 1 is a biso
// of 8 pi^2 = 78.9568.
TEST_F(Structure_Files, Formats) {
    const Case cases[] = {
        {"OSL",
         "Title atom of ! everything\n! cell 1 1 1 90 90 90\nCELL  5.4(1) 5.4 5.4 90 90 0 ! a\nSpgr  F m -3 m ! salt\n"
         "ATOM Na1 NA+1 0 0 0\natom Cl Cl 1/2 -1/2 .5 0.7(2) 0.5\nAtom D D 1/4 0.25 0.25 1 1 0.00 2.00 # two more\n",
         "5.4 5.4 5.4 90 90 90 ; F M -3 M 192; Na1 Na 0 0 0 0 1 x4; Cl Cl 0.5 -0.5 0.5 0.7 0.5 x4; D D 0.25 0.25 0.25 1 1 x8"},
        {"xyz", "Spaceg 62\ncell 10 5 20 90 90 90\n", "10 5 20 90 90 90 ; P N M A 8"},
        {"osl", "SHUB 'P 1'\ncell 10,5,20,90,90,90\n", "10 5 20 90 90 90 ; P 1 1"},
        {"OSL", "gen -x,-y,-z\nGEN x+1/2,y+1/2,z\ncell 3 4 5 90 100 90\nspgr no symbol\n", "3 4 5 90 100 90 ; C -1 4"},
        {"OSL", "fix x,y,z\nfix x+1/2,y,z\ncell 3 4 5 90 100 90\natom A Fe 0 0 0\n", "3 4 5 90 100 90 ;  2; A Fe 0 0 0 0 1 x2"},
        {"OSL", "TITLE job\nNPATT 1\nPhase_0\nspgr P 1\nPHASE_1\n" + osl_head + "phase_2\ncell 1 1 1 90 90 90\natom X Fe 0 0 0\n",
         "10 5 20 90 90 90 ; P 1 1"},
        {"OSL",
         osl_head + "atom A Fe 0 0 0 1 1\naniso u_ij .01 .01 .01 .01 .01 .01\natom B Fe 0 0 0 2 1\nAniso 1 1 1 1 1 1 B_IJ\n"
                    "atom 9 Fe 0 0 0 3 1 beta\nANISO .1 .2 .3 .4 .5 .6\natom E Fe 0 0 0 4 1\nBETA E .1 .2 .3 .4 .5 .6\n",
         "10 5 20 90 90 90 ; P 1 1; A Fe 0 0 0 1 1 x1 0.00197392 0.00789568 0.00049348 0.00394784 0.00098696 0.00197392; "
         "B Fe 0 0 0 2 1 x1 0.0025 0.01 0.000625 0.005 0.00125 0.0025; 9 Fe 0 0 0 3 1 x1 0.1 0.2 0.3 0.4 0.5 0.6; "
         "E Fe 0 0 0 4 1 x1 0.1 0.2 0.3 0.4 0.5 0.6"},
        {"PCR", pcr_start + pcr_atoms + pcr_end, pcr_told},
        {"pcr",  // two patterns, two phases, Windows line ends
         Replace_All("NPATT   2 <- Flags for patterns (1/0)\nW_PATT 0.5 0.5\n!Nph Dum Ias\n  2  0  0\n" +
                         pcr_start.substr(pcr_start.find("!  Data for")) + pcr_atoms + pcr_end + "!  Data for PHASE number: 2\nX\n" +
                         pcr_end,
                     "\n", "\r\n"),
         pcr_told},
        {"PCR",  // a phase without a cell first; columns of moments between type and x; no number of atoms
         "!  Data for PHASE number: 1\nA\n!  Data for PHASE number: 2\nB\nP -1 <--Space group symbol\n"
         "! Atom Typ Mag Vek X Y Z Biso Occ\nFe1 FE3 1 0 0 0 0.5 0.1 0.25\n 1.0 0 0 0 0\n! a b c ALPHA beta GAMMA\n! more\n5 6 7 80 90 "
         "100\n",
         "5 6 7 80 90 100 ; P -1 2; Fe1 Fe 0 0 0.5 0.1 0.25 x1"},
        {"SHX", shelx_head + "SFAC C\n", "10 5 20 90 90 90 ; P -1 2"},  // a lattice that is not told is 1
        {"shx", shelx_head + "latt 1\nsymm 0.5-x, 1/2 + Y, -z\nSYMM x, y, z\n", "10 5 20 90 90 90 ; P 1 21/A 1 4"},
        {"SHX", shelx_head + "LATT 2\nSYMM -X,Y,-Z\n", "10 5 20 90 90 90 ; I 1 2/M 1 8"},
        {"SHX", shelx_head + "LATT -4\n", "10 5 20 90 90 90 ; F 1 4"},
        {"SHX", "CELL 1 5 5 9 90 90 120\nLATT -3\nSYMM -y,x-y,z\n", "5 5 9 90 90 120 ; R 3:H 9"},
        {"SHX", shelx_head + "LATT -5\n", "10 5 20 90 90 90 ; A 1 2"},
        {"SHX", shelx_head + "LATT -6\n", "10 5 20 90 90 90 ; B 1 2"},
        {"SHX", shelx_head + "LATT 7\n", "10 5 20 90 90 90 ; C -1 4"},
        {"SHX",
         in_p1 + "REM C9 1 0 0 0 =\nC1 1 0.1 10.25 9.5 11 0.01 .02 =\n .03 0.004 =\n  0.005 0.006 ! U\nAFIX 137\nh1 2 0 0 0 10.5 -1.2\n"
                 "PART 1 31\nC2 1 20.5 -20.5 0 21 0.01\nPART 0\nC3 1 0 0 0 -21 31.0\nC4 1 40.8 0 0\n"
                 "DFIX_2 1.5 C1 C2\n comment\n\nMOLE 1\nFRAG 17 1 1 1 90 90 90\nX1 1 0 0 0\nFEND\n+more.txt\nRESI 1 ABC\n"
                 "Fe1 3 0 0 0 11 .05\nQ1 1 0 0 0 11 .05 1.2\nL.S. 4\nHKLF 4\nC8 1 0 0 0\nEND\n",
         // (0.01 + 0.02 + 0.03) / 3 = 0.02, 1.2 times that; 31 is the third variable 0.6; -20.5 is 0.5 (1 - 0.25), -21 is 1 - 0.25.
         "10 5 20 90 90 90 ; P 1 1; C1 C 0.1 0.25 -0.5 1.57914 1 x1 0.00197392 0.0157914 0.00148044 0.00236871 0.00049348 0.000789568"
         "; h1 H 0 0 0 1.89496 0.5 x1; C2 C 0.125 0.375 0 0.789568 0.6 x1; C3 C 0 0 0 47.3741 0.75 x1; C4 C 0.1 0 0 3.94784 1 x1; "
         "Fe1 Fe 0 0 0 3.94784 1 x1"},
        {"SHX",
         shelx_head + "LATT -1\nNEUT\nSFAC $C 2.31 20.84 1.02 10.21 =\n 1.59 0.57 .865 51.65 .2156 0 0 1 .77 12\nSFAC D FE\n"
                      "d1 2 0 0 0 11 .01\nX 3 0 0 0 11 .02\nEND\nC1 9 junk\n",
         "10 5 20 90 90 90 ; P 1 1; d1 D 0 0 0 0.789568 1 x1; X Fe 0 0 0 1.57914 1 x1"},
    };
    for (const Case& c : cases) {
        Crystal_Structure structure;
        const Status status = Read(c.text, structure, c.mode);
        EXPECT_EQ(status.failed ? status.message : Told(structure), c.told) << c.text;
    }
}

TEST_F(Structure_Files, Faults) {
    const std::string atom = "Error reading the anisotropic thermal parameters of atom:A";
    const std::string pcr = pcr_start + pcr_atoms + pcr_end;
    const Case cases[] = {
        {"OSL", " \n\n", "The file " + path.string() + " contains nothing"},
        {"OSL", "spgr P 1\n", " Bad Cell Parameters..."},
        {"OSL", "cell 5 5 5 90 90\nspgr P 1\n", " Bad Cell Parameters..."},
        {"OSL", "cell 5 5 5 90 90 x\nspgr P 1\n", " Bad Cell Parameters..."},
        {"OSL", "cell 5 5 5 120 120 120\nspgr P 1\n", " Bad Cell Parameters..."},
        {"OSL", "cell 5 5 5 90 90 90\nspgr P 5\n", " Problems reading the Space Group symbol/number"},
        {"OSL", "cell 5 5 5 90 90 90\n", " Problems reading the Space Group symbol/number"},
        {"OSL", "cell 5 5 5 90 90 90\ngen q,y,z\n", " Invalid character... q in operator string"},
        {"OSL", osl_head + "atom A Fe 0 0\n", "Blank line: line 3: atom A Fe 0 0"},
        {"OSL", osl_head + "atom A Fe 0 0,0 0\n", "Bad format: line 3: "},
        {"OSL", osl_head + "atom A Fe 0 1/0 0\n", "Bad format: line 3: "},
        {"OSL", osl_head + "atom A Fe 0 1e9 0\n", "Bad format: line 3: "},
        {"OSL", osl_head + "atom A Fe 0 0.2(x) 0\n", "Wrong format using Standard values: line 3: "},
        {"OSL", osl_head + "u_ij 1 1 1 1 1 1\n", "Error reading the anisotropic thermal parameters of atom:: line 3"},
        {"OSL", osl_head + "atom A Fe 0 0 0\naniso u_ij 1 1 1 1 1\n", atom},
        {"OSL", osl_head + "atom A Fe 0 0 0\naniso u_ij 1 1 1 1 1 1 1\n", atom},
        {"OSL", osl_head + "atom A Fe 0 0 0\naniso 1 1 1 1 1 1\n", atom},
        {"OSL", osl_head + "atom A Fe 0 0 0\naniso B u_ij 1 1 1 1 1 1\n", atom},
        {"PCR", "nothing\n", " No Phase information was found in this PCR file. Please, check it! "},
        {"PCR", Replace_All(pcr, "0   7   1   0", "0   7   2   0"), " Locating Phases failed in this PCR. Please, check it!"},
        {"PCR", Replace_All(pcr, "<--", "<-"), " => Problems reading Space group on PCR file "},
        {"PCR", Replace_All(pcr, "P n m a", "P n q a"), " => Problems reading Space group on PCR file "},
        {"PCR", Replace_All(pcr, "alpha", "a"), " => Problems reading Cell Parameters on PCR file "},
        {"PCR", Replace_All(pcr, "8.485", "a.485"), " => Problems reading Cell Parameters on PCR file "},
        {"PCR", pcr.substr(0, pcr.find("   8.485")), " => Problems reading Cell Parameters on PCR file "},
        {"PCR", Replace_All(pcr, "0.18748", "0.18x48"), "Bad format: line 15: Pb"},
        {"PCR", Replace_All(pcr, "-0.0005 0.0006", ""), "Blank line: line 20: 0.001"},
        {"PCR", pcr_start + pcr_atoms.substr(0, pcr_atoms.find("! half")) + pcr_end, " The phase tells of 2 atoms, and has 1"},
        {"SHX", "SFAC C\n", " There is no CELL in this file"},
        {"SHX", "CELL 0.7\n", "Blank line: line 1: CELL 0.7"},
        {"SHX", "CELL 0.7 5 5 5 90 90\n", "Bad format: line 1: CELL 0.7"},
        {"SHX", "CELL 0.7 5 5 -5 90 90 90\n", " Bad cell parameters : line 1: CELL 0.7"},
        {"SHX", shelx_head + "LATT 8\n", " There is no lattice of this number: line 4: LATT 8"},
        {"SHX", shelx_head + "SYMM x,y\n", "operator"},
        {"SHX", in_p1 + "C1 4 0 0 0\n", " There is no element 4 in SFAC: line 10: C1 4 0 0 0"},
        {"SHX", shelx_head + "C1 1 0 0 0\n", " There is no element 1 in SFAC: line 4: C1 1 0 0 0"},
        {"SHX", in_p1 + "C1 1 0 51 0\n", " There is no free variable 5 in FVAR: line 10: C1 1 0 51 0"},
        {"SHX", in_p1 + "C1 1 0 0\n", "Blank line: line 10: C1 1 0 0"},
        {"SHX", in_p1 + "C1 1 0 0 x\n", "Bad format: line 10: C1 1 0 0 x"},
        {"SHX", in_p1 + "H1 2 0 0 0 11 -1.2\n", " U is a multiple of that of an atom before, and there is none: line 10"},
        {"SHX", in_p1 + "C1 1 0 0 0 11 .01 .02 =\n .03", "Blank line: line 10: C1"},  // the values are cut short
    };
    for (const Case& c : cases) {
        Crystal_Structure structure;
        structure.mode = "as it was";
        const Status status = Read(c.text, structure, c.mode);
        EXPECT_TRUE(status.failed) << c.text;
        EXPECT_TRUE(Contains(status.message, c.told)) << c.text << '\n' << status.message << '\n' << c.told;
        EXPECT_EQ(structure.mode, "as it was");
    }
}

// Against a script of its own, which closes the operators of the file, counts images that lie more than 0.05 angstroms apart, and has
// biso from the trace of U in orthogonal axes.
TEST_F(Structure_Files, RealShelxFile) {
    const std::string file = Real_Path("structures/twin_3a.ins");
    if (!std::filesystem::exists(file)) GTEST_SKIP();
    Crystal_Structure structure;
    const Status status = Read_Structure_File(file, structure, Structure_Mode(file));
    ASSERT_TRUE(status.ok()) << status.message;
    EXPECT_EQ(structure.group.spg_number, 169);
    ASSERT_EQ(structure.atoms.size(), 37u);
    std::map<std::string, int> elements;
    for (const Atom_Type& atom : structure.atoms) {
        ++elements[atom.symbol];
        EXPECT_EQ(atom.multiplicity, 6) << atom.label;
        EXPECT_EQ(atom.aniso, atom.symbol != "H") << atom.label;
        EXPECT_EQ(atom.occupancy, 1) << atom.label;
    }
    EXPECT_EQ(elements, (std::map<std::string, int>{{"Cs", 1}, {"C", 15}, {"N", 1}, {"H", 20}}));
    const auto some = {structure.atoms[0], structure.atoms[7], structure.atoms[28]};
    structure.atoms = some;
    EXPECT_EQ(Told(structure),
              "11.37 11.37 20.496 90 90 120 ; P 61 6; CS1 Cs 0.588169 0.058435 0.5 3.24486 1 x6 0.00745531 0.00884173 0.00228975 "
              "0.00491253 0.00141135 0.002096; H11A H 0.629438 -0.266897 0.453685 7.01374 1 x6; H21 H 0.401466 0.058419 0.626801 "
              "5.89639 1 x6");
}

void Expect_Same(const Crystal_Structure& a, const Crystal_Structure& b, const std::string& what) {
    EXPECT_EQ(a.cell.cell, b.cell.cell) << what;
    EXPECT_EQ(a.cell.ang, b.cell.ang) << what;
    EXPECT_EQ(a.group.hm_symbol, b.group.hm_symbol) << what;
    EXPECT_EQ(Operator_Set(a.group), Operator_Set(b.group)) << what;
    ASSERT_EQ(a.atoms.size(), b.atoms.size()) << what;
    const auto values = [](const Atom_Type& t) {
        return std::tuple(t.label, t.symbol, t.x, t.y, t.z, t.biso, t.occupancy, t.multiplicity, t.aniso, t.beta);
    };
    for (std::size_t i = 0; i < a.atoms.size(); ++i) EXPECT_EQ(values(a.atoms[i]), values(b.atoms[i])) << what << ' ' << a.atoms[i].label;
}

// Every number comes back as it was, to the last bit.
TEST_F(Structure_Files, WrittenStructuresAreReadBack) {
    std::vector<Crystal_Structure> structures;
    const std::string cells = "cell 5.1234567 6 7.000001 90 101.1 90\n";
    const std::string atoms =
        "atom A Fe 1/3 -0.1234567890123 12.5 0.1 .333333\naniso u_ij .01 1e-9 .01 -.001 0 0\natom B'1 D 0 0.25 2e-7\natom ? ? 0 0 0\n";
    for (const std::string group :
         {"spgr P 1", "spgr 227:1", "spgr R -3 m:R", "spgr P 21/n", "spgr A 1 2/a 1", "spgr -P 2ab 2n (3 0 1)",
          "gen -x,-y,-z+1/3\ngen x+1/2,y,z+1/6", "gen x+1/3,y+1/3,z+1/3\ngen -x,y,-z", "fix x,y,z\nfix -x,y,0.1+z"}) {
        const Status status = Read(cells + group + '\n' + atoms, structures.emplace_back(), "OSL");
        ASSERT_TRUE(status.ok()) << group << ": " << status.message;
    }
    for (const char* name : {"kaolinite.cif", "pbso4.cif", "lamno3_pbnm.cif", "caf2.cif", "cod_1011031.cif", "cod_2013551.cif",
                             "cod_4003024.cif", "s2dipyridyl.cif", "twin_3a.ins"})
        if (const std::string file = Real_Path(std::string("structures/") + name); std::filesystem::exists(file)) {
            const Status status = Read_Structure_File(file, structures.emplace_back(), Structure_Mode(file));
            ASSERT_TRUE(status.ok()) << status.message;
        }
    for (const Crystal_Structure& structure : structures) {
        const std::string text = Written(structure, "two\nlines");
        Crystal_Structure again;
        const Status status = Read_Structure_File(path.string(), again, "osl");
        ASSERT_TRUE(status.ok()) << status.message << '\n' << text;
        Expect_Same(structure, again, text);
        EXPECT_EQ(Written(again, "two lines"), text);
    }
}

TEST_F(Structure_Files, WrittenLines) {
    Crystal_Structure s;
    ASSERT_TRUE(Read("cell 5.5 6 7 90 90 90\nspgr P n m a\natom Fe1 Fe 1/8 -.25 0 .5 .25\naniso beta 1 2 3 0 0 0\n", s, "OSL").ok());
    s.atoms.front().label = "Fe ! 1";
    EXPECT_EQ(Written(s, "iron"),
              "TITLE iron\n!  Automatically generated OSL file (Write_OSL)\n"
              "!         a             b             c             alpha         beta          gamma\n"
              "Cell  5.5000        6.0000        7.0000        90.0000       90.0000       90.0000\n"
              "!     Space Group # 62\nSpgr  P N M A\n"
              "!      Atom  Type     x/a           y/b           z/c           Biso          Occ                Occ    Mult\n"
              "Atom   Fe___1  Fe      0.12500      -0.25000       0.00000       0.5000        0.2500           0.25    4.00   ! aniso\n"
              "Aniso  beta            1.0000        2.0000        3.0000        0.0000        0.0000        0.0000\n");
    s.atoms.clear();
    EXPECT_TRUE(Contains(Written(s), "Spgr  P N M A\n!  No atoms ...\n"));
    EXPECT_TRUE(Write_OSL((path / "not_there").string(), s).of_file);
}

// Time grows with the file alone.
TEST_F(Structure_Files, HugeFilesEndSoon) {
    const auto many = [](std::string_view line) {
        std::string text;
        while (text.size() < 4'000'000) text += line;
        return text;
    };
    const std::string pcr = pcr_start + many("Pb PB 0 0 0 0 0\n 0 0\n") + many("! alpha gamma\n");
    for (const auto& [mode, text] : {std::pair("OSL", osl_head + many("atom A Fe 0 0 0\naniso u_ij A\n")),
                                     {"OSL", osl_head + many("phase_1\n") + many("fix x\n")},
                                     {"OSL", "cell" + many(" 1")},
                                     {"PCR", pcr},
                                     {"PCR", many("! Data for PHASE Nph\n1\n")},
                                     {"SHX", in_p1 + many("C1 1 0 0 0 =\n")},
                                     {"SHX", in_p1 + many("SFAC C C C C\nFVAR 1 2 3\nPART 1 1 1\n")},
                                     {"SHX", shelx_head + many("SYMM x,y,z\n")}}) {
        const auto start = std::chrono::steady_clock::now();
        Crystal_Structure structure;
        const Status status = Read(text, structure, mode);
        EXPECT_LT(status.message.size(), 300u);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20)) << mode << text.substr(0, 300);
    }
}

}  // namespace
}  // namespace vntl
