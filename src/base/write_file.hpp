// Files that the program writes.
//
// A file is replaced in one step: the text is written beside it, and takes its name when it is whole and on disk. What was there stays
// when that fails. The text goes where the name leads, but never through a link that another user has laid, and never into a file that is
// marked read-only, not for root either. A pipe or a device is written to.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/descriptor.hpp"
#include "base/status.hpp"

namespace vntl {

// Replaces `file` by the text. An old file keeps its owner and permissions; one whose owner cannot be given to a new file, or whose
// directory takes none, is written in place. A new file gets the permissions that the umask leaves.
enum class File_Use { read, run };  // who may read a file that is run may run it, as far as the umask permits
bool Replace_File(const std::string& file, std::string_view text, File_Use use = File_Use::read);
bool Write_Text_Lines(const std::string& file, const std::vector<std::string>& lines);

// `to` becomes a copy of the file, by Replace_File.
Status IOsCopyFile(const std::string& from, const std::string& to);

// Whether Replace_File may begin: no directory, no link of another user, and the right to write. Nothing is touched.
bool Can_Be_Written(const std::string& file);

// A regular file whose end is written anew again and again while the program runs.
class Growing_File {
public:
    Status Open(const std::string& file);  // and empties it
    // Puts the text at `place`, where the file ends before; without the room for the whole text it ends there after.
    Status Write_From(std::size_t place, std::string_view text);

private:
    std::string name_;
    Descriptor file_;
};

}  // namespace vntl
