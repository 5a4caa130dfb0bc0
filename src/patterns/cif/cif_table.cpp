#include "patterns/cif/cif_table.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "base/huge_pages.hpp"
#include "patterns/cif/cif_rows.hpp"

namespace vntl {

namespace {

constexpr float least_sigma = 0.001f;  // of a point that the agreement takes in
constexpr float unknown = std::numeric_limits<float>::quiet_NaN();

enum Kept : std::size_t { x, y, ycalc, bgr, weight, deviation, kept_count };  // the first ones as their roles
static_assert(kept_count <= Cif_Rows::most_kept);

// Which columns are kept where.
struct Layout {
    std::vector<signed char> slots;
    std::array<bool, kept_count> has{};
    bool counted;  // y
    bool net;      // ycalc goes without the background that y has

    explicit Layout(const Cif_Heads& heads)
        : slots(static_cast<std::size_t>(std::max(heads.Width(), 1)), Cif_Rows::nowhere), counted(heads.Of(Cif_Role::y)->counted) {
        const Cif_Column* const curve = heads.Of(Cif_Role::ycalc);
        net = curve != nullptr && curve->net && !heads.Of(Cif_Role::y)->net && heads.Of(Cif_Role::bgr) != nullptr;
        for (const Cif_Role role : {Cif_Role::x, Cif_Role::y, Cif_Role::ycalc, Cif_Role::bgr, Cif_Role::weight})
            Keep(heads.Place(role), static_cast<std::size_t>(role));
        Keep(heads.Place_Of_Deviation(), deviation);
    }

    // The deviation in brackets; or that of the weight, of the column of deviations, or of the counts.
    float Deviation(const Cif_Rows& row) const {
        if (row[y].deviation > 0) return row[y].deviation;
        if (row[weight].number > 0) return 1 / std::sqrt(row[weight].number);
        if (row[deviation].number > 0) return row[deviation].number;
        return counted && row[y].number > 0 ? std::sqrt(row[y].number) : 0;
    }

private:
    void Keep(int place, std::size_t kept) {
        if (place < 0) return;
        has[kept] = true;
        slots[static_cast<std::size_t>(place)] = static_cast<signed char>(kept);
    }
};

// About as many rows as the text holds, by the length of its first line: a table ends at the next underscore, if not before it.
std::size_t Rows_In(std::string_view text, std::size_t width) {
    constexpr std::size_t least = 64;
    text = text.substr(0, text.find('_'));
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    if (begin == std::string_view::npos) return least;
    const std::size_t end = text.find_first_of("\r\n", begin);
    const std::size_t line = end == std::string_view::npos ? text.size() : end - begin + 1;
    return least + text.size() / std::max(line, 2 * width);
}

class Table_Reader {
public:
    Table_Reader(std::string_view text, const Cif_Heads& heads)
        : layout_(heads), rows_(text, layout_.slots), room_(Rows_In(text, layout_.slots.size())) {
        for (std::vector<float>* array : Arrays()) Assign_Many(*array, room_, 0.0f);
    }

    // Whether x and y of any row were known.
    bool knows_x = false, knows_y = false;

    void Read(Cif_Table_Pattern& table) {
        const bool has_x = layout_.has[x];
        Diffraction_Pattern_Type& p = pattern_;
        while (rows_.Next()) {
            const Cif_Value &at = rows_[x], &height = rows_[y];
            knows_x |= at.known;
            knows_y |= height.known;
            const int row = table.rows++;
            if (!height.known || (has_x && !at.known)) {
                table.left_out += rows_.Odd() ? 1 : 0;
                continue;
            }
            if (n_ == room_) Grow();
            p.x[n_] = has_x ? at.number : static_cast<float>(row);
            p.y[n_] = height.number;
            p.sigma[n_] = layout_.Deviation(rows_);
            const bool excluded = rows_[weight].known && rows_[weight].number == 0;
            if (excluded) Exclude(table);
            if (layout_.has[ycalc]) Take_Curve(table, excluded);
            if (layout_.has[bgr]) p.bgr[n_] = rows_[bgr].known ? rows_[bgr].number : unknown;
            ++n_;
        }
        table.left_out += rows_.Broken();
        table.rows += rows_.Broken();
        Finish(table);
    }

