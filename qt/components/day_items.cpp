#include "qt/components/day_items.h"

namespace fleetor {

namespace {

template <class Seconds>
double shareOfDay(const std::optional<Seconds>& seconds) {
  return seconds ? *seconds / TimeRibbon::length : -1;
}

}  // namespace

bool TimeRibbonItem::empty() const {
  const auto* const ribbon = as<TimeRibbon>();
  return !ribbon || ribbon->stretches().empty();
}

QColor TimeRibbonItem::color() const {
  return read<TimeRibbon>([](const TimeRibbon& r) { return toQColor(r.color()); });
}

double TimeRibbonItem::mark() const {
  return read<TimeRibbon>([](const TimeRibbon& r) { return shareOfDay(r.mark()); });
}

double TimeRibbonItem::moment() const {
  return read<TimeRibbon>([](const TimeRibbon& r) { return shareOfDay(r.moment()); });
}

QString TimeRibbonItem::description() const {
  return read<TimeRibbon>([](const TimeRibbon& r) { return toQString(r.description()); });
}

void TimeRibbonItem::setColumns(int columns) {
  if (std::exchange(columns_, columns) != columns) Q_EMIT piecesChanged();
}

QVariantList TimeRibbonItem::pieces() const {
  return read<TimeRibbon>([this](const TimeRibbon& ribbon) {
    QVariantList pieces;
    for (const auto& piece : ribbon.inColumns(columns_))
      if (piece.weight != TimeRibbon::Weight::blank)
        pieces << QVariantMap{{QStringLiteral("begin"), piece.begin / TimeRibbon::length},
                              {QStringLiteral("end"), piece.end / TimeRibbon::length},
                              {QStringLiteral("strong"), piece.weight == TimeRibbon::Weight::strong}};
    return pieces;
  });
}

void TimeRibbonItem::choose(double share) {
  if (auto* const ribbon = as<TimeRibbon>()) ribbon->choose(share * TimeRibbon::length);
}

void TimeRibbonItem::step(bool forward) {
  if (auto* const ribbon = as<TimeRibbon>()) ribbon->step(forward);
}

// A moment that moves on with each frame does not draw the day anew.
void TimeRibbonItem::refresh() {
  const auto* const ribbon = as<TimeRibbon>();
  const bool isOther = !ribbon || std::exchange(revision_, ribbon->revision()) != ribbon->revision();
  if (isOther) Q_EMIT piecesChanged();
  ComponentItem::refresh();
}

QVariantList FactStripItem::facts() const {
  return read<FactStrip>([](const FactStrip& strip) {
    QVariantList facts;
    for (const auto& fact : strip.facts())
      facts << QVariantMap{{QStringLiteral("caption"), toQString(fact.caption)},
                           {QStringLiteral("value"), toQString(fact.value)}};
    return facts;
  });
}

}  // namespace fleetor
