#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "platform/linux/files/UniqueFd.h"

namespace kestrune::test {

// Two network namespaces of this process, near and far, joined by a virtual cable. Its ends are called eth0
// and have the addresses 10.0.0.1/24 (near) and 10.0.0.2/24 (far). The process is in the near namespace, and
// sees it in /proc and /sys, until the next object is created. The rest of the machine is not touched.
class NetworkNamespaces {
 public:
  NetworkNamespaces();
  ~NetworkNamespaces();
  NetworkNamespaces(const NetworkNamespaces&) = delete;
  NetworkNamespaces& operator=(const NetworkNamespaces&) = delete;

  // Why the namespaces couldn't be created. Absent: they were.
  const std::optional<std::string>& obstacle() const { return obstacle_; }

  // Runs ip(8) with the arguments, near or far. False: it failed, for instance because the kernel lacks a
  // feature.
  bool ip(const std::string& arguments) const;
  bool ipFar(const std::string& arguments) const;
  // The far namespace as an argument for ip(8).
  std::string far() const;

  // Sends datagrams from a near address to a far one, or back, and receives each. False: one was lost.
  bool send(const std::string& from, const std::string& to, int datagrams, std::size_t bytes) const;
  bool sendBack(const std::string& from, const std::string& to, int datagrams, std::size_t bytes) const;
  // Sends them from the near side without receiving them.
  bool sendBlindly(const std::string& from, const std::string& to, int datagrams, std::size_t bytes) const;

 private:
  bool make();
  platform::UniqueFd socketFar(const std::string& address) const;

  std::optional<std::string> obstacle_;
  platform::UniqueFd near_;
  platform::UniqueFd far_;
  bool hasMountedSys_ = false;
};

}  // namespace kestrune::test
