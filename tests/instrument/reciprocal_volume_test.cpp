// Volumes of simulated crystals, whose spots must come to lie at whole indices, and volumes against a rebinning pixel by pixel.
#include "instrument/reciprocal_volume.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <utility>

#include "instrument/simulated_crystal.hpp"

namespace vntl::test {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

class Crystal_Frames : public Frame_Source {
public:
    explicit Crystal_Frames(const Simulated_Crystal& of) : crystal(of), run(of.Run()), counts_(of.Counts()) {
        std::vector<std::string> warnings;
        EXPECT_TRUE(Pixel_Geometry::Make(of.Instrument(), of.nx, of.ny, geometry, warnings).ok());
    }

    const SXTAL_Numor_Type& Run() const override { return run; }
    int nx() const override { return crystal.nx; }
    int ny() const override { return crystal.ny; }
    Status Frame(int frame, Count_Matrix& counts) override {
        if (frame == fails_at) return Status::Fail("gone");
        const auto& of_frame = counts_[static_cast<std::size_t>(frame) - 1];
        counts = {crystal.ny - (frame == short_at), crystal.nx, {of_frame.begin(), of_frame.end()}};
        return Status::Done();
    }
    Vector3d Indices(int px, int py, int frame, const Matrix3d& inverse) const {
        Vector3d z1{};
        EXPECT_TRUE(Get_z1_from_pixel(px, py, frame, run, geometry, z1).ok());
        return inverse * z1;
    }
    long long Count(int px, int py, int frame) const {
        return counts_[static_cast<std::size_t>(frame) - 1][static_cast<std::size_t>((py - 1) * crystal.nx + px - 1)];
    }

    const Simulated_Crystal crystal;
    SXTAL_Numor_Type run;
    Pixel_Geometry geometry;
    int fails_at = 0, short_at = 0;

private:
    std::vector<std::vector<long long>> counts_;
};

Matrix3d Inverse(const Matrix3d& matrix, double factor = 1) {
    Matrix3d inverse{};
    EXPECT_TRUE(Invert(matrix, inverse));
    for (Vector3d& row : inverse)
        for (double& value : row) value *= factor;
    return inverse;
}

Reciprocal_Volume Built(Crystal_Frames& frames, const Matrix3d& inverse) {
    Reciprocal_Volume volume;
    const Status status = Build_Reciprocal_Volume(frames, frames.geometry, inverse, volume);
    EXPECT_TRUE(status.ok()) << status.message;
    return volume;
}

std::array<const Volume_Axis*, 3> Axes(const Reciprocal_Volume& volume) { return {&volume.h, &volume.k, &volume.l}; }

using Cell = std::array<int, 3>;  // from 1

void For_Cells(const Cell& first, const Cell& last, const std::function<void(const Cell&)>& visit) {
    for (int l = first[2]; l <= last[2]; ++l)
        for (int k = first[1]; k <= last[1]; ++k)
            for (int h = first[0]; h <= last[0]; ++h) visit({h, k, l});
}

// How many cells the middle of the peak about a place lies from it, along each axis.
Vector3d Peak_Off(const Reciprocal_Volume& volume, const Vector3d& place, const Simulated_Crystal& crystal) {
    const auto axes = Axes(volume);
    Vector3d wanted{}, sum{};
    Cell first{}, last{};
    double mass = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        wanted[i] = (place[i] - axes[i]->min) / axes[i]->step;
        first[i] = std::clamp(static_cast<int>(std::lround(wanted[i])) - 4, 1, axes[i]->count);
        last[i] = std::clamp(static_cast<int>(std::lround(wanted[i])) + 4, 1, axes[i]->count);
    }
    For_Cells(first, last, [&](const Cell& cell) {
        const double above = std::max(static_cast<double>(volume.z[volume.Index(cell[0], cell[1], cell[2])]) - crystal.height / 5, 0.0);
        mass += above;
        for (std::size_t i = 0; i < 3; ++i) sum[i] += above * (cell[i] - wanted[i]);
    });
    EXPECT_GT(mass, crystal.height);
    return {sum[0] / mass, sum[1] / mass, sum[2] / mass};
}

