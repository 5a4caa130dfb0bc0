#include "patterns/cif/cif_pattern.hpp"

#include <algorithm>
#include <cmath>
#include <string>

#include "base/cif_words.hpp"
#include "base/edit_descriptor.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/cif/cif_items.hpp"
#include "patterns/cif/cif_table.hpp"
#include "patterns/cif/cif_told.hpp"
#include "patterns/cif/cif_wavelength.hpp"
#include "patterns/reader_tools.hpp"

namespace vntl {

namespace {

constexpr int least_lines = 10;
constexpr std::size_t most_patterns = 2000, longest_title = 1000;

constexpr std::string_view too_few_lines = " Number of lines too small to hold a diffraction pattern, check your CIF file!";
constexpr std::string_view no_data = " Error: experimental data are lacking, check your CIF file!";
constexpr std::string_view structure_alone = "This CIF holds a structure, not a powder pattern";
constexpr std::string_view peaks_alone = "This CIF holds peaks, not a pattern";
constexpr std::string_view reflections_alone = "This CIF holds reflections, not a powder pattern";

bool Is_Too_Short(std::string_view text) {
    Line_Cursor lines(text);
    std::string_view line;
    while (lines.Number() < least_lines && lines.Next(line)) continue;
    return lines.Number() < least_lines;
}

std::string Agreement(double chi2) {
    static const Edit_Format twelve("(E12.4)");
    std::string text;
    const Status written = Write_Record(text, twelve, chi2);
    (void)written;  // twelve columns take any number
    if (text.ends_with('\n')) text.pop_back();
    return "  Chi2(free) = " + text;
}

// `several`: its block holds others.
std::string Title_Of(const Cif_Table_Pattern& table, const Cif_Told& told, bool several) {
    std::string behind;
    if (several) behind = table.processed ? ", processed" : ", measured";
    if (table.compared > 0) behind += Agreement(table.misfit / table.compared);
    const std::string title = told.Title();
    return std::string(Cut(title, title_width - behind.size())) + behind;
}

// Sets what follows from the points; false where they are no pattern.
bool Set_Range(Cif_Table_Pattern& table, const Cif_Told& told) {
    Diffraction_Pattern_Type& p = table.pattern;
    if (p.npts < 1) return false;
    double start = 0, step = 0;
    if (table.without_x && !told.Range(start, step)) return false;
    if (table.without_x)
        for (float& x : p.x) x = static_cast<float>(start + step * x);
    if (p.x.front() > p.x.back()) Turn_Round(p);  // spacings fall as angles rise
    p.xmin = p.x.front();
    p.xmax = p.x.back();
    p.step = p.npts > 1 ? (p.xmax - p.xmin) / static_cast<float>(p.npts - 1) : 0;
    Set_Y_Limits(p);
    const int claimed = told.Points(table.processed);
    if (claimed > table.rows) p.npts_claimed = claimed;
    return std::isfinite(p.step);
}

class Cif_Reader {
public:
    Cif_Reader(std::string_view text, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes)
        : words_(text), patterns_(patterns), notes_(notes) {}

    Status Read() {
        Cif_Word word = words_.Next();
        while (word.kind != Cif_Kind::end && patterns_.size() + tables_.size() < most_patterns) {
            if (word.kind == Cif_Kind::loop)
                word = Read_Loop();
            else if (word.kind == Cif_Kind::item)
                word = Read_Item(word.text);
            else {
                if (word.kind == Cif_Kind::data) Begin_Block(word.text.substr(std::string_view("data_").size()));
                word = words_.Next();
            }
        }
        Close_Block();
        if (patterns_.empty()) return Status::Fail(Refusal());
        Finish();
        if (word.kind != Cif_Kind::end) notes_.failed.push_back("Only the first " + std::to_string(most_patterns) + " patterns are read");
        return Status::Done();
    }

private:
    void Begin_Block(std::string_view name) {
        Close_Block();
        told_ = Cif_Told(name);
        radiation_ = {};
    }

    Cif_Word Read_Item(std::string_view item) {
        const std::string name = Cif_Name(item);
        Note_Kind(name);
        const std::string_view behind = words_.Rest().substr(0, longest_title);
        const Cif_Word value = words_.Next();
        if (value.kind != Cif_Kind::value) return value;
        if (Is_Cif_Wavelength(name)) radiation_.Add(value.text, {});
        told_.Take({item, name, behind, value.text});
        return words_.Next();
    }

