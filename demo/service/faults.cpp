#include "demo/service/faults.h"

#include <algorithm>
#include <array>
#include <functional>
#include <nlohmann/json.hpp>

#include "demo/service/answers.h"
#include "demo/service/charsets.h"
#include "demo/service/json_writer.h"

namespace fleetor::demo {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::array<std::string_view, 9> kEndpoints{"token", "logout", "vehicles", "live", "map",
                                                     "route", "info",   "user",     "tiles"};

enum class Argument { none, optionalNumber, number, optionalText, text, charset };

struct FaultKind {
  std::string_view name;
  Argument argument;
  void (*apply)(const std::string& argument, ServiceReply& reply);
};

int numberOr(const std::string& argument, int fallback) {
  const auto number = parseNumber(argument);
  return number ? static_cast<int>(*number) : fallback;
}

// Changes the reply's JSON; a reply without JSON stays as it is.
void editJson(ServiceReply& reply, const std::function<void(Json&)>& edit) {
  Json document = Json::parse(reply.body, nullptr, false);
  if (!document.is_object()) return;
  edit(document);
  reply.body = document.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Json* payloadOf(Json& document) {
  for (auto& [key, value] : document.items())
    if (key != "total" && key != "error") return &value;
  return nullptr;
}

// The first place that holds the key, payload before envelope.
Json* holderOf(Json& node, const std::string& key) {
  if (node.is_object() && node.contains(key)) return &node;
  if (node.is_structured())
    for (Json& child : node)
      if (Json* found = holderOf(child, key)) return found;
  return nullptr;
}

struct Target {
  Json* holder = nullptr;
  std::string key;
};

// A dotted path from the envelope ("live.led.z8", "vehicles.0.name"), a key wherever it is, or the payload's
// first key.
Target findTarget(Json& document, const std::string& argument) {
  Json* payload = payloadOf(document);
  if (argument.empty()) {
    Json* record = payload && payload->is_array() && !payload->empty() ? &payload->front() : payload;
    if (record && record->is_object() && !record->empty()) return {record, record->begin().key()};
    return {&document, "total"};
  }
  if (argument.find('.') == std::string::npos) {
    Json* holder = payload ? holderOf(*payload, argument) : nullptr;
    return {holder ? holder : holderOf(document, argument), argument};
  }
  Json* node = &document;
  std::string_view rest = argument;
  for (auto dot = rest.find('.'); dot != std::string_view::npos; dot = rest.find('.')) {
    const std::string step(rest.substr(0, dot));
    rest.remove_prefix(dot + 1);
    const auto index = parseNumber(step);
    if (node->is_object() && node->contains(step))
      node = &(*node)[step];
    else if (node->is_array() && index && *index >= 0 && static_cast<std::size_t>(*index) < node->size())
      node = &(*node)[static_cast<std::size_t>(*index)];
    else
      return {};
  }
  return {node->is_object() && node->contains(std::string(rest)) ? node : nullptr, std::string(rest)};
}

void breakElement(const std::string& argument, ServiceReply& reply) {
  editJson(reply, [&](Json& document) {
    Json* list = payloadOf(document);
    if (!list || !list->is_array() || list->empty()) return;
    const auto middle = static_cast<int>(list->size() / 2);
    const auto index = static_cast<std::size_t>(std::max(0, numberOr(argument, middle)));
    if (index < list->size()) (*list)[index] = "broken";
  });
}

void setStatus(ServiceReply& reply, int status) {
  reply.status = status;
  reply.contentType = ServiceReply().contentType;
  reply.headers.clear();
  reply.body = errorAnswer(status, "A fault was asked for");
}

constexpr FaultKind kKinds[] = {
    {"delay", Argument::number,
     [](const std::string& a, ServiceReply& r) { r.delayMilliseconds += numberOr(a, 0); }},
    {"hang", Argument::none, [](const std::string&, ServiceReply& r) { r.delivery = Delivery::never; }},
    {"cut", Argument::optionalNumber,
     [](const std::string& a, ServiceReply& r) {
       r.delivery = Delivery::cutShort;
       const std::size_t most = r.body.empty() ? 0 : r.body.size() - 1;
       r.deliverBytes =
           std::min(most, static_cast<std::size_t>(numberOr(a, static_cast<int>(r.body.size() / 2))));
     }},
    {"truncated", Argument::none,
     [](const std::string&, ServiceReply& r) { r.body.resize(r.body.size() / 2); }},
    {"content-type", Argument::optionalText,
     [](const std::string& a, ServiceReply& r) {
       r.contentType = a.empty() ? "text/plain; charset=utf-8" : a;
     }},
    {"charset", Argument::charset,
     [](const std::string& a, ServiceReply& r) {
       r.body = encodeText(r.body, a);
       r.contentType = "application/json; charset=" + a;
     }},
    {"charset-lie", Argument::charset,
     [](const std::string& a, ServiceReply& r) { r.body = encodeText(r.body, a); }},
    {"charset-name", Argument::text,
     [](const std::string& a, ServiceReply& r) { r.contentType = "application/json; charset=" + a; }},
    {"error-code", Argument::optionalNumber,
     [](const std::string& a, ServiceReply& r) {
       r.body = errorAnswer(numberOr(a, 500), "A fault was asked for");
     }},
    {"status", Argument::number,
     [](const std::string& a, ServiceReply& r) { setStatus(r, numberOr(a, 500)); }},
    {"empty", Argument::none, [](const std::string&, ServiceReply& r) { r.body.clear(); }},
    {"space", Argument::none, [](const std::string&, ServiceReply& r) { r.body = " "; }},
    {"html", Argument::none,
     [](const std::string&, ServiceReply& r) {
       r.contentType = "text/html; charset=utf-8";
       r.headers.clear();
       r.body = "<!DOCTYPE html><html><head><title>Maintenance</title></head><body>Back soon.</body></html>";
     }},
    {"total", Argument::optionalNumber,
     [](const std::string& a, ServiceReply& r) {
       editJson(r, [&](Json& d) { d["total"] = d.value("total", 0) + numberOr(a, 1); });
     }},
    {"null", Argument::optionalText,
     [](const std::string& a, ServiceReply& r) {
       editJson(r, [&](Json& d) {
         if (const Target target = findTarget(d, a); target.holder) (*target.holder)[target.key] = nullptr;
       });
     }},
    {"missing", Argument::optionalText,
     [](const std::string& a, ServiceReply& r) {
       editJson(r, [&](Json& d) {
         if (const Target target = findTarget(d, a); target.holder) target.holder->erase(target.key);
       });
     }},
    {"broken-element", Argument::optionalNumber, breakElement},
};

const FaultKind* kindNamed(std::string_view name) {
  const auto found = std::ranges::find(kKinds, name, &FaultKind::name);
  return found == std::end(kKinds) ? nullptr : found;
}

// What is wrong with the argument; empty when nothing is.
std::string argumentProblem(const FaultKind& kind, const std::string& argument) {
  const std::string name(kind.name);
  const auto number = parseNumber(argument);
  const bool isStatus = name == "status";
  switch (kind.argument) {
    case Argument::none:
      return argument.empty() ? "" : "\"" + name + "\" takes no argument";
    case Argument::optionalNumber:
    case Argument::number:
      if (argument.empty() && kind.argument == Argument::optionalNumber) return "";
      if (!number || *number < 0 || *number > 86400000)
        return "\"" + name + "\" takes a number, for instance 500";
      return isStatus && (*number < 200 || *number > 599) ? "an HTTP status lies between 200 and 599" : "";
    case Argument::charset:
      return canEncode(argument) ? "" : "\"" + name + "\" takes iso-8859-1, utf-16, utf-16le or utf-16be";
    case Argument::text:
      return argument.empty() ? "\"" + name + "\" takes a text" : "";
    case Argument::optionalText:
      break;
  }
  return "";
}

}  // namespace

bool isEndpoint(std::string_view name) {
  return std::ranges::find(kEndpoints, name) != kEndpoints.end();
}

std::string_view faultKindsHelp() {
  return R"(  delay:MS           answers MS milliseconds later
  hang               never answers
  cut[:BYTES]        closes the connection in mid-body
  truncated          half of the JSON, with a matching length
  content-type[:T]   another content type, "text/plain" by default
  charset:NAME       body in iso-8859-1, utf-16, utf-16le or utf-16be, and named so
  charset-lie:NAME   the same, but named utf-8
  charset-name:NAME  body in utf-8, named otherwise
  error-code[:CODE]  HTTP 200 with an error code in the envelope
  status:CODE        an HTTP status with an error envelope; 401, 403, 404 and 500 are short for it
  empty, space       an empty body, a single space
  html               an HTML page
  total[:N]          "total" N larger than it should be
  null[:KEY]         null in place of a value: a key, a dotted path, or the payload's first
  missing[:KEY]      the same without the key
  broken-element[:I] a text in place of element I of the list, the middle one by default
)";
}

