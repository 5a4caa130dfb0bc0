// The list of rows beside a picture, by mouse and keys as a user has them.
#include "toolkit/row_list.hpp"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTreeView>
#include <array>
#include <chrono>
#include <string>
#include <vector>

#include "toolkit/messages.hpp"

namespace vntl {
namespace {

constexpr int close_list = 71, delete_rows = 72, rename_row = 73;

class Row_Lists : public testing::Test {
protected:
    void SetUp() override {
        WindowOpen(900, 500, "Test", "vantrelo");
        Menu_Entry menu{0, "&Rows", {}, {}, {}, {}, true, false};
        menu.entries = {{close_list, "List", "F9", {}, {}, {}, false, true}, {rename_row, "Rename", "F2", {}, {}, {}, false, false}};
        WMenu(std::array{menu});
        WindowShow();
        Open();
        Put(5);
        for (QWidget* widget : QApplication::allWidgets())
            if (auto* found = qobject_cast<QTreeView*>(widget); found != nullptr && found->isVisible()) tree_ = found;
        ASSERT_NE(tree_, nullptr);
        Told();
    }

    static void Open(int width = 250) {
        Menu_Entry rename, remove;
        rename.command = rename_row;
        remove.command = delete_rows, remove.label = "Delete";
        WListOpen({"Rows", "None", {"Name", "Points", "Never"}, {rename, remove}, close_list, delete_rows}, width);
    }
    static void Put(int rows) {
        std::vector<Row_List_Row> list;
        for (int row = 1; row <= rows; ++row)
            list.push_back({true, 0, {"row " + std::to_string(row), std::to_string(100 * row), ""}, "tip"});
        WListPut(std::move(list));
    }

    // "kind value1 value2 [rows] text" of the messages of the list and of commands that wait.
    static std::vector<std::string> Told() {
        std::vector<std::string> all;
        while (const auto message = WMessagePeek()) {
            const auto& [kind, record] = *message;
            if (kind != Message_Kind::command && kind < Message_Kind::list_chosen) continue;
            std::string text = std::to_string(static_cast<int>(kind)) + ' ' + std::to_string(record.value1) + ' ';
            text += std::to_string(record.value2) + " [";
            for (const int row : record.rows) text += std::to_string(row);
            all.push_back(text + ']' + (record.files.empty() ? "" : record.files.front()));
        }
        return all;
    }
    using Texts = std::vector<std::string>;

    void Key(int key, Qt::KeyboardModifiers modifiers = {}) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, modifiers, key == Qt::Key_Space ? " " : "");
            QCoreApplication::sendEvent(tree_, &event);
        }
    }
    QRect Place(int row) const { return tree_->visualRect(tree_->model()->index(row - 1, 0)); }
    void Mouse(QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::KeyboardModifiers modifiers = {}) {
        const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
        QMouseEvent event(type, at, tree_->viewport()->mapToGlobal(at), button, held, modifiers);
        QCoreApplication::sendEvent(tree_->viewport(), &event);
    }
    void Click(QPoint at, Qt::KeyboardModifiers modifiers = {}) {
        Mouse(QEvent::MouseButtonPress, at, Qt::LeftButton, modifiers);
        Mouse(QEvent::MouseButtonRelease, at, Qt::LeftButton, modifiers);
    }
    QPoint Check_Box(int row) const { return {Place(row).left() + 10, Place(row).center().y()}; }

    QTreeView* tree_ = nullptr;
};

TEST_F(Row_Lists, ThePictureGivesItsRoom) {
    const int beside = WInfoWindow(1);
    EXPECT_NEAR(beside, 900 - 250, 12);  // the edge between them
    EXPECT_EQ(WInfoWindow(2), 500);
    WListClose();
    EXPECT_EQ(WInfoWindow(1), 900);
    EXPECT_FALSE(WListIsOpen());
    Open(350);
    EXPECT_NEAR(WInfoWindow(1), 900 - 350, 12);
    Open(250);
    EXPECT_EQ(WInfoWindow(1), beside);
    WindowResize(500, 300);
    EXPECT_EQ((std::array{WInfoWindow(1), WInfoWindow(2)}), (std::array{500, 300}));
    EXPECT_EQ(Told(), Texts{});  // nobody has drawn its edge
    EXPECT_TRUE(tree_->isColumnHidden(2) && !tree_->isColumnHidden(1));
}

