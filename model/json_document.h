#pragma once

#include <simdjson.h>

#include <cstring>

#include "model/text.h"

namespace fleetor::json {

// `Document` takes over the parser's tape and texts, and `Node` reads their layout (tape.md of simdjson's
// documentation). Tested with 3.0.
static_assert(
    simdjson::SIMDJSON_VERSION_MAJOR == 3,
    "compare tape.md of this simdjson with `Node`, run the tests of model/ and fuzz_envelopes, then "
    "allow its version here");

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
  explicit Document(simdjson::dom::document parsed)
      : tape_(std::move(parsed.tape)), arena_(new DocumentArena(std::move(parsed.string_buf))) {}
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;
  ~Document() { arena_->release(); }

  const std::uint64_t* tape() const { return tape_.get(); }
  const TextArena* arena() const { return arena_; }

 private:
  std::unique_ptr<std::uint64_t[]> tape_;
  DocumentArena* arena_;
};

/// One value of a document, as a position on its tape: a word with the kind in the upper 8 bits. A number is
/// in the next word, a text begins at the lower bits' place among the texts (its length in 4 bytes first),
/// and the opening word of a container knows where the container ends. Nothing is checked: the parser has
/// made the tape.
class Node {
 public:
  enum Kind : char {
    object = '{',
    array = '[',
    text = '"',
    integer = 'l',
    unsignedInteger = 'u',
    real = 'd',
    yes = 't',
    no = 'f',
    null = 'n'
  };

  Node(const std::uint64_t* tape, std::size_t index) : tape_(tape), index_(index) {}
  static Node root(const Document& document) { return {document.tape(), 1}; }

  Kind kind() const { return static_cast<Kind>(tape_[index_] >> 56); }

  std::int64_t asInteger() const { return static_cast<std::int64_t>(tape_[index_ + 1]); }
  std::uint64_t asUnsigned() const { return tape_[index_ + 1]; }
  double asReal() const { return std::bit_cast<double>(tape_[index_ + 1]); }

  /// Where the bytes of a text or key begin among the texts.
  std::size_t textOffset() const { return (tape_[index_] & 0x00FF'FFFF'FFFF'FFFF) + sizeof(std::uint32_t); }
  static std::uint32_t textLength(const char* text) {
    std::uint32_t length = 0;
    std::memcpy(&length, text - sizeof length, sizeof length);
    return length;
  }

  // The members of a container: for (n = first(); n.index() != end(); n = n.next()). In an object, keys and
  // values take turns.
  Node first() const { return {tape_, index_ + 1}; }
  std::size_t end() const { return (tape_[index_] & 0xFFFF'FFFF) - 1; }
  std::size_t index() const { return index_; }
  /// Number of members; from 16,777,215 on, that number.
  std::size_t count() const { return tape_[index_] >> 32 & 0xFF'FFFF; }

  Node next() const {
    switch (kind()) {
      case object:
      case array:
        return {tape_, tape_[index_] & 0xFFFF'FFFF};
      case integer:
      case unsignedInteger:
      case real:
        return {tape_, index_ + 2};
      default:
        return {tape_, index_ + 1};
    }
  }
  Node at(std::size_t index) const { return {tape_, index}; }

 private:
  const std::uint64_t* tape_;
  std::size_t index_;
};

}  // namespace fleetor::json
