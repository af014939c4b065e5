#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include "qt/device/bus_activation.h"

namespace fleetor {

/// The client's end on the session bus. The names are those of the interface.
class BusActivation::Wire : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

 public:
  explicit Wire(Requests requests);
  ~Wire() override;

  Q_SLOT void Activate(const QVariantMap& platformData);
  Q_SLOT void Open(const QStringList& uris, const QVariantMap& platformData);
  Q_SLOT void ActivateAction(const QString& name, const QVariantList& parameter,
                             const QVariantMap& platformData);

 private:
  QDBusConnection bus_ = QDBusConnection::sessionBus();
  Requests requests_;
};

}  // namespace fleetor
