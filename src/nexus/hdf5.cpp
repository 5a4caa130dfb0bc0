#include "nexus/hdf5.hpp"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <memory>

#include "base/text.hpp"

namespace vntl::nexus {

namespace {

constexpr std::size_t most_bytes = std::size_t{512} << 20;  // that an array may unpack to
constexpr std::size_t densest = 2000;                       // bytes that a byte of a file may stand for: gzip reaches 1032
constexpr std::size_t longest_text = 4096;
constexpr hsize_t longest_list = 64;

// The image of a file that the library takes as it lies in memory, without a copy of its own, whatever it asks for.
struct Image {
    void* bytes = nullptr;
    std::size_t size = 0;
};
Image image;

Image Map_Standard_Input() {
    struct stat status {};
    if (fstat(STDIN_FILENO, &status) != 0 || status.st_size <= 0) return {};
    const auto size = static_cast<std::size_t>(status.st_size);
    void* const bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, STDIN_FILENO, 0);
    return bytes == MAP_FAILED ? Image{} : Image{bytes, size};
}

void* Same_Image(std::size_t size, H5FD_file_image_op_t, void*) { return size <= image.size ? image.bytes : nullptr; }
void* No_Copy(void* to, const void*, std::size_t, H5FD_file_image_op_t, void*) { return to; }
void* No_Other_Size(void*, std::size_t, H5FD_file_image_op_t, void*) { return nullptr; }
herr_t Kept(void*, H5FD_file_image_op_t, void*) { return 0; }

bool leads_elsewhere = false;

// A link to another file ends the way.
herr_t Stay_Here(const char*, const char*, const char*, const char*, unsigned*, hid_t, void*) {
    leads_elsewhere = true;
    return -1;
}

hid_t Way() {
    static const hid_t way = [] {
        const hid_t list = H5Pcreate(H5P_LINK_ACCESS);
        H5Pset_elink_cb(list, Stay_Here, nullptr);
        return list;
    }();
    return way;
}

Handle Space_Of(const Handle& data_set) { return {H5Dget_space(data_set.get()), H5Sclose}; }
Handle Type_Of(const Handle& data_set) { return {H5Dget_type(data_set.get()), H5Tclose}; }

std::string Digits(double value) {
    char text[40];
    const auto written = std::to_chars(std::begin(text), std::end(text), value);
    return {text, written.ptr};
}

std::string Up_To_Zero(const char* text, std::size_t size) { return {text, std::find(text, text + size, '\0')}; }

// `n` texts or numbers, read by `read` into memory of the type that it is given.
std::vector<std::string> Texts(const Handle& type, const Handle& space, hsize_t n, const std::function<herr_t(hid_t, void*)>& read) {
    std::vector<std::string> texts;
    const H5T_class_t kind = H5Tget_class(type.get());
    if (kind == H5T_STRING && H5Tis_variable_str(type.get()) > 0) {
        std::vector<char*> words(n, nullptr);
        const Handle memory(H5Tcopy(type.get()), H5Tclose);
        if (read(memory.get(), words.data()) < 0) return {};
        for (const char* const word : words)
            texts.emplace_back(word == nullptr ? std::string() : std::string(word, strnlen(word, longest_text)));
        H5Dvlen_reclaim(memory.get(), space.get(), H5P_DEFAULT, words.data());
    } else if (kind == H5T_STRING) {
        const std::size_t size = H5Tget_size(type.get());
        if (size < 1 || size > longest_text * 16) return {};
        std::vector<char> bytes(size * n);
        if (read(type.get(), bytes.data()) < 0) return {};
        for (hsize_t i = 0; i < n; ++i) texts.push_back(Up_To_Zero(bytes.data() + i * size, std::min(size, longest_text)));
    } else if (kind == H5T_INTEGER || kind == H5T_FLOAT) {
        std::vector<double> values(n);
        if (read(H5T_NATIVE_DOUBLE, values.data()) < 0) return {};
        for (const double value : values) texts.push_back(Digits(value));
    }
    return texts;
}

// Whether the numbers lie in the file itself.
bool Lies_In_File(const Handle& data_set) {
    const Handle list(H5Dget_create_plist(data_set.get()), H5Pclose);
    return list && H5Pget_external_count(list.get()) == 0 && H5Pget_layout(list.get()) != H5D_VIRTUAL;
}

constexpr std::size_t block = 1 << 15;  // numbers that stay near the processor

// The numbers of a data set as they are stored, a part of it after the other: rows, where it lies in one piece, or all at once where it is
// packed, for a packed chunk is unpacked anew for each part.
template <class Stored>
bool Read_As(const Handle& data_set, hid_t memory, std::size_t most, const Take_Block& take) {
    const Handle space = Space_Of(data_set), list(H5Dget_create_plist(data_set.get()), H5Pclose);
    std::vector<hsize_t> start(static_cast<std::size_t>(std::max(H5Sget_simple_extent_ndims(space.get()), 0))), count(start.size());
    if (!count.empty()) H5Sget_simple_extent_dims(space.get(), count.data(), nullptr);
    const auto cut = static_cast<std::size_t>(std::find_if(count.begin(), count.end(), [](hsize_t n) { return n > 1; }) - count.begin());
    std::size_t all = 1;
    for (const hsize_t n : count) all *= n;
    const std::size_t rows = cut < count.size() ? count[cut] : 1, row = all / rows;
    const std::size_t rows_at_once = H5Pget_layout(list.get()) == H5D_CONTIGUOUS ? std::max<std::size_t>(block / row, 1) : rows;
    const std::unique_ptr<Stored[]> stored(new Stored[std::min(rows_at_once, rows) * row]);  // not filled first
    std::vector<float> numbers(block);
    for (std::size_t at = 0; at < rows && most > 0; at += rows_at_once) {
        const std::size_t part = std::min(rows_at_once, rows - at);
        if (!count.empty() && part < rows) {
            start[std::min(cut, start.size() - 1)] = at;
            count[std::min(cut, count.size() - 1)] = part;
            H5Sselect_hyperslab(space.get(), H5S_SELECT_SET, start.data(), nullptr, count.data(), nullptr);
        }
        const hsize_t n = part * row;
        const Handle in_memory(H5Screate_simple(1, &n, nullptr), H5Sclose);
        if (H5Dread(data_set.get(), memory, in_memory.get(), space.get(), H5P_DEFAULT, stored.get()) < 0) return false;
        for (std::size_t i = 0; i < n && most > 0; i += block) {
            const std::size_t given = std::min({block, static_cast<std::size_t>(n) - i, most});
            std::transform(stored.get() + i, stored.get() + i + given, numbers.begin(),
                           [](Stored value) { return static_cast<float>(value); });
            take({numbers.data(), given});
            most -= given;
        }
    }
    return true;
}

}  // namespace

