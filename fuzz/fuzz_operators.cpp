// Operators as texts, one a line, as generators of a group and as a group. What is read is written and read again.
#include <cstdlib>

#include "base/text_file.hpp"
#include "crystal/space_group.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    std::vector<std::string> lines;
    vntl::Line_Cursor cursor(text);
    for (std::string_view line; cursor.Next(line);) {
        lines.emplace_back(line);
        vntl::Sym_Oper_Type oper, again;
        if (vntl::Read_Operator_String(line, 0, oper).failed) continue;
        if (vntl::Read_Operator_String(vntl::Operator_String(oper), 0, again).failed || again.rot != oper.rot) std::abort();
    }
    for (const std::string_view mode : {"GEN", "FIX"}) {
        vntl::Space_Group_Type group;
        if (vntl::Set_SpaceGroup("", group, lines, mode).failed) continue;
        if (group.operators.size() != static_cast<std::size_t>(group.Multip)) std::abort();
    }
    return 0;
}
