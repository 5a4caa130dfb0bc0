// Reading and writing of records by edit descriptors (see edit_format.hpp for the language).
//
//   static const Edit_Format pairs("(10(I2,F8.0))");
//   Edit_Reader reader(pairs, [&](std::string_view& line) { return lines.Next(line); });
//   if (!reader.Read(n, counts)) return reader.status();
//
//   static const Edit_Format row("(F14.4,2X,2F16.4)");
//   Status status = Write_Record(out, row, x, y, sigma);
//
// Columns are bytes. Everything is printed and understood in the C locale.
#pragma once

#include <concepts>
#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "base/edit_format.hpp"
#include "base/status.hpp"

namespace vntl {

// Reads values from fixed columns. A blank field is 0, blanks inside a number are ignored, a line that is too short is continued with
// blanks. A real without a point has it before its last d digits; the scale factor divides a real without an exponent. The exponent may
// lack its letter ("1.5-3"). A comma ends a number field early. A literal skips its columns.
//
// The first failure stays; what follows it reads nothing.
class Edit_Reader {
public:
    using Next_Line = std::function<bool(std::string_view& line)>;  // false at the end

    // The format must outlive the reader. The first form has one line alone, the second takes lines as it needs them, the first at once.
    Edit_Reader(const Edit_Format& format, std::string_view line);
    Edit_Reader(const Edit_Format& format, Next_Line next);
    Edit_Reader(Edit_Format&&, std::string_view) = delete;
    Edit_Reader(Edit_Format&&, Next_Line) = delete;

    // One value after the other: reals (an I field serves too), integers, logicals (blank is false), texts, or a whole array of numbers.
    template <class... Values>
    bool Read(Values&&... values) {
        return (One(values) && ...);
    }

    // As a text of `length` characters takes it: of a longer field the last ones count. The text comes without its trailing blanks.
    bool Read_Text(std::string& text, std::size_t length);

    const Status& status() const { return status_; }
    bool ended() const { return ended_; }         // the lines ended before the values
    int lines() const { return lines_; }          // lines taken
    std::size_t given() const { return given_; }  // values read
    std::string_view Rest_Of_Line() const { return at_ < line_.size() ? line_.substr(at_) : std::string_view(); }

private:
    bool One(float& value) { return Reals(&value, 1); }
    bool One(double& value) { return Reals(&value, 1); }
    bool One(int& value) { return Integers(&value, 1); }
    bool One(bool& value) { return Logical(value); }
    bool One(std::string& text) { return Read_Text(text, static_cast<std::size_t>(-1)); }
    template <class Real>
    requires std::floating_point<Real>
    bool One(std::span<Real> values) { return Reals(values.data(), values.size()); }
    bool One(std::span<int> values) { return Integers(values.data(), values.size()); }
    template <class Number>
    bool One(std::vector<Number>& values) {
        return One(std::span<Number>(values));
    }

    template <class Real>
    bool Reals(Real* values, std::size_t n);
    bool Integers(int* values, std::size_t n);
    bool Logical(bool& value);

    const Edit_Item* Next_Field();
    bool New_Line();
    std::string_view Field(int width) const;
    template <class Number, class Convert>
    bool Number_Field(const Edit_Item& item, Number& value, Convert convert);
    bool Fail(std::string text);
    bool Bad_Field(std::string_view field);
    bool Wrong_Kind(const char* wanted);

    Edit_Walk walk_;
    Next_Line next_;
    std::string_view line_;
    std::size_t at_ = 0;  // column, from 0
    int scale_ = 0;
    int lines_ = 0;
    std::size_t given_ = 0;
    bool ended_ = false;
    Status status_;
};

// Appends lines to a text, each with its line end. Numbers are rounded from their exact binary value, ties to even, a float from its own
// value. What does not fit its columns becomes stars.
class Edit_Writer {
public:
    // Format and text must outlive the writer.
    Edit_Writer(const Edit_Format& format, std::string& out);
    Edit_Writer(Edit_Format&&, std::string&) = delete;

    // One value after the other: numbers, logicals, texts, or a whole array of numbers.
    template <class... Values>
    bool Write(const Values&... values) {
        return (One(values) && ...);
    }

    // Writes what stands behind the last value and ends the line.
    const Status& Finish();

    const Status& status() const { return status_; }

private:
    template <class Value>
    requires std::is_arithmetic_v<Value>
    bool One(const Value& value) {
        if constexpr (std::is_same_v<Value, bool>)
            return Logical(value);
        else if constexpr (std::is_same_v<Value, float>)
            return Real(value);
        else if constexpr (std::floating_point<Value>)
            return Real(static_cast<double>(value));
        else
            return Integer(static_cast<long long>(value));
    }
    bool One(std::string_view text) { return Text(text); }
    template <class Number>
    requires std::is_arithmetic_v<Number>
    bool One(std::span<Number> values) {
        for (const Number& value : values)
            if (!One(value)) return false;
        return true;
    }
    template <class Number>
    bool One(const std::vector<Number>& values) {
        return One(std::span<const Number>(values));
    }

    template <class Number>
    bool Real(Number value);
    bool Integer(long long value);
    bool Logical(bool value);
    bool Text(std::string_view text);

    const Edit_Item* Next_Field();
    void Act(const Edit_Item& item);
    void Put(std::string_view text);
    void Put_Right(std::string_view text, int width);
    void End_Line();
    bool Fail(std::string text);
    bool Wrong_Kind(const char* wanted);

    Edit_Walk walk_;
    std::string& out_;
    std::size_t start_;   // of the line in out_
    std::size_t at_ = 0;  // column, from 0; blanks up to it are written with what comes next
    int scale_ = 0;
    Status status_;
};

// One line, or the lines that the format and the values make of it.
template <class... Values>
Status Read_Record(std::string_view line, const Edit_Format& format, Values&&... values) {
    Edit_Reader reader(format, line);
    reader.Read(values...);
    return reader.status();
}
template <class... Values>
Status Write_Record(std::string& out, const Edit_Format& format, const Values&... values) {
    Edit_Writer writer(format, out);
    writer.Write(values...);
    return writer.Finish();
}

}  // namespace vntl
