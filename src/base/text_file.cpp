// Reading of whole text files and walking of their lines, see text_file.hpp.
#include "base/text_file.hpp"

#include <fcntl.h>     // open
#include <sys/stat.h>  // fstat
#include <unistd.h>    // read

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>  // std::nothrow
#include <system_error>

#include "base/descriptor.hpp"
#include "base/huge_pages.hpp"
#include "base/text.hpp"

namespace vntl {

namespace {

Status Refusal(const std::string& reason, const std::string& file) { return Status::Fail_File(reason + ": " + file); }

Status System_Refusal(const std::string& file) { return Refusal(std::generic_category().message(errno), file); }

}  // namespace

std::string_view Without_Mark(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    return text;
}

std::string Kept_Text(std::string_view line, std::size_t width) {
    constexpr std::size_t longest_sequence = 4;
    const std::size_t enough = longest_sequence * (width + 1);
    if (line.size() > enough) {
        line = line.substr(0, enough);
        const auto code = [&] { return static_cast<unsigned char>(line.back()); };
        for (std::size_t i = 1; i < longest_sequence && (code() & 0xC0u) == 0x80u; ++i) line.remove_suffix(1);
        if (code() >= 0x80u) line.remove_suffix(1);  // the sequence that the cut may have split
    }
    const std::string text = To_Utf8(line);
    return std::string(Cut(text, width));
}

std::size_t Count_Lines(std::string_view text) {
    if (text.empty()) return 0;
    // Ends of one block fit into a byte, which lets the compiler use wide registers.
    const auto count = [&](auto is_end) {
        constexpr std::size_t block = 240;
        const char* const last = text.data() + text.size() - 1;  // its line counts whether it ends or not
        std::size_t lines = 1;
        for (const char* from = text.data(); from < last;) {
            const char* const to = from + std::min(block, static_cast<std::size_t>(last - from));
            unsigned char ends = 0;
            for (; from < to; ++from) ends = static_cast<unsigned char>(ends + (is_end(from) ? 1 : 0));
            lines += ends;
        }
        return lines;
    };
    if (text.find('\r') == std::string_view::npos) return count([](const char* c) { return *c == '\n'; });
    return count([](const char* c) { return c[0] == '\n' || (c[0] == '\r' && c[1] != '\n'); });
}

std::string_view Without_End_Mark(std::string_view text) {
    if (text.ends_with('\x1a')) text.remove_suffix(1);
    return text;
}

Status Text_File::Open(const std::string& file, std::size_t limit) {
    bytes_.reset();
    size_ = 0;
    marked_ = false;
    if (file.find('\0') != std::string::npos) return Refusal("Not a file name", file.substr(0, file.find('\0')));
    const Descriptor descriptor(open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (!descriptor) return System_Refusal(file);
    struct stat about {};
    if (fstat(descriptor.number(), &about) != 0) return System_Refusal(file);
    if (S_ISDIR(about.st_mode)) return Refusal("Is a directory", file);
    if (!S_ISREG(about.st_mode)) return Refusal("Not a regular file", file);

    const std::size_t wanted = std::min(limit, static_cast<std::size_t>(about.st_size));
    std::unique_ptr<char[]> bytes(new (std::nothrow) char[wanted + 1]);
    if (!bytes) return Refusal("Too large", file);
    Ask_For_Huge_Pages(bytes.get(), wanted);
    Bring_In(bytes.get(), wanted);
    std::size_t got = 0;
    while (got < wanted) {
        const ssize_t n = read(descriptor.number(), bytes.get() + got, wanted - got);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return System_Refusal(file);
        if (n == 0) break;
        got += static_cast<std::size_t>(n);
    }
    const std::string_view text = Without_Mark({bytes.get(), got});
    if (text.size() < got) std::memmove(bytes.get(), text.data(), text.size());
    bytes_ = std::move(bytes);
    size_ = text.size();
    marked_ = size_ < got;
    return Status::Done();
}

bool Line_Cursor::Next(std::string_view& line) {
    if (next_ == end_) return false;
    const auto find = [this](char c) {
        const void* at = std::memchr(next_, c, static_cast<std::size_t>(end_ - next_));
        return at ? static_cast<const char*>(at) : end_;
    };
    if (lf_ < next_) lf_ = find('\n');
    if (cr_ < next_) cr_ = find('\r');
    const char* stop = std::min(lf_, cr_);
    line = {next_, static_cast<std::size_t>(stop - next_)};
    const bool pair = stop == cr_ && lf_ != end_ && lf_ == stop + 1;
    next_ = stop == end_ ? end_ : stop + (pair ? 2 : 1);
    ++number_;
    return true;
}

}  // namespace vntl
