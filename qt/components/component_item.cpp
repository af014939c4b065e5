#include "qt/components/component_item.h"

#include <QTextBoundaryFinder>
#include <algorithm>

#include "qt/components/adapters.h"

namespace fleetor {

QString toQString(const std::string& text) {
  // A UTF-16 unit takes at most three bytes; a character that is cut here lies behind the last one that is
  // drawn.
  constexpr qsizetype enough = 3 * (longestDrawn + 1);
  QString drawn = QString::fromUtf8(text.data(), std::min<qsizetype>(std::ssize(text), enough));
  if (drawn.size() <= longestDrawn) return drawn;
  QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, drawn.constData(), longestDrawn + 1);
  characters.setPosition(longestDrawn);
  qsizetype end = characters.isAtBoundary() ? longestDrawn : characters.toPreviousBoundary();
  // A single character may have any number of combining marks.
  if (end <= 0) end = longestDrawn - (drawn[longestDrawn - 1].isHighSurrogate() ? 1 : 0);
  drawn.truncate(end);
  return drawn + QChar(0x2026);
}

QColor toQColor(const std::optional<Color>& color) {
  const Color drawn = color.value_or(clearColor);
  return QColor::fromRgbF(static_cast<float>(drawn.red), static_cast<float>(drawn.green),
                          static_cast<float>(drawn.blue), static_cast<float>(drawn.alpha));
}

ComponentItem::ComponentItem(Component& component, Adapters& adapters)
    : QObject(&adapters), component_(&component), adapters_(adapters) {
  changed_ = component.changed.connect([this] { refresh(); });
}

QString ComponentItem::accessibleName() const {
  return read<Component>([](const Component& c) { return toQString(c.accessibleName()); });
}

// QML reads everything anew when it hears of a change, also the other components of the same owner. Some of
// them have been destroyed before this one, so it hears of it when the owner is gone as a whole.
void ComponentItem::componentDestroyed() {
  component_ = nullptr;
  forget();
  QMetaObject::invokeMethod(this, &ComponentItem::refresh, Qt::QueuedConnection);
  deleteLater();
}

}  // namespace fleetor
