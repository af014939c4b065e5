#include "qt/device/settings_portal.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <utility>

#include "qt/device/settings_wire.h"

namespace fleetor {
namespace {

constexpr int patienceInMs = 10'000;

constexpr QLatin1String portalService("org.freedesktop.portal.Desktop");
constexpr QLatin1String portalPath("/org/freedesktop/portal/desktop");
constexpr QLatin1String settingsInterface("org.freedesktop.portal.Settings");

constexpr QLatin1String appearanceSpace("org.freedesktop.appearance");
constexpr QLatin1String colorScheme("color-scheme");
constexpr QLatin1String contrastKey("contrast");
constexpr QLatin1String interfaceSpace("org.gnome.desktop.interface");
constexpr QLatin1String textScaleKey("text-scaling-factor");
constexpr QLatin1String animationsKey("enable-animations");

}  // namespace

SettingsPortal::Wire::Wire() {
  if (!bus_.isConnected()) return;
  qRegisterMetaType<QDBusVariant>();  // or the slot below has a parameter that Qt does not know yet
  // From whoever owns that path: Qt would ask the bus for the owner of a name, and wait for the answer.
  bus_.connect(QString(), portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
               SLOT(take(QString, QString, QDBusVariant)));
  ask(appearanceSpace, colorScheme);
  ask(appearanceSpace, contrastKey);
  ask(interfaceSpace, textScaleKey);
  ask(interfaceSpace, animationsKey);
}

void SettingsPortal::Wire::listen(std::function<void(const DesktopPreferences&)> changed) {
  changed_ = std::move(changed);
  notify();
}

void SettingsPortal::Wire::ask(const QString& space, const QString& key) {
  QDBusMessage request =
      QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, QStringLiteral("Read"));
  request << space << key;
  auto* const answer = new QDBusPendingCallWatcher(bus_.asyncCall(request, patienceInMs), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, space, key, answer] {
    const QDBusPendingReply<QDBusVariant> reply = *answer;
    if (reply.isValid()) take(space, key, reply.value());
    answer->deleteLater();
  });
}

void SettingsPortal::Wire::take(const QString& space, const QString& key, const QDBusVariant& packed) {
  QVariant value = packed.variant();
  if (value.userType() == qMetaTypeId<QDBusVariant>())  // answers come in two wrappings, changes in one
    value = value.value<QDBusVariant>().variant();
  if (space == appearanceSpace && key == colorScheme) {
    const uint scheme = value.toUInt();
    preferences_.dark = scheme == 1 || scheme == 2 ? std::optional(scheme == 1) : std::nullopt;
  } else if (space == appearanceSpace && key == contrastKey) {
    preferences_.contrast = value.toUInt() == 1;
  } else if (space == interfaceSpace && key == textScaleKey && value.toDouble() > 0) {
    preferences_.textScale = value.toDouble();
  } else if (space == interfaceSpace && key == animationsKey && value.userType() == QMetaType::Bool) {
    preferences_.animations = value.toBool();
  }
  notify();
}

void SettingsPortal::Wire::notify() {
  if (changed_ && std::exchange(reported_, preferences_) != preferences_) changed_(preferences_);
}

SettingsPortal::SettingsPortal() : wire_(std::make_unique<Wire>()) {}

SettingsPortal::~SettingsPortal() = default;

void SettingsPortal::listen(std::function<void(const DesktopPreferences&)> changed) {
  wire_->listen(std::move(changed));
}

}  // namespace fleetor
