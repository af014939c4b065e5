#pragma once

#include <cstdint>
#include <deque>
#include <mutex>
#include <string>

#include "demo/service/messages.h"

namespace fleetor::demo {

// The last requests, without anything secret: header names but not their values, and no password or token in
// queries and forms. Safe from any thread.
class RequestLog {
 public:
  void add(const ServiceRequest& request, int status);
  void clear();
  // {"count": how many ever since the last clear, "requests": [{verb, path, query, form, headers,
  // contentType, status}]}
  std::string text() const;

 private:
  struct Entry {
    std::string verb, path, query, form, contentType;
    std::vector<std::string> headers;
    int status;
  };

  mutable std::mutex mutex_;
  std::deque<Entry> entries_;
  std::int64_t count_ = 0;
};

}  // namespace fleetor::demo
