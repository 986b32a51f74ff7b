#include "platform/linux/network/LinuxNetworkInterfaces.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>
#include <utility>

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <netinet/in.h>

#include "platform/linux/files/Files.h"
#include "platform/linux/network/NetDev.h"

namespace kestrune::platform {
namespace {

// Usual prefixes of interfaces whose bytes show on a port too, or stay in the machine. The kernel usually
// identifies these as well, where its files can be read. No prefix may match a port: en…, eth, wl…, wlan,
// ww…, wwan, usb, ib, bnep and br0 (which may be anything) are not here.
InterfaceNaming makeNaming() {
  InterfaceNaming naming;
  naming.wired = {"eth"};
  const std::vector<std::string> tunnels = {"tun", "tap", "wg", "tailscale", "zt", "nordlynx", "proton"};
  naming.vpn = tunnels;
  // Counted, since over a modem's serial line it is the only interface.
  naming.vpn.emplace_back("ppp");
  naming.uncounted = {
      // containers and virtual machines
      "docker", "br-", "veth", "cni", "podman", "lxc", "lxdbr", "incusbr", "cali", "cilium", "flannel",
      "kube-", "weave", "virbr", "vnet", "vmnet", "vboxnet", "ovs-",
      // made of other interfaces
      "bond", "team", "vlan", "macvlan", "macvtap", "ipvlan", "ipvtap", "macsec", "vrf", "teql",
      // tunnels of the kernel
      "gre", "erspan", "sit", "ip6tnl", "ip6gre", "ip6_vti", "ip_vti", "vti", "xfrm", "ipip", "vxlan",
      "geneve", "genev_sys", "l2tp", "gtp",
      // without a wire
      "dummy", "ifb", "imq", "nlmon", "vsockmon", "vcan", "vxcan"};
  naming.uncounted.insert(naming.uncounted.end(), tunnels.begin(), tunnels.end());
  return naming;
}

bool isListed(const std::vector<LinkEntry>& links, std::string_view name) {
  return std::ranges::find(links, name, &LinkEntry::name) != links.end();
}

// The kernel reports an address's label, such as "eth0:1", in place of the interface's name.
void replaceLabel(AddressEntry& address, const std::vector<LinkEntry>& links) {
  if (isListed(links, address.interfaceName)) return;
  const std::string_view name =
      std::string_view(address.interfaceName).substr(0, address.interfaceName.find(':'));
  if (isListed(links, name)) address.interfaceName.resize(name.size());
}

std::optional<std::string> dotted(const sockaddr& address) {
  if (address.sa_family != AF_INET) return std::nullopt;
  const auto& inet = reinterpret_cast<const sockaddr_in&>(address);
  std::array<char, INET_ADDRSTRLEN> text{};
  if (inet_ntop(AF_INET, &inet.sin_addr, text.data(), text.size()) == nullptr) return std::nullopt;
  return text.data();
}

}  // namespace

std::optional<std::vector<AddressEntry>> ownAddresses() {
  ifaddrs* first = nullptr;
  if (getifaddrs(&first) != 0) return std::nullopt;
  const std::unique_ptr<ifaddrs, void (*)(ifaddrs*)> list(first, freeifaddrs);
  std::vector<AddressEntry> addresses;
  for (const ifaddrs* entry = first; entry != nullptr; entry = entry->ifa_next) {
    if (entry->ifa_addr == nullptr) continue;
    if (auto text = dotted(*entry->ifa_addr)) {
      addresses.push_back({.interfaceName = entry->ifa_name, .address = *std::move(text)});
    }
  }
  return addresses;
}

LinuxNetworkInterfaces::LinuxNetworkInterfaces(const std::string& root, AddressSource addresses)
    : naming_(makeNaming()),
      layers_(root),
      addresses_(std::move(addresses)),
      path_(below(root, "proc/net/dev")),
      file_(path_) {}

std::optional<std::vector<LinkEntry>> LinuxNetworkInterfaces::links() {
  const auto text = file_.read();
  if (!text) return std::nullopt;
  auto links = parseNetDev(*text);
  const std::lock_guard lock(mutex_);
  for (auto& link : links) {
    auto known = carried_.find(link.name);
    if (known == carried_.end()) {
      known = carried_.emplace(link.name, layers_.isCarried(link.name, links)).first;
    }
    link.isCarriedByAnother = known->second;
  }
  if (carried_.size() > links.size()) {
    std::erase_if(carried_, [&](const auto& entry) { return !isListed(links, entry.first); });
  }
  return links;
}

std::optional<InterfaceList> LinuxNetworkInterfaces::interfaces() {
  const auto text = readFile(path_);
  auto addresses = addresses_();
  if (!text || !addresses) return std::nullopt;
  InterfaceList list{.links = parseNetDev(*text), .addresses = *std::move(addresses)};
  // Without the lock: the main thread must not wait for it while files are read.
  NetDevLayers::Carried carried = layers_.examine(list.links, knownCarried());
  for (auto& link : list.links) link.isCarriedByAnother = carried.at(link.name);
  for (auto& address : list.addresses) replaceLabel(address, list.links);
  setCarried(std::move(carried));
  return list;
}

NetDevLayers::Carried LinuxNetworkInterfaces::knownCarried() {
  const std::lock_guard lock(mutex_);
  return carried_;
}

void LinuxNetworkInterfaces::setCarried(NetDevLayers::Carried carried) {
  const std::lock_guard lock(mutex_);
  carried_.swap(carried);
}

}  // namespace kestrune::platform
