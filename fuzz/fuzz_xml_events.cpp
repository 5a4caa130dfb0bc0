// XML: any bytes are walked through in bounded depth, and what is told of them is no longer than twice the document.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "base/xml_events.hpp"

namespace {

class Measure : public vntl::Xml_Events {
public:
    void Start(const vntl::Xml_Path& path, const vntl::Xml_Attributes& attributes) override {
        if (path.Depth() > 200 || attributes["type"].size() > most) std::abort();
    }
    void End(const vntl::Xml_Path& path, std::string_view text) override {
        length += text.size();
        if (!path.Within(path.Name()) || length > 2 * size) std::abort();
    }
    static constexpr std::size_t most = std::size_t{100} << 20;
    std::size_t size = 0, length = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Measure measure;
    measure.size = size;
    static_cast<void>(vntl::Walk_Xml({reinterpret_cast<const char*>(data), size}, measure));
    return 0;
}
