#pragma once

#include "kept/kept_fleet.h"
#include "service/api.h"
#include "shell/app_delegate.h"
#include "shell/launch_view_controller.h"
#include "shell/login_view_controller.h"
#include "shell/main_storyboard.h"
#include "shell/main_view_controller.h"
#include "shell/terms_view_controller.h"
#include "shell/vehicles_table_view_controller.h"
#include "support/fake_device.h"
#include "support/find_screen.h"
#include "support/fleet.h"
#include "support/memory_stores.h"
#include "support/scripted_transport.h"
#include "support/testing.h"
#include "support/virtual_queues.h"
#include "ui/appearance.h"
#include "ui/containers/navigation_controller.h"
#include "vehicle/info_detail_view_controller.h"
#include "vehicle/vehicle_table_view_cell.h"
#include "vehicle/vehicle_view_controller.h"

namespace fleetor::test {

/// What outlives one run of the client.
struct Machine {
  FakeDevice device;
  MemoryKeyStore keyStore;
  MemorySettings standardSettings;
  MemorySettings sharedSettings;
  std::string keptFleet;  ///< path of the file that keeps the vehicles; empty: they are not kept
  Date morning = VirtualQueues().now();

  Machine() = default;
  explicit Machine(Idiom idiom) { becomes(idiom); }
  void becomes(Idiom idiom) {
    device.idiom = idiom;
    device.width = idiom == Idiom::pad ? 1024 : 390;
    device.height = idiom == Idiom::pad ? 768 : 844;
  }
};

/// Stands for the eyes of somebody who looks at a table: after every reload the rows from `top` on are about
/// to be shown.
class Viewport {
 public:
  static constexpr int rowsInSight = 8;

  explicit Viewport(TableView& table) : table_(table) {
    reloaded_ = table.reloaded.connect([this] { look(); });
    look();
  }

  void scrollTo(int top) {
    for (int row = top_; row < top_ + rowsInSight; ++row)
      table_.didEndDisplayingRow(row);
    top_ = top;
    look();
  }
  void scrollToEnd() { scrollTo(std::max(0, table_.numberOfRows() - rowsInSight)); }

 private:
  void look() {
    for (int row = top_; row < std::min(top_ + rowsInSight, table_.numberOfRows()); ++row)
      table_.cellForRow(row);
  }

  TableView& table_;
  Connection reloaded_;
  int top_ = 0;
};

/// The whole client on the headless kit, with virtual time and a scripted service: one run, from its start to
/// the end of this object. Tasks that are still waiting then are dropped while the rest still stands.
class Client {
 public:
  Client() : Client(nullptr) {}  ///< on a new phone
  explicit Client(Machine& on) : Client(&on) {}
  ~Client() {
    EXPECT_THAT(machine.device.untranslated, IsEmpty()) << "neither in de.json nor in untranslated.json";
  }

  /// Starts on a machine where the user agreed to the terms and, unless `token` is empty, signed in earlier.
  void start(const std::string& token = "old-token") {
    machine.standardSettings.setObject(std::string("FirstRun"), "FirstRun");
    machine.standardSettings.setObject(std::string("TermsAccepted"), "TermsAccepted");
    if (!token.empty()) API::keychain().setObject(token, sec::valueData);
    application.launch();
    advance(3);
  }

  void advance(double seconds) { queues.advance(Seconds(seconds)); }
  void settle() { advance(1); }  ///< long enough for every animation, too short for a poll

  template <class Screen>
  Screen* root() {
    return dynamic_cast<Screen*>(application.window().rootViewController().get());
  }

  template <class Screen>
  Screen* find() {
    return findScreen<Screen>(application.window().rootViewController().get());
  }

  void signIn(const std::string& user, const std::string& password) {
    auto& login = *root<LoginViewController>();
    login.loginTextField().setText(user);
    login.passwordTextField().setText(password);
    login.loginButton().tap();
    settle();
  }

  Button& menuEntry(const char* name) {
    return outletOf<Button>(*root<MainViewController>()->rearViewController(), name);
  }

  TableView& vehicles() { return find<VehiclesTableViewController>()->itemsTableView(); }

