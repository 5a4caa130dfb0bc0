// The lines of a file in columns, where each number that a user may change has a name: one that its columns cannot hold is refused by it.
//
//   static const Edit_Format limits("(2F6.1,4X,A)");
//   Column_Lines lines;
//   lines.Put("! INSTRM: ", instr);
//   lines.Record(limits, Named("Amax", amax), Named("Bmax", bmax), "! AMAX,BMAX");
//   return lines.Finish(text);
#pragma once

#include <charconv>
#include <cmath>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "base/edit_descriptor.hpp"
#include "base/status.hpp"
#include "patterns/listed_points.hpp"

namespace vntl {

// "Amax", or "the position of peak 3": a field of a dialog, or a part of an entry of a list, counted from 1.
struct Number_Name {
    std::string_view what, list = {};
    std::size_t place = 0;

    std::string Text() const;
};

template <class Number>
struct Named_Number {
    Number_Name name;
    Number value;
};
template <class Number>
Named_Number<Number> Named(std::string_view what, Number value) {
    return {{what}, value};
}

// As few digits as tell the number from its neighbours.
template <class Number>
std::string Shortest(Number value) {
    char digits[32];
    return std::string(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

// The first failure stays; what follows it writes nothing.
class Column_Lines {
public:
    // A line of texts: the first one as it stands, the second on one line.
    void Put(std::string_view told, std::string_view text = {});

    // A line by a format. Numbers without a name are those that always fit.
    template <class... Values>
    void Record(const Edit_Format& format, const Values&... values) {
        if (status_.failed) return;
        Edit_Writer writer(format, text_);
        std::size_t field = 0;
        (One(writer, format, field++, values) && ...);
        if (status_.ok()) status_ = writer.Finish();
    }

    // A line for each peak: position, intensity, background, or the position alone.
    void Peaks(const Edit_Format& format, std::span<const Peak_Mark> peaks);
    void Positions(const Edit_Format& format, std::span<const Peak_Mark> peaks);

    // Fails when the number is not finite, for one that is not written.
    bool Finite(const Named_Number<float>& number);

    // The text of the file, where nothing has failed.
    Status Finish(std::string& text);

private:
    template <class Value>
    bool One(Edit_Writer& writer, const Edit_Format&, std::size_t, const Value& value) {
        return writer.Write(value);
    }
    template <class Number>
    bool One(Edit_Writer& writer, const Edit_Format& format, std::size_t field, const Named_Number<Number>& number) {
        if (!std::isfinite(static_cast<double>(number.value))) return No_Number(number.name);
        return writer.Write(number.value) && (text_.back() != '*' || No_Room(number.name, Shortest(number.value), format, field));
    }

    bool No_Number(const Number_Name& name);
    bool No_Room(const Number_Name& name, std::string_view value, const Edit_Format& format, std::size_t field);

    std::string text_;
    Status status_;
};

}  // namespace vntl
