#include "instrument/reciprocal_volume.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <numeric>
#include <utility>

#include "base/huge_pages.hpp"
#include "instrument/conversion_tools.hpp"
#include "instrument/frame_store.hpp"

namespace vntl {

namespace {

constexpr float hole = 0.001f;       // a cell inside with less takes the mean of its neighbours
constexpr double no_change = 1e-12;  // of an index, as a share of what its axis can reach: rounding alone
constexpr std::size_t block = 1024;  // pixels that are taken at once
constexpr std::size_t most_cells = most_bytes_of_counts / sizeof(float);
constexpr const char* no_memory = "There is not enough memory for the volume of reciprocal space.";
constexpr auto most_pixels = static_cast<double>(std::numeric_limits<std::uint32_t>::max());  // that a cell can count

std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", value);
    return text;
}

bool Is_Finite(const Vector3d& v) { return std::isfinite(v[0]) && std::isfinite(v[1]) && std::isfinite(v[2]); }
bool Is_Finite(const Matrix3d& m) { return Is_Finite(m[0]) && Is_Finite(m[1]) && Is_Finite(m[2]); }

// The arm at gamma: what is at zero turns from the beam (y) towards x.
Matrix3d Turned_Arm(double gamma) {
    const double c = std::cos(gamma * degree), s = std::sin(gamma * degree);
    return {{{c, s, 0}, {-s, c, 0}, {0, 0, 1}}};
}

// From a direction to the number of its cell along an axis, before it is rounded to a whole one: dot(turn, direction) + shift.
struct Cell_Of_Direction {
    Vector3d turn{};
    double shift = 0;
};
using Cells_Of_Directions = std::array<Cell_Of_Direction, 3>;

// Unit vectors to the pixels, row by row, of an arm at zero.
struct Directions {
    std::vector<double> x, y, z;

    std::size_t size() const { return x.size(); }
};

// The sum of the counts in a cell and the number of its pixels, in 12 bytes; all bits 0: none.
class Cell {
public:
    std::int64_t Sum() const {
        std::int64_t sum = 0;
        std::memcpy(&sum, sum_, sizeof sum);
        return sum;
    }
    std::uint32_t Pixels() const { return pixels_; }
    void Add(int count) {
        const std::int64_t sum = Sum() + count;
        std::memcpy(sum_, &sum, sizeof sum);
        ++pixels_;
    }

private:
    std::uint32_t sum_[2];
    std::uint32_t pixels_;
};

// The cells of a volume, with a layer about it that takes all that falls outside. Pages in which nothing is counted take no memory.
class Padded_Cells {
public:
    void Make(int nh, int nk, int nl) {
        row_ = static_cast<std::size_t>(nh) + 2;
        layer_ = row_ * (static_cast<std::size_t>(nk) + 2);
        const std::size_t cells = layer_ * (static_cast<std::size_t>(nl) + 2);
        cells_.reset(static_cast<Cell*>(std::calloc(cells, sizeof(Cell))));
        if (!cells_) throw std::bad_alloc();
        Ask_For_Huge_Pages(cells_.get(), cells * sizeof(Cell));
    }
    Cell* All() { return cells_.get(); }
    const Cell* Row(std::size_t k, std::size_t l) const { return cells_.get() + l * layer_ + k * row_; }  // from 1, as h in it
    double row() const { return static_cast<double>(row_); }
    double layer() const { return static_cast<double>(layer_); }

private:
    struct Free {
        void operator()(Cell* cells) const { std::free(cells); }
    };
    std::size_t row_ = 0, layer_ = 0;  // cells of each
    std::unique_ptr<Cell[], Free> cells_;
};

// A frame, and where each of its pixels falls in the list of cells.
struct Placed_Frame {
    Count_Matrix counts;
    std::vector<std::int32_t> places;
    Status status;
};

// Of cells inside of the volume.
struct Totals {
    long long pixels = 0, counts = 0, filled = 0;
};

class Volume_Builder {
public:
    Volume_Builder(Frame_Source& frames, const Pixel_Geometry& geometry, const Matrix3d& ub_inverse)
        : frames_(frames),
          run_(frames.Run()),
          geometry_(geometry),
          ub_inverse_(ub_inverse),
          nx_(frames.nx()),
          ny_(frames.ny()),
          nframes_(run_.nframes),
          pixels_(static_cast<double>(nx_) * ny_ * nframes_) {}

