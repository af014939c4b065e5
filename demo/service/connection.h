#pragma once

#include <httplib.h>

#include <array>
#include <string>

namespace fleetor::demo {

// One accepted socket as the HTTP library wants to see it. Reads and writes give up when the peer is silent
// for `idleMilliseconds`.
class Connection : public httplib::Stream {
 public:
  explicit Connection(int socket) : socket_(socket) {}

  static constexpr int idleMilliseconds = 10000;

  // True as soon as bytes are there; false when none came in time or the peer is gone.
  bool waitForRequest(int milliseconds) const;
  // True when the peer has closed or reset the connection.
  bool peerGone() const;

  bool is_readable() const override { return waitForRequest(idleMilliseconds); }
  bool is_writable() const override;
  ssize_t read(char* data, std::size_t size) override;
  ssize_t write(const char* data, std::size_t size) override;
  void get_remote_ip_and_port(std::string& ip, int& port) const override;
  void get_local_ip_and_port(std::string& ip, int& port) const override;
  socket_t socket() const override { return socket_; }

 private:
  int socket_;
  std::array<char, 4096> buffer_{};
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
};

}  // namespace fleetor::demo
