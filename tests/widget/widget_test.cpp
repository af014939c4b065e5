#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>

#include "app/client.h"
#include "qt/device/single_instance.h"
#include "service/api.h"
#include "shell/choose_vehicle_table_view_controller.h"
#include "shell/login_view_controller.h"
#include "shell/main_view_controller.h"
#include "shell/vehicles_table_view_controller.h"
#include "support/find_screen.h"
#include "support/memory_stores.h"
#include "support/testing.h"

namespace fleetor {
namespace {

constexpr int patience = 20'000;  // milliseconds

QString q(const char* text) {
  return QString::fromUtf8(text);
}

/// A temporary home and session, separate from those of the user who runs the test.
class Session : public testing::Test {
 protected:
  void SetUp() override {
    QDir(home_.path()).mkdir(q("run"));
    QFile(home_.filePath(q("run"))).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QByteArray home = home_.path().toUtf8();
    qputenv("HOME", home);
    qputenv("XDG_RUNTIME_DIR", home + "/run");
    qputenv("XDG_CONFIG_HOME", home + "/config");
    qputenv("XDG_DATA_HOME", home + "/data");
    qputenv("XDG_CACHE_HOME", home + "/cache");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
  }

  static std::unique_ptr<QProcess> start(const char* program, const QStringList& arguments = {}) {
    auto process = std::make_unique<QProcess>();
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process->start(q(program), arguments);
    EXPECT_TRUE(process->waitForStarted());
    return process;
  }
  static void end(std::unique_ptr<QProcess>& process) {
    process->kill();
    process->waitForFinished();
    process.reset();
  }
  static QString onWindowOf(const QProcess& process, const QStringList& commands) {
    QProcess xdotool;
    xdotool.start(q("xdotool"), QStringList{q("search"), q("--all"), q("--onlyvisible"), q("--pid"),
                                            QString::number(process.processId()), q("--name"), q(".")} +
                                    commands);
    xdotool.waitForFinished();
    return QString::fromUtf8(xdotool.readAllStandardOutput()).trimmed();
  }
  template <class Done>
  static bool waitFor(Done done) {
    return QTest::qWaitFor(done, patience);
  }

