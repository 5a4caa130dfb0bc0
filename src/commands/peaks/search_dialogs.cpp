#include "commands/peaks/search_dialogs.hpp"

#include <optional>
#include <span>
#include <string>

#include "commands/modal.hpp"
#include "session/changes.hpp"
#include "session/search.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr int peaks_dialog = 148, background_dialog = 149;
constexpr int peak_threshold = 1356, shoulder_threshold = 1357, bkg_threshold = 1358, iterations = 1359;
constexpr int radiation_frame = 1024, first_unit = 1905;
constexpr int first_radiation = 1020;  // the button of search_radiation 1
constexpr const char* radiations[] = {"Si&ngle peaks", "doublets: (&Cu-Ka)", "doublets: (&Mo-Ka)", "doublets: (C&o-Ka)"};

struct Threshold {
    int field;
    const char *label, *unit;
    float Search_Parameters::*value;
};
constexpr Threshold thresholds[] = {
    {peak_threshold, "&Peak threshold", "of the largest drop of the derivative", &Search_Parameters::peak_threshold},
    {shoulder_threshold, "&Shoulder threshold", "times the noise of the derivative", &Search_Parameters::shoulder_threshold},
    {bkg_threshold, "&Background threshold", "of the range of the derivative's slope", &Search_Parameters::bkg_threshold},
};

// Points of the background are searched with the last of them alone.
std::span<const Threshold> Thresholds_Of(int dialog) { return std::span(thresholds).subspan(dialog == peaks_dialog ? 0 : 2); }

Dialog_Field Radiation_Frame() {
    Dialog_Page page;
    int field = first_radiation;
    for (const char* label : radiations) page.rows.push_back({{field++, Field_Kind::radio, label, first_radiation}});
    return {.number = radiation_frame, .kind = Field_Kind::frame, .label = "Radiation", .pages = {page}};
}

Dialog_Resource Resource(int number, std::string title) {
    Dialog_Resource resource{number, std::move(title), {}};
    int unit = first_unit;
    for (const Threshold& threshold : Thresholds_Of(number))
        resource.rows.push_back({{.number = threshold.field, .kind = Field_Kind::real, .label = threshold.label, .width = 10},
                                 {.number = unit++, .kind = Field_Kind::label, .label = threshold.unit}});
    resource.rows.push_back(
        {{.number = iterations, .kind = Field_Kind::integer, .label = "&Iterations", .width = 8, .lo = 0, .hi = largest_iterations},
         {.number = unit, .kind = Field_Kind::label, .label = "of smoothing"}});
    if (number == peaks_dialog) resource.rows.push_back({Radiation_Frame()});
    resource.rows.push_back({{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}});
    return resource;
}

void Fill(int dialog, const Search_Parameters& parameters) {
    for (const Threshold& threshold : Thresholds_Of(dialog)) WDialogPutReal(threshold.field, parameters.*threshold.value);
    WDialogPutInteger(iterations, parameters.Iterations);
    const int radiation = parameters.search_radiation;
    if (dialog == peaks_dialog && radiation >= 1 && radiation <= static_cast<int>(std::size(radiations)))
        WDialogPutRadioButton(first_radiation + radiation - 1);
}

// Nothing where a field holds no number, which has been told then.
std::optional<Search_Parameters> Parameters_Of(int dialog, Search_Parameters parameters) {
    for (const Threshold& threshold : Thresholds_Of(dialog)) {
        std::string name = threshold.label;
        std::erase(name, '&');
        const std::optional<float> value = Number_In_Field(threshold.field, name);
        if (!value) return {};
        parameters.*threshold.value = *value;
    }
    const std::optional<int> passes = WDialogGetInteger(iterations);
    if (!passes) {
        Error_Box("Iterations: \"" + WDialogGetString(iterations) + "\" is not a number from 0 to " + std::to_string(largest_iterations));
        return {};
    }
    parameters.Iterations = *passes;
    const int radiation = dialog == peaks_dialog ? WDialogGetRadioButton(first_radiation) : 0;
    if (radiation != 0) parameters.search_radiation = radiation - first_radiation + 1;
    return parameters;
}

Status Edit_Parameters(Session& session, int dialog) {
    WDialogLoad(dialog);
    Fill(dialog, session.search);
    WDialogShow(0, Show_Kind::modal);
    std::optional<Search_Parameters> edited;
    while (!edited && Run_Modal(dialog) == button_ok) edited = Parameters_Of(dialog, session.search);
    WDialogUnload();
    if (!edited) return Status::Cancel();
    session.search = *edited;
    return Status::Done();
}

Status Search_With(Session& session, int dialog, std::string text, Status (*find)(Session&)) {
    if (Status status = Edit_Parameters(session, dialog); status.failed) return status;
    Row_Change change(session, std::move(text));
    return change.Keep(find(session));
}

}  // namespace

std::vector<Dialog_Resource> Search_Dialog_Resources() {
    return {Resource(peaks_dialog, "Peaks detection condition"), Resource(background_dialog, "Background detect condition")};
}

Status Search_Peaks(Session& session) { return Search_With(session, peaks_dialog, "search of peaks", Find_Peaks); }
Status Search_Satellites(Session& session) { return Search_With(session, peaks_dialog, "search of satellites", Find_Satellites); }
Status Search_Background(Session& session) { return Search_With(session, background_dialog, "search of the background", Find_Background); }

}  // namespace vntl
