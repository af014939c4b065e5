#pragma once

#include <string>

namespace fleetor {

/// The name of the items in the system's key store that count, in a file that only its user can read. Without
/// the file none counts, so that removing it signs out even where the key store cannot be used and the disk
/// is full. A change has reached the disk when the call returns; a new name takes the place of the old one as
/// a whole or not at all. One thread at a time.
class KeyStoreMark {
 public:
  explicit KeyStoreMark(std::string path) : path_(std::move(path)) {}

  std::string read() const;                   ///< empty: no mark
  bool write(const std::string& name) const;  ///< false: no mark, or still the one from before
  void remove() const;                        ///< reports on standard error when it is still there

 private:
  std::string path_;
};

}  // namespace fleetor
