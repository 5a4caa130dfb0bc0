// Lists of files: any bytes give names that can be names or a message, and what is written of them is read as the same names.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "patterns/file_list.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vntl;
    constexpr std::size_t most = 50;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    File_List list;
    if (Read_File_List(text, most, list).failed) return 0;
    if (list.names.size() > most || (list.first_left_out != 0) != (list.first_left_out > static_cast<int>(most))) std::abort();
    for (const std::string& name : list.names)
        if (!Can_Be_Listed(name)) std::abort();
    File_List again;
    if (Read_File_List(File_List_Text(list.names), most, again).failed || again.names != list.names) std::abort();
    return 0;
}
