// The style of each row in a picture: its slot of the preferences, or, of many rows, a colour of a map along the series.
#pragma once

#include <string>
#include <vector>

#include "session/desk/look.hpp"
#include "session/preferences.hpp"

namespace vntl {

class Profile_Store;

inline constexpr int fewest_rows_of_series = profile_style_slots + 1;  // shown; fewer have slots of their own

class Row_Styles {
public:
    Row_Styles(const Profile_Store&, const Preferences&, const Look&, bool by_temperature);

    ProfileStyle Of(int row) const;  // from 1; a look with a gap of markers draws the points of the active refined profile without a line

    // Whether the colours tell the place in a series; then what they run along, from the value of the first colour to that of the last:
    // temperatures where they were asked for and all shown rows have one and not all the same, else numbers of rows.
    bool Is_Series() const { return !place_.empty(); }
    bool By_Temperature() const { return by_temperature_; }
    float First() const { return first_; }
    float Last() const { return last_; }

private:
    void Run_Along_Temperatures(const Profile_Store&);
    void Run_Along_Rows(const Profile_Store&);
    ProfileStyle Coloured(int row) const;

    const Preferences& prefs_;
    std::vector<float> place_;  // of each row on the map, 0 to 1; empty: no series
    std::string map_;
    int observed_ = 0;  // the row whose points are drawn without a line, 0: none
    bool by_temperature_ = false;
    float first_ = 0, last_ = 0;
};

}  // namespace vntl
