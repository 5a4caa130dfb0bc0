// The fields of a dialog for the size of a picture: millimetres, and pixels where the dialog has them, which follow one another.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "commands/file/export_picture.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

class Size_Entry {
public:
    // Numbers of the fields, 0 for none. Without a density pixels are 1/96 inch, as those of drawings.
    struct Fields {
        int mm_width = 0, mm_height = 0, keep_shape = 0;
        int width = 0, height = 0, density = 0;
        const char *mm_width_label = "W&idth (mm)", *mm_height_label = "Hei&ght (mm)";
    };

    static std::vector<Dialog_Field> Millimetres(const Fields& fields);
    static std::vector<Dialog_Field> Pixels(const Fields& fields);
    static Dialog_Field Keep_Shape(const Fields& fields);

    Size_Entry(const Fields& fields, Hardcopy_Driver driver) : fields_(fields), driver_(driver) {}

    void Show(const Picture_Size& millimetres, bool keep_shape);
    // The user is in a field of the dialog: where it holds something else others follow. A width in millimetres takes the height along
    // while the shape is kept; pixels are taken as they are given. With another density the size stays that was given last, in its unit.
    void Changed(int field);
    const Picture_Size& Present() const { return size_; }  // in millimetres, as far as the fields hold numbers
    bool Keeps_Shape() const;
    // The size in millimetres; nothing where a field is refused, or the picture is too large.
    std::optional<Picture_Size> Take() const;

private:
    double Pixels_A_Mm() const;
    void Show_Millimetres(int but);
    void Show_Pixels();
    void Take_Pixels();
    void Take_Millimetres(int field);
    void Remember();  // what the fields hold
    bool Is_Length(int field, const char* label) const;

    Fields fields_;
    Hardcopy_Driver driver_;
    Picture_Size size_;
    double shape_ = 1;           // width to height, that is kept
    bool pixels_given_ = false;  // last
    std::map<int, std::string> known_;
};

}  // namespace vntl
