#include "base/huge_pages.hpp"

#include <sys/mman.h>  // madvise

#include <cstdint>

namespace vntl {

void Ask_For_Huge_Pages([[maybe_unused]] void* bytes, [[maybe_unused]] std::size_t size) {
#ifdef MADV_HUGEPAGE
    constexpr std::uintptr_t huge = std::uintptr_t{1} << 21;
    const auto at = reinterpret_cast<std::uintptr_t>(bytes);
    const std::uintptr_t first = (at + huge - 1) / huge * huge, end = (at + size) / huge * huge;
    if (end > first) (void)madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE);  // its failure changes nothing
#endif
}

void Bring_In([[maybe_unused]] void* bytes, [[maybe_unused]] std::size_t size) {
#ifdef MADV_POPULATE_WRITE
    constexpr std::uintptr_t page = 4096;
    constexpr std::size_t worth_a_call = std::size_t{1} << 18;
    if (size < worth_a_call) return;
    const auto at = reinterpret_cast<std::uintptr_t>(bytes);
    const std::uintptr_t first = (at + page - 1) / page * page, end = (at + size) / page * page;
    (void)madvise(reinterpret_cast<void*>(first), end - first, MADV_POPULATE_WRITE);
#endif
}

}  // namespace vntl
