#pragma once

#include <map>
#include <string>

#include "ui/controls/controls.h"

namespace fleetor {

/// One row. Its labels and images are found by name as outlets, among them "textLabel" and "detailTextLabel",
/// or by tag.
class TableViewCell : public Component, public Outlets {
 public:
  explicit TableViewCell(std::string reuseIdentifier);

  const std::string& reuseIdentifier() const { return reuseIdentifier_; }

  Label& textLabel() { return textLabel_; }
  Label& detailTextLabel() { return detailTextLabel_; }

  void setTag(int tag, Component& view) { tags_[tag] = &view; }
  Component* viewWithTag(int tag) const;  ///< or null

  bool selectable() const { return selectable_; }
  void setSelectable(bool selectable) { assign(selectable_, selectable); }

 private:
  std::string reuseIdentifier_;
  Label textLabel_;
  Label detailTextLabel_;
  std::map<int, Component*> tags_;
  bool selectable_ = true;
};

/// The row for data that is still loading: a spinner with the tag 123. Not selectable.
class LoadingTableViewCell : public TableViewCell {
 public:
  static constexpr int indicatorTag = 123;

  explicit LoadingTableViewCell(std::string reuseIdentifier);

 private:
  ActivityIndicator activityIndicator_;
};

}  // namespace fleetor
