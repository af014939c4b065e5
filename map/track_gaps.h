#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "map/track_line.h"

namespace fleetor {

/// The points of a line from which nothing is known up to the next one, in order. Null: none.
using TrackGaps = std::shared_ptr<const std::vector<std::uint32_t>>;

/// A vertex as it is drawn.
struct TrackStep {
  TrackVertex at;
  std::uint32_t point = 0;  ///< which of the line's points
  bool gap = false;         ///< nothing is known from here to the next one

  friend bool operator==(const TrackStep&, const TrackStep&) = default;
};

/// The way from a vertex of a chunk to the next one, without that one: the vertex, and the places where gaps
/// begin and end within the way, which the simplification may have left out. They lie on the way itself.
void appendWay(std::vector<TrackStep>& steps, const TrackChunk& chunk, std::size_t vertex,
               const TrackPoints& points, std::span<const std::uint32_t> gaps, int level);

/// All of a chunk.
std::vector<TrackStep> stepsOf(const TrackChunk& chunk, const TrackPoints& points,
                               std::span<const std::uint32_t> gaps, int level);

}  // namespace fleetor
