// PIK and IRF files: any bytes give a state that holds together or a message, and a state that was read is written and read again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "fit/irf_file.hpp"
#include "fit/pik_file.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vntl;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    Fit_State state;
    std::vector<Background_Mark> nodes;
    Fit_Kind kind{};
    if (Read_Pik_Text(text, state, nodes, kind).ok()) {
        if (nodes.size() > max_fit_nodes || state.peaks.size() > max_fit_peaks || !(state.x_fin > state.x_ini)) std::abort();
        Fit_State again;
        std::vector<Background_Mark> nodes_again;
        if (Read_Pik_Text(Pik_Text(kind, state, nodes, "title", "2theta"), again, nodes_again, kind).ok() &&
            again.peaks.size() != state.peaks.size())
            std::abort();
    }
    Irf_File irf;
    Read_Irf_Text(text, irf);
    Apply_Irf(irf, kind, state);
    return 0;
}
