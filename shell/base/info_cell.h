#pragma once

#include <memory>
#include <string>

#include "shell/base/contact_link.h"
#include "ui/table/table_view.h"

namespace fleetor {

/// What a list of "InfoCell" rows shows of a record in one of them.
template <class Record>
struct InfoRow {
  std::string (*value)(const Record& record);
  const char* caption;  ///< English, not localised yet
  Contact contact = Contact::none;
};

/// The row kind "InfoCell" of the client's lists: a value over its caption, which can be copied.
/// Where they are set: "pictureImageView" shows what the row is about, "noteLabel" is a note on the value and
/// "noteImageView" its mark, and "linkImageView" shows what a tap does, and has its name.
class InfoTableViewCell final : public TableViewCell {
 public:
  explicit InfoTableViewCell(std::string reuseIdentifier);

  /// A tap does this. An empty action: nothing.
  void link(const std::string& image, std::string name, std::function<void()> action);

  ImageView& linkImageView() { return linkImageView_; }
  ImageView& pictureImageView() { return pictureImageView_; }
  Label& noteLabel() { return noteLabel_; }
  ImageView& noteImageView() { return noteImageView_; }
  std::string copiedText() const override { return textLabel().text(); }

 private:
  ImageView linkImageView_;
  ImageView pictureImageView_;
  Label noteLabel_;
  ImageView noteImageView_;
};

void registerInfoCell(TableView& tableView);

/// With a value that can be called or written to, a tap does that, or copies the value where the system has
/// no program for it.
std::shared_ptr<InfoTableViewCell> dequeueInfoCell(TableView& tableView, const std::string& value,
                                                   const std::string& caption,
                                                   Contact contact = Contact::none);

}  // namespace fleetor
