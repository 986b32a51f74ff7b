// What a tick of each sampler costs the main thread on a machine with 8 drives and 40 interfaces, whose files
// are copies on the disk.
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <benchmark/benchmark.h>

#include "platform/linux/memory/LinuxMemory.h"
#include "platform/linux/network/LinuxNetworkInterfaces.h"
#include "platform/linux/power/LinuxPowerSources.h"
#include "platform/linux/storage/LinuxBlockStorage.h"
#include "platform/linux/storage/LinuxVolumes.h"
#include "providers/BatteryProvider.h"
#include "providers/DiskProvider.h"
#include "providers/MemoryProvider.h"
#include "providers/NetworkProvider.h"
#include "support/ScriptedPlatform.h"
#include "support/TemporaryFolder.h"

namespace kestrune {
namespace {

namespace fs = std::filesystem;

constexpr int drives = 8;
constexpr int interfaces = 40;

// The files of a large machine.
class LargeMachine {
 public:
  LargeMachine() {
    for (int i = 0; i < drives; ++i) {
      const std::string folder = "sys/block/sd" + std::string(1, static_cast<char>('a' + i));
      files_.write(folder + "/stat", "  102   5  20480  30  200  7  6000  40  0  60  70  0  0  0  0\n");
      fs::create_directories(files_ / (folder + "/device"));
    }
    for (int i = 0; i < 30; ++i)
      files_.write("sys/block/loop" + std::to_string(i) + "/stat", "0 0 0 0 0 0 0\n");
    std::string devices = "Inter-|   Receive\n face |bytes\n";
    for (int i = 0; i < interfaces; ++i) {
      const std::string device = "enp" + std::to_string(i) + "s0";
      devices += device + ": 123456789012 98765432 0 0 0 0 0 0 987654321098 87654321 0 0 0 0 0 0\n";
      fs::create_directories(files_ / ("sys/class/net/" + device));
    }
    files_.write("proc/net/dev", devices);
    files_.write("proc/self/mountinfo", "27 1 8:1 / / rw,relatime - ext4 /dev/sda1 rw\n");
    files_.write("sys/dev/block/8:1/uevent", "DEVNAME=sda1\n");
    std::ostringstream memory;
    memory << std::ifstream("/proc/meminfo").rdbuf();
    files_.write("proc/meminfo", memory.str());
  }

  const std::string& root() const { return files_.path(); }

 private:
  test::TemporaryFolder files_;
};

template <class Provider>
void tickEverySecond(benchmark::State& state, test::ScriptedPlatform& machine, Provider& provider) {
  machine.holdsLane = true;
  for (auto _ : state) {
    machine.clock.setContinuous(machine.clock.continuousNow() + std::chrono::seconds(1));
    provider.tick();
  }
}

void diskTick(benchmark::State& state) {
  const LargeMachine files;
  test::ScriptedPlatform machine;
  platform::LinuxBlockStorage storage(files.root());
  platform::LinuxVolumes volumes(files.root());
  DiskProvider provider(machine.loop, storage, volumes);
  tickEverySecond(state, machine, provider);
}
BENCHMARK(diskTick)->Unit(benchmark::kMicrosecond);

void networkTick(benchmark::State& state) {
  const LargeMachine files;
  test::ScriptedPlatform machine;
  platform::LinuxNetworkInterfaces links(files.root());
  const auto provider = std::make_shared<NetworkProvider>(
      machine.loop, NetworkProvider::Services{links, machine.wifi, machine.location, *machine.lane});
  tickEverySecond(state, machine, *provider);
}
BENCHMARK(networkTick)->Unit(benchmark::kMicrosecond);

void memoryTick(benchmark::State& state) {
  const LargeMachine files;
  test::ScriptedPlatform machine;
  platform::LinuxMemory memory(files.root());
  const auto provider = std::make_shared<MemoryProvider>(
      machine.loop, memory,
      std::make_shared<ProcessScanCache>(machine.clock, machine.processTable, *machine.lane));
  tickEverySecond(state, machine, *provider);
}
BENCHMARK(memoryTick)->Unit(benchmark::kMicrosecond);

// The kernel's own files instead of copies.
void allTicksOnThisMachine(benchmark::State& state) {
  test::ScriptedPlatform machine;
  machine.holdsLane = true;
  platform::LinuxBlockStorage storage;
  platform::LinuxVolumes volumes;
  platform::LinuxNetworkInterfaces links;
  platform::LinuxMemory memory;
  platform::LinuxPowerSources sources;
  DiskProvider disk(machine.loop, storage, volumes);
  BatteryProvider battery(machine.loop, sources);
  const auto network = std::make_shared<NetworkProvider>(
      machine.loop, NetworkProvider::Services{links, machine.wifi, machine.location, *machine.lane});
  const auto memoryProvider = std::make_shared<MemoryProvider>(
      machine.loop, memory,
      std::make_shared<ProcessScanCache>(machine.clock, machine.processTable, *machine.lane));
  for (auto _ : state) {
    machine.clock.setContinuous(machine.clock.continuousNow() + std::chrono::seconds(1));
    disk.tick();
    network->tick();
    memoryProvider->tick();
    battery.tick();
  }
}
BENCHMARK(allTicksOnThisMachine)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace kestrune
