#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QStringList>

#include "qt/device/bus_activation.h"
#include "run_until.h"
#include "support/testing.h"

namespace fleetor {
namespace {

TEST(Activation, TheDesktopReachesTheClientByItsName) {
  std::vector<std::string> asked;
  const BusActivation client({[&](const std::string& url) { asked.push_back("open " + url); },
                              [&](const std::string& name) { asked.push_back("start " + name); }});
  auto desktop = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("desktop"));
  const auto call = [&](const char* what, const QVariantList& arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.fleetor.fleetor"), QStringLiteral("/org/fleetor/fleetor"),
        QStringLiteral("org.freedesktop.Application"), QString::fromLatin1(what));
    message.setArguments(arguments);
    const QDBusPendingCall answer = desktop.asyncCall(message);
    runUntil([&] { return answer.isFinished(); });
    EXPECT_FALSE(answer.isError()) << answer.error().message().toStdString();
  };
  const QVariantMap platform{{QStringLiteral("activation-token"), QStringLiteral("1")}};
  call("Activate", {platform});
  call("Open", {QStringList{QStringLiteral("fleetor:vehicles")}, platform});
  call("ActivateAction", {QStringLiteral("tablet"), QVariantList(), platform});
  EXPECT_THAT(asked, ElementsAre("open ", "open fleetor:vehicles", "start tablet"));
  EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "1");
  QDBusConnection::disconnectFromBus(desktop.name());
}

}  // namespace
}  // namespace fleetor
