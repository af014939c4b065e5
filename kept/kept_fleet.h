#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/vehicle_records.h"
#include "platform/clock.h"
#include "platform/key_store.h"
#include "platform/queues.h"

namespace fleetor {

class InTurn;
class SealKey;

/// The vehicles and their last readings as a file keeps them for a start without a network: at most 1,000
/// vehicles, for at most 30 days. The file is sealed with a key that lies in the key store, beside the
/// sign-in. As long as the key store does not keep what it is given, nothing is written.
///
/// Changes are gathered for a minute, the first ones of a sign-in for 2 seconds; all work on the file is
/// done on the global queue. A file that cannot be read is set aside, and a new one begins. Main thread only.
class KeptFleet {
 public:
  struct Entry {
    Vehicle vehicle;
    std::shared_ptr<const Live> live;  ///< may be null
    Date arrived;                      ///< the reading
  };
  struct List {
    std::vector<Entry> entries;  ///< in the order of the service; at least one
    Date asOf;                   ///< the latest moment from which something is
  };

  /// Each is reported once in a run.
  enum class Problem {
    setAside,   ///< the file was damaged
    unwritten,  ///< something could not be written, or removed
  };

  /// What is handed in outlives this object. `path` is that of the file.
  KeptFleet(Queues& queues, const Clock& clock, KeyStore& keyStore, std::string path,
            std::function<void(Problem)> report);
  ~KeptFleet();  ///< writes what is gathered, on this thread
  KeptFleet(const KeptFleet&) = delete;
  KeptFleet& operator=(const KeptFleet&) = delete;

  /// The user is signed in. What was kept for another sign-in is removed. A second call changes nothing.
  void begin();

  /// The list from its first vehicle on; `complete`: there are no others.
  void takeVehicles(const std::vector<Vehicle>& vehicles, bool complete);
  void takeReading(std::shared_ptr<const Live> live);

  void writeNow();  ///< without waiting for more

  /// Reads what is kept, and calls `done` if that is anything and the sign-in is still the same.
  void load(std::function<void(std::shared_ptr<const List>)> done);

  /// Removes all of it: the key first, without which the file is worthless even where it cannot be removed.
  void forget();

 private:
  struct Reading {
    std::shared_ptr<const Live> live;
    Date arrived;
  };
  struct Gathered {
    std::optional<std::vector<Vehicle>> vehicles;
    bool isComplete = false;
    Date listed;
    std::map<std::int64_t, Reading> readings;
    bool isEmpty() const { return !vehicles && readings.empty(); }
  };
  class File;

  std::shared_ptr<const SealKey> storedKey() const;
  void changed();
  void takeBack(Gathered unwritten);
  void runOnFile(std::function<void(File&)> task);
  void report(Problem problem);

  Queues& queues_;
  const Clock& clock_;
  KeyStore& keyStore_;
  std::function<void(Problem)> report_;
  std::shared_ptr<InTurn> turns_;
  std::shared_ptr<File> file_;
  bool hasBegun_ = false;
  std::shared_ptr<const SealKey> key_;
  Gathered gathered_;
  bool isNew_ = false;                 ///< nothing has been written since the sign-in
  bool isWaiting_ = false;             ///< for more
  std::shared_ptr<KeptFleet*> until_;  ///< reset when what was begun is to do nothing any more
  bool hasReported_[2] = {};
};

}  // namespace fleetor
