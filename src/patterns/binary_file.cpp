#include "patterns/binary_file.hpp"

#include <algorithm>

#include "patterns/recognise.hpp"

namespace vntl {

namespace {

using namespace std::string_view_literals;

// Bytes at the beginning of a file, and what they are those of. `certain`: of nothing else; a title may begin with the others.
struct Magic {
    std::string_view bytes, kind;
    bool certain;
    std::size_t offset = 0;
};

// Versions that the readers of RAW files know are told before anything is looked up here.
constexpr std::string_view raw = "RAW file of an unknown version";
constexpr Magic magics[] = {
    {"PK\3\4"sv, "zip archive", true},
    {"PK\5\6"sv, "zip archive", true},
    {"PK\7\10"sv, "zip archive", true},
    {"\x1F\x8B"sv, "gzip archive", true},
    {"\x1F\x9D"sv, "compress archive", true},
    {"\xFD"
     "7zXZ\0"sv,
     "xz archive", true},
    {"7z\xBC\xAF\x27\x1C"sv, "7z archive", true},
    {"Rar!\x1A\x07"sv, "rar archive", true},
    {"\x28\xB5\x2F\xFD"sv, "zstd archive", true},
    {"BZh"sv, "bzip2 archive", false},
    {"ustar"sv, "tar archive", false, 257},
    {"\x89HDF\r\n\x1A\n"sv, "HDF5", true},
    {"\x0E\x03\x13\x01"sv, "HDF4", true},
    {"CDF\1"sv, "NetCDF", true},
    {"CDF\2"sv, "NetCDF", true},
    {"\x93NUMPY"sv, "NumPy array", true},
    {"SQLite format 3\0"sv, "SQLite database", true},
    {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv, "compound document", true},
    {"%PDF-"sv, "PDF document", true},
    {"\x89PNG\r\n\x1A\n"sv, "PNG picture", true},
    {"\xFF\xD8\xFF"sv, "JPEG picture", true},
    {"GIF87a"sv, "GIF picture", true},
    {"GIF89a"sv, "GIF picture", true},
    {"II*\0"sv, "TIFF picture", true},
    {"MM\0*"sv, "TIFF picture", true},
    {"BM"sv, "BMP picture", false},
    {"WEBP"sv, "WebP picture", false, 8},
    {"\x7F"
     "ELF"sv,
     "program", true},
    {"MZ"sv, "program", false},
    {"RAW1"sv, raw, false},
    {"RAW2"sv, raw, false},
    {"RAW3"sv, raw, false},
    {"RAW4"sv, raw, false},
    {"RAW5"sv, raw, false},
    {"RAW_"sv, raw, false},
    {"Shimadzu"sv, "RAW file of a diffractometer", false},
};

const Magic* Magic_Of(std::string_view text) {
    const auto* const found = std::find_if(std::begin(magics), std::end(magics), [text](const Magic& magic) {
        return text.size() > magic.offset && text.substr(magic.offset).starts_with(magic.bytes);
    });
    return found == std::end(magics) ? nullptr : found;
}

bool Has_Wide_Mark(std::string_view text) { return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"); }

// NUL bytes behind a text only fill it up.
bool Is_No_Text(std::string_view head) {
    if (head.empty() || Has_Wide_Mark(head)) return false;
    const std::string_view filled = head.substr(0, head.find_last_not_of('\0') + 1);
    return filled.empty() || filled.find('\0') != std::string_view::npos || Is_Binary(filled);
}

}  // namespace

bool Is_Binary(std::string_view head) {
    constexpr std::size_t of_bytes = 40;
    std::size_t odd = 0;
    for (const char c : head)
        odd += static_cast<unsigned char>(c) < ' ' && c != '\n' && c != '\r' && c != '\t' && c != '\f' && c != '\x1a' ? 1 : 0;
    return odd > 2 + head.size() / of_bytes;
}

bool Is_Archive_Or_Picture(std::string_view text) {
    const Magic* const magic = Magic_Of(text);
    return magic != nullptr && magic->certain;
}

std::string Binary_Refusal(std::string_view text) {
    if (Certain_Format(text) != 0) return {};
    const std::string_view head = text.substr(0, recognised_head);
    const Magic* const magic = Magic_Of(head);
    const bool no_text = Is_No_Text(head) || (magic != nullptr && head.find('\0') != std::string_view::npos);
    const bool binary = Is_Archive_Or_Picture(head) || (no_text && Recognised_By_Content(head) == 0);
    if (!binary) return {};
    const std::string kind = magic == nullptr ? "" : " (" + std::string(magic->kind) + ')';
    return "This is a binary file" + kind + ", which no reader takes";
}

}  // namespace vntl
