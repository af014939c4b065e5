#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace fleetor {

/// The body of one answer as it arrives: without its content encoding, and within its bounds. "gzip" (of any
/// number of members) and "deflate" (with or without its wrapping) are unpacked; a body in any other encoding
/// is taken as it is. One thread.
class AnswerBody {
 public:
  enum class Verdict { good, tooLong, broken };

  /// At most `longest` bytes, packed and unpacked, and, once a packed body has given 1 MiB, at most `ratio`
  /// times the bytes that arrived. `encoding` is the value of "Content-Encoding", `announced` that of
  /// "Content-Length", zero or below without one.
  AnswerBody(std::size_t longest, std::size_t ratio, std::string_view encoding, std::int64_t announced);
  ~AnswerBody();
  AnswerBody(const AnswerBody&) = delete;
  AnswerBody& operator=(const AnswerBody&) = delete;

  /// Takes the next bytes. Any verdict but `good` is final.
  Verdict add(std::string_view bytes);

  /// False while a packed body has not reached its end, checksum and length included.
  bool isWhole() const { return !stream_ || atEnd_; }

  std::string take() { return std::move(body_); }

 private:
  struct Stream;
  enum class Encoding { none, gzip, deflate };

  static Encoding encodingOf(std::string_view name);
  Verdict unpack(std::string_view bytes);

  std::size_t longest_;
  std::size_t ratio_;
  Encoding encoding_;
  std::string body_;
  std::unique_ptr<Stream> stream_;  // from the first packed byte on
  std::size_t packed_ = 0;          // bytes that arrived
  bool atEnd_ = false;              // of a packed stream, where the body may end
};

}  // namespace fleetor
