// Menu "Edit": what is on the screen, for other programs.
#include "commands/families.hpp"

#include "commands/application.hpp"
#include "commands/edit/clipboard.hpp"

namespace vntl {

namespace {

void Copy_The_Picture(Application&) { Copy_Picture(); }

void Copy_The_Points(Application& app) {
    if (const Status status = Copy_Data(app.session); status.failed) app.ask.Error(status.message);
}

constexpr Command commands[] = {
    {command::copy_picture, "&Copy picture", "copy_picture", Copy_The_Picture, "Ctrl+C", "Copy the picture to the clipboard"},
    {command::copy_text, "Copy &points as text", "copy_text", Copy_The_Points, "Ctrl+Shift+C",
     "Copy the points in view to the clipboard, in columns"},
};

}  // namespace

Command_Family Edit_Commands() { return {commands}; }

}  // namespace vntl
