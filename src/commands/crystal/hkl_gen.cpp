#include "commands/crystal/hkl_gen.hpp"

#include "base/text.hpp"
#include "commands/application.hpp"
#include "commands/calculation_mode.hpp"
#include "commands/command.hpp"
#include "commands/crystal/hkl_gen_dialogs.hpp"
#include "commands/modal.hpp"
#include "plot/plot.hpp"

namespace vntl {

namespace {

// --- the dialog of the cell --------------------------------------------------------------------------------------------------------

void Set_Scale(Hkl_Gen_State& state, std::size_t leader, bool fine) {
    const float scale = fine ? Fine_Scale(leader) : coarse_scale;
    for (std::size_t i = 0; i < cell_parameters; ++i)
        if (state.ties[i].leader == leader) state.scale[i] = scale;
}

// The free parameters wait for their values; nothing slides yet.
void To_Start(Hkl_Gen_State& state) {
    state.running = false;
    state.cell = state.ties.Tied(state.cell);
    state.scale.fill(coarse_scale);
    WDialogSelect(cell_dialog);
    Put_Cell(state.cell);
    for (std::size_t i = 0; i < cell_parameters; ++i) Put_Slider(state, i, 0);
    Set_Cell_States(state);
}

void Tell_Count(const Session& session) {
    const std::size_t count = session.lists.hklgen.size();
    Put_Told(std::to_string(count) + (count == 1 ? " reflection" : " reflections"));
}

void Start(Session& session) {
    Hkl_Gen_State& state = session.hkl_gen;
    if (const Status status = Hkl_Gen_Run(session, Cell_In_Dialog()); status.failed) {
        if (Contains(status.message, "cell parameters")) Mark_Wrong_Cell(state, status.message);
        return Error_Box(status);
    }
    state.running = true;
    state.base = state.cell;
    Put_Cell(state.cell);
    for (std::size_t i = 0; i < cell_parameters; ++i) Put_Slider(state, i, 0);
    Set_Cell_States(state);
    Tell_Count(session);
    Plot_Redraw(session);
}

void Stop(Session& session) {
    To_Start(session.hkl_gen);
    Plot_Redraw(session);
}

void Change(Session& session) {
    const Status status = Hkl_Gen_Input(session);
    WDialogSelect(cell_dialog);
    if (status.to_tell()) Error_Box(status);
    if (status.ok()) To_Start(session.hkl_gen);
}

// The other parameters keep their values, and those that are tied to this one, with their sliders, follow. The marks alone change: a step
// costs a generation and no redraw. Of the messages that wait while the hand goes on the first finds the slider where it is by then,
// and the rest find nothing new. A cell that is refused is told in the dialog: a box would take the slider out of the hand.
void Slide(Session& session, std::size_t leader) {
    Hkl_Gen_State& state = session.hkl_gen;
    const int place = WDialogGetTrackbar(first_slider + static_cast<int>(leader));
    Cell_Values cell = state.cell;
    cell[leader] = state.At_Place(leader, place);
    cell = state.ties.Tied(cell);
    if (cell == state.cell) return;
    state.cell = cell;
    Put_Cell(cell);
    for (std::size_t i = 0; i < cell_parameters; ++i)
        if (i != leader && state.ties[i].leader == leader) Put_Slider(state, i, place);
    if (const Status status = Hkl_Gen_Run(session, cell); status.failed) return Put_Told(status.message);
    Tell_Count(session);
    Plot_Repaint(session);
}

// The present value becomes the zero of the slider, which then goes by other steps.
void Set_Fine(Hkl_Gen_State& state, std::size_t leader, bool fine) {
    if (fine == state.Fine(leader)) return;
    Set_Scale(state, leader, fine);
    for (std::size_t i = 0; i < cell_parameters; ++i) {
        if (state.ties[i].leader != leader) continue;
        state.base[i] = state.cell[i];
        Put_Slider(state, i, 0);
    }
}

// What is tied to a parameter is shown as the parameter is typed.
void Type(const Hkl_Gen_State& state, std::size_t leader) {
    const Cell_Values cell = Cell_In_Dialog();
    for (std::size_t i = 0; i < cell_parameters; ++i)
        if (i != leader && state.ties[i].leader == leader) WDialogPutReal(first_value + static_cast<int>(i), cell[leader]);
}

void Field_Changed(Session& session, int field) {
    Hkl_Gen_State& state = session.hkl_gen;
    for (std::size_t i = 0; i < cell_parameters; ++i) {
        const int number = static_cast<int>(i);
        if (!state.running && field == first_value + number) Type(state, i);
        if (state.running && field == first_slider + number) Slide(session, i);
        if (state.running && field == first_fine + number) Set_Fine(state, i, WDialogGetCheckBox(field) == 1);
    }
}

void Unload(int dialog) {
    if (!WDialogLoaded(dialog)) return;
    WDialogSelect(dialog);
    WDialogUnload();
}

void Close_Dialogs(Hkl_Gen_State& state) {
    state.hkl_open = state.running = false;
    Unload(reflections_dialog);
    Unload(cell_dialog);
}

void Press(Session& session, int button) {
    WDialogClearMarks(cell_dialog);
    switch (button) {
        case button_start:
            return Start(session);
        case button_stop:
            return Stop(session);
        case button_change:
            return Change(session);
        case button_reflections:
            return Show_Reflections_Dialog();
        case button_cancel:
            Close_Dialogs(session.hkl_gen);
            return End_Mode(session, true);
        default:
            return;
    }
}

void Serve_Reflections_Dialog(const Message& message) {
    if (message.kind != Message_Kind::push_button) return;
    message.record.value1 == button_cancel ? Unload(reflections_dialog) : Clear_Reflections();
}

}  // namespace

void Hkl_Gen(Application& app) {
    Session& session = app.session;
    Hkl_Gen_State& state = session.hkl_gen;
    if (session.store.nperfiles() == 0) return;
    if (const Status status = Hkl_Gen_Input(session); status.failed) {
        Tell(app, status);
        return;
    }
    if (state.hkl_open) return To_Start(state);
    session.lists.hklgen.clear();
    Begin_Mode(session, Click_Mode::reflections);
    WDialogLoad(cell_dialog);
    To_Start(state);
    Show_Cell_Dialog(state);
    WMessageEnable(cell_dialog, Message_Kind::field_changed, true);
    state.hkl_open = true;
}

std::vector<int> Hkl_Gen_Dialogs() { return {cell_dialog, reflections_dialog}; }
bool Is_Of_Hkl_Gen(int dialog) { return dialog == cell_dialog || dialog == reflections_dialog; }

void Serve_Hkl_Gen(Application& app, const Message& message) {
    WDialogSelect(message.record.win);
    if (message.record.win == reflections_dialog) return Serve_Reflections_Dialog(message);
    if (message.kind == Message_Kind::push_button) Press(app.session, message.record.value1);
    if (message.kind == Message_Kind::field_changed) Field_Changed(app.session, message.record.value2);
}

void Follow_Hkl_Gen(Session& session) {
    if (session.hkl_gen.hkl_open && session.plot.ClickMode != Click_Mode::reflections) Close_Dialogs(session.hkl_gen);
}

void Collect_Pointed_Reflections(const Session& session) {
    if (!WDialogLoaded(reflections_dialog)) return;
    std::vector<Reflection_Mark> marks;
    for (const int entry : session.plot.hits.entries) marks.push_back(session.lists.hklgen[static_cast<std::size_t>(entry - 1)]);
    WDialogSelect(reflections_dialog);
    Add_Reflections(marks);
}

}  // namespace vntl
