// PCR files: the control files of refinements of powder patterns. Lines that begin with "!" are comments, and they tell what stands below.
//
//   !Job Npr Nph Nba ...                            above the number of phases, under Nph
//      0   7   1   0 ...
//   !  Data for PHASE number:   1  ==> ...
//   PbSO4
//   !Nat Dis Ang ...                                above the number of atoms
//      5   0   0 ...
//   P n m a                  <--Space group symbol
//   !Atom   Typ       X        Y        Z     Biso       Occ     In Fin N_t Spc /Codes
//   Pb      PB      0.18748  0.25000  0.16721   1.39038   0.50000   0   0   0    0
//                    171.00     0.00   181.00    281.00      0.00
//   !  Scale        Shape1      Bov ...
//   !     a          b         c        alpha      beta       gamma      #Cell Info
//      8.485119   5.402047   6.964059  90.000000  90.000000  90.000000
//
// Codes stand below the values that they belong to. An atom of N_t 2 has its beta, and codes of these, on two lines more. A file of several
// patterns (NPATT) differs in what it tells of patterns alone. Of several phases the first one with a cell serves.
#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <string>
#include <vector>

#include "base/text.hpp"
#include "base/text_file.hpp"
#include "crystal/structure_lines.hpp"
#include "crystal/structure_readers.hpp"

namespace vntl {

namespace {

constexpr std::string_view no_phase = " No Phase information was found in this PCR file. Please, check it! ";
constexpr std::string_view lost_phase = " Locating Phases failed in this PCR. Please, check it!";
constexpr std::string_view bad_group = " => Problems reading Space group on PCR file ";
constexpr std::string_view no_cell = " => Problems reading Cell Parameters on PCR file ";

bool Is_Comment(std::string_view line) { return line.starts_with('!'); }
bool Opens_Phase(std::string_view line) { return Contains(Lower(line), "data for phase"); }

// The names of columns in a comment line: "!Atom Typ X" or "! Atom Typ X".
std::vector<std::string_view> Columns_Of(std::string_view comment) { return Words_Of(comment.substr(1)); }

constexpr std::size_t no_column = static_cast<std::size_t>(-1);
std::size_t Column(Line_Words columns, std::string_view name) {
    const auto found = std::find_if(columns.begin(), columns.end(), [&](std::string_view column) { return Equal_No_Case(column, name); });
    return found != columns.end() ? static_cast<std::size_t>(found - columns.begin()) : no_column;
}

// A whole number in a column, where the line has one.
std::optional<int> Number_In(std::string_view line, std::size_t column) {
    const std::vector<std::string_view> words = Words_Of(line);
    int number = 0;
    if (column >= words.size() || !Parse_Integer(words[column], number)) return {};
    return number;
}

constexpr std::size_t usual_x = 2;  // column of x, behind label and type

struct Pcr_Atom {
    Structure_Line line;
    Structure_Line tensor;  // blank for an isotropic atom
    std::size_t x = 0;      // column of x
};

struct Pcr_Phase {
    std::optional<std::string_view> symbol;
    std::optional<std::string_view> cell;  // blank where its line is missing
    std::optional<int> told_atoms;
    std::vector<Pcr_Atom> atoms;
};

// Takes the lines of one phase.
class Phase_Reader {
public:
    void Take(const Structure_Line& line) {
        if (Is_Comment(line.text))
            Take_Comment(line.text);
        else
            Take_Values(line);
    }

    Pcr_Phase phase;

private:
    enum class Next { other, number_of_atoms, atoms, cell };

    void Take_Comment(std::string_view line) {
        const std::string lower = Lower(line);
        const std::vector<std::string_view> columns = Columns_Of(line);
        if (Contains(lower, "alpha") && Contains(lower, "gamma")) {
            next_ = phase.cell ? Next::other : Next::cell;
            if (!phase.cell) phase.cell = "";
        } else if (!columns.empty() && Equal_No_Case(columns[0], "Atom") && Column(columns, "Typ") != no_column) {
            next_ = Next::atoms;
            x_ = Column(columns, "X");
            if (x_ == no_column) x_ = usual_x;
            kind_ = Column(columns, "N_t");
        } else if (!columns.empty() && Equal_No_Case(columns[0], "Nat")) {
            next_ = Next::number_of_atoms;
        } else if ((!columns.empty() && Equal_No_Case(columns[0], "Scale")) || Contains(lower, "profile parameters")) {
            next_ = Next::other;
        }
    }

    void Take_Values(const Structure_Line& line) {
        const std::size_t mark = line.text.find("<--Space");
        if (mark != std::string_view::npos) {
            phase.symbol = phase.symbol.value_or(Trim(line.text.substr(0, mark)));
        } else if (next_ == Next::cell) {
            phase.cell = line.text;
            next_ = Next::other;
        } else if (next_ == Next::number_of_atoms) {
            phase.told_atoms = Number_In(line.text, 0);
            next_ = Next::other;
        } else if (next_ == Next::atoms) {
            Take_Atom_Line(line);
        }
    }

