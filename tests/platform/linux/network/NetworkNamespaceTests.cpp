#include <array>
#include <cstring>
#include <functional>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <linux/if_tun.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "platform/linux/network/LinuxNetworkInterfaces.h"
#include "platform/linux/network/NetworkNamespace.h"
#include "providers/InterfaceNames.h"

namespace kestrune::platform {
namespace {

using testing::ElementsAre;
using testing::Pointwise;

constexpr int datagrams = 40;
constexpr std::size_t datagramBytes = 1200;
constexpr std::uint64_t payload = datagrams * datagramBytes;
// Headers of up to 42 bytes around each datagram, and the few frames in which the hosts find each other.
constexpr std::uint64_t overhead = std::uint64_t{datagrams} * 42 + 1000;

// The kernel's list, read another way.
std::vector<std::string> kernelNames() {
  std::vector<std::string> names;
  const std::unique_ptr<struct if_nameindex, void (*)(struct if_nameindex*)> list(if_nameindex(),
                                                                                  if_freenameindex);
  for (const auto* entry = list.get(); entry != nullptr && entry->if_index != 0; ++entry) {
    names.emplace_back(entry->if_name);
  }
  return names;
}

LinkCounters growth(const LinkCounters& before, const LinkCounters& after) {
  return {.received = after.received - before.received, .sent = after.sent - before.sent};
}

MATCHER(HasName, "") {
  return std::get<0>(arg).name == std::get<1>(arg);
}

class NetworkNamespaceTest : public testing::Test {
 protected:
  void SetUp() override {
    if (network.obstacle()) GTEST_SKIP() << *network.obstacle();
  }

  std::vector<LinkEntry> links() { return interfaces.links().value(); }

  LinkCounters countersOf(const std::string& name) {
    for (const auto& link : links()) {
      if (link.name == name) return link.counters.value();
    }
    ADD_FAILURE() << name << " isn't listed";
    return {};
  }

  // The basis of the rates.
  LinkCounters sumOfCounted() {
    LinkCounters sum;
    for (const auto& link : links()) {
      if (!link.counters || !isCounted(link, interfaces.naming())) continue;
      sum.received += link.counters->received;
      sum.sent += link.counters->sent;
    }
    return sum;
  }

  // Runs `move`, which sends through `name`, and checks that the sum grows only by what passes through eth0.
  void expectCountedOnce(const std::string& name, const std::function<bool()>& move) {
    SCOPED_TRACE(name);
    const LinkCounters sum = sumOfCounted();
    const LinkCounters own = countersOf(name);
    const LinkCounters cable = countersOf("eth0");
    ASSERT_TRUE(move());
    EXPECT_GE(growth(own, countersOf(name)).sent, payload);
    const LinkCounters grown = growth(cable, countersOf("eth0"));
    EXPECT_EQ(growth(sum, sumOfCounted()).sent, grown.sent);
    EXPECT_EQ(growth(sum, sumOfCounted()).received, grown.received);
  }

  bool exchange(const std::string& near, const std::string& far) {
    return network.send(near, far, datagrams, datagramBytes) &&
           network.sendBack(far, near, datagrams, datagramBytes);
  }

  // An interface with an address of its own on either side. A kind that ends in "remote " gets the other
  // side's.
  bool addPair(const std::string& name, const std::string& kind, const std::string& subnet) {
    const bool isRemote = kind.ends_with("remote ");
    return network.ip("link add " + name + " " + kind + (isRemote ? "10.0.0.2" : "")) &&
           network.ipFar("link add " + name + " " + kind + (isRemote ? "10.0.0.1" : "")) &&
           network.ip("addr add " + subnet + ".1/24 dev " + name) &&
           network.ipFar("addr add " + subnet + ".2/24 dev " + name) &&
           network.ip("link set " + name + " up") && network.ipFar("link set " + name + " up");
  }

