// What the viewer of area detectors has in hand, without a window: a simulated crystal tells where its spots are.
#include "session/viewer_2d.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "instrument/simulated_crystal.hpp"
#include "session/preferences.hpp"
#include "session/testing.hpp"

namespace vntl {
namespace {

using test::Simulated_Crystal;

class Viewer : public ::testing::Test {
protected:
    // Runs of the crystal, numbered from 1, become those of the viewer.
    void Take(const std::vector<Simulated_Crystal>& crystals, std::size_t most_bytes = most_bytes_of_counts) {
        crystal = crystals.front();
        Frame_Store store(most_bytes);
        for (std::size_t i = 0; i < crystals.size(); ++i) {
            Simulated_Crystal run = crystals[i];
            run.numor = static_cast<int>(i) + 1;
            const std::string file = directory.Write("00000" + std::to_string(i + 1), run.Text().Text());
            ASSERT_EQ(store.Add(file, run.Instrument()).message, "");
        }
        ASSERT_EQ(Take_Runs(viewer, std::move(store), crystal.Instrument(), saturation, warnings).message, "");
        EXPECT_TRUE(warnings.empty());
        Matrix3d inverse;
        ASSERT_TRUE(Invert(crystal.UB(), inverse));
        Take_UB(viewer, crystal.UB(), inverse);
    }

    void Build() {
        Reciprocal_Volume volume;
        ASSERT_EQ(Build_Reciprocal_Volume(*viewer.numors.Source(viewer.current_numor), *viewer.geometry, viewer.ub_inverse, volume).message,
                  "");
        Take_Volume(viewer, std::move(volume), saturation);
    }

    // With the units that the picture sets where its plot box is the whole page.
    std::string Told_At(double x, double y) {
        viewer.plot.zone = {0, 0, 1, 1};
        viewer.plot.units = viewer.plot.Shown_View();
        Read_Out(viewer, viewer.plot.Page_At({x, y}));
        return std::accumulate(viewer.status.begin(), viewer.status.end(), std::string());
    }

