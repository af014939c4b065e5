#include "exports/piece_writer.h"

#include <charconv>

namespace fleetor {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

bool isControl(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

bool isNumber(std::string_view text) {
  double number = 0;
  const auto [end, error] =
      std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
  return error == std::errc() && end == text.data() + text.size();
}

}  // namespace

PieceWriter& PieceWriter::operator<<(std::string_view text) {
  piece_ += text;
  if (piece_.size() >= pieceSize) hand();
  return *this;
}

void PieceWriter::hand() {
  accepted_ = accepted_ && sink_(piece_);
  piece_.clear();
}

bool PieceWriter::finish() {
  if (!piece_.empty()) hand();
  return accepted_;
}

std::string xmlEscaped(std::string_view text) {
  std::string escaped;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    // U+FFFE and U+FFFF are the only other characters that XML forbids; a Text is valid UTF-8.
    const bool isNoCharacter =
        text.substr(i).starts_with("\xEF\xBF\xBE") || text.substr(i).starts_with("\xEF\xBF\xBF");
    if (c == '&')
      escaped += "&amp;";
    else if (c == '<')
      escaped += "&lt;";
    else if (c == '>')
      escaped += "&gt;";
    else if (c == '"')
      escaped += "&quot;";
    else if (c == '\n' || c == '\r' || c == '\t')
      escaped += ' ';
    else if (isControl(c) || isNoCharacter)
      escaped += replacement;
    else
      escaped += c;
    if (isNoCharacter) i += 2;
  }
  return escaped;
}

std::string jsonQuoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\')
      quoted.append(1, '\\').append(1, c);
    else if (isControl(c))
      quoted.append("\\u00").append(1, "01"[c >> 4 & 1]).append(1, "0123456789abcdef"[c & 15]);
    else
      quoted += c;
  }
  return quoted + '"';
}

std::string csvCell(std::string_view text) {
  std::string cell;
  if (!isNumber(text) && text.find_first_of("=+-@\t\r\n") == 0) cell += '\'';
  for (const char c : text) {
    if (c == '"') cell += '"';
    cell += isControl(c) ? ' ' : c;
  }
  if (cell.find_first_of("\",;") == std::string::npos) return cell;
  return '"' + cell + '"';
}

}  // namespace fleetor
