#include "shell/account_view_controller.h"

#include <iterator>
#include <utility>

#include "service/api.h"
#include "shell/base/info_cell.h"
#include "shell/base/loading_cell.h"

namespace fleetor {

namespace {

constexpr InfoRow<User> accountRows[] = {
    {[](const User& user) { return user.name.str(); }, "Name"},
    {[](const User& user) { return user.companyName.str(); }, "Company"},
    {[](const User& user) { return user.statusDescription.str(); }, "Status"},
    {[](const User& user) { return user.address1.str(); }, "Address"},
    {[](const User& user) { return user.address2.str(); }, "Address"},
    {[](const User& user) { return user.vat.str(); }, "VAT ID"},
    {[](const User& user) { return user.sms.str(); }, "SMS", Contact::sms},
    {[](const User& user) { return user.gsm.str(); }, "Phone", Contact::phone},
    {[](const User& user) { return user.mail.str(); }, "Mail", Contact::mail},
    {[](const User& user) { return user.expirationDate.str(); }, "Expiration date"},
};
static_assert(std::size(accountRows) == UserResponse::rows);

}  // namespace

AccountViewController::AccountViewController(Environment& environment, std::shared_ptr<KnownAccount> known)
    : SheetPage(environment, "Account"), known_(std::move(known)), infoTableView_(environment) {
  outlet("infoTableView", infoTableView_);
  registerInfoCell(infoTableView_);
  registerLoadingCell(infoTableView_, localized("Loading"));
  infoTableView_.setDataSource(this);
  infoTableView_.setDelegate(this);
}

void AccountViewController::viewDidLoad() {
  SheetPage::viewDidLoad();
  infoTableView_.setTableFooterView(true);
  response_ = UserResponse::initForLoading();
}

void AccountViewController::viewDidAppear(bool animated) {
  SheetPage::viewDidAppear(animated);
  infoTableView_.reloadData();
}

void AccountViewController::loadItems() {
  if (isLoading()) return;
  setLoading(true);
  const auto self = sharedFrom(this);
  API::getWithPath("/user", {}, modelClass<UserResponse>, {},
                   [self, session = Session()](auto response, auto kind, long, auto&) {
                     if (kind == ResponseKindSuccess)
                       self->response_.nextResult(*response);
                     else
                       self->response_.onError();
                     self->setLoading(false);
                     self->infoTableView_.reloadData();
                     if (self->response_.user && !session.hasEnded())
                       self->known_->take(*self->response_.user);
                   });
}

int AccountViewController::tableViewNumberOfRowsInSection(TableView&, int) {
  return static_cast<int>(response_.total);
}

std::shared_ptr<TableViewCell> AccountViewController::tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                                     IndexPath path) {
  if (!response_.user) {
    loadItems();
    return dequeueLoadingCell(tableView);
  }
  const auto& [value, caption, contact] = accountRows[path.row];
  return dequeueInfoCell(tableView, value(*response_.user), localized(caption), contact);
}

double AccountViewController::tableViewHeightForRowAtIndexPath(TableView&, IndexPath) {
  return response_.user ? 50.0 : 60.0;
}

}  // namespace fleetor