TEST_F(Row_Lists, ClicksAndKeysAreTold) {
    Click(Place(2).center());
    EXPECT_EQ(Told(), Texts{"30 0 0 [2]"});
    Click(Place(4).center(), Qt::ControlModifier);
    EXPECT_EQ(Told(), Texts{"30 0 0 [24]"});
    Click(Check_Box(3));  // leaves the chosen ones
    Click(Check_Box(2));  // stands for all of them
    EXPECT_EQ(Told(), (Texts{"31 0 0 [3]", "31 0 0 [24]"}));
    EXPECT_EQ(Describe_List().chosen, (std::vector<int>{2, 4}));
    EXPECT_TRUE(Describe_List().rows[2].ticked) << "the program decides";
    Key(Qt::Key_Space);
    Key(Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier);
    Key(Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier);
    Key(Qt::Key_Delete);
    EXPECT_EQ(Told(), (Texts{"31 0 0 [24]", "32 0 -1 []", "32 0 1 []", "2 72 0 []"}));
    Key(Qt::Key_End);
    EXPECT_EQ(Told(), Texts{"30 0 0 [5]"});
    Key(Qt::Key_F2);
    auto* editor = tree_->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text(), "row 5");
    editor->setText("other");
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, {});
    QCoreApplication::sendEvent(editor, &enter);
    EXPECT_EQ(Told(), Texts{"33 5 0 []other"});
    EXPECT_EQ(Describe_List().rows[4].cells[0], "row 5");
}

// The row under the pointer, and none when it leaves.
TEST_F(Row_Lists, ThePointerIsTold) {
    Mouse(QEvent::MouseMove, Place(2).center(), Qt::NoButton);
    Mouse(QEvent::MouseMove, Place(2).center() + QPoint(3, 0), Qt::NoButton);
    EXPECT_EQ(Told(), Texts{"34 2 0 []"});
    Mouse(QEvent::MouseMove, Place(3).center(), Qt::NoButton);
    Mouse(QEvent::MouseMove, Place(5).center(), Qt::NoButton);  // the last tells all
    EXPECT_EQ(Told(), Texts{"34 5 0 []"});
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(tree_->viewport(), &leave);
    EXPECT_EQ(Told(), Texts{"34 0 0 []"});
}

// Dropped between two rows, and behind the last.
TEST_F(Row_Lists, RowsAreDragged) {
    Click(Place(1).center());
    Click(Place(2).center(), Qt::ControlModifier);
    Told();
    QAbstractItemModel& model = *tree_->model();
    const std::unique_ptr<QMimeData> data(model.mimeData(tree_->selectionModel()->selectedIndexes()));
    EXPECT_TRUE(model.canDropMimeData(data.get(), Qt::MoveAction, 4, 0, {}));
    for (const int place : {4, -1}) model.dropMimeData(data.get(), Qt::MoveAction, place, 0, {});
    EXPECT_EQ(Told(), (Texts{"32 5 0 [12]", "32 6 0 [12]"}));
    EXPECT_EQ(model.rowCount(), 5);
}

TEST_F(Row_Lists, TheFocusComesByTheHandAloneAndGoesBack) {
    EXPECT_FALSE(tree_->hasFocus());
    QWidget* window = tree_->window();
    for (const int back : {Qt::Key_Escape, Qt::Key_F6}) {
        QKeyEvent there(QEvent::KeyPress, Qt::Key_F6, {});
        QCoreApplication::sendEvent(window, &there);
        EXPECT_EQ(window->focusWidget(), tree_);
        Key(back);
        EXPECT_NE(window->focusWidget(), tree_);
    }
    tree_->setFocus();
    WListClose();
    EXPECT_NE(window->focusWidget(), tree_);
}

// The program's choice is told to nobody; the user's, which it has not heard of yet, stays.
TEST_F(Row_Lists, WhoChoosesLast) {
    WListChoose({1, 3});
    EXPECT_EQ(Told(), Texts{});
    Click(Place(4).center());
    WListChoose({1, 3});
    EXPECT_EQ(Describe_List().chosen, std::vector<int>{4});
    EXPECT_EQ(Told(), Texts{"30 0 0 [4]"});
    WListChoose({});
    EXPECT_EQ(Describe_List().chosen, std::vector<int>{});
}

// A list of 2000 rows scrolls from end to end, and is given other texts, in a small part of a second each step.
TEST_F(Row_Lists, ManyRowsCostLittle) {
    using Clock = std::chrono::steady_clock;
    Put(2000);
    const auto begin = Clock::now();
    for (int row = 1; row <= 2000; row += 100) {
        WListPoint(row);
        QApplication::processEvents();
    }
    Put(1999);
    WListChoose({1999});
    QApplication::processEvents();
    EXPECT_LT(std::chrono::duration<double>(Clock::now() - begin).count(), 5);  // 21 steps, on a busy machine
    EXPECT_EQ(Describe_List().rows.size(), 1999u);
    EXPECT_EQ(Describe_List().pointed, 1901);
}

}  // namespace
}  // namespace vntl
