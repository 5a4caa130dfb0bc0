// A zip archive in memory, and its members unpacked one by one.
//
// Archives come from anybody. Nothing is written to the disk, and nothing is unpacked beyond a limit, whatever the heads claim: neither a
// member nor all that were asked for together.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/expand.hpp"
#include "base/status.hpp"

struct zip;

namespace vntl {

class Zip_Archive {
public:
    Zip_Archive();
    ~Zip_Archive();

    // Takes an archive, whose bytes must stay; what stands behind its end is passed over. Fails with a sentence for what is no archive, or
    // a damaged one; for a member whose name leads out of the archive ("../", "/", "C:"), that is encrypted or that claims more than the
    // limit.
    Status Open(std::string_view bytes, std::size_t limit = most_unpacked);

    // Names of the members in the order of the archive, directories parted by "/" whatever the archive has.
    const std::vector<std::string>& Names() const { return names_; }

    // A member, by its place among the names. Fails where it is damaged, or where more than the limit would have been unpacked,
    // as all others from then on.
    Status Unpack(std::size_t member, std::string& bytes);

private:
    struct Closer {
        void operator()(zip* archive) const;
    };
    std::unique_ptr<zip, Closer> archive_;
    std::vector<std::string> names_;
    std::size_t limit_ = 0, unpacked_ = 0;
};

// Whether a member's name that fits is found in the beginning of a file, before its members, or in the directory at the end where the whole
// file is given. Never of what begins as no archive, and quick: a glance at 64 kB at each end.
bool Zip_Name_Fits(std::string_view bytes, bool (*fits)(std::string_view name));

// The last `count` parts of a name, which lies in further directories where somebody has packed the unpacked ones again.
std::string_view Last_Parts(std::string_view name, int count);

}  // namespace vntl