TEST(Reciprocal_Volume, Spots_Of_A_Crystal_Lie_At_Whole_Indices) {
    for (const int kind : {1, 2, 3})
        for (const char* const scan : {"omega", "phi", "q-scan"}) {
            SCOPED_TRACE(testing::Message() << kind << ' ' << scan);
            Crystal_Frames frames(Simulated_Crystal::Of(kind, scan));
            const Matrix3d ub = frames.crystal.UB();
            const double c = std::cos(degree), s = std::sin(degree);
            const Matrix3d turned = Matrix3d{{{c, -s, 0}, {s, c, 0}, {0, 0, 1}}} * ub;
            const Reciprocal_Volume volume = Built(frames, Inverse(ub)), of_turned = Built(frames, Inverse(turned));
            const auto spots = frames.crystal.Spots(5);
            ASSERT_GE(spots.size(), 4u);
            for (const Simulated_Spot& spot : spots) {
                const Vector3d hkl = {double(spot.hkl[0]), double(spot.hkl[1]), double(spot.hkl[2])};
                const Vector3d elsewhere = Inverse(turned) * (ub * hkl);
                for (const double off : Peak_Off(volume, hkl, frames.crystal)) EXPECT_LT(std::fabs(off), 0.5) << hkl[0] << hkl[1] << hkl[2];
                for (const double off : Peak_Off(of_turned, elsewhere, frames.crystal)) EXPECT_LT(std::fabs(off), 0.5);
                double moved = 0;
                for (std::size_t i = 0; i < 3; ++i) moved += std::fabs(elsewhere[i] - hkl[i]) / Axes(of_turned)[i]->step;
                EXPECT_GT(moved, 1);
            }
        }
}

// All pixels of a run, each by itself, into the cells of a volume. Where rounding may decide, a pixel changes two cells and those about
// them.
void Check_By_Pixels(const Crystal_Frames& frames, const Matrix3d& inverse, const Reciprocal_Volume& volume) {
    const auto axes = Axes(volume);
    const Cell counts = {volume.h.count, volume.k.count, volume.l.count};
    std::vector<double> sums(volume.z.size()), pixels(volume.z.size());
    long long all = 0, all_counts = 0, inside = 0, inside_counts = 0, in_doubt = 0, filled = 0, wrong = 0;
    for (int frame = 1; frame <= frames.crystal.frames; ++frame)
        For_Cells({1, 1, 1}, {frames.crystal.nx, frames.crystal.ny, 1}, [&](const Cell& pixel) {
            const Vector3d hkl = frames.Indices(pixel[0], pixel[1], frame, inverse);
            const long long count = frames.Count(pixel[0], pixel[1], frame);
            Cell cell{};
            bool in = true, doubt = false;
            for (std::size_t i = 0; i < 3; ++i) {
                const double at = counts[i] == 1 ? 1 : (hkl[i] - axes[i]->min) / axes[i]->step;
                cell[i] = static_cast<int>(std::lround(at));
                doubt = doubt || std::lround(at - 1e-7) != std::lround(at + 1e-7);
                in = in && cell[i] >= 1 && cell[i] <= counts[i];
            }
            ++all, all_counts += count, in_doubt += doubt;
            if (!in) return;
            ++inside, inside_counts += count;
            const std::size_t index = volume.Index(cell[0], cell[1], cell[2]);
            sums[index] += static_cast<double>(count), ++pixels[index];
        });
    EXPECT_EQ(volume.used + volume.dropped, all);
    EXPECT_EQ(volume.used_counts + volume.dropped_counts, all_counts);
    EXPECT_LE(std::abs(volume.used - inside), in_doubt);
    EXPECT_TRUE(in_doubt > 0 || volume.used_counts == inside_counts);
    EXPECT_LT(in_doubt, 10);
    for (std::size_t i = 0; i < sums.size(); ++i) sums[i] = pixels[i] > 0 ? sums[i] / pixels[i] : 0;
    For_Cells({1, 1, 1}, counts, [&](const Cell& cell) {
        const auto at = [&](int h, int k, int l) { return sums[volume.Index(h, k, l)]; };
        const auto [h, k, l] = cell;
        double expected = at(h, k, l);
        bool within = true;
        for (std::size_t i = 0; i < 3; ++i) within = within && cell[i] > 1 && cell[i] < counts[i];
        if (within && expected < 0.001) {
            ++filled;
            expected = (at(h - 1, k, l) + at(h + 1, k, l) + at(h, k - 1, l) + at(h, k + 1, l) + at(h, k, l - 1) + at(h, k, l + 1)) / 6;
        }
        wrong += !(std::fabs(static_cast<double>(volume.z[volume.Index(h, k, l)]) - expected) <= 1e-6 * expected);
    });
    EXPECT_LE(wrong, 14 * in_doubt);
    EXPECT_LE(std::abs(volume.filled - filled), 2 * in_doubt);
}

