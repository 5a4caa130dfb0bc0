#include <array>

#include "session/command_ids.hpp"
#include "views/menu_entries.hpp"
#include "views/model_3d.hpp"

namespace vntl {

namespace {

using namespace command;

Menu_Entry File_Menu() {
    return Popup("&File", {Entry(model_save_as, "&Save as...", "Save the model in another format"),
                           Entry(model_save_w3d, "Save as &W3D file", "Save the model as a solid that can be turned again", "Ctrl+S"),
                           {},
                           Entry(model_print, "&Print...(low quality)", "Put the picture on paper", "Ctrl+P"),
                           {},
                           Entry(model_exit, "E&xit 3D OpenGL Model", "Close this window", "Ctrl+W")});
}

Menu_Entry Mode_Menu() {
    return Popup("&Render mode", {Marked_Entry(model_wireframe, "&Wireframe", "Show the edges alone"),
                                  Marked_Entry(model_hidden_lines, "Wireframe / &Hidden lines", "Show the edges that nothing hides"),
                                  Marked_Entry(model_unlit, "&Solid / unlit", "Show the surface without light"),
                                  Marked_Entry(model_flat, "Lit / &Flat shading", "Show each facet in the light that falls on it"),
                                  Marked_Entry(model_gouraud, "Lit / &Gouraud shading", "Show the light smoothly over the facets"),
                                  Marked_Entry(model_phong, "Lit / &Phong shading", "Compute the light for each point of the picture")});
}

Menu_Entry Options_Menu() {
    return Popup("&Options", {Entry(model_light, "&Light position", "Move the light about the model"),
                              Entry(model_view, "&View position", "Move the observer about the model"),
                              Entry(model_scale, "&Scale factor", "Stretch the model along its axes"),
                              {},
                              Entry(model_filter, "Low&Pass Filter", "Smooth the surface once more"),
                              {},
                              Entry(model_colour, "Color of &model material", "Choose the colour of the surface"),
                              Entry(model_edge_colour, "Color of &edge lines", "Choose the colour of the edges")});
}

Menu_Entry Animation_Menu() {
    return Popup("&Animation", {Popup("&Speed", {Entry(model_spin_high, "&High", "Turn the model by 5 degrees a step"),
                                                 Entry(model_spin_medium, "&Medium", "Turn the model by 2 degrees a step"),
                                                 Entry(model_spin_low, "&Low", "Turn the model by 1 degree a step")}),
                                Popup("&Direction", {Entry(model_clockwise, "&Clockwise", "Turn the other way round"),
                                                     Entry(model_anti_clockwise, "&Anti Clockwise", "Turn the other way round")}),
                                Entry(model_spin_stop, "S&top", "Let the model stand still")});
}

Menu_Entry Help_Menu() {
    return Popup("&Help", {Entry(model_web_site, "Vantrelo &web site", "Open the home page"),
                           {},
                           Entry(model_info, "&Info model", "Show how large the model is"),
                           Entry(model_about, "&About...", "Name, version and date of the program")});
}

}  // namespace

std::span<const Menu_Entry> Model_Menu() {
    static const std::array<Menu_Entry, 5> bar = {File_Menu(), Mode_Menu(), Options_Menu(), Animation_Menu(), Help_Menu()};
    return bar;
}

}  // namespace vntl
