// Child windows, toolbars, panes and the text editor through the real windows.
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <string>
#include <tuple>

#include "drawing/recording.hpp"
#include "toolkit/dialog.hpp"
#include "toolkit/messages.hpp"
#include "toolkit/window.hpp"
#include "toolkit/window_service.hpp"

namespace vntl {
namespace {

namespace fs = std::filesystem;

constexpr int child = 51, other = 52;
using Size = std::array<int, 2>;

class Children : public testing::Test {
protected:
    void SetUp() override {
        Register_Toolbars(std::array{Toolbar_Resource{1, 16, 16, {10, 0, 11}}, Toolbar_Resource{2, 32, 32, {11, 77}}});
        Open(main_window, "&Main", Child_Kind::plot);
        Open(child, "&Child", Child_Kind::plot);
        Open(other, "&Other", Child_Kind::editor);
        Forget_Messages();
    }
    void TearDown() override {
        for (const int number : {child, other}) WindowCloseChild(number);
        Forget_Messages();
    }
    static void Forget_Messages() {
        while (WMessagePeek()) continue;
    }
    static void Open(int number, const std::string& label, Child_Kind kind) {
        if (number == main_window)
            WindowOpen(640, 400, "Test", "vantrelo");
        else
            WindowOpenChild(number, "Child", 500, 300, kind);
        Menu_Entry file{90, "&File", {}, {}, {}, {}, true, false};
        file.entries = {{10, label, {}, "hint", "open", {}, false, false}, {}, {11, "&Target", {}, {}, "target", {}, false, true}};
        WMenu(std::array{file});
        WindowStatusBarParts(std::array{3000, -1});
        WindowShow();
    }
    static Size Shown(int pane = 1) { return {WInfoWindow(1, pane), WInfoWindow(2, pane)}; }
    static int Waiting(Message_Kind kind) {
        int count = 0;
        while (const auto message = WMessagePeek()) count += message->kind == kind;
        return count;
    }
};

TEST_F(Children, EachHasItsOwnMenuStatusBarAndSize) {
    const std::pair<int, const char*> labels[] = {{main_window, "&Main"}, {child, "&Child"}, {other, "&Other"}};
    for (const auto& [number, label] : labels) {
        WindowSelect(number);
        EXPECT_EQ(WMenuGetString(10), label);
        WindowOutStatusBar(1, label);
        WMenuSetState(11, menu_checked, number == child);
    }
    for (const auto& [number, label] : labels) {
        WindowSelect(number);
        EXPECT_EQ(WindowStatusBarText(1), label);
        EXPECT_EQ(WMenuGetState(11, menu_checked), number == child);
    }
    WindowSelect(child);
    EXPECT_EQ(Shown(), (Size{500, 300}));
    WindowSelect(77);  // not open: the target stays
    WindowResize(420, 260);
    EXPECT_EQ(Shown(), (Size{420, 260}));
    WindowSelect(main_window);
    EXPECT_EQ(Shown(), (Size{640, 400}));
    WindowOpenChild(child, "Again", 100, 100, Child_Kind::plot);  // it is open: it comes to the front, and later calls mean it
    EXPECT_EQ(WindowFront(), child);
    EXPECT_EQ(WMenuGetString(10), "&Child");
}

TEST_F(Children, TheyCloseInAnyOrderAndTakeTheirMessagesAlong) {
    for (const int number : {child, other, main_window, child}) Post_Message({Message_Kind::command, {.win = number, .value1 = 10}});
    Count_Moves(child, true);
    WindowSelect(child);
    for (const int number : {child, child, 77, main_window}) WindowCloseChild(number);
    EXPECT_TRUE(WindowIsOpen(main_window) && WindowIsOpen(other) && !WindowIsOpen(child) && !WindowToFront(child));
    EXPECT_EQ(WMenuGetString(10), "&Main");
    EXPECT_EQ(WindowFront(), other);
    EXPECT_EQ(WMessage().record.win, other);
    EXPECT_EQ(WMessage().record.win, main_window);
    EXPECT_FALSE(WMessagePeek());
    Open(child, "&Child", Child_Kind::plot);  // a new one, whose moves nobody counts
    const auto moves = [](int window) {
        for (int i = 0; i < 5; ++i) Post_Message({Message_Kind::mouse_move, {.win = window}});
        return Waiting(Message_Kind::mouse_move);
    };
    EXPECT_EQ(moves(child), 1);
    Count_Moves(main_window, true);
    EXPECT_EQ(moves(main_window), 5);
    Count_Moves(main_window, false);
    EXPECT_EQ(moves(main_window), 1);
}

// The window stays as large as it is: bars take their height from the picture, and give it back.
TEST_F(Children, TheWindowKeepsItsSizeWhileToolbarsComeAndGo) {
    for (const int number : {main_window, child}) {
        WindowSelect(number);
        const Size before = Shown();
        const std::tuple<int, int, int> steps[] = {{1, 4, 1}, {2, 1, 2},  {0, 4, 1}, {2, 4, 2}, {1, 1, 2},
                                                   {1, 1, 2}, {77, 4, 1}, {0, 1, 0}, {0, 1, 0}};
        for (const auto& [table, row, bars] : steps) {
            WMenuToolbar(table, row);
            SCOPED_TRACE(std::to_string(table) + ' ' + std::to_string(row));
            EXPECT_EQ(WInfoWindow(1), before[0]);
            EXPECT_LE(WInfoWindow(2), before[1] - 20 * bars);
            EXPECT_TRUE(bars > 0 || Shown() == before);
        }
        EXPECT_EQ(Waiting(Message_Kind::resize), 0);  // who sets a bar knows of it
    }
}

TEST_F(Children, PanesShareTheWindowAndTellOfThemselves) {
    WindowSelect(child);
    WindowSplit(2, true);
    EXPECT_NEAR(WInfoWindow(1, 1) + WInfoWindow(1, 2), 500, 20);  // at once, for the first drawing
    EXPECT_EQ(WInfoWindow(2, 2), 300);
    EXPECT_EQ(WInfoWindow(1, 3), 0);
    Forget_Messages();
    WindowResize(800, 400);
    EXPECT_EQ(Waiting(Message_Kind::resize), 2);  // one a pane
    // Those of two panes that come in turns are merged too: dragging the border between them must not fill the queue.
    for (int i = 0; i < 40; ++i) Post_Message({Message_Kind::resize, {.win = child, .value4 = 1 + i % 2}});
    EXPECT_EQ(Waiting(Message_Kind::resize), 2);
    Recording_Device marks;
    marks.Polyline(std::array{Point{0, 0}, Point{1200, 800}}, {});
    for (const int pane : {2, 9}) {  // over nothing, over a picture, on a pane that is not there
        WOverlayPut(marks, pane);
        WBitmapPut(Bitmap(100, 100), pane);
        WOverlayPut(marks, pane);
    }
    WindowSplit(1, true);
    EXPECT_EQ(Shown(), (Size{800, 400}));
    WindowSplit(4, false);
    EXPECT_EQ(WInfoWindow(1, 4), 800);
}

// What a window with a loop of its own holds back: commands of the main window, and the way of any other window or dialog to the front.
TEST_F(Children, OneThatHoldsTheOthersBackStaysInFrontWithItsDialogs) {
    constexpr int holding = 53, of_main = 901, of_holding = 902;
    Register_Dialogs(std::array{Dialog_Resource{of_main, "Of the main window", {}}, Dialog_Resource{of_holding, "Of the child", {}}});
    const auto show = [](int dialog) {
        WDialogLoad(dialog);
        WDialogShow(0, Show_Kind::modeless);
    };
    WindowSelect(main_window);
    show(of_main);
    EXPECT_EQ(Window_Of(of_main), main_window);
    EXPECT_TRUE(Modal_Loop_Serves(10));
    WindowOpenChild(holding, "Holding", 300, 200, Child_Kind::plot, true);
    WindowShow();
    show(of_holding);
    EXPECT_EQ((std::array{Window_Of(of_holding), Window_Of(holding), Window_Of(child), Window_Of(77)}),
              (std::array{holding, holding, child, main_window}));
    EXPECT_FALSE(Modal_Loop_Serves(10));
    for (const int number : {main_window, child, other, of_main}) {
        EXPECT_TRUE(Act_Front(number).failed) << number;
        EXPECT_EQ(WindowFront(), of_holding);
    }
    EXPECT_TRUE(Act_Front(holding).ok() && WindowFront() == holding && Act_Front(of_holding).ok());
    WindowCloseChild(holding);
    EXPECT_FALSE(WDialogLoaded(of_holding));
    EXPECT_TRUE(Modal_Loop_Serves(10) && Act_Front(main_window).ok() && Act_Front(of_main).ok());
    WDialogSelect(of_main);
    WDialogUnload();
}

TEST_F(Children, ARubberShapeThatLeavesThePageTakesRoomUpToItsEdge) {
    Recording_Device rubber, outside;
    rubber.Polyline(std::array{Point{-1300, 300}, Point{1e6, 300}, Point{1e6, 500}}, {0, 1, Line_Style::solid});
    const Rect room = rubber.Bounds().value_or(Rect{});
    EXPECT_EQ((std::array{room.x1, room.x2}), (std::array{0.0, 1200.0}));
    EXPECT_NEAR(room.y1, 300, 2);
    outside.Polyline(std::array{Point{1300, 0}, Point{1400, 800}}, {0, 1, Line_Style::solid});
    EXPECT_FALSE(outside.Bounds());
}

class Editor : public Children {
protected:
    void TearDown() override {
        fs::remove(file);
        Children::TearDown();
    }
    void Put(const std::string& bytes) const { std::ofstream(file, std::ios::binary) << bytes; }
    std::string Bytes() const {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    // All code points of two bytes in UTF-16 but the one that the edit looks for, sixteen a line.
    static std::string Every_Letter() {
        std::string all;
        for (unsigned c = 0; c < 0x10000; ++c) {
            if ((c >= 0xD800 && c < 0xE000) || c == 'x') continue;
            if (c < 0x80)
                all += static_cast<char>(c);
            else if (c < 0x800)
                all += {static_cast<char>(0xC0 | c >> 6), static_cast<char>(0x80 | (c & 0x3F))};
            else
                all += {static_cast<char>(0xE0 | c >> 12), static_cast<char>(0x80 | (c >> 6 & 0x3F)), static_cast<char>(0x80 | (c & 0x3F))};
            if (c % 16 == 15) all += '\n';
        }
        return all;
    }
    const fs::path file = fs::temp_directory_path() / ("vantrelo_editor_" + std::to_string(::getpid()));
};

TEST_F(Editor, AnEditOrTheClipboardChangesWhatItTouchesAlone) {
    const std::vector<std::string> texts = {"plain x\nlines\n",
                                            "no end x",
                                            "x\n\n\n",
                                            "latin \xE5 x\nline\xB5\n",
                                            "utf8 \xC3\xA5 x\n",
                                            "crlf\r\nlines x\r\n",
                                            "latin\xE5 x\r\n\r\n",
                                            "lone\rreturns x\r",
                                            "mixed\r\nends\nof\rlines x\n",
                                            "\xEF\xBB\xBFmark x\n",
                                            "hard\xC2\xA0 x\n",
                                            "latin hard\xA0 x \xE5\n",
                                            "\xE2\x80\xA8 x\n",
                                            "\ttabs \f and \x01 x\n",
                                            "paragraph\xE2\x80\xA9 x\xE2\x80\xA9\n",
                                            "utf8 \xC3\xA5\nlatin \xE5\n x",
                                            std::string("zero \0 x\n", 9),
                                            "\xEF\xBB\xBF\xEF\xBB\xBFtwo marks x\n",
                                            Every_Letter() + "x\n"};
    for (const std::string& bytes : texts) {
        Put(bytes);
        ASSERT_TRUE(WEditFile(file).ok() && !WEditChanged() && WEditSave(file).ok());
        EXPECT_EQ(Bytes(), bytes);
        ASSERT_TRUE(WEditFind("x", true));
        WClipboardPutText("Q");
        WEditDo(Edit_Action::paste);
        EXPECT_TRUE(WEditChanged());
        ASSERT_TRUE(WEditSave(file).ok() && !WEditChanged());
        std::string expected = bytes;
        expected[expected.find('x')] = 'Q';
        EXPECT_EQ(Bytes(), expected);
    }
    Put("latin \xE5 x\n");
    ASSERT_TRUE(WEditFile(file).ok() && WEditFind("x", true));
    WClipboardPutText("\xCE\xB8");  // a letter that the encoding of the file lacks
    WEditDo(Edit_Action::paste);
    ASSERT_TRUE(WEditSave(file).ok());
    EXPECT_EQ(Bytes(), "latin \xC3\xA5 \xCE\xB8\n");
}

TEST_F(Editor, FilesThatCannotBeLoadedOrWrittenLeaveTheTextAlone) {
    Put("kept\n");
    ASSERT_TRUE(WEditFile(file).ok());
    const fs::path large = file.string() + "_large";
    std::ofstream(large) << "head\n";
    fs::resize_file(large, 65u << 20);
    EXPECT_TRUE(WEditFile(large).failed);  // the part that fits would be all that is left after saving it
    fs::remove(large);
    EXPECT_TRUE(WEditFile("/no/such/file").failed && WEditFile("/tmp").failed && WEditSave("/no/such/directory/file").failed);
    EXPECT_EQ(WEditText() + WEditName(), "kept\n" + file.string());
    EXPECT_TRUE(WEditFile("").ok());
    EXPECT_EQ(WEditText() + WEditName(), "");
    WindowSelect(main_window);
    EXPECT_TRUE(WEditFile(file).failed && WEditSave(file).failed && !WEditFind("kept", true));
    EXPECT_EQ(Bytes(), "kept\n");
}

TEST_F(Editor, FindingUndoingAndTheClipboard) {
    const std::string text = "One two\nTWO \xC3\xA5\n";
    WClipboardPutText(text);
    WEditDo(Edit_Action::paste);
    const auto found = [](const char* wanted, bool match_case) {
        if (!WEditFind(wanted, match_case)) return std::string("-");
        WEditDo(Edit_Action::copy);
        return WClipboardText();
    };
    for (const char* place : {"two", "TWO", "two"}) EXPECT_EQ(found("two", false), place);  // from the start again
    EXPECT_EQ(found("two", true) + found("three", false) + found("", false), "two--");
    WEditDo(Edit_Action::select_all);
    WEditDo(Edit_Action::cut);
    EXPECT_EQ(WEditText(), "");
    WEditDo(Edit_Action::undo);
    EXPECT_EQ(WEditText(), text);
    WEditDo(Edit_Action::redo);
    EXPECT_EQ(WEditText(), "");
    EXPECT_EQ(WClipboardText(), text);
}

}  // namespace
}  // namespace vntl
