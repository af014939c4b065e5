#include <fcntl.h>
#include <zlib.h>

#include <array>
#include <fstream>

#include "diagnostics/report_files.h"
#include "diagnostics/report_post.h"
#include "diagnostics/usage_events.h"
#include "support/full_disk.h"
#include "support/scratch_folder.h"
#include "support/scripted_transport.h"
#include "support/testing.h"
#include "support/virtual_queues.h"

namespace fleetor {
namespace {

using std::chrono::hours;

class ReportsTest : public testing::Test {
 protected:
  void leave(const std::string& name, const std::string& text) {
    std::ofstream(scratch_.path() / name) << text;
  }
  /// A report of a run that began so many hours ago.
  std::string nameOf(const char* kind, int hoursAgo) {
    return reportPath("", kind, queues_.now() - hours(hoursAgo)).stem().string();
  }
  void leaveReport(const char* kind, int hoursAgo, const std::string& text = "text") {
    leave(nameOf(kind, hoursAgo) + ".txt", text);
  }
  std::vector<std::string> files() {
    std::vector<std::string> names;
    for (const auto& each : std::filesystem::directory_iterator(scratch_.path()))
      names.push_back(each.path().filename().string());
    return names;
  }
  std::string unpacked(const std::string& bytes) {
    const std::string path = scratch_.path() / "unpacking";
    std::ofstream(path, std::ios::binary) << bytes;
    std::array<char, 4096> text{};
    const gzFile file = gzopen(path.c_str(), "rb");
    const int size = gzdirect(file) ? 0 : gzread(file, text.data(), text.size());
    gzclose(file);
    std::filesystem::remove(path);
    return {text.data(), static_cast<std::size_t>(std::max(size, 0))};
  }
  /// One start of the client, with that address compiled in.
  void start(const std::string& address) {
    ReportPost post(queues_, transport_, {scratch_.path(), address, "1.2.3"});
    post.offer(queues_.now());
    queues_.runUntilIdle();
  }

  static constexpr const char* address_ = "https://reports.test/take";
  test::ScratchFolder scratch_;
  test::VirtualQueues queues_;
  test::ScriptedTransport transport_{queues_};
};

TEST_F(ReportsTest, ArePackedAndOfferedUntilTheyAreTaken) {
  leaveReport(crashReport, 1, "Fleetor crash report\n");
  transport_.answerOnce("/take", test::reply(503, "", ""));
  transport_.answerOnce("/take", test::failedReply(url_error::cannotConnectToHost));
  transport_.answer("/take", test::reply(202, "", ""));
  for (std::size_t starts = 1; starts <= 3; ++starts) {
    EXPECT_EQ(files().size(), 1U) << "kept until it is taken";
    start(address_);
    ASSERT_EQ(transport_.requests().size(), starts) << "once a start";
    const HttpRequest request = transport_.last();
    EXPECT_EQ(request.url, address_);
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(unpacked(request.body.value_or("")), "Fleetor crash report\n");
    EXPECT_THAT(request.headers, UnorderedElementsAre(std::pair("Content-Type", "application/gzip"),
                                                      std::pair("User-Agent", "Fleetor/1.2.3")));
  }
  EXPECT_THAT(files(), IsEmpty());
}

TEST_F(ReportsTest, AreNeverSentWithoutAnAddressAndUsageIsNotEvenCounted) {
  leaveReport(crashReport, 1);
  leaveReport(usageReport, 1);
  UsageEvents usage({scratch_.path(), "", "1.2.3"}, queues_.now());
  usage.count("started");
  EXPECT_FALSE(usage.isCounting());
  start("");
  EXPECT_THAT(transport_.requests(), IsEmpty());
  EXPECT_THAT(files(), UnorderedElementsAre(nameOf(crashReport, 1) + ".gz", nameOf(usageReport, 1) + ".gz"));
}

TEST_F(ReportsTest, ThatAreTooManyOrTooOldGoAndOtherFilesStay) {
  for (const int hoursAgo : {2, 4, 1, 3, 5, 6, 7, 24 * 31})
    leaveReport(crashReport, hoursAgo);
  leaveReport(usageReport, 24 * 31);
  leaveReport(usageReport, 24 * 29);
  leave("crash-of-somebody.txt", "text");
  leave(nameOf(crashReport, 8) + ".txt", "");
  std::vector<std::string> packed;
  for (const auto& path : packReports(scratch_.path(), queues_.now()))
    packed.push_back(path.stem().string());
  EXPECT_THAT(packed,
              ElementsAre(nameOf(crashReport, 1), nameOf(crashReport, 2), nameOf(crashReport, 3),
                          nameOf(crashReport, 4), nameOf(crashReport, 5), nameOf(usageReport, 24 * 29)));
  EXPECT_EQ(files().size(), 7U) << "with the file of another name";
}

TEST_F(ReportsTest, AreForTheirUserAlone) {
  using std::filesystem::perms;
  std::filesystem::permissions(scratch_.path(), perms::all);
  ASSERT_TRUE(makeReportFolder(scratch_.path()));
  EXPECT_EQ(std::filesystem::status(scratch_.path()).permissions(), perms::owner_all);
  leaveReport(crashReport, 1);
  const auto packed = packReports(scratch_.path(), queues_.now());
  ASSERT_EQ(packed.size(), 1U);
  EXPECT_EQ(std::filesystem::status(packed[0]).permissions(), perms::owner_read | perms::owner_write);

  leave("file", "text");
  EXPECT_FALSE(makeReportFolder(scratch_.path() / "file"));
}

TEST_F(ReportsTest, OfARunThatGoesOnAreItsOwn) {
  transport_.answer("/take", test::reply(200, "", ""));
  auto usage = std::make_unique<UsageEvents>(ReportSetup{scratch_.path(), address_, "1.2.3"}, queues_.now());
  usage->count("started");
  usage->count("screen LiveDetailVC");
  start(address_);
  EXPECT_THAT(transport_.requests(), IsEmpty());
  usage->count("screen LiveDetailVC");
  usage.reset();

  start(address_);
  ASSERT_EQ(transport_.requests().size(), 1U);
  EXPECT_EQ(unpacked(*transport_.last().body),
            "Fleetor usage\nversion: 1.2.3\nscreen LiveDetailVC: 2\nstarted: 1\n");
  EXPECT_THAT(files(), IsEmpty());

  leaveReport(crashReport, 1);
  transport_.leaveOpen("/take");
  start(address_);
  start(address_);
  EXPECT_EQ(transport_.requests().size(), 2U) << "one client is sending it, the other leaves it alone";
}

TEST_F(ReportsTest, OfUsageAreDroppedRatherThanCutShort) {
  UsageEvents usage({scratch_.path(), address_, "1.2.3"}, queues_.now());
  usage.count("started");
  {
    const test::FullDisk full(40);
    usage.count("screen LiveDetailVC");
  }
  EXPECT_FALSE(usage.isCounting());
  start(address_);
  EXPECT_THAT(files(), IsEmpty());
}

TEST_F(ReportsTest, AreNotSentOnceThePostIsClosed) {
  leaveReport(crashReport, 1);
  {
    ReportPost post(queues_, transport_, {scratch_.path(), address_, "1.2.3"});
    post.offer(queues_.now());
  }
  queues_.runUntilIdle();
  EXPECT_THAT(transport_.requests(), IsEmpty());
}

}  // namespace
}  // namespace fleetor
