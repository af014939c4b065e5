#pragma once

#include <QColor>
#include <QUrl>

#include "qt/components/adapters.h"

namespace fleetor {

/// The colours and pictures that all bars share, as the program has set them. A colour that it has not set is
/// transparent, a picture has an empty address.
class AppearanceItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(QColor bar READ bar NOTIFY changed)
  Q_PROPERTY(QColor barButton READ barButton NOTIFY changed)
  Q_PROPERTY(QColor barTitle READ barTitle NOTIFY changed)
  Q_PROPERTY(QUrl backImage READ backImage NOTIFY changed)
  Q_PROPERTY(QUrl shadowImage READ shadowImage NOTIFY changed)  ///< the line under a navigation bar
  Q_PROPERTY(QColor tabTitle READ tabTitle NOTIFY changed)
  Q_PROPERTY(QColor selectedTabTitle READ selectedTabTitle NOTIFY changed)

 public:
  using ComponentItem::ComponentItem;
  QColor bar() const;
  QColor barButton() const;
  QColor barTitle() const;
  QUrl backImage() const;
  QUrl shadowImage() const;
  QColor tabTitle() const;
  QColor selectedTabTitle() const;
};

}  // namespace fleetor
