#include <algorithm>
#include <array>

#include "calc/x_conversion.hpp"
#include "commands/plot/spectral_lines.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr std::array line_commands = {command::line_1, command::line_2, command::line_3, command::line_4};
constexpr float least_wavelength = 0.1f;  // angstrom: below, the row brings none

}  // namespace

void Spectral_Lines_On(Session& session) {
    Interface_State& menu = session.interface;
    session.plot.spectral.on = true;
    menu.Enable(command::lines_on, false);
    menu.Enable(command::lines_off, true);
    for (const int line : line_commands) menu.Enable(line, true);
    menu.Check(command::lines_menu, true);
    const X_Constants& conv = session.store.Pattern(1).conv;
    if (std::min({conv[0], conv[1], conv[3]}) < least_wavelength) Spectral_Lines_Dialog(session);
    Tell_Without_Spectral_Lines(session);
}

void Tell_Without_Spectral_Lines(Session& session) {
    if (std::ranges::count(session.plot.spectral.line, true) > 0) return;
    session.interface.Status_Text(1, "No spectral line is chosen: check one in the menu Spectral Lines");
}

void Spectral_Lines_Off(Session& session) {
    Interface_State& menu = session.interface;
    session.plot.spectral = {};
    for (const int line : line_commands) {
        menu.Check(line, false);
        menu.Enable(line, false);
    }
    menu.Check(command::lines_menu, false);
    menu.Enable(command::lines_on, true);
    menu.Enable(command::lines_off, false);
}

void Toggle_Spectral_Line(Session& session, int line) {
    bool& on = session.plot.spectral.line[static_cast<std::size_t>(line)];
    on = !on;
    session.interface.Check(line_commands[static_cast<std::size_t>(line)], on);
}

}  // namespace vntl
