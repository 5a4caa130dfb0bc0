// A small picture in a dialog of what a file will hold.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "toolkit/dialog.hpp"
#include "toolkit/hardcopy.hpp"

namespace vntl {

class Picture_Preview {
public:
    // What the picture depends on.
    struct Picture {
        double width = 0, height = 0;  // of any unit: its shape
        double inches = 0;             // that it is wide on paper
        std::string style;
        Colour_Change colours = Colour_Change::none;
        Colour_Use use_colour = Colour_Use::all;
        bool operator==(const Picture&) const = default;
    };
    // The picture in a style; fails where the style cannot be read.
    using Source = std::function<Status(const std::string& style, Draw_Routine& draw)>;

    static Dialog_Field Frame(int frame, int field);

    Picture_Preview(int dialog, int field, Source source);  // the dialog is loaded
    ~Picture_Preview();
    Picture_Preview(const Picture_Preview&) = delete;
    Picture_Preview& operator=(const Picture_Preview&) = delete;

    // It is drawn when the hand has come to rest.
    void Show(const Picture& picture);
    void Timer(int number);  // of the main window; others are passed on

private:
    void Draw();

    int dialog_, field_;
    Source source_;
    std::optional<Picture> wanted_, drawn_;
};

}  // namespace vntl
