// Where the real files of other projects stand, for the tests that look at them; elsewhere they are skipped.
#pragma once

#include <cstdlib>
#include <string>

namespace vntl::test {

inline std::string Real_Path(const std::string& name) {
    const char* set = std::getenv("VANTRELO_DATA");
    return (set != nullptr ? std::string(set) : SOURCE_TREE "/../shared/data") + '/' + name;
}

}  // namespace vntl::test
