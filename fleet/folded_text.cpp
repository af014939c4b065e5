#include "fleet/folded_text.h"

#include <unicode/localpointer.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>

#include <algorithm>
#include <array>
#include <utility>

namespace fleetor {

namespace {

/// Letters that Unicode does not take apart.
constexpr std::array<std::pair<UChar32, const char*>, 11> whole{{{U'ł', "l"},
                                                                 {U'ø', "o"},
                                                                 {U'đ', "d"},
                                                                 {U'ð', "d"},
                                                                 {U'ħ', "h"},
                                                                 {U'ı', "i"},
                                                                 {U'ŧ', "t"},
                                                                 {U'æ', "ae"},
                                                                 {U'œ', "oe"},
                                                                 {U'þ', "th"},
                                                                 {U'ـ', ""}}};

/// Accents and vowel points. The marks that make another letter of one stay: the voicing of kana, and the
/// sign that joins the consonants of Indic scripts.
bool isAccent(UChar32 character) {
  constexpr int kanaVoicing = 8;
  constexpr int virama = 9;
  const int kind = u_getCombiningClass(character);
  return kind != 0 && kind != kanaVoicing && kind != virama;
}

/// A character that has neither case nor accents any more.
void appendPlain(UChar32 character, icu::UnicodeString& text) {
  const auto* const letter = std::ranges::find(whole, character, &std::pair<UChar32, const char*>::first);
  if (letter != whole.end())
    text += letter->second;
  else if (const int digit = u_charDigitValue(character); digit >= 0)
    text += static_cast<char16_t>(u'0' + digit);
  else if (u_isUWhiteSpace(character))
    text += u' ';
  else
    text += character;
}

std::string foldedCharacter(UChar32 character) {
  std::string text;
  UErrorCode problem = U_ZERO_ERROR;
  const auto* const cases = icu::Normalizer2::getNFKCCasefoldInstance(problem);
  const auto* const apart = icu::Normalizer2::getNFDInstance(problem);
  const auto* const together = icu::Normalizer2::getNFCInstance(problem);
  if (U_FAILURE(problem)) return text;
  const icu::UnicodeString pieces =
      apart->normalize(cases->normalize(icu::UnicodeString(character), problem), problem);
  icu::UnicodeString plain;
  for (int i = 0; i < pieces.length(); i = pieces.moveIndex32(i, 1))
    if (!isAccent(pieces.char32At(i))) appendPlain(pieces.char32At(i), plain);
  return together->normalize(plain, problem).toUTF8String(text);
}

FoldedText fold(std::string_view text, bool tight) {
  FoldedText folded;
  UErrorCode problem = U_ZERO_ERROR;
  const icu::LocalUTextPointer reader(
      utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &problem));
  if (U_FAILURE(problem)) return folded;
  std::size_t last = 0;  // where what the latest character became begins
  std::size_t begin = 0;
  std::size_t end = 0;
  for (UChar32 character = utext_next32(reader.getAlias()); character != U_SENTINEL;
       character = utext_next32(reader.getAlias())) {
    begin = std::exchange(end, static_cast<std::size_t>(utext_getNativeIndex(reader.getAlias())));
    if (tight && !u_isalnum(character) && u_getCombiningClass(character) == 0) continue;
    const std::string piece = character < 0x80 && u_isgraph(character)
                                  ? std::string(1, static_cast<char>(u_tolower(character)))
                                  : foldedCharacter(character);
    if (piece.empty()) {  // an accent belongs to its letter
      for (std::size_t i = last; i < folded.sources.size(); ++i)
        folded.sources[i].end = end;
      continue;
    }
    last = folded.text.size();
    folded.text += piece;
    folded.sources.resize(folded.text.size(), {begin, end});
  }
  return folded;
}

}  // namespace

FoldedText fold(std::string_view text) {
  return fold(text, false);
}

FoldedText foldTight(std::string_view text) {
  return fold(text, true);
}

}  // namespace fleetor
