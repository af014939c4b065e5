#include "diagnostics/usage_events.h"

#include <fcntl.h>
#include <unistd.h>

#include <iterator>

namespace fleetor {

UsageEvents::UsageEvents(const ReportSetup& setup, Date started) : version_(setup.version) {
  if (setup.address.empty() || !makeReportFolder(setup.folder)) return;
  file_ = OwnFile::open(reportPath(setup.folder, usageReport, started), O_WRONLY | O_CREAT | O_TRUNC);
}

void UsageEvents::count(const std::string& event) {
  if (!file_) return;
  ++counts_[event];
  std::string text = "Fleetor usage\nversion: " + version_ + "\n";
  for (const auto& [name, times] : counts_)
    text += name + ": " + std::to_string(times) + "\n";
  // Rewritten each time, because a run may end at any moment; the text only grows. A partly written file
  // would have wrong counts, so a full disk ends the counting.
  if (::pwrite(file_->descriptor(), text.data(), text.size(), 0) == std::ssize(text)) return;
  [[maybe_unused]] const int ignored = ::ftruncate(file_->descriptor(), 0);
  file_.reset();
}

}  // namespace fleetor
