#include "shell/base/info_cell.h"

#include <utility>

#include "ui/clipboard.h"

namespace fleetor {

namespace {

constexpr const char* infoCell = "InfoCell";

struct ContactPicture {
  const char* image;
  const char* name;  ///< English, not localised yet
};

ContactPicture pictureOf(Contact contact) {
  switch (contact) {
    case Contact::none:
      return {"", ""};
    case Contact::phone:
      return {"RowCall", "Call"};
    case Contact::sms:
      return {"RowMessage", "Send SMS"};
    case Contact::mail:
      return {"RowMail", "Send mail"};
  }
  return {"", ""};
}

}  // namespace

InfoTableViewCell::InfoTableViewCell(std::string reuseIdentifier)
    : TableViewCell(std::move(reuseIdentifier)) {
  outlet("linkImageView", linkImageView_);
  outlet("pictureImageView", pictureImageView_);
  outlet("noteLabel", noteLabel_);
  outlet("noteImageView", noteImageView_);
  setSelectable(false);
}

void InfoTableViewCell::link(const std::string& image, std::string name, std::function<void()> action) {
  linkImageView_.setImage(action ? image : "");
  linkImageView_.setAccessibleName(std::move(name));
  setAction(std::move(action));
}

void registerInfoCell(TableView& tableView) {
  tableView.registerMaker(infoCell, [](const std::string& identifier) {
    return std::make_shared<InfoTableViewCell>(identifier);
  });
}

std::shared_ptr<InfoTableViewCell> dequeueInfoCell(TableView& tableView, const std::string& value,
                                                   const std::string& caption, Contact contact) {
  auto cell =
      std::static_pointer_cast<InfoTableViewCell>(tableView.dequeueReusableCellWithIdentifier(infoCell));
  cell->textLabel().setText(value);
  cell->detailTextLabel().setText(caption);
  std::function<void()> action;
  auto& environment = tableView.environment();
  if (const std::string url = contactURL(contact, value); !url.empty())
    action = [&environment, url, value] {
      if (environment.device.canOpenURL(url))
        environment.device.openURL(url);
      else
        copyToClipboard(environment, value);
    };
  const auto& [image, name] = pictureOf(contact);
  std::string words = action ? environment.device.localizedString(name) : std::string();
  cell->link(image, std::move(words), std::move(action));
  return cell;
}

}  // namespace fleetor
