#include "fleet/vehicle_search.h"

#include <unicode/coll.h>

#include <algorithm>
#include <tuple>
#include <utility>

#include "fleet/folded_text.h"

namespace fleetor {

namespace {

constexpr std::size_t longestSearched = 4000;  ///< bytes of a text; what lies behind is not searched

std::string_view searched(std::string_view text) {
  return text.substr(0, longestSearched);
}

void addRanges(const FoldedText& where, const std::string& word, std::vector<TextRange>& ranges) {
  if (word.empty()) return;
  for (auto at = where.text.find(word); at != std::string::npos; at = where.text.find(word, at + 1))
    ranges.push_back({where.sources[at].begin, where.sources[at + word.size() - 1].end});
}

std::vector<TextRange> joined(std::vector<TextRange> ranges) {
  std::ranges::sort(ranges, {}, &TextRange::begin);
  std::vector<TextRange> apart;
  for (const TextRange& range : ranges) {
    if (!apart.empty() && range.begin <= apart.back().end)
      apart.back().end = std::max(apart.back().end, range.end);
    else
      apart.push_back(range);
  }
  return apart;
}

}  // namespace

SearchWords::SearchWords(std::string_view typed) {
  const std::string folded = fold(typed).text;
  for (std::size_t begin = 0; begin < folded.size();) {
    const std::size_t end = std::min(folded.find(' ', begin), folded.size());
    if (end > begin) {
      std::string word = folded.substr(begin, end - begin);
      std::string tight = foldTight(word).text;
      words_.push_back({std::move(word), std::move(tight)});
    }
    begin = end + 1;
  }
}

bool SearchWords::matches(std::string_view foldedName, std::string_view tightRegistration) const {
  return std::ranges::all_of(words_, [&](const Word& word) {
    return foldedName.find(word.folded) != std::string_view::npos ||
           (!word.tight.empty() && tightRegistration.find(word.tight) != std::string_view::npos);
  });
}

std::vector<TextRange> SearchWords::rangesIn(const FoldedText& folded, std::string Word::*form) const {
  std::vector<TextRange> ranges;
  for (const Word& word : words_)
    addRanges(folded, word.*form, ranges);
  return joined(std::move(ranges));
}

std::vector<TextRange> SearchWords::inName(std::string_view name) const {
  return words_.empty() ? std::vector<TextRange>() : rangesIn(fold(searched(name)), &Word::folded);
}

std::vector<TextRange> SearchWords::inRegistration(std::string_view registration) const {
  return words_.empty() ? std::vector<TextRange>()
                        : rangesIn(foldTight(searched(registration)), &Word::tight);
}

/// Makes keys that sort by their bytes.
class VehicleSearch::Sorter {
 public:
  explicit Sorter(const std::string& language) {
    UErrorCode problem = U_ZERO_ERROR;
    collator_.reset(icu::Collator::createInstance(icu::Locale(language.c_str()), problem));
    if (collator_ && U_SUCCESS(problem)) collator_->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, problem);
    if (U_FAILURE(problem)) collator_ = nullptr;
  }

  std::string keyOf(std::string_view text) const {
    if (!collator_ || text.empty()) return std::string(text);
    const auto letters =
        icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
    std::string key(static_cast<std::size_t>(collator_->getSortKey(letters, nullptr, 0)), '\0');
    collator_->getSortKey(letters, reinterpret_cast<std::uint8_t*>(key.data()),
                          static_cast<std::int32_t>(key.size()));
    return key;
  }

 private:
  std::unique_ptr<icu::Collator> collator_;  ///< none: the system has no such data, and bytes decide
};

VehicleSearch::VehicleSearch(const std::string& language) : sorter_(std::make_unique<Sorter>(language)) {}

VehicleSearch::~VehicleSearch() = default;

void VehicleSearch::add(const Vehicle& vehicle) {
  const auto name = searched(vehicle.name.view());
  const auto registration = searched(vehicle.registration.view());
  vehicles_.push_back(vehicle);
  prepared_.push_back(
      {fold(name).text, foldTight(registration).text, sorter_->keyOf(name), sorter_->keyOf(registration)});
}

std::vector<std::size_t> VehicleSearch::find(const SearchWords& words, VehicleOrder order) const {
  std::vector<std::size_t> found;
  for (std::size_t i = 0; i < prepared_.size(); ++i)
    if (words.matches(prepared_[i].name, prepared_[i].registration)) found.push_back(i);
  if (order == VehicleOrder::name)
    std::ranges::stable_sort(found, [this](std::size_t a, std::size_t b) {
      const Prepared &one = prepared_[a], &other = prepared_[b];
      return std::tie(one.nameKey, one.registrationKey) < std::tie(other.nameKey, other.registrationKey);
    });
  if (order == VehicleOrder::registration)
    std::ranges::stable_sort(found, [this](std::size_t a, std::size_t b) {
      const Prepared &one = prepared_[a], &other = prepared_[b];
      if (one.registrationKey.empty() != other.registrationKey.empty()) return other.registrationKey.empty();
      return std::tie(one.registrationKey, one.nameKey) < std::tie(other.registrationKey, other.nameKey);
    });
  return found;
}

}  // namespace fleetor
