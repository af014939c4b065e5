// What reaches a client from other programs: the words of its command line, with a URL among them, and
// whatever is written into the socket that takes the URLs of later starts.

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QTemporaryDir>
#include <sstream>
#include <string>
#include <vector>

#include "app/options.h"
#include "fuzzing.h"
#include "qt/device/single_instance.h"

namespace {

using namespace fleetor;

constexpr std::size_t longest = 4096;

void parse(const std::string& text) {
  std::vector<std::string> words;
  std::istringstream lines(text);
  for (std::string word; std::getline(lines, word, '\0');)
    words.push_back(word);
  std::string problem;
  const auto options = parseOptions(words, {"de", "en"}, problem);
  if (!options) return require(!problem.empty(), "a refusal has a reason", text);
  const auto within = [](std::optional<int> number, int smallest, int largest) {
    return !number || (*number >= smallest && *number <= largest);
  };
  require(within(options->width, smallestSide, largestSide) &&
              within(options->height, smallestSide, largestSide) &&
              options->width.has_value() == options->height.has_value(),
          "a size is within its bounds", text);
  require(within(options->textSize, 100, 200), "the size of text is within its bounds", text);
  require(!options->language || *options->language == "de" || *options->language == "en",
          "a language is known", text);
  require(!options->url.starts_with('-'), "no option is taken for a URL", text);
}

/// The client that runs, and what its socket has taken.
struct Running {
  Running() {
    require(instance.enter(""), "no other client runs");
    instance.listen([this](const std::string& request) { requests.push_back(request); });
    folder.filePath("c.socket").toStdString().copy(address.sun_path, sizeof address.sun_path - 1);
  }

  /// The answer to a connection that sends just this text.
  std::string send(const std::string& text) {
    requests.clear();
    const int connection = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    require(::connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0,
            "it opens");
    ::send(connection, text.data(), text.size(), MSG_NOSIGNAL);
    ::shutdown(connection, SHUT_WR);
    std::string read;
    char piece[64];
    for (ssize_t count = 1; count > 0 || (count < 0 && errno == EAGAIN);) {
      QCoreApplication::processEvents();
      count = ::recv(connection, piece, sizeof piece, MSG_DONTWAIT);
      if (count > 0) read.append(piece, static_cast<std::size_t>(count));
    }
    ::close(connection);
    QCoreApplication::processEvents();
    return read;
  }

  QTemporaryDir folder;
  sockaddr_un address{AF_UNIX, {}};
  SingleInstance instance{folder.filePath("c").toStdString()};
  std::vector<std::string> requests;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static int argc = 1;
  static char name[] = "fuzz", *argv[] = {name, nullptr};
  static const QCoreApplication application(argc, argv);
  static Running client;

  Bytes bytes(data, size);
  const std::uint32_t copies = 1 + bytes.next() % 4;
  const std::string text = bytes.rest();
  parse(text);
  std::string message;
  for (std::uint32_t i = 0; i < copies; ++i)
    message += text;
  const std::string answer = client.send(message);
  const std::size_t end = message.find('\n');
  if (end < longest) {
    require(client.requests == std::vector{message.substr(0, end)}, "one line is one request", message);
    require(answer == "taken\n", "a request is confirmed", answer);
  } else {
    require(client.requests.empty() && answer.empty(), "without a line there is no request", message);
  }
  return 0;
}
