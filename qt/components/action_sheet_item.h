#pragma once

#include <QImage>
#include <QQuickPaintedItem>
#include <QStringList>
#include <QUrl>

#include "qt/components/adapters.h"
#include "ui/controls/action_sheet.h"

namespace fleetor {

class ActionSheetItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(QString title READ title CONSTANT)
  Q_PROPERTY(QString message READ message CONSTANT)
  // Of the entries.
  Q_PROPERTY(QStringList titles READ titles CONSTANT)
  Q_PROPERTY(QStringList details READ details CONSTANT)
  Q_PROPERTY(QList<QUrl> images READ images CONSTANT)

 public:
  using ComponentItem::ComponentItem;
  QString title() const;
  QString message() const;
  QImage picture() const;  ///< a pixel for each cell; null without a picture
  QStringList titles() const;
  QStringList details() const;
  QList<QUrl> images() const;
  Q_INVOKABLE void tapEntry(int index);
  Q_INVOKABLE void cancel();
};

/// Draws the picture of a sheet as large as its sides allow, with sharp edges.
class CellPictureView : public QQuickPaintedItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(bool filled READ filled NOTIFY pictureChanged)  ///< has a picture

 public:
  bool filled() const { return !picture_.isNull(); }
  Q_INVOKABLE void show(fleetor::ActionSheetItem* sheet);  ///< takes a copy
  void paint(QPainter* painter) override;

 Q_SIGNALS:
  void pictureChanged();

 private:
  QImage picture_;
};

}  // namespace fleetor
