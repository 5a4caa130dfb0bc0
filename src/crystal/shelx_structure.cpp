// SHELX instruction files: a word of four letters and its values on each line; every other line is an atom.
//
//   TITL lead sulphate
//   CELL 0.71073  11.370 11.370 20.496  90.00 90.00 120.00     wavelength, then the cell
//   LATT -1                      1 P, 2 I, 3 R, 4 F, 5 A, 6 B, 7 C; a positive number: with an inversion centre at the origin
//   SYMM -Y, X-Y, .3333333+Z
//   SFAC C H N CS                elements, or one with its scattering factors
//   FVAR 0.26134 0.08883         overall scale, then free variables 2, 3, ...
//   CS1   4   0.588169  0.058435  0.500000  11.00000  0.03662  0.04343 =
//          0.04873  0.02143  0.01443  0.02413
//   HKLF 4
//
// Letters may have either case. A line that begins with a blank is a comment, and so is what stands behind "!". "=" at the end continues a
// line. An atom has its label, a place in SFAC, x, y, z, occupancy, and U or U11 U22 U33 U23 U13 U12. Maxima of a Fourier map (Q1, Q2, ..)
// are no atoms.
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "base/text.hpp"
#include "base/text_file.hpp"
#include "crystal/structure_lines.hpp"
#include "crystal/structure_readers.hpp"

namespace vntl {

namespace {

constexpr std::size_t instruction_size = 4;
constexpr std::string_view instructions =
    " ABIN ACTA AFIX ANIS ANSC ANSR BASF BEDE BIND BLOC BOND BUMP CELL CGLS CHIV CONF CONN DAMP DANG DEFS DELU DFIX DISP DSUL EADP EGEN END"
    " EQIV ESEL EXTI EXYZ FEND FIND FLAT FMAP FRAG FREE FRES FVAR GRID HFIX HKLF HOPE HTAB INIT ISOR L.S. LATT LAUE LIST LONE MERG MIND"
    " MOLE MORE MOVE MPLA NCSY NEUT NTRY OMIT PART PATT PHAN PLAN PLOP PRIG PSEE REM RESI RIGU RTAB SADI SAME SEED SFAC SHEL SIMU SIZE SKIP"
    " SPEC SPIN STIR SUMP SWAT SYMM TEMP TEXP TIME TITL TREF TWIN TWST UNIT VECT WGHT WIGL WPDB XNPD ZERR ";

// The instruction that a line begins with, in capitals, whatever residue it is for ("DFIX_2"); blank for any other word.
std::string Instruction_Of(std::string_view word) {
    const std::string name = Upper(word.substr(0, std::min(word.find('_'), instruction_size)));
    const bool known = instructions.find(" " + name + " ") != std::string_view::npos;
    return known && (name.size() == instruction_size || name.size() == word.size()) ? name : "";
}

// One instruction or atom, its continuations joined.
struct Shelx_Line {
    std::string text;
    int number = 0;
    Structure_Line Told() const { return {text, number}; }
};

bool Next_Line(Line_Cursor& lines, Shelx_Line& line) {
    std::string_view part;
    do {
        if (!lines.Next(part)) return false;
    } while (part.starts_with(' ') || part.starts_with('\t') || Without_Comment(part).empty());
    line.text = Without_Comment(part);
    line.number = lines.Number();
    const std::string name = Instruction_Of(First_Word(line.text));
    while (line.text.ends_with('=') && name != "REM" && name != "TITL") {
        line.text.back() = ' ';
        if (lines.Next(part)) line.text += Without_Comment(part);
    }
    return true;
}

// What stands above an atom and goes for it; 0 for what the atom has itself.
struct Held_Values {
    double part_occupancy = 0, occupancy = 0, u = 0;
};

struct Atom_Line {
    Shelx_Line line;
    Held_Values held;
};

struct Shelx_File {
    std::optional<Shelx_Line> cell;
    int lattice = 1;
    std::vector<std::string> generators = {"X,Y,Z"};
    std::vector<std::string> elements;
    std::vector<double> free_variables;  // from 1, the overall scale
    std::vector<Atom_Line> atoms;
};

// --- instructions ------------------------------------------------------------------------------------------------------------------

Status Take_Variables(Line_Words words, std::vector<double>& variables) {
    for (const std::string_view word : words.subspan(1))
        if (Status status = Read_Number(word, variables.emplace_back()); status.failed) return status;
    return Status::Done();
}

Status Take_Lattice(Line_Words words, int& lattice) {
    constexpr int last_lattice = 7;
    if (words.size() < 2) return Status::Done();
    if (!Parse_Integer(words[1], lattice)) return Status::Fail(bad_format);
    return lattice != 0 && std::abs(lattice) <= last_lattice ? Status::Done() : Status::Fail(" There is no lattice of this number");
}

// PART number occupancy; AFIX number distance occupancy U. Without them the values of the atoms count again.
Status Take_Held(std::string_view name, Line_Words words, Held_Values& held) {
    double unused = 0;
    const bool part = name == "PART";
    if (part)
        held.part_occupancy = 0;
    else
        held.occupancy = held.u = 0;
    const std::array<double*, 4> places = {&unused, part ? &held.part_occupancy : &unused, part ? &unused : &held.occupancy,
                                           part ? &unused : &held.u};
    for (std::size_t i = 0; i < places.size() && i + 1 < words.size(); ++i)
        if (Status status = Read_Number(words[i + 1], *places[i]); status.failed) return status;
    return Status::Done();
}

bool Is_Maximum(std::string_view label) {
    return label.size() > 1 && (label[0] == 'Q' || label[0] == 'q') && label.find_first_not_of("0123456789", 1) == std::string_view::npos;
}

// --- atoms -------------------------------------------------------------------------------------------------------------------------

// A coded value: within 5 of zero it is the value; 10 + p is p, held fixed; 10 n + p is p times free variable n, and -(10 n + p) is p times
// what that lacks to 1.
Status Decode(double coded, const std::vector<double>& variables, double& value) {
    constexpr double plain = 5, step = 10;
    const double n = std::fabs(coded) <= plain ? 0 : std::round(std::fabs(coded) / step);
    const double p = std::fabs(coded) - step * n;
    value = coded;
    if (n < 1) return Status::Done();
    if (n > 1 && n > static_cast<double>(variables.size()))
        return Status::Fail(" There is no free variable " + std::to_string(static_cast<long>(n)) + " in FVAR");
    const double variable = n > 1 ? variables[static_cast<std::size_t>(n) - 1] : 1;
    value = coded > 0 ? p * variable : n > 1 ? p * (1 - variable) : -p;
    return Status::Done();
}

// One third of the trace of U in orthogonal axes.
double Equivalent_U(const std::array<double, 6>& u, const Crystal_Cell_Type& cell) {
    constexpr std::array<std::array<std::size_t, 2>, 6> axes = {{{0, 0}, {1, 1}, {2, 2}, {0, 1}, {0, 2}, {1, 2}}};
    double sum = 0;
    for (std::size_t i = 0; i < axes.size(); ++i) {
        const auto [a, b] = axes[i];
        sum += (a == b ? 1 : 2) * u[i] * cell.rcell[a] * cell.rcell[b] * cell.GD[a][b];
    }
    return sum / 3;
}

class Atom_Reader {
public:
    Atom_Reader(const Shelx_File& file, const Crystal_Cell_Type& cell) : file_(file), cell_(cell) {}

