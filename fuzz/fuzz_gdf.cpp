// Generic data files: any bytes give curves that hold together, in memory of the size of the text, or a message and no curves.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "charts/read_gdf.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vntl;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    Generic_Plots plots;
    const bool failed = Read_GDF_Text(text, "file", plots).failed;
    if (failed != plots.curves.empty() || plots.curves.size() > max_generic_curves) std::abort();
    std::size_t points = 0;
    for (const Generic_Curve& curve : plots.curves) {
        if (curve.y.size() != curve.x.size() || curve.sigma.size() != curve.x.size()) std::abort();
        points += curve.x.size();
    }
    if (points > size) std::abort();
    if (!failed && plots.slices.size() != (plots.plot_kind == Plot_Kind::pie ? plots.curves.front().x.size() : 0)) std::abort();
    return 0;
}
