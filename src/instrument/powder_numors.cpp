#include <algorithm>
#include <numeric>

#include "base/text.hpp"
#include "instrument/numor_parts.hpp"
#include "instrument/read_numor.hpp"

namespace vntl {

namespace {

constexpr int r8_banks = 9, r8_cells = 64;
constexpr float r8_bank_step = 15;                              // degrees
constexpr int header_integers = 24, most_header_integers = 63;  // of a header's I block that tells nbdata
constexpr float r3b_width = 80, r22_width = 160;                // degrees

Status Told_Of_Numor(const Frames_Read& read, const Numor_Head& head) {
    return Frames_Problem(read, "Numor: " + std::to_string(head.numor));
}

float Step_Of_Cells(float width, int cells) { return cells > 0 ? width / static_cast<float>(cells) : 0.0f; }

// Integers and reals of the header; the words that all instruments with an I block share.
Status Read_Full_Header(Numor_Source& source, Numor_Head& head, Frame_Layout& layout) {
    if (Status status = Read_Header_Integers(source, source.blocks.Find('I')); status.failed) return status;
    head.manip = source.I(4);
    head.nbang = layout.nbang = Angles_Of_Frame(source.I(5));
    head.nframes = layout.nframes = source.I(7);
    head.nbdata = layout.nbdata = source.I(24);
    if (Status status = Read_Header_Reals(source); status.failed) return status;
    Take_Common_Reals(source, head);
    layout.step = head.scans[1];
    return Status::Done();
}

Status Read_R3A(Numor_Source& source, Powder_Numor_Type& numor) {
    Frame_Layout layout;
    if (Status status = Read_Full_Header(source, numor, layout); status.failed) return status;
    layout.always_holds_groups = true;
    const std::vector<Data_Block> data = Find_Data_Blocks(source, layout);
    if (!Read_Frames(data, layout, numor).ok()) return Status::Fail("Counts problems in Numor format for R3A Instrument");
    Take_Time_And_Monitor(numor);
    return Status::Done();
}

Status Read_R3B(Numor_Source& source, Powder_Numor_Type& numor) {
    Frame_Layout layout;
    if (Status status = Read_Full_Header(source, numor, layout); status.failed) return status;
    numor.nframes = layout.nframes = 1;
    numor.icalc = source.I(9);
    for (std::size_t i = 0; i < numor.icdesc.size(); ++i) numor.icdesc[i] = source.I(25 + i);
    if (numor.scans[1] == 0) numor.scans[1] = Step_Of_Cells(r3b_width, numor.nbdata);
    const Frames_Read read = Read_Frames(Find_Data_Blocks(source, layout), layout, numor);
    Take_Time_And_Monitor(numor);
    return Told_Of_Numor(read, numor);
}

Status Read_R5B(Numor_Source& source, Powder_Numor_Type& numor) {
    Frame_Layout layout;
    if (Status status = Read_Full_Header(source, numor, layout); status.failed) return status;
    numor.icalc = source.I(9);
    const Frames_Read read = Read_Frames(Find_Data_Blocks(source, layout), layout, numor);
    Take_Time_And_Monitor(numor);
    return Frames_Problem(read, Where_In_Frame(read));
}

// R8 and R22 may do without an I block in the header: their first one then holds a group or counts, and stands behind the first F block.
const Numor_Block* Optional_Integers(const Numor_Source& source) {
    const Numor_Block* const first = source.blocks.Find('I');
    const bool counts_follow = source.blocks.Find('I', 2) || source.blocks.Find('J');
    if (!first || !counts_follow || first->words[0] > most_header_integers) return nullptr;
    const bool in_front = source.real_block && first->line < source.real_block->line;
    return in_front || first->words[0] >= header_integers ? first : nullptr;
}

Status Read_Optional_Header(Numor_Source& source) {
    if (Status status = Read_Header_Reals(source); status.failed) return status;
    const Numor_Block* const integers = Optional_Integers(source);
    return integers ? Read_Header_Integers(source, integers) : Status::Done();
}

// The second F block of an R8 run, told of the sample, and no group of time, monitor and total: those stand behind an S block, or in
// front of each bank.
const Numor_Block* R8_Conditions(const Numor_Source& source, const std::vector<Data_Block>& data) {
    const Numor_Block* const second = source.blocks.Find('F', 2);
    const bool is_group = std::any_of(data.begin(), data.end(), [second](const Data_Block& block) { return block.group == second; });
    if (!second || !is_group) return second;
    if (data.size() > 1 && data[1].group) return nullptr;
    for (const Numor_Block& block : source.blocks.blocks)
        if (block.letter == 'S' && block.line > source.real_block->line && block.line < second->line) return nullptr;
    return second;
}

double Sum(std::span<const float> counts) { return std::accumulate(counts.begin(), counts.end(), 0.0); }

Status Take_R8_Conditions(const Numor_Block& block, Numor_Head& head) {
    std::vector<float> values;
    if (Status status = Block_Reals(block, values); status.failed) return status;
    std::copy_n(values.begin(), std::min<std::size_t>(values.size(), 3), head.conditions.begin());
    return Status::Done();
}

// Whether the third value, of a group the total, is what was counted in the first frame or in all.
bool Tells_Total(const Numor_Block& block, const Frame_Values& counts) {
    std::vector<float> values;
    if (Block_Reals(block, values).failed || values.size() <= frame_total || counts.frames() == 0) return false;
    const auto total = [](double sum) { return static_cast<float>(sum); };
    return values[frame_total] > 0 &&
           (values[frame_total] == total(Sum(counts.Frame(0))) || values[frame_total] == total(Sum(counts.All())));
}

Status Told_Of_Detector(const Frames_Read& read, const Numor_Head& head) {
    if (read.fault != Frame_Part::counts) return Told_Of_Numor(read, head);
    return Status::Fail(" Problem reading Counts for Detector " + std::to_string(read.frame) + " for R8 Instrument");
}

// The numors of one frame, or of banks that count together, tell monitor and time in the header, or in a group.
void Share_Time_And_Monitor(Numor_Head& head) {
    if (head.tmc_ang.frames() == 0) return;
    const std::span<float> first = head.tmc_ang.Frame(0);
    if (head.monitor == 0) head.monitor = first[frame_monitor];
    if (head.time == 0) head.time = first[frame_time];
    if (first[frame_monitor] == 0) first[frame_monitor] = head.monitor;
    if (first[frame_time] == 0) first[frame_time] = head.time;
}

Status Read_R8(Numor_Source& source, Powder_Numor_Type& numor) {
    if (Status status = Read_Optional_Header(source); status.failed) return status;
    Frame_Layout layout{.nframes = r8_banks, .nbdata = r8_cells, .step = r8_bank_step};
    numor.nframes = r8_banks;
    numor.nbdata = r8_cells;
    numor.nbang = layout.nbang;
    numor.monitor = source.F(1);
    numor.scans[0] = source.F(12);
    std::vector<Data_Block> data = Find_Data_Blocks(source, layout);
    const Numor_Block* conditions = R8_Conditions(source, data);
    const Numor_Block* group = data.empty() ? nullptr : data[0].group;
    if (conditions && conditions == group) data[0].group = nullptr;
    Frames_Read read = Read_Frames(data, layout, numor);
    if (conditions && conditions == group && Tells_Total(*conditions, numor.counts)) {
        conditions = nullptr;
        data[0].group = group;
        read = Read_Frames(data, layout, numor);
    }
    numor.scans[0] = source.F(12);
    Share_Time_And_Monitor(numor);
    if (!read.ok()) return Told_Of_Detector(read, numor);
    return conditions ? Take_R8_Conditions(*conditions, numor) : Status::Done();
}

// Counts of the last block of integers.
int Last_Counts(const Numor_Source& source) {
    int counts = 0;
    for (const Numor_Block& block : source.blocks.blocks)
        if (&block != source.integer_block && (block.letter == 'I' || block.letter == 'J')) counts = block.words[0];
    return counts;
}

Status Read_R22(Numor_Source& source, Powder_Numor_Type& numor) {
    if (Status status = Read_Optional_Header(source); status.failed) return status;
    Frame_Layout layout{.nbdata = source.I(header_integers) > 0 ? source.I(header_integers) : Last_Counts(source)};
    numor.nframes = 1;
    numor.nbang = layout.nbang;
    numor.nbdata = layout.nbdata;
    numor.wave = source.F(1);
    for (std::size_t i = 0; i < 3; ++i) {
        numor.conditions[i] = source.F(2 + i);
        numor.scans[i] = source.F(36 + i);
    }
    numor.scans[1] = Step_Of_Cells(r22_width, numor.nbdata);
    numor.monitor = source.F(51);
    numor.time = source.F(52);
    const Frames_Read read = Read_Frames(Find_Data_Blocks(source, layout), layout, numor);
    Share_Time_And_Monitor(numor);
    return Told_Of_Numor(read, numor);
}

struct Powder_Reader {
    std::string_view instrument;
    Status (*read)(Numor_Source&, Powder_Numor_Type&);
};
constexpr Powder_Reader powder_readers[] = {{"R3A", Read_R3A}, {"R3B", Read_R3B}, {"R5B", Read_R5B}, {"R8", Read_R8}, {"R22", Read_R22}};

const Powder_Reader* Find_Reader(std::string_view name) {
    for (const Powder_Reader& reader : powder_readers)
        if (reader.instrument == name) return &reader;
    return nullptr;
}

Status No_Reader(const std::string& name) { return Status::Fail(" Not Implemented for the Powder Instrument name: " + name); }

}  // namespace

bool Is_Powder_Numor_Instrument(std::string_view instrument) { return Find_Reader(Upper(Trim(instrument))) != nullptr; }

Status Read_Numor_Text(std::string_view text, const std::string& file, std::string_view instrument, Powder_Numor_Type& numor) {
    numor = {};
    const std::string name = Upper(Trim(instrument));
    const Powder_Reader* const reader = Find_Reader(name);
    if (!reader) return No_Reader(name);
    Numor_Source source;
    if (Status status = Read_Numor_Texts(text, file, name, name, source, numor); status.failed) return status;
    return reader->read(source, numor);
}

Status Read_Numor(const std::string& file, std::string_view instrument, Powder_Numor_Type& numor) {
    numor = {};
    const std::string name = Upper(Trim(instrument));
    if (!Find_Reader(name)) return No_Reader(name);
    std::string text;
    if (Status status = Open_Numor(file, name, text); status.failed) return status;
    return Read_Numor_Text(text, file, name, numor);
}

}  // namespace vntl
