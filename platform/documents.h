#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/page.h"

namespace fleetor {

/// Takes the next piece of a file. False: it could not be written, and no further piece is wanted.
using PieceSink = std::function<bool(std::string_view piece)>;

/// A file that the user takes along.
struct NewDocument {
  std::string name;  ///< proposed, with its ending: "Van 2026-11-20.gpx"

  /// Makes the content, once, on the global queue. False: the sink refused a piece.
  std::function<bool(const PieceSink& sink)> write;
};

enum class SaveOutcome {
  saved,
  cancelled,  ///< by the user
  diskFull,
  forbidden,  ///< the folder does not take it
  failed,
};

/// Where files that the user takes along are kept, and how a page becomes one.
class Documents {
 public:
  /// `place` is the path of the file for people; empty unless it was saved.
  using Done = std::function<void(SaveOutcome outcome, const std::string& place)>;

  virtual ~Documents() = default;

  /// Asks the user for a place where the system has a way to, or chooses one in the folder for documents:
  /// there no file is ever replaced. A file is there whole or not at all. Main thread; returns at once,
  /// `done` is called later on the main thread.
  virtual void save(NewDocument document, Done done) = 0;

  /// The page as a PDF file. Any thread.
  virtual std::string pdfOf(const Page& page) const = 0;
};

}  // namespace fleetor
