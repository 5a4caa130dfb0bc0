#include "pictures/pcx.hpp"

#include <algorithm>
#include <span>

namespace vntl {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t head_size = 128, head_colours = 16, file_colours = 256;
constexpr std::uint8_t run_mark = 0xc0;
constexpr std::size_t longest_run = 63;

struct Layout {
    int width, height, bits, planes, bytes_a_line;
};

Layout Layout_Of(int width, int height, int bits, int planes) {
    const int bytes = (width * bits + 7) / 8;
    return {width, height, bits, planes, bytes + bytes % 2};
}

void Put_16(Bytes& head, std::size_t place, int value) {
    head[place] = static_cast<std::uint8_t>(value & 255);
    head[place + 1] = static_cast<std::uint8_t>(value >> 8 & 255);
}

void Put_Palette(std::span<std::uint8_t> target, std::span<const Colour> palette) {
    for (std::size_t i = 0; i < palette.size() && 3 * i + 2 < target.size(); ++i) {
        target[3 * i] = static_cast<std::uint8_t>(Red(palette[i]));
        target[3 * i + 1] = static_cast<std::uint8_t>(Green(palette[i]));
        target[3 * i + 2] = static_cast<std::uint8_t>(Blue(palette[i]));
    }
}

void Append(std::string& file, std::span<const std::uint8_t> bytes) {
    file.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

std::string Head(const Layout& layout, int dots_per_inch, std::span<const Colour> palette) {
    Bytes head(head_size);
    head[0] = 10, head[1] = 5, head[2] = 1;
    head[3] = static_cast<std::uint8_t>(layout.bits);
    Put_16(head, 8, layout.width - 1);
    Put_16(head, 10, layout.height - 1);
    Put_16(head, 12, dots_per_inch);
    Put_16(head, 14, dots_per_inch);
    Put_Palette(std::span(head).subspan(16, 3 * head_colours), palette);
    head[65] = static_cast<std::uint8_t>(layout.planes);
    Put_16(head, 66, layout.bytes_a_line);
    Put_16(head, 68, 1);
    std::string file;
    Append(file, head);
    return file;
}

// No run goes on from one plane into the next.
void Append_Packed(std::string& file, const Bytes& line) {
    for (std::size_t i = 0; i < line.size();) {
        std::size_t run = 1;
        while (run < longest_run && i + run < line.size() && line[i + run] == line[i]) ++run;
        if (run > 1 || line[i] >= run_mark) file += static_cast<char>(run_mark | run);
        file += static_cast<char>(line[i]);
        i += run;
    }
}

}  // namespace

std::string Pcx_Of(const Pixel_Buffer& picture, int dots_per_inch) {
    const Layout layout = Layout_Of(picture.width, picture.height, 8, 3);
    std::string file = Head(layout, dots_per_inch, {});
    Bytes line(static_cast<std::size_t>(layout.bytes_a_line));
    for (int y = 0; y < picture.height; ++y) {
        for (int plane = 0; plane < layout.planes; ++plane) {
            const int shift = 16 - 8 * plane;  // red first
            for (int x = 0; x < picture.width; ++x)
                line[static_cast<std::size_t>(x)] = static_cast<std::uint8_t>(picture.pixels[y * picture.stride + x] >> shift & 255u);
            Append_Packed(file, line);
        }
    }
    return file;
}

std::string Pcx_Of(const Indexed_Image& image, int dots_per_inch) {
    const std::size_t colours = image.palette.size();
    const bool bytes = colours > head_colours, ink = image.palette == std::vector<Colour>{WRGB(0, 0, 0), WRGB(255, 255, 255)};
    const Layout layout = Layout_Of(image.width, image.height, bytes ? 8 : 1, bytes || ink ? 1 : 4);
    std::string file = Head(layout, dots_per_inch, image.palette);
    const auto width = static_cast<std::size_t>(image.width);
    Bytes line(static_cast<std::size_t>(layout.bytes_a_line));
    for (std::size_t start = 0; start < image.indices.size(); start += width) {
        const std::span<const std::uint8_t> pixels = std::span(image.indices).subspan(start, width);
        for (int plane = 0; plane < layout.planes; ++plane) {
            std::fill(line.begin(), line.end(), std::uint8_t{0});
            for (std::size_t x = 0; x < width; ++x) {
                if (bytes)
                    line[x] = pixels[x];
                else if ((pixels[x] >> plane & 1) != 0)
                    line[x / 8] = static_cast<std::uint8_t>(line[x / 8] | 0x80 >> x % 8);
            }
            Append_Packed(file, line);
        }
    }
    if (bytes) {
        Bytes palette(3 * file_colours);
        Put_Palette(palette, image.palette);
        file += '\x0c';
        Append(file, palette);
    }
    return file;
}

}  // namespace vntl