    Cif_Word Read_Loop() {
        Cif_Heads heads;
        int wavelength = -1, weight = -1;
        std::string_view rest = words_.Rest();
        Cif_Word word = words_.Next();
        for (; word.kind == Cif_Kind::item; word = words_.Next()) {
            const std::string name = Cif_Name(word.text);
            Note_Kind(name);
            if (Is_Cif_Wavelength(name)) wavelength = heads.Width();
            if (Is_Cif_Wavelength_Weight(name)) weight = heads.Width();
            heads.Add(name);
            rest = words_.Rest();
        }
        if (word.kind == Cif_Kind::value && heads.Of(Cif_Role::y) != nullptr) {
            tables_.push_back(Read_Cif_Table(rest, heads));
            words_.Go_On_At(rest.data());
            return words_.Next();
        }
        std::vector<std::string_view> row;
        for (; word.kind == Cif_Kind::value; word = words_.Next()) {
            if (wavelength < 0) continue;
            row.push_back(word.text);
            if (static_cast<int>(row.size()) < heads.Width()) continue;
            const auto place = static_cast<std::size_t>(wavelength);
            radiation_.Add(row[place], weight < 0 ? std::string_view{} : row[static_cast<std::size_t>(weight)]);
            row.clear();
        }
        return word;
    }

    void Note_Kind(std::string_view name) {
        holds_pattern_ |=
            name.starts_with("_pd_meas_intensity") || name.starts_with("_pd_proc_intensity") || name == "_pd_meas_counts_total";
        holds_structure_ |= name.starts_with("_atom_site") || name.starts_with("_cell_length");
        holds_peaks_ |= name.starts_with("_pd_peak_");
        holds_reflections_ |= name.starts_with("_refln_");
    }

    void Close_Block() {
        std::vector<bool> sound;
        for (Cif_Table_Pattern& table : tables_) sound.push_back(Set_Range(table, told_));
        const bool several = std::count(sound.begin(), sound.end(), true) > 1;
        const bool of_tof = std::any_of(tables_.begin(), tables_.end(), [](const Cif_Table_Pattern& table) { return table.of_tof; });
        for (std::size_t i = 0; i < tables_.size(); ++i) {
            if (!sound[i]) continue;
            Cif_Table_Pattern& table = tables_[i];
            Diffraction_Pattern_Type& p = table.pattern;
            p.title = Title_Of(table, told_, several);
            told_.Give(p);
            if (p.scat_var != "TOF") radiation_.Give(p);
            points_ += p.npts;
            excluded_ += table.excluded;
            left_out_ += table.left_out;
            patterns_.push_back(std::move(p));
            may_have_wavelength_.push_back(!of_tof);
        }
        tables_.clear();
        if (first_radiation_.Empty()) first_radiation_ = radiation_;
    }

    // A wavelength that no block of a pattern tells stands in another one.
    void Finish() {
        for (std::size_t i = 0; i < patterns_.size(); ++i) {
            Diffraction_Pattern_Type& p = patterns_[i];
            if (patterns_.size() > 1) p.bank = static_cast<std::int32_t>(i + 1);
            if (p.conv[0] == 0 && may_have_wavelength_[i]) first_radiation_.Give(p);
        }
        if (excluded_ > 0)
            notes_.warnings.push_back("Points of weight 0, which the refinement in the file left out: " + std::to_string(excluded_) +
                                      " of " + std::to_string(points_));
        if (left_out_ > 0)
            notes_.warnings.push_back("Rows left out, for they hold no numbers that can be read: " + std::to_string(left_out_));
    }

    std::string_view Refusal() const {
        if (holds_pattern_) return no_data;
        if (holds_structure_) return structure_alone;
        if (holds_peaks_) return peaks_alone;
        return holds_reflections_ ? reflections_alone : no_data;
    }

    Cif_Words words_;
    std::vector<Diffraction_Pattern_Type>& patterns_;
    Read_Notes& notes_;
    Cif_Told told_;  // of the block at hand, as the two that follow
    std::vector<Cif_Table_Pattern> tables_;
    Cif_Radiation radiation_;
    Cif_Radiation first_radiation_;  // of the file
    std::vector<bool> may_have_wavelength_;
    long long points_ = 0, excluded_ = 0, left_out_ = 0;
    bool holds_pattern_ = false, holds_structure_ = false, holds_peaks_ = false, holds_reflections_ = false;
};

}  // namespace

Status Read_Cif_Patterns(std::string_view text, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    patterns.clear();
    if (Is_Too_Short(text)) return Status::Fail(too_few_lines);
    return Cif_Reader(text, patterns, notes).Read();
}

}  // namespace vntl
