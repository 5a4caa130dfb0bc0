#include "patterns/cif/cif_rows.hpp"

#include "base/cif_words.hpp"

namespace vntl {

namespace {

bool Ends_Line(char c) { return c == '\n' || c == '\r'; }

const char* Line_End(const char* at, const char* last) {
    while (at != last && !Ends_Line(*at)) ++at;
    return at;
}

}  // namespace

// What stands here is neither a blank nor what a number begins with.
Cif_Rows::Found Cif_Rows::Take_Other() {
    const char c = *at_;
    if (Ends_Line(c)) {
        ++at_;
        if (slot_ != slots_) Drop_Broken();
        return Found::nothing;
    }
    if (c == '#') {
        at_ = Line_End(at_, last_);
        return Found::nothing;
    }
    if (c == '_') return Found::end;
    const char* const word = at_;
    if (c == ';' && at_ != first_ && Ends_Line(at_[-1])) {
        Take_Text();
    } else if (c == '\'' || c == '"') {
        Take_Quoted();
    } else {
        while (at_ != last_ && !Is_Cif_Space(*at_)) ++at_;
        if (Cif_Words({word, static_cast<std::size_t>(at_ - word)}).Next().kind != Cif_Kind::value) {
            at_ = word;
            return Found::end;
        }
    }
    if (*slot_ == nowhere) return Found::word;
    Cif_Value& value = kept_[static_cast<std::size_t>(*slot_)];
    value = {};
    const char* number = word + 1;  // in quotes, as some programs write all that they write
    if (c == '\'' || c == '"') Take_Cif_Value(number, at_ - 1 > number ? at_ - 1 : number, value);
    odd_ = odd_ || !value.known;
    return Found::word;
}

// Up to behind the semicolon that begins a line.
void Cif_Rows::Take_Text() {
    do {
        at_ = Line_End(at_, last_);
        if (at_ != last_) ++at_;
    } while (at_ != last_ && *at_ != ';');
    if (at_ != last_) ++at_;
}

// A quote closes where a blank or the end of the line follows it.
void Cif_Rows::Take_Quoted() {
    const char quote = *at_++;
    while (at_ != last_ && !Ends_Line(*at_)) {
        const bool closes = *at_++ == quote && (at_ == last_ || Is_Cif_Space(*at_));
        if (closes) return;
    }
}

// At the begin of a line, amid a row.
void Cif_Rows::Drop_Broken() {
    const char* const end = Line_End(at_, last_);
    std::string_view line(at_, static_cast<std::size_t>(end - at_)), word;
    if (line.starts_with(';')) return;
    std::ptrdiff_t words = 0;
    while (Take_Cif_Word(line, word)) ++words;
    if (words == 0 || words % (behind_ - slots_) != 0) return;
    slot_ = slots_;
    odd_ = false;
    ++broken_;
}

}  // namespace vntl
