#include <gtest/gtest.h>

#include <cstdlib>

#include "toolkit/messages.hpp"

int main(int argc, char** argv) {
    if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY")) setenv("QT_QPA_PLATFORM", "offscreen", 0);
    vntl::WInitialise(argc, argv, true);
    testing::InitGoogleTest(&argc, argv);
    const int result = RUN_ALL_TESTS();
    vntl::WTerminate();
    return result;
}