  /// Looks at the list, whose first page comes with that, and taps a row.
  VehicleViewController* open(int row) {
    const Viewport eyes(vehicles());
    settle();
    vehicles().tap(row);
    settle();
    return find<VehicleViewController>();
  }

  template <class AnyButton>
  void tap(AnyButton& button) {
    button.tap();
    settle();
  }
  void tapLeftButtonOf(ViewController& screen) { tap(*screen.navigationItem().leftBarButtonItems().at(0)); }
  void tapRightButtonOf(ViewController& screen) { tap(*screen.navigationItem().rightBarButtonItems().at(0)); }

  /// The texts of a row, top to bottom.
  static std::string textOfRow(TableView& table, int row) {
    const auto cell = table.cellForRow(row);
    if (auto* vehicle = dynamic_cast<VehicleTableViewCell*>(cell.get())) return vehicle->nameLabel().text();
    if (cell->reuseIdentifier() == "LoadingCell") return "...";
    return cell->textLabel().text() + " | " + cell->detailTextLabel().text();
  }

  static std::vector<std::string> textsOf(TableView& table) {
    std::vector<std::string> rows(static_cast<std::size_t>(table.numberOfRows()));
    for (int row = 0; row < table.numberOfRows(); ++row)
      rows[static_cast<std::size_t>(row)] = textOfRow(table, row);
    return rows;
  }

  /// The requests so far as "GET /vehicles?offset=0&limit=20", and forgets them.
  std::vector<std::string> takeRequests() {
    std::vector<std::string> lines;
    for (const auto& each : transport.requests())
      lines.push_back(each.method + " " + each.url.substr(baseURL().size()));
    transport.forgetRequests();
    return lines;
  }

  /// Every message that was shown since the last call, in order; square corners are marked.
  std::vector<std::string> takeMessages() {
    advance(60);  // those that still wait in line
    return std::exchange(messages_, {});
  }

  static std::string baseURL() { return "http://service.test"; }

  Machine own;
  Machine& machine;
  NotificationCenter center;
  Appearance appearance;
  Environment environment{queues, machine.device, queues, center, appearance};
  VirtualQueues queues{machine.morning};
  std::unique_ptr<KeptFleet> kept =
      machine.keptFleet.empty() ? nullptr
                                : std::make_unique<KeptFleet>(queues, queues, machine.keyStore,
                                                              machine.keptFleet, [](KeptFleet::Problem) {});
  ScriptedTransport transport{queues};
  FakeReachability reachability;
  FakeIndicator indicator;
  RecordingLog log;
  AppDelegate delegate{environment, machine.standardSettings, baseURL()};
  Storyboard storyboard =
      makeMainStoryboard(environment, machine.standardSettings, machine.sharedSettings, kept.get());
  Application application{environment, storyboard, delegate};

 private:
  explicit Client(Machine* on) : machine(on ? *on : own) {
    API::install({queues, transport, machine.keyStore, machine.sharedSettings, reachability, indicator, log,
                  machine.device,
                  [this](const std::string& text, double seconds, bool rounded) {
                    application.window().showToast(text, seconds, rounded);
                  },
                  [this] { delegate.showMainOrLogin(); },
                  [this] {
                    if (kept) kept->forget();
                  }});
    onWindow_ = application.window().changed.connect([this] { noteToast(); });
    serveFleet(transport, 45, 45);
    transport.answer("/logout", jsonReply(envelope(0, "")));
    transport.answer("/live", [](const HttpRequest& request) {
      return std::optional(liveReply(numberOf(request.url, "vehid"), 57));
    });
    transport.answer("/map", mapReply({"", "Parking", ""}));
    transport.answer("/route", routeReply(2));
    transport.answer("/info", infoReply());
    transport.answer("/user", userReply());
  }

  void noteToast() {
    const Toast* toast = application.window().toast();
    if (toast && toast != lastToast_)
      messages_.push_back(toast->text() + (toast->rounded() ? "" : " [square]"));
    lastToast_ = toast;
  }

  const Toast* lastToast_ = nullptr;
  std::vector<std::string> messages_;
  Connection onWindow_;
};

}  // namespace fleetor::test
