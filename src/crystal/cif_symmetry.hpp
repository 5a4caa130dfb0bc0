// The space group that a CIF means by a symbol, a Hall symbol and a list of operators, which do not always agree. Private to this room.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "crystal/space_group.hpp"

namespace vntl {

// Takes a Hermann-Mauguin symbol as people write it: "P 21/c", "P2(1)/c", "P 2_1/c", and with a choice of origin or axes behind a colon, a
// blank or nothing, which is dropped where the group has no choice:
//   1, S  first origin    2, Z  second origin    H  hexagonal axes    R  rhombohedral axes
Status Set_Group_By_Symbol(std::string_view symbol, Space_Group_Type& group);

struct Cif_Symmetry {
    std::string_view symbol, hall;       // blank where the file has none
    std::vector<std::string> operators;  // "x,y+1/2,-z"
};

// Coordinates go with the operators that a file lists, whatever symbol stands above them. So the symbol makes the group as long as the
// listed operators belong to it; where they are those of another origin or other axes, they make it. Without a list, a Hall symbol that
// says something else than the symbol counts, for it leaves no choice open.
Status Set_Group_Of_Cif(const Cif_Symmetry& symmetry, Space_Group_Type& group);

}  // namespace vntl
