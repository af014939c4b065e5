#include "fleet/vehicle_search.h"

#include "support/testing.h"

namespace fleetor {
namespace {

/// The text with its marks in brackets.
std::string marked(std::string text, const std::vector<TextRange>& marks) {
  std::for_each(marks.rbegin(), marks.rend(),
                [&](const TextRange& mark) { text.insert(mark.end, "]").insert(mark.begin, "["); });
  return text;
}

class Search : public testing::Test {
 protected:
  void add(const char* name, const char* registration) {
    Vehicle vehicle;
    vehicle.name = Text(name);
    vehicle.registration = Text(registration);
    search.add(vehicle);
  }

  /// The vehicles that are found, as "name|registration" with what was looked for in brackets.
  std::vector<std::string> find(const char* typed, VehicleOrder order = VehicleOrder::service) {
    const SearchWords words(typed);
    std::vector<std::string> found;
    for (const std::size_t i : search.find(words, order)) {
      const Vehicle& vehicle = search.vehicles()[i];
      found.push_back(marked(vehicle.name.str(), words.inName(vehicle.name.view())) + "|" +
                      marked(vehicle.registration.str(), words.inRegistration(vehicle.registration.view())));
    }
    return found;
  }

  VehicleSearch search{"pl"};
};

TEST_F(Search, FoldsCaseAccentsAndDigitsAndMarksTheOriginal) {
  for (const auto& [name, typed, found] : std::initializer_list<std::array<const char*, 3>>{
           {"Café van", "CAFE", "[Café] van"},
           {"Cafe\u0301 van", "fé v", "Ca[fe\u0301] [v]an"},
           {"Łódź 7", "lodz", "[Łódź] 7"},
           {"Straße", "STRASSE", "[Straße]"},
           {"Straße", "as", "Str[aß]e"},
           {"İstanbul ışık", "istanbul isik", "[İstanbul] [ışık]"},
           {"Їжак", "ЇЖ", "[Їж]ак"},
           {"Πόλος", "πολοσ", "[Πόλος]"},
           {"شاحنة ٤٥", "45", "شاحنة [٤٥]"},
           {"ガレージ", "カ", ""},
           {"Ｖａｎ", "van", "[Ｖａｎ]"},
           {"a\xff"
            "b van",
            "van",
            "a\xff"
            "b [van]"},
           {"anana", "ana nan", "[anana]"}}) {
    VehicleSearch one("pl");
    Vehicle vehicle;
    vehicle.name = Text(name);
    one.add(vehicle);
    const SearchWords words(typed);
    EXPECT_EQ(one.find(words, VehicleOrder::service).empty(), *found == '\0') << typed;
    if (*found != '\0') {
      EXPECT_EQ(marked(name, words.inName(name)), found);
    }
  }
}

TEST_F(Search, NeedsEveryWordInTheNameOrTheRegistration) {
  add("Van 1", "KR 1-23");
  add("Van 2", "");
  add("Lorry", "VA N1");
  EXPECT_THAT(find("  van\t1 "), ElementsAre("[Van] [1]|KR [1]-23", "Lorry|[VA N1]"));
  EXPECT_THAT(find("kr123 van"), ElementsAre("[Van] 1|[KR 1-23]"));
  EXPECT_THAT(find("r1-2"), ElementsAre("Van 1|K[R 1-2]3"));
  EXPECT_THAT(find("-"), IsEmpty()) << "signs alone are in no registration";
  EXPECT_THAT(find(" "), SizeIs(3));
}

TEST_F(Search, SortsAsTheLanguageDoesWithNumbersByValue) {
  add("Zebra 10", "");
  add("zebra 9", "KR 20");
  add("Łódź", "KR 3");
  add("Lodz", "");
  add("Mak", "kr 3");
  EXPECT_THAT(find("", VehicleOrder::name),
              ElementsAre("Lodz|", "Łódź|KR 3", "Mak|kr 3", "zebra 9|KR 20", "Zebra 10|"));
  EXPECT_THAT(find("", VehicleOrder::registration),
              ElementsAre("Mak|kr 3", "Łódź|KR 3", "zebra 9|KR 20", "Lodz|", "Zebra 10|"));
  EXPECT_THAT(find("z", VehicleOrder::service),
              ElementsAre("[Z]ebra 10|", "[z]ebra 9|KR 20", "Łód[ź]|KR 3", "Lod[z]|"));
}

}  // namespace
}  // namespace fleetor