TEST(Reciprocal_Volume, Each_Pixel_Is_In_Its_Cell) {
    const auto level = [](Simulated_Crystal& c) { c.ny = 1, c.chi = 0, c.cell = {11, 12.5, 14, 90, 90, 90}, c.level = true; };
    const struct {
        const char* name;
        std::function<void(Simulated_Crystal&)> change;
        bool flat_l = false;
    } shapes[] = {
        {"flat", [](Simulated_Crystal& c) { c.background = 0; }},
        {"q-scan", [](Simulated_Crystal& c) { c = Simulated_Crystal::Of(3, "q-scan"), c.frames = 12, c.step = 1; }},
        {"indices beyond the corners", [](Simulated_Crystal& c) { c.nx = c.ny = 20, c.step = 4; }},
        {"one column", [](Simulated_Crystal& c) { c = Simulated_Crystal::Of(1, "phi"), c.nx = 1; }},
        {"a row in the plane of h and k", level, true},
        {"a pixel", [&](Simulated_Crystal& c) { level(c), c.nx = 1; }, true},
        {"one count", [](Simulated_Crystal& c) { c.nx = c.ny = c.frames = 1; }},
    };
    for (const auto& shape : shapes) {
        SCOPED_TRACE(shape.name);
        Simulated_Crystal crystal;
        shape.change(crystal);
        crystal.machine = "R18";
        Crystal_Frames frames(crystal);
        ASSERT_EQ(frames.run.nframes, crystal.frames);
        const Matrix3d inverse = Inverse(crystal.UB());
        const Reciprocal_Volume volume = Built(frames, inverse);
        ASSERT_EQ(volume.z.size(), static_cast<std::size_t>(volume.h.count) * static_cast<std::size_t>(volume.k.count * volume.l.count));
        EXPECT_EQ(volume.l.count == 1, shape.flat_l || volume.z.size() == 1);
        Check_By_Pixels(frames, inverse, volume);
        // No unit of the indices changes what falls where.
        for (const double factor : {1e200, 1e-200}) EXPECT_EQ(Built(frames, Inverse(crystal.UB(), factor)).z, volume.z);
    }
}

TEST(Reciprocal_Volume, Axes_Reach_From_Corner_To_Corner_With_A_Cell_A_Pixel) {
    Crystal_Frames frames(Simulated_Crystal::Of(3, "omega"));
    const Simulated_Crystal& crystal = frames.crystal;
    const Matrix3d inverse = Inverse(crystal.UB());
    const Reciprocal_Volume volume = Built(frames, inverse);
    const auto axes = Axes(volume);
    const Vector3d centre = frames.Indices(28, 20, 20, inverse);
    const Vector3d next[] = {frames.Indices(29, 20, 20, inverse), frames.Indices(28, 21, 20, inverse), frames.Indices(28, 20, 21, inverse)};
    Vector3d low{}, high{}, step{};
    for (std::size_t i = 0; i < 3; ++i) {
        low[i] = 1e9, high[i] = -1e9;
        For_Cells({0, 0, 0}, {1, 1, 1}, [&](const Cell& corner) {
            const double at = frames.Indices(1 + 55 * corner[0], 1 + 39 * corner[1], 1 + 39 * corner[2], inverse)[i];
            low[i] = std::min(low[i], at), high[i] = std::max(high[i], at);
        });
        for (const Vector3d& neighbour : next) step[i] = std::max(step[i], std::fabs(neighbour[i] - centre[i]));
        EXPECT_NEAR(axes[i]->min, low[i], 1e-9);
        EXPECT_NEAR(axes[i]->max, high[i], 1e-9);
        EXPECT_EQ(axes[i]->first_count, std::lround((high[i] - low[i]) / step[i]));
        EXPECT_NEAR(axes[i]->step / axes[0]->step, step[i] / step[0], 1e-9);
        EXPECT_NEAR(axes[i]->count * axes[i]->step, high[i] - low[i], axes[i]->step / 2);
    }
    EXPECT_NEAR(static_cast<double>(volume.z.size()) / (crystal.nx * crystal.ny * crystal.frames), 1, 0.05);
    const Matrix3d ub = crystal.UB();
    const std::vector<std::string> lines = Describe_Volume(volume, ub);
    ASSERT_EQ(lines.size(), 18u);
    const double star = std::sqrt(ub[0][1] * ub[0][1] + ub[1][1] * ub[1][1] + ub[2][1] * ub[2][1]);
    const std::pair<const char*, double> told[] = {
        {"       k-min(r.l.u.) : ", low[1]},           {"       k-max(r.l.u.) : ", high[1]},
        {"     k-range(r.l.u.) : ", high[1] - low[1]}, {"   Initial divisions : ", double(volume.k.first_count)},
        {"     k-steps(r.l.u.) : ", volume.k.step},    {"   k-steps(1/angstr) : ", volume.k.step * star}};
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(lines[6 + i].substr(0, 23), told[i].first);
        EXPECT_NEAR(std::stod(lines[6 + i].substr(23)), told[i].second, 1e-6);
    }
}

