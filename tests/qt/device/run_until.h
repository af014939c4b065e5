#pragma once

#include <gtest/gtest.h>

#include <QEventLoop>
#include <QTimer>

namespace fleetor {

/// Runs the main loop until `done` says so, or fails after some seconds.
template <class Done>
void runUntil(Done done) {
  QEventLoop loop;
  QTimer poll, limit;
  bool late = false;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    if (done()) loop.quit();
  });
  QObject::connect(&limit, &QTimer::timeout, [&] {
    late = true;
    loop.quit();
  });
  poll.start(1);
  limit.start(10'000);
  loop.exec();
  EXPECT_FALSE(late);
}

}  // namespace fleetor
