#include "values/times.h"

#include <cstdio>

#include "support/testing.h"

namespace fleetor::test {
namespace {

using namespace std::chrono;

constexpr ServiceDay november20 = ServiceDay(year(2026) / 11 / 20);

std::string written(ServiceTime time) {
  const auto day = floor<days>(time);
  const year_month_day date{day};
  const hh_mm_ss clock{time - day};
  char text[40];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02d", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()));
  return text;
}

std::string readBack(std::string_view text) {
  const auto time = readTime(text, november20);
  return time ? written(*time) : "refused";
}

TEST(Times, AreReadInEverySortableFormAndInNoOther) {
  const std::pair<const char*, const char*> cases[] = {
      {"2026-11-20 07:03:12", "2026-11-20 07:03:12"},
      {"2026-11-20T07:03", "2026-11-20 07:03:00"},
      {" 2026/11/20 07:03:12\u00A0", "2026-11-20 07:03:12"},
      {"07:03", "2026-11-20 07:03:00"},
      {"07:03:59", "2026-11-20 07:03:59"},
      {"2024-02-29 23:59:59", "2024-02-29 23:59:59"},
      {"2026-11-20 24:00", "2026-11-21 00:00:00"},
      {"24:00:00", "2026-11-21 00:00:00"},
  };
  for (const auto& [text, time] : cases)
    EXPECT_EQ(readBack(text), time) << text;
  for (const std::string day : {"20-11-2026", "11/20/2026", "2026-11/20", "2026-02-29", "2026-13-01",
                                "2026-00-10", "26-11-20", "0000-00-00", "1999-12-31"})
    EXPECT_EQ(readBack(day + " 07:03"), "refused") << day;
  for (const std::string clock : {"", " 24:01", " 25:00", " 07:60", " 07:03:60", " 07:03:12.5", " 07:03:12Z",
                                  "T07:03:12+01:00", " 07:03 PM", "  07:03"})
    EXPECT_EQ(readBack("2026-11-20" + clock), "refused") << clock;
  for (const char* text : {"", "7:03", "07:3", "07", "07:03:1"})
    EXPECT_EQ(readBack(text), "refused") << text;
  EXPECT_EQ(readBack("2026-11-20 07:03:12" + std::string(32, ' ') + "x"), "refused");
  EXPECT_FALSE(readTime("07:03")) << "without a day";
  EXPECT_EQ(readDay("2026/11/20"), november20);
  EXPECT_FALSE(readDay("2026-11-20 07:03"));
}

// A wrong digit, a lost one or one too many is never read as another time than the one that stands there.
TEST(Times, AreReadBackFromWhatWasWrittenAndFromNothingNearIt) {
  for (ServiceTime time = ServiceDay(year(2000) / 1 / 1); time < ServiceDay(year(2040) / 1 / 1);
       time += seconds(86400 * 13 + 4999)) {
    const std::string text = written(time);
    ASSERT_EQ(readTime(text), time) << text;
    for (std::size_t i = 0; i < text.size(); ++i) {
      ASSERT_EQ(readBack(text.substr(0, i)), i == 16 ? text.substr(0, 16) + ":00" : "refused") << text << i;
      for (const char c : {'0', '1', '3', '9', ' ', '-', 'x'}) {
        std::string changed = text;
        changed[i] = c;
        const std::string read = readBack(changed);
        const bool isEndOfDay = changed.ends_with("24:00:00");
        ASSERT_TRUE(read == "refused" || read == changed || isEndOfDay) << changed << " is read as " << read;
      }
    }
  }
}

TEST(Times, DurationsAreReadAsClocksAndInUnits) {
  const std::pair<const char*, int> cases[] = {
      {"00:12:00", 720},       {"1:02:03", 3723},   {"123:00:00", 442800},
      {"12 min", 720},         {"1 h 5 min", 3900}, {"1h5min", 3900},
      {"90 min", 5400},        {"45 s", 45},        {"2 d 3 h", 183600},
      {"1 h\u00A010 s", 3610}, {" 0:00:00 ", 0},    {"", -1},
      {"12:00", -1},           {"0:60:00", -1},     {"0:00:60", -1},
      {"1:2:3", -1},           {"12", -1},          {"12 m", -1},
      {"12 minutes", -1},      {"5 min 1 h", -1},   {"1 h 60 min", -1},
      {"1 h 5", -1},           {"-1 h", -1},        {"1.5 h", -1},
      {"99999:00:00", -1},     {"9999999 d", -1}};
  for (const auto& [text, expected] : cases)
    EXPECT_EQ(readDuration(text).value_or(seconds(-1)).count(), expected) << text;
}

}  // namespace
}  // namespace fleetor::test
