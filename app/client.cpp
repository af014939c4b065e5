#include "app/client.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QLocale>
#include <QScreen>
#include <QStandardPaths>
#include <QUrl>
#include <cstdio>
#include <utility>

#include "app/heap.h"
#include "app/options.h"
#include "model/vehicle_records.h"
#include "qt/device/url_programs.h"
#include "qt/page_printer.h"
#include "service/api.h"
#include "shell/login_view_controller.h"
#include "shell/main_storyboard.h"
#include "vehicle/notifications.h"

namespace fleetor {

namespace {
constexpr Seconds settled{2};  ///< after which the screens that were left are destroyed
constexpr QSize padSize{1024, 768};
}  // namespace

Client::Client(Setup setup)
    : serviceURL_(std::move(setup.serviceURL)),
      window_(setup.window),
      border_(setup.border),
      standardSettings_(std::move(setup.standardSettings)),
      sharedSettings_(std::move(setup.sharedSettings)),
      keyStore_(std::move(setup.keyStore)),
      device_({setup.idiom, ":/documents", setup.language,
               [](const std::string& url) { QDesktopServices::openUrl(QUrl(QString::fromStdString(url))); },
               hasProgramForScheme,
               [](const std::string& text) {
                 QGuiApplication::clipboard()->setText(QString::fromStdString(text));
               },
               &standardSettings_}),
      log_(LogSink::streamFromEnvironment()),
      widgetReading_(notificationCenter_, sharedSettings_),
      queues_(std::in_place),
      networkUse_(*queues_),
      documents_(*queues_, QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString(),
                 pdfOf),
      kept_(setup.keptFleet.empty()
                ? nullptr
                : std::make_unique<KeptFleet>(*queues_, clock_, *keyStore_, setup.keptFleet,
                                              [this](KeptFleet::Problem problem) { handle(problem); })),
      transport_(std::in_place),
      reportPost_(std::in_place, *queues_, *transport_, setup.reports),
      usage_(setup.reports, clock_.now()),
      tiles_(TileAddresses::compiledIn(serviceURL_), QString::fromStdString(setup.tileFolder)),
      environment_{*queues_,    device_, clock_,  notificationCenter_,
                   appearance_, nullptr, nullptr, &documents_},
      storyboard_(makeMainStoryboard(environment_, standardSettings_, sharedSettings_, kept_.get())),
      delegate_(environment_, standardSettings_, serviceURL_) {
  // Dates, numbers and the direction in which everything is laid out.
  const QLocale locale(QString::fromStdString(setup.language));
  QLocale::setDefault(locale);
  QGuiApplication::setLayoutDirection(locale.textDirection());
  const QScreen* const screen = QGuiApplication::primaryScreen();
  device_.setScreen(window_.size.width(), window_.size.height(), screen ? screen->devicePixelRatio() : 1);
  API::install({*queues_, *transport_, *keyStore_, sharedSettings_, reachability_, networkUse_, log_, device_,
                [this](const std::string& text, double seconds, bool rounded) {
                  if (environment_.window) environment_.window->showToast(text, seconds, rounded);
                },
                [this] {
                  widgetReading_.forgetUnlessChosen();
                  if (usage_.isCounting() && API::isLogged()) usage_.count("signed in");
                  if (environment_.application) delegate_.showMainOrLogin();
                },
                [this] {
                  if (kept_) kept_->forget();
                }});
  keyStore_->listen(&*queues_, [this](KeyStoreEvent event) { handle(event); });
  application_.emplace(environment_, storyboard_, delegate_);
  networkUse_.onChange = [this](bool visible) {
    if (environment_.window) environment_.window->progressOverlay().setVisible(visible);
  };
  if (usage_.isCounting())
    notificationCenter_.addObserver(
        this, ScreenDidAppearNotification, [this](const Notification& notification) {
          usage_.count("screen " + std::any_cast<const std::string&>(notification.object));
        });
  notificationCenter_.addObserver(this, UIApplicationDidEnterBackgroundNotification,
                                  [this](const Notification&) {
                                    tiles_.memory().dropUnused();
                                    queues_->mainAfter(settled, returnFreeMemory);
                                  });
  // Whatever kept the service from answering most likely kept the tiles from coming too.
  notificationCenter_.addObserver(
      this, kFleetorNotificationLive, [this, failed = false](const Notification& notification) mutable {
        const bool succeeded = std::any_cast<std::shared_ptr<const Live>>(&notification.object) != nullptr;
        if (succeeded && failed) tiles_.noteServiceBack();
        failed = !succeeded;
      });
}

Client::~Client() {
  notificationCenter_.removeObserver(this);
  classWatch_.reset();
  mainWindow_.reset();
  API::shutDown();
  keyStore_->listen(nullptr, {});
  application_.reset();
  kept_.reset();
  reportPost_.reset();
  transport_.reset();
  queues_.reset();
}

// Until the launch screen has gone, the main screen is still to be chosen.
void Client::handle(KeyStoreEvent event) {
  if (event == KeyStoreEvent::notKept)
    return API::displayError(device_.localizedString(
        "Your sign-in could not be stored, you will have to sign in again next time"));
  const auto token = API::keychain().objectForKey(sec::valueData);
  API::requestAuthForToken(token);
  if (dynamic_cast<LoginViewController*>(environment_.window->rootViewController().get()))
    API::loginUserWithToken(*token);
}

void Client::handle(KeptFleet::Problem problem) {
  if (problem == KeptFleet::Problem::unwritten) {
    std::fputs("fleetor: the vehicles cannot be kept for use without a network\n", stderr);
    return;
  }
  std::fputs(
      "fleetor: the file of the vehicles kept for use without a network was damaged and is set aside\n",
      stderr);
  API::displayError(device_.localizedString("The vehicles kept for use without a network were damaged"));
}

bool Client::open() {
  reportPost_->offer(clock_.now());
  usage_.count("started");
  application_->launch();
  classWatch_.emplace(environment_, border_, [this](Idiom idiom) {
    device_.setIdiom(idiom);
    delegate_.changeOver();
  });
  mainWindow_.emplace(*application_, environment_, tiles_, window_);
  return mainWindow_->isOpen();
}

void Client::answer(const std::string& request) {
  mainWindow_->comeForward();
  if (const auto idiom = deviceClassNamed(request))
    become(*idiom);
  else if (!request.empty() && !request.starts_with("--"))
    application_->receiveURL(request);
}

void Client::become(Idiom idiom) {
  classWatch_->choose(idiom);
  if (idiom == Idiom::pad) mainWindow_->growTo(padSize);
}

}  // namespace fleetor