Handle Open_Standard_Input() {
    image = Map_Standard_Input();
    if (image.bytes == nullptr) return {};
    constexpr std::size_t growth = 1 << 16;
    const Handle access(H5Pcreate(H5P_FILE_ACCESS), H5Pclose);
    H5FD_file_image_callbacks_t as_it_lies = {Same_Image, No_Copy, No_Other_Size, Kept, nullptr, nullptr, nullptr};
    H5Pset_fapl_core(access.get(), growth, false);
    H5Pset_file_image_callbacks(access.get(), &as_it_lies);
    if (H5Pset_file_image(access.get(), image.bytes, image.size) < 0) return {};
    return {H5Fopen("standard input", H5F_ACC_RDONLY, access.get()), H5Fclose};
}

Handle Open_Object(hid_t place, const std::string& path) {
    if (path.empty()) return {};
    return {H5Oopen(place, path.c_str(), Way()), H5Oclose};
}

bool Leads_Elsewhere() { return leads_elsewhere; }

bool Is_Group(const Handle& object) { return object && H5Iget_type(object.get()) == H5I_GROUP; }
bool Is_Data_Set(const Handle& object) { return object && H5Iget_type(object.get()) == H5I_DATASET; }

std::vector<std::string> Members(const Handle& group, std::size_t most) {
    struct Collected {
        std::vector<std::string> names;
        std::size_t most;
    } collected{{}, most};
    const auto take = [](hid_t, const char* name, const H5L_info_t* info, void* data) -> herr_t {
        auto& into = *static_cast<Collected*>(data);
        if (info->type == H5L_TYPE_EXTERNAL)
            leads_elsewhere = true;
        else
            into.names.emplace_back(name);
        return into.names.size() >= into.most ? 1 : 0;
    };
    hsize_t from = 0;
    H5Literate(group.get(), H5_INDEX_NAME, H5_ITER_INC, &from, take, &collected);
    return std::move(collected.names);
}

