#include "patterns/lab/asc.hpp"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "base/huge_pages.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/head_facts.hpp"
#include "patterns/lab/lab_text.hpp"
#include "patterns/number_walk.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/scan_axis.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_groups = 2000, most_lines = 1000;
constexpr std::size_t most_facts = 50000;  // of all groups; further ones have those of the group before
constexpr int looked_at = 30;              // lines that tell the format

struct Key_Line {
    std::string_view key, value;
};

// "*KEY = value"; an empty key for a line of another form.
Key_Line Cut_Line(std::string_view line) {
    line = Trim(line);
    if (!line.starts_with('*')) return {};
    line.remove_prefix(1);
    const std::size_t equal = line.find('=');
    return {Trim(line.substr(0, equal)), equal == std::string_view::npos ? std::string_view{} : Trim(line.substr(equal + 1))};
}

class Key_Lines {
public:
    void Take(const Key_Line& line) {
        if (lines_.size() < most_lines) lines_.push_back(line);
    }
    std::string_view Value(std::string_view key) const {
        for (const Key_Line& line : lines_)
            if (line.key == key) return line.value;
        return {};
    }
    const std::vector<Key_Line>& All() const { return lines_; }

private:
    std::vector<Key_Line> lines_;
};

struct Named_Fact {
    std::string_view key, name;
};
constexpr Named_Fact named[] = {{"SAMPLE", "Sample"},   {"COMMENT", "Comment"}, {"SCAN_AXIS", "Scan axis"}, {"DATE", "Date"},
                                {"KV", "Voltage (kV)"}, {"MA", "Current (mA)"}, {"OPERATOR", "User"}};

std::string_view Fact_Name(std::string_view key) {
    const auto* const found = std::find_if(std::begin(named), std::end(named), [key](const Named_Fact& fact) { return fact.key == key; });
    return found != std::end(named) ? found->name : key;
}

// Places for what was not measured, in every file.
bool Is_Idle(std::string_view key) {
    return key == "TARGET" || key == "PAREX" || key == "CTEMPER" || key == "TSPEC_SIZE" || key == "EXTRA_SIZE" || key == "POS_FORMAT";
}

std::string Anode(std::string_view target) {
    constexpr std::pair<int, const char*> elements[] = {{22, "Ti"}, {24, "Cr"}, {26, "Fe"}, {27, "Co"}, {28, "Ni"},
                                                        {29, "Cu"}, {42, "Mo"}, {45, "Rh"}, {47, "Ag"}, {74, "W"}};
    double number = 0;
    if (!Parse_Real(target, number)) return std::string(target);
    for (const auto& [charge, symbol] : elements)
        if (number == charge) return symbol;
    return {};
}

// One group: its lines, and those in front of all groups.
class Group {
public:
    Group(const Key_Lines& file, const Key_Lines& own) : file_(file), own_(own) {}

    std::string_view Value(std::string_view key) const {
        const std::string_view value = own_.Value(key);
        return value.empty() ? file_.Value(key) : value;
    }
    // False where there is none, or none that a measurement can have.
    bool Number(std::string_view key, double& number) const { return !Value(key).empty() && Told_Real(Value(key), number); }

    Pattern_Head Told() const {
        Pattern_Head head;
        for (const char* key : {"SAMPLE", "MEMO", "COMMENT"})
            if (head.title.empty()) head.title = Kept_Text(Readable(Value(key)), title_width);
        head.radiation = "xrays_cw";
        double alpha1 = 0, alpha2 = 0, speed = 0, step = 0;
        Number("WAVE_LENGTH1", alpha1), Number("WAVE_LENGTH2", alpha2), Number("SPEED", speed), Number("STEP", step);
        head.conv[0] = static_cast<float>(alpha1);
        if (!Equal_No_Case(Value("XRAY_CHAR"), "K-ALPHA1")) head.conv[1] = static_cast<float>(alpha2);
        head.step = static_cast<float>(step);
        head.count_time = Time_A_Step(speed, Value("SPEED_DIM"), step);
        head.per_second = Equal_No_Case(Value("YUNIT"), "cps");
        return head;
    }

    std::shared_ptr<const Head_Facts> Facts(float time) const {
        Fact_List facts;
        if (time > 0) facts.Add("Time a step (s)", time);
        for (const Named_Fact& fact : named) facts.Add(fact.name, Readable(Value(fact.key)));
        facts.Add("Anode", Anode(Value("TARGET")));
        for (const Key_Lines* lines : {&file_, &own_})
            for (const auto& [key, value] : lines->All())
                if (!Is_Idle(key) && Fact_Name(key) == key) facts.Add(key, Readable(value));
        return facts.Done();
    }

private:
    const Key_Lines& file_;
    const Key_Lines& own_;
};

// The numbers of a line behind the others. False at anything else, what stands in front of it is taken.
bool Take_Counts(std::string_view line, std::vector<float>& counts) {
    Number_Walk walk(line);
    walk.Skip_Separators();
    for (float count = 0; !walk.At_End(); walk.Skip_Separators()) {
        if (!walk.Take(count)) return false;
        counts.push_back(count);
    }
    return true;
}

class Group_Reader {
public:
    Group_Reader(std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) : patterns_(patterns), notes_(notes) {}

