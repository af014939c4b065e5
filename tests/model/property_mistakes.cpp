// Compiled by tests: as it is, and with one of the mistakes that a property table does not allow.
#include "model/json_model.h"

namespace fleetor {

struct Gauge : APIModel {
  KIND level{};
};

template <>
inline constexpr auto propertiesOf<Gauge> = properties(required<&Gauge::level>);

struct FuelGauge : Gauge {
  Text fuel;
};

template <>
inline constexpr auto propertiesOf<FuelGauge> = properties(INHERITED required<&FuelGauge::fuel>);

std::string write(const FuelGauge& gauge) {
  return JSONModel::toJSONString(gauge);
}

}  // namespace fleetor
