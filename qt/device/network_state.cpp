#include "qt/device/network_state.h"

#include <QNetworkInformation>
#include <QNetworkInterface>
#include <QObject>
#include <QTimer>
#include <algorithm>

#include "qt/device/network_interfaces.h"

namespace fleetor {
namespace {

constexpr int kLookAgainInMs = 5000;

bool isReachableState(QNetworkInformation::Reachability state) {
  return state != QNetworkInformation::Reachability::Unknown &&
         state != QNetworkInformation::Reachability::Disconnected;
}

}  // namespace

bool hasNetworkInterface() {
  const auto interfaces = QNetworkInterface::allInterfaces();
  return std::any_of(interfaces.begin(), interfaces.end(), [](const QNetworkInterface& interface) {
    const auto flags = interface.flags();
    return flags.testFlag(QNetworkInterface::IsRunning) && !flags.testFlag(QNetworkInterface::IsLoopBack) &&
           !interface.addressEntries().isEmpty();
  });
}

struct SystemReachability::Watch {
  QObject context;
  QTimer timer;
};

SystemReachability::SystemReachability() = default;
SystemReachability::~SystemReachability() = default;

void SystemReachability::startMonitoring() {
  if (watch_) return;
  watch_ = std::make_unique<Watch>();
  if (QNetworkInformation::loadBackendByFeatures(QNetworkInformation::Feature::Reachability)) {
    QNetworkInformation* information = QNetworkInformation::instance();
    reachable_ = isReachableState(information->reachability());
    QObject::connect(
        information, &QNetworkInformation::reachabilityChanged, &watch_->context,
        [this](QNetworkInformation::Reachability state) { reachable_ = isReachableState(state); });
  } else {
    reachable_ = hasNetworkInterface();
    QObject::connect(&watch_->timer, &QTimer::timeout, &watch_->context,
                     [this] { reachable_ = hasNetworkInterface(); });
    watch_->timer.start(kLookAgainInMs);
  }
}

}  // namespace fleetor
