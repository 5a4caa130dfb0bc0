#include "patterns/lab/ras.hpp"

#include <algorithm>
#include <string>
#include <utility>

#include "base/huge_pages.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/lab/lab_text.hpp"
#include "patterns/lab/ras_head.hpp"
#include "patterns/number_walk.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/scan_axis.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_scans = 2000;
constexpr std::size_t shortest_row = 8;  // bytes, about
constexpr std::string_view factors_left =
    "The third column tells attenuation factors other than 1: the intensities are as they stand in the file, not multiplied by them";

struct Rows {
    std::vector<float> x, y;
    bool attenuated = false;
};

// Numbers of a row; none when anything else stands in it.
std::size_t Take_Row(std::string_view line, float (&row)[3]) {
    Number_Walk walk(line);
    walk.Skip_Separators();
    std::size_t n = 0;
    while (n < 3 && !walk.At_End()) {
        if (!walk.Take(row[n])) return 0;
        ++n;
        walk.Skip_Separators();
    }
    return n;
}

// Up to a line that is no row, in front of which the cursor stands then. The last line of a file that was cut may hold half a number: it
// counts where it completes the points told, or where a third number shows that the second one is whole.
Rows Read_Rows(Line_Cursor& lines, std::size_t told) {
    Rows rows;
    const std::string_view text = lines.Rest();
    const std::size_t room = text.size() / shortest_row + 1;
    const std::size_t expected = std::min(told > 0 ? told : room, room);
    Reserve_Many(rows.x, expected);
    Reserve_Many(rows.y, expected);
    std::string_view line;
    for (Line_Cursor before = lines; lines.Next(line); before = lines) {
        float row[3] = {};
        const std::size_t n = Take_Row(line, row);
        if (n == 0 && Trim(line).empty()) continue;
        if (n < 2) {
            lines = before;
            break;
        }
        if (n == 2 && Is_Last_And_Open(text, line) && rows.x.size() + 1 != told) break;
        rows.x.push_back(row[0]);
        rows.y.push_back(row[1]);
        rows.attenuated |= n == 3 && row[2] != 1 && row[2] != 0;
    }
    return rows;
}

class Scan_Reader {
public:
    Scan_Reader(std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) : patterns_(patterns), notes_(notes) {}

    Status Read(std::string_view text) {
        Line_Cursor lines(text);
        for (std::string_view line; scans_ < most_scans && lines.Next(line);) {
            if (line.starts_with("*RAS_HEADER_START"))
                Begin_Head();
            else if (line.starts_with("*RAS_INT_START"))
                Take_Scan(lines);
            else
                head_.Take(line);
        }
        if (in_head_) Fail("This RAS file ends within the head of range " + std::to_string(scans_ + 1), scans_ + 1);
        if (patterns_.empty()) return Status::Fail(faults_.empty() ? "This RAS file holds no scan" : faults_.front());
        Number_Ranges(patterns_, scans_);
        for (std::string& fault : faults_) notes_.failed.push_back(std::move(fault));
        if (scans_ == most_scans && Contains(lines.Rest(), "*RAS_INT_START")) notes_.warnings.emplace_back(too_many_scans);
        if (attenuated_) notes_.warnings.emplace_back(factors_left);
        return Status::Done();
    }

private:
    void Begin_Head() {
        if (in_head_) Fail_Without_Points(scans_ + 1);
        head_ = {};
        in_head_ = true, told_ = false;
    }

    void Fail(std::string text, std::size_t scans) {
        faults_.push_back(std::move(text));
        scans_ = scans;
    }

    void Fail_Without_Points(std::size_t scan) { Fail("Range " + std::to_string(scan) + " of this RAS file holds no points", scan); }

    // A scan without a head of its own has the one before.
    void Take_Scan(Line_Cursor& lines) {
        if (!told_) pattern_head_ = head_.Told();
        in_head_ = false, told_ = true;
        const auto claimed = static_cast<std::size_t>(pattern_head_.npts_claimed);
        ++scans_;
        Rows rows = Read_Rows(lines, claimed);
        Diffraction_Pattern_Type p;
        static_cast<Pattern_Head&>(p) = pattern_head_;
        if (Take_Points(p, std::move(rows.y), std::move(rows.x)).failed) {
            Fail_Without_Points(scans_);
            return;
        }
        if (p.x.size() >= claimed) p.npts_claimed = 0;
        p.bank = static_cast<std::int32_t>(scans_);
        Set_Steps(p);
        Set_Lab_Variances(p);
        Set_Y_Limits(p);
        Set_Scan_Axis(p, First_Of_Coupled(head_.Axis()));
        attenuated_ |= rows.attenuated;
        patterns_.push_back(std::move(p));
    }

    std::vector<Diffraction_Pattern_Type>& patterns_;
    Read_Notes& notes_;
    std::vector<std::string> faults_;
    Ras_Head head_;
    Pattern_Head pattern_head_;  // what the head tells, found once
    std::size_t scans_ = 0;
    bool in_head_ = false, told_ = false, attenuated_ = false;
};

}  // namespace

bool Is_Ras(std::string_view head) {
    head = Without_Mark(head);
    head.remove_prefix(std::min(head.find_first_not_of(" \t\r\n"), head.size()));
    return head.starts_with("*RAS_DATA_START") || head.starts_with("*RAS_HEADER_START");
}

Status Read_Ras(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    patterns.clear();
    if (Status status = Refuse_Wide_Text(bytes); status.failed) return status;
    if (!Is_Ras(bytes)) return Status::Fail("This is no RAS file: it does not begin with *RAS_DATA_START");
    return Scan_Reader(patterns, notes).Read(Filled_Part(bytes));
}

}  // namespace vntl
