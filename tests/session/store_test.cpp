// Rows and single records of the profile store.
#include "session/store.hpp"

#include "session/testing.hpp"

namespace vntl {
namespace {

// Rows titled "1", "2", ..., each with its number of points its own.
Profile_Store Numbered_Store(int rows) {
    Profile_Store store;
    for (int row = 1; row <= rows; ++row) {
        Diffraction_Pattern_Type pattern = Tiny_Pattern(10 + row);
        pattern.title = std::to_string(row);
        PRF_Info_Add_Type info;
        info.file_name = "f" + pattern.title;
        store.Append(std::move(pattern), std::move(info));
    }
    return store;
}

std::string Order(const Profile_Store& store) {
    std::string order;
    for (int row = 1; row <= store.nperfiles(); ++row) {
        EXPECT_EQ(store.Info(row).file_name, "f" + store.Pattern(row).title);
        order += store.Pattern(row).title;
    }
    return order;
}

TEST(Store, RemovalKeepsTheOrderAndTheFlagsOfTheRowsThatStay) {
    Profile_Store store = Numbered_Store(5);
    store.profile_shown[2] = false;
    store.show_ycalc_of[1] = store.show_ycalc_of[4] = true;
    store.ProfilePRFactive = 5;
    store.prf_loaded = true;
    std::vector<Kept_Row> gone = store.Take_Out({2, 4});
    EXPECT_EQ(Order(store), "135");
    EXPECT_FALSE(store.shown(2));
    EXPECT_TRUE(store.shown(3));
    EXPECT_FALSE(store.show_ycalc_of[1]);
    EXPECT_TRUE(store.show_ycalc_of[2]);
    EXPECT_EQ(store.show_ycalc_of.count(), 1u);  // the freed places are as at the start
    EXPECT_EQ(store.ProfilePRFactive, 3);
    store.Put_In(std::move(gone));
    EXPECT_EQ(Order(store), "12345");
    EXPECT_EQ(store.ProfilePRFactive, 5);
    EXPECT_FALSE(store.shown(3));
    EXPECT_TRUE(store.show_ycalc_of[1] && store.show_ycalc_of[4]);
    EXPECT_EQ(store.profile_shown.count(), static_cast<std::size_t>(max_profiles - 1));
    store.Take_Out({2, 4});
    store.Drop_Last();
    EXPECT_EQ(Order(store), "13");
    EXPECT_EQ(store.ProfilePRFactive, 0);
    EXPECT_FALSE(store.prf_loaded);
    EXPECT_EQ(store.show_ycalc_of.count(), 0u);
}

TEST(Store, PurgeFreesWhatAModeDoesNotNeed) {
    struct Case {
        const char* mode;
        bool ycalc, bgr, sigma, istat;  // kept
    };
    for (const Case& c :
         {Case{"DATA", false, false, false, false}, Case{"data", false, false, false, false}, Case{"DATAS", false, false, true, false},
          Case{"Rietv", true, true, true, false}, Case{"GRAPH", false, false, true, true}, Case{"DAT", true, true, true, true},
          Case{"DATA ", true, true, true, true}, Case{"PRF", true, true, true, true}}) {
        SCOPED_TRACE(c.mode);
        Diffraction_Pattern_Type p = Tiny_Pattern();
        p.has_ycalc = p.has_bgr = p.has_sigma = true;
        Purge_Pattern(p, c.mode);
        EXPECT_EQ(!p.ycalc.empty(), c.ycalc);
        EXPECT_EQ(!p.bgr.empty(), c.bgr);
        EXPECT_EQ(!p.sigma.empty(), c.sigma);
        EXPECT_EQ(!p.istat.empty(), c.istat);
        EXPECT_EQ(p.has_ycalc && p.al_ycalc, c.ycalc);
        EXPECT_EQ(p.has_bgr && p.al_bgr, c.bgr);
        EXPECT_EQ(p.has_sigma && p.al_sigma, c.sigma);
        EXPECT_EQ(p.x.size() + p.y.size() + p.nd.size(), 36u);
    }
}

TEST(Store, TrimGivesEachAllocatedArrayExactlyNpts) {
    Diffraction_Pattern_Type p = Tiny_Pattern(1000, 2.0f);
    p.sigma.clear();
    p.bgr.resize(5, 3.0f);
    p.npts = 40;
    Trim_Pattern(p);
    EXPECT_EQ(p.x.size(), 40u);
    EXPECT_EQ(p.x.capacity(), 40u);
    EXPECT_EQ(p.x.back(), 49.0f);  // 10 + 39
    EXPECT_TRUE(p.sigma.empty());
    EXPECT_EQ(p.bgr.size(), 40u);
}

TEST(Store, ARowHoldsAHundredExcludedRegions) {
    PRF_Info_Add_Type info;
    for (int i = 0; i < 100; ++i) EXPECT_TRUE(Add_Excluded_Region(info, static_cast<float>(i), static_cast<float>(i) + 0.5f)) << i;
    EXPECT_FALSE(Add_Excluded_Region(info, 200, 201));
    EXPECT_EQ(info.nexcl, 100);
    EXPECT_EQ(info.excl_max[99], 99.5f);
    Remove_Excluded_Region(info, 1);
    EXPECT_TRUE(Add_Excluded_Region(info, 200, 201));
    EXPECT_EQ(info.excl_min[98], 99);
    EXPECT_EQ(info.excl_min[99], 200);
}

}  // namespace
}  // namespace vntl
