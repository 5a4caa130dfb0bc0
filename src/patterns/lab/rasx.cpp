#include "patterns/lab/rasx.hpp"

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "base/huge_pages.hpp"
#include "base/natural_order.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "base/zip_archive.hpp"
#include "patterns/lab/lab_text.hpp"
#include "patterns/lab/rasx_conditions.hpp"
#include "patterns/number_walk.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/scan_axis.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_scans = 2000;

bool Numbered_Word(std::string_view text, std::string_view word) {
    return Equal_No_Case(text.substr(0, word.size()), word) &&
           text.substr(std::min(word.size(), text.size())).find_first_not_of("0123456789") == std::string_view::npos;
}

// Whether a member is "DataN/WORDN.ENDING".
bool Is_Member(std::string_view name, std::string_view word, std::string_view ending) {
    const std::string_view both = Last_Parts(name, 2), file = Last_Parts(name, 1);
    if (both == file || file.size() < ending.size() || !Equal_No_Case(file.substr(file.size() - ending.size()), ending)) return false;
    return Numbered_Word(both.substr(0, both.find('/')), "Data") && Numbered_Word(file.substr(0, file.size() - ending.size()), word);
}

bool Is_Profile(std::string_view name) { return Is_Member(name, "Profile", ".txt"); }
bool Is_Conditions(std::string_view name) {
    return Is_Member(name, "MesurementConditions", ".xml") || Is_Member(name, "MeasurementConditions", ".xml");
}
bool Is_Of_Scan(std::string_view name) { return Is_Profile(name) || Is_Conditions(name); }

std::string_view Directory(std::string_view name) { return name.substr(0, name.size() - Last_Parts(name, 1).size()); }
std::string_view Digits(std::string_view name) {
    const std::string_view stem = name.substr(0, name.rfind('.'));
    return stem.substr(stem.find_last_not_of("0123456789") + 1);
}

// The columns of a profile.
struct Columns {
    std::vector<float> x, y;
    bool attenuated = false;
    std::size_t bad_lines = 0;
};

Columns Read_Columns(std::string_view text) {
    Columns columns;
    constexpr std::size_t shortest_line = 8;
    Reserve_Many(columns.x, text.size() / shortest_line + 1);
    Reserve_Many(columns.y, text.size() / shortest_line + 1);
    Line_Cursor lines(Without_Mark(text));
    for (std::string_view line; lines.Next(line);) {
        Number_Walk walk(line);
        float x = 0, y = 0, factor = 1;
        walk.Skip_Separators();
        if (walk.At_End()) continue;
        bool good = walk.Take(x);
        walk.Skip_Separators();
        good = good && walk.Take(y) && Is_Sound(x) && Is_Sound(y);
        if (!good) {
            ++columns.bad_lines;
            continue;
        }
        walk.Skip_Separators();
        if (walk.Take(factor) && factor != 1 && factor != 0) columns.attenuated = true;
        columns.x.push_back(x);
        columns.y.push_back(y);
    }
    return columns;
}

Status Fill(Diffraction_Pattern_Type& p, Columns&& columns, double claimed) {
    if (Take_Points(p, std::move(columns.y), std::move(columns.x)).failed) return Status::Fail("holds no points");
    Set_Lab_Variances(p);
    End_At_Last_Number(p, p.x.size(), claimed);
    if (p.x.back() < p.x.front()) Turn_Round(p);
    Set_Steps(p);
    Set_Y_Limits(p);
    return Status::Done();
}

class Archive_Reader {
public:
    Archive_Reader(Zip_Archive& archive, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes)
        : archive_(archive), patterns_(patterns), notes_(notes) {}

    Status Read() {
        std::vector<std::size_t> profiles;
        for (std::size_t i = 0; i < archive_.Names().size(); ++i) {
            const std::string& name = archive_.Names()[i];
            if (Is_Profile(name)) profiles.push_back(i);
            if (!Is_Conditions(name)) continue;
            conditions_.emplace(std::string(Directory(name)) + std::string(Digits(name)), i);
            conditions_.emplace(Directory(name), i);
        }
        if (profiles.empty()) return Status::Fail("This zip archive holds no scans of a diffractometer");
        std::stable_sort(profiles.begin(), profiles.end(),
                         [&](std::size_t a, std::size_t b) { return Compare_Natural(archive_.Names()[a], archive_.Names()[b]) < 0; });
        if (profiles.size() > most_scans) {
            profiles.resize(most_scans);
            notes_.failed.push_back("Only the first " + std::to_string(most_scans) + " scans were read");
        }
        for (std::size_t i = 0; i < profiles.size(); ++i) Read_Scan(profiles[i], i + 1, profiles.size() > 1);
        if (!patterns_.empty()) return Status::Done();
        const Status status = Status::Fail(notes_.failed.front());
        notes_.failed.clear();
        return status;
    }

private:
    void Read_Scan(std::size_t profile, std::size_t number, bool several) {
        const std::string words = "Scan " + std::to_string(number) + ' ';
        Rasx_Conditions conditions;
        Read_Conditions(profile, words, conditions);
        if (const Status status = archive_.Unpack(profile, bytes_); status.failed) {
            notes_.failed.push_back(words + "cannot be unpacked: " + status.message);
            return;
        }
        Columns columns = Read_Columns(bytes_);
        Diffraction_Pattern_Type p = std::move(conditions.told);
        p.radiation = "xrays_cw";
        if (const Status status = Fill(p, std::move(columns), conditions.count); status.failed) {
            notes_.failed.push_back(words + status.message);
            return;
        }
        if (columns.bad_lines > 0)
            notes_.warnings.push_back(words + "has " + std::to_string(columns.bad_lines) +
                                      " lines that are no numbers, which are left out");
        if (columns.attenuated)
            notes_.warnings.push_back(
                words + "was measured with an attenuator, and its file does not tell whether the counts are corrected for it");
        Set_Scan_Axis(p, First_Of_Coupled(conditions.axis));
        p.facts = conditions.facts.Done();
        if (several) {
            p.bank = static_cast<std::int32_t>(number);
            p.title = Numbered(p.title, number);
        }
        patterns_.push_back(std::move(p));
    }

    void Read_Conditions(std::size_t profile, const std::string& words, Rasx_Conditions& conditions) {
        const std::string& name = archive_.Names()[profile];
        auto found = conditions_.find(std::string(Directory(name)) + std::string(Digits(name)));
        if (found == conditions_.end()) found = conditions_.find(std::string(Directory(name)));
        if (found == conditions_.end()) {
            notes_.warnings.push_back(words + "comes without its conditions: neither axis nor wavelength is known");
            return;
        }
        Status status = archive_.Unpack(found->second, bytes_);
        if (status.ok()) status = Read_Rasx_Conditions(bytes_, conditions);
        if (status.failed) notes_.warnings.push_back(words + "has conditions that cannot be read whole: " + status.message);
    }

    Zip_Archive& archive_;
    std::vector<Diffraction_Pattern_Type>& patterns_;
    Read_Notes& notes_;
    std::map<std::string, std::size_t> conditions_;  // by directory and number, and by the directory alone
    std::string bytes_;
};

}  // namespace

bool Is_Rasx(std::string_view head) { return Zip_Name_Fits(head, Is_Of_Scan); }

Status Read_Rasx(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    patterns.clear();
    Zip_Archive archive;
    if (const Status status = archive.Open(bytes); status.failed) return status;
    return Archive_Reader(archive, patterns, notes).Read();
}

}  // namespace vntl
