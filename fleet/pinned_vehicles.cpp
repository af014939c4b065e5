#include "fleet/pinned_vehicles.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <system_error>

namespace fleetor {

namespace {

constexpr const char* accountKey = "Account";
constexpr const char* pinsKey = "Pins";

Settings::Texts pinsOfAllAccounts(const Settings& settings) {
  const auto value = settings.object(pinsKey);
  const auto* texts = value ? std::get_if<Settings::Texts>(&*value) : nullptr;
  return texts ? *texts : Settings::Texts();
}

/// Numbers between blanks; anything else is left out.
std::vector<std::int64_t> readIds(std::string_view text) {
  std::vector<std::int64_t> ids;
  while (!text.empty() && ids.size() < PinnedVehicles::mostPins) {
    const auto word = text.substr(0, text.find(' '));
    std::int64_t id = 0;
    const auto [end, problem] = std::from_chars(word.data(), word.data() + word.size(), id);
    if (problem == std::errc() && end == word.data() + word.size()) ids.push_back(id);
    text.remove_prefix(std::min(text.size(), word.size() + 1));
  }
  return ids;
}

}  // namespace

PinnedVehicles::PinnedVehicles(Settings& settings, Device& device) : settings_(settings), device_(device) {
  const auto value = settings_.object(accountKey);
  if (const auto* account = value ? std::get_if<std::string>(&*value) : nullptr) account_ = *account;
  load();
}

void PinnedVehicles::chooseAccount(const std::string& userName) {
  account_ = device_.fingerprintOf(userName);
  settings_.setObject(account_, accountKey);
  settings_.synchronize();
  load();
  changed.emit();
}

bool PinnedVehicles::contains(std::int64_t vehicleId) const {
  return std::ranges::find(ids_, vehicleId) != ids_.end();
}

void PinnedVehicles::setPinned(std::int64_t vehicleId, bool pinned) {
  if (contains(vehicleId) == pinned) return;
  if (pinned)
    ids_.push_back(vehicleId);
  else
    std::erase(ids_, vehicleId);
  if (ids_.size() > mostPins) ids_.erase(ids_.begin());
  save();
  changed.emit();
}

void PinnedVehicles::load() {
  const Settings::Texts pins = pinsOfAllAccounts(settings_);
  const auto own = pins.find(account_);
  ids_ = own == pins.end() ? std::vector<std::int64_t>() : readIds(own->second);
}

void PinnedVehicles::save() {
  Settings::Texts pins = pinsOfAllAccounts(settings_);
  std::string text;
  for (const std::int64_t id : ids_)
    text += (text.empty() ? "" : " ") + std::to_string(id);
  pins.erase(account_);
  while (pins.size() >= mostAccounts)
    pins.erase(pins.begin());
  if (!text.empty()) pins[account_] = text;
  settings_.setObject(pins, pinsKey);
  settings_.synchronize();
}

}  // namespace fleetor
