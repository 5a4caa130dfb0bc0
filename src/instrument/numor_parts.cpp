#include "instrument/numor_parts.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>
#include <utility>

#include "base/text.hpp"
#include "base/text_file.hpp"
#include "instrument/data_directories.hpp"

namespace vntl {

namespace {

constexpr std::size_t text_width = 80;  // of the lines of title and kind of scan
constexpr std::size_t name_width = 4;   // of the instrument in front of user and date
constexpr int most_angles = 16;
constexpr std::size_t group_in_counts = 3;  // monitor, time, angle
constexpr float thousandths = 1000;

std::string No_Lines(std::string_view instrument, const std::string& file) {
    return " Problems trying to read the Numor for " + std::string(instrument) + " Instrument in file " + file;
}

std::string Kept(std::string_view text, std::size_t width) { return std::string(Trim(Cut(Trim(text), width))); }

// The first `width` characters of a text, which are cut off it.
std::string_view Take_Front(std::string_view& text, std::size_t width) {
    const std::string_view front = Cut(text, width);
    text.remove_prefix(front.size());
    return front;
}

Status Take_Instrument(const Numor_Blocks& blocks, std::string_view instrument, std::string_view letters, Numor_Head& head) {
    const Numor_Block* const block = blocks.Find('A');
    if (!block) return Status::Fail(Bad_Block('A'));
    std::string text;
    if (Status status = Block_Text(*block, text); status.failed) return status;
    std::string_view rest = text;
    head.instrm = Trim(Take_Front(rest, name_width));
    head.header = Kept(rest, numor_header_width);
    if (Contains(Upper(head.instrm), letters)) return Status::Done();
    return Status::Fail("This numor does not correspond with " + std::string(instrument) + " Format");
}

Status Take_Title(const Numor_Blocks& blocks, Numor_Head& head) {
    const Numor_Block* const block = blocks.Find('A', 2);
    if (!block) return Status::Done();
    std::string text;
    if (Status status = Block_Text(*block, text); status.failed) return status;
    std::string_view rest = text;
    const bool has_scan = Characters(text) >= text_width;
    const std::string_view title = Take_Front(rest, has_scan ? text_width - numor_scantype_width : text_width);
    head.title = Kept(title, numor_title_width);
    if (has_scan) head.scantype = Trim(Take_Front(rest, numor_scantype_width));
    return Status::Done();
}

bool Is_Integers(const Numor_Block& block) { return block.letter == 'I' || block.letter == 'J'; }

std::size_t Told(const Numor_Block& block) { return static_cast<std::size_t>(std::max(block.words[0], 0)); }

std::size_t Size(int told) { return static_cast<std::size_t>(std::max(told, 0)); }

// Whether integers are what is told of the frames whose counts are the next block.
bool Is_Group(const Numor_Block& block, const Numor_Block* next, const Frame_Layout& layout) {
    if (!next || !Is_Integers(*next)) return false;
    const std::size_t told = Told(block), nbdata = Size(layout.nbdata), group = frame_angle + Size(layout.nbang);
    if (told == nbdata) return false;
    if (told == nbdata + group_in_counts && Told(*next) == told) return false;
    return told == group || told == group * Size(layout.nframes) || (told < nbdata && told <= frame_angle + most_angles);
}

// The next block of numbers in front of the next frame's marker.
const Numor_Block* Next_Numbers(const std::vector<const Numor_Block*>& blocks, std::size_t from) {
    for (; from < blocks.size() && blocks[from]->letter != 'V'; ++from)
        if (blocks[from]->letter == 'F' || Is_Integers(*blocks[from])) return blocks[from];
    return nullptr;
}

bool Holds_Groups(const std::vector<Data_Block>& data, const Frame_Layout& layout) {
    if (data.empty()) return false;
    if (std::any_of(data.begin(), data.end(), [](const Data_Block& d) { return d.group != nullptr; })) return false;
    const std::size_t told = Told(*data[0].counts), nframes = Size(layout.nframes), nbdata = Size(layout.nbdata);
    const auto fits = [&](std::size_t frame) { return told == frame || told == nframes * frame; };
    return layout.always_holds_groups ? fits(nbdata + group_in_counts) || !fits(nbdata) : fits(nbdata + group_in_counts) && !fits(nbdata);
}

// Numbers of a block at most; two characters are the least that one takes.
std::size_t Most_Numbers(const Numor_Block& block) { return std::min(Told(block), block.body.size() / 2 + 1); }

class Frame_Reader {
public:
    Frame_Reader(const Frame_Layout& layout, Numor_Head& head)
        : head_(head),
          nbdata_(Size(layout.nbdata)),
          skipped_(layout.holds_groups ? group_in_counts : 0),
          first_(Size(layout.first) - 1),
          last_(Size(layout.last > 0 ? layout.last : layout.nframes)),
          all_(Size(layout.nframes)),
          one_frame_(layout.nframes == 1),
          step_(layout.step) {}