    const char* Behind() const { return rows_.At(); }

private:
    std::vector<std::vector<float>*> Arrays() {
        std::vector<std::vector<float>*> arrays = {&pattern_.x, &pattern_.y, &pattern_.sigma};
        if (layout_.has[ycalc]) arrays.push_back(&pattern_.ycalc);
        if (layout_.has[bgr]) arrays.push_back(&pattern_.bgr);
        return arrays;
    }

    void Grow() {
        room_ *= 2;
        for (std::vector<float>* array : Arrays()) array->resize(room_);
    }

    void Exclude(Cif_Table_Pattern& table) {
        ++table.excluded;
        pattern_.istat.resize(n_ + 1);
        pattern_.istat[n_] = 1;
    }

    void Take_Curve(Cif_Table_Pattern& table, bool excluded) {
        const bool known = rows_[ycalc].known && (!layout_.net || rows_[bgr].known);
        const float curve = known ? rows_[ycalc].number + (layout_.net ? rows_[bgr].number : 0) : unknown;
        pattern_.ycalc[n_] = curve;
        knows_curve_ |= known;
        if (!known || excluded) return;
        ++table.compared;
        const float sigma = pattern_.sigma[n_];
        if (!(sigma > least_sigma)) return;
        const double off = (static_cast<double>(pattern_.y[n_]) - curve) / sigma;
        table.misfit += off * off;
    }

    void Finish(Cif_Table_Pattern& table) {
        Diffraction_Pattern_Type& p = pattern_;
        p.npts = static_cast<std::int32_t>(n_);
        for (std::vector<float>* array : Arrays()) {
            array->resize(n_);
            if (array->capacity() > n_ + n_ / 4) array->shrink_to_fit();
        }
        if (!knows_curve_) p.ycalc = {};
        if (std::none_of(p.bgr.begin(), p.bgr.end(), [](float value) { return std::isfinite(value); })) p.bgr = {};
        if (!p.istat.empty()) p.istat.resize(n_);
        p.al_x = p.al_y = p.al_sigma = p.has_y = p.has_sigma = true;
        p.al_ycalc = p.has_ycalc = !p.ycalc.empty();
        p.al_bgr = p.has_bgr = !p.bgr.empty();
        p.al_istat = !p.istat.empty();
        p.sigma_is_variance = false;
        table.pattern = std::move(p);
    }

    Layout layout_;
    Cif_Rows rows_;
    Diffraction_Pattern_Type pattern_;
    std::size_t n_ = 0, room_;
    bool knows_curve_ = false;
};

// Gives up the column of y or of x where no row knows it; false where another one would not help.
bool Give_Up_Unknown(const Table_Reader& reader, Cif_Heads& heads) {
    Cif_Heads others = heads;
    if (!reader.knows_y)
        others.Give_Up(Cif_Role::y);
    else if (!reader.knows_x && heads.Of(Cif_Role::x) != nullptr)
        others.Give_Up(Cif_Role::x);
    else
        return false;
    if (others.Of(Cif_Role::y) == nullptr) return false;
    heads = others;
    return true;
}

void Name_Axis(const Cif_Heads& heads, Cif_Table_Pattern& table) {
    const Cif_Column* const axis = heads.Of(Cif_Role::x);
    const Cif_Column& named = axis == nullptr ? cif_columns[0] : *axis;
    table.without_x = axis == nullptr;
    table.pattern.scat_var = named.scat_var;
    table.pattern.legend_x = named.legend_x;
    constexpr std::string_view processed = "_pd_proc";
    table.processed = heads.Of(Cif_Role::y)->name.starts_with(processed) || (axis != nullptr && axis->name.starts_with(processed));
}

}  // namespace

Cif_Table_Pattern Read_Cif_Table(std::string_view& text, Cif_Heads heads) {
    const bool of_tof = heads.Tells_Flight();
    for (;;) {
        Cif_Table_Pattern table;
        table.of_tof = of_tof;
        Table_Reader reader(text, heads);
        reader.Read(table);
        if (table.rows > 0 && Give_Up_Unknown(reader, heads)) continue;
        text.remove_prefix(static_cast<std::size_t>(reader.Behind() - text.data()));
        Name_Axis(heads, table);
        return table;
    }
}

}  // namespace vntl
