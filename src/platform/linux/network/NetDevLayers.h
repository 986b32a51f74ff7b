#pragma once

#include <functional>
#include <map>
#include <span>
#include <string>

#include "platform/NetworkInterfaces.h"

namespace kestrune::platform {

// Which interfaces stand on others, by what the kernel tells in sys/class/net below `root` whatever they are
// called: those with lower ones (VLAN, bond, bridge, macvlan …), and those whose bytes go on inside others'
// or through them (tun, tap, WireGuard, a bridge without ports …). Any thread.
class NetDevLayers {
 public:
  using Carried = std::map<std::string, bool, std::less<>>;  // by name

  explicit NetDevLayers(std::string root) : root_(std::move(root)) {}

  // `links` is the whole list. A dial-up connection (ppp) is carried if a port with hardware is connected:
  // then it is PPPoE or a VPN. If none is, it runs over a modem's serial line, which is no interface.
  bool isCarried(const std::string& name, std::span<const LinkEntry> links) const;

  // The same for all of the list. A dial-up connection stays what it was in `before`: were it let in when a
  // cable is pulled, all that it ever moved would enter a sum at once.
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
