#include "ui/table/table_view_cell.h"

#include <utility>

namespace fleetor {

TableViewCell::TableViewCell(std::string reuseIdentifier) : reuseIdentifier_(std::move(reuseIdentifier)) {
  outlet("textLabel", textLabel_);
  outlet("detailTextLabel", detailTextLabel_);
}

Component* TableViewCell::viewWithTag(int tag) const {
  const auto found = tags_.find(tag);
  return found == tags_.end() ? nullptr : found->second;
}

LoadingTableViewCell::LoadingTableViewCell(std::string reuseIdentifier)
    : TableViewCell(std::move(reuseIdentifier)) {
  outlet("activityIndicator", activityIndicator_);
  setTag(indicatorTag, activityIndicator_);
  setSelectable(false);
}

}  // namespace fleetor
