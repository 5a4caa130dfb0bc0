#include "pictures/palette.hpp"

#include <algorithm>
#include <array>
#include <limits>
#include <unordered_map>

#include "pictures/recolour.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_counted = 1 << 18;  // colours that are counted one by one: memory is bounded
constexpr int channel_bits = 5;                // of the bins into which all colours fall
constexpr std::size_t bins = std::size_t{1} << 3 * channel_bits;

std::size_t Bin_Of(Colour colour) {
    constexpr unsigned lost = 8 - channel_bits;
    return (Red(colour) >> lost) << 2 * channel_bits | (Green(colour) >> lost) << channel_bits | Blue(colour) >> lost;
}

template <class Use>
void For_Each_Pixel(const Pixel_Buffer& picture, const Use& use) {
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) use(Colour_Of_Argb(picture.pixels[y * picture.stride + x]));
}

// How many pixels have a colour.
struct Counted {
    Colour colour = 0;
    std::uint64_t pixels = 0;
};

struct Colour_Count {
    std::unordered_map<Colour, std::uint64_t> single;
    std::vector<std::array<std::uint64_t, 4>> in_bin;  // sums of red, green and blue, and pixels
    bool complete = true;                              // every colour stands in `single`
};

Colour_Count Count_Colours(const Pixel_Buffer& picture) {
    Colour_Count count;
    count.in_bin.resize(bins);
    For_Each_Pixel(picture, [&](Colour colour) {
        auto& bin = count.in_bin[Bin_Of(colour)];
        bin[0] += Red(colour), bin[1] += Green(colour), bin[2] += Blue(colour), ++bin[3];
        const auto known = count.single.find(colour);
        if (known != count.single.end())
            ++known->second;
        else if (count.single.size() < most_counted)
            count.single.emplace(colour, 1);
        else
            count.complete = false;
    });
    return count;
}

// Black and white come first: letters and axes are few pixels.
std::vector<Colour> Most_Frequent(const Colour_Count& count, std::size_t most) {
    constexpr Colour black = WRGB(0, 0, 0), white = WRGB(255, 255, 255);
    std::vector<Counted> colours;
    for (const auto& [colour, pixels] : count.single)
        colours.push_back({colour, colour == black || colour == white ? std::numeric_limits<std::uint64_t>::max() : pixels});
    const auto before = [](const Counted& a, const Counted& b) { return a.pixels != b.pixels ? a.pixels > b.pixels : a.colour < b.colour; };
    most = std::min(most, colours.size());
    std::partial_sort(colours.begin(), colours.begin() + static_cast<std::ptrdiff_t>(most), colours.end(), before);
    std::vector<Colour> found;
    for (std::size_t i = 0; i < most; ++i) found.push_back(colours[i].colour);
    return found;
}

// --- median cut -----------------------------------------------------------------------------------------------------------------

unsigned Channel(Colour colour, int axis) { return colour >> 8 * axis & 255u; }

struct Colour_Box {
    std::vector<Counted> colours;
    int axis = 0;            // the longest
    std::uint64_t size = 0;  // its length, weighed by the pixels inside

    explicit Colour_Box(std::vector<Counted> inside) : colours(std::move(inside)) {
        std::uint64_t pixels = 0;
        for (const Counted& c : colours) pixels += c.pixels;
        for (int k = 0; k < 3; ++k) {
            const auto [low, high] = std::ranges::minmax(colours, {}, [k](const Counted& c) { return Channel(c.colour, k); });
            const std::uint64_t length = (Channel(high.colour, k) - Channel(low.colour, k)) * pixels;
            if (length > size) size = length, axis = k;
        }
    }

    Colour Mean() const {
        std::array<std::uint64_t, 3> sum{};
        std::uint64_t pixels = 0;
        for (const Counted& c : colours) {
            for (int k = 0; k < 3; ++k) sum[static_cast<std::size_t>(k)] += Channel(c.colour, k) * c.pixels;
            pixels += c.pixels;
        }
        const auto mean = [&](std::size_t k) { return static_cast<unsigned>((sum[k] + pixels / 2) / pixels); };
        return WRGB(mean(0), mean(1), mean(2));
    }

