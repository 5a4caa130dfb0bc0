// The spacing d under the pointer, by the laws of each x space.
#include <cmath>
#include <limits>
#include <numbers>

#include "session/session.hpp"
#include "session/testing.hpp"
#include "session/xspace.hpp"

namespace vntl {
namespace {

Session In_Space(const std::string& space, float c1 = 0, float c2 = 0) {
    Session session;
    Diffraction_Pattern_Type pattern = Tiny_Pattern(12, 0, space);
    pattern.conv = {c1, c2, 0, 0, 0};
    session.store.Append(std::move(pattern), {});
    Set_Xspace(session, space);
    return session;
}

TEST(Spacing, AnglesFollowBraggsLaw) {
    const Session copper = In_Space("2theta", 1.54056f);
    EXPECT_NEAR(*D_Spacing(copper, 28.4427), 3.1355, 2e-4);  // the first line of silicon
    EXPECT_NEAR(*D_Spacing(copper, 180), 1.54056 / 2, 1e-7);
    for (const double d : {0.8, 1.0, 2.5, 20.0})
        EXPECT_NEAR(*D_Spacing(copper, 2 * std::asin(1.54056 / (2 * d)) * 180 / std::numbers::pi), d, 1e-6 * d);
    EXPECT_FALSE(D_Spacing(copper, 0) || D_Spacing(copper, -5) || D_Spacing(In_Space("2theta"), 30));
}

TEST(Spacing, TimesOfFlightSolveTheirQuadraticLaw) {
    for (const float dtt2 : {0.0f, 3.5f, -3.5f, -40.0f})
        for (const double d : {0.3, 1.0, 4.0})
            EXPECT_NEAR(*D_Spacing(In_Space("TOF", 5000.0f, dtt2), 5000 * d + static_cast<double>(dtt2) * d * d), d, 1e-9) << dtt2;
    const Session turning = In_Space("TOF", 5000.0f, -40.0f);  // its law turns back at d = 62.5
    EXPECT_NEAR(*D_Spacing(turning, 156250), 62.5, 1e-3);
    EXPECT_FALSE(D_Spacing(turning, 156251) || D_Spacing(turning, -1));
    EXPECT_FALSE(D_Spacing(In_Space("TOF"), 5000) || D_Spacing(In_Space("TOF", -5000.0f), 5000));
}

TEST(Spacing, ReciprocalScalesAndThoseWithoutOne) {
    EXPECT_NEAR(*D_Spacing(In_Space("q-space"), 2), std::numbers::pi, 1e-12);
    EXPECT_NEAR(*D_Spacing(In_Space("s-space"), 0.25), 4, 1e-12);
    for (const double nowhere : {0.0, -2.0, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()})
        EXPECT_FALSE(D_Spacing(In_Space("q-space"), nowhere) || D_Spacing(In_Space("s-space"), nowhere)) << nowhere;
    for (const char* other : {"Temperature", "Energy", "mono", "Distance"}) EXPECT_FALSE(D_Spacing(In_Space(other, 1.5f), 2)) << other;
    EXPECT_FALSE(D_Spacing(Session(), 2));
}

}  // namespace
}  // namespace vntl
