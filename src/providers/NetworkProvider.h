#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/LocationPermission.h"
#include "platform/NetworkInterfaces.h"
#include "platform/WiFi.h"
#include "providers/ConnectionFacts.h"
#include "providers/CounterPair.h"
#include "providers/HistoryRing.h"
#include "runtime/Published.h"
#include "runtime/Task.h"
#include "runtime/WorkLane.h"

namespace kestrune {

struct NetworkSnapshot {
  double uploadBytesPerSec = 0;    // of all counted interfaces together
  double downloadBytesPerSec = 0;  // of all counted interfaces together
  std::optional<std::string> ssid;
  // "Wi-Fi", "Ethernet", "Not connected", or "Detecting…" until it is known; never the name of a device.
  std::string interfaceName;
  bool needsLocation = false;
  std::optional<std::string> ipAddress;  // dotted IPv4 address of the connecting interface
  std::vector<InterfaceInfo> interfaces;

  // Shown until real data replaces it.
  static NetworkSnapshot empty();
};

// Calls `onAuthorized` when the user grants the location permission.
class LocationWatcher {
 public:
  std::function<void()> onAuthorized;

  void locationManagerDidChangeAuthorization(platform::LocationAuthorization status) const;
};

// Computes rates from the byte counters of the interfaces once per interval, and refreshes the connection
// every 15 s off the main thread. A failed read keeps the last figures. Main thread only.
class NetworkProvider : public std::enable_shared_from_this<NetworkProvider> {
 public:
  struct Services {
    // Both are used in the lane, too.
    platform::NetworkInterfaces& interfaces;
    platform::WiFi& wifi;
    platform::LocationPermission& location;
    WorkLane& lane;  // for refreshes of the connection, which may take long
  };

  // Reads nothing. Loop and services must outlive the provider and the lane's work.
  NetworkProvider(MainLoop& loop, const Services& services);
  // Stops polling.
  ~NetworkProvider();
  NetworkProvider(const NetworkProvider&) = delete;
  NetworkProvider& operator=(const NetworkProvider&) = delete;

  // Asks for permission, reads the counters, starts a refresh of the connection, and then ticks once per
  // interval: the first rate covers a whole interval.
  void start(Duration interval);
  void tick();
  // Starts a refresh of the connection, even while another one is running. The last one to finish counts.
  void refreshConnection();
  // Like `refreshConnection`, but forgets when the connection was last refreshed.
  void reloadConnection();

  Published<NetworkSnapshot> current{NetworkSnapshot::empty()};
  Published<HistoryRing<NetworkSnapshot>> history{HistoryRing<NetworkSnapshot>(60)};
  Published<HistoryRing<double>> uploadHistory{HistoryRing<double>(86400)};  // bytes per second at each tick
  Published<HistoryRing<double>> downloadHistory{HistoryRing<double>(86400)};
  bool paused = false;  // the polling loop skips its ticks while set

 private:
  void watchLocation();
  bool readCounters();
  std::optional<NetworkSnapshot> sampleNow();
  ConnectionQuestion askConnection();
  void publish(ConnectionFacts facts);
  void copyFacts(NetworkSnapshot& snapshot) const;
  static Task findFacts(MainLoop& loop, std::weak_ptr<NetworkProvider> provider, Services services,
                        ConnectionQuestion question);
  static Task reloadAfterAuthorization(MainLoop& loop, std::weak_ptr<NetworkProvider> provider);

  MainLoop& loop_;
  Services services_;
  Task task_;
  CounterPair bytes_;  // sent and received, of all counted interfaces, at the last successful reading
  ConnectionFacts cached_;
  Date connectionRefreshed_ = Date::distantPast;  // when the last refresh finished
  bool isRefreshing_ = false;
  LocationWatcher locationWatcher_;
};

}  // namespace kestrune