    Status Build(const std::function<bool(int)>& go_on) {
        if (Status status = Check(); status.failed) return status;
        if (Status status = Find_Extremes(); status.failed) return status;
        if (Status status = Find_Steps(); status.failed) return status;
        if (Status status = Divide(); status.failed) return status;
        Find_Directions();
        cells_.Make(made_.h.count, made_.k.count, made_.l.count);
        if (Status status = Add_Frames(go_on); status.failed) return status;
        Take_Cells();
        return Status::Done();
    }

    Reciprocal_Volume Take() { return std::move(made_); }

private:
    std::array<Volume_Axis*, 3> Axes() { return {&made_.h, &made_.k, &made_.l}; }

    Status Check() const;
    Status Indices(int px, int py, int frame, Vector3d& indices) const;
    Status Find_Extremes();
    Status Find_Steps();
    Status Divide();
    void Find_Directions();
    Status Find_Cells_Of_Directions(int frame, Cells_Of_Directions& of);
    Status Add_Frames(const std::function<bool(int)>& go_on);
    void Prepare(int frame, Placed_Frame& placed);
    Status Place_Frame(int frame, Placed_Frame& placed);
    void Find_Cells_Of_Pixels(const Cells_Of_Directions& of, std::int32_t* places) const;
    void Add(const Placed_Frame& placed);
    void Take_Cells();
    Totals Take_Layers(std::size_t first, std::size_t end);
    void Means_Of_Layer(std::size_t l, std::vector<float>& means, Totals* totals) const;
    long long Fill_Row(const float* below, const float* here, const float* above, float* row) const;

    Frame_Source& frames_;
    const SXTAL_Numor_Type& run_;
    const Pixel_Geometry& geometry_;
    const Matrix3d& ub_inverse_;
    const int nx_, ny_, nframes_;
    const double pixels_;  // of all frames

