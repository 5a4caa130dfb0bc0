// Rows of the profile store, and what is done to single records: clearing, copying, trimming, purging.
#include "session/store.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "base/text.hpp"

namespace vntl {
namespace {

std::size_t Index_Of(int row, std::size_t rows) {
    if (row < 1 || static_cast<std::size_t>(row) > rows) {
        std::fprintf(stderr, "row %d outside 1 to %zu of the profile store\n", row, rows);
        std::abort();
    }
    return static_cast<std::size_t>(row - 1);
}

template <class T>
void Free(std::vector<T>& array) {
    std::vector<T>().swap(array);
}

void Free_Ycalc(Diffraction_Pattern_Type& p) {
    Free(p.ycalc);
    p.has_ycalc = p.al_ycalc = false;
}

void Free_Bgr(Diffraction_Pattern_Type& p) {
    Free(p.bgr);
    p.has_bgr = p.al_bgr = false;
}

void Free_Sigma(Diffraction_Pattern_Type& p) {
    Free(p.sigma);
    p.has_sigma = p.al_sigma = false;
}

void Free_Istat(Diffraction_Pattern_Type& p) {
    Free(p.istat);
    p.al_istat = false;
}

struct Purge_Mode {
    std::string_view name;
    bool ycalc, bgr, sigma, istat;  // freed
};

constexpr Purge_Mode purge_modes[] = {
    {"DATA", true, true, true, true},
    {"DATAS", true, true, false, true},
    {"RIETV", false, false, false, true},
    {"GRAPH", true, true, false, false},
};

// Spare memory below this share of an array is not worth copying the array for.
constexpr std::size_t worth_freeing = 32;

template <class T>
void Trim_Array(std::vector<T>& array, std::size_t length) {
    if (array.empty()) return;
    array.resize(length);
    if (array.capacity() - length > length / worth_freeing) array.shrink_to_fit();
}

}  // namespace

Diffraction_Pattern_Type& Profile_Store::Pattern(int row) { return patterns_[Index_Of(row, patterns_.size())]; }
const Diffraction_Pattern_Type& Profile_Store::Pattern(int row) const { return patterns_[Index_Of(row, patterns_.size())]; }
PRF_Info_Add_Type& Profile_Store::Info(int row) { return infos_[Index_Of(row, infos_.size())]; }
const PRF_Info_Add_Type& Profile_Store::Info(int row) const { return infos_[Index_Of(row, infos_.size())]; }

void Profile_Store::Make_Room() {
    const std::size_t rows = patterns_.size(), room = 2 * rows + 8;
    if (patterns_.capacity() == rows) patterns_.reserve(room);
    if (infos_.capacity() == rows) infos_.reserve(room);
}

void Profile_Store::Append(Diffraction_Pattern_Type pattern, PRF_Info_Add_Type info) {
    Make_Room();
    patterns_.push_back(std::move(pattern));
    infos_.push_back(std::move(info));
}

int Profile_Store::First_Shown() const {
    for (int row = 1; row <= nperfiles(); ++row)
        if (shown(row)) return row;
    return 0;
}

std::vector<int> Profile_Store::Chosen_Rows() const {
    std::vector<int> rows;
    for (int row = 1; row <= nperfiles(); ++row)
        if (is_chosen(row)) rows.push_back(row);
    return rows;
}

int Profile_Store::Append_Copy(int row) {
    Diffraction_Pattern_Type pattern;
    PRF_Info_Add_Type info;
    Copy_Pattern(Pattern(row), pattern);
    Copy_Prf_Info(Info(row), info);
    info.x_shift_total = 0;
    info.y_mult_total = 1;
    info.legend_text.clear();
    Append(std::move(pattern), std::move(info));
    return nperfiles();
}

void Profile_Store::Drop_Last() {
    if (!patterns_.empty()) Take_Out({nperfiles()});
}

// The places left free behind the last row return to their initial state.
std::vector<Kept_Row> Profile_Store::Take_Out(const std::vector<int>& rows) {
    const std::size_t before = patterns_.size();
    std::vector<bool> goes(before, false);
    for (const int row : rows) goes[Index_Of(row, before)] = true;
    std::vector<Kept_Row> out;
    out.reserve(rows.size());
    int active = 0;
    std::size_t kept = 0;
    for (std::size_t i = 0; i < before; ++i) {
        const int row = static_cast<int>(i) + 1;
        if (goes[i]) {
            out.push_back(
                {row, std::move(patterns_[i]), std::move(infos_[i]), profile_shown[i], show_ycalc_of[i], show_bgr_of[i], chosen[i]});
        } else {
            Move_Row(i, kept++);
            if (row == ProfilePRFactive) active = static_cast<int>(kept);
        }
    }
    if (active == 0) prf_loaded = false;
    ProfilePRFactive = active;
    patterns_.resize(kept);
    infos_.resize(kept);
    for (std::size_t i = kept; i < before; ++i) {
        profile_shown[i] = true;
        show_ycalc_of[i] = show_bgr_of[i] = chosen[i] = false;
    }
    return out;
}

void Profile_Store::Move_Row(std::size_t from, std::size_t to) {
    if (from == to) return;
    patterns_[to] = std::move(patterns_[from]);
    infos_[to] = std::move(infos_[from]);
    profile_shown[to] = profile_shown[from];
    show_ycalc_of[to] = show_ycalc_of[from];
    show_bgr_of[to] = show_bgr_of[from];
    chosen[to] = chosen[from];
}

// From the last place to the first, so that every row moves once.
void Profile_Store::Put_In(std::vector<Kept_Row> rows) {
    const int active = ProfilePRFactive;
    std::size_t from = patterns_.size();
    patterns_.resize(from + rows.size());
    infos_.resize(from + rows.size());
    for (std::size_t to = patterns_.size(); to-- > 0 && !rows.empty();) {
        if (Kept_Row& kept = rows.back(); kept.row == static_cast<int>(to) + 1) {
            if (active == 0 && Is_Refined(kept.info.kind)) ProfilePRFactive = kept.row, prf_loaded = true;
            patterns_[to] = std::move(kept.pattern);
            infos_[to] = std::move(kept.info);
            profile_shown[to] = kept.shown;
            show_ycalc_of[to] = kept.show_ycalc;
            show_bgr_of[to] = kept.show_bgr;
            chosen[to] = kept.chosen;
            rows.pop_back();
        } else {
            Move_Row(--from, to);
            if (static_cast<int>(from) + 1 == active) ProfilePRFactive = static_cast<int>(to) + 1;
        }
    }
}

void Profile_Store::Reorder(const std::vector<int>& order, bool flags_go) {
    std::vector<Diffraction_Pattern_Type> patterns;
    std::vector<PRF_Info_Add_Type> infos;
    patterns.reserve(order.size());
    infos.reserve(order.size());
    int active = 0;
    for (const int row : order) {
        patterns.push_back(std::move(Pattern(row)));
        infos.push_back(std::move(Info(row)));
        if (row == ProfilePRFactive) active = static_cast<int>(patterns.size());
    }
    patterns_ = std::move(patterns);
    infos_ = std::move(infos);
    ProfilePRFactive = active;
    const auto go_along = [&order](std::bitset<max_profiles>& flags) {
        const std::bitset<max_profiles> before = flags;
        for (std::size_t place = 0; place < order.size(); ++place) flags[place] = before[static_cast<std::size_t>(order[place] - 1)];
    };
    go_along(chosen);
    if (!flags_go) return;
    for (auto* flags : {&profile_shown, &show_ycalc_of, &show_bgr_of}) go_along(*flags);
}

void Profile_Store::Clear() { *this = Profile_Store(); }

void Clear_Pattern(Diffraction_Pattern_Type& p) {
    p.title.clear();
    p.scat_var.clear();
    p.npts = 0;
    p.xmin = p.xmax = p.ymin = p.ymax = 0;
    p.conv.fill(0);
    Free(p.x);
    Free(p.y);
    Free(p.nd);
    Free_Ycalc(p);
    Free_Bgr(p);
    Free_Sigma(p);
    Free_Istat(p);
    p.al_x = p.al_y = p.has_y = false;
}

void Clear_Prf_Info(PRF_Info_Add_Type& info) {
    info.file_name.clear();
    info.legend_text.clear();
    info.directory.clear();
    info.kind = Row_Kind::none;
    info.format.clear();
    info.nphases = info.nreflections = info.nexcl = 0;
    info.excl_min.fill(0);
    info.excl_max.fill(0);
    Free(info.phase_value);
    Free(info.phase_table);
    Free(info.refl_phase);
    Free(info.refl_tag);
    Free(info.refl_code);
    Free(info.refl_position);
    Free(info.refl_label);
}

void Copy_Pattern(const Diffraction_Pattern_Type& from, Diffraction_Pattern_Type& to) {
    to = from;
    Trim_Pattern(to);
}

void Copy_Prf_Info(const PRF_Info_Add_Type& from, PRF_Info_Add_Type& to) { to = from; }
void Swap_Pattern(Diffraction_Pattern_Type& a, Diffraction_Pattern_Type& b) { std::swap(a, b); }
void Swap_Prf_Info(PRF_Info_Add_Type& a, PRF_Info_Add_Type& b) { std::swap(a, b); }

bool Add_Excluded_Region(PRF_Info_Add_Type& info, float lo, float hi) {
    if (info.nexcl >= max_excluded_regions) return false;
    const auto place = static_cast<std::size_t>(info.nexcl++);
    info.excl_min[place] = lo;
    info.excl_max[place] = hi;
    return true;
}

void Remove_Excluded_Region(PRF_Info_Add_Type& info, int region) {
    for (auto* limits : {&info.excl_min, &info.excl_max}) {
        std::copy(limits->begin() + region, limits->begin() + info.nexcl, limits->begin() + region - 1);
        (*limits)[static_cast<std::size_t>(info.nexcl - 1)] = 0;
    }
    --info.nexcl;
}

void Trim_Pattern(Diffraction_Pattern_Type& p) {
    const auto length = static_cast<std::size_t>(std::max(p.npts, 0));
    Trim_Array(p.x, length);
    Trim_Array(p.y, length);
    Trim_Array(p.sigma, length);
    Trim_Array(p.istat, length);
    Trim_Array(p.ycalc, length);
    Trim_Array(p.bgr, length);
    Trim_Array(p.nd, length);
}

void Purge_Pattern(Diffraction_Pattern_Type& p, std::string_view mode) {
    for (const Purge_Mode& m : purge_modes) {
        if (!Equal_No_Case(mode, m.name)) continue;
        if (m.ycalc) Free_Ycalc(p);
        if (m.bgr) Free_Bgr(p);
        if (m.sigma) Free_Sigma(p);
        if (m.istat) Free_Istat(p);
    }
}

}  // namespace vntl
