#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "model/account_records.h"
#include "model/json_model.h"
#include "model/vehicle_records.h"
#include "service/model_class.h"

namespace fleetor {

// Every answer of the service is an envelope: a status and a count beside the payload. A screen keeps an
// envelope as the data source of its table: `initForLoading` makes an empty accumulator, `nextResult` merges
// a valid answer into it and `onError` closes it after a failed call.

/// The service's own status of a call; independent of the HTTP status.
struct APIError : APIModel {
  std::int64_t code = 0;  ///< 200 means success
  Text message;           ///< the service calls it "description"

  static APIError initWithCode(std::int64_t code, Text message);

  static constexpr std::optional<JSONKeyMapper> keyMapper() {
    return JSONKeyMapper{
        [](std::string_view key) { return key == "description" ? std::string_view("message") : key; },
        [](std::string_view name) { return name == "message" ? std::string_view("description") : name; }};
  }
};

template <>
inline constexpr auto propertiesOf<APIError> = properties(required<&APIError::code>,
                                                          required<&APIError::message>);

struct APIResponse : APIModel {
  std::int64_t total =
      0;  ///< items that the service holds for the query; in a single-record accumulator, table rows
  APIError error;

  bool isValidResponse() const { return error.code == 200; }
};

template <>
inline constexpr auto propertiesOf<APIResponse> = properties(required<&APIResponse::total>,
                                                             required<&APIResponse::error>);

/// Answer of "/token?grant_type=password".
struct TokenResponse : APIResponse {
  std::optional<Token> token;

  bool isValidResponse() const { return token && APIResponse::isValidResponse(); }
};

template <>
inline constexpr auto propertiesOf<TokenResponse> = properties(inherited<APIResponse>,
                                                               optional<&TokenResponse::token>);

/// Answer of "/user", and the rows of the account screen.
struct UserResponse : APIResponse {
  static constexpr std::int64_t rows = 10;
  std::optional<User> user;

  static UserResponse initForLoading();
  void nextResult(const UserResponse& answer);
  void onError();
  bool isValidResponse() const { return user && APIResponse::isValidResponse(); }
};

template <>
inline constexpr auto propertiesOf<UserResponse> = properties(inherited<APIResponse>,
                                                              optional<&UserResponse::user>);

/// Answer of "/info", and the rows of the vehicle's about page. The record is required, yet an accumulator
/// starts without one.
struct InfoResponse : APIResponse {
  static constexpr std::int64_t rows = 6;
  std::optional<Info> info;

  static InfoResponse initForLoading();
  void nextResult(const InfoResponse& answer);
  void onError();
  bool isValidResponse() const { return info && APIResponse::isValidResponse(); }
};

template <>
inline constexpr auto propertiesOf<InfoResponse> = properties(inherited<APIResponse>,
                                                              required<&InfoResponse::info>);

/// Answer of "/live".
struct LiveResponse : APIResponse {
  std::optional<Live> live;

  bool isValidResponse() const { return live && APIResponse::isValidResponse(); }
};

template <>
inline constexpr auto propertiesOf<LiveResponse> = properties(inherited<APIResponse>,
                                                              optional<&LiveResponse::live>);

/// Answer of "/vehicles", one page; as an accumulator, all pages so far. While `total` differs from the
/// number of vehicles, the screen shows one more row that stands for what is still to come.
struct VehiclesResponse : APIResponse {
  std::optional<std::vector<Vehicle>> vehicles;

  static VehiclesResponse initForLoading();
  void nextResult(const VehiclesResponse& page);
  void onError();
  bool isValidResponse() const { return vehicles && APIResponse::isValidResponse(); }
};

template <>
inline constexpr auto propertiesOf<VehiclesResponse> = properties(inherited<APIResponse>,
                                                                  optional<&VehiclesResponse::vehicles>);

/// Answer of "/map".
struct MapResponse : APIResponse {
  std::optional<std::vector<MapEntry>> map;

  bool isValidResponse() const { return map && APIResponse::isValidResponse(); }
};

template <>
inline constexpr auto propertiesOf<MapResponse> = properties(inherited<APIResponse>,
                                                             optional<&MapResponse::map>);

/// Answer of "/route", and the rows of the trip list.
struct RouteResponse : APIResponse {
  std::optional<std::vector<RouteItem>> route;

  static RouteResponse initForLoading();
  void nextResult(const RouteResponse& page);
  void onError();
  bool isValidResponse() const { return route && APIResponse::isValidResponse(); }
};

template <>
inline constexpr auto propertiesOf<RouteResponse> = properties(inherited<APIResponse>,
                                                               optional<&RouteResponse::route>);

}  // namespace fleetor
