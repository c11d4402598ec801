#include "vndata/platform/arrays.h"

#include <cstdint>
#include <cstdlib>
#include <new>

#if defined(__linux__)
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace vndata::array_storage {

namespace {
#if defined(__linux__)
constexpr std::size_t kLargePage = std::size_t{2} << 20;
// From this size on a block is worth aligning for large pages.
constexpr std::size_t kHugeBlockBytes = std::size_t{4} << 20;

std::size_t PageRounded(std::size_t bytes) {
  const std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  return (bytes + page - 1) / page * page;
}
#endif
}  // namespace

void* AllocateLargeBlock(std::size_t bytes) {
#if defined(__linux__)
  const std::size_t len = PageRounded(bytes);
  if (len < kHugeBlockBytes) {
    void* m = mmap(nullptr, len, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_POPULATE, -1, 0);
    if (m == MAP_FAILED) throw std::bad_alloc();
    return m;
  }
  // Over-map by one large page, keep the aligned part and give back the ends,
  // so the block can be backed by large pages and freed as one mapping.
  if (len > std::numeric_limits<std::size_t>::max() - kLargePage) throw std::bad_alloc();
  const std::size_t span = len + kLargePage;
  void* m = mmap(nullptr, span, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (m == MAP_FAILED) throw std::bad_alloc();
  const std::uintptr_t base = reinterpret_cast<std::uintptr_t>(m);
  const std::uintptr_t aligned = (base + kLargePage - 1) & ~(static_cast<std::uintptr_t>(kLargePage) - 1);
  if (aligned > base) munmap(m, aligned - base);
  const std::uintptr_t end = base + span, used = aligned + len;
  if (end > used) munmap(reinterpret_cast<void*>(used), end - used);
  void* p = reinterpret_cast<void*>(aligned);
#if defined(MADV_HUGEPAGE)
  madvise(p, len, MADV_HUGEPAGE);
#endif
  return p;
#else
  void* p = std::calloc(1, bytes);
  if (p == nullptr) throw std::bad_alloc();
  return p;
#endif
}

void FreeLargeBlock(void* p, std::size_t bytes) noexcept {
#if defined(__linux__)
  munmap(p, PageRounded(bytes));
#else
  (void)bytes;
  std::free(p);
#endif
}

}  // namespace vndata::array_storage
