#include "kept/kept_fleet.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/fleet.h"
#include "support/full_disk.h"
#include "support/memory_stores.h"
#include "support/scratch_folder.h"
#include "support/virtual_queues.h"

namespace fleetor::test {
namespace {

using std::chrono::hours;
using testing::ElementsAre;
using testing::IsEmpty;
using Problem = KeptFleet::Problem;

class Kept : public testing::Test {
 protected:
  Kept() { start(); }

  void start() {
    fleet.reset();
    fleet = std::make_unique<KeptFleet>(queues, queues, keyStore, path,
                                        [this](Problem problem) { problems.push_back(problem); });
    fleet->begin();
    queues.runUntilIdle();
  }

  static Vehicle vehicle(int id) {
    return *JSONModel::initWithDictionary<Vehicle>(*decodeJSON(vehicleJSON(id)));
  }
  void takeVehicles(const std::vector<int>& ids, bool complete = true) {
    std::vector<Vehicle> vehicles;
    vehicles.reserve(ids.size());
    for (const int id : ids)
      vehicles.push_back(vehicle(id));
    fleet->takeVehicles(vehicles, complete);
  }
  void takeReading(int id, int speed) {
    auto live = std::make_shared<Live>();
    live->vehicles = vehicle(id);
    live->speed = std::to_string(speed);
    live->street = "Long Street 5";
    for (Text Live::*text : {&Live::datetime, &Live::active, &Live::powerSupply, &Live::sig, &Live::direction,
                             &Live::fuel, &Live::rpm, &Live::odometer, &Live::temp})
      (*live).*text = "";
    for (Text LiveLed::*text : {&LiveLed::z1, &LiveLed::z3, &LiveLed::z4, &LiveLed::z6, &LiveLed::z8,
                                &LiveLed::z14, &LiveLed::z23, &LiveLed::z28, &LiveLed::z33})
      live->led.*text = "";
    live->location.lat = live->location.lon = "1";
    fleet->takeReading(live);
  }
  void keep(const std::vector<int>& ids) {
    takeVehicles(ids);
    for (const int id : ids)
      takeReading(id, 10 * id);
    queues.advance(Seconds(60));
  }

  std::shared_ptr<const KeptFleet::List> loaded() {
    std::shared_ptr<const KeptFleet::List> found;
    fleet->load([&](auto list) { found = list; });
    queues.runUntilIdle();
    return found;
  }
  /// "1:10 2" is vehicle 1 with a speed of 10, and vehicle 2 without a reading.
  std::string content() {
    std::string text;
    if (const auto list = loaded())
      for (const auto& [vehicle, live, arrived] : list->entries)
        text += (text.empty() ? "" : " ") + std::to_string(vehicle.vehicleId) +
                (live ? ":" + live->speed.str() : "");
    return text;
  }

  static std::string bytesOf(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  void alter(const char* sql) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sql;
    EXPECT_EQ(sqlite3_changes(database) > 0 || std::string(sql).starts_with("PRAGMA"), true) << sql;
    sqlite3_close(database);
  }

