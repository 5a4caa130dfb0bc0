// Files, directories, environment and paths, see os.hpp.
#include "base/os.hpp"

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "base/text.hpp"
#include "base/text_file.hpp"

namespace vntl {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t small_file_limit = 1 << 20;

}  // namespace

std::string IOsDirName() {
    std::error_code error;
    std::string name = fs::current_path(error).string();
    if (name.size() > 1 && name.back() == '/') name.pop_back();
    return name;
}

bool IOsDirChange(const std::string& directory) {
    std::error_code error;
    fs::current_path(directory, error);
    return !error;
}

bool IOsDirMake(const std::string& directory) {
    std::error_code error;
    fs::create_directories(directory, error);
    return IOsDirExists(directory);
}

bool IOsDirExists(const std::string& directory) {
    std::error_code error;
    return fs::is_directory(directory, error);
}

bool IOsFileExists(const std::string& file) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    return fs::exists(status) && !fs::is_directory(status);
}

bool IOsDeleteFile(const std::string& file) {
    std::error_code error;
    return !IOsDirExists(file) && fs::remove(file, error);
}

std::string IOsVariable(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value ? value : "";
}

std::optional<std::vector<std::string>> Read_Text_Lines(const std::string& file) {
    Text_File text;
    if (!text.Open(file, small_file_limit).ok()) return std::nullopt;
    std::vector<std::string> lines;
    Line_Cursor cursor(text.Text());
    for (std::string_view line; cursor.Next(line);) lines.push_back(To_Utf8(line));
    return lines;
}

std::string In_Directory(const std::string& directory, const std::string& name) {
    return name.empty() || name.front() == '/' || directory.empty() ? name : directory + '/' + name;
}

std::string_view File_Part(std::string_view path, char separator) {
    const std::size_t at = path.rfind(separator);
    return at == std::string_view::npos ? path : path.substr(at + 1);
}

std::string_view Directory_Part(std::string_view path, char separator) {
    const std::size_t at = path.rfind(separator);
    return at == std::string_view::npos ? std::string_view{} : path.substr(0, at);
}

std::string_view Extension_Of(std::string_view path) {
    const std::string_view name = File_Part(path);
    const std::size_t point = name.rfind('.');
    return point == std::string_view::npos ? std::string_view{} : name.substr(point);
}

}  // namespace vntl
