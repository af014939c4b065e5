#pragma once

#include "model/json_model.h"

namespace fleetor {

// The account, its credential, and what is fixed about one vehicle. Every value is text and shown as it
// comes.

/// The signed-in account.
struct User : APIModel {
  Text name;
  Text statusDescription;
  Text sms;
  Text companyName;
  Text address1;
  Text address2;
  Text vat;
  Text gsm;
  Text mail;
  Text expirationDate;
};

template <>
inline constexpr auto propertiesOf<User> = properties(required<&User::name>,
                                                      required<&User::statusDescription>,
                                                      required<&User::sms>, required<&User::companyName>,
                                                      required<&User::address1>, required<&User::address2>,
                                                      required<&User::vat>, required<&User::gsm>,
                                                      required<&User::mail>, required<&User::expirationDate>);

/// The credential that signing in returns. The members keep the service's spelling; the getters are in camel
/// case.
struct Token : APIModel {
  Text access_token;  ///< bearer token, sent with every later request; secret
  Text token_type;

  const Text& accessToken() const { return access_token; }
  void setAccess_token(Text value) { access_token = std::move(value); }
  const Text& tokenType() const { return token_type; }
  void setToken_type(Text value) { token_type = std::move(value); }
};

template <>
inline constexpr auto propertiesOf<Token> = properties(required<&Token::access_token>,
                                                       required<&Token::token_type>);

/// A vehicle's fixed data.
struct InfoAuto : APIModel {
  Text name;
  Text registration;
  Text mapLineColor;
  Text icon;
  Text driver;
  Text driverGsm;
  Text engine;
  Text tank;
  Text active;  ///< despite its name, when the vehicle's tracking unit expires
};

template <>
inline constexpr auto propertiesOf<InfoAuto> = properties(
    required<&InfoAuto::name>, required<&InfoAuto::registration>, required<&InfoAuto::mapLineColor>,
    required<&InfoAuto::icon>, required<&InfoAuto::driver>, required<&InfoAuto::driverGsm>,
    required<&InfoAuto::engine>, required<&InfoAuto::tank>, required<&InfoAuto::active>);

/// The maintenance schedule.
struct InfoService : APIModel {
  Text oil;
  Text tech;
  Text odo;
};

template <>
inline constexpr auto propertiesOf<InfoService> = properties(required<&InfoService::oil>,
                                                             required<&InfoService::tech>,
                                                             required<&InfoService::odo>);

/// Two counters that are reported with the information and not shown.
struct InfoLive : APIModel {
  Text odo;
  Text fuel;
};

template <>
inline constexpr auto propertiesOf<InfoLive> = properties(required<&InfoLive::odo>,
                                                          required<&InfoLive::fuel>);

/// What is known about one vehicle. The service calls its first part "auto".
struct Info : APIModel {
  InfoAuto vehicle;
  InfoService service;
  InfoLive live;

  static constexpr std::optional<JSONKeyMapper> keyMapper() {
    return JSONKeyMapper{
        [](std::string_view key) { return key == "auto" ? std::string_view("vehicle") : key; },
        [](std::string_view name) { return name == "vehicle" ? std::string_view("auto") : name; }};
  }
};

template <>
inline constexpr auto propertiesOf<Info> = properties(required<&Info::vehicle>, required<&Info::service>,
                                                      required<&Info::live>);

}  // namespace fleetor
