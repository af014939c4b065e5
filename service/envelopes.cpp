#include "service/envelopes.h"

#include <utility>

namespace fleetor {

namespace {

template <class Item>
void appendPage(std::optional<std::vector<Item>>& list, const std::optional<std::vector<Item>>& page) {
  if (!list) list.emplace();
  if (page) list->insert(list->end(), page->begin(), page->end());
}

template <class Item>
std::int64_t itemCount(const std::optional<std::vector<Item>>& list) {
  return list ? static_cast<std::int64_t>(list->size()) : 0;
}

}  // namespace

APIError APIError::initWithCode(std::int64_t code, Text message) {
  APIError error;
  error.code = code;
  error.message = std::move(message);
  return error;
}

UserResponse UserResponse::initForLoading() {
  UserResponse loading;
  loading.total = 1;
  return loading;
}

void UserResponse::nextResult(const UserResponse& answer) {
  total = rows;
  user = answer.user;
}

void UserResponse::onError() {
  total = 0;
}

InfoResponse InfoResponse::initForLoading() {
  InfoResponse loading;
  loading.total = 1;
  return loading;
}

void InfoResponse::nextResult(const InfoResponse& answer) {
  total = rows;
  info = answer.info;
}

void InfoResponse::onError() {
  total = 0;
}

VehiclesResponse VehiclesResponse::initForLoading() {
  VehiclesResponse loading;
  loading.total = 1;
  loading.vehicles.emplace();
  return loading;
}

void VehiclesResponse::nextResult(const VehiclesResponse& page) {
  total = page.total;
  appendPage(vehicles, page.vehicles);
}

void VehiclesResponse::onError() {
  total = itemCount(vehicles);
}

RouteResponse RouteResponse::initForLoading() {
  RouteResponse loading;
  loading.total = 1;
  loading.route.emplace();
  return loading;
}

void RouteResponse::nextResult(const RouteResponse& page) {
  total = page.total;
  appendPage(route, page.route);
}

void RouteResponse::onError() {
  total = itemCount(route);
}

template <class R>
MappedEnvelope mapEnvelope(JSONValue json) {
  auto mapped = JSONModel::initWithDictionary<R>(std::move(json));
  if (!mapped) {
    const JSONModelError& mappingError = mapped.error();
    return {nullptr, APIFailure{failure_domain::model, static_cast<std::int64_t>(mappingError.code),
                                mappingError.description}};
  }
  if (!mapped->isValidResponse()) {
    const APIError& refused = mapped->error;
    return {nullptr, APIFailure{failure_domain::service, refused.code, refused.message.str()}};
  }
  return {std::make_shared<R>(std::move(mapped).value()), std::nullopt};
}

template MappedEnvelope mapEnvelope<APIResponse>(JSONValue);
template MappedEnvelope mapEnvelope<TokenResponse>(JSONValue);
template MappedEnvelope mapEnvelope<UserResponse>(JSONValue);
template MappedEnvelope mapEnvelope<InfoResponse>(JSONValue);
template MappedEnvelope mapEnvelope<LiveResponse>(JSONValue);
template MappedEnvelope mapEnvelope<VehiclesResponse>(JSONValue);
template MappedEnvelope mapEnvelope<MapResponse>(JSONValue);
template MappedEnvelope mapEnvelope<RouteResponse>(JSONValue);

}  // namespace fleetor
