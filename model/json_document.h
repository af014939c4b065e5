#pragma once

#include <simdjson.h>

#include "model/text.h"

namespace fleetor::json {

/// Keeps the unescaped texts of a document alive for as long as any record's text points into them.
class DocumentArena final : public TextArena {
 public:
  explicit DocumentArena(std::unique_ptr<std::uint8_t[]> bytes)
      : TextArena(reinterpret_cast<char*>(bytes.get()), 1, &destroy), owned_(std::move(bytes)) {}

 private:
  ~DocumentArena() = default;
  static void destroy(const TextArena* arena) { delete static_cast<const DocumentArena*>(arena); }

  std::unique_ptr<std::uint8_t[]> owned_;
};

/// A decoded document: the parser's tape, which dies with the last handle, over texts that may outlive it.
class Document {
 public:
  explicit Document(simdjson::dom::document parsed) : parsed_(std::move(parsed)) {
    arena_ = new DocumentArena(std::move(parsed_.string_buf));
    // The tape reads its texts through this pointer; the arena owns them.
    parsed_.string_buf.reset(reinterpret_cast<std::uint8_t*>(arena_->writableBytes()));
  }
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;
  ~Document() {
    static_cast<void>(parsed_.string_buf.release());
    arena_->release();
  }

  simdjson::dom::element root() const { return parsed_.root(); }
  const TextArena* arena() const { return arena_; }

 private:
  simdjson::dom::document parsed_;
  DocumentArena* arena_;
};

}  // namespace fleetor::json
