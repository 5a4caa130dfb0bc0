#include "commands/file/export/size_entry.hpp"

#include <algorithm>
#include <cmath>

#include "base/text.hpp"
#include "commands/modal.hpp"

namespace vntl {

namespace {

constexpr double least_mm = 1, largest_mm = 9000;
constexpr int most_pixels = 32767;
constexpr const char *width_label = "Image &width", *height_label = "Image &height";

// Marks the field that holds no number of pixels.
bool Is_Pixels(int field, const char* label) {
    if (field == 0 || WDialogGetInteger(field)) return true;
    Refuse_Field(field, Replace_All(label, "&", "") + ": a whole number from 1 to " + std::to_string(most_pixels));
    return false;
}

}  // namespace

std::vector<Dialog_Field> Size_Entry::Millimetres(const Fields& fields) {
    const auto length = [](int number, const char* label) {
        return Dialog_Field{.number = number, .kind = Field_Kind::real, .label = label, .width = 10, .format = "(f12.2)"};
    };
    return {length(fields.mm_width, fields.mm_width_label), length(fields.mm_height, fields.mm_height_label)};
}

std::vector<Dialog_Field> Size_Entry::Pixels(const Fields& fields) {
    const auto pixels = [](int number, const char* label) {
        return Dialog_Field{.number = number, .kind = Field_Kind::integer, .label = label, .width = 8, .lo = 1, .hi = most_pixels};
    };
    return {pixels(fields.width, width_label), pixels(fields.height, height_label)};
}

Dialog_Field Size_Entry::Keep_Shape(const Fields& fields) {
    return {.number = fields.keep_shape, .kind = Field_Kind::check_box, .label = "&Keep shape"};
}

double Size_Entry::Pixels_A_Mm() const {
    return (driver_ == Hardcopy_Driver::bit_image ? size_.dots_per_inch : pixels_an_inch) / mm_an_inch;
}

bool Size_Entry::Keeps_Shape() const { return WDialogGetCheckBox(fields_.keep_shape) != 0; }

void Size_Entry::Show(const Picture_Size& millimetres, bool keep_shape) {
    size_ = millimetres;
    shape_ = size_.width / size_.height;
    pixels_given_ = false;
    WDialogPutCheckBox(fields_.keep_shape, keep_shape ? 1 : 0);
    WDialogPutInteger(fields_.density, size_.dots_per_inch);
    Show_Millimetres(0);
    Show_Pixels();
    Remember();
}

void Size_Entry::Show_Millimetres(int but) {
    if (but != fields_.mm_width) WDialogPutReal(fields_.mm_width, static_cast<float>(size_.width));
    if (but != fields_.mm_height) WDialogPutReal(fields_.mm_height, static_cast<float>(size_.height));
}

void Size_Entry::Show_Pixels() {
    const auto put = [&](int field, double mm) { WDialogPutInteger(field, static_cast<int>(std::lround(mm * Pixels_A_Mm()))); };
    put(fields_.width, size_.width);
    put(fields_.height, size_.height);
}

void Size_Entry::Take_Pixels() {
    const std::optional<int> width = WDialogGetInteger(fields_.width), height = WDialogGetInteger(fields_.height);
    if (!width || !height) return;
    size_.width = *width / Pixels_A_Mm();
    size_.height = *height / Pixels_A_Mm();
    shape_ = size_.width / size_.height;
    Show_Millimetres(0);
}

void Size_Entry::Take_Millimetres(int field) {
    const std::optional<float> given = WDialogGetReal(field);
    if (!given || !(*given >= least_mm && *given <= largest_mm)) return;
    const bool is_width = field == fields_.mm_width;
    (is_width ? size_.width : size_.height) = *given;
    if (!Keeps_Shape())
        shape_ = size_.width / size_.height;
    else if (is_width)
        size_.height = size_.width / shape_;
    else
        size_.width = size_.height * shape_;
    Show_Millimetres(field);
    Show_Pixels();
}

void Size_Entry::Remember() {
    for (const int field : {fields_.mm_width, fields_.mm_height, fields_.width, fields_.height, fields_.density})
        known_[field] = WDialogGetString(field);
}

void Size_Entry::Changed(int field) {
    if (field == fields_.keep_shape) shape_ = size_.width / size_.height;
    const auto known = known_.find(field);
    if (field == 0 || known == known_.end() || known->second == WDialogGetString(field)) return;
    if (field == fields_.density) {
        size_.dots_per_inch = WDialogGetInteger(field).value_or(size_.dots_per_inch);
        pixels_given_ ? Take_Pixels() : Show_Pixels();
    } else {
        pixels_given_ = field == fields_.width || field == fields_.height;
        pixels_given_ ? Take_Pixels() : Take_Millimetres(field);
    }
    Remember();
}

bool Size_Entry::Is_Length(int field, const char* label) const {
    const std::string name = Replace_All(label, "&", "");
    const std::optional<float> length = Number_In_Field(field, name);
    if (!length) return false;
    if (*length >= least_mm && *length <= largest_mm) return true;
    Refuse_Field(field, name + ": a length from 1 to 9000 millimetres");
    return false;
}

// Those that were given last decide, whatever the others hold.
std::optional<Picture_Size> Size_Entry::Take() const {
    const bool good = pixels_given_
                          ? Is_Pixels(fields_.width, width_label) && Is_Pixels(fields_.height, height_label)
                          : Is_Length(fields_.mm_width, fields_.mm_width_label) && Is_Length(fields_.mm_height, fields_.mm_height_label);
    if (!good) return {};
    Hardcopy_Options options;
    size_.Put(driver_, options);
    if (Fits_Hardcopy(options.width, options.height)) return size_;
    const auto side = [](double pixels) { return std::to_string(std::lround(pixels)); };
    Refuse_Field(pixels_given_ ? fields_.width : fields_.mm_width,
                 "A picture of " + side(options.width) + " x " + side(options.height) + " pixels is too large, or empty");
    return {};
}

}  // namespace vntl