    Status Read(const Atom_Line& told, Atom_Type& atom) {
        enum Place : std::size_t { label, element, x, occupancy = 5, u = 6 };
        const std::vector<std::string_view> words = Words_Of(told.line.text);
        if (words.size() < occupancy) return Status::Fail(blank_line);
        atom.label = To_Utf8(words[label]);
        if (Status status = Find_Element(words[element], atom.symbol); status.failed) return status;
        std::array<double, 10> values = {0, 0, 0, 11, 0.05};  // x, y, z, occupancy, and as many of U as there are
        const std::size_t n = std::min(words.size() - x, values.size());
        if (Status status = Read_Numbers(words, x, std::span(values).first(n)); status.failed) return status;
        Hold(told.held, n == values.size(), values);
        for (double& value : values)
            if (Status status = Decode(value, file_.free_variables, value); status.failed) return status;
        atom.x = values[0];
        atom.y = values[1];
        atom.z = values[2];
        atom.occupancy = static_cast<float>(values[3]);
        return Take_U(std::span(values).subspan(4), words.size() - std::min(words.size(), std::size_t{u}), atom);
    }

private:
    Status Find_Element(std::string_view word, std::string& symbol) const {
        int place = 0;
        if (!Parse_Integer(word, place)) return Status::Fail(bad_format);
        if (place < 1 || static_cast<std::size_t>(place) > file_.elements.size())
            return Status::Fail(" There is no element " + std::to_string(place) + " in SFAC");
        symbol = file_.elements[static_cast<std::size_t>(place) - 1];
        return Status::Done();
    }

    static void Hold(const Held_Values& held, bool anisotropic, std::array<double, 10>& values) {
        if (held.occupancy != 0) values[3] = held.occupancy;
        if (held.part_occupancy != 0) values[3] = held.part_occupancy;
        if (held.u != 0 && !anisotropic) values[4] = held.u;
    }

    // `given`: how many words stand behind the occupancy. Behind one U the height of a maximum may follow.
    Status Take_U(std::span<const double> values, std::size_t given, Atom_Type& atom) {
        constexpr std::size_t tensor = 6, with_height = 2;
        constexpr double least_multiple = 0.5;
        double u = values[0];
        if (given >= tensor) {
            const std::array<double, tensor> all = {values[0], values[1], values[2], values[5], values[4], values[3]};
            if (Status status = Set_Anisotropic(Thermal_Form::u_ij, all, cell_, atom); status.failed) return status;
            u = Equivalent_U(all, cell_);
        } else if (given > with_height) {
            return Status::Fail(blank_line);
        } else if (u <= -least_multiple) {
            if (!last_u_) return Status::Fail(" U is a multiple of that of an atom before, and there is none");
            u *= -*last_u_;
        }
        if (atom.symbol != "H" && atom.symbol != "D") last_u_ = u;
        atom.biso = static_cast<float>(u * b_of_u);
        return Status::Done();
    }

