// What a dialog of starting values shows and reads back: every number and flag of a fit tied to its place in the dialog.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "fit/fit_state.hpp"

namespace vntl {

struct Irf_File;

// Numbers of the fields; 0 where the dialog of a kind has none.
struct Fit_Fields {
    int cycles, background, wavelengths, d2tof, profile, asymmetry, peaks;
};
Fit_Fields Fields_Of(Fit_Kind kind);

inline constexpr int least_cycles = 1, most_cycles = 9999;
inline constexpr int node_flags = 3;   // column of the background's grid
inline constexpr int first_shift = 2;  // of the values of a peak, from 0: position, intensity, shifts

// Columns of the peaks' grid for the values of a peak.
constexpr int Value_Column(int value) { return 2 * value + 2; }
constexpr int Flag_Column(int value) { return 2 * value + 3; }

enum class Flag_Change { set, clear, toggle };  // toggle: clears them when all are set

// A copy of a fit's state and nodes, shown in the dialog that is loaded.
class Starting_Values {
public:
    Starting_Values(Fit_Kind kind, const Fit_State& fit, const std::vector<Background_Mark>& background);
    Starting_Values(const Starting_Values&) = delete;
    Starting_Values& operator=(const Starting_Values&) = delete;

    void Fill();
    // Takes over what the dialog holds. False, and nothing is taken, when a number is none or cannot be: a box tells all that is wrong,
    // and their places are marked.
    bool Read();

    // In the rows that stand for peaks or nodes.
    void Change_Flags(int grid, std::span<const int> columns, Flag_Change change) const;
    void Nullify_Shifts();
    // What the file gives is shown; what the user has typed elsewhere stays.
    void Take_Irf(const Irf_File& irf);

    Fit_State state;
    std::vector<Background_Mark> nodes;

private:
    struct Place {
        int field, column = 0, row = 0;  // column 0: a field of its own
    };
    // Fields show fewer digits than a number has; the one that the user left as it was shown keeps them all.
    struct Tied_Number {
        Place place;
        float* value;
        std::optional<float> shown = {};
    };
    struct Tied_Flag {
        Place place;
        int* flag;
    };
    struct Refusal {
        Place place;
        std::string text;
    };

    void Tie(Place place, Fit_Value& value);  // with its flag in the next column
    void Tie_Everything();
    bool Is_Common(const Place& place) const { return place.field != fields_.background && place.field != fields_.peaks; }
    static std::optional<float> Typed(const Place& place);
    static void Put(Tied_Number& number);
    static void Tell(std::span<const Refusal> refused);
    std::string Text_Of_Refusal(const Place& place) const;
    std::string What_Is_Wrong(std::size_t i, std::span<const float> now) const;
    std::vector<float> Numbers_Of_Dialog() const;  // NaN: none
    void Take_Over(std::span<const float> now);

    Fit_Kind kind_;
    Fit_Fields fields_;
    std::vector<Tied_Number> numbers_;  // in the order in which they are told
    std::vector<Tied_Flag> flags_;
};

}  // namespace vntl
