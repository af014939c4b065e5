#pragma once

// Of Qt 5 and of Qt 6, so that maps for both are timed alike.

#include <QEvent>
#include <QQuickWindow>
#include <functional>

#include "pan_protocol.h"

namespace fleetor {

/// From the request for a frame to its end, on the one thread that does both.
class FrameTimer final : public QObject {
 public:
  explicit FrameTimer(QQuickWindow& window) {
    window.installEventFilter(this);
    connect(&window, &QQuickWindow::frameSwapped, this, [this] {
      if (finished) finished(pan::now() - started_);
    });
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::UpdateRequest) started_ = pan::now();
    return QObject::eventFilter(watched, event);
  }
  std::function<void(double milliseconds)> finished;

 private:
  double started_ = 0;
};

}  // namespace fleetor
