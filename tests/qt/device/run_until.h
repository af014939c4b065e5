#pragma once

#include <gtest/gtest.h>

#include <QTest>

namespace fleetor {

/// Runs the main loop until `done` says so, or fails after some seconds.
template <class Done>
void runUntil(Done done) {
  EXPECT_TRUE(QTest::qWaitFor(done, 10'000));
}

}  // namespace fleetor
