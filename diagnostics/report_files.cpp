#include "diagnostics/report_files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <string_view>
#include <system_error>
#include <utility>

namespace fleetor {

namespace fs = std::filesystem;

namespace {

constexpr int mostOfAKind = 5;
constexpr auto longestKept = std::chrono::days(30);
constexpr std::size_t largestReport = std::size_t{1} << 20;  // bytes

/// The kind of a report and the start of its run, from its file name; nothing for any other file name.
struct ReportName {
  std::string kind;
  std::int64_t seconds = 0;
};

std::optional<ReportName> readName(const fs::path& path) {
  const std::string stem = path.stem().string();
  for (const char* kind : {crashReport, usageReport}) {
    const std::string start = std::string(kind) + "-";
    if (!stem.starts_with(start)) continue;
    std::int64_t seconds = 0;
    const auto [rest, error] =
        std::from_chars(stem.data() + start.size(), stem.data() + stem.size(), seconds);
    if (error == std::errc() && *rest == '-') return ReportName{kind, seconds};
  }
  return std::nullopt;
}

std::int64_t secondsOf(Date date) {
  return std::chrono::floor<std::chrono::seconds>(date).time_since_epoch().count();
}

bool writePacked(const fs::path& path, const std::string& text) {
  const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (descriptor < 0) return false;
  const gzFile file = gzdopen(descriptor, "wb9");  // its own open would let others read it
  if (!file) {
    ::close(descriptor);
    return false;
  }
  const bool written = gzwrite(file, text.data(), static_cast<unsigned>(text.size())) > 0;
  return gzclose(file) == Z_OK && written;
}

void pack(const fs::path& path) {
  const auto file = OwnFile::open(path, O_RDONLY);
  if (!file) return;
  const std::string text = file->read();
  std::error_code ignored;
  fs::path packed = path;
  packed.replace_extension(".gz");
  // Written under a temporary name and renamed when complete.
  const fs::path draft = packed.string() + ".draft";
  if (!text.empty()) {
    if (!writePacked(draft, text)) {
      fs::remove(draft, ignored);
      return;
    }
    std::error_code error;
    fs::rename(draft, packed, error);
    if (error) return;
  }
  fs::remove(path, ignored);
}

}  // namespace

std::optional<OwnFile> OwnFile::open(const fs::path& path, int flags) {
  const int descriptor = ::open(path.c_str(), flags | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (descriptor < 0) return std::nullopt;
  OwnFile file(descriptor);
  struct stat status {};
  // Another client may have sent and deleted the file between the two calls.
  if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0 || ::fstat(descriptor, &status) != 0 ||
      status.st_nlink == 0)
    return std::nullopt;
  return file;
}

OwnFile::OwnFile(OwnFile&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}

OwnFile& OwnFile::operator=(OwnFile&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  return *this;
}

OwnFile::~OwnFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

std::string OwnFile::read() const {
  std::string text;
  std::array<char, 4096> piece{};
  while (text.size() < largestReport) {
    const ssize_t got = ::pread(descriptor_, piece.data(), piece.size(), static_cast<off_t>(text.size()));
    if (got <= 0) break;
    text.append(piece.data(), static_cast<std::size_t>(got));
  }
  return text;
}

fs::path reportPath(const fs::path& folder, const char* kind, Date started) {
  return folder / (std::string(kind) + "-" + std::to_string(secondsOf(started)) + "-" +
                   std::to_string(::getpid()) + ".txt");
}

bool makeReportFolder(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (!error) fs::permissions(folder, fs::perms::owner_all, error);
  return !error;
}

std::vector<fs::path> packReports(const fs::path& folder, Date now) {
  std::vector<fs::path> left;
  std::vector<std::pair<std::int64_t, fs::path>> packed;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, error))
    if (entry.path().extension() == ".txt" && readName(entry.path())) left.push_back(entry.path());
  for (const auto& path : left)
    pack(path);
  for (const auto& entry : fs::directory_iterator(folder, error))
    if (const auto name = readName(entry.path()); name && entry.path().extension() == ".gz")
      packed.emplace_back(name->seconds, entry.path());

  std::sort(packed.rbegin(), packed.rend());
  const std::int64_t oldest = secondsOf(now - longestKept);
  std::vector<fs::path> kept;
  for (const char* kind : {crashReport, usageReport}) {
    int count = 0;
    for (const auto& [seconds, path] : packed) {
      if (readName(path)->kind != kind) continue;
      if (seconds >= oldest && count++ < mostOfAKind)
        kept.push_back(path);
      else
        fs::remove(path, error);
    }
  }
  return kept;
}

}  // namespace fleetor
