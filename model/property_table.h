#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "model/text.h"

namespace fleetor {

class JSONModel;

/// One declared property: a data member, whose name it has, and whether the input may leave it out.
template <auto Member>
struct Property {
  static constexpr auto member = Member;
  bool isOptional;
};

template <auto Member>
inline constexpr std::tuple required(Property<Member>{false});

template <auto Member>
inline constexpr std::tuple optional(Property<Member>{true});

/// The properties of record R: all data members in the order of their declaration, those of its base first.
/// It must be specialised right after the record:
///
///   template <>
///   inline constexpr auto propertiesOf<Location> =
///       properties(required<&Location::lat>, required<&Location::lon>);
///
/// The kind follows from the member's type: Text, std::int64_t, a record or std::optional of one, std::vector
/// of records or std::optional of one. An optional record or array needs the std::optional form; a required
/// one may have it, for records that are also made empty by hand. Anything else does not compile.
template <class R>
inline constexpr auto propertiesOf = std::false_type();

template <class... Properties>
constexpr auto properties(Properties... list) {
  return std::tuple_cat(list...);
}

/// The properties of a base, as the first argument of `properties`.
template <class Base>
inline constexpr auto inherited = propertiesOf<Base>;

namespace json {

struct RecordType;

enum class PropertyKind : std::uint8_t { text, integer, record, array };

/// A property with its types erased: what the engine works on.
struct PropertyEntry {
  std::string_view name;
  std::string_view key;   ///< the JSON key, through the record's key mapper
  std::uint64_t keyWord;  ///< the key's first eight bytes as they lie in memory, and which of them count
  std::uint64_t keyMask;
  PropertyKind kind;
  bool isOptional;
  void* (*at)(void* record);                          ///< the data member
  const RecordType* type = nullptr;                   ///< of a record, or of an array's elements
  void* (*make)(void* member) = nullptr;              ///< makes the record or array exist and returns it
  void (*drop)(void* member) = nullptr;               ///< back to the initial state
  const void* (*peek)(const void* member) = nullptr;  ///< the record or array, null when it is missing
};

/// A record type with its types erased. The list operations work on a std::vector of the record.
struct RecordType {
  std::string_view name;
  const PropertyEntry* properties;
  std::size_t count;
  std::uint64_t required;  ///< bit i: property i is required
  bool hasKeyMapper;
  bool hasKeyPaths;                      ///< some key holds a "."
  bool (*validate)(const void* record);  ///< null accepts everything
  std::size_t recordSize;
  void (*reserve)(void* list, std::size_t count);
  void* (*storage)(void* list);
  void* (*append)(void* list);
  std::size_t (*size)(const void* list);
  const void* (*element)(const void* list, std::size_t index);
};

template <class T>
struct Unwrapped {
  using Type = T;
  static constexpr bool isOptional = false;
};
template <class T>
struct Unwrapped<std::optional<T>> {
  using Type = T;
  static constexpr bool isOptional = true;
};

template <class T>
struct ElementOf {
  using Type = void;
};
template <class T>
struct ElementOf<std::vector<T>> {
  using Type = T;
};

template <class C, class V>
V memberValue(V C::*);

/// The unqualified name of a template argument, from a function's signature as GCC and Clang spell it:
/// "... [with T = fleetor::Location; ...]", "... [Member = &fleetor::Location::lat]".
constexpr std::string_view argumentName(std::string_view function) {
  function.remove_prefix(function.find(" = ") + 3);
  function = function.substr(0, function.find_first_of(";]"));
  const auto colon = function.rfind("::");
  return colon == std::string_view::npos ? function : function.substr(colon + 2);
}
template <class T>
constexpr std::string_view typeName() {
  return argumentName(__PRETTY_FUNCTION__);
}
template <auto Member>
constexpr std::string_view memberName() {
  return argumentName(__PRETTY_FUNCTION__);
}

template <class R>
struct TableOf;

template <class R, auto Member>
constexpr PropertyEntry entryOf(Property<Member> property) {
  using Held = decltype(memberValue(Member));
  using Value = typename Unwrapped<Held>::Type;
  using Element = typename ElementOf<Value>::Type;
  constexpr bool wrapped = Unwrapped<Held>::isOptional;
  constexpr bool isText = std::is_same_v<Held, Text>;
  constexpr bool isInteger = std::is_same_v<Held, std::int64_t>;
  constexpr bool isRecord = std::is_base_of_v<JSONModel, Value>;
  constexpr bool isArray = std::is_base_of_v<JSONModel, Element>;
  static_assert(
      isText || isInteger || isRecord || isArray,
      "JSONModelProperty type not allowed: Property type of R.Member is not supported by JSONModel.");

  PropertyEntry entry{};
  entry.name = entry.key = memberName<Member>();
  if (const auto mapper = R::keyMapper()) entry.key = mapper->modelToJSONKey(entry.name);
  for (std::size_t i = 0; i < entry.key.size() && i < 8; ++i) {
    const auto shift = 8 * (std::endian::native == std::endian::little ? i : 7 - i);
    entry.keyWord |= std::uint64_t{static_cast<unsigned char>(entry.key[i])} << shift;
    entry.keyMask |= std::uint64_t{0xFF} << shift;
  }
  entry.isOptional = property.isOptional;
  entry.at = [](void* record) -> void* { return &(static_cast<R*>(record)->*Member); };
  if constexpr (isText) {
    entry.kind = PropertyKind::text;
  } else if constexpr (isInteger) {
    entry.kind = PropertyKind::integer;
  } else if constexpr (isRecord || isArray) {
    entry.kind = isRecord ? PropertyKind::record : PropertyKind::array;
    entry.type = &TableOf<std::conditional_t<isRecord, Value, Element>>::type;
    entry.make = [](void* member) -> void* {
      if constexpr (wrapped)
        return &static_cast<Held*>(member)->emplace();
      else
        return member;
    };
    entry.drop = [](void* member) { *static_cast<Held*>(member) = Held(); };
    entry.peek = [](const void* member) -> const void* {
      if constexpr (wrapped) {
        const auto& held = *static_cast<const Held*>(member);
        return held ? &*held : nullptr;
      } else {
        return member;
      }
    };
    if (property.isOptional && !wrapped) throw "an optional record or array is declared as std::optional";
  }
  return entry;
}

template <class R>
struct TableOf {
  static_assert(std::is_base_of_v<JSONModel, R>);
  static_assert(!std::is_same_v<std::remove_cv_t<decltype(propertiesOf<R>)>, std::false_type>,
                "propertiesOf<R> must be specialised right behind the record");

