// The dialog "Preferences": what each field sets, what is taken over and when, and what a plot shows of it.
#include <algorithm>
#include <sstream>

#include "app/testing.hpp"
#include "patterns/prf_files.hpp"

namespace vntl {
namespace {

using Texts = std::vector<std::string>;

// Every field of every page but those of lines that repeat: its path | its name in `print prefs` | what is given, "#" a colour | the value
// that is printed, where that is something else.
constexpr const char* fields_of_pages = R"~(
Path Quendrix|quendrix_dir|/usr;Quendrix exe|prg_refine|wqx2k -x;Text editor|cmd_editor|ed -x;Web navigator|cmd_browser|web -x
PDF reader|cmd_pdf|pdf -x;CIF viewer|cmd_cif_viewer|cif -x;PS viewer|cmd_ps_viewer|ps -x;Compression|cmd_unzip|zip -x
Prefix command for invoking console programs|cmd_run|term -e;Always save context|always_save_context|1|true
Use internal text editor|use_internal_editor|0|false
Graphic 2D/Frame Graph 2D/Background|frame_background|#;Frame Graph 2D/Foreground|frame_foreground|#
Title/Position|title_pos|Left|2;Label X/Position|xlabel_pos|Right|4;Label Y/Position|ylabel_pos|Cent/Rot-|6
Legend/Position|legend_pos|Out right|4;Title for graph single file|title_single|one µ;Title for graph multi file|title_multi|more
Graphic 3D/Background|graph3d_background|#;Title for graph multi file 3D|graph3d_title|space
Graphic 3D Surf/Background|surface_background|#;Lattice|surface_lattice|#;Graphic 3D Surf/Minimun Z|surface_min_colour|#
Graphic 3D Surf/Maximum Z|surface_max_colour|#;Graphic 3D Surf/Type graph|surface_type|Variable|4
Title for graph multi file 3D surface|surface_title|hills
Ycalc/Style|ycalc_style|Dashed|2;Ycalc/Marker|ycalc_marker|custom3|5;Ydif/Style|ydif_style|DotDotDash|4;Ydif/Marker|ydif_marker|custom5|7
Reflexions preferences ./Colour|refl_colour|#;Reflexions preferences ./Pitch|refl_pitch|3;Enable Live mode  Reflexions|refl_live|1|true
Match color with foreground|excl_match|0|false;Exclude regions preferences/Colour|excl_colour|#;Show exclude regions|excl_show|0|false
Ignore exclude region at sides|excl_ignore_sides|1|true;Axe Y/Hide negative values|hide_negative|0|false
QuickView PRF/Background|qv_background|#;QuickView PRF/Foreground|qv_foreground|#
Exclude regions in the colour of the foreground|qv_excl_match|0|false
Graph 2D contour/Background|contour_background|#;Graph 2D contour/Foreground|contour_foreground|#
Graph 2D contour/Minimun Z|contour_min_colour|#;Graph 2D contour/Maximum Z|contour_max_colour|#
Graph 2D contour/Type graph|contour_type|Fill custom - granulated|5;# Levels|contour_levels|12;Granularity|contour_granularity|7
Apply Saturation Value|saturation_on|1|true;Saturation Value (counts)|saturation_value|512.5
Title for graph multi file 2D contour|contour_title|Heating |"Heating (Saturation:    512.5 )")~";

std::string Repeated_Fields() {
    using Named = std::pair<std::string, std::string>;
    constexpr const char* text_styles[] = {"Bold|2", "Italic|3", "Underline|4", "Opaque|5", "B+I+U|7", "B+U|9"};
    constexpr const char* line_styles[] = {"-None-|-1", "Dotted|1", "Dashed|2", "DotDash|3", "DotDotDash|4"};
    constexpr const char* marker_types[] = {"-none-|1", "custom1|3", "custom6|8"};
    std::string all;
    int n = 0;
    const auto add = [&](const std::string& field, const std::string& name, const std::string& given) {
        all += field + '|' + name + '|' + given + '\n';
    };
    for (const auto& [shown, name] : {Named{"Title", "title"}, Named{"Label X", "xlabel"}, Named{"Label Y", "ylabel"},
                                      Named{"Legend", "legend"}, Named{"Scale X", "xscale"}, Named{"Scale Y", "yscale"}}) {
        if (name != "legend") add(shown + "/Colour", name + "_colour", "#");
        add(shown + "/Font", name + "_font", "Symbol|4");
        add(shown + "/Style", name + "_style", text_styles[n++]);
        add(shown + "/Size", name + "_size", std::to_string(20 + n));
    }
    for (const auto& [shown, name] : {Named{"Ycalc", "ycalc"}, Named{"Ydif", "ydif"}}) {
        add(shown + "/Colour", name + "_colour", "#");
        add(shown + "/Pitch", name + "_pitch", std::to_string(2 + n % 4));
        add(shown + "/Size", name + "_marker_size", std::to_string(20 + n++));
    }
    for (int slot = 1; slot <= 12; ++slot) {
        const std::string number = std::to_string(slot), name = "profile_styles/" + std::to_string(slot - 1) + '/';
        const std::string line = "Line preferences/" + number, marker = "Marker preferences/" + number;
        add(marker + "/Match", name + "match_colours", "0|false");
        add(line + "/Colour", name + "line_colour", "#");
        add(line + "/Style", name + "line_style", line_styles[slot % 5]);
        add(line + "/Pitch", name + "line_pitch", std::to_string(2 + slot % 4));
        add(marker + "/Colour", name + "marker_colour", "#");
        add(marker + "/Type", name + "marker_type", marker_types[slot % 3]);
        add(marker + "/Size", name + "marker_size", std::to_string(20 + slot));
    }
    for (int band = 1; band <= 20; ++band) add("C" + std::to_string(band), "contour_palette/" + std::to_string(band - 1), "#");
    return all;
}

// What a user does to fill every field, each with a value of its own, and the preferences that follow from that.
struct Filling {
    std::string statements;
    std::vector<std::pair<std::string, Json>> values;
};
Filling Fill_All() {
    Filling filling;
    std::string all = fields_of_pages + ('\n' + Repeated_Fields()), given, row;
    std::replace(all.begin(), all.end(), ';', '\n');
    std::istringstream rows(all);
    for (int n = 1; std::getline(rows, row);) {
        std::istringstream parts(row);
        std::string field, name, value;
        if (!std::getline(parts, field, '|') || !std::getline(parts, name, '|') || !std::getline(parts, given, '|')) continue;
        std::getline(parts, value);
        const bool colour = given == "#";
        const Json as_given = Json::parse(given, nullptr, false);
        filling.values.emplace_back('/' + name, !value.empty()            ? Json::parse(value)
                                                : colour                  ? Json(n + 256 * (n % 99) + 65536 * 7)
                                                : as_given.is_discarded() ? Json(given)
                                                                          : as_given);
        filling.statements += colour ? "colour " + std::to_string(n) + ' ' + std::to_string(n % 99) + " 7\npress \"" + field + "\"\n"
                                     : "set \"" + field + "\" \"" + given + "\"\n";
        n += colour;
    }
    return filling;
}

class Preferences_Dialogs : public Program {
protected:
    // Six rows for maps, and two refined profiles, of a pattern and of single intensities.
    void SetUp() override {
        Program::SetUp();
        for (int row = 1; row <= 6; ++row) {
            std::ofstream file(directory / ("s" + std::to_string(row) + ".xys"));
            for (int i = 0; i <= 100; ++i) file << 10 + 0.1 * i << ' ' << 100 + 10 * i + row << " 1\n";
        }
        const test::Model model = test::Make_Model(2, 10, false);
        std::ofstream(directory / "refined.prf") << test::Whole(test::Columns(model));
        std::ofstream(directory / "single.prf") << test::Whole(test::Integrated(model));
    }
    // Statements behind semicolons: "!" opens the dialog, "?" prints it, "$" its preferences; first the box about the settings.
    Run_Result Do(const std::string& statements, const std::string& environment = {}) const {
        std::string text;
        for (const char c : statements)
            text += c == ';' ? "\n" : c == '!' ? "command 40033" : c == '?' ? "print dialog" : c == '$' ? "print prefs" : std::string(1, c);
        return Script(text + '\n', {}, environment);
    }
    static Json Field(const Json& dialog, int number) {
        for (const Json& field : dialog["fields"])
            if (field["field"] == number) return field;
        return {};
    }
    static std::string Value(const Json& dialog, int number) { return Field(dialog, number)["value"]; }
    static Texts Told(const Run_Result& run) {
        Texts boxes = run.Boxes();
        if (!boxes.empty() && boxes[0].starts_with("WARNING")) boxes.erase(boxes.begin());
        return boxes;
    }
    static std::ptrdiff_t Errors(const Run_Result& run) { return std::count(run.errors.begin(), run.errors.end(), '\n'); }
};

constexpr int pages = 4004, prf_file = 4006, prf_style = 4007, refine_program = 4102, contour_title = 4830, excl_match = 4616;
const std::string all_rows = "drop s1.xys s2.xys s3.xys s4.xys s5.xys s6.xys;", map = all_rows + "command 40031;",
                  hills = all_rows + "command 40125;", lines_in_space = all_rows + "command 40028;";

TEST_F(Preferences_Dialogs, EachFieldSetsItsPreference) {
    const Filling filling = Fill_All();
    const Run_Result run =
        Do("$;!;" + filling.statements + "$;press Apply;press \"Save global preferences\";$;press Exit;$;!;press Apply;close;$");
    EXPECT_EQ(run.status, 0) << run.errors;
    const auto prefs = run.With("prefs");
    Json expected = prefs.at(0), boxes = expected;
    for (const auto& [place, value] : filling.values) {
        Json& target = expected["prefs"][Json::json_pointer(place)];
        EXPECT_NE(target, value) << place;
        target = value;
    }
    boxes["prefs"]["always_save_context"] = true;  // these two do not wait
    boxes["prefs"]["use_internal_editor"] = false;
    EXPECT_EQ(Json::diff(boxes, prefs.at(1)), Json::array());
    for (const std::size_t i : {2, 3}) EXPECT_EQ(Json::diff(expected, prefs.at(i)), Json::array()) << i;
    expected["prefs"]["contour_title"] = "Heating (Saturation:     512.5";  // of a second time
    EXPECT_EQ(Json::diff(expected, prefs.at(4)), Json::array());

    expected["prefs"]["contour_title"] = "Heating";  // the saturation goes with the run of the program
    expected["prefs"]["saturation_on"] = false;
    expected["prefs"]["saturation_value"] = 1e6;
    EXPECT_EQ(Json::diff(expected, Do("$").With("prefs").at(0)), Json::array());

    fs::remove_all(directory / "home/.qxs");
    const auto left = Do("!;" + filling.statements + "press Exit;$;!;" + filling.statements + "close;$").With("prefs");
    for (const Json& after : left) EXPECT_EQ(Json::diff(boxes, after), Json::array());
}

TEST_F(Preferences_Dialogs, ThePictureShowsWhatIsApplied) {
    const std::string rgb = "colour 1 2 3;press ", colour = "\"colour\":" + std::to_string(1 + 2 * 256 + 3 * 65536);
    const std::string one = "drop s1.xys;", two = "drop s1.xys s2.xys;", refined = "drop refined.prf;";
    const struct {
        std::string open, statements;
        const char* part;   // of the picture
        std::string shown;  // which was not there before
    } cases[] = {
        {one, rgb + "\"Graphic 2D/Background\"", "fills", colour},
        {one, rgb + "\"Graphic 2D/Foreground\"", "fills", colour},
        {one, rgb + "\"Line preferences/1/Colour\"", "lines", colour},
        {one, rgb + "\"Line preferences/1/Colour\"", "markers", colour},
        {one, "set 1/Type custom6", "markers", "\"glyph\":227"},
        {one, "set 1/Pitch 5", "lines", "\"width\":5"},
        {one, "set \"Title for graph single file\" \"My sample\"", "texts", "\"text\":\"My sample\""},
        {two, "set \"Title for graph multi file\" Series", "texts", "\"text\":\"Series\""},
        {two, rgb + "Title/Colour", "texts", colour},
        {one, rgb + "\"Scale Y/Colour\"", "texts", colour},
        {one, rgb + "\"Label X/Colour\"", "texts", colour},
        {refined, rgb + "Ycalc/Colour", "lines", colour},
        {refined, rgb + "\"Reflexions preferences ./Colour\"", "lines", colour},
        {refined, "set \"Match color with foreground\" 0;" + rgb + "\"Exclude regions preferences/Colour\"", "lines", colour},
        {map, rgb + "\"Graph 2D contour/Background\"", "fills", colour},
        {map, "set \"Title for graph multi file 2D contour\" Heating", "texts", "\"text\":\"Heating\""},
        {map, "set \"Graph 2D contour/Type graph\" 5;set \"# Levels\" 8", "texts", "\"text\":\"8 Max\""},
        {lines_in_space, rgb + "\"Graphic 3D/Background\"", "fills", colour},
        {hills, rgb + "\"Graphic 3D Surf/Background\"", "fills", colour},
    };
    for (const auto& c : cases) {
        const Run_Result run = Do(c.open + "print picture;!;" + c.statements + ";print picture;press Apply;press Exit;print picture");
        EXPECT_EQ(run.errors, "") << c.statements;
        const auto pictures = run.With("fills");
        ASSERT_EQ(pictures.size(), 3u) << c.statements;
        EXPECT_EQ(pictures[0], pictures[1]) << c.statements;
        EXPECT_EQ(pictures[0][c.part].dump().find(c.shown), std::string::npos) << c.statements;
        EXPECT_NE(pictures[2][c.part].dump().find(c.shown), std::string::npos) << c.statements << pictures[2][c.part];
    }
}

TEST_F(Preferences_Dialogs, ThePageOfThePlotComesFirst) {
    const std::pair<std::string, const char*> cases[] = {{"", "1"},
                                                         {"drop s1.xys;", "2"},
                                                         {"drop s1.xys s2.xys;command 40226;", "2"},
                                                         {"drop s1.xys;command 40024;", "2"},
                                                         {"drop refined.prf;", "6"},
                                                         {map, "8"},
                                                         {all_rows + "command 40227;", "8"},
                                                         {lines_in_space, "3"},
                                                         {hills, "4"}};
    for (const auto& [open, page] : cases) {
        const Run_Result run = Do(open + "!;?;set \"Line preferences/1/Pitch\" 2;set Pages \"Profile PRF\";set Pages \"Graphic 3D\"");
        EXPECT_EQ(Value(run.With("dialog").at(0), pages), page) << open;
        EXPECT_EQ(Errors(run), open.starts_with(all_rows) ? 2 : 0) << run.errors;  // pages of rows in a map and in space
    }
}

TEST_F(Preferences_Dialogs, TheRefinedProfileIsTold) {
    const std::pair<const char*, Texts> cases[] = {{"drop s1.xys;", {"--- No file PRF loaded --", "---"}},
                                                   {"drop s1.xys refined.prf;", {"refined.prf", "2"}},
                                                   {"drop single.prf;", {"single.prf", "1"}}};
    for (const auto& [open, told] : cases) {
        const Run_Result run = Do(std::string(open) + "!;?;set Ydif/Style 2;set Ycalc/Pitch 2;set Ydif/Marker 3;set \"Scale X/Format\" 1");
        const Json dialog = run.With("dialog").at(0);
        EXPECT_EQ((Texts{Value(dialog, prf_file), Value(dialog, prf_style)}), told);
        EXPECT_EQ(Errors(run), told[0] == "single.prf" ? 3 : 1) << run.errors;  // no line joins its points; no plot reads the format
    }
}

TEST_F(Preferences_Dialogs, ColoursFollowOneAnother) {
    const std::string blue = "0 0 255", grey = "192 192 192", own = "1 2 3", given = "colour 1 2 3;";
    const std::string line = "press \"Line preferences/2/Colour\";", marker = "press \"Marker preferences/2/Colour\";";
    const std::string ground = "press \"Graphic 2D/Foreground\";", apply = "press Apply;", match = "set \"Match color with foreground\" ";
    const std::pair<std::string, Texts> cases[] = {
        {line, {blue, blue, "1", grey}},  // the selector was cancelled
        {given + line, {own, own, "1", grey}},
        {given + marker, {blue, own, "0", grey}},
        {"set 2/Match 0;" + given + line, {own, blue, "0", grey}},
        {"set 2/Match 0;" + given + line + "set 2/Match 1;", {own, own, "1", grey}},
        {apply, {blue, blue, "1", grey}},
        {given + ground, {blue, blue, "1", grey}},
        {given + ground + apply, {blue, blue, "1", own}},
        {match + "0;" + given + ground + apply, {blue, blue, "1", grey}},
        {match + "0;" + apply + match + "1;" + apply, {blue, blue, "1", "235 235 235"}},
    };
    for (const auto& [statements, seen] : cases) {
        const Json dialog = Do("!;" + statements + "?").With("dialog").at(0);
        constexpr int excl_colour = excl_match - 1;
        // Line, marker and mark of slot 2, and the colour of excluded stretches.
        EXPECT_EQ((Texts{Value(dialog, 4508), Value(dialog, 4511), Value(dialog, 4514), Value(dialog, excl_colour)}), seen) << statements;
        EXPECT_EQ(Field(dialog, excl_colour)["enabled"].get<bool>(), Value(dialog, excl_match) == "0") << statements;
    }
}

// The title of the map tells of the saturation, and the grid holds it.
TEST_F(Preferences_Dialogs, SaturationCutsTheMapAndIsTold) {
    const auto saturate = [](const std::string& value, const char* on = "1") {
        return "set \"Saturation Value (counts)\" " + value + ";set \"Apply Saturation Value\" " + on + ";press Apply;?;print grid;";
    };
    const Run_Result run = Do(map + "!;" + saturate("500") + saturate("600") + saturate("1e9") + saturate("700", "0") + "$");
    const auto dialogs = run.With("dialog"), grids = run.With("grid");
    const std::string plain = "Plot 2D contour multi file", second = plain + " (Saturation:     600.0";
    const Texts titles = {plain + " (Saturation:    500.0 )", second, second, plain};
    const double largest[] = {500, 600, 600, 1086};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(Value(dialogs.at(i), contour_title), titles[i]);
        EXPECT_EQ(grids.at(i)["grid"]["z_max"], largest[i]);
    }
    EXPECT_EQ(run.Marked().at(2), std::vector<int>{contour_title - 1});
    EXPECT_EQ(run.With("prefs")[0]["prefs"]["saturation_value"], 600);
    const std::string long_title = "set \"Title for graph multi file 2D contour\" " + std::string(170, 'a') + ';';
    const Run_Result surface = Do(hills + "!;" + saturate("300") + long_title + "press Apply;?");
    EXPECT_EQ(surface.With("grid").at(0)["grid"]["z_max"], 300);
    EXPECT_EQ(surface.Marked().at(1), std::vector<int>{contour_title});
    EXPECT_EQ(Told(surface), Texts{"Title for graph multi file 2D contour: with the saturation it would have more than 180 characters"});
}

