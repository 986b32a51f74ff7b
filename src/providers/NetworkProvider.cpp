#include "providers/NetworkProvider.h"

#include <utility>

#include "providers/InterfaceNames.h"
#include "runtime/Checked.h"
#include "runtime/Polling.h"
#include "runtime/Utf8.h"

namespace kestrune {
namespace {

using platform::LocationAuthorization;

constexpr double secondsBetweenRefreshes = 15.0;
constexpr const char* detecting = "Detecting…";
constexpr const char* usualWifiName = "en0";

std::uint64_t add(std::uint64_t sum, std::uint64_t bytes) {
  return checkedAdd(sum, bytes, "the sum of the interfaces' byte counters");
}

}  // namespace

NetworkSnapshot NetworkSnapshot::empty() {
  NetworkSnapshot snapshot;
  snapshot.interfaceName = detecting;
  return snapshot;
}

void LocationWatcher::locationManagerDidChangeAuthorization(LocationAuthorization status) const {
  const bool isAuthorized = status == LocationAuthorization::authorizedAlways ||
                            status == LocationAuthorization::authorizedWhenInUse;
  if (isAuthorized && onAuthorized) onAuthorized();
}

NetworkProvider::NetworkProvider(MainLoop& loop, const Services& services)
    : loop_(loop), services_(services) {
  cached_.label = detecting;
}

NetworkProvider::~NetworkProvider() {
  task_.cancel();
}

void NetworkProvider::start(Duration interval) {
  watchLocation();
  startPolling(loop_, shared_from_this(), task_, interval, [this] {
    readCounters();
    refreshConnection();
  });
}

void NetworkProvider::watchLocation() {
  locationWatcher_.onAuthorized = [&loop = loop_, weak = weak_from_this()] {
    reloadAfterAuthorization(loop, weak);
  };
  // The watcher stays set after the provider is destroyed: by then the services may be gone, so the
  // destructor can't remove it.
  services_.location.setWatcher([weak = weak_from_this(), &location = services_.location] {
    if (const auto strong = weak.lock()) {
      strong->locationWatcher_.locationManagerDidChangeAuthorization(location.status());
    }
  });
  services_.location.request();
}

Task NetworkProvider::reloadAfterAuthorization(MainLoop&, std::weak_ptr<NetworkProvider> provider) {
  if (const auto strong = provider.lock()) strong->reloadConnection();
  co_return;
}

void NetworkProvider::tick() {
  const Clock& clock = loop_.clock();
  if (clock.now() - connectionRefreshed_ > secondsBetweenRefreshes && !isRefreshing_) refreshConnection();
  auto snapshot = sampleNow();
  if (!snapshot) return;
  current.set(*std::move(snapshot));
  history.modify([&](auto& ring) { ring.append({clock.now(), *current}); });
  uploadHistory.modify([&](auto& ring) { ring.append({clock.now(), current->uploadBytesPerSec}); });
  downloadHistory.modify([&](auto& ring) { ring.append({clock.now(), current->downloadBytesPerSec}); });
}

// Leaves the last reading as it is on failure.
bool NetworkProvider::readCounters() {
  const auto links = services_.interfaces.links();
  if (!links || links->empty()) return false;
  CounterPair sums{.time = loop_.clock().now()};
  for (const auto& link : *links) {
    if (!link.counters || !isCounted(link, services_.interfaces.naming())) continue;
    sums.first = add(sums.first, link.counters->sent);
    sums.second = add(sums.second, link.counters->received);
  }
  bytes_ = sums;
  return true;
}

std::optional<NetworkSnapshot> NetworkProvider::sampleNow() {
  const CounterPair before = bytes_;
  if (!readCounters()) return std::nullopt;
  const auto growth = bytes_.growthSince(before);
  if (!growth) return *current;
  NetworkSnapshot snapshot;
  snapshot.uploadBytesPerSec = growth->firstPerSecond();
  snapshot.downloadBytesPerSec = growth->secondPerSecond();
  copyFacts(snapshot);
  return snapshot;
}

void NetworkProvider::refreshConnection() {
  isRefreshing_ = true;
  findFacts(loop_, weak_from_this(), services_, askConnection());
}

void NetworkProvider::reloadConnection() {
  connectionRefreshed_ = Date::distantPast;
  refreshConnection();
}

ConnectionQuestion NetworkProvider::askConnection() {
  ConnectionQuestion question;
  question.wifiName = usualWifiName;
  if (const auto interface = services_.wifi.defaultInterface()) {
    if (interface->name) question.wifiName = *interface->name;
    question.stationMode = interface->isStation;
    if (interface->ssid) question.wifiSSID = repairedUtf8(*interface->ssid);
  }
  for (const auto& name : services_.wifi.interfaceNames()) {
    if (name) question.wifiNames.insert(*name);
  }
  question.authStatus = services_.location.status();
  return question;
}

Task NetworkProvider::findFacts(MainLoop&, std::weak_ptr<NetworkProvider> provider, Services services,
                                ConnectionQuestion question) {
  auto work = [services, question = std::move(question)] {
    return findConnectionFacts(question, services.interfaces, services.wifi);
  };
  ConnectionFacts facts = co_await background(services.lane, std::move(work));
  if (const auto strong = provider.lock()) strong->publish(std::move(facts));
}

void NetworkProvider::publish(ConnectionFacts facts) {
  cached_ = std::move(facts);
  connectionRefreshed_ = loop_.clock().now();
  isRefreshing_ = false;
  current.modify([&](NetworkSnapshot& snapshot) { copyFacts(snapshot); });
}

void NetworkProvider::copyFacts(NetworkSnapshot& snapshot) const {
  snapshot.ssid = cached_.ssid;
  snapshot.interfaceName = cached_.label;
  snapshot.needsLocation = cached_.needsLocation;
  snapshot.ipAddress = cached_.ipAddress;
  snapshot.interfaces = cached_.interfaces;
}

}  // namespace kestrune