    Frames_Read Read(const std::vector<Data_Block>& data, int nbang) {
        if (nbdata_ == 0 && !one_frame_) return {Frame_Part::counts, 1};
        const std::size_t room = Room(data);
        head_.tmc_ang = Frame_Values(frame_angle + Size(nbang), room);
        head_.counts = Frame_Values(nbdata_, room);
        told_angle_.assign(room, false);
        Frames_Read read;
        const std::size_t all = all_ * Values();
        if (data.size() == 1 && all > 0 && Told(*data[0].counts) > all) return Fault(Frame_Part::counts, all_);
        for (const Data_Block& block : data) {
            if (frame_ >= last_) break;
            if (read = Take(block); !read.ok()) break;
        }
        if (read.ok() && frame_ < last_ && nbdata_ > 0) read = Fault(Frame_Part::counts, frame_);
        Finish();
        return read;
    }

private:
    std::size_t Values() const { return skipped_ + nbdata_; }
    std::size_t Frames_In(std::size_t numbers) const { return Values() == 0 ? 1 : numbers / Values(); }
    static Frames_Read Fault(Frame_Part part, std::size_t frame) { return {part, static_cast<int>(frame) + 1}; }

    // Frames that the file can hold of those wanted.
    std::size_t Room(const std::vector<Data_Block>& data) const {
        if (nbdata_ == 0) return 1;
        std::size_t frames = 0;
        for (const Data_Block& block : data) frames += Frames_In(Most_Numbers(*block.counts));
        return std::min(frames, last_ - first_);
    }

    Frames_Read Take(const Data_Block& block) {
        const std::size_t told = Told(*block.counts), frames = Frames_In(told);
        if (nbdata_ > 0 && told % Values() != 0) return Fault(Frame_Part::counts, frame_);  // what fills no frame would shift others
        if (frames > 0 && frame_ + frames <= first_) {
            frame_ += frames;
            return {};
        }
        const Status status = Block_Integers(*block.counts, numbers_);
        const std::size_t held = std::min(Frames_In(numbers_.size()), last_ - frame_);
        group_.clear();
        if (block.group && Block_Group(*block.group, frames).failed) return Fault(Frame_Part::group, frame_);
        for (std::size_t k = 0; k < held; ++k, ++frame_) {
            if (frame_ < first_) continue;
            Take_Group(k);
            if (!Take_Counts(k)) return Fault(Frame_Part::counts, frame_);
            ++kept_;
        }
        const bool whole = status.ok() && numbers_.size() == told && frames > 0;
        return whole || frame_ >= last_ ? Frames_Read{} : Fault(Frame_Part::counts, frame_);
    }

    // Numbers of the group of one frame, or of those of all frames of the block that follows.
    Status Block_Group(const Numor_Block& block, std::size_t frames) {
        Status status;
        if (Is_Integers(block)) {
            std::vector<int> integers;
            status = Block_Integers(block, integers);
            group_.assign(integers.begin(), integers.end());
        } else {
            std::vector<float> reals;
            status = Block_Reals(block, reals);
            group_.assign(reals.begin(), reals.end());
        }
        if (status.ok() && group_.size() < std::max<std::size_t>(Told(block), frame_total)) status = Status::Fail(Bad_Block(block.letter));
        const std::size_t values = frame_angle + Angles();
        group_size_ = frames > 1 && group_.size() == frames * values ? values : group_.size();
        return status;
    }

    std::size_t Angles() const { return head_.tmc_ang.values() - frame_angle; }

