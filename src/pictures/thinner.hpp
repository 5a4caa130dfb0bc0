// A curve of many points for print.
#pragma once

#include <cmath>
#include <cstddef>

#include "pictures/page_cover.hpp"

namespace vntl {

// Takes the points of a curve one after another and gives those that can be seen: of those that follow each other in a column of the width
// of the finest print the first, lowest, highest and last one.
template <class Give>
class Thinner {
public:
    explicit Thinner(Give give) : give_(give) {}

    void Add(Point at) {
        const Numbered p{++number_, at};
        const double own = std::floor(at.x / finest_in_print);
        if (!any_ || own != column_) {
            Flush();
            first_ = low_ = high_ = p;
            column_ = own;
            any_ = true;
        } else if (at.y < low_.at.y) {
            low_ = p;
        } else if (at.y > high_.at.y) {
            high_ = p;
        }
        last_ = p;
    }
    void Flush() {
        if (!any_) return;
        any_ = false;
        std::size_t given = first_.number;
        give_(first_.at);
        const bool rises = low_.number < high_.number;
        for (const Numbered& next : {rises ? low_ : high_, rises ? high_ : low_, last_})
            if (next.number > given) give_(next.at), given = next.number;
    }

private:
    struct Numbered {
        std::size_t number;
        Point at;
    };
    Give give_;
    Numbered first_{}, low_{}, high_{}, last_{};
    std::size_t number_ = 0;
    double column_ = 0;
    bool any_ = false;
};

}  // namespace vntl
