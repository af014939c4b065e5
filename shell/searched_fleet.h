#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "fleet/vehicle_search.h"
#include "service/envelopes.h"
#include "ui/signal.h"

namespace fleetor {

/// The vehicles that the search goes through: those that the list holds and, behind them, the pages that the
/// search has fetched and the list has not. While it is shown and pages are missing, it fetches one after the
/// other. A page that fails, or that brings nothing although something is missing, ends that until `resume`.
/// Lives as long as the list. Main thread only.
class SearchedFleet : public std::enable_shared_from_this<SearchedFleet> {
 public:
  enum class State { complete, fetching, stopped, failed };

  using Taken = std::function<void(const VehiclesResponse* page)>;  ///< null: it failed

  /// Requests the page at that offset. False, and no call of `taken`: a request of the list is in flight, and
  /// `follow` will be called after it.
  using Fetch = std::function<bool(std::size_t offset, Taken taken)>;

  SearchedFleet(const std::string& language, Fetch fetch) : search_(language), fetch_(std::move(fetch)) {}

  const VehicleSearch& search() const { return search_; }
  State state() const;
  std::optional<std::int64_t> total() const { return total_; }  ///< none before the first answer

  /// Takes over what the list holds by now; `failed`: and that it has given up.
  void follow(const VehiclesResponse& list, bool failed);

  void setShown(bool shown);  ///< nothing is requested while it is not
  void stop();
  void resume();

  Signal<> changed;

 private:
  std::size_t held() const { return search_.vehicles().size(); }
  void add(const VehiclesResponse& from, std::size_t first);
  void fetchNext();
  void take(const VehiclesResponse* page);

  VehicleSearch search_;
  Fetch fetch_;
  std::optional<std::int64_t> total_;
  bool shown_ = false;
  bool inFlight_ = false;
  bool stopped_ = false;
  bool failed_ = false;
};

}  // namespace fleetor
