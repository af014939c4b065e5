#pragma once

#include <cstddef>

namespace fleetor::json {

/// Asks the system to back a large block, just allocated and not touched yet, by large pages. Reading a day's
/// answer touches tens of megabytes once, and with small pages the page faults cost more than the parsing. A
/// hint: nothing depends on it, and small blocks are left alone.
void preferLargePages(void* block, std::size_t size) noexcept;

}  // namespace fleetor::json
