#pragma once

#include <QDesktopServices>
#include <QObject>
#include <QUrl>
#include <functional>
#include <utility>

namespace fleetor {

/// Stands for the system's browser.
class Browser : public QObject {
  Q_OBJECT

 public:
  explicit Browser(std::function<void(const QUrl&)> asked) : asked_(std::move(asked)) {
    QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "open");
  }
  ~Browser() override { QDesktopServices::unsetUrlHandler(QStringLiteral("https")); }

  Q_SLOT void open(const QUrl& url) { asked_(url); }

 private:
  std::function<void(const QUrl&)> asked_;
};

}  // namespace fleetor
