#include <pthread.h>
#include <csignal>
#include <cstdio>
#include <thread>

#include "demo/service/http_server.h"
#include "demo/service/options.h"

int main(int argc, char** argv) {
  using namespace fleetor::demo;
  std::string problem;
  auto options = parseOptions({argv + 1, argv + argc}, problem);
  if (!options) {
    std::fprintf(stderr, "fleetor-demo-service: %s\n\n%s", problem.c_str(), usage().c_str());
    return 2;
  }
  if (options->help) {
    std::fputs(usage().c_str(), stdout);
    return 0;
  }

  // Blocked before any thread starts, so that only the waiting thread below ever sees them.
  sigset_t endings;
  sigemptyset(&endings);
  sigaddset(&endings, SIGTERM);
  sigaddset(&endings, SIGINT);
  pthread_sigmask(SIG_BLOCK, &endings, nullptr);

  options->service.version = FLEETOR_VERSION;
  Service service(options->service);
  for (const Fault& fault : options->faults)
    service.faults().add(fault);
  HttpServer server(service);
  const int port = server.bind(options->port);
  if (port == 0) {
    std::fprintf(stderr,
                 "fleetor-demo-service: port %d is in use or not allowed; choose another with --port\n",
                 options->port);
    return 1;
  }
  std::printf("Listening on http://127.0.0.1:%d\n", port);
  std::fflush(stdout);

  std::thread watch([&] {
    int ending = 0;
    sigwait(&endings, &ending);
    server.stop();
  });
  server.run();
  // Should the listening socket ever fail on its own, the watch still has to be told.
  pthread_kill(watch.native_handle(), SIGINT);
  watch.join();
  return 0;
}