    Status Read(std::string_view text) {
        Line_Cursor lines(text);
        for (std::string_view line; groups_ < most_groups && lines.Next(line);) {
            const Key_Line cut = Cut_Line(line);
            if (cut.key == "EOF") break;
            if (cut.key == "BEGIN")
                Take_Group(lines);
            else if (!cut.key.empty() && cut.key != "END")
                file_.Take(cut);
        }
        if (patterns_.empty()) return Status::Fail(faults_.empty() ? "This ASC file holds no counts" : faults_.front());
        Number_Ranges(patterns_, groups_);
        for (std::string& fault : faults_) notes_.failed.push_back(std::move(fault));
        if (groups_ == most_groups && Contains(lines.Rest(), "*BEGIN")) notes_.warnings.emplace_back(too_many_scans);
        return Status::Done();
    }

private:
    std::string Name() const { return "Range " + std::to_string(groups_); }

    // Up to *END, or in front of what begins the next group or ends the file.
    void Take_Group(Line_Cursor& lines) {
        ++groups_;
        own_ = {};
        std::vector<float> counts;
        const std::string_view text = lines.Rest();
        std::string_view line;
        bool sound = true, open = false;
        for (Line_Cursor before = lines; lines.Next(line); before = lines) {
            const Key_Line cut = Cut_Line(line);
            if (cut.key == "END") break;
            if (cut.key == "BEGIN" || cut.key == "EOF") {
                lines = before;
                break;
            }
            if (!cut.key.empty()) {
                own_.Take(cut);
                if (cut.key == "COUNT") Expect(cut.value, lines.Rest().size(), counts);
            } else if (sound) {
                sound = Take_Counts(line, counts);
                open = Is_Last_And_Open(text, line);
            }
        }
        Give(counts, open);
    }

    static void Expect(std::string_view told, std::size_t bytes, std::vector<float>& counts) {
        double n = 0;
        if (Told_Real(told, n) && n >= 1) Reserve_Many(counts, static_cast<std::size_t>(std::min(n, static_cast<double>(bytes / 2 + 1))));
    }

    // `open`: the file stops behind the last count, which may lack digits.
    void Give(std::vector<float>& counts, bool open) {
        const Group group(file_, own_);
        double start = 0, stop = 0, step = 0, told = 0;
        group.Number("COUNT", told);
        if (open && !counts.empty() && static_cast<double>(counts.size()) != told) counts.pop_back();
        if (counts.empty()) {
            faults_.push_back(Name() + " of this ASC file holds no counts");
            return;
        }
        const bool ends = group.Number("STOP", stop);
        if (group.Number("STEP", step); step == 0 && ends && group.Number("START", start) && counts.size() > 1)
            step = (stop - start) / static_cast<double>(counts.size() - 1);
        if (!group.Number("START", start) || step == 0) {
            faults_.push_back(Name() + " of this ASC file tells no start or no step");
            return;
        }
        Diffraction_Pattern_Type p;
        static_cast<Pattern_Head&>(p) = group.Told();
        const auto n = static_cast<double>(counts.size());
        if (const Status status = Take_Points(p, std::move(counts)); status.failed) {
            faults_.push_back(Name() + ':' + status.message);
            return;
        }
        if (told > n) p.npts_claimed = static_cast<std::int32_t>(std::min(told, most_claimed));
        if (told >= 1 && told < n) notes_.warnings.push_back(Name() + " holds more counts than it tells (*COUNT): all are points");
        Take_Facts(group, p);
        p.bank = static_cast<std::int32_t>(groups_);
        p.xmin = static_cast<float>(start), p.step = static_cast<float>(step);
        Set_Grid_End(p);
        Set_Grid(p);
        p.constant_step = true;
        Set_Lab_Variances(p);
        Set_Y_Limits(p);
        Set_Axis(p, group.Value("SCAN_AXIS"));
        patterns_.push_back(std::move(p));
    }

    void Take_Facts(const Group& group, Diffraction_Pattern_Type& p) {
        if (facts_ < most_facts) last_facts_ = group.Facts(p.count_time);
        p.facts = last_facts_;
        facts_ += p.facts != nullptr ? p.facts->size() : 0;
    }

    static void Set_Axis(Diffraction_Pattern_Type& p, std::string_view name) {
        const std::string words = Readable(name);
        Set_Scan_Axis(p, Upper(words.substr(0, 1)) + (words.empty() ? "" : words.substr(1)));
    }

    std::vector<Diffraction_Pattern_Type>& patterns_;
    Read_Notes& notes_;
    std::vector<std::string> faults_;
    Key_Lines file_, own_;
    std::shared_ptr<const Head_Facts> last_facts_;
    std::size_t groups_ = 0, facts_ = 0;
};

}  // namespace

bool Is_Asc(std::string_view head) {
    Line_Cursor lines(Without_Mark(head));
    std::string_view line;
    int keys = 0;
    bool named_so = false;
    while (keys < looked_at && lines.Next(line)) {
        if (Trim(line).empty()) continue;
        const bool whole = !Is_Last_And_Open(head, line);
        const Key_Line cut = Cut_Line(line);
        if (cut.key.empty() || cut.key == "BEGIN" || !Contains(line, "=")) {
            if (whole && cut.key != "BEGIN") return false;
            break;
        }
        ++keys;
        named_so |= cut.key == "TYPE" || cut.key == "CLASS";
    }
    return named_so && keys > 1;
}

Status Read_Asc(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    patterns.clear();
    if (Status status = Refuse_Wide_Text(bytes); status.failed) return status;
    const std::string_view text = Filled_Part(bytes);
    if (!Trim_Left(text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()))).starts_with('*'))
        return Status::Fail("This is no ASC file: it does not begin with lines such as *TYPE = Raw");
    return Group_Reader(patterns, notes).Read(text);
}

}  // namespace vntl
