// What a user can choose in each plot form and calculation.
#include <algorithm>
#include <functional>
#include <optional>
#include <set>

#include "session/session.hpp"
#include "session/testing.hpp"

namespace vntl {
namespace {

struct Form_Case {
    char letter;
    const char* plot_type;
    std::function<void(Session&)> enter;
    std::array<int, 2> toolbars;
};

constexpr std::array<int, 2> kept_toolbars = {1, 2};

// The forms in the order of the letters: Empty, Calculation, Single, Multi, cOntour, contour Log, 3d Graph, sUrface.
const std::vector<Form_Case>& Forms() {
    static const std::vector<Form_Case> forms = {
        {'E', "none", Set_Menu_Empty, {30101, 0}},
        {'C', "calculation", [](Session& s) { Set_Calculation_Mode(s, Click_Mode::reflections); }, kept_toolbars},
        {'S', "single", [](Session& s) { Set_Menu_Single(s, true); }, {30102, 30104}},
        {'M', "multi", [](Session& s) { Set_Menu_Graph(s, false); }, {30103, 30104}},
        {'M', "multi_log", [](Session& s) { Set_Menu_Graph(s, true); }, {30103, 30104}},
        {'O', "graph2dcontour", Set_Menu_Contour, {30103, 0}},
        {'L', "graph2dcontour_log", Set_Menu_Contour_Log, {30103, 0}},
        {'G', "graph3d", Set_Menu_3D, {30103, 0}},
        {'U', "graph3dsurf", Set_Menu_3D_Surface, {30103, 0}},
    };
    return forms;
}

// The letters of the forms that enable the commands, and of those that leave them as they were; every other form disables them.
struct Row {
    std::string enabled, left;
    std::vector<int> commands;
};
const std::vector<Row> rows = {
    {"ESM", "", {40006, 40014, 40015, 40016, 40157}},
    {"CSMOLGU", "", {40009, 40044, 40122}},
    {"CSM", "", {40021, 40023}},
    {"CSM", "", {40106, 40109, 40116, 40118, 40119, 40133, 40136, 40137}},  // the view moves where there are axes of x and y
    {"SM", "", {40020, 40025, 40034, 40035, 40037, 40102, 40105, 40110, 40115, 40124, 40149, 40151, 40154, 40162, 40163, 40215}},
    {"M", "", {40026, 40100, 40101, 40123, 40141, 40158}},  // need several rows
    {"MOLGU", "", {40022, 40027, 40226}},
    {"MOLU", "", {40028}},
    {"MLGU", "", {40031}},
    {"MOGU", "", {40227}},
    {"MOLG", "C", {40125}},
    {"S", "C", {40024, 40091}},
    {"SM", "C", {40120}},
    {"", "ECS", {40095, 40099, 40150}},
    {"", "ECSMOL", {40224, 40225}},
    {"", "", {40113}},
    {"", "CSMOLGU", {40017, 40042, 40043, 40081, 40087, 40088, 40089}},
};

// Disabled by every calculation before it enables its own.
const std::set<int> of_calculations = {40095, 40099, 40194, 40146, 40150, 40225, 40224, 40096, 40097, 40092, 40180, 40147,
                                       40093, 40094, 40008, 40138, 40139, 40159, 40148, 40144, 40145, 40002, 40154, 40215};

std::set<int> All_Commands() {
    std::set<int> all = of_calculations;
    for (const Row& row : rows) all.insert(row.commands.begin(), row.commands.end());
    return all;
}

// What a form makes of a command; nothing where it leaves it.
std::optional<bool> State_In(char form, int command) {
    const auto row = std::find_if(rows.begin(), rows.end(), [=](const Row& r) { return std::ranges::count(r.commands, command) > 0; });
    if (row == rows.end() || row->left.find(form) != std::string::npos) return {};
    return row->enabled.find(form) != std::string::npos;
}

TEST(Menu_States, EveryFormEnablesItsCommands) {
    for (const Form_Case& form : Forms())
        for (const bool before : {false, true}) {
            Session s;
            for (const Row& row : rows)
                for (const int command : row.commands) s.interface.Enable(command, before);
            form.enter(s);
            for (const Row& row : rows)
                for (const int command : row.commands) {
                    const bool left = before && !(form.letter == 'C' && of_calculations.contains(command));
                    EXPECT_EQ(s.interface.Enabled(command), State_In(form.letter, command).value_or(left))
                        << command << " in " << form.plot_type << ", before " << before;
                }
        }
}

TEST(Menu_States, WhatNeedsNoPatternIsEnabledInEveryForm) {
    for (const Form_Case& form : Forms()) {
        Session s;
        form.enter(s);
        for (const int command : {40005, 40018, 40019, 40033, 40104, 40107, 40108, 40111, 40117, 40128, 40129, 40132,
                                  40134, 40135, 40142, 40161, 40178, 40188, 40192, 40193, 40197, 40207, 40213})
            EXPECT_TRUE(s.interface.Enabled(command)) << command << " in " << form.plot_type;
    }
}

TEST(Menu_States, EveryFormShowsItselfInBarsMessagesAndStatus) {
    for (const Form_Case& form : Forms())
        for (int move_mode = 0; move_mode <= 5; ++move_mode) {
            SCOPED_TRACE(form.plot_type);
            Session s;
            Set_Calculation_Mode(s, Click_Mode::peaks);
            s.interface.toolbars = kept_toolbars;
            s.interface.cursor = move_mode % 2 == 0 ? Cursor_Shape::cross : Cursor_Shape::hand;
            s.interface.want_mouse_move = s.interface.want_mouse_down = form.letter == 'E';
            s.interface.want_mouse_up = true;
            s.plot.MoveMode = Move_Mode{move_mode};
            const unsigned before = s.interface.revision;
            form.enter(s);
            EXPECT_EQ(Told(s.plot.plot_type), form.plot_type);
            EXPECT_EQ(s.interface.status[4], form.plot_type);
            EXPECT_EQ(s.interface.toolbars, form.toolbars);
            EXPECT_EQ(s.plot.MoveMode, Move_Mode::none);
            EXPECT_EQ(s.plot.ClickMode, form.letter == 'C' ? Click_Mode::reflections : Click_Mode::none);
            EXPECT_FALSE(s.interface.Checked(40091));
            EXPECT_EQ(s.interface.want_mouse_move, form.letter != 'E');
            EXPECT_EQ(s.interface.want_mouse_down, form.letter != 'E');
            EXPECT_FALSE(s.interface.want_mouse_up);
            EXPECT_EQ(s.interface.cursor, Cursor_Shape::arrow);
            EXPECT_GT(s.interface.revision, before);
        }
}

TEST(Menu_States, EachCalculationEnablesItsOwnCommandsAlone) {
    struct Mode_Case {
        int mode, checked;
        std::set<int> enabled;
    };
    const Mode_Case modes[] = {
        {0, 0, {40105, 40091, 40096, 40120, 40138, 40154, 40215, 40095}},
        {1, 40024, {40099, 40194, 40146, 40150, 40225, 40224}},
        {2, 40091, {40097, 40092, 40147, 40093, 40094, 40008}},
        {3, 40120, {40139, 40148, 40144, 40145, 40002}},
        {4, 0, {}},
    };
    for (const Mode_Case& c : modes)
        for (const Plot_Form form : {Plot_Form::none, Plot_Form::single, Plot_Form::multi, Plot_Form::multi_log, Plot_Form::calculation})
            for (const bool prf_loaded : {false, true})
                for (const bool before : {false, true}) {
                    SCOPED_TRACE("mode " + std::to_string(c.mode) + " from " + std::string(Told(form)) +
                                 (prf_loaded ? " with" : " without") + " a refined profile, before " + std::to_string(before));
                    std::set<int> enabled = c.enabled;
                    if (c.mode == 2 && prf_loaded) enabled.insert(40180);
                    if (c.mode == 3 && form != Plot_Form::multi) enabled.insert(40159);

                    Session s;
                    s.store.prf_loaded = prf_loaded;
                    s.plot.peak_insert = s.plot.peak_delete = s.plot.bgr_insert = s.plot.bgr_delete = true;
                    Set_Plot_Type(s, form);
                    for (const int command : All_Commands()) s.interface.Enable(command, before);
                    for (const int menu : {40024, 40091, 40120}) s.interface.Check(menu, true);
                    Set_Calculation_Mode(s, Click_Mode{c.mode});

                    for (const int command : All_Commands()) {
                        // The form has the last word, even about what the calculation enabled.
                        const bool mode_state = enabled.contains(command) || (before && !of_calculations.contains(command));
                        EXPECT_EQ(s.interface.Enabled(command), State_In('C', command).value_or(mode_state)) << command;
                    }
                    for (const int menu : {40024, 40091, 40120}) EXPECT_EQ(s.interface.Checked(menu), menu == c.checked) << menu;
                    for (const int format : {40010, 40098, 40160, 40177, 40191})  // entries of the menu of the peak file
                        EXPECT_EQ(s.interface.Enabled(format), s.interface.Enabled(40008)) << format;
                    EXPECT_EQ(s.plot.ClickMode, Click_Mode{c.mode});
                    EXPECT_FALSE(s.plot.peak_insert || s.plot.peak_delete || s.plot.bgr_insert || s.plot.bgr_delete);
                }
}

TEST(Menu_States, AStartAndAResetOfferNoCalculation) {
    Session fresh, reset;
    Set_Calculation_Mode(reset, Click_Mode::peaks);
    Reset_Profiles(reset);
    Set_Menu_Empty(reset);
    for (const Session* s : {&fresh, &reset})
        for (const int command : {40096, 40097, 40092, 40008, 40010, 40138, 40139, 40002, 40216, 40220, 40209, 40090, 40036, 40106})
            EXPECT_FALSE(s->interface.Enabled(command)) << command;
    Set_Calculation_Mode(reset, Click_Mode::none);  // what one row in the graph does
    Set_Menu_Single(reset, true);
    for (const int command : {40024, 40091, 40120, 40095, 40096, 40138, 40154, 40215})
        EXPECT_TRUE(reset.interface.Enabled(command)) << command;
    Set_Menu_Graph(fresh, false);  // several rows at once, with no calculation before
    for (const int command : {40120, 40138, 40209, 40090, 40036}) EXPECT_TRUE(fresh.interface.Enabled(command)) << command;
}

TEST(Menu_States, LeavingAFitKeepsOrClearsItsModel) {
    Session s;
    s.lists.fit.peaks.push_back({1, 2});
    Set_Menu_Single(s, true);
    EXPECT_EQ(s.lists.fit.peaks.size(), 1u);
    Set_Menu_Single(s, false);
    EXPECT_TRUE(s.lists.fit.peaks.empty());
}

}  // namespace
}  // namespace vntl
