#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "diagnostics/report_files.h"
#include "diagnostics/report_post.h"

namespace fleetor {

/// Counts how often a handful of things happen in one run ("started", "signed in", "screen LiveDetailVC"), in
/// a file that the next start packs and offers. It identifies no user, place or time. Without an
/// address to offer it to, nothing is counted and no file made. Main thread.
class UsageEvents {
 public:
  UsageEvents(const ReportSetup& setup, Date started);

  bool isCounting() const { return file_.has_value(); }

  /// `event` is a constant of the program, never a text that the user or the service wrote.
  void count(const std::string& event);

 private:
  std::string version_;
  std::optional<OwnFile> file_;
  std::map<std::string, std::uint64_t> counts_;
};

}  // namespace fleetor
