#include "platform/linux/network/NetDevLayers.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

#include <dirent.h>

#include "platform/linux/files/Directory.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/files/Text.h"

namespace kestrune::platform {
namespace {

// The kernel's types of interfaces that are never a port themselves, even without an interface below.
constexpr std::array<std::string_view, 10> layeredTypes = {
    "bond", "bridge", "dsa", "geneve", "hsr", "l2tpeth", "macsec", "vlan", "vxlan", "wireguard"};

// The DEVTYPE of an interface's uevent file; empty if it has no special type.
std::string deviceType(const std::string& folder) {
  return std::string(lineAfter(readText(folder + "/uevent"), "DEVTYPE="));
}

// True if the kernel lists an interface below, or a program moves the packets (tun, tap).
bool standsOnAnother(const std::string& folder) {
  const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(folder.c_str()), closedir);
  if (!directory) return false;
  while (const dirent* entry = readdir(directory.get())) {
    const std::string_view name(static_cast<const char*>(entry->d_name));
    if (name.starts_with("lower_") || name == "tun_flags") return true;
  }
  return false;
}

}  // namespace

bool NetDevLayers::isCarried(const std::string& name, std::span<const LinkEntry> links) const {
  return isCarried(kindOf(name), name, links);
}

NetDevLayers::Carried NetDevLayers::examine(std::span<const LinkEntry> links, const Carried& before) const {
  Carried carried;
  for (const auto& link : links) {
    const Kind kind = kindOf(link.name);
    const auto known = kind == Kind::dialUp ? before.find(link.name) : before.end();
    carried[link.name] = known == before.end() ? isCarried(kind, link.name, links) : known->second;
  }
  return carried;
}

bool NetDevLayers::isCarried(Kind kind, const std::string& name, std::span<const LinkEntry> links) const {
  if (kind != Kind::dialUp) return kind == Kind::layer;
  return std::ranges::any_of(
      links, [&](const auto& link) { return link.name != name && isConnectedPort(link.name); });
}

NetDevLayers::Kind NetDevLayers::kindOf(const std::string& name) const {
  const std::string folder = folderOf(name);
  const std::string type = deviceType(folder);
  if (type == "ppp") return Kind::dialUp;
  const bool isLayered = std::ranges::find(layeredTypes, type) != layeredTypes.end();
  return isLayered || standsOnAnother(folder) ? Kind::layer : Kind::port;
}

bool NetDevLayers::isConnectedPort(const std::string& name) const {
  const std::string folder = folderOf(name);
  return exists(folder + "/device") && readText(folder + "/carrier") == "1";
}

std::string NetDevLayers::folderOf(const std::string& name) const {
  return below(root_, "sys/class/net/" + name);
}

}  // namespace kestrune::platform
