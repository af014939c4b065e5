#include "demo/service/connection.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstring>

namespace fleetor::demo {
namespace {

short polled(int socket, short events, int milliseconds) {
  pollfd entry{socket, events, 0};
  return ::poll(&entry, 1, milliseconds) > 0 ? entry.revents : short{0};
}

}  // namespace

bool Connection::waitForRequest(int milliseconds) const {
  if (begin_ < end_) return true;
  return (polled(socket_, POLLIN, milliseconds) & POLLIN) != 0;
}

bool Connection::peerGone() const {
  return (polled(socket_, POLLRDHUP, 0) & (POLLRDHUP | POLLHUP | POLLERR)) != 0;
}

bool Connection::is_writable() const {
  return (polled(socket_, POLLOUT, idleMilliseconds) & POLLOUT) != 0;
}

ssize_t Connection::read(char* data, std::size_t size) {
  if (begin_ == end_) {
    if (!is_readable()) return -1;
    const ssize_t got = ::recv(socket_, buffer_.data(), buffer_.size(), 0);
    if (got <= 0) return got;
    begin_ = 0;
    end_ = static_cast<std::size_t>(got);
  }
  const std::size_t count = std::min(size, end_ - begin_);
  std::memcpy(data, buffer_.data() + begin_, count);
  begin_ += count;
  return static_cast<ssize_t>(count);
}

ssize_t Connection::write(const char* data, std::size_t size) {
  return is_writable() ? ::send(socket_, data, size, MSG_NOSIGNAL) : -1;
}

void Connection::get_remote_ip_and_port(std::string& ip, int& port) const {
  ip = "127.0.0.1";
  port = 0;
}

void Connection::get_local_ip_and_port(std::string& ip, int& port) const {
  ip = "127.0.0.1";
  port = 0;
}

}  // namespace fleetor::demo
