#pragma once

#include <string>

namespace fleetor {

/// What stands in the head of every report.
struct ReportedProgram {
  std::string name;     ///< of the main program's own frames
  std::string version;  ///< such as "0.1.0"
};

/// From now on a crash of this process leaves a report at `path`: a SIGSEGV, SIGBUS, SIGILL, SIGFPE or
/// SIGABRT of any thread, and an exception that nobody catches. Once, on the main thread, before there is
/// another one. False where reports cannot be written, or when the handlers could not be set.
///
/// The report holds the signal, the class of an uncaught exception, the time (seconds since 1970, UTC) and
/// the place: the frames of the crashed thread, innermost first, each as a module, an offset in it and the
/// module's build id. Memory, registers, addresses outside of the modules, folders, and the text of an
/// exception are never written, so nothing that the user typed or the service sent gets into it.
///
/// Afterwards the process ends as it would have without: the handlers that were set before are back, the
/// fault happens again or the signal is raised again. A stack that overflows is reported on the calling
/// thread only, because a handler needs a separate stack there; on other threads such a crash leaves no
/// report.
bool installCrashHandler(const std::string& path, const ReportedProgram& program);

}  // namespace fleetor