    void Take_Group(std::size_t k) {
        const std::span<float> told = head_.tmc_ang.Frame(kept_);
        if (skipped_ > 0) {
            const int* const group = numbers_.data() + k * Values();
            told[frame_monitor] = static_cast<float>(group[0]);
            told[frame_time] = static_cast<float>(group[1] / static_cast<double>(thousandths));
            told[frame_angle] = static_cast<float>(group[2] / static_cast<double>(thousandths));
            told_angle_[kept_] = true;
        } else if ((k + 1) * group_size_ <= group_.size()) {
            const double* const group = group_.data() + k * group_size_;
            const std::size_t missing = Lacks_Total(group, k) ? 1 : 0, given = std::min(group_size_, told.size() - missing);
            for (std::size_t i = 0; i < given; ++i) {
                const std::size_t place = i < frame_total ? i : i + missing;
                told[place] = static_cast<float>(place == frame_monitor || place == frame_total ? group[i] : group[i] / thousandths);
            }
            told_angle_[kept_] = given + missing > frame_angle;
        }
        if (group_size_ == group_.size()) {  // it was told of one frame
            group_.clear();
            group_size_ = 0;
        }
    }

    const int* Counts(std::size_t k) const { return numbers_.data() + k * Values() + skipped_; }

    // A group that is short of one value has no total, unless what stands in its place is none, is about the sum of the counts, or would
    // turn a motor more than once round.
    bool Lacks_Total(const double* group, std::size_t k) const {
        constexpr double turn = 360 * static_cast<double>(thousandths), tolerance = 0.1;
        if (group_size_ != frame_total + Angles()) return false;
        const int* const counts = Counts(k);
        const double third = group[frame_total], sum = std::accumulate(counts, counts + nbdata_, 0.0);
        return third != 0 && std::fabs(third) <= turn && std::fabs(third - sum) > tolerance * sum;
    }

    bool Take_Counts(std::size_t k) {
        const int* const counts = Counts(k);
        const std::span<float> kept = head_.counts.Frame(kept_);
        long long total = 0;
        int least = 0;
        for (std::size_t i = 0; i < nbdata_; ++i) {
            least = std::min(least, counts[i]);
            total += counts[i];
            kept[i] = static_cast<float>(counts[i]);
        }
        float& told = head_.tmc_ang.Frame(kept_)[frame_total];
        if (told == 0) told = static_cast<float>(total);
        return least >= 0;
    }

    void Finish() {
        if (nbdata_ == 0) kept_ = 1;
        head_.tmc_ang.Keep(kept_);
        head_.counts.Keep(kept_);
        head_.nframes = static_cast<int>(kept_);
        if (kept_ > 0 && first_ == 0 && told_angle_[0]) head_.scans[0] = head_.tmc_ang.Frame(0)[frame_angle];
        for (std::size_t i = 0; i < kept_; ++i)
            if (!told_angle_[i]) head_.tmc_ang.Frame(i)[frame_angle] = head_.scans[0] + static_cast<float>(first_ + i) * step_;
    }

