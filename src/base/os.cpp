// Files, directories, environment and paths, see os.hpp.
#include "base/os.hpp"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <fcntl.h>   // open
#include <unistd.h>  // write, fsync, close, unlink

#include "base/text.hpp"
#include "base/text_file.hpp"

namespace vntl {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t small_file_limit = 1 << 20;

// Writes all of `text` to a fresh file; nothing of it stays when that fails.
bool Write_Whole(const std::string& file, std::string_view text, mode_t permissions) {
    const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, permissions);
    if (descriptor < 0) return false;
    std::size_t done = 0;
    bool good = true;
    while (good && done < text.size()) {
        const ssize_t n = write(descriptor, text.data() + done, text.size() - done);
        good = n > 0;
        if (good) done += static_cast<std::size_t>(n);
    }
    good = good && fsync(descriptor) == 0;
    good = close(descriptor) == 0 && good;
    if (!good) unlink(file.c_str());
    return good;
}

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

bool Write_Text_Lines(const std::string& file, const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text.append(line).append("\n");
    return Replace_File(file, text);
}

bool Replace_File(const std::string& file, std::string_view text) {
    std::error_code error;
    fs::path target = fs::canonical(file, error);
    if (error) target = file;
    const fs::file_status old = fs::status(target, error);
    if (fs::exists(old) && !fs::is_regular_file(old)) return false;
    const std::string fresh = target.string() + ".new~" + std::to_string(getpid());
    if (!Write_Whole(fresh, text, 0666)) return false;
    if (fs::exists(old)) fs::permissions(fresh, old.permissions(), error);
    if (std::rename(fresh.c_str(), target.c_str()) != 0) {
        unlink(fresh.c_str());
        return false;
    }
    return true;
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
