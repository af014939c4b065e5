#include "ui/notification_center.h"

#include <utility>

namespace fleetor {

void NotificationCenter::addObserver(const void* owner, const std::string& name, Handler handler) {
  observers_.push_back(std::make_shared<Observer>(Observer{owner, name, std::move(handler)}));
}

void NotificationCenter::removeObserver(const void* owner) {
  std::erase_if(observers_, [owner](const std::shared_ptr<Observer>& observer) {
    if (observer->owner != owner) return false;
    observer->owner = nullptr;
    return true;
  });
}

void NotificationCenter::postNotificationName(const std::string& name, const std::any& object) {
  std::vector<std::shared_ptr<Observer>> concerned;
  for (const auto& observer : observers_)
    if (observer->name == name) concerned.push_back(observer);
  for (const auto& observer : concerned)
    if (observer->owner) observer->handler(Notification{name, object});
}

}  // namespace fleetor
