// The profile store: the program's working memory, one row per loaded pattern.
//
// Rows run from 1 to `nperfiles`. Row numbers are not stable: sorting and removal renumber rows, so nothing keeps one from one
// command to the next.
#pragma once

#include <bitset>
#include <string_view>
#include <vector>

#include "patterns/pattern.hpp"
#include "patterns/profile.hpp"
#include "session/change_history.hpp"

namespace vntl {

inline constexpr int max_profiles = 2000;
inline constexpr std::string_view table_full_text = "The maximum number of profiles has been attained!";
inline constexpr int profiles_with_optional_arrays = 20;  // rows beyond keep x, y and nd alone

class Profile_Store : public Row_Choices {
public:
    int nperfiles() const { return static_cast<int>(patterns_.size()); }
    bool full() const { return nperfiles() >= max_profiles; }

    // The row `row`, 1 to nperfiles. A row outside is a programming error and stops the program.
    Diffraction_Pattern_Type& Pattern(int row);
    const Diffraction_Pattern_Type& Pattern(int row) const;
    PRF_Info_Add_Type& Info(int row);
    const PRF_Info_Add_Type& Info(int row) const;

    // After this the next Append needs no memory.
    void Make_Room();

    // Appends a row; the caller has asked full(). Where memory runs out nothing changes.
    void Append(Diffraction_Pattern_Type pattern, PRF_Info_Add_Type info);
    int Append_Copy(int row);  // of both records; shift and factor of the new row start anew, and it is not
    // called as the user called the first. Its number. The caller has asked full().
    void Drop_Last();

    // Rows leave the store with their flags, and come back to the places that their numbers tell (rising). The order of the others stays.
    std::vector<Kept_Row> Take_Out(const std::vector<int>& rows);
    void Put_In(std::vector<Kept_Row> rows);

    // Row order[i] comes to place i + 1, chosen rows with their choice. The other flags stay with the places, or go with the rows too. No
    // point is copied.
    void Reorder(const std::vector<int>& order, bool flags_go = false);

    void Clear();  // no rows, and every flag at its initial state

    // Flags of the rows, index row - 1.
    bool shown(int row) const { return profile_shown[static_cast<std::size_t>(row - 1)]; }
    bool is_chosen(int row) const { return chosen[static_cast<std::size_t>(row - 1)]; }
    std::vector<int> Chosen_Rows() const;

    int First_Shown() const;  // 0 where all are hidden

    int ProfilePRFactive = 0;  // the row that carries Rietveld overlay, 0 when none
    bool prf_loaded = false;   // a row of kind "PRF" or "MONO" exists
    std::bitset<max_profiles> profile_shown = std::bitset<max_profiles>().set();
    std::bitset<max_profiles> show_ycalc_of;
    std::bitset<max_profiles> show_bgr_of;
    std::bitset<max_profiles> chosen;  // in the list of patterns; goes with the rows wherever they go
    bool mixed_scat_var = false;       // rows of different scattering variable are in the store

    Change_History changes;  // what was done to the rows; see session/changes.hpp

private:
    void Move_Row(std::size_t from, std::size_t to);  // with its flags, to a place that is free

    std::vector<Diffraction_Pattern_Type> patterns_;
    std::vector<PRF_Info_Add_Type> infos_;
};

void Clear_Pattern(Diffraction_Pattern_Type& pattern);
void Clear_Prf_Info(PRF_Info_Add_Type& info);
void Copy_Pattern(const Diffraction_Pattern_Type& from, Diffraction_Pattern_Type& to);
void Copy_Prf_Info(const PRF_Info_Add_Type& from, PRF_Info_Add_Type& to);
void Swap_Pattern(Diffraction_Pattern_Type& a, Diffraction_Pattern_Type& b);
void Swap_Prf_Info(PRF_Info_Add_Type& a, PRF_Info_Add_Type& b);

// Adds a region at the end of the list; false, and nothing changes, where it is full.
bool Add_Excluded_Region(PRF_Info_Add_Type& info, float lo, float hi);

// Takes region `region`, from 1, out of the list; the later ones move down one place.
void Remove_Excluded_Region(PRF_Info_Add_Type& info, int region);

// Cuts or extends each allocated array to exactly `npts` entries, and gives the spare memory back.
void Trim_Pattern(Diffraction_Pattern_Type& pattern);

// Frees the arrays that a mode ("DATA", "DATAS", "RIETV" or "GRAPH", any case) does not need and clears their flags.
// Any other text frees nothing.
void Purge_Pattern(Diffraction_Pattern_Type& pattern, std::string_view mode);

}  // namespace vntl
