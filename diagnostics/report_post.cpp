#include "diagnostics/report_post.h"

#include <fcntl.h>

#include <filesystem>
#include <mutex>
#include <system_error>
#include <utility>

#include "diagnostics/report_files.h"

namespace fleetor {

/// What the tasks of a post share with it; they may outlive it.
struct ReportPost::Office {
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
    : queues_(queues), office_(std::make_shared<Office>()) {
  office_->setup = std::move(setup);
  office_->transport = &transport;
}

ReportPost::~ReportPost() {
  const std::lock_guard lock(office_->mutex);
  office_->transport = nullptr;
}

void ReportPost::offer(Date now) {
  queues_.global([office = office_, now] {
    const auto reports = packReports(office->setup.folder, now);
    if (office->setup.address.empty()) return;
    for (const auto& path : reports)
      office->send(path);
  });
}

}  // namespace fleetor
