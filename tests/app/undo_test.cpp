// Every command that changes rows or lists is taken back and made again through the menu, in the real program.
#include <cmath>

#include "app/testing.hpp"

namespace vntl {
namespace {

class Undo : public Program {
protected:
    std::string Files() const {
        std::string statement = "open";
        for (const char* name : {"c.xye", "b.xye", "a.xye"}) {
            std::ofstream out(directory / name);
            out << name << " title\n";
            for (int i = 0; i < 400; ++i)
                out << 20 + 0.1 * i << ' ' << 100 + i % 7 + 900 * std::exp(-std::pow((i % 40 - 20) / 3.0, 2)) << " 3\n";
            out << "0 0 0\n";
            statement += std::string(" ") + name;
        }
        std::ofstream(directory / "half.eff") << "1 0.01 2\n2 0 4\n";
        return statement + '\n';
    }
};

const std::string look = "print changes\nprint rows\nprint data 1\nprint peaks\nprint background\nprint excluded 1\nprint state\n";

// What a look at rows, lists and view saw, without the parts of the window that go their own way.
std::vector<Json> Looks(const Run_Result& run) {
    std::vector<Json> looks;
    for (const Json& line : run.lines) {
        if (line.contains("changes")) looks.push_back(Json::array());
        if (looks.empty() || line.contains("box") || line.contains("changes")) continue;
        Json seen = line;
        for (const char* own : {"status", "MoveMode", "ClickMode", "plot_type"}) seen.erase(own);
        looks.back().push_back(seen);
    }
    return looks;
}

struct Undo_Case {
    const char *before, *change, *text;
};

const Undo_Case of_several[] = {
    {"", "command 40149\ncell 1711 3 1 1\ncell 1711 3 3 1\nset 1712 0\nset 1713 0.5\nset 1714 -3\npress 1\n", "shift of 2 profiles"},
    {"", "command 40149\ncell 1711 3 1 1\npress 1\nmouse down left 400 300\nmouse move 500 350\nmouse up left 500 350\n", "shift of a.xye"},
    {"", "command 40124\ncell 1711 3 2 1\nset 1712 0\nset 1713 20\nset 1714 30\nset 1715 31\npress 1\n", "scaling of x of b.xye"},
    {"", "command 40115\npress 1716\nset 1712 0\nset 1713 0\nset 1714 10\nset 1715 5\npress 1\n", "scaling of y of 3 profiles"},
    {"", "command 40162\ncell 1527 2 1 1\ncell 1527 3 1 0.25\ncell 1527 4 1 -3\npress 1532\npress 1533\n", "shift and factor of a.xye"},
    {"", "files half.eff\ncommand 40163\n", "efficiency correction"},
    {"", "command 40100\npress 1332\npress 1\n", "sum of 3 profiles"},
    {"", "command 40123\npress 1332\npress 1\n", "average of 3 profiles"},
    {"", "command 40101\npress 1\n", "difference of two profiles"},
    {"", "answer yes\ncommand 40037\ncell 1781 Delete 1 1\ncell 1781 Delete 3 1\npress 1\n", "deletion of 2 profiles"},
    {"", "command 40102\n", "copy of a.xye"},
    {"", "command 40025\nset Descending 1\npress Apply\npress Return\n", "sorting of 3 profiles"},
    {"", "command 40141\nset 1802 0.5\nset 1804 -30\npress 1\n", "shift of 3 profiles"},
    {"", "command 40020\npress 1\n", "smoothed profile"},
    {"", "command 40090\nset 1021 1\npress 1\n", "smoothing of 3 profiles"},
    {"", "command 40151\nset 1721 25\nset 1722 30\npress 1724\npress 1\n", "excluded region of 3 profiles"},
    {"command 40151\nset 1721 25\nset 1722 30\npress 1724\npress 1\n", "answer yes\ncommand 40034\npress 1754\npress 1755\n",
     "deletion of all excluded regions"},
    {"", "command 40087\ncell 1305 2 1 1.5\npress 1\n", "change of wavelengths of a.xye"},
    {"", "command 40017\ncell 1305 2 1 1.5\ncell 1305 2 2 1.5\ncell 1305 2 3 1.6\npress 1\n", "conversion to d-space"},
};

const Undo_Case of_one[] = {
    {"command 40110\n", "mouse down left 400 300\nmouse move 500 300\nmouse up left 500 300\n", "excluded region of a.xye"},
    {"command 40220\npress 2\n", "command 40222\nset 1741 4\npress 1\n", "wavelengths of spectral lines"},
    {"command 40096\n", "command 40092\npress 1\n", "search of peaks"},
    {"command 40096\ncommand 40093\n", "mouse down left 500 300\nmouse up left 500 300\n", "inserted peak"},
    {"command 40096\ncommand 40093\nmouse down left 500 300\nmouse up left 500 300\ncommand 40094\n",
     "mouse down left 500 300\nmouse up left 500 300\n", "deleted peak"},
    {"command 40096\ncommand 40092\npress 1\n", "command 40147\n", "emptied list of peaks"},
    {"command 40138\n", "command 40159\npress 1\n", "search of the background"},
    {"command 40138\ncommand 40144\n", "mouse down left 500 300\nmouse up left 500 300\n", "inserted background point"},
    {"command 40138\ncommand 40159\npress 1\n", "command 40148\n", "emptied list of background points"},
    {"command 40138\ncommand 40159\npress 1\ncommand 40139\n", "command 40089\ncell 1305 2 1 1.5\npress 1\n", "conversion to q-space"},
};

TEST_F(Undo, EachChangeGoesBackAndComesAgain) {
    const std::string open_all = Files();
    std::string script;
    std::vector<const Undo_Case*> cases;
    const auto add = [&](const Undo_Case& c, const std::string& open) {
        script += "command 40019\n" + open + "mouse wheelup 600 400\n" + c.before + look + c.change + look + "command 40506\n" + look +
                  "command 40507\n" + look + "command 40506\n" + look;
        cases.push_back(&c);
    };
    for (const Undo_Case& c : of_several) add(c, open_all);
    for (const Undo_Case& c : of_one) add(c, "open a.xye\n");
    const Run_Result run = Script(script);
    EXPECT_EQ(run.status, 0) << run.errors;
    const std::vector<Json> looks = Looks(run), changes = run.With("changes");
    ASSERT_EQ(looks.size(), 5 * cases.size()) << run.errors;
    for (std::size_t i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE(cases[i]->text);
        const std::size_t at = 5 * i;
        EXPECT_EQ(changes[at + 1]["changes"]["undo"], cases[i]->text);
        EXPECT_EQ(changes[at + 2]["changes"]["redo"], cases[i]->text);
        EXPECT_NE(looks[at + 1], looks[at]);
        EXPECT_EQ(looks[at + 2], looks[at]);
        EXPECT_EQ(looks[at + 3], looks[at + 1]);
        EXPECT_EQ(looks[at + 4], looks[at]);
    }
}

TEST_F(Undo, TheMenuTellsWhatComesAndKeysDoIt) {
    const Run_Result run = Script("print menu 40506\n" + Files() + "print menu 40506\n" + of_several[0].change + of_several[3].change +
                                  "print menu 40506\nkey Ctrl+Z\nprint menu 40506\nprint menu 40507\nkey Ctrl+Shift+Z\nprint menu 40506\n"
                                  "open a.xye\nprint menu 40506\ncommand 40506\n");
    const auto items = run.With("label");
    ASSERT_EQ(items.size(), 7u) << run.errors;
    const std::pair<const char*, bool> seen[] = {{"Undo", false},
                                                 {"Undo", false},
                                                 {"Undo scaling of y of 3 profiles", true},
                                                 {"Undo shift of 2 profiles", true},
                                                 {"Redo scaling of y of 3 profiles", true},
                                                 {"Undo scaling of y of 3 profiles", true},
                                                 {"Undo", false}};
    for (std::size_t i = 0; i < items.size(); ++i) {
        EXPECT_EQ(items[i]["label"], seen[i].first) << i;
        EXPECT_EQ(items[i]["enabled"], seen[i].second) << i;
    }
    EXPECT_NE(run.errors.find("command 40506 (Undo) is disabled"), std::string::npos) << run.errors;
}

}  // namespace
}  // namespace vntl
