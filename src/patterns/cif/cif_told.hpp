// What the single items of a block of a powder CIF tell of its patterns.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "patterns/pattern.hpp"

namespace vntl {

struct Cif_Item {
    std::string_view word;    // as the file writes it
    std::string_view name;    // see Cif_Name
    std::string_view behind;  // the rest of its line, or more
    std::string_view value;   // the word behind it, on its line or a later one
};

class Cif_Told {
public:
    explicit Cif_Told(std::string_view block = {}) : block_(block) {}

    // Of several items of a name the last one counts. What no pattern needs is passed over.
    void Take(const Cif_Item& item);

    std::string Title() const;  // the identifier of the block, else its name

    // Where x starts and how it goes on, when no column has it; false where the block does not tell. As it was processed, with the shift of
    // its zero, goes before as it was measured.
    bool Range(double& start, double& step) const;

    int Points(bool processed) const;  // that the block tells; 0 where it does not

    // Radiation, temperature, time a step and facts.
    void Give(Diffraction_Pattern_Type& pattern);

private:
    enum Number { proc_start, proc_step, meas_start, meas_step, proc_points, meas_points, ambient, of_cell, step_time, numbers };
    struct Named {
        std::string_view name;
        Number number;
    };
    static const Named named[numbers];

    std::string_view block_, radiation_;
    std::string title_;
    std::array<double, numbers> numbers_{};
    std::array<bool, numbers> known_{};
    std::vector<std::pair<std::string_view, std::string_view>> facts_;
    std::shared_ptr<const Head_Facts> given_;
};

}  // namespace vntl
