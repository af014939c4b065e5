#pragma once

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>
#include <vector>

#include "support/scripted_transport.h"

// Answers of the tracking service, for the tests of the screens.
namespace fleetor::test {

inline std::string envelope(int total, const std::string& payload, int code = 200) {
  return R"({"total":)" + std::to_string(total) + R"(,"error":{"code":)" + std::to_string(code) +
         R"(,"description":"as scripted"})" + (payload.empty() ? "" : ",") + payload + "}";
}

/// Every third vehicle has no registration.
inline std::string vehicleJSON(int id) {
  const std::string number = std::to_string(id);
  return R"({"vehicleId":)" + number + R"(,"name":"Vehicle )" + number + R"(","registration":")" +
         (id % 3 == 0 ? "" : "KR " + number) + R"(","mapLineColor":"1e90ff","icon":"Car)" + number + R"("})";
}

/// The value of a query or form parameter as it was sent, or nothing.
inline std::string parameterOf(std::string_view text, std::string_view name) {
  if (const auto query = text.find('?'); query != std::string_view::npos) text.remove_prefix(query + 1);
  while (!text.empty()) {
    const auto pair = text.substr(0, text.find('&'));
    if (pair.starts_with(name) && pair.substr(name.size()).starts_with('='))
      return std::string(pair.substr(name.size() + 1));
    text.remove_prefix(std::min(text.size(), pair.size() + 1));
  }
  return {};
}

inline int numberOf(std::string_view text, std::string_view name) {
  const std::string value = parameterOf(text, name);
  int number = -1;
  std::from_chars(value.data(), value.data() + value.size(), number);
  return number;
}

/// One page of a fleet of `delivered` vehicles that claims to hold `total`.
inline HttpReply vehiclesPage(const HttpRequest& request, int total, int delivered) {
  const int offset = numberOf(request.url, "offset");
  const int end = std::min(offset + numberOf(request.url, "limit"), delivered);
  std::string list;
  for (int i = offset; i < end; ++i)
    list += (i == offset ? "" : ",") + vehicleJSON(i + 1);
  return jsonReply(envelope(total, R"("vehicles":[)" + list + "]"));
}

inline void serveFleet(ScriptedTransport& transport, int total, int delivered) {
  transport.answer("/vehicles", [=](const HttpRequest& request) {
    return std::optional(vehiclesPage(request, total, delivered));
  });
}

inline HttpReply liveReply(int vehicleId, int speed, const std::string& lat = "50.06") {
  return jsonReply(envelope(
      1,
      R"("live":{"datetime":"2026-03-10 08:00:15","vehicles":)" + vehicleJSON(vehicleId) +
          R"(,"active":"1","speed":")" + std::to_string(speed) +
          R"(","powerSupply":"13.8","powerSupplyType":"V","sig":"4","direction":"270","fuel":"40",)"
          R"("fuelType":"l","rpm":"2100","odometer":"120345 km","led":{"z1":"0","z3":"0","z4":"0","z6":"0",)"
          R"("z8":"0","z14":"0","z23":"0","z28":"0","z33":"0"},"street":"Long Street 5","temp":"21",)"
          R"("location":{"lat":")" +
          lat + R"(","lon":"19.94"}})"));
}

/// A day of points one after the other towards the north, one for each label. The first has the given number
/// and each further one the next. `total` is what the service claims; below 0, the truth.
inline HttpReply mapReply(const std::vector<std::string>& labels, int firstLp = 0, int total = -1) {
  std::string list;
  for (std::size_t i = 0; i < labels.size(); ++i) {
    const std::string number = std::to_string(i);
    list.append(i ? "," : "").append(R"({"lp":)").append(std::to_string(firstLp + static_cast<int>(i)));
    list.append(R"(,"location":{"lat":"50.0)").append(number).append(R"(","lon":"19.94"},"dateTime":"08:0)");
    list.append(number).append(R"(","duration":"","totdist":"1","label":")").append(labels[i]);
    list.append(R"(","street":"Street )").append(number).append(R"("})");
  }
  return jsonReply(envelope(total < 0 ? static_cast<int>(labels.size()) : total, R"("map":[)" + list + "]"));
}

/// A drive and the stop after it, and again, as many as asked for. `total` is what the service claims; below
/// 0, the truth.
inline HttpReply routeReply(int count, int total = -1) {
  std::string list;
  for (int i = 0; i < count; ++i)
    list +=
        (i ? "," : "") + std::string(R"({"lp":)") + std::to_string(i + 1) +
        (i % 2 == 0
             ? R"(,"status":"Driving","timeFrom":"08:00","timeTo":"08:12","duration":"12 min","distance":12.5,)"
               R"("from":"Mill Lane","to":"Harbour"})"
             : R"(,"status":"Parking","timeFrom":"08:12","timeTo":"09:12","duration":"1 h","distance":"0",)"
               R"("from":"Harbour","to":"Harbour"})");
  return jsonReply(envelope(total < 0 ? count : total, R"("route":[)" + list + "]"));
}

inline HttpReply infoReply() {
  return jsonReply(envelope(
      1,
      R"("info":{"auto":{"name":"Van","registration":"KR 1","mapLineColor":"0f0","icon":"van",)"
      R"("driver":"Jan Kowal","driverGsm":"+48 600 100 200","engine":"2.0","tank":"60","active":"2027-01-31"},)"
      R"("service":{"oil":"2026-09-15","tech":"2026-11-01","odo":"150000 km"},)"
      R"("live":{"odo":"120345","fuel":"40"}})"));
}

inline HttpReply userReply() {
  return jsonReply(envelope(
      1,
      R"("user":{"name":"Anna Nowak","statusDescription":"Active","sms":"+48 1","companyName":"Nowak Transport",)"
      R"("address1":"Long Street 5","address2":"","vat":"PL123","gsm":"+48 2","mail":"anna@nowak.test",)"
      R"("expirationDate":"2027-01-31"})"));
}

inline HttpReply tokenReply(const std::string& token) {
  return jsonReply(envelope(1, R"("token":{"access_token":")" + token + R"(","token_type":"bearer"})"));
}

}  // namespace fleetor::test
