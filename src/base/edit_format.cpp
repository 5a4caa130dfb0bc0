// Reads the text of a format into a row of items. Counts, widths and nesting are bounded, and so is what one pass over the format can
// do without taking a value, so that a hostile text costs no more than a long one.
#include "base/edit_format.hpp"

#include <algorithm>

namespace vntl {
namespace {

constexpr int count_limit = 1'000'000;       // repeats
constexpr int width_limit = 10'000;          // columns of a field, a skip or a tab
constexpr int digits_limit = 500;            // behind the point
constexpr int exponent_limit = 15;           // digits of an exponent
constexpr int scale_limit = 100;             // powers of ten
constexpr std::size_t text_limit = 20'000;   // characters of a format
constexpr long long steps_limit = 2'000;     // items of one pass that take no value
constexpr long long columns_limit = 20'000;  // columns that these skip or write

char Upper_Case(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }
bool Is_Digit(char c) { return c >= '0' && c <= '9'; }

// What one pass over a part of the format costs beside the values.
struct Cost {
    long long steps = 0;
    long long columns = 0;

    void Add(const Cost& part, long long times) {
        steps = std::min(steps_limit + 1, steps + std::min(part.steps, steps_limit + 1) * times);
        columns = std::min(columns_limit + 1, columns + std::min(part.columns, columns_limit + 1) * times);
    }
    bool Too_Much() const { return steps > steps_limit || columns > columns_limit; }
};

}  // namespace

class Edit_Parser {
public:
    Edit_Parser(std::string_view text, Edit_Format& format) : text_(text), format_(format) {}

    // False with reason() at the first thing that is no format.
    bool Parse() {
        if (text_.size() > text_limit) return Refuse("too long");
        if (Peek() != '(') return Refuse("no opening parenthesis");
        ++at_;
        Cost cost;
        if (!List(0, cost)) return false;
        if (cost.Too_Much()) return Refuse("too many repeats");
        const auto& items = format_.items_;
        format_.restart_takes_ =
            std::any_of(items.begin() + format_.restart_, items.end(), [](const Edit_Item& item) { return Takes_Value(item.kind); });
        return true;
    }
    const char* reason() const { return reason_; }

private:
    bool Refuse(const char* reason) {
        reason_ = reason;
        return false;
    }

    // The next character that is not blank, in capitals; 0 at the end.
    char Peek() {
        while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\t')) ++at_;
        return at_ < text_.size() ? Upper_Case(text_[at_]) : '\0';
    }
    bool Take(char c) {
        if (Peek() != c) return false;
        ++at_;
        return true;
    }

    // An unsigned number, at most `limit`; -1 when none stands here, -2 when it is larger.
    int Number(int limit) {
        if (!Is_Digit(Peek())) return -1;
        int value = 0;
        while (Is_Digit(Peek())) {
            value = std::min(value * 10 + (text_[at_] - '0'), count_limit + 1);
            ++at_;
        }
        return value > limit ? -2 : value;
    }

    // The items up to the closing parenthesis.
    bool List(int depth, Cost& cost) {
        bool any = false, comma = false;
        for (;;) {
            const char c = Peek();
            if (c == '\0') return Refuse("no closing parenthesis");
            if (c == ')') {
                ++at_;
                if (comma || (!any && depth > 0)) return Refuse(comma ? "nothing behind a comma" : "an empty group");
                return true;
            }
            if (c == ',') {
                ++at_;
                if (comma || !any) return Refuse("nothing before a comma");
                comma = true;
                continue;
            }
            if (!Item(depth, cost)) return false;
            any = true;
            comma = false;
        }
    }

    bool Item(int depth, Cost& cost) {
        const char first = Peek();
        if (first == '\'' || first == '"') return Literal(cost);
        if (first == '+' || first == '-') {
            ++at_;
            const int k = Number(scale_limit);
            if (k < 0 || !Take('P')) return Refuse("a sign without a scale factor");
            return Act(Edit_Kind::scale, first == '-' ? -k : k, 1, cost);
        }
        const int number = Number(count_limit);
        if (number == -2) return Refuse("a number that is too large");
        const char letter = Peek();
        if (letter == '\0') return Refuse("no closing parenthesis");
        ++at_;
        switch (letter) {
            case 'P':
                return number < 0 || number > scale_limit ? Refuse("a scale factor out of range") : Act(Edit_Kind::scale, number, 1, cost);
            case 'X':
                return Skip(Edit_Kind::right, number < 0 ? 1 : number, cost);
            case '/':
                return number == 0 ? Refuse("a repeat count of zero") : Act(Edit_Kind::line_end, 0, std::max(number, 1), cost);
            case ':':
                return number >= 0 ? Refuse("a repeat count before a colon") : Act(Edit_Kind::stop, 0, 1, cost);
            case 'T':
                return number >= 0 ? Refuse("a repeat count before T") : Tab(cost);
            default:
                break;
        }
        if (number == 0) return Refuse("a repeat count of zero");
        const int repeat = std::max(number, 1);
        return letter == '(' ? Group(depth + 1, repeat, cost) : Field(letter, repeat);
    }

    bool Act(Edit_Kind kind, int count, int repeat, Cost& cost) {
        Edit_Item item;
        item.kind = kind;
        item.count = count;
        item.repeat = repeat;
        format_.items_.push_back(item);
        cost.Add({1, 0}, repeat);
        return true;
    }

