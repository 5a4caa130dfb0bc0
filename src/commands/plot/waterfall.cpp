#include "commands/plot/waterfall.hpp"

#include <cmath>

#include "commands/modal.hpp"
#include "plot/plot.hpp"
#include "session/desk/waterfall.hpp"

namespace vntl {

namespace {

constexpr int waterfall_dialog = 472;
enum Field { slider = 4720, percent_field, percent_unit, even, by_temperature, hidden_lines, told, button_reset };
constexpr float most_percent = 100;

std::string Told_Of(const Session& session, const Waterfall& waterfall) {
    const bool unknown = waterfall.by_temperature && !Temperatures_Differ(session.store);
    return unknown ? "Not every shown profile has a temperature of its own: they stand evenly." : "";
}

// `slid`: it came by the slider, which is in the hand.
void Put_Offset(float offset, bool slid) {
    WDialogPutReal(percent_field, most_percent * offset);
    if (!slid) WDialogPutTrackbar(slider, static_cast<int>(std::lround(most_percent * offset)));
}

std::optional<float> Typed_Offset() {
    const std::optional<float> percent = WDialogGetReal(percent_field);
    if (!percent || !(*percent >= 0 && *percent <= most_percent)) return {};
    return *percent / most_percent;
}

// As the fields tell it; an offset that is none yet, for it is being typed, stays the one before.
Waterfall In_Fields(const Waterfall& before, int changed) {
    Waterfall waterfall{before.offset, WDialogGetRadioButton(even) == by_temperature, WDialogGetCheckBox(hidden_lines) == 1};
    if (changed == slider) {
        // The place nearest to a finer offset stands for it, as long as it is not left.
        const int place = WDialogGetTrackbar(slider);
        if (place != std::lround(most_percent * before.offset)) waterfall.offset = static_cast<float>(place) / most_percent;
    }
    if (changed == percent_field) waterfall.offset = Typed_Offset().value_or(before.offset);
    return waterfall;
}

// Of the messages that wait while the hand goes on the first finds the slider where it is by then, and the rest find nothing new.
void Change(Session& session, const Waterfall& waterfall) {
    if (waterfall == session.plot.waterfall) return;
    Set_Waterfall(session.store, session.plot, waterfall, session.look);
    WDialogPutString(told, Told_Of(session, waterfall));
    Plot_Redraw(session);
    WDialogSelect(waterfall_dialog);
}

void Follow(Session& session, int field) {
    const Waterfall waterfall = In_Fields(session.plot.waterfall, field);
    if (field == slider && waterfall.offset != session.plot.waterfall.offset) Put_Offset(waterfall.offset, true);
    if (field == percent_field) WDialogPutTrackbar(slider, static_cast<int>(std::lround(most_percent * waterfall.offset)));
    Change(session, waterfall);
}

void Fill(const Session& session) {
    const Waterfall& waterfall = session.plot.waterfall;
    Put_Offset(waterfall.offset, false);
    WDialogPutRadioButton(waterfall.by_temperature ? by_temperature : even);
    WDialogPutCheckBox(hidden_lines, waterfall.hidden_lines ? 1 : 0);
    WDialogPutString(told, Told_Of(session, waterfall));
}

void Reset(Session& session) {
    WDialogClearMarks(waterfall_dialog);
    Change(session, {});
    Fill(session);
}

// Whether the dialog may go. An offset that is none is told.
bool Closes() {
    if (!Number_In_Field(percent_field, "Offset")) return false;
    if (Typed_Offset()) return true;
    Refuse_Field(percent_field, "The offset is between 0 and 100 % of the height of a profile");
    return false;
}

}  // namespace

Dialog_Resource Waterfall_Dialog_Resource() {
    constexpr int slider_width = 50;  // characters: several pixels for each place
    const auto radio = [](int number, const char* label) {
        return Dialog_Field{.number = number, .kind = Field_Kind::radio, .label = label, .group = even};
    };
    return {waterfall_dialog,
            "Waterfall",
            {{{.number = slider, .kind = Field_Kind::trackbar, .label = "&Offset", .width = slider_width},
              {.number = percent_field, .kind = Field_Kind::real, .label = "Percent", .width = 7, .format = "(f6.2)", .unseen_label = true},
              {percent_unit, Field_Kind::label, "% of the height of a profile"}},
             {radio(even, "&Even"), radio(by_temperature, "By &temperature")},
             {{.number = hidden_lines, .kind = Field_Kind::check_box, .label = "&Hidden lines"}},
             {{.number = told, .kind = Field_Kind::label}},
             {{button_reset, Field_Kind::push_button, "&Reset"},
              {button_ok, Field_Kind::push_button, "&Close"},
              {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

void Waterfall_Dialog(Session& session) {
    Plot_State& plot = session.plot;
    const Waterfall before = plot.waterfall;
    const View view = plot.Shown_View();
    WDialogLoad(waterfall_dialog);
    Fill(session);
    WDialogShow(slider, Show_Kind::semi_modeless);
    const auto changed = [&session](int field) { Follow(session, field); };
    for (bool open = true; open;) {
        const int pressed = Run_Modal(waterfall_dialog, {.changed = changed});
        if (pressed == button_reset)
            Reset(session);
        else
            open = pressed == button_ok && !Closes();
        if (pressed == button_cancel && plot.waterfall != before) {
            plot.waterfall = before;
            plot.Show(view);
            Plot_Redraw(session);
            WDialogSelect(waterfall_dialog);
        }
    }
    WDialogUnload();
}

}  // namespace vntl