TEST_F(Preferences_Dialogs, ApplyShowsTheWholeRangeAndTheWayBackTheOldOne) {
    for (const std::string& form : {all_rows, map}) {
        const auto states = Do(form +
                               "print state;mouse down left 400 150;mouse up left 600 690;print state;!;press Apply;press Exit;print "
                               "state;command 40503;print state")
                                .With("plot_type");
        ASSERT_EQ(states.size(), 4u);
        for (const char* end : {"x_view_min", "x_view_max"}) {
            EXPECT_NE(states[0][end], states[1][end]) << form;
            EXPECT_EQ(states[0][end], states[2][end]) << form;
            EXPECT_EQ(states[1][end], states[3][end]) << form;
        }
        for (const char* other : {"y_view_min", "first_pattern", "last_pattern"}) EXPECT_EQ(states[1][other], states[2][other]) << form;
    }
}

TEST_F(Preferences_Dialogs, ABadValueKeepsTheDialogAndChangesNothing) {
    const struct {
        std::string field, given;
        const char *page, *told;
    } cases[] = {{"Title/Size", "0", "2", "Title, Size: \"0\" is not a whole number from 1 to 1000"},
                 {"12/Pitch", "6", "5", "Line 12, Pitch: \"6\" is not a whole number from 1 to 5"},
                 {"3/Size", "big", "5", "Marker 3, Size: \"big\" is not a whole number from 1 to 1000"},
                 {"Granularity", "51", "8", "Granularity: \"51\" is not a whole number from 3 to 50"},
                 {"Quendrix exe", "a name of more than 30 letters.", "1",
                  "Quendrix exe: \"a name of more than 30 letters.\" is not one line of at most 30 characters"}};
    for (const auto& c : cases) {
        const Run_Result run = Do("$;!;set \"Title for graph single file\" other;colour 1 1 1;press C1;set Pages 3;set \"" + c.field +
                                  "\" \"" + c.given + "\";press Apply;$;?;press Exit;$");
        EXPECT_EQ(Told(run), Texts{c.told});
        for (const Json& prefs : run.With("prefs")) EXPECT_EQ(prefs, run.With("prefs")[0]) << c.field;
        EXPECT_EQ(Value(run.With("dialog").at(0), pages), c.page) << c.field;
        EXPECT_EQ(run.Marked().at(0).size(), 1u) << c.field;
    }
}

