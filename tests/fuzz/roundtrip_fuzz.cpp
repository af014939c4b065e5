// Records made from arbitrary bytes, written as JSON and mapped back: the same record must come out.

#include <optional>
#include <string>
#include <vector>

#include "fuzzing.h"
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
};

}  // namespace

template <>
inline constexpr auto fleetor::propertiesOf<Everything> = properties(required<&Everything::live>,
                                                                     optional<&Everything::info>,
                                                                     optional<&Everything::user>,
                                                                     optional<&Everything::map>,
                                                                     required<&Everything::route>);

namespace {

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
  require(decoded.hasValue(), "what was written is JSON", written);
  const auto back = JSONModel::initWithDictionary<Everything>(std::move(*decoded));
  require(back && *back == record && JSONModel::toJSONString(*back) == written, "it comes back as it was",
          written);
  return 0;
}
