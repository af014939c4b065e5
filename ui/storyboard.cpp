#include "ui/storyboard.h"

#include <algorithm>
#include <utility>

#include "ui/containers/view_controller.h"
#include "ui/programming_error.h"

namespace fleetor {

Storyboard::Storyboard(Environment& environment, std::string name, std::string initial,
                       std::vector<StoryboardScene> scenes, std::vector<StoryboardSegue> segues)
    : environment_(environment),
      name_(std::move(name)),
      initial_(std::move(initial)),
      scenes_(std::move(scenes)),
      segues_(std::move(segues)) {}

std::shared_ptr<ViewController> Storyboard::instantiateInitialViewController() {
  return instantiateViewControllerWithIdentifier(initial_);
}

std::shared_ptr<ViewController> Storyboard::instantiateViewControllerWithIdentifier(
    const std::string& identifier) {
  const auto scene = std::ranges::find(scenes_, identifier, &StoryboardScene::identifier);
  if (scene == scenes_.end())
    programmingError("storyboard \"" + name_ + "\" has no screen \"" + identifier + "\"");
  auto controller = scene->make(environment_);
  controller->setStoryboard(this, identifier);
  return controller;
}

const StoryboardSegue& Storyboard::segueWithIdentifier(const std::string& identifier,
                                                       const std::string& source) const {
  const auto segue = std::ranges::find_if(segues_, [&](const StoryboardSegue& candidate) {
    return candidate.identifier == identifier && candidate.source == source;
  });
  if (segue == segues_.end())
    programmingError("storyboard \"" + name_ + "\" has no transition \"" + identifier + "\" from screen \"" +
                     source + "\"");
  return *segue;
}

void Storyboard::wrongClass(const std::string& identifier) const {
  programmingError("screen \"" + identifier + "\" of storyboard \"" + name_ + "\" is of another class");
}

}  // namespace fleetor
