// Replacing files, see write_file.hpp.
//
//   data.xye                                    the file
//   .vantrelo-3f2a90cc17b05d1e-9c41e07b~        its text to be: a number of the name, a random number
//
// The name beside it is short, since the file's own may be as long as a name can be. Who writes holds a lock on it; one without a lock was
// left by a program that was killed, and goes when the file is written next.
#include "base/write_file.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>  // flock
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdio>  // renameat
#include <optional>
#include <system_error>
#include <thread>

#include "base/os.hpp"
#include "base/text_file.hpp"

namespace vntl {

namespace {

constexpr int most_links = 40;  // that are followed one after the other
constexpr int most_tries = 100;
constexpr std::chrono::milliseconds pipe_patience(5000);  // for a reader to come, or to take what was written

// Where a name leads to: the entry of a directory that is no link.
struct Place {
    Descriptor directory;
    std::string entry;
    bool there = false;
    struct stat about {};

    bool Regular() const { return S_ISREG(about.st_mode); }
};

std::optional<Place> Find_Place(std::string path) {
    if (path.find('\0') != std::string::npos) return {};
    for (int links = 0; links < most_links; ++links) {
        const std::size_t slash = path.rfind('/');
        const std::string directory = slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
        Place place;
        place.entry = File_Part(path);
        if (place.entry.empty()) return {};
        place.directory = Descriptor(open(directory.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (!place.directory) return {};
        if (fstatat(place.directory.number(), place.entry.c_str(), &place.about, AT_SYMLINK_NOFOLLOW) != 0) {
            if (errno != ENOENT) return {};
            return place;
        }
        place.there = true;
        if (!S_ISLNK(place.about.st_mode)) return place;
        if (place.about.st_uid != geteuid()) return {};
        std::array<char, 4096> target;
        const ssize_t length = readlinkat(place.directory.number(), place.entry.c_str(), target.data(), target.size());
        if (length <= 0 || static_cast<std::size_t>(length) == target.size()) return {};
        const std::string link(target.data(), static_cast<std::size_t>(length));
        path = link.front() == '/' ? link : directory + '/' + link;
    }
    return {};
}

// Root may write everywhere; a file that nobody may write is meant to stay.
bool May_Write(const Place& place) {
    struct stat directory {};
    if (!place.there)  // a directory that has been removed takes no new file
        return fstat(place.directory.number(), &directory) == 0 && directory.st_nlink > 0 &&
               faccessat(place.directory.number(), ".", W_OK | X_OK, AT_EACCESS) == 0;
    if (S_ISDIR(place.about.st_mode)) return false;
    constexpr mode_t anybody = S_IWUSR | S_IWGRP | S_IWOTH;
    return (place.about.st_mode & anybody) != 0 && faccessat(place.directory.number(), place.entry.c_str(), W_OK, AT_EACCESS) == 0;
}

bool Write_Whole(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t n = write(descriptor, text.data(), text.size());
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        text.remove_prefix(static_cast<std::size_t>(n));
    }
    return true;
}

// --- in one step -------------------------------------------------------------------------------------------------------------------

// The first part of the names beside a file: FNV-1a of its own name.
std::string Prefix_Of(std::string_view entry) {
    std::uint64_t hash = 0xcbf29ce484222325u;
    for (const char c : entry) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3u;
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), ".vantrelo-%016llx-", static_cast<unsigned long long>(hash));
    return text.data();
}

void Remove_Leftovers(const Place& place, const std::string& prefix) {
    const int scanned = openat(place.directory.number(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR* const entries = scanned < 0 ? nullptr : fdopendir(scanned);
    if (entries == nullptr) return;
    while (const dirent* entry = readdir(entries)) {
        if (!std::string_view(entry->d_name).starts_with(prefix)) continue;
        const Descriptor left(openat(dirfd(entries), entry->d_name, O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
        struct stat about {};
        if (!left || fstat(left.number(), &about) != 0 || !S_ISREG(about.st_mode)) continue;
        if (flock(left.number(), LOCK_EX | LOCK_NB) == 0) unlinkat(dirfd(entries), entry->d_name, 0);
    }
    closedir(entries);
}

// A fresh file beside the place, locked.
Descriptor Open_Beside(const Place& place, const std::string& prefix, std::string& name) {
    for (int i = 0; i < most_tries; ++i) {
        std::uint32_t random = static_cast<std::uint32_t>(getpid() + i);
        if (getentropy(&random, sizeof random) != 0) random ^= static_cast<std::uint32_t>(i);
        std::array<char, 12> text{};
        std::snprintf(text.data(), text.size(), "%08x~", random);
        name = prefix + text.data();
        constexpr int fresh = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
        Descriptor descriptor(openat(place.directory.number(), name.c_str(), fresh, S_IRUSR | S_IWUSR));
        if (!descriptor && errno == EEXIST) continue;
        if (!descriptor) return descriptor;
        flock(descriptor.number(), LOCK_EX | LOCK_NB);
        struct stat about {};
        if (fstat(descriptor.number(), &about) == 0 && about.st_nlink > 0) return descriptor;
        // Somebody saw it before it was locked, and took it for a leftover.
    }
    return {};
}

mode_t New_Mode() {
    const mode_t mask = umask(0);
    umask(mask);
    return static_cast<mode_t>((S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH) & ~mask);
}

// The permissions of a file that is run: who may read it may run it.
mode_t With_Running(mode_t mode) {
    const mode_t mask = umask(0);
    umask(mask);
    return mode | (((mode & (S_IRUSR | S_IRGRP | S_IROTH)) >> 2) & ~mask);
}

bool Give_Owner(int descriptor, const Place& place) {
    struct stat fresh {};
    if (!place.there) return true;
    if (fstat(descriptor, &fresh) != 0) return false;
    const bool same = fresh.st_uid == place.about.st_uid && fresh.st_gid == place.about.st_gid;
    return same || fchown(descriptor, place.about.st_uid, place.about.st_gid) == 0;
}

// --- in place ----------------------------------------------------------------------------------------------------------------------

// The room is taken before the first byte changes, so that a full disk leaves the old text.
bool Write_In_Place(const Place& place, std::string_view text) {
    const Descriptor old(openat(place.directory.number(), place.entry.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat about {};
    if (!old || fstat(old.number(), &about) != 0 || !S_ISREG(about.st_mode)) return false;
    const auto size = static_cast<off_t>(text.size());
    if (size > about.st_size && posix_fallocate(old.number(), 0, size) != 0) {
        [[maybe_unused]] const int cut = ftruncate(old.number(), about.st_size);
        return false;
    }
    return Write_Whole(old.number(), text) && ftruncate(old.number(), size) == 0 && fsync(old.number()) == 0;
}

// A pipe without a reader, or whose reader sleeps, is given up after a while.
bool Write_To_Device(const Place& place, std::string_view text) {
    constexpr auto step = std::chrono::milliseconds(20);
    Descriptor device;
    for (auto waited = std::chrono::milliseconds(0); !device; waited += step) {
        device =
            Descriptor(openat(place.directory.number(), place.entry.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
        if (device) break;
        if (errno != ENXIO || !S_ISFIFO(place.about.st_mode) || waited > pipe_patience) return false;
        std::this_thread::sleep_for(step);
    }
    while (!text.empty()) {
        const ssize_t n = write(device.number(), text.data(), text.size());
        if (n > 0) {
            text.remove_prefix(static_cast<std::size_t>(n));
            continue;
        }
        if (n < 0 && errno == EINTR) continue;
        if (n == 0 || errno != EAGAIN) return false;
        pollfd room{device.number(), POLLOUT, 0};
        if (poll(&room, 1, static_cast<int>(pipe_patience.count())) <= 0) return false;
    }
    return true;
}

bool Replace(const Place& place, std::string_view text, File_Use use) {
    const std::string prefix = Prefix_Of(place.entry);
    Remove_Leftovers(place, prefix);
    std::string name;
    Descriptor fresh = Open_Beside(place, prefix, name);
    if (!fresh) return place.there && (errno == EACCES || errno == EPERM) && Write_In_Place(place, text);
    const int directory = place.directory.number();
    const auto drop = [&] { unlinkat(directory, name.c_str(), 0); };
    if (!Give_Owner(fresh.number(), place)) {
        drop();
        return place.there && Write_In_Place(place, text);
    }
    mode_t mode = place.there ? place.about.st_mode & 07777 : New_Mode();
    if (use == File_Use::run) mode = With_Running(mode);
    const bool good = Write_Whole(fresh.number(), text) && fchmod(fresh.number(), mode) == 0 && fsync(fresh.number()) == 0 &&
                      renameat(directory, name.c_str(), directory, place.entry.c_str()) == 0;
    if (!good) drop();
    return good;
}

}  // namespace

bool Replace_File(const std::string& file, std::string_view text, File_Use use) {
    const std::optional<Place> place = Find_Place(file);
    if (!place || !May_Write(*place)) return false;
    return !place->there || place->Regular() ? Replace(*place, text, use) : Write_To_Device(*place, text);
}

Status IOsCopyFile(const std::string& from, const std::string& to) {
    Text_File file;
    if (Status status = file.Open(from); status.failed) return status;
    const std::string bytes = (file.Marked() ? "\xEF\xBB\xBF" : "") + std::string(file.Text());
    if (Can_Be_Written(to) && Replace_File(to, bytes)) return Status::Done();
    return Status::Fail_File("The file " + to + " cannot be written");
}

bool Write_Text_Lines(const std::string& file, const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text.append(line).append("\n");
    return Replace_File(file, text);
}

bool Can_Be_Written(const std::string& file) {
    const std::optional<Place> place = Find_Place(file);
    return place && May_Write(*place);
}

Status Growing_File::Open(const std::string& file) {
    name_ = file;
    if (!Replace_File(file, "")) return Status::Fail("cannot be written: " + file);
    const std::optional<Place> place = Find_Place(file);
    if (!place || !place->there || !place->Regular()) return Status::Fail("is no regular file: " + file);
    file_ = Descriptor(openat(place->directory.number(), place->entry.c_str(), O_WRONLY | O_NOFOLLOW | O_CLOEXEC));
    return file_ ? Status::Done() : Status::Fail("cannot be written: " + file);
}

Status Growing_File::Write_From(std::size_t place, std::string_view text) {
    const auto at = static_cast<off_t>(place);
    // Cut first: a program killed in the next moment leaves whole lines.
    const int file = file_.number();
    if (ftruncate(file, at) == 0 && lseek(file, at, SEEK_SET) == at && Write_Whole(file, text)) return Status::Done();
    const std::string reason = std::generic_category().message(errno);
    [[maybe_unused]] const int cut = ftruncate(file, at);
    return Status::Fail(reason + ": " + name_);
}

}  // namespace vntl
