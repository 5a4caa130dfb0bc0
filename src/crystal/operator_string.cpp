// Symmetry operators as texts: "x, y+1/2, -z".
#include <cmath>

#include "base/text.hpp"
#include "crystal/space_group.hpp"

namespace vntl {

namespace {

constexpr int most_digits = 15, highest_entry = 9;  // what no operator in use comes near; further decimals tell nothing

// A term of a field: a sign, a number (if any), a letter (if any).
struct Term {
    int sign = 1;
    double number = 0, denominator = 0, decimal = 0;  // decimal: place of the next digit behind a point
    int digits = 0;
    bool slash = false;

    bool Has_Number() const { return digits > 0; }
    double Value() const { return slash && denominator != 0 ? number / denominator : number; }
    void Digit(int digit) {
        ++digits;
        if (slash)
            denominator = 10 * denominator + digit;
        else if (decimal > 0) {
            number += digit * decimal;
            decimal /= 10;
        } else
            number = 10 * number + digit;
    }
};

Status Wrong(std::string_view text) { return Status::Fail(" The above operator is wrong: " + std::string(Trim(text))); }

// Field by field; a number that no letter follows is a translation.
class Operator_Reader {
public:
    explicit Operator_Reader(std::string_view text) : text_(text) {}

    Status Read(Sym_Oper_Type& oper) {
        oper = {};
        for (std::size_t field = 0; field < 3; ++field)
            if (const Status status = Read_Field(oper, field); status.failed) return status;
        return Trim(text_.substr(std::min(at_, text_.size()))).empty() ? Status::Done() : Wrong(text_);
    }

private:
    Status Read_Field(Sym_Oper_Type& oper, std::size_t field) {
        term_ = {};
        filled_ = false;
        for (; at_ < text_.size(); ++at_) {
            const char c = text_[at_];
            if (c == ',' || c == '*') {
                if (c == '*' && term_.Has_Number()) continue;  // "1/2*x"
                ++at_;
                break;
            }
            if (const Status status = Take(c, oper, field); status.failed) return status;
        }
        if (const Status status = End_Number(oper, field); status.failed) return status;
        return filled_ ? Status::Done() : Status::Fail(" Blank operator field");
    }

    Status Take(char c, Sym_Oper_Type& oper, std::size_t field) {
        if (c == ' ' || c == '\t') return Status::Done();
        if (c == '+' || c == '-') {
            const Status status = End_Number(oper, field);
            term_.sign = c == '-' ? -1 : 1;
            return status;
        }
        if (c >= '0' && c <= '9') {
            if (term_.digits < most_digits)
                term_.Digit(c - '0');
            else if (term_.decimal == 0)
                return Wrong(text_);
            return Status::Done();
        }
        if (c == '/' && term_.Has_Number() && !term_.slash) {
            term_.slash = true;
            return Status::Done();
        }
        if (c == '.' && term_.decimal == 0 && !term_.slash) {
            term_.decimal = 0.1;
            return Status::Done();
        }
        const std::size_t letter = std::string_view("xXyYzZ").find(c);
        if (letter == std::string_view::npos) return Status::Fail(std::string(" Invalid character... ") + c + " in operator string");
        return Take_Letter(oper, field, letter / 2);
    }

    Status Take_Letter(Sym_Oper_Type& oper, std::size_t field, std::size_t column) {
        const double factor = term_.Has_Number() ? term_.Value() : 1;
        int& entry = oper.rot[field][column];
        if (factor != std::round(factor) || std::abs(factor) > highest_entry) return Wrong(text_);
        entry += term_.sign * static_cast<int>(factor);
        if (std::abs(entry) > highest_entry) return Wrong(text_);
        filled_ = true;
        term_ = {};
        return Status::Done();
    }

    Status End_Number(Sym_Oper_Type& oper, std::size_t field) {
        if (term_.slash && term_.denominator == 0) return Wrong(text_);
        if (term_.Has_Number()) {
            oper.tr[field] += static_cast<float>(term_.sign * term_.Value());
            filled_ = true;
        }
        term_ = {};
        return Status::Done();
    }

    std::string_view text_;
    std::size_t at_ = 0;
    Term term_;
    bool filled_ = false;
};

int Determinant(const std::array<std::array<int, 3>, 3>& r) {
    return r[0][0] * (r[1][1] * r[2][2] - r[1][2] * r[2][1]) - r[0][1] * (r[1][0] * r[2][2] - r[1][2] * r[2][0]) +
           r[0][2] * (r[1][0] * r[2][1] - r[1][1] * r[2][0]);
}

// A fraction with a denominator of the tables, else decimals without zeros at the end.
std::string Fraction(float value) {
    for (const int denominator : {1, 2, 3, 4, 6, 8, 12, 24}) {
        const float numerator = value * static_cast<float>(denominator);
        if (std::abs(numerator - std::round(numerator)) > 1e-4f * static_cast<float>(denominator)) continue;
        std::string text = std::to_string(static_cast<int>(std::lround(numerator)));
        if (denominator > 1) text += '/' + std::to_string(denominator);
        return text;
    }
    char text[32];
    std::snprintf(text, sizeof text, "%.5f", static_cast<double>(value));
    std::string decimals = text;
    decimals.erase(decimals.find_last_not_of('0') + 1);
    return decimals;
}

}  // namespace

Status Read_Operator_String(std::string_view text, std::size_t start, Sym_Oper_Type& oper, bool check) {
    const std::string_view rest = start < text.size() ? text.substr(start) : std::string_view();
    Sym_Oper_Type found;
    if (const Status status = Operator_Reader(rest).Read(found); status.failed) return status;
    if (check && Determinant(found.rot) == 0) return Wrong(rest);
    oper = found;
    return Status::Done();
}

std::string Operator_String(const Sym_Oper_Type& oper) {
    std::string text;
    for (std::size_t field = 0; field < 3; ++field) {
        std::string part;
        for (std::size_t column = 0; column < 3; ++column) {
            const int entry = oper.rot[field][column];
            if (entry == 0) continue;
            if (entry < 0)
                part += '-';
            else if (!part.empty())
                part += '+';
            if (std::abs(entry) != 1) part += std::to_string(std::abs(entry));
            part += "xyz"[column];
        }
        const float tr = oper.tr[field];
        const std::string fraction = tr != 0 && std::abs(tr) < 1e6f ? Fraction(tr) : "0";
        if (fraction != "0" && fraction != "-0") {
            if (!part.empty() && tr > 0) part += '+';
            part += fraction;
        }
        text += (field > 0 ? "," : "") + (part.empty() ? std::string("0") : part);
    }
    return text;
}

}  // namespace vntl