    Test_Directory directory;
    Saturation saturation;
    std::vector<std::string> warnings;
    Simulated_Crystal crystal;
    Viewer2D viewer;
};

TEST_F(Viewer, StepsThroughRunsFramesAndPlanes) {
    Simulated_Crystal one = Simulated_Crystal::Of(2, "omega");
    one.frames = 1;
    Take({Simulated_Crystal::Of(2, "omega"), one, Simulated_Crystal::Of(2, "q-scan")});
    // Whether one can go back and forward in frames, and in runs.
    const auto buttons = [&] {
        std::string enabled;
        for (const auto& [back, forward] : {Frame_Buttons(viewer), Numor_Buttons(viewer)})
            for (const bool side : {back, forward}) enabled += side ? '1' : '0';
        return enabled;
    };
    EXPECT_EQ(buttons(), "0101");
    for (const auto& [wanted, shown, sides] : {std::tuple{7, 7, "1101"}, {99, 40, "1001"}, {-3, 1, "0101"}}) {
        EXPECT_EQ(Show_Frame(viewer, wanted, saturation).message, "");
        EXPECT_EQ(buttons(), sides) << wanted;
        EXPECT_EQ(viewer.title, "2D contour plot, Numor: 1  Frame: " + std::to_string(shown));
    }
    for (const auto& [run, frame, angles, reflection] :
         {std::tuple{2, 1, "32.00 14.00 21.00 37.00", " ===> hkl: ("},
          {3, 11, "33.00 19.00 21.50 36.00", " => Q-scan: ("}}) {  // 10 steps of half a degree, in the scan's proportions
        EXPECT_EQ(Show_Run(viewer, run, one.Instrument(), saturation, warnings).message, "");
        EXPECT_EQ(buttons(), run == 2 ? "0011" : "0110");
        EXPECT_EQ(Show_Frame(viewer, frame, saturation).message, "");
        EXPECT_EQ(Header_Of(viewer).angles, angles);
        EXPECT_EQ(Header_Of(viewer).reflection.find(reflection), 0u);
    }
    EXPECT_TRUE(Show_Run(viewer, 4, one.Instrument(), saturation, warnings).failed);

    Build();
    EXPECT_EQ(viewer.title.find("Reciprocal Space contour plot cut at qL: "), 0u);
    Show_Along(viewer, View_Axis::h, saturation);
    EXPECT_EQ(Show_Frame(viewer, 9999, saturation).message, "");
    EXPECT_EQ(viewer.current_frame, viewer.volume.h.count);
    EXPECT_EQ(viewer.x_label + viewer.y_label, " K-(r.l.u.) L-(r.l.u.)");
    viewer.projection_mode = true;
    EXPECT_EQ(Plot_Frame(viewer, saturation).message, "");
    EXPECT_EQ(viewer.title, "Reciprocal Space contour plot projection along H:");
    EXPECT_EQ(buttons(), "0010");
    EXPECT_EQ(Show_Run(viewer, 1, crystal.Instrument(), saturation, warnings).message, "");
    EXPECT_TRUE(!viewer.recip_mode && viewer.ub_known && viewer.volume.empty());
    EXPECT_EQ(viewer.title, "2D contour plot of projection for all frames");
    double sum = 0;
    for (const auto& frame : crystal.Counts()) sum += std::accumulate(frame.begin(), frame.end(), 0.0);
    EXPECT_EQ(std::accumulate(viewer.frame_z.begin(), viewer.frame_z.end(), 0.0), sum);
}

TEST_F(Viewer, TellsWhereTheSpotsOfACrystalAre) {
    const auto whole = [](double at) { return static_cast<int>(std::lround(at)); };
    for (const auto& [kind, scan] : {std::pair{1, "phi"}, {2, "omega"}, {3, "q-scan"}}) {
        SCOPED_TRACE(std::to_string(kind) + scan);
        Take({Simulated_Crystal::Of(kind, scan)});
        const auto spots = crystal.Spots(4);
        ASSERT_FALSE(spots.empty());
        for (const auto& spot : spots) {
            const auto hkl = Indices_Of_Pixel(viewer, spot.px, spot.py, whole(spot.frame));
            ASSERT_TRUE(hkl);
            for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR((*hkl)[i], spot.hkl[i], 0.05);  // half a frame beside it
        }
        const auto& spot = spots.front();
        const int px = whole(spot.px), py = whole(spot.py), frame = whole(spot.frame);
        EXPECT_EQ(Show_Frame(viewer, frame, saturation).message, "");
        const auto counts = crystal.Counts()[static_cast<std::size_t>(frame) - 1][static_cast<std::size_t>((py - 1) * crystal.nx + px - 1)];
        const std::string told = Told_At(px + 0.2, py - 0.3);
        EXPECT_TRUE(told.starts_with(" X= " + std::to_string(px) + " Y= " + std::to_string(py) + " Int= " + std::to_string(counts) +
                                     " Last (h,k,l)-real :") &&
                    told.ends_with(" Numor= 1 Frame= " + std::to_string(frame)))
            << told;
        EXPECT_EQ(Told_At(crystal.nx + 1, 3), "");

        Build();
        const Volume_Axis& l = viewer.volume.l;
        EXPECT_EQ(Show_Frame(viewer, whole((spot.hkl[2] - l.min) / l.step), saturation).message, "");
        const std::string in_volume = Told_At(spot.hkl[0], spot.hkl[1]);
        const auto at = in_volume.find(" Frame= ");
        ASSERT_NE(at, std::string::npos);
        EXPECT_NEAR(std::stod(in_volume.substr(at + 8)), spot.frame, 3) << in_volume;  // the plane is not quite at the whole number
    }
}

TEST_F(Viewer, ZoomsToPixelsAndScalesWhatIsDrawn) {
    Take({Simulated_Crystal::Of(2, "omega")});
    const PlotGrid& grid = viewer.plot.grid;
    EXPECT_EQ(grid.grid_z.size(), 48u * 48u);
    EXPECT_TRUE(Zoom_To(viewer, {9.6f, 12.4f, -5, 2.2f}, saturation));
    EXPECT_EQ(grid.grid_x, (std::vector<float>{10, 11, 12}));
    EXPECT_EQ(grid.grid_y, (std::vector<float>{1, 2}));
    std::iota(viewer.unscaled_z.begin(), viewer.unscaled_z.end(), 0.0f);
    Rescale(viewer, saturation);
    EXPECT_EQ(grid.grid_z, (std::vector<float>{9, 10, 11, 57, 58, 59}));
    PlotGrid zone;
    EXPECT_EQ(Zone_Grid(viewer, zone).message, "You need to increase the zone to PLOT");
    EXPECT_FALSE(Zoom_To(viewer, {11.1f, 11.2f, 1, 20}, saturation));
    EXPECT_EQ(grid.grid_x.size(), 3u);
    EXPECT_EQ(Show_Frame(viewer, 5, saturation).message, "");
    EXPECT_EQ(grid.grid_x.size(), 3u);  // the same pixels of another frame
    Show_Whole(viewer, saturation);

    const std::vector<float> counts = viewer.frame_z;
    viewer.intensity_scale = Intensity_Scale::root_square;
    Rescale(viewer, saturation);
    EXPECT_FLOAT_EQ(viewer.frame_z[100], std::sqrt(counts[100]));
    Rescale(viewer, {.saturation_on = true, .saturation_value = 2});
    EXPECT_EQ(*std::max_element(grid.grid_z.begin(), grid.grid_z.end()), 2);
    EXPECT_GT(*std::max_element(viewer.frame_z.begin(), viewer.frame_z.end()), 2);
    viewer.section_known = true, viewer.section_x = {1, 48}, viewer.section_y = {3, 3};
    const Line_Plot line = Section_Of(viewer);
    EXPECT_EQ(line.y.front(), viewer.frame_z[2 * 48]);
    EXPECT_EQ(line.y.back(), viewer.frame_z[2 * 48 + 47]);
}

TEST_F(Viewer, KeepsWhatItShowsWhereSomethingFails) {
    Take({Simulated_Crystal::Of(2, "omega"), Simulated_Crystal::Of(2, "phi")}, 1);  // no counts are held
    EXPECT_EQ(Show_Frame(viewer, 3, saturation).message, "");
    const std::vector<float> shown = viewer.frame_z;
    std::filesystem::remove(directory.path + "/000001");
    std::filesystem::remove(directory.path + "/000002");
    const auto as_it_was = [&] {
        return viewer.current_numor == 1 && viewer.current_frame == 3 && viewer.frame_z == shown && viewer.numors.size() == 2;
    };
    EXPECT_NE(Show_Frame(viewer, 4, saturation).message.find("000001"), std::string::npos);
    EXPECT_TRUE(as_it_was());
    EXPECT_TRUE(Show_Run(viewer, 2, crystal.Instrument(), saturation, warnings).failed);
    EXPECT_TRUE(as_it_was());
    EXPECT_TRUE(Take_Runs(viewer, Frame_Store(), crystal.Instrument(), saturation, warnings).failed);
    EXPECT_TRUE(as_it_was());
    Diffractometer_Type nowhere = crystal.Instrument();
    nowhere.dist_samp_detector = 0;
    EXPECT_EQ(Take_Instrument(viewer, nowhere, saturation, warnings).message, "");
    EXPECT_TRUE(as_it_was() && !viewer.geometry && !viewer.no_geometry.empty());
    EXPECT_EQ(Told_At(2, 2).find(" X= 2 Y= 2 Int= "), 0u);
}

}  // namespace
}  // namespace vntl
