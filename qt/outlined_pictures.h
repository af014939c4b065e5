#pragma once

#include <QQuickImageProvider>

namespace fleetor {

/// Pictures with a thin outline that stands out from what they lie on: "dark/<file>", "light/<file>" and
/// "bar/<file>" of the compiled-in images. It lies within the size asked for. Any thread.
class OutlinedPictures final : public QQuickImageProvider {
 public:
  OutlinedPictures() : QQuickImageProvider(Image) {}

  QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}  // namespace fleetor
