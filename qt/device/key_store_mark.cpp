#include "qt/device/key_store_mark.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>

namespace fleetor {
namespace {

bool synchronize(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return false;
  const bool done = ::fsync(file) == 0;
  ::close(file);
  return done;
}

std::string folderOf(const std::string& path) {
  return std::filesystem::path(path).parent_path();
}

bool writeWhole(const std::string& path, const std::string& text) {
  ::unlink(path.c_str());
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (file < 0) return false;
  const bool written = ::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
  const bool synchronized = ::fsync(file) == 0;
  return ::close(file) == 0 && written && synchronized;
}

}  // namespace

// Opening a pipe in its place must not block.
std::string KeyStoreMark::read() const {
  const int file = ::open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (file < 0) return {};
  std::array<char, 256> bytes;
  struct stat about {};
  const bool isFile = ::fstat(file, &about) == 0 && S_ISREG(about.st_mode);
  const ssize_t count = isFile ? ::read(file, bytes.data(), bytes.size()) : 0;
  ::close(file);
  return {bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
}

bool KeyStoreMark::write(const std::string& name) const {
  std::error_code ignored;
  std::filesystem::create_directories(folderOf(path_), ignored);
  const std::string whole = path_ + ".new";
  if (writeWhole(whole, name) && std::rename(whole.c_str(), path_.c_str()) == 0)
    return synchronize(folderOf(path_));
  ::unlink(whole.c_str());
  return false;
}

// In a read-only folder the file can still be emptied.
void KeyStoreMark::remove() const {
  const bool done =
      ::unlink(path_.c_str()) == 0
          ? synchronize(folderOf(path_))
          : ::access(path_.c_str(), F_OK) != 0 || (::truncate(path_.c_str(), 0) == 0 && synchronize(path_));
  if (!done) std::fputs("fleetor: the mark of the stored sign-in cannot be removed\n", stderr);
}

}  // namespace fleetor
