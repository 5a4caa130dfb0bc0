// The fit of single peaks to row 1: its window, its nodes and peaks as they are chosen, and what a fit leaves on the plot.
#pragma once

#include <optional>
#include <string_view>

#include "base/ask.hpp"
#include "base/topic.hpp"
#include "fit/run_fit.hpp"

namespace vntl {

class Profile_Store;
struct Session;

inline constexpr std::string_view fit_not_available = "Fitting procedure is not available for this type of data";

// The model that the scattering variable of a row asks for: that of 2theta for distances and reciprocal lattice units too. Nothing for
// other variables, and while the plot is in another x space than the one of the file.
std::optional<Fit_Kind> Kind_Of_Fit(const Session&, int row = 1);

// --- choosing ----------------------------------------------------------------------------------------------------------------------

// Both ends are chosen: they are nodes of the background. Nodes and peaks that were found outside of them go.
void Take_Fit_Window(Session&);

// A peak at x of the height that the pattern has there, in the list of detected peaks too.
void Add_Fit_Peak(Session&, float x);
void Delete_Fit_Peak(Session&, std::size_t index);

// The window from the background, or from the view where there is none.
void Set_Fit_Window(Session&);

// Builds the peaks of the fit from the detected ones inside the window; what they free is to be refined. More than the fit takes are told.
void Build_Fit_Peaks(Session&, Ask&);

// Before the starting values are shown: nodes from the window where the background has none between, and a time-of-flight pattern's
// widths as a law. Fails when there is no background line or no peak.
Status Prepare_Starting_Values(Session&, Fit_Kind kind);

// Intensities that are heights become areas of a peak of that height and width.
void Heights_To_Areas(Fit_State& fit);

// Reads a PIK file in the place of the present state. On failure nothing changes.
Status Load_Pik(Session&, const std::string& file);

// --- after a fit -------------------------------------------------------------------------------------------------------------------

// The path of row 1's file without its extension: files of a fit stand beside the pattern.
std::string Fit_Stem(const Session&);

// The calculated curve of a problem goes to row 1, and the plot to the overlay of a refined profile over the window.
void Show_Fitted_Curve(Session&, const Fit_Problem& problem, std::span<const float> yc);

// What a fit found goes to the state, the nodes and row 1; its peaks become reflections, and with `plot_individual` rows of their own.
void Keep_Fit(Session&, const Fit_Problem& problem, const Fit_Result& result);

// The overlay is on while a fit's result is shown.
void Set_Fit_Overlay(Session&);

// The rows of single peaks go.
void Keep_First_Row(Profile_Store&);

// Everything of the fit forgotten, with its lists and its rows.
void Clear_Fit(Session&);

Json Fit_Json(const Session&);

}  // namespace vntl
