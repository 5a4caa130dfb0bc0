// What the readers of powder and of single-crystal runs share: the texts and numbers of the header, and the frames behind it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "instrument/numor.hpp"
#include "instrument/numor_blocks.hpp"

namespace vntl {

// The text of a run; `instrument` is the name of the reader. A name that ends in ".Z" is refused; what is packed under another one is
// unpacked.
Status Open_Numor(const std::string& file, std::string_view instrument, std::string& text);

// Words count from 1; those that the file does not hold are 0.
struct Numor_Source {
    Numor_Blocks blocks;
    const Numor_Block* integer_block = nullptr;  // of the header
    const Numor_Block* real_block = nullptr;
    std::vector<int> integers;
    std::vector<float> reals;

    int I(std::size_t word) const { return word <= integers.size() ? integers[word - 1] : 0; }
    float F(std::size_t word) const { return word <= reals.size() ? reals[word - 1] : 0.0f; }
};

// Finds the blocks and reads number, instrument, header and title. The file's instrument must hold `letters`.
Status Read_Numor_Texts(std::string_view text, const std::string& file, std::string_view instrument, std::string_view letters,
                        Numor_Source& source, Numor_Head& head);

// " Not Implemented for the SXTAL Instrument name: "
Status No_SXTAL_Reader(const std::string& name);

// The numbers of the header's F block, the first, and of its I block.
Status Read_Header_Reals(Numor_Source& source);
Status Read_Header_Integers(Numor_Source& source, const Numor_Block* block);

// Scan, motors and conditions where most instruments have them: F 4 to 8, 18, 36 to 38 and 46 to 50.
void Take_Common_Reals(const Numor_Source& source, Numor_Head& head);

// Counts of one frame or more, and the group of time, monitor, total and angles that precedes them.
struct Data_Block {
    const Numor_Block* group = nullptr;
    const Numor_Block* counts = nullptr;
};

struct Frame_Layout {
    int nframes = 1, nbdata = 0, nbang = 1;
    bool always_holds_groups = false;  // where no group has a block of its own
    bool holds_groups = false;         // blocks of counts begin each frame with monitor, time and angle
    int first = 1, last = 0;           // frames to keep; 0: up to nframes
    float step = 0;                    // of the angles of frames of which no group tells
};

// Angles of a frame that a record has room for; every frame has one.
int Angles_Of_Frame(int told);

std::vector<Data_Block> Find_Data_Blocks(const Numor_Source& source, Frame_Layout& layout);

enum class Frame_Part { all, group, counts };
struct Frames_Read {
    Frame_Part fault = Frame_Part::all;  // what could not be read
    int frame = 0;                       // of which frame, from 1
    bool ok() const { return fault == Frame_Part::all; }
};

// " Problem reading Counts in Frame: 3", by what could not be read and `where`.
Status Frames_Problem(const Frames_Read& read, const std::string& where);
std::string Where_In_Frame(const Frames_Read& read);

// Fills tmc_ang, counts and nframes with the frames that could be read, which reserve no more than the file holds. A frame that no group
// tells of has the angle that `layout.step` leads to. The scan starts at the first frame's angle.
Frames_Read Read_Frames(const std::vector<Data_Block>& data, const Frame_Layout& layout, Numor_Head& head);

// Times add up over the frames, monitors are averaged.
void Take_Time_And_Monitor(Numor_Head& head);

}  // namespace vntl
