// Records made from arbitrary bytes, written as JSON and mapped back: the same record must come out.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "model/account_records.h"
#include "model/vehicle_records.h"

namespace {

using namespace fleetor;

struct Everything : APIModel {
  Live live;
  std::optional<Info> info;
  std::optional<User> user;
  std::optional<std::vector<MapEntry>> map;
  std::vector<RouteItem> route;

  friend bool operator==(const Everything&, const Everything&) = default;
};

}  // namespace

template <>
inline constexpr auto fleetor::propertiesOf<Everything> = properties(required<&Everything::live>("live"),
                                                                     optional<&Everything::info>("info"),
                                                                     optional<&Everything::user>("user"),
                                                                     optional<&Everything::map>("map"),
                                                                     required<&Everything::route>("route"));

namespace {

/// Spends the input bit by bit; zeros when it is used up.
class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}

  std::uint32_t next() {
    if (left_ == 0) return 0;
    --left_;
    return *data_++;
  }

  std::int64_t integer() {
    std::uint64_t value = 0;
    for (std::uint32_t bytes = next() % 9; bytes > 0; --bytes)
      value = value << 8 | next();
    return static_cast<std::int64_t>(next() % 2 ? ~value : value);
  }

  /// Records hold valid UTF-8 only, so code points are drawn, of every length and with the controls among
  /// them.
  std::string text() {
    std::string out;
    for (std::uint32_t points = next() % 12; points > 0; --points) {
      std::uint32_t point = next();
      const std::uint32_t kind = next() % 8;
      if (kind == 0) point = point << 3 | next();
      if (kind == 1) point = point << 8 | next();
      if (kind == 2) point = (point << 12 | next() << 4) % 0x110000;
      append(out, point >= 0xD800 && point < 0xE000 ? 0xFFFD : point);
    }
    return out;
  }

 private:
  static void append(std::string& out, std::uint32_t point) {
    const auto put = [&](std::uint32_t byte) { out += static_cast<char>(byte); };
    if (point < 0x80) {
      put(point);
    } else if (point < 0x800) {
      put(0xC0 | point >> 6), put(0x80 | (point & 63));
    } else if (point < 0x10000) {
      put(0xE0 | point >> 12), put(0x80 | (point >> 6 & 63)), put(0x80 | (point & 63));
    } else {
      put(0xF0 | point >> 18), put(0x80 | (point >> 12 & 63)), put(0x80 | (point >> 6 & 63)),
          put(0x80 | (point & 63));
    }
  }

  const std::uint8_t* data_;
  std::size_t left_;
};

void fill(Bytes& bytes, const json::RecordType& type, void* record) {
  for (std::size_t i = 0; i < type.count; ++i) {
    const auto& property = type.properties[i];
    void* member = property.at(record);
    if (property.isOptional && bytes.next() % 4 == 0) continue;
    switch (property.kind) {
      case json::PropertyKind::text:
        *static_cast<Text*>(member) = bytes.text();
        break;
      case json::PropertyKind::integer:
        *static_cast<std::int64_t*>(member) = bytes.integer();
        break;
      case json::PropertyKind::record:
        fill(bytes, *property.type, property.make(member));
        break;
      case json::PropertyKind::array: {
        void* list = property.make(member);
        for (std::uint32_t count = bytes.next() % 4; count > 0; --count)
          fill(bytes, *property.type, property.type->append(list));
      }
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, size);
  Everything record;
  fill(bytes, json::recordType<Everything>, &record);
  const std::string written = JSONModel::toJSONString(record);
  auto decoded = decodeJSON(written);
  if (decoded) {
    const auto back = JSONModel::initWithDictionary<Everything>(std::move(*decoded));
    if (back && *back == record && JSONModel::toJSONString(*back) == written) return 0;
  }
  std::fprintf(stderr, "does not come back as it was: %s\n", written.c_str());
  std::abort();
}
