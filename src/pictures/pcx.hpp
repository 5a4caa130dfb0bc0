// PCX files, version 5: a head of 128 bytes, then each line of the picture, plane by plane, with runs of equal bytes packed.
//
//     byte  0  10            the mark of the format
//           1  5             version: with a palette of 256 colours behind the picture
//           2  1             packed
//           3  1 or 8        bits a pixel in a plane
//           4  0 0 x y       first and last column and line, 16 bits each, low byte first
//          12  dpi dpi       16 bits each
//          16  48 bytes      palette of up to 16 colours: red, green, blue
//          65  1, 3 or 4     planes: one for black and white or 256 colours, red, green and blue, or the four bits of 16 colours
//          66  n             bytes of a line in a plane, 16 bits, an even number
//          68  1             the palette is one of colours
//
// A byte from 0xc1 on tells how often the next one stands there, at most 63 times; so a byte of the picture that has both upper bits set is
// a run too. Behind a picture of 256 colours follow 0x0c and 768 bytes.
#pragma once

#include <string>

#include "drawing/pixels.hpp"
#include "pictures/palette.hpp"

namespace vntl {

std::string Pcx_Of(const Pixel_Buffer& picture, int dots_per_inch);  // 24 bits a pixel
// By the number of its colours: eight bits a pixel or four planes of one; black and white, in this order, one bit, for which viewers mind
// no palette.
std::string Pcx_Of(const Indexed_Image& image, int dots_per_inch);

}  // namespace vntl
