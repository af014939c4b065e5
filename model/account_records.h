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

  friend bool operator==(const User&, const User&) = default;
};

template <>
inline constexpr auto propertiesOf<User> =
    properties(required<&User::name>("name"), required<&User::statusDescription>("statusDescription"),
               required<&User::sms>("sms"), required<&User::companyName>("companyName"),
               required<&User::address1>("address1"), required<&User::address2>("address2"),
               required<&User::vat>("vat"), required<&User::gsm>("gsm"), required<&User::mail>("mail"),
               required<&User::expirationDate>("expirationDate"));

/// The credential that signing in returns. The members keep the service's spelling, the getters ours.
struct Token : APIModel {
  Text access_token;  ///< bearer token, sent with every later request; secret
  Text token_type;

  const Text& accessToken() const { return access_token; }
  void setAccess_token(Text value) { access_token = std::move(value); }
  const Text& tokenType() const { return token_type; }
  void setToken_type(Text value) { token_type = std::move(value); }

  friend bool operator==(const Token&, const Token&) = default;
};

template <>
inline constexpr auto propertiesOf<Token> = properties(required<&Token::access_token>("access_token"),
                                                       required<&Token::token_type>("token_type"));

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

  friend bool operator==(const InfoAuto&, const InfoAuto&) = default;
};

template <>
inline constexpr auto propertiesOf<InfoAuto> =
    properties(required<&InfoAuto::name>("name"), required<&InfoAuto::registration>("registration"),
               required<&InfoAuto::mapLineColor>("mapLineColor"), required<&InfoAuto::icon>("icon"),
               required<&InfoAuto::driver>("driver"), required<&InfoAuto::driverGsm>("driverGsm"),
               required<&InfoAuto::engine>("engine"), required<&InfoAuto::tank>("tank"),
               required<&InfoAuto::active>("active"));

/// The maintenance schedule.
struct InfoService : APIModel {
  Text oil;
  Text tech;
  Text odo;

  friend bool operator==(const InfoService&, const InfoService&) = default;
};

template <>
inline constexpr auto propertiesOf<InfoService> = properties(required<&InfoService::oil>("oil"),
                                                             required<&InfoService::tech>("tech"),
                                                             required<&InfoService::odo>("odo"));

/// Two counters that are reported with the information and not shown.
struct InfoLive : APIModel {
  Text odo;
  Text fuel;

  friend bool operator==(const InfoLive&, const InfoLive&) = default;
};

template <>
inline constexpr auto propertiesOf<InfoLive> = properties(required<&InfoLive::odo>("odo"),
                                                          required<&InfoLive::fuel>("fuel"));

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

  friend bool operator==(const Info&, const Info&) = default;
};

template <>
inline constexpr auto propertiesOf<Info> = properties(required<&Info::vehicle>("vehicle"),
                                                      required<&Info::service>("service"),
                                                      required<&Info::live>("live"));

}  // namespace fleetor
