#include "demo/service/service.h"

#include <algorithm>
#include <exception>

#include "demo/service/answers.h"

namespace fleetor::demo {
namespace {

constexpr std::size_t keptRequests = 1000;

ServiceReply failed(int status, std::string_view description) {
  return {status, errorAnswer(status, description)};
}

ServiceReply succeeded(std::string body) {
  return {200, std::move(body)};
}

// A number parameter. `problem` is set when it is not within its limits, or missing and without a default.
std::int64_t numberParameter(const httplib::Request& request, const std::string& name,
                             std::optional<std::int64_t> fallback, std::int64_t low, std::int64_t high,
                             std::string& problem) {
  if (!request.has_param(name)) {
    if (!fallback) problem = "Parameter \"" + name + "\" is missing";
    return fallback.value_or(0);
  }
  const auto number = parseNumber(request.get_param_value(name));
  if (number && *number >= low && *number <= high) return *number;
  problem = "Parameter \"" + name + "\" must be a whole number from " + std::to_string(low) + " to " +
            std::to_string(high);
  return low;
}

}  // namespace

Service::Service(ServiceOptions options)
    : options_(std::move(options)),
      town_(options_.seed),
      accounts_(makeAccounts(options_.seed, options_.vehicles)),
      tokens_(options_.seed, options_.stateFile) {}

ServiceReply Service::answer(const httplib::Request& request) {
  try {
    if (request.path.starts_with("/control/")) return answerControl(request);
    const bool tile = request.path.starts_with("/tiles/");
    const std::string endpoint =
        tile ? "tiles" : request.path.substr(std::min<std::size_t>(1, request.path.size()));
    ServiceReply reply = failed(404, "There is no such resource");
    if (tile || (isEndpoint(endpoint) && endpoint != "tiles")) {
      const std::vector<Fault> faults = faults_.take(endpoint);
      reply = answerEndpoint(endpoint, request);
      for (const Fault& fault : faults)
        applyFault(fault, reply);
    }
    log(request, reply.status);
    return reply;
  } catch (const std::exception& error) {
    return failed(500, error.what());
  }
}

ServiceReply Service::answerEndpoint(const std::string& endpoint, const httplib::Request& request) {
  if (endpoint == "tiles") return tiles_.answer(request);
  const std::string method = endpoint == "token" || endpoint == "logout" ? "POST" : "GET";
  if (request.method != method) return failed(405, "Use " + method + " here");
  if (endpoint == "token") return signIn(request);
  const auto caller = callerOf(request);
  if (!caller) return failed(401, "Sign in first: the bearer token is missing, unknown or revoked");
  if (endpoint == "logout") {
    if (!request.has_param("uid")) return failed(400, "Parameter \"uid\" is missing");
    tokens_.revoke(caller->token);
    return succeeded(plainAnswer());
  }
  if (endpoint == "vehicles") return listVehicles(request, *caller);
  if (endpoint == "user") return succeeded(userAnswer(*caller->account));
  return vehicleAnswer(endpoint, request, *caller);
}

std::optional<Service::Caller> Service::callerOf(const httplib::Request& request) const {
  constexpr std::string_view scheme = "Bearer ";
  const std::string header = request.get_header_value("Authorization");
  if (!header.starts_with(scheme)) return std::nullopt;
  std::string token = header.substr(scheme.size());
  const auto user = tokens_.userOf(token);
  if (!user) return std::nullopt;
  const auto account = std::ranges::find(accounts_, *user, &Account::user);
  if (account == accounts_.end()) return std::nullopt;
  return Caller{&*account, std::move(token)};
}

ServiceReply Service::signIn(const httplib::Request& request) {
  // Nothing else in the query, so that the parameters below can only come from the form.
  if (request.target != "/token?grant_type=password")
    return failed(400, "The query must be grant_type=password");
  if (!request.get_header_value("Content-Type").starts_with("application/x-www-form-urlencoded"))
    return failed(400, "Send a form (application/x-www-form-urlencoded)");
  for (const std::string name : {"username", "password", "uid"})
    if (!request.has_param(name)) return failed(400, "Parameter \"" + name + "\" is missing");
  const std::string user = request.get_param_value("username");
  const auto account = std::ranges::find(accounts_, user, &Account::user);
  if (account == accounts_.end() || user != request.get_param_value("password"))
    return failed(400, "The user name or the password is wrong");
  return succeeded(tokenAnswer(tokens_.issue(user)));
}

ServiceReply Service::listVehicles(const httplib::Request& request, const Caller& caller) const {
  std::string problem;
  const std::int64_t offset = numberParameter(request, "offset", 0, 0, 1000000000, problem);
  const std::int64_t limit = numberParameter(request, "limit", 20, 1, 10000, problem);
  if (!problem.empty()) return failed(400, problem);
  return succeeded(
      vehiclesAnswer(*caller.account, static_cast<std::size_t>(offset), static_cast<std::size_t>(limit)));
}

ServiceReply Service::vehicleAnswer(const std::string& endpoint, const httplib::Request& request,
                                    const Caller& caller) const {
  std::string problem;
  const std::int64_t id = numberParameter(request, "vehid", std::nullopt, 0, INT64_MAX, problem);
  std::optional<Day> day;
  if (problem.empty() && (endpoint == "map" || endpoint == "route")) {
    day = parseDay(request.get_param_value("date"));
    if (!request.has_param("date"))
      problem = "Parameter \"date\" is missing";
    else if (!day)
      problem = "Parameter \"date\" must be a day from 1970-01-01 on, written yyyy-MM-dd";
  }
  if (!problem.empty()) return failed(400, problem);
  const FleetVehicle* vehicle = caller.account->vehicle(id);
  if (!vehicle) return failed(404, "The account has no vehicle " + std::to_string(id));

  const Instant now = options_.now();
  if (endpoint == "live") return succeeded(liveAnswer(movements_, *vehicle, now));
  if (endpoint == "info") return succeeded(infoAnswer(movements_, *vehicle, now));
  if (endpoint == "route") return succeeded(routeAnswer(movements_, *vehicle, *day, now));
  if (endpoint == "map") return succeeded(mapAnswer(movements_, *vehicle, *day, now));
  return failed(404, "There is no such resource");
}

ServiceReply Service::answerControl(const httplib::Request& request) {
  const bool clear = request.method == "DELETE";
  if (request.path == "/control/service" && request.method == "GET")
    return succeeded(textOf(Json{{"service", "fleetor-demo-service"}, {"version", options_.version}}));
  if (request.path == "/control/requests" && (clear || request.method == "GET")) {
    const std::lock_guard lock(logMutex_);
    if (clear) requests_.clear();
    if (clear) requestCount_ = 0;
    return succeeded(textOf(Json{{"count", requestCount_}, {"requests", requests_}}));
  }
  if (request.path != "/control/faults") return failed(404, "There is no such resource");
  if (clear) faults_.clear();
  if (request.method == "POST") {
    const Json body = Json::parse(request.body, nullptr, false);
    std::string problem = "The body must be a fault as JSON text, for instance \"live=delay:500*3\"";
    auto fault = body.is_string() ? parseFault(body.get<std::string>(), problem) : std::nullopt;
    if (!fault) return failed(400, problem);
    faults_.add(std::move(*fault));
  }
  return succeeded(textOf(Json{{"faults", faults_.list()}}));
}

void Service::log(const httplib::Request& request, int status) {
  const std::string query = request.target.substr(std::min(request.target.size(), request.target.find('?')));
  Json entry{{"verb", request.method}, {"path", request.path}, {"query", query}, {"status", status}};
  const std::lock_guard lock(logMutex_);
  ++requestCount_;
  requests_.push_back(std::move(entry));
  if (requests_.size() > keptRequests) requests_.pop_front();
}

}  // namespace fleetor::demo
