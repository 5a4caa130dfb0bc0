#include "session/file_kinds.hpp"

#include "base/os.hpp"
#include "base/text.hpp"
#include "patterns/read_pattern.hpp"
#include "session/load.hpp"
#include "session/open_numors.hpp"
#include "session/open_prf.hpp"
#include "session/read_files.hpp"
#include "session/row_constants.hpp"

namespace vntl {

namespace {

std::string All_Pattern_Names() {
    std::string names;
    for (const Format_Extension& row : Format_Extensions()) names += (names.empty() ? "*" : ";*") + std::string(row.extension);
    return names;
}

bool Is_Profile(std::string_view extension) { return extension == ".prf" || extension == ".xrf"; }
bool Is_Raw(std::string_view extension) { return extension == ".3t2" || extension == ".g44" || extension == ".3t2o"; }
bool Is_List(std::string_view extension) { return extension == ".buf"; }
bool Is_Constants(std::string_view extension) { return extension == ".instprm" || extension == ".prm" || extension == ".iparm"; }
bool Is_Generic(std::string_view extension) { return extension == ".gdf" || extension == ".seq"; }
bool Is_Solid(std::string_view extension) { return extension == ".w3d"; }
bool Is_Script(std::string_view extension) { return extension == ".vns"; }

constexpr File_Kind_Row kinds[] = {
    {File_Kind::pattern, Is_Pattern_Extension, "Select data files to open", "Input Data File ", All_Pattern_Names, Letters::any,
     Letters::small_or_capital, "open", Open_Pattern_File, nullptr},
    {File_Kind::refined_profile, Is_Profile, "Select PRF files to open", "Input PRF File (*.prf)",
     [] { return std::string("*.prf;*.xrf"); }, Letters::any, Letters::any, "drop", Open_Prf_File, Read_Refined_File},
    {File_Kind::raw_data, Is_Raw, "Select RawData file to open", "Input RawData File (*.3t2,*.g44,*.3t2o)",
     [] { return std::string("*.3t2;*.g44"); }, Letters::any, Letters::any, "drop", Open_Raw_File,
     [](const std::string& path) { return Read_Raw_File(path, true); }},
    {File_Kind::list_of_files, Is_List, "Load Buffer Data File", "Buffer Data File (*.buf)", [] { return std::string("*.buf"); },
     Letters::any, Letters::small_or_capital, "drop", Open_Buffer_File, nullptr},
    {File_Kind::constants, Is_Constants, "Select the instrument file", "Instrument file (*.instprm,*.prm,*.iparm)",
     [] { return std::string("*.instprm;*.prm;*.iparm"); }, Letters::any, Letters::any, "drop", Open_Constants_File, nullptr},
    {File_Kind::generic_plots, Is_Generic, "Generic Data Files", "Generic Data Files", [] { return std::string("*.gdf;*.seq"); },
     Letters::any, Letters::closed, "drop", nullptr, nullptr},
    {File_Kind::solid, Is_Solid, "", "3D model files", [] { return std::string("*.w3d"); }, Letters::any, Letters::closed, "drop", nullptr,
     nullptr},
    {File_Kind::script, Is_Script, "", "Session script (*.vns)", [] { return std::string("*.vns"); }, Letters::closed, Letters::closed, "",
     nullptr, nullptr},
};

Open_Result Open_As_Recognised(Session& session, Ask& ask, const std::string& name) { return Open_Files(session, ask, {name}); }

// Behind the rows of the table: files whose names tell nothing.
constexpr File_Kind_Row Known_By_Content(File_Kind kind, decltype(File_Kind_Row::open) open, decltype(File_Kind_Row::read) read) {
    const auto no_extension = [](std::string_view) { return false; };
    const auto no_filter = [] { return std::string(); };
    return {kind, no_extension, "", "", no_filter, Letters::any, Letters::any, "drop", open, read};
}
constexpr File_Kind_Row recognised = Known_By_Content(File_Kind::pattern, Open_As_Recognised, nullptr);
constexpr File_Kind_Row run =  // known by its first line: its name is a number
    Known_By_Content(File_Kind::numor, Open_Numor_Beside, [](const std::string& path) { return Read_Numor_File(path); });

std::string_view Extension_With_Point(std::string_view name) {
    const std::size_t point = name.rfind('.');
    return point == std::string_view::npos ? std::string_view{} : name.substr(point);
}

const File_Kind_Row* Through(std::string_view name, Letters File_Kind_Row::*door) {
    const std::string_view extension = Extension_With_Point(name);
    const File_Kind_Row* row = File_Kind_Of(name);
    if (row == nullptr || row->*door == Letters::closed) return nullptr;
    const bool written_alike = extension == Lower(extension) || extension == Upper(extension);
    return row->*door == Letters::any || written_alike ? row : nullptr;
}

const File_Kind_Row* Let_In(std::string_view name) {
    const std::string file(name);
    if (const File_Kind_Row* row = File_Kind_Of(name)) return row->open != nullptr && IOsFileExists(file) ? row : nullptr;
    if (Is_Numor(file)) return &run;
    const Recognition look = Recognise_Format(file);  // of a binary file the reader tells what it is
    return look.by_content != 0 || !look.binary.empty() ? &recognised : nullptr;
}

const File_Kind_Row* Row_At(std::string_view name, Letters File_Kind_Row::*door) {
    const File_Kind_Row* const row = Through(name, door);
    return row != nullptr ? row : Let_In(name);
}

}  // namespace

std::span<const File_Kind_Row> File_Kinds() { return kinds; }

const File_Kind_Row* File_Kind_Of(std::string_view name) {
    const std::string extension = Lower(Extension_With_Point(name));
    for (const File_Kind_Row& row : kinds)
        if (row.has(extension)) return &row;
    return nullptr;
}

const File_Kind_Row* Starts_With(std::string_view name) { return Row_At(name, &File_Kind_Row::start); }
const File_Kind_Row* Recent_As(std::string_view name) { return Row_At(name, &File_Kind_Row::recent); }

std::string Selector_Filter(const File_Kind_Row& row) { return std::string(row.filter_label) + '|' + row.filter() + '|'; }

const File_Kind_Row& Row_Of(File_Kind kind) {
    for (const File_Kind_Row& row : kinds)
        if (row.kind == kind) return row;
    return kinds[0];
}

}  // namespace vntl