    std::array<bool, 3> changes_{};    // an index, by more than rounding
    std::array<bool, 3> one_layer_{};  // of an axis without divisions, in which all pixels are
    Reciprocal_Volume made_;
    Directions to_;
    Padded_Cells cells_;
    std::array<Placed_Frame, 2> placed_;  // the frame that is counted in, and the next one
    long long all_counts_ = 0;
};

Status Volume_Builder::Check() const {
    if (nx_ < 1 || ny_ < 1) return Status::Fail("The frames of the run have no pixels.");
    if (nframes_ < 1) return Status::Fail("The run has no frames.");
    if (nx_ != geometry_.nx() || ny_ != geometry_.ny())
        return Status::Fail("The frames of the run have " + By(nx_, ny_) + " pixels, and the detector of the instrument has " +
                            By(geometry_.nx(), geometry_.ny()) + '.');
    if (pixels_ > most_pixels) return Status::Fail("The run has too many pixels for a volume: " + Number(pixels_));
    if (!Is_Finite(ub_inverse_)) return Status::Fail("The inverse of the UB matrix holds what is not a number.");
    const auto wave = static_cast<double>(run_.wave);
    if (!(wave > 0) || !std::isfinite(wave)) return Status::Fail("The wavelength of the run must be positive: it is " + Number(wave));
    return Status::Done();
}

Status Volume_Builder::Indices(int px, int py, int frame, Vector3d& indices) const {
    Vector3d z1{};
    if (Status status = Get_z1_from_pixel(px, py, frame, run_, geometry_, z1); status.failed) return status;
    indices = ub_inverse_ * z1;
    if (Is_Finite(indices)) return Status::Done();
    return Status::Fail("The indices of a pixel of frame " + std::to_string(frame) + " are no numbers.");
}

Status Volume_Builder::Find_Extremes() {
    for (int corner = 0; corner < 8; ++corner) {
        Vector3d at{};
        const int px = corner & 1 ? nx_ : 1, py = corner & 2 ? ny_ : 1, frame = corner & 4 ? nframes_ : 1;
        if (Status status = Indices(px, py, frame, at); status.failed) return status;
        for (std::size_t i = 0; i < 3; ++i) {
            Volume_Axis& axis = *Axes()[i];
            axis.min = corner == 0 ? at[i] : std::min(axis.min, at[i]);
            axis.max = corner == 0 ? at[i] : std::max(axis.max, at[i]);
        }
    }
    return Status::Done();
}

Status Volume_Builder::Find_Steps() {
    const int px = std::max(nx_ / 2, 1), py = std::max(ny_ / 2, 1), frame = std::max(nframes_ / 2, 1);
    Vector3d centre{};
    if (Status status = Indices(px, py, frame, centre); status.failed) return status;
    const auto step_to = [&](int x, int y, int next) {
        Vector3d neighbour{};
        const Status status = Indices(x, y, next, neighbour);
        for (std::size_t i = 0; i < 3; ++i) Axes()[i]->step = std::max(Axes()[i]->step, std::fabs(neighbour[i] - centre[i]));
        return status;
    };
    if (Status status = step_to(px + 1, py, frame); status.failed) return status;
    if (Status status = step_to(px, py + 1, frame); status.failed) return status;
    if (nframes_ > 1)
        if (Status status = step_to(px, py, frame + 1); status.failed) return status;
    for (std::size_t i = 0; i < 3; ++i) {
        const Vector3d& row = ub_inverse_[i];
        const double rounding = no_change * (std::fabs(row[0]) + std::fabs(row[1]) + std::fabs(row[2])) / static_cast<double>(run_.wave);
        const double range = Axes()[i]->max - Axes()[i]->min, step = Axes()[i]->step;
        if (!std::isfinite(range + step + rounding)) return Status::Fail("The range of the indices is no number.");
        changes_[i] = range > rounding && step > rounding;
    }
    return Status::Done();
}

Status Volume_Builder::Divide() {
    constexpr double most_told = std::numeric_limits<int>::max();
    const auto cells_of = [this](std::array<double, 3>& divisions) {
        for (std::size_t i = 0; i < 3; ++i) {
            const Volume_Axis& axis = *Axes()[i];
            divisions[i] = changes_[i] ? std::round((axis.max - axis.min) / axis.step) : 0;
            one_layer_[i] = divisions[i] < 1;
            divisions[i] = std::max(divisions[i], 1.0);
        }
        return divisions[0] * divisions[1] * divisions[2];
    };
    std::array<double, 3> divisions{};
    const double stretch = std::cbrt(cells_of(divisions) / pixels_);
    for (std::size_t i = 0; i < 3; ++i) {
        Axes()[i]->first_count = static_cast<int>(std::min(divisions[i], most_told));
        Axes()[i]->step *= stretch;
    }
    const double cells = cells_of(divisions);
    if (!(cells <= most_cells_a_pixel * pixels_))
        return Status::Fail("The volume would have " + Number(cells) + " cells, more than " + std::to_string(most_cells_a_pixel) +
                            " for each of the " + Number(pixels_) + " pixels that were measured.");
    if (cells > static_cast<double>(most_cells))
        return Status::Fail("The volume would have " + Number(cells) + " cells, and there is room for " + std::to_string(most_cells) + '.');
    for (std::size_t i = 0; i < 3; ++i) {
        Volume_Axis& axis = *Axes()[i];
        axis.count = static_cast<int>(divisions[i]);
        if (one_layer_[i]) axis.step = (axis.max - axis.min) / 2;  // its cell lies about the middle
    }
    return Status::Done();
}

void Volume_Builder::Find_Directions() {
    const std::size_t n = static_cast<std::size_t>(nx_) * static_cast<std::size_t>(ny_);
    for (std::vector<double>* const part : {&to_.x, &to_.y, &to_.z}) Reserve_Many(*part, n);
    for (int py = 1; py <= ny_; ++py)
        for (int px = 1; px <= nx_; ++px) {
            const Vector3d to = geometry_.Direction(px, py, 0);
            to_.x.push_back(to[0]);
            to_.y.push_back(to[1]);
            to_.z.push_back(to[2]);
        }
}

// h = M d - M y / wavelength with M = UB^-1 times the turns of crystal and arm; the cell is (h - min) / step, rounded.
Status Volume_Builder::Find_Cells_Of_Directions(int frame, Cells_Of_Directions& of) {
    Frame_Setting setting;
    if (Status status = Setting_Of_Frame(run_, frame, setting); status.failed) return status;
    const Matrix3d crystal = ub_inverse_ * To_Crystal(setting), all = crystal * Turned_Arm(setting.gamma);
    const auto wave = static_cast<double>(run_.wave);
    for (std::size_t i = 0; i < 3; ++i) {
        const Volume_Axis& axis = *Axes()[i];
        of[i] = {{0, 0, 0}, 1};
        if (one_layer_[i]) continue;
        for (std::size_t k = 0; k < 3; ++k) of[i].turn[k] = all[i][k] / wave / axis.step;
        of[i].shift = (-crystal[i][1] / wave - axis.min) / axis.step;
        if (!Is_Finite(of[i].turn) || !std::isfinite(of[i].shift))
            return Status::Fail("The angles of frame " + std::to_string(frame) + " are no numbers.");
    }
    return Status::Done();
}

// Numbers of cells are kept within the layer about the volume; adding and subtracting `whole` rounds them.
void Volume_Builder::Find_Cells_Of_Pixels(const Cells_Of_Directions& of, std::int32_t* places) const {
    const auto number = [](const Cell_Of_Direction& along, double outside, double x, double y, double z) {
        constexpr double whole = 6755399441055744;  // 1.5 * 2^52
        const double at = along.turn[0] * x + along.turn[1] * y + along.turn[2] * z + along.shift;
        const double above = at > 0 ? at : 0;
        return ((above < outside ? above : outside) + whole) - whole;
    };
    const Cells_Of_Directions along = of;
    const double h_end = made_.h.count + 1, k_end = made_.k.count + 1, l_end = made_.l.count + 1;
    const double a_row = cells_.row(), a_layer = cells_.layer();
    const std::size_t n = to_.size();
    for (std::size_t i = 0; i < n; ++i) {
        const double x = to_.x[i], y = to_.y[i], z = to_.z[i];
        places[i] = static_cast<std::int32_t>(number(along[2], l_end, x, y, z) * a_layer + number(along[1], k_end, x, y, z) * a_row +
                                              number(along[0], h_end, x, y, z));
    }
}

Status Volume_Builder::Place_Frame(int frame, Placed_Frame& placed) {
    Cells_Of_Directions of;
    if (Status status = Find_Cells_Of_Directions(frame, of); status.failed) return status;
    if (Status status = frames_.Frame(frame, placed.counts); status.failed) return status;
    const Count_Matrix& counts = placed.counts;
    if (counts.columns != nx_ || counts.rows != ny_ || counts.counts.size() != to_.size())
        return Status::Fail("Frame " + std::to_string(frame) + " has " + By(counts.columns, counts.rows) + " pixels, and the run has " +
                            By(nx_, ny_) + '.');
    placed.places.resize(to_.size());
    Find_Cells_Of_Pixels(of, placed.places.data());
    return Status::Done();
}

// No exception leaves the thread in which it is done.
void Volume_Builder::Prepare(int frame, Placed_Frame& placed) {
    try {
        placed.status = Place_Frame(frame, placed);
    } catch (const std::bad_alloc&) {
        placed.status = Status::Fail(no_memory);
    }
}

void Volume_Builder::Add(const Placed_Frame& placed) {
    Cell* const cells = cells_.All();
    for (std::size_t first = 0; first < to_.size(); first += block) {
        const std::size_t n = std::min(block, to_.size() - first);
        const int* const counts = placed.counts.counts.data() + first;
        const std::int32_t* const places = placed.places.data() + first;
        // Neighbours often fall into one cell, and would wait for each other's sum: far pixels take turns.
        const std::size_t part = n / 4;
        for (std::size_t i = 0; i < part; ++i)
            for (std::size_t k = i; k < i + 4 * part; k += part) cells[places[k]].Add(counts[k]);
        for (std::size_t i = 4 * part; i < n; ++i) cells[places[i]].Add(counts[i]);
        all_counts_ += std::accumulate(counts, counts + n, std::int64_t{0});
    }
}

// While a frame is counted in, a second thread has the places of the next one: cells are touched by one alone, in the order of the frames.
Status Volume_Builder::Add_Frames(const std::function<bool(int)>& go_on) {
    Prepare(1, placed_[0]);
    [[maybe_unused]] const int threads = std::min(Threads_For(0, static_cast<std::size_t>(pixels_)), 2);
    for (int frame = 1; frame <= nframes_; ++frame) {
        const auto at = static_cast<std::size_t>(frame - 1) % 2;
        if (placed_[at].status.failed) return placed_[at].status;
#ifdef _OPENMP
#pragma omp parallel sections num_threads(threads)
#endif
        {
#ifdef _OPENMP
#pragma omp section
#endif
            Add(placed_[at]);
#ifdef _OPENMP
#pragma omp section
#endif
            if (frame < nframes_) Prepare(frame + 1, placed_[1 - at]);
        }
        if (go_on && !go_on(frame)) return Status::Cancel();
    }
    return Status::Done();
}

void Volume_Builder::Means_Of_Layer(std::size_t l, std::vector<float>& means, Totals* totals) const {
    const auto nh = static_cast<std::size_t>(made_.h.count), nk = static_cast<std::size_t>(made_.k.count);
    float* mean = means.data();
    Totals layer;
    for (std::size_t k = 1; k <= nk; ++k) {
        const Cell* const row = cells_.Row(k, l);
        for (std::size_t h = 1; h <= nh; ++h) {
            const std::int64_t sum = row[h].Sum();
            const std::uint32_t pixels = row[h].Pixels();
            layer.pixels += pixels;
            layer.counts += sum;
            *mean++ = pixels > 0 ? static_cast<float>(static_cast<double>(sum) / pixels) : 0.0f;
        }
    }
    if (totals == nullptr) return;
    totals->pixels += layer.pixels;
    totals->counts += layer.counts;
}

// A row inside of the volume; how many of its cells were filled.
long long Volume_Builder::Fill_Row(const float* below, const float* here, const float* above, float* row) const {
    const auto nh = static_cast<std::size_t>(made_.h.count);
    const float* const before = here - nh;
    const float* const behind = here + nh;
    int filled = 0;
    for (std::size_t h = 1; h + 1 < nh; ++h) {
        const float sum = here[h - 1] + here[h + 1] + before[h] + behind[h] + below[h] + above[h];
        const bool is_hole = here[h] < hole;
        row[h] = is_hole ? sum / 6 : here[h];
        filled += is_hole ? 1 : 0;
    }
    row[0] = here[0], row[nh - 1] = here[nh - 1];
    return filled;
}

// The means of layers [first, end), from 1. A layer is filled when the one above it is there, for what counts are neighbours as they were.
Totals Volume_Builder::Take_Layers(std::size_t first, std::size_t end) {
    const auto nh = static_cast<std::size_t>(made_.h.count), nk = static_cast<std::size_t>(made_.k.count),
               nl = static_cast<std::size_t>(made_.l.count), layer = nh * nk;
    std::array<std::vector<float>, 3> means;
    for (auto& of_layer : means) of_layer.resize(layer);
    Totals totals;
    if (first > 1) Means_Of_Layer(first - 1, means[(first - 1) % 3], nullptr);
    Means_Of_Layer(first, means[first % 3], &totals);
    for (std::size_t l = first; l < end; ++l) {
        const float* const below = means[(l + 2) % 3].data();
        const float* const here = means[l % 3].data();
        const float* const above = means[(l + 1) % 3].data();
        if (l < nl) Means_Of_Layer(l + 1, means[(l + 1) % 3], l + 1 < end ? &totals : nullptr);
        float* const to = made_.z.data() + (l - 1) * layer;
        for (std::size_t at = 0; at < layer; at += nh) {
            const bool inside = l > 1 && l < nl && at > 0 && at + nh < layer && nh > 2;
            if (inside)
                totals.filled += Fill_Row(below + at, here + at, above + at, to + at);
            else
                std::copy_n(here + at, nh, to + at);
        }
    }
    return totals;
}

void Volume_Builder::Take_Cells() {
    const auto nl = static_cast<std::size_t>(made_.l.count);
    const std::size_t cells = nl * static_cast<std::size_t>(made_.h.count) * static_cast<std::size_t>(made_.k.count);
    Reserve_Many(made_.z, cells);
    made_.z.resize(cells);
    const std::size_t parts = std::min(static_cast<std::size_t>(Threads_For(0, cells)), nl);
    std::vector<Totals> totals(parts);
    bool no_room = false;
#ifdef _OPENMP
#pragma omp parallel for num_threads(static_cast <int>(parts)) reduction(|| : no_room)
#endif
    for (std::ptrdiff_t i = 0; i < static_cast<std::ptrdiff_t>(parts); ++i) {
        const auto part = static_cast<std::size_t>(i);
        try {
            totals[part] = Take_Layers(nl * part / parts + 1, nl * (part + 1) / parts + 1);
        } catch (const std::bad_alloc&) {
            no_room = true;
        }
    }
    if (no_room) throw std::bad_alloc();
    for (const Totals& of_part : totals) {
        made_.used += of_part.pixels;
        made_.used_counts += of_part.counts;
        made_.filled += of_part.filled;
    }
    made_.dropped = static_cast<long long>(pixels_) - made_.used;
    made_.dropped_counts = all_counts_ - made_.used_counts;
}

}  // namespace

Status Build_Reciprocal_Volume(Frame_Source& frames, const Pixel_Geometry& geometry, const Matrix3d& ub_inverse, Reciprocal_Volume& volume,
                               const std::function<bool(int frames_done)>& go_on) {
    try {
        Volume_Builder builder(frames, geometry, ub_inverse);
        if (Status status = builder.Build(go_on); status.failed) return status;
        volume = builder.Take();
        return Status::Done();
    } catch (const std::bad_alloc&) {
        return Status::Fail(no_memory);
    }
}

}  // namespace vntl
