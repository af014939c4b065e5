#pragma once

#include <string_view>

namespace fleetor {

/// Ends the program with a line on standard error. For mistakes of the program itself, such as an identifier
/// that no table knows; never for anything that a service, a file or a user can bring about.
[[noreturn]] void programmingError(std::string_view what);

}  // namespace fleetor
