#pragma once

#include <memory>
#include <string>

#include "ui/table/table_view.h"

namespace fleetor {

/// What a list of "InfoCell" rows shows of a record in one of them.
template <class Record>
struct InfoRow {
  std::string (*value)(const Record& record);
  const char* caption;  ///< English, not localised yet
};

/// The row kind "InfoCell" of the client's lists: a value over its caption, not for tapping.
void registerInfoCell(TableView& tableView);

std::shared_ptr<TableViewCell> dequeueInfoCell(TableView& tableView, const std::string& value,
                                               const std::string& caption);

}  // namespace fleetor