    Numor_Head& head_;
    const std::size_t nbdata_, skipped_;
    const std::size_t first_, last_;  // frames wanted: [first, last)
    const std::size_t all_;           // frames of the file
    const bool one_frame_;
    const float step_;
    std::size_t frame_ = 0, kept_ = 0;
    std::vector<int> numbers_;
    std::vector<double> group_;
    std::size_t group_size_ = 0;  // values of a frame in it
    std::vector<bool> told_angle_;
};

}  // namespace

Status Open_Numor(const std::string& file, std::string_view instrument, std::string& text) {
    if (Trim_Right(file).ends_with(".Z"))
        return Status::Fail(" Numor file is compressed. Please uncompress the numor before to use the program ");
    return Read_Run_Bytes(file, text).ok() ? Status::Done() : Status::Fail_File(No_Lines(instrument, file));
}

Status Read_Numor_Texts(std::string_view text, const std::string& file, std::string_view instrument, std::string_view letters,
                        Numor_Source& source, Numor_Head& head) {
    if (Status status = Find_Blocks(text, source.blocks); status.failed) return status;
    if (source.blocks.blocks.empty()) return Status::Fail(No_Lines(instrument, file));
    const Numor_Block* const run = source.blocks.Find('R');
    if (!run) return Status::Fail(Bad_Block('R'));
    head.numor = run->words[0];
    if (Status status = Take_Instrument(source.blocks, instrument, letters, head); status.failed) return status;
    return Take_Title(source.blocks, head);
}

Status Frames_Problem(const Frames_Read& read, const std::string& where) {
    if (read.ok()) return Status::Done();
    const std::string what = read.fault == Frame_Part::group ? "Time, Monitor, Counts, Angles parameters" : "Counts";
    return Status::Fail(" Problem reading " + what + " in " + where);
}

std::string Where_In_Frame(const Frames_Read& read) { return "Frame: " + std::to_string(read.frame); }

Status Read_Header_Reals(Numor_Source& source) {
    source.real_block = source.blocks.Find('F');
    return source.real_block ? Block_Reals(*source.real_block, source.reals) : Status::Fail(Bad_Block('F'));
}

Status Read_Header_Integers(Numor_Source& source, const Numor_Block* block) {
    source.integer_block = block;
    return block ? Block_Integers(*block, source.integers) : Status::Fail(Bad_Block('I'));
}

void Take_Common_Reals(const Numor_Source& source, Numor_Head& head) {
    for (std::size_t i = 0; i < head.angles.size(); ++i) head.angles[i] = source.F(4 + i);
    head.wave = source.F(18);
    for (std::size_t i = 0; i < head.scans.size(); ++i) head.scans[i] = source.F(36 + i);
    for (std::size_t i = 0; i < head.conditions.size(); ++i) head.conditions[i] = source.F(46 + i);
}

int Angles_Of_Frame(int told) { return std::clamp(told, 1, most_angles); }

// Of a detector with as many cells as a group has values: every other block is a group.
bool Alternate(const std::vector<const Numor_Block*>& blocks, const Frame_Layout& layout) {
    if (layout.nbdata != static_cast<int>(frame_angle) + layout.nbang) return false;
    std::size_t alike = 0;
    for (const Numor_Block* block : blocks) {
        if (block->letter == 'F') return false;
        alike += Is_Integers(*block) && Told(*block) == Size(layout.nbdata);
    }
    return alike == 2 * Size(layout.nframes);
}

std::vector<Data_Block> Find_Data_Blocks(const Numor_Source& source, Frame_Layout& layout) {
    std::vector<const Numor_Block*> behind;
    for (const Numor_Block& block : source.blocks.blocks)
        if (&block != source.integer_block && &block != source.real_block) behind.push_back(&block);
    const bool alternate = Alternate(behind, layout);
    std::vector<Data_Block> data;
    const Numor_Block* group = nullptr;
    for (std::size_t i = 0; i < behind.size(); ++i) {
        const Numor_Block& block = *behind[i];
        if (block.letter == 'V') group = nullptr;
        const bool of_integers =
            Is_Integers(block) && (alternate ? group == nullptr : Is_Group(block, Next_Numbers(behind, i + 1), layout));
        if (block.letter == 'F' || of_integers)
            group = &block;
        else if (Is_Integers(block))
            data.push_back({std::exchange(group, nullptr), &block});
    }
    layout.holds_groups = Holds_Groups(data, layout);
    return data;
}

Frames_Read Read_Frames(const std::vector<Data_Block>& data, const Frame_Layout& layout, Numor_Head& head) {
    if (layout.nbdata < 0 || layout.nframes < 1) return {Frame_Part::counts, 1};
    return Frame_Reader(layout, head).Read(data, layout.nbang);
}

void Take_Time_And_Monitor(Numor_Head& head) {
    double time = 0, monitor = 0;
    for (std::size_t i = 0; i < head.tmc_ang.frames(); ++i) {
        time += static_cast<double>(head.tmc_ang.Frame(i)[frame_time]);
        monitor += static_cast<double>(head.tmc_ang.Frame(i)[frame_monitor]);
    }
    head.time = static_cast<float>(time);
    head.monitor = static_cast<float>(monitor / static_cast<double>(std::max<std::size_t>(head.tmc_ang.frames(), 1)));
}

}  // namespace vntl
