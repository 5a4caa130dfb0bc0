// Runs the tests of a room that opens windows, on a display or without one.
#include <gtest/gtest.h>

#include "toolkit/messages.hpp"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    vntl::WInitialise(argc, argv, true);
    const int result = RUN_ALL_TESTS();
    vntl::WTerminate();
    return result;
}