TEST_F(Preferences_Dialogs, SelectorsFillTheirFields) {
    const Texts fields = {"Quendrix exe", "Text editor", "Web navigator", "PDF reader", "CIF viewer", "PS viewer", "Compression"};
    const std::string here = fs::canonical(directory);
    std::string script = "!;directory home;press \"Path Quendrix/...\"";
    for (const std::string& field : fields) script += ";files \"" + field + "\";press \"" + field + "/...\"";
    const Run_Result run =
        Do(script + ";?;press \"Path Quendrix/...\";press \"Compression/...\";?;files home/wqx2k;press \"Quendrix exe/...\";?");
    EXPECT_EQ(Errors(run), 2) << run.errors;  // of the two that were cancelled
    const auto dialogs = run.With("dialog");
    EXPECT_EQ(Value(dialogs.at(0), refine_program - 1), here + "/home");
    for (std::size_t i = 0; i < fields.size(); ++i)
        EXPECT_EQ(Value(dialogs[0], refine_program + static_cast<int>(i)), here + '/' + fields[i]);
    EXPECT_EQ(dialogs[0], dialogs.at(1));
    EXPECT_EQ(Value(dialogs.at(2), refine_program), "wqx2k");  // of the suite's directory
}

TEST_F(Preferences_Dialogs, SettingsAreSavedAsAppliedAndLoaded) {
    const std::string title = "set \"Title for graph single file\" ", file = "vntl050.set";
    const Run_Result saved =
        Do("!;" + title + "kept;press Apply;" + title + "lost;press \"Save global preferences\";?;press \"Load local pref.\";press Exit");
    EXPECT_EQ(Told(saved), Texts{"ERROR: Local preferences file not found"});
    fs::copy_file(directory / "home/.qxs" / file, directory / file);
    const Run_Result loaded =
        Do(all_rows + "$;!;" + title +
           "other;press Apply;set \"Graph 2D contour/Type graph\" 3;press \"Load local pref.\";?;$;press Exit;print picture");
    EXPECT_EQ(loaded.errors, "");
    EXPECT_EQ(loaded.With("prefs").at(0), loaded.With("prefs").at(1));
    EXPECT_EQ(loaded.With("prefs")[0]["prefs"]["title_single"], "kept");
    EXPECT_EQ(Value(loaded.With("dialog").at(0), 4805), "Line base - fine");
    // A broken file leaves the defaults, but for the programs; one that cannot be written the file as it was.
    std::string text = Text_Of(directory / file);
    std::ofstream(directory / file) << text.substr(0, text.size() - 12);
    fs::permissions(directory / "home/.qxs" / file, fs::perms::owner_read);
    const Run_Result broken = Do("pref cmd_editor ed;!;press \"Load local pref.\";$;press \"Save local pref.\"");
    EXPECT_EQ(broken.status, 1);
    EXPECT_EQ(
        Told(broken).at(0),
        "ERROR: Reading local preferences file.\nError reading QuickView preferences values\nThe preferences default will be restore");
    EXPECT_TRUE(Told(broken).at(1).starts_with("Trouble saving preferences! Check file!\n")) << Told(broken)[1];
    EXPECT_NE(Told(broken)[1].find(file), std::string::npos);
    EXPECT_EQ(broken.With("prefs").at(0)["prefs"]["title_single"], "");
    EXPECT_EQ(broken.With("prefs")[0]["prefs"]["cmd_editor"], "ed");
    EXPECT_EQ(Text_Of(directory / "home/.qxs" / file), text);
}

TEST_F(Preferences_Dialogs, TextsAreOpenedByTheEditorOfThePreferences) {
    fs::create_directories(directory / "home/.qxs");
    fs::create_directories(directory / "suite");
    std::ofstream(directory / "home/.qxs/quendrix.dir") << "/two words\nmodel.pcr\n";
    const Run_Result run =
        Do("programs off;!;set \"Use internal text editor\" 0;set \"Text editor\" \"/opt/my editor\";press Apply;press Exit;command "
           "40104;command 40107;pref cmd_editor \"\";command 40107;print state;command 40104",
           "QUENDRIX=" + Quoted(directory / "suite"));
    Texts started;
    for (const Json& line : run.With("started")) started.push_back(line["started"].get<std::string>() + (line["waited"] ? " waited" : ""));
    EXPECT_EQ(started, (Texts{"/opt/my editor \"/two words/model.pcr\"", "/opt/my editor", "xdg-open \"/two words/model.pcr\""}));
    EXPECT_EQ(run.With("plot_type").at(0)["status"][0], "The preferences name no program for this.");
}

}  // namespace
}  // namespace vntl
