#pragma once

#include "service/api.h"
#include "service/envelopes.h"
#include "support/fake_device.h"
#include "support/memory_stores.h"
#include "support/testing.h"

namespace fleetor::test {

/// The request layer over a device of stand-ins, for a fixture that adds queues and a transport. `events`
/// holds, in order, what people and callers noticed: "toast: …", "show main", "show login" and "completed …".
class RequestLayer : public testing::Test {
 public:
  ~RequestLayer() override { EXPECT_THAT(device.untranslated, IsEmpty()) << "in no table of texts"; }

 protected:
  void install(Queues& queues, Transport& transport) {
    API::install({queues, transport, keyStore, settings, reachability, indicator, log, device,
                  [this](const std::string& text, double seconds, bool rounded) {
                    EXPECT_TRUE(seconds == 3.0 && rounded);
                    events.push_back("toast: " + text);
                  },
                  [this] { events.push_back(API::isLogged() ? "show main" : "show login"); }});
    API::setAPIBaseURLWithString("http://service.test");
  }

  /// A completion that writes down how the request ended.
  auto completed() {
    return [this](auto response, ResponseKind kind, long status, const std::optional<APIFailure>& error) {
      events.push_back("completed " + std::to_string(static_cast<int>(kind)) + ", " + std::to_string(status) +
                       (response ? ", a record" : ""));
      lastError = error;
    };
  }

  std::vector<std::string> takeEvents() { return std::exchange(events, {}); }

  MemoryKeyStore keyStore;
  MemorySettings settings;
  FakeReachability reachability;
  FakeIndicator indicator;
  RecordingLog log;
  FakeDevice device;
  std::vector<std::string> events;
  std::optional<APIFailure> lastError;
};

inline constexpr const char* dataMessage =
    "toast: The data returned by the server is incorrect, please try again";
inline constexpr const char* unexpectedMessage = "toast: An unexpected error occurred, please try again";
inline constexpr const char* connectionMessage =
    "toast: The call ended with an error, please check the status of your Internet connection";
inline constexpr const char* expiredMessage = "toast: Your session has expired, you will be logged out";

}  // namespace fleetor::test