    // Labels begin with a letter, and the lines of codes and further values with a number.
    void Take_Atom_Line(const Structure_Line& line) {
        constexpr int codes = 1, tensor = 2;
        if (std::isalpha(static_cast<unsigned char>(line.text.front())) != 0) {
            phase.atoms.push_back({line, {}, x_});
            behind_atom_ = 0;
            anisotropic_ = Number_In(line.text, kind_) == 2;
            if (anisotropic_) phase.atoms.back().tensor.number = line.number + codes + 1;
        } else if (++behind_atom_ == tensor && anisotropic_) {
            phase.atoms.back().tensor = line;
        }
    }

    Next next_ = Next::other;
    std::size_t x_ = usual_x;
    std::size_t kind_ = no_column;  // column of the kind of thermal motion
    int behind_atom_ = 0;           // lines since the last atom
    bool anisotropic_ = false;      // the last atom
};

// The next line that is not blank, outer blanks cut.
bool Next_Line(Line_Cursor& lines, Structure_Line& line) {
    while (lines.Next(line.text)) {
        line.text = Trim(line.text);
        line.number = lines.Number();
        if (!line.text.empty()) return true;
    }
    return false;
}

struct Pcr_Phases {
    std::vector<Line_Cursor> starts;  // behind the line that opens each
    std::optional<int> told;          // their number by the head of the file
};

Pcr_Phases Find_Phases(std::string_view text) {
    Pcr_Phases phases;
    std::size_t column = no_column;
    Line_Cursor lines(text);
    for (Structure_Line line; Next_Line(lines, line);) {
        if (Opens_Phase(line.text)) {
            phases.starts.push_back(lines);
        } else if (phases.starts.empty() && Is_Comment(line.text)) {
            if (column == no_column) column = Column(Columns_Of(line.text), "Nph");
        } else if (column != no_column && phases.starts.empty()) {
            phases.told = Number_In(line.text, column);
            column = no_column;
        }
    }
    return phases;
}

Pcr_Phase Read_Phase(Line_Cursor lines) {
    Phase_Reader reader;
    for (Structure_Line line; Next_Line(lines, line) && !Opens_Phase(line.text);) reader.Take(line);
    return std::move(reader.phase);
}

Pcr_Phase First_With_Cell(const std::vector<Line_Cursor>& starts) {
    for (const Line_Cursor& start : starts)
        if (Pcr_Phase phase = Read_Phase(start); phase.cell) return phase;
    return Read_Phase(starts.front());
}

Status Read_Atom(const Pcr_Atom& told, const Crystal_Cell_Type& cell, Atom_Type& atom) {
    const std::vector<std::string_view> words = Words_Of(Without_Comment(told.line.text));
    std::array<double, 5> values = {};  // x, y, z, biso, occupancy
    if (const Status status = Read_Numbers(words, told.x, values); status.failed) return Refused(status.message, told.line);
    atom.label = To_Utf8(words[0]);
    atom.symbol = Element_Of(words[1]);
    atom.x = values[0];
    atom.y = values[1];
    atom.z = values[2];
    atom.biso = static_cast<float>(values[3]);
    atom.occupancy = static_cast<float>(values[4]);
    if (told.tensor.number == 0) return Status::Done();
    std::array<double, 6> beta = {};
    Status status = Read_Numbers(Words_Of(Without_Comment(told.tensor.text)), 0, beta);
    if (status.ok()) status = Set_Anisotropic(Thermal_Form::beta, beta, cell, atom);
    return status.failed ? Refused(status.message, told.tensor) : status;
}

Status Read_Atoms(const Pcr_Phase& phase, const Crystal_Cell_Type& cell, Atom_List& atoms) {
    if (phase.told_atoms && static_cast<long>(phase.atoms.size()) != *phase.told_atoms)
        return Status::Fail(" The phase tells of " + std::to_string(*phase.told_atoms) + " atoms, and has " +
                            std::to_string(phase.atoms.size()));
    for (const Pcr_Atom& told : phase.atoms)
        if (Status status = Read_Atom(told, cell, atoms.emplace_back()); status.failed) return status;
    return Status::Done();
}

}  // namespace

Status Read_PCR(std::string_view text, Crystal_Structure& structure) {
    const Pcr_Phases phases = Find_Phases(text);
    if (phases.starts.empty()) return Status::Fail(no_phase);
    if (phases.told && static_cast<long>(phases.starts.size()) != *phases.told) return Status::Fail(lost_phase);
    const Pcr_Phase phase = First_With_Cell(phases.starts);
    if (!phase.symbol || Set_SpaceGroup(*phase.symbol, structure.group).failed) return Status::Fail(bad_group);
    if (!phase.cell || Read_Cell_Line(*phase.cell, structure.cell).failed) return Status::Fail(no_cell);
    return Read_Atoms(phase, structure.cell, structure.atoms);
}

}  // namespace vntl
