// Menu "Calculations": arithmetic with rows, and filters.
#include "commands/families.hpp"

#include "commands/application.hpp"
#include "commands/calc/background_dialog.hpp"
#include "commands/calc/profile_arithmetic.hpp"
#include "commands/calc/smoothing_dialog.hpp"
#include "plot/plot.hpp"

namespace vntl {

namespace {

void Sum(Application& app) {
    if (Tell(app, Sum_Profiles(app.session, Sum_Mode::sum))) Plot_ReMake(app.session);
}
void Average(Application& app) {
    if (Tell(app, Sum_Profiles(app.session, Sum_Mode::average))) Plot_Redraw(app.session);
}
void Difference(Application& app) {
    if (Tell(app, Difference_Profiles(app.session))) Plot_ReMake(app.session);
}
void Subtract_Background(Application& app) {
    if (Tell(app, Subtract_Background_Of_Row(app.session))) Plot_ReMake(app.session);
}
void Multiply(Application& app) {
    if (Tell(app, Multiply_Profiles(app.session))) Plot_Redraw(app.session);
}
void Correct_Efficiency(Application& app) {
    if (Tell(app, Efficiency_Correction(app.session, app.ask))) Plot_Redraw(app.session);
}

void Smooth(Application& app, Status (*smooth)(Session&, Ask&)) {
    if (!Tell(app, smooth(app.session, app.ask))) return;
    if (app.session.store.nperfiles() > 1) Set_Menu_Graph(app.session, app.session.plot.Is_Log());
    Plot_Redraw(app.session);
}
void Filter_Fourier(Application& app) { Smooth(app, Smooth_Fourier); }
void Filter_Polynomial(Application& app) { Smooth(app, Smooth_Polynomial); }

constexpr Command commands[] = {
    {command::sum, "Summation", "sum", Sum, "", "Add profiles to one"},
    {command::average, "Average", "average", Average, "", "The mean of profiles"},
    {command::difference, "Difference", "difference", Difference, "", "The difference of two profiles"},
    {command::subtract_background, "Subtract background", "", Subtract_Background, "",
     "A new profile: the first one shown less its background"},
    {command::multiply, "Multiply Y / Shift X / Normalize", "multiply", Multiply, "", "Multiply intensities, shift x, or normalize"},
    {command::efficiency, "Apply Eff. Corr.", "", Correct_Efficiency, "", "Divide by the efficiency of the detectors"},
    {command::smoothing_menu, "Smoothing", "", Open_Popup, "", ""},
    {command::smooth_fourier, "Fourier filtering", "smooth", Filter_Fourier, "", "Smooth by leaving out high frequencies"},
    {command::smooth_polynomial, "Polynomial filtering", "", Filter_Polynomial, "", "Smooth by polynomials"},
};

std::vector<Dialog_Resource> Dialogs() {
    std::vector<Dialog_Resource> all = Arithmetic_Dialog_Resources();
    all.push_back(Smoothing_Dialog_Resource());
    all.push_back(Background_Dialog_Resource());
    return all;
}

}  // namespace

Command_Family Calc_Commands() { return {commands, Dialogs}; }

}  // namespace vntl
