#pragma once

#include <map>
#include <string>

#include "ui/controls.h"

namespace fleetor {

/// One row. Its labels and images are reached by name as outlets, among them "textLabel" and
/// "detailTextLabel", or by tag. Whether it may be tapped is a matter of its kind, set when it is made.
class TableViewCell : public Component, public Outlets {
 public:
  explicit TableViewCell(std::string reuseIdentifier);

  const std::string& reuseIdentifier() const { return reuseIdentifier_; }

  Label& textLabel() { return textLabel_; }
  Label& detailTextLabel() { return detailTextLabel_; }

  void setTag(int tag, Component& view) { tags_[tag] = &view; }
  Component* viewWithTag(int tag) const;  ///< or none

  bool selectable() const { return selectable_; }
  void setSelectable(bool selectable) { assign(selectable_, selectable); }

 private:
  std::string reuseIdentifier_;
  Label textLabel_;
  Label detailTextLabel_;
  std::map<int, Component*> tags_;
  bool selectable_ = true;
};

/// The row that stands for data still loading: a spinner that carries the tag 123, not for tapping.
class LoadingTableViewCell : public TableViewCell {
 public:
  static constexpr int indicatorTag = 123;

  explicit LoadingTableViewCell(std::string reuseIdentifier);

 private:
  ActivityIndicator activityIndicator_;
};

}  // namespace fleetor
