// A whole DXF file about the entities of a drawing: header, tables, blocks, entities, objects, of release 2000.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "drawing/device.hpp"
#include "pictures/dxf_groups.hpp"

namespace vntl {

// Layers by the kind of what stands on them.
inline constexpr const char* dxf_page = "PAGE";
inline constexpr const char* dxf_areas = "AREAS";
inline constexpr const char* dxf_lines = "LINES";
inline constexpr const char* dxf_markers = "MARKERS";
inline constexpr const char* dxf_texts = "TEXTS";

// What names its owner by a handle stands in the model space or in a block; free handles begin behind those of the tables.
inline constexpr std::uint32_t dxf_model_space = 0x10, dxf_paper_space = 0x11, dxf_first_free_handle = 0x20;

// A font of the table of text styles, by a font number and style bits of pictures.
struct Dxf_Font {
    std::string style;    // its name in the table
    std::string file;     // of the letters
    std::string family;   // as the system lists it
    double capitals = 0;  // their height in em, which is what the height of a text means here
    int flags = 0;        // pitch, family, bold, italic
};
Dxf_Font Dxf_Font_Of(int font, int style);

std::string Dxf_Linetype(Line_Style style);

// Shapes that are drawn many times: entities with a place of their own, which name the block.
struct Dxf_Block {
    std::string name;
    std::uint32_t handle = 0;
    Dxf_Groups entities;
};

struct Dxf_Drawing {
    Rect page{};      // millimetres
    double unit = 0;  // of lines and their dashes, millimetres
    std::vector<Dxf_Block> blocks;
    Dxf_Groups entities;
    std::uint32_t next_handle = dxf_first_free_handle;
};

std::string Dxf_File(const Dxf_Drawing& drawing);

}  // namespace vntl
