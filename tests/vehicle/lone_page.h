#pragma once

#include <gmock/gmock.h>

#include <any>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/client.h"
#include "vehicle/notifications.h"

namespace fleetor::test {

/// A page of vehicle 7, alone in the window, without a pager.
template <class Page>
class LonePage : public testing::Test {
 protected:
  LonePage() {
    Vehicle vehicle;
    vehicle.vehicleId = 7;
    vehicle.icon = "van";
    vehicle.mapLineColor = "0f0";
    page->setVehicle(vehicle);
    API::setAPIBaseURLWithString(Client::baseURL());
    show();
  }

  void show() { client.application.window().setRootViewController(page); }
  void hide() { client.application.window().setRootViewController(nullptr); }
  void poll(const std::any& outcome) {
    client.center.postNotificationName(kFleetorNotificationLive, outcome);
    client.queues.runUntilIdle();
  }
  void choose(const std::any& day) {
    client.center.postNotificationName(kFleetorNotificationDate, day);
    client.queues.runUntilIdle();
  }
  /// Answers the oldest request to that path, which was left open.
  void answer(const char* path, HttpReply reply) {
    client.queues.runUntilIdle();
    ASSERT_TRUE(client.transport.answerOpen(path, std::move(reply)));
    client.queues.runUntilIdle();
  }
  std::vector<std::string> requests() {
    client.queues.runUntilIdle();
    return client.takeRequests();
  }

  Machine phone;
  Client client{phone};
  std::shared_ptr<Page> page = std::make_shared<Page>(client.environment);
};

}  // namespace fleetor::test
