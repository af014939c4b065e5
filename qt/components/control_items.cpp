#include "qt/components/control_items.h"

#include <QFile>
#include <QGlyphRun>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <algorithm>

#include "ui/appearance.h"
#include "ui/containers/bar_button_item.h"

namespace fleetor {

namespace {

/// Adds the places of that piece of the block's text, one for each line.
void addPlaces(const QTextFragment& piece, const QTextBlock& block, QVariantList& places) {
  const QTextLayout& layout = *block.layout();
  const int first = piece.position() - block.position();
  for (int i = 0; i < layout.lineCount(); ++i) {
    const QTextLine line = layout.lineAt(i);
    const int from = std::max(first, line.textStart());
    const int end = std::min(first + piece.length(), line.textStart() + line.textLength());
    QRectF place;
    // By its glyphs: those beside them may run in the other direction.
    if (from < end)
      for (const QGlyphRun& letters : line.glyphRuns(from, end - from))
        place |= letters.boundingRect();
    if (place.isEmpty()) continue;
    place = QRectF(place.x(), line.y(), place.width(), line.height()).translated(layout.position());
    const QRectF last = places.isEmpty() ? QRectF() : places.constLast().toRectF();
    if (last.y() == place.y() && !last.isEmpty())
      places.last() = last | place;
    else
      places << place;
  }
}

}  // namespace

QString LabelItem::text() const {
  return read<Label>([](Label& c) { return toQString(c.text()); });
}
QStringList LabelItem::pieces() const {
  return read<Label>([](Label& c) {
    QStringList pieces;
    const auto add = [&](std::size_t begin, std::size_t end) {
      pieces << toQString(c.text().substr(begin, end - begin)).toHtmlEscaped();
    };
    std::size_t next = 0;
    for (const auto& [begin, end] : c.marks()) {
      if (end > c.text().size() || begin >= static_cast<std::size_t>(longestDrawn)) break;
      add(next, begin);
      add(begin, end);
      next = end;
    }
    if (next > 0) add(next, c.text().size());
    return pieces;
  });
}
bool LabelItem::faded() const {
  return read<Label>([](Label& c) { return c.faded(); });
}

QUrl ImageViewItem::source() const {
  return read<ImageView>([](ImageView& c) { return Adapters::imageUrl(c.image()); });
}
QUrl ImageViewItem::darkSource() const {
  return read<ImageView>([](ImageView& c) { return Adapters::imageUrl("dark/" + c.image()); });
}
QColor ImageViewItem::ringColor() const {
  return read<ImageView>([](ImageView& c) { return toQColor(c.ringColor()); });
}

double ImageViewItem::rotation() const {
  return read<ImageView>([](ImageView& c) { return c.rotation(); });
}

bool ActivityIndicatorItem::animating() const {
  return read<ActivityIndicator>([](ActivityIndicator& c) { return c.isAnimating(); });
}

QString ButtonItem::title() const {
  return read<Button>([](Button& c) { return toQString(c.title()); });
}
QUrl ButtonItem::image() const {
  return read<Button>([](Button& c) { return Adapters::imageUrl(c.image()); });
}
bool ButtonItem::selected() const {
  return read<Button>([](Button& c) { return c.selected(); });
}
bool ButtonItem::enabled() const {
  return read<Button>([](Button& c) { return c.enabled(); });
}
bool ButtonItem::loading() const {
  return read<LoadingButton>([](LoadingButton& c) { return c.loading(); });
}
double ButtonItem::cornerRadius() const {
  return read<LoadingButton>([](LoadingButton& c) { return c.cornerRadius(); });
}
bool ButtonItem::flexibleSpace() const {
  return read<BarButtonItem>([](BarButtonItem& c) { return c.systemItem() == SystemItem::flexibleSpace; });
}
void ButtonItem::setDrawing(QQuickItem* drawing) {
  drawing_ = drawing;
  Q_EMIT drawingChanged();
}
void ButtonItem::tap() {
  if (auto* button = as<Button>()) button->tap();
}

QString TextFieldItem::text() const {
  return read<TextField>([](TextField& c) { return QString::fromStdString(c.text()); });
}
void TextFieldItem::setText(const QString& text) {
  if (auto* field = as<TextField>()) field->setText(text.toStdString());
}
QString TextFieldItem::placeholder() const {
  return read<TextField>([](TextField& c) { return toQString(c.placeholder()); });
}
bool TextFieldItem::secure() const {
  return read<TextField>([](TextField& c) { return c.secureTextEntry(); });
}
bool TextFieldItem::invalid() const {
  return read<TextField>([](TextField& c) { return c.invalid(); });
}
bool TextFieldItem::firstResponder() const {
  return read<TextField>([](TextField& c) { return c.isFirstResponder(); });
}
void TextFieldItem::setFirstResponder(bool first) {
  auto* field = as<TextField>();
  if (!field || field->isFirstResponder() == first) return;
  if (first)
    field->becomeFirstResponder();
  else
    field->resignFirstResponder();
}
void TextFieldItem::pressReturn() {
  if (auto* field = as<TextField>()) field->pressReturn();
}

QString WebViewItem::document() const {
  // Only resources of the program are shown; nothing is ever fetched for this view.
  const QString url = read<WebView>([](WebView& c) { return QString::fromStdString(c.url()); });
  const QString prefix = QStringLiteral("file://");
  if (!url.startsWith(prefix)) return {};
  QFile file(url.mid(prefix.size()));
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}
void WebViewItem::tapLink(const QString& url) {
  if (auto* view = as<WebView>()) view->tapLink(url.toStdString());
}

QVariantList WebViewItem::linksOf(QQuickTextDocument* page) {
  QVariantList links;
  const QTextDocument& document = *page->textDocument();
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    QString last;
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      const QTextFragment piece = part.fragment();
      const QString url = piece.charFormat().anchorHref();
      if (!url.isEmpty()) {
        // A link that changes its format half-way is still one link.
        QVariantMap link = url == last ? links.takeLast().toMap() : QVariantMap{{QStringLiteral("url"), url}};
        QVariantList places = link[QStringLiteral("places")].toList();
        addPlaces(piece, block, places);
        link[QStringLiteral("places")] = places;
        link[QStringLiteral("text")] = link[QStringLiteral("text")].toString() + piece.text();
        links << link;
      }
      last = url;
    }
  }
  return links;
}

