#include "qt/device/wayland_seat.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDeadlineTimer>
#include <QString>
#include <array>
#include <cstdint>
#include <cstring>

namespace fleetor {
namespace {

using Word = std::uint32_t;

Word wordAt(const std::string& bytes, std::size_t offset) {
  Word word = 0;
  std::memcpy(&word, bytes.data() + offset, sizeof word);
  return word;
}

class Socket {
 public:
  Socket() : descriptor_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {}
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;
  ~Socket() { ::close(descriptor_); }
  int descriptor() const { return descriptor_; }

  bool connect(const std::string& path) const {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof address.sun_path) return false;
    std::memcpy(address.sun_path, path.data(), path.size());
    return ::connect(descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  }

 private:
  int descriptor_;
};

}  // namespace

bool lacksSeat(const std::string& socketPath) {
  const Socket socket;
  if (!socket.connect(socketPath)) return false;
  // A message is an object, its length in bytes and an operation in one word, and the arguments. Object 1 is
  // the compositor itself, the other numbers are given here. It lists in the registry all that it offers,
  // then ends.
  constexpr Word compositor = 1, registry = 2, end = 3, getRegistry = 1, sync = 0;
  constexpr std::size_t header = 2 * sizeof(Word), longest = 4096;
  constexpr Word length = (header + sizeof(Word)) << 16;
  const Word requests[] = {compositor, length | getRegistry, registry, compositor, length | sync, end};
  if (::send(socket.descriptor(), requests, sizeof requests, MSG_NOSIGNAL) != sizeof requests) return false;

  const QDeadlineTimer deadline(1000);
  const std::string seat("wl_seat", sizeof "wl_seat");
  pollfd answer{socket.descriptor(), POLLIN, 0};
  std::string messages;
  while (::poll(&answer, 1, static_cast<int>(deadline.remainingTime())) == 1) {
    std::array<char, longest> piece{};
    const ssize_t count = ::recv(socket.descriptor(), piece.data(), piece.size(), 0);
    if (count <= 0) return false;
    messages.append(piece.data(), static_cast<std::size_t>(count));
    while (messages.size() >= header) {
      const Word object = wordAt(messages, 0);
      const std::size_t size = wordAt(messages, sizeof(Word)) >> 16;
      if (object == end) return true;
      if (object != registry || size < header || size > longest) return false;
      if (messages.size() < size) break;
      // An interface: its number, the length of its name, the name.
      if (messages.substr(0, size).find(seat) == header + 2 * sizeof(Word)) return false;
      messages.erase(0, size);
    }
  }
  return false;
}

void prepareForMissingSeat() {
  const QString name = qEnvironmentVariable("WAYLAND_DISPLAY", QStringLiteral("wayland-0"));
  const QString folder = name.startsWith(u'/') ? QString() : qEnvironmentVariable("XDG_RUNTIME_DIR") + u'/';
  if (!qEnvironmentVariableIsSet("QT_IM_MODULE") && lacksSeat((folder + name).toStdString()))
    qputenv("QT_IM_MODULE", "compose");
}

}  // namespace fleetor
