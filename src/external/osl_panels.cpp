#include "external/osl_panels.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <map>
#include <utility>
#include <vector>

#include "base/edit_descriptor.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "crystal/osl_lines.hpp"
#include "external/column_lines.hpp"
#include "patterns/write_columns.hpp"

namespace vntl {

namespace {

constexpr std::string_view panel_fault = "Error reading the atoms panel!";
constexpr std::string_view line_end = "\r\n";
constexpr std::size_t shown_of_line = 60, shown_faults = 10;

// --- panels from a structure -------------------------------------------------------------------------------------------------------

std::string Digits(double value, int decimals) {
    std::array<char, 512> buffer;
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimals).ptr};
}

// A number in columns. One that fills them gets a blank before it, so that it stays apart from its neighbour.
std::string Column(double value, std::size_t width, int decimals) {
    const std::string digits = Digits(value, decimals);
    return std::string(digits.size() < width ? width - digits.size() : 1, ' ') + digits;
}

std::string Cell_Text(const Crystal_Cell_Type& cell) {
    std::string text, exact;
    for (const float length : cell.cell) text += Column(length, 12, 5);
    for (const float angle : cell.ang) text += Column(angle, 10, 4);
    Crystal_Cell_Type read;
    if (Read_Cell_Text(text, read).ok()) return text;
    for (const auto& values : {cell.cell, cell.ang})  // too small, or too flat, for its decimals
        for (const float value : values) exact += (exact.empty() ? "" : " ") + Shortest(value);
    return exact;
}

std::string Lines_Of_Atom(const Atom_Type& atom) {
    std::string text = "Atom " + Osl_Word(atom.label) + "  " + Osl_Word(atom.Species()) + "  ";
    for (const double value : {atom.x, atom.y, atom.z, static_cast<double>(atom.biso), static_cast<double>(atom.occupancy)})
        text += Column(value, 9, 5);
    text += line_end;
    if (!atom.aniso) return text;
    text += "aniso    ";
    for (const float value : atom.beta) text += Column(value, 12, 6);
    text += line_end;
    return text;
}

// --- a structure from panels -------------------------------------------------------------------------------------------------------

// Each fault by itself, in the order of the panels.
class Faults {
public:
    void Add(Osl_Panel panel, std::string text) {
        if (count_ == 0) first_ = panel;
        if (++count_ <= shown_faults) text_ += '\n' + std::move(text);
    }
    bool none() const { return count_ == 0; }
    Osl_Panel first() const { return first_; }
    Status Told() const {
        const std::string more = count_ > shown_faults ? "\nand " + std::to_string(count_ - shown_faults) + " more" : std::string();
        return Status::Fail(std::string(panel_fault) + text_ + more);
    }

private:
    Osl_Panel first_ = Osl_Panel::cell;
    std::size_t count_ = 0;
    std::string text_;
};

std::string Reason(const Status& status) { return std::string(Trim(status.message)); }

// What a panel of one line holds.
std::string Panel_Line(std::string_view text) {
    const std::string line = Without_Line_Ends(text);
    return std::string(Trim(std::string_view(line).substr(0, line.find('!'))));
}

bool Is_A_Number(std::string_view word) {
    double value = 0;
    return Parse_Real(word, value);
}

Status Take_Atom(Osl_Atom_Reader& reader, std::string_view line, Atom_List& atoms) {
    if (Status status = reader.Take_Atom(line); status.failed) return status;
    return Is_A_Number(atoms.back().species) ? Status::Fail("The species is missing") : Status::Done();
}

void Read_Atoms(std::string_view text, const Crystal_Cell_Type& cell, Atom_List& atoms, Faults& faults) {
    if (text.size() > largest_panel)
        return faults.Add(Osl_Panel::atoms, "The atoms are " + std::to_string(text.size()) + " bytes of text, more than the " +
                                                std::to_string(largest_panel) + " that are read");
    Osl_Atom_Reader reader(cell, atoms, true);
    Line_Cursor lines(text);
    for (std::string_view line; lines.Next(line);) {
        Status status;
        switch (Osl_Line_Of(line)) {
            case Osl_Line::blank:
                break;
            case Osl_Line::atom:
                status = Take_Atom(reader, line, atoms);
                break;
            case Osl_Line::thermal:
                status = reader.Take_Thermal(line);
                break;
            case Osl_Line::other:
                status = Status::Fail("This is no line of an atom");
                break;
        }
        if (!status.failed) continue;
        faults.Add(Osl_Panel::atoms,
                   "Line " + std::to_string(lines.Number()) + ": " + Reason(status) + ": " + Kept_Text(Trim(line), shown_of_line));
    }
}

// What a panel shows as it was filled is what it was filled with.
void Take_All_Digits(const Crystal_Structure& imported, Crystal_Structure& structure) {
    if (Cell_Text(structure.cell) == Cell_Text(imported.cell)) structure.cell = imported.cell;
    std::multimap<std::string, const Atom_Type*> known;  // equal keys in their order
    for (const Atom_Type& atom : imported.atoms) known.emplace(Lines_Of_Atom(atom), &atom);
    for (Atom_Type& atom : structure.atoms) {
        const auto found = known.lower_bound(Lines_Of_Atom(atom));
        if (found == known.end() || found->first != Lines_Of_Atom(atom)) continue;
        atom = *found->second;
        known.erase(found);
    }
}

