#include "commands/calc/background_dialog.hpp"

#include <algorithm>
#include <optional>
#include <vector>

#include "base/conversions.hpp"
#include "base/text.hpp"
#include "calc/arithmetic.hpp"
#include "calc/search.hpp"
#include "commands/calc/live_preview.hpp"
#include "commands/modal.hpp"
#include "session/changes.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr int subtract_dialog = 474;
enum Field { of_list = 2201, own_curve, of_search, threshold, passes, profile_text, found_text, threshold_unit, passes_unit };
enum class Source { list = of_list, curve = own_curve, search = of_search };

// The background of a row at each of its points, or why there is none, and the field that is to blame.
struct Found_Background {
    std::vector<float> values;
    std::string wrong;
    int field = of_list;
};

Found_Background None(std::string wrong, int field) { return {{}, std::move(wrong), field}; }

Found_Background Of_Points(const std::vector<Background_Mark>& points, const Diffraction_Pattern_Type& pattern, int field) {
    if (points.size() < 2) return None("The background needs two points at least", field);
    if (pattern.x.empty() || points.back().x < pattern.x.front() || points.front().x > pattern.x.back())
        return None("The points of the background lie outside of the profile", field);
    return {Line_Through(points, pattern.x), {}, field};
}

Found_Background Of_List(const Session& session, const Diffraction_Pattern_Type& pattern) {
    const Calculation_Lists& lists = session.lists;
    if (lists.background.size() >= 2 && lists.background_found_in != X_Space::none && lists.background_found_in != session.plot.xspace)
        return None("The points of the background were found over " + std::string(Told(lists.background_found_in)) +
                        ",\nand the profiles are shown over " + std::string(Told(session.plot.xspace)),
                    of_list);
    return Of_Points(lists.background, pattern, of_list);
}

Found_Background Of_Curve(const Diffraction_Pattern_Type& pattern) {
    if (!pattern.has_bgr || pattern.bgr.size() != pattern.y.size() || !Holds_A_Curve(pattern.bgr))
        return None("The profile has no background curve", own_curve);
    return {pattern.bgr, {}, own_curve};
}

Found_Background Of_Search(const Session& session, const Diffraction_Pattern_Type& pattern) {
    Search_Parameters parameters = session.search;
    const std::optional<float> value = WDialogGetReal(threshold);
    if (!value) return None("Background threshold: \"" + WDialogGetString(threshold) + "\" is not a number", threshold);
    const std::optional<int> iterations = WDialogGetInteger(passes);
    if (!iterations)
        return None("Iterations: \"" + WDialogGetString(passes) + "\" is not a number from 0 to " + std::to_string(largest_iterations),
                    passes);
    parameters.bkg_threshold = *value;
    parameters.Iterations = *iterations;
    if (pattern.x.empty()) return None("The profile has no points", of_search);
    PKB_Type found;
    if (Search_Pattern(pattern, pattern.x.front(), pattern.x.back(), Search_Mode::background, parameters, found).failed)
        return None("Too few points of a background are found with this threshold", threshold);
    std::vector<Background_Mark> points;
    for (std::size_t i = 0; i < found.x.size(); ++i) points.push_back({found.x[i], found.y[i]});
    return Of_Points(points, pattern, threshold);
}

Found_Background Of_Dialog(const Session& session, const Diffraction_Pattern_Type& pattern) {
    switch (static_cast<Source>(WDialogGetRadioButton(of_list))) {
        case Source::curve:
            return Of_Curve(pattern);
        case Source::search:
            return Of_Search(session, pattern);
        default:
            return Of_List(session, pattern);
    }
}

// What is there is chosen in the order of the fields; the search there is always.
void Fill(const Session& session, int row) {
    const Diffraction_Pattern_Type& pattern = session.store.Pattern(row);
    const Found_Background list = Of_List(session, pattern), curve = Of_Curve(pattern);
    WDialogPutString(profile_text, "Profile: " + session.store.Info(row).file_name);
    WDialogFieldState(of_list, list.wrong.empty() ? field_enabled : field_disabled);
    WDialogFieldState(own_curve, curve.wrong.empty() ? field_enabled : field_disabled);
    WDialogPutRadioButton(list.wrong.empty() ? of_list : curve.wrong.empty() ? own_curve : of_search);
    WDialogPutReal(threshold, session.search.bkg_threshold);
    WDialogPutInteger(passes, session.search.Iterations);
}