  static constexpr auto entries =
      std::apply([](auto... list) { return std::array<PropertyEntry, sizeof...(list)>{entryOf<R>(list)...}; },
                 propertiesOf<R>);
  static_assert(entries.size() <= 64, "one bit a property");

  /// The size of a record that has just the members of the table, in their order. An empty base cannot share
  /// its address with a first member that is a record too.
  static constexpr std::size_t listedSize() {
    std::size_t size = entries.front().kind == PropertyKind::record ? alignof(R) : 0;
    const auto align = [&size](std::size_t to) { size = (size + to - 1) / to * to; };
    const auto add = [&]<auto Member>(Property<Member>) {
      align(alignof(decltype(memberValue(Member))));
      size += sizeof(decltype(memberValue(Member)));
    };
    std::apply([&](auto... list) { (..., add(list)); }, propertiesOf<R>);
    align(alignof(R));
    return size;
  }
  static_assert(sizeof(R) <= listedSize(),
                "a property table lists every data member of the record, those of its base first");

  static constexpr std::uint64_t required() {
    std::uint64_t mask = 0;
    for (std::size_t i = 0; i < entries.size(); ++i)
      if (!entries[i].isOptional) mask |= std::uint64_t{1} << i;
    return mask;
  }
  static constexpr bool hasKeyPaths() {
    for (const auto& entry : entries)
      if (entry.key.find('.') != std::string_view::npos) return true;
    return false;
  }
  static constexpr bool keysAreDistinct() {
    for (std::size_t i = 0; i < entries.size(); ++i)
      for (std::size_t j = 0; j < i; ++j)
        if (entries[i].key == entries[j].key || entries[i].name == entries[j].name) return false;
    return true;
  }
  static_assert(keysAreDistinct(), "two properties share a name or a JSON key");

  static bool validate(const void* record) { return static_cast<const R*>(record)->validate(); }
  static void reserve(void* list, std::size_t count) { static_cast<std::vector<R>*>(list)->reserve(count); }
  static void* storage(void* list) { return static_cast<std::vector<R>*>(list)->data(); }
  static void* append(void* list) { return &static_cast<std::vector<R>*>(list)->emplace_back(); }
  static std::size_t size(const void* list) { return static_cast<const std::vector<R>*>(list)->size(); }
  static const void* element(const void* list, std::size_t index) {
    return &(*static_cast<const std::vector<R>*>(list))[index];
  }

  static constexpr bool keepsDefaultValidate =
      std::is_same_v<decltype(&R::validate), bool (JSONModel::*)() const>;

  static constexpr RecordType type{typeName<R>(),
                                   entries.data(),
                                   entries.size(),
                                   required(),
                                   R::keyMapper().has_value(),
                                   hasKeyPaths(),
                                   keepsDefaultValidate ? nullptr : &validate,
                                   sizeof(R),
                                   &reserve,
                                   &storage,
                                   &append,
                                   &size,
                                   &element};
};

template <class R>
inline constexpr const RecordType& recordType = TableOf<R>::type;

}  // namespace json
}  // namespace fleetor
