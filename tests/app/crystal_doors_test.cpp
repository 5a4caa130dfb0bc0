// What the command line and `print` tell of crystals.
#include <sstream>

#include "app/testing.hpp"

namespace vntl {
namespace {

class Crystal_Doors : public Program {};

TEST_F(Crystal_Doors, command_line_lists_groups_and_reflections) {
    const Run_Result group = Run({"--spacegroup", "-P 2ac 2n"});
    EXPECT_EQ(group.status, 0) << group.errors;
    for (const std::string line :
         {" =>  Hermann-Mauguin Symbol: P N M A\n", "  (  2)  -x+1/2,-y,z+1/2", "       4      m           (x,1/4,z)"})
        EXPECT_NE(group.output.find(line), std::string::npos) << line;

    // Rock salt by hand: h k l all even or all odd, a / sqrt(h2 + k2 + l2), lambda = 2 d sin(theta).
    const Run_Result salt = Run({"--reflections", "5.625 5.625 5.625 90 90 90", "F m 3 m", "1.5406", "46"});
    EXPECT_EQ(salt.output,
              "   1    1    1    8    3.247595   27.44161\n"
              "   2    0    0    6    2.812500   31.79109\n"
              "   2    2    0   12    1.988738   45.57707\n");

    struct Refusal {
        std::vector<std::string> arguments;
        int status;
        std::string message;
    };
    const std::string cell = "5 5 5 90 90 90";
    const std::vector<Refusal> refusals = {
        {{"--spacegroup", "P 5"}, 1, "The fivefold axis is not allowed"},
        {{"--spacegroup", "231"}, 1, "Number of Space Group out of limits"},
        {{"--spacegroup", ""}, 1, "Error in the provided symbol/number of the space group"},
        {{"--reflections", "5 5 5 90 90", "P 1", "1", "50"}, 1, "The cell needs six numbers"},
        {{"--reflections", "5 5 5 120 120 120", "P 1", "1", "50"}, 1, "Bad cell parameters"},
        {{"--reflections", "5 5 5 130 130 130", "P 1", "1", "50"}, 1, "Bad cell parameters"},
        {{"--reflections", cell, "-1", "1", "50"}, 1, "Number of Space Group out of limits"},
        {{"--reflections", cell, "P 1", "0", "50"}, 1, "Bad wavelength"},
        {{"--reflections", cell, "P 1", "1", "181"}, 1, "The largest 2theta"},
        {{"--reflections", "900 900 900 90 90 90", "P 1", "0.5", "170"}, 1, "reflections, more than the"},
        {{"--reflections", cell, "P 1", "1"}, 2, "required"}};
    for (const Refusal& r : refusals) {
        const Run_Result run = Run(r.arguments);
        EXPECT_EQ(run.status, r.status) << r.message;
        EXPECT_EQ(run.output, "");
        EXPECT_NE(run.errors.find(r.message), std::string::npos) << run.errors;
    }
}

TEST_F(Crystal_Doors, print_tells_groups_and_structures) {
    const Run_Result run = Script(
        "print spacegroup 225\n"
        "print spacegroup any GEN x+1/2,y+1/2,z -x,-y,-z\n"
        "print spacegroup any FIX x,y,z\n"
        "print structure \"" SOURCE_TREE
        "/examples/corundum.cif\"\n"
        "print spacegroup any GEN x,y\n"
        "print spacegroup 231\n"
        "print structure nothing.cif\n");
    const std::vector<Json> groups = run.With("spacegroup");
    ASSERT_EQ(groups.size(), 3u) << run.errors;
    const Json& salt = groups[0]["spacegroup"];
    EXPECT_EQ(salt["Multip"], 192);
    EXPECT_EQ(salt["operators"].size(), 192u);
    EXPECT_EQ(salt["wyckoff"].size(), 12u);
    EXPECT_EQ(salt["wyckoff"][0], (Json{{"multiplicity", 4}, {"site", "m-3m"}, {"orbit", {"0,0,0"}}}));
    EXPECT_EQ(salt["asym_unit"].size(), 3u);
    EXPECT_EQ(groups[1]["spacegroup"]["hm_symbol"], "C -1");
    EXPECT_EQ(groups[2]["spacegroup"]["Multip"], 1);
    // The crystal of the example: 30 atoms in the cell, six formula units.
    const std::vector<Json> structures = run.With("structure");
    ASSERT_EQ(structures.size(), 1u) << run.errors;
    const Json& atoms = structures[0]["structure"]["atoms"];
    EXPECT_EQ(structures[0]["structure"]["multiplicity"], 36);
    EXPECT_EQ(atoms[0]["multiplicity"].get<int>() + atoms[1]["multiplicity"].get<int>(), 30);
    EXPECT_EQ(run.status, 1);
    for (const std::string message : {"line 5:  Blank operator field", "line 6:  Number of Space Group out of limits", "nothing.cif"})
        EXPECT_NE(run.errors.find(message), std::string::npos) << run.errors;
}

}  // namespace
}  // namespace vntl
