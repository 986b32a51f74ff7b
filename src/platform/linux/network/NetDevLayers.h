#pragma once

#include <functional>
#include <map>
#include <span>
#include <string>

#include "platform/NetworkInterfaces.h"

namespace kestrune::platform {

// Which interfaces are stacked on others, judged by sys/class/net below `root` rather than by name: those
// with lower interfaces (VLAN, bond, bridge, macvlan …), and those whose bytes continue inside others' or
// through them (tun, tap, WireGuard, a bridge without ports …). Any thread.
class NetDevLayers {
 public:
  using Carried = std::map<std::string, bool, std::less<>>;  // by name

  explicit NetDevLayers(std::string root) : root_(std::move(root)) {}

  // `links` is the whole list. A dial-up connection (ppp) is carried if a port with hardware is connected, as
  // it is then PPPoE or a VPN. Otherwise it runs over a modem's serial line, which isn't an interface.
  bool isCarried(const std::string& name, std::span<const LinkEntry> links) const;

  // The same for the whole list. A dial-up connection stays as it was in `before`: if it began to count when
  // a cable is pulled, all that it ever moved would enter the sum at once.
  Carried examine(std::span<const LinkEntry> links, const Carried& before) const;

 private:
  enum class Kind { port, layer, dialUp };
  Kind kindOf(const std::string& name) const;
  bool isConnectedPort(const std::string& name) const;
  bool isCarried(Kind kind, const std::string& name, std::span<const LinkEntry> links) const;
  std::string folderOf(const std::string& name) const;

  std::string root_;
};

}  // namespace kestrune::platform
