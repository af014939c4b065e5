// Compiled by a test with KIND set to the type of a property.
#include "model/json_model.h"

namespace fleetor {

struct Gauge : APIModel {
  KIND level{};
};

template <>
inline constexpr auto propertiesOf<Gauge> = properties(required<&Gauge::level>("level"));

std::string write(const Gauge& gauge) {
  return JSONModel::toJSONString(gauge);
}

}  // namespace fleetor