std::optional<Fault> parseFault(std::string_view text, std::string& problem) {
  Fault fault;
  const std::size_t equals = text.find('=');
  fault.endpoint = text.substr(0, equals);
  if (fault.endpoint.starts_with('/')) fault.endpoint.erase(0, 1);
  if (equals == std::string_view::npos || (fault.endpoint != "all" && !isEndpoint(fault.endpoint))) {
    problem =
        "a fault is ENDPOINT=KIND[:ARG][*COUNT], with ENDPOINT one of token, logout, vehicles, live, map, "
        "route, "
        "info, user, tiles, all";
    return std::nullopt;
  }
  std::string_view rest = text.substr(equals + 1);
  if (const std::size_t star = rest.rfind('*'); star != std::string_view::npos) {
    const auto count = parseNumber(rest.substr(star + 1));
    if (!count || *count < 1) {
      problem = "the count after * must be a number from 1";
      return std::nullopt;
    }
    fault.remaining = *count;
    rest = rest.substr(0, star);
  }
  fault.kind = rest.substr(0, rest.find(':'));
  if (fault.kind.size() < rest.size()) fault.argument = rest.substr(fault.kind.size() + 1);
  if (fault.kind == "401" || fault.kind == "403" || fault.kind == "404" || fault.kind == "500")
    fault.argument = std::exchange(fault.kind, "status");
  const FaultKind* kind = kindNamed(fault.kind);
  problem = kind ? argumentProblem(*kind, fault.argument) : "there is no fault \"" + fault.kind + "\"";
  if (!problem.empty()) return std::nullopt;
  return fault;
}

