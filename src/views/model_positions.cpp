// The dialogs in which the light and the observer of a model are moved.
#include <algorithm>
#include <cmath>

#include "plot/polar_picture.hpp"
#include "toolkit/bitmap.hpp"
#include "views/model_3d.hpp"

namespace vntl {

namespace {

constexpr int light_dialog = 431, view_dialog = 432;
constexpr int slider_elevation = 4311, slider_azimuth = 4312, slider_distance = 4313;
constexpr int field_azimuth = 4314, field_elevation = 4315, field_x = 4316, field_picture = 4319;

const Polar_Place& Place_Of(const Model3D& model, int dialog) { return dialog == light_dialog ? model.light : model.view; }

int Slider_Place(float value) { return static_cast<int>(std::lround(value)); }

void Put_Place(const Model3D& model, int dialog) {
    const Polar_Place& place = Place_Of(model, dialog);
    WDialogSelect(dialog);
    WDialogPutTrackbar(slider_elevation, Slider_Place(place.elevation));
    WDialogPutTrackbar(slider_azimuth, Slider_Place(place.azimuth));
    WDialogPutTrackbar(slider_distance, Slider_Place(place.distance));
    WDialogPutReal(field_elevation, place.elevation);
    WDialogPutReal(field_azimuth, place.azimuth);
    const Vec3 at = From_Polar(place.elevation, place.azimuth, place.distance);
    for (int k = 0; k < 3; ++k) WDialogPutReal(field_x + k, at[static_cast<std::size_t>(k)]);
    Bitmap picture(polar_picture_width, polar_picture_height);
    Graphics g(picture.Drawing());
    Draw_Polar_Picture(g, place.elevation, place.azimuth, model.model_colour);
    WDialogPutImage(field_picture, picture);
}

void Open(const Model3D& model, int dialog) {
    if (WDialogLoaded(dialog)) return static_cast<void>(WindowToFront(dialog));
    WDialogLoad(dialog);
    for (const int field : {field_azimuth, field_elevation, field_x, field_x + 1, field_x + 2}) WDialogFieldState(field, field_read_only);
    Put_Place(model, dialog);
    WMessageEnable(dialog, Message_Kind::field_changed, true);
    WDialogShow(0, Show_Kind::modeless);
}

// The slider that was moved alone is read: the others stand at whole degrees, and what they stand for need not.
bool Take_Slider(Polar_Place& place, int slider) {
    const auto value = static_cast<float>(WDialogGetTrackbar(slider));
    switch (slider) {
        case slider_elevation:
            place.elevation = value;
            return true;
        case slider_azimuth:
            place.azimuth = value;
            return true;
        case slider_distance:
            place.distance = value;
            return true;
        default:
            return false;
    }
}

void Move(Model3D& model, int dialog, int slider) {
    const bool of_light = dialog == light_dialog;
    WDialogSelect(dialog);
    if (!Take_Slider(of_light ? model.light : model.view, slider)) return;
    model.view.elevation = std::clamp(model.view.elevation, -steepest_view, steepest_view);
    Show_View(model);
}

// --- resources -------------------------------------------------------------------------------------------------------------------

Dialog_Field Slider(int number, std::string label, int most, int least) {
    return {.number = number, .kind = Field_Kind::trackbar, .label = std::move(label), .lo = least, .hi = most};
}
Dialog_Field Elevation_Slider() { return Slider(slider_elevation, "Ang. &Elevation", 90, -90); }
Dialog_Field Azimuth_Slider() { return Slider(slider_azimuth, "Ang. &Rotation", 180, -180); }

Dialog_Field Angle(int number, std::string label) {
    return {.number = number, .kind = Field_Kind::real, .label = std::move(label), .width = 8, .format = "(f8.2)"};
}
Dialog_Field Coordinate(int k) {
    constexpr const char* names[] = {"X : ", "Y : ", "Z : "};
    return {.number = field_x + k, .kind = Field_Kind::real, .label = names[k], .width = 8, .format = "(f8.3)"};
}

std::vector<std::vector<Dialog_Field>> Rows_Below_Sliders(std::string close) {
    return {{Coordinate(0), Coordinate(1), Coordinate(2)},
            {{.number = field_picture, .kind = Field_Kind::image}},
            {{.number = button_cancel, .kind = Field_Kind::push_button, .label = std::move(close)}}};
}

Dialog_Resource Resource(int dialog, std::string title, std::vector<std::vector<Dialog_Field>> rows, std::string close) {
    for (auto& row : Rows_Below_Sliders(std::move(close))) rows.push_back(std::move(row));
    return {dialog, std::move(title), std::move(rows)};
}

}  // namespace

std::vector<Dialog_Resource> Position_Resources() {
    return {Resource(light_dialog, "Vantrelo 3D Light Control", {{Elevation_Slider()}, {Azimuth_Slider()}}, "Close Light Control"),
            Resource(view_dialog, "Vantrelo 3D Obs. Control",
                     {{Azimuth_Slider()},
                      {Elevation_Slider()},
                      {Slider(slider_distance, "&Distance", static_cast<int>(farthest_view), static_cast<int>(nearest_view))},
                      {Angle(field_azimuth, " Rotation : "), Angle(field_elevation, " Elevation : ")}},
                     "Close Obs. Control")};
}

std::vector<int> Position_Dialogs() { return {light_dialog, view_dialog}; }
void Open_Light_Dialog(const Model3D& model) { Open(model, light_dialog); }
void Open_View_Dialog(const Model3D& model) { Open(model, view_dialog); }

void Serve_Position_Dialog(Model3D& model, const Message& message) {
    const int dialog = message.record.win;
    if (message.kind == Message_Kind::field_changed) return Move(model, dialog, message.record.value2);
    if (message.kind != Message_Kind::push_button) return;
    WDialogSelect(dialog);
    WDialogUnload();
}

void Follow_In_Dialogs(const Model3D& model) {
    if (model.window != model_window) return;  // they are of another one
    for (const int dialog : Position_Dialogs())
        if (WDialogLoaded(dialog)) Put_Place(model, dialog);
}

}  // namespace vntl
