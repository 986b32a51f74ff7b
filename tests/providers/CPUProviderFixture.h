#pragma once

#include <gmock/gmock.h>

#include "providers/CPUProvider.h"
#include "support/ScriptedPlatform.h"

namespace kestrune::test {

// A provider that has not been started, over a machine of two processors.
class CPUProviderFixture : public testing::Test, public ScriptedPlatform {
 protected:
  void SetUp() override { processors.ticks.emplace(2); }

  // Lets a second of 100 ticks pass in which the processors were busy for so many of them, then ticks.
  void tickAfter(const std::vector<std::int32_t>& busy) {
    processors.pass(100, busy);
    tick();
  }
  void tick() {
    clock.setContinuous(clock.continuousNow() + std::chrono::seconds(1));
    provider->tick();
    settle();
  }

  std::shared_ptr<CPUProvider> provider = std::make_shared<CPUProvider>(
      loop, processors, chip, std::make_shared<ProcessScanCache>(clock, processTable, *lane));
};

inline std::vector<std::string> names(const std::vector<CPUSnapshot::ProcessInfo>& rows) {
  std::vector<std::string> result;
  result.reserve(rows.size());
  for (const auto& row : rows) result.push_back(row.name);
  return result;
}

}  // namespace kestrune::test
