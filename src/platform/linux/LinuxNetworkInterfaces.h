#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/NetworkInterfaces.h"
#include "platform/linux/KeptFile.h"
#include "platform/linux/NetDevLayers.h"

namespace kestrune::linux_platform {

// The IPv4 addresses of this process's network namespace, in the kernel's order. Absent: they can't be read.
std::optional<std::vector<platform::AddressEntry>> ownAddresses();

// proc/net/dev and sys/class/net below `root`: the interfaces of this process's network namespace.
class LinuxNetworkInterfaces final : public platform::NetworkInterfaces {
 public:
  using AddressSource = std::function<std::optional<std::vector<platform::AddressEntry>>()>;

  explicit LinuxNetworkInterfaces(const std::string& root = "/", AddressSource addresses = ownAddresses);

  // Which interfaces are carried by others is looked up when an interface is new, and for all of them in each
  // call of `interfaces`.
  std::optional<std::vector<platform::LinkEntry>> links() override;
  std::optional<platform::InterfaceList> interfaces() override;
  const platform::InterfaceNaming& naming() const override { return naming_; }

 private:
  NetDevLayers::Carried knownCarried();
  void setCarried(NetDevLayers::Carried carried);

  const platform::InterfaceNaming naming_;
  const NetDevLayers layers_;
  const AddressSource addresses_;
  const std::string path_;
  KeptFile file_;  // of `links` alone
  std::mutex mutex_;
  NetDevLayers::Carried carried_;  // guarded by the mutex
};

}  // namespace kestrune::linux_platform
