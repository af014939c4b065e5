#pragma once

#include <QtQml/qqmlregistration.h>
#include <QColor>
#include <QObject>
#include <QString>
#include <optional>
#include <string>

#include "ui/component.h"
#include "ui/geometry.h"

namespace fleetor {

class Adapters;

/// A text as it is drawn and read out. A very long one would take seconds to lay out, so it is cut after at
/// most `longestDrawn` UTF-16 units, between two characters, and ends in an ellipsis then.
QString toQString(const std::string& text);
inline constexpr qsizetype longestDrawn = 1000;

/// Transparent without a colour.
QColor toQColor(const std::optional<Color>& color);

/// What QML sees of one component. Main thread only; owned by Adapters. It outlives its component until the
/// next turn of the event loop: until then every property has its default value and every call does nothing,
/// so QML that still draws it never meets a dangling pointer.
class ComponentItem : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(QString accessibleName READ accessibleName NOTIFY changed)

 public:
  ComponentItem(Component& component, Adapters& adapters);

  QString accessibleName() const;

  /// The component as that class; none once it is gone, or when it is not one.
  template <class C>
  C* as() const {
    return component_ ? dynamic_cast<C*>(component_) : nullptr;
  }

  /// Something has changed that the component does not announce.
  virtual void refresh() { Q_EMIT changed(); }

 Q_SIGNALS:
  void changed();

 protected:
  /// What `get` reads of the component, or a default value once it is gone.
  template <class C, class Get>
  auto read(Get get) const {
    using Value = std::decay_t<std::invoke_result_t<Get, C&>>;
    C* const component = as<C>();
    return component ? Value(get(*component)) : Value{};
  }

  Adapters& adapters() const { return adapters_; }

  /// The component is gone: drops what refers to it.
  virtual void forget() {}

 private:
  friend class Adapters;
  void componentDestroyed();

  Component* component_;
  Adapters& adapters_;
  Connection changed_;
};

}  // namespace fleetor
