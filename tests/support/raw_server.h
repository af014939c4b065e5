#pragma once

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace fleetor {

/// A listening socket on loopback that records every byte it receives. Each connection runs `serve` on
/// a separate thread; the connection is closed when `serve` returns. The destructor closes everything and
/// waits.
class RawServer {
 public:
  /// How bytes travel over a connection: bare, unless a test puts something in between. As recv and send.
  class Channel {
   public:
    explicit Channel(int socket) : socket_(socket) {}
    virtual ~Channel() = default;
    virtual ssize_t receive(char* bytes, std::size_t room) { return ::recv(socket_, bytes, room, 0); }
    virtual ssize_t send(std::string_view bytes) {
      return ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    }
    /// False as soon as the client sends more or goes; true when the time has passed without that.
    bool staysQuiet(std::chrono::milliseconds time) {
      pollfd waiting{socket_, POLLIN | POLLRDHUP, 0};
      return ::poll(&waiting, 1, static_cast<int>(time.count())) == 0;
    }

   protected:
    int socket_;
  };
  using MakeChannel = std::function<std::unique_ptr<Channel>(int socket)>;

  class Peer {
   public:
    Peer(Channel& channel, RawServer& server) : channel_(channel), server_(server) {}

    /// The next whole request, head and body, byte for byte; empty when the client has gone.
    std::string read() {
      std::string got;
      while (true) {
        const auto head = got.find("\r\n\r\n");
        if (head != std::string::npos && got.size() >= head + 4 + contentLength(got.substr(0, head))) break;
        char chunk[16384];
        const auto count = channel_.receive(chunk, sizeof chunk);
        if (count <= 0) return "";
        got.append(chunk, static_cast<std::size_t>(count));
      }
      const std::lock_guard lock(server_.mutex_);
      server_.requests_.push_back(got);
      return got;
    }

    /// False when the client has gone.
    bool write(std::string_view bytes) {
      while (!bytes.empty()) {
        const auto count = channel_.send(bytes);
        if (count <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
      }
      return true;
    }

    /// Writes those bytes again and again, this far apart, until the client goes.
    void trickle(std::string_view bytes, std::chrono::milliseconds pause, int times = -1) {
      while (times-- != 0 && write(bytes) && channel_.staysQuiet(pause)) {
      }
    }

    /// Answers nothing more and waits until the client closes the connection.
    void hold() {
      char byte = 0;
      while (channel_.receive(&byte, 1) > 0) {
      }
    }

   private:
    static std::size_t contentLength(const std::string& head) {
      const auto at = head.find("\r\nContent-Length: ");
      return at == std::string::npos ? 0 : std::strtoul(head.c_str() + at + 18, nullptr, 10);
    }

    Channel& channel_;
    RawServer& server_;
  };

  static std::unique_ptr<Channel> bare(int socket) { return std::make_unique<Channel>(socket); }

  explicit RawServer(std::function<void(Peer&)> serve, MakeChannel channel = bare)
      : serve_(std::move(serve)), channel_(std::move(channel)) {
    listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (::bind(listener_, reinterpret_cast<sockaddr*>(&address), size) != 0 || ::listen(listener_, 64) != 0)
      std::abort();
    ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
    port_ = ntohs(address.sin_port);
    accepting_ = std::thread([this] { accept(); });
  }

  ~RawServer() {
    ::shutdown(listener_, SHUT_RDWR);
    accepting_.join();
    ::close(listener_);
    {
      const std::lock_guard lock(mutex_);
      for (auto& connection : connections_)
        ::shutdown(connection.socket, SHUT_RDWR);
    }
    for (auto& connection : connections_) {
      connection.thread.join();
      ::close(connection.socket);
    }
  }

  RawServer(const RawServer&) = delete;
  RawServer& operator=(const RawServer&) = delete;

  int port() const { return port_; }
  std::string url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(port_) + path;
  }

  std::vector<std::string> requests() {
    const std::lock_guard lock(mutex_);
    return requests_;
  }

 private:
  struct Connection {
    int socket;
    std::thread thread;
  };

  void accept() {
    while (true) {
      const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
      if (socket < 0) return;
      const std::lock_guard lock(mutex_);
      connections_.push_back({socket, std::thread([this, socket] {
                                const auto channel = channel_(socket);
                                Peer peer(*channel, *this);
                                serve_(peer);
                                ::shutdown(socket, SHUT_RDWR);
                              })});
    }
  }

  std::function<void(Peer&)> serve_;
  MakeChannel channel_;
  int listener_ = -1;
  int port_ = 0;
  std::thread accepting_;
  std::mutex mutex_;
  std::list<Connection> connections_;
  std::vector<std::string> requests_;
};

/// Answers every request on every connection with the same bytes.
inline std::function<void(RawServer::Peer&)> always(std::string bytes) {
  return [bytes = std::move(bytes)](RawServer::Peer& peer) {
    while (!peer.read().empty())
      peer.write(bytes);
  };
}

/// Reads one request, answers it with these bytes and hangs up.
inline std::function<void(RawServer::Peer&)> once(std::string bytes) {
  return [bytes = std::move(bytes)](RawServer::Peer& peer) {
    peer.read();
    peer.write(bytes);
  };
}

/// Reads one request, answers it with these bytes and waits until the client hangs up.
inline std::function<void(RawServer::Peer&)> stalling(std::string bytes) {
  return [bytes = std::move(bytes)](RawServer::Peer& peer) {
    peer.read();
    peer.write(bytes);
    peer.hold();
  };
}

}  // namespace fleetor
