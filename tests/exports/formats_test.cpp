#include "exports/formats.h"

#include "day_of_tests.h"
#include "exports/piece_writer.h"
#include "support/testing.h"

namespace fleetor::test {
namespace {

constexpr const char* hostile = "=<b>&\"]]>\x01\n\\é\xEF\xBF\xBF";

template <class Write, class... Words>
std::string written(Write write, const DayRecord& day, const Words&... words) {
  std::string file;
  EXPECT_TRUE(write(day, words..., [&](std::string_view piece) {
    file += piece;
    return true;
  }));
  return file;
}

TEST(Formats, EscapeTheTextsOfTheService) {
  const DayRecord day = dayOfTests(hostile);
  const std::string xml = "<name>=&lt;b&gt;&amp;&quot;]]&gt;\xEF\xBF\xBD \\é\xEF\xBF\xBD</name>";
  EXPECT_THAT(written(writeGpx, day), HasSubstr(xml));
  EXPECT_THAT(written(writeKml, day), HasSubstr(xml));
  EXPECT_THAT(written(writeGeoJson, day), HasSubstr(R"("address":"=<b>&\"]]>\u0001\u000a\\é)"));
  EXPECT_THAT(written(writeCsv, day, englishWords()), HasSubstr("0:01:48,-1.2,Depot,\"'=<b>&\"\"]]>  \\é"));
}

TEST(Formats, ASpreadsheetFindsNoFormulas) {
  const std::pair<const char*, const char*> cells[] = {
      {"=1+1", "'=1+1"}, {"+48 600", "'+48 600"},   {"-1.5", "-1.5"},
      {"-1+1", "'-1+1"}, {"@SUM(A1)", "'@SUM(A1)"}, {"\t=1", "' =1"},
      {"a=b", "a=b"},    {"a;b", "\"a;b\""},        {"a,b", "\"a,b\""},
      {"", ""},
  };
  for (const auto& [text, cell] : cells)
    EXPECT_EQ(csvCell(text), cell) << text;
}

TEST(Formats, GiveTheTimesOfTheServiceAsDescriptionsInItsOwnWords) {
  DayRecord day = dayOfTests("Mill Lane");
  const auto gpx = [&] { return written(writeGpx, day); };
  EXPECT_THAT(gpx(),
              HasSubstr("<trkpt lat=\"50.060000\" lon=\"19.940000\"><desc>2026-11-20T07:03:12</desc>"));
  EXPECT_THAT(gpx(), HasSubstr("<desc>2026-11-20 07:05:00, 0:10:00</desc></wpt>"));
  EXPECT_THAT(gpx(), Not(HasSubstr("<time>")));
  DayPoints points = *day.points;
  points.seconds.clear();
  points.kilometres.clear();
  day.points = std::make_shared<const DayPoints>(points);
  EXPECT_THAT(gpx(),
              HasSubstr("<trkpt lat=\"50.080000\" lon=\"-0.500000\"><desc>today, late</desc></trkpt>"));
  EXPECT_THAT(written(writeGeoJson, day), Not(HasSubstr("secondsOfDay")));
}

TEST(Formats, LeaveOutPointsWithoutAPosition) {
  DayRecord day = dayOfTests("Mill Lane");
  DayPoints points = *day.points;
  points.coordinates[1] = {};
  points.unplaced = {1};
  day.points = std::make_shared<const DayPoints>(points);
  for (const auto write : {writeGpx, writeKml, writeGeoJson}) {
    const std::string file = written(write, day);
    EXPECT_THAT(file, Not(HasSubstr("0.000000")));
    EXPECT_THAT(file, HasSubstr("50.08")) << "the points after it";
  }
  EXPECT_THAT(written(writeGpx, day), HasSubstr("<desc>today, late</desc>")) << "with their own times";
  EXPECT_THAT(written(writeGeoJson, day),
              HasSubstr("\"secondsOfDay\":[25392,86399],\n\"kilometres\":[0.000,9.500]"));
}

TEST(Formats, StopAtTheFirstPieceThatIsRefused) {
  DayPoints points;
  points.coordinates.assign(10'000, {50, 20});
  points.addresses.assign(10'000, 0);
  points.addressTexts = {""};
  DayRecord day = dayOfTests("Van");
  day.points = std::make_shared<const DayPoints>(std::move(points));
  for (const auto write : {writeGpx, writeKml, writeGeoJson}) {
    int pieces = 0;
    std::size_t longest = 0;
    EXPECT_FALSE(write(day, [&](std::string_view piece) {
      longest = std::max(longest, piece.size());
      return ++pieces < 2;
    }));
    EXPECT_EQ(pieces, 2);
    EXPECT_LT(longest, std::size_t{70'000});
  }
}

TEST(Formats, FilesHaveNamesThatEveryFileSystemTakes) {
  EXPECT_EQ(fileNameOf(dayOfTests("../a:b\n*")), "_._a_b__ 2026-11-20");
  EXPECT_EQ(fileNameOf(dayOfTests("")), "2026-11-20");
  std::string longName = "a";
  for (int i = 0; i < 100; ++i)
    longName += "é";
  EXPECT_EQ(fileNameOf(dayOfTests(longName)), longName.substr(0, 79) + " 2026-11-20");
}

}  // namespace
}  // namespace fleetor::test
