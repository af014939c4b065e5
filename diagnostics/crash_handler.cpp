#include "diagnostics/crash_handler.h"

#include <cxxabi.h>
#include <fcntl.h>
#include <sys/auxv.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/utsname.h>
#include <ucontext.h>
#include <unistd.h>
#include <unwind.h>

#include <array>
#include <atomic>
#include <bit>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <exception>
#include <typeinfo>

#include "diagnostics/crash_lines.h"

namespace fleetor {

namespace {

struct CrashSignal {
  int number;
  const char* name;
};

constexpr std::array crashSignals{CrashSignal{SIGSEGV, "SIGSEGV"}, CrashSignal{SIGBUS, "SIGBUS"},
                                  CrashSignal{SIGILL, "SIGILL"}, CrashSignal{SIGFPE, "SIGFPE"},
                                  CrashSignal{SIGABRT, "SIGABRT"}};
constexpr std::size_t handlerStackBytes = std::size_t{64} * 1024;
constexpr int mostFrames = 128;  // where Qt draws, more than 60 are its own
constexpr std::uintptr_t nullPageBytes = 4096;
constexpr std::uintptr_t nearStackBytes = std::uintptr_t{64} * 1024;

/// All that the handler needs; prepared in advance, because a signal handler must not allocate.
struct Prepared {
  std::array<char, PATH_MAX> path{};
  std::array<char, 64> program{};
  std::array<char, 32> version{};
  CrashLine build;
  CrashLine system;
  std::array<struct sigaction, crashSignals.size()> before{};
  std::terminate_handler terminateBefore = nullptr;
};

Prepared prepared;
std::atomic<pid_t> crashingThread{0};
std::atomic<int> crashingSignal{0};
std::atomic<const char*> uncaught{nullptr};  ///< the class of the exception, or why there is none

static_assert(std::atomic<pid_t>::is_always_lock_free && std::atomic<const char*>::is_always_lock_free);

template <std::size_t size>
bool keep(std::array<char, size>& place, const std::string& text) {
  if (text.size() >= size) return false;
  std::memcpy(place.data(), text.c_str(), text.size() + 1);
  return true;
}

struct Registers {
  bool known = false;  ///< not for every processor
  std::uintptr_t instruction = 0;
  std::uintptr_t stack = 0;
  std::uintptr_t link = 0;  ///< where a call came from, on processors that keep it
};

Registers registersOf(const void* context) {
  if (!context) return {};
  const auto& machine = static_cast<const ucontext_t*>(context)->uc_mcontext;
#if defined(__x86_64__)
  return {true, static_cast<std::uintptr_t>(machine.gregs[REG_RIP]),
          static_cast<std::uintptr_t>(machine.gregs[REG_RSP]), 0};
#elif defined(__aarch64__)
  return {true, machine.pc, machine.sp, machine.regs[30]};
#else
  static_cast<void>(machine);
  return {};
#endif
}

/// The return address of a call through an invalid pointer.
std::uintptr_t callerOf(const Registers& registers) {
  std::uintptr_t caller = registers.link;
#if defined(__x86_64__)
  std::memcpy(&caller, std::bit_cast<const void*>(registers.stack), sizeof caller);
#endif
  return caller;
}

/// Only roughly: the address itself may be made of what stood in memory.
const char* whereAccessed(std::uintptr_t address, std::uintptr_t stack) {
  if (address < nullPageBytes) return "near null";
  const std::uintptr_t distance = address > stack ? address - stack : stack - address;
  return distance < nearStackBytes ? "near the end of the stack" : "elsewhere";
}

struct Walk {
  int descriptor = -1;
  bool begun = false;        ///< the frames before are the handler's own
  std::uintptr_t begin = 0;  ///< the crashed instruction
  int frames = 0;
};

void writeFrame(Walk& walk, std::uintptr_t address) {
  CrashLine line;
  line.text("#").decimal(static_cast<std::uint64_t>(walk.frames++)).text(" ");
  addPlace(line, address, prepared.program.data());
  line.write(walk.descriptor);
}

_Unwind_Reason_Code visitFrame(_Unwind_Context* context, void* argument) {
  auto& walk = *static_cast<Walk*>(argument);
  int isExact = 0;
  const std::uintptr_t address = _Unwind_GetIPInfo(context, &isExact);
  walk.begun = walk.begun || address == walk.begin;
  if (!walk.begun) return _URC_NO_REASON;
  if (address == 0) return _URC_END_OF_STACK;
  // A return address may belong to the next line already: look up the call before it.
  writeFrame(walk, isExact ? address : address - 1);
  return walk.frames < mostFrames ? _URC_NO_REASON : _URC_END_OF_STACK;
}

void writeReport(int descriptor, int signal, const siginfo_t* info, const void* context) {
  const char* name = "none";
  for (const auto& each : crashSignals)
    if (each.number == signal) name = each.name;
  const Registers registers = registersOf(context);
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);

