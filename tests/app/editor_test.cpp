// The window of the text editor, and the clipboard.
#include <algorithm>
#include <sstream>

#include "app/testing.hpp"

namespace vntl {
namespace {

using Texts = std::vector<std::string>;
constexpr const char* question = "The text without a file has been changed.\nSave it?";

class Editor : public Program {
protected:
    // Opens the editor and runs statements behind semicolons. One that begins with "'" is typed, "_" a blank and "/" a new line; a number
    // is a command.
    Run_Result Edit(const std::string& statements) const {
        std::string script = "command 40107\n";
        std::istringstream all(statements);
        for (std::string statement; std::getline(all, statement, ';');) {
            if (statement[0] != '\'') script += (statement.starts_with("40") ? "command " : "") + statement + '\n';
            for (const char c : statement[0] == '\'' ? statement.substr(1) : "")
                script += std::string("key ") + (c == '_' ? "Space" : c == '/' ? "Enter" : std::string(1, c)) + '\n';
        }
        return Script(script);
    }
    void Write(const std::string& name, const std::string& bytes) const { std::ofstream(directory / name, std::ios::binary) << bytes; }
    std::string Text(const std::string& name) const { return Text_Of(directory / name); }
    static Texts Questions(const Run_Result& run) {
        const Texts boxes = run.Boxes();
        return {boxes.begin() + !boxes.empty(), boxes.end()};  // behind the one about the preferences
    }
};

TEST_F(Editor, TypesSavesOpensAndUndoes) {
    Write("old.txt", "first\nsecond\n");
    const Run_Result run = Edit(
        "'Ab_c/2;files a.txt;40513;'3;40512;files old.txt;40511;'x;files b.txt;40513;40515;files c.txt;40513;40516;files "
        "d.txt;40513;40520;40517;"
        "files e.txt;40513;40519;40519;40512;40514;main;40019");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_TRUE(Questions(run).empty()) << run.output;
    EXPECT_EQ(Text("a.txt"), "Ab c\n23");
    EXPECT_EQ(Text("old.txt") + Text("c.txt"), "first\nsecond\nfirst\nsecond\n");
    for (const char* file : {"b.txt", "d.txt"}) EXPECT_EQ(Text(file), "xfirst\nsecond\n") << file;
    EXPECT_EQ(Text("e.txt"), Text("b.txt") + Text("b.txt"));
}

TEST_F(Editor, LineEndsAndLettersStayAsTheyCame) {
    const Texts texts = {"dos\r\nlines\r\n", "caf\xE9 \xB5m\n", "caf\xC3\xA9 \xC3\xA5\n", "no end", ""};
    std::string script;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        Write("in." + std::to_string(i), texts[i]);
        script += "files in." + std::to_string(i) + ";40511;'q;files new." + std::to_string(i) + ";40513;";
    }
    EXPECT_EQ(Edit(script).status, 0);
    for (std::size_t i = 0; i < texts.size(); ++i) EXPECT_EQ(Text("new." + std::to_string(i)), "q" + texts[i]) << i;
}

TEST_F(Editor, AChangedTextIsAskedAboutBeforeItGoes) {
    const Run_Result closing = Edit(
        "'k;answer cancel;close;'e;answer cancel;40514;'pt;answer yes;files kept.txt;close;40019;40107;'k;answer no;40514;40019;40107;'k;"
        "answer yes;files cancel;close;'2;files again.txt;close;40019");
    EXPECT_EQ(closing.status, 0) << closing.errors;  // each time the main window is in front again
    EXPECT_EQ(Questions(closing), Texts(6, question)) << closing.output;
    EXPECT_EQ(Text("kept.txt") + Text("again.txt"), "keptk2");
    Write("other.txt", "other");
    const Run_Result changing = Edit(
        "'one;answer cancel;40510;answer cancel;files other.txt;40511;'4;answer yes;files /no/where.txt;40510;files one.txt;40513;"
        "files missing.txt;40511;files other.txt;40511;'_;answer yes;40510;40514");
    EXPECT_EQ(Text("one.txt") + Text("other.txt"), "one4 other");
    EXPECT_EQ(changing.status, 1) << "boxes told of files";
    for (const char* failing : {"'x;files /no/where.txt;40513", "files missing.txt;40511"}) EXPECT_EQ(Edit(failing).status, 1) << failing;
    const Texts boxes = Questions(changing);
    ASSERT_EQ(boxes.size(), 6u) << changing.output << changing.errors;
    EXPECT_NE(boxes[3].find("/no/where.txt"), std::string::npos);
    EXPECT_NE(boxes[4].find("missing.txt"), std::string::npos);
    EXPECT_EQ(boxes[5], "The text other.txt has been changed.\nSave it?");
}

// Another program: here the picture that the window exports over the text's own file.
TEST_F(Editor, AFileThatChangedOnDiskIsAskedAbout) {
    Write("pic.svg", "old\n");
    const std::string changed = "The file pic.svg has changed on disk since it was read.\nSave over it?";
    const std::string begin = "files pic.svg;40511;'x;40512;'y;main;export pic.svg;dialog 41;";
    const Run_Result kept = Edit(begin + "40512;answer no;40512;answer yes;answer no;40514;print state");
    EXPECT_EQ(Questions(kept), Texts({changed, changed, "The text pic.svg has been changed.\nSave it?", changed})) << kept.output;
    EXPECT_TRUE(Text("pic.svg").starts_with("<?xml"));
    Write("pic.svg", "old\n");
    const Run_Result over = Edit(begin + "answer yes;40512;'z;40512;files other.txt;40513");
    EXPECT_EQ(Questions(over), Texts{changed}) << over.output;
    EXPECT_EQ(Text("pic.svg") + Text("other.txt"), "xyzold\nxyzold\n");
}

TEST_F(Editor, LeavingTheProgramAsksToo) {
    for (const std::string leave : {"exit", "main;40005", "main;close"}) {
        const Run_Result yes = Edit("'z;answer yes;files z.txt;" + leave + ";print state");
        EXPECT_EQ(Questions(yes), Texts{question}) << leave;
        EXPECT_EQ(Text("z.txt"), "z") << leave;
        EXPECT_EQ(yes.With("plot_type").size(), 0u) << leave;
        const Run_Result cancel = Edit("'z;answer cancel;" + leave + ";print state;dialog 41;'y;files z.txt;40513");
        EXPECT_EQ(cancel.With("plot_type").size(), 1u) << leave;
        EXPECT_EQ(Text("z.txt"), "zy") << leave;
    }
}

// Who keeps a text that is not saved keeps the profiles too.
TEST_F(Editor, AResetClosesItsWindowAndAsksBefore) {
    const std::string tell = ";print state;dialog 41;main;";
    const Run_Result run = Edit("main;drop " + Pattern("rising.xye") + ";40107;'z;answer cancel;main;40019" + tell +
                                "answer yes;files z.txt;40019" + tell + "drop " + Pattern("rising.xye") + ";40107;main;40019;print state");
    EXPECT_EQ(Questions(run), Texts(2, question));
    EXPECT_EQ(Text("z.txt"), "z");
    const auto states = run.With("plot_type");
    for (const std::size_t i : {0u, 1u, 2u}) EXPECT_EQ(states.at(i)["nperfiles"], i == 0 ? 1 : 0) << i;
    EXPECT_EQ(run.errors.find("dialog 41 is not open"), run.errors.rfind("dialog 41 is not open"));
    EXPECT_NE(run.errors.find("dialog 41 is not open"), std::string::npos) << "it is closed behind the second";
}

TEST_F(Editor, FindsFromTheCursorAndFromTheStartAgain) {
    Write("text.txt", "one Two two\ntwo");
    const Run_Result run = Edit(
        "files text.txt;40511;40521;set Text two;press 1;dialog 41;'!;dialog 401;set \"Match case\" 1;press 1;dialog 41;'!;dialog 401;"
        "set Text nowhere;press 1;print dialog;set Text one;press 1;print dialog;set Text \"\";press 1;dialog 41;files new.txt;40513;40522;"
        "dialog 401;close;print dialog;40522;print dialog;dialog 41;40514;dialog 401");
    EXPECT_EQ(Text("new.txt"), "one ! !\ntwo");
    const auto dialogs = run.With("dialog");
    EXPECT_EQ(dialogs.size(), 3u) << run.errors;
    EXPECT_EQ(dialogs.at(0)["fields"][2]["value"], "The text does not occur.");
    EXPECT_EQ(dialogs.at(1)["fields"][2]["value"], "");
    EXPECT_NE(run.errors.find("dialog 401 is not open"), std::string::npos) << "it goes with the editor";
}

TEST_F(Editor, TheClipboardTakesNoEndlessText) {
    std::string many = "many\n";
    for (int i = 0; i < 400000; ++i) many += std::to_string(i) + " 1 1\n";
    Write("many.xye", many);
    const Run_Result run = Edit(
        "main;drop many.xye many.xye many.xye many.xye many.xye;40502;open many.xye;40502;mouse data down 0 0.99;mouse data up 20000 "
        "1.01;mouse data down 0 0.995;mouse data up 2000 1.005;40502;"
        "40107;40519;files text.txt;40513");
    const Texts boxes = Questions(run);
    ASSERT_EQ(boxes.size(), 1u) << run.output;
    EXPECT_TRUE(boxes[0].starts_with("The view holds too many points")) << boxes[0];
    const std::string text = Text("text.txt");
    EXPECT_TRUE(text.starts_with("x\tmany.xye\tx\tmany.xye\tx\tmany")) << text.substr(0, 40);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2002);
}

}  // namespace
}  // namespace vntl
