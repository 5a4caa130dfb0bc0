// A run (numor) of a neutron instrument: what its file tells, and the counts, frame by frame.
//
// Readers fill a fresh record; whoever keeps runs keeps them by value.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace vntl {

// Widths of the text fields in characters; a reader cuts what is longer.
inline constexpr std::size_t numor_header_width = 32, numor_title_width = 32, numor_instrm_width = 12, numor_scantype_width = 8;

// Numbers of each frame, a frame after the other; both count from 0.
class Frame_Values {
public:
    Frame_Values() = default;
    Frame_Values(std::size_t values, std::size_t frames) : values_(values), frames_(frames), data_(values * frames, 0.0f) {}

    std::size_t values() const { return values_; }  // of a frame
    std::size_t frames() const { return frames_; }
    std::span<float> Frame(std::size_t frame) { return std::span(data_).subspan(frame * values_, values_); }
    std::span<const float> Frame(std::size_t frame) const { return std::span(data_).subspan(frame * values_, values_); }
    std::span<const float> All() const { return data_; }
    std::span<float> All() { return data_; }

    // Drops the frames behind the first ones.
    void Keep(std::size_t frames) {
        if (frames >= frames_) return;
        frames_ = frames;
        data_.resize(values_ * frames);
    }

private:
    std::size_t values_ = 0, frames_ = 0;
    std::vector<float> data_;
};

// Places in a frame of `tmc_ang`: the angles follow, `nbang` of them, in degrees.
enum Frame_Item : std::size_t { frame_time = 0, frame_monitor = 1, frame_total = 2, frame_angle = 3 };

struct Numor_Head {
    int numor = 0;  // number of the run
    int manip = 0;  // scan axis
    int icalc = 0;  // calculation code
    std::string header;
    std::string instrm;
    std::string title;
    std::string scantype;               // "2theta", "q-scan", ...
    std::array<float, 5> angles{};      // of the motors, degrees
    std::array<float, 3> scans{};       // start, step, width (degrees)
    float monitor = 0;                  // counts; see the readers for scans of several frames
    float time = 0;                     // seconds
    float wave = 0;                     // angstroms
    std::array<float, 5> conditions{};  // set, regulation and sample temperature (kelvin), a free value, magnetic field
    int nbdata = 0;                     // counts of a frame
    int nframes = 0;
    int nbang = 0;                // angles of a frame
    std::array<int, 7> icdesc{};  // description of the scan's columns
    Frame_Values tmc_ang;         // nbang + 3 of each frame: time (s), monitor, total of the counts, angles (degrees)
    Frame_Values counts;          // nbdata of each frame
};

struct Powder_Numor_Type : Numor_Head {};

struct SXTAL_Numor_Type : Numor_Head {
    std::array<float, 3> hmin{}, hmax{}, dh{};
    std::array<std::array<float, 3>, 3> ub{};               // rows; without 2 pi
    float phi = 0, chi = 0, omega = 0, gamma = 0, psi = 0;  // degrees
    float coupling = 0;                                     // of the scan
    std::string notice = {};                                // what the reader tells of the file's form
};

}  // namespace vntl
