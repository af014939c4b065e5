#include <atomic>
#include <thread>

#include "support/request_layer.h"
#include "support/scripted_transport.h"
#include "support/threaded_queues.h"

namespace fleetor::test {
namespace {

class RealThreads : public RequestLayer {
 protected:
  RealThreads() { install(queues, transport); }

  ThreadedQueues queues;
  ScriptedTransport transport{queues};
};

/// Records on which thread it was destroyed.
struct Screen {
  explicit Screen(std::atomic<std::thread::id>& thread) : destroyedOn(thread) {}
  ~Screen() { destroyedOn = std::this_thread::get_id(); }
  std::atomic<std::thread::id>& destroyedOn;
};

TEST_F(RealThreads, CompleteEveryRequestOnceOnTheMainThread) {
  constexpr std::size_t requests = 400;
  transport.answer("/vehicles",
                   jsonReply(R"({"total":1,"error":{"code":200,"description":""},"vehicles":[]})"));
  transport.answer("/live", jsonReply("{", 200));
  transport.answer("/map", failedReply(url_error::timedOut));
  API::configureRequest();

  const auto mainThread = std::this_thread::get_id();
  std::vector<int> calls(requests);
  std::vector<std::atomic<std::thread::id>> destroyedOn(requests);
  std::size_t done = 0;
  std::size_t records = 0;
  for (std::size_t i = 0; i < requests; ++i) {
    const auto completion = [&, i, screen = std::make_shared<Screen>(destroyedOn[i])](
                                auto response, ResponseKind, long, const std::optional<APIFailure>&) {
      EXPECT_EQ(std::this_thread::get_id(), mainThread);
      ++calls[i];
      ++done;
      if (response) ++records;
    };
    const Params number{{"n", static_cast<int>(i)}};
    if (i % 4 == 0) API::requestAuthForToken("token" + std::to_string(i));
    if (i % 3 == 0) API::getWithPath("/vehicles", number, modelClass<VehiclesResponse>, {}, completion);
    if (i % 3 == 1) API::getWithPath("/live", number, modelClass<LiveResponse>, {}, completion);
    if (i % 3 == 2) API::getWithPath("/map", number, modelClass<MapResponse>, {}, completion);
  }
  ASSERT_TRUE(queues.runMainUntil([&] { return done == requests && !indicator.visible; }));
  EXPECT_EQ(calls, std::vector<int>(requests, 1));
  EXPECT_EQ(records, 134u);
  EXPECT_EQ(events.size(), requests - records) << "one message for each failure";
  for (const auto& thread : destroyedOn)
    EXPECT_EQ(thread, mainThread);
}

TEST_F(RealThreads, LetARequestAfterTheShutDownGoOnTheMainThread) {
  API::shutDown();
  std::atomic<std::thread::id> destroyedOn{};
  API::getWithPath("/live", modelClass<LiveResponse>, {},
                   [screen = std::make_shared<Screen>(destroyedOn)](auto&&...) {});
  // Looks after each main task, of which there are none when the request goes elsewhere.
  queues.runMainUntil([&] { return destroyedOn.load() != std::thread::id(); }, Seconds(5));
  EXPECT_EQ(destroyedOn, std::this_thread::get_id());
}

}  // namespace
}  // namespace fleetor::test
