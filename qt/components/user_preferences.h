#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <QVariant>

#include "qt/device/settings_portal.h"

namespace fleetor {

/// How the user wants the window: with marks for the keyboard focus while keys are in use, text of some size,
/// dark or light, with animations or without, with more contrast or less. One for each QML engine, main
/// thread only.
class UserPreferences : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(bool usesKeys READ usesKeys NOTIFY usesKeysChanged)
  Q_PROPERTY(double textScale READ textScale NOTIFY textScaleChanged)
  Q_PROPERTY(QVariant wantsDark READ wantsDark NOTIFY wantsDarkChanged)
  Q_PROPERTY(bool wantsMotion READ wantsMotion NOTIFY wantsMotionChanged)
  Q_PROPERTY(bool wantsContrast READ wantsContrast NOTIFY wantsContrastChanged)

 public:
  /// The size, in points, of an application font that asks for text at its normal size.
  static constexpr double normalPoints = 10;

  explicit UserPreferences(QObject* parent = nullptr);

  bool usesKeys() const { return usesKeys_; }  ///< the last input was a key, not a finger or a mouse
  double textScale() const;                    ///< 1 (normal) to 2, by the application's font and the desktop
  QVariant wantsDark() const;                  ///< true or false; undefined: as the palette is
  bool wantsMotion() const { return desktop_.animations; }
  bool wantsContrast() const { return desktop_.contrast; }

  void followDesktop(const DesktopPreferences& preferences);

 Q_SIGNALS:
  void usesKeysChanged();
  void textScaleChanged();
  void wantsDarkChanged();
  void wantsMotionChanged();
  void wantsContrastChanged();

 protected:
  bool eventFilter(QObject* target, QEvent* event) override;

 private:
  bool usesKeys_ = false;
  DesktopPreferences desktop_;
};

}  // namespace fleetor
