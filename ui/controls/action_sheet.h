#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ui/component.h"
#include "ui/environment.h"

namespace fleetor {

/// A square of dark and light cells, row by row from the top left.
struct CellPicture {
  int side = 0;  ///< cells; 0: no picture
  std::vector<bool> dark;
};

/// One thing to do in a sheet.
struct SheetEntry {
  std::string title;
  std::string detail;  ///< a second line; may be empty
  std::string image;   ///< name of the image resource
  std::function<void()> action;
};

/// A sheet of things to do with what its title and message name. The window owns it while it shows. Another
/// sheet or a new root screen removes it.
class ActionSheet : public Component, public std::enable_shared_from_this<ActionSheet> {
 public:
  struct Content {
    std::string title;
    std::string message;  ///< may be empty
    CellPicture picture = {};
    std::vector<SheetEntry> entries = {};
  };

  static std::shared_ptr<ActionSheet> show(Environment& environment, Content content);

  const Content& content() const { return content_; }

  /// The user chooses that entry: the sheet closes, then the action is called.
  void tapEntry(int index);
  void cancel();

 private:
  explicit ActionSheet(Environment& environment) : environment_(environment) {}
  bool dismiss();

  Environment& environment_;
  Content content_;
};

}  // namespace fleetor
