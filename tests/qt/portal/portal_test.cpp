#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>

#include "qt/device/settings_portal.h"
#include "run_until.h"
#include "support/testing.h"

namespace fleetor {
namespace {

using namespace std::chrono_literals;

constexpr const char* appearance = "org.freedesktop.appearance";
constexpr const char* gnome = "org.gnome.desktop.interface";

/// A desktop's portal on a separate connection. It answers with what it was given, or with an error, or,
/// being silent, not at all.
class FakePortal : public QDBusVirtualObject {
 public:
  explicit FakePortal(bool silent = false) : silent_(silent) {
    EXPECT_TRUE(bus_.registerVirtualObject(path, this, QDBusConnection::SingleNode));
    EXPECT_TRUE(bus_.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
  }
  ~FakePortal() override { QDBusConnection::disconnectFromBus(bus_.name()); }

  void set(const char* space, const char* key, const QVariant& value) { values_[{space, key}] = value; }

  void change(const char* space, const char* key, const QVariant& value) {
    QDBusMessage signal = QDBusMessage::createSignal(path, interface, QStringLiteral("SettingChanged"));
    signal << QString(space) << QString(key) << QVariant::fromValue(QDBusVariant(value));
    bus_.send(signal);
  }

  bool handleMessage(const QDBusMessage& question, const QDBusConnection& bus) override {
    if (question.interface() != interface || question.member() != u"Read") return false;
    ++asked;
    if (silent_) return true;
    const auto found = values_.find({question.arguments().at(0).toString().toStdString(),
                                     question.arguments().at(1).toString().toStdString()});
    if (found == values_.end())
      return bus.send(question.createErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"), {}));
    const QDBusVariant inner(found->second);
    return bus.send(question.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(inner)))));
  }

  QString introspect(const QString&) const override { return {}; }

  int asked = 0;

 private:
  const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
  const QString interface = QStringLiteral("org.freedesktop.portal.Settings");

  bool silent_;
  std::map<std::pair<std::string, std::string>, QVariant> values_;
  QDBusConnection bus_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("fake"));
};

TEST(Portal, IsFollowedFromTheStartThroughEveryChange) {
  FakePortal desktop;
  desktop.set(appearance, "color-scheme", 1u);
  SettingsPortal portal;
  std::vector<DesktopPreferences> reported;
  const auto hasReported = [&](std::size_t count) {
    return [&reported, count] { return reported.size() >= count; };
  };
  portal.listen([&](const DesktopPreferences& preferences) { reported.push_back(preferences); });
  runUntil(hasReported(1));

  desktop.change(appearance, "color-scheme", 2u);
  desktop.change(gnome, "text-scaling-factor", 1.5);
  // Other settings, invalid values and values that change nothing are not reported.
  desktop.change(gnome, "color-scheme", QStringLiteral("prefer-dark"));
  desktop.change(appearance, "accent-color", 1u);
  for (const QVariant& scale :
       {QVariant(0.0), QVariant(-1.0), QVariant(qQNaN()), QVariant(QStringLiteral("large"))})
    desktop.change(gnome, "text-scaling-factor", scale);
  desktop.change(appearance, "color-scheme", 2u);
  desktop.change(appearance, "color-scheme", 0u);
  desktop.change(appearance, "color-scheme", 1u);
  desktop.change(appearance, "color-scheme", 7u);
  desktop.change(gnome, "enable-animations", QStringLiteral("fast"));
  desktop.change(gnome, "enable-animations", false);
  desktop.change(appearance, "contrast", 1u);
  runUntil(hasReported(8));
  EXPECT_THAT(reported, ElementsAre(DesktopPreferences{true, 1}, DesktopPreferences{false, 1},
                                    DesktopPreferences{false, 1.5}, DesktopPreferences{std::nullopt, 1.5},
                                    DesktopPreferences{true, 1.5}, DesktopPreferences{std::nullopt, 1.5},
                                    DesktopPreferences{std::nullopt, 1.5, false},
                                    DesktopPreferences{std::nullopt, 1.5, false, true}));
}

TEST(Portal, ReportsToALateListenerAtOnce) {
  FakePortal desktop;
  desktop.set(appearance, "color-scheme", 2u);
  desktop.set(gnome, "text-scaling-factor", 1.25);
  SettingsPortal portal, other;
  DesktopPreferences seen;
  other.listen([&](const DesktopPreferences& preferences) { seen = preferences; });
  runUntil([&] { return seen == DesktopPreferences{false, 1.25}; });

  std::vector<DesktopPreferences> reported;
  portal.listen([&](const DesktopPreferences& preferences) { reported.push_back(preferences); });
  EXPECT_THAT(reported, ElementsAre(DesktopPreferences{false, 1.25}));
}

TEST(SilentPortal, IsNotWaitedForAndIsHeardLater) {
  FakePortal desktop(true);
  std::vector<DesktopPreferences> reported;
  const auto began = std::chrono::steady_clock::now();
  { const SettingsPortal gone; }
  SettingsPortal portal;
  portal.listen([&](const DesktopPreferences& preferences) { reported.push_back(preferences); });
  EXPECT_LT(std::chrono::steady_clock::now() - began, 2s);
  runUntil([&] { return desktop.asked == 8; });
  EXPECT_THAT(reported, IsEmpty());
  desktop.change(appearance, "color-scheme", 1u);
  runUntil([&] { return !reported.empty(); });
  EXPECT_THAT(reported, ElementsAre(DesktopPreferences{true, 1}));
}

TEST(NoBus, ChangesNothingAndReportsNothing) {
  testing::internal::CaptureStderr();
  bool reported = false;
  SettingsPortal portal;
  portal.listen([&](const DesktopPreferences&) { reported = true; });
  QCoreApplication::processEvents();
  EXPECT_FALSE(reported);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace fleetor
