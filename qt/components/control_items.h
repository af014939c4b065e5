#pragma once

#include <QColor>
#include <QDateTime>
#include <QPointer>
#include <QQuickItem>
#include <QQuickTextDocument>
#include <QStringList>
#include <QUrl>

#include "qt/components/adapters.h"
#include "ui/calendar.h"
#include "ui/containers/tab_bar.h"
#include "ui/controls/action_sheet_date_picker.h"
#include "ui/controls/alert_view.h"
#include "ui/controls/controls.h"
#include "ui/controls/progress_overlay.h"
#include "ui/controls/text_field.h"
#include "ui/controls/toast.h"
#include "ui/controls/view.h"
#include "ui/controls/web_view.h"

namespace fleetor {

class LabelItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(QString text READ text NOTIFY changed)
  Q_PROPERTY(bool faded READ faded NOTIFY changed)
  /// The text where parts of it stand out, ready for styled text: every second piece is one of these.
  /// Without such parts empty.
  Q_PROPERTY(QStringList pieces READ pieces NOTIFY changed)

 public:
  using ComponentItem::ComponentItem;
  QString text() const;
  QStringList pieces() const;
  bool faded() const;
};

class ImageViewItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(QUrl source READ source NOTIFY changed)
  Q_PROPERTY(QUrl darkSource READ darkSource NOTIFY changed)  ///< for the dark appearance; empty without one
  Q_PROPERTY(double rotation READ rotation NOTIFY changed)
  Q_PROPERTY(QColor ringColor READ ringColor NOTIFY changed)  ///< transparent: none

 public:
  using ComponentItem::ComponentItem;
  QUrl source() const;
  QUrl darkSource() const;
  double rotation() const;
  QColor ringColor() const;
};

class ActivityIndicatorItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(bool animating READ animating NOTIFY changed)

 public:
  using ComponentItem::ComponentItem;
  bool animating() const;
};

/// Every kind of button: plain, loading, and of a bar.
class ButtonItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(QString title READ title NOTIFY changed)
  Q_PROPERTY(QUrl image READ image NOTIFY changed)
  Q_PROPERTY(bool selected READ selected NOTIFY changed)
  Q_PROPERTY(bool enabled READ enabled NOTIFY changed)
  Q_PROPERTY(bool loading READ loading NOTIFY changed)
  Q_PROPERTY(double cornerRadius READ cornerRadius NOTIFY changed)
  Q_PROPERTY(bool flexibleSpace READ flexibleSpace CONSTANT)
  Q_PROPERTY(QQuickItem* drawing READ drawing WRITE setDrawing NOTIFY drawingChanged)  ///< where it is drawn

 public:
  using ComponentItem::ComponentItem;
  QString title() const;
  QUrl image() const;
  bool selected() const;
  bool enabled() const;
  bool loading() const;
  double cornerRadius() const;
  bool flexibleSpace() const;
  QQuickItem* drawing() const { return drawing_; }
  void setDrawing(QQuickItem* drawing);
  Q_INVOKABLE void tap();

 Q_SIGNALS:
  void drawingChanged();

 private:
  QPointer<QQuickItem> drawing_;
};

class TextFieldItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(QString text READ text WRITE setText NOTIFY changed)
  Q_PROPERTY(QString placeholder READ placeholder NOTIFY changed)
  Q_PROPERTY(bool secure READ secure NOTIFY changed)
  Q_PROPERTY(bool invalid READ invalid NOTIFY changed)
  Q_PROPERTY(bool firstResponder READ firstResponder WRITE setFirstResponder NOTIFY changed)

 public:
  using ComponentItem::ComponentItem;
  QString text() const;
  void setText(const QString& text);
  QString placeholder() const;
  bool secure() const;
  bool invalid() const;
  bool firstResponder() const;
  void setFirstResponder(bool first);
  Q_INVOKABLE void pressReturn();
};

class WebViewItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(QString document READ document NOTIFY changed)

 public:
  using ComponentItem::ComponentItem;
  QString document() const;  ///< HTML text; empty: blank
  Q_INVOKABLE void tapLink(const QString& url);

  /// The links of the document as it is laid out, in reading order: "url", "text" and "places" (one rectangle
  /// per line, in points of the page).
  Q_INVOKABLE static QVariantList linksOf(QQuickTextDocument* page);
};

class TabBarAdapter : public fleetor::ComponentItem {
  Q_OBJECT
  QML_NAMED_ELEMENT(TabBarItem)
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(QStringList titles READ titles NOTIFY changed)
  Q_PROPERTY(QStringList labels READ labels NOTIFY changed)  ///< for assistive technology
  Q_PROPERTY(QList<bool> marks READ marks NOTIFY changed)    ///< whether the item has a mark
  Q_PROPERTY(QList<QUrl> images READ images NOTIFY changed)
  Q_PROPERTY(QList<QUrl> selectedImages READ selectedImages NOTIFY changed)
  Q_PROPERTY(int selectedIndex READ selectedIndex NOTIFY changed)
  Q_PROPERTY(QColor barTintColor READ barTintColor NOTIFY changed)

 public:
  TabBarAdapter(Component& component, Adapters& adapters) : ComponentItem(component, adapters) { refresh(); }
  QStringList titles() const;
  QStringList labels() const;
  QList<bool> marks() const;
  QList<QUrl> images() const;
  QList<QUrl> selectedImages() const;
  int selectedIndex() const;  ///< -1 while nothing is selected
  QColor barTintColor() const;
  Q_INVOKABLE void tap(int index);
  void refresh() override;

 private:
  std::vector<Connection> items_;
};

class ProgressOverlayItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(bool showing READ showing NOTIFY changed)
  Q_PROPERTY(QColor backgroundColor READ backgroundColor NOTIFY changed)
  Q_PROPERTY(QColor foregroundColor READ foregroundColor NOTIFY changed)

 public:
  using ComponentItem::ComponentItem;
  bool showing() const;
  QColor backgroundColor() const;
  QColor foregroundColor() const;
};

class ToastItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(QString text READ text NOTIFY changed)
  Q_PROPERTY(bool rounded READ rounded NOTIFY changed)

 public:
  using ComponentItem::ComponentItem;
  QString text() const;
  bool rounded() const;
};

class AlertViewItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(QString title READ title NOTIFY changed)
  Q_PROPERTY(QString message READ message NOTIFY changed)
  Q_PROPERTY(QStringList buttonTitles READ buttonTitles NOTIFY changed)  ///< cancel first

 public:
  using ComponentItem::ComponentItem;
  QString title() const;
  QString message() const;
  QStringList buttonTitles() const;
  Q_INVOKABLE void tapButton(int index);
};

class DatePickerItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(QString title READ title NOTIFY changed)
  Q_PROPERTY(
      fleetor::ButtonItem* origin READ origin NOTIFY changed)  ///< the button that it belongs to, or none
  // The chosen day in local time, and how its month lies under a row of weekdays in the user's language.
  Q_PROPERTY(int year READ year NOTIFY changed)
  Q_PROPERTY(int month READ month NOTIFY changed)  ///< 1 to 12
  Q_PROPERTY(int day READ day NOTIFY changed)
  Q_PROPERTY(int daysInMonth READ daysInMonth NOTIFY changed)
  Q_PROPERTY(int placesBeforeMonth READ placesBeforeMonth NOTIFY changed)
  Q_PROPERTY(int today READ today NOTIFY changed)  ///< counted as the days of that month: below 1 before it

 public:
  using ComponentItem::ComponentItem;
  QString title() const;
  ButtonItem* origin() const;
  int year() const;
  int month() const;
  int day() const;
  int daysInMonth() const;
  int placesBeforeMonth() const;
  int today() const;

  // The user turns to another day, at the same time of day.
  Q_INVOKABLE void turnDays(int days);
  Q_INVOKABLE void turnMonths(int months);
  Q_INVOKABLE void done();
  Q_INVOKABLE void cancel();

 private:
  QDateTime selected() const;
  Day selectedDay() const;
  void select(Day day);
};

}  // namespace fleetor
