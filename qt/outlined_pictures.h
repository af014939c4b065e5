#pragma once

#include <QQuickImageProvider>

namespace fleetor {

/// Pictures with a thin outline that stands out from what they lie on: "on-dark/<file>" and "on-light/<file>"
/// of the compiled-in images. The outline lies within the size asked for. Any thread.
class OutlinedPictures final : public QQuickImageProvider {
 public:
  OutlinedPictures() : QQuickImageProvider(Image) {}

  QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}  // namespace fleetor
