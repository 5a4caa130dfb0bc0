// What reading a file takes at least: one read into memory that the program did not have before.
#pragma once

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <string>

namespace vntl {

inline void Plain_Read(const std::string& name) {
    const int file = open(name.c_str(), O_RDONLY);
    const auto size = static_cast<std::size_t>(lseek(file, 0, SEEK_END));
    lseek(file, 0, SEEK_SET);
    void* bytes = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    benchmark::DoNotOptimize(read(file, bytes, size));
    munmap(bytes, size);
    close(file);
}

}  // namespace vntl
