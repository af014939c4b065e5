#include "model/large_pages.h"

#include <cstdint>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace fleetor::json {

void preferLargePages([[maybe_unused]] void* block, [[maybe_unused]] std::size_t size) noexcept {
#ifdef __linux__
  constexpr std::size_t worthwhile = std::size_t{4} << 20;
  constexpr std::uintptr_t page = 4096;
  if (size < worthwhile) return;
  const auto address = reinterpret_cast<std::uintptr_t>(block);
  const auto first = (address + page - 1) & ~(page - 1);
  const auto last = (address + size) & ~(page - 1);
  madvise(static_cast<char*>(block) + (first - address), last - first, MADV_HUGEPAGE);
#endif
}

}  // namespace fleetor::json