TEST(Reciprocal_Volume, What_Cannot_Be_Built_Leaves_The_Former_One) {
    Simulated_Crystal small, point, wide;
    small.nx = small.ny = wide.ny = 6, small.frames = point.frames = 5, small.machine = point.machine = wide.machine = "R18", wide.nx = 7;
    point.nx = point.ny = 1, point.chi = 0, point.level = true, point.cell = {11, 12.5, 14, 90, 90, 90};
    const Pixel_Geometry wider = Crystal_Frames(wide).geometry;
    using Change = std::function<void(Crystal_Frames&, Matrix3d&)>;
    const auto angle = [](int frame, float value) -> Change {
        return [=](Crystal_Frames& f, Matrix3d&) { f.run.tmc_ang.Frame(static_cast<std::size_t>(frame) - 1)[frame_angle] = value; };
    };
    const auto wave = [](float value) -> Change { return [=](Crystal_Frames& f, Matrix3d&) { f.run.wave = value; }; };
    const struct {
        Change change;
        const char* told;
        bool of_a_point = false;
    } cases[] = {{[](Crystal_Frames& f, Matrix3d&) { f.fails_at = 3; }, "gone"},
                 {[](Crystal_Frames& f, Matrix3d&) { f.short_at = 4; }, "Frame 4 has 6 x 5 pixels"},
                 {[](Crystal_Frames& f, Matrix3d&) { f.run.nframes = 0; }, "no frames"},
                 {[](Crystal_Frames& f, Matrix3d&) { f.run.nframes = 100'000'000; }, "Frame 100000000"},
                 {[&](Crystal_Frames& f, Matrix3d&) { f.geometry = wider; }, "6 x 6 pixels, and the detector of the instrument has 7 x 6"},
                 {[](Crystal_Frames&, Matrix3d& m) { m[1][2] = nan; }, "UB matrix"},
                 {[](Crystal_Frames& f, Matrix3d& m) { m[0][0] = 1e308, f.run.wave = 1e-6f; }, "no numbers"},
                 {[](Crystal_Frames&, Matrix3d& m) { m[0][0] = 1.7e308, m[0][1] = 0, m[0][2] = -1.7e308; }, "no number"},
                 {wave(0), "wavelength"},
                 {wave(static_cast<float>(nan)), "wavelength"},
                 {angle(4, static_cast<float>(nan)), "4"},
                 {angle(1, 100), "more than 4", true}};  // the step in the middle is a small share of the range
    for (const auto& [change, told, of_a_point] : cases) {
        Crystal_Frames frames(of_a_point ? point : small);
        Matrix3d inverse = Inverse(frames.crystal.UB());
        change(frames, inverse);
        Reciprocal_Volume volume;
        volume.z = {7};
        const Status status = Build_Reciprocal_Volume(frames, frames.geometry, inverse, volume);
        EXPECT_TRUE(status.to_tell() && status.message.find(told) != std::string::npos) << told << ": " << status.message;
        EXPECT_EQ(volume.z, std::vector<float>{7}) << told;
    }
    Crystal_Frames frames(small);
    Reciprocal_Volume volume;
    std::vector<int> asked;
    const auto until_two = [&](int done) { return asked.push_back(done), done < 2; };
    const Status status = Build_Reciprocal_Volume(frames, frames.geometry, Inverse(small.UB()), volume, until_two);
    EXPECT_TRUE(status.failed && status.cancelled && volume.empty());
    EXPECT_EQ(asked, (std::vector<int>{1, 2}));
}