QStringList TabBarAdapter::titles() const {
  QStringList titles;
  if (auto* bar = as<TabBar>())
    for (const auto& item : bar->items())
      titles << toQString(item->title());
  return titles;
}
QStringList TabBarAdapter::labels() const {
  QStringList labels;
  if (auto* bar = as<TabBar>())
    for (const auto& item : bar->items())
      labels << toQString(item->accessibleName());
  return labels;
}
QList<bool> TabBarAdapter::marks() const {
  QList<bool> marks;
  if (auto* bar = as<TabBar>())
    for (const auto& item : bar->items())
      marks << !item->mark().empty();
  return marks;
}
QList<QUrl> TabBarAdapter::images() const {
  QList<QUrl> images;
  if (auto* bar = as<TabBar>())
    for (const auto& item : bar->items())
      images << Adapters::imageUrl(item->image());
  return images;
}
QList<QUrl> TabBarAdapter::selectedImages() const {
  QList<QUrl> images;
  if (auto* bar = as<TabBar>())
    for (const auto& item : bar->items())
      images << Adapters::imageUrl(item->selectedImage());
  return images;
}
int TabBarAdapter::selectedIndex() const {
  const auto* bar = as<TabBar>();
  return bar ? bar->indexOfItem(bar->selectedItem()) : -1;
}
QColor TabBarAdapter::barTintColor() const {
  return read<TabBar>([](TabBar& c) { return toQColor(c.barTintColor()); });
}
void TabBarAdapter::tap(int index) {
  if (auto* bar = as<TabBar>()) bar->tap(index);
}
void TabBarAdapter::refresh() {
  items_.clear();
  if (auto* bar = as<TabBar>())
    for (const auto& item : bar->items())
      items_.push_back(item->changed.connect([this] { Q_EMIT changed(); }));
  Q_EMIT changed();
}

