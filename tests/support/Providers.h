#pragma once

#include "providers/BatteryProvider.h"
#include "providers/CPUProvider.h"
#include "providers/DiskProvider.h"
#include "providers/MemoryProvider.h"
#include "providers/NetworkProvider.h"
#include "support/ScriptedPlatform.h"

namespace kestrune::test {

// The samplers of a scripted computer, not started.
struct Providers {
  explicit Providers(ScriptedPlatform& computer)
      : scans(std::make_shared<ProcessScanCache>(computer.clock, computer.processTable, *computer.lane)),
        cpu(std::make_shared<CPUProvider>(computer.loop, computer.processors, computer.chip, scans)),
        memory(std::make_shared<MemoryProvider>(computer.loop, computer.memory, scans)),
        battery(std::make_shared<BatteryProvider>(computer.loop, computer.powerSources)),
        network(std::make_shared<NetworkProvider>(
            computer.loop, NetworkProvider::Services{computer.networkInterfaces, computer.wifi,
                                                     computer.location, *computer.lane})),
        disk(std::make_shared<DiskProvider>(computer.loop, computer.blockStorage, computer.volumes)) {}

  std::shared_ptr<ProcessScanCache> scans;
  std::shared_ptr<CPUProvider> cpu;
  std::shared_ptr<MemoryProvider> memory;
  std::shared_ptr<BatteryProvider> battery;
  std::shared_ptr<NetworkProvider> network;
  std::shared_ptr<DiskProvider> disk;
};

}  // namespace kestrune::test
