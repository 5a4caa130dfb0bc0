#include "session/space_group_topic.hpp"

#include "crystal/space_group.hpp"

namespace vntl {

namespace {

Json Vectors(const std::vector<std::array<float, 3>>& vectors) {
    Json list = Json::array();
    for (const auto& v : vectors) list.push_back({Json_Real(v[0]), Json_Real(v[1]), Json_Real(v[2])});
    return list;
}

Json Positions(const std::vector<Wyckoff_Orbit>& orbits) {
    Json list = Json::array();
    for (const Wyckoff_Orbit& orbit : orbits)
        list.push_back({{"multiplicity", orbit.multiplicity}, {"site", orbit.site}, {"orbit", orbit.orbit}});
    return list;
}

Json Record(const Space_Group_Type& g) {
    Json bounds = Json::array();
    for (const auto& range : g.asym_unit) bounds.push_back({Json_Real(range[0]), Json_Real(range[1])});
    return {{"spg_number", g.spg_number},
            {"hm_symbol", g.hm_symbol},
            {"hall_symbol", g.hall_symbol},
            {"general_hall", g.general_hall},
            {"crystal_system", g.crystal_system},
            {"laue_class", g.laue_class},
            {"point_group", g.point_group},
            {"table_choice", g.table_choice},
            {"setting_type", g.setting_type},
            {"hexagonal_axes", g.hexagonal_axes},
            {"lattice_letter", g.lattice_letter},
            {"lattice_symbol", g.lattice_symbol},
            {"n_lattice", g.n_lattice},
            {"lattice_vectors", Vectors(g.lattice_vectors)},
            {"bravais_text", g.bravais_text},
            {"centre_text", g.centre_text},
            {"centring", g.centring},
            {"centre_at", Vectors({g.centre_at}).front()},
            {"NumOps", g.NumOps},
            {"Multip", g.Multip},
            {"n_generators", g.n_generators},
            {"operators", g.operator_strings},
            {"asym_unit", bounds},
            {"wyckoff", Positions(g.wyckoff)}};
}

Status Print_Group(Words words, const Put_Line& put) {
    if (words.empty()) return Status::Fail("usage: print spacegroup SYMBOL [MODE [STRING ..]]");
    const std::vector<std::string> generators(words.begin() + std::min<std::ptrdiff_t>(2, std::ssize(words)), words.end());
    Space_Group_Type group;
    const Status status = Set_SpaceGroup(words[0], group, generators, words.size() > 1 ? words[1] : std::string());
    if (!status.failed) put({{"spacegroup", Record(group)}});
    return status;
}

}  // namespace

Topic Space_Group_Topic() { return {"spacegroup", Print_Group}; }

}  // namespace vntl
