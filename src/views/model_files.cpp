// The model as a file that shows it again, from every side.
#include "base/os.hpp"
#include "base/write_file.hpp"
#include "commands/file/save_name.hpp"
#include "commands/select_files.hpp"
#include "solid/w3d_file.hpp"
#include "views/model_3d.hpp"

namespace vntl {

namespace {

constexpr const char* about_w3d =
    "This option saves the image to the disk as a file with extension .w3d. The file can be visualized with the utility: 3D viewer. "
    "From the 3D viewer you can change the orientation and save the image in various formats";
constexpr std::string_view extension = ".w3d", filter = "3D model files|*.w3d|", title = "Save 3D model file";

}  // namespace

std::string W3d_Name(const std::string& chosen) {
    const std::string_view file = File_Part(chosen);
    const std::size_t point = file.rfind('.'), cut = point == std::string_view::npos ? 0 : file.size() - point;
    return chosen.substr(0, chosen.size() - cut) + std::string(extension);
}

void Save_W3d(Configuration& config, Ask& ask, const Model3D& model) {
    ask.Box({Box_Buttons::ok, Box_Icon::information, 1, about_w3d, "Information"});
    const auto chosen = Select_Files(config, Select_Kind::save_unasked, filter, title);
    if (chosen.empty()) return;
    const std::string file = W3d_Name(chosen.front());
    if (IOsFileExists(file) && !May_Overwrite(ask, "Overwrite W3D file?")) return;
    if (!Can_Be_Written(file) || !Replace_File(file, W3d_Text_Of(*model.shown, View_Of(model))))
        ask.Error(Status::Fail_File("The 3D model file cannot be written:\n" + file));
}

}  // namespace vntl