    bool Skip(Edit_Kind kind, int columns, Cost& cost) {
        if (columns < 0 || columns > width_limit) return Refuse("a number of columns out of range");
        cost.columns += columns;
        return Act(kind, columns, 1, cost);
    }

    bool Tab(Cost& cost) {
        const Edit_Kind kind = Take('L') ? Edit_Kind::left : Take('R') ? Edit_Kind::right : Edit_Kind::tab;
        const int columns = Number(width_limit);
        return columns < 1 ? Refuse("a tab without its column") : Skip(kind, columns, cost);
    }

    bool Literal(Cost& cost) {
        const char quote = text_[at_++];
        Edit_Item item;
        item.place = static_cast<int>(format_.literals_.size());
        for (;; ++at_) {
            if (at_ == text_.size()) return Refuse("no closing quote");
            if (text_[at_] == quote) {
                ++at_;
                if (at_ == text_.size() || text_[at_] != quote) break;
            }
            format_.literals_.push_back(text_[at_]);
        }
        item.count = static_cast<int>(format_.literals_.size()) - item.place;
        format_.items_.push_back(item);
        cost.Add({1, item.count}, 1);
        return true;
    }

    bool Group(int depth, int repeat, Cost& cost) {
        if (depth > edit_nesting_limit) return Refuse("too many parentheses");
        const std::size_t opening = format_.items_.size();
        Edit_Item item;
        item.kind = Edit_Kind::group;
        item.repeat = repeat;
        format_.items_.push_back(item);
        Cost inside;
        if (!List(depth, inside)) return false;
        item.kind = Edit_Kind::group_end;
        item.place = static_cast<int>(opening);
        format_.items_.push_back(item);
        // A round that takes a value needs no bound: there are only so many values.
        const bool takes =
            std::any_of(format_.items_.begin() + opening, format_.items_.end(), [](const Edit_Item& one) { return Takes_Value(one.kind); });
        ++inside.steps;
        cost.Add(inside, takes ? 1 : repeat);
        if (depth == 1) format_.restart_ = opening;
        return true;
    }

    bool Field(char letter, int repeat) {
        Edit_Item item;
        item.repeat = repeat;
        item.letter = letter == 'D' ? 'D' : 'E';
        switch (letter) {
            case 'I':
                item.kind = Edit_Kind::integer;
                break;
            case 'F':
                item.kind = Edit_Kind::fixed;
                break;
            case 'E':
            case 'D':
                item.kind = Edit_Kind::exponential;
                break;
            case 'G':
                item.kind = Edit_Kind::general;
                break;
            case 'L':
                item.kind = Edit_Kind::logical;
                break;
            case 'A':
                item.kind = Edit_Kind::text;
                break;
            default:
                return Refuse("an unknown letter");
        }
        item.width = Number(width_limit);
        const bool may_be_zero = letter == 'I' || item.kind == Edit_Kind::fixed || item.kind == Edit_Kind::exponential;
        if (item.width == -2 || (item.width == 0 && !may_be_zero) || (item.width < 0 && letter != 'A'))
            return Refuse("a field without a proper width");
        if (letter != 'A' && letter != 'L' && Take('.')) {
            item.digits = Number(digits_limit);
            if (item.digits < 0) return Refuse("a point without a proper number of digits");
        }
        if (item.digits < 0 && letter != 'I' && letter != 'A' && letter != 'L') return Refuse("a real field without its digits");
        if (letter == 'I' && item.width > 0 && item.digits > item.width) return Refuse("more digits than columns");
        if (item.digits >= 0 && letter != 'I' && letter != 'F' && Peek() == 'E') return Exponent(item);
        format_.items_.push_back(item);
        return true;
    }

    // "E3" behind "E14.6" is the width of the exponent, "E14.6" behind it another field.
    bool Exponent(Edit_Item item) {
        const std::size_t before = at_;
        ++at_;
        item.exponent = Number(exponent_limit);
        if (item.exponent < 0 || Peek() == '.') {
            at_ = before;
            item.exponent = -1;
        }
        format_.items_.push_back(item);
        return true;
    }

    std::string_view text_;
    Edit_Format& format_;
    std::size_t at_ = 0;
    const char* reason_ = "";
};

Edit_Format::Edit_Format(std::string_view text) : text_(text) {
    Edit_Parser parser(text, *this);
    if (parser.Parse()) return;
    items_.clear();
    restart_ = 0;
    constexpr std::size_t shown = 80;
    const std::string_view quoted = text.substr(0, shown);
    status_ = Status::Fail("Bad format \"" + std::string(quoted) + (text.size() > shown ? "...\": " : "\": ") + parser.reason());
}

const Edit_Item* Edit_Walk::Step() {
    const auto& items = format_->items();
    while (at_ < items.size()) {
        const Edit_Item& item = items[at_++];
        if (item.kind == Edit_Kind::group) {
            rounds_[++depth_] = item.repeat;
        } else if (item.kind == Edit_Kind::group_end) {
            if (--rounds_[depth_] > 0)
                at_ = static_cast<std::size_t>(item.place) + 1;
            else
                --depth_;
        } else {
            current_ = &item;
            left_ = item.repeat - 1;
            return current_;
        }
    }
    return nullptr;
}

}  // namespace vntl
