#include "shell/choose_vehicle_table_view_controller.h"
#include "shell/empty_view_controller.h"
#include "shell/launch_image.h"
#include "support/client.h"

namespace fleetor::test {
namespace {

constexpr const char* widgetURL = "fleetor-widget://anything/vehicles";

/// Asks for the widget's vehicle, as the widget does; nothing when no chooser comes of it.
ChooseVehicleTableViewController* requestChooser(Client& client) {
  EXPECT_TRUE(client.application.receiveURL(widgetURL));
  client.settle();
  return client.find<ChooseVehicleTableViewController>();
}

TEST(LaunchImage, FollowsTheDeviceAndTheLongSideOfItsScreen) {
  for (const auto& [idiom, width, height, scale, image] :
       {std::tuple<Idiom, double, double, double, const char*>{Idiom::pad, 1024, 768, 2, "2048x1536.png"},
        {Idiom::pad, 1024, 768, 1, "1024x768.png"},
        {Idiom::phone, 320, 480, 2, "640x960.png"},
        {Idiom::unspecified, 568, 320, 2, "640x1136.png"},
        {Idiom::phone, 375, 667, 2, "750x1334.png"},
        {Idiom::phone, 390, 600, 3, "1242x2208.png"}}) {
    FakeDevice device;
    device.idiom = idiom;
    device.width = width;
    device.height = height;
    device.scale = scale;
    EXPECT_EQ(launchImageName(device), image);
  }
}

TEST(StartUp, AsksForTheTermsAgainUnlessTheirOwnTextIsStored) {
  for (const Settings::Value& stored : {Settings::Value("yes"), Settings::Value(std::int64_t{1})}) {
    Machine phone;
    phone.standardSettings.setObject(stored, "TermsAccepted");
    Client client(phone);
    client.application.launch();
    client.advance(10);
    EXPECT_TRUE(client.find<TermsViewController>());
  }
}

TEST(TopLevel, OnATabletIsTheListBesideWhatItOpens) {
  Machine tablet(Idiom::pad);
  Client client(tablet);
  client.start();
  Viewport eyes(client.vehicles());
  client.settle();
  auto& container = *client.root<MainViewController>();
  const Rect beside{300, 0, 724, 768};
  EXPECT_EQ(container.frontViewController()->view().frame(), beside);
  EXPECT_EQ(client.find<EmptyViewController>()->launchImageView().image(), "2048x1536.png");
  auto* list = client.find<VehiclesTableViewController>();
  EXPECT_EQ(list->appearanceState(), ViewController::AppearanceState::appeared);
  EXPECT_FALSE(container.tapShouldBegin());

  // A second vehicle takes the place of the first.
  const std::weak_ptr<ViewController> first = client.open(0)->weak_from_this();
  EXPECT_EQ(client.open(1)->vehicle().name, "Vehicle 2");
  EXPECT_EQ(container.frontViewController()->view().frame(), beside);
  EXPECT_TRUE(client.find<VehicleViewController>()->navigationItem().leftBarButtonItems().empty());
  EXPECT_EQ(client.find<VehiclesTableViewController>(), list);
  eyes.scrollToEnd();
  client.settle();
  ASSERT_EQ(client.vehicles().numberOfRows(), 41);
  EXPECT_EQ(client.vehicles().indexPathForSelectedRow(), (IndexPath{0, 1})) << "another page leaves the mark";
  client.advance(31);
  EXPECT_TRUE(first.expired());
  client.application.window().setSize({1200, 700});
  client.open(2);
  EXPECT_EQ(container.frontViewController()->view().frame(), (Rect{300, 0, 900, 700}));

  // Account and about come as sheets that can be closed.
  for (std::size_t i = 0; i < 2; ++i) {
    client.tap(*list->navigationItem().rightBarButtonItems().at(i));
    const auto sheet = container.presentedViewController();
    ASSERT_TRUE(sheet);
    EXPECT_EQ(sheet->modalPresentationStyle(), ModalPresentationStyle::formSheet);
    auto& page = *sheet->childViewControllers().at(0);
    EXPECT_EQ(page.storyboardIdentifier(), i == 0 ? "AccountVC" : "AboutVC");
    client.tapLeftButtonOf(page);
    EXPECT_FALSE(container.presentedViewController());
  }

  client.delegate.showMainOrLogin();
  EXPECT_EQ(client.root<MainViewController>()->frontViewController()->view().frame(),
            (Rect{300, 0, 900, 700}))
      << "the size of the window, not of the device";
}

TEST(Widget, IsAnsweredAtOnceOrAsSoonAsSomebodyIsSignedIn) {
  Machine phone;
  {
    Client client(phone);
    client.start();
    EXPECT_FALSE(client.application.receiveURL("fleetor-widget://vehicles/7"));
    EXPECT_FALSE(client.find<ChooseVehicleTableViewController>());
    auto* chooser = requestChooser(client);
    ASSERT_TRUE(chooser);
    EXPECT_EQ(requestChooser(client), chooser);
  }
  phone.keyStore.items().clear();
  Client client(phone);
  client.application.launch();
  EXPECT_TRUE(client.application.receiveURL(widgetURL));
  client.advance(3);
  ASSERT_TRUE(client.root<LoginViewController>());
  client.transport.answer("/token", tokenReply("t"));
  client.signIn("anna", "secret");
  auto* chooser = client.find<ChooseVehicleTableViewController>();
  ASSERT_TRUE(chooser);
  client.tapLeftButtonOf(*chooser);
  EXPECT_FALSE(client.find<ChooseVehicleTableViewController>());
  EXPECT_FALSE(client.delegate.showChooser());
}

TEST(Widget, WaitsForTheTermsAndGivesWayToWhatIsPresentedAlready) {
  Machine tablet(Idiom::pad);
  Client client(tablet);
  tablet.standardSettings.setObject(std::string("FirstRun"), "FirstRun");
  API::keychain().setObject("kept", sec::valueData);
  client.application.launch();
  client.settle();
  EXPECT_TRUE(client.application.receiveURL(widgetURL));
  client.find<TermsViewController>()->agreeButton().tap();
  client.find<TermsViewController>()->agreeButton().tap();  // an impatient second tap
  client.settle();
  auto* chooser = client.find<ChooseVehicleTableViewController>();
  ASSERT_TRUE(chooser);
  EXPECT_EQ(chooser->modalPresentationStyle(), ModalPresentationStyle::formSheet);
  chooser->cancelAction(chooser->itemsTableView());
  client.settle();

  // The platform presents nothing over a screen that presents; the request is over with that.
  client.tapRightButtonOf(*client.find<VehiclesTableViewController>());
  EXPECT_FALSE(requestChooser(client));
  EXPECT_FALSE(client.delegate.showChooser());
}

TEST(Chooser, StoresTheVehicleForTheWidgetOrNothing) {
  Machine phone;
  Client client(phone);
  client.start();
  auto* chooser = requestChooser(client);
  Viewport eyes(chooser->itemsTableView());
  client.settle();
  EXPECT_EQ(client.textOfRow(chooser->itemsTableView(), 3), "Vehicle 4");
  EXPECT_EQ(chooser->itemsTableView().cellForRow(3)->detailTextLabel().text(), "");
  chooser->itemsTableView().tap(3);
  client.settle();
  EXPECT_FALSE(client.find<ChooseVehicleTableViewController>());
  EXPECT_EQ(phone.sharedSettings.values["WidgetVehicle"], Settings::Value(std::int64_t{4}));
  EXPECT_EQ(phone.sharedSettings.synchronized, 1);
}

}  // namespace
}  // namespace fleetor::test
