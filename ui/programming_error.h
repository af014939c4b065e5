#pragma once

#include <string_view>

namespace fleetor {

/// Ends the program with a line on standard error. For mistakes in the program, such as an unknown
/// identifier; never for anything that a service, a file or a user can cause.
[[noreturn]] void programmingError(std::string_view what);

}  // namespace fleetor
