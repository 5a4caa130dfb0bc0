#include "commands/plot/focus_profile.hpp"

#include <optional>

#include "commands/modal.hpp"
#include "commands/plot/mouse_tools.hpp"
#include "session/desk/overlay_place.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr int focus_dialog = 425;
enum Field { note = 1820, xmin, xmax, ymin, ymax };

constexpr Number_Field<View> limits[] = {
    {xmin, "Xmin =", &View::x1}, {xmax, "Xmax =", &View::x2}, {ymin, "Ymin", &View::y1}, {ymax, "Ymax", &View::y2}};

View Of_Data(const Session& session) {
    View view = session.plot.Shown_View();
    view.y1 = Foot_Of_Data(session.store, session.plot, session.look);
    return view;
}

bool In_Order(const View& view) {
    const bool falling_x = !(view.x1 < view.x2);
    if (falling_x || !(view.y1 < view.y2)) {
        const std::string axis = falling_x ? "X" : "Y";
        Refuse_Field(falling_x ? xmin : ymin, axis + "min must be below " + axis + "max");
        return false;
    }
    return true;
}

bool Show(Plot_State& plot, const View& view) {
    if (plot.Show(view)) return true;
    Refuse_Field(view.x2 - view.x1 > view.y2 - view.y1 ? xmax : ymax, "The window would leave the range of numbers");
    return false;
}

}  // namespace

Dialog_Resource Focus_Profile_Dialog_Resource() {
    const auto real = [](const Number_Field<View>& limit) {
        return Dialog_Field{.number = limit.field, .kind = Field_Kind::real, .label = limit.label, .width = 14};
    };
    return {focus_dialog,
            "Focus",
            {{{note, Field_Kind::label, "Focus 2D-plot between exact values of (x,y)"}},
             {real(limits[0]), real(limits[1])},
             {real(limits[2]), real(limits[3])},
             {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

Status Focus_Profile(Session& session) {
    // The numbers are counts where the scale shows counts, and those of the data where a difference is pinned below them.
    const Y_Scale scale = Scale_Of_Numbers(session);
    const View before = Of_Data(session);
    const View view{before.x1, before.x2, Off_Scale(scale, before.y1), Off_Scale(scale, before.y2)};
    WDialogLoad(focus_dialog);
    for (const auto& limit : limits) WDialogPutReal(limit.field, view.*limit.number);
    WDialogShow(xmin, Show_Kind::modal);
    const std::optional<View> shown = Record_In_Fields(limits);
    Status status = Status::Cancel();
    while (status.cancelled && Run_Modal(focus_dialog) == button_ok)
        if (const auto given = Record_In_Fields(limits); given && In_Order(*given)) {
            View chosen = *given;  // a limit that was left alone keeps its place, which a number of counts need not tell
            chosen.y1 = shown && given->y1 == shown->y1 ? before.y1 : On_Scale(scale, given->y1);
            chosen.y2 = shown && given->y2 == shown->y2 ? before.y2 : On_Scale(scale, given->y2);
            if (Show(session.plot, In_Box(session, chosen))) status = Status::Done();
        }
    WDialogUnload();
    return status;
}

}  // namespace vntl
