#include <sys/stat.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <cstdlib>

#include "qt/device/desktop_device.h"
#include "qt/device/file_settings.h"
#include "qt/device/network_use_indicator.h"
#include "qt/device/system_clock.h"
#include "support/full_disk.h"
#include "support/testing.h"
#include "support/virtual_queues.h"

namespace fleetor {
namespace {

class DeviceFiles : public testing::Test {
 protected:
  std::string path(const std::string& name = "sub/standard.json") const {
    return folder_.filePath(QString::fromStdString(name)).toStdString();
  }
  static std::string read(const std::string& file) {
    QFile in(QString::fromStdString(file));
    return in.open(QIODevice::ReadOnly) ? in.readAll().toStdString() : "(none)";
  }
  static void write(const std::string& file, const char* text) {
    QFile out(QString::fromStdString(file));
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(text);
  }
  /// The one line that is written on standard error meanwhile.
  static std::string reported(const std::function<void()>& run) {
    testing::internal::CaptureStderr();
    run();
    std::string line = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1) << line;
    return line;
  }
  static std::int64_t number(const Settings& settings, const std::string& key) {
    const auto value = settings.object(key);
    return value && std::holds_alternative<std::int64_t>(*value) ? std::get<std::int64_t>(*value) : -1;
  }

  QTemporaryDir folder_;
};

TEST_F(DeviceFiles, SettingsKeepTextsAndIntegersOverRestarts) {
  {
    FileSettings settings(path());
    EXPECT_EQ(settings.object("FirstRun"), std::nullopt);
    settings.setObject(std::int64_t{9'007'199'254'740'993}, "big");
    settings.setObject("1", "text");
    settings.setObject("\xC3\xA9\"\n", "odd key \xE2\x82\xAC");
    settings.setObject("x", "gone");
    settings.removeObject("gone");
    EXPECT_THAT(read(path()), HasSubstr("9007199254740993")) << "written without being asked to";
  }
  FileSettings settings(path());
  EXPECT_EQ(number(settings, "big"), 9'007'199'254'740'993);
  EXPECT_EQ(settings.object("text"), Settings::Value("1"));
  EXPECT_EQ(settings.object("odd key \xE2\x82\xAC"), Settings::Value("\xC3\xA9\"\n"));
  EXPECT_EQ(settings.object("gone"), std::nullopt);
}

TEST_F(DeviceFiles, TwoProgramsShareTheirSettings) {
  FileSettings first(path()), second(path());
  first.setObject(std::int64_t{1}, "a");
  first.setObject(std::int64_t{7}, "n");
  second.setObject(std::int64_t{2}, "b");
  second.removeObject("n");
  first.synchronize();
  EXPECT_EQ(number(first, "a"), 1);
  EXPECT_EQ(number(first, "b"), 2);
  EXPECT_EQ(number(first, "n"), -1);
}

TEST_F(DeviceFiles, SettingsThatCannotBeReadAreReportedOnceAndSetAside) {
  const std::string text = path("text.json"), pipe = path("pipe.json"), folder = path("folder.json");
  write(text, "{\"a\": 1");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  ASSERT_TRUE(QDir().mkpath(QString::fromStdString(folder + "/below")));
  for (const std::string& file : {text, pipe, folder}) {
    const std::string line = reported([&] {
      FileSettings settings(file);
      EXPECT_EQ(settings.object("a"), std::nullopt);
      settings.setObject(std::int64_t{3}, "a");
      settings.setObject(std::int64_t{4}, "b");
    });
    EXPECT_THAT(line, HasSubstr(file + " cannot be read, defaults are used"));
    EXPECT_EQ(number(FileSettings(file), "b"), 4);
    EXPECT_TRUE(QFile::exists(QString::fromStdString(file + ".broken")));
  }
  EXPECT_EQ(read(text + ".broken"), "{\"a\": 1");
}

TEST_F(DeviceFiles, SettingsThatCannotBeWrittenAreReportedAndHoldForThisRun) {
  write(path("file"), "");
  EXPECT_THAT(reported([this] {
                FileSettings settings(path("file/below/s.json"));
                settings.setObject(std::int64_t{3}, "a");
                settings.setObject(std::int64_t{4}, "b");
                EXPECT_EQ(number(settings, "a"), 3);
                settings.removeObject("a");
                EXPECT_EQ(settings.object("a"), std::nullopt);
              }),
              HasSubstr("cannot be written"));
}

TEST_F(DeviceFiles, SettingsOnAFullDiskStayAsTheyWere) {
  for (const std::size_t length : {5'000u, 50'000u}) {  // what waits in a buffer, and what goes past it
    const std::string file = path(std::to_string(length));
    FileSettings(file).setObject(std::string(length, 'x'), "kept");
    const std::string before = read(file);
    FileSettings settings(file);
    EXPECT_THAT(reported([&] {
                  const test::FullDisk full(length - 1'000);
                  settings.setObject(std::int64_t{1}, "new");
                }),
                HasSubstr("cannot be written"));
    EXPECT_TRUE(read(file) == before);
    EXPECT_EQ(number(settings, "new"), 1);
    settings.setObject(std::int64_t{2}, "later");
    EXPECT_EQ(number(FileSettings(file), "new"), 1);
  }
}

TEST_F(DeviceFiles, TheVendorIdentifierIsDrawnOnceForEachInstallation) {
  std::set<std::string> fingerprints;
  const auto identifier = [&](const char* file) {
    FileSettings settings(path(file));
    DesktopDevice device({.settings = &settings});
    std::string first = device.identifierForVendor();
    EXPECT_EQ(device.identifierForVendor(), first);
    fingerprints.insert(device.fingerprintOf("anna"));
    return first;
  };
  const std::string here = identifier("here.json");
  EXPECT_THAT(here, testing::MatchesRegex("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}"));
  EXPECT_EQ(identifier("here.json"), here);
  EXPECT_EQ(fingerprints.size(), 1u);
  EXPECT_NE(identifier("there.json"), here);
  EXPECT_THAT(fingerprints, AllOf(SizeIs(2), Each(testing::MatchesRegex("[0-9a-f]{64}"))));
  write(path("here.json"), R"({"VendorIdentifier":"not one"})");
  const std::string next = identifier("here.json");
  EXPECT_NE(next, here);
  EXPECT_EQ(identifier("here.json"), next);
}

TEST_F(DeviceFiles, TheDeviceFindsDocumentsAndOpensOnlyHarmlessAddresses) {
  write(path("terms.html"), "<p>");
  std::vector<std::string> opened;
  DesktopDevice device({.idiom = Idiom::pad,
                        .resourceRoot = folder_.path().toStdString(),
                        .openURL = [&opened](const std::string& url) { opened.push_back(url); },
                        .opensScheme = [](const std::string& scheme) { return scheme != "geo"; }});
  EXPECT_EQ(device.pathForResource("terms", "html"), path("terms.html"));
  EXPECT_EQ(device.pathForResource("about", "html"), "");
  ASSERT_TRUE(QDir(folder_.path()).mkdir(QStringLiteral("pt")));
  write(path("pt/about.html"), "<p>");
  for (const char* language : {"pt", "pt-PT"}) {
    const DesktopDevice abroad(
        {.resourceRoot = folder_.path().toStdString(), .language = language, .openURL = {}});
    EXPECT_EQ(abroad.pathForResource("about", "html"), path("pt/about.html")) << language;
    EXPECT_EQ(abroad.pathForResource("terms", "html"), path("terms.html")) << language;
    EXPECT_EQ(abroad.localizedString("Map"), "Mapa") << language;
    EXPECT_EQ(abroad.localizedString("Not a text of the client"), "Not a text of the client") << language;
  }
  EXPECT_TRUE(device.isPad());
  EXPECT_GE(device.systemVersion(), 8.0);
  for (const char* url :
       {"https://a.example/", "tel:+15551234", "geo:1,2", "file:///etc/passwd", "javascript:1", "", "x"}) {
    device.openURL(url);
    EXPECT_EQ(device.canOpenURL(url),
              !opened.empty() && opened.back() == url && url != std::string("geo:1,2"))
        << url;
  }
  EXPECT_THAT(opened, ElementsAre("https://a.example/", "tel:+15551234", "geo:1,2"));
}

TEST(NetworkUse, ShowsOnlyToThoseWhoWait) {
  test::VirtualQueues queues;
  NetworkUseIndicator indicator(queues);
  bool shown = false;
  indicator.onChange = [&shown](bool visible) { shown = visible; };
  const auto showsAfter = [&](double seconds) {
    queues.advance(Seconds(seconds));
    return shown;
  };
  indicator.setVisible(true);
  EXPECT_FALSE(showsAfter(0.3));
  indicator.setVisible(false);
  indicator.setVisible(true);
  EXPECT_FALSE(showsAfter(0.3)) << "the first wait is over";
  EXPECT_TRUE(showsAfter(0.2));
  indicator.setVisible(false);
  EXPECT_FALSE(shown);
}

TEST(SystemClock, GivesTheDayInTheTimeZoneOfTheMoment) {
  const SystemClock clock;
  const Date newYear = std::chrono::sys_days(std::chrono::January / 1 / 2024);
  const char* before = std::getenv("TZ");
  const std::string zone = before ? before : "";
  ::setenv("TZ", "UTC", 1);
  EXPECT_EQ(clock.day(newYear), "2024-01-01");
  EXPECT_EQ(clock.day(newYear - std::chrono::milliseconds(1)), "2023-12-31");
  ::setenv("TZ", "EST+5", 1);
  EXPECT_EQ(clock.day(newYear), "2023-12-31");
  before ? ::setenv("TZ", zone.c_str(), 1) : ::unsetenv("TZ");
  ::tzset();
}

}  // namespace
}  // namespace fleetor
