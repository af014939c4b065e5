#pragma once

#include <QGuiApplication>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <cstdio>

#include "../rest.h"
#include "app/client.h"
#include "support/memory_stores.h"
#include "support/testing.h"

namespace fleetor {

/// The client in its window, signed out, against a separate demo service.
class WindowTest : public testing::Test {
 protected:
  void SetUp() override {
    complaints().clear();
    before_ = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& message) {
      std::fputs(qPrintable(message + u'\n'), stderr);
      static const QRegularExpression complaint(QStringLiteral("[.]qml:|has no outlet"));
      if (message.contains(complaint)) complaints() += message.toStdString() + '\n';
    });
    service_.setProcessChannelMode(QProcess::MergedChannels);
    service_.start(QStringLiteral(DEMO_SERVICE), {QStringLiteral("--port"), QStringLiteral("0")});
    ASSERT_TRUE(service_.waitForStarted());
    QByteArray said;
    while (!said.contains('\n') && service_.waitForReadyRead(10'000))
      said += service_.readAll();
    const auto address = QRegularExpression(QStringLiteral("http://[0-9.:]+")).match(QString::fromUtf8(said));
    ASSERT_TRUE(address.hasMatch()) << said.toStdString();
    address_ = address.captured().toStdString();
  }

  void TearDown() override {
    client_.reset();
    service_.kill();
    service_.waitForFinished();
    qInstallMessageHandler(before_);
    EXPECT_EQ(complaints(), "") << "warnings about QML";
  }

  void open(Idiom idiom, QSize size, const char* language = "en", bool dark = false) {
    const std::string folder = settings_.path().toStdString();
    auto keyStore = std::make_unique<test::MemoryKeyStore>();
    keyStore_ = keyStore.get();
    client_ = std::make_unique<Client>(Client::Setup{address_,
                                                     idiom,
                                                     {size, dark},
                                                     folder + "/standard",
                                                     folder + "/shared",
                                                     folder + "/tiles",
                                                     std::move(keyStore),
                                                     language});
    ASSERT_TRUE(client_->open());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window()));
  }

  void close() { client_.reset(); }

  void receive(const char* url) { client_->answer(url); }

  void follow(const DesktopPreferences& preferences) { client_->mainWindow().followDesktop(preferences); }

  /// Adds that fault to the demo service's.
  void spoil(const std::string& fault) {
    QNetworkAccessManager network;
    QNetworkRequest request(QUrl(QString::fromStdString(address_ + "/control/faults")));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArray("application/json"));
    const std::unique_ptr<QNetworkReply> reply(
        network.post(request, QByteArray::fromStdString('"' + fault + '"')));
    ASSERT_TRUE(QTest::qWaitFor([&] { return reply->isFinished(); }));
    ASSERT_EQ(reply->error(), QNetworkReply::NoError) << reply->readAll().toStdString();
  }

  test::MemoryKeyStore& keyStore() { return *keyStore_; }

  QQuickWindow& window() { return client_->mainWindow().window(); }

  /// Waits until nothing moves.
  void rest() { EXPECT_TRUE(comesToRest(window())); }

  using Match = std::function<bool(QQuickItem&)>;

  static void collect(QQuickItem* item, const Match& match, std::vector<QQuickItem*>& found) {
    if (!item->isVisible() || item->opacity() == 0) return;
    if (match(*item)) found.push_back(item);
    for (QQuickItem* child : item->childItems())
      collect(child, match, found);
  }

  /// The items in view that match, in drawing order.
  std::vector<QQuickItem*> find(const Match& match) {
    std::vector<QQuickItem*> found;
    collect(window().contentItem(), match, found);
    return found;
  }
  std::vector<QQuickItem*> items(const char* property, const char* value) {
    return find(
        [&](QQuickItem& item) { return item.property(property).toString() == QString::fromUtf8(value); });
  }

  bool shows(const char* property, const char* value) { return !items(property, value).empty(); }
  bool waitFor(const char* property, const char* value) {
    return QTest::qWaitFor([&] { return shows(property, value); }, 10'000);
  }
  bool waitForNone(const char* property, const char* value) {
    return QTest::qWaitFor([&] { return !shows(property, value); }, 10'000);
  }

  /// Waits for the item with that label, and until it no longer moves.
  QQuickItem* labelled(const char* label) {
    if (!*label || !waitFor("label", label)) {
      ADD_FAILURE() << "nothing is called \"" << label << "\"";
      return nullptr;
    }
    rest();
    const auto found = items("label", label);
    return found.empty() ? nullptr : found.back();
  }

  void click(const char* label) {
    QQuickItem* item = labelled(label);
    ASSERT_NE(item, nullptr);
    const QPointF middle = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(&window(), Qt::LeftButton, {}, middle.toPoint());
  }

  void drag(QPoint from, QPoint to, int milliseconds = 180) {
    constexpr int steps = 12;
    QTest::mousePress(&window(), Qt::LeftButton, {}, from);
    for (int i = 1; i <= steps; ++i)
      QTest::mouseMove(&window(), from + (to - from) * i / steps, milliseconds / steps);
    QTest::mouseRelease(&window(), Qt::LeftButton, {}, to);
  }

  void type(const char* text) {
    for (const char* c = text; *c; ++c)
      QTest::keyClick(&window(), *c);
  }

  /// From the first start to the list of vehicles.
  void signIn(const char* agree = "I agree", const char* button = "Sign in",
              const char* list = "My Vehicles") {
    click(agree);
    ASSERT_TRUE(waitFor("label", button));
    rest();
    enter(list);
  }

  /// From the screen to sign in to the list of vehicles.
  void enter(const char* list = "My Vehicles") {
    QTest::keyClick(&window(), Qt::Key_Tab);
    type("demo");
    QTest::keyClick(&window(), Qt::Key_Return);
    type("demo");
    QTest::keyClick(&window(), Qt::Key_Return);
    ASSERT_TRUE(waitFor("title", list));
  }

  /// From the list to the readings of its first vehicle.
  void openVehicle(const char* reading = "Odometer") {
    ASSERT_TRUE(waitForRows(21));
    rest();
    QTest::mouseClick(&window(), Qt::LeftButton, {}, {150, 100});
    ASSERT_TRUE(waitFor("text", reading));
    rest();
  }

  bool isChecked(const char* tab) {
    const auto found = items("label", tab);
    return !found.empty() && found.back()->property("checked").toBool();
  }

  /// Waits until the vehicle shows that page alone.
  bool showsPage(const char* tab) {
    return QTest::qWaitFor([&] { return isChecked(tab) && items("wasSeen", "true").size() == 1; });
  }

  QQuickItem* list() {
    const auto found = find([](QQuickItem& item) {
      return item.property("table").isValid() && item.property("count").isValid();
    });
    return found.empty() ? nullptr : found.back();
  }

  bool waitForRows(int least) {
    return QTest::qWaitFor([&] { return list() && list()->property("count").toInt() >= least; }, 60'000);
  }

 private:
  QTemporaryDir settings_;
  QProcess service_;
  static std::string& complaints() {
    static std::string lines;
    return lines;
  }

  std::string address_;
  test::MemoryKeyStore* keyStore_ = nullptr;
  QtMessageHandler before_ = nullptr;
  std::unique_ptr<Client> client_;
};

}  // namespace fleetor
