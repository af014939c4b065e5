#include "qt/device/whole_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace fleetor {

namespace {

constexpr int mostOfAName = 1000;

SaveOutcome outcomeOf(int error) {
  switch (error) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return SaveOutcome::diskFull;
    case EACCES:
    case EPERM:
    case EROFS:
      return SaveOutcome::forbidden;
    default:
      return SaveOutcome::failed;
  }
}

/// "folder/Van.gpx" as "folder/Van (2).gpx".
std::string numbered(const std::string& path, int number) {
  if (number == 1) return path;
  const auto slash = path.rfind('/');
  const auto dot = path.rfind('.');
  const bool hasEnding = dot != std::string::npos && (slash == std::string::npos || dot > slash + 1);
  const std::string suffix = " (" + std::to_string(number) + ')';
  return hasEnding ? path.substr(0, dot) + suffix + path.substr(dot) : path + suffix;
}

/// 0, or what went wrong.
int writeAll(int file, std::string_view piece) {
  while (!piece.empty()) {
    const ssize_t written = ::write(file, piece.data(), piece.size());
    if (written < 0 && errno != EINTR) return errno;
    if (written > 0) piece.remove_prefix(static_cast<std::size_t>(written));
  }
  return 0;
}

/// Gives the file its name. 0, or what went wrong.
int name(const std::string& part, std::string& path, bool replace) {
  if (replace) return std::rename(part.c_str(), path.c_str()) == 0 ? 0 : errno;
  for (int number = 1; number <= mostOfAName; ++number) {
    const std::string candidate = numbered(path, number);
    const bool isDone =
        ::renameat2(AT_FDCWD, part.c_str(), AT_FDCWD, candidate.c_str(), RENAME_NOREPLACE) == 0 ||
        // Some file systems cannot rename like that.
        (errno == EINVAL && ::access(candidate.c_str(), F_OK) != 0 &&
         std::rename(part.c_str(), candidate.c_str()) == 0);
    if (isDone) {
      path = candidate;
      return 0;
    }
    if (errno != EEXIST && errno != EINVAL) return errno;
  }
  return EEXIST;
}

}  // namespace

SaveOutcome writeWholeFile(std::string& path, bool replace,
                           const std::function<bool(const PieceSink&)>& write) {
  std::string part;
  int file = -1;
  for (int number = 1; file < 0; ++number) {
    part = path + ".part" + std::to_string(number);
    file = ::open(part.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0 && (errno != EEXIST || number == mostOfAName)) return outcomeOf(errno);
  }
  int error = 0;
  const bool isComplete = write([&](std::string_view piece) { return (error = writeAll(file, piece)) == 0; });
  if (error == 0 && !isComplete) error = EIO;
  if (error == 0 && ::fsync(file) != 0) error = errno;
  if (::close(file) != 0 && error == 0) error = errno;
  if (error == 0) error = name(part, path, replace);
  if (error == 0) return SaveOutcome::saved;
  ::unlink(part.c_str());
  return outcomeOf(error);
}

}  // namespace fleetor
