#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/NetworkInterfaces.h"
#include "platform/linux/files/KeptFile.h"
#include "platform/linux/network/NetDevLayers.h"

namespace kestrune::platform {

// The IPv4 addresses of this process's network namespace, in the kernel's order. Absent: they can't be read.
std::optional<std::vector<AddressEntry>> ownAddresses();

// The interfaces of this process's network namespace, from proc/net/dev and sys/class/net below `root`.
class LinuxNetworkInterfaces final : public NetworkInterfaces {
 public:
  using AddressSource = std::function<std::optional<std::vector<AddressEntry>>()>;

  explicit LinuxNetworkInterfaces(const std::string& root = "/", AddressSource addresses = ownAddresses);

  // Looks up which interfaces are carried by others: `links` for new ones, `interfaces` for all.
  std::optional<std::vector<LinkEntry>> links() override;
  std::optional<InterfaceList> interfaces() override;
  const InterfaceNaming& naming() const override { return naming_; }

 private:
  NetDevLayers::Carried knownCarried();
  void setCarried(NetDevLayers::Carried carried);

  const InterfaceNaming naming_;
  const NetDevLayers layers_;
  const AddressSource addresses_;
  const std::string path_;
  KeptFile file_;  // for `links` only
  std::mutex mutex_;
  NetDevLayers::Carried carried_;  // guarded by the mutex
};

}  // namespace kestrune::platform
