#pragma once

#include <string>
#include <string_view>

#include "platform/documents.h"

namespace fleetor {

/// Collects a file's text and hands it on in pieces of about 64 KB, so that a day of 86,400 points is never
/// in memory as a whole.
class PieceWriter {
 public:
  explicit PieceWriter(const PieceSink& sink) : sink_(sink) {}

  PieceWriter& operator<<(std::string_view text);

  /// Hands on the rest. False: the sink refused a piece.
  bool finish();

 private:
  static constexpr std::size_t pieceSize = std::size_t{64} << 10;

  void hand();

  const PieceSink& sink_;
  std::string piece_;
  bool accepted_ = true;
};

/// The text inside of an element or an attribute of XML. What XML cannot hold at all, control characters for
/// instance, becomes U+FFFD.
std::string xmlEscaped(std::string_view text);

/// The text as a string of JSON, in quotes.
std::string jsonQuoted(std::string_view text);

/// The text as one cell of a CSV file. A text that a spreadsheet would take for a formula gets an apostrophe
/// in front; a plain number does not.
std::string csvCell(std::string_view text);

}  // namespace fleetor
