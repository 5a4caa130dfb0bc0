// Results of sequential refinements: any bytes give a file whose rows are drawn or refused, or a message.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "charts/seq_file.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vntl;
    Seq_File seq;
    if (seq.Read_Text(std::string(reinterpret_cast<const char*>(data), size), "file").failed != seq.empty()) std::abort();
    if (seq.empty()) return 0;
    const int rows = static_cast<int>(seq.param_names().size());
    if (rows < 5 || static_cast<std::size_t>(rows) > size) std::abort();
    std::vector<Seq_Choice> choices;
    for (int row = 1; row <= std::min(rows, max_generic_curves); ++row) choices.push_back({row});
    for (const int x_row : {1, rows, rows + 1}) {
        Generic_Plots plots;
        if (seq.Curves(x_row, choices, plots).failed != plots.curves.empty()) std::abort();
        for (const Generic_Curve& curve : plots.curves)
            if (static_cast<int>(curve.x.size()) != seq.nblocks() || curve.sigma.size() != curve.y.size()) std::abort();
    }
    return 0;
}
