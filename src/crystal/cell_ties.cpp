#include "crystal/cell_ties.hpp"

#include <cmath>

#include "crystal/cell.hpp"

namespace vntl {

namespace {

using Lengths_Then_Angles = std::array<double, cell_parameters>;

// The mean of the cells that the operators make of a cell: each of them keeps it.
Lengths_Then_Angles Mean_Over_Group(const Space_Group_Type& group, const Cell_Values& values) {
    Crystal_Cell_Type cell;
    const Status status = Set_Crystal_Cell({values[cell_a], values[cell_b], values[cell_c]},
                                           {values[cell_alpha], values[cell_beta], values[cell_gamma]}, cell);
    Tensor3 sum{};
    for (const Sym_Oper_Type& oper : group.operators)
        for (std::size_t i = 0; i < 3; ++i)
            for (std::size_t j = 0; j < 3; ++j)
                for (std::size_t k = 0; k < 3; ++k)
                    for (std::size_t l = 0; l < 3; ++l) sum[i][j] += oper.rot[k][i] * cell.GD[k][l] * oper.rot[l][j];
    std::array<double, 3> length{}, angle{};
    if (status.failed || !Lengths_And_Angles(sum, length, angle)) return {};
    return {length[0], length[1], length[2], angle[0], angle[1], angle[2]};
}

}  // namespace

Cell_Values Cell_Ties::Tied(Cell_Values cell) const {
    for (std::size_t i = 0; i < cell_parameters; ++i) {
        const Cell_Tie& tie = (*this)[i];
        cell[i] = tie.fixed != 0 ? tie.fixed : cell[tie.leader];
    }
    return cell;
}

Cell_Ties Ties_Of(const Space_Group_Type& group) {
    // Two cells without any symmetry: what comes out of both as the same angle, or as equal, the group demands.
    constexpr Cell_Values odd = {5.1f, 6.3f, 7.9f, 83, 97, 101}, other = {8.7f, 4.3f, 6.1f, 104, 76, 88};
    constexpr double same = 1e-6, decimals = 1e4;
    const Lengths_Then_Angles first = Mean_Over_Group(group, odd), second = Mean_Over_Group(group, other);
    const auto equal = [](double a, double b) { return std::fabs(a - b) < same; };
    Cell_Ties ties;
    for (std::size_t i = 0; i < cell_parameters; ++i) {
        Cell_Tie& tie = ties[i];
        const std::size_t kind = i < cell_alpha ? cell_a : cell_alpha;
        tie.leader = i;
        if (kind == cell_alpha && equal(first[i], second[i])) tie.fixed = static_cast<float>(std::round(decimals * first[i]) / decimals);
        for (std::size_t j = i; tie.fixed == 0 && j-- > kind;)
            if (equal(first[i], first[j]) && equal(second[i], second[j])) tie.leader = j;
    }
    return ties;
}

}  // namespace vntl
