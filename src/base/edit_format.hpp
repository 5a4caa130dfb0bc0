// Edit descriptors: the little language in which fixed-column files are described.
//
//   (10(I2,F8.0))           ten pairs of a two-column integer and an eight-column real on a line
//   (F14.4,2X,2F16.4)       position, two blanks, intensity and sigma
//   (1P5E14.6)              five numbers a line in scientific notation, one digit before the point
//   ('step',I5.3,/,A20)     a literal, an integer with leading zeros, a new line, a text
//
//   Iw Iw.m      integer, with at least m digits          nX TRn     n columns to the right
//   Fw.d         fixed point                              Tn TLn     to column n, n columns to the left
//   Ew.d[Ee] Dw.d[Ee]  scientific                         n/         n line ends
//   Gw.d[Ee]     the clearer of F and E, or as I, L, A    :          stop here when no value is left
//   Lw  A  Aw    logical, text                            kP         scale factor from here on
//
// Any item of the left column and any group in parentheses may have a repeat count. Width 0 (I, F, E, D) writes as many columns as
// needed. When values remain at the end of the format, it continues on a new line from its last group, or from its start when it has
// none. Case does not matter, nor blanks outside literals; commas may be left out where nothing becomes unclear.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"

namespace vntl {

// The first six take a value, the others act by themselves.
enum class Edit_Kind : std::uint8_t {
    integer,
    fixed,
    exponential,
    general,
    logical,
    text,
    right,
    tab,
    left,
    line_end,
    stop,
    scale,
    literal,
    group,
    group_end
};

struct Edit_Item {
    Edit_Kind kind = Edit_Kind::literal;
    char letter = 'E';  // of the exponent
    int repeat = 1;     // how often the item or group stands in a row
    int width = -1;     // columns; -1 of A: as long as the text
    int digits = -1;    // behind the point; least digits of I, -1 without
    int exponent = -1;  // digits of the exponent, -1 without
    int count = 0;      // n of X, T, TL and TR, k of P, size of a literal
    int place = 0;      // start of a literal; of a group's end: the item that opens it
};

class Edit_Format {
public:
    // A text that is no format leaves one without items; reading or writing by it fails with the same status.
    explicit Edit_Format(std::string_view text);

    const Status& status() const { return status_; }
    const std::string& text() const { return text_; }
    const std::vector<Edit_Item>& items() const { return items_; }
    std::string_view Literal(const Edit_Item& item) const { return std::string_view(literals_).substr(item.place, item.count); }
    std::size_t restart() const { return restart_; }       // the item at which it goes on when values remain
    bool restart_takes() const { return restart_takes_; }  // something takes a value from there on

private:
    friend class Edit_Parser;

    std::string text_;
    std::vector<Edit_Item> items_;
    std::string literals_;
    std::size_t restart_ = 0;
    bool restart_takes_ = false;
    Status status_;
};

constexpr int edit_nesting_limit = 16;

inline bool Takes_Value(Edit_Kind kind) { return kind <= Edit_Kind::text; }

// Steps through a format as its repeat counts tell. The format must outlive the walk.
class Edit_Walk {
public:
    explicit Edit_Walk(const Edit_Format& format) : format_(&format) {}

    // The next item, groups unrolled; nullptr at the end of the format.
    const Edit_Item* Next() {
        if (left_ > 0) {
            --left_;
            return current_;
        }
        return Step();
    }
    // Up to `most` further repeats of the item given last: how many there were to take.
    int Take(int most) {
        const int taken = left_ < most ? left_ : most;
        left_ -= taken;
        return taken;
    }
    void Restart() {
        at_ = format_->restart();
        depth_ = left_ = 0;
    }
    const Edit_Format& format() const { return *format_; }

private:
    const Edit_Item* Step();

    const Edit_Format* format_;
    const Edit_Item* current_ = nullptr;
    std::size_t at_ = 0;
    int left_ = 0;
    int depth_ = 0;
    int rounds_[edit_nesting_limit + 1] = {};
};

}  // namespace vntl
