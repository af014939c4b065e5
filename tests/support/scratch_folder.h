#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace fleetor::test {

/// A folder of the test's own, gone with this object.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "fleetor-XXXXXX").string();
    if (::mkdtemp(name.data())) path_ = name;
  }
  ~ScratchFolder() { std::filesystem::remove_all(path_); }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace fleetor::test
