#include "commands/options/preferences_dialog.hpp"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/conversions.hpp"
#include "base/os.hpp"
#include "base/text.hpp"
#include "commands/modal.hpp"
#include "commands/options/preferences_form.hpp"
#include "commands/options/redraw.hpp"
#include "commands/options/saturation_title.hpp"
#include "session/desk/own_settings.hpp"
#include "session/session.hpp"
#include "session/settings_file.hpp"
#include "toolkit/window.hpp"

namespace vntl {

namespace {

constexpr std::string_view loading_title = "Loading preferences file";
constexpr std::size_t told_width = 90;  // characters

// --- one field ---------------------------------------------------------------------------------------------------------------------

// Shows a value; one outside the range of its field as the nearest of it, which a plot takes it for.
struct Show_Value {
    const Preference_Field& field;

    void operator()(Colour value) const { WDialogColour(field.number, value); }
    void operator()(bool value) const { WDialogPutCheckBox(field.number, value ? 1 : 0); }
    void operator()(float value) const {  // the saturation, as a title tells it where that says all
        const std::string text(Trim(Saturation_Text(value)));
        float told = 0;
        if (IStringToReal(text, told) && told == value) return WDialogPutString(field.number, text);
        WDialogPutReal(field.number, value);
    }
    void operator()(const std::string& value) const { WDialogPutString(field.number, value); }
    void operator()(int value) const {
        if (field.kind != Field_Kind::menu) return WDialogPutInteger(field.number, std::clamp(value, field.lo, field.hi));
        const int last = static_cast<int>(field.menu.texts.size());
        WDialogPutOption(field.number, std::clamp((value - field.menu.first) / field.menu.step + 1, 1, last));
    }
};

void Put(const Preference_Field& field, const Preferences& prefs) { std::visit(Show_Value{field}, Value_Of(*field.preference, prefs)); }

std::string Text_In(const Preference_Field& field) {
    if (field.kind != Field_Kind::menu) return WDialogGetString(field.number);
    return std::to_string(field.menu.first + field.menu.step * (WDialogGetMenu(field.number) - 1));
}

// Takes the value of a field; false where it holds none. Colours are in the working copy already, and the saturation counts only where
// it is wanted.
bool Take(const Preference_Field& field, Preferences& prefs) {
    if (field.kind == Field_Kind::colour_button || field.kind == Field_Kind::real) return true;
    if (field.kind == Field_Kind::integer && !WDialogGetInteger(field.number)) return false;
    return Set_Preference(prefs, field.preference->name, Text_In(field)).ok();
}

std::string Wanted(const Preference_Field& field) {
    if (field.kind == Field_Kind::string) return "one line of at most " + std::to_string(field.hi) + " characters";
    return "a whole number from " + std::to_string(field.lo) + " to " + std::to_string(field.hi);
}

// --- the dialog --------------------------------------------------------------------------------------------------------------------

Preference_Page First_Page(const Session& session) {
    if (session.quick_view.open) return Preference_Page::quick_view;
    switch (session.plot.plot_type) {
        case Plot_Form::none:
            return Preference_Page::environment;
        case Plot_Form::contour:
        case Plot_Form::contour_log:
            return Preference_Page::contour;
        case Plot_Form::graph3d:
            return Preference_Page::graph_3d;
        case Plot_Form::surface:
            return Preference_Page::surface_3d;
        default:
            return session.store.prf_loaded ? Preference_Page::profile_prf : Preference_Page::graph_2d;
    }
}

class Preferences_Dialog {
public:
    Preferences_Dialog(Session& session, Ask& ask, bool in_viewer)
        : session_(session), ask_(ask), in_viewer_(in_viewer), working_(session.prefs) {}

    void Run() {
        WDialogLoad(preferences_dialog);
        Fill();
        WDialogSetTab(pages_field, Tab_Of(in_viewer_ ? Preference_Page::contour : First_Page(session_)));
        WDialogShow(pages_field, Show_Kind::semi_modeless);  // "Apply" is to be seen
        const Modal_Routines routines{.changed = [this](int field) { Changed(field); }};
        for (int pressed = 0; pressed != exit_button;) {
            pressed = Run_Modal(preferences_dialog, routines);
            Press(pressed);
        }
        WDialogUnload();
    }

private:
    void Press(int button) {
        WDialogPutString(told_field, {});
        switch (button) {
            case apply_button:
                return Apply();
            case save_global_button:
                return Save(Settings_Mode::global);
            case save_local_button:
                return Save(Settings_Mode::local);
            case load_local_button:
                return Load_Local();
            default:
                break;
        }
        for (const Path_Button& path : form_.paths)
            if (path.number == button) Choose_Path(path);
        if (const Preference_Field* field = form_.With_Number(button)) Choose_Colour(*field);
    }

    // --- showing ---------------------------------------------------------------------------------------------------------------