  ScratchFolder folder;
  std::string path = folder.path() / "data" / "last-known";
  MemoryKeyStore keyStore;
  VirtualQueues queues;
  std::vector<Problem> problems;
  std::unique_ptr<KeptFleet> fleet;
};

TEST_F(Kept, GivesTheNextRunTheListWithItsReadingsAndTheirTimes) {
  takeVehicles({3, 1, 2});
  queues.advance(Seconds(1));
  takeReading(1, 50);
  takeReading(1, 57);
  EXPECT_FALSE(std::filesystem::exists(path)) << "gathered";
  queues.advance(Seconds(1));
  const std::string bytes = bytesOf(path);
  EXPECT_TRUE(bytes.starts_with("SQLite"));
  for (const char* word : {"Vehicle", "KR 1", "Long Street", "speed"})
    EXPECT_EQ(bytes.find(word), std::string::npos) << word;
  using std::filesystem::perms;
  EXPECT_EQ(std::filesystem::status(path).permissions(), perms::owner_read | perms::owner_write);
  EXPECT_EQ(queues.waiting(), 0u) << "no timer while nothing changes";

  takeReading(2, 12);
  start();  // the end of a run writes what is gathered
  EXPECT_EQ(content(), "3 1:57 2:12");
  const auto list = loaded();
  ASSERT_TRUE(list);
  EXPECT_EQ(list->entries[1].vehicle, vehicle(1));
  EXPECT_EQ(list->entries[1].live->street, "Long Street 5");
  EXPECT_EQ(queues.now() - list->entries[1].arrived, std::chrono::seconds(1));
  EXPECT_EQ(list->asOf, list->entries[2].arrived) << "the latest of all";
}

TEST_F(Kept, ReplacesThePlacesThatAnAnswerCovers) {
  keep({1, 2, 3, 4});
  const struct {
    std::vector<int> ids;
    bool isComplete;
    const char* content;
  } lists[] = {
      {{2, 9}, false, "2:20 9 3:30 4:40"},
      {{4, 2}, false, "4:40 2:20 3:30"},
      {{2, 3}, true, "2:20 3:30"},
      {{}, true, ""},
  };
  for (const auto& [ids, isComplete, wanted] : lists) {
    takeVehicles(ids, isComplete);
    EXPECT_EQ(content(), wanted);
  }
  takeReading(7, 70);
  EXPECT_EQ(content(), "") << "not in the list";
}

TEST_F(Kept, HasBounds) {
  std::vector<int> many(1001);
  for (std::size_t i = 0; i < many.size(); ++i)
    many[i] = static_cast<int>(i) + 1;
  takeVehicles(many);
  ASSERT_TRUE(loaded());
  EXPECT_EQ(loaded()->entries.size(), 1000u);

  keep({1, 2});
  queues.advance(hours(24 * 29));
  takeVehicles({1}, false);
  EXPECT_EQ(content(), "1:10 2:20");
  queues.advance(hours(48));
  EXPECT_EQ(content(), "1") << "of its reading and of the other vehicle 31 days ago";
  queues.advance(hours(24 * 29));
  EXPECT_EQ(content(), "");
}

TEST_F(Kept, IsWrittenOnlyWhileTheKeyStoreKeepsItsItems) {
  keyStore.keeps = false;
  keep({1});
  queues.advance(hours(1));
  start();
  EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
  EXPECT_THAT(keyStore.items(), IsEmpty());

  keep({1});
  keyStore.keeps = true;
  takeReading(1, 60);
  queues.advance(Seconds(60));
  EXPECT_EQ(content(), "1:60") << "nothing was lost";
}

TEST_F(Kept, IsSetAsideWhenItCannotBeRead) {
  const auto overwrite = [&](std::size_t from) {
    std::fstream(path, std::ios::in | std::ios::out | std::ios::binary)
        .seekp(static_cast<std::streamoff>(from))
        .write(std::string(2000, 'x').data(), 2000);
  };
  const std::vector<std::function<void()>> faults{
      [&] { overwrite(0); },
      [&] { overwrite(4096); },
      [&] { std::filesystem::resize_file(path, 5000); },
      [&] { alter("PRAGMA user_version = 2"); },
      [&] {
        alter("UPDATE kept SET reading = (SELECT reading FROM kept WHERE vehicle = 2) WHERE vehicle = 1");
      },
      [&] { alter("UPDATE kept SET arrived = arrived + 60 WHERE vehicle = 1"); },
      [&] { alter("UPDATE kept SET listed = listed + 60"); },
      [&] { keyStore.items().at(0)[sec::valueData] = std::string(64, 'a'); },
      [&] {
        std::filesystem::remove(path);
        std::filesystem::create_directory(path);
      },
  };
  for (std::size_t i = 0; i < faults.size(); ++i) {
    SCOPED_TRACE(i);
    start();
    keep({1, 2});
    ASSERT_EQ(content(), "1:10 2:20");
    std::filesystem::remove_all(path + ".damaged");
    faults[i]();
    problems.clear();
    start();
    EXPECT_EQ(content(), "");
    EXPECT_THAT(problems, ElementsAre(Problem::setAside));
    EXPECT_TRUE(std::filesystem::exists(path + ".damaged"));
    keep({3});
    EXPECT_EQ(content(), "3:30");
  }
  // Noticed by a write, which loses nothing.
  overwrite(0);
  start();
  keep({4});
  EXPECT_EQ(content(), "4:40");
}

TEST_F(Kept, ForgetsAtOnceAndForEver) {
  keep({1});
  std::ofstream(path + ".damaged") << "earlier";
  bool isLoaded = false;
  fleet->load([&](auto) { isLoaded = true; });
  takeReading(1, 99);
  fleet->forget();
  EXPECT_THAT(keyStore.items(), IsEmpty());
  takeReading(1, 100);
  queues.advance(hours(1));
  EXPECT_FALSE(isLoaded);
  EXPECT_TRUE(std::filesystem::is_empty(folder.path() / "data"));

  keep({1});
  EXPECT_TRUE(std::filesystem::is_empty(folder.path() / "data")) << "before the next sign-in";
  fleet->begin();
  keep({2});
  EXPECT_EQ(content(), "2:20");
}

TEST_F(Kept, BelongsToTheSignInWhoseKeyIsInTheKeyStore) {
  keep({1});
  keyStore.items().clear();
  start();
  EXPECT_FALSE(std::filesystem::exists(path));
  EXPECT_THAT(problems, IsEmpty());
}

TEST_F(Kept, LosesNothingToAFullDiskAndTriesAgainAtTheNextChange) {
  keep({1});
  takeVehicles({1, 2});
  takeReading(2, 20);
  {
    const FullDisk full(0);
    queues.advance(hours(1));
    takeReading(1, 11);
    queues.advance(hours(1));
  }
  EXPECT_THAT(problems, ElementsAre(Problem::unwritten)) << "reported once";
  EXPECT_EQ(content(), "1:11 2:20") << "by the next reading";
}

TEST_F(Kept, DoesWithoutAFolderThatItCanWriteTo) {
  std::ofstream(folder.path() / "data") << "a file where the folder would be";
  keep({1});
  EXPECT_EQ(content(), "");
  fleet->forget();
  queues.runUntilIdle();
  EXPECT_THAT(problems, ElementsAre(Problem::unwritten));
}

}  // namespace
}  // namespace fleetor::test
