#include "qt/device/key_store_mark.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

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
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (file < 0) return false;
  const bool written = ::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
  const bool synchronized = ::fsync(file) == 0;
  return ::close(file) == 0 && written && synchronized;
}

}  // namespace

std::string KeyStoreMark::read() const {
  std::ifstream file(path_);
  std::string name;
  std::getline(file, name);
  return name;
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

// Where the folder cannot be changed, the file may still be emptied.
bool KeyStoreMark::remove() const {
  if (::unlink(path_.c_str()) == 0) return synchronize(folderOf(path_));
  return ::access(path_.c_str(), F_OK) != 0 || (::truncate(path_.c_str(), 0) == 0 && synchronize(path_));
}

}  // namespace fleetor
