#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include "platform/linux/files/UniqueFd.h"
#include "platform/linux/network/LinuxNetworkInterfaces.h"
#include "providers/InterfaceNames.h"
#include "support/LeaveMachine.h"

namespace kestrune::platform {
namespace {

using testing::ElementsAre;

bool run(const std::string& command) {
  return std::system((command + " >/dev/null 2>&1").c_str()) == 0;
}

// None: the kernel refuses.
UniqueFd enterNewNamespace() {
  if (!test::hasLeftMachine() || unshare(CLONE_NEWNET) != 0) return {};
  return UniqueFd(open("/proc/self/ns/net", O_RDONLY | O_CLOEXEC));
}

// Two network namespaces of this process, near and far, joined by a virtual cable whose ends are called eth0.
// The near one has the address 10.0.0.1. The process is in the near namespace, and sees it in /proc and /sys,
// until the next test. The rest of the machine is not touched.
class NetworkNamespaceTest : public testing::Test {
 protected:
  void SetUp() override {
    far = enterNewNamespace();
    near = enterNewNamespace();
    hasMountedSys = near && far && mount("sysfs", "/sys", "sysfs", 0, nullptr) == 0;
    if (!hasMountedSys) GTEST_SKIP() << "no network namespace: " << std::strerror(errno);
    if (!run("ip -Version")) GTEST_SKIP() << "ip(8) is missing";
    if (!ip("link add eth0 type veth peer name eth0 netns " + farName())) GTEST_SKIP() << "no virtual cables";
    ASSERT_TRUE(ip("addr add 10.0.0.1/24 dev eth0") && ip("link set eth0 up"));
  }
  ~NetworkNamespaceTest() override {
    if (hasMountedSys) umount2("/sys", MNT_DETACH);
  }

  static bool ip(const std::string& arguments) { return run("ip " + arguments); }
  // As an argument for ip(8).
  std::string farName() const {
    return "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(far.get());
  }

  UniqueFd far;
  UniqueFd near;
  bool hasMountedSys = false;
  LinuxNetworkInterfaces interfaces;
};

// No name gives away what an interface is.
TEST_F(NetworkNamespaceTest, countsThePortAlone) {
  int layers = 0;
  for (const std::string kind :
       {"link eth0 type macvlan mode bridge", "link eth0 type vlan id 5",
        "type vxlan id 1 dstport 4789 remote 10.0.0.2 dev eth0",
        "type vxlan id 2 dstport 4790 remote 10.0.0.2", "type geneve id 3 remote 10.0.0.2", "type bridge",
        "type dummy", "type wireguard", "type bond"}) {
    const std::string name = (kind == "type dummy" ? "dummy" : "layer") + std::to_string(layers);
    if (ip("link add " + name + " " + kind)) {
      ++layers;
    } else {
      GTEST_LOG_(INFO) << "this kernel has no " << kind;
    }
  }
  if (ip("tuntap add dev work mode tun")) ++layers;
  if (ip("link add veth7 type veth peer name inner netns " + farName())) ++layers;
  if (layers == 0) GTEST_SKIP() << "the kernel has no stacked interfaces";

  std::vector<std::string> counted;
  const auto links = interfaces.links().value();
  for (const auto& link : links) {
    if (isCounted(link, interfaces.naming())) counted.push_back(link.name);
  }
  EXPECT_THAT(counted, ElementsAre("eth0"));
  EXPECT_GT(links.size(), static_cast<std::size_t>(layers) + 1);
}

TEST_F(NetworkNamespaceTest, listsAddressesInTheKernelsOrder) {
  ASSERT_TRUE(ip("link set lo up") && ip("addr add 10.0.0.9/24 dev eth0 label eth0:1"));
  ASSERT_TRUE(ip("addr add 192.168.7.1/32 dev eth0"));
  std::vector<std::string> addresses;
  const auto list = interfaces.interfaces().value();
  for (const auto& entry : list.addresses) addresses.push_back(entry.interfaceName + " " + entry.address);
  // Further addresses in the subnet of an earlier address are last.
  EXPECT_THAT(addresses, ElementsAre("lo 127.0.0.1", "eth0 10.0.0.1", "eth0 192.168.7.1", "eth0 10.0.0.9"));
}

}  // namespace
}  // namespace kestrune::platform
