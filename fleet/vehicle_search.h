#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/vehicle_records.h"
#include "ui/controls/controls.h"

namespace fleetor {

struct FoldedText;

enum class VehicleOrder { service, name, registration };

/// The words that somebody looks for. A vehicle matches when each of them is somewhere in its name or its
/// registration (the first 4,000 bytes), whatever the case and the accents; in a registration blanks and
/// hyphens do not count either. Without words everything matches.
class SearchWords {
 public:
  explicit SearchWords(std::string_view typed = {});

  bool matches(std::string_view foldedName, std::string_view tightRegistration) const;

  /// Where the words are in a text of the vehicle, in order, without overlaps.
  std::vector<TextRange> inName(std::string_view name) const;
  std::vector<TextRange> inRegistration(std::string_view registration) const;

 private:
  struct Word {
    std::string folded;
    std::string tight;  ///< may be empty: then it is in no registration
  };
  std::vector<TextRange> rangesIn(const FoldedText& folded, std::string Word::*form) const;

  std::vector<Word> words_;
};

/// Vehicles prepared for being searched and sorted, in the order of the service. Names and registrations are
/// sorted as the language does it, numbers in them by value. Main thread only.
class VehicleSearch {
 public:
  explicit VehicleSearch(const std::string& language);  ///< ISO 639, for instance "uk"
  ~VehicleSearch();
  VehicleSearch(const VehicleSearch&) = delete;
  VehicleSearch& operator=(const VehicleSearch&) = delete;

  void add(const Vehicle& vehicle);
  const std::vector<Vehicle>& vehicles() const { return vehicles_; }

  /// Indices of the vehicles that match, sorted. Those without a registration come last when that sorts.
  std::vector<std::size_t> find(const SearchWords& words, VehicleOrder order) const;

 private:
  struct Prepared {
    std::string name;          ///< folded
    std::string registration;  ///< folded, tight
    std::string nameKey;       ///< sorts by its bytes
    std::string registrationKey;
  };
  class Sorter;

  std::unique_ptr<Sorter> sorter_;
  std::vector<Vehicle> vehicles_;
  std::vector<Prepared> prepared_;
};

}  // namespace fleetor
