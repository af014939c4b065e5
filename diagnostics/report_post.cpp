#include "diagnostics/report_post.h"

#include <fcntl.h>

#include <filesystem>
#include <mutex>
#include <system_error>
#include <utility>

#include "diagnostics/report_files.h"

namespace fleetor {

/// The state that a post shares with its tasks, which may outlive it.
struct ReportPost::Sender {
  ReportSetup setup;
  std::mutex mutex;
  Transport* transport = nullptr;  ///< none once the post is closed

  void send(const std::filesystem::path& path) {
    auto file = OwnFile::open(path, O_RDONLY);
    if (!file) return;  // another client is sending it
    HttpRequest request;
    request.url = setup.address;
    request.method = "POST";
    request.headers = {{"Content-Type", "application/gzip"}, {"User-Agent", "Fleetor/" + setup.version}};
    request.body = file->read();
    const std::lock_guard lock(mutex);
    if (!transport) return;
    transport->send(std::move(request),
                    [path, mine = std::make_shared<OwnFile>(std::move(*file))](const HttpReply& reply) {
                      std::error_code ignored;
                      if (reply.status / 100 == 2) std::filesystem::remove(path, ignored);
                    });
  }
};

ReportPost::ReportPost(Queues& queues, Transport& transport, ReportSetup setup)
    : queues_(queues), sender_(std::make_shared<Sender>()) {
  sender_->setup = std::move(setup);
  sender_->transport = &transport;
}

ReportPost::~ReportPost() {
  const std::lock_guard lock(sender_->mutex);
  sender_->transport = nullptr;
}

void ReportPost::offer(Date now) {
  queues_.global([sender = sender_, now] {
    const auto reports = packReports(sender->setup.folder, now);
    if (sender->setup.address.empty()) return;
    for (const auto& path : reports)
      sender->send(path);
  });
}

}  // namespace fleetor
