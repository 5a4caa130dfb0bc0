// The model as a file that shows it again, from every side.
#include "commands/file/save_name.hpp"
#include "solid/w3d_file.hpp"
#include "views/model_3d.hpp"

namespace vntl {

namespace {

constexpr const char* about_w3d =
    "This option saves the image to the disk as a file with extension .w3d. The file can be visualized with the utility: 3D viewer. "
    "From the 3D viewer you can change the orientation and save the image in various formats";
constexpr Save_Form form = {"Save 3D model file", "3D model files|*.w3d|", ".w3d", "Overwrite W3D file?", {}, true};

}  // namespace

void Save_W3d(Configuration& config, Ask& ask, const Model3D& model) {
    ask.Box({Box_Buttons::ok, Box_Icon::information, 1, about_w3d, "Information"});
    const std::string file = Name_To_Save(config, ask, form);
    if (file.empty()) return;
    const std::string failure = "The 3D model file cannot be written:\n" + file;
    Save_Form of_file = form;
    of_file.failure = failure;
    if (const Status status = Save_Text(of_file, file, W3d_Text_Of(*model.shown, View_Of(model))); status.failed) ask.Error(status);
}

}  // namespace vntl
