#include "crystal/settings.hpp"

#include <random>

#include "base/text.hpp"
#include "crystal/hm_symbol.hpp"
#include "crystal/testing.hpp"

namespace vntl {
namespace {

using test::Group;

// The table of an independent library: number, symbol, extension, Hall symbol, system, point group, Laue class, operators, centring,
// centre.
TEST(Space_Group, settings_agree_with_another_table_by_every_route) {
    const auto rows = test::Real_Table("symmetry/settings.tsv");
    if (rows.empty()) GTEST_SKIP() << "symmetry/settings.tsv is not to be had";
    ASSERT_EQ(rows.size(), Settings().size());
    for (const auto& row : rows) {
        SCOPED_TRACE(row[1] + ':' + row[2]);
        const std::string choice = row[2].empty() ? "" : ':' + row[2];
        const Space_Group_Type hall = Group(row[3], "HAL");
        EXPECT_EQ(std::to_string(hall.spg_number), row[0]);
        EXPECT_EQ(Lower(hall.crystal_system), row[4]);
        EXPECT_EQ(std::to_string(hall.Multip), row[7]);
        EXPECT_EQ(std::to_string(hall.n_lattice), row[8]);
        EXPECT_EQ(hall.Centrosymmetric() ? "1" : "0", row[9]);
        // The names here tell the orientation too.
        EXPECT_EQ(hall.laue_class.substr(0, row[6].size()), row[6] == "-3m" && hall.laue_class == "-31m" ? "-31" : row[6]);
        const std::vector<Seitz> operators = Operator_Set(hall);
        for (const std::string& form : {row[1], Lower(row[1]), Upper(Replace_All(row[1], " ", ""))})
            EXPECT_EQ(Operator_Set(Group(form + choice)), operators) << form;
        EXPECT_EQ(Operator_Set(Group(row[1] + choice, "ITC")), operators);
        const Space_Group_Type generated = Group("", "GEN", hall.operator_strings);
        EXPECT_EQ(Operator_Set(generated), operators);
        EXPECT_EQ(generated.setting_type, "Tabulated Setting");
        EXPECT_EQ(Operator_Set(Group("", "FIX", hall.operator_strings)), operators);
    }
}

TEST(Space_Group, numbers_take_the_usual_setting) {
    for (int number = 1; number <= 230; ++number) {
        const Setting* setting = Find_Number(number, "");
        ASSERT_NE(setting, nullptr);
        const std::vector<Seitz> operators = Operator_Set(Group(std::to_string(number)));
        EXPECT_EQ(operators, Operator_Set(Group(setting->Plain_Symbol()))) << setting->hm;
        EXPECT_EQ(operators, Operator_Set(Group(std::to_string(number), "ITC")));
    }
    const std::vector<std::pair<std::string, std::string>> choices = {
        {"227", "F D -3 M:2"}, {"227:1", "F D -3 M:1"}, {"227:0", "F D -3 M:2"}, {"146", "R 3:H"},        {"146:1", "R 3:R"},
        {"14", "P 1 21/C 1"},  {"14:b2", "P 1 21/N 1"}, {"62:cab", "P B N M"},   {"68:2cab", "A B A A:2"}};
    for (const auto& [text, symbol] : choices) EXPECT_EQ(Group(text).hm_symbol, symbol) << text;
}

// Brute force over all pairs: the identity comes first and once, products and inverses are in, each operator once.
TEST(Space_Group, operators_are_a_group) {
    for (const Setting& setting : Settings()) {
        const std::vector<Seitz> operators = Group_Of(setting).Operators();
        std::vector<Seitz> sorted = operators;
        std::sort(sorted.begin(), sorted.end());
        ASSERT_EQ(std::adjacent_find(sorted.begin(), sorted.end()), sorted.end()) << setting.hm;
        ASSERT_EQ(operators.front(), Seitz{});
        const auto holds = [&](const Seitz& s) { return std::binary_search(sorted.begin(), sorted.end(), s); };
        for (const Seitz& a : operators) {
            ASSERT_EQ(a * Inverse(a), Seitz{});
            for (const Seitz& b : operators) ASSERT_TRUE(holds(a * b)) << setting.hm;
        }
    }
}

// The axes and planes that a Hermann-Mauguin symbol tells are looked for among the operators of its Hall symbol: a wrong row of either
// column is found, since the one says nothing of the other.
TEST(Space_Group, symbols_tell_the_elements_of_their_operators) {
    for (const Setting& setting : Settings()) {
        // A doubled cell halves the lattice along a-b: what the last letter tells is not along the axes of the cell.
        if (setting.hm == "C 4 2 21" || setting.hm == "C -4 2 B") continue;
        SCOPED_TRACE(setting.hm);
        HM_Symbol symbol;
        ASSERT_FALSE(Parse_HM_Symbol(Replace_All(setting.Plain_Symbol(), "(A)", ""), symbol).failed);
        const Space_Group_Type group = Group(setting.hall, "HAL");
        const Closed_Group closed = Group_Of(setting);
        EXPECT_EQ(group.lattice_letter, std::string(1, setting.choice == "R" ? 'P' : symbol.lattice));
        for (std::size_t i = 0; i < symbol.directions.size(); ++i) {
            const HM_Direction& told = symbol.directions[i];
            const Hkl axis = HM_Axis(group.crystal_system, !group.hexagonal_axes, i);
            EXPECT_TRUE(told.order == 0 || Has_Axis(closed, axis, told.order, told.screw)) << i;
            EXPECT_TRUE(told.plane == ' ' || Has_Plane(closed, axis, told.plane)) << i;
        }
    }
}

TEST(Space_Group, texts_in_all_their_forms) {
    const std::vector<std::pair<std::string, std::string>> forms = {{"P 21/c", "P 1 21/C 1"},
                                                                    {"p21/c", "P 1 21/C 1"},
                                                                    {"P2(1)/c", "P 1 21/C 1"},
                                                                    {"P 6_3/m m c", "P 63/M M C"},
                                                                    {"P 63/mmc", "P 63/M M C"},
                                                                    {"B 2/b", "B 1 1 2/B"},
                                                                    {"P 21", "P 1 21 1"},
                                                                    {"P 1 1 21", "P 1 1 21"},
                                                                    {"F m 3 m", "F M -3 M"},
                                                                    {"Ia3d", "I A -3 D"},
                                                                    {"P n 3:1", "P N -3:1"},
                                                                    {"C m c e", "C M C A"},
                                                                    {"Aem2", "A B M 2"},
                                                                    {"P 21/n 21/m 21/a", "P N M A"},
                                                                    {"P21/n21/m21/a", "P N M A"},
                                                                    {"I 41/a 2/m 2/d", "I 41/A M D:2"},
                                                                    {"F 4/m -3 2/m", "F M -3 M"},
                                                                    {"P -3 1 2/m", "P -3 1 M"},
                                                                    {"R -3 2/m", "R -3 M:H"},
                                                                    {"R3m:R", "R 3 M:R"},
                                                                    {"R -3 c H", "R -3 C:H"},
                                                                    {"H 3 2", "R 3 2:H"},
                                                                    {"F d -3 m S", "F D -3 M:1"},
                                                                    {"F d -3 m Z", "F D -3 M:2"},
                                                                    {"P 2", "P 1 2 1"},
                                                                    {"C 2", "C 1 2 1"},
                                                                    {"C2", "C 1 2 1"},
                                                                    {"C 21", "C 1 21 1"},
                                                                    {"Cm", "C 1 M 1"},
                                                                    {"A 2/n", "A 1 2/N 1"},
                                                                    {"P 21/b", "P 1 1 21/B"},
                                                                    {"P 4 2", "P 4 2 2"},
                                                                    {"P42", "P 42"},
                                                                    {"P 3 2", "P 3 1 2"},
                                                                    {"P312", "P 3 1 2"},
                                                                    {"P3212", "P 32 1 2"},
                                                                    {"-P 2ac 2n", "P N M A"},
                                                                    {"-c 2BC 2", "C M C A"},
                                                                    {"R 3 (-y+z,x+z,-x+y+z)", "R 3:R"},
                                                                    {"C 2 (x+y,-x+y,z)", "P 1 1 2"},
                                                                    {"P 2 2ab -1ab (3 3 0)", "P M M N:2"}};
    for (const auto& [text, symbol] : forms) EXPECT_EQ(Group(text).hm_symbol, symbol) << text;
}

TEST(Space_Group, refusals) {
    struct Refusal {
        std::string text, mode, message;
        std::vector<std::string> generators = {};
    };
    const std::string no_group = "Error in the provided symbol/number of the space group";
    const std::vector<Refusal> refusals = {
        {"231", "", " Number of Space Group out of limits"},
        {"0", "", " Number of Space Group out of limits"},
        {"99999999999", "", " Number of Space Group out of limits"},
        {"231", "ITC", " The number of the space group should be in the interval [1,230]"},
        {"P 4 2 1", "ITC", " Problems in SpaceGroup: P 4 2 1 => the HM symbol or the number is incorrect "},
        {"", "", no_group},
        {"P 2/n 21/m 21/a", "", no_group},
        {"P 4 2 1", "HMS", no_group},
        {std::string(10000, 'P'), "", " The symbol: " + std::string(1, 'P') + " is not allowed"},
        {"P 5", "", " The fivefold axis is not allowed"},
        {"P m2", "", " A mirror plane cannot be immediately followed by a rotation axis"},
        {"P 2m", "", " A rotation axis cannot be immediately followed by a plane within the same symmetry direction"},
        {"P 2 mn", "", " There is more than one plane within the same symmetry direction"},
        {"P 22", "", " Screw axis: 22 not allowed"},
        {"P --1", "", " The symbol: - has been repeated within the same symmetry direction"},
        {"Pxyz", "", " The symbol: X is not allowed"},
        {"I\"\"8", "", "Axes rotation wrong"},
        {"Z 1", "", "Unconventional Lattice Symbol Z needs centring vectors"},
        {"Q 2", "HMS", "Wrong Lattice Symbol Q"},
        {"Q 2", "HAL", " IBRAVL is Equal Zero"},
        {"P 7", "HAL", "Axes rotation wrong"},
        {"P 2 (x-y,x+y,z)", "HAL", "Wrong change of basis (X-Y,X+Y,Z)"},
        {"", "GEN", " Generators should be provided in GEN calling Set_SpaceGroup"},
        {"", "FIX", " Generators should be provided if FIX option is Used"},
        {"", "GEN", " Blank operator field", {"x,y"}},
        {"", "GEN", " Invalid character... a in operator string", {"x+a,y,z"}},
        {"", "GEN", " The above operator is wrong: x,x,z", {"x,x,z"}},
        {"", "GEN", " Error in generators", {"x+y,y,z"}},
        {"", "GEN", " Rotation Not Determined", {"x+y,x,z+x"}},
        {"", "GEN", " Dimension of Table exceeded (I)", {"-x,-y,z", "x-y,-y,-z", "x,y-z,-z"}},
        {"", "GEN", " Dimension of Table exceeded (II): 432", {"x+1/12,y+1/12,z", "x+1/12,y,z+1/12", "-y,x,z"}},
        {"", "GEN", "The matrix corresponding to a generator has non-integer values!", {"0.5 0 0 0 1 0 0 0 1"}},
        {"",
         "GEN",
         "The matrix corresponding to a generator has a determinant with absolute value different of 1.0",
         {"2 0 0 0 1 0 0 0 1"}}};
    for (const Refusal& r : refusals) {
        Space_Group_Type group;
        const Status status = Set_SpaceGroup(r.text, group, r.generators, r.mode);
        EXPECT_TRUE(status.failed) << r.text << r.mode;
        EXPECT_EQ(status.message, r.message) << r.text.substr(0, 30) << ' ' << r.mode;
        EXPECT_EQ(group.spg_number, 0);
    }
}

TEST(Space_Group, record_of_a_group) {
    const Space_Group_Type g = Group("F d -3 m:1");
    EXPECT_EQ(g.spg_number, 227);
    EXPECT_EQ(g.hall_symbol, "F 4d 2 3 -1d");
    EXPECT_EQ(g.setting_type, "Generated from Hall symbol");
    EXPECT_EQ(g.centring, 0);
    EXPECT_EQ(g.centre_text, "Centric (-1 not at origin)");
    EXPECT_EQ(g.centre_at, (std::array<float, 3>{0.125f, 0.125f, 0.125f}));
    EXPECT_EQ(g.general_hall, "  Gen(-1):-x+1/4,-y+1/4,-z+1/4");
    EXPECT_EQ(g.NumOps, 24);
    EXPECT_EQ(g.Multip, 192);
    EXPECT_EQ(g.n_lattice, 4);
    EXPECT_EQ(g.lattice_symbol, "cF");
    EXPECT_EQ(g.bravais_text, "  F: { 000;  0  1/2 1/2; 1/2  0  1/2; 1/2 1/2  0 }+");
    EXPECT_EQ(g.n_generators, 2);
    EXPECT_EQ(g.point_group, "m-3m");
    // The second half of the order: the inversion at its place, then the centring vectors.
    EXPECT_EQ(g.operator_strings[24], "-x+1/4,-y+1/4,-z+1/4");
    EXPECT_EQ(g.operator_strings[48], "x,y+1/2,z+1/2");

    const Space_Group_Type fixed = Group("", "FIX", {"x,y,z"});
    EXPECT_EQ(fixed.Multip, 1);
    EXPECT_EQ(fixed.setting_type, "Fixed symmetry operators (no info)");
    const Space_Group_Type own = Group("", "GEN", {"-x+1/6,-y,z", "0 1 0 1 0 0 0 0 -1"});
    EXPECT_EQ(own.setting_type, "Non-standard Setting");
    EXPECT_EQ(own.point_group, "222");
    EXPECT_EQ(own.spg_number, 0);
    const Space_Group_Type z_cell = Group("", "GEN", {"x+1/3,y,z", "-x,-y,-z"});
    EXPECT_EQ(z_cell.bravais_text, "  Z: { 000; 1/3 0 0; 2/3 0 0 }+");
    EXPECT_EQ(List_Space_Group(z_cell, false)[21], " => Non-conventional Centring vectors:");
}

TEST(Operator_String, reads_back_what_it_writes) {
    for (const Setting& setting : Settings())
        for (const Sym_Oper_Type& oper : Group(setting.hall, "HAL").operators) {
            Sym_Oper_Type again;
            ASSERT_FALSE(Read_Operator_String("at 3 " + Operator_String(oper), 5, again).failed);
            ASSERT_EQ(again.rot, oper.rot);
            for (std::size_t i = 0; i < 3; ++i) ASSERT_NEAR(again.tr[i], oper.tr[i], 1e-6);
        }
    const std::vector<std::pair<std::string, std::string>> forms = {{"X, 1/2+Y ,-z", "x,y+1/2,-z"},
                                                                    {"-x+y,-X,z+2/3", "-x+y,-x,z+2/3"},
                                                                    {"0.5+x,.25-y,z", "x+1/2,-y+1/4,z"},
                                                                    {"1/2*x+1/2*x,y,z", ""},
                                                                    {"2x-x,y,z+3", "x,y,z+3"},
                                                                    {"x,y,z+0.33333333333333333333", "x,y,z+1/3"},
                                                                    {"x-1/4,y,z+0.1234", "x-1/4,y,z+0.1234"}};
    for (const auto& [text, expected] : forms) {
        Sym_Oper_Type oper;
        EXPECT_EQ(Read_Operator_String(text, 0, oper).failed, expected.empty()) << text;
        EXPECT_EQ(Operator_String(oper), expected.empty() ? "0,0,0" : expected);
    }
}

}  // namespace
}  // namespace vntl
