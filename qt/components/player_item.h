#pragma once

#include <QString>

#include "qt/components/adapters.h"
#include "ui/controls/player.h"

namespace fleetor {

/// The adapter of what replays a recording.
class PlayerItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(bool available READ available NOTIFY changed)
  Q_PROPERTY(bool open READ open WRITE setOpen NOTIFY changed)
  Q_PROPERTY(bool playing READ playing NOTIFY changed)
  Q_PROPERTY(bool following READ following NOTIFY changed)
  Q_PROPERTY(bool gap READ gap NOTIFY changed)
  Q_PROPERTY(int rate READ rate NOTIFY changed)
  Q_PROPERTY(QString time READ time NOTIFY changed)
  Q_PROPERTY(QString speed READ speed NOTIFY changed)
  Q_PROPERTY(QString distance READ distance NOTIFY changed)
  Q_PROPERTY(QString address READ address NOTIFY changed)
  Q_PROPERTY(QString note READ note NOTIFY changed)

 public:
  using ComponentItem::ComponentItem;

  bool available() const { return state().available; }
  bool open() const { return state().open; }
  void setOpen(bool open);
  bool playing() const { return state().playing; }
  bool following() const { return state().following; }
  bool gap() const { return state().gap; }
  int rate() const { return state().rate; }
  QString time() const { return toQString(state().time); }
  QString speed() const { return toQString(state().speed); }
  QString distance() const { return toQString(state().distance); }
  QString address() const { return toQString(state().address); }
  QString note() const { return toQString(state().note); }

  /// A text in the user's language.
  Q_INVOKABLE QString word(const QString& text) const { return adapters().localized(text.toStdString()); }

  Q_INVOKABLE void togglePlaying();
  Q_INVOKABLE void nextRate();
  Q_INVOKABLE void step(int points);
  Q_INVOKABLE void follow();
  Q_INVOKABLE void advance(double seconds);

 private:
  const Player::State& state() const;
};

}  // namespace fleetor
