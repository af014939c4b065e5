#include "vehicle/service_due.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>

#include "platform/filled_text.h"
#include "values/quantities.h"
#include "values/times.h"

namespace fleetor {

namespace {

constexpr std::int64_t soonDays = 30;
constexpr std::int64_t soonKilometres = 1000;
constexpr std::int64_t longestAgo = 5'000;      ///< km
constexpr std::int64_t farthestAhead = 50'000;  ///< km

std::string sentence(std::string text, const std::string& what, std::int64_t count) {
  return filled(filled(std::move(text), "{count}", std::to_string(std::abs(count))), "{what}", what);
}

std::string inDays(const std::string& what, std::int64_t days, const Localizer& localized) {
  const std::string text = days < -1    ? localized("{what}: {count} days overdue")
                           : days == -1 ? localized("{what}: since yesterday")
                           : days == 0  ? localized("{what}: today")
                           : days == 1  ? localized("{what}: tomorrow")
                                        : localized("{what}: in {count} days");
  return sentence(text, what, days);
}

std::string inKilometres(const std::string& what, std::int64_t kilometres, const Localizer& localized) {
  return sentence(
      kilometres < 0 ? localized("{what}: {count} km overdue") : localized("{what}: in {count} km"), what,
      kilometres);
}

}  // namespace

ServiceDue serviceDue(const Info& info, const Live& live, const Localizer& localized) {
  ServiceDue due;
  const auto add = [&due](std::int64_t left, std::int64_t soon, std::string text) {
    if (left < 0)
      due.overdue.push_back(std::move(text));
    else if (left <= soon)
      due.soon.push_back(std::move(text));
  };

  std::optional<std::int64_t> nearest;
  std::string nearestText;
  if (const auto now = readTime(live.dateTime())) {
    const auto today = std::chrono::floor<std::chrono::days>(*now);
    const std::pair<const Text&, const char*> dates[] = {{info.service.tech, "Technical service"},
                                                         {info.service.oil, "Oil change"},
                                                         {info.vehicle.active, "Localizer expiration date"}};
    for (const auto& [text, what] : dates) {
      const auto day = readDay(text);
      if (!day) continue;
      const std::int64_t left = (*day - today).count();
      const std::string words = inDays(localized(what), left, localized);
      add(left, soonDays, words);
      if (nearest && *nearest <= left) continue;
      nearest = left;
      nearestText = words;
    }
  }

  const auto odometer = readKilometres(live.odometer);
  const auto target = readKilometres(info.service.odo);
  if (odometer && target) {
    const auto left = static_cast<std::int64_t>(std::floor(*target - *odometer));
    if (left >= -longestAgo && left <= farthestAhead)
      add(left, soonKilometres, inKilometres(localized("Distance service"), left, localized));
  }

  due.isUrgent = !due.overdue.empty() || !due.soon.empty();
  if (!due.isUrgent && nearest) due.soon.push_back(nearestText);
  return due;
}

}  // namespace fleetor
