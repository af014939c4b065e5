#pragma once

#include <functional>
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
  const Label& textLabel() const { return textLabel_; }
  Label& detailTextLabel() { return detailTextLabel_; }

  void setTag(int tag, Component& view) { tags_[tag] = &view; }
  Component* viewWithTag(int tag) const;  ///< or null

  bool selectable() const { return selectable_; }
  void setSelectable(bool selectable) { assign(selectable_, selectable); }

  /// What a tap on the row does in place of selecting it; empty: it selects.
  const std::function<void()>& action() const { return action_; }
  void setAction(std::function<void()> action) { action_ = std::move(action); }

  /// What copying the row puts on the clipboard; empty: it cannot be copied.
  virtual std::string copiedText() const { return {}; }

 private:
  std::string reuseIdentifier_;
  Label textLabel_;
  Label detailTextLabel_;
  std::map<int, Component*> tags_;
  bool selectable_ = true;
  std::function<void()> action_;
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
