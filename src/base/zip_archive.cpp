#include "base/zip_archive.hpp"

#include <zip.h>

#include <algorithm>
#include <cctype>
#include <cstdint>

#include "base/text.hpp"

namespace vntl {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view member_mark = "PK\3\4"sv, directory_mark = "PK\1\2"sv, end_mark = "PK\5\6"sv;
constexpr std::size_t member_head = 30, directory_head = 46, end_record = 22;
constexpr std::size_t most_entries = 1000;  // of a directory that are looked at for a name
constexpr std::size_t glance = 64 << 10;
constexpr std::string_view too_large = "This zip archive unpacks to more than 512 MB";
constexpr std::string_view damaged = "This zip archive is damaged or cut short";

std::size_t Number_At(std::string_view bytes, std::size_t at, int width) {
    std::size_t number = 0;
    for (int i = width - 1; i >= 0; --i) number = number << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
    return number;
}

// Whether the record of an archive's end can stand here: its directory lies in front of it.
bool Can_End(std::string_view bytes, std::size_t at) {
    constexpr std::size_t in_longer_record = 0xFFFFFFFF;
    if (bytes.size() - at < end_record) return false;
    const std::size_t size = Number_At(bytes, at + 12, 4), offset = Number_At(bytes, at + 16, 4);
    return offset == in_longer_record || size == in_longer_record || size + offset <= at;
}

// Where that record stands, npos where there is none.
std::size_t End_Record(std::string_view bytes) {
    std::size_t at = bytes.rfind(end_mark);
    while (at != std::string_view::npos && !Can_End(bytes, at)) at = at == 0 ? std::string_view::npos : bytes.rfind(end_mark, at - 1);
    return at;
}

// Without what was added behind the archive, zeros of a copy for example.
std::string_view Without_Padding(std::string_view bytes) {
    const std::size_t end = End_Record(bytes);
    return end == std::string_view::npos ? bytes : bytes.substr(0, end + end_record + Number_At(bytes, end + 20, 2));
}

bool Leads_Out(std::string_view name) {
    if (name.starts_with('/') || (name.size() > 1 && name[1] == ':' && std::isalpha(static_cast<unsigned char>(name[0])) != 0)) return true;
    return ('/' + std::string(name) + '/').find("/../") != std::string::npos;
}

std::string Slashed(std::string_view name) { return Replace_All(name, "\\", "/"); }

bool Front_Fits(std::string_view bytes, bool (*fits)(std::string_view)) {
    bytes = bytes.substr(0, glance);
    for (std::size_t at = 0; at != std::string_view::npos && at + member_head < bytes.size(); at = bytes.find(member_mark, at + 4)) {
        const std::size_t length = Number_At(bytes, at + 26, 2);
        if (at + member_head + length <= bytes.size() && fits(Slashed(bytes.substr(at + member_head, length)))) return true;
    }
    return false;
}

bool Directory_Fits(std::string_view bytes, bool (*fits)(std::string_view)) {
    const std::string_view tail = bytes.substr(bytes.size() - std::min(bytes.size(), glance + end_record));
    const std::size_t end = tail.rfind(end_mark);
    if (end == std::string_view::npos || tail.size() - end < end_record) return false;
    std::size_t at = Number_At(tail, end + 16, 4);
    for (std::size_t i = 0; i < most_entries && at + directory_head <= bytes.size(); ++i) {
        const std::size_t length = Number_At(bytes, at + 28, 2);
        if (bytes.substr(at, 4) != directory_mark || at + directory_head + length > bytes.size()) return false;
        if (fits(Slashed(bytes.substr(at + directory_head, length)))) return true;
        at += directory_head + length + Number_At(bytes, at + 30, 2) + Number_At(bytes, at + 32, 2);
    }
    return false;
}

}  // namespace

bool Zip_Name_Fits(std::string_view bytes, bool (*fits)(std::string_view)) {
    return bytes.starts_with(member_mark) && (Front_Fits(bytes, fits) || Directory_Fits(bytes, fits));
}

std::string_view Last_Parts(std::string_view name, int count) {
    std::size_t at = name.size();
    for (; count > 0 && at != std::string_view::npos; --count) at = at == 0 ? std::string_view::npos : name.rfind('/', at - 1);
    return at == std::string_view::npos ? name : name.substr(at + 1);
}

Zip_Archive::Zip_Archive() = default;
Zip_Archive::~Zip_Archive() = default;
void Zip_Archive::Closer::operator()(zip* archive) const { zip_discard(archive); }

Status Zip_Archive::Open(std::string_view bytes, std::size_t limit) {
    archive_.reset();
    names_.clear();
    limit_ = limit;
    unpacked_ = 0;
    if (!bytes.starts_with("PK")) return Status::Fail("This is no zip archive");
    const std::string_view whole = Without_Padding(bytes);
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source = zip_source_buffer_create(whole.data(), whole.size(), 0, &error);
    if (source != nullptr) archive_.reset(zip_open_from_source(source, ZIP_RDONLY, &error));
    if (source != nullptr && archive_ == nullptr) zip_source_free(source);
    zip_error_fini(&error);
    if (archive_ == nullptr) return Status::Fail(damaged);

    const zip_int64_t count = zip_get_num_entries(archive_.get(), 0);
    for (zip_int64_t i = 0; i < count; ++i) {
        zip_stat_t stat;
        if (zip_stat_index(archive_.get(), static_cast<zip_uint64_t>(i), 0, &stat) != 0 || (stat.valid & ZIP_STAT_NAME) == 0)
            return Status::Fail(damaged);
        names_.push_back(Slashed(stat.name));
        if (Leads_Out(names_.back())) return Status::Fail("This zip archive holds a name that leads out of it; it is not opened");
        if ((stat.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && stat.encryption_method != ZIP_EM_NONE)
            return Status::Fail("This zip archive is encrypted");
        if ((stat.valid & ZIP_STAT_SIZE) != 0 && stat.size > limit_) return Status::Fail(too_large);
    }
    return Status::Done();
}

Status Zip_Archive::Unpack(std::size_t member, std::string& bytes) {
    constexpr std::size_t best_packing = 1032;  // of deflate: a member that claims more is not believed until it comes
    bytes.clear();
    zip_stat_t stat;
    if (zip_stat_index(archive_.get(), member, 0, &stat) != 0) return Status::Fail(damaged);
    zip_file_t* const file = zip_fopen_index(archive_.get(), member, 0);
    if (file == nullptr) return Status::Fail(damaged);
    const std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> closed(file, zip_fclose);
    const std::size_t room = limit_ - unpacked_;
    std::size_t told = std::min<std::uint64_t>(stat.size, best_packing * std::min<std::uint64_t>(stat.comp_size, room) + glance);
    std::size_t size = 0;
    for (;;) {
        // One byte beyond what is told, so that the end is seen, and one beyond the limit.
        bytes.resize(std::min(std::max(told, size), room) + 1);
        const zip_int64_t got = zip_fread(file, bytes.data() + size, bytes.size() - size);
        if (got < 0) return Status::Fail(damaged);
        size += static_cast<std::size_t>(got);
        if (size > room) {
            unpacked_ = limit_;
            bytes.clear();
            return Status::Fail(too_large);
        }
        if (got == 0) break;
        if (size == bytes.size()) told = 2 * size;
    }
    bytes.resize(size);
    unpacked_ += size;
    return Status::Done();
}

}  // namespace vntl
