#include "ui/programming_error.h"

#include <cstdio>
#include <cstdlib>

namespace fleetor {

void programmingError(std::string_view what) {
  std::fprintf(stderr, "fleetor: programming error: %.*s\n", static_cast<int>(what.size()), what.data());
  std::abort();
}

}  // namespace fleetor
