#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/clock.h"

namespace fleetor {

inline constexpr const char* crashReport = "crash";
inline constexpr const char* usageReport = "usage";

/// An open file under an exclusive lock: no other client touches what this one still writes or sends. The
/// lock ends with the process at the latest.
class OwnFile {
 public:
  /// Opens the file with the flags of open(2). Nothing when it is missing or belongs to another user.
  static std::optional<OwnFile> open(const std::filesystem::path& path, int flags);

  OwnFile(OwnFile&& other) noexcept;
  OwnFile& operator=(OwnFile&& other) noexcept;
  ~OwnFile();

  int descriptor() const { return descriptor_; }

  /// From the beginning to the end; the first megabyte of a file that is larger.
  std::string read() const;

 private:
  explicit OwnFile(int descriptor) : descriptor_(descriptor) {}

  int descriptor_;
};

/// Where this run writes its report of that kind: "crash-SECONDS-PROCESS.txt".
std::filesystem::path reportPath(const std::filesystem::path& folder, const char* kind, Date started);

/// Makes the folder, and makes it this user's only, also when it was there. False when that failed.
bool makeReportFolder(const std::filesystem::path& folder);

/// Packs (gzip) what earlier runs have left in the folder, and deletes what is too much: of each kind the
/// newest five stay, none longer than 30 days. Files of other names are left alone. Returns the packed ones,
/// newest first. Any thread.
std::vector<std::filesystem::path> packReports(const std::filesystem::path& folder, Date now);

}  // namespace fleetor