    const Shelx_File& file_;
    const Crystal_Cell_Type& cell_;
    std::optional<double> last_u_;  // of the last atom that is no hydrogen
};

// --- the file ----------------------------------------------------------------------------------------------------------------------

// Takes the lines up to HKLF or END.
class File_Reader {
public:
    Status Read(Line_Cursor lines) {
        for (Shelx_Line line; !ended_ && Next_Line(lines, line);)
            if (const Status status = Take(line); status.failed) return Refused(status.message, line.Told());
        return Status::Done();
    }

    Shelx_File file;

private:
    Status Take(const Shelx_Line& line) {
        const std::vector<std::string_view> words = Words_Of(line.text);
        const std::string name = Instruction_Of(words.front());
        if (name == "FRAG" || name == "FEND") in_fragment_ = name == "FRAG";
        if (in_fragment_) return Status::Done();
        if (name == "HKLF" || name == "END") ended_ = true;
        if (name == "CELL") file.cell = line;
        if (name == "LATT") return Take_Lattice(words, file.lattice);
        if (name == "SYMM") file.generators.emplace_back(Trim(std::string_view(line.text).substr(instruction_size)));
        if (name == "SFAC") Take_Elements(words);
        if (name == "FVAR") return Take_Variables(words, file.free_variables);
        if (name == "PART" || name == "AFIX") return Take_Held(name, words, held_);
        const bool included = line.text.starts_with('+');  // a file of further instructions
        if (name.empty() && !included && !Is_Maximum(words.front())) file.atoms.push_back({line, held_});
        return Status::Done();
    }

    // What stands above the first elements is no atom.
    void Take_Elements(Line_Words words) {
        if (file.elements.empty()) file.atoms.clear();
        double factor = 0;
        for (const std::string_view word : words.subspan(1))
            if (Read_Line_Of_Numbers(word, {&factor, 1}).failed)
                file.elements.push_back(Element_Of(word.substr(word.starts_with('$') ? 1 : 0)));
    }

    Held_Values held_;
    bool in_fragment_ = false;  // atoms of a model, in a cell of its own
    bool ended_ = false;
};

std::vector<std::string> Generators_Of(const Shelx_File& file) {
    constexpr std::array<std::array<std::string_view, 3>, 7> centrings = {{
        {},
        {"X+1/2,Y+1/2,Z+1/2"},
        {"X+2/3,Y+1/3,Z+1/3", "X+1/3,Y+2/3,Z+2/3"},
        {"X+1/2,Y+1/2,Z", "X+1/2,Y,Z+1/2", "X,Y+1/2,Z+1/2"},
        {"X,Y+1/2,Z+1/2"},
        {"X+1/2,Y,Z+1/2"},
        {"X+1/2,Y+1/2,Z"},
    }};
    std::vector<std::string> generators = file.generators;
    if (file.lattice > 0) generators.emplace_back("-X,-Y,-Z");
    for (const std::string_view vector : centrings[static_cast<std::size_t>(std::abs(file.lattice)) - 1])
        if (!vector.empty()) generators.emplace_back(vector);
    return generators;
}

Status Read_Cell(const Shelx_File& file, Crystal_Cell_Type& cell) {
    if (!file.cell) return Status::Fail(" There is no CELL in this file");
    const Structure_Line line = file.cell->Told();
    const std::vector<std::string_view> words = Words_Of(line.text);
    constexpr std::size_t before_cell = 2;  // the instruction and the wavelength
    if (words.size() <= before_cell) return Refused(blank_line, line);
    const std::string_view numbers = line.text.substr(static_cast<std::size_t>(words[before_cell].data() - line.text.data()));
    const Status status = Read_Cell_Line(numbers, cell);
    return status.failed ? Refused(status.message, line) : status;
}

}  // namespace

Status Read_SHELX(std::string_view text, Crystal_Structure& structure) {
    File_Reader reader;
    if (Status status = reader.Read(Line_Cursor(text)); status.failed) return status;
    const Shelx_File& file = reader.file;
    if (Status status = Read_Cell(file, structure.cell); status.failed) return status;
    if (Status status = Set_SpaceGroup({}, structure.group, Generators_Of(file), "GEN"); status.failed) return status;
    Atom_Reader atoms(file, structure.cell);
    for (const Atom_Line& told : file.atoms)
        if (const Status status = atoms.Read(told, structure.atoms.emplace_back()); status.failed)
            return Refused(status.message, told.line.Told());
    return Status::Done();
}

}  // namespace vntl