  test::NetworkNamespaces network;
  LinuxNetworkInterfaces interfaces;
};

TEST_F(NetworkNamespaceTest, countersGrowByWhatIsMoved) {
  EXPECT_THAT(links(), Pointwise(HasName(), kernelNames()));
  const LinkCounters before = countersOf("eth0");
  ASSERT_TRUE(network.send("10.0.0.1", "10.0.0.2", datagrams, datagramBytes));
  const LinkCounters sent = growth(before, countersOf("eth0"));
  EXPECT_GE(sent.sent, payload);
  EXPECT_LE(sent.sent, payload + overhead);
  EXPECT_LE(sent.received, overhead);
  ASSERT_TRUE(network.sendBack("10.0.0.2", "10.0.0.1", 2 * datagrams, datagramBytes));
  const LinkCounters both = growth(before, countersOf("eth0"));
  EXPECT_GE(both.received, 2 * payload);
  EXPECT_LE(both.received, 2 * (payload + overhead));
  EXPECT_LE(both.sent, payload + overhead);
}

// No name gives away what an interface is.
TEST_F(NetworkNamespaceTest, stackedInterfacesAreNotCountedTwice) {
  int tested = 0;
  for (const std::string kind : {"link eth0 type macvlan mode bridge", "link eth0 type vlan id 5",
                                 "type vxlan id 1 dstport 4789 dev eth0 remote ",
                                 "type vxlan id 2 dstport 4790 remote ", "type geneve id 3 remote "}) {
    const std::string name = "layer" + std::to_string(tested);
    const std::string subnet = "10.0." + std::to_string(tested + 1);
    if (addPair(name, kind, subnet)) {
      expectCountedOnce(name, [&] { return exchange(subnet + ".1", subnet + ".2"); });
      ++tested;
    } else {
      network.ip("link del " + name);
      GTEST_LOG_(INFO) << "this kernel has no " << kind;
    }
  }
  if (tested == 0) GTEST_SKIP() << "the kernel has no stacked interfaces";
}

TEST_F(NetworkNamespaceTest, trafficInsideTheMachineIsNotCounted) {
  if (!network.ip("link add lan type bridge")) GTEST_SKIP() << "the kernel has no bridges";
  ASSERT_TRUE(network.ip("addr add 10.0.1.1/24 dev lan") && network.ip("link set lan up"));
  ASSERT_TRUE(network.ip("link add veth7 type veth peer name inner netns " + network.far()));
  ASSERT_TRUE(network.ip("link set veth7 master lan up"));
  ASSERT_TRUE(network.ipFar("addr add 10.0.1.2/24 dev inner") && network.ipFar("link set inner up"));
  expectCountedOnce("lan", [&] { return exchange("10.0.1.1", "10.0.1.2"); });
  EXPECT_GE(countersOf("veth7").sent, payload) << "the container's side";

  if (!network.ip("link add dummy0 type dummy")) {
    GTEST_LOG_(INFO) << "this kernel has no dummy interfaces";
    return;
  }
  ASSERT_TRUE(network.ip("addr add 10.0.2.1/24 dev dummy0") && network.ip("link set dummy0 up"));
  expectCountedOnce("dummy0",
                    [&] { return network.sendBlindly("10.0.2.1", "10.0.2.2", datagrams, datagramBytes); });
}

// A program that forwards packets from `work` through the cable, as a VPN does.
TEST_F(NetworkNamespaceTest, tunnelsAreCountedOnThePort) {
  const UniqueFd tunnel(open("/dev/net/tun", O_RDWR | O_CLOEXEC));
  ifreq request{};
  std::strncpy(static_cast<char*>(request.ifr_name), "work", IFNAMSIZ - 1);
  request.ifr_flags = IFF_TUN | IFF_NO_PI;
  if (!tunnel || ioctl(tunnel.get(), TUNSETIFF, &request) != 0) GTEST_SKIP() << "no tunnels can be made";
  ASSERT_TRUE(network.ip("addr add 10.0.1.1/24 dev work") && network.ip("link set work up"));
  expectCountedOnce("work", [&] {
    for (int i = 0; i < datagrams; ++i) {
      if (!network.sendBlindly("10.0.1.1", "10.0.1.2", 1, datagramBytes)) return false;
      std::array<char, 2000> packet{};
      const ssize_t size = read(tunnel.get(), packet.data(), packet.size());
      if (size < static_cast<ssize_t>(datagramBytes)) return false;
      if (!network.send("10.0.0.1", "10.0.0.2", 1, static_cast<std::size_t>(size))) return false;
    }
    return true;
  });
}

TEST_F(NetworkNamespaceTest, addressesAreListedInTheKernelsOrder) {
  ASSERT_TRUE(network.ip("link set lo up") && network.ip("addr add 10.0.0.9/24 dev eth0 label eth0:1"));
  ASSERT_TRUE(network.ip("addr add 192.168.7.1/32 dev eth0"));
  const auto list = interfaces.interfaces();
  ASSERT_TRUE(list);
  EXPECT_THAT(list->links, Pointwise(HasName(), kernelNames()));
  std::vector<std::string> addresses;
  for (const auto& entry : list->addresses) addresses.push_back(entry.interfaceName + " " + entry.address);
  // Further addresses in the subnet of an earlier address are last.
  EXPECT_THAT(addresses, ElementsAre("lo 127.0.0.1", "eth0 10.0.0.1", "eth0 192.168.7.1", "eth0 10.0.0.9"));
}

}  // namespace
}  // namespace kestrune::platform
