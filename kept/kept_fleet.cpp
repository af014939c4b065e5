#include "kept/kept_fleet.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "kept/in_turn.h"
#include "kept/seal_key.h"
#include "kept/sealed_file.h"

namespace fleetor {

namespace {

constexpr Seconds gathering{60};
constexpr Seconds firstGathering{2};  ///< of a new sign-in
constexpr std::chrono::days keptFor{30};
constexpr const char* keyIdentifier = "Fleetor_Kept";

const SecItem keyItem{{sec::itemClass, sec::genericPassword},
                      {sec::generic, keyIdentifier},
                      {sec::accessible, sec::accessibleAlwaysThisDeviceOnly}};

SealedFile::Moment secondsOf(Date moment) {
  return std::chrono::floor<std::chrono::seconds>(moment);
}

template <class R>
std::optional<R> recordOf(std::string text) {
  auto json = decodeJSON(std::move(text));
  if (!json) return std::nullopt;
  auto record = JSONModel::initWithDictionary<R>(std::move(*json));
  return record ? std::optional(std::move(*record)) : std::nullopt;
}

// A record that this version cannot read any more is left out.
std::shared_ptr<const KeptFleet::List> listOf(std::vector<SealedFile::Row> rows) {
  auto list = std::make_shared<KeptFleet::List>();
  for (auto& row : rows) {
    auto vehicle = recordOf<Vehicle>(std::move(row.vehicle.text));
    if (!vehicle) continue;
    auto& entry = list->entries.emplace_back(KeptFleet::Entry{*std::move(vehicle), nullptr, {}});
    list->asOf = std::max<Date>(list->asOf, row.listed);
    if (!row.reading) continue;
    auto live = recordOf<Live>(std::move(row.reading->text));
    if (!live) continue;
    entry.live = std::make_shared<const Live>(*std::move(live));
    entry.arrived = row.reading->arrived;
    list->asOf = std::max<Date>(list->asOf, entry.arrived);
  }
  return list->entries.empty() ? nullptr : list;
}

}  // namespace

/// What is done with the file, one after the other.
class KeptFleet::File {
 public:
  using Outcome = SealedFile::Outcome;

  explicit File(std::string path) : sealed_(std::move(path)) {}

  /// What has gone wrong since this was called last.
  std::vector<Problem> takeProblems() { return std::exchange(problems_, {}); }

  std::shared_ptr<const List> read(const SealKey& key, Date now) {
    std::vector<SealedFile::Row> rows;
    if (sealed_.read(key, secondsOf(now) - keptFor, rows) == Outcome::damaged) setAside();
    return listOf(std::move(rows));
  }

  bool write(const SealKey& key, Date now, const Gathered& gathered) {
    SealedFile::Changes changes;
    if (gathered.vehicles) {
      changes.list = SealedFile::List{{}, gathered.isComplete, secondsOf(gathered.listed)};
      for (const Vehicle& vehicle : *gathered.vehicles)
        changes.list->vehicles.push_back({vehicle.vehicleId, JSONModel::toJSONString(vehicle)});
    }
    for (const auto& [id, reading] : gathered.readings)
      changes.readings.push_back({id, JSONModel::toJSONString(*reading.live), secondsOf(reading.arrived)});
    const auto oldest = secondsOf(now) - keptFor;
    Outcome outcome = sealed_.write(key, oldest, changes);
    if (outcome == Outcome::damaged && setAside()) outcome = sealed_.write(key, oldest, changes);
    if (outcome != Outcome::done) problems_.push_back(Problem::unwritten);
    return outcome == Outcome::done;
  }

  void remove() {
    if (!sealed_.remove()) problems_.push_back(Problem::unwritten);
  }

 private:
  bool setAside() {
    const bool isDone = sealed_.setAside();
    if (isDone) problems_.push_back(Problem::setAside);
    return isDone;
  }

