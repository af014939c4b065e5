#include "qt/device/wayland_seat.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <array>
#include <cstdint>
#include <cstring>
#include <thread>

#include "support/testing.h"

namespace fleetor {
namespace {

std::string message(std::uint32_t object, const std::string& arguments) {
  const std::uint32_t words[] = {object, static_cast<std::uint32_t>(8 + arguments.size()) << 16};
  return std::string(reinterpret_cast<const char*>(words), sizeof words) + arguments;
}

/// The announcement of an interface.
std::string offer(std::string name) {
  const std::uint32_t words[] = {7, static_cast<std::uint32_t>(name.size() + 1)};
  name.resize(name.size() / 4 * 4 + 4);
  return message(
      2, std::string(reinterpret_cast<const char*>(words), sizeof words) + name + std::string("\1\0\0\0", 4));
}

/// A compositor that gives one client that answer, then closes the connection or waits for the client to.
bool lacksSeatWith(const std::string& answer, bool hangsUp = false) {
  const QTemporaryDir folder;
  const std::string path = folder.filePath(QStringLiteral("wayland-9")).toStdString();
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, path.data(), path.size());
  const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
  EXPECT_EQ(::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  EXPECT_EQ(::listen(listener, 1), 0);
  std::jthread compositor([&] {
    const int client = ::accept(listener, nullptr, nullptr);
    std::array<char, 64> asked{};
    EXPECT_EQ(::recv(client, asked.data(), asked.size(), 0), 24);
    for (const char& byte : answer)  // one by one: nothing arrives whole
      ::send(client, &byte, 1, MSG_NOSIGNAL);
    if (!hangsUp) ::recv(client, asked.data(), asked.size(), 0);
    ::close(client);
    ::close(listener);
  });
  return lacksSeat(path);
}

TEST(WaylandSeat, IsMissingOnlyWhenACompositorHasOfferedAllItHasWithoutOne) {
  const std::string end = message(3, "\1\1\1\1");
  EXPECT_TRUE(lacksSeatWith(offer("wl_compositor") + offer("wl_seats") + end));
  EXPECT_FALSE(lacksSeatWith(offer("wl_compositor") + offer("wl_seat") + end));
  EXPECT_FALSE(lacksSeatWith(offer("wl_compositor"), true));
  EXPECT_FALSE(lacksSeatWith(offer("wl_compositor"))) << "silent from then on";
  EXPECT_FALSE(lacksSeatWith(std::string(64, '\0')));
  EXPECT_FALSE(lacksSeat("/nowhere/wayland-0"));
}

}  // namespace
}  // namespace fleetor
