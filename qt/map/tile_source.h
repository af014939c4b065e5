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

/// Tiles over HTTP, kept on the disk for as long as their headers allow. Transfers, the disk and decoding are
/// the work of a thread of its own; everything here is called on the main thread.
///
/// A fresh tile of the disk is shown without asking anybody, a stale one is asked for anew (and often comes
/// back as "not modified"). TileLoader::Source::cache takes it as it is: an old map is better than none.
///
/// Nothing that identifies the person is sent: no cookies, no token, no credentials of any kind, not even
/// those of an address that contains some. Redirects are followed within their origin only. What is no image
/// of a tile (longer or larger than the limits, not PNG, JPEG or WebP, broken) counts as a failure and is not
/// kept.
class TileSource final : public TileLoader {
 public:
  struct Limits {
    qint64 diskBytes = qint64{64} << 20;
    qint64 bodyBytes = qint64{2} << 20;
    int imageSide = 1024;      ///< pixels
    int timeoutInMs = 10'000;  ///< without a byte moving
    std::size_t memoryBytes = std::size_t{64} << 20;
  };

  /// The folder belongs to the source alone; it is made when there is something to keep.
  TileSource(TileAddresses server, const QString& folder);
  TileSource(TileAddresses server, const QString& folder, Limits limits);

  /// Ends what is under way, without calling anybody, and waits for the thread.
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

  /// The network or the service has come back: emitted by noteServiceBack() and by the system's word that
  /// there is a network again. For TileBoard::retry().
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
