// Panels, and windows that belong to another one, through the real windows.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "toolkit/dialog.hpp"
#include "toolkit/messages.hpp"
#include "toolkit/window.hpp"
#include "toolkit/window_service.hpp"

namespace vntl {
namespace {

constexpr int child = 51, owned = 52, deeper = 53, panel = 910, of_owned = 911;
constexpr int number_field = 9101, text_field = 9102, button = 9103;

// "kind window value1 value2" of the messages that wait, but for repaints.
std::vector<std::string> Told() {
    std::vector<std::string> all;
    while (const auto message = WMessagePeek())
        if (const auto& [kind, record] = *message; kind != Message_Kind::repaint)
            all.push_back(std::to_string(static_cast<int>(kind)) + ' ' + std::to_string(record.win) + ' ' + std::to_string(record.value1) +
                          ' ' + std::to_string(record.value2));
    return all;
}

class No_Answers : public Stand_In {
    Box_Answer Answer_Box(const Message_Box&) override { return {}; }
    std::vector<std::string> Answer_Select(Select_Kind) override { return {}; }
    std::optional<std::string> Answer_Directory() override { return {}; }
    std::optional<Colour> Answer_Colour() override { return {}; }
};

class Panels : public testing::Test {
protected:
    void SetUp() override {
        Set_Stand_In(&script_);
        Dialog_Page page{.rows = {{{.number = number_field, .kind = Field_Kind::integer, .label = "Frame", .lo = 1, .hi = 99}},
                                  {{.number = text_field, .kind = Field_Kind::string, .label = "Name", .width = 8},
                                   {.number = button, .kind = Field_Kind::push_button, .label = "..."}}}};
        Dialog_Resource resource{panel, "Panel", {{{.kind = Field_Kind::frame, .label = "Group", .pages = {page}}}}, true};
        std::vector<Dialog_Field> five;
        for (int k = 0; k < 5; ++k) five.push_back({9110 + k, Field_Kind::push_button, k < 2 ? "<<" : ">"});
        resource.rows.push_back(five);
        for (int k = 0; k < 60; ++k)
            resource.rows.push_back({{.number = 9120 + k, .kind = Field_Kind::string, .label = "Row", .width = 8}});
        Register_Dialogs(std::array{resource, Dialog_Resource{of_owned, "Dialog", {{{.number = 9111, .kind = Field_Kind::string}}}}});
        WindowOpen(640, 400, "Test", "vantrelo");
        WindowShow();
    }
    void TearDown() override {
        WindowCloseChild(child);
        Told();
        Set_Stand_In(nullptr);
    }
    static void Open_Child(int number = child, bool holds = false, int owner = main_window) {
        WindowOpenChild(number, "Child", 1000, 650, Child_Kind::plot, holds, owner);
    }
    static void Show_Panel() {
        WDialogLoad(panel);
        WDialogShow(0, Show_Kind::panel);
        WMessageEnable(panel, Message_Kind::field_changed, true);
    }

private:
    No_Answers script_;
};

TEST_F(Panels, PanelAndDrawingAreaShareTheWindow) {
    for (const bool shown_first : {true, false}) {
        Open_Child();
        if (shown_first) WindowShow();
        Show_Panel();
        if (!shown_first) WindowShow();
        SCOPED_TRACE(shown_first);
        const int width = 1000 - WInfoWindow(1);  // of the panel, at a usual font with the five buttons in it
        EXPECT_GE(width, panel_width);
        EXPECT_LE(width, panel_width + 60);
        EXPECT_EQ(WInfoWindow(2), 650);  // however long the panel is
        EXPECT_EQ(Told().size(), 0u);    // who shows it draws anew
        WindowResize(500, 300);
        EXPECT_EQ((std::array{WInfoWindow(1), WInfoWindow(2)}), (std::array{500, 300}));
        EXPECT_EQ(Told(), std::vector<std::string>{"8 51 0 0"});
        WindowResize(1, 1);
        EXPECT_EQ((std::array{WInfoWindow(1), WInfoWindow(2)}), (std::array{240, 160}));
        WindowResize(600, 300);
        WindowSplit(2, false);  // panes stand beside it as well
        EXPECT_EQ(WInfoWindow(1, 2), 600);
        WindowSplit(1, false);
        Told();
        WDialogSelect(panel);
        WDialogUnload();
        EXPECT_EQ(WInfoWindow(1), 600 + width);
        EXPECT_EQ(Told().size(), 0u);
        Show_Panel();
        EXPECT_EQ(WInfoWindow(1), 600);
        WindowCloseChild(child);
        EXPECT_FALSE(WDialogLoaded(panel));
    }
}

TEST_F(Panels, WhatAUserDoesInOneIsToldAndHoldsNobodyBack) {
    Open_Child();
    WindowShow();
    Show_Panel();
    EXPECT_EQ((std::array{WindowFront(), Window_Of(panel)}), (std::array{child, child}));
    EXPECT_TRUE(WDialogIsPanel(panel) && !WDialogModal(panel) && Modal_Loop_Serves(10) && Act_Front(main_window).ok());
    EXPECT_TRUE(Act_Front(panel).ok() && WindowFront() == panel);
    Told();
    EXPECT_TRUE(Act_Set_Field(panel, number_field, "7").ok());
    EXPECT_EQ(WDialogFocus(), number_field);
    EXPECT_TRUE(Act_Key(panel, key_enter).ok() && Act_Key(panel, key_escape).ok());
    EXPECT_EQ(Told(), (std::vector<std::string>{"10 910 9101 9101", "1 910 13 9101", "1 51 27 0"}));  // Escape is the window's
    EXPECT_TRUE(Act_Key(panel, key_tab).ok() && Act_Key(panel, 'a').ok() && WDialogGetString(text_field) == "a");
    EXPECT_EQ(Told(), (std::vector<std::string>{"10 910 9101 9102", "10 910 9102 9102"}));
    EXPECT_TRUE(Act_Press(panel, button).ok());
    EXPECT_EQ(Told(), (std::vector<std::string>{"10 910 9102 9103", "3 910 9103 0"}));
    EXPECT_TRUE(Act_Set_Field(panel, number_field, "8").ok());
    Told();
    EXPECT_TRUE(Act_Front(main_window).ok());  // another window leaves the field as it is
    EXPECT_EQ(Told().size(), 0u);
    EXPECT_TRUE(Act_Front(child).ok() && WindowFront() == child);
    EXPECT_EQ(Told(), std::vector<std::string>{"10 910 9101 0"});
}

TEST_F(Panels, AWindowOfAnotherOneServesAndClosesWithIt) {
    const auto opens = [] {
        Open_Child(child, true);
        WindowShow();
        Show_Panel();
        Open_Child(owned, false, child);
        WindowShow();
        WDialogLoad(of_owned);
        WDialogShow(0, Show_Kind::modeless);
    };
    opens();
    for (const int number : {owned, child, panel, of_owned}) EXPECT_TRUE(Act_Front(number).ok()) << number;
    EXPECT_TRUE(Act_Front(main_window).failed);
    // Of two that hold others back the one opened last does, whatever their numbers.
    for (const int number : {deeper, 49}) {
        Open_Child(number, true);
        WindowShow();
        for (const int held : {owned, child, panel, of_owned, main_window}) EXPECT_TRUE(Act_Front(held).failed) << held;
        EXPECT_TRUE(Act_Front(number).ok());
        WindowCloseChild(number);
        EXPECT_TRUE(Act_Front(owned).ok() && Act_Front(main_window).failed);
    }
    Post_Message({Message_Kind::command, {.win = owned, .value1 = 10}});
    WindowCloseChild(child);
    for (const int number : {child, owned}) EXPECT_FALSE(WindowIsOpen(number));
    EXPECT_FALSE(WDialogLoaded(of_owned) || WDialogLoaded(panel));
    EXPECT_EQ(Told().size(), 0u);
    opens();
    WindowCloseChild(owned);
    EXPECT_TRUE(WindowIsOpen(child) && WDialogLoaded(panel) && !WDialogLoaded(of_owned));
}

}  // namespace
}  // namespace vntl
