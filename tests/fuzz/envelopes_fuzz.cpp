// Bytes, decoded, mapped into each of the envelopes. Whatever maps must write a text that maps back to an
// equal envelope, and whatever does not must say why.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "service/envelopes.h"

namespace {

void require(bool holds, const char* what, const std::string& text) {
  if (holds) return;
  std::fprintf(stderr, "%s: %s\n", what, text.c_str());
  std::abort();
}

template <class Envelope>
void mapInto(const fleetor::JSONValue& value) {
  using fleetor::JSONModel;
  const auto mapped = JSONModel::initWithDictionary<Envelope>(value);
  if (!mapped) {
    require(!mapped.error().description.empty(), "an error without a description", "");
    return;
  }
  const std::string written = JSONModel::toJSONString(*mapped);
  auto decoded = fleetor::decodeJSON(written);
  require(decoded.hasValue(), "what was written is not JSON", written);
  const auto again = JSONModel::initWithDictionary<Envelope>(std::move(*decoded));
  require(again.hasValue(), "what was written does not map", written);
  require(*again == *mapped, "what was written maps to something else", written);
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
