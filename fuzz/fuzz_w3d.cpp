// Files of solids: any bytes give a solid or a message; a solid that was read is written and read back the same, becomes triangles and is
// drawn.
#include <cmath>
#include <cstdlib>
#include <string>

#include "drawing/recording.hpp"
#include "solid/w3d_draw.hpp"
#include "solid/w3d_file.hpp"
#include "solid/w3d_mesh.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vntl;
    std::string text(reinterpret_cast<const char*>(data), size);
    if (!text.starts_with("w3d")) text = "w3d 1\neye 0 3 -9\nlight 5 5 0\n" + text + "\nend\n";
    W3d solid, again;
    W3d_View view;
    const Status status = Read_W3d_Text(text, solid, view);
    if (status.failed == status.message.empty()) std::abort();
    if (status.failed) return 0;

    const std::string written = W3d_Text_Of(solid, view);
    if (Read_W3d_Text(written, again, view).failed || W3d_Text_Of(again, view) != written) std::abort();
    const W3d_Mesh mesh = Mesh_Of(solid);
    for (const std::vector<std::uint32_t>& corners : {mesh.triangles, mesh.edges})
        for (const std::uint32_t corner : corners)
            if (corner >= mesh.vertices.size()) std::abort();
    Recording_Device device(400, 300);
    Draw_W3d(solid, view, device);
    for (const Recorded& item : device.items())
        if (const auto* list = std::get_if<Recorded_Facets>(&item))
            for (const Point& place : list->places)
                if (!std::isfinite(place.x) || !std::isfinite(place.y)) std::abort();
    return 0;
}
