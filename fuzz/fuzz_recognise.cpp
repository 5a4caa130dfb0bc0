// Recognition by content: any bytes give a code of the table or none.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "patterns/recognise.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const int code = vntl::Recognised_By_Content({reinterpret_cast<const char*>(data), size});
    if (code < 0 || code > 15 || vntl::How_Recognised(code).empty() != (code == 0)) std::abort();
    return 0;
}
