#pragma once

#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/queues.h"
#include "platform/transport.h"

namespace fleetor::test {

inline HttpReply reply(int status, std::string contentType, std::string body) {
  return {status, std::move(contentType), std::move(body), 0, {}};
}

inline HttpReply jsonReply(std::string body, int status = 200) {
  return reply(status, "application/json; charset=utf-8", std::move(body));
}

/// A transfer that brought no answer.
inline HttpReply failedReply(long error) {
  return {0, {}, {}, error, "scripted failure"};
}

/// The path of a URL: no scheme and host, no query.
inline std::string pathOf(std::string_view url) {
  const auto scheme = url.find("://");
  if (scheme != std::string_view::npos) url.remove_prefix(scheme + 3);
  url = url.substr(0, url.find_first_of("?#"));
  const auto slash = url.find('/');
  return std::string(slash == std::string_view::npos ? std::string_view{} : url.substr(slash));
}

/// Records every request in order and answers as the test has scripted for its path: first the answers given
/// with `answerOnce`, in order, then the one given with `answer`. A request without a scripted answer stays
/// open until `answerOpen`. Answers travel through the global queue, never inline. Every operation may be
/// called from any thread.
class ScriptedTransport final : public Transport {
 public:
  using Answer =
      std::function<std::optional<HttpReply>(const HttpRequest&)>;  ///< nothing leaves the request open

  explicit ScriptedTransport(Queues& queues) : queues_(queues) {}

  /// The path is compared with the end of the request's own, so "/live" serves whatever the base URL is.
  void answer(std::string path, Answer with) {
    const std::lock_guard lock(mutex_);
    always_[std::move(path)] = std::move(with);
  }
  void answer(std::string path, HttpReply with) {
    answer(std::move(path), [with = std::move(with)](const HttpRequest&) { return std::optional(with); });
  }
  void answerOnce(std::string path, HttpReply with) {
    const std::lock_guard lock(mutex_);
    once_[std::move(path)].push_back(std::move(with));
  }
  /// From now on requests for the path stay open.
  void leaveOpen(const std::string& path) {
    answer(path, [](const HttpRequest&) { return std::optional<HttpReply>(); });
  }

  /// Answers the oldest open request for that path; false when there is none.
  bool answerOpen(std::string_view path, HttpReply with) {
    const std::lock_guard lock(mutex_);
    for (auto each = open_.begin(); each != open_.end(); ++each) {
      if (!pathOf(each->first).ends_with(path)) continue;
      deliver(std::move(each->second), std::move(with));
      open_.erase(each);
      return true;
    }
    return false;
  }

  std::vector<HttpRequest> requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
  }
  HttpRequest last() const {
    const std::lock_guard lock(mutex_);
    return requests_.empty() ? HttpRequest{} : requests_.back();
  }
  std::size_t count(std::string_view path) const {
    const std::lock_guard lock(mutex_);
    std::size_t found = 0;
    for (const auto& each : requests_)
      found += pathOf(each.url).ends_with(path) ? 1 : 0;
    return found;
  }
  std::size_t openCount() const {
    const std::lock_guard lock(mutex_);
    return open_.size();
  }
  void forgetRequests() {
    const std::lock_guard lock(mutex_);
    requests_.clear();
  }

  void send(HttpRequest request, Done done) override {
    const std::lock_guard lock(mutex_);
    requests_.push_back(request);
    if (auto with = scripted(request)) {
      deliver(std::move(done), std::move(*with));
    } else {
      open_.emplace_back(request.url, std::move(done));
    }
  }

 private:
  std::optional<HttpReply> scripted(const HttpRequest& request) {
    const std::string path = pathOf(request.url);
    for (auto& [ending, replies] : once_) {
      if (replies.empty() || !path.ends_with(ending)) continue;
      HttpReply next = std::move(replies.front());
      replies.pop_front();
      return next;
    }
    for (const auto& [ending, with] : always_)
      if (path.ends_with(ending)) return with(request);
    return {};
  }

  void deliver(Done done, HttpReply with) {
    queues_.global([done = std::move(done), with = std::move(with)]() mutable { done(std::move(with)); });
  }

  Queues& queues_;
  mutable std::mutex mutex_;
  std::vector<HttpRequest> requests_;
  std::map<std::string, Answer> always_;
  std::map<std::string, std::deque<HttpReply>> once_;
  std::deque<std::pair<std::string, Done>> open_;
};

/// The value of a header as it was sent, by its exact spelling.
inline std::optional<std::string> headerOf(const HttpRequest& request, std::string_view name) {
  for (const auto& [key, value] : request.headers)
    if (key == name) return value;
  return {};
}

}  // namespace fleetor::test