    void Fill() {
        working_ = session_.prefs;
        for (const Preference_Field& field : form_.fields) Put(field, working_);
        Tell_Of_Profile();
        Set_States();
    }

    void Tell_Of_Profile() const {
        const int row = session_.store.ProfilePRFactive;
        const bool loaded = session_.store.prf_loaded;
        WDialogPutString(prf_file_field, loaded ? session_.store.Info(row).file_name : "--- No file PRF loaded --");
        WDialogPutString(prf_style_field, loaded ? std::to_string((row - 1) % profile_style_slots + 1) : "---");
    }

    void Set_States() const {
        const auto enable = [this](const char* name, bool on) {
            WDialogFieldState(form_.Number_Of(name), on ? field_enabled : field_disabled);
        };
        const bool refined = session_.store.prf_loaded;
        const bool lines = !refined || session_.store.Info(session_.store.ProfilePRFactive).kind != Row_Kind::mono;
        for (const char* name : {"ycalc_style", "ycalc_pitch", "ydif_style", "ydif_pitch"}) enable(name, lines);
        for (const char* name : {"xscale_format", "yscale_format"}) enable(name, false);  // no plot reads them
        enable("excl_colour", !working_.prf.excl_match);
        const bool of_rows = !in_viewer_ && !session_.plot.Is_Map() && !session_.plot.In_Space();
        for (const Preference_Page page : {Preference_Page::profiles_data, Preference_Page::profile_prf})
            WDialogTabState(pages_field, Tab_Of(page), of_rows ? field_enabled : field_disabled);
    }

    // --- working on the copy ---------------------------------------------------------------------------------------------------

    // The focus that enters a field is told as a change of it too: what has not changed is left.
    void Changed(int number) {
        const Preference_Field* field = form_.With_Number(number);
        if (field == nullptr || field->kind != Field_Kind::check_box) return;
        bool& mark = *std::get<bool*>(field->preference->target(working_));
        const bool on = WDialogGetCheckBox(number) != 0;
        if (on == mark) return;
        mark = on;
        const std::string& name = field->preference->name;
        if (name == "always_save_context" || name == "use_internal_editor")  // these do not wait for "Apply"
            *std::get<bool*>(field->preference->target(session_.prefs)) = on;
        for (ProfileStyle& style : working_.profile_styles)
            if (&style.match_colours == &mark && on) style.marker_colour = style.line_colour;
        Show_Colours();
        Set_States();
    }

    void Choose_Colour(const Preference_Field& field) {
        Colour& colour = *std::get<Colour*>(field.preference->target(working_));
        const std::optional<Colour> chosen = WSelectColour(colour);
        WDialogSelect(preferences_dialog);
        if (!chosen) return;
        colour = *chosen;
        for (ProfileStyle& style : working_.profile_styles) {
            if (&colour == &style.line_colour && style.match_colours) style.marker_colour = colour;
            if (&colour == &style.marker_colour) style.match_colours = style.match_colours && colour == style.line_colour;
        }
        Show_Colours();
    }

    // The colours of the copy, and the marks "Match", which a marker's own colour takes off.
    void Show_Colours() const {
        for (const Preference_Field& field : form_.fields) {
            const bool match = field.preference->page == Preference_Page::profiles_data && field.kind == Field_Kind::check_box;
            if (field.kind == Field_Kind::colour_button || match) Put(field, working_);
        }
    }

    // The selector opens where the present one stands.
    void Choose_Path(const Path_Button& path) const {
        const std::string present = WDialogGetString(path.field);
        std::string chosen;
        if (path.filter[0] == '\0') {
            chosen = WSelectDir(IOsDirExists(present) ? present : std::string(), path.title).value_or("");
        } else {
            const std::string beside(Directory_Part(present));
            const auto files = WSelectFile(path.filter, Select_Kind::open, {}, path.title, IOsDirExists(beside) ? beside : std::string());
            if (!files.empty()) chosen = files.front();
        }
        WDialogSelect(preferences_dialog);
        if (!chosen.empty()) WDialogPutString(path.field, Short_Of_Suite(path.field, chosen));
    }

    // The refinement program is known by its name alone where it stands in the suite's directory.
    std::string Short_Of_Suite(int field, const std::string& chosen) const {
        const std::string suite = WDialogGetString(form_.Number_Of("quendrix_dir"));
        const bool of_suite = field == form_.Number_Of("prg_refine") && !suite.empty() && Directory_Part(chosen) == suite;
        return std::string(of_suite ? File_Part(chosen) : chosen);
    }

    // --- taking over -----------------------------------------------------------------------------------------------------------

    void Refuse(int number, const std::string& why) const {
        const Preference_Field& field = *form_.With_Number(number);
        WDialogSetTab(pages_field, Tab_Of(field.preference->page));
        Refuse_Field(number, field.name + ": " + why);
    }