bool ProgressOverlayItem::showing() const {
  return read<ProgressOverlay>([](ProgressOverlay& c) { return c.visible(); });
}
QColor ProgressOverlayItem::backgroundColor() const {
  return toQColor(adapters().environment().appearance.progressOverlay().backgroundColor);
}
QColor ProgressOverlayItem::foregroundColor() const {
  return toQColor(adapters().environment().appearance.progressOverlay().foregroundColor);
}

QString ToastItem::text() const {
  return read<Toast>([](Toast& c) { return toQString(c.text()); });
}
bool ToastItem::rounded() const {
  return read<Toast>([](Toast& c) { return c.rounded(); });
}

QString AlertViewItem::title() const {
  return read<AlertView>([](AlertView& c) { return toQString(c.title()); });
}
QString AlertViewItem::message() const {
  return read<AlertView>([](AlertView& c) { return toQString(c.message()); });
}
QStringList AlertViewItem::buttonTitles() const {
  QStringList titles;
  if (auto* alert = as<AlertView>())
    for (const auto& title : alert->buttonTitles())
      titles << toQString(title);
  return titles;
}
void AlertViewItem::tapButton(int index) {
  if (auto* alert = as<AlertView>()) alert->tapButton(index);
}

QString DatePickerItem::title() const {
  return read<ActionSheetDatePicker>([](ActionSheetDatePicker& c) { return toQString(c.title()); });
}
ButtonItem* DatePickerItem::origin() const {
  const auto* picker = as<ActionSheetDatePicker>();
  return picker ? adapters().itemFor<ButtonItem>(picker->origin()) : nullptr;
}
QDateTime DatePickerItem::selected() const {
  return QDateTime::fromMSecsSinceEpoch(read<ActionSheetDatePicker>([](ActionSheetDatePicker& c) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(c.selectedDate().time_since_epoch()).count();
  }));
}
Day DatePickerItem::selectedDay() const {
  const QDate date = selected().date();
  return std::chrono::year(date.year()) / date.month() / date.day();
}
int DatePickerItem::year() const {
  return selected().date().year();
}
int DatePickerItem::month() const {
  return selected().date().month();
}
int DatePickerItem::day() const {
  return selected().date().day();
}
int DatePickerItem::daysInMonth() const {
  return daysInMonthOf(selectedDay());
}
int DatePickerItem::placesBeforeMonth() const {
  const std::chrono::weekday first(static_cast<unsigned>(QLocale().firstDayOfWeek()));
  return placesBeforeMonthOf(selectedDay(), first);
}
int DatePickerItem::today() const {
  const QDate shown = selected().date();
  return static_cast<int>(QDate(shown.year(), shown.month(), 1).daysTo(QDate::currentDate())) + 1;
}
void DatePickerItem::turnDays(int days) {
  select(laterBy(selectedDay(), std::chrono::days(days)));
}
void DatePickerItem::turnMonths(int months) {
  select(laterBy(selectedDay(), std::chrono::months(months)));
}
void DatePickerItem::select(Day day) {
  auto* picker = as<ActionSheetDatePicker>();
  if (!picker) return;
  const QDate date(static_cast<int>(day.year()), static_cast<int>(static_cast<unsigned>(day.month())),
                   static_cast<int>(static_cast<unsigned>(day.day())));
  picker->setSelectedDate(
      Date(std::chrono::milliseconds(QDateTime(date, selected().time()).toMSecsSinceEpoch())));
}
void DatePickerItem::done() {
  if (auto* picker = as<ActionSheetDatePicker>()) picker->done();
}
void DatePickerItem::cancel() {
  if (auto* picker = as<ActionSheetDatePicker>()) picker->cancel();
}

}  // namespace fleetor
