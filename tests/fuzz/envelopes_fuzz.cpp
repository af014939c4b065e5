// Bytes, decoded, mapped into each of the envelopes. Whatever maps must write a text that maps back to an
// equal envelope, and whatever does not must say why.

#include <string>

#include "fuzzing.h"
#include "service/envelopes.h"

namespace {

using fleetor::require;

template <class Envelope>
void mapInto(const fleetor::JSONValue& value) {
  using fleetor::JSONModel;
  const auto mapped = JSONModel::initWithDictionary<Envelope>(value);
  if (!mapped) {
    require(!mapped.error().description.empty(), "an error has a description");
    return;
  }
  const std::string written = JSONModel::toJSONString(*mapped);
  auto decoded = fleetor::decodeJSON(written);
  require(decoded.hasValue(), "what was written is JSON", written);
  const auto again = JSONModel::initWithDictionary<Envelope>(std::move(*decoded));
  require(again.hasValue(), "what was written maps", written);
  require(*again == *mapped, "it maps to the same", written);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto decoded = fleetor::decodeJSON(std::string(reinterpret_cast<const char*>(data), size));
  if (!decoded) return 0;
  mapInto<fleetor::TokenResponse>(*decoded);
  mapInto<fleetor::UserResponse>(*decoded);
  mapInto<fleetor::InfoResponse>(*decoded);
  mapInto<fleetor::LiveResponse>(*decoded);
  mapInto<fleetor::VehiclesResponse>(*decoded);
  mapInto<fleetor::MapResponse>(*decoded);
  mapInto<fleetor::RouteResponse>(*decoded);
  return 0;
}
