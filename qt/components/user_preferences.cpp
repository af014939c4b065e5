#include "qt/components/user_preferences.h"

#include <QEvent>
#include <QFont>
#include <QFontInfo>
#include <QGuiApplication>
#include <algorithm>
#include <utility>

namespace fleetor {

UserPreferences::UserPreferences(QObject* parent) : QObject(parent) {
  qGuiApp->installEventFilter(this);
}

double UserPreferences::textScale() const {
  const double ofFont = QFontInfo(QGuiApplication::font()).pointSizeF() / normalPoints;
  return std::clamp(std::max(ofFont, 1.0) * desktop_.textScale, 1.0, 2.0);
}

QVariant UserPreferences::wantsDark() const {
  return desktop_.dark ? QVariant(*desktop_.dark) : QVariant();
}

void UserPreferences::followDesktop(const DesktopPreferences& preferences) {
  const DesktopPreferences before = std::exchange(desktop_, preferences);
  if (before.dark != preferences.dark) Q_EMIT wantsDarkChanged();
  if (before.textScale != preferences.textScale) Q_EMIT textScaleChanged();
  if (before.animations != preferences.animations) Q_EMIT wantsMotionChanged();
  if (before.contrast != preferences.contrast) Q_EMIT wantsContrastChanged();
}

bool UserPreferences::eventFilter(QObject* target, QEvent* event) {
  bool keys = usesKeys_;
  switch (event->type()) {
    case QEvent::KeyPress:
      keys = true;
      break;
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
      keys = false;
      break;
    case QEvent::ApplicationFontChange:
      if (target == qGuiApp) Q_EMIT textScaleChanged();
      break;
    default:
      break;
  }
  if (std::exchange(usesKeys_, keys) != keys) Q_EMIT usesKeysChanged();
  return false;
}

}  // namespace fleetor
