#include <algorithm>

#include "calc/x_conversion.hpp"
#include "commands/plot/spectral_lines.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr int first_line_command = 40216, line_commands = 4;
constexpr float least_wavelength = 0.1f;  // angstrom: below, the row brings none

}  // namespace

void Spectral_Lines_On(Session& session, Ask& ask) {
    Interface_State& menu = session.interface;
    session.plot.spectral.on = true;
    menu.Enable(lines_on_command, false);
    menu.Enable(lines_off_command, true);
    for (int line = 0; line < line_commands; ++line) menu.Enable(first_line_command + line, true);
    menu.Check(lines_menu_command, true);
    const X_Constants& conv = session.store.Pattern(1).conv;
    if (std::min({conv[0], conv[1], conv[3]}) < least_wavelength) Spectral_Lines_Dialog(session, ask);
}

void Spectral_Lines_Off(Session& session) {
    Interface_State& menu = session.interface;
    session.plot.spectral = {};
    for (int line = 0; line < line_commands; ++line) {
        menu.Check(first_line_command + line, false);
        menu.Enable(first_line_command + line, false);
    }
    menu.Check(lines_menu_command, false);
    menu.Enable(lines_on_command, true);
    menu.Enable(lines_off_command, false);
}

void Toggle_Spectral_Line(Session& session, int line) {
    bool& on = session.plot.spectral.line[static_cast<std::size_t>(line)];
    on = !on;
    session.interface.Check(first_line_command + line, on);
}

}  // namespace vntl
