#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ui/environment.h"

namespace fleetor {

class ViewController;

enum class SegueKind { push, modal };

struct StoryboardScene {
  std::string identifier;
  std::function<std::shared_ptr<ViewController>(Environment&)> make;  ///< a new screen at every call
};

struct StoryboardSegue {
  std::string identifier;
  std::string source;       ///< identifier of the screen that it leaves from
  std::string destination;  ///< identifier of the screen that it makes
  SegueKind kind = SegueKind::push;
};

/// The screens and transitions of the program as one table. Outlives every screen that it makes. An
/// unknown identifier is a programming error.
class Storyboard {
 public:
  /// `initial` is the identifier of the screen that the program starts with.
  Storyboard(Environment& environment, std::string name, std::string initial,
             std::vector<StoryboardScene> scenes, std::vector<StoryboardSegue> segues);

  const std::string& name() const { return name_; }

  std::shared_ptr<ViewController> instantiateInitialViewController();
  std::shared_ptr<ViewController> instantiateViewControllerWithIdentifier(const std::string& identifier);

  /// The same, as the class that the caller knows it to be; another class is a programming error.
  template <class Controller>
  std::shared_ptr<Controller> instantiate(const std::string& identifier) {
    auto controller =
        std::dynamic_pointer_cast<Controller>(instantiateViewControllerWithIdentifier(identifier));
    if (!controller) wrongClass(identifier);
    return controller;
  }

  const StoryboardSegue& segueWithIdentifier(const std::string& identifier, const std::string& source) const;

 private:
  [[noreturn]] void wrongClass(const std::string& identifier) const;

  Environment& environment_;
  std::string name_;
  std::string initial_;
  std::vector<StoryboardScene> scenes_;
  std::vector<StoryboardSegue> segues_;
};

}  // namespace fleetor
