#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "model/text.h"

namespace fleetor::json {

/// Keeps the bytes of a document alive for as long as any record's text points into them.
class DocumentArena final : public TextArena {
 public:
  explicit DocumentArena(std::string bytes) : TextArena(nullptr, 1, &destroy), owned_(std::move(bytes)) {
    bytes_ = owned_.data();
  }

  const char* end() const { return bytes_ + owned_.size(); }

 private:
  ~DocumentArena() = default;
  static void destroy(const TextArena* arena) { delete static_cast<const DocumentArena*>(arena); }

  std::string owned_;
};

/// A decoded document: an index of its values, which dies with the last handle, over its bytes, which may
/// outlive it. In the bytes of a text the escapes are resolved.
class Document {
 public:
  Document(std::unique_ptr<std::uint32_t[]> words, std::string bytes)
      : words_(std::move(words)), arena_(new DocumentArena(std::move(bytes))) {}
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;
  ~Document() { arena_->release(); }

  const std::uint32_t* words() const { return words_.get(); }
  const DocumentArena* arena() const { return arena_; }

 private:
  std::unique_ptr<std::uint32_t[]> words_;
  DocumentArena* arena_;
};

/// One value of a document, as a place in its index. There each value has a word with its kind in the upper
/// bits, in the order of the bytes. A text has its length in a second word. The word of a container knows how
/// far ahead the word behind its last member is, which counts the members; any other knows where the bytes of
/// the value begin.
class Node {
 public:
  enum Kind : std::uint32_t { object, array, text, integer, unsignedInteger, real, yes, no, null };
  static constexpr int kindShift = 28;
  static constexpr std::uint32_t mostPlaces = 1U << kindShift;
  static constexpr std::uint32_t word(Kind kind, std::size_t place) {
    return kind << kindShift | static_cast<std::uint32_t>(place);
  }

  explicit Node(const std::uint32_t* word) : word_(word) {}
  static Node root(const Document& document) { return Node(document.words()); }

  Kind kind() const { return static_cast<Kind>(*word_ >> kindShift); }
  std::uint32_t place() const { return *word_ & (mostPlaces - 1); }
  std::uint32_t textLength() const { return word_[1]; }

  // The members of a container: for (n = first(); n != end(); n = n.next()). In an object, keys and values
  // take turns.
  Node first() const { return Node(word_ + 1); }
  Node end() const { return Node(word_ + place()); }
  Node next() const {
    const Kind own = kind();
    return Node(word_ + (own <= array ? place() + 1 : own == text ? 2 : 1));
  }
  Node ofKey() const { return Node(word_ + 2); }  ///< the value of this key
  const std::uint32_t* word() const { return word_; }
  /// Number of members; in an object, a key and its value are one.
  std::uint32_t count() const { return *end().word_; }

  friend bool operator==(Node, Node) = default;

 private:
  const std::uint32_t* word_;
};

}  // namespace fleetor::json
