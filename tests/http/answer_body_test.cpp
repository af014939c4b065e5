#include "http/answer_body.h"

#include "packing.h"
#include "support/testing.h"

namespace fleetor {
namespace {

using enum AnswerBody::Verdict;

struct Read {
  AnswerBody::Verdict verdict = good;
  bool isWhole = false;
  std::string body;

  bool isSound() const { return verdict == good && isWhole; }
};

// What becomes of bytes that arrive in pieces of that size.
Read read(const std::string& encoding, std::string_view bytes, std::size_t piece,
          std::size_t longest = 1'000'000) {
  AnswerBody body(longest, 100, encoding, 0);
  Read read;
  for (; !bytes.empty() && read.verdict == good; bytes.remove_prefix(std::min(piece, bytes.size())))
    read.verdict = body.add(bytes.substr(0, piece));
  read.isWhole = body.isWhole();
  read.body = body.take();
  return read;
}

TEST(AnswerBody, UnpacksWhatItsEncodingNames) {
  const std::string text = R"({"total":1,"list":[1,1,1,1,1,1,1,1,1,1,1,1,1]})";
  const std::string member = packed(text, gzipFormat);
  const std::tuple<const char*, std::string, std::string> cases[] = {
      {"", text, text},
      {"gzip", member, text},
      {"X-GZip", member, text},
      {"gzip", member + packed("", gzipFormat) + member, text + text},
      {"deflate", packed(text, zlibFormat), text},
      {"deflate", packed(text, rawFormat), text},
      {"br", text, text},
      {"gzip, gzip", member, member},
      {"gzip", "", ""},
  };
  for (const auto& [encoding, bytes, body] : cases)
    for (const std::size_t piece : {std::size_t{1}, std::size_t{7}, bytes.size() + 1}) {
      const Read got = read(encoding, bytes, piece);
      EXPECT_TRUE(got.isSound()) << encoding;
      EXPECT_EQ(got.body, body) << encoding;
    }
}

TEST(AnswerBody, NeverTakesACutOrDamagedBodyForWhole) {
  for (const auto& [encoding, format] :
       {std::pair("gzip", gzipFormat), {"deflate", zlibFormat}, {"deflate", rawFormat}}) {
    const std::string bytes = packed("a text a text a text", format);
    for (std::size_t end = 1; end < bytes.size(); end++)
      EXPECT_FALSE(read(encoding, bytes.substr(0, end), 5).isWhole) << format << " cut at " << end;
    for (const char* more : {"x", "behind its end"})
      EXPECT_FALSE(read(encoding, bytes + more, 5).isSound()) << format;
  }
  std::string damaged = packed("a text a text a text", gzipFormat);
  damaged[damaged.size() - 6] ^= 1;  // in the checksum
  EXPECT_EQ(read("gzip", damaged, 5).verdict, broken);
  EXPECT_EQ(read("gzip", "no gzip", 5).verdict, broken);
}

TEST(AnswerBody, KeepsToItsBounds) {
  constexpr std::size_t longest = 100'000, piece = 16384;
  for (const std::size_t size : {longest, longest + 1, 3 * longest}) {
    const std::string text(size, 'x');
    for (const auto& [encoding, bytes] : {std::pair("", text), {"gzip", packed(text, gzipFormat)}}) {
      const Read got = read(encoding, bytes, piece, longest);
      EXPECT_EQ(got.verdict, size > longest ? tooLong : good) << encoding << size;
      EXPECT_LE(got.body.size(), longest);
    }
  }
  // Up to 1 MiB any ratio is good; beyond it this body has one of about 1,000.
  const std::string small(1'000'000, 'x'), large(8'000'000, 'x');
  EXPECT_TRUE(read("gzip", packed(small, gzipFormat), piece, large.size()).isSound());
  const Read bomb = read("gzip", packed(large, gzipFormat), piece, large.size());
  EXPECT_EQ(bomb.verdict, tooLong);
  EXPECT_LT(bomb.body.size(), large.size() / 2);
  std::string nothing;  // stored blocks without a byte in them
  while (nothing.size() <= longest)
    nothing.append("\0\0\0\xff\xff", 5);
  EXPECT_EQ(read("deflate", nothing, piece, longest).verdict, tooLong);
}

}  // namespace
}  // namespace fleetor
