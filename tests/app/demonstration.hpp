// A dialog with a field of every kind, laid out as a real one would be.
#pragma once

#include "toolkit/dialog.hpp"

namespace vntl::demonstration {

inline constexpr int number = 900;

enum Top { picture = 901, heading, title, wavelength, points, radiation, colour, keep_scale, mark_peaks, raw, smooth, difference, width };
enum Below { progress = width + 1, pages, grid, threshold, tree, note, apply, defaults };
enum Column { use = 1, name, position, order, intensity };

inline Dialog_Page Peaks_Page() {
    return {"&Peaks",
            {{{.number = grid,
               .kind = Field_Kind::grid,
               .label = "Peaks",
               .columns = {{"Use", Cell_Kind::check_box},
                           {"Name", Cell_Kind::string, {}, 14},
                           {"2theta", Cell_Kind::real, "(f10.4)", 10},
                           {"Order", Cell_Kind::integer, {}, 6},
                           {"Intensity", Cell_Kind::real, "(f10.1)", 10}},
               .grid_rows = 5}},
             {{.number = threshold, .kind = Field_Kind::real, .label = "T&hreshold", .format = "(f6.2)"}}}};
}

inline Dialog_Page Phases_Page() { return {"Ph&ases", {{{tree, Field_Kind::tree, "Phases"}}, {{note, Field_Kind::string, "&Note"}}}}; }

inline Dialog_Field Display_Frame() {
    const std::vector<Dialog_Field> curve = {{raw, Field_Kind::radio, "Ra&w", raw},
                                             {smooth, Field_Kind::radio, "S&moothed", raw},
                                             {difference, Field_Kind::radio, "&Difference", raw}};
    const std::vector<Dialog_Field> marks = {{keep_scale, Field_Kind::check_box, "&Keep the scale"},
                                             {mark_peaks, Field_Kind::check_box, "Mar&k the peaks"}};
    return {.kind = Field_Kind::frame, .label = "Display", .pages = {{{}, {curve, marks}}}};
}

inline Dialog_Resource Resource() {
    return {number,
            "Demonstration",
            {{{.number = picture, .kind = Field_Kind::image, .image = "vantrelo"},
              {.number = heading, .kind = Field_Kind::label, .label = "Sample and measurement", .heading = true}},
             {{title, Field_Kind::string, "&Title"}, {radiation, Field_Kind::menu, "&Radiation"}},
             {{.number = wavelength, .kind = Field_Kind::real, .label = "Wa&velength", .format = "(f8.5)"},
              {.number = points, .kind = Field_Kind::integer, .label = "Points", .lo = 1, .hi = 5000}},
             {Display_Frame()},
             {{.number = width, .kind = Field_Kind::trackbar, .label = "Smoothing", .lo = 0, .hi = 50},
              {colour, Field_Kind::colour_button, "Colour..."}},
             {{.number = pages, .kind = Field_Kind::tab, .label = "Pages", .pages = {Peaks_Page(), Phases_Page()}}},
             {{.number = progress, .kind = Field_Kind::progress_bar, .label = "Progress", .lo = 0, .hi = 200}},
             {{apply, Field_Kind::push_button, "Appl&y"},
              {defaults, Field_Kind::push_button, "Defaults"},
              {button_ok, Field_Kind::push_button, "OK"},
              {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

// Values as the program that shows it puts them. The dialog is loaded and selected.
inline void Fill() {
    WDialogPutString(title, "Corundum, flat plate");
    WDialogPutReal(wavelength, 1.54056f);
    WDialogPutInteger(points, 3401);
    WDialogPutMenu(radiation, std::vector<std::string>{"X-rays", "Neutrons (CW)", "Neutrons (TOF)"}, 1);
    WDialogColour(colour, WRGB(200, 40, 30));
    WDialogPutRadioButton(smooth);
    WDialogPutCheckBox(mark_peaks, 1);
    WDialogPutTrackbar(width, 12);
    WDialogPutProgressBar(progress, 80);
    WDialogPutReal(threshold, 0.5);
    constexpr int rows = 5;
    constexpr float angles[rows] = {25.5782f, 35.1522f, 37.7765f, 43.3552f, 52.5495f};
    WGridPutReal(grid, position, angles);
    WGridPutString(grid, name, std::vector<std::string>{"0 1 2", "1 0 4", "1 1 0", "1 1 3", "0 2 4"});
    for (int row = 1; row <= rows; ++row) {
        WGridPutCellCheckBox(grid, use, row, row % 2);
        WGridPutCellInteger(grid, order, row, row);
        WGridPutCellReal(grid, intensity, row, 100.0f * static_cast<float>(row));
        WGridLabelRow(grid, row, "Peak " + std::to_string(row));
    }
    WGridState(grid, intensity, field_read_only);
    WGridStateCell(grid, name, 2, field_disabled);
    const int corundum = WDialogInsertTreeViewItem(tree, 0, "Corundum");
    WDialogInsertTreeViewItem(tree, corundum, "Al");
    WDialogInsertTreeViewItem(tree, corundum, "O");
    WDialogInsertTreeViewItem(tree, WDialogInsertTreeViewItem(tree, 0, "Zincite"), "Zn");
    WDialogPutString(note, "as received");
}

}  // namespace vntl::demonstration
