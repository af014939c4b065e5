#include "demo/service/service.h"

#include <algorithm>
#include <exception>
#include <nlohmann/json.hpp>

#include "demo/service/answers.h"

namespace fleetor::demo {
namespace {

ServiceReply failed(int status, std::string_view description) {
  ServiceReply reply;
  reply.status = status;
  reply.body = errorAnswer(status, description);
  return reply;
}

ServiceReply succeeded(std::string body) {
  ServiceReply reply;
  reply.body = std::move(body);
  return reply;
}

// A number parameter; `problem` stays empty when it is there and within its limits, or missing with a
// default.
std::int64_t numberParameter(const Parameters& parameters, std::string_view name,
                             std::optional<std::int64_t> fallback, std::int64_t low, std::int64_t high,
                             std::string& problem) {
  const auto given = parameters.find(name);
  if (given == parameters.end()) {
    if (!fallback) problem = "Parameter \"" + std::string(name) + "\" is missing";
    return fallback.value_or(0);
  }
  const auto number = parseNumber(given->second);
  if (number && *number >= low && *number <= high) return *number;
  problem = "Parameter \"" + std::string(name) + "\" must be a whole number from " + std::to_string(low) +
            " to " + std::to_string(high);
  return low;
}

std::optional<Fault> faultFromJson(const nlohmann::json& json, std::string& problem) {
  problem =
      "a fault is a text or an object with \"endpoint\", \"kind\" and perhaps \"argument\" and \"count\"";
  if (json.is_string()) return parseFault(json.get<std::string>(), problem);
  if (!json.is_object()) return std::nullopt;
  const auto text = [&json](const char* key) {
    const auto found = json.find(key);
    if (found == json.end() || found->is_null()) return std::string();
    return found->is_string() ? found->get<std::string>() : found->dump();
  };
  std::string line = text("endpoint") + "=" + text("kind");
  if (const std::string argument = text("argument"); !argument.empty()) line += ":" + argument;
  if (const std::string count = text("count"); !count.empty()) line += "*" + count;
  return parseFault(line, problem);
}

}  // namespace

Service::Service(ServiceOptions options)
    : options_(std::move(options)),
      town_(options_.seed),
      accounts_(makeAccounts(options_.seed, options_.vehicles)),
      tokens_(options_.seed, options_.stateFile),
      dense_(options_.dense) {}

ServiceReply Service::answer(const ServiceRequest& request) {
  try {
    if (request.path.starts_with("/control/")) return answerControl(request);
    std::string_view endpoint = std::string_view(request.path).substr(request.path.empty() ? 0 : 1);
    const bool tile = endpoint.starts_with("tiles/");
    if (tile) endpoint = "tiles";
    ServiceReply reply;
    if (tile || (isEndpoint(endpoint) && endpoint != "tiles")) {
      const std::vector<Fault> faults = faults_.strike(endpoint);
      reply = answerEndpoint(endpoint, request);
      for (const Fault& fault : faults)
        applyFault(fault, reply);
    } else {
      reply = failed(404, "There is no such resource");
    }
    log_.add(request, reply.status);
    return reply;
  } catch (const std::exception& error) {
    return failed(500, error.what());
  }
}

ServiceReply Service::answerEndpoint(std::string_view endpoint, const ServiceRequest& request) {
  if (endpoint == "tiles") return tiles_.answer(request);
  const bool posted = endpoint == "token" || endpoint == "logout";
  if (request.verb != (posted ? "POST" : "GET"))
    return failed(405, "Use " + std::string(posted ? "POST" : "GET") + " here");
  if (endpoint == "token") return signIn(request);
  const auto caller = callerOf(request);
  if (!caller) return failed(401, "Sign in first: the bearer token is missing, unknown or revoked");
  if (endpoint == "logout") return signOut(request, *caller);
  if (endpoint == "vehicles") return listVehicles(request, *caller);
  if (endpoint == "user") return succeeded(userAnswer(*caller->account));
  return vehicleAnswer(endpoint, request, *caller);
}

std::optional<Service::Caller> Service::callerOf(const ServiceRequest& request) const {
  constexpr std::string_view kScheme = "Bearer ";
  const std::string_view header = request.header("Authorization");
  if (!header.starts_with(kScheme)) return std::nullopt;
  const std::string_view token = header.substr(kScheme.size());
  const auto user = tokens_.userOf(token);
  if (!user) return std::nullopt;
  const auto account = std::ranges::find(accounts_, *user, &Account::user);
  if (account == accounts_.end()) return std::nullopt;
  return Caller{&*account, token};
}

ServiceReply Service::signIn(const ServiceRequest& request) {
  const Parameters query = parseParameters(request.query);
  const auto grant = query.find("grant_type");
  if (grant == query.end() || grant->second != "password")
    return failed(400, "The query must say grant_type=password");
  if (!request.header("Content-Type").starts_with("application/x-www-form-urlencoded"))
    return failed(400, "Send a form (application/x-www-form-urlencoded)");
  const Parameters form = parseParameters(request.body);
  for (const std::string_view name : {"username", "password", "uid"})
    if (!form.contains(name)) return failed(400, "Parameter \"" + std::string(name) + "\" is missing");
  const auto& user = form.find("username")->second;
  const auto account = std::ranges::find(accounts_, user, &Account::user);
  if (account == accounts_.end() || account->password != form.find("password")->second)
    return failed(400, "The user name or the password is wrong");
  return succeeded(tokenAnswer(tokens_.issue(user)));
}

ServiceReply Service::signOut(const ServiceRequest& request, const Caller& caller) {
  if (!parseParameters(request.body).contains("uid")) return failed(400, "Parameter \"uid\" is missing");
  tokens_.revoke(caller.token);
  return succeeded(plainAnswer());
}

ServiceReply Service::listVehicles(const ServiceRequest& request, const Caller& caller) {
  const Parameters query = parseParameters(request.query);
  std::string problem;
  const std::int64_t offset = numberParameter(query, "offset", 0, 0, 1000000000, problem);
  const std::int64_t limit = numberParameter(query, "limit", 20, 1, 10000, problem);
  if (!problem.empty()) return failed(400, problem);
  return succeeded(
      vehiclesAnswer(*caller.account, static_cast<std::size_t>(offset), static_cast<std::size_t>(limit)));
}

ServiceReply Service::vehicleAnswer(std::string_view endpoint, const ServiceRequest& request,
                                    const Caller& caller) {
  const Parameters query = parseParameters(request.query);
  std::string problem;
  const std::int64_t id = numberParameter(query, "vehid", std::nullopt, 0, INT64_MAX, problem);
  std::optional<Day> day;
  if (problem.empty() && (endpoint == "map" || endpoint == "route")) {
    const auto date = query.find("date");
    if (date == query.end())
      problem = "Parameter \"date\" is missing";
    else if (!(day = parseDay(date->second)))
      problem = "Parameter \"date\" must be a day from 1970-01-01 on, written yyyy-MM-dd";
  }
  if (!problem.empty()) return failed(400, problem);
  const FleetVehicle* vehicle = caller.account->vehicle(id);
  if (!vehicle) return failed(404, "The account has no vehicle " + std::to_string(id));

  const Instant now = options_.now();
  if (endpoint == "live") return succeeded(liveAnswer(movements_, *vehicle, now));
  if (endpoint == "info") return succeeded(infoAnswer(movements_, *vehicle, now));
  if (endpoint == "route") return succeeded(routeAnswer(movements_, *vehicle, *day, now));
  return succeeded(mapAnswer(movements_, *vehicle, *day, now, dense_));
}

ServiceReply Service::answerControl(const ServiceRequest& request) {
  const Parameters query = parseParameters(request.query);
  if (request.path == "/control/service") {
    if (request.verb != "GET") return failed(405, "Use GET here");
    return succeeded(
        nlohmann::json{{"service", "fleetor-demo-service"}, {"version", options_.version}}.dump());
  }
  if (request.path == "/control/requests") {
    if (request.verb == "DELETE") log_.clear();
    if (request.verb == "DELETE" || request.verb == "GET") return succeeded(log_.text());
    return failed(405, "Use GET or DELETE here");
  }
  if (request.path == "/control/dense") {
    if (request.verb == "POST") dense_ = true;
    if (request.verb == "DELETE") dense_ = false;
    if (request.verb == "PUT" || request.verb == "PATCH") return failed(405, "Use GET, POST or DELETE here");
    return succeeded(dense_ ? R"({"dense":true})" : R"({"dense":false})");
  }
  if (request.path != "/control/faults") return failed(404, "There is no such resource");
  if (request.verb == "GET") return succeeded(faults_.text());
  if (request.verb == "DELETE") {
    const auto id = query.find("id");
    if (id == query.end())
      faults_.clear();
    else if (!faults_.remove(parseNumber(id->second).value_or(-1)))
      return failed(404, "There is no fault " + id->second);
    return succeeded(faults_.text());
  }
  if (request.verb != "POST") return failed(405, "Use GET, POST or DELETE here");

  const auto json = nlohmann::json::parse(request.body, nullptr, false);
  if (json.is_discarded()) return failed(400, "The body must be JSON");
  std::vector<Fault> added;
  for (const auto& item : json.is_array() ? json : nlohmann::json::array({json})) {
    std::string problem;
    auto fault = faultFromJson(item, problem);
    if (!fault) return failed(400, problem);
    added.push_back(std::move(*fault));
  }
  for (Fault& fault : added)
    faults_.add(std::move(fault));
  return succeeded(faults_.text());
}

}  // namespace fleetor::demo
