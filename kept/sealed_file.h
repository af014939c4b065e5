#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "kept/seal_key.h"

namespace fleetor {

/// A small database of vehicles and their last readings, in a file that only its user can read. What it holds
/// beside numbers and moments is sealed: a text that was changed, or taken over from another row, does not
/// open. At most `mostVehicles`, each text at most `longestText` bytes. One thread at a time.
class SealedFile {
 public:
  static constexpr std::int64_t mostVehicles = 1000;
  static constexpr std::size_t longestText = std::size_t{64} << 10;

  using Moment = std::chrono::sys_seconds;

  struct Vehicle {
    std::int64_t id = 0;
    std::string text;
  };
  struct List {
    std::vector<Vehicle> vehicles;  ///< from the first one on
    bool isComplete = false;        ///< there are no others
    Moment arrived;
  };
  struct Reading {
    std::int64_t vehicle = 0;
    std::string text;
    Moment arrived;
  };
  struct Changes {
    std::optional<List> list;
    std::vector<Reading> readings;  ///< those of vehicles that are not in the file are ignored
  };
  struct Row {
    Vehicle vehicle;
    Moment listed;
    std::optional<Reading> reading;
  };

  enum class Outcome {
    done,
    unusable,  ///< the disk is full, the folder cannot be written to, and the like
    damaged,   ///< no such file, of a later format, or sealed with another key
  };

  explicit SealedFile(std::string path) : path_(std::move(path)) {}

  /// What arrived before `oldest` is removed. Without a file there are no rows, and none is made.
  Outcome read(const SealKey& key, Moment oldest, std::vector<Row>& rows) const;

  /// All changes or none.
  Outcome write(const SealKey& key, Moment oldest, const Changes& changes) const;

  /// Gives the file the name `path` + ".damaged", in place of an earlier one. False: it is still there.
  bool setAside() const;

  /// Removes it, also one that was set aside. In a read-only folder they are emptied. False: something is
  /// still there.
  bool remove() const;

 private:
  std::string path_;
};

}  // namespace fleetor
