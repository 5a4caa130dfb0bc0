// A disk that is full.
#pragma once

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

namespace vntl {

// Files may not grow beyond this size for a while, as on a disk that is full.
struct Small_Disk {
    explicit Small_Disk(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{bytes, before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        handler = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~Small_Disk() {
        ::setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }
    rlimit before{};
    void (*handler)(int) = nullptr;
};

}  // namespace vntl