  CrashLine().text("Fleetor crash report").write(descriptor);
  CrashLine().text("version: ").text(prepared.version.data()).write(descriptor);
  CrashLine(prepared.build).write(descriptor);
  CrashLine(prepared.system).write(descriptor);
  CrashLine().text("time: ").decimal(static_cast<std::uint64_t>(now.tv_sec)).write(descriptor);
  CrashLine()
      .text("signal: ")
      .decimal(static_cast<std::uint64_t>(signal))
      .text(" ")
      .text(name)
      .write(descriptor);
  if (info && info->si_code > 0 && (signal == SIGSEGV || signal == SIGBUS))
    CrashLine()
        .text("access: ")
        .text(whereAccessed(std::bit_cast<std::uintptr_t>(info->si_addr), registers.stack))
        .write(descriptor);
  if (const char* exception = uncaught) CrashLine().text("uncaught: ").text(exception).write(descriptor);
  CrashLine().text("backtrace:").write(descriptor);
  Walk walk{descriptor, !registers.known, registers.instruction};
  if (registers.known && !isInModule(registers.instruction)) {
    // A call through an invalid pointer: there are no frames to unwind, only the caller is known.
    writeFrame(walk, registers.instruction);
    writeFrame(walk, callerOf(registers) - 1);
  } else {
    _Unwind_Backtrace(visitFrame, &walk);
  }
  CrashLine().text("end").write(descriptor);
}

void onCrash(int signal, siginfo_t* info, void* context) {
  const pid_t thread = static_cast<pid_t>(::syscall(SYS_gettid));
  pid_t none = 0;
  if (crashingThread.compare_exchange_strong(none, thread)) {
    crashingSignal = signal;
    const int descriptor =
        ::open(prepared.path.data(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor >= 0) {
      ::flock(descriptor, LOCK_EX | LOCK_NB);  // ours while we write; goes with the process
      writeReport(descriptor, signal, info, context);
    }
  } else if (none != thread) {
    for (;;)
      ::pause();  // the thread that crashed first ends the process
  }
  // Also reached when writing the report crashed; what was written stays.
  for (std::size_t i = 0; i < crashSignals.size(); ++i)
    ::sigaction(crashSignals[i].number, &prepared.before[i], nullptr);
  // A hardware fault happens again when the handler returns; a raised signal does not.
  if (none == 0 && info->si_code > 0 && signal != SIGABRT) return;
  ::syscall(SYS_tgkill, ::getpid(), thread, crashingSignal.load());
}

[[noreturn]] void onTerminate() {
  const std::type_info* const type = abi::__cxa_current_exception_type();
  uncaught = type ? type->name() : "std::terminate() without an exception";
  if (prepared.terminateBefore) prepared.terminateBefore();
  std::abort();
}

/// A stack for the handler, with a guard page below it.
bool giveHandlerItsStack() {
  const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  void* const memory = ::mmap(nullptr, page + handlerStackBytes, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0);
  if (memory == MAP_FAILED || ::mprotect(memory, page, PROT_NONE) != 0) return false;
  stack_t stack{};
  stack.ss_sp = static_cast<char*>(memory) + page;
  stack.ss_size = handlerStackBytes;
  return ::sigaltstack(&stack, nullptr) == 0;
}

}  // namespace

bool installCrashHandler(const std::string& path, const ReportedProgram& program) {
  if (!keep(prepared.path, path) || !keep(prepared.program, program.name) ||
      !keep(prepared.version, program.version))
    return false;
  prepared.build.text("program: ");
  addPlace(prepared.build, ::getauxval(AT_ENTRY), prepared.program.data());
  utsname system{};
  ::uname(&system);
  prepared.system.text("system: ").text(system.sysname).text(" ").text(system.machine);

  // Writes a report to nowhere: whatever is loaded or bound at first use is loaded and bound afterwards.
  const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
  if (nowhere < 0) return false;
  writeReport(nowhere, 0, nullptr, nullptr);
  ::close(nowhere);

  if (!giveHandlerItsStack()) return false;
  struct sigaction action {};
  action.sa_sigaction = onCrash;
  // A second fault is not blocked, so that a crash inside the handler is noticed.
  action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER;
  for (std::size_t i = 0; i < crashSignals.size(); ++i)
    if (::sigaction(crashSignals[i].number, &action, &prepared.before[i]) != 0) return false;
  prepared.terminateBefore = std::set_terminate(onTerminate);
  return true;
}

}  // namespace fleetor
