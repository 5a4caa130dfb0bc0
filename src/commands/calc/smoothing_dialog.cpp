#include "commands/calc/smoothing_dialog.hpp"

#include <optional>

#include "base/text.hpp"
#include "calc/arithmetic.hpp"
#include "calc/smoothing.hpp"
#include "commands/calc/live_preview.hpp"
#include "commands/modal.hpp"
#include "session/changes.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr int smoothing_dialog = 140;
constexpr int note = 1329, window_field = 1282, first_profile = 1020, all_profiles = 1021, new_profile = 1330, efficiency_file = 1647;
constexpr int window_at_first = 5;
constexpr std::size_t most_live_curves = 5;
constexpr int widest_entry = 9999;  // beyond what either filter takes, so that the user is told and not held back

struct Choice {
    int window = window_at_first;
    bool all = false, new_row = true, efficiency = false;
};

// What the two filters do not share.
struct Filter {
    std::string_view note;
    int largest_window;
    bool fourier;
    void (*smooth)(std::vector<float>& y, int window);

    bool Has_Window(int window) const { return window >= 1 && window <= largest_window; }
    bool Takes(Row_Kind kind) const { return fourier ? kind == Row_Kind::data || kind == Row_Kind::smoo : !Is_Refined(kind); }
    std::string Passed_Over(const std::string& file_name) const {
        return "Profile " + file_name + "\n" + (fourier ? "is not of DATA type." : "is of PRF type.") + " It will be ignored";
    }
};
constexpr Filter polynomial{"Select order polynomial", largest_polynomial_window, false,
                            [](std::vector<float>& y, int) { Five_Point_Filter(y); }};
constexpr Filter fourier{"No. points for Fourier window", largest_fourier_window, true,
                         [](std::vector<float>& y, int window) { Fourier_Filter(y, window); }};

// A new row, and an efficiency file of it, there is for the first profile alone.
void Couple_Fields(const Filter& filter) {
    const bool first = WDialogGetRadioButton(first_profile) == first_profile;
    WDialogFieldState(new_profile, first ? field_enabled : field_disabled);
    const bool makes_row = first && WDialogGetCheckBox(new_profile) != 0;
    WDialogFieldState(efficiency_file, filter.fourier && makes_row ? field_enabled : field_disabled);
}

void Fill(const Session& session, const Filter& filter) {
    WDialogPutString(note, filter.note);
    WDialogPutInteger(window_field, window_at_first);
    WDialogFieldState(window_field, filter.fourier ? field_enabled : field_disabled);
    WDialogPutRadioButton(first_profile);
    const int radio_state = session.plot.plot_type == Plot_Form::single ? field_disabled : field_enabled;
    for (const int radio : {first_profile, all_profiles}) WDialogFieldState(radio, radio_state);
    WDialogPutCheckBox(new_profile, 1);
    WDialogPutCheckBox(efficiency_file, 0);
    Couple_Fields(filter);
}

// A window of 0 where the field holds no whole number.
Choice Choice_In_Dialog() {
    return {WDialogGetInteger(window_field).value_or(0), WDialogGetRadioButton(first_profile) == all_profiles,
            WDialogGetCheckBox(new_profile) != 0, WDialogGetCheckBox(efficiency_file) != 0};
}

// What the filter would make of the first row, or of the first few that are shown. None where the window is none.
std::vector<Preview_Curve> Smoothed_Curves(const Profile_Store& store, const Filter& filter, const Choice& choice) {
    std::vector<Preview_Curve> curves;
    if (!filter.Has_Window(choice.window)) return curves;
    for (int row = 1; row <= (choice.all ? store.nperfiles() : 1) && curves.size() < most_live_curves; ++row) {
        if ((choice.all && !store.shown(row)) || !filter.Takes(store.Info(row).kind)) continue;
        Preview_Curve curve{row, store.Pattern(row).x, store.Pattern(row).y};
        filter.smooth(curve.y, choice.window);
        curves.push_back(std::move(curve));
    }
    return curves;
}