  SealedFile sealed_;
  std::vector<Problem> problems_;
};

KeptFleet::KeptFleet(Queues& queues, const Clock& clock, KeyStore& keyStore, std::string path,
                     std::function<void(Problem)> report)
    : queues_(queues),
      clock_(clock),
      keyStore_(keyStore),
      report_(std::move(report)),
      turns_(std::make_shared<InTurn>(queues)),
      file_(std::make_shared<File>(std::move(path))),
      until_(std::make_shared<KeptFleet*>(this)) {}

KeptFleet::~KeptFleet() {
  if (key_) writeNow();
  until_.reset();
  turns_->finish();
}

void KeptFleet::begin() {
  if (std::exchange(hasBegun_, true)) return;
  key_ = storedKey();
  isNew_ = !key_;
  if (isNew_) runOnFile([](File& file) { file.remove(); });
}

std::shared_ptr<const SealKey> KeptFleet::storedKey() const {
  SecItem query = keyItem;
  query[sec::returnData] = "1";
  const auto found = keyStore_.copyMatching(query);
  const auto value = found ? found->find(sec::valueData) : SecItem::const_iterator();
  const auto key = found && value != found->end() ? SealKey::fromText(value->second) : std::nullopt;
  return key ? std::make_shared<const SealKey>(*key) : nullptr;
}

void KeptFleet::takeVehicles(const std::vector<Vehicle>& vehicles, bool complete) {
  if (!hasBegun_) return;
  const auto kept = std::min(vehicles.size(), static_cast<std::size_t>(SealedFile::mostVehicles));
  gathered_.vehicles.emplace(vehicles.begin(), vehicles.begin() + static_cast<std::ptrdiff_t>(kept));
  gathered_.isComplete = complete;
  gathered_.listed = clock_.now();
  changed();
}

void KeptFleet::takeReading(std::shared_ptr<const Live> live) {
  if (!hasBegun_) return;
  const std::int64_t id = live->vehicle().vehicleId;
  gathered_.readings.insert_or_assign(id, Reading{std::move(live), clock_.now()});
  changed();
}

void KeptFleet::changed() {
  if (std::exchange(isWaiting_, true)) return;
  queues_.mainAfter(isNew_ ? firstGathering : gathering, [until = std::weak_ptr(until_)] {
    const auto self = until.lock();
    if (!self) return;
    (*self)->isWaiting_ = false;
    (*self)->writeNow();
  });
}

// The key is made once the key store is known to keep the sign-in, so that a locked one asks its user no
// second time; it is used once that is kept too.
void KeptFleet::writeNow() {
  if (gathered_.isEmpty() || !keyStore_.isKept()) return;
  if (!key_) {
    key_ = std::make_shared<const SealKey>(SealKey::random());
    SecItem item = keyItem;
    item[sec::valueData] = key_->text();
    keyStore_.remove(keyItem);
    keyStore_.add(item);
    if (!keyStore_.isKept()) return changed();
  }
  isNew_ = false;
  runOnFile([key = key_, now = clock_.now(), gathered = std::exchange(gathered_, {}),
             until = std::weak_ptr(until_), &queues = queues_](File& file) mutable {
    if (file.write(*key, now, gathered)) return;
    queues.main([until, gathered = std::move(gathered)]() mutable {
      if (const auto self = until.lock()) (*self)->takeBack(std::move(gathered));
    });
  });
}

// It waits for the next change, so that a full disk is not tried again and again.
void KeptFleet::takeBack(Gathered unwritten) {
  if (!gathered_.vehicles && unwritten.vehicles) {
    gathered_.vehicles = std::move(unwritten.vehicles);
    gathered_.isComplete = unwritten.isComplete;
    gathered_.listed = unwritten.listed;
  }
  gathered_.readings.merge(unwritten.readings);
}

void KeptFleet::load(std::function<void(std::shared_ptr<const List>)> done) {
  writeNow();
  if (!key_) return;
  runOnFile([key = key_, now = clock_.now(), done = std::move(done), until = std::weak_ptr(until_),
             &queues = queues_](File& file) mutable {
    queues.main([until, done = std::move(done), list = file.read(*key, now)] {
      if (list && until.lock()) done(list);
    });
  });
}

void KeptFleet::forget() {
  keyStore_.remove(keyItem);
  key_.reset();
  hasBegun_ = isWaiting_ = false;
  gathered_ = {};
  until_ = std::make_shared<KeptFleet*>(this);
  runOnFile([](File& file) { file.remove(); });
}

void KeptFleet::runOnFile(std::function<void(File&)> task) {
  turns_->run([task = std::move(task), file = file_, until = std::weak_ptr(until_), &queues = queues_] {
    task(*file);
    for (const Problem problem : file->takeProblems())
      queues.main([until, problem] {
        if (const auto self = until.lock()) (*self)->report(problem);
      });
  });
}

void KeptFleet::report(Problem problem) {
  if (!std::exchange(hasReported_[static_cast<int>(problem)], true)) report_(problem);
}

}  // namespace fleetor
