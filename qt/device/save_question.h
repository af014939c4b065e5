#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>
#include <functional>
#include <optional>
#include <string>

namespace fleetor {

/// One question to the desktop's file chooser portal, where to save a file. Deletes itself after the answer.
class SaveQuestion : public QObject {
  Q_OBJECT

 public:
  enum class Answer { chosen, cancelled, noPortal };
  using Answered = std::function<void(Answer answer, const std::string& path)>;

  SaveQuestion(const std::string& name, Answered answered, QObject* parent);

 private:
  Q_SLOT void respond(uint response, const QVariantMap& results);
  void answer(Answer answer, const std::string& path = {});

  QDBusConnection bus_ = QDBusConnection::sessionBus();
  Answered answered_;
};

}  // namespace fleetor
