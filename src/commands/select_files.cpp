#include "commands/select_files.hpp"

#include "base/os.hpp"
#include "session/configuration.hpp"

namespace vntl {

std::vector<std::string> Select_Files(Configuration& config, Select_Kind kind, std::string_view filter, std::string_view title,
                                      const std::string& name) {
    std::string& directory = config.select_dir;
    if (!IOsDirExists(directory)) directory.clear();
    auto files = WSelectFile(filter, kind, name, title, directory);
    if (!files.empty() && IOsDirExists(std::string(Directory_Part(files.front())))) directory = Directory_Part(files.front());
    return files;
}

std::optional<std::string> Select_Directory(Configuration& config, std::string_view title) {
    std::string& directory = config.select_dir;
    if (!IOsDirExists(directory)) directory.clear();
    std::optional<std::string> chosen = WSelectDir(directory, title);
    if (chosen && IOsDirExists(*chosen)) directory = *chosen;
    return chosen;
}

}  // namespace vntl
