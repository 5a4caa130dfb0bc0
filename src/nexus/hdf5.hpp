// The library of HDF5 as this program uses it: objects that close themselves, attributes as text, arrays of numbers checked before they
// are read. Nothing leads out of the file: links to other files are not followed, data that lie in others not read.
#pragma once

#include <hdf5.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vntl::nexus {

class Handle {
public:
    Handle() = default;
    Handle(hid_t id, herr_t (*close)(hid_t)) : id_(id), close_(close) {}
    Handle(Handle&& other) noexcept : id_(other.id_), close_(other.close_) { other.id_ = -1; }
    Handle& operator=(Handle&& other) noexcept {
        std::swap(id_, other.id_);
        std::swap(close_, other.close_);
        return *this;
    }
    ~Handle() {
        if (id_ >= 0) close_(id_);
    }
    hid_t get() const { return id_; }
    explicit operator bool() const { return id_ >= 0; }

private:
    hid_t id_ = -1;
    herr_t (*close_)(hid_t) = nullptr;
};

// The file that stands on standard input; empty where it is none of HDF5. It must be one that can be mapped into memory.
Handle Open_Standard_Input();

// An object by its path; empty without one, and where the path leads to another file.
Handle Open_Object(hid_t place, const std::string& path);
// Whether a link to another file was met.
bool Leads_Elsewhere();

bool Is_Group(const Handle& object);
bool Is_Data_Set(const Handle& object);

// Names of a group's members, at most so many, in the order of their names.
std::vector<std::string> Members(const Handle& group, std::size_t most = 4000);

// Texts of an attribute: one, or those of a list. Numbers as digits. Empty without it.
std::vector<std::string> Attribute_Texts(const Handle& object, const char* name);
std::string Attribute_Text(const Handle& object, const char* name);

// What an array is, and why it cannot be read.
struct Array_Form {
    std::vector<hsize_t> shape;  // lengths of 1 left out
    std::string fault;           // a sentence; blank where it can be read
    std::size_t points = 0;
};
Array_Form Form_Of(const Handle& data_set);

// The first `most` numbers of an array whose form has no fault, in their order, in single precision, block by block. False where the
// library fails: those of the blocks before were given.
using Take_Block = std::function<void(std::span<const float>)>;
bool Read_Numbers(const Handle& data_set, std::size_t most, const Take_Block& take);

// The value of a data set that holds one number or text; nothing for another one.
std::optional<std::string> Single_Value(const Handle& data_set);

}  // namespace vntl::nexus