Status Subtract(Session& session, int row, const std::vector<float>& background) {
    Profile_Store& store = session.store;
    Row_Change change(session, "background subtracted" + Of_Profiles(session, {row}));
    const int added = store.Append_Copy(row);
    PRF_Info_Add_Type& info = store.Info(added);
    Diffraction_Pattern_Type& pattern = store.Pattern(added);
    if (Status status = Subtract_Background(pattern, background); status.failed) return status;
    pattern.title = Cut(std::string(Trim_Right(pattern.title)) + " less background", title_width);
    info.kind = Row_Kind::diff;
    info.file_name = "<less background>";
    info.legend_text.clear();
    // Reflections are those of a refinement, and the new row is none.
    info.nphases = info.nreflections = 0;
    info.phase_value.clear(), info.phase_table.clear();
    info.refl_phase.clear(), info.refl_tag.clear(), info.refl_code.clear(), info.refl_position.clear(), info.refl_label.clear();
    change.Keep();
    return Status::Done();
}

}  // namespace

Dialog_Resource Background_Dialog_Resource() {
    const auto radio = [](Field number, const char* label) {
        return Dialog_Field{.number = number, .kind = Field_Kind::radio, .label = label, .group = of_list};
    };
    const Dialog_Page page{
        .rows = {{radio(of_list, "Line through the points of the &list")},
                 {radio(own_curve, "Background &curve of the profile")},
                 {radio(of_search, "Line through points that are &searched")},
                 {{.number = threshold, .kind = Field_Kind::real, .label = "Background &threshold", .width = 8},
                  {threshold_unit, Field_Kind::label, "of the range of the derivative's slope"}},
                 {{.number = passes, .kind = Field_Kind::integer, .label = "&Iterations", .width = 8, .lo = 0, .hi = largest_iterations},
                  {passes_unit, Field_Kind::label, "of smoothing"}}}};
    return {subtract_dialog,
            "Subtract background",
            {{{.number = profile_text, .kind = Field_Kind::label}},
             {{.kind = Field_Kind::frame, .label = "Background", .pages = {page}}},
             {{.number = found_text, .kind = Field_Kind::label}},
             {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}}}};
}

Status Subtract_Background_Of_Row(Session& session) {
    Profile_Store& store = session.store;
    if (store.full()) return Status::Fail(std::string(table_full_text));
    const int row = store.First_Shown();
    if (row == 0) return Status::Fail("No profile is shown");
    if (store.Info(row).kind == Row_Kind::mono) return Status::Fail("Operation not permitted over this profile type");

    Live_Preview live(session, subtract_dialog);
    WDialogLoad(subtract_dialog);
    Fill(session, row);
    WDialogShow(0, Show_Kind::semi_modeless);
    const auto show = [&] {
        const bool searches = WDialogGetRadioButton(of_list) == of_search;
        for (const int field : {threshold, passes}) WDialogFieldState(field, searches ? field_enabled : field_disabled);
        Found_Background found = Of_Dialog(session, store.Pattern(row));
        WDialogPutString(found_text, found.wrong);
        std::vector<Preview_Curve> curves;
        if (found.wrong.empty()) curves.push_back({row, store.Pattern(row).x, std::move(found.values)});
        live.Show(std::move(curves));
    };
    show();
    Status status = Status::Cancel();
    while (!status.ok() && Run_Modal(subtract_dialog, {.changed = [&](int) { show(); }}) == button_ok) {
        const Found_Background found = Of_Dialog(session, store.Pattern(row));
        status = found.wrong.empty() ? Subtract(session, row, found.values) : Status::Fail(found.wrong);
        if (status.ok()) break;
        Refuse_Field(found.field, status.message);
        status = Status::Cancel();
    }
    WDialogUnload();
    return status;
}

}  // namespace vntl
