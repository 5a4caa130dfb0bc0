// Recognition by content: any bytes give a code of the table or none, and a binary file has no format.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "patterns/binary_file.hpp"
#include "patterns/recognise.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const int code = vntl::Recognised_By_Content(text);
    if (code < 0 || code > 15 || vntl::How_Recognised(code).empty() != (code == 0)) std::abort();
    if (code != 0 && !vntl::Is_Archive_Or_Picture(text) && !vntl::Binary_Refusal(text).empty()) std::abort();
    return 0;
}
