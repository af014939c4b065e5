#include "diagnostics/crash_handler.h"

namespace fleetor {

bool installCrashHandler(const std::string& /*path*/, const ReportedProgram& /*program*/) {
  return false;
}

}  // namespace fleetor
