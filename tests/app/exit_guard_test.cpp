#include "app/exit_guard.h"

#include <cstdio>
#include <cstdlib>
#include <thread>

#include "support/testing.h"

namespace fleetor {
namespace {

struct TakenApart {
  ~TakenApart() { std::fputs("taken apart", stderr); }
};

void makeStaticObject() {
  static const TakenApart object;
}

const auto nothing = IsEmpty();

TEST(ExitGuardDeathTest, KeepsStaticObjectsWholeWhenALibraryEndsTheProgram) {
  EXPECT_EXIT(
      {
        const ExitGuard guard;
        makeStaticObject();
        std::exit(0);
      },
      testing::ExitedWithCode(EXIT_FAILURE), nothing);
  EXPECT_EXIT(
      {
        ExitGuard guard;
        makeStaticObject();
        guard.renew();
        std::thread([] { std::exit(0); }).join();
      },
      testing::ExitedWithCode(EXIT_FAILURE), nothing);
  EXPECT_EXIT(
      {
        { const ExitGuard guard; }
        makeStaticObject();
        std::exit(0);
      },
      testing::ExitedWithCode(0), "taken apart");
}

}  // namespace
}  // namespace fleetor
