// Runs with pictures that were read: their headers and frame tables stay in memory, their counts as far as they have room.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "instrument/diffractometer.hpp"
#include "instrument/frame_source.hpp"
#include "instrument/numor_files.hpp"

namespace vntl {

inline constexpr std::size_t most_bytes_of_counts = std::size_t{512} << 20;

class Frame_Store {
public:
    explicit Frame_Store(std::size_t most_bytes = most_bytes_of_counts) : most_bytes_(most_bytes) {}

    // Reads a run and appends it. Fails, and the store stays, for a file that cannot be read, one without frames or pixels, and one whose
    // pixels are not those of the instrument, which tells both numbers. The name of the file stands in the message.
    Status Add(const std::string& file, const Diffractometer_Type& instrument);

    int size() const { return static_cast<int>(runs_.size()); }
    // Runs count from 1, in the order in which they were added; others have no header to refer to. References last until the next Add.
    const SXTAL_Numor_Type& Run(int index) const;
    const std::string& File(int index) const;
    // The name by which a run is read and its counts unfolded: that of the instrument in use where a reader knows it, else the one that the
    // file tells. A run of which no reader knows either is refused.
    const std::string& Machine(int index) const;
    int nx(int index) const;
    int ny(int index) const;
    int Index_Of(int numor) const;  // of the run with that number, 0 none

    // The counts of a frame, read again where they have left the memory; then a file that has gone or has changed is a failure. `counts`
    // stays on failure, as for a run or a frame that is not there.
    Status Frame(int index, int frame, Count_Matrix& counts);
    // A run by itself; it refers to the store.
    std::unique_ptr<Frame_Source> Source(int index);

    std::size_t Bytes_Held() const;  // by counts

private:
    struct Entry {
        std::string file, machine;
        std::size_t mark = 0;  // of the file's bytes
        SXTAL_Numor_Type run;  // without its counts
        int nx = 0, ny = 0;
        Frame_Values counts;          // of the frames from `first` on
        int first = 0;                // 0: none are held
        unsigned long long used = 0;  // when, counted in uses
    };
    const Entry& At(int index) const { return runs_[static_cast<std::size_t>(index) - 1]; }
    Status Append(const std::string& file, const Diffractometer_Type& instrument);
    Status Unfold(Entry& entry, int frame, Count_Matrix& counts);
    Status Read_Again(const Entry& entry, int frame, Frame_Values& read, int& first) const;
    int Frames_In_Room(const Entry& entry) const;
    void Hold(Entry& entry, Frame_Values counts, int first);

    std::size_t most_bytes_;
    unsigned long long uses_ = 0;
    std::vector<Entry> runs_;
};

}  // namespace vntl
