#pragma once

#include <QElapsedTimer>
#include <QQuickWindow>
#include <QTest>

namespace fleetor {

/// Waits until the window has drawn nothing for a fifth of a second: whatever moved is at rest. False after
/// ten seconds.
inline bool comesToRest(QQuickWindow& window) {
  QElapsedTimer still;
  still.start();
  const QObject here;  // drops what the render thread has queued when it goes
  QObject::connect(&window, &QQuickWindow::frameSwapped, &here, [&] { still.restart(); });
  return QTest::qWaitFor([&] { return still.elapsed() > 200; }, 10'000);
}

}  // namespace fleetor
