#pragma once

#include "support/request_layer.h"
#include "support/scripted_transport.h"
#include "support/virtual_queues.h"

namespace fleetor::test {

/// The request layer under virtual time, against a scripted service.
class ServiceTest : public RequestLayer {
 protected:
  ServiceTest() { install(queues, transport); }

  /// The whole request as text: first line, headers, blank line, body.
  static std::string wire(const HttpRequest& request) {
    std::string text = request.method + " " + request.url + "\n";
    for (const auto& [name, value] : request.headers)
      text.append(name).append(": ").append(value).append("\n");
    return text + (request.body ? "\n" + *request.body : "");
  }

  VirtualQueues queues;
  ScriptedTransport transport{queues};
};

}  // namespace fleetor::test
