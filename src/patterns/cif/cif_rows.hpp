// The rows of a table of a CIF: as many words as it has columns make one, over as many lines as they need.
#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "patterns/cif/cif_values.hpp"

namespace vntl {

// Walks the rows and keeps the numbers of some columns. A row that breaks off is passed over where the next line holds a whole one, so that
// one lost value does not shift all that follows.
class Cif_Rows {
public:
    static constexpr std::size_t most_kept = 8;
    static constexpr signed char nowhere = -1;

    // `text` begins behind the last head. `slots` tells for each column, one or more, in which of the kept places its number goes.
    Cif_Rows(std::string_view text, const std::vector<signed char>& slots)
        : first_(text.data()),
          at_(text.data()),
          last_(text.data() + text.size()),
          slot_(slots.data()),
          slots_(slots.data()),
          behind_(slots.data() + slots.size()) {}

    // False where the table ends: at the next item, at a word that begins something else, or with the text.
    bool Next() {
        odd_ = false;
        while (at_ != last_) {
            const char c = *at_;
            if (c == ' ' || c == '\t') {
                ++at_;
                continue;
            }
            const bool number = (c >= '0' && c <= '9') || c == '-' || c == '.' || c == '+' || c == '?';
            if (number)
                Take_Number();
            else if (const Found found = Take_Other(); found != Found::word) {
                if (found == Found::end) return false;
                continue;
            }
            if (++slot_ != behind_) continue;
            slot_ = slots_;
            return true;
        }
        return false;
    }

    const Cif_Value& operator[](std::size_t kept) const { return kept_[kept]; }
    bool Odd() const { return odd_; }       // a kept word of the row at hand is neither a number nor a mark
    int Broken() const { return broken_; }  // rows passed over
    const char* At() const { return at_; }  // what is not read yet

private:
    enum class Found { word, nothing, end };

    void Take_Number() {
        if (*slot_ == nowhere)
            while (at_ != last_ && !Is_Cif_Space(*at_)) ++at_;
        else if (!Take_Cif_Value(at_, last_, kept_[static_cast<std::size_t>(*slot_)]))
            odd_ = true;
    }
    Found Take_Other();
    void Take_Text();
    void Take_Quoted();
    void Drop_Broken();

    const char* first_;
    const char* at_;
    const char* last_;
    const signed char* slot_;  // of the next word
    const signed char* slots_;
    const signed char* behind_;
    std::array<Cif_Value, most_kept> kept_;
    int broken_ = 0;
    bool odd_ = false;
};

}  // namespace vntl
