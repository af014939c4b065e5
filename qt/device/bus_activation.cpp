#include "qt/device/bus_activation.h"

#include <QDBusMessage>
#include <utility>

#include "qt/device/activation_wire.h"

namespace fleetor {

namespace {
constexpr QLatin1String clientName("org.fleetor.fleetor");
constexpr QLatin1String clientPath("/org/fleetor/fleetor");
constexpr QLatin1String busName("org.freedesktop.DBus");
constexpr QLatin1String busPath("/org/freedesktop/DBus");

/// Wayland lets a window come forward with the token of who asks for it. Qt reads it from the environment.
void takeToken(const QVariantMap& platformData) {
  const QByteArray token = platformData.value(QStringLiteral("activation-token")).toByteArray();
  if (!token.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", token);
}
}  // namespace

BusActivation::Wire::Wire(Requests requests) : requests_(std::move(requests)) {
  if (!bus_.isConnected() || !bus_.registerObject(clientPath, this, QDBusConnection::ExportAllSlots)) return;
  constexpr uint doNotQueue = 4;
  QDBusMessage request =
      QDBusMessage::createMethodCall(busName, busPath, busName, QStringLiteral("RequestName"));
  request << QString(clientName) << doNotQueue;
  bus_.send(request);
}

BusActivation::Wire::~Wire() {
  bus_.unregisterObject(clientPath);
}

void BusActivation::Wire::Activate(const QVariantMap& platformData) {
  takeToken(platformData);
  requests_.open({});
}

void BusActivation::Wire::Open(const QStringList& uris, const QVariantMap& platformData) {
  takeToken(platformData);
  for (const QString& uri : uris)
    requests_.open(uri.toStdString());
}

void BusActivation::Wire::ActivateAction(const QString& name, const QVariantList& /*parameter*/,
                                         const QVariantMap& platformData) {
  takeToken(platformData);
  requests_.start(name.toStdString());
}

BusActivation::BusActivation(Requests requests) : wire_(std::make_unique<Wire>(std::move(requests))) {}

BusActivation::~BusActivation() = default;

}  // namespace fleetor
