#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "model/json_model.h"
#include "platform/coordinate.h"

namespace fleetor {

// Where a vehicle is and was. Almost every value is text, numbers included: the service sends it as it likes
// it shown. Derived values are computed anew on every call.

/// Looks up the text for people behind an English key.
using Localizer = std::function<std::string(const std::string& key)>;

/// One vehicle of the account.
struct Vehicle : APIModel {
  std::int64_t vehicleId = 0;
  Text name;
  Text registration;
  Text mapLineColor;  ///< hexadecimal colour text of the track line
  Text icon;          ///< name of the image that marks the vehicle

  /// Name, line break, registration; the one that is there when the other is empty.
  std::string fullName() const;

  friend bool operator==(const Vehicle&, const Vehicle&) = default;
};

template <>
inline constexpr auto propertiesOf<Vehicle> = properties(required<&Vehicle::vehicleId>("vehicleId"),
                                                         required<&Vehicle::name>("name"),
                                                         required<&Vehicle::registration>("registration"),
                                                         required<&Vehicle::mapLineColor>("mapLineColor"),
                                                         required<&Vehicle::icon>("icon"));

/// A geographic point, in decimal degrees as text.
struct Location : APIModel {
  Text lat;
  Text lon;

  Coordinate coordinate() const;  ///< a text that does not read as a number gives 0
  std::string title(const Localizer& localized) const { return localized("Current position"); }
  Text subtitle() const { return Text(""); }

  friend bool operator==(const Location&, const Location&) = default;
};

template <>
inline constexpr auto propertiesOf<Location> = properties(required<&Location::lat>("lat"),
                                                          required<&Location::lon>("lon"));

/// Values that are reported with the live state and not shown.
struct LiveLed : APIModel {
  Text z1, z3, z4, z6, z8, z14, z23, z28, z33;

  friend bool operator==(const LiveLed&, const LiveLed&) = default;
};

template <>
inline constexpr auto propertiesOf<LiveLed> = properties(
    required<&LiveLed::z1>("z1"), required<&LiveLed::z3>("z3"), required<&LiveLed::z4>("z4"),
    required<&LiveLed::z6>("z6"), required<&LiveLed::z8>("z8"), required<&LiveLed::z14>("z14"),
    required<&LiveLed::z23>("z23"), required<&LiveLed::z28>("z28"), required<&LiveLed::z33>("z33"));

/// A vehicle's latest reported state. The key "vehicles" holds one vehicle; reading names differ from the
/// keys.
struct Live : APIModel {
  Text datetime;
  Vehicle vehicles;
  Text active;
  Text speed;  ///< km/h
  Text powerSupply;
  Text powerSupplyType;  ///< unit of powerSupply, may be missing
  Text sig;
  Text direction;
  Text fuel;
  Text fuelType;  ///< unit of fuel, may be missing
  Text rpm;
  Text odometer;
  LiveLed led;
  Text street;
  Text temp;
  Location location;

  const Vehicle& vehicle() const { return vehicles; }
  void setVehicles(Vehicle value) { vehicles = std::move(value); }
  const Text& dateTime() const { return datetime; }
  void setDatetime(Text value) { datetime = std::move(value); }

  Coordinate coordinate() const { return location.coordinate(); }
  Text title() const { return datetime; }
  Text subtitle() const { return street; }

  friend bool operator==(const Live&, const Live&) = default;
};

template <>
inline constexpr auto propertiesOf<Live> = properties(
    required<&Live::datetime>("datetime"), required<&Live::vehicles>("vehicles"),
    required<&Live::active>("active"), required<&Live::speed>("speed"),
    required<&Live::powerSupply>("powerSupply"), optional<&Live::powerSupplyType>("powerSupplyType"),
    required<&Live::sig>("sig"), required<&Live::direction>("direction"), required<&Live::fuel>("fuel"),
    optional<&Live::fuelType>("fuelType"), required<&Live::rpm>("rpm"), required<&Live::odometer>("odometer"),
    required<&Live::led>("led"), required<&Live::street>("street"), required<&Live::temp>("temp"),
    required<&Live::location>("location"));

/// One point of the day's track.
struct MapEntry : APIModel {
  std::int64_t lp = 0;  ///< number of the point
  Location location;
  Text dateTime;
  Text duration;  ///< may be empty
  Text totdist;
  Text label;
  Text street;

  Coordinate coordinate() const { return location.coordinate(); }
  Text title() const { return street; }
  std::string subtitle() const;  ///< dateTime, with the duration in parentheses behind it when there is one

  friend bool operator==(const MapEntry&, const MapEntry&) = default;
};

template <>
inline constexpr auto propertiesOf<MapEntry> = properties(required<&MapEntry::lp>("lp"),
                                                          required<&MapEntry::location>("location"),
                                                          required<&MapEntry::dateTime>("dateTime"),
                                                          required<&MapEntry::duration>("duration"),
                                                          required<&MapEntry::totdist>("totdist"),
                                                          required<&MapEntry::label>("label"),
                                                          required<&MapEntry::street>("street"));

/// One item of the day's trip list.
struct RouteItem : APIModel {
  std::int64_t lp = 0;  ///< number of the item
  Text status;
  Text timeFrom;
  Text timeTo;
  Text duration;
  Text distance;  ///< km
  Text from;
  Text to;

  friend bool operator==(const RouteItem&, const RouteItem&) = default;
};

template <>
inline constexpr auto propertiesOf<RouteItem> =
    properties(required<&RouteItem::lp>("lp"), required<&RouteItem::status>("status"),
               required<&RouteItem::timeFrom>("timeFrom"), required<&RouteItem::timeTo>("timeTo"),
               required<&RouteItem::duration>("duration"), required<&RouteItem::distance>("distance"),
               required<&RouteItem::from>("from"), required<&RouteItem::to>("to"));

}  // namespace fleetor