    // At the pixel in the middle along the longest axis; the upper part is given back.
    Colour_Box Cut() {
        std::ranges::sort(colours, {}, [this](const Counted& c) { return Channel(c.colour, axis); });
        std::uint64_t pixels = 0, below = 0;
        for (const Counted& c : colours) pixels += c.pixels;
        std::size_t first = 0;
        while (first + 1 < colours.size() && (below == 0 || below + colours[first].pixels <= pixels / 2)) below += colours[first++].pixels;
        const auto middle = colours.begin() + static_cast<std::ptrdiff_t>(std::max<std::size_t>(first, 1));
        Colour_Box upper({middle, colours.end()});
        colours.erase(middle, colours.end());
        *this = Colour_Box(std::move(colours));
        return upper;
    }
};

void Add_Median_Cut(const Colour_Count& count, std::size_t most, std::vector<Colour>& palette) {
    std::vector<Counted> colours;
    for (const auto& [red, green, blue, pixels] : count.in_bin)
        if (pixels > 0)
            colours.push_back(
                {WRGB(static_cast<unsigned>(red / pixels), static_cast<unsigned>(green / pixels), static_cast<unsigned>(blue / pixels)),
                 pixels});
    std::vector<Colour_Box> boxes;
    boxes.emplace_back(std::move(colours));
    while (palette.size() + boxes.size() < most) {
        const auto largest = std::ranges::max_element(boxes, {}, &Colour_Box::size);
        if (largest->size == 0) break;
        Colour_Box upper = largest->Cut();
        boxes.push_back(std::move(upper));
    }
    for (const Colour_Box& box : boxes) palette.push_back(box.Mean());
}

// --- pixels ---------------------------------------------------------------------------------------------------------------------

std::uint8_t Nearest(const std::vector<Colour>& palette, Colour colour) {
    int nearest = 0, least = std::numeric_limits<int>::max();
    for (std::size_t i = 0; i < palette.size(); ++i) {
        int distance = 0;
        for (int k = 0; k < 3; ++k) {
            const int apart = static_cast<int>(Channel(palette[i], k)) - static_cast<int>(Channel(colour, k));
            distance += apart * apart;
        }
        if (distance < least) least = distance, nearest = static_cast<int>(i);
    }
    return static_cast<std::uint8_t>(nearest);
}

}  // namespace

Indexed_Image With_Palette(const Pixel_Buffer& picture, int most_colours) {
    const auto most = static_cast<std::size_t>(std::clamp(most_colours, 2, 256));
    const Colour_Count count = Count_Colours(picture);
    Indexed_Image image{picture.width, picture.height, {}, {}};
    if (count.complete && count.single.size() <= most) {
        image.palette = Most_Frequent(count, most);
    } else {
        image.palette = Most_Frequent(count, most / 2);
        Add_Median_Cut(count, most, image.palette);
    }
    image.indices.reserve(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height));
    std::unordered_map<Colour, std::uint8_t> known;
    Colour last = no_colour;
    std::uint8_t index = 0;
    For_Each_Pixel(picture, [&](Colour colour) {
        if (colour != last) {
            const auto found = known.find(colour);
            index = found != known.end() ? found->second : Nearest(image.palette, colour);
            if (found == known.end() && known.size() < most_counted) known.emplace(colour, index);
            last = colour;
        }
        image.indices.push_back(index);
    });
    return image;
}

Indexed_Image In_Black_And_White(const Pixel_Buffer& picture) {
    constexpr float white = 255;
    Indexed_Image image{picture.width, picture.height, {WRGB(0, 0, 0), WRGB(255, 255, 255)}, {}};
    const auto width = static_cast<std::size_t>(picture.width);
    image.indices.reserve(width * static_cast<std::size_t>(picture.height));
    std::vector<float> error(width + 2), below(width + 2);  // what is owed to a pixel, its place moved by one
    std::size_t x = 0;
    For_Each_Pixel(picture, [&](Colour colour) {
        const auto bright = static_cast<float>(Brightness(colour));
        const bool pure = colour == image.palette[0] || colour == image.palette[1];
        const float wanted = pure ? bright : bright + error[x + 1];
        const bool light = wanted >= white / 2;
        image.indices.push_back(light ? 1 : 0);
        if (!pure) {
            const float owed = (wanted - (light ? white : 0)) / 16;
            error[x + 2] += 7 * owed, below[x] += 3 * owed, below[x + 1] += 5 * owed, below[x + 2] += owed;
        }
        if (++x < width) return;
        x = 0;
        error.swap(below);
        std::fill(below.begin(), below.end(), 0.0f);
    });
    return image;
}

}  // namespace vntl
