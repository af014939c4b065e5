#include "demo/service/request_log.h"

#include "demo/service/json_writer.h"

namespace fleetor::demo {
namespace {

constexpr std::size_t kKeptRequests = 1000;
constexpr std::size_t kKeptLength = 2000;

// Only plain characters, so that whatever was sent makes a valid JSON text.
std::string printable(std::string_view text) {
  std::string result(text.substr(0, kKeptLength));
  for (char& c : result)
    if (static_cast<unsigned char>(c) < 0x20 || static_cast<unsigned char>(c) > 0x7e) c = '?';
  return result;
}

std::string masked(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const std::string_view pair = text.substr(0, text.find('&'));
    text.remove_prefix(std::min(text.size(), pair.size() + 1));
    const std::string_view name = pair.substr(0, pair.find('='));
    if (!result.empty()) result += '&';
    // Judged by the decoded name, so that "pass%77ord" hides as well.
    const Parameters decoded = parseParameters(name);
    const std::string key = decoded.empty() ? "" : decoded.begin()->first;
    const bool secret = key.find("password") != std::string::npos || key.find("token") != std::string::npos;
    result += secret ? std::string(name) + "=***" : std::string(pair);
  }
  return printable(result);
}

}  // namespace

void RequestLog::add(const ServiceRequest& request, int status) {
  Entry entry{printable(request.verb),
              printable(request.path),
              masked(request.query),
              {},
              printable(request.header("Content-Type")),
              {},
              status};
  const bool isForm = entry.contentType.starts_with("application/x-www-form-urlencoded");
  if (isForm) entry.form = masked(request.body);
  for (const auto& header : request.headers)
    entry.headers.push_back(printable(header.first));
  const std::lock_guard lock(mutex_);
  ++count_;
  entries_.push_back(std::move(entry));
  if (entries_.size() > kKeptRequests) entries_.pop_front();
}

void RequestLog::clear() {
  const std::lock_guard lock(mutex_);
  entries_.clear();
  count_ = 0;
}

std::string RequestLog::text() const {
  JsonWriter json;
  const std::lock_guard lock(mutex_);
  json.beginObject().number("count", count_).key("requests").beginArray();
  for (const Entry& entry : entries_) {
    json.beginObject().member("verb", entry.verb).member("path", entry.path).member("query", entry.query);
    json.member("form", entry.form).key("headers").beginArray();
    for (const std::string& name : entry.headers)
      json.value(name);
    json.endArray().member("contentType", entry.contentType).number("status", entry.status).endObject();
  }
  return json.endArray().endObject().take();
}

}  // namespace fleetor::demo
