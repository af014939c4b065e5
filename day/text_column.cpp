#include "day/text_column.h"

#include <algorithm>

namespace fleetor {

namespace {

// Seven bits in each byte, the lowest first; all but the last have the eighth.
constexpr std::size_t more = 0x80;
constexpr unsigned bits = 7;

}  // namespace

void TextColumn::addNumber(std::size_t number) {
  for (; number >= more; number >>= bits)
    coded_ += static_cast<char>(number % more | more);
  coded_ += static_cast<char>(number);
}

void TextColumn::add(std::string_view text) {
  const auto differ = std::ranges::mismatch(text, last_);
  const auto shared = static_cast<std::size_t>(differ.in1 - text.begin());
  addNumber(shared);
  addNumber(text.size() - shared);
  coded_ += text.substr(shared);
  last_ = text;
}

std::size_t TextColumn::Reader::number() {
  std::size_t number = 0;
  for (unsigned shift = 0;; shift += bits) {
    const auto byte = static_cast<unsigned char>(rest_.front());
    rest_.remove_prefix(1);
    number |= (byte % more) << shift;
    if (byte < more) return number;
  }
}

std::string_view TextColumn::Reader::next() {
  if (rest_.empty()) return {};
  text_.resize(number());
  const std::size_t own = number();
  text_ += rest_.substr(0, own);
  rest_.remove_prefix(own);
  return text_;
}

}  // namespace fleetor
