// The dialog that prepares the input of Radiox: what it keeps, imports, refuses and writes, and how it hands its file over.
#include <array>

#include "app/testing.hpp"
#include "base/text.hpp"

namespace vntl {
namespace {

using Texts = std::vector<std::string>;

class Osl_Dialog : public Program {
protected:
    std::string File(const std::string& file) const { return Text_Of(directory / file); }

    static constexpr int cell = 2135, group = 2136, atoms = 2137, rmax = 2141, step = 2142, linear = 2146, name = 2150;
    const std::string salt =
        "set 2135 \"5.64 5.64 5.64 90 90 90\"\nset \"Space Group:\" \"F m -3 m\"\n"
        "set 2137 \"Atom Na Na 0 0 0 1 1\\nAtom Cl Cl 1/2 0 0 1.5 1\\naniso 0.1 0.2 0.3 0 0 0\"\n";
};

TEST_F(Osl_Dialog, ItOpensWithTheLastValues) {
    const auto run = Script("command 40213\nprint dialog\n" + salt +
                            "set Rmax 99.5\nset step \"\"\nset X-rays 1\nset \"Name of the output OSL file\" b.osl\npress Cancel\n"
                            "command 40213\nprint dialog\n");
    const auto dialogs = run.With("dialog");
    ASSERT_EQ(dialogs.size(), 2u) << run.output << run.errors;
    EXPECT_EQ(dialogs[0]["title"], "Prepare a OSL file for Radiox");
    std::string at_first;
    for (const char* label : {"Rmin", "Rmax", "step", "Qmax", "Qbroad", "Qdamp", "Linear correlation sharpening coefficient",
                              "Quadratic correlation sharpening coefficient", "Neutrons", "X-rays", "Space Group:"})
        at_first += Field_Value(dialogs[0], label) + '|';
    EXPECT_EQ(at_first + Field_Value(dialogs[0], name), "0.5|20.0|0.01|30.0|0.02|0.012|0.1|0.2|1|0||PDF_OSL_File.osl");
    EXPECT_EQ(Field_Value(dialogs[1], rmax) + ' ' + Field_Value(dialogs[1], step) + ' ' + Field_Value(dialogs[1], name) + ' ' +
                  Field_Value(dialogs[1], "X-rays"),
              "99.5 0.01 b.osl 1");
    EXPECT_EQ(Field_Value(dialogs[1], cell), "5.64 5.64 5.64 90 90 90");
    EXPECT_EQ(Field_Value(dialogs[1], atoms), "Atom Na Na 0 0 0 1 1\nAtom Cl Cl 1/2 0 0 1.5 1\naniso 0.1 0.2 0.3 0 0 0");
    EXPECT_FALSE(fs::exists(directory / "b.osl"));
}

TEST_F(Osl_Dialog, AFileIsWrittenAskedForBeforeItIsReplacedAndHandedToRadiox) {
    const auto run = Script("command 40213\n" + salt +
                            "press \"Save OSL\"\nprint structure PDF_OSL_File.osl\ncommand 40213\nset Rmax 30\nanswer no\n"
                            "press \"Save OSL\"\nprint dialog\nanswer yes\npress \"Save OSL\"\nprint rows\n");
    EXPECT_EQ(run.Told(), (Texts(2, "The file exist,\nDo you want overwrite it?"))) << run.output << run.errors;
    EXPECT_EQ(run.With("dialog").size(), 1u);
    EXPECT_EQ(run.With("structure").at(0)["structure"]["multiplicity"], 192);
    const std::string text = File("PDF_OSL_File.osl");
    EXPECT_TRUE(text.starts_with("PATTERN_1   1.00\nTitle   OSL-file created by Vantrelo-2006:\n")) << text;
    EXPECT_TRUE(Contains(text, "PDF_RANGE    0.5000   0.0100  30.0000\n")) << text;
    EXPECT_EQ(run.status, 0);
    // A bare name is handed over as it stands.
    const auto bare = Script("command 40213\n" + salt + "set 2150 \"a b.osl\"\npress \"Run Radiox\"\n", {}, "QUENDRIX=");
    EXPECT_EQ(bare.With("started").at(0)["started"], "xterm -e /Radiox \"a b.osl\" calcp") << bare.output;
    EXPECT_FALSE(File("a b.osl").empty());
}

TEST_F(Osl_Dialog, StructuresAreImported) {
    std::ofstream(directory / "salt.res")
        << "CELL 0.7 10 5 20 90 90 90\nLATT 1\nSFAC O\nUNIT 1\nFVAR 1\nO1 1 0.123456 0 0 11 0.01 0.01 0.01 0 0 0\n";
    std::ofstream(directory / "none.cif") << "data_a\n_cell_length_a 5\n_cell_length_b 5\n_cell_length_c 5\n_cell_angle_alpha 90\n"
                                             "_cell_angle_beta 90\n_cell_angle_gamma 90\n_symmetry_space_group_name_H-M 'P 1'\n";
    std::ofstream(directory / "bad.osl") << "cell 1 1\n";
    const auto run =
        Script("command 40213\nfiles \"" SOURCE_TREE
               "/examples/corundum.cif\"\npress \"Import Cif\"\nprint dialog\npress \"Save OSL\"\nprint structure PDF_OSL_File.osl\n"
               "command 40213\nfiles salt.res\npress \"Import SHELX\"\nprint dialog\n"
               "files none.cif\npress \"Import Cif\"\nfiles bad.osl\npress \"Import OSL\"\nfiles not_there.pcr\npress \"Import PCR\"\n"
               "files cancel\npress \"Import OSL\"\nprint dialog\n");
    const auto dialogs = run.With("dialog");
    ASSERT_EQ(dialogs.size(), 3u) << run.output << run.errors;
    EXPECT_EQ(Field_Value(dialogs[0], group), "R -3 C:H");
    EXPECT_TRUE(Field_Value(dialogs[0], atoms).starts_with("Atom Al")) << Field_Value(dialogs[0], atoms);
    const Json structure = run.With("structure").at(0)["structure"];
    EXPECT_EQ(structure["atoms"][0]["multiplicity"].get<int>() + structure["atoms"][1]["multiplicity"].get<int>(), 30);
    EXPECT_TRUE(Contains(File("PDF_OSL_File.osl"), "Title   OSL-file imported from file: " SOURCE_TREE "/examples/corundum.cif\n"));
    EXPECT_EQ(Field_Value(dialogs[1], cell), "    10.00000     5.00000    20.00000   90.0000   90.0000   90.0000");
    // U 0.01: biso 8 pi^2 0.01, beta 2 pi^2 0.01 / a^2.
    EXPECT_EQ(Field_Value(dialogs[1], atoms),
              "Atom O1  O    0.12346  0.00000  0.00000  0.78957  1.00000\n"
              "aniso        0.001974    0.007896    0.000493    0.000000    0.000000    0.000000\n");
    const Texts boxes = run.Told();
    ASSERT_EQ(boxes.size(), 3u) << run.output;
    EXPECT_TRUE(boxes[0].starts_with("The number of atoms is zero!, Check the CIF file ")) << boxes[0];
    EXPECT_TRUE(boxes[1].starts_with(" Bad Cell Parameters...")) << boxes[1];
    for (std::size_t i = 0; i < 3; ++i) EXPECT_TRUE(Contains(boxes[i], std::array{"none.cif", "bad.osl", "not_there.pcr"}[i])) << boxes[i];
    EXPECT_EQ(dialogs[2]["fields"], dialogs[1]["fields"]);
    EXPECT_EQ(run.status, 1);
}

TEST_F(Osl_Dialog, WhatIsRefusedKeepsTheDialogOpenAndMarked) {
    fs::create_directory(directory / "folder.osl");
    const auto run =
        Script("command 40213\n" + salt +
               "set Rmax x\npress \"Save OSL\"\nprint dialog\nset Rmax 0.25\npress \"Run Radiox\"\nprint dialog\nset Rmax 20\n"
               "set \"Linear correlation sharpening coefficient\" 12345\npress \"Save OSL\"\nprint dialog\n"
               "set \"Linear correlation sharpening coefficient\" 0\n"
               "set 2137 \"Atom A Fe 0 0\\nbond 1 2\"\npress \"Save OSL\"\nprint dialog\nset 2137 \"\"\nset \"Space Group:\" \"P 5\"\n"
               "press \"Save OSL\"\nprint dialog\nset \"Space Group:\" \"P 1\"\nset 2150 \" \"\npress \"Save OSL\"\nprint dialog\n"
               "set 2150 folder.osl\npress \"Save OSL\"\nprint dialog\nset 2150 none/a.osl\npress \"Save OSL\"\nprint dialog\n"
               "set 2150 a.osl\npress \"Save OSL\"\nprint state\n");
    const Texts told = {"Rmax: \"x\" is not a number",
                        "Rmax: it must be larger than Rmin",
                        "Linear correlation sharpening coefficient: 12345 is too large",
                        "Error reading the atoms panel!\nLine 1: Blank line: Atom A Fe 0 0\nLine 2: This is no line of an atom: bond 1 2",
                        "Error reading the atoms panel!\nSpace group: ",
                        "The output OSL file needs a name",
                        "Unable to write OSL file!\n",
                        "Unable to write OSL file!\n"};
    const Texts boxes = run.Told();
    ASSERT_EQ(boxes.size(), told.size()) << run.output << run.errors;
    for (std::size_t i = 0; i < told.size(); ++i) EXPECT_EQ(boxes[i].rfind(told[i], 0), 0u) << boxes[i];
    std::vector<std::vector<int>> marked;
    for (const int field : {rmax, rmax, linear, atoms, group, name, name, name}) marked.push_back({field});
    EXPECT_EQ(run.Marked(), marked);
    EXPECT_EQ(run.With("plot_type").size(), 1u);  // the dialog has closed
    EXPECT_NE(File("a.osl").find("!  No atoms ...\n"), std::string::npos);
    EXPECT_FALSE(fs::exists(directory / "PDF_OSL_File.osl"));
}

}  // namespace
}  // namespace vntl
