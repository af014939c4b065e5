#include "values/times.h"

#include "values/cursor.h"

namespace fleetor {

namespace {

using namespace std::chrono;

constexpr seconds longestDuration = hours(24 * 3653);

constexpr std::optional<ServiceDay> takeDay(Cursor& cursor) {
  const auto y = cursor.takeDigits(4);
  const std::string_view separator = cursor.rest().substr(0, 1);
  if (!y || (separator != "-" && separator != "/") || !cursor.take(separator)) return std::nullopt;
  const auto m = cursor.takeDigits(2);
  if (!m || !cursor.take(separator)) return std::nullopt;
  const auto d = cursor.takeDigits(2);
  if (!d) return std::nullopt;
  const year_month_day day = year(*y) / *m / *d;
  if (!day.ok() || *y < 2000 || *y > 2999) return std::nullopt;
  return ServiceDay(day);
}

constexpr std::optional<seconds> takeTimeOfDay(Cursor& cursor) {
  const auto h = cursor.takeDigits(2);
  if (!h || !cursor.take(":")) return std::nullopt;
  const auto m = cursor.takeDigits(2);
  if (!m) return std::nullopt;
  const auto s = cursor.take(":") ? cursor.takeDigits(2) : 0;
  if (!s || *m > 59 || *s > 59) return std::nullopt;
  const seconds time = hours(*h) + minutes(*m) + seconds(*s);
  return time <= days(1) ? std::optional(time) : std::nullopt;
}

constexpr std::optional<ServiceTime> takeTime(Cursor& cursor) {
  const auto day = takeDay(cursor);
  if (!day || !(cursor.take("T") || cursor.take(" "))) return std::nullopt;
  const auto time = takeTimeOfDay(cursor);
  return time ? std::optional(*day + *time) : std::nullopt;
}

/// "1:02:03".
constexpr std::optional<seconds> takeClock(Cursor& cursor) {
  const auto h = cursor.takeNumber(5);
  if (!h || !cursor.take(":")) return std::nullopt;
  const auto m = cursor.takeDigits(2);
  if (!m || !cursor.take(":")) return std::nullopt;
  const auto s = cursor.takeDigits(2);
  if (!s || *m > 59 || *s > 59) return std::nullopt;
  return hours(*h) + minutes(*m) + seconds(*s);
}

/// "1 h 5 min". Only the first unit may be more than fits into the next larger one.
constexpr std::optional<seconds> takeUnits(Cursor& cursor) {
  struct Unit {
    std::string_view name;
    seconds length;
    int most;
  };
  constexpr Unit units[] = {
      {"d", days(1), 0}, {"h", hours(1), 23}, {"min", minutes(1), 59}, {"s", seconds(1), 59}};
  seconds sum{0};
  bool begun = false;
  for (const Unit& unit : units) {
    Cursor ahead = cursor;
    const auto count = ahead.takeNumber(7);
    ahead.skipBlanks();
    if (!count || !ahead.take(unit.name)) continue;
    if (begun && *count > unit.most) return std::nullopt;
    begun = true;
    sum += *count * unit.length;
    cursor = ahead;
    cursor.skipBlanks();
  }
  return begun ? std::optional(sum) : std::nullopt;
}

template <class Value>
std::optional<Value> whole(Cursor& cursor, std::optional<Value> value) {
  return cursor.isAtEnd() ? value : std::nullopt;
}

}  // namespace

std::optional<ServiceDay> readDay(std::string_view text) {
  Cursor cursor(text);
  return whole(cursor, takeDay(cursor));
}

std::optional<ServiceTime> readTime(std::string_view text) {
  Cursor cursor(text);
  return whole(cursor, takeTime(cursor));
}

std::optional<ServiceTime> readTime(std::string_view text, ServiceDay day) {
  Cursor cursor(text);
  if (const auto time = takeTimeOfDay(cursor); time && cursor.isAtEnd()) return day + *time;
  return readTime(text);
}

std::optional<seconds> readDuration(std::string_view text) {
  Cursor clock(text), units(text);
  auto duration = whole(clock, takeClock(clock));
  if (!duration) duration = whole(units, takeUnits(units));
  return duration && *duration <= longestDuration ? duration : std::nullopt;
}

}  // namespace fleetor
