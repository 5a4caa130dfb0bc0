#include "solid/w3d.hpp"

namespace vntl {

std::size_t W3d::Facets() const {
    std::size_t facets = 0;
    for (const W3d_Sheet& sheet : sheets) facets += sheet.Facets();
    return facets;
}

}  // namespace vntl