// --- the job -----------------------------------------------------------------------------------------------------------------------

constexpr std::size_t number_columns = 9;
constexpr int number_decimals = 4;

// As the file has it.
double Written(float value) { return std::strtod(Digits(value, number_decimals).c_str(), nullptr); }

std::string Why_Wrong(const Pdf_Input& input, float Pdf_Input::*number) {
    const float value = input.*number;
    // A blank stays before each, for programs that read the file in free form.
    if (!std::isfinite(value) || Digits(value, number_decimals).size() >= number_columns)
        return Shortest(value) + " is too large for its columns in the file";
    const double written = Written(value);
    const bool lost = written == 0 && value != 0;
    if (number == &Pdf_Input::pdf_rmin && value < 0) return "a distance is not below 0";
    if (number == &Pdf_Input::pdf_rmax && written <= Written(input.pdf_rmin)) return "it must be larger than Rmin";
    if (number == &Pdf_Input::pdf_rstep || number == &Pdf_Input::pdf_qmax) {
        if (value <= 0) return "it must be larger than 0";
        if (lost) return Shortest(value) + " is 0 in the four decimals of the file";
    }
    if ((number == &Pdf_Input::pdf_qbroad || number == &Pdf_Input::pdf_qdamp) && value < 0) return "it must not be below 0";
    return {};
}

template <class... Values>
void Put(std::string& text, std::string_view format, const Values&... values) {
    (void)Write_Record(text, Edit_Format(format), values...);
}

}  // namespace

std::optional<Wrong_Pdf_Number> Find_Wrong_Number(const Pdf_Input& input) {
    for (std::size_t place = 0; place < pdf_numbers.size(); ++place)
        if (const std::string why = Why_Wrong(input, pdf_numbers[place].value); !why.empty())
            return Wrong_Pdf_Number{place, std::string(pdf_numbers[place].label) + ": " + why};
    return {};
}

Status Fill_Atoms_Panel(const Crystal_Structure& structure, std::string_view file, Pdf_Input& input) {
    std::string atoms;
    for (const Atom_Type& atom : structure.atoms) {
        atoms += Lines_Of_Atom(atom);
        if (atoms.size() > largest_panel)
            return Status::Fail("The structure has " + std::to_string(structure.atoms.size()) + " atoms, more than the panel holds.");
    }
    input.imported = structure;
    input.imported_from = file;
    input.pdf_cell_text = Cell_Text(structure.cell);
    input.pdf_spgr_text = Group_Text(structure.group);
    input.pdf_atoms_text = std::move(atoms);
    return Status::Done();
}

Status Read_Atoms_Panel(const Pdf_Input& input, Crystal_Structure& structure, Osl_Panel& faulty) {
    Faults faults;
    Crystal_Structure read;
    read.mode = "OSL";
    if (const Status status = Read_Cell_Text(Panel_Line(input.pdf_cell_text), read.cell); status.failed)
        faults.Add(Osl_Panel::cell, "Cell: " + Reason(status) + ": " + Kept_Text(Trim(input.pdf_cell_text), shown_of_line));
    if (const Status status = Read_Group_Text(Panel_Line(input.pdf_spgr_text), read.group); status.failed)
        faults.Add(Osl_Panel::group, "Space group: " + Reason(status) + ": " + Kept_Text(Trim(input.pdf_spgr_text), shown_of_line));
    Read_Atoms(input.pdf_atoms_text, read.cell, read.atoms, faults);
    if (!faults.none()) {
        faulty = faults.first();
        return faults.Told();
    }
    if (input.imported) Take_All_Digits(*input.imported, read);
    Set_Multiplicities(read);
    structure = std::move(read);
    return Status::Done();
}

std::string Osl_File_Text(const Pdf_Input& input, const Crystal_Structure& structure) {
    const std::string title =
        input.imported ? "OSL-file imported from file: " + Without_Line_Ends(input.imported_from) : "OSL-file created by Vantrelo-2006:";
    std::string text = "PATTERN_1   1.00\nTitle   " + title + "\n!           Rmin    Rstep     Rmax \n";
    Put(text, "(a,3f9.4)", "PDF_RANGE ", input.pdf_rmin, input.pdf_rstep, input.pdf_rmax);
    Put(text, "(a,f9.4)", "QMAX  ", input.pdf_qmax);
    Put(text, "(a,f9.4)", "DAMP  ", input.pdf_qdamp);
    Put(text, "(a,f9.4)", "BROAD ", input.pdf_qbroad);
    text += "JOBTYPE " + std::string(input.pdf_job_text()) + "\nPHASE_01   1.00\n";
    for (const std::string& line : Osl_Structure_Lines(structure, title, Panel_Line(input.pdf_spgr_text))) text += line + '\n';
    Put(text, "(a,2f9.4)", "DELTAS", input.pdf_delta1, input.pdf_delta2);
    return text;
}

}  // namespace vntl
