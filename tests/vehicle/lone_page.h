#pragma once

#include <any>

#include "platform/documents.h"
#include "support/client.h"
#include "vehicle/notifications.h"

namespace fleetor::test {

/// Keeps what is saved, or refuses to.
class FakeDocuments final : public Documents {
 public:
  explicit FakeDocuments(Queues& queues) : queues_(queues) {}

  SaveOutcome outcome = SaveOutcome::saved;
  std::map<std::string, std::string> files;
  mutable Page printed;

  void save(NewDocument document, Done done) override {
    queues_.global([this, document = std::move(document), done = std::move(done)] {
      std::string& content = files[document.name];
      EXPECT_TRUE(document.write([&](std::string_view piece) {
        content += piece;
        return true;
      }));
      queues_.main([this, name = document.name, done] { done(outcome, "~/" + name); });
    });
  }
  std::string pdfOf(const Page& page) const override {
    printed = page;
    return "%PDF";
  }

 private:
  Queues& queues_;
};

/// A reading of vehicle 7 there.
inline std::shared_ptr<Live> liveAt(const std::string& latitude, const std::string& longitude) {
  auto live = std::make_shared<Live>();
  live->vehicles.vehicleId = 7;
  live->vehicles.name = "Van";
  live->datetime = "2026-03-10 08:00:15";
  live->street = "Long Street 5";
  live->location.lat = latitude;
  live->location.lon = longitude;
  return live;
}

/// A page of vehicle 7, alone in the window, without a pager.
template <class Page>
class LonePage : public testing::Test {
 protected:
  LonePage() {
    Vehicle vehicle;
    vehicle.vehicleId = 7;
    vehicle.name = "Van";
    vehicle.icon = "van";
    vehicle.mapLineColor = "0f0";
    page->setVehicle(vehicle);
    API::setAPIBaseURLWithString(Client::baseURL());
    show();
  }

  void show() { client.application.window().setRootViewController(page); }
  void hide() { client.application.window().setRootViewController(nullptr); }
  template <class Kind>
  Kind& outlet(const char* name) {
    return outletOf<Kind>(*page, name);
  }
  void tap(const char* button) { outlet<Button>(button).tap(); }
  void pollBrings(const std::shared_ptr<const Live>& live) { poll(live); }
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
  FakeDocuments documents{client.queues};
  std::shared_ptr<Page> page = [this] {
    client.environment.documents = &documents;
    return std::make_shared<Page>(client.environment);
  }();
};

}  // namespace fleetor::test
