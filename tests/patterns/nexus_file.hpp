// HDF5 files made in memory, for the tests of what is read from them.
#pragma once

#include <hdf5.h>

#include <string>
#include <vector>

namespace vntl::test {

class Nexus_File {
public:
    Nexus_File() {
        const hid_t in_memory = H5Pcreate(H5P_FILE_ACCESS);
        H5Pset_fapl_core(in_memory, 1 << 16, false);
        static int made = 0;
        file_ = H5Fcreate(("file in memory " + std::to_string(++made)).c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, in_memory);
        H5Pclose(in_memory);
    }
    ~Nexus_File() { H5Fclose(file_); }
    Nexus_File(const Nexus_File&) = delete;
    Nexus_File& operator=(const Nexus_File&) = delete;

    std::string Bytes() const {
        H5Fflush(file_, H5F_SCOPE_GLOBAL);
        std::string bytes(static_cast<std::size_t>(H5Fget_file_image(file_, nullptr, 0)), '\0');
        H5Fget_file_image(file_, bytes.data(), bytes.size());
        return bytes;
    }

    Nexus_File& Group(const std::string& path, const std::string& kind) {
        H5Gclose(H5Gcreate2(file_, path.c_str(), H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
        return Text(path, "NX_class", kind);
    }

    // An attribute: a text, or a list of them.
    Nexus_File& Text(const std::string& path, const std::string& name, const std::string& text) { return Texts(path, name, {text}, true); }
    Nexus_File& Texts(const std::string& path, const std::string& name, const std::vector<std::string>& texts, bool single = false) {
        const hid_t type = H5Tcopy(H5T_C_S1);
        H5Tset_size(type, H5T_VARIABLE);
        const hsize_t n = texts.size();
        const hid_t space = single ? H5Screate(H5S_SCALAR) : H5Screate_simple(1, &n, nullptr);
        std::vector<const char*> words;
        for (const std::string& text : texts) words.push_back(text.c_str());
        return Attribute(path, name, type, space, words.data());
    }
    Nexus_File& Number(const std::string& path, const std::string& name, int value) {
        return Attribute(path, name, H5Tcopy(H5T_NATIVE_INT), H5Screate(H5S_SCALAR), &value);
    }

    // A text by itself, of fixed length.
    Nexus_File& Words(const std::string& path, const std::string& text) {
        const hid_t type = H5Tcopy(H5T_C_S1), space = H5Screate(H5S_SCALAR);
        H5Tset_size(type, text.size());
        const hid_t set = H5Dcreate2(file_, path.c_str(), type, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
        H5Dwrite(set, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, text.data());
        H5Dclose(set), H5Sclose(space), H5Tclose(type);
        return *this;
    }

    // Numbers of that shape (none: a number by itself), stored as `type`, packed where told.
    Nexus_File& Values(const std::string& path, const std::vector<double>& values, const std::vector<hsize_t>& shape,
                       const std::string& units = {}, hid_t type = H5T_IEEE_F64LE, bool packed = false) {
        const hid_t space = shape.empty() ? H5Screate(H5S_SCALAR) : H5Screate_simple(static_cast<int>(shape.size()), shape.data(), nullptr);
        const hid_t list = H5Pcreate(H5P_DATASET_CREATE);
        if (packed) H5Pset_chunk(list, static_cast<int>(shape.size()), shape.data()), H5Pset_shuffle(list), H5Pset_deflate(list, 4);
        const hid_t set = H5Dcreate2(file_, path.c_str(), type, space, H5P_DEFAULT, list, H5P_DEFAULT);
        if (!values.empty()) H5Dwrite(set, H5T_NATIVE_DOUBLE, H5S_ALL, H5S_ALL, H5P_DEFAULT, values.data());
        H5Dclose(set), H5Pclose(list), H5Sclose(space);
        return units.empty() ? *this : Text(path, "units", units);
    }

    // Four numbers that another file holds.
    Nexus_File& Outside(const std::string& path, const std::string& file) {
        const hsize_t n = 4;
        const hid_t space = H5Screate_simple(1, &n, nullptr), list = H5Pcreate(H5P_DATASET_CREATE);
        H5Pset_external(list, file.c_str(), 0, 4 * sizeof(float));
        H5Dclose(H5Dcreate2(file_, path.c_str(), H5T_IEEE_F32LE, space, H5P_DEFAULT, list, H5P_DEFAULT));
        H5Pclose(list), H5Sclose(space);
        return *this;
    }

    // A link to another file.
    Nexus_File& Elsewhere(const std::string& path, const std::string& file, const std::string& there) {
        H5Lcreate_external(file.c_str(), there.c_str(), file_, path.c_str(), H5P_DEFAULT, H5P_DEFAULT);
        return *this;
    }

private:
    Nexus_File& Attribute(const std::string& path, const std::string& name, hid_t type, hid_t space, const void* value) {
        const hid_t attribute = H5Acreate_by_name(file_, path.c_str(), name.c_str(), type, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
        H5Awrite(attribute, type, value);
        H5Aclose(attribute), H5Sclose(space), H5Tclose(type);
        return *this;
    }

    hid_t file_;
};

}  // namespace vntl::test
