#include "model/json_model.h"

#include "support/testing.h"

namespace fleetor {
namespace {

struct Wheel : APIModel {
  Text name;
  std::int64_t size = 0;
  bool validate() const { return size >= 0; }
};

struct Cart : APIModel {
  Text owner;
  Text note;
  Wheel spare;
  std::optional<Wheel> extra;
  std::vector<Wheel> wheels;
  std::optional<std::vector<Wheel>> worn;

  static constexpr std::optional<JSONKeyMapper> keyMapper() {
    return JSONKeyMapper{[](std::string_view key) { return key == "by" ? "owner" : key; },
                         [](std::string_view name) { return name == "owner" ? "by" : name; }};
  }
};

struct Yard : APIModel {
  Cart cart;
};

struct Buried : APIModel {
  Text found;
  static constexpr std::optional<JSONKeyMapper> keyMapper() {
    const auto map = [](std::string_view) -> std::string_view { return "outer.inner"; };
    return JSONKeyMapper{map, map};
  }
};

}  // namespace

template <>
inline constexpr auto propertiesOf<Wheel> = properties(required<&Wheel::name>, required<&Wheel::size>);
template <>
inline constexpr auto propertiesOf<Cart> = properties(required<&Cart::owner>, optional<&Cart::note>,
                                                      required<&Cart::spare>, optional<&Cart::extra>,
                                                      required<&Cart::wheels>, optional<&Cart::worn>);
template <>
inline constexpr auto propertiesOf<Yard> = properties(required<&Yard::cart>);
template <>
inline constexpr auto propertiesOf<Buried> = properties(required<&Buried::found>);
namespace {

const std::string wheel = R"({"name":"front","size":26})";

/// A cart with one part of it replaced.
std::string cart(const std::string& wheels = "[]", const std::string& rest = "",
                 const std::string& by = "\"Ann\"") {
  return R"({"by":)" + by + R"(,"spare":)" + wheel + R"(,"wheels":)" + wheels + rest + "}";
}

template <class R>
Result<R> map(const std::string& json) {
  auto decoded = decodeJSON(json);
  if (!decoded) return decoded.error();
  return JSONModel::initWithDictionary<R>(std::move(*decoded));
}

/// An error with all its entries, on one line.
std::string textOf(const JSONModelError& error) {
  std::string text = std::to_string(static_cast<long>(error.code)) + " " + error.description;
  if (error.kJSONModelMissingKeys) {
    text += " | missing";
    for (const auto& name : *error.kJSONModelMissingKeys)
      text += " " + name;
  }
  if (error.kJSONModelTypeMismatch) text += " | mismatch " + *error.kJSONModelTypeMismatch;
  if (error.kJSONModelKeyPath) text += " | at " + *error.kJSONModelKeyPath;
  return text;
}

const std::string missing =
    "1 Invalid JSON data. Required JSON keys are missing from the input. Check the error user information. | "
    "missing ";
const std::string mismatch =
    "1 Invalid JSON data. The JSON type mismatches the expected type. Check the error user information. | "
    "mismatch ";
const std::string notDictionary =
    "1 Invalid JSON data: Attempt to initialize JSONModel object using initWithDictionary:error: but the "
    "dictionary "
    "parameter was not an 'NSDictionary'.";

TEST(JSONModelTest, ReportsEveryErrorWithItsCodeExtrasAndKeyPath) {
  const std::pair<std::string, std::string> cases[] = {
      {"[]", notDictionary},
      {"{", "3 Malformed JSON. Check the JSONModel data input."},
      {"{}", missing + "owner spare wheels"},
      {cart("[]", "", "null"), "1 Invalid JSON data: Value of required model key owner is null | at owner"},
      {R"({"owner":"Ann","spare":{},"wheels":7})", missing + "owner"},
      {cart("7"),
       mismatch + "Property 'wheels' is declared as NSArray<Wheel>* but the corresponding JSON value is not "
                  "a JSON Array."},
      {cart("null"), "1 Invalid JSON data: Value of required model key wheels is null | at wheels"},
      {cart("[null," + std::string(R"({"name":"rear"}])")), missing + "size | at wheels[0]"},
      {cart("[7,\"x\"," + wheel + R"(,true,{"name":null,"size":1}])"),
       "1 Invalid JSON data: Value of required model key name is null | at wheels[1].name"},
      {cart("[" + wheel + ",[" + wheel + ",{}]]"), missing + "name size | at wheels[1][2]"},
      {cart(R"([{"name":"rear","size":-1}])"),
       "4 Model does not validate. The custom validation for the input data failed. | at wheels[0]"},
      {cart("[]", R"(,"worn":[{}])"), missing + "name size | at worn[0]"},
      {R"({"by":"Ann","spare":"x","wheels":[]})", notDictionary + " | at spare"},
      {R"({"by":"Ann","spare":{"name":"x"},"wheels":[]})", missing + "size | at spare"},
      {cart("[]", "", "{}"), "1 Invalid JSON data: object type not supported for Cart.owner | at owner"},
      {cart("[]", R"(,"note":[1])"),
       "1 Invalid JSON data: array type not supported for Cart.note | at note"}};
  for (const auto& [json, expected] : cases) {
    const auto mapped = map<Cart>(json);
    ASSERT_FALSE(mapped) << json;
    EXPECT_EQ(textOf(mapped.error()), expected) << json;
  }
  const auto yard = map<Yard>("{\"cart\":" + cart("[{}]") + "}");
  ASSERT_FALSE(yard);
  EXPECT_EQ(textOf(yard.error()), missing + "name size | at cart.wheels[0]");
  EXPECT_EQ(textOf(JSONModel::initWithDictionary<Cart>(JSONValue()).error()),
            "5 Initializing model with nil input object.");
  EXPECT_EQ(textOf(JSONModelError::badResponse()),
            "2 Bad network response. Probably the JSON URL is unreachable.");
  EXPECT_EQ(JSONModelError::badJSON().domain(), "JSONModelErrorDomain");
}

TEST(JSONModelTest, LeavesOptionalPartsEmptyAndIgnoresWhatNobodyNames) {
  const auto plain = map<Cart>(cart("[]", R"(,"note":null,"extra":null,"worn":null,"owner":7,"other":[{}])"));
  ASSERT_TRUE(plain);
  EXPECT_EQ(plain->owner, "Ann");
  EXPECT_FALSE(plain->note.isSet());
  EXPECT_FALSE(plain->extra);
  EXPECT_FALSE(plain->worn);

  for (const char* broken : {R"({"name":"x"})", R"("x")", "[]", R"({"name":"x","size":-1})"}) {
    const auto cart = map<Cart>(fleetor::cart("[]", ",\"extra\":" + std::string(broken)));
    ASSERT_TRUE(cart) << broken;
    EXPECT_FALSE(cart->extra) << broken;
  }
}

TEST(JSONModelTest, FlattensArraysInOrderAndSkipsWhatIsNotARecord) {
  const auto named = [](const char* name) { return R"({"size":1,"name":")" + std::string(name) + "\"}"; };
  const auto cart = map<Cart>(fleetor::cart("[null," + named("a") + ",[" + named("b") + ",[],[" + named("c") +
                                            "],1]," + named("d") + ",\"x\"]"));
  ASSERT_TRUE(cart);
  std::string names;
  for (const auto& each : cart->wheels)
    names += each.name.str();
  EXPECT_EQ(names, "abcd");