  QTemporaryDir home_;
};

TEST_F(Session, HasOneClientWhichTakesTheRequestsOfLaterStarts) {
  const QString socket = home_.filePath(q("run/fleetor/client.socket"));
  auto first = start(CLIENT);
  ASSERT_TRUE(waitFor([&] { return QFile::exists(socket); }));
  auto later = std::make_unique<QProcess>();
  later->start(q(CLIENT), {q("--tablet"), q("fleetor:vehicles")});
  ASSERT_TRUE(waitFor([&] { return later->state() == QProcess::NotRunning; })) << "a second window";
  EXPECT_EQ(later->exitCode(), 0);
  EXPECT_THAT(later->readAllStandardError().toStdString(),
              HasSubstr("fleetor: a client is running already and has taken over"));
  EXPECT_EQ(first->state(), QProcess::Running);

  end(first);  // without a chance to clear up
  ASSERT_TRUE(QFile::exists(socket));
  first = start(CLIENT);
  later = start(CLIENT);
  ASSERT_TRUE(waitFor([&] {
    return (first->state() == QProcess::Running) != (later->state() == QProcess::Running);
  })) << "of two that start at once, one gives way";
  end(first);
  end(later);
}

TEST_F(Session, LeavesAReportOfACrashForTheNextStartToPack) {
  const rlimit noCore{0, 0};
  ::setrlimit(RLIMIT_CORE, &noCore);
  // A sanitizer's own handler comes after ours, and would end the process in its way.
  for (const char* name : {"ASAN_OPTIONS", "TSAN_OPTIONS"})
    qputenv(name, qgetenv(name) + ":handle_segv=0");
  const QDir folder(home_.filePath(q("cache/fleetor/fleetor/reports")));

  auto client = start(CLIENT);
  ASSERT_TRUE(waitFor([&] { return !onWindowOf(*client, {}).isEmpty(); })) << "no window";
  const qint64 process = client->processId();
  ASSERT_EQ(::kill(static_cast<pid_t>(process), SIGSEGV), 0);
  ASSERT_TRUE(client->waitForFinished(patience));
  EXPECT_EQ(client->exitStatus(), QProcess::CrashExit);
  EXPECT_EQ(client->exitCode(), SIGSEGV);
  const QStringList left = folder.entryList({q("crash-*-%1.txt").arg(process)}, QDir::Files);
  ASSERT_EQ(left.size(), 1);
  QFile file(folder.filePath(left[0]));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const std::string report = file.readAll().toStdString();
  EXPECT_THAT(report, HasSubstr("\nsignal: 11 SIGSEGV\n"));
  EXPECT_THAT(report, testing::ContainsRegex("\n#[0-9]+ fleetor\\+0x")) << "as far as our own frames";
  EXPECT_THAT(report, testing::EndsWith("\nend\n"));

  client = start(CLIENT);
  const QStringList packed{QFileInfo(left[0]).completeBaseName() + q(".gz")};
  EXPECT_TRUE(waitFor([&] { return folder.entryList(QDir::Files) == packed; }));
  end(client);
}

TEST_F(Session, HasALargerWidgetWhereTextIsLarger) {
  // The desktop whose fonts Qt knows without a plug-in.
  qputenv("XDG_CURRENT_DESKTOP", "KDE");
  qputenv("KDE_SESSION_VERSION", "5");
  QDir(home_.path()).mkdir(q("config"));
  constexpr int normal = 168;
  for (const char* points : {"10", "20"}) {
    QFile desktop(home_.filePath(q("config/kdeglobals")));
    ASSERT_TRUE(desktop.open(QIODevice::WriteOnly));
    desktop.write(QByteArray("[General]\nfont=Sans,") + points + ",-1,5,50,0,0,0,0,0\n");
    desktop.close();
    auto widget = start(WIDGET);
    const auto height = [&] {
      const QString output = onWindowOf(*widget, {q("getwindowgeometry"), q("--shell")});
      return QRegularExpression(q("HEIGHT=(\\d+)")).match(output).captured(1).toInt();
    };
    const bool isLarge = points[0] == '2';
    EXPECT_TRUE(waitFor([&] { return isLarge ? height() > normal : height() == normal; })) << height();
    end(widget);
  }
  qunsetenv("XDG_CURRENT_DESKTOP");
  qunsetenv("KDE_SESSION_VERSION");
}

/// A client in this process, signed in to a private demo service, that answers later starts as the program
/// does.
class WidgetOfSignedInUser : public Session {
 protected:
  void SetUp() override {
    Session::SetUp();
    // What an installation does, for the programs of this build.
    QFile entry(q(DESKTOP_ENTRY));
    ASSERT_TRUE(entry.open(QIODevice::ReadOnly));
    const QString applications = home_.filePath(q("data/applications"));
    QDir().mkpath(applications);
    QFile here(applications + q("/fleetor.desktop"));
    ASSERT_TRUE(here.open(QIODevice::WriteOnly));
    here.write(entry.readAll().replace("Exec=fleetor", "Exec=" CLIENT));
    here.close();
    ASSERT_EQ(QProcess::execute(q("update-desktop-database"), {applications}), 0);

    service_ = start(DEMO_SERVICE, {q("--port"), q("0")});
    QByteArray output;
    while (!output.contains('\n') && service_->waitForReadyRead(patience))
      output += service_->readAllStandardOutput();
    const auto address = QRegularExpression(q("http://[0-9.:]+")).match(QString::fromUtf8(output));
    ASSERT_TRUE(address.hasMatch()) << output.toStdString();

    settings_ = home_.filePath(q("config/fleetor/fleetor/group.fleetor.json"));
    Client::Setup setup;
    setup.serviceURL = address.captured().toStdString();
    setup.standardSettings = home_.filePath(q("standard.json")).toStdString();
    setup.sharedSettings = settings_.toStdString();
    setup.tileFolder = home_.filePath(q("tiles")).toStdString();
    setup.keyStore = std::make_unique<test::MemoryKeyStore>();
    FileSettings(setup.standardSettings).setObject("TermsAccepted", "TermsAccepted");
    instance_ = std::make_unique<SingleInstance>(runtimePath("client"));
    ASSERT_TRUE(instance_->enter({}));
    client_ = std::make_unique<Client>(std::move(setup));
    ASSERT_TRUE(client_->open());
    instance_->listen([this](const std::string& url) { client_->answer(url); });

    ASSERT_TRUE(waitFor([&] { return find<LoginViewController>() != nullptr; }));
    auto& login = *find<LoginViewController>();
    login.loginTextField().setText("demo");
    login.passwordTextField().setText("demo");
    login.loginButton().tap();
    ASSERT_TRUE(waitFor([&] { return find<MainViewController>() != nullptr; }));
  }

