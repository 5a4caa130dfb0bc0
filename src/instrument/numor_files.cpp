#include "instrument/numor_files.hpp"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "base/os.hpp"
#include "base/text.hpp"

namespace vntl {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t name_digits = 6;

// Digits alone: a sign or a blank makes no number of a run.
std::optional<int> Number_Of(std::string_view name) {
    int number = 0;
    const bool digits = std::all_of(name.begin(), name.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (!digits || !Parse_Integer(name, number) || number > largest_numor) return {};
    return number;
}

}  // namespace

std::string Numor_Name(int numor) {
    const std::string digits = std::to_string(numor);
    return std::string(name_digits - std::min(name_digits, digits.size()), '0') + digits;
}

bool Is_Compressed_Name(std::string_view name) { return name.ends_with(compressed_numor); }

std::string Numor_Path(const std::string& directory, int numor, bool compressed) {
    const bool separated = directory.empty() || directory.ends_with('/');
    return directory + (separated ? "" : "/") + Numor_Name(numor) + std::string(compressed ? compressed_numor : "");
}

std::string Actual_Numor(const std::string& path) {
    const bool compressed = Is_Compressed_Name(path);
    const std::string other = compressed ? path.substr(0, path.size() - compressed_numor.size()) : path + std::string(compressed_numor);
    return !IOsFileExists(path) && IOsFileExists(other) ? other : path;
}

Status Numors_In_Directory(const std::string& directory, std::optional<Numor_Range>& range) {
    Numor_Range found{largest_numor, 0, true};
    int names = 0;
    std::error_code error, of_entry;
    for (fs::directory_iterator entry(directory, error), end; !error && entry != end && names < most_names; entry.increment(error)) {
        ++names;
        std::string name = entry->path().filename().string();
        const bool compressed = Is_Compressed_Name(name);
        if (compressed) name.resize(name.size() - compressed_numor.size());
        const std::optional<int> number = Number_Of(name);
        if (!number || entry->is_directory(of_entry)) continue;
        found = {std::min(found.first, *number), std::max(found.last, *number), found.compressed && compressed};
        range = found;
    }
    if (error) return Status::Fail_File("The directory " + directory + " cannot be read: " + error.message());
    return Status::Done();
}

}  // namespace vntl
