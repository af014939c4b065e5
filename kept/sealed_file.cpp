#include "kept/sealed_file.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <string_view>

namespace fleetor {

namespace {

constexpr std::int64_t formatNumber = 1;
constexpr const char* aboutFile = "last known";
constexpr int longestBlob = 1 << 20;

constexpr const char* tables =
    "CREATE TABLE seal (proof BLOB NOT NULL);"
    "CREATE TABLE kept (vehicle INTEGER PRIMARY KEY, place INTEGER NOT NULL, listed INTEGER NOT NULL,"
    " record BLOB NOT NULL, arrived INTEGER, reading BLOB);"
    "PRAGMA user_version = 1;";

/// An open database. After the first failure nothing is done any more.
class Database {
 public:
  explicit Database(const std::string& path) {
    note(sqlite3_open_v2(path.c_str(), &handle_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr));
    if (!isSound()) return;
    sqlite3_limit(handle_, SQLITE_LIMIT_LENGTH, longestBlob);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    runAll("PRAGMA cell_size_check = ON; PRAGMA synchronous = NORMAL;");
  }
  ~Database() { sqlite3_close(handle_); }
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  bool isSound() const { return code_ == SQLITE_OK; }
  void runAll(const char* statements) {
    if (isSound()) note(sqlite3_exec(handle_, statements, nullptr, nullptr, nullptr));
  }
  void rollBack() { sqlite3_exec(handle_, "ROLLBACK", nullptr, nullptr, nullptr); }

  /// Calls `take` with each row of the result.
  template <class Take, class... Values>
  void each(const char* sql, Take take, const Values&... values) {
    if (!isSound()) return;
    sqlite3_stmt* statement = nullptr;
    note(sqlite3_prepare_v2(handle_, sql, -1, &statement, nullptr));
    int place = 0;
    (bind(statement, ++place, values), ...);
    while (isSound()) {
      const int step = sqlite3_step(statement);
      if (step == SQLITE_DONE) break;
      if (step == SQLITE_ROW)
        take(statement);
      else
        note(step);
    }
    sqlite3_finalize(statement);
  }
  template <class... Values>
  void run(const char* sql, const Values&... values) {
    each(
        sql, [](sqlite3_stmt*) {}, values...);
  }
  std::int64_t number(const char* sql) {
    std::int64_t found = -1;
    each(sql, [&](sqlite3_stmt* row) { found = sqlite3_column_int64(row, 0); });
    return found;
  }

  SealedFile::Outcome outcome() const {
    switch (code_) {
      case SQLITE_OK:
        return SealedFile::Outcome::done;
      case SQLITE_PERM:
      case SQLITE_BUSY:
      case SQLITE_LOCKED:
      case SQLITE_NOMEM:
      case SQLITE_READONLY:
      case SQLITE_IOERR:
      case SQLITE_FULL:
      case SQLITE_CANTOPEN:
      case SQLITE_NOLFS:
      case SQLITE_AUTH:
        return SealedFile::Outcome::unusable;
      default:
        return SealedFile::Outcome::damaged;
    }
  }
  void noteDamage() { note(SQLITE_CORRUPT); }

 private:
  void note(int code) {
    if (isSound()) code_ = code & 0xff;
  }
  void bind(sqlite3_stmt* statement, int place, std::int64_t value) {
    if (isSound()) note(sqlite3_bind_int64(statement, place, value));
  }
  void bind(sqlite3_stmt* statement, int place, std::string_view blob) {
    if (isSound()) note(sqlite3_bind_blob64(statement, place, blob.data(), blob.size(), SQLITE_TRANSIENT));
  }

  sqlite3* handle_ = nullptr;
  int code_ = SQLITE_OK;
};

std::string_view blobOf(sqlite3_stmt* row, int column) {
  const auto* const bytes = static_cast<const char*>(sqlite3_column_blob(row, column));
  return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(row, column))};
}

std::int64_t secondsOf(SealedFile::Moment moment) {
  return moment.time_since_epoch().count();
}

SealedFile::Moment momentOf(std::int64_t seconds) {
  return SealedFile::Moment(std::chrono::seconds(seconds));
}

std::string aboutVehicle(std::int64_t id, std::int64_t listed) {
  return "vehicle " + std::to_string(id) + ' ' + std::to_string(listed);
}

std::string aboutReading(std::int64_t id, std::int64_t arrived) {
  return "reading " + std::to_string(id) + ' ' + std::to_string(arrived);
}

bool isNew(Database& database) {
  return database.number("PRAGMA user_version") == 0 &&
         database.number("SELECT count(*) FROM sqlite_schema") == 0;
}

void prove(Database& database, const SealKey& key) {
  bool isProved = false;
  if (database.number("PRAGMA user_version") == formatNumber)
    database.each("SELECT proof FROM seal LIMIT 1",
                  [&](sqlite3_stmt* row) { isProved = key.open(blobOf(row, 0), aboutFile).has_value(); });
  if (!isProved) database.noteDamage();
}

