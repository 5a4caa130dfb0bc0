// Free-form records: the values of one reading stand where they like, over as many lines as they need.
//
//   1.5 2,3       separated by blanks, TABs or one comma; a line end separates too
//   3*1.0 2*      three times 1.0, then two places left as they were
//   1,,3          so is the place between two commas
//   1.5D+03 1.5+3 exponents of Fortran
//   'it''s' "a b" quoted texts; others end at a separator
//   4 5 / rest    "/" ends the record, what is not read yet stays as it was
//
// A record begins on a new line, and what is left of its last line is dropped.
#pragma once

#include <concepts>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "base/status.hpp"

namespace vntl {

// Walks over the text of a whole file, which must outlive it. The first failure stays; what follows it reads nothing.
class Free_Form_Reader {
public:
    explicit Free_Form_Reader(std::string_view text, long first_line = 1)
        : next_(text.data()), end_(text.data() + text.size()), line_(first_line) {}

    // One record of float, double, int, std::string, or spans and vectors of numbers: reader.Read(n, step, counts). False when an item is
    // of another kind or the text ends too early; the values before it are set then.
    template <class... Values>
    bool Read(Values&&... values) {
        Begin();
        const bool good = (One(values) && ...);
        return End(good);
    }

    const Status& status() const { return status_; }
    std::size_t given() const { return given_; }  // places that the last record filled, null values not counted
    bool ended() const { return ended_; }         // the text ended before the values
    bool At_End();                                // nothing but blanks and line ends follows
    bool Skip_Line();                             // false at the end of the text
    long Line_Number() const { return line_; }    // of the next line
    std::string_view Rest() const { return {next_, static_cast<std::size_t>(end_ - next_)}; }

private:
    enum class Found { value, null, end };

    bool One(float& value) { return Items(&value, 1); }
    bool One(double& value) { return Items(&value, 1); }
    bool One(int& value) { return Items(&value, 1); }
    bool One(std::string& value) { return Items(&value, 1); }
    template <class Number>
    requires(!std::is_const_v<Number>) bool One(std::span<Number> values) { return Items(values.data(), values.size()); }
    template <class Number>
    bool One(std::vector<Number>& values) {
        return Items(values.data(), values.size());
    }

    template <class Value>
    bool Items(Value* values, std::size_t n);
    template <class Value>
    std::size_t Repeats(Value* values, std::size_t n);

    void Begin();
    bool End(bool good);
    Found Find_Item();
    bool Take_Count();
    bool Bad_Item(const char* first, const char* wanted);
    void Line_End();

    const char* next_;
    const char* end_;
    long line_;
    std::size_t given_ = 0;
    bool separated_ = true;  // a comma stands before the next item, or it is the first
    bool slash_ = false;     // the record has ended
    bool ended_ = false;
    std::size_t repeats_ = 0;    // how often repeated_ is still to be given
    std::string_view repeated_;  // empty for null values
    Status status_;
};

// The first numbers of a text, as many as there are places: "Problem: 12 3 4" gives none, "1, 2" two. True when every place got one.
bool Read_Free_Reals(std::string_view text, std::span<float> values);

}  // namespace vntl
