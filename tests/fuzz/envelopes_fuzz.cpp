// Bytes, decoded and mapped into each of the envelopes, and the same bytes as the values of all its
// properties. An envelope must write a text that maps back to the same one, and whatever does not map must
// say why.

#include <string>

#include "fuzzing.h"
#include "service/envelopes.h"

namespace {

using namespace fleetor;

template <class Envelope>
void requireItComesBack(const Envelope& envelope) {
  const std::string written = JSONModel::toJSONString(envelope);
  auto decoded = decodeJSON(written);
  require(decoded.hasValue(), "what was written is JSON", written);
  const auto back = JSONModel::initWithDictionary<Envelope>(std::move(*decoded));
  require(back && *back == envelope && JSONModel::toJSONString(*back) == written, "it comes back as it was",
          written);
}

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

template <class Envelope>
void check(const Result<JSONValue>& decoded, Bytes bytes) {
  Envelope made;
  fill(bytes, json::recordType<Envelope>, &made);
  requireItComesBack(made);
  if (!decoded) return;
  const auto mapped = JSONModel::initWithDictionary<Envelope>(*decoded);
  require(mapped || !mapped.error().description.empty(), "an error has a description");
  if (mapped) requireItComesBack(*mapped);
}

template <class... Envelopes>
void checkEach(const Result<JSONValue>& decoded, const Bytes& bytes) {
  (check<Envelopes>(decoded, bytes), ...);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  checkEach<TokenResponse, UserResponse, InfoResponse, LiveResponse, VehiclesResponse, MapResponse,
            RouteResponse>(decodeJSON(std::string(reinterpret_cast<const char*>(data), size)),
                           Bytes(data, size));
  return 0;
}
