#include "session/desk/picture_names.hpp"

#include <algorithm>

#include "base/os.hpp"
#include "base/text.hpp"
#include "session/store.hpp"

namespace vntl {

namespace {

constexpr std::size_t longest_name = 120;  // characters: with an ending and a number it stays a name that file systems take
constexpr std::string_view in_no_name = "\\/:*?\"<>|", usual_name = "filename";

std::string Without_Extension(std::string_view name) {
    const std::string_view stem = name.substr(0, name.size() - Extension_Of(name).size());
    return std::string(stem.empty() ? name : stem);
}

std::string_view Without_Packing(std::string_view name) {
    const std::string_view extension = Extension_Of(name);
    return Equal_No_Case(extension, ".gz") && extension.size() < name.size() ? name.substr(0, name.size() - extension.size()) : name;
}

}  // namespace

std::string Bare_Name(std::string_view file) {
    std::string name = Without_Extension(Without_Packing(File_Part(file)));
    for (char& c : name)
        if (static_cast<unsigned char>(c) < ' ' || c == 127 || in_no_name.find(c) != std::string_view::npos) c = '_';
    name = Trim(Cut(name, longest_name));
    while (name.ends_with('.')) name.pop_back();
    return name;
}

std::string Picture_Name(const Profile_Store& store) {
    if (store.nperfiles() == 0) return std::string(usual_name);
    const int first = std::max(1, store.First_Shown());
    const PRF_Info_Add_Type& of_first = store.Info(first);
    int others = 0;
    for (int row = first + 1; row <= store.nperfiles(); ++row) {
        const PRF_Info_Add_Type& info = store.Info(row);
        others += store.shown(row) && (info.file_name != of_first.file_name || info.directory != of_first.directory) ? 1 : 0;
    }
    std::string name = Bare_Name(of_first.file_name);
    if (name.empty()) name = usual_name;
    return others == 0 ? name : name + "_and_" + std::to_string(others) + "_more";
}

Status Picture_Names::Check(std::size_t files) const {
    bool of_file = false;
    for (std::size_t at = 0; (at = pattern_.find('%', at)) != std::string::npos; at += 2) {
        const char what = at + 1 < pattern_.size() ? pattern_[at + 1] : ' ';
        if (what != 'n' && what != 'e' && what != '%')
            return Status::Fail(
                "the name of a picture takes %n for the name of its file, %e for its extension and %% for a percent sign: " + pattern_);
        of_file |= what == 'n';
    }
    if (files > 1 && !of_file) return Status::Fail("pictures of several files need %n in their name: " + pattern_);
    return Status::Done();
}

std::string Picture_Names::Of(std::string_view file) {
    std::string name;
    for (std::size_t i = 0; i < pattern_.size(); ++i) {
        if (pattern_[i] != '%' || i + 1 == pattern_.size()) {
            name += pattern_[i];
            continue;
        }
        const char what = pattern_[++i];
        const std::string_view extension = Extension_Of(Without_Packing(File_Part(file)));
        if (what == 'n') name += Bare_Name(file);
        if (what == 'e') name += extension.substr(std::min<std::size_t>(1, extension.size()));
        if (what == '%') name += '%';
    }
    const std::string ending(Extension_Of(name)), stem = name.substr(0, name.size() - ending.size());
    for (int k = 2; !taken_.insert(name).second; ++k) name = stem + '_' + std::to_string(k) + ending;
    return name;
}

}  // namespace vntl