TEST(Reciprocal_Volume, Planes_And_Projections) {
    Reciprocal_Volume volume;
    volume.h = {0, 1, 0.5, 2, 2}, volume.k = {-1, 2, 1, 3, 3}, volume.l = {10, 14, 1, 4, 4};
    For_Cells({1, 1, 1}, {2, 3, 4}, [&](const Cell& c) { volume.z.push_back(static_cast<float>(100 * c[0] + 10 * c[1] + c[2])); });
    const std::vector<float> values[] = {{0.5f, 1}, {0, 1, 2}, {11, 12, 13, 14}};
    for (std::size_t axis = 0; axis < 3; ++axis)
        for (int plane = 0; plane <= static_cast<int>(values[axis].size()); ++plane) {  // 0: all
            const std::size_t x = axis == 0 ? 1 : 0, y = axis == 2 ? 1 : 2;
            const auto view = static_cast<View_Axis>(axis);
            std::vector<float> z(values[x].size() * values[y].size());
            For_Cells({1, 1, 1}, {2, 3, 4}, [&](const Cell& c) {
                const std::size_t at = static_cast<std::size_t>(c[y] - 1) * values[x].size() + static_cast<std::size_t>(c[x] - 1);
                if (plane == 0 || c[axis] == plane) z[at] += static_cast<float>(100 * c[0] + 10 * c[1] + c[2]);
            });
            const Volume_Picture picture = plane == 0 ? Projection(volume, view) : Plane(volume, view, plane);
            EXPECT_TRUE(picture.x == values[x] && picture.y == values[y]);
            EXPECT_EQ(picture.z, z) << axis << ' ' << plane;
        }
    EXPECT_TRUE(Plane(volume, View_Axis::l, 5).z.empty() && Plane(volume, View_Axis::h, 0).z.empty());
}

TEST(Reciprocal_Volume, Matrices_Are_Read_As_They_Are_Pasted) {
    const Matrix3d expected = {{{0.1, 0, 0.025}, {-0.02, 0.15, 0}, {0, 0, 0.125}}};
    for (const char* const text : {" 0.1 0 0.025\n-.02 0.15 0\r\n0. 0 .125\n\n", "0.1,0,2.5E-2;-2d-2, 1.5-1 , 0 ;0\t0 +.125;",
                                   "0.1 0.0 0.025 -0.02 0.15 0.0 0.0 0.0 0.125"}) {
        Matrix3d ub{}, inverse{};
        ASSERT_TRUE(Parse_UB_Matrix(text, ub, inverse).ok()) << text;
        EXPECT_EQ(ub, expected);
        for (std::size_t i = 0; i < 9; ++i) EXPECT_NEAR((inverse * ub)[i / 3][i % 3], i % 4 == 0, 1e-12);
    }
    for (const char* const text : {"", "1 0 0 0 1 0 0 0", "1 0 0 0 1 0 0 0 1 0", "1 0 0 0 1 0 0 0 x", "1 0 0 0 1 0 0 0 1 x",
                                   "1 0 0 0 1 0 0 0 nan", "1 0 0 0 1e999 0 0 0 1", "1 0 0 0 1 0 0 0 1a", "0 0 0 0 0 0 0 0 0",
                                   ".1 .2 .3 .4 .5 .6 .7 .8 .9", "1e-310 0 0 0 1e-310 0 0 0 1e-310", "1e200 0 0 0 1e200 0 0 0 1e200"}) {
        Matrix3d ub = expected, inverse = expected;
        EXPECT_EQ(Parse_UB_Matrix(text, ub, inverse).message, " Error reading the UB-Matrix") << text;
        EXPECT_TRUE(ub == expected && inverse == expected);
    }
}

}  // namespace
}  // namespace vntl::test
