#include "shell/account_view_controller.h"
#include "shell/base/contact_link.h"
#include "support/client.h"

namespace fleetor::test {
namespace {

TEST(ContactURL, IsMadeOfOnePhoneNumberOrMailAddressAndNothingElse) {
  const std::tuple<Contact, const char*, const char*> cases[] = {
      {Contact::phone, "+48 600 100-200", "tel:+48600100200"},
      {Contact::phone, "(0 12) 345.67/89", "tel:0123456789"},
      {Contact::sms, "112", "sms:112"},
      {Contact::mail, "anna.b+fleet@nowak.test", "mailto:anna.b+fleet@nowak.test"},
      {Contact::none, "600100200", ""},
  };
  for (const auto& [contact, value, url] : cases)
    EXPECT_EQ(contactURL(contact, value), url) << value;
  for (const char* number :
       {"12", "1234567890123456", "600 100 200, 600 100 201", "*#06#", "600100200?body=hello"})
    for (const Contact contact : {Contact::phone, Contact::sms})
      EXPECT_EQ(contactURL(contact, number), "") << number;
  for (const char* address : {"anna@nowak.test?subject=x", "anna@nowak.test,jan@nowak.test", "@nowak.test",
                              "anna@localhost", "Anna <anna@nowak.test>"})
    EXPECT_EQ(contactURL(Contact::mail, address), "") << address;
}

class Contacts : public testing::Test {
 protected:
  static constexpr int smsRow = 6, phoneRow = 7, mailRow = 8;

  Contacts() {
    auto user = userReply();
    user.body.replace(user.body.find("+48 1"), 5, "call me");
    client.transport.answer("/user", user);
    client.application.window().setRootViewController(account);
    const Viewport eyes(table);
    client.settle();
  }

  Machine phone;
  Client client{phone};
  std::shared_ptr<AccountViewController> account =
      std::make_shared<AccountViewController>(client.environment, std::make_shared<KnownAccount>());
  TableView& table = account->infoTableView();
};

TEST_F(Contacts, AreCalledAndWrittenToByATapOrCopiedWhereNoProgramDoes) {
  const auto hintOf = [&](int row) {
    auto& picture = outletOf<ImageView>(*table.cellForRow(row), "linkImageView");
    return picture.image() + picture.accessibleName();
  };
  EXPECT_EQ(hintOf(phoneRow), "RowCallCall");
  EXPECT_EQ(hintOf(smsRow), "") << "no number";
  phone.device.unknownSchemes = {"mailto"};
  for (const int row : {0, smsRow, phoneRow, mailRow})
    table.tap(row);
  EXPECT_THAT(phone.device.openedURLs, ElementsAre("tel:+482"));
  EXPECT_EQ(phone.device.clipboard, "anna@nowak.test");
  EXPECT_THAT(client.takeMessages(), ElementsAre("Copied [square]"));
  EXPECT_FALSE(table.indexPathForSelectedRow()) << "a link is followed, not selected";
}

TEST_F(Contacts, AndAllOtherValuesAreCopiedUnlessEmpty) {
  EXPECT_TRUE(table.copy(0));
  EXPECT_EQ(phone.device.clipboard, "Anna Nowak");
  EXPECT_TRUE(table.copy(phoneRow));
  EXPECT_EQ(phone.device.clipboard, "+48 2");
  EXPECT_FALSE(table.copy(4)) << "an empty address";
  EXPECT_EQ(phone.device.clipboard, "+48 2");
}

}  // namespace
}  // namespace fleetor::test
