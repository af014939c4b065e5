#include "shell/account_view_controller.h"

#include "service/api.h"
#include "shell/base/info_cell.h"
#include "shell/base/loading_cell.h"

namespace fleetor {

AccountViewController::AccountViewController(Environment& environment)
    : SheetPage(environment, "Account"), infoTableView_(environment) {
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
  API::getWithPath("/user", {}, modelClass<UserResponse>, {}, [self](auto response, auto kind, long, auto&) {
    if (kind == ResponseKindSuccess)
      self->response_.nextResult(*response);
    else
      self->response_.onError();
    self->setLoading(false);
    self->infoTableView_.reloadData();
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
  const auto [value, caption] = textsForRow(path.row);
  return dequeueInfoCell(tableView, value, caption);
}

double AccountViewController::tableViewHeightForRowAtIndexPath(TableView&, IndexPath) {
  return response_.user ? 50.0 : 60.0;
}

std::pair<std::string, std::string> AccountViewController::textsForRow(int row) const {
  const User& user = *response_.user;
  switch (row) {
    case 0:
      return {user.name.str(), localized("Name")};
    case 1:
      return {user.companyName.str(), localized("Company")};
    case 2:
      return {user.statusDescription.str(), localized("Status")};
    case 3:
      return {user.address1.str(), localized("Address")};
    case 4:
      return {user.address2.str(), localized("Address")};
    case 5:
      return {user.vat.str(), localized("VAT ID")};
    case 6:
      return {user.sms.str(), localized("SMS")};
    case 7:
      return {user.gsm.str(), localized("Phone")};
    case 8:
      return {user.mail.str(), localized("Mail")};
    case 9:
      return {user.expirationDate.str(), localized("Expiration date")};
    default:
      return {};
  }
}

}  // namespace fleetor
