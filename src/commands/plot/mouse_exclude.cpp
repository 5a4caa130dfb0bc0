#include <algorithm>

#include "commands/plot/mouse.hpp"
#include "commands/plot/mouse_tools.hpp"
#include "commands/profiles/excluded_regions.hpp"
#include "plot/plot.hpp"
#include "session/changes.hpp"

namespace vntl {

namespace {

Status Exclude_In_Row(Session& session, int row, float lo, float hi) {
    Row_Change change(session, "excluded region" + Of_Profiles(session, {row}), {row});
    if (!Add_Excluded_Region(session.store.Info(row), lo, hi))
        return Status::Fail("Profile No " + std::to_string(row) + "has too much number of Excluded Regions");
    change.Keep();
    return Status::Done();
}

void Finish_Band(Session& session, Ask& ask) {
    const Rubber_Shape rubber = session.plot.rubber;
    const float a = In_Data(session.plot, rubber.x0, rubber.y0).x, b = In_Data(session.plot, rubber.x1, rubber.y1).x;
    const float lo = std::min(a, b), hi = std::max(a, b);
    End_Mode_Of_Mouse(session);
    if (Is_Click(rubber) || !(lo < hi)) return;  // a click marks nothing
    const bool alone = session.store.nperfiles() == 1;
    const Status status = alone ? Exclude_In_Row(session, 1, lo, hi) : Insert_Excluded_Region(session, ask, lo, hi);
    if (status.to_tell()) ask.Error(status.message);
    session.prefs.prf.excl_ignore_sides ? Plot_ReMake(session) : Plot_Redraw(session);
}

}  // namespace

void Start_Exclude_Mode(Session& session) {
    Enter_Mode(session, Move_Mode::exclude, Cursor_Shape::cross, "Draw over the stretch to exclude", command::select_excluded);
}

void MouseMovement_SelExclReg(Session& session, Ask& ask, const Message& message) {
    const WIN_MESSAGE& record = message.record;
    if (!Has_Meaning(session, record)) return;
    const Plot_State::Place held = Held_In_Box(session.plot, {record.x, record.y});
    switch (message.kind) {
        case Message_Kind::mouse_down:
            if (record.value1 == right_button) return End_Mode_Of_Mouse(session);
            if (record.value1 == left_button) Start_Rubber(session, Rubber_Kind::band, held);
            break;
        case Message_Kind::mouse_move:
            Show_Read_Outs(session, In_Data(session.plot, record.x, record.y));
            if (session.plot.rubber.active) Move_Rubber(session, held);
            break;
        case Message_Kind::mouse_up:
            if (record.value1 != left_button || !session.plot.rubber.active) break;
            Move_Rubber(session, held);
            Finish_Band(session, ask);
            break;
        default:
            break;
    }
}

}  // namespace vntl
