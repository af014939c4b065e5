#include "ui/fault.h"

#include <cstdio>
#include <cstdlib>

namespace fleetor {

void programmingFault(std::string_view what) {
  std::fprintf(stderr, "fleetor: programming fault: %.*s\n", static_cast<int>(what.size()), what.data());
  std::abort();
}

}  // namespace fleetor
