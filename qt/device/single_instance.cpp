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

/// Whether the one behind the socket has taken the request.
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

struct SingleInstance::Door {
  explicit Door(const QString& path) : socketPath(path + ".socket"), lock(path + ".lock") {
    // A lock is as good as its owner's life, however long that is.
    lock.setStaleLockTime(0);
    server.setSocketOptions(QLocalServer::UserAccessOption);
  }

  // Until somebody listens, those who knock wait at the door.
  void open() {
    const auto admitAll = [this] {
      while (QLocalSocket* visitor = server.nextPendingConnection())
        admit(*visitor);
    };
    QObject::connect(&server, &QLocalServer::newConnection, &server, admitAll);
    admitAll();
  }

  void admit(QLocalSocket& visitor) {
    QObject::connect(&visitor, &QLocalSocket::disconnected, &visitor, &QObject::deleteLater);
    if (!isOfThisUser(visitor)) return visitor.abort();
    visitor.setReadBufferSize(longest);
    const auto read = [this, &visitor] {
      if (!visitor.canReadLine()) {
        if (visitor.bytesAvailable() >= longest) visitor.abort();
        return;
      }
      const QByteArray line = visitor.readLine().chopped(1);
      visitor.write(taken);
      visitor.disconnectFromServer();
      received(line.toStdString());
    };
    QObject::connect(&visitor, &QLocalSocket::readyRead, &visitor, read);
    read();
  }

  QString socketPath;
  QLockFile lock;
  QLocalServer server;
  std::function<void(const std::string&)> received;
};

SingleInstance::SingleInstance(const std::string& path)
    : door_(path.empty() ? nullptr : std::make_unique<Door>(QString::fromStdString(path))) {}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::enter(const std::string& request) {
  const char* problem = "there is no folder of the user's own for it";
  if (door_) {
    QDir().mkpath(QFileInfo(door_->socketPath).absolutePath());
    const QDeadlineTimer deadline(patience);
    do {
      if (door_->lock.tryLock(0)) {
        QLocalServer::removeServer(door_->socketPath);
        if (door_->server.listen(door_->socketPath)) return true;
        problem = "its socket cannot be opened";
        break;
      }
      problem = "its lock cannot be written";
      if (door_->lock.error() != QLockFile::LockFailedError) break;
      if (handOver(door_->socketPath, request)) return false;
      problem = "it does not answer";
      QThread::msleep(50);
    } while (!deadline.hasExpired());
  }
  std::fprintf(stderr, "fleetor: another client cannot be reached, %s; this one runs on its own\n", problem);
  return true;
}

void SingleInstance::listen(std::function<void(const std::string&)> received) {
  if (!door_) return;
  door_->received = std::move(received);
  door_->open();
}

std::string runtimePath(const std::string& name) {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  return folder.isEmpty() ? std::string() : (folder + "/fleetor/").toStdString() + name;
}

}  // namespace fleetor
