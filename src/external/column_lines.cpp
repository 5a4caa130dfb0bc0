#include "external/column_lines.hpp"

#include <utility>

#include "patterns/write_columns.hpp"

namespace vntl {

namespace {

const Edit_Item* Field_Of(const Edit_Format& format, std::size_t field) {
    Edit_Walk walk(format);
    const Edit_Item* item = walk.Next();
    for (; item != nullptr; item = walk.Next())
        if (Takes_Value(item->kind) && field-- == 0) break;
    return item;
}

// The largest number in so many columns without its sign: "9999.9" of F6.1, "999" of I3.
std::string Largest(const Edit_Item& item, int columns) {
    if (item.kind == Edit_Kind::integer) return std::string(static_cast<std::size_t>(columns), '9');
    std::string text(static_cast<std::size_t>(columns - item.digits - 1), '9');
    if (item.digits > 0) text.append(".").append(static_cast<std::size_t>(item.digits), '9');
    return text;
}

Named_Number<float> Part_Of_Peak(std::string_view part, std::size_t i, float value) { return {{part, "peak", i + 1}, value}; }

}  // namespace

std::string Number_Name::Text() const {
    if (place == 0) return std::string(what);
    return "the " + std::string(what) + " of " + std::string(list) + ' ' + std::to_string(place);
}

void Column_Lines::Put(std::string_view told, std::string_view text) {
    if (status_.ok()) text_.append(told).append(Without_Line_Ends(text)).append("\n");
}

void Column_Lines::Peaks(const Edit_Format& format, std::span<const Peak_Mark> peaks) {
    for (std::size_t i = 0; i < peaks.size() && status_.ok(); ++i)
        Record(format, Part_Of_Peak("position", i, peaks[i].x), Part_Of_Peak("intensity", i, peaks[i].y),
               Part_Of_Peak("background", i, peaks[i].bgr));
}

void Column_Lines::Positions(const Edit_Format& format, std::span<const Peak_Mark> peaks) {
    for (std::size_t i = 0; i < peaks.size() && status_.ok(); ++i) Record(format, Part_Of_Peak("position", i, peaks[i].x));
}

bool Column_Lines::Finite(const Named_Number<float>& number) {
    return status_.ok() && (std::isfinite(number.value) || No_Number(number.name));
}

Status Column_Lines::Finish(std::string& text) {
    if (status_.ok()) text = std::move(text_);
    return status_;
}

bool Column_Lines::No_Number(const Number_Name& name) {
    status_ = Status::Fail("The file cannot hold " + name.Text() + ": it is no finite number.");
    return false;
}

bool Column_Lines::No_Room(const Number_Name& name, std::string_view value, const Edit_Format& format, std::size_t field) {
    std::string text = "The file cannot hold " + name.Text() + ", " + std::string(value);
    if (const Edit_Item* item = Field_Of(format, field))
        text += ": its columns take -" + Largest(*item, item->width - 1) + " to " + Largest(*item, item->width);
    status_ = Status::Fail(text + '.');
    return false;
}

}  // namespace vntl
