#include <openssl/ssl.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>

#include "fetching.h"

namespace fleetor {
namespace {

class TlsChannel final : public RawServer::Channel {
 public:
  TlsChannel(int socket, SSL_CTX* context) : Channel(socket), tls_(SSL_new(context)) {
    SSL_set_fd(tls_, socket);
    SSL_accept(tls_);
  }
  ~TlsChannel() override { SSL_free(tls_); }
  ssize_t receive(char* bytes, std::size_t room) override {
    return SSL_read(tls_, bytes, static_cast<int>(room));
  }
  ssize_t send(std::string_view bytes) override {
    return SSL_write(tls_, bytes.data(), static_cast<int>(bytes.size()));
  }

 private:
  SSL* tls_;
};

// A server whose certificate an authority of the test's own has signed; both are made anew for each test.
class Tls : public testing::Test {
 protected:
  Tls() {
    std::signal(SIGPIPE, SIG_IGN);  // a client that hangs up during the handshake
    run("req -x509 -subj '/CN=Test Authority' -days 1 -keyout ca.key -out ca.pem" + newKey);
  }
  void TearDown() override {
    SSL_CTX_free(context_);
    std::filesystem::remove_all(folder_);
  }

  void useCertificate(const std::string& alternativeNames, int days) {
    run("req -new -subj /CN=localhost -addext subjectAltName=" + alternativeNames +
        " -keyout own.key -out own.req" + newKey);
    run("x509 -req -in own.req -CA ca.pem -CAkey ca.key -copy_extensions copy -out own.pem -days " +
        std::to_string(days));
    SSL_CTX_free(context_);
    context_ = SSL_CTX_new(TLS_server_method());
    ASSERT_EQ(SSL_CTX_use_certificate_file(context_, path("own.pem").c_str(), SSL_FILETYPE_PEM), 1);
    ASSERT_EQ(SSL_CTX_use_PrivateKey_file(context_, path("own.key").c_str(), SSL_FILETYPE_PEM), 1);
  }

  RawServer::MakeChannel tls() {
    return [this](int socket) { return std::make_unique<TlsChannel>(socket, context_); };
  }

  std::string path(const std::string& name) const { return folder_ + "/" + name; }

  void run(const std::string& arguments) {
    const std::string command =
        "cd " + folder_ + " && openssl " + arguments + " >log 2>&1 || { cat log; false; }";
    ASSERT_EQ(std::system(command.c_str()), 0) << arguments;
  }

 private:
  static inline const std::string newKey = " -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes";
  std::string folder_ = ::mkdtemp(std::string(testing::TempDir() + "tlsXXXXXX").data());
  SSL_CTX* context_ = nullptr;
};

std::string secureUrl(const std::string& host, const RawServer& server, const std::string& path = "/") {
  return "https://" + host + ":" + std::to_string(server.port()) + path;
}

TEST_F(Tls, RefusesAServerThatIsNotTheOneNamedAndTellsWhy) {
  struct Case {
    const char* alternativeName;  ///< the common name always fits
    int days;
    bool isTrusted;
    RawServer::MakeChannel channel;
    const char* description;  ///< empty: it is the one
  };
  const auto noTls = [](int socket) {
    auto channel = RawServer::bare(socket);
    channel->send("hello\r\n");
    return channel;
  };
  const std::vector<Case> cases{
      {"DNS:localhost", 1, true, tls(), ""},
      {"DNS:other.test", 1, true, tls(), "host name"},
      {"DNS:localhost", -1, true, tls(), "expired"},
      {"DNS:localhost", 1, false, tls(), "issuer"},
      {"DNS:localhost", 1, true, noTls, "wrong version"},
  };
  for (const Case& c : cases) {
    useCertificate(c.alternativeName, c.days);
    RawServer server(always(answer("{}")), c.channel);
    HttpTransport transport({}, c.isTrusted ? path("ca.pem") : "");
    const HttpReply reply = fetch(transport, get(secureUrl("localhost", server)));
    const bool isGood = *c.description == '\0';
    EXPECT_EQ(reply.error, isGood ? 0 : url_error::secureConnectionFailed) << reply.errorDescription;
    EXPECT_EQ(reply.body, isGood ? "{}" : "");
    EXPECT_THAT(reply.errorDescription, HasSubstr(c.description));
    EXPECT_EQ(server.requests().size(), isGood ? 1u : 0u);
  }
}

TEST_F(Tls, FollowsNoRedirectOutOfTlsAndLeavesTheTokenAtItsHost) {
  useCertificate("DNS:localhost,IP:127.0.0.1", 1);
  RawServer plain(always(answer("{}")));
  RawServer server(
      [&plain](RawServer::Peer& peer) {
        for (std::string request; !(request = peer.read()).empty();) {
          const auto port = request.substr(request.find("localhost:") + 10, 5);
          if (request.starts_with("GET /down"))
            peer.write(answer("moved", "302 Found", "Location: " + plain.url("/") + "\r\n"));
          else if (request.starts_with("GET /across"))
            peer.write(answer("", "302 Found", "Location: https://127.0.0.1:" + port + "/to\r\n"));
          else
            peer.write(answer("[1]"));
        }
      },
      tls());
  HttpTransport transport({}, path("ca.pem"));
  const auto go = [&](const std::string& from) {
    HttpRequest request = get(secureUrl("localhost", server, from));
    request.headers = {{"Authorization", "Bearer secret"}};
    return fetch(transport, request);
  };
  EXPECT_EQ(go("/down").body, "moved");
  EXPECT_TRUE(plain.requests().empty());
  EXPECT_THAT(server.requests().back(), HasSubstr("secret"));
  EXPECT_EQ(go("/across").body, "[1]");
  EXPECT_THAT(server.requests().back(), Not(HasSubstr("secret")));
}

}  // namespace
}  // namespace fleetor
