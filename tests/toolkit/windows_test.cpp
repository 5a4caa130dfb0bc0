// The queue, the menu, dialogs and boxes through the real windows.
#include <gtest/gtest.h>

#include <unistd.h>
#include <QApplication>
#include <QStatusBar>
#include <array>
#include <cstdio>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "pictures/vector_device.hpp"
#include "toolkit/bitmap.hpp"
#include "toolkit/dialog.hpp"
#include "toolkit/messages.hpp"
#include "toolkit/window.hpp"

namespace vntl {
namespace {

class Windows : public testing::Test {
protected:
    void SetUp() override {
        WindowOpen(640, 400, "Test", "vantrelo");
        WindowStatusBarParts(std::array{4500, 1500, -1});
        Menu_Entry file{0, "&File", {}, {}, {}, {}, true, false};
        file.entries = {{10, "&Open", "Ctrl+O", "hint", {}, {}, false, false}, {}, {11, "Ta&rget", {}, {}, {}, {}, false, true}};
        WMenu(std::array{file});
        WindowShow();
    }
};

TEST_F(Windows, TheWindowHasTheSizeThatWasAsked) {
    EXPECT_EQ(WInfoWindow(1), 640);
    EXPECT_EQ(WInfoWindow(2), 400);
    WindowResize(500, 300);
    EXPECT_EQ(WInfoWindow(1), 500);
    EXPECT_EQ(WMessage().kind, Message_Kind::resize);
}

// Also while the hand rests on what it has pressed.
TEST_F(Windows, WhatIsToldIsSeenInThePlaceOfAHint) {
    QStatusBar* bar = nullptr;
    for (QWidget* widget : QApplication::allWidgets())
        if (auto* found = qobject_cast<QStatusBar*>(widget); found != nullptr && found->isVisible()) bar = found;
    ASSERT_NE(bar, nullptr);
    WindowOutStatusBar(1, "told");
    bar->showMessage("hint");
    WindowOutStatusBar(1, "told");
    EXPECT_EQ(bar->currentMessage(), "hint") << "there is nothing new";
    WindowOutStatusBar(1, "new");
    EXPECT_EQ(bar->currentMessage(), "");
}

TEST_F(Windows, MessagesComeInOrderAndRepeatsMerge) {
    Post_Message({Message_Kind::command, {.value1 = 7}});
    Post_Message({Message_Kind::repaint, {}});
    Post_Message({Message_Kind::repaint, {}});
    Post_Message({Message_Kind::mouse_move, {.x = 1}});
    Post_Message({Message_Kind::mouse_move, {.x = 2}});
    Post_Message({Message_Kind::mouse_down, {.value1 = 1}});
    EXPECT_EQ(WMessage().record.value1, 7);
    EXPECT_EQ(WMessage().kind, Message_Kind::repaint);
    EXPECT_EQ(WMessage().record.x, 2);
    EXPECT_EQ(WMessage().kind, Message_Kind::mouse_down);
    int asked = 0;
    Set_Idle_Source([&] {
        if (++asked == 3) Post_Message({Message_Kind::timer, {.value1 = 5}});
        return true;
    });
    EXPECT_EQ(WMessage().record.value1, 5);
    Set_Idle_Source({});
    WMessageTimer(1, 9, false);
    EXPECT_EQ(WMessage().record.value1, 9);
}

TEST_F(Windows, AStoppedTimerSaysNothingMore) {
    constexpr int hour = 3600000;
    for (const int number : {4, 3, 8}) {
        WMessageTimer(hour + number, number, number != 8);
        Post_Message({Message_Kind::timer, {.value1 = number}});
    }
    Post_Message({Message_Kind::timer, {.win = editor_window, .value1 = 4}});
    WMessageTimer(hour, 3, true);  // begins anew
    WMessageTimer(0, 4, true);
    EXPECT_EQ(WMessage().record.value1, 8);
    EXPECT_EQ(WMessage().record.win, editor_window);
    EXPECT_FALSE(WMessagePeek());
    const auto running = Running_Timers();
    ASSERT_EQ(running.size(), 2u);
    EXPECT_TRUE(running[0].number == 3 && running[0].milliseconds == hour && running[0].repeat);
    EXPECT_TRUE(running[1].number == 8 && running[1].milliseconds == hour + 8 && !running[1].repeat);
}

// A message takes the place of one of its own window alone, and of its own pane.
TEST_F(Windows, MessagesOfOtherWindowsStay) {
    for (const Message_Kind kind : {Message_Kind::repaint, Message_Kind::resize, Message_Kind::mouse_move})
        for (const int window : {main_window, editor_window, main_window, 40})
            Post_Message({kind, {.win = window, .value4 = 1, .x = 1.0 * window}});
    Post_Message({Message_Kind::repaint, {.win = 40, .value4 = 2}});
    std::vector<std::pair<Message_Kind, int>> seen;
    for (std::optional<Message> message = WMessagePeek(); message; message = WMessagePeek())
        seen.emplace_back(message->kind, message->record.win);
    const std::vector<std::pair<Message_Kind, int>> all = {{Message_Kind::repaint, editor_window},
                                                           {Message_Kind::repaint, main_window},
                                                           {Message_Kind::repaint, 40},
                                                           {Message_Kind::resize, editor_window},
                                                           {Message_Kind::resize, main_window},
                                                           {Message_Kind::resize, 40},
                                                           {Message_Kind::mouse_move, main_window},
                                                           {Message_Kind::mouse_move, editor_window},
                                                           {Message_Kind::mouse_move, main_window},
                                                           {Message_Kind::mouse_move, 40},
                                                           {Message_Kind::repaint, 40}};
    EXPECT_EQ(seen, all);
}

TEST_F(Windows, MenuAndStatusBar) {
    WMenuSetState(10, menu_enabled, 0);
    WMenuSetState(11, menu_checked, 1);
    EXPECT_EQ(WMenuGetState(10, menu_enabled), 0);
    EXPECT_EQ(WMenuGetState(11, menu_checked), 1);
    EXPECT_EQ(WMenuGetState(99, menu_enabled), -1);
    WMenuSetString(10, "1. a.dat");
    EXPECT_EQ(WMenuGetString(10), "1. a.dat");
    WindowOutStatusBar(2, " X= 1");
    WindowOutStatusBar(9, "nowhere");
    EXPECT_EQ(WindowStatusBarText(2), " X= 1");
}

Dialog_Field Field(int number, Field_Kind kind, const char* label, int group = 0) {
    Dialog_Field field;
    field.number = number;
    field.kind = kind;
    field.label = label;
    field.group = group;
    return field;
}

// The same labels on two pages, in two frames of one, and behind two entries of another.
TEST_F(Windows, AFieldIsNamedByTheTitlesAroundIt) {
    const auto frame = [](int number, const char* title, std::vector<std::vector<Dialog_Field>> rows) {
        Dialog_Field field = Field(number, Field_Kind::frame, title);
        field.pages = {{{}, std::move(rows)}};
        return field;
    };
    Dialog_Field tab = Field(10, Field_Kind::tab, "");
    tab.pages = {{"First",
                  {{frame(11, " Ycalc / Ydif .", {{Field(21, Field_Kind::string, "Ground")}})},
                   {frame(12, "Below", {{Field(22, Field_Kind::string, "&Ground")}})},
                   {Field(23, Field_Kind::check_box, "On/Off")}}},
                 {"Second",
                  {{Field(24, Field_Kind::string, "Ground"), Field(25, Field_Kind::push_button, "...")},
                   {Field(26, Field_Kind::string, "Editor"), Field(27, Field_Kind::push_button, "...")}}}};
    Register_Dialogs(std::array{Dialog_Resource{301, "Paths", {{tab}}}});
    WDialogLoad(301);
    const struct {
        const char* path;
        int number;  // 0: none or several
    } cases[] = {{"Ground", 0},
                 {"First/Ground", 0},
                 {"Second/Ground", 24},
                 {"Below/Ground", 22},
                 {" Ycalc / Ydif ./Ground", 21},
                 {"First/Ycalc/Ydif ./Ground", 21},
                 {"First/Below/Ground", 22},
                 {"Second/Below/Ground", 0},
                 {"On/Off", 23},
                 {"First/On/Off", 23},
                 {"...", 0},
                 {"Editor/...", 27},
                 {"Second/Ground/...", 25},
                 {"Third/Ground", 0},
                 {"", 10}};
    for (const auto& c : cases) {
        int number = 0;
        EXPECT_EQ(Field_By_Label(301, c.path, number).ok(), c.number != 0) << c.path;
        if (c.number != 0) {
            EXPECT_EQ(number, c.number) << c.path;
        }
    }
    WDialogUnload();
}

TEST_F(Windows, ADialogIsFilledReadAndActedOn) {
    const Dialog_Resource resource{300,
                                   "Choose",
                                   {{Field(20, Field_Kind::label, "Heading")},
                                    {Field(21, Field_Kind::radio, "&One", 21)},
                                    {Field(22, Field_Kind::radio, "&Two", 21)},
                                    {Field(23, Field_Kind::radio, "Three", 21)},
                                    {Field(1, Field_Kind::push_button, "OK"), Field(2, Field_Kind::push_button, "Cancel")}}};
    Register_Dialogs(std::array{resource});
    EXPECT_EQ(WindowFront(), main_window);
    WDialogLoad(300);
    WDialogPutRadioButton(22);
    WDialogPutRadioButton(99);
    WDialogPutString(20, "<b>as it stands</b>");
    WDialogFieldState(23, 0);
    WDialogShow(0, Show_Kind::modal);
    EXPECT_EQ(WindowFront(), 300);
    EXPECT_EQ(WDialogGetRadioButton(21), 22);
    EXPECT_TRUE(Act_Set_Field(300, 21, "1").ok());
    EXPECT_EQ(WDialogGetRadioButton(21), 21);
    EXPECT_TRUE(Act_Set_Field(300, 23, "1").failed);
    EXPECT_TRUE(Act_Set_Field(300, 20, "1").failed);
    EXPECT_TRUE(Act_Set_Field(300, 77, "1").failed);
    int number = 0;
    EXPECT_TRUE(Field_By_Label(300, "Two", number).ok());
    EXPECT_EQ(number, 22);
    EXPECT_TRUE(Field_By_Label(300, "Four", number).failed);
    const Dialog_View view = Describe_Dialog(300);
    ASSERT_EQ(view.fields.size(), 6u);
    EXPECT_EQ(view.fields[0].value, "<b>as it stands</b>");
    EXPECT_EQ(view.fields[1].label, "One");
    EXPECT_FALSE(view.fields[3].enabled);
    EXPECT_TRUE(Act_Press(300, 2).ok());
    const Message message = WMessage();
    EXPECT_EQ(message.kind, Message_Kind::push_button);
    EXPECT_EQ(message.record.win, 300);
    EXPECT_EQ(message.record.value1, 2);
    WDialogUnload();
    EXPECT_FALSE(WDialogLoaded(300));
}

class Answering : public Stand_In {
public:
    Box_Answer answer = Box_Answer::ok;
    Box_Answer Answer_Box(const Message_Box&) override { return answer; }
    std::vector<std::string> Answer_Select(Select_Kind) override { return {"/a"}; }
    std::optional<std::string> Answer_Directory() override { return "/d"; }
    std::optional<Colour> Answer_Colour() override { return WRGB(1, 2, 3); }
};

TEST_F(Windows, BoxesGiveTheButtonThatWasPressed) {
    Answering stand_in;
    Set_Stand_In(&stand_in);
    const Box_Answer all[] = {Box_Answer::ok, Box_Answer::cancel, Box_Answer::retry, Box_Answer::yes,
                              Box_Answer::no, Box_Answer::abort,  Box_Answer::ignore};
    for (int set = 0; set <= 5; ++set)
        for (const Box_Answer answer : all) {
            const auto buttons = static_cast<Box_Buttons>(set);
            if (!Box_Offers(buttons, answer)) continue;
            stand_in.answer = answer;
            for (const std::size_t lines : {1u, 24u, 25u, 5000u})  // a long text can be scrolled
                EXPECT_EQ(
                    WMessageBox({buttons, static_cast<Box_Icon>(set % 5), 1, "Go on?\n" + std::string(lines - 1, '\n') + "end", "Title"}),
                    answer)
                    << set;
        }
    EXPECT_EQ(Box_Default({Box_Buttons::yes_no, Box_Icon::none, 2, "", ""}), Box_Answer::no);
    EXPECT_EQ(WSelectFile("a|*.a|", Select_Kind::open, "", "t").front(), "/a");
    Set_Stand_In(nullptr);
}

TEST(Vector, FilesOfEachKindAndOneThatCannotBeWritten) {
    const struct {
        Vector_Format format;
        const char* magic;
    } kinds[] = {{Vector_Format::pdf, "%PDF"}, {Vector_Format::svg, "<?xml"}, {Vector_Format::postscript, "%!PS"}};
    for (const auto& kind : kinds) {
        const std::string file = testing::TempDir() + "picture_\xC3\xA5";
        const auto device = Open_Vector_Device(kind.format, file, 842, 526);
        device->Clear(WRGB(255, 255, 255));
        device->Text({100, 100}, "2theta µ Å", {101, 0, 10, 16, 0, Justify::left, 0});
        std::vector<float> x(100000), y(100000);
        for (std::size_t i = 0; i < x.size(); ++i) x[i] = static_cast<float>(i) * 0.008f, y[i] = static_cast<float>(i % 7);
        device->Curve({x, y}, {0, 1, Line_Style::solid});
        ASSERT_TRUE(device->Close().ok());
        std::ifstream stream(file, std::ios::binary);
        std::string text((std::istreambuf_iterator<char>(stream)), {});
        EXPECT_EQ(text.substr(0, std::string(kind.magic).size()), kind.magic);
        EXPECT_LT(text.size(), 3'000'000u);
        std::remove(file.c_str());
        EXPECT_TRUE(Open_Vector_Device(kind.format, "/no/such/place/x.pdf", 10, 10)->Close().failed);
    }
}

// A page of 100 x 80 points as pixels, from the file that the device wrote.
std::string Pixels_Of_Pdf(const std::function<void(Device&)>& draw) {
    const std::string file = testing::TempDir() + "clip_" + std::to_string(::getpid());
    const auto device = Open_Vector_Device(Vector_Format::pdf, file + ".pdf", 100, 80);
    device->Clear(WRGB(255, 255, 255));
    draw(*device);
    EXPECT_TRUE(device->Close().ok());
    EXPECT_EQ(std::system(("pdftoppm -r 72 -singlefile " + file + ".pdf " + file).c_str()), 0);
    std::ifstream stream(file + ".ppm", std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(stream)), {}), head = "P6\n100 80\n255\n";
    for (const char* ending : {".pdf", ".ppm"}) std::remove((file + ending).c_str());
    EXPECT_EQ(text.substr(0, head.size()), head);
    return text.size() < head.size() ? std::string() : text.substr(head.size());
}
Colour Pixel_At(const std::string& pixels, int x, int y) {
    const auto channel = [&](int c) { return static_cast<unsigned char>(pixels[static_cast<std::size_t>(3 * (100 * y + x) + c)]); };
    return WRGB(channel(0), channel(1), channel(2));
}

// Four margins of different widths: no edge can stand for another.
TEST(Vector, NothingIsDrawnOutsideTheClip) {
    const Rect clip{10, 25, 65, 60};
    const std::vector<Point> page = {{0, 0}, {100, 0}, {100, 80}, {0, 80}};
    const std::string pixels = Pixels_Of_Pdf([&](Device& device) {
        device.Set_Clip(clip);
        device.Clear(WRGB(255, 255, 255));  // of the whole page; the clip stays
        device.Fill(page, WRGB(255, 0, 0));
    });
    ASSERT_EQ(pixels.size(), 3u * 100 * 80);
    for (int y = 0; y < 80; ++y)
        for (int x = 0; x < 100; ++x) {
            const double right = std::min(x + 0.5 - clip.x1, clip.x2 - x - 0.5), up = std::min(79.5 - y - clip.y1, clip.y2 - 79.5 + y);
            const double within = std::min(right, up);  // from the nearest edge, which the viewer smooths
            if (std::fabs(within) < 1) continue;
            ASSERT_EQ(Pixel_At(pixels, x, y), within > 0 ? WRGB(255, 0, 0) : WRGB(255, 255, 255)) << x << ' ' << y;
        }
}

TEST(Vector, CellsStandWhereTheyStandOnPixels) {
    const std::vector<Colour> colours = {WRGB(255, 0, 0),   WRGB(0, 255, 0),   WRGB(0, 0, 255),
                                         WRGB(255, 255, 0), WRGB(0, 255, 255), WRGB(9, 9, 9)};
    const auto draw = [&](Device& device) {
        device.Set_Clip({0, 0, 100, 70});
        device.Cells({{10, 20, 70, 80}, 3, 2, colours});
    };
    const std::string pixels = Pixels_Of_Pdf(draw);
    ASSERT_EQ(pixels.size(), 3u * 100 * 80);
    Bitmap bitmap(100, 80);
    draw(bitmap.Drawing());
    for (int y = 5; y < 80; y += 10)
        for (int x = 5; x < 100; x += 10) {
            const Colour seen = Pixel_At(pixels, x, y), wanted = bitmap.Pixel(x, y);
            for (const auto channel : {Red, Green, Blue})
                EXPECT_NEAR(static_cast<int>(channel(seen)), static_cast<int>(channel(wanted)), 2) << x << ' ' << y;
        }
    for (const Vector_Format format : {Vector_Format::svg, Vector_Format::postscript}) {
        const std::string file = testing::TempDir() + "cells_" + std::to_string(::getpid());
        const auto device = Open_Vector_Device(format, file, 100, 80);
        draw(*device);
        EXPECT_TRUE(device->Close().ok());
        std::ifstream stream(file);
        const std::string text((std::istreambuf_iterator<char>(stream)), {});
        EXPECT_NE(text.find("mage"), std::string::npos);  // <image>, /ImageType
        std::remove(file.c_str());
    }
}

// Facets over one another, two with a side in common, a quadrangle that folds over itself, and a line.
TEST(Vector, FacetsStandWhereTheyStandOnPixels) {
    const std::vector<Point> places = {{5, 5}, {60, 12}, {88, 70}, {30, 60}, {15, 50}, {75, 25}, {10, 75}, {50, 40}};
    const std::vector<Facet> facets = {{{0, 1, 2, 3}, 4, WRGB(200, 0, 0)},
                                       {{0, 2, 6}, 3, WRGB(0, 150, 0)},
                                       {{0, 3, 6}, 3, WRGB(0, 150, 0)},
                                       {{4, 5, 7, 1}, 4, WRGB(0, 0, 255)},
                                       {{4, 1}, 2, 0},
                                       {{3, 7, 2}, 3, WRGB(9, 200, 200)}};
    const auto draw = [&](Device& device) {
        device.Set_Clip({0, 0, 80, 72});
        device.Facets({places, facets, 3});
    };
    const std::string pixels = Pixels_Of_Pdf(draw);
    ASSERT_EQ(pixels.size(), 3u * 100 * 80);
    Bitmap bitmap(100, 80);
    draw(bitmap.Drawing());
    int compared = 0;
    for (int y = 2; y < 78; ++y) {
        for (int x = 2; x < 98; ++x) {
            const Colour wanted = bitmap.Pixel(x, y);
            bool plain = true;  // all around
            for (int dy = -2; dy <= 2; ++dy)
                for (int dx = -2; dx <= 2; ++dx) plain = plain && bitmap.Pixel(x + dx, y + dy) == wanted;
            if (!plain) continue;
            ++compared;
            ASSERT_EQ(Pixel_At(pixels, x, y), wanted) << x << ' ' << y;
        }
    }
    EXPECT_GT(compared, 3000);
}

// The image holds what shows, as fine as print: neither the number of cells nor the size of their rectangle counts.
TEST(Vector, ManyCellsAndFarCellsMakeASmallFile) {
    const Rect clip{10, 25, 65, 60};
    std::vector<Colour> colours(1500 * 2000);
    for (std::size_t i = 0; i < colours.size(); ++i) colours[i] = static_cast<Colour>(i * 2654435761u & 0xffffff);
    const struct {
        Rect rect;
        int columns, rows;
    } cases[] = {{{-1e12, -1e12, 1e12, 1e12}, 1500, 2000}, {{-1e300, 20, 1e300, 70}, 4, 5}, {{0, 0, 100, 80}, 1500, 2000}};
    for (const auto& c : cases) {
        const auto cells = std::span(colours).first(static_cast<std::size_t>(c.columns * c.rows));
        for (const Vector_Format format : {Vector_Format::svg, Vector_Format::pdf, Vector_Format::postscript}) {
            const std::string file = testing::TempDir() + "many_" + std::to_string(::getpid());
            const auto device = Open_Vector_Device(format, file, 100, 80);
            device->Set_Clip(clip);
            device->Cells({c.rect, c.columns, c.rows, cells});
            EXPECT_TRUE(device->Close().ok());
            std::ifstream stream(file, std::ios::binary | std::ios::ate);
            EXPECT_LT(stream.tellg(), 100'000) << c.rect.x2;
            std::remove(file.c_str());
        }
    }
    // A window into a few large cells, whose edges lie at x = 40 and y = 50.
    const auto draw = [&](Device& device) {
        device.Set_Clip(clip);
        device.Cells({{-4960, -4950, 5040, 5050}, 2, 2, std::span(colours).subspan(1, 4)});
    };
    const std::string pixels = Pixels_Of_Pdf(draw);
    Bitmap bitmap(100, 80);
    draw(bitmap.Drawing());
    for (int y = 2; y < 80; y += 5)
        for (int x = 2; x < 100; x += 5)
            for (const auto channel : {Red, Green, Blue})
                ASSERT_NEAR(static_cast<int>(channel(Pixel_At(pixels, x, y))), static_cast<int>(channel(bitmap.Pixel(x, y))), 2)
                    << x << ' ' << y;
}

// Places of the paths of a picture without fill, y upward.
std::vector<Point> Paths_Of_Svg(const std::function<void(Device&)>& draw) {
    const std::string file = testing::TempDir() + "path_" + std::to_string(::getpid());
    const auto device = Open_Vector_Device(Vector_Format::svg, file, 100, 80);
    draw(*device);
    EXPECT_TRUE(device->Close().ok());
    std::ifstream stream(file);
    const std::string text((std::istreambuf_iterator<char>(stream)), {});
    std::remove(file.c_str());
    std::vector<Point> places;
    for (std::size_t path = text.find("fill:none"); path != std::string::npos; path = text.find("fill:none", path + 1)) {
        std::istringstream words(text.substr(text.find(" d=\"", path) + 4));
        Point at{};
        for (std::string word; words >> word && (word == "M" || word == "L" || word == "Z");)
            if (word != "Z" && words >> at.x >> at.y) places.push_back({at.x, 80 - at.y});
    }
    return places;
}

// A curve and a set of markers leave out what lies outside the clip, and nothing that shows.
TEST(Vector, CurvesAndMarkersKeepWhatShows) {
    const Rect clip{10, 25, 65, 60};
    std::vector<float> x, y, grid_x, grid_y;
    for (int i = 0; i <= 100; ++i) {
        x.push_back(static_cast<float>(i));
        y.push_back(static_cast<float>(i * i % 11 * 8));
    }
    for (int i = 0; i <= 20; ++i) {
        for (int j = 0; j <= 16; ++j) {
            grid_x.push_back(5.0f * static_cast<float>(i));
            grid_y.push_back(5.0f * static_cast<float>(j));
        }
    }
    const std::vector<Point> curve = Paths_Of_Svg([&](Device& device) {
        device.Set_Clip(clip);
        device.Curve({x, y}, {});
    });
    const auto inside = [&](double at_x, double at_y) {
        return at_x >= clip.x1 - 0.05 && at_x <= clip.x2 + 0.05 && at_y >= clip.y1 - 0.05 && at_y <= clip.y2 + 0.05;
    };
    for (const Point& p : curve) EXPECT_TRUE(inside(p.x, p.y)) << p.x << ' ' << p.y;
    for (std::size_t i = 0; i < x.size(); ++i) {
        const auto here = [&](const Point& p) { return std::fabs(p.x - x[i]) < 0.05 && std::fabs(p.y - y[i]) < 0.05; };
        EXPECT_EQ(std::any_of(curve.begin(), curve.end(), here), inside(x[i], y[i])) << x[i];
    }

    const std::vector<Point> dots = Paths_Of_Svg([&](Device& device) {
        device.Set_Clip(clip);
        device.Markers({grid_x, grid_y}, {221, 3, 3, 0, true});
    });
    // 15, 20 .. 60 by 30, 35 .. 55: a dot is a path that is closed where it begins. Behind the last one its place stands once more.
    EXPECT_EQ(dots.size(), 10u * 6 + 1);
}

}  // namespace
}  // namespace vntl
