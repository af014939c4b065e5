#include "demo/service/faults.h"

#include <iconv.h>

#include <algorithm>
#include <cstdint>

#include "demo/service/answers.h"

namespace fleetor::demo {
namespace {

constexpr std::string_view endpoints[] = {"token", "logout", "vehicles", "live", "map",
                                          "route", "info",   "user",     "tiles"};

// Nothing when there is no such character set. What it lacks becomes a similar character or a question mark.
std::optional<std::string> encoded(std::string utf8, const std::string& charset) {
  const iconv_t converter = iconv_open((charset + "//TRANSLIT").c_str(), "UTF-8");
  if (reinterpret_cast<std::intptr_t>(converter) == -1) return std::nullopt;
  std::string result(4 * utf8.size() + 16, '\0');
  char* from = utf8.data();
  char* to = result.data();
  std::size_t fromLeft = utf8.size();
  std::size_t toLeft = result.size();
  iconv(converter, &from, &fromLeft, &to, &toLeft);
  iconv_close(converter);
  result.resize(result.size() - toLeft);
  return result;
}

// Calls `edit` with an answer's payload and its record, the first where the payload is a list.
template <class Edit>
void editRecord(ServiceReply& reply, Edit edit) {
  Json document = Json::parse(reply.body, nullptr, false);
  if (!document.is_object()) return;
  for (auto& [key, value] : document.items()) {
    if (key == "total" || key == "error") continue;
    Json& record = value.is_array() && !value.empty() ? value.front() : value;
    if (record.is_object() && !record.empty()) edit(value, record);
  }
  reply.body = textOf(document);
}

enum class Argument { none, number, charset, text };

struct FaultKind {
  std::string_view name;
  Argument argument;
  std::string_view help;
  void (*apply)(ServiceReply& reply, const std::string& argument);
};

constexpr FaultKind kinds[] = {
    {"delay", Argument::number, "answers so many milliseconds later",
     [](ServiceReply& r, const std::string& a) { r.delay += std::chrono::milliseconds(std::stoi(a)); }},
    {"hang", Argument::none, "never answers", [](ServiceReply& r, const std::string&) { r.hangs = true; }},
    {"cut", Argument::none, "closes the connection in mid-body",
     [](ServiceReply& r, const std::string&) { r.cutShort = true; }},
    {"truncated", Argument::none, "half of the body, with a matching length",
     [](ServiceReply& r, const std::string&) { r.body.resize(r.body.size() / 2); }},
    {"content-type", Argument::none, "text/plain as the content type",
     [](ServiceReply& r, const std::string&) { r.contentType = "text/plain; charset=utf-8"; }},
    {"charset", Argument::charset, "the body in another character set, and named so",
     [](ServiceReply& r, const std::string& a) {
       r.body = encoded(r.body, a).value_or("");
       r.contentType = "application/json; charset=" + a;
     }},
    {"charset-lie", Argument::charset, "the same, but named utf-8",
     [](ServiceReply& r, const std::string& a) { r.body = encoded(r.body, a).value_or(""); }},
    {"charset-name", Argument::text, "the body in utf-8, but named otherwise",
     [](ServiceReply& r, const std::string& a) { r.contentType = "application/json; charset=" + a; }},
    {"error-code", Argument::none, "HTTP 200 with an error code in the envelope",
     [](ServiceReply& r, const std::string&) { r.body = errorAnswer(500, "Injected fault"); }},
    {"status", Argument::number, "an HTTP status with an error envelope; status:500 is also written 500",
     [](ServiceReply& r, const std::string& a) {
       r = {std::stoi(a), errorAnswer(std::stoi(a), "Injected fault")};
     }},
    {"empty", Argument::none, "an empty body", [](ServiceReply& r, const std::string&) { r.body.clear(); }},
    {"space", Argument::none, "a single space", [](ServiceReply& r, const std::string&) { r.body = " "; }},
    {"html", Argument::none, "an HTML page",
     [](ServiceReply& r, const std::string&) {
       r = {200, "<!DOCTYPE html><html><head><title>Maintenance</title></head></html>",
            "text/html; charset=utf-8"};
     }},
    {"total", Argument::number, "\"total\" larger than it should be, by so much",
     [](ServiceReply& r, const std::string& a) {
       Json document = Json::parse(r.body, nullptr, false);
       if (!document.is_object()) return;
       document["total"] = document.value("total", 0) + std::stoi(a);
       r.body = textOf(document);
     }},
    {"null", Argument::none, "null in place of the record's first value",
     [](ServiceReply& r, const std::string&) {
       editRecord(r, [](Json&, Json& record) { record.front() = nullptr; });
     }},
    {"missing", Argument::none, "the record without its first key",
     [](ServiceReply& r, const std::string&) {
       editRecord(r, [](Json&, Json& record) { record.erase(record.begin()); });
     }},
    {"broken-element", Argument::none, "a text in place of the list's first record",
     [](ServiceReply& r, const std::string&) {
       editRecord(r, [](Json& payload, Json& record) {
         if (payload.is_array()) record = "broken";
       });
     }},
};

const FaultKind* kindNamed(std::string_view name) {
  const auto found = std::ranges::find(kinds, name, &FaultKind::name);
  return found == std::end(kinds) ? nullptr : found;
}

// Empty when the argument is valid.
std::string problemOf(const FaultKind& kind, const std::string& argument) {
  const std::string name = "\"" + std::string(kind.name) + "\" ";
  switch (kind.argument) {
    case Argument::none:
      return argument.empty() ? "" : name + "takes no argument";
    case Argument::number: {
      const bool status = kind.name == "status";
      const long long low = status ? 200 : 0;
      const long long high = status ? 599 : 86400000;
      const auto number = parseNumber(argument);
      return number && *number >= low && *number <= high
                 ? ""
                 : name + "takes a number from " + std::to_string(low) + " to " + std::to_string(high);
    }
    case Argument::charset:
      return encoded("", argument) ? "" : name + "takes a character set, for instance iso-8859-1";
    case Argument::text:
      break;
  }
  return argument.empty() ? name + "takes a text" : "";
}

}  // namespace

std::string endpointNames() {
  std::string names;
  for (const std::string_view name : endpoints)
    names.append(names.empty() ? "" : ", ").append(name);
  return names;
}

bool isEndpoint(std::string_view name) {
  return std::ranges::find(endpoints, name) != std::end(endpoints);
}

std::string faultKindsHelp() {
  constexpr std::string_view arguments[] = {"", ":N", ":CHARSET", ":TEXT"};
  std::string help;
  for (const FaultKind& kind : kinds) {
    std::string line = "  " + std::string(kind.name);
    line += arguments[static_cast<int>(kind.argument)];
    line.resize(23, ' ');
    help.append(line).append(kind.help).append("\n");
  }
  return help;
}

std::optional<Fault> parseFault(std::string_view text, std::string& problem) {
  Fault fault;
  const std::size_t equals = text.find('=');
  fault.endpoint = text.substr(0, equals);
  if (equals == std::string_view::npos || (fault.endpoint != "all" && !isEndpoint(fault.endpoint))) {
    problem = "expected ENDPOINT=KIND[:ARG][*COUNT], with ENDPOINT one of " + endpointNames() + " and all";
    return std::nullopt;
  }
  std::string_view rest = text.substr(equals + 1);
  if (const std::size_t star = rest.rfind('*'); star != std::string_view::npos) {
    fault.remaining = parseNumber(rest.substr(star + 1)).value_or(0);
    rest = rest.substr(0, star);
    if (fault.remaining < 1) {
      problem = "the count after * must be a number from 1";
      return std::nullopt;
    }
  }
  fault.kind = rest.substr(0, rest.find(':'));
  if (fault.kind.size() < rest.size()) fault.argument = rest.substr(fault.kind.size() + 1);
  if (parseNumber(fault.kind)) fault.argument = std::exchange(fault.kind, "status");
  const FaultKind* kind = kindNamed(fault.kind);
  problem = kind ? problemOf(*kind, fault.argument) : "unknown fault \"" + fault.kind + "\"";
  if (!problem.empty()) return std::nullopt;
  return fault;
}

void applyFault(const Fault& fault, ServiceReply& reply) {
  if (const FaultKind* kind = kindNamed(fault.kind)) kind->apply(reply, fault.argument);
}

void FaultList::add(Fault fault) {
  const std::lock_guard lock(mutex_);
  faults_.push_back(std::move(fault));
}

void FaultList::clear() {
  const std::lock_guard lock(mutex_);
  faults_.clear();
}

std::vector<Fault> FaultList::take(std::string_view endpoint) {
  std::vector<Fault> taken;
  const std::lock_guard lock(mutex_);
  for (Fault& fault : faults_) {
    if (fault.endpoint != "all" && fault.endpoint != endpoint) continue;
    taken.push_back(fault);
    if (fault.remaining > 0) --fault.remaining;
  }
  std::erase_if(faults_, [](const Fault& fault) { return fault.remaining == 0; });
  return taken;
}

Json FaultList::list() const {
  Json list = Json::array();
  const std::lock_guard lock(mutex_);
  for (const Fault& fault : faults_)
    list.push_back(Json{{"endpoint", fault.endpoint},
                        {"kind", fault.kind},
                        {"argument", fault.argument},
                        {"remaining", fault.remaining}});
  return list;
}

}  // namespace fleetor::demo
