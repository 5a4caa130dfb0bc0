#include "base/private_directory.hpp"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace vntl {

Private_Directory::~Private_Directory() {
    std::error_code error;
    if (!path_.empty()) std::filesystem::remove_all(path_, error);
}

Status Private_Directory::Make(const std::string& parent) {
    if (!path_.empty()) return Status::Done();
    std::string name = parent;
    if (!name.empty() && name.back() != '/') name += '/';
    name += "vantrelo_XXXXXX";
    if (mkdtemp(name.data()) == nullptr) return Status::Fail_File(std::generic_category().message(errno) + ": " + parent);
    path_ = name;
    return Status::Done();
}

}  // namespace vntl
