#include "crystal/structure_file.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <new>
#include <numbers>
#include <utility>
#include <vector>

#include "base/real_parse.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "crystal/structure_readers.hpp"

namespace vntl {

namespace {

constexpr double one_site = 0.05;  // angstroms between images of an atom that are the same site

struct Structure_Kind {
    std::string_view mode;
    Status (*read)(std::string_view text, Crystal_Structure& structure);
};
constexpr Structure_Kind kinds[] = {{"CIF", Read_CIF}, {"PCR", Read_PCR}, {"SHX", Read_SHELX}, {"OSL", Read_OSL}};

const Structure_Kind& Kind_Of(std::string_view mode) {
    for (const Structure_Kind& kind : kinds)
        if (Equal_No_Case(kind.mode, Trim(mode))) return kind;
    return *std::prev(std::end(kinds));
}

bool Separates(char c) { return c == ' ' || c == '\t' || c == ','; }
bool Is_Digit(char c) { return c >= '0' && c <= '9'; }

// Counts the sites of atoms. The images that lie close to an atom are made by the operators of `near`, and those close to these by
// products of them: the subgroup that `near` generates takes the atom to its own site, and its cosets take it to the others.
class Site_Counter {
public:
    Site_Counter(const Crystal_Cell_Type& cell, const Space_Group_Type& group) : cell_(cell), operators_(Exact_Operators(group)) {
        for (std::size_t i = 0; i < operators_.size(); ++i) places_.emplace(operators_[i], i);
    }

    int Sites(const Atom_Type& atom) {
        std::vector<std::size_t> near;
        for (std::size_t i = 0; i < operators_.size(); ++i)
            if (Moves_Little(operators_[i], atom)) near.push_back(i);
        if (near.empty()) return static_cast<int>(operators_.size());
        const auto [known, fresh] = orders_.try_emplace(near, 0);
        if (fresh) known->second = Order_Of_Generated(near);
        return static_cast<int>(operators_.size() / known->second);
    }

private:
    bool Moves_Little(const Seitz& oper, const Atom_Type& atom) const {
        const std::array<double, 3> x = {atom.x, atom.y, atom.z};
        std::array<double, 3> d = {};
        for (std::size_t i = 0; i < 3; ++i) {
            const double image = oper.rot[3 * i] * x[0] + oper.rot[3 * i + 1] * x[1] + oper.rot[3 * i + 2] * x[2];
            d[i] = image + static_cast<double>(oper.tr[i]) / twelfths - x[i];
            d[i] -= std::round(d[i]);
        }
        double square = 0;
        for (std::size_t i = 0; i < 3; ++i)
            for (std::size_t j = 0; j < 3; ++j) square += d[i] * cell_.GD[i][j] * d[j];
        return square < one_site * one_site;
    }

    std::size_t Order_Of_Generated(const std::vector<std::size_t>& generators) const {
        std::vector<bool> member(operators_.size(), false);
        std::vector<std::size_t> members = generators;
        for (const std::size_t i : generators) member[i] = true;
        for (std::size_t done = 0; done < members.size(); ++done)
            for (const std::size_t i : generators) {
                const auto product = places_.find(operators_[members[done]] * operators_[i]);
                if (product == places_.end() || member[product->second]) continue;
                member[product->second] = true;
                members.push_back(product->second);
            }
        return members.size();
    }

    const Crystal_Cell_Type& cell_;
    std::vector<Seitz> operators_;
    std::map<Seitz, std::size_t> places_;
    std::map<std::vector<std::size_t>, std::size_t> orders_;  // of the subgroups met so far
};

}  // namespace

Status Read_Line_Of_Numbers(std::string_view line, std::span<double> values) {
    if (Trim(line).empty()) return Status::Fail(blank_line);
    const char* at = line.data();
    const char* const end = at + line.size();
    for (double& value : values) {
        while (at != end && Separates(*at)) ++at;
        double number = 0;
        const char* behind = Parse_Double(at, end, number);
        if (behind == at || !std::isfinite(number)) return Status::Fail(bad_format);
        if (behind != end && *behind == '(') {
            const char* const first = ++behind;
            while (behind != end && (Is_Digit(*behind) || *behind == '.')) ++behind;
            if (behind == first || behind == end || *behind != ')') return Status::Fail(wrong_uncertainty);
            ++behind;
        }
        if (behind != end && !Separates(*behind)) return Status::Fail(bad_format);
        value = number;
        at = behind;
    }
    return Status::Done();
}

Status Set_Anisotropic(Thermal_Form form, const std::array<double, 6>& values, const Crystal_Cell_Type& cell, Atom_Type& atom) {
    constexpr std::array<std::array<std::size_t, 2>, 6> axes = {{{0, 0}, {1, 1}, {2, 2}, {0, 1}, {0, 2}, {1, 2}}};
    constexpr double pi = std::numbers::pi;
    const double factor = form == Thermal_Form::u_ij ? 2 * pi * pi : 0.25;
    atom.aniso = true;
    for (std::size_t i = 0; i < axes.size(); ++i) {
        const double a = cell.rcell[axes[i][0]], b = cell.rcell[axes[i][1]];
        atom.beta[i] = static_cast<float>(form == Thermal_Form::beta ? values[i] : factor * a * b * values[i]);
        if (!std::isfinite(atom.beta[i])) return Status::Fail(bad_format);
    }
    return Status::Done();
}

void Set_Multiplicities(Crystal_Structure& structure) {
    Site_Counter counter(structure.cell, structure.group);
    for (Atom_Type& atom : structure.atoms) atom.multiplicity = counter.Sites(atom);
}

std::string_view Structure_Mode(std::string_view file) {
    constexpr std::pair<std::string_view, std::string_view> extensions[] = {
        {".cif", "CIF"}, {".osl", "OSL"}, {".pcr", "PCR"}, {".res", "SHX"}, {".ins", "SHX"}, {".inp", "SHX"}, {".shx", "SHX"}};
    for (const auto& [extension, mode] : extensions)
        if (file.size() >= extension.size() && Equal_No_Case(file.substr(file.size() - extension.size()), extension)) return mode;
    return "OSL";
}

Status Read_Structure_File(const std::string& file, Crystal_Structure& result, std::string_view mode) {
    try {
        Text_File bytes;
        if (Status status = bytes.Open(file); status.failed) return status;
        const std::string_view text = Without_End_Mark(bytes.Text());
        if (text.find_first_not_of(" \t\r\n") == std::string_view::npos) return Status::Fail("The file " + file + " contains nothing");
        const Structure_Kind& kind = Kind_Of(mode);
        Crystal_Structure structure;
        if (Status status = kind.read(text, structure); status.failed) return status;
        structure.mode = kind.mode;
        Set_Multiplicities(structure);
        result = std::move(structure);
    } catch (const std::bad_alloc&) {
        return Status::Fail("There is not enough memory for the structure in the file " + file);
    }
    return Status::Done();
}

}  // namespace vntl
