#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "model/json_model.h"
#include "platform/coordinate.h"

namespace fleetor {

// Where a vehicle is and was. Almost every value is text, numbers included: the service sends it formatted
// for display. Derived values are computed at every call.

/// Translates an English text into the user's language.
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
};

template <>
inline constexpr auto propertiesOf<Vehicle> = properties(required<&Vehicle::vehicleId>,
                                                         required<&Vehicle::name>,
                                                         required<&Vehicle::registration>,
                                                         required<&Vehicle::mapLineColor>,
                                                         required<&Vehicle::icon>);

/// A geographic point, in decimal degrees as text.
struct Location : APIModel {
  Text lat;
  Text lon;

  Coordinate coordinate() const;  ///< a text that does not read as a number gives 0
  std::string title(const Localizer& localized) const { return localized("Current position"); }
  Text subtitle() const { return Text(""); }
};

template <>
inline constexpr auto propertiesOf<Location> = properties(required<&Location::lat>, required<&Location::lon>);

/// Values that are reported with the live state but not shown.
struct LiveLed : APIModel {
  Text z1, z3, z4, z6, z8, z14, z23, z28, z33;
};

template <>
inline constexpr auto propertiesOf<LiveLed> = properties(required<&LiveLed::z1>, required<&LiveLed::z3>,
                                                         required<&LiveLed::z4>, required<&LiveLed::z6>,
                                                         required<&LiveLed::z8>, required<&LiveLed::z14>,
                                                         required<&LiveLed::z23>, required<&LiveLed::z28>,
                                                         required<&LiveLed::z33>);

/// A vehicle's latest reported state. The key "vehicles" holds one vehicle; some getters have other
/// names than their keys.
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
};

template <>
inline constexpr auto propertiesOf<Live> = properties(
    required<&Live::datetime>, required<&Live::vehicles>, required<&Live::active>, required<&Live::speed>,
    required<&Live::powerSupply>, optional<&Live::powerSupplyType>, required<&Live::sig>,
    required<&Live::direction>, required<&Live::fuel>, optional<&Live::fuelType>, required<&Live::rpm>,
    required<&Live::odometer>, required<&Live::led>, required<&Live::street>, required<&Live::temp>,
    required<&Live::location>);

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
  bool isParking() const { return label == std::string_view("Parking"); }
  Text title() const { return street; }
  std::string subtitle() const;  ///< dateTime, with the duration in parentheses behind it when there is one
};

template <>
inline constexpr auto propertiesOf<MapEntry> =
    properties(required<&MapEntry::lp>, required<&MapEntry::location>, required<&MapEntry::dateTime>,
               required<&MapEntry::duration>, required<&MapEntry::totdist>, required<&MapEntry::label>,
               required<&MapEntry::street>);

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
};

template <>
inline constexpr auto propertiesOf<RouteItem> =
    properties(required<&RouteItem::lp>, required<&RouteItem::status>, required<&RouteItem::timeFrom>,
               required<&RouteItem::timeTo>, required<&RouteItem::duration>, required<&RouteItem::distance>,
               required<&RouteItem::from>, required<&RouteItem::to>);

}  // namespace fleetor
