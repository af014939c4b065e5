#pragma once

#include <functional>
#include <memory>
#include <string>

namespace fleetor {

/// Makes sure that a user runs one client only: it holds a lock file, and a socket beside it takes the
/// requests of later starts. Both lie in a folder that only this user can enter, and the socket itself is
/// open to this user alone; a connection from another user is closed unread. What a crashed
/// client leaves behind is cleared by the next one. Main thread only, inside an application.
class SingleInstance {
 public:
  /// `path` is that of the lock and the socket, without their endings; empty: there is no such folder, and
  /// every start runs a client.
  explicit SingleInstance(const std::string& path);
  ~SingleInstance();

  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  /// True: this is the one client. False: another one runs and has received the request: a text without line
  /// breaks, which may be empty; one of more than 4,000 bytes arrives as an empty one. Gives the other up to
  /// ten seconds to answer; when it does not, or the folder cannot be used, that is reported on standard
  /// error, and this client runs as well.
  bool enter(const std::string& request);

  /// Calls `received` with each request of a later start; those that came since `enter` first. Call it once.
  void listen(std::function<void(const std::string& request)> received);

 private:
  struct Endpoint;

  std::unique_ptr<Endpoint> endpoint_;
};

/// Where the files of that name belong that live as long as the user's session; empty when there is no folder
/// that is the user's alone.
std::string runtimePath(const std::string& name);

}  // namespace fleetor
