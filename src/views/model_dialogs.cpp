// Dialogs of the model's window: the factors of its axes, and how large it is.
#include <limits>

#include "commands/modal.hpp"
#include "views/model_3d.hpp"

namespace vntl {

namespace {

constexpr int scale_dialog = 433, info_dialog = 434;
constexpr int first_factor = 4331;
constexpr const char* factor_labels[] = {"&X Axis (Right/Left)", "&Y Axis (Up/Down)", "&Z Axis (Front/Back)"};
constexpr const char* invalid_value = "Invalid value. Try again.";

constexpr int first_count = 4341;
constexpr const char* count_labels[] = {"Vertices :", "Facets :", "Max. Vertices :", "Max. Facets :"};

// The factors in the fields; nothing where one of them is none, which is told.
std::optional<std::array<float, 3>> Factors_In_Fields() {
    std::array<float, 3> scale{};
    for (std::size_t k = 0; k < scale.size(); ++k) {
        const int field = first_factor + static_cast<int>(k);
        const std::optional<float> factor = WDialogGetReal(field);
        if (!factor || !(*factor >= least_scale && *factor <= largest_scale)) {
            Refuse_Field(field, invalid_value);
            return {};
        }
        scale[k] = *factor;
    }
    return scale;
}

std::optional<std::array<float, 3>> Ask_Factors(const std::array<float, 3>& present) {
    WDialogLoad(scale_dialog);
    for (std::size_t k = 0; k < present.size(); ++k) WDialogPutReal(first_factor + static_cast<int>(k), present[k]);
    WDialogShow(first_factor, Show_Kind::modal);
    std::optional<std::array<float, 3>> scale;
    while (!scale && Run_Modal(scale_dialog) == button_ok) scale = Factors_In_Fields();
    WDialogUnload();
    return scale;
}

Dialog_Resource Scale_Resource() {
    Dialog_Resource resource{scale_dialog, "Scaling model 3D", {}};
    for (int k = 0; k < 3; ++k)
        resource.rows.push_back({{.number = first_factor + k, .kind = Field_Kind::real, .label = factor_labels[k]}});
    resource.rows.push_back({{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}});
    return resource;
}

Dialog_Resource Info_Resource() {
    Dialog_Resource resource{info_dialog, "Info model", {}};
    for (int k = 0; k < 4; ++k)
        resource.rows.push_back({{.number = first_count + k,
                                  .kind = Field_Kind::integer,
                                  .label = count_labels[k],
                                  .lo = 0,
                                  .hi = std::numeric_limits<int>::max()}});
    resource.rows.push_back({{button_ok, Field_Kind::push_button, "OK"}});
    return resource;
}

}  // namespace

void Scale_Dialog(Model3D& model) {
    const std::optional<std::array<float, 3>> scale = Ask_Factors(model.scale);
    if (!scale) return;
    model.scale = *scale;
    Show_Solid(model);
}

void Info_Dialog(const Model3D& model) {
    const std::size_t counts[] = {model.solid->vertices.size(), model.solid->Facets(), max_w3d_vertices, max_w3d_vertices};
    WDialogLoad(info_dialog);
    for (int k = 0; k < 4; ++k) {
        WDialogPutInteger(first_count + k, static_cast<int>(counts[k]));
        WDialogFieldState(first_count + k, field_read_only);
    }
    WDialogShow(button_ok, Show_Kind::modal);
    Run_Modal(info_dialog);
    WDialogUnload();
}

std::vector<Dialog_Resource> Model_Dialogs() {
    std::vector<Dialog_Resource> all = Position_Resources();
    all.push_back(Scale_Resource());
    all.push_back(Info_Resource());
    return all;
}

}  // namespace vntl
