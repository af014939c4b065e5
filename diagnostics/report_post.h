#pragma once

#include <memory>
#include <string>

#include "platform/clock.h"
#include "platform/queues.h"
#include "platform/transport.h"

namespace fleetor {

/// Where reports are kept and where they are sent.
struct ReportSetup {
  std::string folder;
  std::string address;  ///< of the service that takes reports; empty: nothing is ever sent
  std::string version;  ///< of this program
};

/// Packs the reports of earlier runs and offers them to the service that takes reports: each file once a
/// start, in a separate POST that does not identify the sender. A file that was taken (status 2xx) is
/// deleted, any other stays for the next start. Main thread; nothing is sent any more once the destructor has
/// returned, which comes before the end of queues and transport.
class ReportPost {
 public:
  ReportPost(Queues& queues, Transport& transport, ReportSetup setup);
  ~ReportPost();

  ReportPost(const ReportPost&) = delete;
  ReportPost& operator=(const ReportPost&) = delete;

  /// Returns at once; all of it happens on the global queue and the network thread.
  void offer(Date now);

 private:
  struct Sender;

  Queues& queues_;
  std::shared_ptr<Sender> sender_;
};

}  // namespace fleetor
