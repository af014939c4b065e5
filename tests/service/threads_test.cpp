#include <mutex>
#include <optional>
#include <thread>

#include "service/api.h"
#include "service/envelopes.h"
#include "service_test.h"
#include "support/threaded_queues.h"

namespace fleetor::test {
namespace {

/// Says on which thread it was let go.
struct Screen {
  explicit Screen(std::thread::id& thread) : destroyedOn(thread) {}
  ~Screen() { destroyedOn = std::this_thread::get_id(); }
  std::thread::id& destroyedOn;
};

TEST(RequestLayerOnRealThreads, CompletesEveryRequestOnceOnTheMainThread) {
  constexpr int requests = 400;
  MemoryKeyStore keyStore;
  MemorySettings settings;
  FakeReachability reachability;
  FakeIndicator indicator;
  RecordingLog log;
  FakeDevice device;
  ThreadedQueues queues;
  ScriptedTransport transport(queues);
  transport.answer("/vehicles",
                   jsonReply(R"({"total":1,"error":{"code":200,"description":""},"vehicles":[]})"));
  transport.answer("/live", jsonReply("{", 200));
  transport.answer("/map", failedReply(url_error::timedOut));
  int toasts = 0;
  API::install({queues, transport, keyStore, settings, reachability, indicator, log, device,
                [&](const std::string&, double, bool) { ++toasts; }, [] {}});
  API::setAPIBaseURLWithString("http://service.test");
  API::configureRequest();

  const auto mainThread = std::this_thread::get_id();
  std::vector<int> calls(requests);
  std::vector<std::thread::id> destroyedOn(requests);
  int done = 0;
  int records = 0;
  for (int i = 0; i < requests; ++i) {
    const auto completion = [&, i,
                             screen = std::make_shared<Screen>(destroyedOn[static_cast<std::size_t>(i)])](
                                auto response, ResponseKind, long, const std::optional<APIFailure>&) {
      EXPECT_EQ(std::this_thread::get_id(), mainThread);
      ++calls[static_cast<std::size_t>(i)];
      ++done;
      if (response) ++records;
    };
    if (i % 4 == 0) API::requestAuthForToken("token" + std::to_string(i));
    if (i % 3 == 0) API::getWithPath("/vehicles", {{"n", i}}, modelClass<VehiclesResponse>, {}, completion);
    if (i % 3 == 1) API::getWithPath("/live", {{"n", i}}, modelClass<LiveResponse>, {}, completion);
    if (i % 3 == 2) API::getWithPath("/map", {{"n", i}}, modelClass<MapResponse>, {}, completion);
  }
  ASSERT_TRUE(queues.runMainUntil([&] { return done == requests && !indicator.visible; }));
  EXPECT_EQ(calls, std::vector<int>(requests, 1));
  EXPECT_EQ(records, 134);
  EXPECT_EQ(toasts, requests - records);
  EXPECT_EQ(destroyedOn, std::vector<std::thread::id>(requests, mainThread));
}

TEST(RequestLayerOnRealThreads, LetsARequestAfterTheShutDownGoOnTheMainThread) {
  MemoryKeyStore keyStore;
  MemorySettings settings;
  FakeReachability reachability;
  FakeIndicator indicator;
  RecordingLog log;
  FakeDevice device;
  ThreadedQueues queues;
  ScriptedTransport transport(queues);
  API::install({queues, transport, keyStore, settings, reachability, indicator, log, device, {}, {}});
  API::shutDown();
  std::mutex mutex;
  std::optional<std::thread::id> destroyedOn;
  std::shared_ptr<void> screen(nullptr, [&](void*) {
    const std::lock_guard lock(mutex);
    destroyedOn = std::this_thread::get_id();
  });
  API::getWithPath("/live", modelClass<LiveResponse>, {}, [screen = std::move(screen)](auto&&...) {});
  // Looks after each main task, of which there are none when the request goes elsewhere.
  queues.runMainUntil(
      [&] {
        const std::lock_guard lock(mutex);
        return destroyedOn.has_value();
      },
      Seconds(5));
  const std::lock_guard lock(mutex);
  EXPECT_EQ(destroyedOn, std::this_thread::get_id());
}

}  // namespace
}  // namespace fleetor::test
