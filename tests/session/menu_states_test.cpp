// What a user can choose in each plot form and calculation.
#include <functional>
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

// The forms in the order of the letters: Empty, Calculation, Single, Multi, cOntour, contour Log, 3d Graph, sUrface.
const std::vector<Form_Case>& Forms() {
    static const std::vector<Form_Case> forms = {
        {'E', "none", Set_Menu_Empty, {30101, 0}},
        {'C', "calculation", [](Session& s) { Set_Calculation_Mode(s, 4); }, {1, 2}},  // keeps what stands
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

// For a command, the forms that enable it and the forms that leave it as it was; the others disable it.
struct Command_Case {
    int command;
    std::string enabled, left;
};
const Command_Case commands[] = {
    {40006, "ESM", ""},      {40014, "ESM", ""},      {40157, "ESM", ""},      {40009, "CSMOLGU", ""},  {40122, "CSMOLGU", ""},
    {40021, "CSM", ""},      {40023, "CSM", ""},      {40020, "SM", ""},       {40037, "SM", ""},       {40163, "SM", ""},
    {40026, "M", ""},        {40123, "M", ""},        {40158, "M", ""},        {40022, "MOLGU", ""},    {40226, "MOLGU", ""},
    {40028, "MOLU", ""},     {40031, "MLGU", ""},     {40227, "MOGU", ""},     {40125, "MOLG", "C"},    {40091, "S", "C"},
    {40120, "SM", "C"},      {40113, "", ""},         {40106, "CSM", ""},      {40137, "CSM", ""},      {40208, "CSMOLGU", ""},
    {40111, "ECSMOLGU", ""}, {40019, "ECSMOLGU", ""}, {40005, "ECSMOLGU", ""}, {40018, "ECSMOLGU", ""}, {40135, "ECSMOLGU", ""},
    {40095, "", "ECS"},      {40150, "", "ECS"},      {40224, "", "ECSMOL"},   {40042, "", "CSMOLGU"},  {40088, "", "CSMOLGU"},
};

TEST(Menu_States, EveryFormEnablesItsCommands) {
    for (const Form_Case& form : Forms())
        for (const Command_Case& c : commands) {
            // "Left as it was" is looked at from both sides; a calculation first disables the commands of the calculations.
            const bool calculation_owns = form.letter == 'C' && (c.command == 40095 || c.command == 40150 || c.command == 40224);
            for (const bool before : {false, true}) {
                Session s;
                const bool always = c.enabled.size() == 8;
                s.interface.Enable(c.command, before || always);
                form.enter(s);
                const bool left = c.left.find(form.letter) != std::string::npos;
                const bool expected = left ? before && !calculation_owns : c.enabled.find(form.letter) != std::string::npos;
                EXPECT_EQ(s.interface.Enabled(c.command), expected) << c.command << " in " << form.plot_type << " from " << before;
            }
        }
}

TEST(Menu_States, EveryFormShowsItselfInBarsMessagesAndStatus) {
    for (const Form_Case& form : Forms()) {
        SCOPED_TRACE(form.plot_type);
        Session s;
        s.interface.toolbars = {1, 2};
        s.interface.cursor = Cursor_Shape::cross;
        s.interface.want_mouse_up = true;
        s.plot.MoveMode = 3;
        const unsigned before = s.interface.revision;
        form.enter(s);
        EXPECT_EQ(s.plot.plot_type, form.plot_type);
        EXPECT_EQ(s.interface.status[4], form.plot_type);
        EXPECT_EQ(s.interface.toolbars, form.toolbars);
        EXPECT_EQ(s.plot.MoveMode, 0);
        EXPECT_EQ(s.interface.want_mouse_move && s.interface.want_mouse_down, form.letter != 'E');
        EXPECT_FALSE(s.interface.want_mouse_up);
        EXPECT_EQ(s.interface.cursor, Cursor_Shape::arrow);
        EXPECT_GT(s.interface.revision, before);
    }
}

TEST(Menu_States, EachCalculationEnablesItsOwnCommandsAlone) {
    const std::set<int> all = {40095, 40099, 40194, 40146, 40150, 40225, 40224, 40096, 40097, 40092, 40180, 40147,
                               40093, 40094, 40008, 40138, 40139, 40159, 40148, 40144, 40145, 40002, 40154, 40215};
    struct Case {
        int mode, checked;
        bool prf_loaded;
        const char* form;
        std::set<int> enabled;
    };
    // In mode 0 the form itself disables 40154 and 40215 again.
    const Case cases[] = {
        {0, 0, false, "single", {40096, 40138, 40095}},
        {1, 40024, false, "single", {40099, 40194, 40146, 40150, 40225, 40224}},
        {2, 40091, false, "single", {40097, 40092, 40147, 40093, 40094, 40008}},
        {2, 40091, true, "single", {40097, 40092, 40147, 40093, 40094, 40008, 40180}},
        {3, 40120, false, "single", {40139, 40148, 40144, 40145, 40002, 40159}},
        {3, 40120, false, "multi", {40139, 40148, 40144, 40145, 40002}},
        {4, 0, false, "single", {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.mode);
        Session s;
        for (const int mode : {1, 2, 3}) Set_Calculation_Mode(s, mode);
        s.store.prf_loaded = c.prf_loaded;
        s.plot.peak_insert = s.plot.bgr_delete = true;
        Set_Plot_Type(s, c.form);
        Set_Calculation_Mode(s, c.mode);
        for (const int command : all) EXPECT_EQ(s.interface.Enabled(command), c.enabled.contains(command)) << command;
        for (const int menu : {40024, 40091, 40120}) EXPECT_EQ(s.interface.Checked(menu), menu == c.checked) << menu;
        EXPECT_EQ(s.plot.ClickMode, c.mode);
        EXPECT_FALSE(s.plot.peak_insert || s.plot.bgr_delete);
        EXPECT_FALSE(s.interface.Enabled(40105));
        Set_Menu_Single(s, true);
        EXPECT_EQ(s.plot.ClickMode, 0);
        EXPECT_FALSE(s.interface.Checked(c.checked));
    }
}

TEST(Menu_States, AStartAndAResetOfferNoCalculation) {
    Session fresh, reset;
    Set_Calculation_Mode(reset, 2);
    Reset_Profiles(reset);
    Set_Menu_Empty(reset);
    for (const Session* s : {&fresh, &reset})
        for (const int command : {40096, 40097, 40092, 40008, 40010, 40138, 40139, 40002, 40216, 40220, 40209, 40090, 40036, 40106})
            EXPECT_FALSE(s->interface.Enabled(command)) << command;
    Set_Calculation_Mode(reset, 0);  // what one row in the graph does
    Set_Menu_Single(reset, true);
    for (const int command : {40024, 40091, 40120, 40095, 40096, 40138, 40154, 40215})
        EXPECT_TRUE(reset.interface.Enabled(command)) << command;
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
