#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "platform/linux/files/UniqueFd.h"

namespace kestrune::test {

// Two network namespaces of this process's own, near and far, joined by a cable whose ends are called eth0 in
// both, with the addresses 10.0.0.1/24 here and 10.0.0.2/24 there. The process is in the near one, and sees
// it in /proc and /sys, until the next object is made. Its other processes and the machine are not touched.
class NetworkNamespaces {
 public:
  NetworkNamespaces();
  ~NetworkNamespaces();
  NetworkNamespaces(const NetworkNamespaces&) = delete;
  NetworkNamespaces& operator=(const NetworkNamespaces&) = delete;

  // Why the kernel grants none; absent: all is well.
  const std::optional<std::string>& obstacle() const { return obstacle_; }

  // Runs ip(8) with the arguments, near or far. False: it failed, as where the kernel lacks what is asked
  // for.
  bool ip(const std::string& arguments) const;
  bool ipFar(const std::string& arguments) const;
  // The far namespace, as ip(8) takes it.
  std::string far() const;

  // Sends so many datagrams of so many bytes from the near address to the far one, or back, and takes each
  // in. False: one was lost.
  bool send(const std::string& from, const std::string& to, int datagrams, std::size_t bytes) const;
  bool sendBack(const std::string& from, const std::string& to, int datagrams, std::size_t bytes) const;
  // Sends them from here whether or not anyone takes them in.
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
