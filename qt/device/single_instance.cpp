#include "qt/device/single_instance.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>
#include <QStandardPaths>
#include <QThread>
#include <cstdio>
#include <utility>

#ifdef Q_OS_LINUX
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace fleetor {
namespace {

constexpr int patience = 5000;  // milliseconds
constexpr qint64 longest = 4096;
constexpr std::size_t longestRequest = 4000;
constexpr const char* taken = "taken\n";

bool isOfThisUser([[maybe_unused]] const QLocalSocket& socket) {
#ifdef Q_OS_LINUX
  ucred peer{};
  socklen_t size = sizeof peer;
  return ::getsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_PEERCRED, &peer, &size) ==
             0 &&
         peer.uid == ::geteuid();
#else
  return true;  // the socket's own access rights have to do
#endif
}

/// Whether the running client has taken the request.
bool handOver(const QString& socketPath, const std::string& request) {
  QLocalSocket socket;
  socket.connectToServer(socketPath);
  if (!socket.waitForConnected(patience) || !isOfThisUser(socket)) return false;
  socket.write(QByteArray::fromStdString(request.size() <= longestRequest ? request : std::string()) + '\n');
  while (!socket.canReadLine())
    if (!socket.waitForReadyRead(patience)) return false;
  return socket.readLine() == taken;
}

}  // namespace

struct SingleInstance::Endpoint {
  explicit Endpoint(const QString& path) : socketPath(path + ".socket"), lock(path + ".lock") {
    // A lock is valid as long as its owner lives, however long that is.
    lock.setStaleLockTime(0);
    server.setSocketOptions(QLocalServer::UserAccessOption);
  }

  // Earlier connections wait in the backlog of the socket.
  void open() {
    const auto acceptAll = [this] {
      while (QLocalSocket* connection = server.nextPendingConnection())
        accept(*connection);
    };
    QObject::connect(&server, &QLocalServer::newConnection, &server, acceptAll);
    acceptAll();
  }

  void accept(QLocalSocket& connection) {
    QObject::connect(&connection, &QLocalSocket::disconnected, &connection, &QObject::deleteLater);
    if (!isOfThisUser(connection)) return connection.abort();
    connection.setReadBufferSize(longest);
    const auto read = [this, &connection] {
      if (!connection.canReadLine()) {
        if (connection.bytesAvailable() >= longest) connection.abort();
        return;
      }
      const QByteArray line = connection.readLine().chopped(1);
      connection.write(taken);
      connection.disconnectFromServer();
      received(line.toStdString());
    };
    QObject::connect(&connection, &QLocalSocket::readyRead, &connection, read);
    read();
  }

  QString socketPath;
  QLockFile lock;
  QLocalServer server;
  std::function<void(const std::string&)> received;
};

SingleInstance::SingleInstance(const std::string& path)
    : endpoint_(path.empty() ? nullptr : std::make_unique<Endpoint>(QString::fromStdString(path))) {}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::enter(const std::string& request) {
  const char* problem = "the user has no private runtime folder";
  if (endpoint_) {
    QDir().mkpath(QFileInfo(endpoint_->socketPath).absolutePath());
    const QDeadlineTimer deadline(patience);
    do {
      if (endpoint_->lock.tryLock(0)) {
        QLocalServer::removeServer(endpoint_->socketPath);
        if (endpoint_->server.listen(endpoint_->socketPath)) return true;
        problem = "its socket cannot be opened";
        break;
      }
      problem = "its lock cannot be written";
      if (endpoint_->lock.error() != QLockFile::LockFailedError) break;
      if (handOver(endpoint_->socketPath, request)) return false;
      problem = "it does not answer";
      QThread::msleep(50);
    } while (!deadline.hasExpired());
  }
  std::fprintf(stderr, "fleetor: cannot look for a running client (%s); a second one may be started\n",
               problem);
  return true;
}

void SingleInstance::listen(std::function<void(const std::string&)> received) {
  if (!endpoint_) return;
  endpoint_->received = std::move(received);
  endpoint_->open();
}

std::string runtimePath(const std::string& name) {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  return folder.isEmpty() ? std::string() : (folder + "/fleetor/").toStdString() + name;
}

}  // namespace fleetor