    // False, and the dialog shows which field, where one holds no value.
    bool Take_Pages(Preferences& taken) const {
        using Page = Preference_Page;
        for (const Page page : {Page::profiles_data, Page::graph_2d, Page::profile_prf, Page::quick_view, Page::graph_3d, Page::contour,
                                Page::surface_3d, Page::environment})
            for (const Preference_Field& field : form_.fields) {
                if (field.preference->page != page || Take(field, taken)) continue;
                Refuse(field.number, "\"" + WDialogGetString(field.number) + "\" is not " + Wanted(field));
                return false;
            }
        return true;
    }

    bool Take_Saturation(Preferences& taken) const {
        Saturation& saturation = taken.saturation;
        if (saturation.saturation_on) {
            const int field = form_.Number_Of("saturation_value");
            const std::optional<float> value = WDialogGetReal(field);
            if (!value || Saturation_Text(*value).empty()) {
                Refuse(field, "\"" + WDialogGetString(field) + "\" is not a number from -999999.9 to 9999999.9");
                return false;
            }
            saturation.saturation_value = *value;
        }
        std::string title = Title_With_Saturation(taken.contour.contour_title, saturation);
        const Preference& preference = *Find_Preference("contour_title");
        if (Characters(title) > static_cast<std::size_t>(preference.hi)) {
            Refuse(form_.Number_Of("contour_title"),
                   "with the saturation it would have more than " + std::to_string(preference.hi) + " characters");
            return false;
        }
        taken.contour.contour_title = std::move(title);
        return true;
    }

    // Excluded stretches take the colour of the foreground when that, or the wish for it, is new: else they could not be told from it.
    void Match_Excluded(Preferences& taken) const {
        const Preferences& before = session_.prefs;
        const bool news = !before.prf.excl_match || before.graph2d.frame_foreground != taken.graph2d.frame_foreground;
        if (taken.prf.excl_match && news) taken.prf.excl_colour = taken.graph2d.frame_foreground;
    }

    // All or nothing.
    void Apply() {
        Preferences taken = working_;
        if (!Take_Pages(taken) || !Take_Saturation(taken)) return;
        Match_Excluded(taken);
        session_.prefs = working_ = taken;
        for (const char* name : {"contour_title", "excl_colour"}) Put(*form_.With_Number(form_.Number_Of(name)), taken);
        Show(true);
    }

    void Show(bool whole_range) const {
        if (in_viewer_)
            Show_Other_Windows(session_);
        else
            whole_range ? Show_Whole_Range(session_, ask_) : Show_Present_View(session_, ask_);
        WDialogSelect(preferences_dialog);
    }

    // --- the settings file -------------------------------------------------------------------------------------------------------

    void Tell(std::string_view what, const std::string& file) const {
        WDialogPutString(told_field, std::string(what) + Elide_Middle(file, told_width));
    }

    void Save(Settings_Mode mode) {
        Preferences own;
        Look look;
        Own_Settings(session_, own, look);
        const Status status = Write_Preferences(own, session_.config, mode, look);
        if (status.failed) return Error_Box(Status::Fail_File("Trouble saving preferences! Check file!\n" + status.message));
        Settings_Saved(session_);
        Tell("Saved in ", Settings_File(session_.config, session_.prefs, mode));
    }

    void Loading_Box(std::string text) const {
        ask_.Box({Box_Buttons::ok, Box_Icon::exclamation, 1, std::move(text), std::string(loading_title), true});
        WDialogSelect(preferences_dialog);
    }

    void Load_Local() {
        const std::string file = session_.config.Here(session_.config.set_file);
        if (!IOsFileExists(file)) return Loading_Box("ERROR: Local preferences file not found");
        const bool sides_ignored = session_.prefs.prf.excl_ignore_sides;
        const Status status = Read_Preferences(session_.prefs, file, &session_.look);
        if (status.failed) {
            Loading_Box("ERROR: Reading local preferences file.\n" + status.message + "\nThe preferences default will be restore");
            Set_Default_Preferences(session_.prefs);
            session_.look = {};
        }
        Take_Settings(session_);
        // The file keeps no saturation: the one in force is told in the new title where it has room.
        std::string title = Title_With_Saturation(session_.prefs.contour.contour_title, session_.prefs.saturation);
        (void)Set_Preference(session_.prefs, "contour_title", title);
        Fill();
        Show(session_.prefs.prf.excl_ignore_sides != sides_ignored);
        if (status.ok()) Tell("Loaded from ", file);
    }

    Session& session_;
    Ask& ask_;
    bool in_viewer_;
    Preferences working_;
    const Preferences_Form& form_ = The_Preferences_Form();
};

}  // namespace

Dialog_Resource Preferences_Dialog_Resource() { return The_Preferences_Form().resource; }

void Preferences_Main(Session& session, Ask& ask) { Preferences_Dialog(session, ask, false).Run(); }
void Preferences_In_Viewer(Session& session, Ask& ask) { Preferences_Dialog(session, ask, true).Run(); }

}  // namespace vntl
