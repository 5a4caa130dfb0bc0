// Menu "Edit": taking changes back, and what is on the screen for other programs.
#include "commands/families.hpp"

#include "commands/application.hpp"
#include "commands/edit/clipboard.hpp"
#include "commands/plot/mouse.hpp"
#include "plot/plot.hpp"
#include "session/changes.hpp"
#include "session/modes.hpp"

namespace vntl {

namespace {

// A mode of the mouse may wait with rows that are no longer there.
template <bool (*go)(Session&)>
void Go(Application& app) {
    Cancel_Modes(app.session);
    if (!go(app.session)) return;
    Plot_Redraw(app.session);
    Tell_Count(app.session);
}

void Copy_The_Picture(Application& app) {
    Copy_Picture();
    app.session.interface.Note("The picture was copied to the clipboard");
}

void Copy_The_Points(Application& app) {
    const Status status = Copy_Data(app.session);
    status.failed ? app.ask.Error(status.message) : app.session.interface.Note("The points in view were copied to the clipboard");
}

constexpr Command commands[] = {
    {command::undo, "&Undo", "undo", Go<Undo_Change>, "Ctrl+Z", "Take the last change of profiles or lists back"},
    {command::redo, "&Redo", "redo", Go<Redo_Change>, "Ctrl+Shift+Z", "Make again what was taken back"},
    {command::copy_picture, "&Copy picture", "copy_picture", Copy_The_Picture, "Ctrl+C", "Copy the picture to the clipboard"},
    {command::copy_text, "Copy &points as text", "copy_text", Copy_The_Points, "Ctrl+Shift+C",
     "Copy the points in view to the clipboard, in columns"},
};

}  // namespace

Command_Family Edit_Commands() { return {commands}; }

}  // namespace vntl