  const auto none = JSONModel::arrayOfModelsFromDictionaries<Wheel>(JSONValue());
  ASSERT_TRUE(none);
  EXPECT_FALSE(*none);
  EXPECT_FALSE(JSONModel::arrayOfModelsFromDictionaries<Wheel>(*decodeJSON("{}")));
}

TEST(JSONModelTest, TakesTheLastOfDuplicateKeysWhateverTheFirstHolds) {
  const auto repaired =
      map<Cart>(fleetor::cart("7", ",\"extra\":" + wheel + R"(,"wheels":[],"extra":null,"by":"Bo")", "{}"));
  ASSERT_TRUE(repaired);
  EXPECT_EQ(repaired->owner, "Bo");
  EXPECT_FALSE(repaired->extra);
}

TEST(JSONModelTest, ComparesEveryPropertyOfRecords) {
  const Cart cart;
  Cart owned, worn, spare;
  owned.owner = "Ann";
  worn.worn.emplace();
  spare.spare.size = 1;
  EXPECT_EQ(cart, Cart());
  for (const Cart& other : {owned, worn, spare})
    EXPECT_NE(cart, other);
}

TEST(JSONModelTest, ReadsAKeyThroughNestedObjects) {
  EXPECT_EQ(map<Buried>(R"({"outer":{"inner":"gold"}})")->found, "gold");
  for (const char* json : {R"({"outer.inner":"x"})", R"({"outer":7})", R"({"outer":{}})"})
    EXPECT_EQ(textOf(map<Buried>(json).error()), missing + "found") << json;
}

TEST(JSONModelTest, KeepsTextsAfterTheDocumentIsGone) {
  Wheel kept;
  {
    auto cart = map<Cart>(fleetor::cart("[" + wheel + R"(,{"name":12.5,"size":"27"}])"));
    ASSERT_TRUE(cart);
    kept = cart->wheels[1];
    cart->spare = cart->wheels[0];
    EXPECT_EQ(cart->spare.name, "front");
  }
  EXPECT_EQ(kept.name, "12.5");
  EXPECT_EQ(kept.size, 27);
}

TEST(JSONModelTest, GivesEachNumberATextOfItsOwn) {
  std::string numbers;
  for (int i = 0; i < 40; ++i)
    numbers += R"({"size":1,"name":)" + std::to_string(1000 + i) + "},";
  const auto cart = map<Cart>(fleetor::cart("[" + numbers + wheel + "]", R"(,"note":0.5)", "7"));
  ASSERT_TRUE(cart);
  for (std::size_t i = 0; i < 40; ++i)
    EXPECT_EQ(cart->wheels[i].name, std::to_string(1000 + i));
  EXPECT_EQ(cart->owner, "7");
  EXPECT_EQ(cart->note, "0.5");
}

TEST(JSONModelTest, WritesWhatMapsBackToTheSameRecord) {
  Cart cart;
  EXPECT_EQ(JSONModel::toJSONString(cart), R"({"by":null,"spare":{"name":null,"size":0},"wheels":[]})");

  cart.owner = std::string_view("\"Ann\"\\\n\t\x01\0\xC5\xBC/", 13);
  cart.note = "";
  cart.spare.name = "spare";
  cart.spare.size = INT64_MAX;
  cart.extra.emplace().name = "extra";
  cart.wheels.resize(2);
  cart.wheels[0].name = cart.wheels[1].name = "w";
  cart.worn.emplace();
  const std::string json = JSONModel::toJSONString(cart);
  EXPECT_EQ(
      json,
      R"({"by":"\"Ann\"\\\n\t\u0001\u0000)"
      "\xC5\xBC"
      R"(/","note":"","spare":{"name":"spare","size":9223372036854775807},"extra":{"name":"extra","size":0},)"
      R"("wheels":[{"name":"w","size":0},{"name":"w","size":0}],"worn":[]})");
  const auto back = map<Cart>(json);
  ASSERT_TRUE(back) << textOf(back.error());
  EXPECT_EQ(*back, cart);
  EXPECT_TRUE(back->note.isSet());
}

}  // namespace
}  // namespace fleetor
