#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ui/component.h"
#include "ui/geometry.h"

namespace fleetor {

/// A day as one line: stretches of different weight, and a moment that the user chooses. Times are seconds
/// since midnight.
class TimeRibbon : public Component {
 public:
  static constexpr double length = 24 * 3600;

  enum class Weight : std::uint8_t { blank, light, strong };
  struct Stretch {
    float begin = 0;
    float end = 0;
    Weight weight = Weight::blank;

    friend bool operator==(const Stretch&, const Stretch&) = default;
  };

  /// Names a stretch, by its index, for people: "07:03 to 07:46, driving".
  using Describe = std::function<std::string(std::size_t index)>;

  /// The stretches begin where the one before them ends. Without any there is nothing to choose. No moment is
  /// chosen then.
  void show(std::vector<Stretch> stretches, Color color, std::optional<float> mark, Describe describe);

  const std::vector<Stretch>& stretches() const { return stretches_; }
  const Color& color() const { return color_; }                                ///< of the strong stretches
  std::optional<float> mark() const { return mark_; }                          ///< a moment that stands out
  std::optional<double> moment() const { return moment_; }                     ///< the chosen one
  void setMoment(std::optional<double> seconds) { assign(moment_, seconds); }  ///< by the program

  // The user chooses a moment, or goes on to the next or the previous stretch that is not blank.
  void choose(double seconds);
  void step(bool forward);
  Signal<double> momentChosen;

  /// The index of the stretch in which the chosen moment lies; none without one.
  std::optional<std::size_t> chosenStretch() const;

  /// That stretch in words; empty without one.
  std::string description() const;

  /// Differs after each show().
  int revision() const { return revision_; }

  /// The stretches as they are drawn in that many columns, each of one weight: no more than columns.
  std::vector<Stretch> inColumns(int columns) const;

 private:
  std::vector<Stretch> stretches_;
  Color color_;
  std::optional<float> mark_;
  std::optional<double> moment_;
  int revision_ = 0;
  Describe describe_;
};

}  // namespace fleetor