std::vector<std::string> Attribute_Texts(const Handle& object, const char* name) {
    if (!object || H5Aexists(object.get(), name) <= 0) return {};
    const Handle attribute(H5Aopen(object.get(), name, H5P_DEFAULT), H5Aclose);
    if (!attribute) return {};
    const Handle type(H5Aget_type(attribute.get()), H5Tclose), space(H5Aget_space(attribute.get()), H5Sclose);
    const hssize_t n = space ? H5Sget_simple_extent_npoints(space.get()) : 0;
    if (!type || n < 1 || n > static_cast<hssize_t>(longest_list)) return {};
    return Texts(type, space, static_cast<hsize_t>(n), [&](hid_t memory, void* to) { return H5Aread(attribute.get(), memory, to); });
}

std::string Attribute_Text(const Handle& object, const char* name) {
    const std::vector<std::string> texts = Attribute_Texts(object, name);
    return texts.empty() ? std::string() : std::string(Trim(texts.front()));
}

Array_Form Form_Of(const Handle& data_set) {
    Array_Form form;
    const Handle type = Type_Of(data_set), space = Space_Of(data_set);
    const H5T_class_t kind = type ? H5Tget_class(type.get()) : H5T_NO_CLASS;
    const int rank = space ? H5Sget_simple_extent_ndims(space.get()) : -1;
    if ((kind != H5T_INTEGER && kind != H5T_FLOAT) || rank < 0 || H5Sget_simple_extent_type(space.get()) == H5S_NULL) {
        form.fault = "holds no numbers";
        return form;
    }
    std::vector<hsize_t> shape(static_cast<std::size_t>(rank));
    if (rank > 0) H5Sget_simple_extent_dims(space.get(), shape.data(), nullptr);
    std::copy_if(shape.begin(), shape.end(), std::back_inserter(form.shape), [](hsize_t length) { return length != 1; });
    const std::size_t size = std::max<std::size_t>(H5Tget_size(type.get()), 1);
    std::size_t bytes = std::max(size, sizeof(float));
    for (const hsize_t length : shape) {
        if (length == 0) form.fault = "is empty";
        if (length != 0 && bytes > most_bytes / length) form.fault = "is larger than 512 MB";
        if (!form.fault.empty()) return form;
        bytes *= length;
    }
    form.points = bytes / std::max(size, sizeof(float));
    if (!Lies_In_File(data_set))
        form.fault = "lies in another file";
    else if (form.points * size > densest * H5Dget_storage_size(data_set.get()))
        form.fault = "holds no numbers";
    return form;
}

bool Read_Numbers(const Handle& data_set, std::size_t most, const Take_Block& take) {
    const Handle type = Type_Of(data_set);
    // What the machine has is brought to single precision here, which the library does number by number.
    if (H5Tequal(type.get(), H5T_NATIVE_DOUBLE) > 0) return Read_As<double>(data_set, H5T_NATIVE_DOUBLE, most, take);
    if (H5Tequal(type.get(), H5T_NATIVE_INT32) > 0) return Read_As<std::int32_t>(data_set, H5T_NATIVE_INT32, most, take);
    if (H5Tequal(type.get(), H5T_NATIVE_UINT32) > 0) return Read_As<std::uint32_t>(data_set, H5T_NATIVE_UINT32, most, take);
    if (H5Tequal(type.get(), H5T_NATIVE_INT64) > 0) return Read_As<std::int64_t>(data_set, H5T_NATIVE_INT64, most, take);
    return Read_As<float>(data_set, H5T_NATIVE_FLOAT, most, take);
}

std::optional<std::string> Single_Value(const Handle& data_set) {
    const Handle type = Type_Of(data_set), space = Space_Of(data_set);
    if (!type || !space || H5Sget_simple_extent_npoints(space.get()) != 1 || !Lies_In_File(data_set)) return {};
    const std::vector<std::string> texts =
        Texts(type, space, 1, [&](hid_t memory, void* to) { return H5Dread(data_set.get(), memory, H5S_ALL, H5S_ALL, H5P_DEFAULT, to); });
    if (texts.empty()) return {};
    return texts.front();
}

}  // namespace vntl::nexus
