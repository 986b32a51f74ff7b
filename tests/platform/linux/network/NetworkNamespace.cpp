#include "platform/linux/network/NetworkNamespace.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <vector>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <unistd.h>

#include "support/LeaveMachine.h"

namespace kestrune::test {
namespace {

using platform::UniqueFd;

constexpr std::uint16_t port = 4711;

bool run(const std::string& command) {
  return std::system((command + " >/dev/null 2>&1").c_str()) == 0;
}

UniqueFd ownNamespace() {
  return UniqueFd(open("/proc/self/ns/net", O_RDONLY | O_CLOEXEC));
}

// Its unrequested frames would blur the counts.
void silenceIpv6() {
  for (const auto* scope : {"all", "default"}) {
    std::ofstream("/proc/sys/net/ipv6/conf/" + std::string(scope) + "/disable_ipv6") << "1\n";
  }
}

sockaddr_in addressOf(const std::string& text) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  inet_pton(AF_INET, text.c_str(), &address.sin_addr);
  return address;
}

const sockaddr* plain(const sockaddr_in& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

// In the thread's namespace. Sending and receiving time out.
UniqueFd makeSocket(const std::string& address) {
  UniqueFd socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  constexpr timeval timeout{.tv_sec = 5, .tv_usec = 0};
  const sockaddr_in own = addressOf(address);
  setsockopt(socket.get(), SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof timeout);
  setsockopt(socket.get(), SOL_SOCKET, SO_SNDTIMEO, &timeout, sizeof timeout);
  return bind(socket.get(), plain(own), sizeof own) == 0 ? std::move(socket) : UniqueFd();
}

// If there is a receiver, each datagram is received before the next is sent.
bool sendAll(const UniqueFd& sender, const std::string& to, const UniqueFd* receiver, int datagrams,
             std::size_t bytes) {
  const sockaddr_in target = addressOf(to);
  const std::vector<char> data(bytes, 'x');
  std::vector<char> taken(bytes + 1);
  for (int i = 0; i < datagrams; ++i) {
    const auto sent = sendto(sender.get(), data.data(), bytes, 0, plain(target), sizeof target);
    if (sent != static_cast<ssize_t>(bytes)) return false;
    if (receiver != nullptr && recv(receiver->get(), taken.data(), taken.size(), 0) != sent) return false;
  }
  return true;
}

}  // namespace

NetworkNamespaces::NetworkNamespaces() {
  if (!make()) obstacle_ = "no network namespace: " + std::string(std::strerror(errno));
  if (obstacle_) return;
  if (!run("ip -Version")) {
    obstacle_ = "ip(8) is missing";
  } else if (!ip("link add eth0 type veth peer name eth0 netns " + far())) {
    obstacle_ = "the kernel has no virtual cables (veth)";
  } else if (!ip("addr add 10.0.0.1/24 dev eth0") || !ip("link set eth0 up") ||
             !ipFar("addr add 10.0.0.2/24 dev eth0") || !ipFar("link set eth0 up")) {
    obstacle_ = "the cable can't be set up";
  }
}

NetworkNamespaces::~NetworkNamespaces() {
  if (hasMountedSys_) umount2("/sys", MNT_DETACH);
}

bool NetworkNamespaces::make() {
  if (!test::hasLeftMachine() || unshare(CLONE_NEWNET) != 0) return false;
  far_ = ownNamespace();
  silenceIpv6();
  if (unshare(CLONE_NEWNET) != 0) return false;
  near_ = ownNamespace();
  silenceIpv6();
  hasMountedSys_ = mount("sysfs", "/sys", "sysfs", 0, nullptr) == 0;
  return hasMountedSys_ && near_ && far_;
}

bool NetworkNamespaces::ip(const std::string& arguments) const {
  return run("ip " + arguments);
}

bool NetworkNamespaces::ipFar(const std::string& arguments) const {
  if (setns(far_.get(), CLONE_NEWNET) != 0) return false;
  const bool isDone = ip(arguments);
  return setns(near_.get(), CLONE_NEWNET) == 0 && isDone;
}

std::string NetworkNamespaces::far() const {
  return "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(far_.get());
}

UniqueFd NetworkNamespaces::socketFar(const std::string& address) const {
  if (setns(far_.get(), CLONE_NEWNET) != 0) return {};
  UniqueFd socket = makeSocket(address);
  return setns(near_.get(), CLONE_NEWNET) == 0 ? std::move(socket) : UniqueFd();
}

bool NetworkNamespaces::send(const std::string& from, const std::string& to, int datagrams,
                             std::size_t bytes) const {
  const UniqueFd receiver = socketFar(to);
  return sendAll(makeSocket(from), to, &receiver, datagrams, bytes);
}

bool NetworkNamespaces::sendBack(const std::string& from, const std::string& to, int datagrams,
                                 std::size_t bytes) const {
  const UniqueFd receiver = makeSocket(to);
  return sendAll(socketFar(from), to, &receiver, datagrams, bytes);
}

bool NetworkNamespaces::sendBlindly(const std::string& from, const std::string& to, int datagrams,
                                    std::size_t bytes) const {
  return sendAll(makeSocket(from), to, nullptr, datagrams, bytes);
}

}  // namespace kestrune::test
