#pragma once

#include <memory>
#include <string>

#include "ui/table/table_view.h"

namespace fleetor {

/// Registers the row kind "LoadingCell", with that accessible name.
void registerLoadingCell(TableView& tableView, const std::string& accessibleName);

/// A "LoadingCell" whose spinner turns.
std::shared_ptr<TableViewCell> dequeueLoadingCell(TableView& tableView);

}  // namespace fleetor
