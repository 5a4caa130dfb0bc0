// Files, directories and environment: what the program asks of the operating system.
//
// Names of files are UTF-8 on the systems built here. Nothing throws; a failure is false or an empty result.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vntl {

std::string IOsDirName();                         // current directory, without a final separator
bool IOsDirChange(const std::string& directory);  // changes it
bool IOsDirMake(const std::string& directory);    // makes it; true also when it is there already
bool IOsDirExists(const std::string& directory);
bool IOsFileExists(const std::string& file);  // a file that is no directory
bool IOsDeleteFile(const std::string& file);
std::string IOsVariable(const std::string& name);  // environment variable, empty when not set

// Lines of a small text file in UTF-8 without their line ends; nothing when it cannot be read. Reads at most 1 MB.
std::optional<std::vector<std::string>> Read_Text_Lines(const std::string& file);

// A name as it is meant in a directory: a relative one stands there. With a blank directory, which has been removed, it stays as it is.
std::string In_Directory(const std::string& directory, const std::string& name);

// Parts of a path, by the last '/' (or '\\' with the separator of Windows).
std::string_view File_Part(std::string_view path, char separator = '/');       // behind the last separator
std::string_view Directory_Part(std::string_view path, char separator = '/');  // before it; empty without one
std::string_view Extension_Of(std::string_view path);                          // from the last point of the file part, "" without one

}  // namespace vntl
