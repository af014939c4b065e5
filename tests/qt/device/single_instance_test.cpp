#include "qt/device/single_instance.h"

#include <gmock/gmock.h>
#include <sys/socket.h>

#include <QLocalSocket>
#include <QTemporaryDir>

#include "run_until.h"

namespace fleetor {
namespace {

TEST(SingleInstance, TakesTheFirstLineOfEachConnectionUnlessItIsTooLong) {
  const QTemporaryDir folder;
  SingleInstance running(folder.filePath("client").toStdString());
  ASSERT_TRUE(running.enter("")) << "no other client runs";
  std::vector<std::string> taken;
  running.listen([&taken](const std::string& request) { taken.push_back(request); });
  struct Case {
    std::string sent;
    std::vector<std::string> taken;
  };
  const std::string longest(4095, 'x');
  for (const auto& [sent, expected] : {Case{"fleetor:vehicles\n", {"fleetor:vehicles"}},
                                       {"first\nsecond\n\nthird", {"first"}},
                                       {"\n", {""}},
                                       {"\xFF-x\n", {"\xFF-x"}},
                                       {"without an end", {}},
                                       {"", {}},
                                       {longest + "\n", {longest}},
                                       {longest + "x\n", {}}}) {
    SCOPED_TRACE(sent.substr(0, 30));
    taken.clear();
    QLocalSocket later;
    later.connectToServer(folder.filePath("client.socket"));
    later.write(QByteArray::fromStdString(sent));
    later.flush();
    ::shutdown(static_cast<int>(later.socketDescriptor()), SHUT_WR);
    runUntil([&later] { return later.state() == QLocalSocket::UnconnectedState; });
    EXPECT_EQ(taken, expected);
    EXPECT_EQ(later.readAll(), expected.empty() ? "" : "taken\n");
  }
}

}  // namespace
}  // namespace fleetor