  void TearDown() override {
    if (widget_) end(widget_);
    client_.reset();
    instance_.reset();
    if (service_) end(service_);
  }

  template <class Screen>
  Screen* find() {
    return test::findScreen<Screen>(client_->application().window().rootViewController().get());
  }

  QJsonObject settings() {
    QFile file(settings_);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
  }

  QString onWidget(const QStringList& commands) { return onWindowOf(*widget_, commands); }
  /// The title of the widget's window, which is the large text in it.
  QString title() { return onWidget({q("getwindowname")}); }

  void choose(int row) {
    ASSERT_TRUE(waitFor([&] {
      auto* chooser = find<ChooseVehicleTableViewController>();
      return chooser && chooser->itemsTableView().numberOfRows() > row + 1;
    }));
    find<ChooseVehicleTableViewController>()->itemsTableView().tap(row);
    ASSERT_TRUE(waitFor([&] { return !find<ChooseVehicleTableViewController>(); }));
  }

  QString settings_;
  std::unique_ptr<QProcess> service_, widget_;
  std::unique_ptr<SingleInstance> instance_;
  std::unique_ptr<Client> client_;
};

TEST_F(WidgetOfSignedInUser, ShowsWhatIsChosenThroughTheDesktopUntilTheUserSignsOut) {
  widget_ = start(WIDGET);
  ASSERT_TRUE(waitFor([&] { return title() == q("No vehicle chosen"); })) << title().toStdString();

  // A tap on the widget: desktop, a later start of the client, this client. The window has its name before it
  // has drawn anything that can be tapped.
  const auto tap = [&] {
    onWidget({q("mousemove"), q("--window"), q("%1"), q("160"), q("80"), q("click"), q("1")});
    return QTest::qWaitFor([&] { return find<ChooseVehicleTableViewController>() != nullptr; }, 5'000);
  };
  ASSERT_TRUE(tap() || tap());
  choose(2);
  const QJsonObject first = settings();
  const QString name = first[q("WidgetReading")][q("name")].toString();
  EXPECT_EQ(first[q("WidgetReading")][q("vehicle")].toString(),
            QString::number(first[q("WidgetVehicle")].toInteger()));
  ASSERT_FALSE(name.isEmpty());
  EXPECT_TRUE(waitFor([&] { return title() == name; })) << title().toStdString();

  // The chosen vehicle is opened in the client: its reading arrives.
  find<VehiclesTableViewController>()->itemsTableView().tap(2);
  EXPECT_TRUE(waitFor([&] { return title().startsWith(name + q(", ")) && title().endsWith(q(" km/h")); }))
      << title().toStdString();
  EXPECT_FALSE(settings()[q("WidgetReading")][q("street")].toString().isEmpty());

  API::logoutUser();
  EXPECT_TRUE(waitFor([&] { return title() == q("No vehicle chosen"); })) << title().toStdString();
  EXPECT_TRUE(settings().isEmpty());
}

}  // namespace
}  // namespace fleetor

int main(int argc, char** argv) {
  QGuiApplication application(argc, argv);
  QGuiApplication::setOrganizationName(QStringLiteral("fleetor"));
  QGuiApplication::setApplicationName(QStringLiteral("fleetor"));
  QGuiApplication::setQuitOnLastWindowClosed(false);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
