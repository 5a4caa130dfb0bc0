#include "commands/file/export/preview.hpp"

#include <algorithm>
#include <cmath>

#include "pictures/recolour.hpp"
#include "toolkit/bitmap.hpp"
#include "toolkit/window.hpp"
#include "toolkit/window_service.hpp"

namespace vntl {

namespace {

constexpr int preview_timer = 480, at_rest_ms = 200;
constexpr int seen_width = 300, seen_height = 216, finer = 2;  // pixels of the screen, and of the preview to one of them
constexpr int margin = 6 * finer, edge = finer;
constexpr Colour ground = WRGB(176, 178, 182), edge_colour = WRGB(96, 98, 102);

void Fill(Device& device, const Rect& r, Colour colour) {
    device.Fill(std::array<Point, 4>{{{r.x1, r.y1}, {r.x2, r.y1}, {r.x2, r.y2}, {r.x1, r.y2}}}, colour);
}

Bitmap Ground() {
    Bitmap page(finer * seen_width, finer * seen_height);
    page.Drawing().Clear(ground);
    return page;
}

// On a table, with an edge, as white paper on a white dialog would have none.
void Lay_Down(Bitmap& table, const Bitmap& picture) {
    Device& device = table.Drawing();
    const double x = std::floor(0.5 * (table.Width() - picture.Width())), y = std::floor(0.5 * (table.Height() - picture.Height()));
    const Rect place{x, y, x + picture.Width(), y + picture.Height()};
    Fill(device, {place.x1 - edge, place.y1 - edge, place.x2 + edge, place.y2 + edge}, edge_colour);
    std::vector<Colour> colours;
    colours.reserve(static_cast<std::size_t>(picture.Width()) * static_cast<std::size_t>(picture.Height()));
    for (int line = picture.Height() - 1; line >= 0; --line)
        for (int column = 0; column < picture.Width(); ++column) colours.push_back(picture.Pixel(column, line));
    device.Cells({place, picture.Width(), picture.Height(), colours});
}

void Set_Timer(int milliseconds) {
    WindowSelect(main_window);
    WMessageTimer(milliseconds, preview_timer, false);
}

}  // namespace

Dialog_Field Picture_Preview::Frame(int frame, int field) {
    return {
        .number = frame, .kind = Field_Kind::frame, .label = "Preview", .pages = {{"", {{{.number = field, .kind = Field_Kind::image}}}}}};
}

Picture_Preview::Picture_Preview(int dialog, int field, Source source) : dialog_(dialog), field_(field), source_(std::move(source)) {
    WDialogPutBitmap(field_, Ground(), seen_width);
}

Picture_Preview::~Picture_Preview() { Set_Timer(0); }

// At once where there is none yet.
void Picture_Preview::Show(const Picture& picture) {
    if (picture == wanted_) return;
    wanted_ = picture;
    if (!drawn_) return Draw();
    Set_Timer(at_rest_ms);
    WDialogSelect(dialog_);
}

void Picture_Preview::Timer(int number) {
    if (number != preview_timer) return Serve_Meanwhile({Message_Kind::timer, {.win = main_window, .value1 = number}});
    if (wanted_ != drawn_) Draw();
}

// As the file will be, and so many dots an inch that it fits: texts and lines have their size on paper.
void Picture_Preview::Draw() {
    drawn_ = wanted_;
    Draw_Routine draw;
    Bitmap table = Ground();
    if (source_(drawn_->style, draw).ok() && drawn_->width > 0 && drawn_->height > 0) {
        const double scale = std::min((table.Width() - 2 * margin) / drawn_->width, (table.Height() - 2 * margin) / drawn_->height);
        const int width = std::max(1, static_cast<int>(std::lround(scale * drawn_->width)));
        const int height = std::max(1, static_cast<int>(std::lround(scale * drawn_->height)));
        Bitmap picture(width, height, width / drawn_->inches);
        Draw_Recoloured(picture.Drawing(), drawn_->colours, drawn_->use_colour, draw);
        Lay_Down(table, picture);
    }
    WDialogSelect(dialog_);
    WDialogPutBitmap(field_, table, seen_width);
}

}  // namespace vntl