void applyFault(const Fault& fault, ServiceReply& reply) {
  if (const FaultKind* kind = kindNamed(fault.kind)) kind->apply(fault.argument, reply);
}

std::int64_t FaultBox::add(Fault fault) {
  const std::lock_guard lock(mutex_);
  fault.id = ++lastId_;
  faults_.push_back(std::move(fault));
  return lastId_;
}

bool FaultBox::remove(std::int64_t id) {
  const std::lock_guard lock(mutex_);
  return std::erase_if(faults_, [id](const Fault& fault) { return fault.id == id; }) > 0;
}

void FaultBox::clear() {
  const std::lock_guard lock(mutex_);
  faults_.clear();
}

std::vector<Fault> FaultBox::strike(std::string_view endpoint) {
  std::vector<Fault> struck;
  const std::lock_guard lock(mutex_);
  for (Fault& fault : faults_) {
    if (fault.endpoint != "all" && fault.endpoint != endpoint) continue;
    struck.push_back(fault);
    if (fault.remaining > 0) --fault.remaining;
  }
  std::erase_if(faults_, [](const Fault& fault) { return fault.remaining == 0; });
  return struck;
}

std::string FaultBox::text() const {
  JsonWriter json;
  const std::lock_guard lock(mutex_);
  json.beginObject().key("faults").beginArray();
  for (const Fault& fault : faults_) {
    json.beginObject().number("id", fault.id).member("endpoint", fault.endpoint).member("kind", fault.kind);
    json.member("argument", fault.argument).number("remaining", fault.remaining).endObject();
  }
  return json.endArray().endObject().take();
}

}  // namespace fleetor::demo
