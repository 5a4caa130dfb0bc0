#include "commands/plot/spectral_lines.hpp"

#include <array>
#include <cmath>
#include <limits>

#include "calc/x_conversion.hpp"
#include "commands/modal.hpp"
#include "session/changes.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr int lines_dialog = 416;
enum Field { anode_menu = 1741, lines_grid };
enum Column { k_alpha1 = 1, k_alpha2, k_beta, l_alpha };
constexpr float l_alpha_of_tungsten = 1.4763f;  // angstrom: tungsten from the filament settles on old anodes
constexpr float least_wavelength = 0.05f, same_wavelength = 0.01f;

// Characteristic wavelengths in angstrom.
struct Anode {
    std::string_view name;
    std::array<float, 3> lines;  // K-alpha1, K-alpha2, K-beta
};
constexpr Anode anodes[] = {
    {"Cr", {2.28988f, 2.29428f, 2.0848f}},  {"Fe", {1.93631f, 1.94043f, 1.7565f}}, {"Cu", {1.54059f, 1.54431f, 1.3922f}},
    {"Mo", {0.70932f, 0.7136f, 0.63225f}},  {"Ag", {0.55942f, 0.5638f, 0.49708f}}, {"Co", {1.78919f, 1.79321f, 1.62083f}},
    {"Ni", {1.65805f, 1.66199f, 1.50017f}},
};
constexpr int user_defined = 1;  // first entry of the menu; anode i stands at i + 2

std::vector<std::string> Menu_Texts() {
    std::vector<std::string> texts{"User define"};
    for (const Anode& anode : anodes) texts.emplace_back(anode.name);
    return texts;
}

int Anode_Of(float wavelength) {
    if (!(wavelength > least_wavelength)) return user_defined;
    for (std::size_t i = 0; i < std::size(anodes); ++i)
        if (std::fabs(anodes[i].lines[0] - wavelength) <= same_wavelength) return static_cast<int>(i) + user_defined + 1;
    return user_defined;
}

void Fill_Lines(int chosen) {
    for (int column = k_alpha1; column <= k_beta; ++column) {
        if (chosen <= user_defined)
            WGridPutCellString(lines_grid, column, 1, "");
        else
            WGridPutCellReal(lines_grid, column, 1, anodes[chosen - user_defined - 1].lines[static_cast<std::size_t>(column - 1)]);
    }
}

// The three wavelengths, or nothing, and the user has been told why.
std::optional<std::array<float, 3>> Lines_Of_Grid() {
    std::array<float, 3> lines{};
    const auto refuse = [](int column, const std::string& text) {
        Refuse_Cell(lines_grid, column, 1, text);
        return std::nullopt;
    };
    for (int column = k_alpha1; column <= k_beta; ++column) {
        const std::optional<float> cell = WGridGetCellReal(lines_grid, column, 1);
        if (!cell) return refuse(column, "Some values were undefined");
        lines[static_cast<std::size_t>(column - 1)] = *cell;
    }
    for (int column = k_alpha1; column <= k_beta; ++column)
        if (!(lines[static_cast<std::size_t>(column - 1)] > std::numeric_limits<float>::min()))
            return refuse(column, "One or more values were zeros!");
    return lines;
}

}  // namespace

Dialog_Resource Spectral_Lines_Dialog_Resource() {
    const auto wavelength = [](std::string heading) { return Grid_Column{std::move(heading), Cell_Kind::real, "(f8.5)", 12}; };
    return {lines_dialog,
            "Wavelengths for Spectral Lines",
            {{{.number = anode_menu, .kind = Field_Kind::menu, .label = "&Wavelength:", .choices = Menu_Texts()}},
             {{.number = lines_grid,
               .kind = Field_Kind::grid,
               .columns = {wavelength("K-alpha1"), wavelength("K-alpha2"), wavelength("K-beta"), wavelength("L-alpha1 (W)")},
               .grid_rows = 1}},
             {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

void Spectral_Lines_Dialog(Session& session) {
    if (session.store.nperfiles() == 0) return;
    X_Constants& conv = session.store.Pattern(1).conv;
    const int anode = Anode_Of(conv[0]);
    WDialogLoad(lines_dialog);
    WDialogPutOption(anode_menu, anode);
    Fill_Lines(anode);
    WGridPutCellReal(lines_grid, l_alpha, 1, l_alpha_of_tungsten);
    WGridStateCell(lines_grid, l_alpha, 1, field_read_only);
    WDialogShow(anode_menu, Show_Kind::modal);
    const auto changed = [](int field) {
        if (field == anode_menu) Fill_Lines(WDialogGetMenu(anode_menu));
    };
    while (Run_Modal(lines_dialog, {.changed = changed}) == button_ok) {
        const auto lines = Lines_Of_Grid();
        if (!lines) continue;
        Row_Change change(session, "wavelengths of spectral lines", {1});
        conv[0] = (*lines)[0];
        conv[1] = (*lines)[1];
        conv[3] = (*lines)[2];
        change.Keep();
        break;
    }
    WDialogUnload();
}

}  // namespace vntl