// Nothing when the user left the dialog, which stays open below a window that is none.
std::optional<Choice> Ask_For_Choice(Session& session, const Filter& filter) {
    Live_Preview live(session, smoothing_dialog);
    WDialogLoad(smoothing_dialog);
    Fill(session, filter);
    WDialogShow(0, Show_Kind::semi_modeless);
    const auto show = [&] { live.Show(Smoothed_Curves(session.store, filter, Choice_In_Dialog())); };
    const auto changed = [&](int field) {
        Couple_Fields(filter);
        if (field == window_field || field == first_profile || field == all_profiles) show();
    };
    show();
    std::optional<Choice> choice;
    while (!choice && Run_Modal(smoothing_dialog, {.changed = changed}) == button_ok) {
        choice = Choice_In_Dialog();
        if (filter.Has_Window(choice->window)) continue;
        choice.reset();
        Refuse_Field(window_field, "Incorrect value of parameter ");
    }
    WDialogUnload();
    return choice;
}

Status Write_Ratio(const Session& session, const std::vector<float>& raw, const std::vector<float>& smoothed) {
    std::vector<Efficiency_Line> lines;
    for (std::size_t i = 0; i < raw.size(); ++i) lines.push_back({static_cast<int>(i) + 1, 0, smoothed[i] > 0 ? raw[i] / smoothed[i] : 1});
    return Write_Efficiency_File(session.config.Here(efficiency_file_name), lines);
}

Status Smooth_First(Session& session, const Filter& filter, const Choice& choice) {
    Profile_Store& store = session.store;
    if (!filter.Takes(store.Info(1).kind)) return Status::Fail("Operation not permitted over this profile type");
    if (!choice.new_row) {
        Row_Change change(session, "smoothing" + Of_Profiles(session, {1}), {1}, part_y);
        filter.smooth(store.Pattern(1).y, choice.window);
        change.Keep();
        return Status::Done();
    }
    if (store.full()) return Status::Fail(std::string(table_full_text));
    Row_Change change(session, "smoothed profile");
    const int row = store.Append_Copy(1);
    Diffraction_Pattern_Type& smoothed = store.Pattern(row);
    filter.smooth(smoothed.y, choice.window);
    smoothed.title = Cut("Smoothing Fourier of " + store.Pattern(1).title, title_width);
    store.Info(row).kind = Row_Kind::smoo;
    store.Info(row).file_name = "<smoothing>";
    change.Keep();
    return filter.fourier && choice.efficiency ? Write_Ratio(session, store.Pattern(1).y, smoothed.y) : Status::Done();
}

void Smooth_All(Session& session, Ask& ask, const Filter& filter, int window) {
    Profile_Store& store = session.store;
    std::vector<int> rows = All_Rows(session);
    std::erase_if(rows, [&](int row) {
        const bool passed_over = !filter.Takes(store.Info(row).kind);
        if (passed_over) ask.Information(filter.Passed_Over(store.Info(row).file_name));
        return passed_over;
    });
    Row_Change change(session, "smoothing" + Of_Profiles(session, rows), rows, part_y);
    for (const int row : rows) filter.smooth(store.Pattern(row).y, window);
    change.Keep();
}

Status Smooth(Session& session, Ask& ask, const Filter& filter) {
    const std::optional<Choice> choice = Ask_For_Choice(session, filter);
    if (!choice) return Status::Cancel();
    if (!choice->all) return Smooth_First(session, filter, *choice);
    Smooth_All(session, ask, filter, choice->window);
    return Status::Done();
}

}  // namespace

Dialog_Resource Smoothing_Dialog_Resource() {
    return {smoothing_dialog,
            "Smoothing / filtering",
            {{{note, Field_Kind::label, ""}, {.number = window_field, .kind = Field_Kind::integer, .lo = 0, .hi = widest_entry}},
             {{.kind = Field_Kind::frame,
               .label = "Apply over",
               .pages = {{{},
                          {{{first_profile, Field_Kind::radio, "&First profile", first_profile},
                            {all_profiles, Field_Kind::radio, "&All profiles", first_profile}}}}}}},
             {{new_profile, Field_Kind::check_box, "Create a &new smoothed profile"}},
             {{efficiency_file, Field_Kind::check_box, "&Efficiency file: Raw/Smoothed"}},
             {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

Status Smooth_Polynomial(Session& session, Ask& ask) { return Smooth(session, ask, polynomial); }
Status Smooth_Fourier(Session& session, Ask& ask) { return Smooth(session, ask, fourier); }

}  // namespace vntl
