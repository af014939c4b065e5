#include "day/text_column.h"

#include <algorithm>

namespace fleetor {

static_assert(TextColumn::longest <= 127, "a count is one char");

void TextColumn::add(std::string_view text) {
  if (text.size() > longest) text = {};
  const auto differ = std::ranges::mismatch(text, last_);
  const auto shared = static_cast<std::size_t>(differ.in1 - text.begin());
  coded_ += static_cast<char>(shared);
  coded_ += static_cast<char>(text.size() - shared);
  coded_ += text.substr(shared);
  last_ = text;
}

std::string_view TextColumn::Reader::next() {
  if (rest_.empty()) return {};
  const std::size_t shared = static_cast<unsigned char>(rest_[0]);
  const std::size_t own = static_cast<unsigned char>(rest_[1]);
  text_.resize(shared);
  text_ += rest_.substr(2, own);
  rest_.remove_prefix(2 + own);
  return text_;
}

}  // namespace fleetor
