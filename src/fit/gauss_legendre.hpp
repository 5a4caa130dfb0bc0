// Nodes and weights of the integration rule of Gauss and Legendre.
#pragma once

#include <vector>

namespace vntl {

struct Gauss_Rule {
    std::vector<double> node, weight;  // on (0, 1), rising; the weights add up to 1
};

// A rule of at least `points` points, up to the largest one (2048); rules are kept once they are made.
const Gauss_Rule& Gauss_Legendre(int points);

}  // namespace vntl
