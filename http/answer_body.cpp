#include "http/answer_body.h"

#include <strings.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <new>

namespace fleetor {
namespace {

constexpr std::size_t freeOfRatio = std::size_t{1} << 20;

// The JSON parser reads a few bytes past the end of a body; with that much spare capacity it needs no copy.
constexpr std::size_t roomForParser = 64;

constexpr int gzipWindow = MAX_WBITS + 16;

// A raw stream never begins with these bits: they would be a stored block that no compressor writes.
int deflateWindow(char first) {
  return (first & 0x0F) == Z_DEFLATED ? MAX_WBITS : -MAX_WBITS;
}

}  // namespace

struct AnswerBody::Stream {
  explicit Stream(int window) {
    if (inflateInit2(&z, window) != Z_OK) throw std::bad_alloc();
  }
  ~Stream() { inflateEnd(&z); }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  z_stream z{};
};

AnswerBody::AnswerBody(std::size_t longest, std::size_t ratio, std::string_view encoding,
                       std::int64_t announced)
    : longest_(longest), ratio_(ratio), encoding_(encodingOf(encoding)) {
  if (encoding_ == Encoding::none && announced > 0)
    body_.reserve(std::min(static_cast<std::size_t>(announced), longest_) + roomForParser);
}

AnswerBody::~AnswerBody() = default;

AnswerBody::Encoding AnswerBody::encodingOf(std::string_view name) {
  const auto is = [name](std::string_view known) {
    return name.size() == known.size() && ::strncasecmp(name.data(), known.data(), known.size()) == 0;
  };
  if (is("gzip") || is("x-gzip")) return Encoding::gzip;
  return is("deflate") ? Encoding::deflate : Encoding::none;
}

AnswerBody::Verdict AnswerBody::add(std::string_view bytes) {
  if (bytes.empty()) return Verdict::good;
  if (encoding_ != Encoding::none) return unpack(bytes);
  if (bytes.size() > longest_ - body_.size()) return Verdict::tooLong;
  body_.append(bytes);
  return Verdict::good;
}

AnswerBody::Verdict AnswerBody::unpack(std::string_view bytes) {
  if (!stream_) {
    stream_ = std::make_unique<Stream>(encoding_ == Encoding::gzip ? gzipWindow : deflateWindow(bytes[0]));
  }
  packed_ += bytes.size();
  if (packed_ > longest_) return Verdict::tooLong;
  z_stream& z = stream_->z;
  z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  z.avail_in = static_cast<uInt>(bytes.size());
  std::array<char, 65536> piece;
  while (true) {
    if (atEnd_) {
      if (z.avail_in == 0) return Verdict::good;
      if (encoding_ != Encoding::gzip) return Verdict::broken;
      inflateReset(&z);
      atEnd_ = false;
    }
    z.next_out = reinterpret_cast<Bytef*>(piece.data());
    z.avail_out = static_cast<uInt>(piece.size());
    const int state = inflate(&z, Z_NO_FLUSH);
    if (state != Z_OK && state != Z_STREAM_END && state != Z_BUF_ERROR) return Verdict::broken;
    const std::size_t made = piece.size() - z.avail_out;
    if (made > longest_ - body_.size()) return Verdict::tooLong;
    body_.append(piece.data(), made);
    if (body_.size() > freeOfRatio && body_.size() / ratio_ > packed_) return Verdict::tooLong;
    atEnd_ = state == Z_STREAM_END;
    if (!atEnd_ && z.avail_in == 0 && z.avail_out > 0) return Verdict::good;
  }
}

}  // namespace fleetor
