#include "session/structure_topic.hpp"

#include <array>
#include <tuple>

#include "base/os.hpp"
#include "crystal/structure_file.hpp"

namespace vntl {

namespace {

Json Atom_Json(const Atom_Type& atom) {
    return {{"label", Json_Text(atom.label)},
            {"symbol", Json_Text(atom.symbol)},
            {"x", Json_Real(atom.x)},
            {"y", Json_Real(atom.y)},
            {"z", Json_Real(atom.z)},
            {"biso", Json_Real(atom.biso)},
            {"occupancy", Json_Real(atom.occupancy)},
            {"multiplicity", atom.multiplicity},
            {"thermal", atom.aniso ? "aniso" : "isotr"},
            {"aniso", Json_Reals(atom.beta)}};
}

Json Structure_Json(const Crystal_Structure& structure) {
    const auto& [length, angle] = std::tie(structure.cell.cell, structure.cell.ang);
    Json atoms = Json::array();
    for (const Atom_Type& atom : structure.atoms) atoms.push_back(Atom_Json(atom));
    return {{"structure",
             {{"mode", structure.mode},
              {"cell", Json_Reals(std::array{length[0], length[1], length[2], angle[0], angle[1], angle[2]})},
              {"symbol", Json_Text(structure.group.hm_symbol)},
              {"hall", Json_Text(structure.group.hall_symbol)},
              {"number", structure.group.spg_number},
              {"multiplicity", structure.group.Multip},
              {"atoms", atoms}}}};
}

Status Print_Structure(const std::string& directory, Words words, const Put_Line& put) {
    if (words.empty() || words.size() > 2) return Status::Fail("usage: print structure FILE [MODE]");
    const std::string& file = words[0];
    Crystal_Structure structure;
    const std::string_view mode = words.size() == 2 ? std::string_view(words[1]) : Structure_Mode(file);
    if (Status status = Read_Structure_File(In_Directory(directory, file), structure, mode); status.failed) return status;
    put(Structure_Json(structure));
    return Status::Done();
}

}  // namespace

Topic Structure_Topic(const std::string& directory) {
    return {"structure", [directory](Words words, const Put_Line& put) { return Print_Structure(directory, words, put); }};
}

}  // namespace vntl
