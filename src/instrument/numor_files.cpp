#include "instrument/numor_files.hpp"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <system_error>
#include <tuple>
#include <utility>

#include "base/os.hpp"
#include "base/text.hpp"
#include "instrument/data_directories.hpp"

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

// What is told of a name that is a number: that, whether it is one of a compressed run, and its path.
using Take_Name = std::function<void(int number, bool compressed, const fs::path& path)>;

Status Walk_Numors(const std::string& directory, const Take_Name& take) {
    if (!Directory_Is_There(directory)) return Status::Fail_File("The directory " + directory + " does not answer");
    int names = 0;
    std::error_code error, of_entry;
    for (fs::directory_iterator entry(directory, error), end; !error && entry != end && names < most_names; entry.increment(error)) {
        ++names;
        std::string name = entry->path().filename().string();
        const bool compressed = Is_Compressed_Name(name);
        if (compressed) name.resize(name.size() - compressed_numor.size());
        const std::optional<int> number = Number_Of(name);
        if (number && !entry->is_directory(of_entry)) take(*number, compressed, entry->path());
    }
    return error ? Status::Fail_File("The directory " + directory + " cannot be read: " + error.message()) : Status::Done();
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
    return Walk_Numors(directory, [&](int number, bool compressed, const fs::path&) {
        found = {std::min(found.first, number), std::max(found.last, number), found.compressed && compressed};
        range = found;
    });
}

Status Runs_In_Directory(const std::string& directory, std::vector<Run_In_Directory>& runs) {
    std::vector<std::tuple<int, bool, std::string>> found;
    const Status status = Walk_Numors(
        directory, [&](int number, bool compressed, const fs::path& path) { found.emplace_back(number, compressed, path.string()); });
    if (status.failed) return status;
    std::sort(found.begin(), found.end());  // of one number the plain file goes first, and of two of them that with more digits
    runs.clear();
    for (auto& [number, compressed, file] : found)
        if (runs.empty() || runs.back().numor != number) runs.push_back({number, std::move(file)});
    return status;
}

}  // namespace vntl
