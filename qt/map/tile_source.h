#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

#include "map/tile_loader.h"
#include "map/tile_memory.h"
#include "qt/map/tile_addresses.h"
#include "ui/signal.h"

class QThread;

namespace fleetor {

/// Tiles over HTTP, kept on the disk as long as their headers allow. A separate thread transfers, stores and
/// decodes them; everything here is called on the main thread.
///
/// A fresh tile on the disk is shown without a request, a stale one is requested again (often with the answer
/// "not modified"). TileLoader::Source::cache takes it however old: an old map is better than none.
///
/// Nothing that identifies the user is sent: no cookies, no token, no credentials of any kind, not even
/// those of an address that contains some. Redirects are followed within their origin only. An answer that is
/// not an image of a tile (beyond the limits, broken, or neither PNG, JPEG nor WebP) is a failure and is not
/// kept.
class TileSource final : public TileLoader {
 public:
  struct Limits {
    qint64 diskBytes = qint64{64} << 20;
    qint64 bodyBytes = qint64{2} << 20;
    int imageSide = 1024;      ///< pixels
    int timeoutInMs = 10'000;  ///< without a byte transferred
    std::size_t memoryBytes = std::size_t{64} << 20;
  };

  /// Nothing else may use the folder; it is created when there is something to keep.
  TileSource(TileAddresses server, const QString& folder);
  TileSource(TileAddresses server, const QString& folder, Limits limits);

  /// Cancels all requests and waits for the thread.
  ~TileSource() override;

  TileSource(const TileSource&) = delete;
  TileSource& operator=(const TileSource&) = delete;

  Handle load(const TileKey& key, Source source, Done done) override;
  void cancel(Handle handle) override;
  bool serves(MapStyle style) const override { return !server_.urlTemplate(style).empty(); }
  int minimumZoom() const override;
  int maximumZoom() const override { return server_.maximumZoom; }

  /// What must be seen beside tiles of that style.
  const std::string& attribution(MapStyle style) const;

  /// The memory that all boards of this source share.
  TileMemory& memory() { return memory_; }

  /// The network or the service has come back: emitted by noteServiceBack() and when the system reports a
  /// network again. For TileBoard::retry().
  Signal<> back;
  void noteServiceBack() { back.emit(); }

 private:
  class Worker;

  TileAddresses server_;
  TileMemory memory_;
  std::unordered_map<Handle, Done> waiting_;
  Handle lastHandle_ = 0;
  QObject mainThread_;  // answers are queued to it
  std::unique_ptr<QThread> thread_;
  Worker* worker_ = nullptr;
};

}  // namespace fleetor