void prune(Database& database, SealedFile::Moment oldest) {
  database.run("DELETE FROM kept WHERE listed < ?1 OR place >= ?2", secondsOf(oldest),
               SealedFile::mostVehicles);
  database.run("UPDATE kept SET arrived = NULL, reading = NULL WHERE arrived < ?1", secondsOf(oldest));
}

void writeList(Database& database, const SealKey& key, const SealedFile::List& list) {
  // What the list has at these places takes the place of what was there.
  constexpr std::int64_t noPlace = -1;
  const auto count = static_cast<std::int64_t>(list.vehicles.size());
  database.run("UPDATE kept SET place = ?1 WHERE place < ?2", noPlace,
               list.isComplete ? SealedFile::mostVehicles : count);
  std::int64_t place = 0;
  for (const auto& [id, text] : list.vehicles) {
    if (text.size() > SealedFile::longestText) continue;
    database.run(
        "INSERT INTO kept (vehicle, place, listed, record) VALUES (?1, ?2, ?3, ?4) ON CONFLICT (vehicle)"
        " DO UPDATE SET place = excluded.place, listed = excluded.listed, record = excluded.record",
        id, place++, secondsOf(list.arrived),
        std::string_view(key.seal(text, aboutVehicle(id, secondsOf(list.arrived)))));
  }
  database.run("DELETE FROM kept WHERE place = ?1", noPlace);
}

/// Null: none is there. A pipe or a folder in the file's place is a damaged file.
std::optional<bool> isPlainFile(const std::string& path) {
  struct stat about {};
  if (::lstat(path.c_str(), &about) != 0) return std::nullopt;
  return S_ISREG(about.st_mode);
}

// SQLite gives its journal the rights of the file.
bool make(const std::string& path) {
  std::error_code ignored;
  std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600);
  return file >= 0 && ::close(file) == 0;
}

bool removeOne(const std::string& path) {
  std::error_code problem;
  std::filesystem::remove_all(path, problem);
  return !problem || ::truncate(path.c_str(), 0) == 0;
}

std::string journalOf(const std::string& path) {
  return path + "-journal";
}

std::string asideOf(const std::string& path) {
  return path + ".damaged";
}

}  // namespace

SealedFile::Outcome SealedFile::read(const SealKey& key, Moment oldest, std::vector<Row>& rows) const {
  const auto isPlain = isPlainFile(path_);
  if (!isPlain) return Outcome::done;
  if (!*isPlain) return Outcome::damaged;
  Database database(path_);
  if (isNew(database)) return database.outcome();
  prove(database, key);
  prune(database, oldest);
  database.each(
      "SELECT vehicle, listed, record, arrived, reading FROM kept ORDER BY place LIMIT ?1",
      [&](sqlite3_stmt* row) {
        const std::int64_t id = sqlite3_column_int64(row, 0);
        const std::int64_t listed = sqlite3_column_int64(row, 1);
        auto record = key.open(blobOf(row, 2), aboutVehicle(id, listed));
        if (!record) return database.noteDamage();
        Row& found = rows.emplace_back(Row{{id, *std::move(record)}, momentOf(listed), {}});
        if (sqlite3_column_type(row, 4) == SQLITE_NULL) return;
        const std::int64_t arrived = sqlite3_column_int64(row, 3);
        auto reading = key.open(blobOf(row, 4), aboutReading(id, arrived));
        if (!reading) return database.noteDamage();
        found.reading = Reading{id, *std::move(reading), momentOf(arrived)};
      },
      mostVehicles);
  if (!database.isSound()) rows.clear();
  return database.outcome();
}

SealedFile::Outcome SealedFile::write(const SealKey& key, Moment oldest, const Changes& changes) const {
  if (!isPlainFile(path_).value_or(true)) return Outcome::damaged;
  if (!make(path_)) return Outcome::unusable;
  Database database(path_);
  database.runAll("BEGIN IMMEDIATE");
  if (isNew(database)) {
    database.runAll(tables);
    database.run("INSERT INTO seal (proof) VALUES (?1)", std::string_view(key.seal("", aboutFile)));
  } else {
    prove(database, key);
  }
  if (changes.list) writeList(database, key, *changes.list);
  for (const auto& [id, text, arrived] : changes.readings)
    if (text.size() <= longestText)
      database.run("UPDATE kept SET arrived = ?2, reading = ?3 WHERE vehicle = ?1", id, secondsOf(arrived),
                   std::string_view(key.seal(text, aboutReading(id, secondsOf(arrived)))));
  prune(database, oldest);
  database.runAll("COMMIT");
  if (!database.isSound()) database.rollBack();
  return database.outcome();
}

bool SealedFile::setAside() const {
  removeOne(journalOf(path_));
  removeOne(asideOf(path_));
  return std::rename(path_.c_str(), asideOf(path_).c_str()) == 0;
}

bool SealedFile::remove() const {
  bool isGone = true;
  for (const auto& path : {path_, journalOf(path_), asideOf(path_)})
    isGone = removeOne(path) && isGone;
  return isGone;
}

}  // namespace fleetor
