// The items of a powder CIF that name the columns of a pattern, in the order in which they are preferred where a table has several.
//
// Names are known in any case and with a point behind the category, as newer dictionaries write them: _pd_meas.2theta_scan.
#pragma once

#include <array>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

namespace vntl {

enum class Cif_Role { x, y, ycalc, bgr, weight };

struct Cif_Column {
    std::string_view name;
    Cif_Role role;
    std::string_view scat_var = {}, legend_x = {};
    bool net = false;      // without its background
    bool counted = false;  // counts, which are their own variances
};

inline constexpr Cif_Column cif_columns[] = {
    {"_pd_proc_2theta_corrected", Cif_Role::x, "2theta", "2theta(degrees)"},
    {"_pd_meas_2theta_scan", Cif_Role::x, "2theta", "2theta(degrees)"},
    {"_pd_meas_time_of_flight", Cif_Role::x, "TOF", "TOF(micro-seconds)"},
    {"_pd_proc_recip_len_q", Cif_Role::x, "q-space", "Q(1/Angstrom)"},
    {"_pd_proc_d_spacing", Cif_Role::x, "d-spacing", "d-spacing(Angstroms)"},
    {"_pd_meas_counts_total", Cif_Role::y, {}, {}, false, true},
    {"_pd_meas_intensity_total", Cif_Role::y},
    {"_pd_proc_intensity_total", Cif_Role::y},
    {"_pd_proc_intensity_net", Cif_Role::y, {}, {}, true},
    {"_pd_meas_intensity_net", Cif_Role::y, {}, {}, true},
    {"_pd_calc_intensity_total", Cif_Role::ycalc},
    {"_pd_calc_intensity_net", Cif_Role::ycalc, {}, {}, true},
    {"_pd_proc_intensity_bkg_calc", Cif_Role::bgr},
    {"_pd_proc_ls_weight", Cif_Role::weight},
};
inline constexpr std::size_t cif_column_count = std::size(cif_columns);

// In small letters, the points as underscores.
std::string Cif_Name(std::string_view item);

// The heads of one table.
class Cif_Heads {
public:
    Cif_Heads() { places_.fill(-1), deviations_.fill(-1); }

    void Add(std::string_view name);  // of the next column, see Cif_Name
    int Width() const { return width_; }

    // The column that has this role, null where there is none.
    const Cif_Column* Of(Cif_Role role) const;
    int Place(Cif_Role role) const;  // from 0; -1 where there is none
    int Place_Of_Deviation() const;  // of the column of deviations of y
    bool Tells_Flight() const;       // some column holds times of flight
    void Give_Up(Cif_Role role);     // the column of this role holds nothing: the next one of its kind counts

private:
    static std::size_t Number_Of(const Cif_Column& column) { return static_cast<std::size_t>(&column - cif_columns); }

    std::array<int, cif_column_count> places_, deviations_;  // of each column and of its deviations
    int width_ = 0;
};

}  // namespace vntl
